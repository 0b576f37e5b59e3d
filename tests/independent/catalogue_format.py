"""Reader, writer and signer of the hash catalogue (`base.bin`, `<outname>.bin`).

A catalogue is a header of 1052 bytes, the revocation-list block exactly as given, and the compressed
entry block. Integers are little-endian. This module is what the tool's own reader and writer are
checked against, so it shares nothing with them and is stricter than any reader needs to be.
"""

from __future__ import annotations

import struct
from dataclasses import dataclass
from typing import Any, Dict, Iterable, Tuple

import fixed_width_lzw
import openssl_signature
from catalogue_entry import Entry, check_writer_rules, parse_records
from format_error import FormatError
from openssl_signature import PathLike

MAGIC = b"QVR\0"
FORMAT_VERSION = 4
WHOLE_FILE_LAYOUT = 1
SIGNATURE_AREA_OFFSET = 8
SIGNATURE_AREA_SIZE = 1024
SIGNATURE_LENGTH_OFFSET = SIGNATURE_AREA_OFFSET + SIGNATURE_AREA_SIZE
OLDER_LAYOUT_SIGNED_FROM = SIGNATURE_LENGTH_OFFSET + 4
_HEADER = struct.Struct(f"<4sHH{SIGNATURE_AREA_SIZE}sIIIII")
HEADER_SIZE = _HEADER.size


@dataclass(frozen=True)
class Catalogue:
    """Every field of a catalogue file, in file order, and the entries read from its entry block."""

    magic: bytes
    format_version: int
    signature_layout: int
    signature_area: bytes
    signature_length: int
    crl_length: int
    compressed_length: int
    raw_length: int
    entry_count: int
    crl: bytes
    compressed_block: bytes
    raw_block: bytes
    entries: Tuple[Entry, ...]

    @property
    def signature(self) -> bytes:
        """The used part of the signature area."""
        return self.signature_area[: self.signature_length]


def parse(image: bytes, *, strict: bool = True) -> Catalogue:
    """Return the catalogue in `image`, or raise FormatError with what is inconsistent about it.

    With `strict` off, only what stops a reader counts: what no writer produces is let through (a
    signature larger than its area or followed by other bytes, a wrong `raw_length` or name position,
    bytes after the last record, a digest count that does not go with the file size, a compressed block
    other than the one rule of compression gives). The signature itself is not checked here, see `verify`.
    """
    header = _parse_header(image)
    crl_end = HEADER_SIZE + header["crl_length"]
    compressed_block = image[crl_end:]
    raw_block = fixed_width_lzw.decompress(compressed_block)
    catalogue = Catalogue(
        **header,
        crl=image[HEADER_SIZE:crl_end],
        compressed_block=compressed_block,
        raw_block=raw_block,
        entries=parse_records(raw_block, header["entry_count"]),
    )
    if strict:
        _check_strictly(catalogue)
    return catalogue


def build(
    entries: Iterable[Entry],
    crl: bytes = b"",
    *,
    format_version: int = FORMAT_VERSION,
    signature_layout: int = WHOLE_FILE_LAYOUT,
) -> bytes:
    """Return an unsigned catalogue of `entries` in the order given."""
    records = [entry.record() for entry in entries]
    return build_from_raw_block(
        b"".join(records), len(records), crl, format_version=format_version, signature_layout=signature_layout
    )


def build_from_raw_block(
    raw_block: bytes,
    entry_count: int,
    crl: bytes = b"",
    *,
    format_version: int = FORMAT_VERSION,
    signature_layout: int = WHOLE_FILE_LAYOUT,
) -> bytes:
    """Return an unsigned catalogue with any raw entry block, sound or not, and any entry count."""
    compressed_block = fixed_width_lzw.compress(raw_block)
    return build_from_compressed_block(
        compressed_block,
        len(raw_block),
        entry_count,
        crl,
        format_version=format_version,
        signature_layout=signature_layout,
    )


def build_from_compressed_block(
    compressed_block: bytes,
    raw_length: int,
    entry_count: int,
    crl: bytes = b"",
    *,
    format_version: int = FORMAT_VERSION,
    signature_layout: int = WHOLE_FILE_LAYOUT,
) -> bytes:
    """Return an unsigned catalogue with any compressed block, sound or not, and any claimed lengths."""
    header = _HEADER.pack(
        MAGIC,
        format_version,
        signature_layout,
        bytes(SIGNATURE_AREA_SIZE),
        0,
        len(crl),
        len(compressed_block),
        raw_length,
        entry_count,
    )
    return header + crl + compressed_block


