"""Reader, writer and signer of `runtime.conf`.

The file is 1108 bytes: magic, signature area, signature length, and a record of 76 bytes. Integers are
little-endian. On disk it is scrambled by a transform without a key that mixes each byte with its
neighbour and its position; the signature is made before scrambling, so all work is done on plain bytes.
"""

from __future__ import annotations

import struct
from dataclasses import dataclass
from typing import Union

import openssl_signature
from format_error import FormatError
from openssl_signature import PathLike

MAGIC = b"QVR\0"
SUPPORTED_VERSION = 1
SIGNATURE_AREA_OFFSET = 4
SIGNATURE_AREA_SIZE = 1024
SIGNATURE_LENGTH_OFFSET = SIGNATURE_AREA_OFFSET + SIGNATURE_AREA_SIZE
NAME_SIZE = 64
_LAYOUT = struct.Struct(f"<4s{SIGNATURE_AREA_SIZE}sIII{NAME_SIZE}sI")
FILE_SIZE = _LAYOUT.size
RECORD_OFFSET = SIGNATURE_LENGTH_OFFSET + 4

ANTI_TAMPER_SOLUTIONS = (
    "None",
    "Generic",
    "Arxan",
    "Denuvo",
    "Themida",
    "StarForce",
    "VMProtect",
    "Steam DRM",
    "AppSign",
)
"""The solutions by number; the number is what the file holds."""


@dataclass(frozen=True)
class RuntimeConf:
    """Every field of `runtime.conf`, in file order."""

    magic: bytes
    signature_area: bytes
    signature_length: int
    version: int
    max_active_instances: int
    crash_reporter_name_field: bytes
    anti_tamper_solution: int

    @property
    def signature(self) -> bytes:
        """The used part of the signature area."""
        return self.signature_area[: self.signature_length]

    @property
    def crash_reporter_name(self) -> bytes:
        """The name up to its first zero byte, or the whole field: 64 bytes leave no room for a zero.

        Bytes and not text, because a name cut to the field may end within a character.
        """
        return self.crash_reporter_name_field.split(b"\0", 1)[0]


def scramble(plain: bytes) -> bytes:
    """Return `plain` scrambled; fewer than two bytes stay as they are."""
    if len(plain) < 2:
        return plain
    last = len(plain) - 1
    mixed = [(plain[i] + plain[i + 1] + 3 * i) % 256 for i in range(last)]
    return bytes(mixed + [(plain[last] + 3 * last) % 256])


def unscramble(scrambled: bytes) -> bytes:
    """Return the plain bytes; each depends on the one after it, so the work runs from the end."""
    if len(scrambled) < 2:
        return scrambled
    last = len(scrambled) - 1
    plain = bytearray(scrambled)
    plain[last] = (scrambled[last] - 3 * last) % 256
    for i in range(last - 1, -1, -1):
        plain[i] = (scrambled[i] - plain[i + 1] - 3 * i) % 256
    return bytes(plain)


def parse(file_bytes: bytes, *, strict: bool = True) -> RuntimeConf:
    """Return the fields of a (scrambled) file, or raise FormatError with what is inconsistent about it.

    With `strict` off, what no writer produces is let through: a signature larger than its area, bytes
    after the signature or after the end of the name, another version, a solution that is not in the table.
    """
    if len(file_bytes) != FILE_SIZE:
        raise FormatError(f"the file has {len(file_bytes)} bytes, not {FILE_SIZE}")
    conf = RuntimeConf(*_LAYOUT.unpack(unscramble(file_bytes)))
    if conf.magic != MAGIC:
        raise FormatError(f"the magic is {conf.magic.hex(' ')}, not {MAGIC.hex(' ')}")
    if strict:
        _check_strictly(conf)
    return conf


