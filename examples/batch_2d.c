/* A two-dimensional DFT of an 8x8 block of Complex32 in two batched calls:
   the 8 rows (stride 1, distance 8), then the 8 columns of the result
   (stride 8, distance 1).  Every row and column transform has the bits of
   the single call on it, and the block's spectrum is the one it must be. */
#include <stdio.h>
#include <string.h>

#include <kvtgen_batch.h>

int main(void)
{
    enum { N = 8 };
    /* i^n for n mod 4, exact in float */
    static const Complex32 powerOfI[4] = {{1.0f, 0.0f}, {0.0f, 1.0f}, {-1.0f, 0.0f}, {0.0f, -1.0f}};
    static Complex32 block[N][N], rows[N][N], spectrum[N][N];
    /* 0.5 + exp(2 pi i (2r + 6c) / 8): 32 at bin (0,0), 64 at bin (2,6), 0 elsewhere */
    for (int r = 0; r < N; ++r)
        for (int c = 0; c < N; ++c) {
            block[r][c] = powerOfI[(r + 3 * c) % 4];
            block[r][c].re += 0.5f;
        }
    /* row r: block[r][j] -> rows[r][j]; then column c: rows[j][c] -> spectrum[j][c] */
    if (kvtgBatchDFTFwd_CToC_32fc(&block[0][0], &rows[0][0], N, N, 1, N, 1, N, ScaleNone) != StatusOk ||
        kvtgBatchDFTFwd_CToC_32fc(&rows[0][0], &spectrum[0][0], N, N, N, 1, N, 1, ScaleNone) != StatusOk) {
        fprintf(stderr, "batched transform failed\n");
        return 1;
    }
    int same = 1;
    for (int t = 0; t < N; ++t) {
        Complex32 column[N], single[N], batched[N];
        if (kvtgDFTFwd_CToC_32fc(block[t], single, N, ScaleNone) != StatusOk)
            return 1;
        same = same && memcmp(single, rows[t], sizeof single) == 0;
        for (int j = 0; j < N; ++j) {
            column[j] = rows[j][t];
            batched[j] = spectrum[j][t];
        }
        if (kvtgDFTFwd_CToC_32fc(column, single, N, ScaleNone) != StatusOk)
            return 1;
        same = same && memcmp(single, batched, sizeof single) == 0;
    }
    /* the largest squared distance of a bin from the exact spectrum */
    double worst = 0;
    for (int k = 0; k < N; ++k)
        for (int l = 0; l < N; ++l) {
            const double re = spectrum[k][l].re - (k == 0 && l == 0 ? 32.0 : k == 2 && l == 6 ? 64.0 : 0.0);
            const double im = spectrum[k][l].im;
            if (re * re + im * im > worst)
                worst = re * re + im * im;
        }
    printf("8x8 block: bin (0,0) = %.3f%+.3fi, bin (2,6) = %.3f%+.3fi, every other bin %s\n", spectrum[0][0].re,
           spectrum[0][0].im, spectrum[2][6].re, spectrum[2][6].im, worst < 1e-8 ? "0" : "NOT 0");
    printf("same bits as the single calls: %s\n", same ? "yes" : "no");
    return same && worst < 1e-8 ? 0 : 1;
}
