#!/usr/bin/env bash
# Builds Tavelo and starts it on the default data directory (made from the
# factory settings on the first start). Extra arguments go to tavelo.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup-deps.sh"
cmake -S "$root" -B "$root/build-release" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVELO_TESTS=OFF -DTAVELO_BENCH=OFF >/dev/null
cmake --build "$root/build-release" --target tavelo
exec "$root/build-release/src/tavelo" "$@"
