#!/bin/sh
# Builds KUtil and runs the demonstration over the sample content in examples/.
set -e
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake --preset default >/dev/null
cmake --build --preset default
if [ -x build/default/tools/kutil ]; then
  exec build/default/tools/kutil demo examples
fi
echo "kutil tool not built yet"
