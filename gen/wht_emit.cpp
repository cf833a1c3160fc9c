// Emitter of the Walsh-Hadamard family.
//
// The butterfly networks are written out statement by statement: for a vector
// of 2^k samples the stages h = 1, 2, 4, ... run in that order, each pair
// (n, n+h) giving a+b at n and a-b at n+h, exactly the plain radix-2 network.
// A vector holds `lanes` consecutive samples; the stages h < lanes pair samples
// inside a vector and need lane moves, every later stage is whole-vector
// arithmetic.  With 128-bit vectors, Real32 networks from 16 samples transpose
// 4x4 blocks for the stages h = 1, 2 and Real64 networks from 8 samples
// interleave pairs of vectors for the stage h = 1.  With 256-bit vectors (8
// floats or 4 doubles) each pair of vectors is loaded with its 128-bit halves
// traded, which puts the top lane bit across the pair, then splits even and odd
// lanes once per remaining stage, which rotates the next index bit across the
// pair; a last trade of halves restores the rows.  The block passes of the
// blocked orders skip that trade: they hold two blocks, one per half, and the
// column pass after them loads each row from its halves.  The lane moves only
// carry samples, so every addition keeps its two operands and the bits don't
// depend on the width.  Column networks combine R whole vectors at a stride.
// The kernels, their unaligned twins and the dispatchers are units of their
// own; the loops of the blocked orders live in src/wht/passes.h.
#include <cmath>
#include <cstdlib>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "family.h"
#include "forms.h"

