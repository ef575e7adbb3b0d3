# Completion for daylark-tool. What can follow is asked of the program itself, so that this never says another thing than it.

_daylark_tool_words() { # _daylark_tool_words HEADING COMMAND...: the first words of the lines under a heading of --help
    "${COMP_WORDS[0]}" "${@:2}" --help 2>/dev/null | awk -v heading="$1" '
        $0 == heading { inside = 1; next }
        /^[^ ]/ { inside = 0 }
        inside && /^  [^ ]/ { split($1, names, ","); for (n in names) if (names[n] != "") print names[n] }'
}

_daylark_tool() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} commands=() i
    COMPREPLY=()
    # The command: one word, two where it has commands of its own.
    for ((i = 1; i < COMP_CWORD && ${#commands[@]} < 2; ++i)); do
        if _daylark_tool_words Subcommands: "${commands[@]}" | grep -xF -e "${COMP_WORDS[i]}" >/dev/null; then
            commands+=("${COMP_WORDS[i]}")
        fi
    done
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_daylark_tool_words Options: "${commands[@]}")" -- "$word")
        return
    fi
    case $before in
        --format)
            mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" notes --formats 2>/dev/null |
                awk -F'"' '$2 == "name" { print $4 }')" -- "$word")
            return
            ;;
        --to | --root) mapfile -t COMPREPLY < <(compgen -d -- "$word"); compopt -o filenames; return ;;
        --playlist | --item | --items | --width | --size | --frame | --first | --duration | --grade | --defaults) return ;;
    esac
    local next
    next=$(_daylark_tool_words Subcommands: "${commands[@]}")
    if [ -n "$next" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$next" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        compopt -o filenames 2>/dev/null
    fi
}

complete -F _daylark_tool daylark-tool
