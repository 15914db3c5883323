# Completion for fish: plddb itself says what may stand at the cursor.
function __plddb_candidates
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    set -l option (string match -r -- '^--[^=]*=' $current)
    $words[1] complete $words[2..] "$current" 2>/dev/null
    if test $status -eq 1
        for path in (__fish_complete_path (string replace -- "$option" '' "$current"))
            echo "$option$path"
        end
    end
end
complete -c plddb -f -a '(__plddb_candidates)'
