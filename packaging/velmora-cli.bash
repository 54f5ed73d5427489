# Completion of velmora-cli for bash.

# Completes the value $1 of an option or a word: a file, a folder, one or several of the choices, or
# nothing, when it is a name of the person's own.
_velmora_cli_value() {
    case $1 in
        FILE)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -f -- "$2")
            ;;
        DIR)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$2")
            ;;
        *'|'*) mapfile -t COMPREPLY < <(compgen -W "${1//|/ }" -- "$2") ;;
        *,*)
            local before=
            [[ $2 == *,* ]] && before=${2%,*},
            mapfile -t COMPREPLY < <(compgen -P "$before" -W "${1//,/ }" -- "${2##*,}")
            ;;
    esac
}

_velmora_cli() {
    local options='@OPTIONS@'
    # A command a line: group, name, words and options; "-" is a group's only command, or no words.
    # An option that takes a value is followed by "=" and its choices or the value's name; choices
    # are separated by "|", or by "," if several may be chosen.
    local commands='@COMMANDS@'
    COMPREPLY=()

    # For bash "--by=date" is three words.
    local current=${COMP_WORDS[COMP_CWORD]} at=$((COMP_CWORD - 1))
    if [[ $current == = ]]; then
        current=
    elif [[ ${COMP_WORDS[at]} == = ]]; then
        ((--at))
    fi
    local previous=${COMP_WORDS[at]}

    # The words before this one, without options and their values
    local words=() i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        if [[ " $options $commands" == *" ${COMP_WORDS[i]}="* ]]; then
            [[ ${COMP_WORDS[i + 1]} == = ]] && ((++i))
            ((++i))
        elif [[ ${COMP_WORDS[i]} != -* ]]; then
            words+=("${COMP_WORDS[i]}")
        fi
    done
    local first=help
    if [[ ${words[0]} == help ]]; then
        words=("${words[@]:1}")
        first=
    fi

    # What the command can be, and what can follow it
    local groups=$first names= wanted=() group name values rest known=$options
    while read -r group name values rest; do
        [[ " $groups " == *" $group "* ]] || groups+=" $group"
        [[ $group == "${words[0]}" ]] || continue
        [[ $name == - ]] || names+=" $name"
        if [[ $name == - || $name == "${words[1]}" ]]; then
            known="$rest $options"
            mapfile -t wanted <<<"${values//,/$'\n'}"
            [[ $name == - ]] && words=("$group" - "${words[@]:1}")
        fi
    done <<<"$commands"

    local option
    for option in $known; do
        if [[ $option == "$previous="* ]]; then
            _velmora_cli_value "${option#*=}" "$current"
            return
        fi
    done
    if [[ $current == -* ]]; then
        local shown=
        for option in $known; do
            shown+=" ${option%%=*}"
        done
        mapfile -t COMPREPLY < <(compgen -W "$shown" -- "$current")
    elif ((${#words[@]} == 0)); then
        mapfile -t COMPREPLY < <(compgen -W "$groups" -- "$current")
    elif ((${#words[@]} == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$names" -- "$current")
    elif [[ -n $first ]]; then
        _velmora_cli_value "${wanted[${#words[@]} - 2]}" "$current"
    fi
}

complete -F _velmora_cli velmora-cli
