// Emitter of the complex DFT family: one unit per kernel (with its unaligned
// form) and one unit per size dispatcher.
//
// Complex32 kernels are scalar code on separate real and imaginary parts.
// Complex64 kernels keep one complex sample per vector and carry every value as
// two parts p + i*q, so that a multiplication by i is bookkeeping and the one
// exchange of lanes happens per output pair, at the end.
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "complex_builder.h"
#include "complex_rules.h"
#include "family.h"

namespace gen {

namespace {

struct Variant {
    Precision precision;
    bool inverse;

    const char* typeSuffix() const { return precision == Precision::Single ? "32fc" : "64fc"; }
    const char* sampleType() const { return precision == Precision::Single ? "Complex32" : "Complex64"; }
    const char* realType() const { return precision == Precision::Single ? "float" : "double"; }
    std::string direction() const { return inverse ? "Inv" : "Fwd"; }
    std::string kernelName(int n) const
    {
        return "kvtgDFT" + direction() + "_CToC_" + std::to_string(n) + "_" + typeSuffix();
    }
    std::string unalignedName(int n) const
    {
        return "owngDFT" + direction() + "_CToC_" + std::to_string(n) + "_" + typeSuffix() + "_unaligned";
    }
    std::string dispatcherName() const { return "kvtgDFT" + direction() + "_CToC_" + typeSuffix(); }
    // Unit names follow the family: pgendftfwd32fcw7 and so on.
    std::string unitStem() const
    {
        return std::string("pgendft") + (inverse ? "inv" : "fwd") + typeSuffix() + "w7";
    }
    Type scalarType() const { return precision == Precision::Single ? Type::F32 : Type::F64; }
};

// Which of the three kernel shapes a size takes.
enum class Shape {
    ScalarOnly,       // Complex32 2..5: no alignment test
    TwoBodies,        // Complex64 2..4: aligned and unaligned body in one function
    SeparateForm,     // aligned kernel plus an owng unaligned form
};

Shape shapeOf(const Variant& v, int n)
{
    if (v.precision == Precision::Single)
        return n <= 5 ? Shape::ScalarOnly : Shape::SeparateForm;
    return n <= 4 ? Shape::TwoBodies : Shape::SeparateForm;
}

struct Kernel {
    std::string body;  // statements of the transform
    OpCounts counts;
};

Kernel buildKernel(const Variant& v, int n)
{
    const TreePtr tree = complexRule(n, v.precision);
    const int sign = v.inverse ? 1 : -1;
    Graph graph;
    std::vector<int> roots;
    NodePrinter printer;
    if (v.precision == Precision::Single) {
        ComplexBuilder builder(graph, n == 3 || n == 5);
        std::vector<Cx> x(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i)
            x[static_cast<std::size_t>(i)] = {graph.input(Type::F32, 2 * i), graph.input(Type::F32, 2 * i + 1)};
        const std::vector<Cx> out = builder.dft(*tree, x, sign);
        const int factor = graph.param(Type::F32, 0);
        for (const Cx& value : out) {
            roots.push_back(graph.mul(value.p, factor));
            roots.push_back(graph.mul(value.q, factor));
        }
        printer.input = [](const Node& node) { return "x[" + std::to_string(node.index) + "]"; };
    } else {
        ComplexBuilder builder(graph);
        std::vector<Cx> x(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i)
            x[static_cast<std::size_t>(i)] = {graph.input(Type::V2D, i), Graph::none};
        const std::vector<Cx> out = builder.dft(*tree, x, sign);
        const int factor = graph.param(Type::V2D, 0);
        for (const Cx& value : out)
            roots.push_back(graph.mul(graph.add(value.p, graph.swapNeg(value.q)), factor));
        printer.input = [](const Node& node) {
            return "Access::load(x + " + std::to_string(2 * node.index) + ")";
        };
    }
    printer.param = [](const Node&) { return std::string("c"); };

    Kernel kernel;
    kernel.counts = graph.count(roots);
    std::ostringstream body;
    body << printNodes(graph, roots, printer, "    ");
    for (std::size_t i = 0; i < roots.size(); ++i) {
        const std::string value = roots[i] >= 0 ? valueOf(graph, roots[i]) : (v.precision == Precision::Single ? "0.0f" : "kv::zero2()");
        if (v.precision == Precision::Single)
            body << "    y[" << i << "] = " << value << ";\n";
        else
            body << "    Access::store(y + " << 2 * i << ", " << value << ");\n";
    }
    kernel.body = body.str();
    return kernel;
}

std::string factorLiterals(const Variant& v, int n)
{
    const Type t = v.scalarType();
    return literal(t, roundTo(t, 1.0L / n)) + ", " + literal(t, roundTo(t, 1.0L / std::sqrt(static_cast<long double>(n))));
}

std::string kernelUnit(const Variant& v, int n, const Kernel& kernel)
{
    const Shape shape = shapeOf(v, n);
    const std::string real = v.realType();
    const std::string sample = v.sampleType();
    const std::string args = "const " + sample + "* src, " + sample + "* dst, int32_t flag";
    const std::string dir = v.inverse ? "kvtg::Direction::Inverse" : "kvtg::Direction::Forward";
    const bool vector = v.precision == Precision::Double;

    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// " << (v.inverse ? "Inverse" : "Forward") << " complex DFT of length " << n << ", " << sample
        << ", rule " << complexRuleText(n, v.precision) << ".\n"
        << "// Operations: " << kernel.counts.additions << " additions, " << kernel.counts.multiplications
        << " multiplications, " << kernel.counts.exchanges << " exchanges.\n"
        << "#include \"frame.h\"\n";
    if (vector)
        out << "#include \"simd_sse2.h\"\n";
    out << "\nnamespace {\n\n";
    if (vector) {
        out << "template <class Access>\n"
            << "inline void transform(const double* x, double* y, kv::v2d c)\n{\n";
    } else {
        out << "inline void transform(const float* x, float* y, float c)\n{\n";
    }
    out << kernel.body << "}\n\n";
    // The tests of the frame, then the transform: shared by every body.
    out << (vector ? "template <class Access>\n" : "") << "inline Status run(" << args << ")\n{\n"
        << "    if (src == nullptr || dst == nullptr)\n        return StatusNullArg;\n"
        << "    " << real << " c;\n"
        << "    if (!kvtg::pickFactor<" << real << ">(flag, " << dir << ", " << factorLiterals(v, n) << ", c))\n"
        << "        return StatusBadFlag;\n"
        << "    transform" << (vector ? "<Access>" : "") << "(reinterpret_cast<const " << real << "*>(src), reinterpret_cast<"
        << real << "*>(dst), " << (vector ? "kv::set1(c)" : "c") << ");\n"
        << "    return StatusOk;\n}\n\n";
    const std::string text = out.str();
    std::ostringstream tail;
    tail << "}  // namespace\n\n";
    const std::string aligned = vector ? "run<kv::AlignedAccess>" : "run";
    const std::string unaligned = vector ? "run<kv::UnalignedAccess>" : "run";
    switch (shape) {
    case Shape::ScalarOnly:
        tail << "extern \"C\" KVTG_API Status " << v.kernelName(n) << "(" << args << ")\n{\n"
             << "    return run(src, dst, flag);\n}\n";
        break;
    case Shape::TwoBodies:
        tail << "extern \"C\" KVTG_API Status " << v.kernelName(n) << "(" << args << ")\n{\n"
             << "    if (!kvtg::bothAligned16(src, dst))\n        return " << unaligned << "(src, dst, flag);\n"
             << "    return " << aligned << "(src, dst, flag);\n}\n";
        break;
    case Shape::SeparateForm:
        tail << "extern \"C\" Status " << v.unalignedName(n) << "(" << args << ");\n\n"
             << "extern \"C\" Status " << v.unalignedName(n) << "(" << args << ")\n{\n"
             << "    return " << unaligned << "(src, dst, flag);\n}\n\n"
             << "extern \"C\" KVTG_API Status " << v.kernelName(n) << "(" << args << ")\n{\n"
             << "    if (!kvtg::bothAligned16(src, dst))\n        return " << v.unalignedName(n) << "(src, dst, flag);\n"
             << "    return " << aligned << "(src, dst, flag);\n}\n";
        break;
    }
    return text + tail.str();
}

std::string dispatcherUnit(const Variant& v)
{
    const std::string sample = v.sampleType();
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// Size dispatcher of the " << (v.inverse ? "inverse" : "forward") << " complex DFT, " << sample << ".\n"
        << "#include \"frame.h\"\n\n"
        << "extern \"C\" KVTG_API Status " << v.dispatcherName() << "(const " << sample << "* src, " << sample
        << "* dst, int32_t len, int32_t flag)\n{\n"
        << "    using Kernel = Status (*)(const " << sample << "*, " << sample << "*, int32_t);\n"
        << "    static const Kernel kernels[63] = {\n";
    for (int n = 2; n <= 64; ++n)
        out << "        " << v.kernelName(n) << ",\n";
    out << "    };\n"
        << "    // one unsigned comparison rejects 0, 1, negative lengths and lengths above 64\n"
        << "    const uint32_t index = static_cast<uint32_t>(len) - 2u;\n"
        << "    if (index > 62u)\n        return StatusBadSize;\n"
        << "    return kernels[index](src, dst, flag);\n}\n";
    return out.str();
}

void emitComplex(const std::string& directory)
{
    // The operation counts of every kernel, for benchmarks and tests to hold
    // the kernels against: {length, additions, multiplications, exchanges}.
    std::ostringstream counts;
    counts << "// Generated by kvtgen; do not edit.\n"
           << "// Real-valued operation counts of the complex kernels (vector operations of the\n"
           << "// Complex64 kernels count twice, one per lane).\n"
           << "#pragma once\nnamespace kvtg_counts {\nstruct ComplexCount { int n, additions, multiplications, exchanges; };\n";
    for (Precision precision : {Precision::Single, Precision::Double}) {
        for (bool inverse : {false, true}) {
            const Variant v{precision, inverse};
            counts << "inline const ComplexCount " << (inverse ? "inverse" : "forward") << v.typeSuffix() << "[] = {\n";
            for (int n = 2; n <= 64; ++n) {
                const Kernel kernel = buildKernel(v, n);
                writeIfChanged(directory + "/" + v.unitStem() + "_" + std::to_string(n) + ".cpp", kernelUnit(v, n, kernel));
                const OpCounts& c = kernel.counts;
                const int lanes = precision == Precision::Double ? 2 : 1;
                counts << "    {" << n << ", " << lanes * c.additions << ", " << lanes * c.multiplications << ", "
                       << c.exchanges << "},\n";
            }
            counts << "};\n";
            writeIfChanged(directory + "/" + v.unitStem() + ".cpp", dispatcherUnit(v));
        }
    }
    counts << "}  // namespace kvtg_counts\n";
    writeIfChanged(directory + "/complex_counts.h", counts.str());
}

const FamilyRegistration registration("complex", emitComplex);

}  // namespace

}  // namespace gen
