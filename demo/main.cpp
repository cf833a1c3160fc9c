// Runs a transform of each family built into the library and prints its
// accuracy against an independent plain evaluation; the batch library's line
// holds its transforms against the single calls.
#include <algorithm>
#include <cstdio>

#include "demo.h"
#include "library_file.h"
#include "kvtgen.h"

namespace demo {
std::vector<Entry>& entries()
{
    static std::vector<Entry> list;
    return list;
}
}  // namespace demo

int main()
{
    std::printf("%s", bench::describeMachineAndLibrary().c_str());
    const LibVersion* version = kvtgenGetLibVersion();
    std::printf("%s %s (target %s, %s)\n", version->libraryName, version->versionText, version->targetCode,
                version->buildDateText);
    auto& list = demo::entries();
    std::sort(list.begin(), list.end(), [](const demo::Entry& a, const demo::Entry& b) { return a.order < b.order; });
    bool ok = true;
    for (const auto& entry : list)
        ok = entry.run() && ok;
    std::printf("%s\n", ok ? "all transforms within their accuracy bounds" : "SOME TRANSFORMS FAILED");
    return ok ? 0 : 1;
}
