#!/usr/bin/env bash
# Installs what is missing, builds, and runs Velmor against simulated modules
# on two virtual lines (three modules of different models). With a display it
# opens the window; without one it says so and walks through the command
# line instead: a search of both lines, then a whole read of every module
# found, each kept in its own configuration file under out/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

build=build/run
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELMOR_BUILD_TESTS=OFF >/dev/null
# Only the programs this run starts: without a display, no window.
targets=(velmor-cli velmor-sim)
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && targets+=(velmor)
cmake --build "$build" --parallel "$(nproc)" --target "${targets[@]}"

mkdir -p out
source scripts/sim_lines.sh
start_sim SIM1 1:TM-C16 4:TM-A4 -- --log out/SIM1.log
start_sim SIM2 2:TM-B8 -- --log out/SIM2.log

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "Opening the window: press Search to find the three modules (close the window to end)."
  "$build/src/ui/velmor"
  exit 0
fi
echo
echo "No display here (DISPLAY and WAYLAND_DISPLAY are unset), so no window:"
echo "the same lines through the command line instead."

cli=("$build/src/cli/velmor-cli" --lang en)
echo
echo "\$ velmor-cli ports"
"${cli[@]}" ports
echo
echo "\$ velmor-cli search --port SIM1 --port SIM2"
found=$("${cli[@]}" search --port SIM1 --port SIM2)
echo "$found"
echo
while IFS=$'\t' read -r ordinal port address model number; do
  [[ "$ordinal" =~ ^[0-9]+$ ]] || continue
  file="out/module-$port-$address.cfg"
  echo "\$ velmor-cli read --port $port --address $address --save $file"
  "${cli[@]}" read --port "$port" --address "$address" --save "$file"
  echo "saved $file ($(stat -c %s "$file") bytes) for $model number $number"
  echo
done <<< "$found"
echo "Frames of each line are logged in out/SIM1.log and out/SIM2.log."
