#include "wht_textbook.h"

namespace {
template <class T>
void transform(T* x, int n, T scale)
{
    for (int h = 1; h < n; h *= 2)
        for (int i = 0; i < n; i += 2 * h)
            for (int j = i; j < i + h; ++j) {
                const T a = x[j], b = x[j + h];
                x[j] = a + b;
                x[j + h] = a - b;
            }
    for (int i = 0; i < n; ++i)
        x[i] *= scale;
}
}  // namespace

void textbookWht(float* x, int n, float scale) { transform(x, n, scale); }
void textbookWht(double* x, int n, double scale) { transform(x, n, scale); }
