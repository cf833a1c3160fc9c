// The passes of the Walsh-Hadamard kernels of orders 8 to 13, as statements of
// a kernel's run: a block pass of networks over blocks of samples into the
// work buffer, then column passes that combine whole vectors at a stride,
// strip by strip where the order is too long for two passes.  The 128-bit
// file's passes are fixed per order and sample type; the 256-bit file's come
// from the table of forms and are checked to cover the order with the
// 128-bit file's buffer.  The loops themselves live in src/wht/passes.h.
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "forms.h"
#include "wht_sample.h"

namespace gen::wht {

namespace {

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

}  // namespace

// Bytes of the work buffer: N samples, plus one strip for a three-pass kernel.
int bufferBytes(const Sample& s, int order)
{
    if (order < 8)
        return 0;
    const int size = s.type == Type::F32 ? 4 : 8;
    return ((1 << order) + narrowPassesOf(s, order).strip) * size;
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

std::string narrowPasses(const Sample& s, int order, const std::string& access)
{
    const int n = 1 << order;
    const std::string real = s.real;
    const std::string broadcast = std::string(s.broadcast) + "(s)";
    std::ostringstream out;
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
    return out.str();
}

}  // namespace gen::wht
