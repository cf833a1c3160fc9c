#!/usr/bin/env bash
# The table of forms decides each kernel's form: one edited line changes one
# kernel's unit and nothing else, and a line that cannot be built, or whose
# body would not give the bits of the kernel's flow, stops the generator with
# a message that names the kernel.
#   forms_test.sh <kvtgen> <table of forms> <folder of target descriptions>
set -uo pipefail
kvtgen=$1
table=$2
targets=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# <table> with the line of <kernel> on <target> replaced by <fields>
edited() {
    local kernel=$1 target=$2 fields=$3
    grep -q "^$kernel $target " "$table" || { echo "no line for $kernel on $target" >&2; exit 1; }
    sed "s/^$kernel $target .*/$kernel $target $fields/" "$table" >"$work/table.txt"
}
# as edited, with the line deleted
without() {
    grep -v "^$1 $2 " "$table" >"$work/table.txt"
}

# -- an edited line changes that kernel's unit only
mkdir -p "$work/before" "$work/after"
"$kvtgen" complex "$work/before" --target "$targets/x86-64-v3.target" --forms "$table" || exit 1
kernel=$(grep -m1 ' x86-64-v3 flow=pairs body=packed' "$table" | cut -d' ' -f1)
edited "$kernel" x86-64-v3 "flow=pairs body=narrow"
"$kvtgen" complex "$work/after" --target "$targets/x86-64-v3.target" --forms "$work/table.txt" || exit 1
changed=$(diff -rq "$work/before" "$work/after" | wc -l)
size=$(echo "$kernel" | sed -E 's/.*_([0-9]+)_32fc/\1/')
direction=$(echo "$kernel" | sed -E 's/kvtgDFT(Fwd|Inv).*/\1/' | tr 'A-Z' 'a-z')
if [ "$changed" != 1 ] || diff -q "$work/before/pgendft${direction}32fcw7_$size.cpp" \
        "$work/after/pgendft${direction}32fcw7_$size.cpp" >/dev/null; then
    echo "FAIL: editing the line of $kernel changed $changed units"
    failures=$((failures + 1))
fi

# -- lines that must stop the generator: family, target, kernel, fields (or "deleted")
while IFS='|' read -r family target kernel fields; do
    [ -z "$family" ] && continue
    if [ "$fields" = deleted ]; then without "$kernel" "$target"; else edited "$kernel" "$target" "$fields"; fi
    mkdir -p "$work/out"
    if message=$("$kvtgen" "$family" "$work/out" --target "$targets/$target.target" --forms "$work/table.txt" 2>&1); then
        echo "FAIL: $kernel on $target with '$fields' was built"
        failures=$((failures + 1))
    elif ! grep -q "$kernel" <<<"$message"; then
        echo "FAIL: the message for $kernel ('$fields') does not name it: $message"
        failures=$((failures + 1))
    fi
done <<'CASES'
complex|x86-64-v3|kvtgDFTFwd_CToC_12_32fc|deleted
complex|sse2|kvtgDFTFwd_CToC_12_64fc|flow=parts body=packed seeds=none moves=none
complex|x86-64-v3|kvtgDFTFwd_CToC_7_32fc|flow=split body=narrow
complex|x86-64-v3|kvtgDFTFwd_CToC_4_32fc|flow=pairs body=narrow
complex|x86-64-v3|kvtgDFTInv_CToC_16_64fc|flow=parts body=eight batch=no
complex|x86-64-v3|kvtgDFTInv_CToC_16_64fc|flow=parts body=packed seeds=sideways moves=none
complex|x86-64-v3|kvtgDFTInv_CToC_16_64fc|flow=parts body=unrolled
complex|x86-64-v3|kvtgDFTFwd_CToC_3_32fc|flow=scalar body=packed seeds=none moves=none
real|sse2|kvtgDFTFwd_RToCCS_16_64f|body=packed order=greedy conversion=2
real|x86-64-v3|kvtgDFTInv_PackToR_24_32f|body=packed order=sorted conversion=2
real|x86-64-v3|kvtgDFTInv_PackToR_24_32f|body=packed order=greedy
hartley|x86-64-v3|kvtgHartley_2_64f|body=packed order=greedy conversion=2
wht|x86-64-v3|kvtgWHT_12_32f|body=passes block=64 first=8 strip=512 last=4 traded=yes
wht|x86-64-v3|kvtgWHT_11_64f|body=passes block=16 first=16 strip=4096 last=8 traded=yes
wht|sse2|kvtgWHT_5_64f|body=scalar
CASES
exit $((failures > 0))
