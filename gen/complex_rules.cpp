// The rule of every complex DFT length, per precision: the factorisation tree
// that each kernel realises.  This table is the one place where rules live;
// the emitter reads it and nothing else decides how a length is computed.
//
// Inner trees of the prime schemes: Rader(p; forward / inverse) runs the
// inverse convolution by the second tree; where it is missing, the inverse is
// the forward tree with its two top-level factors in the opposite order.
// Bluestein's chirp convolutions are zero-padded: radix 3 first for 96, so that
// the padding removes whole butterflies.  Their inner trees are the ones with
// the smallest coefficient error of those tried (impulse rows against exact
// roots): 96 as 3 x (2 x 16) gives 3.1e-7 where 3 x 32 gave 3.8e-7, 128 as
// 8 x 16 gives 3.2e-7 where 2 x 64 gave 3.7e-7 (and needs fewer operations).
#include "complex_kernel.h"

#include <stdexcept>

namespace gen {

namespace {
struct Row {
    int size;
    const char* complex32;
    const char* complex64;
};

const Row rows[] = {
    {2, "2", "2"},
    {3, "3", "3"},
    {4, "T(2,2)", "T(2,2)"},
    {5, "5", "5"},
    {6, "P(2,3)", "P(2,3)"},
    {7, "Rader(7; P(2,3))", "7d"},
    {8, "T(4,2)", "T(2,4)"},
    {9, "T(3,3)", "T(3,3)"},
    {10, "P(5,2)", "P(5w,2)"},
    {11, "Rader(11; P(5,2))", "11d"},
    {12, "P(4,3)", "P(3,4)"},
    {13, "Rader(13; P(4,3))", "Rader(13; P(3,4))"},
    {14, "P(2,7d)", "P(2,7d)"},
    {15, "P(5,3)", "P(5,3)"},
    {16, "T(4,4)", "T(4,4)"},
    {17, "Rader(17; T(4,4))", "Rader(17; T(8,2))"},
    {18, "T(P(3,2),3)", "P(9,2)"},
    {19, "Rader(19; T(P(3,2),3) / P(9,2))", "Rader(19; P(2,9))"},
    {20, "P(4,5)", "P(5,4)"},
    {21, "P(7d,3)", "P(7d,3)"},
    {22, "P(2,11d)", "P(11d,2)"},
    {23, "Rader(23; P(2,11d))", "Rader(23; P(2,11d))"},
    {24, "T(4,P(3,2))", "P(8,3)"},
    {25, "T(5,5)", "T(5,5)"},
    {26, "P(13r,2)", "P(13r,2)"},
    {27, "T(T(3,3),3)", "T(3,9)"},
    {28, "P(4,7d)", "P(4,7d)"},
    {29, "Rader(29; P(4,7d))", "Rader(29; P(4,7d))"},
    {30, "P(P(5,2),3)", "P(P(2,5),3)"},
    {31, "Rader(31; P(P(5,2),3))", "Rader(31; P(P(3,5),2))"},
    {32, "T(4,T(4,2))", "T(8,4)"},
    {33, "P(11d,3)", "P(11d,3)"},
    {34, "P(2,17r)", "P(2,17r)"},
    {35, "P(5,7d)", "P(5w,Rader(7; P(2,3)))"},
    {36, "P(4,9)", "P(4,9)"},
    {37, "Rader(37; P(4,9))", "Rader(37; P(4,9))"},
    {38, "P(2,19r)", "P(2,19r)"},
    {39, "P(13r,3)", "P(13r,3)"},
    {40, "T(P(5,2),4)", "P(8,5)"},
    {41, "Rader(41; T(P(5,2),4))", "Rader(41; P(5w,8))"},
    {42, "P(P(7d,2),3)", "P(P(2,7d),3)"},
    {43, "Rader(43; P(P(7d,2),3))", "Rader(43; P(P(2,7d),3))"},
    {44, "P(4,11d)", "P(4,11d)"},
    {45, "T(P(5,3),3)", "P(5,9)"},
    {46, "T(23r,2)", "P(23r,2)"},
    {47, "Bluestein(47; T(3,T(2,16)) / T(T(16,2),3))", "Rader(47; P(23r,2))"},
    {48, "T(4,P(3,4))", "P(16,3)"},
    {49, "T(7d,7d)", "T(7d,7d)"},
    {50, "T(P(5,2),5)", "P(25,2)"},
    {51, "P(17r,3)", "P(17r,3)"},
    {52, "P(4,13r)", "P(13r,4)"},
    {53, "Rader(53; P(4,13r))", "Rader(53; P(13r,4))"},
    {54, "P(2,27)", "P(2,27)"},
    {55, "P(5,11d)", "P(11d,5)"},
    {56, "T(P(7d,2),4)", "P(7d,8)"},
    {57, "P(19r,3)", "P(19r,3)"},
    {58, "P(2,29r)", "P(29r,2)"},
    {59, "Bluestein(59; T(8,16) / T(16,8))", "Rader(59; P(29r,2))"},
    {60, "T(4,P(5,3))", "P(P(3,5),4)"},
    {61, "Rader(61; T(4,P(5,3)))", "Rader(61; P(P(3,4),5))"},
    {62, "T(31r,2)", "P(31r,2)"},
    {63, "P(9,7d)", "P(7d,9)"},
    {64, "T(8,8)", "T(16,4)"},
};
}  // namespace

const char* complexRuleText(int size, Precision precision)
{
    for (const Row& row : rows)
        if (row.size == size)
            return precision == Precision::Single ? row.complex32 : row.complex64;
    throw std::out_of_range("no complex rule for this length");
}

TreePtr complexRule(int size, Precision precision)
{
    RowLookup lookup = [precision](int n, bool) { return complexRule(n, precision); };
    return parseTree(complexRuleText(size, precision), lookup);
}

}  // namespace gen
