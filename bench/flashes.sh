#!/bin/bash
# Flashes in fireworks, wipes and mashing, in the checked build, which has the scripted clock.
set -euo pipefail
cd "$(dirname "$0")/.."
[ -f build/windows-checked/build.ninja ] || cmake --preset windows-checked >build/windows-checked.log
cmake --build --preset windows-checked --target flashes >build/flashes.log || { cat build/flashes.log; exit 1; }
tests/support/under-wine build/windows-checked/tests/flashes.exe "$@"
