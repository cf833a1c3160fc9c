// The Rader step of a real prime length p: the samples permuted by powers of
// a primitive root go through a real transform of length L = p - 1, its bins
// are multiplied by the transform of the roots (a cyclic convolution), and
// the products go back through two syntheses, one for the even bins (the
// real parts of the outputs) and one for the odd bins (the imaginary parts).
// Each synthesis is a transposed transform, of length L/2 on the inner tree
// with one factor 2 removed or of length L itself on half of its bins; the
// flow takes the form of fewer operations.
#include <algorithm>
#include <cmath>
#include <complex>
#include <stdexcept>

#include "real_rules.h"
#include "real_stages.h"

namespace gen::real {

// Depth of the transposed builds that are under way: a flow built to be
// transposed writes its 45-degree rotations products first, so that after
// transposition they are additions first like every other rotation.
int transposedDepth = 0;

namespace {

// Tree of length L/2 with the same stages: one factor 2 removed.
TreePtr halved(const TreePtr& tree)
{
    if (tree->size % 2 != 0)
        throw std::logic_error("halving an odd tree");
    if (tree->kind == Tree::Kind::Prime || tree->kind == Tree::Kind::Twiddle) {
        auto t = std::make_shared<Tree>(*tree);
        if (tree->second->size % 2 == 0) {
            if (tree->second->size == 2)
                return tree->first;
            t->second = halved(tree->second);
        } else {
            if (tree->first->size == 2)
                return tree->second;
            t->first = halved(tree->first);
        }
        t->size = t->first->size * t->second->size;
        return t;
    }
    throw std::logic_error("no factor 2 to remove");
}

// Forward odd-frequency transform of h real values:
// V[q] = sum over m of v[m]·W_2h^(m·(2q+1)), q = 0..ceil(h/2)-1 (the last one
// real for odd h).
std::vector<Cx> oddDft(Flow& f, const TreePtr& tree, const std::vector<Ref>& v)
{
    const int h = static_cast<int>(v.size());
    std::vector<Cx> out(static_cast<std::size_t>((h + 1) / 2));
    if (h % 2 == 1) {
        // (-1)^m turns the odd frequencies into the plain ones.
        std::vector<Ref> w(v);
        for (int m = 1; m < h; m += 2)
            w[m] = -w[m];
        const std::vector<Cx> bins = realDft(f, tree, w);
        for (int q = 0; q < (h + 1) / 2; ++q)
            out[q] = conj(bins[static_cast<std::size_t>((h - 1) / 2 - q)]);
        return out;
    }
    std::vector<Cx> z;
    for (int r = 0; r < h / 2; ++r)
        z.push_back(rotate(f, Cx{v[r], -v[r + h / 2]}, r, 2 * h));
    const std::vector<Cx> zz = complexDft(f, h / 2, z);
    std::vector<bool> filled(out.size(), false);
    for (int j = 0; j < h / 2; ++j) {
        long odd = (4L * j + 1) % (2 * h);  // frequency 2q+1
        Cx value = zz[j];
        if (odd > h) {
            odd = 2 * h - odd;
            value = conj(value);
        }
        const int q = static_cast<int>((odd - 1) / 2);
        filled[q] = true;
        out[q] = value;
    }
    checkFilled(filled);
    return out;
}


// Transposed application of a forward flow builder: runs `forward` in a
// scratch flow on fresh inputs, transposes it and copies the transposed flow
// into `f` applied to `inputs`.
template <class Build>
std::vector<Ref> applyTransposed(Flow& f, int inputCount, const std::vector<Ref>& inputs, Build forward)
{
    Flow scratch;
    std::vector<Ref> x;
    for (int i = 0; i < inputCount; ++i)
        x.push_back(scratch.input(i));
    ++transposedDepth;
    const std::vector<Ref> outs = forward(scratch, x);
    --transposedDepth;
    const Transposed t = transpose(scratch, outs, inputCount, {});
    return embed(f, t.flow, t.outputs, inputs);
}

// The inputs of a synthesis as placeholders of a scratch flow, so that both
// forms can be counted before one is copied into the kernel's flow: `actual`
// gathers the values they stand for, input i for actual[i].
std::vector<Ref> placeholders(Flow& s, const std::vector<Ref>& bins, std::vector<Ref>& actual)
{
    std::vector<Ref> out;
    for (const Ref& b : bins) {
        if (b.zero()) {
            out.push_back({});
            continue;
        }
        const auto known = std::find(actual.begin(), actual.end(), Ref{b.id, false});
        const int index = static_cast<int>(known - actual.begin());
        if (known == actual.end())
            actual.push_back(Ref{b.id, false});
        const Ref in = s.input(index);
        out.push_back(b.neg ? -in : in);
    }
    return out;
}

// What a synthesis form costs: its multiplications first, then its additions.
int synthesisCost(const Flow& s, const std::vector<Ref>& outs)
{
    const FlowCounts c = countFlow(s, outs);
    return c.multiplications * 10000 + c.additions;
}

// One Rader step, built phase by phase into the kernel's flow.
class RaderReal {
public:
    RaderReal(Flow& f, const TreePtr& tree, const std::vector<Ref>& x)
        : f_(f), tree_(tree), x_(x), p_(tree->size), L_(p_ - 1), h_(L_ / 2), g_(primitiveRoot(p_))
    {
    }
    std::vector<Cx> run();

private:
    // the inputs of a synthesis: the bins of the half-length form, and all L
    // inputs of the full-length form
    struct Bins {
        std::vector<Ref> half, full;
    };

