#!/usr/bin/env bash
# Installs the built tree into a fresh prefix, then builds and runs the
# separate example project against it through find_package.
# Usage: install_example.sh <build dir> <source dir>
set -euo pipefail
build=$1; source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" > /dev/null
test -L "$work/prefix/lib/libkvtgenn8.so"
test "$(readlink "$work/prefix/lib/libkvtgenn8.so")" = libkvtgenn8.so.6.1
test -f "$work/prefix/lib/pkgconfig/kvtgen.pc"
test -f "$work/prefix/include/kvtgen.h"
cmake -S "$source/examples" -B "$work/example" -DCMAKE_PREFIX_PATH="$work/prefix" > /dev/null
cmake --build "$work/example" > /dev/null
"$work/example/spectrum"
