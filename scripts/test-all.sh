#!/bin/sh
# Builds and runs every test: first a format check of every tracked C++ source and header against
# the committed .clang-format, then the Linux build, the sanitizer build, the Windows build under
# Wine (when MinGW-w64 and Wine are installed) and the fuzz targets (when clang's libFuzzer is
# installed). Fails on the first failing step. Without a git checkout (no .git) the format check
# takes the sources find lists, the build folder left out.
set -e
cd "$(dirname "$0")/.."
scripts/install-deps.sh
start=$(date +%s)

# The C++ sources and headers: those git tracks, or without a checkout every one below here.
sources() {
  if [ -e .git ] && command -v git >/dev/null; then
    git ls-files -z '*.cpp' '*.h'
  else
    echo "=== format: no git checkout here, checking the sources find lists ===" >&2
    find . \( -path ./build -o -path ./.git \) -prune -o -type f \( -name '*.cpp' -o -name '*.h' \) -print0
  fi
}

check_format() {
  echo "=== format ==="
  if report=$(sources | xargs -0 -r clang-format --dry-run -Werror 2>&1); then
    echo "=== format passed ==="
    return
  fi
  bad=$(printf '%s\n' "$report" | sed -n 's/^\(.*\):[0-9]*:[0-9]*: error: code should be clang-formatted.*/\1/p' | sort -u)
  if [ -n "$bad" ]; then
    echo "test-all.sh: these files do not follow .clang-format (clang-format -i fixes them):" >&2
    printf '%s\n' "$bad" | sed 's/^/  /' >&2
  else
    printf '%s\n' "$report" >&2
  fi
  exit 1
}

leg() {
  echo "=== $1 ==="
  t0=$(date +%s)
  cmake --workflow --preset "$1"
  echo "=== $1 passed in $(( $(date +%s) - t0 )) s ==="
}

if command -v clang-format >/dev/null; then
  check_format
else
  echo "=== format skipped: clang-format not installed ==="
fi
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
