#!/bin/sh
# Builds and runs every test: the Linux build, the sanitizer build, the Windows
# build under Wine (when MinGW-w64 and Wine are installed) and the fuzz targets
# (when clang's libFuzzer is installed). Fails on the first failing leg.
set -e
cd "$(dirname "$0")/.."
scripts/install-deps.sh
start=$(date +%s)
leg() {
  echo "=== $1 ==="
  t0=$(date +%s)
  cmake --workflow --preset "$1"
  echo "=== $1 passed in $(( $(date +%s) - t0 )) s ==="
}
leg default
leg asan
if command -v x86_64-w64-mingw32-g++-posix >/dev/null && command -v wine >/dev/null; then
  leg windows
else
  echo "=== windows skipped: MinGW-w64 or Wine not installed ==="
fi
if [ -f fuzz/CMakeLists.txt ] && command -v clang++ >/dev/null; then
  leg fuzz
fi
echo "=== all legs passed in $(( $(date +%s) - start )) s ==="
