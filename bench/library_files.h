// Both files of the library in one program, for timing them side by side:
// the baseline and, on a processor with x86-64-v3, the variant that the loader
// would pick from glibc-hwcaps/x86-64-v3/ beside it.  Each is opened by path
// with RTLD_LOCAL and RTLD_DEEPBIND: the program itself is linked against the
// library, so the file that the loader gave it sits in the global scope, and
// without DEEPBIND the other file's dispatchers would call the kernels of the
// loaded one.
#ifndef KVTG_BENCH_LIBRARY_FILES_H
#define KVTG_BENCH_LIBRARY_FILES_H

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "library_file.h"
#include "processor_level.h"

namespace bench {

class LibraryFiles {
public:
    enum File { Baseline = 0, Variant = 1 };

    static const LibraryFiles& get()
    {
        static const LibraryFiles files;
        return files;
    }

    // The variant is there when it was built and this processor can run it.
    bool hasVariant() const { return handles[Variant] != nullptr; }
    const std::string& path(File f) const { return paths[f]; }
    static const char* label(File f) { return f == Baseline ? "sse2" : "avx2"; }
    // The files to time: the baseline, and the variant where it is there.
    std::vector<File> files() const
    {
        return hasVariant() ? std::vector<File>{Baseline, Variant} : std::vector<File>{Baseline};
    }
    // A benchmark of one file: "kvtg-sse2/<suffix>" or "kvtg-avx2/<suffix>".
    static std::string benchmarkName(File f, const std::string& suffix)
    {
        return std::string("kvtg-") + label(f) + "/" + suffix;
    }

    template <class F>
    F function(File f, const std::string& name) const
    {
        return reinterpret_cast<F>(symbol(handles[f], paths[f], name));
    }
    // An export of the batch library file of the same level, beside it
    // (opened at the first such request: most programs never make one).
    template <class F>
    F batchFunction(File f, const std::string& name) const
    {
        if (batchHandles[f] == nullptr && handles[f] != nullptr)
            batchHandles[f] = dlopen(batchPaths[f].c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
        return reinterpret_cast<F>(symbol(batchHandles[f], batchPaths[f], name));
    }

private:
    LibraryFiles()
    {
        // the directory of the baseline, from whichever file the loader gave us
        std::string loaded = loadedLibraryFile();
        const std::string hwcaps = "/glibc-hwcaps/x86-64-v3/";
        const std::size_t at = loaded.find(hwcaps);
        const std::string dir = at != std::string::npos ? loaded.substr(0, at) : loaded.substr(0, loaded.rfind('/'));
        paths[Baseline] = dir + "/libkvtgenn8.so.6.1";
        paths[Variant] = dir + hwcaps + "libkvtgenn8.so.6.1";
        handles[Baseline] = dlopen(paths[Baseline].c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
        if (handles[Baseline] == nullptr) {
            std::fprintf(stderr, "cannot load %s: %s\n", paths[Baseline].c_str(), dlerror());
            std::exit(1);
        }
        if (processorRunsX86_64_v3())
            handles[Variant] = dlopen(paths[Variant].c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
        batchPaths[Baseline] = dir + "/libkvtgenbatch.so.1";
        batchPaths[Variant] = dir + hwcaps + "libkvtgenbatch.so.1";
    }
    static void* symbol(void* handle, const std::string& path, const std::string& name)
    {
        void* found = handle ? dlsym(handle, name.c_str()) : nullptr;
        if (found == nullptr) {
            std::fprintf(stderr, "%s not found in %s\n", name.c_str(), path.c_str());
            std::exit(1);
        }
        return found;
    }
    std::string paths[2], batchPaths[2];
    void* handles[2] = {nullptr, nullptr};
    mutable void* batchHandles[2] = {nullptr, nullptr};
};

}  // namespace bench

#endif
