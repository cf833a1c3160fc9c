/* Built with AVX-512 enabled: the check of the x86-64-v3 file must reject it. */
#include <immintrin.h>
__m512 kvtg_probe_add512(__m512 a, __m512 b) { return _mm512_add_ps(a, b); }
