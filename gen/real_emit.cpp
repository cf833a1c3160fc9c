// Real DFT and Hartley kernels: one flow per length and direction
// (real_kernels.cpp), written out per layout and precision, each kernel's body
// scalar or packed into vectors as its line of the table of forms says, and
// the size dispatchers.  Every flow is checked against the plain definition
// in long double before anything is written, and the operation counts of the
// flows go into a header for the test that holds them against the rule tables.
#include <algorithm>
#include <cmath>
#include <sstream>

#include "family.h"
#include "body_eval.h"
#include "forms.h"
#include "graph.h"
#include "real_kernels.h"
#include "real_pack.h"
#include "real_rules.h"

namespace gen::real {

namespace {

// Position of value j of the order R0, R1, I1, ..., Rh in a layout's array.
enum class Layout { CCS, Pack, Perm };

int position(Layout layout, int n, int j)
{
    const bool nyquist = n % 2 == 0 && j == n - 1;
    switch (layout) {
    case Layout::Pack: return j;
    case Layout::CCS: return nyquist ? n : (j == 0 ? 0 : j + 1);
    case Layout::Perm:
        if (n % 2 != 0)
            return j;
        return nyquist ? 1 : (j == 0 ? 0 : j + 1);
    }
    return -1;
}

struct Precision {
    bool single;
    const char* suffix;  // 32f / 64f
    const char* sample;  // Real32 / Real64
    const char* scalar;  // float / double
    Type type;
};
const Precision precisions[] = {{true, "32f", "Real32", "float", Type::F32},
                                {false, "64f", "Real64", "double", Type::F64}};

std::string factors(const Precision& p, int n)
{
    return literal(p.type, roundTo(p.type, 1.0L / n)) + ", " +
           literal(p.type, roundTo(p.type, 1.0L / std::sqrt(static_cast<long double>(n))));
}

// The body the table of forms gives a kernel on the current target: its
// scalar flow (an empty text), or that flow packed into vectors.
// Inputs on which a packed body must give its scalar flow's bits: zeros of
// both signs and impulses, where a lane taken from the wrong place or a zero
// of the other sign shows; constant and alternating samples, whose spectra
// have exact zeros; random samples, where a rounding shows; and samples near
// the top of the range, whose Real32 products exist only in Real64.
std::vector<std::vector<double>> checkInputs(int count, bool single)
{
    const std::size_t n = static_cast<std::size_t>(count);
    std::vector<std::vector<double>> inputs = {std::vector<double>(n, 0.0), std::vector<double>(n, -0.0)};
    for (std::size_t i = 0; i < n; ++i) {
        inputs.push_back(std::vector<double>(n, -0.0));
        inputs.back()[i] = i % 3 == 0 ? -1.5 : 0.75;
    }
    std::vector<double> constant(n, 0.75), alternating(n);
    for (std::size_t i = 0; i < n; ++i)
        alternating[i] = i % 2 ? -0.75 : 0.75;
    inputs.push_back(constant);
    inputs.push_back(alternating);
    unsigned state = 4321u + static_cast<unsigned>(count);
    auto next = [&] {
        state = state * 1664525u + 1013904223u;
        return static_cast<double>(static_cast<int>(state >> 8) - (1 << 23)) / static_cast<double>(1 << (state % 13));
    };
    const double large = single ? 4.0e37 : 2.0e307;
    for (int r = 0; r < 5; ++r) {
        std::vector<double> x(n);
        for (double& value : x) {
            value = next();
            value = r < 3 ? value : value / (1 << 23) * large;
            value = single ? static_cast<double>(static_cast<float>(value)) : value;
        }
        inputs.push_back(x);
    }
    return inputs;
}

PackedBody packedBody(const std::string& name, const Lowered& low, const std::vector<int>& storeSlots, int inputLimit,
                      bool single)
{
    const gen::Form form = formOf(name, [&] {
        gen::Form found;
        RealPacking how;
        if (!target().wide() || !searchRealPacking(low.graph, low.stores, storeSlots, inputLimit, how))
            return gen::Form(found.set("body", "scalar"));
        return gen::Form(found.set("body", "packed")
                             .set("order", how.greedy ? "greedy" : "ordered")
                             .set("conversion", std::to_string(how.conversion)));
    });
    const std::string& body = form.get("body");
    if (body == "scalar")
        return PackedBody{};
    if (body != "packed" || !target().wide())
        formError(name, "body " + body + " cannot be built here");
    const std::string& order = form.get("order");
    const std::string& conversion = form.get("conversion");
    if ((order != "greedy" && order != "ordered") || (conversion != "2" && conversion != "3"))
        formError(name, "unknown packing order=" + order + " conversion=" + conversion);
    const PackedBody packed = packReal(low.graph, low.stores, storeSlots, inputLimit, {order == "greedy", conversion == "3" ? 3 : 2});
    if (packed.text.empty())
        formError(name, "no operations of this kernel pack");
    verifyPrintedBody(name, low.graph, low.stores, storeSlots, packed.text, checkInputs(inputLimit, single), 0.375,
                      single);
    return packed;
}

std::string kernelUnit(const std::string& name, const std::string& title, const Precision& p, int n,
                       const KernelFlow& k, const std::vector<int>& loadSlots, const std::vector<int>& storeSlots,
                       const std::vector<int>& zeroSlots, const char* direction)
{
    const Lowered low = lower(k, loadSlots, p.single);
    // the 256-bit target packs independent operations of one kind into vectors
    // where that saves instructions; each lane keeps its scalar operation
    const PackedBody packed =
        packedBody(name, low, storeSlots, *std::max_element(loadSlots.begin(), loadSlots.end()) + 1, p.single);
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n// " << title << "\n// Operations: " << k.counts.multiplications
        << " multiplications, " << k.counts.additions << " additions, " << k.counts.negations << " negations, "
        << k.counts.doublings << " doublings.\n"
        << (packed.text.empty() ? std::string()
                                : "// Packed body: " + std::to_string(packed.cost) + " instructions, scalar body " +
                                      std::to_string(packed.scalarCost) + ".\n")
        << "#include \"frame.h\"\n" << (packed.text.empty() ? "" : std::string("#include \"") + target().simdHeader() + "\"\n")
        << "\n// named after its kernel: sanitizer builds compile several units as one\n"
        << "template <bool Scaled>\nstatic inline void " << name << "Body(const " << p.scalar << "* x, " << p.scalar
        << "* y, " << p.scalar << " c)\n{\n";
    if (!packed.text.empty()) {
        out << packed.text;
    } else {
        NodePrinter printer;
        printer.input = [](const Node& node) { return "x[" + std::to_string(node.index) + "]"; };
        printer.param = [](const Node&) { return std::string("c"); };
        out << printNodes(low.graph, low.stores, printer, "    ");
        for (std::size_t i = 0; i < low.stores.size(); ++i)
            out << "    y[" << storeSlots[i] << "] = " << valueOf(low.graph, low.stores[i]) << ";\n";
    }
    for (int z : zeroSlots)
        out << "    y[" << z << "] = " << (p.single ? "0.0f" : "0.0") << ";\n";
    out << "}\n\n"
        << "extern \"C\" KVTG_API Status " << name << "(const " << p.sample << "* src, " << p.sample
        << "* dst, int32_t flag)\n{\n"
        << "    if (src == nullptr || dst == nullptr)\n        return StatusNullArg;\n"
        << "    " << p.scalar << " c;\n"
        << "    if (!kvtg::pickFactor<" << p.scalar << ">(flag, kvtg::Direction::" << direction << ", "
        << factors(p, n) << ", c))\n        return StatusBadFlag;\n"
        << scaledCall(name + "Body<", "src, dst, c", "    ") << "    return StatusOk;\n}\n";
    return out.str();
}

std::string dispatcherUnit(const std::string& name, const std::string& title, const Precision& p,
                           const std::string& kernelPrefix)
{
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n// " << title << "\n#include \"frame.h\"\n\n"
        << sizeDispatcher(name, p.sample, [&](int n) { return kernelPrefix + std::to_string(n) + "_" + p.suffix; });
    return out.str();
}

struct LayoutInfo {
    Layout layout;
    const char* fwdName;  // RToCCS
    const char* invName;  // CCSToR
    const char* stem;     // ccs
};
const LayoutInfo layouts[] = {{Layout::CCS, "RToCCS", "CCSToR", "ccs"},
                              {Layout::Pack, "RToPack", "PackToR", "pack"},
                              {Layout::Perm, "RToPerm", "PermToR", "perm"}};

void emitReal(const std::string& dir)
{
    for (int n = 2; n <= 64; ++n) {
        selfCheck(n);
        const KernelFlow fwd = forwardFlow(n);
        const KernelFlow inv = inverseFlow(n);
        std::vector<int> identity;
        for (int j = 0; j < n; ++j)
            identity.push_back(j);
        for (const Precision& p : precisions) {
            for (const LayoutInfo& l : layouts) {
                std::vector<int> slots;
                for (int j = 0; j < n; ++j)
                    slots.push_back(position(l.layout, n, j));
                std::vector<int> zeros;
                if (l.layout == Layout::CCS) {
                    zeros.push_back(1);
                    if (n % 2 == 0)
                        zeros.push_back(n + 1);
                }
                const std::string rule = forwardRow(n).rule;
                writeIfChanged(dir + "/pgendftfwd" + l.stem + p.suffix + "w7_" + std::to_string(n) + ".cpp",
                               kernelUnit(std::string("kvtgDFTFwd_") + l.fwdName + "_" + std::to_string(n) + "_" +
                                              p.suffix,
                                          "Forward real DFT of length " + std::to_string(n) + ", " + p.sample +
                                              ", layout " + l.stem + ", rule " + rule + ".",
                                          p, n, fwd, identity, slots, zeros, "Forward"));
                writeIfChanged(dir + "/pgendftinv" + l.stem + p.suffix + "w7_" + std::to_string(n) + ".cpp",
                               kernelUnit(std::string("kvtgDFTInv_") + l.invName + "_" + std::to_string(n) + "_" +
                                              p.suffix,
                                          "Inverse real DFT of length " + std::to_string(n) + ", " + p.sample +
                                              ", layout " + l.stem + ", transposed rule " + inverseRow(n).rule + ".",
                                          p, n, inv, slots, identity, {}, "Inverse"));
            }
        }
    }
    for (const Precision& p : precisions)
        for (const LayoutInfo& l : layouts) {
            writeIfChanged(dir + "/pgendftfwd" + l.stem + p.suffix + "w7.cpp",
                           dispatcherUnit(std::string("kvtgDFTFwd_") + l.fwdName + "_" + p.suffix,
                                          "Size dispatcher of the forward real DFT.", p,
                                          std::string("kvtgDFTFwd_") + l.fwdName + "_"));
            writeIfChanged(dir + "/pgendftinv" + l.stem + p.suffix + "w7.cpp",
                           dispatcherUnit(std::string("kvtgDFTInv_") + l.invName + "_" + p.suffix,
                                          "Size dispatcher of the inverse real DFT.", p,
                                          std::string("kvtgDFTInv_") + l.invName + "_"));
        }
}

void emitHartley(const std::string& dir)
{
    for (int n = 2; n <= 64; ++n) {
        const KernelFlow k = hartleyFlow(n);
        std::vector<int> identity;
        for (int j = 0; j < n; ++j)
            identity.push_back(j);
        for (const Precision& p : precisions)
            writeIfChanged(dir + "/pgenhartley" + p.suffix + "w7_" + std::to_string(n) + ".cpp",
                           kernelUnit("kvtgHartley_" + std::to_string(n) + "_" + p.suffix,
                                      "Hartley transform of length " + std::to_string(n) + ", " + p.sample + ", " +
                                          (hartleyForward(n) ? "forward" : "transposed") + " form.",
                                      p, n, k, identity, identity, {}, "Both"));
    }
    for (const Precision& p : precisions)
        writeIfChanged(dir + "/pgenhartley" + p.suffix + "w7.cpp",
                       dispatcherUnit(std::string("kvtgHartley_") + p.suffix, "Size dispatcher of the Hartley transform.",
                                      p, "kvtgHartley_"));
}

// Operation counts of every flow next to the counts of the rule tables, for the
// test that holds them against each other.
std::string countsHeader()
{
    std::ostringstream out;
    out << "// Generated by kvtgen; do not edit.\n"
        << "// Per length 2..64: operation counts of the generated flows and of the rule tables.\n"
        << "#pragma once\n\nnamespace kvtg_real_counts {\n\n"
        << "struct Row {\n    int size;\n"
        << "    int fwdMul, fwdAdd, fwdNeg, tableFwdMul, tableFwdAdd, tableFwdNeg;\n"
        << "    int invMul, invAdd, invDbl, invNeg, tableInvMul, tableInvAdd, tableInvDbl;\n"
        << "    int hartMul, hartAdd, hartNeg, tableHartMul, tableHartAdd;\n};\n\n"
        << "constexpr Row rows[] = {\n";
    for (int n = 2; n <= 64; ++n) {
        const FlowCounts f = forwardFlow(n).counts, i = inverseFlow(n).counts, h = hartleyFlow(n).counts;
        const ForwardRow& tf = forwardRow(n);
        const InverseRow& ti = inverseRow(n);
        const HartleyRow& th = hartleyRow(n);
        out << "    {" << n << ", " << f.multiplications << ", " << f.additions << ", " << f.negations << ", "
            << tf.multiplications << ", " << tf.additions << ", " << tf.negations << ", " << i.multiplications << ", "
            << i.additions << ", " << i.doublings << ", " << i.negations << ", " << ti.multiplications << ", "
            << ti.additions << ", " << ti.doublings << ", " << h.multiplications << ", " << h.additions << ", "
            << h.negations << ", " << th.multiplications << ", " << th.additions << "},\n";
    }
    out << "};\n\n}  // namespace kvtg_real_counts\n";
    return out.str();
}

const FamilyRegistration realFamily("real", [](const std::string& dir) {
    emitReal(dir);
    writeIfChanged(dir + "/real_counts.h", countsHeader());
});
const FamilyRegistration hartleyFamily("hartley", emitHartley);

}  // namespace

}  // namespace gen::real
