#!/usr/bin/env bash
# Builds everything with warnings as errors and runs every test: the engine,
# the command line and the desktop program (offscreen). Then the engine's
# tests once more under AddressSanitizer and UndefinedBehaviorSanitizer, and
# the tests of the list maker and of find (which read files on several
# threads) under ThreadSanitizer.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup-deps.sh"
jobs=$(nproc)

echo "== build and test"
cmake -S "$root" -B "$root/build-test" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTAVELO_WERROR=ON >/dev/null
cmake --build "$root/build-test" -j "$jobs"
QT_QPA_PLATFORM=offscreen ctest --test-dir "$root/build-test" --output-on-failure -j "$jobs"

echo "== engine tests with AddressSanitizer and UndefinedBehaviorSanitizer"
cmake -S "$root" -B "$root/build-asan" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTAVELO_WERROR=ON \
  -DTAVELO_SANITIZE=ON -DTAVELO_ENGINE_ONLY=ON -DTAVELO_BENCH=OFF >/dev/null
cmake --build "$root/build-asan" -j "$jobs"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir "$root/build-asan" --output-on-failure -j "$jobs" -L engine

echo "== list and find tests with ThreadSanitizer"
cmake -S "$root" -B "$root/build-tsan" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVELO_WERROR=ON \
  -DTAVELO_TSAN=ON -DTAVELO_ENGINE_ONLY=ON -DTAVELO_BENCH=OFF >/dev/null
cmake --build "$root/build-tsan" -j "$jobs" --target test_filelist test_find
TSAN_OPTIONS=halt_on_error=1 "$root/build-tsan/tests/test_filelist" --gtest_brief=1
TSAN_OPTIONS=halt_on_error=1 "$root/build-tsan/tests/test_find" --gtest_brief=1
