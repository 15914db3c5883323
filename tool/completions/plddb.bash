# Completion for bash: plddb itself says what may stand at the cursor.

# Reads a line as the shell does: its words into `words`, and the quote that is still open at its end into `quote`.
_plddb_read() {
  local line=$1 i c
  words=('') quote=
  for ((i = 0; i < ${#line}; ++i)); do
    c=${line:i:1}
    case $quote$c in
      [\'\"]) quote=$c ;;
      \'\' | \"\") quote= ;;
      \\ | \"\\) words[-1]+=${line: ++i:1} ;;
      ' ' | $'\t') [ -z "${words[-1]}" ] || words+=('') ;;
      *) words[-1]+=$c ;;
    esac
  done
}

_plddb() {
  local words quote answer candidate
  _plddb_read "${COMP_LINE:0:COMP_POINT}"
  local line=("${words[@]:1}") word=${words[-1]}
  _plddb_read "$quote$2"  # what bash replaces: the end of the word, behind the last '=' or ':'
  local end=${words[-1]}
  local before=$((${#word} - ${#end}))
  COMPREPLY=()
  answer=$("${1/#\~\//$HOME/}" complete "${line[@]}" 2>/dev/null)
  case $? in
    0)
      while IFS=$'\t' read -r candidate _; do
        candidate=${candidate:before}
        if [ -z "$quote" ]; then
          COMPREPLY+=(${candidate:+"$(printf %q "$candidate")"})
        elif [[ $candidate != *[\'\"\\\$\`]* ]]; then  # others need more than the quote that is there
          COMPREPLY+=(${candidate:+"$candidate"})
        fi
      done <<<"$answer"
      ;;
    1)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$end")
      ;;
  esac
}
complete -F _plddb plddb
