#include "body_lanes.h"

namespace gen {

Value laneSelection(const std::string& function, const Value& a, const Value& b)
{
    Value out = a;
    const bool high = endsWith(function, "High");
    if (function.rfind("kv::join", 0) == 0) {
        const int half = a.lanes / 2, from = high ? half : 0;
        for (int i = 0; i < half; ++i) {
            out.v[i] = a.v[from + i];
            out.v[half + i] = b.v[from + i];
        }
        return out;
    }
    const int block = a.isDouble ? 2 : 4, from = high ? block / 2 : 0;
    for (int start = 0; start < a.lanes; start += block)
        for (int i = 0; i < block / 2; ++i) {
            out.v[start + 2 * i] = a.v[start + from + i];
            out.v[start + 2 * i + 1] = b.v[start + from + i];
        }
    return out;
}

bool moveLanes(const std::string& move, const std::vector<Value*>& v)
{
    Value& a = *v[0];
    const Value was = a;
    const int lanes = a.lanes, half = lanes / 2, quarter = a.isDouble ? 1 : 2;  // quarter: half of 16 bytes
    if (move == "transposeBlock" && v.size() == 4 && lanes == 4) {
        const Value rows[4] = {*v[0], *v[1], *v[2], *v[3]};
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c)
                v[static_cast<std::size_t>(r)]->v[c] = rows[c].v[r];
    } else if (move == "exchangeHalves" && v.size() == 2) {
        Value& b = *v[1];
        for (int i = 0; i < half; ++i) {
            a.v[half + i] = b.v[i];
            b.v[i] = was.v[half + i];
        }
    } else if (move == "splitEvenOdd" && v.size() == 2) {
        // within each 16 bytes, a takes the even lanes of a and b, b the odd ones
        Value& b = *v[1];
        const Value other = b;
        for (int block = 0; block < lanes; block += 2 * quarter)
            for (int i = 0; i < quarter; ++i) {
                a.v[block + i] = was.v[block + 2 * i];
                a.v[block + quarter + i] = other.v[block + 2 * i];
                b.v[block + i] = was.v[block + 2 * i + 1];
                b.v[block + quarter + i] = other.v[block + 2 * i + 1];
            }
    } else {
        return false;
    }
    return true;
}

}  // namespace gen
