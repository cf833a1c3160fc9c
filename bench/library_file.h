// Which file of the library the loader gave this program: the baseline, or
// the x86-64-v3 build that it takes from glibc-hwcaps/x86-64-v3/ on a
// processor with AVX2.
#ifndef KVTG_BENCH_LIBRARY_FILE_H
#define KVTG_BENCH_LIBRARY_FILE_H

#include <dlfcn.h>

#include <string>

#include "kvtgen.h"

namespace bench {

inline std::string loadedLibraryFile()
{
    Dl_info info{};
    // the version record lives in the library's read-only data
    if (dladdr(kvtgenGetLibVersion(), &info) == 0 || info.dli_fname == nullptr)
        return "(unknown)";
    return info.dli_fname;
}

inline bool isVariantFile(const std::string& path) { return path.find("/glibc-hwcaps/x86-64-v3/") != std::string::npos; }

// "path (x86-64-v3 build, AVX2)" or "path (baseline build, SSE2)"
inline std::string describeLoadedLibrary()
{
    const std::string path = loadedLibraryFile();
    return path + (isVariantFile(path) ? " (x86-64-v3 build, AVX2)" : " (baseline build, SSE2)");
}

}  // namespace bench

#endif
