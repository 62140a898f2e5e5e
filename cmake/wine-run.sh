#!/bin/sh
# Runs a Windows executable under Wine in a private, headless prefix kept
# under the build tree, with Wine's own diagnostics silenced.
exe_dir=$(cd "$(dirname "$1")" && pwd)
build_root=$exe_dir
while [ "$build_root" != / ] && [ ! -f "$build_root/CMakeCache.txt" ]; do build_root=$(dirname "$build_root"); done
[ "$build_root" = / ] && build_root=$exe_dir
export WINEPREFIX="${KUTIL_WINEPREFIX:-$build_root/wineprefix}"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY WAYLAND_DISPLAY
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  mkdir -p "$WINEPREFIX"
  # one-time prefix creation; later runs share it
  wineboot -i >/dev/null 2>&1
  wineserver -w
fi
exec wine "$@"
