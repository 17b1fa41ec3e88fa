# Sourced by the run and screenshot scripts: simulated lines published in a
# folder of their own, stopped when the script ends. Needs $build.
export VELMOR_PORTS_DIR
VELMOR_PORTS_DIR=$(mktemp -d)
sims=()
stop_sims() {
  for pid in "${sims[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$VELMOR_PORTS_DIR"
}
trap stop_sims EXIT

start_sim() {  # NAME MODULE... [-- EXTRA OPTION...]
  local name=$1; shift
  local args=(--name "$name")
  while [ $# -gt 0 ] && [ "$1" != "--" ]; do args+=(--module "$1"); shift; done
  [ $# -gt 0 ] && shift
  args+=("$@")
  local out ready
  exec {out}< <(exec "$build/src/sim/velmor-sim" "${args[@]}")
  sims+=("$!")
  # The simulator's first line says which pseudo-terminal it took.
  read -r ready <&"$out"
  echo "started velmor-sim: $ready"
}
