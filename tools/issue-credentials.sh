#!/usr/bin/env bash
#
# Issues what a game needs to sign its catalogues: a private key and the
# certificate that goes with it. Without --authority the certificate comes from
# the development authority, which protects nothing because its private key is
# published together with the source code.
#
# Must also run with the bash 3.2 and the LibreSSL "openssl" of macOS. That is
# why it uses configuration files and "openssl ca" where newer versions of
# OpenSSL have shorter ways.

set -euo pipefail
export LC_ALL=C
unset CDPATH

readonly KEY_NAME=base_private.key
readonly CERTIFICATE_NAME=base_public.cer

# Options
bits=2048
days=''
readonly DEFAULT_DAYS=3650
not_before=''
not_after=''
serial=''
mod_of=''
authority=''
force=no
alt_names=()

product_id=''
out_dir=''

# State of the clean-up: empty until there is something to remove.
work_dir=''
created_dir=''

usage() {
    cat <<'USAGE'
Usage: issue-credentials.sh PRODUCT_ID OUT_DIR [options]

Issues OUT_DIR/base_private.key (RSA, PEM, not encrypted, readable by its owner
alone) and OUT_DIR/base_public.cer (X.509 v3, DER) with PRODUCT_ID as common
name. A game's certificate may issue the certificates of its mods and revoke
them.

  --mod GAME_DIR         issue the certificate of a mod, signed with
                         GAME_DIR/base_private.key; it cannot issue others
  --authority DIR        authority to issue from: the folder of its ca.der and
                         ca_private.key; default: trust/development, which is
                         for development only and protects nothing
  --bits N               length of the RSA key, 1024 to 8192; default 2048.
                         Less than 2048 is for tests of weak keys only
  --not-before TIME      start of validity, YYYYMMDDHHMMSSZ; default: now
  --not-after TIME       end of validity, YYYYMMDDHHMMSSZ
  --days N               end of validity N days after its start; default 3650
  --serial HEX           serial number, at most 20 octets; default: random
  --alt-name DNS         add a DNS name as subject alternative name; may be
                         repeated. Verifiers which find DNS names in a
                         certificate may disregard its common name; name
                         PRODUCT_ID here too if it still has to match
  --force                replace a key and certificate which are already there
  --help                 show this text
  --                     what follows are not options

PRODUCT_ID is UTF-8 text of 1 to 64 characters without control characters.
USAGE
}

die() {
    printf 'issue-credentials.sh: %s\n' "$*" >&2
    exit 1
}

warn() {
    printf 'issue-credentials.sh: warning: %s\n' "$*" >&2
}

cleanup() {
    local status=$?
    if [ -n "$work_dir" ]; then
        rm -rf -- "$work_dir"
    fi
    # Removes a folder made for a run that failed, unless something is in it.
    if [ "$status" -ne 0 ] && [ -n "$created_dir" ]; then
        rmdir -- "$created_dir" 2>/dev/null || true
    fi
}

# quietly MESSAGE COMMAND...: shows the output of the command only if it fails.
quietly() {
    local message=$1
    shift
    if ! "$@" >command.log 2>&1 </dev/null; then
        cat command.log >&2
        die "$message"
    fi
}

#
# Arguments
#

is_number() {
    # At most six digits, so that arithmetic cannot overflow.
    [[ $1 =~ ^[1-9][0-9]{0,5}$ ]]
}

parse_arguments() {
    local positional=() options=yes

    while [ $# -gt 0 ]; do
        if [ "$options" = no ]; then
            positional+=("$1")
            shift
            continue
        fi
        case $1 in
            --bits | --days | --not-before | --not-after | --serial | --mod | \
                --authority | --alt-name)
                [ $# -ge 2 ] || die "$1 needs a value (see --help)"
                [ -n "$2" ] || die "the value of $1 is empty"
                set_option "$1" "$2"
                shift
                ;;
            --force) force=yes ;;
            --help)
                usage
                exit 0
                ;;
            --) options=no ;;
            -*) die "unknown option $1 (see --help)" ;;
            *) positional+=("$1") ;;
        esac
        shift
    done

    [ ${#positional[@]} -ge 1 ] || die 'PRODUCT_ID and OUT_DIR are missing (see --help)'
    [ ${#positional[@]} -ge 2 ] || die 'OUT_DIR is missing (see --help)'
    [ ${#positional[@]} -eq 2 ] || die "too many arguments: ${positional[2]} (see --help)"
    product_id=${positional[0]}
    out_dir=${positional[1]}
    [ -n "$out_dir" ] || die 'OUT_DIR is empty'
}

set_option() {
    case $1 in
        --bits) bits=$2 ;;
        --days) days=$2 ;;
        --not-before) not_before=$2 ;;
        --not-after) not_after=$2 ;;
        --serial) serial=$2 ;;
        --mod) mod_of=$2 ;;
        --authority) authority=$2 ;;
        --alt-name) alt_names+=("$2") ;;
    esac
}

