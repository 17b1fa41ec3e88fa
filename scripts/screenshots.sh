#!/usr/bin/env bash
# Takes screenshots of the main window under Xvfb, in Chinese and English,
# after a search of two simulated lines (three modules), for the README and
# the manual: doc/manual/images/window-LANG.png (channel setup) and
# window-LANG-info.png (module information), window-LANG-log.png (the frame-log
# pane) and window-LANG-ports.png (the port chooser dropped down), on a
# 1280x1024 screen; window-LANG-1080.png, the first start on a 1920x1080
# screen, and window-en-scale2.png, the same at a scale factor of 2;
# window-LANG-edited.png, window-en-edited-dark.png and
# window-en-edited-info.png show edits not yet sent, in a light and a dark
# theme, in the grids and in the module information; history-LANG.png,
# File > History... comparing a read with the write after it; rack-LANG.png,
# the results of File > Rack > Check... after a gain was changed. Each
# shot runs with settings of its own, as a first start.
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
# Under build/run, beside the other things a run leaves; the simulators'
# own exit trap stays in place.
settings=$build/shot-settings
mkdir -p "$settings"
shoot() {  # SCREEN SCALE LANG FRAME OPTION NAME
  rm -rf "${settings:?}"/*
  xvfb-run -a -s "-screen 0 $1x24 -dpi 96" \
    env QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR="$2" XDG_CONFIG_HOME="$settings" \
    "$build/tools/window_shot" --lang "$3" --frame "$4" $5 --out "$images/$6.png" 2>/dev/null
  echo "$images/$6.png"
}
for lang in en zh; do
  shoot 1280x1024 1 "$lang" 1 "" "window-$lang"
  shoot 1280x1024 1 "$lang" 3 "" "window-$lang-info"
  shoot 1280x1024 1 "$lang" 1 --frame-log "window-$lang-log"
  shoot 1280x1024 1 "$lang" 1 --ports-open "window-$lang-ports"
  shoot 1920x1080 1 "$lang" 1 "" "window-$lang-1080"
  shoot 1280x1024 1 "$lang" 1 --edited "window-$lang-edited"
  shoot 1280x1024 1 "$lang" 1 --history-window "history-$lang"
  shoot 1280x1024 1 "$lang" 1 --rack-results "rack-$lang"
done
shoot 1280x1024 1 en 1 "--edited --dark" window-en-edited-dark
shoot 1280x1024 1 en 3 --edited window-en-edited-info
shoot 1920x1080 2 en 1 "" window-en-scale2
