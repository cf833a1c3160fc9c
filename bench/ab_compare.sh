#!/usr/bin/env bash
# Times two library files of one level side by side in one run of the report:
# the old file in the baseline's place and the new one in the x86-64-v3
# place of a scratch folder, which the report loads both from.  Prints per
# family the geometric mean over its kernels of old time / new time (above 1:
# the new file is faster).  The processor must run x86-64-v3 (the report
# loads the second file only there).
#   ab_compare.sh <kvtg_report> <old file> <new file> <folder of libkvtcore> [report options...]
set -euo pipefail
report=$1 old=$2 new=$3 core=$4
shift 4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/glibc-hwcaps/x86-64-v3" "$work/out"
cp "$old" "$work/libkvtgenn8.so.6.1"
cp "$new" "$work/glibc-hwcaps/x86-64-v3/libkvtgenn8.so.6.1"
cp -P "$core"/libkvtcore.so* "$work/"
LD_LIBRARY_PATH="$work" "$report" "$@" "$work/out" >"$work/report.txt"
grep -m3 -E '^(processor|library file)' "$work/report.txt" || true
# report.csv: family,build,size,kvtg_ns,peer_ns,ratio (build sse2: the old file, avx2: the new)
awk -F, 'NR > 1 {
        key = $1 "," $3
        if ($2 == "sse2") old[key] = $4; else new[key] = $4
        family[key] = $1
    }
    END {
        for (k in old) if (k in new && new[k] > 0) {
            f = family[k]; sum[f] += log(old[k] / new[k]); count[f]++
        }
        for (f in sum) printf "%-40s %4d kernels  old/new %.3f\n", f, count[f], exp(sum[f] / count[f])
    }' "$work/out/report.csv" | sort
