#!/bin/sh
# A picture of the popup text window at the end of a sparse file of three
# gigabytes (3 GiB of holes and some lines of text behind them), taken by the
# popup's own test case after Ctrl+End.
#
# Usage: scripts/shot-bigfile.sh [build dir]
# The picture goes to $TAVELO_SHOTS (default: ./shots) as popup-bigfile-end.png.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/shot-test.sh" "${1:-$root/build}" ui_show_data_window_test sparseFileOfGigabytesOpensAtItsEnd
echo "${TAVELO_SHOTS:-$PWD/shots}/popup-bigfile-end.png"
