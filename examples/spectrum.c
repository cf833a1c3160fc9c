/* Uses the installed library from plain C: a 16-point complex DFT of a cosine. */
#include <math.h>
#include <stdio.h>

#include <kvtgen.h>

int main(void)
{
    Complex32 x[16], y[16];
    for (int n = 0; n < 16; ++n) {
        x[n].re = (float)cos(2 * 3.14159265358979 * 3 * n / 16);
        x[n].im = 0;
    }
    const Status status = kvtgDFTFwd_CToC_32fc(x, y, 16, ScaleFwdByN);
    if (status != StatusOk) {
        printf("transform failed: %d\n", (int)status);
        return 1;
    }
    /* a cosine of frequency 3 puts one half into bins 3 and 13 */
    printf("%s: bin 3 = %.6f, bin 13 = %.6f\n", kvtgenGetLibVersion()->libraryName, y[3].re, y[13].re);
    return fabsf(y[3].re - 0.5f) < 1e-6f && fabsf(y[13].re - 0.5f) < 1e-6f ? 0 : 1;
}
