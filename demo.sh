#!/usr/bin/env bash
# Shows the sealkeeper's main job: ./demo.sh [game_dir]
#
# Installs what is missing, builds the program, issues credentials from the development authority,
# generates the signed files of a game (of game_dir, or of a small sample game that it lays out), lists
# them and verifies the game against them. In the sample game it then changes one byte, shows how
# verifying fails, and puts the byte back. In game_dir it writes Quorvane/Certificates and changes
# nothing else; where signed files are there already, it asks before it replaces them.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
if [ "${1:-}" = --help ] || [ "${1:-}" = -h ]; then
    echo "usage: ./demo.sh [game_dir]"
    exit 0
fi
if [ $# -gt 1 ]; then
    echo "usage: ./demo.sh [game_dir]" >&2
    exit 1
fi
if [ $# -eq 1 ] && [ ! -d "$1" ]; then
    echo "demo.sh: not a directory: '$1'" >&2
    exit 1
fi
# They may be a release's, and cannot be made again without its key.
ask_before_replacing() {
    local certificates=$1/Quorvane/Certificates there=() name answer=""
    for name in base.bin base.cer runtime.conf; do
        if [ -e "$certificates/$name" ] || [ -L "$certificates/$name" ]; then
            there+=("$name")
        fi
    done
    if [ ${#there[@]} -eq 0 ]; then
        return
    fi
    echo "$certificates holds signed files: ${there[*]}. The demonstration's would replace them."
    # At the end of the input, nobody is there to say yes.
    read -r -p "Replace them? [y/N] " answer || true
    if [ "$answer" != y ] && [ "$answer" != Y ]; then
        echo "demo.sh: nothing was changed" >&2
        exit 1
    fi
}

if [ $# -eq 1 ]; then
    ask_before_replacing "$1"
fi
product=harbortale-demo
credentials=$here/build/demo-credentials
program=$here/build/demo/sealkeeper

build() {
    "$here/tools/install-packages.sh"
    mkdir -p "$here/build"
    local log=$here/build/demo-build.log
    if ! { "$here/tools/configure.sh" demo && cmake --build "$here/build/demo"; } \
        > "$log" 2>&1; then
        cat "$log"
        exit 1
    fi
}

issue_credentials() {
    # Made anew when the authority is: the old ones would not be trusted.
    if [ ! "$credentials/base_public.cer" -nt "$here/trust/development/ca.der" ] ||
        [ ! -f "$credentials/base_private.key" ]; then
        "$here/tools/issue-credentials.sh" "$product" "$credentials" --force > /dev/null
    fi
}

# A file of so many bytes, of no meaning.
make_file() {
    mkdir -p "$(dirname "$2")"
    head -c "$1" /dev/urandom > "$2"
}

lay_out_sample_game() {
    local game=$1
    make_file 300000 "$game/HarborTale"
    make_file 250000 "$game/HarborTale.exe"
    make_file 120000 "$game/lib/libphysics.so"
    make_file 90000 "$game/lib/libaudio.dylib"
    # Two whole chunks of 4 MiB and a short one.
    make_file 10000000 "$game/Content/Paks/world.pak"
    make_file 40000 "$game/Content/Music/main theme.ogg"
    make_file 30000 "$game/Content/Textures/Wölfe im Schnee.png"
    make_file 2000 "$game/Content/Texts/日本語.txt"
    : > "$game/Content/Texts/empty.txt"
    # What the rules skip: by extension, as hidden, and as not included.
    make_file 1000 "$game/Content/build.log"
    make_file 5000 "$game/lib/libphysics.pdb"
    make_file 100 "$game/Content/.cache"
    make_file 700 "$game/Saved/slot1.sav"
}

build
issue_credentials
if [ $# -eq 1 ]; then
    game=$(cd "$1" && pwd)
    config=$here/examples/exclude-list.cfg
else
    game=$(mktemp -d "${TMPDIR:-/tmp}/sealkeeper-demo.XXXXXX")
    lay_out_sample_game "$game"
    config=$here/examples/include-list.cfg
fi

show() {
    echo
    echo "== $1"
    echo
}

verify() {
    local status=0
    "$program" -productid "$product" verify "$game" || status=$?
    echo
    echo "(exit status $status)"
    if [ "$status" -ne "$1" ]; then
        echo "demo.sh: verify was expected to end with $1" >&2
        exit 1
    fi
}

# Flips the lowest bit of the byte at an offset of a file; done twice, nothing is changed.
flip_bit() {
    local byte
    byte=$(od -An -tu1 -j "$2" -N 1 "$1")
    # shellcheck disable=SC2059 # the format is the byte
    printf "\\$(printf %03o $((byte ^ 1)))" | dd of="$1" bs=1 seek="$2" conv=notrunc 2> /dev/null
}

show "Generate"
"$program" -productid "$product" -inkey "$credentials/base_private.key" \
    -incert "$credentials/base_public.cer" -target_game_dir "$game" "$config"

output=$game/Quorvane/Certificates
show "The signed files are in $output"
ls -l "$output"

show "List the catalogue"
"$program" list "$output/base.bin"

show "List runtime.conf"
"$program" list "$output/runtime.conf"

show "Verify the game"
verify 0

if [ $# -eq 0 ]; then
    changed=$game/Content/Paks/world.pak
    # In the second of its three chunks.
    offset=5000000
    show "Verify again, with one byte of world.pak changed"
    flip_bit "$changed" "$offset"
    verify 26
    flip_bit "$changed" "$offset"
    show "Verify once more, with the byte put back"
    verify 0
fi
cat <<NEXT

Next:
  - Run the same on a game of yours:   ./demo.sh /path/to/game
  - Change the rules:                  $config
  - See everything the program says:   $program --help
NEXT
if [ $# -eq 0 ]; then
    echo "  - Remove the sample game:            rm -r $game"
fi