def signed_bytes(image: bytes) -> bytes:
    """Return the bytes that the signature of `image` covers.

    In the current layout that is the whole file with the signature and its length blanked out. In any
    older layout it is everything after those two, as it stands: magic and version are not covered.
    """
    _require_header(image)
    (signature_layout,) = struct.unpack_from("<H", image, 6)
    if signature_layout != WHOLE_FILE_LAYOUT:
        return image[OLDER_LAYOUT_SIGNED_FROM:]
    blank = bytes(OLDER_LAYOUT_SIGNED_FROM - SIGNATURE_AREA_OFFSET)
    return image[:SIGNATURE_AREA_OFFSET] + blank + image[OLDER_LAYOUT_SIGNED_FROM:]


def signature(image: bytes) -> bytes:
    """Return the signature in `image`; FormatError if its length exceeds the signature area."""
    _require_header(image)
    (length,) = struct.unpack_from("<I", image, SIGNATURE_LENGTH_OFFSET)
    if length > SIGNATURE_AREA_SIZE:
        raise FormatError(f"the signature length is {length}, its area has {SIGNATURE_AREA_SIZE} bytes")
    return image[SIGNATURE_AREA_OFFSET : SIGNATURE_AREA_OFFSET + length]


def with_signature(image: bytes, new_signature: bytes) -> bytes:
    """Return `image` with its signature and signature length replaced."""
    _require_header(image)
    if len(new_signature) > SIGNATURE_AREA_SIZE:
        raise ValueError(f"a signature of {len(new_signature)} bytes does not fit {SIGNATURE_AREA_SIZE}")
    area = new_signature.ljust(SIGNATURE_AREA_SIZE, b"\0")
    length = struct.pack("<I", len(new_signature))
    return image[:SIGNATURE_AREA_OFFSET] + area + length + image[OLDER_LAYOUT_SIGNED_FROM:]


def sign(image: bytes, private_key_path: PathLike) -> bytes:
    """Return `image` signed with an RSA key; a signature that is already there is replaced."""
    return with_signature(image, openssl_signature.sign(signed_bytes(image), private_key_path))


def verify(image: bytes, certificate_der_path: PathLike) -> bool:
    """Return whether the signature of `image` holds under the key of a DER certificate."""
    return openssl_signature.verify(signed_bytes(image), signature(image), certificate_der_path)


def _parse_header(image: bytes) -> Dict[str, Any]:
    _require_header(image)
    names = (
        "magic",
        "format_version",
        "signature_layout",
        "signature_area",
        "signature_length",
        "crl_length",
        "compressed_length",
        "raw_length",
        "entry_count",
    )
    header = dict(zip(names, _HEADER.unpack_from(image)))
    if header["magic"] != MAGIC:
        raise FormatError(f"the magic is {header['magic'].hex(' ')}, not {MAGIC.hex(' ')}")
    if header["format_version"] != FORMAT_VERSION:
        raise FormatError(f"the format version is {header['format_version']}, not {FORMAT_VERSION}")
    claimed = header["crl_length"] + header["compressed_length"]
    present = len(image) - HEADER_SIZE
    if claimed != present:
        raise FormatError(f"the header claims {claimed} bytes after it, the file has {present}")
    return header


def _require_header(image: bytes) -> None:
    if len(image) < HEADER_SIZE:
        raise FormatError(f"the file has {len(image)} bytes, the header alone has {HEADER_SIZE}")


def _check_strictly(catalogue: Catalogue) -> None:
    if catalogue.signature_length > SIGNATURE_AREA_SIZE:
        raise FormatError(
            f"the signature length is {catalogue.signature_length}, its area has {SIGNATURE_AREA_SIZE} bytes"
        )
    if any(catalogue.signature_area[catalogue.signature_length :]):
        raise FormatError("the signature area has bytes other than zero after the signature")
    if catalogue.raw_length != len(catalogue.raw_block):
        raise FormatError(
            f"the header claims {catalogue.raw_length} raw bytes, the entry block has {len(catalogue.raw_block)}"
        )
    left_over = len(catalogue.raw_block) - sum(len(entry.record()) for entry in catalogue.entries)
    if left_over != 0:
        raise FormatError(f"{left_over} bytes are left over after the {catalogue.entry_count} entry records")
    if fixed_width_lzw.compress(catalogue.raw_block) != catalogue.compressed_block:
        raise FormatError("the entry block is not compressed by the one rule of the format")
    for index, entry in enumerate(catalogue.entries):
        check_writer_rules(entry, index)
