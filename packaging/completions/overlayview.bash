# bash completion for overlayview(1)

_overlayview() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $previous in
        --as) mapfile -t COMPREPLY < <(compgen -W "auto rle pattern font numbers" -- "$current") ;;
        --cell) mapfile -t COMPREPLY < <(compgen -W "32x32 32x48 64x64" -- "$current") ;;
        --width | --height | --columns | --offset) ;;
        *)
            if [[ $previous != -o && $previous != --output && $current == -* ]]; then
                mapfile -t COMPREPLY < <(compgen -W "-o --output --json --as --width --height --interlaced --cell \
                    --columns --raw --offset --help --version" -- "$current")
            else
                compopt -o filenames
                mapfile -t COMPREPLY < <(compgen -f -- "$current")
            fi
            ;;
    esac
}

complete -F _overlayview overlayview
