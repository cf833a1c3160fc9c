#!/usr/bin/env bash
# Prints the names that the library exports when every family is built: 1,193.
set -euo pipefail
echo kvtgenGetLibVersion
for dir in Fwd Inv; do
  for t in 32fc 64fc; do
    echo "kvtgDFT${dir}_CToC_${t}"
    for n in $(seq 2 64); do echo "kvtgDFT${dir}_CToC_${n}_${t}"; done
  done
done
for t in 32f 64f; do
  for kind in Fwd_RToCCS Fwd_RToPack Fwd_RToPerm Inv_CCSToR Inv_PackToR Inv_PermToR; do
    echo "kvtgDFT${kind}_${t}"
    for n in $(seq 2 64); do echo "kvtgDFT${kind}_${n}_${t}"; done
  done
  echo "kvtgHartley_${t}"
  for n in $(seq 2 64); do echo "kvtgHartley_${n}_${t}"; done
  echo "kvtgWHT_${t}"
  echo "kvtgWHTGetBufferSize_${t}"
  for order in $(seq 1 13); do echo "kvtgWHT_${order}_${t}"; done
  for f in GetSize Init InitAlloc Free; do echo "kvtgDCT4${f}_${t}"; done
  echo "kvtgDCT4_${t}"
done
