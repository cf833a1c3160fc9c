// Emitter of the Walsh-Hadamard family: one unit per kernel of orders 1 to 13
// and sample type, the order dispatcher and the query of the work buffer's
// size, beside the header of networks (wht_networks.cpp) that the kernels
// call.  A kernel runs its network (orders up to 7) or its passes through a
// work buffer (orders 8 to 13): a block pass of networks over blocks of
// samples, then column passes that combine whole vectors at a stride, strip by
// strip where the order is too long for two passes.  The loops of the passes
// live in src/wht/passes.h.
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "family.h"
#include "forms.h"
#include "wht_sample.h"

namespace gen::wht {

namespace {

// The 128-bit file's passes of orders 8 to 13, Real32 and Real64.
const Passes narrow[2][6] = {
    {{32, {8}, 0, {}}, {64, {8}, 0, {}}, {64, {16}, 0, {}}, {64, {32}, 0, {}}, {64, {8}, 512, {8}},
     {64, {8}, 512, {16}}},
    {{32, {8}, 0, {}}, {32, {16}, 0, {}}, {128, {8}, 0, {}}, {32, {8}, 256, {8}}, {32, {8}, 256, {16}},
     {128, {8}, 1024, {8}}}};

const Passes& narrowPassesOf(const Sample& s, int order) { return narrow[s.type == Type::F32 ? 0 : 1][order - 8]; }

// "8,4" -> {8, 4}; "-" -> {}
std::vector<int> radicesOf(const Form& form, const std::string& field)
{
    std::vector<int> radices;
    std::istringstream list(form.get(field) == "-" ? "" : form.get(field));
    for (std::string item; std::getline(list, item, ',');)
        radices.push_back(std::atoi(item.c_str()));
    return radices;
}

std::string kernelName(const Sample& s, int order) { return "kvtgWHT_" + std::to_string(order) + "_" + s.suffix; }

// Bytes of the work buffer: N samples, plus one strip for a three-pass kernel.
int bufferBytes(const Sample& s, int order)
{
    return order < 8 ? 0 : ((1 << order) + narrowPassesOf(s, order).strip) * (s.type == Type::F32 ? 4 : 8);
}

// The statements of the passes of a blocked kernel, from src through the work
// buffer `main` into dst; the first pass reads src and the last writes dst
// through the kernel's access class `Access`.  Column passes after the first
// work in place on their target (dst or a strip of main); src is read in full
// by the block pass before anything is written to dst, so src == dst keeps
// working.
std::string passes(const Sample& s, int order)
{
    const int n = 1 << order;
    const Passes p = s.halves != nullptr ? widePassesOf(s, order) : narrowPassesOf(s, order);
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
    // a run of column passes from `from` into `to` (dst, scaled at the end, or a strip of main), rows of `row`
    // samples at first
    auto run = [&](const std::vector<int>& radices, bool traded, const std::string& from, const std::string& to,
                   int row, int count, const std::string& indent) {
        const bool last = to == "dst";
        const std::string toAccess = last ? "Access" : s.aligned;
        std::ostringstream out;
        for (std::size_t i = 0; i < radices.size(); ++i) {
            const std::string scaled = last && i + 1 == radices.size() ? ", true>" : ", false>";
            const bool fromPairs = traded && i == 0;  // rows in pairs, as the block pass left them
            const std::string load = fromPairs ? "" : (i == 0 ? std::string(s.aligned) : toAccess) + ", ";
            const std::string network =
                "wht::" + s.function(fromPairs ? "tradedColumns" : "columns", radices[i]) + "<" + load + toAccess;
            out << indent << "wht::columnGroups<" << types << network << scaled << (fromPairs ? ", 2>(" : ">(")
                << (i == 0 ? from : to) << ", " << to << ", " << count << ", " << row << ", " << radices[i] << ", "
                << s.lanes << ", " << s.factor() << ");\n";
            row *= radices[i];
        }
        return out.str();
    };
    const int blockOrder = static_cast<int>(std::log2(p.block));
    const std::string blockNetwork = s.function(p.traded ? "traded" : "network", blockOrder) +
                                     (p.traded ? "" : std::string("<Access, ") + s.aligned + ", false>");
    const std::string block = "wht::blockPass<" + types + "wht::" + blockNetwork + ">";
    const int passBlock = p.traded ? 2 * p.block : p.block;
    if (p.strip == 0)
        return "    " + block + "(src, main, " + std::to_string(n) + ", " + std::to_string(passBlock) + ");\n" +
               run(p.first, p.traded, "main", "dst", p.block, n, "    ");
    std::ostringstream out;
    out << "    " << s.real << "* const strip = main + " << n << ";\n"
        << "    for (int t = 0; t < " << n / length << "; ++t) {\n"
        << "        " << block << "(src + t * " << length << ", strip, " << length << ", " << passBlock << ");\n"
        << run(p.first, p.traded, "strip", "main + t * " + std::to_string(length), p.block, length, "        ")
        << "    }\n" << run(p.last, false, "main", "dst", length, n, "    ");
    return out.str();
}

// The unit of a kernel.  Its run, a template over the access class of src and
// dst, tests the pointers and the flag, then runs the network, or the passes
// of a blocked order through the work buffer, the caller's or one allocated
// for the call; from order 4 on, the kernel has an unaligned twin.
std::string kernelUnit(const Sample& s, int order)
{
    const bool blocked = order >= 8, twin = order >= 4;
    const std::string name = kernelName(s, order), real = s.real;
    // A kernel with one body only on the current target (the scalar or vector
    // network, or the 128-bit passes): its line of the table must name it.
    if (!blocked || s.halves == nullptr) {
        const std::string body = !s.vectorOrder(order) ? "scalar" : blocked ? "blocks" : "network";
        if (formOf(name, [&] { return Form().set("body", body); }).get("body") != body)
            formError(name, "the one body of this kernel on this target is " + body);
    }
    const std::string args = "const " + real + "* src, " + real + "* dst, int32_t flag" +
                             (blocked ? ", uint8_t* buffer" : "");
    const std::string callArgs = std::string("src, dst, flag") + (blocked ? ", buffer" : "");
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// Walsh-Hadamard transform of order " << order << " (" << (1 << order) << " samples), "
        << (s.type == Type::F32 ? "Real32" : "Real64") << ".\n"
        << "#include \"frame.h\"\n#include \"wht/passes.h\"\n#include \"wht_networks.h\"\n\nnamespace {\n\n"
        << "template <class Access>\ninline Status run(" << args << ")\n{\n"
        << "    if (src == nullptr || dst == nullptr)\n        return StatusNullArg;\n"
        << "    " << real << " s;\n"
        << "    if (!kvtg::pickFactor<" << real << ">(flag, kvtg::Direction::Both, "
        << factorLiterals(s.type, 1 << order) << ", s))\n        return StatusBadFlag;\n";
    if (!blocked)
        out << "    wht::" << s.function("network", order)
            << (s.vectorOrder(order) ? "<Access, Access, true>(src, dst, " + s.factor() : "(src, dst, s") << ");\n";
    else
        out << "    // a buffer of our own lives for this call only\n"
            << "    uint8_t* const work = buffer != nullptr ? buffer : static_cast<uint8_t*>(kvtMalloc("
            << bufferBytes(s, order) << "));\n"
            << "    " << real << "* const main = reinterpret_cast<" << real << "*>(work);\n"
            << passes(s, order) << "    if (buffer == nullptr)\n        kvtFree(work);\n";
    out << "    return StatusOk;\n}\n\n}  // namespace\n\n";
    const std::string twinName = "owngWHT_" + std::to_string(order) + "_" + s.suffix + "_unaligned";
    if (twin)
        out << "extern \"C\" Status " << twinName << "(" << args << ");\n\n"
            << "extern \"C\" Status " << twinName << "(" << args << ")\n{\n"
            << "    return run<" << s.unaligned << ">(" << callArgs << ");\n}\n\n";
    out << "extern \"C\" KVTG_API Status " << name << "(" << args << ")\n{\n";
    if (twin)
        out << "    if (!kvtg::bothAligned16(src, dst))\n        return " << twinName << "(" << callArgs << ");\n";
    out << "    return run<" << (twin ? s.aligned : s.unaligned) << ">(" << callArgs << ");\n}\n";
    return out.str();
}

// A unit of one exported function over all orders: its title (what it is of
// the Walsh-Hadamard transform), the function's name and parameters, its body.
std::string orderUnit(const std::string& title, const std::string& function, const std::string& body)
{
    return "// Generated by kvtgen; do not edit.\n// " + title + " of the Walsh-Hadamard transform.\n" +
           "#include \"frame.h\"\n\nextern \"C\" KVTG_API Status " + function + ")\n{\n" + body + "}\n";
}

std::string dispatcherUnit(const Sample& s)
{
    std::string cases;
    for (int order = 1; order <= 13; ++order)
        cases += "    case " + std::to_string(order) + ": return " + kernelName(s, order) + "(src, dst, flag" +
                 (order >= 8 ? ", buffer" : "") + ");\n";
    return orderUnit("Order dispatcher",
                     "kvtgWHT_" + std::string(s.suffix) + "(const " + s.real + "* src, " + s.real +
                         "* dst, int32_t order, int32_t flag, uint8_t* buffer",
                     "    // the order is the only test here; orders up to 7 take no buffer\n    switch (order) {\n" +
                         cases + "    default: return StatusBadSize;\n    }\n");
}

std::string bufferSizeUnit(const Sample& s)
{
    std::string bytes;
    for (int order = 1; order <= 13; ++order)
        bytes += std::to_string(bufferBytes(s, order)) + (order < 13 ? ", " : "");
    return orderUnit("Work-buffer size",
                     "kvtgWHTGetBufferSize_" + std::string(s.suffix) + "(int32_t order, int32_t* pSize",
                     "    static const int32_t bytes[13] = {" + bytes + "};\n" +
                         "    if (order < 1 || order > 13)\n        return StatusBadSize;\n" +
                         "    *pSize = bytes[order - 1];\n    return StatusOk;\n");
}

const FamilyRegistration registration("wht", [](const std::string& directory) {
    writeIfChanged(directory + "/wht_networks.h", networksHeader());
    for (const Sample* s : {&single(), &dual()}) {
        const std::string stem = std::string("pgenwht") + s->suffix + "w7";
        for (int order = 1; order <= 13; ++order)
            writeIfChanged(directory + "/" + stem + "_" + std::to_string(order) + ".cpp", kernelUnit(*s, order));
        writeIfChanged(directory + "/" + stem + ".cpp", dispatcherUnit(*s));
        writeIfChanged(directory + "/" + stem + "_buffersize.cpp", bufferSizeUnit(*s));
    }
});

}  // namespace

// The 256-bit passes were chosen by timing, not by a search of the generator:
// exploring keeps the lines as they are.
Passes widePassesOf(const Sample& s, int order)
{
    const Form form = formOf(kernelName(s, order), nullptr);
    if (form.get("body") != "passes")
        formError(form.kernel, "a blocked order of the 256-bit file takes passes");
    const Passes p{std::atoi(form.get("block").c_str()), radicesOf(form, "first"), std::atoi(form.get("strip").c_str()),
                   radicesOf(form, "last"), form.get("traded") == "yes"};
    if (p.block < 2 || (p.block & (p.block - 1)) != 0 || p.first.empty())
        formError(form.kernel, "passes need a block of a power of two and a first run");
    return p;
}

}  // namespace gen::wht
