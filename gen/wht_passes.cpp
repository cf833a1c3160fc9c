// The passes of the Walsh-Hadamard kernels of orders 8 to 13, as statements of
// a kernel's run: a block pass of networks over blocks of samples into the
// work buffer, then column passes that combine whole vectors at a stride,
// strip by strip where the order is too long for two passes.  The 256-bit
// file's passes come from the table of forms and are checked to cover the
// order with the 128-bit file's buffer.  The loops themselves live in
// src/wht/passes.h.
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "forms.h"
#include "wht_sample.h"

namespace gen::wht {

namespace {

// The 128-bit file's passes of orders 8 to 13, Real32 and Real64.
const Passes narrow[2][6] = {
    {{32, {8}, 0, {}}, {64, {8}, 0, {}}, {64, {16}, 0, {}}, {64, {32}, 0, {}}, {64, {8}, 512, {8}},
     {64, {8}, 512, {16}}},
    {{32, {8}, 0, {}}, {32, {16}, 0, {}}, {128, {8}, 0, {}}, {32, {8}, 256, {8}}, {32, {8}, 256, {16}},
     {128, {8}, 1024, {8}}}};

const Passes& narrowPassesOf(const Sample& s, int order) { return narrow[s.type == Type::F32 ? 0 : 1][order - 8]; }

// "8,4" -> {8, 4}; "-" -> {}
std::vector<int> radicesOf(const Form& form, const std::string& field)
{
    std::vector<int> radices;
    std::istringstream list(form.get(field) == "-" ? "" : form.get(field));
    for (std::string item; std::getline(list, item, ',');)
        radices.push_back(std::atoi(item.c_str()));
    return radices;
}

}  // namespace

int bufferBytes(const Sample& s, int order)
{
    if (order < 8)
        return 0;
    return ((1 << order) + narrowPassesOf(s, order).strip) * (s.type == Type::F32 ? 4 : 8);
}

// They were chosen by timing, not by a search of the generator: exploring
// keeps the lines as they are.
Passes widePassesOf(const Sample& s, int order)
{
    const Form form = formOf(kernelName(s, order), nullptr);
    if (form.get("body") != "passes")
        formError(form.kernel, "a blocked order of the 256-bit file takes passes");
    const Passes p{std::atoi(form.get("block").c_str()), radicesOf(form, "first"), std::atoi(form.get("strip").c_str()),
                   radicesOf(form, "last"), form.get("traded") == "yes"};
    if (p.block < 2 || (p.block & (p.block - 1)) != 0 || p.first.empty())
        formError(form.kernel, "passes need a block of a power of two and a first run");
    return p;
}

// Column passes after the first work in place on their target (dst or a
// strip of main); src is read in full by the block pass before anything is
// written to dst, so src == dst keeps working.
std::string passes(const Sample& s, int order)
{
    const int n = 1 << order;
    const bool wide = s.halves != nullptr;
    const Passes p = wide ? widePassesOf(s, order) : narrowPassesOf(s, order);
    const int length = p.strip > 0 ? p.strip : n;
    int strip = p.block, whole = length;  // the samples that the block pass and `first`, and all passes, cover
    for (int r : p.first)
        strip *= r;
    for (int r : p.last)
        whole *= r;
    if (strip != length || whole != n || (p.strip > 0) != !p.last.empty() || p.strip > narrowPassesOf(s, order).strip)
        formError(kernelName(s, order), "its passes do not cover the order, or need a longer strip than the "
                                        "128-bit passes give the work buffer");
    const std::string types = std::string(s.real) + ", " + s.vector + ", ";
    const std::string lanes = std::to_string(s.lanes);
    // a run of column passes from `from` into `to`, rows of `row` samples at first
    auto run = [&](const std::vector<int>& radices, bool traded, const std::string& from, const std::string& to,
                   const std::string& toAccess, int row, int count, bool scaledLast, const std::string& indent) {
        std::ostringstream out;
        for (std::size_t i = 0; i < radices.size(); ++i) {
            const std::string scaled = scaledLast && i + 1 == radices.size() ? ", true>" : ", false>";
            const bool fromPairs = traded && i == 0;  // rows in pairs, as the block pass left them
            const std::string r = std::to_string(radices[i]);
            const std::string network = fromPairs ? "wht::" + s.function("tradedColumns", radices[i]) + "<" + toAccess
                                                  : "wht::" + s.function("columns", radices[i]) + "<" +
                                                        (i == 0 ? s.aligned : toAccess) + ", " + toAccess;
            if (!wide)
                out << indent << "wht::columnPass<" << types << network << scaled << ">(" << from << ", " << to << ", "
                    << count / radices[i] << ", " << lanes << ", " << s.factor() << ");\n";
            else
                out << indent << "wht::columnGroups<" << types << network << scaled << (fromPairs ? ", 2>(" : ">(")
                    << (i == 0 ? from : to) << ", " << to << ", " << count << ", " << row << ", " << r << ", " << lanes
                    << ", " << s.factor() << ");\n";
            row *= radices[i];
        }
        return out.str();
    };
    const int blockOrder = static_cast<int>(std::log2(p.block));
    const std::string block = "wht::blockPass<" + types +
                              (p.traded ? "wht::" + s.function("traded", blockOrder)
                                        : "wht::" + s.function("network", blockOrder) + "<Access, " + s.aligned +
                                              ", false>") +
                              ">";
    const int passBlock = p.traded ? 2 * p.block : p.block;
    std::ostringstream out;
    if (p.strip == 0) {
        out << "    " << block << "(src, main, " << n << ", " << passBlock << ");\n"
            << run(p.first, p.traded, "main", "dst", "Access", p.block, n, true, "    ");
        return out.str();
    }
    const std::string stripTarget = "main + t * " + std::to_string(length);
    out << "    " << s.real << "* const strip = main + " << n << ";\n"
        << "    for (int t = 0; t < " << n / length << "; ++t) {\n"
        << "        " << block << "(src + t * " << length << ", strip, " << length << ", " << passBlock << ");\n"
        << run(p.first, p.traded, "strip", stripTarget, s.aligned, p.block, length, false, "        ") << "    }\n"
        << run(p.last, false, "main", "dst", "Access", length, n, true, "    ");
    return out.str();
}

}  // namespace gen::wht
