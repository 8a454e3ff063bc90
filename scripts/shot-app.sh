#!/bin/sh
# A picture of the main window with a File List window that has just listed
# a directory, taken by the application's own test case.
#
# Usage: scripts/shot-app.sh [build dir]
# The picture goes to $TAVELO_SHOTS (default: ./shots) as file-list-window.png.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/shot-test.sh" "${1:-$root/build}" ui_file_list_window_test startsWithTheFactoryWindowAndRefreshesWithF5
echo "${TAVELO_SHOTS:-$PWD/shots}/file-list-window.png"
