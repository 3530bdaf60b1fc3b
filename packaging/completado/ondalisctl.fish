# Completion of ondalisctl(1) for fish.
set -l ordenes habla fichero espera
complete -c ondalisctl -f
complete -c ondalisctl -n "not __fish_seen_subcommand_from $ordenes" -a habla -d 'lee un texto'
complete -c ondalisctl -n "not __fish_seen_subcommand_from $ordenes" -a fichero -d 'lee un fichero de texto'
complete -c ondalisctl -n "not __fish_seen_subcommand_from $ordenes" -a espera -d 'espera al fin de la voz'
complete -c ondalisctl -n '__fish_seen_subcommand_from fichero' -F
complete -c ondalisctl -l espera -d 'espera al fin de la voz'
complete -c ondalisctl -l plazo -x -d 'segundos que se esperan como mucho'
complete -c ondalisctl -l ayuda -d 'cuenta cómo se usa y termina'
