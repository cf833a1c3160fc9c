// The butterfly networks of the Walsh-Hadamard family, written into the header
// wht_networks.h that the kernels and the passes of src/wht/passes.h call.
//
// The butterfly networks are written out statement by statement: for a vector
// of 2^k samples the stages h = 1, 2, 4, ... run in that order, each pair
// (n, n+h) giving a+b at n and a-b at n+h, exactly the plain radix-2 network.
// A vector holds `lanes` consecutive samples; the stages h < lanes pair samples
// inside a vector and need lane moves (transposedBlocks for four floats,
// splitPairs for the others), every later stage is whole-vector
// arithmetic.  The lane moves only carry samples, so every addition keeps its
// two operands and the bits don't depend on the width.  Column networks
// combine R whole vectors at a stride.
#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "family.h"
#include "verifier.h"
#include "wht_sample.h"

namespace gen::wht {

namespace {

std::string v(int j) { return "v" + std::to_string(j); }

// v(a), v(b) = v(a) + v(b), v(a) - v(b) on values of `type`: vectors, or
// single numbers where it is float or double.
std::string butterfly(const std::string& type, int a, int b, const std::string& indent)
{
    const bool number = type == "float" || type == "double";
    const std::string sum = number ? "t + " + v(b) : "kv::add(t, " + v(b) + ")";
    const std::string difference = number ? "t - " + v(b) : "kv::sub(t, " + v(b) + ")";
    return indent + "{ const " + type + " t = " + v(a) + "; " + v(a) + " = " + sum + "; " + v(b) + " = " +
           difference + "; }\n";
}

// The stages between values first + j and first + j + step of `count`
// values of `type`, from `step` on.
std::string stages(const std::string& type, int count, int step, int first = 0)
{
    std::string out;
    for (; step < count; step *= 2)
        for (int j = 0; j < count; ++j)
            if ((j & step) == 0)
                out += butterfly(type, first + j, first + j + step, "    ");
    return out;
}

// Four floats per vector: each 4x4 block is transposed, takes the stages
// h = 1, 2 as whole-vector arithmetic and is transposed back.
std::string transposedBlocks(const Sample& s, int count)
{
    std::string out;
    for (int g = 0; g < count; g += 4) {
        const std::string transpose =
            "    transposeBlock(" + v(g) + ", " + v(g + 1) + ", " + v(g + 2) + ", " + v(g + 3) + ");\n";
        out += transpose + stages(s.vector, 4, 1, g) + transpose;
    }
    return out;
}

// Pairs of vectors (a, b) whose index bit h = lanes is 0 in a and 1 in b.
// With 256-bit vectors of two 128-bit halves, the loads trade the halves,
// which puts the top lane bit between a and b (an insert of a 128-bit load
// costs less than a move across halves in registers); each split of even and
// odd lanes then rotates the bits (pair, lane 0, .., lane top-1) by one place,
// so that the lane bits 0, 1, .. come between a and b in turn, each taking its
// stage there; after the last rotation the top lane bit is back between a and
// b and, with `restore`, a trade of halves in registers restores the rows for
// the stage h = lanes.  Four lane moves per vector for three stages of 8
// floats, three for two stages of 4 doubles.  With two doubles per vector
// the split and the trade are both the interleave of the pair's lanes.
std::string splitPairs(const Sample& s, int count, bool restore)
{
    std::ostringstream out;
    for (int j = 0; j < count; j += 2) {
        const std::string pair = "(" + v(j) + ", " + v(j + 1) + ")";
        const std::string interleave = "        { const kv::dvec t = kv::unpackLow" + pair + "; " + v(j + 1) +
                                       " = kv::unpackHigh" + pair + "; " + v(j) + " = t; }\n";
        out << "    {\n";
        for (int h = 1; h < s.lanes; h *= 2)
            out << (s.halves ? "        splitEvenOdd" + pair + ";\n" : interleave)
                << butterfly(s.vector, j, j + 1, "        ");
        if (restore)
            out << (s.halves ? "        exchangeHalves" + pair + ";\n" : interleave);
        out << "    }\n";
    }
    return out.str();
}

// Vector j loaded from its two 128-bit halves at x + low and x + high.
std::string joined(const Sample& s, int j, const std::string& low, const std::string& high)
{
    return "    " + std::string(s.vector) + " " + v(j) + " = kv::join(" + s.halves + "::loadVector(x + " + low + "), " +
           s.halves + "::loadVector(x + " + high + "));\n";
}

// Vector j stored at y + offset, times s under Scaled.
std::string scaledStore(int j, const std::string& offset)
{
    return "    Store::storeVector(y + " + offset + ", Scaled ? kv::mul(" + v(j) + ", s) : " + v(j) + ");\n";
}

const Sample real32{"32f", "float", "kv::fvec", 4, Type::F32, "kv::AlignedAccess", "kv::UnalignedAccess", nullptr};
const Sample real64{"64f", "double", "kv::dvec", 2, Type::F64, "kv::AlignedAccess", "kv::UnalignedAccess", nullptr};
// The 256-bit forms: a kernel knows its arrays to be aligned to 16 bytes, not
// 32, so every 256-bit access is an unaligned move, which costs no more than
// an aligned one where the address happens to be a multiple of 32; aligned
// kernels and twins differ in their route only.
const Sample wide32{"32f", "float", "kv::fwide", 8, Type::F32, "wht::WideAccess", "wht::WideAccess",
                    "kv::UnalignedAccess"};
const Sample wide64{"64f", "double", "kv::dwide", 4, Type::F64, "wht::WideAccess", "wht::WideAccess",
                    "kv::UnalignedAccess"};

// What a network function computes, for the verifier: the samples of x that
// row r, lane c of its vectors hold, and where it stores them.
struct NetworkShape {
    int rows, lanes, stride;
    bool scaled;
    std::function<int(int r, int c)> loaded;
    std::function<int(int r, int c)> stored;
};

// The network function `name` from x into y, then `parameters`.  Its body
// first runs on the check inputs, every lane column held against the plain
// network of its rows: stages h = 1, 2, 4, ..., a+b at i and a-b at i+h,
// each rounded once to the sample type (a sum or product of two floats
// rounded to double and then to float is the float sum or product).
std::string verified(const Sample& s, const std::string& name, const std::string& parameters,
                     const std::string& body, const NetworkShape& shape)
{
    const bool single = s.type == Type::F32;
    const double scale = 0.375;
    int extent = 0;
    for (int r = 0; r < shape.rows; ++r)
        for (int c = 0; c < shape.lanes; ++c)
            extent = std::max(extent, shape.loaded(r, c) + 1);
    auto rounded = [single](double r) { return single ? static_cast<double>(static_cast<float>(r)) : r; };
    const auto reference = [&](const std::vector<double>& x) {
        std::map<int, double> values;
        for (int c = 0; c < shape.lanes; ++c) {
            std::vector<double> column;
            for (int r = 0; r < shape.rows; ++r)
                column.push_back(x[shape.loaded(r, c)]);
            for (std::size_t h = 1; h < column.size(); h *= 2)
                for (std::size_t i = 0; i < column.size(); ++i)
                    if ((i & h) == 0) {
                        const double a = column[i], b = column[i + h];
                        column[i] = rounded(a + b);
                        column[i + h] = rounded(a - b);
                    }
            for (int r = 0; r < shape.rows; ++r)
                values[shape.stored(r, c)] = shape.scaled ? rounded(column[r] * scale) : column[r];
        }
        return values;
    };
    verifyPrintedText(name + " of the Walsh-Hadamard networks", body, verifierInputs(extent, single),
                      {scale, single, shape.stride}, reference);
    return "inline void " + name + "(const " + s.real + "* x, " + s.real + "* y, " + parameters + ")\n{\n" + body +
           "}\n\n";
}

// The network of 2^order samples in one row: on single numbers for the small
// orders, then the scale; on vectors from there, Load reading x, Store writing
// y and Scaled multiplying every output by s as it is stored.
std::string network(const Sample& s, int order)
{
    const int n = 1 << order, count = n / s.lanes, half = s.lanes / 2;
    const bool vector = s.vectorOrder(order);
    std::ostringstream out, body;
    if (!vector) {
        out << "// " << n << "-point network on single numbers, then the scale.\n";
        for (int i = 0; i < n; ++i)
            body << "    " << s.real << " " << v(i) << " = x[" << i << "];\n";
        body << stages(s.real, n, 1);
        for (int i = 0; i < n; ++i)
            body << "    y[" << i << "] = " << v(i) << " * s;\n";
    } else {
        out << "// " << n << "-point network in " << count << " vectors of " << s.lanes << " samples.\n"
            << "template <class Load, class Store, bool Scaled>\n";
        for (int j = 0; j < count; ++j) {
            if (s.halves == nullptr)
                body << "    " << s.vector << " " << v(j) << " = Load::loadVector(x + " << j * s.lanes << ");\n";
            else  // the pair (j & ~1, j | 1) with its halves traded
                body << joined(s, j, std::to_string((j & ~1) * s.lanes + (j & 1) * half),
                               std::to_string((j | 1) * s.lanes + (j & 1) * half));
        }
        body << (s.halves == nullptr && s.type == Type::F32 ? transposedBlocks(s, count) : splitPairs(s, count, true))
             << stages(s.vector, count, 1);
        for (int j = 0; j < count; ++j)
            body << scaledStore(j, std::to_string(j * s.lanes));
    }
    const auto inRow = [](int r, int) { return r; };
    return out.str() + verified(s, s.function("network", order), std::string(vector ? s.vector : s.real) + " s",
                                body.str(), {n, 1, 0, true, inRow, inRow});
}

// 256-bit block network on two neighbouring blocks of 2^order samples at
// once, whose halves share every vector: vector j holds samples j half .. of
// the first block in its lower half and the same samples of the second block
// in its upper half.  The block bit then lies between the halves and the
// stages below it need no move across them: the lane stages rotate the pairs
// back to their loaded layout, the later stages combine whole vectors, and the
// vectors are stored as they are.  The column pass that reads them takes its
// rows' halves apart again with its loads (columnNetwork, traded), which costs
// a load port and a simple operation instead of two moves across halves on the
// shuffle port, which the additions use too.
std::string tradedNetwork(const Sample& s, int order)
{
    const int block = 1 << order, half = s.lanes / 2, count = 2 * block / s.lanes;
    std::ostringstream body;
    for (int j = 0; j < count; ++j)
        body << joined(s, j, std::to_string(j * half), std::to_string(block + j * half));
    // sample bit log2(h) of a block is bit log2(h / half) of the vector index
    body << splitPairs(s, count, false) << stages(s.vector, count, 2);
    for (int j = 0; j < count; ++j)
        body << "    WideAccess::storeVector(y + " << j * s.lanes << ", " << v(j) << ");\n";
    const auto loaded = [block](int r, int c) { return c * block + r; };
    const auto stored = [half, &s](int r, int c) { return (r / half) * s.lanes + c * half + r % half; };
    return "// Two " + std::to_string(block) + "-point networks in " + std::to_string(count) + " vectors of " +
           std::to_string(s.lanes) + " samples, the blocks in the halves.\n" +
           verified(s, s.function("traded", order), s.vector, body.str(), {block, 2, 0, false, loaded, stored});
}

// Radix-R network over R whole vectors at a stride of `stride` samples.
// traded: the rows come in pairs as tradedNetwork stores them, x pointing at
// twice the position within a row: row r's vector is made of the halves that
// hold it, at x + (r - r % 2) stride + (r % 2) half and `lanes` further on.
std::string columnNetwork(const Sample& s, int radix, bool traded = false)
{
    const int half = s.lanes / 2;
    std::ostringstream out, body;
    out << "// Radix-" << radix << " stages over " << radix << " vectors at a stride"
        << (traded ? ", read from pairs of rows in the halves of their vectors" : "") << ".\n"
        << (traded ? "template <class Store, bool Scaled>\n" : "template <class Load, class Store, bool Scaled>\n");
    for (int r = 0; r < radix; ++r) {
        const std::string row = std::to_string(r - r % 2) + " * stride + ";
        if (traded)
            body << joined(s, r, row + std::to_string(r % 2 * half), row + std::to_string(r % 2 * half + s.lanes));
        else
            body << "    " << s.vector << " " << v(r) << " = Load::loadVector(x + " << r << " * stride);\n";
    }
    body << stages(s.vector, radix, 1);
    for (int r = 0; r < radix; ++r)
        body << scaledStore(r, std::to_string(r) + " * stride");
    // verified on rows four vectors apart
    const int stride = 4 * s.lanes;
    const std::function<int(int, int)> at = [stride](int r, int c) { return r * stride + c; };
    const std::function<int(int, int)> pairedRow = [=](int r, int c) {
        return (r - r % 2) * stride + (r % 2) * half + (c < half ? c : s.lanes + c - half);
    };
    return out.str() + verified(s, s.function(traded ? "tradedColumns" : "columns", radix),
                                "int stride, " + std::string(s.vector) + " s", body.str(),
                                {radix, s.lanes, stride, true, traded ? pairedRow : at, at});
}

}  // namespace

const Sample& single() { return target().wide() ? wide32 : real32; }
const Sample& dual() { return target().wide() ? wide64 : real64; }

std::string networksHeader()
{
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// Butterfly networks of the Walsh-Hadamard kernels.\n"
        << "#pragma once\n#include \"wht/lane_moves.h\"\n\nnamespace wht {\n\n";
    for (const Sample* s : {&single(), &dual()}) {
        for (int order = 1; order <= 7; ++order)
            out << network(*s, order);
        // the column networks of the 128-bit passes and, on the 256-bit
        // target, the networks that the passes of the blocked orders name
        std::set<int> blocks, radices{8, 16, 32}, tradedRadices;
        for (int order = 8; order <= 13 && target().wide(); ++order) {
            const Passes p = widePassesOf(*s, order);
            if (!p.traded)
                continue;
            blocks.insert(static_cast<int>(std::log2(p.block)));
            tradedRadices.insert(p.first[0]);
            radices.insert(p.first.begin() + 1, p.first.end());
            radices.insert(p.last.begin(), p.last.end());
        }
        for (int order : blocks)
            out << tradedNetwork(*s, order);
        for (int radix : radices)
            out << columnNetwork(*s, radix);
        for (int radix : tradedRadices)
            out << columnNetwork(*s, radix, true);
    }
    out << "}  // namespace wht\n";
    return out.str();
}

}  // namespace gen::wht
