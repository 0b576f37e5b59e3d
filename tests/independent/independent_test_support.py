"""Shared by the tests in this directory: throw-away keys, a hand-made record, packing of codes."""

from __future__ import annotations

import subprocess
import tempfile
from pathlib import Path
from typing import List, Tuple

HELLO_RECORD = (
    bytes.fromhex("05 00 00 00 00 00 00 00")
    + bytes.fromhex("04 00 00 00")
    + bytes.fromhex("62 00 69 00 6E 00 2F 00 61 00 2E 00 64 00 61 00 74 00")
    + bytes(494)
    + bytes.fromhex("01 00 00 00")
    + bytes.fromhex("2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824")
)
"""The record of bin/a.dat holding the text hello."""


class SigningMaterial:
    """A throw-away RSA key with its self-signed certificate, and an unrelated certificate."""

    def __init__(self) -> None:
        self._directory = tempfile.TemporaryDirectory()
        self.key, self.certificate = self._create("signer")
        _, self.other_certificate = self._create("other")

    def close(self) -> None:
        """Remove the files."""
        self._directory.cleanup()

    def _create(self, name: str) -> Tuple[Path, Path]:
        key = Path(self._directory.name, f"{name}.key")
        certificate = Path(self._directory.name, f"{name}.cer")
        arguments = ["-newkey", "rsa:2048", "-nodes", "-keyout", str(key), "-subj", f"/CN={name}", "-days", "2"]
        subprocess.run(
            ["openssl", "req", "-x509", "-outform", "DER", "-out", str(certificate)] + arguments,
            check=True,
            capture_output=True,
        )
        return key, certificate


def twelve_bit_codes(block: bytes) -> List[int]:
    """Read the codes of a block by treating its body as one large number."""
    body = block[3:]
    number = int.from_bytes(body, "little")
    return [(number >> (12 * index)) & 0xFFF for index in range(len(body) * 8 // 12)]


def block_of_codes(codes: List[int], width: int = 12, flags: int = 0x80) -> bytes:
    """Pack codes of any width by adding them up to one large number."""
    number = sum(code << (width * index) for index, code in enumerate(codes))
    return bytes([0x1F, 0x9D, flags | width]) + number.to_bytes((width * len(codes) + 7) // 8, "little")


def flipped(data: bytes, offset: int) -> bytes:
    """Return `data` with the lowest bit of one byte flipped."""
    return data[:offset] + bytes([data[offset] ^ 1]) + data[offset + 1 :]
