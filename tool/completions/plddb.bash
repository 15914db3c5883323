# Completion for bash: plddb itself says what may stand at the cursor.
_plddb() {
  local words=("${COMP_WORDS[@]:1:COMP_CWORD}") answer candidate
  COMPREPLY=()
  answer=$("${1/#\~\//$HOME/}" complete "${words[@]}" 2>/dev/null)
  case $? in
    0)
      while IFS=$'\t' read -r candidate _; do
        if [ -n "$candidate" ]; then COMPREPLY+=("$(printf %q "$candidate")"); fi
      done <<<"$answer"
      ;;
    1)
      compopt -o filenames
      local current=${COMP_WORDS[COMP_CWORD]}
      mapfile -t COMPREPLY < <(compgen -f -- "${current#=}")
      ;;
  esac
}
complete -F _plddb plddb
