/* A short-time Fourier transform: windows of 32 samples every 8 samples
   along a signal of 256, all in one batched call (input distance = hop), each
   window's CCS spectrum a row of the output; every row has the bits of the
   single call on that window. */
#include <stdio.h>
#include <string.h>

#include <kvtgen_batch.h>

int main(void)
{
    enum { N = 32, HOP = 8, LENGTH = 256, FRAMES = (LENGTH - N) / HOP + 1, BINS = N + 2 };
    /* a tone of period 8 samples (bin 4 of a window) that stops halfway */
    static const float tone[8] = {0.0f, 0.75f, 1.0f, 0.75f, 0.0f, -0.75f, -1.0f, -0.75f};
    static float signal[LENGTH], spectra[FRAMES][BINS];
    for (int n = 0; n < LENGTH; ++n)
        signal[n] = n < LENGTH / 2 ? tone[n % 8] : 0.0f;
    /* transform t reads signal[t * HOP + j] and writes spectra[t][j] */
    if (kvtgBatchDFTFwd_RToCCS_32f(signal, &spectra[0][0], N, FRAMES, 1, HOP, 1, BINS, ScaleFwdByN) != StatusOk) {
        fprintf(stderr, "batched transform failed\n");
        return 1;
    }
    int same = 1;
    for (int t = 0; t < FRAMES; ++t) {
        float single[BINS];
        if (kvtgDFTFwd_RToCCS_32f(signal + t * HOP, single, N, ScaleFwdByN) != StatusOk)
            return 1;
        same = same && memcmp(single, spectra[t], sizeof single) == 0;
    }
    /* bin 4 sits at [8] (real part) and [9] (imaginary part) of a row */
    printf("%d frames; bin 4 of the first frame: %.3f%+.3fi, of the last: %.3f%+.3fi\n", FRAMES, spectra[0][8],
           spectra[0][9], spectra[FRAMES - 1][8], spectra[FRAMES - 1][9]);
    printf("same bits as the single calls: %s\n", same ? "yes" : "no");
    return same ? 0 : 1;
}
