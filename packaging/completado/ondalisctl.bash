# Completion of ondalisctl(1) for bash: options, the command, then a file's path for "fichero".
_ondalisctl() {
    local actual=${COMP_WORDS[COMP_CWORD]} anterior=${COMP_WORDS[COMP_CWORD-1]} palabra orden=
    [[ $anterior == --plazo ]] && { COMPREPLY=(); return; }
    for palabra in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $palabra in habla | fichero | espera) orden=$palabra; break ;; esac
    done
    case $orden in
        '') mapfile -t COMPREPLY < <(compgen -W 'habla fichero espera --espera --plazo --ayuda' -- "$actual") ;;
        fichero)
            type compopt &>/dev/null && compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$actual") ;;
        *) COMPREPLY=() ;;
    esac
}
complete -F _ondalisctl ondalisctl
