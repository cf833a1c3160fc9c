// Rule tables of the real DFT and Hartley kernels: the tree of every length and
// the operation counts that its flow must have.
#ifndef KVTGEN_REAL_RULES_H
#define KVTGEN_REAL_RULES_H

#include "tree.h"

namespace gen::real {

struct ForwardRow {
    const char* rule;
    int multiplications;
    int additions;
    int negations;
};

struct InverseRow {
    const char* rule;
    int multiplications;
    int additions;
    int doublings;
};

// Which flow a Hartley kernel takes: the forward one (Either as well) or the
// transposed one, each with the tree of its own row.
enum class Form { Either, Forward, Transposed };

struct HartleyRow {
    Form form;
    int multiplications;
    int additions;
};

const ForwardRow& forwardRow(int size);
const InverseRow& inverseRow(int size);
const HartleyRow& hartleyRow(int size);

// Parsed trees; bare lengths inside a rule resolve to the rows of the same
// table ("direct" is the direct rule of the row's own length).
// The tree of a row records its table, so that a Rader step can take the
// synthesis transforms of half its inner length from the other table.
constexpr int forwardTable = 1;
constexpr int inverseTable = 2;
TreePtr forwardTree(int size);
TreePtr inverseTree(int size);

}  // namespace gen::real

#endif
