#!/usr/bin/env bash
# Issues the credentials that the test vectors are signed with: issue_keys.sh OUT_DIR. They are kept in
# docs/vectors/keys, so this runs once in a long while: new keys change every signature.
set -euo pipefail
repository=$(cd "$(dirname "$0")/../.." && pwd)
out=${1:?"usage: issue_keys.sh OUT_DIR"}

readonly product=VectorProduct
# As long as the development authority is valid.
readonly first_day=20260101000000Z
readonly second_day=20260102000000Z
readonly last_year=20750101000000Z
readonly last_day=20760101000000Z

# issue FOLDER NAME NOT_BEFORE NOT_AFTER [OPTION...]
issue() {
    "$repository/tools/issue-credentials.sh" "$2" "$out/$1" --not-before "$3" --not-after "$4" "${@:5}"
}

foreign=$(mktemp -d)
trap 'rm -rf "$foreign"' EXIT

issue game "$product" "$first_day" "$last_day"
issue game-second-key "$product" "$first_day" "$last_day"
issue game-4096-bits "$product" "$first_day" "$last_day" --bits 4096
issue expired "$product" "$first_day" "$second_day"
issue not-yet-valid "$product" "$last_year" "$last_day"
# These two serial numbers are in the development authority's list.
issue revoked "$product" "$first_day" "$last_day" --serial 0DEAD001
issue expired-and-revoked "$product" "$first_day" "$second_day" --serial 0DEAD002
issue other-product OtherProduct "$first_day" "$last_day"
issue other-alt-name "$product" "$first_day" "$last_day" --alt-name OtherProduct
issue mod VectorMod "$first_day" "$last_day" --mod "$out/game"
issue mod-named-as-the-game "$product" "$first_day" "$last_day" --mod "$out/game"
"$repository/trust/development/make-authority.sh" "$foreign/authority" > /dev/null
issue foreign "$product" "$first_day" "$last_day" --authority "$foreign/authority"