    std::vector<std::complex<long double>> rootTransform() const;
    std::complex<long double> multiplier(int k) const;
    std::vector<Cx> products();
    TreePtr halfTree() const;
    void splitBins(const std::vector<Cx>& D, const Ref& zeroTerm, Bins& even, Bins& odd) const;
    std::vector<Ref> halfSynthesis(Flow& s, const std::vector<Ref>& in, bool odd) const;
    std::vector<Ref> fullSynthesis(Flow& s, const std::vector<Ref>& in) const;
    std::vector<Ref> pick(const std::vector<Ref>& all, const std::vector<bool>& upper, bool odd) const;
    int chooseOutputs(const Flow& fullFlow, const std::vector<Ref>& all, bool odd, std::vector<bool>& upper) const;
    std::vector<Ref> synthesis(const Bins& bins, bool odd);

    Flow& f_;
    const TreePtr& tree_;
    const std::vector<Ref>& x_;
    const int p_, L_, h_, g_;
    std::vector<Cx> A_;                          // the inner transform of the permuted samples
    std::vector<std::complex<long double>> B_;  // the inner transform of the permuted roots
    TreePtr half_;                               // the tree of the half-length syntheses
};

std::vector<Cx> RaderReal::run()
{
    std::vector<Ref> a;
    long power = 1;
    for (int j = 0; j < L_; ++j) {
        a.push_back(x_[static_cast<std::size_t>(power)]);
        power = power * g_ % p_;
    }
    A_ = realDft(f_, tree_->first, a);
    B_ = rootTransform();

    std::vector<Cx> X(static_cast<std::size_t>(p_ / 2 + 1));
    std::vector<bool> filled(X.size(), false);
    filled[0] = true;
    X[0].re = f_.add(x_[0], A_[0].re);
    const Ref zeroTerm = f_.add(x_[0], f_.mul(A_[0].re, multiplier(0).real()), true);
    const std::vector<Cx> D = products();
    half_ = halfTree();
    Bins even, odd;
    splitBins(D, zeroTerm, even, odd);
    const std::vector<Ref> re = synthesis(even, false);
    const std::vector<Ref> im = synthesis(odd, true);

    const int ginv = inverseModulo(g_, p_);
    long index = 1;
    for (int m = 0; m < h_; ++m) {
        place(X, filled, p_, index, Cx{re[m], im[m]});
        index = index * ginv % p_;
    }
    checkFilled(filled);
    return X;
}

// B[k]: the inner transform of the roots W_p^(g^j), j = 0..L-1
std::vector<std::complex<long double>> RaderReal::rootTransform() const
{
    std::vector<std::complex<long double>> B(static_cast<std::size_t>(L_));
    for (int k = 0; k < L_; ++k) {
        long t = 1;
        for (int j = 0; j < L_; ++j) {
            B[k] += std::polar(1.0L, -2 * pi * t / p_) * std::polar(1.0L, -2 * pi * ((static_cast<long>(j) * k) % L_) / L_);
            t = t * g_ % p_;
        }
    }
    return B;
}

// M[k], the multiplier of bin k of the half spectrum
std::complex<long double> RaderReal::multiplier(int k) const
{
    if (k == 0)
        return -1.0L / L_;
    if (k == h_)
        return B_[static_cast<std::size_t>(h_)] / static_cast<long double>(L_);
    return B_[static_cast<std::size_t>(L_ - k)] * (2.0L / L_);
}

// products D[k] = A[k]·M[k]
std::vector<Cx> RaderReal::products()
{
    std::vector<Cx> D(static_cast<std::size_t>(h_ + 1));
    for (int k = 1; k < h_; ++k) {
        const auto m = multiplier(k);
        D[k] = times(f_, A_[k], m.real(), m.imag());
    }
    const auto mh = multiplier(h_);
    if (h_ % 2 == 0)
        D[h_] = {f_.mul(A_[h_].re, mh.real()), {}};
    else
        D[h_] = {{}, f_.mul(A_[h_].re, mh.imag())};
    return D;
}

TreePtr RaderReal::halfTree() const
{
    TreePtr half = halved(tree_->first);
    // A factor of the inner tree used as it stands is a row: the synthesis, a
    // transposed transform, takes that length's row from the other table.
    if ((half == tree_->first->first || half == tree_->first->second) && half->table != 0)
        half = half->table == forwardTable ? inverseTree(h_) : forwardTree(h_);
    return half;
}

// Real parts: the even bins; imaginary parts: the odd bins, each complex
// bin D[k] entering as Re(D[k]·e^(iθ)) or as Im(D[k]·e^(iθ)).
void RaderReal::splitBins(const std::vector<Cx>& D, const Ref& zeroTerm, Bins& even, Bins& odd) const
{
    std::vector<Ref>& evenBins = even.half;
    std::vector<Ref>& oddBins = odd.half;
    std::vector<Ref>& evenFull = even.full;
    std::vector<Ref>& oddFull = odd.full;
    evenBins.push_back(zeroTerm);
    evenFull.assign(static_cast<std::size_t>(L_), Ref{});
    oddFull.assign(static_cast<std::size_t>(L_), Ref{});
    evenFull[0] = zeroTerm;
    for (int k = 1; k < h_; ++k) {
        if (k % 2 == 0) {
            evenBins.push_back(D[k].re);
            evenBins.push_back(D[k].im);
            evenFull[2 * k - 1] = D[k].re;
            evenFull[2 * k] = D[k].im;
        } else {
            oddBins.push_back(D[k].im);
            oddBins.push_back(-D[k].re);
            oddFull[2 * k - 1] = D[k].im;
            oddFull[2 * k] = -D[k].re;
        }
    }
    if (h_ % 2 == 0) {
        evenBins.push_back(D[h_].re);
        evenFull[L_ - 1] = D[h_].re;
    } else {
        oddBins.push_back(D[h_].im);
        oddFull[L_ - 1] = D[h_].im;
    }
}

// the transposed transform of length h on the tree with one factor 2 removed
std::vector<Ref> RaderReal::halfSynthesis(Flow& s, const std::vector<Ref>& in, bool odd) const
{
    return applyTransposed(s, h_, in, [&](Flow& t, const std::vector<Ref>& v) {
        if (!odd)
            return flatten(realDft(t, half_, v), h_);
        std::vector<Ref> flat;
        for (const Cx& c : oddDft(t, half_, v)) {
            flat.push_back(c.re);
            if (flat.size() < static_cast<std::size_t>(h_))
                flat.push_back(c.im);
        }
        return flat;
    });
}

// the transposed inner transform of length L, fed with half of its bins
std::vector<Ref> RaderReal::fullSynthesis(Flow& s, const std::vector<Ref>& in) const
{
    return applyTransposed(s, L_, in, [&](Flow& t, const std::vector<Ref>& v) {
        return flatten(realDft(t, tree_->first, v), L_);
    });
}

// outputs m of the full-length form, or m + h where `upper` says so
std::vector<Ref> RaderReal::pick(const std::vector<Ref>& all, const std::vector<bool>& upper, bool odd) const
{
    std::vector<Ref> out;
    for (int m = 0; m < h_; ++m)
        out.push_back(upper[m] ? (odd ? -all[m + h_] : all[m + h_]) : all[m]);
    return out;
}

// one output at a time moved to the other half while that saves operations;
// returns the cost of the outputs picked
int RaderReal::chooseOutputs(const Flow& fullFlow, const std::vector<Ref>& all, bool odd,
                             std::vector<bool>& upper) const
{
    int best = synthesisCost(fullFlow, pick(all, upper, odd));
    for (bool improved = true; improved;) {
        improved = false;
        for (int m = 0; m < h_; ++m) {
            upper[m] = !upper[m];
            const int c = synthesisCost(fullFlow, pick(all, upper, odd));
            if (c < best) {
                best = c;
                improved = true;
            } else {
                upper[m] = !upper[m];
            }
        }
    }
    return best;
}

// Each of the two syntheses has two forms: the transposed transform of
// length h on the tree with one factor 2 removed, and the transposed inner
// transform of length L itself fed with that half of its bins, of whose
// outputs m and m + h (equal for the even bins, opposite for the odd ones)
// either one serves.  Which is cheaper depends on the tree; the flow takes
// the form of fewer operations.
std::vector<Ref> RaderReal::synthesis(const Bins& bins, bool odd)
{
    std::vector<Ref> actual;
    Flow halfFlow;
    const std::vector<Ref> halfIn = placeholders(halfFlow, bins.half, actual);
    const std::vector<Ref> halfOut = halfSynthesis(halfFlow, halfIn, odd);

    Flow fullFlow;
    const std::vector<Ref> fullIn = placeholders(fullFlow, bins.full, actual);
    const std::vector<Ref> all = fullSynthesis(fullFlow, fullIn);
    std::vector<bool> upper(static_cast<std::size_t>(h_), false);
    const int best = chooseOutputs(fullFlow, all, odd, upper);
    if (best / 10000 < synthesisCost(halfFlow, halfOut) / 10000)
        return embed(f_, fullFlow, pick(all, upper, odd), actual);
    return embed(f_, halfFlow, halfOut, actual);
}

}  // namespace

std::vector<Cx> raderReal(Flow& f, const TreePtr& tree, const std::vector<Ref>& x)
{
    RaderReal step(f, tree, x);
    return step.run();
}

}  // namespace gen::real
