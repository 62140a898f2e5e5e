#!/bin/sh
# Builds and runs every test: first a format check of every tracked C++ source and header against
# the committed .clang-format, then the Linux build, the sanitizer build, the Windows build under
# Wine and the fuzz targets (clang's libFuzzer). Fails on the first failing step.
#
# A leg whose tools are missing (MinGW-w64 or Wine for windows, clang for fuzz, clang-format for
# the format check) is skipped with a warning on a developer's machine. With
# KUTIL_REQUIRE_ALL_LEGS=1 in the environment, as CI (.ci/run) sets it, a missing tool fails the
# run instead, so that CI never passes without having run every leg. Without a git checkout (no
# .git) the format check takes the sources find lists, the build folder left out.
set -e
cd "$(dirname "$0")/.."
scripts/install-deps.sh
start=$(date +%s)

# missing STEP TOOLS: STEP ("windows leg") cannot run for want of TOOLS; fails the run when every
# leg is required, else warns and remembers the skip.
skipped=""
missing() {
  if [ "${KUTIL_REQUIRE_ALL_LEGS:-0}" = 1 ]; then
    echo "test-all.sh: the $1 cannot run because this machine lacks $2, and KUTIL_REQUIRE_ALL_LEGS=1 (set by CI) requires every leg." >&2
    exit 1
  fi
  echo "=== warning: $1 skipped, this machine lacks $2 ===" >&2
  skipped="${skipped:+$skipped, }$1"
}

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

if command -v clang-format >/dev/null; then check_format; else missing "format check" clang-format; fi
# Missing cross tools are found before any build starts, not after the long legs.
windows_needs=""
command -v x86_64-w64-mingw32-g++-posix >/dev/null || windows_needs="MinGW-w64 (x86_64-w64-mingw32-g++-posix)"
command -v wine >/dev/null || windows_needs="${windows_needs:+$windows_needs and }Wine"
fuzz_needs=""
if [ -f fuzz/CMakeLists.txt ] && ! command -v clang++ >/dev/null; then fuzz_needs="clang (clang++)"; fi
if [ -n "$windows_needs" ]; then missing "windows leg" "$windows_needs"; fi
if [ -n "$fuzz_needs" ]; then missing "fuzz leg" "$fuzz_needs"; fi

leg default
leg asan
if [ -z "$windows_needs" ]; then
  leg windows
fi
if [ -f fuzz/CMakeLists.txt ] && [ -z "$fuzz_needs" ]; then
  leg fuzz
fi
if [ -n "$skipped" ]; then
  echo "=== every leg run passed in $(( $(date +%s) - start )) s; warning: skipped $skipped ===" >&2
else
  echo "=== all legs passed in $(( $(date +%s) - start )) s ==="
fi
