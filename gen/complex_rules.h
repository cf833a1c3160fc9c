#ifndef KVTGEN_COMPLEX_RULES_H
#define KVTGEN_COMPLEX_RULES_H

#include "tree.h"

namespace gen {

enum class Precision { Single, Double };

// Text of the rule of a complex length (2..64) as the table holds it.
const char* complexRuleText(int size, Precision precision);
// The parsed tree of that rule; factors with rows of their own are expanded.
TreePtr complexRule(int size, Precision precision);

}  // namespace gen

#endif
