/* Built with AVX enabled: the instruction-set check must reject it. */
#include <immintrin.h>
__m256 kvtg_probe_add(__m256 a, __m256 b) { return _mm256_add_ps(a, b); }
