#!/usr/bin/env bash
# Installs what Tavelo needs to build, run and test on Debian, when missing.
set -euo pipefail
packages=(cmake ninja-build g++ qt6-base-dev qt6-base-dev-tools libgl-dev libgtest-dev libgmock-dev libsqlite3-dev)
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${missing[@]}" >/dev/null
fi
