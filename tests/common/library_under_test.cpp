// Every suite starts by naming the library file that the loader gave it, and
// checks it against the file the suite was registered to run under
// (KVTG_EXPECT_LIBRARY = baseline or x86-64-v3).  On a processor that the
// x86-64-v3 file cannot run on, a run registered for that file ends as
// skipped (exit code 77) and says why.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "library_file.h"
#include "processor_level.h"

namespace {

struct LibraryUnderTest {
    LibraryUnderTest()
    {
        const std::string path = bench::loadedLibraryFile();
        if (path.empty()) {
            std::fprintf(stderr, "cannot tell which library file was loaded\n");
            std::exit(1);
        }
        const bool variant = bench::isVariantFile(path);
        std::printf("library under test: %s (%s)\n", path.c_str(),
                    variant ? "x86-64-v3 build, AVX2" : "baseline build, SSE2");
        const char* expected = std::getenv("KVTG_EXPECT_LIBRARY");
        if (expected == nullptr)
            return;
        if (std::strcmp(expected, "x86-64-v3") == 0 && !variant) {
            if (!bench::processorRunsX86_64_v3()) {
                std::printf("skipped: this processor lacks x86-64-v3 (AVX2), so the loader gives the baseline "
                            "file and the x86-64-v3 file cannot run here\n");
                std::exit(77);
            }
            std::fprintf(stderr, "expected the x86-64-v3 file on this AVX2 processor\n");
            std::exit(1);
        }
        if (std::strcmp(expected, "baseline") == 0 && variant) {
            std::fprintf(stderr, "expected the baseline file, the loader gave the x86-64-v3 file\n");
            std::exit(1);
        }
    }
};

const LibraryUnderTest check;

}  // namespace
