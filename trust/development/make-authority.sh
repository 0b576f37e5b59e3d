#!/usr/bin/env bash
#
# Makes the development authority: ca.der, crl.der and ca_private.key.
#
# FOR DEVELOPMENT ONLY. The private key made here is published together with
# the source code, so anybody can issue certificates in this authority's name.
# It protects nothing, and nothing that is to be protected may trust it.
#
# Runs on the bash 3.2 and the LibreSSL "openssl" of macOS too; that is why it
# uses configuration files and "openssl ca" where newer versions of OpenSSL
# have shorter ways.

set -euo pipefail
export LC_ALL=C
unset CDPATH

# Whatever holds these two files may count on their lengths, so a rebuilt
# authority has to come out at the same ones. Key, signature and serial number
# have a constant length; the texts and the list of serial numbers below fill
# what is left.
readonly CA_SIZE=1511
readonly CRL_SIZE=756

# The CRL repeats this name, therefore its length counts once in crl.der and
# twice in ca.der (issuer and subject).
readonly ORGANISATION='Sealkeeper'
readonly COMMON_NAME='Development CA that protects nothing'

# Counts in ca.der only: the text with which to correct the size of ca.der.
readonly COMMENT='Development only. This authority protects nothing: its private key is public, so anybody can issue certificates with it.'

# Serial numbers the CRL revokes. Issue a certificate with one of them to see
# how a revoked certificate is treated. Each one takes 23 bytes of crl.der.
readonly REVOKED_SERIALS='0DEAD001 0DEAD002'

# The start is fixed rather than "now", so that a machine whose clock is a
# little behind does not find an authority or a CRL of the future.
# RFC 5280, 4.1.2.5: two-digit years up to 2049, four-digit years from 2050.
readonly NOT_BEFORE='260101000000Z'
readonly NOT_AFTER='20760101000000Z'

# Only for versions of openssl which cannot be told the dates of a CRL: must
# reach beyond 2049 to be encoded in the same length as NOT_AFTER.
readonly FALLBACK_CRL_DAYS=16000

# Empty until there is something for cleanup to remove.
work_dir=''

usage() {
    cat <<'USAGE'
Usage: make-authority.sh [--force] [OUT_DIR]

Makes a development authority: ca.der (certificate), crl.der (revocation list)
and ca_private.key (private key, not encrypted). It is for development only and
protects nothing.

  OUT_DIR   where the three files go; default: the directory of this script
  --force   replace an authority which is already there. Every certificate it
            has issued becomes worthless.
  --help    show this text
USAGE
}

die() {
    printf 'make-authority.sh: %s\n' "$*" >&2
    exit 1
}

cleanup() {
    if [ -n "$work_dir" ]; then
        rm -rf -- "$work_dir"
    fi
}

# Runs openssl quietly; what it had to say is shown only if it fails.
run_openssl() {
    if ! openssl "$@" >openssl.log 2>&1; then
        cat openssl.log >&2
        die "openssl $1 failed"
    fi
}

file_size() {
    # macOS pads the number with spaces; arithmetic drops them.
    echo $(($(wc -c <"$1")))
}

write_config() {
    cat >authority.cnf <<CONFIG
[req]
prompt = no
utf8 = yes
string_mask = utf8only
default_md = sha256
distinguished_name = subject

[subject]
O = $ORGANISATION
CN = $COMMON_NAME

[ca]
default_ca = authority

[authority]
database = index.txt
serial = serial
crlnumber = crlnumber
new_certs_dir = .
default_md = sha256
policy = policy
preserve = yes
unique_subject = no
x509_extensions = ca_extensions
crl_extensions = crl_extensions

[policy]
organizationName = supplied
commonName = supplied

[ca_extensions]
basicConstraints = critical, CA:TRUE
keyUsage = critical, keyCertSign, cRLSign
subjectKeyIdentifier = hash
nsComment = "$COMMENT"

[crl_extensions]
authorityKeyIdentifier = keyid:always
CONFIG
}

make_certificate() {
    local random
    run_openssl genrsa -out ca_private.key 4096
    chmod 600 ca_private.key

    # 128 random bits, as two authorities of the same name should not share a
    # serial number. The leading 01 keeps number positive and length constant.
    random=$(openssl rand -hex 16)
    printf '01%s\n' "$random" >serial
    : >index.txt
    run_openssl req -new -config authority.cnf -key ca_private.key -out ca.csr
    run_openssl ca -batch -notext -config authority.cnf -selfsign \
        -keyfile ca_private.key -startdate "$NOT_BEFORE" -enddate "$NOT_AFTER" \
        -in ca.csr -out ca.pem
    run_openssl x509 -in ca.pem -outform DER -out ca.der
}

# "openssl ca" takes what is revoked from its database. Certificates with these
# serial numbers need not exist for that. Fields: status, expiry, revocation,
# serial, file, subject.
write_revocations() {
    local serial
    : >index.txt
    for serial in $REVOKED_SERIALS; do
        printf 'R\t%s\t%s\t%s\tunknown\t/CN=Revoked %s\n' \
            "$NOT_AFTER" "$NOT_BEFORE" "$serial" "$serial" >>index.txt
    done
}

