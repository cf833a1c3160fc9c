// What the files of the Walsh-Hadamard family share: the description of a
// sample type on the current target (its vector, its access classes) and the
// passes of the blocked orders.  wht_networks.cpp writes the butterfly
// networks, wht_emit.cpp the passes and the units.
#ifndef KVTGEN_WHT_SAMPLE_H
#define KVTGEN_WHT_SAMPLE_H

#include <string>
#include <vector>

#include "graph.h"

namespace gen::wht {

struct Sample {
    const char* suffix;  // 32f or 64f
    const char* real;    // float or double
    const char* vector;  // kv::fvec, kv::dvec, or the wide kv::fwide, kv::dwide
    int lanes;           // samples per vector
    Type type;           // F32 or F64
    // the access classes of 16-byte aligned arrays (src, dst and the work
    // buffer in the aligned kernels) and of unaligned ones (src, dst in the twins)
    const char* aligned;
    const char* unaligned;
    // with 256-bit vectors, the access class of 128-bit halves: the network
    // loads each pair of vectors with their halves already traded
    const char* halves;

    // The scale factor s in every lane of a vector.
    std::string factor() const { return "kv::broadcast<" + std::string(vector) + ">(s)"; }
    // Whether the network of an order works on vectors (smaller ones work on single numbers).
    bool vectorOrder(int order) const { return order >= (type == Type::F32 ? 4 : 3); }
    // A network function's name: network32f_5, columns64f_8, ...
    std::string function(const std::string& kind, int size) const { return kind + suffix + "_" + std::to_string(size); }
};

// The sample descriptions of the target the generator writes for.
const Sample& single();
const Sample& dual();

// The header of the networks that the kernels and the passes call.
std::string networksHeader();

// The passes of a blocked order: a block pass, then column passes of the
// radices `first`, lowest bits first; with a strip length, the block pass and
// `first` run strip by strip into main, and the passes of `last` over main.
// The 128-bit file's passes are fixed per order and sample type.  On the
// 256-bit file the block pass takes two blocks at once (tradedNetwork).  Any
// split runs the stages in the same order, lowest first, so every output is
// the same sum; only the strip length, and with it the buffer size, must stay
// as in the 128-bit form.  Each network holds at most 16 vectors (a traded
// block of 2 B samples): with 256-bit vectors twice the samples of the 128-bit
// form fill the registers.  Of the splits within that, each order takes the
// fastest timed side by side (wht_bench with both forms loaded); a pass more
// costs little while the arrays stay in the first-level cache and a good deal
// from order 12 on.
struct Passes {
    int block;
    std::vector<int> first;
    int strip;
    std::vector<int> last;
    bool traded = false;  // two blocks at once in the halves of the vectors
};

// The passes of a blocked order on the 256-bit target, as the table of forms
// gives them.
Passes widePassesOf(const Sample& s, int order);

}  // namespace gen::wht

#endif
