# Completion of ondalis(1) for bash: its options, each once.
_ondalis() {
    local opcion dada opciones=()
    for opcion in -help -clear -debug -nosapi5; do
        for dada in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
            [[ ${dada,,} == "$opcion" ]] && continue 2
        done
        opciones+=("$opcion")
    done
    mapfile -t COMPREPLY < <(compgen -W "${opciones[*]}" -- "${COMP_WORDS[COMP_CWORD]}")
}
complete -F _ondalis ondalis
