# Completions of sealkeeper for fish. Files of the right kind come first.

set -l takes_path '__fish_prev_arg_in verify list'

complete -c sealkeeper -f
complete -c sealkeeper -o productid -x -d 'Product id'
complete -c sealkeeper -o target_game_dir -x -a '(__fish_complete_directories)' -d 'Game directory'
complete -c sealkeeper -o inkey -x -k -a '(__fish_complete_suffix .key)' -d 'Private key'
complete -c sealkeeper -o incert -x -k -a '(__fish_complete_suffix .cer)' -d Certificate
complete -c sealkeeper -o incrl -x -k -a '(__fish_complete_suffix .crl)' -d 'Revocation list of mod certificates'
complete -c sealkeeper -o outname -x -d 'Name of the outputs'
complete -c sealkeeper -o target_file -r -F -d 'Catalogue this one file'
complete -c sealkeeper -o jobs -x -d 'Hash in so many threads, 0 for one on each processor'
complete -c sealkeeper -o gamedev -d 'Do not check the certificate'
complete -c sealkeeper -s v -d 'Show verbose messages'
complete -c sealkeeper -s '?' -d 'Show the help'
complete -c sealkeeper -l help -d 'Show the help'
complete -c sealkeeper -l version -d 'Show the version'

complete -c sealkeeper -n "not $takes_path" -a verify -d 'Verify an installed game'
complete -c sealkeeper -n "not $takes_path" -a list -d 'Show what a catalogue or a runtime.conf lists'
complete -c sealkeeper -n "not $takes_path" -k -a '(__fish_complete_suffix .cfg)'
complete -c sealkeeper -n '__fish_prev_arg_in verify' -a '(__fish_complete_directories)'
complete -c sealkeeper -n '__fish_prev_arg_in list' -k -a '(__fish_complete_suffix .bin)'
