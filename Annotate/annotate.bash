# Completes the command line of annotate, which is asked itself for what fits.

_annotate() {
    local IFS=$'\n'
    # shellcheck disable=SC2207 # one candidate a line
    COMPREPLY=($("$1" complete -- "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null))
}

complete -o default -F _annotate annotate
