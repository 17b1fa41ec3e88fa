#!/usr/bin/env bash
# Installs what is missing, builds, and runs Velmor against simulated modules:
# two virtual lines with three modules of different models, a search of both
# lines, then a whole read of every module found, each kept in its own
# configuration file under out/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

build=build/run
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELMOR_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --parallel "$(nproc)" --target velmor-cli velmor-sim

export VELMOR_PORTS_DIR
VELMOR_PORTS_DIR=$(mktemp -d)
mkdir -p out
sims=()
stop_sims() {
  for pid in "${sims[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$VELMOR_PORTS_DIR"
}
trap stop_sims EXIT

start_sim() {  # NAME MODULE...
  local name=$1; shift
  local args=(--name "$name" --log "out/$name.log")
  for module in "$@"; do args+=(--module "$module"); done
  coproc SIM { exec "$build/src/sim/velmor-sim" "${args[@]}"; }
  sims+=("$SIM_PID")
  local ready
  read -r ready <&"${SIM[0]}"
  echo "started velmor-sim: $ready (modules ${*})"
}

start_sim SIM1 1:TM-C16 4:TM-A4
start_sim SIM2 2:TM-B8

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
