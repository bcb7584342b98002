# Completion of belvor-image's words in bash.
_belvor_image() {
    local word=${COMP_WORDS[COMP_CWORD]}
    compopt -o filenames 2>/dev/null
    if [ "$COMP_CWORD" -eq 1 ]; then
        COMPREPLY=($(compgen -W 'info verify convert compare at join --help --version' -- "$word"))
    elif [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W '--out --help' -- "$word"))
    else
        COMPREPLY=($(compgen -f -- "$word"))
    fi
}
complete -F _belvor_image belvor-image
