# Completion of belvor-image's words in fish.
complete -c belvor-image -n __fish_use_subcommand -f -a 'info verify convert compare at join'
complete -c belvor-image -n '__fish_seen_subcommand_from compare' -l out -r -d 'Picture of what differs'
complete -c belvor-image -l help -d 'Print the help'
complete -c belvor-image -l version -d 'Print the version'
