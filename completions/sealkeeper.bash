# Completions of sealkeeper and sealkeeper-inspect for bash 3.2 (macOS) and later.

# Adds the directories that complete $1, and the files that complete it and match one of the
# following patterns.
_sealkeeper_add_paths() {
    local typed=$1 pattern found
    shift
    case $typed in
        \'* | \"*) typed=${typed:1} ;;
        *) typed=${typed//\\/} ;;
    esac
    while IFS= read -r found; do
        COMPREPLY+=("$found")
    done < <(
        compgen -d -- "$typed"
        for pattern in "$@"; do
            compgen -f -X "!$pattern" -- "$typed"
        done
    )
}

# Adds those of the words after $1 that complete it.
_sealkeeper_add_words() {
    local typed=$1 word
    shift
    for word in "$@"; do
        if [[ $word == "$typed"* ]]; then
            COMPREPLY+=("$word")
        fi
    done
}

# Sets `current` to the word to complete, and `option` to the one before it. bash treats an equals
# sign between option and value as a word of its own.
_sealkeeper_look_at_words() {
    COMPREPLY=()
    current=${COMP_WORDS[COMP_CWORD]}
    option=${COMP_WORDS[COMP_CWORD - 1]}
    if [[ $current == "=" ]]; then
        current=""
    elif [[ $option == "=" ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi
}

_sealkeeper() {
    local current option
    _sealkeeper_look_at_words
    case $option in
        -inkey) _sealkeeper_add_paths "$current" "*.key" "*.pem" "*.der" ;;
        -incert) _sealkeeper_add_paths "$current" "*.cer" "*.crt" "*.der" ;;
        -incrl) _sealkeeper_add_paths "$current" "*.crl" "*.der" ;;
        -target_file) _sealkeeper_add_paths "$current" "*" ;;
        -target_game_dir | verify) _sealkeeper_add_paths "$current" ;;
        list) _sealkeeper_add_paths "$current" "*.bin" "*.conf" ;;
        -productid | -outname | -jobs) ;;
        *)
            _sealkeeper_add_words "$current" -productid -target_game_dir -inkey -incert -incrl -outname \
                -target_file -jobs -gamedev -v verify list "-?" --help --version
            if [[ $current != -* ]]; then
                _sealkeeper_add_paths "$current" "*.cfg"
            fi
            ;;
    esac
}

# Adds the options and operands of the sealkeeper-inspect command $1.
_sealkeeper_inspect_add_arguments() {
    case $1 in
        rules)
            _sealkeeper_add_words "$current" --game --outname --files --json --html --help
            _sealkeeper_inspect_add_operands "*.cfg"
            ;;
        credentials)
            _sealkeeper_add_words "$current" --cert --key --product --crl --warn-days --json --help
            ;;
        trust)
            _sealkeeper_add_words "$current" --warn-days --json --help
            ;;
        check)
            _sealkeeper_add_words "$current" --product --format --json --strict --verbose --jobs --help
            _sealkeeper_inspect_add_operands
            ;;
        show)
            _sealkeeper_add_words "$current" --product --digests --limit --json --help
            _sealkeeper_inspect_add_operands "*.bin" "*.conf"
            ;;
        compare)
            _sealkeeper_add_words "$current" --json --help
            _sealkeeper_inspect_add_operands "*.bin"
            ;;
    esac
}

_sealkeeper_inspect_add_operands() {
    if [[ $current != -* ]]; then
        _sealkeeper_add_paths "$current" "$@"
    fi
}

_sealkeeper_inspect() {
    local current option
    _sealkeeper_look_at_words
    if ((COMP_CWORD == 1)); then
        _sealkeeper_add_words "$current" check compare credentials rules show trust --help --version
        return
    fi
    case $option in
        --cert) _sealkeeper_add_paths "$current" "*.cer" "*.crt" "*.der" ;;
        --key) _sealkeeper_add_paths "$current" "*.key" "*.pem" "*.der" ;;
        --crl) _sealkeeper_add_paths "$current" "*.crl" "*.der" ;;
        --game) _sealkeeper_add_paths "$current" ;;
        --html) _sealkeeper_add_paths "$current" "*.html" ;;
        --format) _sealkeeper_add_words "$current" text json junit ;;
        --product | --outname | --warn-days | --limit | --jobs) ;;
        *) _sealkeeper_inspect_add_arguments "${COMP_WORDS[1]}" ;;
    esac
}

complete -o filenames -F _sealkeeper sealkeeper
complete -o filenames -F _sealkeeper_inspect sealkeeper-inspect