check_product_id() {
    local length
    [ -n "$product_id" ] || die 'PRODUCT_ID is empty'
    case $product_id in
        *[[:cntrl:]]*) die 'PRODUCT_ID contains a control character' ;;
    esac
    # X.520 counts characters, not bytes: leave out UTF-8 continuation bytes.
    length=$(($(printf '%s' "$product_id" | tr -d '\200-\277' | wc -c)))
    [ "$length" -le 64 ] ||
        die "PRODUCT_ID has $length characters; a common name holds 64 at most"
}

check_alt_names() {
    local name
    for name in ${alt_names[@]+"${alt_names[@]}"}; do
        # RFC 5280, 4.2.1.6: dNSName is an IA5String in preferred name syntax.
        # "*" for wildcards and "_" are commonly accepted as well.
        case $name in
            *[!A-Za-z0-9.*_-]*) die "--alt-name: '$name' is not a DNS name" ;;
        esac
    done
}

check_bits() {
    if ! is_number "$bits" || [ "$bits" -lt 1024 ] || [ "$bits" -gt 8192 ]; then
        die "--bits: '$bits' is not a number from 1024 to 8192"
    fi
    if [ "$bits" -lt 2048 ]; then
        warn "verifiers refuse keys as short as $bits bits"
    fi
}

