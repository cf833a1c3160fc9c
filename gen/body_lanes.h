// The values of the body interpreter (body_eval.cpp) and the lane moves
// it knows: the SIMD layer's selections and the Walsh-Hadamard networks'
// moves (src/wht/lane_moves.h), lane by lane.
#ifndef KVTGEN_BODY_LANES_H
#define KVTGEN_BODY_LANES_H

#include <string>
#include <vector>

namespace gen {

// A scalar (one lane) or a vector of up to eight lanes, of floats or doubles.
struct Value {
    bool isDouble = false;
    int lanes = 1;
    double v[8] = {0, 0, 0, 0, 0, 0, 0, 0};
};

inline bool endsWith(const std::string& word, const std::string& end)
{
    return word.size() >= end.size() && word.compare(word.size() - end.size(), end.size(), end) == 0;
}

// joinLow, joinHigh: the lower (upper) halves of a and b; unpackLow,
// unpackHigh: the lower (upper) lanes of each 16 bytes of a and b, interleaved.
Value laneSelection(const std::string& function, const Value& a, const Value& b);

// transposeBlock (four vectors of four lanes: rows become columns),
// exchangeHalves (a takes the lower halves of a and b, b the upper ones) and
// splitEvenOdd (within each 16 bytes, a takes the even lanes of a and b, b
// the odd ones) on the vectors named; false for another move or count.
bool moveLanes(const std::string& move, const std::vector<Value*>& v);

}  // namespace gen

#endif
