# Completion of ondalis(1) for fish.
complete -c ondalis -F
complete -c ondalis -o help -d 'cuenta qué opciones hay y termina'
complete -c ondalis -o clear -d 'restaura la configuración predeterminada'
complete -c ondalis -o debug -d 'se acepta y no hace nada'
complete -c ondalis -o nosapi5 -d 'ignora las voces SAPI5'
complete -c ondalis -o filetxt -r -F -d 'lee el fichero de texto sin dejar nada residente'
complete -c ondalis -o outputfile -r -F -d 'graba la voz en el fichero WAV'
