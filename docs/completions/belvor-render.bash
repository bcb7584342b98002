# Completion of belvor-render's words in bash.
_belvor_render() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}
    compopt -o filenames 2>/dev/null
    case $before in
    --view|-v) COMPREPLY=($(compgen -W 'whole plan below front back left right iso-ne iso-nw iso-se iso-sw' -- "$word") $(compgen -f -- "$word")); return ;;
    --save-view) COMPREPLY=($(compgen -f -- "$word")); return ;;
    --output|-o) COMPREPLY=($(compgen -f -- "$word")); return ;;
    --list) COMPREPLY=($(compgen -f -- "$word")); return ;;
    --type) COMPREPLY=($(compgen -W 'things dxf man' -- "$word")); return ;;
    --format) COMPREPLY=($(compgen -W 'png omb exr tif npy pfm svg' -- "$word")); return ;;
    --bounds) COMPREPLY=($(compgen -W 'surfaces all' -- "$word")); return ;;
    --surfaces) COMPREPLY=($(compgen -W 'on off embed' -- "$word")); return ;;
    --reading) COMPREPLY=($(compgen -W 'strict modern' -- "$word")); return ;;
    --colours) COMPREPLY=($(compgen -W 'layer drawing' -- "$word")); return ;;
    --report) COMPREPLY=($(compgen -f -- "$word")); return ;;
    esac
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W '--size --view --eye --look-at --zoom --scale --parallel --perspective --light --sky --ground --save-view --output --each --list --null --jobs --timeout --max-memory --fail-fast --skip-existing --type --format --rows --threads --edges --lines --bounds --line-width --line-colour --background --surfaces --info --reading --colours --report --timing --fail-empty --fail-repaired --dxf-log --quiet --version --help' -- "$word"))
    else
        COMPREPLY=($(compgen -f -- "$word"))
    fi
}
complete -F _belvor_render belvor-render
