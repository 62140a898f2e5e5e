#!/bin/sh
# Installs the Debian packages the build and every test leg need.
set -e
pkgs="cmake make g++ git pkg-config ccache googletest libgtest-dev libgmock-dev libbenchmark-dev
 libsqlite3-dev libcairo2-dev libcanberra-dev libcli11-dev libglm-dev
 libsdl2-dev libimgui-dev libepoxy-dev libstb-dev nlohmann-json3-dev xvfb xauth libgl1-mesa-dri
 clang clang-format libclang-rt-14-dev
 g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 wine wine64"
missing=""
for p in $pkgs; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "ok installed" || missing="$missing $p"
done
[ -z "$missing" ] && exit 0
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO=sudo
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends $missing
