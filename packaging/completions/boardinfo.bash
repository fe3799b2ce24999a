# bash completion for boardinfo(1)

_boardinfo() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $previous in
        --board) mapfile -t COMPREPLY < <(compgen -W "orca hd24" -- "$current") ;;
        --watch) mapfile -t COMPREPLY < <(compgen -W "0.5 1 2 5 10 60" -- "$current") ;;
        *) mapfile -t COMPREPLY < <(compgen -W "--board --json --watch --help --version" -- "$current") ;;
    esac
}

complete -F _boardinfo boardinfo
