# What the scripts share; they run in the repository's root.

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

# visibly LOG COMMAND...: the same, but on a terminal the output is shown as it comes.
visibly() {
  if [ -t 1 ]; then "${@:2}"; else quietly "$@"; fi
}

# Processor time of all that this shell has waited for, in seconds.
processor_seconds() {  # not by "times": in the subshell of a substitution it knows of no children
  sed 's/.*) //' "/proc/$$/stat" | awk -v ticks="$(getconf CLK_TCK)" '{ printf "%d", ($14 + $15) / ticks }'
}

# The folders of the product; each uses only those before it.
layers=()
for folder in foundation package device family database descriptions chain find check bsdl programming_files python tool web; do
  if [ -d "$folder" ]; then layers+=("$folder"); fi
done

# Options for `cmake` that make a second build fast, where the machine can.
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS-pch_defines,time_macros}  # or it does not keep what uses precompiled headers
