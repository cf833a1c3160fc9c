// What the files of the Walsh-Hadamard family share: the description of a
// sample type on the current target (its vector, its access classes, how its
// networks do the stages inside a vector), the kernels' names, and the passes
// of the blocked orders.  wht_networks.cpp writes the butterfly networks,
// wht_passes.cpp the passes of the blocked orders, wht_emit.cpp the units.
#ifndef KVTGEN_WHT_SAMPLE_H
#define KVTGEN_WHT_SAMPLE_H

#include <string>
#include <vector>

#include "graph.h"

namespace gen::wht {

struct Sample;
// Writes the stages h < lanes of a network held in `count` vectors v0, v1, ...
using LaneStages = std::string (*)(const Sample& s, int count);

struct Sample {
    const char* suffix;     // 32f or 64f
    const char* real;       // float or double
    const char* vector;     // kv::fvec, kv::dvec, or the wide kv::fwide, kv::dwide
    int lanes;              // samples per vector
    Type type;              // F32 or F64
    const char* broadcast;  // the vector of one sample in every lane
    // the access classes of 16-byte aligned arrays (src, dst and the work
    // buffer in the aligned kernels) and of unaligned ones (src, dst in the twins)
    const char* aligned;
    const char* unaligned;
    LaneStages laneStages;
    // with 256-bit vectors, the access class of 128-bit halves: the network
    // loads each pair of vectors with their halves already traded
    const char* halves;
};

// The sample descriptions of the target the generator writes for.
const Sample& single();
const Sample& dual();

std::string kernelName(const Sample& s, int order);

// The header of the networks that the kernels and the passes call.
std::string networksHeader();

// The passes of the 256-bit file: a block pass of two blocks at once
// (tradedNetwork), then column passes of the radices `first`, lowest bits
// first; with a strip length, the block pass and `first` run strip by strip
// into main, and the passes of `last` over main.  Any split runs the stages in
// the same order, lowest first, so every output is the same sum; only the
// strip length, and with it the buffer size, must stay as in the 128-bit form.
// Each network holds at most 16 vectors (a traded block of 2 B samples): with
// 256-bit vectors twice the samples of the 128-bit form fill the registers.
// Of the splits within that, each order takes the fastest timed side by side
// (wht_bench with both forms loaded); a pass more costs little while the
// arrays stay in the first-level cache and a good deal from order 12 on.
struct WidePasses {
    int block;
    std::vector<int> first;
    int strip;
    std::vector<int> last;
    bool traded = true;  // false: one block at a time (vectorNetwork), its rows restored
};

// The passes of a blocked order on the 256-bit target, as the table of forms
// gives them.
WidePasses widePassesOf(const Sample& s, int order);

// Bytes of the work buffer: N samples, plus one strip for a three-pass kernel.
int bufferBytes(const Sample& s, int order);

// The statements of the passes of a blocked kernel, from src through the
// work buffer `main` into dst: the 256-bit file's passes, or the 128-bit
// ones, whose first pass reads src and whose last writes dst through `access`.
std::string widePasses(const Sample& s, int order);
std::string narrowPasses(const Sample& s, int order, const std::string& access);

}  // namespace gen::wht

#endif
