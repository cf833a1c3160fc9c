// Real DFT and Hartley kernels: one flow per length and direction, written out
// per layout and precision.
//
// The forward flow of a length follows its row; the inverse flow is the
// transpose of the forward flow of the inverse row, with the middle bins
// doubled on the way in; a Hartley kernel adds one butterfly stage to the
// forward flow (on its outputs) or to the transposed flow (on its inputs).
// Every flow is checked against the plain definition in long double and its
// operation counts against the rule tables before anything is written.
#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <sstream>
#include <stdexcept>

#include "family.h"
#include "forms.h"
#include "graph.h"
#include "real_builder.h"
#include "real_pack.h"
#include "real_rules.h"

namespace gen::real {

namespace {

const long double pi = 3.141592653589793238462643383279502884L;

// A finished flow: its inputs are the loaded values (in `loads` order), its
// outputs the values to store before scaling.
struct KernelFlow {
    Flow flow;
    std::vector<Ref> outputs;
    FlowCounts counts;
};

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



KernelFlow forwardFlow(int n)
{
    KernelFlow k;
    std::vector<Ref> x;
    for (int i = 0; i < n; ++i)
        x.push_back(k.flow.input(i));
    k.outputs = foldProducts(k.flow, flatten(realDft(k.flow, forwardTree(n), x), n), true);
    k.counts = countFlow(k.flow, k.outputs);
    return k;
}

// Transposed flow of the inverse row; `scale[j]` multiplies value j first.
KernelFlow transposedFlow(int n, const std::vector<long double>& scale)
{
    Flow forward;
    std::vector<Ref> x;
    for (int i = 0; i < n; ++i)
        x.push_back(forward.input(i));
    const std::vector<Ref> u = flatten(realDft(forward, inverseTree(n), x), n);
    Transposed t = transpose(forward, u, n, scale);
    KernelFlow k;
    k.flow = std::move(t.flow);
    k.outputs = foldProducts(k.flow, t.outputs, true);
    k.counts = countFlow(k.flow, k.outputs);
    return k;
}

KernelFlow inverseFlow(int n)
{
    std::vector<long double> scale(static_cast<std::size_t>(n), 2.0L);
    scale[0] = 1;
    if (n % 2 == 0)
        scale[static_cast<std::size_t>(n - 1)] = 1;
    return transposedFlow(n, scale);
}

bool hartleyForward(int n) { return hartleyRow(n).form != Form::Transposed; }

KernelFlow hartleyFlow(int n)
{
    KernelFlow k;
    const int m = (n - 1) / 2;
    std::vector<Ref> x;
    for (int i = 0; i < n; ++i)
        x.push_back(k.flow.input(i));
    if (hartleyForward(n)) {
        const KernelFlow f = forwardFlow(n);
        const std::vector<Ref> u = embed(k.flow, f.flow, f.outputs, x);
        k.outputs.assign(static_cast<std::size_t>(n), Ref{});
        k.outputs[0] = u[0];
        for (int j = 1; j <= m; ++j) {
            k.outputs[static_cast<std::size_t>(j)] = k.flow.sub(u[2 * j - 1], u[2 * j]);
            k.outputs[static_cast<std::size_t>(n - j)] = k.flow.add(u[2 * j - 1], u[2 * j]);
        }
        if (n % 2 == 0)
            k.outputs[static_cast<std::size_t>(n / 2)] = u[static_cast<std::size_t>(n - 1)];
    } else {
        std::vector<Ref> u{x[0]};
        for (int j = 1; j <= m; ++j) {
            u.push_back(k.flow.add(x[j], x[n - j]));
            u.push_back(k.flow.sub(x[n - j], x[j]));
        }
        if (n % 2 == 0)
            u.push_back(x[static_cast<std::size_t>(n / 2)]);
        const KernelFlow t = transposedFlow(n, {});
        k.outputs = embed(k.flow, t.flow, t.outputs, u);
    }
    k.counts = countFlow(k.flow, k.outputs);
    return k;
}

// ---- self-check against the definitions -------------------------------------

std::vector<long double> randomInputs(int n, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> d(-1.0, 1.0);
    std::vector<long double> v(static_cast<std::size_t>(n));
    for (auto& e : v)
        e = d(rng);
    return v;
}

// Half spectrum values R0, R1, I1, ... of x by the plain sum.
std::vector<long double> plainSpectrum(const std::vector<long double>& x)
{
    const int n = static_cast<int>(x.size());
    std::vector<long double> u;
    for (int k = 0; 2 * k <= n; ++k) {
        long double re = 0, im = 0;
        for (int t = 0; t < n; ++t) {
            const long double a = 2 * pi * ((static_cast<long>(t) * k) % n) / n;
            re += x[static_cast<std::size_t>(t)] * std::cos(a);
            im -= x[static_cast<std::size_t>(t)] * std::sin(a);
        }
        u.push_back(re);
        if (k > 0 && 2 * k < n)
            u.push_back(im);
    }
    return u;
}

void expectClose(const std::vector<long double>& got, const std::vector<long double>& want, const std::string& what)
{
    for (std::size_t i = 0; i < want.size(); ++i)
        if (std::fabs(got[i] - want[i]) > 1e-12L)
            throw std::logic_error(what + ": flow differs from the definition at value " + std::to_string(i));
}

void selfCheck(int n)
{
    const std::vector<long double> x = randomInputs(n, 1234u + static_cast<unsigned>(n));
    const std::vector<long double> u = plainSpectrum(x);
    const KernelFlow fwd = forwardFlow(n);
    expectClose(evaluate(fwd.flow, fwd.outputs, x), u, "forward " + std::to_string(n));

    // inverse: y[n] = R0 + 2·sum(Rk cos - Ik sin) + (-1)^n Rh
    std::vector<long double> y(static_cast<std::size_t>(n));
    for (int t = 0; t < n; ++t) {
        long double s = u[0];
        for (int k = 1; 2 * k < n; ++k) {
            const long double a = 2 * pi * ((static_cast<long>(t) * k) % n) / n;
            s += 2 * (u[static_cast<std::size_t>(2 * k - 1)] * std::cos(a) - u[static_cast<std::size_t>(2 * k)] * std::sin(a));
        }
        if (n % 2 == 0)
            s += (t % 2 ? -1 : 1) * u[static_cast<std::size_t>(n - 1)];
        y[static_cast<std::size_t>(t)] = s;
    }
    const KernelFlow inv = inverseFlow(n);
    expectClose(evaluate(inv.flow, inv.outputs, u), y, "inverse " + std::to_string(n));

    std::vector<long double> h(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k)
        for (int t = 0; t < n; ++t) {
            const long double a = 2 * pi * ((static_cast<long>(t) * k) % n) / n;
            h[static_cast<std::size_t>(k)] += x[static_cast<std::size_t>(t)] * (std::cos(a) + std::sin(a));
        }
    const KernelFlow har = hartleyFlow(n);
    expectClose(evaluate(har.flow, har.outputs, x), h, "Hartley " + std::to_string(n));
}

// ---- typed lowering -------------------------------------------------------------

// The flow in one precision: in Real32 kernels sums of samples stay Real32 and
// every product by a constant is Real64, with the additions of its expression,
// rounded once where the expression ends.  Returns the graph ids to store, per
// flow output, scaled (and negated where the flow left a negative value).
struct Lowered {
    Graph graph{false};
    std::vector<int> stores;
};

Lowered lower(const KernelFlow& k, const std::vector<int>& loadSlots, bool single)
{
    Lowered out;
    Graph& g = out.graph;
    const Type narrowType = single ? Type::F32 : Type::F64;
    std::vector<int> inputIds;
    for (int slot : loadSlots)
        inputIds.push_back(g.input(narrowType, slot));
    const int scale = g.param(narrowType, 0);
    const std::vector<int> uses = k.flow.useCounts(k.outputs);
    std::vector<int> value(static_cast<std::size_t>(k.flow.size()), -1);
    auto wide = [&](int id) { return g.node(id).type == Type::F64; };
    auto toWide = [&](int id) { return single ? g.widen(id) : id; };
    auto toNarrow = [&](int id) { return single ? g.narrow(id) : id; };
    for (int id = 0; id < k.flow.size(); ++id) {
        if (uses[static_cast<std::size_t>(id)] == 0)
            continue;
        const Flow::Node& n = k.flow.node(id);
        const int a = n.a >= 0 ? value[static_cast<std::size_t>(n.a)] : -1;
        const int b = n.b >= 0 ? value[static_cast<std::size_t>(n.b)] : -1;
        int v = -1;
        switch (n.kind) {
        case Flow::Kind::Input: v = inputIds[static_cast<std::size_t>(n.index)]; break;
        case Flow::Kind::Mul: v = g.mulConst(toWide(toNarrow(a)), n.c); break;  // a product starts from a rounded value
        case Flow::Kind::Double: v = g.mulConst(toNarrow(a), 2.0L); break;
        case Flow::Kind::Add:
        case Flow::Kind::Sub: {
            const bool inWide = single && n.expr && (wide(a) || wide(b));
            const int x = inWide ? toWide(a) : toNarrow(a);
            const int y = inWide ? toWide(b) : toNarrow(b);
            v = n.kind == Flow::Kind::Add ? g.add(x, y) : g.sub(x, y);
            break;
        }
        }
        value[static_cast<std::size_t>(id)] = v;
    }
    for (const Ref& r : k.outputs) {
        if (r.zero())
            throw std::logic_error("an output of a real kernel is a constant zero");
        int v = value[static_cast<std::size_t>(r.id)];
        const bool inWide = single && wide(v);
        v = g.mul(v, inWide ? g.widen(scale) : scale);
        if (r.neg)
            v = g.zeroSub(v);
        out.stores.push_back(toNarrow(v));
    }
    return out;
}

// ---- text -----------------------------------------------------------------------

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
PackedBody packedBody(const std::string& name, const Lowered& low, const std::vector<int>& storeSlots, int inputLimit)
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
    return packed;
}

std::string kernelUnit(const std::string& name, const std::string& title, const Precision& p, int n,
                       const KernelFlow& k, const std::vector<int>& loadSlots, const std::vector<int>& storeSlots,
                       const std::vector<int>& zeroSlots, const char* direction)
{
    const Lowered low = lower(k, loadSlots, p.single);
    // the 256-bit target packs independent operations of one kind into vectors
    // where that saves instructions; each lane keeps its scalar operation
    const PackedBody packed = packedBody(name, low, storeSlots, *std::max_element(loadSlots.begin(), loadSlots.end()) + 1);
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

// ---- count check ----------------------------------------------------------------

struct Mismatch {
    std::string what;
    int size;
    FlowCounts got;
    int wantMul, wantAdd, wantThird;
};

std::vector<Mismatch> countMismatches(int n, const KernelFlow& fwd, const KernelFlow& inv, const KernelFlow& har)
{
    std::vector<Mismatch> list;
    const ForwardRow& f = forwardRow(n);
    if (fwd.counts.multiplications != f.multiplications || fwd.counts.additions != f.additions ||
        fwd.counts.negations != f.negations)
        list.push_back({"forward", n, fwd.counts, f.multiplications, f.additions, f.negations});
    const InverseRow& i = inverseRow(n);
    if (inv.counts.multiplications != i.multiplications || inv.counts.additions != i.additions ||
        inv.counts.doublings != i.doublings || inv.counts.negations != 0)
        list.push_back({"inverse", n, inv.counts, i.multiplications, i.additions, i.doublings});
    const HartleyRow& h = hartleyRow(n);
    if (har.counts.multiplications != h.multiplications || har.counts.additions != h.additions ||
        har.counts.negations != 0)
        list.push_back({"Hartley", n, har.counts, h.multiplications, h.additions, 0});
    return list;
}

std::string mismatchReport()
{
    std::ostringstream out;
    int count = 0;
    for (int n = 2; n <= 64; ++n) {
        selfCheck(n);
        for (const Mismatch& m : countMismatches(n, forwardFlow(n), inverseFlow(n), hartleyFlow(n))) {
            ++count;
            out << m.what << " " << m.size << ": got " << m.got.multiplications << " mul " << m.got.additions
                << " add " << (m.what == "inverse" ? m.got.doublings : m.got.negations) << " "
                << (m.what == "inverse" ? "dbl" : "neg") << " (neg " << m.got.negations << "), table "
                << m.wantMul << " / " << m.wantAdd << " / " << m.wantThird << "\n";
        }
    }
    out << count << " rows differ\n";
    return out.str();
}

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
const FamilyRegistration realCounts("real-counts", [](const std::string&) {
    std::fputs(mismatchReport().c_str(), stdout);
});

// Arithmetic types of the forward Real32 kernels: additions (negations
// included) and products (scaling included) per type, widenings, narrowings.
const FamilyRegistration realTypes("real-types", [](const std::string&) {
    for (int n = 2; n <= 64; ++n) {
        std::vector<int> identity;
        for (int j = 0; j < n; ++j)
            identity.push_back(j);
        const Lowered low = lower(forwardFlow(n), identity, true);
        const std::vector<bool> live = low.graph.liveSet(low.stores);
        int add32 = 0, add64 = 0, mul32 = 0, mul64 = 0, widen = 0, narrow = 0;
        for (int id = 0; id < low.graph.size(); ++id) {
            if (!live[static_cast<std::size_t>(id)])
                continue;
            const Node& node = low.graph.node(id);
            const bool wide = node.type == Type::F64;
            switch (node.op) {
            case Op::Add:
            case Op::Sub:
            case Op::ZeroSub: (wide ? add64 : add32)++; break;
            case Op::Mul: (wide ? mul64 : mul32)++; break;
            case Op::Widen: ++widen; break;
            case Op::Narrow: ++narrow; break;
            default: break;
            }
        }
        std::printf("%2d %4d %4d %4d %4d %4d %4d\n", n, add32, add64, mul32, mul64, widen, narrow);
    }
});

}  // namespace

}  // namespace gen::real
