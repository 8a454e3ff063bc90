#!/bin/sh
# A picture of the popup text window at the end of a sparse file of three
# gigabytes (3 GiB of holes and some lines of text behind them), taken by the
# popup's own test case after Ctrl+End. It runs under xvfb-run when that is
# installed (a real X server, so the window is painted as on a desktop), else
# on the offscreen platform.
#
# Usage: scripts/shot-bigfile.sh [build dir]
# The picture goes to $TAVELO_SHOTS (default: ./shots) as popup-bigfile-end.png.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build}
shots=${TAVELO_SHOTS:-$PWD/shots}
mkdir -p "$shots"
shots=$(cd "$shots" && pwd)

ninja -C "$build" ui_show_data_window_test
test="$build/tests/ui_show_data_window_test"
case_name=sparseFileOfGigabytesOpensAtItsEnd
if command -v xvfb-run >/dev/null 2>&1; then
    TAVELO_SHOTS="$shots" QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x1024x24" "$test" "$case_name"
else
    TAVELO_SHOTS="$shots" QT_QPA_PLATFORM=offscreen "$test" "$case_name"
fi
echo "$shots/popup-bigfile-end.png"
