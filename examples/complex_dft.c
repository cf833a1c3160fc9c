/* A 16-point complex DFT, once through the size dispatcher and once by its
   fixed-size kernel: both give the same bits. */
#include <stdio.h>
#include <string.h>

#include <kvtgen.h>

int main(void)
{
    Complex32 x[16], viaLength[16], direct[16];
    for (int n = 0; n < 16; ++n) {
        x[n].re = (float)(n % 4);  /* period 4: only bins 0, 4, 8, 12 */
        x[n].im = 0.0f;
    }
    /* forward, scaled by 1/N; any other flag than the four is refused */
    Status status = kvtgDFTFwd_CToC_32fc(x, viaLength, 16, ScaleFwdByN);
    if (status != StatusOk) {
        fprintf(stderr, "kvtgDFTFwd_CToC_32fc: status %d\n", (int)status);
        return 1;
    }
    status = kvtgDFTFwd_CToC_16_32fc(x, direct, ScaleFwdByN);
    if (status != StatusOk) {
        fprintf(stderr, "kvtgDFTFwd_CToC_16_32fc: status %d\n", (int)status);
        return 1;
    }
    printf("bin 0 = %.3f, bin 4 = %.3f%+.3fi, same bits both ways: %s\n", viaLength[0].re, viaLength[4].re,
           viaLength[4].im, memcmp(viaLength, direct, sizeof direct) == 0 ? "yes" : "no");
    return memcmp(viaLength, direct, sizeof direct) == 0 ? 0 : 1;
}
