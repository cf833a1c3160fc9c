#!/usr/bin/env bash
# The report writes into the folder it is given, making it (and its parents)
# where it does not exist, and refuses at once, with status 2 and before any
# timing, a folder that cannot be made.
# Usage: report_output_test.sh <kvtg_report>
set -euo pipefail
report=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

out="$work/not yet/made"
"$report" --families wht --rounds 1 "$out" > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
rows=$(grep -c '^"WHT' "$out/report.csv" || true)
# 13 orders of two sample types in at least the baseline
if [ "$rows" -lt 26 ]; then
  echo "report.csv has $rows rows of Walsh-Hadamard kernels"; cat "$work/log"; exit 1
fi
[ -s "$out/report.gp" ] || { echo "no report.gp"; exit 1; }

touch "$work/a file"
status=0
"$report" --families wht --rounds 1 "$work/a file/below" > "$work/log" 2>&1 || status=$?
if [ $status -ne 2 ] || ! grep -q "cannot make the output folder" "$work/log" || grep -q "code size" "$work/log"; then
  echo "a folder below a file: status $status"; cat "$work/log"; exit 1
fi
echo "the report made its folder and refused one below a file"