# Converts the serial number to the form that "openssl ca" reads: an even number
# of digits.
normalise_serial() {
    local digits=$1
    case $digits in
        0x* | 0X*) digits=${digits:2} ;;
    esac
    case $digits in
        '' | *[!0-9A-Fa-f]*) die "--serial: '$1' is not a hexadecimal number" ;;
    esac
    while [ "${digits#0}" != "$digits" ]; do
        digits=${digits#0}
    done
    [ -n "$digits" ] || die '--serial: a serial number is greater than zero'
    # RFC 5280, 4.1.2.2: at most 20 octets. If the leading bit is set, one more
    # octet is needed, because the number would be negative otherwise.
    if [ ${#digits} -gt 40 ] || [[ ${#digits} -eq 40 && $digits == [89A-Fa-f]* ]]; then
        die "--serial: '$1' takes more than 20 octets"
    fi
    if [ $((${#digits} % 2)) -eq 1 ]; then
        digits=0$digits
    fi
    printf '%s\n' "$digits"
}

random_serial() {
    local digits
    digits=$(openssl rand -hex 16) || die 'openssl has no random numbers'
    # 128 random bits; the leading 01 ensures that the number is greater than
    # zero.
    printf '01%s\n' "$digits"
}

#
# Validity
#

# Sets month_length. A variable rather than output, because add_days calls this
# very often.
set_month_length() {
    local year=$1 month=$2
    case $month in
        4 | 6 | 9 | 11) month_length=30 ;;
        2)
            month_length=28
            if [ $((year % 4)) -eq 0 ] &&
                { [ $((year % 100)) -ne 0 ] || [ $((year % 400)) -eq 0 ]; }; then
                month_length=29
            fi
            ;;
        *) month_length=31 ;;
    esac
}

# check_time OPTION TIME
check_time() {
    local year month day month_length
    [[ $2 =~ ^[0-9]{14}Z$ ]] || die "$1: '$2' does not look like YYYYMMDDHHMMSSZ"
    # 10# because 08 and 09 would be read as octal numbers.
    year=$((10#${2:0:4}))
    month=$((10#${2:4:2}))
    day=$((10#${2:6:2}))
    [ "$year" -ge 1950 ] || die "$1: the year is before 1950"
    set_month_length "$year" "$month"
    if [ "$month" -lt 1 ] || [ "$month" -gt 12 ] ||
        [ "$day" -lt 1 ] || [ "$day" -gt "$month_length" ] ||
        [ $((10#${2:8:2})) -gt 23 ] || [ $((10#${2:10:2})) -gt 59 ] ||
        [ $((10#${2:12:2})) -gt 59 ]; then
        die "$1: there is no such time as $2"
    fi
}

# add_days TIME DAYS. "date" could do it, but not with the same options on
# Linux and macOS.
add_days() {
    local year=$((10#${1:0:4})) month=$((10#${1:4:2})) day=$((10#${1:6:2}))
    local month_length
    day=$((day + $2))
    set_month_length "$year" "$month"
    while [ "$day" -gt "$month_length" ]; do
        day=$((day - month_length))
        month=$((month + 1))
        if [ "$month" -gt 12 ]; then
            month=1
            year=$((year + 1))
        fi
        set_month_length "$year" "$month"
    done
    [ "$year" -le 9999 ] || die 'the validity ends after the year 9999'
    printf '%04d%02d%02d%s\n' "$year" "$month" "$day" "${1:8}"
}

# RFC 5280, 4.1.2.5: two-digit years up to 2049, four-digit years from 2050.
# Newer versions of openssl choose the form themselves; others do not.
encoded_time() {
    if [ "${1:0:4}" -le 2049 ]; then
        printf '%s\n' "${1:2}"
    else
        printf '%s\n' "$1"
    fi
}

settle_validity() {
    [ -z "$days" ] || [ -z "$not_after" ] || die '--days and --not-after exclude each other'
    if [ -n "$not_before" ]; then
        check_time --not-before "$not_before"
    else
        not_before=$(date -u +%Y%m%d%H%M%SZ)
    fi
    if [ -n "$not_after" ]; then
        check_time --not-after "$not_after"
    else
        [ -n "$days" ] || days=$DEFAULT_DAYS
        if ! is_number "$days" || [ "$days" -gt 36500 ]; then
            die "--days: '$days' is not a number from 1 to 36500"
        fi
        not_after=$(add_days "$not_before" "$days")
    fi
    # Both have the same number of digits, so the order of the texts is the
    # order of the times.
    [[ ! $not_before > $not_after ]] ||
        die "the validity ends ($not_after) before it starts ($not_before); see --not-before"
}

#
# Issuer
#

# Sets issuer_certificate and issuer_key.
choose_issuer() {
    local file
    if [ -n "$mod_of" ]; then
        [ -z "$authority" ] || die '--mod and --authority exclude each other'
        [ -d "$mod_of" ] || die "--mod: $mod_of is not a directory"
        mod_of=$(cd -- "$mod_of" && pwd)
        issuer_certificate=$mod_of/$CERTIFICATE_NAME
        issuer_key=$mod_of/$KEY_NAME
    else
        if [ -z "$authority" ]; then
            authority=$(dirname -- "${BASH_SOURCE[0]}")/../trust/development
        fi
        [ -d "$authority" ] || die "the authority $authority is not a directory"
        authority=$(cd -- "$authority" && pwd)
        issuer_certificate=$authority/ca.der
        issuer_key=$authority/ca_private.key
    fi
    for file in "$issuer_certificate" "$issuer_key"; do
        if [ ! -f "$file" ] || [ ! -r "$file" ]; then
            die "cannot read $file, which is needed to issue certificates"
        fi
    done
}

# Converts the certificate of the issuer to issuer.pem in the working directory.
# The key is not copied, not even for a moment.
load_issuer() {
    quietly "$issuer_certificate is not a DER certificate" \
        openssl x509 -inform DER -in "$issuer_certificate" -out issuer.pem
    # The empty password keeps openssl from asking for one.
    quietly "$issuer_key is not an unencrypted private key" \
        openssl pkey -in "$issuer_key" -passin pass: -pubout -out issuer_key.pub
    openssl x509 -in issuer.pem -noout -pubkey >issuer_certificate.pub
    cmp -s issuer_key.pub issuer_certificate.pub ||
        die "$issuer_key does not belong to $issuer_certificate"

    # Verifiers refuse everything that is issued by, for example, a mod.
    openssl x509 -in issuer.pem -noout -text >issuer.txt
    grep -q '^ *CA:TRUE' issuer.txt ||
        die "$issuer_certificate may not issue certificates"
}

#
# Issuing
#

# Within quotes in a configuration file, only the quote and the backslash are
# special; "$" and "#" are not.
quoted() {
    printf '%s\n' "$1" | sed -e 's/[\\"]/\\&/g' -e 's/^/"/' -e 's/$/"/'
}

write_config() {
    local common_name name number=0

    common_name=$(quoted "$product_id")
    cat >request.cnf <<CONFIG
[req]
prompt = no
utf8 = yes
string_mask = utf8only
default_md = sha256
distinguished_name = subject

[subject]
CN = $common_name
CONFIG

    cat >issue.cnf <<'CONFIG'
[ca]
default_ca = issuer

[issuer]
database = index.txt
serial = serial
new_certs_dir = .
default_md = sha256
policy = policy
preserve = yes
unique_subject = no
copy_extensions = none
x509_extensions = extensions

[policy]
commonName = supplied

[extensions]
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid, issuer
CONFIG

    if [ -n "$mod_of" ]; then
        cat >>issue.cnf <<'CONFIG'
basicConstraints = critical, CA:FALSE
keyUsage = critical, digitalSignature
CONFIG
    else
        # A game issues the certificates and revocation lists of its mods, but
        # no further authorities.
        cat >>issue.cnf <<'CONFIG'
basicConstraints = critical, CA:TRUE, pathlen:0
keyUsage = critical, digitalSignature, keyCertSign, cRLSign
CONFIG
    fi

    if [ ${#alt_names[@]} -gt 0 ]; then
        printf 'subjectAltName = @alt_names\n\n[alt_names]\n' >>issue.cnf
        for name in "${alt_names[@]}"; do
            number=$((number + 1))
            printf 'DNS.%d = %s\n' "$number" "$name" >>issue.cnf
        done
    fi
}

issue() {
    quietly 'cannot generate a key' openssl genrsa -out "$KEY_NAME" "$bits"
    # Our umask makes the mode 600 already. This is for versions of openssl that
    # do not honour it.
    chmod 600 "$KEY_NAME"

    quietly 'openssl does not accept PRODUCT_ID as a common name; is it UTF-8?' \
        openssl req -new -config request.cnf -key "$KEY_NAME" -out request.csr

    : >index.txt
    printf '%s\n' "$serial" >serial
    quietly 'cannot issue the certificate' \
        openssl ca -batch -notext -config issue.cnf \
        -cert issuer.pem -keyfile "$issuer_key" \
        -startdate "$(encoded_time "$not_before")" \
        -enddate "$(encoded_time "$not_after")" \
        -in request.csr -out certificate.pem
    quietly 'cannot convert the certificate' \
        openssl x509 -in certificate.pem -outform DER -out certificate.der
}

# The common name decides later whether a certificate belongs to a product, so
# make sure that escaping has not changed it.
check_result() {
    local subject
    subject=$(openssl x509 -inform DER -in certificate.der -noout -subject \
        -nameopt utf8,sep_multiline,sname | sed -n 's/^ *CN=//p')
    # "sed" removed only the spaces before "CN=", so those of the name itself
    # are kept.
    [ "$subject" = "$product_id" ] ||
        die "the certificate names '$subject' instead of '$product_id'"

    openssl x509 -inform DER -in certificate.der -noout -pubkey >certificate.pub
    quietly 'the new key cannot be read' \
        openssl pkey -in "$KEY_NAME" -pubout -out key.pub
    cmp -s certificate.pub key.pub || die 'key and certificate do not belong together'
}

#
# Output
#

check_destination() {
    local name
    # --force must not destroy the key that it is about to sign with.
    if [ -n "$mod_of" ] && [ "$mod_of" -ef "$out_dir" ]; then
        die 'OUT_DIR is the folder of the game itself; a mod needs its own'
    fi
    for name in "$KEY_NAME" "$CERTIFICATE_NAME"; do
        [ ! -d "$out_dir/$name" ] || die "$out_dir/$name is a directory"
        if [ "$force" = no ] && { [ -e "$out_dir/$name" ] || [ -L "$out_dir/$name" ]; }; then
            die "$out_dir/$name exists already; use --force to replace it"
        fi
    done
}

open_destination() {
    if [ ! -d "$out_dir" ]; then
        mkdir -p -- "$out_dir" || die "cannot create $out_dir"
        created_dir=$out_dir
    fi
    out_dir=$(cd -- "$out_dir" && pwd)
    [ -z "$created_dir" ] || created_dir=$out_dir
}

install_result() {
    # A copy made by "cat", unlike one made by "cp", gets the mode of a new file
    # of this user. The key keeps mode 600.
    umask "$user_umask"
    cat certificate.der >"$CERTIFICATE_NAME"
    # Key and certificate belong together; do not stop between them.
    trap '' HUP INT TERM
    mv -f "$KEY_NAME" "$CERTIFICATE_NAME" "$out_dir/"
}

main() {
    local issuer_certificate issuer_key user_umask

    parse_arguments "$@"
    check_product_id
    check_alt_names
    check_bits
    settle_validity
    command -v openssl >/dev/null || die 'openssl is not installed'
    if [ -n "$serial" ]; then
        serial=$(normalise_serial "$serial")
    else
        serial=$(random_serial)
    fi
    choose_issuer
    check_destination

    trap cleanup EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 143' TERM
    open_destination
    user_umask=$(umask)
    umask 077
    # Inside the destination, so that moving a file is just a rename.
    work_dir=$(mktemp -d "$out_dir/.issue-credentials.XXXXXX") ||
        die "cannot write to $out_dir"
    # From here on all paths are relative, because special characters in the
    # path of this directory would break a configuration file.
    cd -- "$work_dir"

    load_issuer
    write_config
    issue
    check_result
    install_result

    cd -- "$out_dir"
    printf '%s\n' "$out_dir/$KEY_NAME" "$out_dir/$CERTIFICATE_NAME"
}

main "$@"
