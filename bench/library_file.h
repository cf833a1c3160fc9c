// Which file of the library the loader gave this program: the baseline, or
// the x86-64-v3 build that it takes from glibc-hwcaps/x86-64-v3/ on a
// processor with AVX2.
#ifndef KVTG_BENCH_LIBRARY_FILE_H
#define KVTG_BENCH_LIBRARY_FILE_H

#include <dlfcn.h>

#include <fstream>
#include <string>

#include "kvtgen.h"
#include "processor_level.h"

namespace bench {

// The path of the loaded library file, empty where it cannot be told.
inline std::string loadedLibraryFile()
{
    Dl_info info{};
    // the version record lives in the library's read-only data
    if (dladdr(kvtgenGetLibVersion(), &info) == 0 || info.dli_fname == nullptr)
        return std::string();
    return info.dli_fname;
}

inline bool isVariantFile(const std::string& path) { return path.find("/glibc-hwcaps/x86-64-v3/") != std::string::npos; }

// The processor's model name as the kernel reports it.
inline std::string processorModel()
{
    std::ifstream cpuinfo("/proc/cpuinfo");
    for (std::string line; std::getline(cpuinfo, line);)
        if (line.rfind("model name", 0) == 0 && line.find(':') != std::string::npos)
            return line.substr(line.find(':') + 2);
    return "(unknown processor)";
}

// The first lines of the demo and the report: processor, the instruction set
// level of the file the loader chose, and that file.
inline std::string describeMachineAndLibrary()
{
    const std::string path = loadedLibraryFile();
    return "processor: " + processorModel() + " (x86-64-v3: " +
           (processorRunsX86_64_v3() ? "yes" : "no") + ")\n" +
           "instruction set level chosen by the loader: " +
           (isVariantFile(path) ? "x86-64-v3 (AVX2, 256-bit vectors)" : "baseline x86-64 (SSE2, 128-bit vectors)") +
           "\nlibrary file: " + (path.empty() ? std::string("(unknown)") : path) + "\n";
}

}  // namespace bench

#endif
