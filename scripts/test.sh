#!/usr/bin/env bash
# Installs what is missing, then builds and runs the whole test suite twice:
# a normal build and one with AddressSanitizer and UndefinedBehaviorSanitizer.
# The tests run four at a time: most of them wait on lines, not on the CPU.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

jobs=$(nproc)
run_suite() {
  local dir=$1; shift
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  cmake --build "$dir" --parallel "$jobs"
  ctest --test-dir "$dir" --output-on-failure --timeout 300 --parallel 4
}

# Line tables only (-g1): enough for a failure's stack, and a quarter less to compile.
echo "== normal build"
run_suite build/normal -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O2 -g1 -DNDEBUG"
echo "== sanitizer build (ASan + UBSan)"
run_suite build/sanitize -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-g1" -DVELMOR_SANITIZE=ON
