#!/usr/bin/env bash
# Issues the credentials of the tests into the given folder, one subfolder for each kind. Existing credentials
# are kept, because making RSA keys takes time.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
repository=$(cd "$here/../.." && pwd)
issued=${1:?usage: issue_test_credentials.sh OUT_DIR}
product=TestProduct42
issue() { bash "$repository/tools/issue-credentials.sh" "$@" >/dev/null; }

# A digest of everything that affects the credentials. If it changes, all of them are issued again.
stamp=$(cat "$0" "$repository/tools/issue-credentials.sh" \
    "$repository/trust/development/ca.der" "$repository/trust/development/crl.der" | openssl sha256)
is_there() { [ -f "$issued/stamp" ] && [ "$(cat "$issued/stamp")" = "$stamp" ]; }
if is_there; then
    exit 0
fi
# Several builds share the folder, so it must appear as a whole.
mkdir -p "$(dirname "$issued")"
out=$(mktemp -d "$issued.XXXXXX")
trap 'rm -rf "$out"' EXIT

issue "$product" "$out/good"
# Another key for the same product: the certificate is trusted but fits no other key here.
issue "$product" "$out/other-key"
issue "$product" "$out/big-key" --bits 4096
issue "OtherProduct" "$out/other-name"
issue "$product" "$out/revoked" --serial 0DEAD001
issue "$product" "$out/expired" --not-before 20010101000000Z --not-after 20020101000000Z
issue "$product" "$out/expired-revoked" --serial 0DEAD002 \
    --not-before 20010101000000Z --not-after 20020101000000Z
# Issued by the game's certificate in good/.
issue "$product" "$out/mod" --mod "$out/good"
# A second product of the same developer, who uses one key for both.
mkdir "$out/same-key"
cp "$out/good/base_private.key" "$out/same-key/"
openssl req -new -key "$out/good/base_private.key" -subj /CN=OtherProduct -out "$out/same-key/request"
openssl x509 -req -in "$out/same-key/request" -set_serial 99 -days 3650 -sha256 \
    -CA "$repository/trust/development/ca.der" -CAform DER \
    -CAkey "$repository/trust/development/ca_private.key" \
    -outform DER -out "$out/same-key/base_public.cer" 2>/dev/null
rm "$out/same-key/request"
# Issued by another authority of the same name.
bash "$repository/trust/development/make-authority.sh" "$out/foreign-authority" >/dev/null
issue "$product" "$out/foreign" --authority "$out/foreign-authority"

# Unusable key and certificate files, with the certificate that the key belongs to.
mkdir "$out/encrypted-key" "$out/damaged"
openssl rsa -aes128 -passout pass:secret -in "$out/good/base_private.key" \
    -out "$out/encrypted-key/base_private.key" 2>/dev/null
cp "$out/good/base_public.cer" "$out/encrypted-key/base_public.cer"
openssl x509 -inform DER -in "$out/good/base_public.cer" -outform PEM -out "$out/damaged/pem.cer"
head -c 600 "$out/good/base_public.cer" > "$out/damaged/truncated.cer"
: > "$out/damaged/empty.cer"
: > "$out/damaged/empty.key"
printf 'not a key\n' > "$out/damaged/text.key"
head -c 300 "$out/good/base_private.key" > "$out/damaged/truncated.key"

# The good key in every form that openssl writes. Newer versions write PKCS#1 only with -traditional, an
# option that older versions lack.
mkdir "$out/key-forms"
pkcs1() {
    openssl rsa -traditional -in "$out/good/base_private.key" "$@" 2>/dev/null ||
        openssl rsa -in "$out/good/base_private.key" "$@"
}
pkcs8() { openssl pkcs8 -topk8 -in "$out/good/base_private.key" "$@"; }
pkcs1 -out "$out/key-forms/pkcs1.pem"
pkcs1 -outform DER -out "$out/key-forms/pkcs1.der"
pkcs1 -aes128 -passout pass:secret -out "$out/key-forms/encrypted-pkcs1.pem"
pkcs1 -camellia128 -passout pass:secret -out "$out/key-forms/camellia-pkcs1.pem"
pkcs8 -nocrypt -out "$out/key-forms/pkcs8.pem"
pkcs8 -nocrypt -outform DER -out "$out/key-forms/pkcs8.der"
pkcs8 -passout pass:secret -out "$out/key-forms/encrypted-pkcs8.pem"
pkcs8 -passout pass:secret -outform DER -out "$out/key-forms/encrypted-pkcs8.der"
openssl rsa -in "$out/good/base_private.key" -pubout -out "$out/key-forms/public.pem" 2>/dev/null
openssl rsa -in "$out/good/base_private.key" -pubout -outform DER -out "$out/key-forms/public.der" 2>/dev/null
openssl pkcs12 -export -inkey "$out/good/base_private.key" -in "$out/damaged/pem.cer" -passout pass:secret \
    -out "$out/key-forms/pkcs12"

# Keys of other kinds, each with a self-signed certificate.
self_signed() {
    openssl req -new -x509 -key "$out/$1/base_private.key" -subj "/CN=$product" -days 3650 -sha256 \
        -outform DER -out "$out/$1/base_public.cer"
}
mkdir "$out/weak-key" "$out/exponent-3" "$out/curve-key"
openssl genrsa -out "$out/weak-key/base_private.key" 1024 2>/dev/null
openssl genrsa -3 -out "$out/exponent-3/base_private.key" 2048 2>/dev/null
openssl ecparam -name prime256v1 -genkey -noout -out "$out/curve-key/base_private.key"
for kind in weak-key exponent-3 curve-key; do
    self_signed "$kind"
done

# Everything here is public, and tests of missing permissions read it as another user.
chmod -R a+rX "$out"
find "$out" -name '*.key' -exec chmod a+r {} +
echo "$stamp" > "$out/stamp"
if ! is_there; then
    rm -rf "$issued"
    mv "$out" "$issued"
fi
