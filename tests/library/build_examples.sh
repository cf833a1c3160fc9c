#!/usr/bin/env bash
# Builds every program of examples/ against an installed prefix in the two
# ways the README gives, each with nothing named but the library's own
# package: a compiler line with `pkg-config --cflags --libs kvtgen` (kvtgen-batch
# for the batch_* programs), and the CMake project of examples/, which links
# kvtgen::kvtgenn8 (kvtgen::batch) alone.  Runs each
# build of each program; the two builds of a program must print the same.
# Usage: build_examples.sh <installed prefix> <source dir> <work dir>
set -euo pipefail
prefix=$1; source=$2; work=$3
libdir=$prefix/lib
mkdir -p "$work/pkg-config"
cmake -S "$source/examples" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" > /dev/null
cmake --build "$work/cmake" > /dev/null
for file in "$source"/examples/*.c; do
  example=$(basename "$file" .c)
  package=kvtgen
  case $example in batch_*) package=kvtgen-batch ;; esac
  # the installed .pc file alone, not one of the system's
  flags=$(PKG_CONFIG_LIBDIR="$libdir/pkgconfig" pkg-config --cflags --libs $package)
  # shellcheck disable=SC2086 # the flags are words
  "${CC:-cc}" -o "$work/pkg-config/$example" "$file" $flags
  # (pkg-config names no run path: the loader finds the prefix through LD_LIBRARY_PATH)
  LD_LIBRARY_PATH="$libdir" "$work/pkg-config/$example" > "$work/$example.pkg-config.txt"
  "$work/cmake/$example" > "$work/$example.cmake.txt"
  diff "$work/$example.pkg-config.txt" "$work/$example.cmake.txt"
  echo "$example (pkg-config and CMake): $(head -1 "$work/$example.cmake.txt")"
done