make_crl() {
    write_revocations
    # RFC 5280, 5.2.3: the CRL number, which makes it a version 2 CRL.
    echo 01 >crlnumber

    # Only OpenSSL 3 lets us say both dates.
    case $(openssl ca -help 2>&1 || true) in
        *-crl_lastupdate*)
            run_openssl ca -gencrl -config authority.cnf -cert ca.pem \
                -keyfile ca_private.key -crl_lastupdate "$NOT_BEFORE" \
                -crl_nextupdate "$NOT_AFTER" -out crl.pem
            ;;
        *)
            run_openssl ca -gencrl -config authority.cnf -cert ca.pem \
                -keyfile ca_private.key -crldays "$FALLBACK_CRL_DAYS" \
                -out crl.pem
            ;;
    esac
    run_openssl crl -in crl.pem -outform DER -out crl.der
}

check_size() {
    local size
    size=$(file_size "$1")
    if [ "$size" -gt "$2" ]; then
        die "$1 has $size bytes instead of $2: shorten $3 by $((size - $2))"
    elif [ "$size" -lt "$2" ]; then
        die "$1 has $size bytes instead of $2: lengthen $3 by $(($2 - size))"
    fi
}

# sequence_bytes FILE N: the N-th SEQUENCE directly inside the signed part.
sequence_bytes() {
    local header offset header_length length
    header=$(openssl asn1parse -inform DER -in "$1" |
        sed -n 's/^ *\([0-9]*\):d=2 *hl= *\([0-9]*\) *l= *\([0-9]*\) *cons: *SEQUENCE.*/\1 \2 \3/p' |
        sed -n "$2p")
    read -r offset header_length length <<<"$header"
    tail -c +$((offset + 1)) "$1" >tail.der
    head -c $((header_length + length)) tail.der
}

# Verifiers find the CRL of an issuer by comparing encoded names, hence the two
# have to agree byte for byte. Signed sequences of a certificate: algorithm,
# issuer, validity, subject; of a CRL: algorithm, issuer.
check_names() {
    sequence_bytes ca.der 4 >subject.der
    sequence_bytes crl.der 2 >issuer.der
    [ -s subject.der ] || die 'found no subject in ca.der'
    cmp -s subject.der issuer.der ||
        die 'the issuer of crl.der is not the subject of ca.der'
}

check_revocations() {
    local serial text
    text=$(openssl crl -inform DER -in crl.der -noout -text)
    for serial in $REVOKED_SERIALS; do
        case $text in
            *"Serial Number: $serial"*) ;;
            *) die "crl.der does not revoke serial number $serial" ;;
        esac
    done
}

check_authority() {
    check_size ca.der "$CA_SIZE" COMMENT
    check_size crl.der "$CRL_SIZE" 'ORGANISATION, COMMON_NAME or REVOKED_SERIALS'
    check_names
    check_revocations
    run_openssl verify -CAfile ca.pem ca.pem
    # "openssl crl" may exit with 0 although the signature is wrong.
    run_openssl crl -in crl.pem -noout -CAfile ca.pem
    grep -q 'verify OK' openssl.log || die 'the signature of crl.der is wrong'
}

main() {
    local force=no out_dir='' name user_umask

    while [ $# -gt 0 ]; do
        case $1 in
            --force) force=yes ;;
            --help)
                usage
                exit 0
                ;;
            -*) die "unknown option $1 (see --help)" ;;
            *)
                [ -z "$out_dir" ] || die 'more than one OUT_DIR (see --help)'
                [ -n "$1" ] || die 'OUT_DIR is empty'
                out_dir=$1
                ;;
        esac
        shift
    done
    command -v openssl >/dev/null || die 'openssl is not installed'

    [ -n "$out_dir" ] || out_dir=$(dirname -- "${BASH_SOURCE[0]}")
    mkdir -p -- "$out_dir"
    out_dir=$(cd -- "$out_dir" && pwd)
    for name in ca.der crl.der ca_private.key; do
        [ ! -d "$out_dir/$name" ] || die "$out_dir/$name is a directory"
        if [ "$force" = no ] && { [ -e "$out_dir/$name" ] || [ -L "$out_dir/$name" ]; }; then
            die "$out_dir/$name exists already; use --force to replace the authority"
        fi
    done

    user_umask=$(umask)
    umask 077
    trap cleanup EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 143' TERM
    # Next to the destination, so that moving a file is nothing but a rename.
    work_dir=$(mktemp -d "$out_dir/.make-authority.XXXXXX")
    # From here on all paths are relative: a configuration file would trip over
    # special characters in the path of this directory.
    cd -- "$work_dir"

    write_config
    make_certificate
    make_crl
    check_authority

    # Copies made by "cat", unlike those by "cp", get the mode of a new file of
    # this user instead of the closed one they were built with.
    umask "$user_umask"
    mkdir public
    cat ca.der >public/ca.der
    cat crl.der >public/crl.der
    # Key and certificate belong together; do not stop half-way.
    trap '' HUP INT TERM
    mv -f ca_private.key public/ca.der public/crl.der "$out_dir/"
    cd -- "$out_dir"
    printf 'Development authority (protects nothing) in %s; it revokes %s.\n' \
        "$out_dir" "$REVOKED_SERIALS"
}

main "$@"
