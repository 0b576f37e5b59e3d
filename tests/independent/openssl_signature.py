"""RSA signatures over SHA-256, made and checked by the `openssl` command.

Both signed file formats use RSASSA-PKCS1-v1_5 with SHA-256. That padding has no random part, so the
same key and the same bytes always give the same signature, and a file signed here can be compared byte
for byte with one signed by the tool.
"""

from __future__ import annotations

import subprocess
import tempfile
from pathlib import Path
from typing import List, Union

PathLike = Union[str, Path]


class OpensslError(RuntimeError):
    """The `openssl` command could not do its work (unreadable key, malformed certificate, ...)."""


def sign(data: bytes, private_key_path: PathLike) -> bytes:
    """Return the signature of `data`; it is as many bytes long as the key's modulus."""
    # The empty password makes an encrypted key fail at once; without it the command would ask the terminal.
    return _run_openssl(
        ["dgst", "-sha256", "-sign", str(private_key_path), "-passin", "pass:"], data
    )


def verify(data: bytes, signature: bytes, certificate_der_path: PathLike) -> bool:
    """Return whether `signature` is that of `data` under the public key of a DER certificate.

    Raises OpensslError when the certificate cannot be read: a test that expects a bad signature must not
    pass because of a mistyped path.
    """
    public_key = _run_openssl(_x509_arguments(certificate_der_path) + ["-pubkey"])
    # `dgst -verify` reads only as many signature bytes as the modulus has and ignores the rest, and calls
    # an empty signature an unreadable file. Both lengths are plainly wrong.
    if len(signature) != modulus_size(certificate_der_path):
        return False
    with tempfile.TemporaryDirectory() as directory:
        public_key_path = Path(directory, "public_key.pem")
        signature_path = Path(directory, "signature.bin")
        public_key_path.write_bytes(public_key)
        signature_path.write_bytes(signature)
        return _dgst_verify(data, public_key_path, signature_path)


def modulus_size(certificate_der_path: PathLike) -> int:
    """Return the size in bytes of the RSA modulus in a DER certificate."""
    line = _run_openssl(_x509_arguments(certificate_der_path) + ["-modulus"]).decode("ascii").strip()
    name, _, digits = line.partition("=")
    try:
        modulus = int(digits, 16)
    except ValueError:
        modulus = 0
    if name != "Modulus" or modulus == 0:
        raise OpensslError(f"the certificate '{certificate_der_path}' holds no RSA key: {line!r}")
    return (modulus.bit_length() + 7) // 8


def _x509_arguments(certificate_der_path: PathLike) -> List[str]:
    return ["x509", "-inform", "DER", "-in", str(certificate_der_path), "-noout"]


def _dgst_verify(data: bytes, public_key_path: Path, signature_path: Path) -> bool:
    arguments = ["dgst", "-sha256", "-verify", str(public_key_path), "-signature", str(signature_path)]
    finished = subprocess.run(["openssl"] + arguments, input=data, capture_output=True, check=False)
    answer = finished.stdout.decode("ascii", "replace").strip()
    # A mismatch and a failure of the command share one exit status; only the printed words tell them apart.
    if finished.returncode == 0 and answer == "Verified OK":
        return True
    if answer.lower() == "verification failure":
        return False
    raise OpensslError(_failure_text(arguments, finished))


def _run_openssl(arguments: List[str], data: bytes = b"") -> bytes:
    finished = subprocess.run(["openssl"] + arguments, input=data, capture_output=True, check=False)
    if finished.returncode != 0:
        raise OpensslError(_failure_text(arguments, finished))
    return finished.stdout


def _failure_text(arguments: List[str], finished: "subprocess.CompletedProcess[bytes]") -> str:
    errors = finished.stderr.decode("utf-8", "replace").strip()
    return f"openssl {' '.join(arguments)} ended with status {finished.returncode}: {errors}"
