#!/usr/bin/env bash
# Takes screenshots of the main window under Xvfb, in Chinese and English,
# after a search of two simulated lines (three modules), for the README and
# the manual: doc/manual/images/window-LANG.png (channel setup) and
# window-LANG-info.png (module information).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
for p in xvfb xauth; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    sudo=""; [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends xvfb xauth >/dev/null
    break
  fi
done

build=build/run
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELMOR_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --parallel "$(nproc)" --target velmor-sim window_shot

export VELMOR_PORTS_DIR
VELMOR_PORTS_DIR=$(mktemp -d)
sims=()
stop_sims() {
  for pid in "${sims[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$VELMOR_PORTS_DIR"
}
trap stop_sims EXIT
start_sim() {  # NAME MODULE...
  local name=$1; shift
  local args=(--name "$name" --fast)
  for module in "$@"; do args+=(--module "$module"); done
  coproc SIM { exec "$build/src/sim/velmor-sim" "${args[@]}"; }
  sims+=("$SIM_PID")
  local ready
  read -r ready <&"${SIM[0]}"
}
start_sim SIM1 1:TM-C16 4:TM-A4
start_sim SIM2 2:TM-B8

images=doc/manual/images
mkdir -p "$images"
for lang in en zh; do
  for shot in "1:window-$lang" "3:window-$lang-info"; do
    xvfb-run -a -s "-screen 0 1280x1024x24 -dpi 96" \
      env QT_QPA_PLATFORM=xcb "$build/tools/window_shot" --lang "$lang" --frame "${shot%%:*}" \
      --out "$images/${shot#*:}.png" 2>/dev/null
    echo "$images/${shot#*:}.png"
  done
done
