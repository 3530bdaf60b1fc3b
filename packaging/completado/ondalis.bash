# Completion of ondalis(1) for bash: its options, each once, and files.
_ondalis() {
    local opcion dada opciones=()
    case ${COMP_WORDS[COMP_CWORD-1],,} in
        -filetxt|-outputfile)
            mapfile -t COMPREPLY < <(compgen -f -- "${COMP_WORDS[COMP_CWORD]}")
            return
            ;;
    esac
    for opcion in -help -clear -debug -nosapi5 -filetxt -outputfile; do
        for dada in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
            [[ ${dada,,} == "$opcion" ]] && continue 2
        done
        opciones+=("$opcion")
    done
    mapfile -t COMPREPLY < <(compgen -W "${opciones[*]}" -- "${COMP_WORDS[COMP_CWORD]}")
    [[ ${COMP_WORDS[COMP_CWORD]} != -* ]] && mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(
        compgen -f -- "${COMP_WORDS[COMP_CWORD]}")
}
complete -o filenames -F _ondalis ondalis
