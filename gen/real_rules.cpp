// The real DFT and Hartley rules as data.  Forward rows: the tree, the
// multiplications by transform constants, the additions and subtractions and
// the negations of a forward kernel.  Inverse rows: the tree whose transposed
// flow the inverse kernel runs, with its doublings.  Hartley rows: which of the
// two flows a kernel takes and what it costs.  The generator holds every
// kernel it writes against these counts.
#include "real_builder.h"

#include <stdexcept>
#include <string>

namespace gen::real {

namespace {

struct Row {
    int size;
    RuleRow forward;
    RuleRow inverse;
    HartleyRow hartley;
};

// length, forward row, inverse row, Hartley row
const Row rows[] = {
    {2, {"direct", 0, 2, 0}, {"direct", 0, 2, 0}, {Form::Either, 0, 2}},
    {3, {"direct", 2, 4, 1}, {"direct", 2, 4, 1}, {Form::Either, 2, 6}},
    {4, {"T(2,2)", 0, 6, 1}, {"T(2,2)", 0, 6, 2}, {Form::Either, 0, 8}},
    {5, {"direct", 8, 12, 1}, {"direct", 8, 12, 4}, {Form::Either, 8, 16}},
    {6, {"P(3,2)", 4, 14, 1}, {"P(3,2)", 4, 14, 4}, {Form::Either, 4, 18}},
    {7, {"direct", 18, 24, 1}, {"direct", 18, 24, 6}, {Form::Either, 18, 30}},
    {8, {"T(4,2)", 2, 20, 3}, {"T(4,2)", 2, 20, 6}, {Form::Forward, 2, 26}},
    {9, {"T(3,3)", 20, 32, 3}, {"T(3,3)", 18, 32, 7}, {Form::Forward, 20, 40}},
    {10, {"P(5,2)", 16, 34, 3}, {"P(5,2)", 16, 34, 8}, {Form::Either, 16, 42}},
    {11, {"direct", 50, 60, 1}, {"Rader(11; P(5,2))", 50, 68, 10}, {Form::Forward, 50, 70}},
    {12, {"P(4,3)", 8, 38, 3}, {"P(4,3)", 8, 38, 8}, {Form::Transposed, 8, 48}},
    {13, {"Rader(13; P(3,4))", 41, 78, 2}, {"Rader(13; P(4,3))", 44, 80, 12}, {Form::Transposed, 44, 92}},
    {14, {"P(2,7)", 36, 62, 3}, {"P(7,2)", 36, 62, 12}, {Form::Either, 36, 74}},
    {15, {"P(3,5)", 34, 64, 3}, {"P(5,3)", 34, 64, 13}, {Form::Transposed, 34, 78}},
    {16, {"T(4,4)", 12, 58, 6}, {"T(4,4)", 12, 58, 14}, {Form::Forward, 12, 72}},
    {17, {"Rader(17; T(4,4))", 54, 116, 5}, {"Rader(17; T(4,4))", 54, 116, 14}, {Form::Either, 54, 132}},
    {18, {"P(2,9)", 40, 82, 4}, {"P(9,2)", 36, 82, 16}, {Form::Transposed, 36, 98}},
    {19, {"Rader(19; P(9,2))", 108, 164, 4}, {"Rader(19; P(9,2))", 110, 164, 18}, {Form::Forward, 108, 182}},
    {20, {"P(5,4)", 32, 86, 5}, {"P(4,5)", 32, 86, 18}, {Form::Transposed, 32, 104}},
    {21, {"P(7,3)", 68, 112, 6}, {"P(7,3)", 68, 112, 19}, {Form::Forward, 68, 132}},
    {22, {"P(2,11)", 100, 142, 5}, {"P(2,11)", 100, 158, 20}, {Form::Forward, 100, 162}},
    {23, {"Rader(23; P(2,11))", 242, 300, 4}, {"Rader(23; P(2,11d))", 242, 284, 22}, {Form::Transposed, 242, 306}},
    {24, {"P(3,8)", 22, 104, 5}, {"P(3,8)", 22, 104, 22}, {Form::Forward, 22, 126}},
    {25, {"T(5,5)", 112, 152, 6}, {"T(5,5)", 112, 152, 24}, {Form::Transposed, 112, 176}},
    {26, {"P(13,2)", 82, 182, 7}, {"P(13,2)", 88, 186, 24}, {Form::Forward, 82, 206}},
    {27, {"T(9,3)", 110, 164, 8}, {"T(3,9)", 100, 164, 25}, {Form::Transposed, 100, 190}},
    {28, {"P(4,7)", 72, 150, 7}, {"P(7,4)", 72, 150, 26}, {Form::Transposed, 72, 176}},
    {29, {"Rader(29; P(7,4))", 210, 306, 8}, {"Rader(29; P(4,7))", 210, 306, 28}, {Form::Forward, 210, 334}},
    {30, {"P(P(5,3),2)", 68, 158, 9}, {"P(P(2,5),3)", 68, 158, 26}, {Form::Transposed, 68, 186}},
    {31, {"Rader(31; P(P(3,2),5))", 192, 316, 6}, {"Rader(31; P(P(5,3),2))", 194, 316, 30}, {Form::Transposed, 194, 346}},
    {32, {"T(8,4)", 44, 158, 10}, {"T(4,8)", 42, 156, 30}, {Form::Transposed, 42, 186}},
    {33, {"P(11,3)", 172, 244, 8}, {"P(11,3)", 172, 268, 31}, {Form::Transposed, 172, 300}},
    {34, {"P(2,17)", 108, 266, 8}, {"P(2,17)", 108, 266, 28}, {Form::Transposed, 108, 298}},
    {35, {"P(7,5)", 146, 228, 8}, {"P(7,5)", 146, 228, 34}, {Form::Transposed, 146, 262}},
    {36, {"P(9,4)", 80, 198, 10}, {"P(9,4)", 72, 198, 34}, {Form::Transposed, 72, 232}},
    {37, {"Rader(37; P(4,9))", 228, 400, 8}, {"Rader(37; P(4,9))", 236, 402, 36}, {Form::Transposed, 236, 438}},
    {38, {"P(19,2)", 216, 366, 12}, {"P(19,2)", 220, 366, 36}, {Form::Forward, 216, 402}},
    {39, {"P(13,3)", 149, 310, 11}, {"P(3,13)", 142, 308, 38}, {Form::Forward, 149, 348}},
    {40, {"P(8,5)", 74, 220, 11}, {"P(8,5)", 74, 220, 38}, {Form::Transposed, 74, 258}},
    {41, {"Rader(41; P(5,8))", 242, 444, 9}, {"Rader(41; P(8,5))", 242, 444, 40}, {Form::Forward, 242, 484}},
    {42, {"P(P(7,3),2)", 136, 266, 10}, {"P(P(7,3),2)", 136, 266, 40}, {Form::Transposed, 136, 306}},
    {43, {"Rader(43; P(P(2,7),3))", 352, 532, 9}, {"Rader(43; P(P(7,2),3))", 352, 532, 42}, {Form::Transposed, 352, 574}},
    {44, {"P(11,4)", 200, 326, 11}, {"P(11,4)", 200, 358, 42}, {Form::Transposed, 200, 400}},
    {45, {"P(5,9)", 172, 300, 11}, {"P(9,5)", 162, 300, 44}, {Form::Transposed, 162, 344}},
    {46, {"P(2,23)", 484, 646, 11}, {"P(2,23)", 484, 614, 44}, {Form::Transposed, 484, 658}},
    {47, {"Rader(47; P(23,2))", 1058, 1260, 9}, {"Rader(47; P(2,23))", 1058, 1260, 46}, {Form::Forward, 1058, 1306}},
    {48, {"P(16,3)", 68, 266, 14}, {"P(3,16)", 72, 270, 46}, {Form::Transposed, 72, 316}},
    {49, {"T(7,7)", 324, 408, 11}, {"T(7,7)", 324, 408, 48}, {Form::Forward, 324, 456}},
    {50, {"P(25,2)", 224, 354, 18}, {"P(2,25)", 224, 354, 48}, {Form::Forward, 224, 402}},
    {51, {"P(17,3)", 196, 448, 16}, {"P(17,3)", 196, 448, 49}, {Form::Transposed, 196, 498}},
    {52, {"P(13,4)", 164, 414, 14}, {"P(4,13)", 160, 414, 50}, {Form::Forward, 164, 464}},
    {53, {"Rader(53; P(4,13))", 456, 844, 14}, {"Rader(53; P(4,13))", 450, 840, 52}, {Form::Transposed, 450, 892}},
    {54, {"P(2,27)", 220, 382, 13}, {"P(2,27)", 200, 382, 50}, {Form::Transposed, 200, 434}},
    {55, {"P(11,5)", 338, 472, 14}, {"P(11,5)", 338, 512, 54}, {Form::Transposed, 338, 566}},
    {56, {"P(7,8)", 158, 368, 14}, {"P(7,8)", 158, 368, 54}, {Form::Transposed, 158, 422}},
    {57, {"P(19,3)", 362, 604, 16}, {"P(19,3)", 368, 604, 55}, {Form::Forward, 362, 660}},
    {58, {"P(2,29)", 420, 670, 14}, {"P(2,29)", 420, 670, 56}, {Form::Forward, 420, 726}},
    {59, {"Rader(59; P(29,2))", 954, 1340, 10}, {"Rader(59; P(29,2))", 954, 1340, 58}, {Form::Forward, 954, 1398}},
    {60, {"P(P(3,5),4)", 136, 374, 18}, {"P(P(5,3),4)", 136, 374, 58}, {Form::Transposed, 136, 432}},
    {61, {"Rader(61; P(P(3,5),4))", 415, 762, 14}, {"Rader(61; P(P(5,3),4))", 418, 762, 60}, {Form::Forward, 415, 822}},
    {62, {"P(31,2)", 384, 694, 21}, {"P(2,31)", 388, 694, 60}, {Form::Transposed, 388, 754}},
    {63, {"P(7,9)", 302, 488, 18}, {"P(7,9)", 300, 488, 61}, {Form::Forward, 302, 550}},
    {64, {"T(16,4)", 132, 398, 19}, {"T(4,16)", 134, 400, 62}, {Form::Transposed, 134, 462}},
};

const Row& find(int size)
{
    if (size < 2 || size > 64)
        throw std::out_of_range("no real rule for length " + std::to_string(size));
    return rows[size - 2];  // the rows of the lengths 2..64 in order
}

// The direct rule is written "direct" in a row and as the bare prime inside
// other rules; an "11d" inside a rule asks for the direct 11 where the row of
// 11 says otherwise.
TreePtr parseRow(int size, const char* rule, TreePtr (*row)(int), int table)
{
    auto t = std::make_shared<Tree>();  // of kind Direct
    t->size = size;
    if (std::string(rule) != "direct")
        *t = *parseTree(rule, [row](int n, bool) { return row(n); });
    t->table = table;
    return t;
}

}  // namespace

const RuleRow& forwardRow(int size) { return find(size).forward; }
const RuleRow& inverseRow(int size) { return find(size).inverse; }
const HartleyRow& hartleyRow(int size) { return find(size).hartley; }

TreePtr forwardTree(int size) { return parseRow(size, forwardRow(size).rule, forwardTree, forwardTable); }
TreePtr inverseTree(int size) { return parseRow(size, inverseRow(size).rule, inverseTree, inverseTable); }

}  // namespace gen::real
