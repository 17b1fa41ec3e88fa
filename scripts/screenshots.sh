#!/usr/bin/env bash
# Takes screenshots of the main window under Xvfb, in Chinese and English,
# after a search of two simulated lines (three modules), for the README and
# the manual: doc/manual/images/window-LANG.png (channel setup) and
# window-LANG-info.png (module information), window-LANG-log.png (the frame-log
# pane) and window-LANG-ports.png (the port chooser dropped down).
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

source scripts/sim_lines.sh
start_sim SIM1 1:TM-C16 4:TM-A4 -- --fast --log /dev/null
start_sim SIM2 2:TM-B8 -- --fast --log /dev/null

images=doc/manual/images
mkdir -p "$images"
for lang in en zh; do
  for shot in "1::window-$lang" "3::window-$lang-info" "1:--frame-log:window-$lang-log" \
              "1:--ports-open:window-$lang-ports"; do
    IFS=: read -r frame option name <<<"$shot"
    xvfb-run -a -s "-screen 0 1280x1024x24 -dpi 96" \
      env QT_QPA_PLATFORM=xcb "$build/tools/window_shot" --lang "$lang" --frame "$frame" $option \
      --out "$images/$name.png" 2>/dev/null
    echo "$images/$name.png"
  done
done
