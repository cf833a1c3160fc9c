/* A real DFT of 12 samples into the CCS layout (bins 0..6 as re, im pairs:
   14 numbers) and back, scaled by 1/N on the way back. */
#include <math.h>
#include <stdio.h>

#include <kvtgen.h>

int main(void)
{
    enum { N = 12 };
    /* cos(2 pi 2n / N) + 0.25: bin 2 and a constant; one period is 6 samples */
    static const double period[6] = {1.0, 0.5, -0.5, -1.0, -0.5, 0.5};
    double x[N], spectrum[N + 2], back[N];
    for (int n = 0; n < N; ++n)
        x[n] = period[n % 6] + 0.25;
    if (kvtgDFTFwd_RToCCS_64f(x, spectrum, N, ScaleInvByN) != StatusOk ||
        kvtgDFTInv_CCSToR_64f(spectrum, back, N, ScaleInvByN) != StatusOk) {
        fprintf(stderr, "real DFT failed\n");
        return 1;
    }
    /* bin k sits at spectrum[2k] (real part) and spectrum[2k + 1] (imaginary part) */
    printf("bin 0 = %.3f, bin 2 = %.3f%+.3fi\n", spectrum[0], spectrum[4], spectrum[5]);
    double largest = 0;
    for (int n = 0; n < N; ++n)
        if (fabs(back[n] - x[n]) > largest)
            largest = fabs(back[n] - x[n]);
    printf("round trip: largest difference %.1e\n", largest);
    return largest < 1e-14 ? 0 : 1;
}
