#!/usr/bin/env bash
# The long monkey test of the main window: installs what is missing, builds
# the test in the sanitizer build (AddressSanitizer and
# UndefinedBehaviorSanitizer, build/sanitize, as scripts/test.sh makes it) and
# runs it with 10,000 random operator events, printing its figures: events,
# seconds, exchanges and how they ended, faults met, messages, the slowest
# event. Exits non-zero when a check fails or a sanitizer reports.
#
#   VELMOR_MONKEY_EVENTS  number of events (default 10000)
#   VELMOR_MONKEY_SEED    seed of the random events (default: the test's own)
#   VELMOR_JOBS           parallel build jobs (default: the number of cores)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

dir=build/sanitize
jobs=${VELMOR_JOBS:-$(nproc)}

echo "== build ($dir, ASan + UBSan)"
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVELMOR_SANITIZE=ON >/dev/null
cmake --build "$dir" --parallel "$jobs" --target ui_monkey_test

echo "== monkey test, ${VELMOR_MONKEY_EVENTS:-10000} events"
# As CTest runs the window's tests: no display, leaks reported, settings in a
# folder of the test's own (the test makes one).
export VELMOR_MONKEY_EVENTS=${VELMOR_MONKEY_EVENTS:-10000}
export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=detect_leaks=1
export UBSAN_OPTIONS=print_stacktrace=1
"$dir"/tests/ui/ui_monkey_test
