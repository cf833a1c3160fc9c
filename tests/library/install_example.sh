#!/usr/bin/env bash
# Installs the built tree into a fresh prefix, then builds and runs every
# example against it, through pkg-config and through find_package.
# With the x86-64-v3 file built, it also checks that the loader picks that
# file from the installed prefix on a processor that has it, the baseline with
# the variant masked, and that a program prints the same bits under both.
# Usage: install_example.sh <build dir> <source dir> [with-x86-64-v3]
set -euo pipefail
build=$1; source=$2; variant=${3:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" > /dev/null
test -L "$work/prefix/lib/libkvtgenn8.so"
test "$(readlink "$work/prefix/lib/libkvtgenn8.so")" = libkvtgenn8.so.6.1
test -f "$work/prefix/lib/pkgconfig/kvtgen.pc"
test -f "$work/prefix/include/kvtgen.h"
bash "$source/tests/library/build_examples.sh" "$work/prefix" "$source" "$work/examples"

[ -n "$variant" ] || exit 0
test -f "$work/prefix/lib/glibc-hwcaps/x86-64-v3/libkvtgenn8.so.6.1"
test ! -e "$work/prefix/lib/glibc-hwcaps/x86-64-v3/libkvtgenn8.so"
cmake -S "$source/tests/library/loader_probe" -B "$work/probe" -DCMAKE_PREFIX_PATH="$work/prefix" > /dev/null
cmake --build "$work/probe" > /dev/null
loader=/lib64/ld-linux-x86-64.so.2
"$work/probe/loader_probe" > "$work/chosen.txt"
"$loader" --glibc-hwcaps-mask none "$work/probe/loader_probe" > "$work/masked.txt"
chosen=$(head -1 "$work/chosen.txt"); masked=$(head -1 "$work/masked.txt")
echo "as the loader chooses: $chosen"
echo "with x86-64-v3 masked: $masked"
[ "$masked" = "library file: $work/prefix/lib/libkvtgenn8.so.6.1" ]
if "$loader" --help | grep -q 'x86-64-v3 (supported'; then
  [ "$chosen" = "library file: $work/prefix/lib/glibc-hwcaps/x86-64-v3/libkvtgenn8.so.6.1" ]
else
  echo "this processor lacks x86-64-v3: the loader gives the baseline both times, the comparison of the two files is skipped"
  exit 0
fi
diff <(tail -n +2 "$work/chosen.txt") <(tail -n +2 "$work/masked.txt")
echo "both files printed the same $(($(wc -l < "$work/chosen.txt") - 1)) results"
