# What scripts/demo and scripts/test share; they run in the repository's root.

# quietly LOG COMMAND...: runs the command with its output in LOG; shows the output only when the command fails.
quietly() {
  local log=$1 status=0
  shift
  mkdir -p "$(dirname "$log")"
  "$@" >"$log" 2>&1 || status=$?
  if [ "$status" != 0 ]; then
    cat "$log" >&2
    echo "error: this failed: $*" >&2
  fi
  return "$status"
}

# Options for `cmake` that make a second build fast, where the machine can.
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
