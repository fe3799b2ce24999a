# bash completion for boardsim(1)

_boardsim_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

_boardsim_files() {
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
}

# What follows "--" is another command line.
_boardsim_program() {
    local mark=$1
    if declare -F _command_offset >/dev/null; then
        _command_offset $((mark + 1))
    elif ((COMP_CWORD == mark + 1)); then
        mapfile -t COMPREPLY < <(compgen -c -- "$current")
    else
        _boardsim_files
    fi
}

_boardsim() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ ${COMP_WORDS[i]} == -- ]]; then
            _boardsim_program "$i"
            return
        fi
    done
    if ((COMP_CWORD == 1)); then
        _boardsim_words "run boards --help --version"
        return
    fi
    if [[ ${COMP_WORDS[1]} == boards ]]; then
        _boardsim_words "orca hd24 --help"
        return
    fi
    case $previous in
        --board)
            _boardsim_files
            mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -W "orca hd24" -- "$current")
            ;;
        --frame | --screenshot | --log | --trace | --font) _boardsim_files ;;
        --without)
            _boardsim_words "screen spi panel-registers layout fpga gpio log font font-directory w1 cpld mii i2c \
                rom hwmon eeprom sync network inband pattern"
            ;;
        --fault) _boardsim_words "i2c: w1: gpio: mii: mdio: mac: rom: hwmon: net: sync: temp:" ;;
        --screen) _boardsim_words "one-byte failing full full:" ;;
        --keys) _boardsim_words "left right red cw ccw wait:" ;;
        --scale | --timeout) ;;
        *)
            _boardsim_words "--keys --frame --screenshot --scale --show --log --trace --timeout --board --font \
                --no-font --without --screen --fault --help --"
            ;;
    esac
}

complete -F _boardsim boardsim
