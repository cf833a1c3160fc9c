// The benchmark report: each family registers its cases, one per kernel, with
// the peer it is compared with (an FFTW plan or a textbook loop).
#ifndef KVTG_REPORT_H
#define KVTG_REPORT_H

#include <functional>
#include <string>
#include <vector>

#include "library_files.h"

namespace report {

// The library file whose functions the cases being built call: main builds
// every family's cases once per file.
inline bench::LibraryFiles::File& currentFile()
{
    static bench::LibraryFiles::File file = bench::LibraryFiles::Baseline;
    return file;
}
template <class F>
F fromCurrentFile(F, const char* name)
{
    return bench::LibraryFiles::get().function<F>(currentFile(), name);
}
// An export of the current file, typed as the header declares it.
#define KVTG_FROM_FILE(name) report::fromCurrentFile(&name, #name)

struct Case {
    std::string family;  // e.g. "DFT Fwd 32fc"
    int size;            // length or order
    std::function<void()> ours;
    std::function<void()> peer;
    int transforms = 1;  // a call of both does this many: times are per transform
};

// Families add their cases through this; `key` names the family on the
// command line, `order` places it in the report.
struct Family {
    std::string key;
    int order;
    std::string peerName;
    std::function<std::vector<Case>()> cases;
};

std::vector<Family>& families();

struct Registration {
    Registration(const std::string& key, int order, const std::string& peerName,
                 std::function<std::vector<Case>()> cases)
    {
        families().push_back({key, order, peerName, std::move(cases)});
    }
};

}  // namespace report

#endif
