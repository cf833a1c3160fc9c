// Rule tables of the real DFT and Hartley kernels: the tree of every length and
// the operation counts that its flow must have.
#ifndef KVTGEN_REAL_RULES_H
#define KVTGEN_REAL_RULES_H

#include "tree.h"

namespace gen::real {

// A rule and the counts that its flow must have: multiplications by transform
// constants, additions and subtractions, and the negations of a forward flow
// or the doublings of an inverse one.
struct RuleRow {
    const char* rule;
    int multiplications;
    int additions;
    int third;
};

// Which flow a Hartley kernel takes: the forward one (Either as well) or the
// transposed one, each with the tree of its own row.
enum class Form { Either, Forward, Transposed };

struct HartleyRow {
    Form form;
    int multiplications;
    int additions;
};

const RuleRow& forwardRow(int size);
const RuleRow& inverseRow(int size);
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
