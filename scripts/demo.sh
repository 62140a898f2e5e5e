#!/bin/sh
# Builds KUtil, runs the demonstration over the sample content in examples/, and renders one frame of
# the sample room with kutil-view into build/demo when there is a display or Xvfb.
set -e
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake --preset default >/dev/null
cmake --build --preset default
if [ ! -x build/default/tools/kutil ]; then
  echo "kutil tool not built yet"
  exit 0
fi
build/default/tools/kutil demo examples

view=build/default/tools/view/kutil-view
if [ ! -x "$view" ]; then
  echo "kutil-view not built (see the configure messages): no picture of the room"
  exit 0
fi
mkdir -p build/demo
# The tour goes to the viewpoint Gallery and selects the lamp; its settings stay in build/demo.
render() {
  KUTIL_REGISTRY_DIR="$PWD/build/demo/settings" "$@" "$view" examples/room --play examples/room/tour.rec \
    --frames 40 --size 1280x800 --mute --screenshot build/demo/room.png --report build/demo/room.json \
    --log build/demo/room.log
}
mkdir -p build/demo/settings
if [ -n "$DISPLAY" ]; then
  render
elif command -v xvfb-run >/dev/null 2>&1; then
  render xvfb-run -a -s "-screen 0 1280x800x24"
else
  echo "no display and no xvfb-run: no picture of the room"
  exit 0
fi
echo "kutil-view: one frame of examples/room in build/demo/room.png, its report in build/demo/room.json"
