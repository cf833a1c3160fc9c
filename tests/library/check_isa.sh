#!/usr/bin/env bash
# Fails if the disassembly of a binary holds an instruction beyond SSE2:
# any VEX/EVEX-encoded instruction (the v-prefixed forms) or one of the
# SSE3, SSSE3, SSE4.1, SSE4.2 and FMA mnemonics.
# Usage: check_isa.sh <binary>
set -euo pipefail
beyond='^(v[a-z0-9]+|addsubp[sd]|hadd[ps][sd]|hsubp[sd]|movddup|movshdup|movsldup|lddqu|fisttp[a-z]*|psign[bwd]|pabs[bwd]|palignr|pshufb|phadd[a-z]*|phsub[a-z]*|pmaddubsw|pmulhrsw|blendv?p[sd]|pblend[a-z]*|dpp[sd]|extractps|insertps|pextr[bdq]|pinsr[bdq]|pmax[su][bwd]|pmin[su][bwd]|pmuldq|pmulld|pcmpeqq|pcmpgtq|ptest|packusdw|pmov[sz]x[a-z]*|round[ps][sd]|mpsadbw|phminposuw|movntdqa|pcmp[ei]str[im]|crc32[a-z]*|popcnt|lzcnt|tzcnt|andn|bextr|blsi|blsmsk|blsr|bzhi|pdep|pext|rorx|sarx|shlx|shrx|fmadd[a-z0-9]*|fmsub[a-z0-9]*|fnmadd[a-z0-9]*|fnmsub[a-z0-9]*)$'
hits=$(objdump -d --no-show-raw-insn "$1" | awk -F'\t' 'NF >= 2 {split($2, w, " "); print w[1]}' | grep -E "$beyond" | sort | uniq -c || true)
if [ -n "$hits" ]; then
  echo "instructions beyond SSE2 in $1:"; echo "$hits"; exit 1
fi
echo "only SSE2 and earlier instructions in $1"
