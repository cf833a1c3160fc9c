#!/usr/bin/env bash
# Makes the Debian packages with CPack, unpacks both into a fresh folder with
# dpkg-deb, checks their names and file lists, and builds and runs the
# examples against that folder, through pkg-config and through find_package.
# Usage: package_test.sh <build dir> <source dir> [with-x86-64-v3]
set -euo pipefail
build=$1; source=$2; variant=${3:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$build" && cpack -G DEB -B "$work/packages" > /dev/null)
runtime=$work/packages/libkvtgenn8-6.1_6.1-1_amd64.deb
development=$work/packages/libkvtgenn8-dev_6.1-1_amd64.deb
test -f "$runtime" && test -f "$development"
[ "$(dpkg-deb -f "$development" Depends)" = "libkvtgenn8-6.1 (= 6.1-1)" ]
files() { dpkg-deb -c "$1" | awk '$1 !~ /^d/ {print $6}' | LC_ALL=C sort | tr '\n' ' '; }
want_runtime="./usr/lib/libkvtcore.so.1 ./usr/lib/libkvtcore.so.1.0 ./usr/lib/libkvtgenbatch.so.1 \
./usr/lib/libkvtgenn8.so.6.1 "
if [ -n "$variant" ]; then
  want_runtime="./usr/lib/glibc-hwcaps/x86-64-v3/libkvtgenbatch.so.1 \
./usr/lib/glibc-hwcaps/x86-64-v3/libkvtgenn8.so.6.1 $want_runtime"
fi
want_development="./usr/include/kvtcore.h ./usr/include/kvtgen.h ./usr/include/kvtgen_batch.h \
./usr/lib/cmake/kvtgen/kvtgenConfig.cmake ./usr/lib/cmake/kvtgen/kvtgenConfigVersion.cmake \
./usr/lib/cmake/kvtgen/kvtgenTargets-release.cmake ./usr/lib/cmake/kvtgen/kvtgenTargets.cmake \
./usr/lib/libkvtcore.so ./usr/lib/libkvtgenbatch.so ./usr/lib/libkvtgenn8.so ./usr/lib/pkgconfig/kvtgen-batch.pc \
./usr/lib/pkgconfig/kvtgen.pc "
[ "$(files "$runtime")" = "$want_runtime" ] || { echo "runtime package holds: $(files "$runtime")"; exit 1; }
[ "$(files "$development")" = "$want_development" ] || { echo "development package holds: $(files "$development")"; exit 1; }
mkdir "$work/root"
dpkg-deb -x "$runtime" "$work/root"
dpkg-deb -x "$development" "$work/root"
bash "$source/tests/library/build_examples.sh" "$work/root/usr" "$source" "$work/examples"
echo "packages $(basename "$runtime") and $(basename "$development") unpacked, examples built and run"
