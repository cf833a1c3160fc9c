#!/usr/bin/env bash
# Checks the instruction set of a library file.
#   check_isa.sh <binary>            (baseline) fails on anything beyond SSE2:
#       any VEX/EVEX-encoded instruction (the v-prefixed forms) or one of the
#       SSE3, SSSE3, SSE4.1, SSE4.2, FMA and later scalar-extension mnemonics.
#   check_isa.sh <binary> x86-64-v3  fails on a fused multiply-add and on
#       anything past AVX2: AVX-512 registers, masks and EVEX operand forms,
#       AVX-512-only mnemonics, and the VEX extensions that x86-64-v3 lacks.
set -euo pipefail
level=${2:-sse2}
fma='v?f(n)?m(add|sub)[a-z0-9]*'
case "$level" in
  sse2)
    beyond='^(v[a-z0-9]+|addsubp[sd]|hadd[ps][sd]|hsubp[sd]|movddup|movshdup|movsldup|lddqu|fisttp[a-z]*|psign[bwd]|pabs[bwd]|palignr|pshufb|phadd[a-z]*|phsub[a-z]*|pmaddubsw|pmulhrsw|blendv?p[sd]|pblend[a-z]*|dpp[sd]|extractps|insertps|pextr[bdq]|pinsr[bdq]|pmax[su][bwd]|pmin[su][bwd]|pmuldq|pmulld|pcmpeqq|pcmpgtq|ptest|packusdw|pmov[sz]x[a-z]*|round[ps][sd]|mpsadbw|phminposuw|movntdqa|pcmp[ei]str[im]|crc32[a-z]*|popcnt|lzcnt|tzcnt|andn|bextr|blsi|blsmsk|blsr|bzhi|pdep|pext|rorx|sarx|shlx|shrx|'"$fma"')$'
    operands='%[xy]mm(1[6-9]|2[0-9]|3[01])|%zmm|%k[0-7]'
    what="beyond SSE2" ;;
  x86-64-v3)
    beyond='^('"$fma"'|k[a-z]+[bwdq]|vpternlog[dq]|vperm[it]2[a-z]+|valign[dq]|vpcompress[a-z]+|vcompressp[sd]|vexpandp[sd]|vpexpand[a-z]+|vrcp14[a-z]+|vrsqrt14[a-z]+|vrcp28[a-z]+|vrsqrt28[a-z]+|vgetexp[a-z]+|vgetmant[a-z]+|vrange[a-z]+|vreduce[a-z]+|vfixupimm[a-z]+|vscalef[a-z]+|vfpclass[a-z]+|vpmov[a-z]*2m|vpmovm2[a-z]+|vpbroadcastm[a-z0-9]+|vcvt[a-z]*2u[a-z]+|vcvtu[a-z]+|vcvt[a-z]*qq|vcvtqq2[a-z]+|vinsert[fi](32x4|32x8|64x2|64x4)|vextract[fi](32x4|32x8|64x2|64x4)|vshuf[fi](32x4|64x2)|vbroadcast[fi](32x[248]|64x[24])|vpconflict[dq]|vplzcnt[dq]|vpopcnt[bwdq]|vpdp[a-z]+|vp4dp[a-z]+|v4f[a-z]+|vdbpsadbw|vpmadd52[a-z]+|vpshl[dv][a-z]*|vpshr[dv][a-z]*|vgf2p8[a-z]+|vaes[a-z]+|vpclmulqdq|vpmultishiftqb|vpermb|vpermw|vpsravw|vpsllvw|vpsrlvw|vpmovu?s?[qdw][bwd]|vpabsq|vpm(ax|in)[su]q|vpmullq|vprol[a-z]*|vpror[a-z]*|vpsraq|vptestn?m[bwdq]|vpcmpu?[bwdq]|vcmpp[sd].*k|vdpbf16ps|vcvtne[a-z0-9]+|tile[a-z]+|ldtilecfg|sttilecfg)$'
    operands='%zmm|%[xy]mm(1[6-9]|2[0-9]|3[01])|%k[0-7]|\{'
    what="past AVX2 or fused multiply-add" ;;
  *) echo "unknown level $level"; exit 2 ;;
esac
listing=$(objdump -d --no-show-raw-insn "$1" | awk -F'\t' 'NF >= 2 {print $2}')
hits=$( { echo "$listing" | awk '{print $1}' | grep -E "$beyond" || true;
          echo "$listing" | grep -E "$operands" | awk '{print $1 " (operands)"}' || true; } | sort | uniq -c)
if [ -n "$hits" ]; then
  echo "instructions $what in $1:"; echo "$hits"; exit 1
fi
echo "no instruction $what in $1"
