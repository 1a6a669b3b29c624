# Completes the command line of annotate, which is asked itself for what fits.

_annotate() {
    local IFS=$'\n'
    # shellcheck disable=SC2207 # one candidate a line
    COMPREPLY=($("$1" complete -- "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null))
    if [ "$COMP_CWORD" -eq 1 ]; then # the model, or a command that needs none
        compopt -o filenames 2>/dev/null
        # shellcheck disable=SC2207
        COMPREPLY+=($(compgen -f -- "${COMP_WORDS[1]}"))
    fi
}

complete -o default -F _annotate annotate
