// Walsh-Hadamard kernels against the textbook in-place loop, built with the
// library's flags.
#include <cmath>
#include <memory>
#include <vector>

#include "kvtgen.h"
#include "report.h"
#include "wht_textbook.h"

namespace {

template <class T>
void addFamily(std::vector<report::Case>& cases, const char* name, Status (*transform)(const T*, T*, int32_t, int32_t, uint8_t*),
               Status (*size)(int32_t, int32_t*))
{
    for (int order = 1; order <= 13; ++order) {
        const int n = 1 << order;
        auto x = std::make_shared<std::vector<T>>(static_cast<std::size_t>(n) + 16);
        auto y = std::make_shared<std::vector<T>>(static_cast<std::size_t>(n) + 16);
        int32_t bytes = 0;
        size(order, &bytes);
        auto buffer = std::make_shared<std::vector<double>>(static_cast<std::size_t>(bytes) / 8 + 8);
        for (int i = 0; i < n; ++i)
            (*x)[static_cast<std::size_t>(i)] = static_cast<T>(std::sin(i + 1.0));
        cases.push_back({name, order,
                         [=] {
                             // vectors' data are 16-byte aligned by the allocator
                             transform(x->data(), y->data(), order, ScaleNone, reinterpret_cast<uint8_t*>(buffer->data()));
                         },
                         // scaled by 1/N so that repeated calls stay finite
                         [=] { textbookWht(y->data(), n, T(1) / T(n)); }});
    }
}

std::vector<report::Case> whtCases()
{
    std::vector<report::Case> cases;
    addFamily<Real32>(cases, "WHT 32f", KVTG_FROM_FILE(kvtgWHT_32f), KVTG_FROM_FILE(kvtgWHTGetBufferSize_32f));
    addFamily<Real64>(cases, "WHT 64f", KVTG_FROM_FILE(kvtgWHT_64f), KVTG_FROM_FILE(kvtgWHTGetBufferSize_64f));
    return cases;
}

const report::Registration registration("wht", 40, "textbook in-place radix-2 loop", whtCases);

}  // namespace
