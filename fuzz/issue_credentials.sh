#!/usr/bin/env bash
# Issues the credentials of the fuzzers and their corpora, from the development authority, into
# fuzz/credentials. Run make_corpus.py afterwards. Needed only when the authority or the credentials
# change.
set -euo pipefail
cd "$(dirname "$0")"

product=FuzzedGame
# Valid as long as the authority.
validity=(--not-before 20260101000000Z --not-after 20751231000000Z)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# issue NAME COMMON_NAME [options]: credentials/NAME.cer, and the key in $work/NAME
issue() {
    local name=$1
    ../tools/issue-credentials.sh "$2" "$work/$name" "${validity[@]}" "${@:3}" >/dev/null
    cp "$work/$name/base_public.cer" "credentials/$name.cer"
}

mkdir -p credentials
issue game "$product"
issue other_name AnotherGame
issue alt_name "$product" --alt-name games.example --alt-name "$product"
issue revoked "$product" --serial 0DEAD001
issue mod "$product" --mod "$work/game"
validity=(--not-before 20010101000000Z --not-after 20020101000000Z)
issue expired "$product"

# The key that seals the game of the fuzzers, and one of an untrusted certificate. Publishing them
# is harmless: the development authority protects nothing either.
cp "$work/game/base_private.key" credentials/game.key
openssl genrsa -out credentials/another.key 2048 2>/dev/null
openssl req -x509 -new -key credentials/another.key -subj "/CN=$product" -days 18000 \
    -outform DER -out credentials/self_signed.cer
chmod 644 credentials/*.key
