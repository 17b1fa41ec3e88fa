#!/usr/bin/env bash
# Installs what is missing, then builds and runs the whole test suite twice:
# a normal build and one with AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

jobs=$(nproc)
run_suite() {
  local dir=$1; shift
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  cmake --build "$dir" --parallel "$jobs"
  ctest --test-dir "$dir" --output-on-failure --timeout 300
}

echo "== normal build"
run_suite build/normal -DCMAKE_BUILD_TYPE=RelWithDebInfo
echo "== sanitizer build (ASan + UBSan)"
run_suite build/sanitize -DCMAKE_BUILD_TYPE=Debug -DVELMOR_SANITIZE=ON
