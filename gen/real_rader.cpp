// The Rader step of a real prime length p: the samples permuted by powers of
// a primitive root go through a real transform of length L = p - 1, its bins
// are multiplied by the transform of the roots (a cyclic convolution), and
// the products go back through two syntheses, one for the even bins (the
// real parts of the outputs) and one for the odd bins (the imaginary parts).
// Each synthesis is a transposed transform, of length L/2 on the inner tree
// with one factor 2 removed or of length L itself on half of its bins; the
// flow takes the form of fewer operations.
#include <algorithm>
#include <complex>
#include <stdexcept>

#include "real_builder.h"

namespace gen::real {

int transposedDepth = 0;

namespace {

// Tree of length L/2 with the same stages: one factor 2 removed.
TreePtr halved(const TreePtr& tree)
{
    if (tree->size % 2 != 0)
        throw std::logic_error("halving an odd tree");
    if (tree->kind != Tree::Kind::Prime && tree->kind != Tree::Kind::Twiddle)
        throw std::logic_error("no factor 2 to remove");
    const bool inSecond = tree->second->size % 2 == 0;
    const TreePtr& even = inSecond ? tree->second : tree->first;
    if (even->size == 2)
        return inSecond ? tree->first : tree->second;
    auto t = std::make_shared<Tree>(*tree);
    (inSecond ? t->second : t->first) = halved(even);
    t->size = t->first->size * t->second->size;
    return t;
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
    // frequency 4j + 1 of the length-2h transform, mirrored to 2q + 1 <= h
    std::vector<Cx> spectrum(static_cast<std::size_t>(h + 1));
    std::vector<bool> filled(spectrum.size(), false);
    const std::vector<Cx> z = oddFrequencies(f, v);
    for (int j = 0; j < h / 2; ++j)
        place(spectrum, filled, 2 * h, 4L * j + 1, z[j]);
    for (int q = 0; q < h / 2; ++q)
        out[q] = spectrum[static_cast<std::size_t>(2 * q + 1)];
    return out;
}

// One form of a synthesis, the transposed application of a forward flow
// builder to `bins`, in a scratch flow `s` of its own so that both forms can
// be counted before one is copied into the kernel's flow: input i of `s`
// stands for actual[i], the values of the bins as `actual` gathers them.
// `forward` runs in another scratch flow on fresh inputs, is transposed and
// copied into `s`.
template <class Build>
std::vector<Ref> transposedForm(Flow& s, const std::vector<Ref>& bins, std::vector<Ref>& actual, Build forward)
{
    std::vector<Ref> inputs;
    for (const Ref& b : bins) {
        const Ref value{b.id, false};
        auto known = std::find(actual.begin(), actual.end(), value);
        if (!b.zero() && known == actual.end())
            known = actual.insert(known, value);
        const Ref in = b.zero() ? Ref{} : s.input(static_cast<int>(known - actual.begin()));
        inputs.push_back(b.neg ? -in : in);
    }
    const int count = static_cast<int>(bins.size());
    Flow scratch;
    const std::vector<Ref> x = scratch.inputs(count);
    ++transposedDepth;
    const std::vector<Ref> outs = forward(scratch, x);
    --transposedDepth;
    const KernelFlow t = transpose(scratch, outs, count, {});
    return evaluate(t.flow, t.outputs, inputs, s);
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
        : f_(f), tree_(tree), x_(x), p_(tree->size), L_(p_ - 1), h_(L_ / 2)
    {
    }

    std::vector<Cx> run()
    {
        const std::vector<long> power = powers(p_);
        std::vector<Ref> a;
        for (long i : power)
            a.push_back(x_[static_cast<std::size_t>(i)]);
        A_ = realDft(f_, tree_->first, a);

        std::vector<Cx> X(static_cast<std::size_t>(p_ / 2 + 1));
        std::vector<bool> filled(X.size(), false);
        filled[0] = true;
        X[0].re = f_.add(x_[0], A_[0].re);
        // The inputs of the full-length syntheses: real parts from the even bins,
        // imaginary parts from the odd bins, each complex bin D[k] entering as
        // Re(D[k]·e^(iθ)) or as Im(D[k]·e^(iθ)) at inputs 2k-1 and 2k (bin h at
        // input L-1 only), an odd bin times -i.
        std::vector<Ref> even(static_cast<std::size_t>(L_)), odd(static_cast<std::size_t>(L_));
        even[0] = f_.add(x_[0], f_.mul(A_[0].re, multiplier(0).real()), true);
        for (int k = 1; k <= h_; ++k) {
            const Cx d = k % 2 == 0 ? product(k) : timesMinusI(product(k));
            std::vector<Ref>& bins = k % 2 == 0 ? even : odd;
            bins[2 * k - 1] = d.re;
            if (k < h_)
                bins[2 * k] = d.im;
        }
        // A factor of the inner tree used as it stands is a row: the synthesis, a
        // transposed transform, takes that length's row from the other table.
        half_ = halved(tree_->first);
        if ((half_ == tree_->first->first || half_ == tree_->first->second) && half_->table != 0)
            half_ = half_->table == forwardTable ? inverseTree(h_) : forwardTree(h_);
        const std::vector<Ref> re = synthesis(even, false);
        const std::vector<Ref> im = synthesis(odd, true);

        for (int m = 0; m < h_; ++m)
            place(X, filled, p_, power[(L_ - m) % L_], Cx{re[m], im[m]});  // at g^(-m)
        checkFilled(filled);
        return X;
    }

private:
    Flow& f_;
    const TreePtr& tree_;
    const std::vector<Ref>& x_;
    const int p_, L_, h_;
    std::vector<Cx> A_;  // the inner transform of the permuted samples
    TreePtr half_;       // the tree of the half-length syntheses

    // M[k], the multiplier of bin k of the half spectrum, from the inner
    // transform B of the permuted roots
    std::complex<long double> multiplier(int k) const
    {
        if (k == 0)
            return -1.0L / L_;
        if (k == h_)
            return rootBin(p_, h_, -1) / static_cast<long double>(L_);
        return rootBin(p_, L_ - k, -1) * (2.0L / L_);
    }

    // the product D[k] = A[k]·M[k]; A[h] is real, D[h] real for even h and
    // imaginary for odd h
    Cx product(int k)
    {
        const auto m = multiplier(k);
        if (k < h_)
            return times(f_, A_[k], m.real(), m.imag());
        if (h_ % 2 == 0)
            return {f_.mul(A_[h_].re, m.real()), {}};
        return {{}, f_.mul(A_[h_].re, m.imag())};
    }

    // outputs m of the full-length form, one at a time moved to output m + h
    // (negated for the odd bins) while that saves operations; `best` is the
    // cost of the outputs picked
    std::vector<Ref> chooseOutputs(const Flow& fullFlow, const std::vector<Ref>& all, bool odd, int& best) const
    {
        std::vector<Ref> picked(all.begin(), all.begin() + h_);
        best = synthesisCost(fullFlow, picked);
        for (bool improved = true; improved;) {
            improved = false;
            for (int m = 0; m < h_; ++m) {
                const Ref kept = picked[m];
                picked[m] = kept == all[m] ? (odd ? -all[m + h_] : all[m + h_]) : all[m];
                const int c = synthesisCost(fullFlow, picked);
                if (c < best) {
                    best = c;
                    improved = true;
                } else {
                    picked[m] = kept;
                }
            }
        }
        return picked;
    }

    // Each of the two syntheses has two forms: the transposed transform of
    // length h on the tree with one factor 2 removed, and the transposed inner
    // transform of length L itself fed with that half of its bins, of whose
    // outputs m and m + h (equal for the even bins, opposite for the odd ones)
    // either one serves.  Which is cheaper depends on the tree; the flow takes
    // the form of fewer operations.
    std::vector<Ref> synthesis(const std::vector<Ref>& bins, bool odd)
    {
        std::vector<Ref> half;  // the bins of this half, input j being part of bin (j + 1) / 2
        for (int j = 0; j < L_; ++j)
            if ((j + 1) / 2 % 2 == (odd ? 1 : 0))
                half.push_back(bins[j]);
        std::vector<Ref> actual;
        Flow halfFlow;
        const auto halfOut = transposedForm(halfFlow, half, actual, [&](Flow& t, const std::vector<Ref>& v) {
            if (!odd)
                return flatten(realDft(t, half_, v), h_);
            std::vector<Ref> flat;
            for (const Cx& c : oddDft(t, half_, v)) {
                flat.push_back(c.re);
                flat.push_back(c.im);
            }
            flat.resize(static_cast<std::size_t>(h_));  // for odd h, the last value is real
            return flat;
        });

        Flow fullFlow;
        const auto all = transposedForm(fullFlow, bins, actual, [&](Flow& t, const std::vector<Ref>& v) {
            return flatten(realDft(t, tree_->first, v), L_);
        });
        int best = 0;
        const std::vector<Ref> picked = chooseOutputs(fullFlow, all, odd, best);
        if (best / 10000 < synthesisCost(halfFlow, halfOut) / 10000)
            return evaluate(fullFlow, picked, actual, f_);
        return evaluate(halfFlow, halfOut, actual, f_);
    }
};

}  // namespace

std::vector<Cx> raderReal(Flow& f, const TreePtr& tree, const std::vector<Ref>& x)
{
    return RaderReal(f, tree, x).run();
}

}  // namespace gen::real