namespace gen {

namespace {

struct Sample;
// Writes the stages h < lanes of a network held in `count` vectors v0, v1, ...
using LaneStages = std::string (*)(const Sample& s, int count);

struct Sample {
    const char* suffix;     // 32f or 64f
    const char* real;       // float or double
    const char* vector;     // kv::v4f, kv::v2d (128 bits) or kv::v8f, kv::v4d (256 bits)
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

std::string butterfly(const Sample& s, const std::string& a, const std::string& b, const std::string& indent)
{
    return indent + "{ const " + s.vector + " t = " + a + "; " + a + " = kv::add(t, " + b + "); " + b + " = kv::sub(t, " + b +
           "); }\n";
}

// Four floats per vector: each 4x4 block is transposed, takes the stages
// h = 1, 2 as whole-vector arithmetic and is transposed back.
std::string transposedBlocks(const Sample&, int count)
{
    std::ostringstream out;
    // stages 1 and 2 across the columns of each 4x4 block
    for (int g = 0; g < count; g += 4) {
        const std::string v0 = "v" + std::to_string(g), v1 = "v" + std::to_string(g + 1),
                          v2 = "v" + std::to_string(g + 2), v3 = "v" + std::to_string(g + 3);
        out << "    kv::transpose4(" << v0 << ", " << v1 << ", " << v2 << ", " << v3 << ");\n";
        out << "    {\n"
            << "        const kv::v4f p0 = kv::add(" << v0 << ", " << v1 << "), p1 = kv::sub(" << v0 << ", " << v1 << ");\n"
            << "        const kv::v4f p2 = kv::add(" << v2 << ", " << v3 << "), p3 = kv::sub(" << v2 << ", " << v3 << ");\n"
            << "        " << v0 << " = kv::add(p0, p2);\n        " << v2 << " = kv::sub(p0, p2);\n"
            << "        " << v1 << " = kv::add(p1, p3);\n        " << v3 << " = kv::sub(p1, p3);\n"
            << "    }\n";
        out << "    kv::transpose4(" << v0 << ", " << v1 << ", " << v2 << ", " << v3 << ");\n";
    }
    return out.str();
}

// Two doubles per vector: the stage h = 1 between the interleaved lanes of
// each pair of vectors.
std::string interleavedPairs(const Sample&, int count)
{
    std::ostringstream out;
    // stage 1 within each pair of vectors, then back to rows
    for (int j = 0; j < count; j += 2) {
        const std::string a = "v" + std::to_string(j), b = "v" + std::to_string(j + 1);
        out << "    {\n"
            << "        const kv::v2d even = kv::unpackLow(" << a << ", " << b << "), odd = kv::unpackHigh(" << a << ", "
            << b << ");\n"
            << "        const kv::v2d sum = kv::add(even, odd), difference = kv::sub(even, odd);\n"
            << "        " << a << " = kv::unpackLow(sum, difference);\n"
            << "        " << b << " = kv::unpackHigh(sum, difference);\n"
            << "    }\n";
    }
    return out.str();
}

// 256-bit vectors of two 128-bit halves: per pair of vectors (a, b), whose
// index bit h = lanes is 0 in a and 1 in b, the loads trade the halves, which
// puts the top lane bit between a and b (an insert of a 128-bit load costs
// less than a move across halves in registers); each split of even and odd
// lanes then rotates the bits (pair, lane 0, .., lane top-1) by one place, so
// that the lane bits 0, 1, .. come between a and b in turn, each taking its
// stage there; after the last rotation the top lane bit is back between a and
// b and a trade of halves in registers restores the rows for the stage
// h = lanes.  Four lane moves per vector for three stages of 8 floats, three
// for two stages of 4 doubles.
std::string exchangedPairs(const Sample& s, int count)
{
    std::ostringstream out;
    for (int j = 0; j < count; j += 2) {
        const std::string a = "v" + std::to_string(j), b = "v" + std::to_string(j + 1);
        // the halves were traded by the loads
        out << "    {\n";
        for (int h = 1; h < s.lanes; h *= 2)
            out << "        kv::splitEvenOdd(" << a << ", " << b << ");\n" << butterfly(s, a, b, "        ");
        out << "        kv::exchangeHalves(" << a << ", " << b << ");\n    }\n";
    }
    return out.str();
}

const Sample real32{"32f", "float", "kv::v4f", 4, Type::F32, "kv::set1f", "kv::AlignedAccess", "kv::UnalignedAccess",
                    transposedBlocks, nullptr};
const Sample real64{"64f", "double", "kv::v2d", 2, Type::F64, "kv::set1", "kv::AlignedAccess", "kv::UnalignedAccess",
                    interleavedPairs, nullptr};
// The 256-bit forms: a kernel knows its arrays to be aligned to 16 bytes, not
// 32, so every 256-bit access is an unaligned move, which costs no more than
// an aligned one where the address happens to be a multiple of 32; aligned
// kernels and twins differ in their route only.
const Sample wide32{"32f", "float", "kv::v8f", 8, Type::F32, "kv::set1f8", "kv::WideAccess", "kv::WideAccess",
                    exchangedPairs, "kv::UnalignedAccess"};
const Sample wide64{"64f", "double", "kv::v4d", 4, Type::F64, "kv::set1d", "kv::WideAccess", "kv::WideAccess",
                    exchangedPairs, "kv::UnalignedAccess"};

// The sample descriptions of the target the generator writes for.
const Sample& single() { return target().wide() ? wide32 : real32; }
const Sample& dual() { return target().wide() ? wide64 : real64; }

// Scalar network of 2^order samples (the small orders that stay scalar).
std::string scalarNetwork(const Sample& s, int order)
{
    const int n = 1 << order;
    std::ostringstream out;
    out << "// " << n << "-point network on single numbers, then the scale.\n"
        << "inline void network" << s.suffix << "_" << order << "(const " << s.real << "* x, " << s.real << "* y, "
        << s.real << " s)\n{\n";
    for (int i = 0; i < n; ++i)
        out << "    const " << s.real << " a" << i << " = x[" << i << "];\n";
    std::string prefix = "a";
    int level = 0;
    for (int h = 1; h < n; h *= 2, ++level) {
        const std::string next = "b" + std::to_string(level) + "_";
        for (int i = 0; i < n; ++i) {
            if (i & h)
                out << "    const " << s.real << " " << next << i << " = " << prefix << (i - h) << " - " << prefix << i << ";\n";
            else
                out << "    const " << s.real << " " << next << i << " = " << prefix << i << " + " << prefix << (i + h) << ";\n";
        }
        prefix = next;
    }
    for (int i = 0; i < n; ++i)
        out << "    y[" << i << "] = " << prefix << i << " * s;\n";
    out << "}\n\n";
    return out.str();
}

// Vector network of 2^order samples: Load reads x, Store writes y, Scaled
// multiplies every output by s as it is stored.
std::string vectorNetwork(const Sample& s, int order)
{
    const int n = 1 << order, count = n / s.lanes;
    std::ostringstream out;
    out << "// " << n << "-point network in " << count << " vectors of " << s.lanes << " samples.\n"
        << "template <class Load, class Store, bool Scaled>\n"
        << "inline void network" << s.suffix << "_" << order << "(const " << s.real << "* x, " << s.real << "* y, "
        << s.vector << " s)\n{\n";
    if (s.halves != nullptr) {
        const int half = s.lanes / 2;
        for (int j = 0; j < count; j += 2)
            for (int k = 0; k < 2; ++k)
                out << "    " << s.vector << " v" << j + k << " = kv::join(" << s.halves << "::loadVector(x + "
                    << j * s.lanes + k * half << "), " << s.halves << "::loadVector(x + " << (j + 1) * s.lanes + k * half
                    << "));\n";
    } else {
        for (int j = 0; j < count; ++j)
            out << "    " << s.vector << " v" << j << " = Load::loadVector(x + " << j * s.lanes << ");\n";
    }
    out << s.laneStages(s, count);
    // whole-vector stages: vectors j and j + step, step = h / lanes
    for (int h = s.lanes, step = 1; h < n; h *= 2, step *= 2) {
        for (int j = 0; j < count; ++j) {
            if (j & step)
                continue;
            out << butterfly(s, "v" + std::to_string(j), "v" + std::to_string(j + step), "    ");
        }
    }
    for (int j = 0; j < count; ++j)
        out << "    Store::storeVector(y + " << j * s.lanes << ", Scaled ? kv::mul(v" << j << ", s) : v" << j << ");\n";
    out << "}\n\n";
    return out.str();
}

// 256-bit block network on two neighbouring blocks of 2^order samples at
// once, whose halves share every vector: vector j holds samples j half .. of
// the first block in its lower half and the same samples of the second block
// in its upper half.  The block bit then lies between the halves and the
// stages below it need no move across them: the lane stages rotate the pairs
// back to their loaded layout, the later stages combine whole vectors, and the
// vectors are stored as they are.  The column pass that reads them takes its
// rows' halves apart again with its loads (tradedColumns), which costs a load
// port and a simple operation instead of two moves across halves on the
// shuffle port, which the additions use too.
std::string tradedNetwork(const Sample& s, int order)
{
    const int block = 1 << order, half = s.lanes / 2, count = 2 * block / s.lanes;
    std::ostringstream out;
    out << "// Two " << block << "-point networks in " << count << " vectors of " << s.lanes
        << " samples, the blocks in the halves.\n"
        << "inline void traded" << s.suffix << "_" << order << "(const " << s.real << "* x, " << s.real << "* y, "
        << s.vector << ")\n{\n";
    for (int j = 0; j < count; ++j)
        out << "    " << s.vector << " v" << j << " = kv::join(" << s.halves << "::loadVector(x + " << j * half << "), "
            << s.halves << "::loadVector(x + " << block + j * half << "));\n";
    for (int j = 0; j < count; j += 2) {
        const std::string a = "v" + std::to_string(j), b = "v" + std::to_string(j + 1);
        out << "    {\n";
        for (int h = 1; h < s.lanes; h *= 2)
            out << "        kv::splitEvenOdd(" << a << ", " << b << ");\n" << butterfly(s, a, b, "        ");
        out << "    }\n";
    }
    // sample bit log2(h) of a block is bit log2(h / half) of the vector index
    for (int h = s.lanes, step = 2; h < block; h *= 2, step *= 2)
        for (int j = 0; j < count; ++j) {
            if (j & step)
                continue;
            out << butterfly(s, "v" + std::to_string(j), "v" + std::to_string(j + step), "    ");
        }
    for (int j = 0; j < count; ++j)
        out << "    kv::WideAccess::storeVector(y + " << j * s.lanes << ", v" << j << ");\n";
    out << "}\n\n";
    return out.str();
}

// Radix-R network over R whole vectors at a stride of `stride` samples.
// traded: the rows come in pairs as tradedNetwork stores them, x pointing at
// twice the position within a row: row r's vector is made of the halves that
// hold it, at x + (r - r % 2) stride + (r % 2) half and `lanes` further on.
std::string columnNetwork(const Sample& s, int radix, bool traded = false)
{
    std::ostringstream out;
    out << "// Radix-" << radix << " stages over " << radix << " vectors at a stride"
        << (traded ? ", read from pairs of rows in the halves of their vectors" : "") << ".\n"
        << (traded ? "template <class Store, bool Scaled>\n" : "template <class Load, class Store, bool Scaled>\n")
        << "inline void " << (traded ? "tradedColumns" : "columns") << s.suffix << "_" << radix << "(const " << s.real
        << "* x, " << s.real << "* y, int stride, " << s.vector << " s)\n{\n";
    for (int r = 0; r < radix; ++r) {
        if (traded) {
            const int offset = (r % 2) * (s.lanes / 2);
            out << "    " << s.vector << " v" << r << " = kv::join(" << s.halves << "::loadVector(x + " << r - r % 2
                << " * stride + " << offset << "), " << s.halves << "::loadVector(x + " << r - r % 2 << " * stride + "
                << offset + s.lanes << "));\n";
        } else {
            out << "    " << s.vector << " v" << r << " = Load::loadVector(x + " << r << " * stride);\n";
        }
    }
    for (int step = 1; step < radix; step *= 2)
        for (int r = 0; r < radix; ++r) {
            if (r & step)
                continue;
            out << butterfly(s, "v" + std::to_string(r), "v" + std::to_string(r + step), "    ");
        }
    for (int r = 0; r < radix; ++r)
        out << "    Store::storeVector(y + " << r << " * stride, Scaled ? kv::mul(v" << r << ", s) : v" << r << ");\n";
    out << "}\n\n";
    return out.str();
}

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

std::string kernelName(const Sample& s, int order)
{
    return "kvtgWHT_" + std::to_string(order) + "_" + s.suffix;
}

// "8,4" -> {8, 4}; "-" -> {}
std::vector<int> radicesOf(const Form& form, const std::string& field)
{
    std::vector<int> radices;
    const std::string& text = form.get(field);
    if (text == "-")
        return radices;
    std::istringstream list(text);
    std::string item;
    while (std::getline(list, item, ','))
        radices.push_back(std::atoi(item.c_str()));
    return radices;
}

// The passes of a blocked order on the 256-bit target, as the table of forms
// gives them.  They were chosen by timing, not by a search of the generator:
// exploring keeps the lines as they are.
WidePasses widePassesOf(const Sample& s, int order)
{
    const Form form = formOf(kernelName(s, order), nullptr);
    if (form.get("body") != "passes")
        formError(form.kernel, "a blocked order of the 256-bit file takes passes");
    WidePasses p;
    p.block = std::atoi(form.get("block").c_str());
    p.first = radicesOf(form, "first");
    p.strip = std::atoi(form.get("strip").c_str());
    p.last = radicesOf(form, "last");
    p.traded = form.get("traded") == "yes";
    if (p.block < 2 || (p.block & (p.block - 1)) != 0 || p.first.empty())
        formError(form.kernel, "passes need a block of a power of two and a first run");
    return p;
}

std::string networksHeader()
{
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// Butterfly networks of the Walsh-Hadamard kernels.\n"
        << "#pragma once\n#include \"" << target().simdHeader() << "\"\n\nnamespace wht {\n\n";
    for (int order = 1; order <= 3; ++order)
        out << scalarNetwork(single(), order);
    for (int order = 1; order <= 2; ++order)
        out << scalarNetwork(dual(), order);
    for (int order = 4; order <= 7; ++order)
        out << vectorNetwork(single(), order);
    for (int order = 3; order <= 7; ++order)
        out << vectorNetwork(dual(), order);
    for (int radix : {8, 16, 32}) {
        out << columnNetwork(single(), radix);
        out << columnNetwork(dual(), radix);
    }
    if (target().wide()) {
        // the networks that the passes of the blocked orders name
        for (const Sample* s : {&single(), &dual()}) {
            std::set<int> blocks, radices, tradedRadices;
            for (int order = 8; order <= 13; ++order) {
                const WidePasses p = widePassesOf(*s, order);
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
                if (radix < 8)
                    out << columnNetwork(*s, radix);
            for (int radix : tradedRadices)
                out << columnNetwork(*s, radix, true);
        }
    }
    out << "}  // namespace wht\n";
    return out.str();
}

// The passes of the blocked orders, per sample type: {block, radix, strip,
// strip radix, final radix}; strip 0 marks a two-pass kernel.
struct Passes {
    int block, radix, strip, stripRadix, finalRadix;
};

Passes narrowPassesOf(const Sample& s, int order)
{
    if (s.type == Type::F32) {
        switch (order) {
        case 8: return {32, 8, 0, 0, 0};
        case 9: return {64, 8, 0, 0, 0};
        case 10: return {64, 16, 0, 0, 0};
        case 11: return {64, 32, 0, 0, 0};
        case 12: return {64, 0, 512, 8, 8};
        default: return {64, 0, 512, 8, 16};
        }
    }
    switch (order) {
    case 8: return {32, 8, 0, 0, 0};
    case 9: return {32, 16, 0, 0, 0};
    case 10: return {128, 8, 0, 0, 0};
    case 11: return {32, 0, 256, 8, 8};
    case 12: return {32, 0, 256, 8, 16};
    default: return {128, 0, 1024, 8, 8};
    }
}

// Bytes of the work buffer: N samples, plus one strip for a three-pass kernel.
int bufferBytes(const Sample& s, int order)
{
    if (order < 8)
        return 0;
    const int size = s.type == Type::F32 ? 4 : 8;
    return ((1 << order) + narrowPassesOf(s, order).strip) * size;
}

// The passes of a blocked kernel of the 256-bit file.  Column passes after
// the first work in place on their target (dst or a strip of main); src is
// read in full by the block pass before anything is written to dst, so
// src == dst keeps working.
std::string widePasses(const Sample& s, int order)
{
    const int n = 1 << order;
    const WidePasses p = widePassesOf(s, order);
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
    const std::string broadcast = std::string(s.broadcast) + "(s)";
    const std::string lanes = std::to_string(s.lanes);
    // a run of column passes from `from` into `to`, rows of `row` samples at first
    auto run = [&](const std::vector<int>& radices, bool traded, const std::string& from, const std::string& to,
                   const std::string& fromAccess, const std::string& toAccess, int row, int count, bool scaledLast,
                   const std::string& indent) {
        std::ostringstream out;
        for (std::size_t i = 0; i < radices.size(); ++i) {
            const bool scaled = scaledLast && i + 1 == radices.size();
            const bool fromPairs = traded && i == 0;  // rows in pairs, as the block pass left them
            const std::string r = std::to_string(radices[i]);
            const std::string network = fromPairs ? "wht::tradedColumns" + std::string(s.suffix) + "_" + r + "<" + toAccess
                                                  : "wht::columns" + std::string(s.suffix) + "_" + r + "<" +
                                                        (i == 0 ? fromAccess : toAccess) + ", " + toAccess;
            out << indent << "wht::columnGroups<" << types << network << (scaled ? ", true>" : ", false>")
                << (fromPairs ? ", 2>(" : ">(") << (i == 0 ? from : to) << ", " << to << ", " << count << ", " << row << ", "
                << r << ", " << lanes << ", " << broadcast << ");\n";
            row *= radices[i];
        }
        return out.str();
    };
    const std::string blockOrder = std::to_string(static_cast<int>(std::log2(p.block)));
    const std::string block = "wht::blockPass<" + types +
                              (p.traded ? "wht::traded" + std::string(s.suffix) + "_" + blockOrder
                                        : "wht::network" + std::string(s.suffix) + "_" + blockOrder + "<Access, " +
                                              s.aligned + ", false>") +
                              ">";
    const int passBlock = p.traded ? 2 * p.block : p.block;
    std::ostringstream out;
    if (p.strip == 0) {
        out << "    " << block << "(src, main, " << n << ", " << passBlock << ");\n"
            << run(p.first, p.traded, "main", "dst", s.aligned, "Access", p.block, n, true, "    ");
        return out.str();
    }
    const std::string stripTarget = "main + t * " + std::to_string(length);
    out << "    " << s.real << "* const strip = main + " << n << ";\n"
        << "    for (int t = 0; t < " << n / length << "; ++t) {\n"
        << "        " << block << "(src + t * " << length << ", strip, " << length << ", " << passBlock << ");\n"
        << run(p.first, p.traded, "strip", stripTarget, s.aligned, s.aligned, p.block, length, false, "        ") << "    }\n"
        << run(p.last, false, "main", "dst", s.aligned, "Access", length, n, true, "    ");
    return out.str();
}

// A kernel with one body only on the current target (the scalar or vector
// network, or the 128-bit passes): its line of the table must name it.
void expectOneBody(const std::string& name, const std::string& body)
{
    const Form form = formOf(name, [&] { return Form().set("body", body); });
    if (form.get("body") != body)
        formError(name, "the one body of this kernel on this target is " + body);
}

std::string kernelUnit(const Sample& s, int order)
{
    const int n = 1 << order;
    const bool blocked = order >= 8;
    const bool vector = s.type == Type::F32 ? order >= 4 : order >= 3;
    const bool twin = order >= 4;
    const std::string name = kernelName(s, order);
    const std::string twinName = "owngWHT_" + std::to_string(order) + "_" + s.suffix + "_unaligned";
    const std::string real = s.real;
    const std::string args = "const " + real + "* src, " + real + "* dst, int32_t flag" +
                             (blocked ? ", uint8_t* buffer" : "");
    const std::string callArgs = std::string("src, dst, flag") + (blocked ? ", buffer" : "");
    const std::string byN = literal(s.type, roundTo(s.type, 1.0L / n));
    const std::string bySqrt = literal(s.type, roundTo(s.type, 1.0L / std::sqrt(static_cast<long double>(n))));
    const std::string broadcast = std::string(s.broadcast) + "(s)";
    if (!blocked || s.halves == nullptr)
        expectOneBody(name, !vector ? "scalar" : blocked ? "blocks" : "network");

    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// Walsh-Hadamard transform of order " << order << " (" << n << " samples), " << (s.type == Type::F32 ? "Real32" : "Real64")
        << ".\n#include \"frame.h\"\n#include \"wht/passes.h\"\n#include \"wht_networks.h\"\n\nnamespace {\n\n";
    out << (twin ? "template <class Access>\n" : "") << "inline Status run(" << args << ")\n{\n"
        << "    if (src == nullptr || dst == nullptr)\n        return StatusNullArg;\n"
        << "    " << real << " s;\n"
        << "    if (!kvtg::pickFactor<" << real << ">(flag, kvtg::Direction::Both, " << byN << ", " << bySqrt << ", s))\n"
        << "        return StatusBadFlag;\n";
    const std::string access = twin ? "Access" : s.unaligned;
    if (!vector) {
        out << "    wht::network" << s.suffix << "_" << order << "(src, dst, s);\n";
    } else if (!blocked) {
        out << "    wht::network" << s.suffix << "_" << order << "<" << access << ", " << access << ", true>(src, dst, "
            << broadcast << ");\n";
    } else {
        out << "    // a buffer of our own lives for this call only\n"
            << "    uint8_t* const work = buffer != nullptr ? buffer : static_cast<uint8_t*>(kvtMalloc(" << bufferBytes(s, order)
            << "));\n"
            << "    " << real << "* const main = reinterpret_cast<" << real << "*>(work);\n";
        if (s.halves != nullptr) {
            out << widePasses(s, order);
        } else {
            const Passes p = narrowPassesOf(s, order);
            const std::string types = real + ", " + s.vector + ", ";
            auto network = [&](const std::string& load) {
                return "wht::network" + std::string(s.suffix) + "_" + std::to_string(static_cast<int>(std::log2(p.block))) +
                       "<" + load + ", " + s.aligned + ", false>";
            };
            auto columns = [&](int radix, const std::string& store, bool scaled) {
                return "wht::columns" + std::string(s.suffix) + "_" + std::to_string(radix) + "<" + s.aligned + ", " +
                       store + (scaled ? ", true>" : ", false>");
            };
            if (p.strip == 0) {
                out << "    wht::blockPass<" << types << network(access) << ">(src, main, " << n << ", " << p.block << ");\n"
                    << "    wht::columnPass<" << types << columns(p.radix, access, true) << ">(main, dst, " << n / p.radix
                    << ", " << s.lanes << ", " << broadcast << ");\n";
            } else {
                const int stripLength = p.strip;
                out << "    " << real << "* const strip = main + " << n << ";\n"
                    << "    for (int t = 0; t < " << n / stripLength << "; ++t) {\n"
                    << "        wht::blockPass<" << types << network(access) << ">(src + t * " << stripLength << ", strip, "
                    << stripLength << ", " << p.block << ");\n"
                    << "        wht::columnPass<" << types << columns(p.stripRadix, s.aligned, false) << ">(strip, main + t * "
                    << stripLength << ", " << stripLength / p.stripRadix << ", " << s.lanes << ", " << broadcast << ");\n"
                    << "    }\n"
                    << "    wht::columnPass<" << types << columns(p.finalRadix, access, true) << ">(main, dst, "
                    << stripLength << ", " << s.lanes << ", " << broadcast << ");\n";
            }
        }
        out << "    if (buffer == nullptr)\n        kvtFree(work);\n";
    }
    out << "    return StatusOk;\n}\n\n}  // namespace\n\n";
    if (twin) {
        out << "extern \"C\" Status " << twinName << "(" << args << ");\n\n"
            << "extern \"C\" Status " << twinName << "(" << args << ")\n{\n"
            << "    return run<" << s.unaligned << ">(" << callArgs << ");\n}\n\n"
            << "extern \"C\" KVTG_API Status " << name << "(" << args << ")\n{\n"
            << "    if (!kvtg::bothAligned16(src, dst))\n        return " << twinName << "(" << callArgs << ");\n"
            << "    return run<" << s.aligned << ">(" << callArgs << ");\n}\n";
    } else {
        out << "extern \"C\" KVTG_API Status " << name << "(" << args << ")\n{\n    return run(" << callArgs << ");\n}\n";
    }
    return out.str();
}

std::string dispatcherUnit(const Sample& s)
{
    const std::string real = s.real;
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n// Order dispatcher of the Walsh-Hadamard transform.\n"
        << "#include \"frame.h\"\n\n"
        << "extern \"C\" KVTG_API Status kvtgWHT_" << s.suffix << "(const " << real << "* src, " << real
        << "* dst, int32_t order, int32_t flag, uint8_t* buffer)\n{\n"
        << "    // the order is the only test here; orders up to 7 take no buffer\n"
        << "    switch (order) {\n";
    for (int order = 1; order <= 13; ++order)
        out << "    case " << order << ": return kvtgWHT_" << order << "_" << s.suffix << "(src, dst, flag"
            << (order >= 8 ? ", buffer" : "") << ");\n";
    out << "    default: return StatusBadSize;\n    }\n}\n";
    return out.str();
}

std::string bufferSizeUnit(const Sample& s)
{
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n// Work-buffer size of the Walsh-Hadamard transform.\n"
        << "#include \"frame.h\"\n\n"
        << "extern \"C\" KVTG_API Status kvtgWHTGetBufferSize_" << s.suffix << "(int32_t order, int32_t* pSize)\n{\n"
        << "    static const int32_t bytes[13] = {";
    for (int order = 1; order <= 13; ++order)
        out << bufferBytes(s, order) << (order < 13 ? ", " : "");
    out << "};\n"
        << "    if (order < 1 || order > 13)\n        return StatusBadSize;\n"
        << "    *pSize = bytes[order - 1];\n    return StatusOk;\n}\n";
    return out.str();
}

void emitWht(const std::string& directory)
{
    writeIfChanged(directory + "/wht_networks.h", networksHeader());
    for (const Sample* s : {&single(), &dual()}) {
        const std::string stem = std::string("pgenwht") + s->suffix + "w7";
        for (int order = 1; order <= 13; ++order)
            writeIfChanged(directory + "/" + stem + "_" + std::to_string(order) + ".cpp", kernelUnit(*s, order));
        writeIfChanged(directory + "/" + stem + ".cpp", dispatcherUnit(*s));
        writeIfChanged(directory + "/" + stem + "_buffersize.cpp", bufferSizeUnit(*s));
    }
}

const FamilyRegistration registration("wht", emitWht);

}  // namespace

}  // namespace gen
