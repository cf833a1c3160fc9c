/* Built with FMA enabled: the check of the x86-64-v3 file must reject it. */
#include <immintrin.h>
__m256d kvtg_probe_fma(__m256d a, __m256d b, __m256d c) { return _mm256_fmadd_pd(a, b, c); }
