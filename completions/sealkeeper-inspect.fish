# Completions of sealkeeper-inspect for fish. Files of the right kind come first.

complete -c sealkeeper-inspect -f
complete -c sealkeeper-inspect -s h -l help -d 'Show the help'
complete -c sealkeeper-inspect -n __fish_use_subcommand -l version -d 'Show the version'

complete -c sealkeeper-inspect -n __fish_use_subcommand -a check -d 'Verify a game, and say what verify leaves unsaid'
complete -c sealkeeper-inspect -n __fish_use_subcommand -a compare -d 'Say which files two catalogues list differently'
complete -c sealkeeper-inspect -n __fish_use_subcommand -a credentials -d 'Say whether a certificate and its key can sign'
complete -c sealkeeper-inspect -n __fish_use_subcommand -a rules -d 'Say what generate would hash, and what is wrong with the rules'
complete -c sealkeeper-inspect -n __fish_use_subcommand -a show -d 'Show what a catalogue or a runtime.conf holds'
complete -c sealkeeper-inspect -n __fish_use_subcommand -a trust -d 'Show the authority and the revocation list that are built in'

set -l in_rules '__fish_seen_subcommand_from rules'
complete -c sealkeeper-inspect -n $in_rules -k -a '(__fish_complete_suffix .cfg)'
complete -c sealkeeper-inspect -n $in_rules -l game -x -a '(__fish_complete_directories)' -d 'Game directory'
complete -c sealkeeper-inspect -n $in_rules -l outname -x -d 'Name of the outputs'
complete -c sealkeeper-inspect -n $in_rules -l files -d 'Name every file, sealed ones too'
complete -c sealkeeper-inspect -n $in_rules -l json -d 'Report as JSON'
complete -c sealkeeper-inspect -n $in_rules -l html -r -F -d 'Write a page that shows the game by size'

set -l in_credentials '__fish_seen_subcommand_from credentials'
complete -c sealkeeper-inspect -n $in_credentials -l cert -x -k -a '(__fish_complete_suffix .cer)' -d Certificate
complete -c sealkeeper-inspect -n $in_credentials -l key -x -k -a '(__fish_complete_suffix .key)' -d 'Private key'
complete -c sealkeeper-inspect -n $in_credentials -l product -x -d 'Product id'
complete -c sealkeeper-inspect -n $in_credentials -l crl -x -k -a '(__fish_complete_suffix .crl)' -d 'Revocation list of mod certificates'
complete -c sealkeeper-inspect -n $in_credentials -l warn-days -x -d 'Warn of what expires within so many days'
complete -c sealkeeper-inspect -n $in_credentials -l json -d 'Report as JSON'

set -l in_trust '__fish_seen_subcommand_from trust'
complete -c sealkeeper-inspect -n $in_trust -l warn-days -x -d 'Warn of what expires within so many days'
complete -c sealkeeper-inspect -n $in_trust -l json -d 'Report as JSON'

set -l in_check '__fish_seen_subcommand_from check'
complete -c sealkeeper-inspect -n $in_check -a '(__fish_complete_directories)'
complete -c sealkeeper-inspect -n $in_check -l product -x -d 'Product id'
complete -c sealkeeper-inspect -n $in_check -l format -x -a 'text json junit' -d 'Form of the report'
complete -c sealkeeper-inspect -n $in_check -l json -d 'Report as JSON'
complete -c sealkeeper-inspect -n $in_check -l strict -d 'Fail for what verify leaves unsaid'
complete -c sealkeeper-inspect -n $in_check -l verbose -d 'Show good files and all additions'
complete -c sealkeeper-inspect -n $in_check -l jobs -x -d 'Hash in so many threads, 0 for one on each processor'

set -l in_show '__fish_seen_subcommand_from show'
complete -c sealkeeper-inspect -n $in_show -k -a '(__fish_complete_suffix .bin)'
complete -c sealkeeper-inspect -n $in_show -l product -x -d 'Product id'
complete -c sealkeeper-inspect -n $in_show -l digests -d 'Show the digests of the chunks'
complete -c sealkeeper-inspect -n $in_show -l limit -x -d 'Show so many files only'
complete -c sealkeeper-inspect -n $in_show -l json -d 'Report as JSON'

set -l in_compare '__fish_seen_subcommand_from compare'
complete -c sealkeeper-inspect -n $in_compare -k -a '(__fish_complete_suffix .bin)'
complete -c sealkeeper-inspect -n $in_compare -l json -d 'Report as JSON'
