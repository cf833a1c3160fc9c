// Emitter of the Walsh-Hadamard family: one unit per kernel of orders 1 to 13
// and sample type, the order dispatcher and the query of the work buffer's
// size, beside the header of networks (wht_networks.cpp) that the kernels
// call.  A kernel tests its pointers, turns its flag into the factor, and runs
// its network (orders up to 7) or its passes through a work buffer (orders 8
// to 13, wht_passes.cpp); from order 4 on an unaligned twin serves arrays that
// are not aligned to 16 bytes.  The loops of the blocked orders live in
// src/wht/passes.h.
#include <cmath>
#include <sstream>
#include <string>

#include "family.h"
#include "forms.h"
#include "wht_sample.h"

namespace gen::wht {

std::string kernelName(const Sample& s, int order)
{
    return "kvtgWHT_" + std::to_string(order) + "_" + s.suffix;
}

namespace {

// A kernel with one body only on the current target (the scalar or vector
// network, or the 128-bit passes): its line of the table must name it.
void expectOneBody(const std::string& name, const std::string& body)
{
    const Form form = formOf(name, [&] { return Form().set("body", body); });
    if (form.get("body") != body)
        formError(name, "the one body of this kernel on this target is " + body);
}

// The parameters of a kernel, and the arguments that pass them on.
std::string parameters(const Sample& s, bool blocked)
{
    const std::string real = s.real;
    return "const " + real + "* src, " + real + "* dst, int32_t flag" + (blocked ? ", uint8_t* buffer" : "");
}

std::string arguments(bool blocked) { return std::string("src, dst, flag") + (blocked ? ", buffer" : ""); }

// The statements of a kernel's run after its tests: the network, or the
// passes of a blocked order through the work buffer, the caller's or one
// allocated for the call.
std::string runBody(const Sample& s, int order, const std::string& access)
{
    const bool blocked = order >= 8;
    const bool vector = s.type == Type::F32 ? order >= 4 : order >= 3;
    const std::string real = s.real;
    const std::string broadcast = std::string(s.broadcast) + "(s)";
    std::ostringstream out;
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
        if (s.halves != nullptr)
            out << widePasses(s, order);
        else
            out << narrowPasses(s, order, access);
        out << "    if (buffer == nullptr)\n        kvtFree(work);\n";
    }
    return out.str();
}

// The run of a kernel: the tests of its pointers and flag, then its body;
// from order 4 on a template over the access class of src and dst.
std::string runFunction(const Sample& s, int order)
{
    const int n = 1 << order;
    const bool twin = order >= 4;
    const std::string real = s.real;
    const std::string byN = literal(s.type, roundTo(s.type, 1.0L / n));
    const std::string bySqrt = literal(s.type, roundTo(s.type, 1.0L / std::sqrt(static_cast<long double>(n))));
    std::ostringstream out;
    out << (twin ? "template <class Access>\n" : "") << "inline Status run(" << parameters(s, order >= 8) << ")\n{\n"
        << "    if (src == nullptr || dst == nullptr)\n        return StatusNullArg;\n"
        << "    " << real << " s;\n"
        << "    if (!kvtg::pickFactor<" << real << ">(flag, kvtg::Direction::Both, " << byN << ", " << bySqrt << ", s))\n"
        << "        return StatusBadFlag;\n";
    out << runBody(s, order, twin ? "Access" : s.unaligned);
    out << "    return StatusOk;\n}\n\n";
    return out.str();
}

// The exported kernel and, from order 4 on, its unaligned twin, which the
// kernel hands the call to where src or dst is not aligned to 16 bytes.
std::string entryPoints(const Sample& s, int order)
{
    const bool blocked = order >= 8;
    const std::string name = kernelName(s, order);
    const std::string twinName = "owngWHT_" + std::to_string(order) + "_" + s.suffix + "_unaligned";
    const std::string args = parameters(s, blocked);
    const std::string callArgs = arguments(blocked);
    std::ostringstream out;
    if (order >= 4) {
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

std::string kernelUnit(const Sample& s, int order)
{
    const int n = 1 << order;
    const bool blocked = order >= 8;
    const bool vector = s.type == Type::F32 ? order >= 4 : order >= 3;
    if (!blocked || s.halves == nullptr)
        expectOneBody(kernelName(s, order), !vector ? "scalar" : blocked ? "blocks" : "network");

    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// Walsh-Hadamard transform of order " << order << " (" << n << " samples), " << (s.type == Type::F32 ? "Real32" : "Real64")
        << ".\n#include \"frame.h\"\n#include \"wht/passes.h\"\n#include \"wht_networks.h\"\n\nnamespace {\n\n";
    out << runFunction(s, order) << "}  // namespace\n\n" << entryPoints(s, order);
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

}  // namespace gen::wht