def build(
    max_active_instances: int = 1,
    crash_reporter_name: Union[bytes, str] = b"",
    anti_tamper_solution: int = 0,
    *,
    version: int = SUPPORTED_VERSION,
) -> bytes:
    """Return an unsigned file, scrambled; the name is cut to the 64 bytes of its field."""
    name = crash_reporter_name.encode("utf-8") if isinstance(crash_reporter_name, str) else crash_reporter_name
    # The `s` of struct cuts what is too long and fills what is too short with zero bytes.
    plain = _LAYOUT.pack(
        MAGIC, bytes(SIGNATURE_AREA_SIZE), 0, version, max_active_instances, name, anti_tamper_solution
    )
    return scramble(plain)


def signed_bytes(file_bytes: bytes) -> bytes:
    """Return the bytes that the signature covers: all of them, plain, signature and its length blank."""
    plain = _plain_with_signature_fields(file_bytes)
    blank = bytes(RECORD_OFFSET - SIGNATURE_AREA_OFFSET)
    return plain[:SIGNATURE_AREA_OFFSET] + blank + plain[RECORD_OFFSET:]


def signature(file_bytes: bytes) -> bytes:
    """Return the signature in a file; FormatError if its length exceeds the signature area."""
    plain = _plain_with_signature_fields(file_bytes)
    (length,) = struct.unpack_from("<I", plain, SIGNATURE_LENGTH_OFFSET)
    if length > SIGNATURE_AREA_SIZE:
        raise FormatError(f"the signature length is {length}, its area has {SIGNATURE_AREA_SIZE} bytes")
    return plain[SIGNATURE_AREA_OFFSET : SIGNATURE_AREA_OFFSET + length]


def with_signature(file_bytes: bytes, new_signature: bytes) -> bytes:
    """Return the file with its signature and signature length replaced, scrambled again."""
    if len(new_signature) > SIGNATURE_AREA_SIZE:
        raise ValueError(f"a signature of {len(new_signature)} bytes does not fit {SIGNATURE_AREA_SIZE}")
    plain = _plain_with_signature_fields(file_bytes)
    area = new_signature.ljust(SIGNATURE_AREA_SIZE, b"\0")
    length = struct.pack("<I", len(new_signature))
    return scramble(plain[:SIGNATURE_AREA_OFFSET] + area + length + plain[RECORD_OFFSET:])


def sign(file_bytes: bytes, private_key_path: PathLike) -> bytes:
    """Return the file signed with an RSA key; a signature that is already there is replaced."""
    return with_signature(file_bytes, openssl_signature.sign(signed_bytes(file_bytes), private_key_path))


def verify(file_bytes: bytes, certificate_der_path: PathLike) -> bool:
    """Return whether the signature of a file holds under the key of a DER certificate."""
    return openssl_signature.verify(signed_bytes(file_bytes), signature(file_bytes), certificate_der_path)


def _plain_with_signature_fields(file_bytes: bytes) -> bytes:
    """Return the plain bytes of a file of any length that holds the signature fields.

    Validation takes the length as it finds it, so a file longer or shorter than 1108 bytes is not turned
    away here; its signature simply does not hold.
    """
    if len(file_bytes) < RECORD_OFFSET:
        raise FormatError(f"the file has {len(file_bytes)} bytes, its signature fields end at {RECORD_OFFSET}")
    return unscramble(file_bytes)


def _check_strictly(conf: RuntimeConf) -> None:
    if conf.signature_length > SIGNATURE_AREA_SIZE:
        raise FormatError(
            f"the signature length is {conf.signature_length}, its area has {SIGNATURE_AREA_SIZE} bytes"
        )
    if any(conf.signature_area[conf.signature_length :]):
        raise FormatError("the signature area has bytes other than zero after the signature")
    if conf.version != SUPPORTED_VERSION:
        raise FormatError(f"the version is {conf.version}, not {SUPPORTED_VERSION}")
    if any(conf.crash_reporter_name_field[len(conf.crash_reporter_name) :]):
        raise FormatError("the crash reporter name has bytes other than zero after its end")
    if conf.anti_tamper_solution >= len(ANTI_TAMPER_SOLUTIONS):
        raise FormatError(f"there is no anti-tamper solution {conf.anti_tamper_solution}")
