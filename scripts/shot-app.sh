#!/bin/sh
# A picture of the main window with a File List window that has just listed
# a directory, taken by the application's own test case. It runs under
# xvfb-run when that is installed (a real X server), else offscreen.
#
# Usage: scripts/shot-app.sh [build dir]
# The picture goes to $TAVELO_SHOTS (default: ./shots) as file-list-window.png.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build}
shots=${TAVELO_SHOTS:-$PWD/shots}
mkdir -p "$shots"
shots=$(cd "$shots" && pwd)

ninja -C "$build" ui_file_list_window_test
test="$build/tests/ui_file_list_window_test"
case_name=startsWithTheFactoryWindowAndRefreshesWithF5
if command -v xvfb-run >/dev/null 2>&1; then
    TAVELO_SHOTS="$shots" QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x1024x24" "$test" "$case_name"
else
    TAVELO_SHOTS="$shots" QT_QPA_PLATFORM=offscreen "$test" "$case_name"
fi
echo "$shots/file-list-window.png"
