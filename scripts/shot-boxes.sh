#!/bin/sh
# Pictures of the sample message boxes of the gallery ("tavelo --demo-boxes"),
# one PNG a sample, plus the NoHide validation panel and a box rebuilt in a
# larger font. They are taken by the gallery's test under xvfb-run (a real X
# server: the pixels are grabbed from the screen as it shows them), else on
# the offscreen platform.
#
# Usage: scripts/shot-boxes.sh [build dir]
# The pictures go to $TAVELO_SHOTS (default: ./shots/boxes) as box-*.png.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build}
shots=${TAVELO_SHOTS:-$PWD/shots/boxes}
mkdir -p "$shots"
shots=$(cd "$shots" && pwd)

ninja -C "$build" ui_message_box_gallery_test
test="$build/tests/ui_message_box_gallery_test"
if command -v xvfb-run >/dev/null 2>&1; then
    TAVELO_SHOTS="$shots" QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x1024x24" "$test"
else
    TAVELO_SHOTS="$shots" QT_QPA_PLATFORM=offscreen "$test"
fi
ls "$shots"/box-*.png
