#!/usr/bin/env bash
# Checks the dynamic symbol table of a library against the export list:
# nothing outside the list may be exported, and a family that exports one of
# its names must export all of them.  With --complete, all 1,193 must be there.
# Usage: check_exports.sh <library> [--complete]
set -euo pipefail
here=$(dirname "$0")
library=$1
expected=$(mktemp); actual=$(mktemp)
trap 'rm -f "$expected" "$actual"' EXIT
bash "$here/expected_exports.sh" | sort > "$expected"
nm -D --defined-only "$library" | awk '$2 ~ /^[TtWwVvDdBbRrIi]$/ {print $3}' | sed 's/@.*//' | sort -u > "$actual"
status=0
extra=$(comm -13 "$expected" "$actual")
if [ -n "$extra" ]; then
  echo "exported but not in the interface:"; echo "$extra" | head -20; status=1
fi
# families by name prefix; a family present in part is an error
for prefix in kvtgenGetLibVersion kvtgDFTFwd_CToC kvtgDFTInv_CToC kvtgDFTFwd_RTo kvtgDFTInv_CCSToR kvtgDFTInv_PackToR kvtgDFTInv_PermToR kvtgHartley kvtgWHT kvtgDCT4; do
  want=$(grep -c "^$prefix" "$expected" || true)
  have=$(grep -c "^$prefix" "$actual" || true)
  if [ "$have" -ne 0 ] && [ "$have" -ne "$want" ]; then
    echo "family $prefix: $have of $want names exported"; comm -23 <(grep "^$prefix" "$expected") <(grep "^$prefix" "$actual") | head -5; status=1
  fi
done
total=$(wc -l < "$actual")
echo "$total functions exported"
if [ "${2:-}" = "--complete" ] && [ "$total" -ne 1193 ]; then
  echo "expected 1193"; status=1
fi
exit $status
