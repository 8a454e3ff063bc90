#!/bin/sh
# Runs one case of a Qt test with TAVELO_SHOTS set, so that the case saves
# its pictures: under xvfb-run when that is installed (a real X server, the
# windows painted as on a desktop), else on the offscreen platform.
#
# Usage: scripts/shot-test.sh BUILD_DIR TEST_TARGET CASE
# The pictures go to $TAVELO_SHOTS (default: ./shots).
set -eu
build=$1
target=$2
case_name=$3
shots=${TAVELO_SHOTS:-$PWD/shots}
mkdir -p "$shots"
shots=$(cd "$shots" && pwd)

ninja -C "$build" "$target"
test="$build/tests/$target"
if command -v xvfb-run >/dev/null 2>&1; then
    TAVELO_SHOTS="$shots" QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x1024x24" "$test" "$case_name"
else
    TAVELO_SHOTS="$shots" QT_QPA_PLATFORM=offscreen "$test" "$case_name"
fi
