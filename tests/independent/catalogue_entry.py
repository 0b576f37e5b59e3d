"""One entry of a hash catalogue: its record, its path field, and how a game file becomes one.

A record is the file size (8 bytes), the name position (4), the path field (512) and the digest count (4), then one
SHA-256 digest of 32 bytes for each 4 MiB chunk of the file. Integers are little-endian.
"""

from __future__ import annotations

import hashlib
import struct
from dataclasses import dataclass, replace
from pathlib import Path
from typing import Iterable, List, Mapping, Optional, Tuple, Union

from format_error import FormatError

CHUNK_SIZE = 4 * 1024 * 1024
DIGEST_SIZE = 32
PATH_UNITS = 256
UNIT_SIZE = 2
PATH_FIELD_SIZE = PATH_UNITS * UNIT_SIZE
_FIXED_PART = struct.Struct(f"<QI{PATH_FIELD_SIZE}sI")
RECORD_FIXED_SIZE = _FIXED_PART.size
_SLASH_UNIT = "/".encode("utf-16-le")
_ZERO_UNIT = bytes(UNIT_SIZE)


@dataclass(frozen=True)
class Entry:
    """What a catalogue says about one file."""

    size: int
    name_position: int
    path_field: bytes
    digests: Tuple[bytes, ...]

    @property
    def path(self) -> str:
        """The path as a reader of UTF-16 sees it: the field up to its first zero unit.

        Of a path put in by an alias this is usually the first letter only, see `aliased_path`.
        """
        units = units_of(self.path_field)
        length = units.index(_ZERO_UNIT) if _ZERO_UNIT in units else len(units)
        return b"".join(units[:length]).decode("utf-16-le", "surrogatepass")

    @property
    def aliased_path(self) -> Optional[str]:
        """The path if an alias changed it, otherwise None.

        Such a path takes four bytes per character instead of UTF-16. It is recognised by a zero unit inside the text. A
        path of one character, or only of characters above U+FFFF, is not recognised.
        """
        text = self.path_field.rstrip(b"\0")
        if _ZERO_UNIT not in units_of(text):
            return None
        try:
            path = self.path_field.decode("utf-32-le").rstrip("\0")
        except UnicodeDecodeError:
            return None
        return None if "\0" in path else path

    def record(self) -> bytes:
        """Return the entry as stored in the entry block before compression."""
        fixed = _FIXED_PART.pack(self.size, self.name_position, self.path_field, len(self.digests))
        return fixed + b"".join(self.digests)


def parse_records(block: bytes, count: int) -> Tuple[Entry, ...]:
    """Return the first `count` entries in `block`; raise FormatError if they are not all there."""
    entries: List[Entry] = []
    position = 0
    for index in range(count):
        entry = _parse_record(block, position, index)
        entries.append(entry)
        position += len(entry.record())
    return tuple(entries)


def check_writer_rules(entry: Entry, index: int) -> None:
    """Raise FormatError if a reader would accept the entry but no writer makes one like it."""
    where = f"entry {index}"
    expected_digests = chunk_count(entry.size)
    if len(entry.digests) != expected_digests:
        raise FormatError(
            f"{where} has {len(entry.digests)} digests; a file of {entry.size} bytes has {expected_digests}"
        )
    expected_position = name_position_of(entry.path_field)
    if entry.name_position != expected_position:
        raise FormatError(f"{where} has name position {entry.name_position}, its path says {expected_position}")
    if entry.aliased_path is None:
        _check_plain_path_field(entry.path_field, where)


def chunk_count(size: int) -> int:
    """Return how many chunks a file of `size` bytes has; the last one may be short."""
    return (size + CHUNK_SIZE - 1) // CHUNK_SIZE


def chunk_digests(content: bytes) -> Tuple[bytes, ...]:
    """Return the SHA-256 digests of the chunks of `content`."""
    starts = range(0, len(content), CHUNK_SIZE)
    return tuple(hashlib.sha256(content[start : start + CHUNK_SIZE]).digest() for start in starts)


def units_of(field: bytes) -> List[bytes]:
    """Return the 16-bit units of `field`; an odd last byte is a unit of its own."""
    return [field[start : start + UNIT_SIZE] for start in range(0, len(field), UNIT_SIZE)]


def name_position_of(path_field: bytes) -> int:
    """Return the index of the unit after the last "/" of the whole field, 0 if there is none."""
    units = units_of(path_field)
    slashes = [index for index, unit in enumerate(units) if unit == _SLASH_UNIT]
    return slashes[-1] + 1 if slashes else 0


def stored_path(collected_path: str) -> str:
    """Return a collected path as the catalogue stores it.

    The leading "./" goes before backslashes become slashes, so one spelt with a backslash stays.
    """
    relative = collected_path[2:] if collected_path.startswith("./") else collected_path
    return relative.replace("\\", "/")


def plain_path_field(path: str) -> bytes:
    """Return the field for `path` in UTF-16; ValueError if it does not fit with one zero unit after it."""
    text = path.encode("utf-16-le")
    if len(text) + UNIT_SIZE > PATH_FIELD_SIZE:
        raise ValueError(f"the path takes {len(text) // UNIT_SIZE} of at most {PATH_UNITS - 1} units: {path!r}")
    return text.ljust(PATH_FIELD_SIZE, b"\0")


def aliased_path_field(path: str) -> bytes:
    """Return the field for an aliased path, with four bytes per character.

    ValueError if the characters do not fit into the field; a path that exactly fills it is accepted.
    """
    text = path.encode("utf-32-le")
    if len(text) > PATH_FIELD_SIZE:
        raise ValueError(f"the aliased path takes {len(text)} of at most {PATH_FIELD_SIZE} bytes: {path!r}")
    return text.ljust(PATH_FIELD_SIZE, b"\0")


def entry_of_bytes(collected_path: str, content: bytes) -> Entry:
    """Return the entry for a file of that path and content."""
    field = plain_path_field(stored_path(collected_path))
    return Entry(len(content), name_position_of(field), field, chunk_digests(content))


def with_alias(entry: Entry, alias_map: Mapping[str, str]) -> Entry:
    """Return the entry after alias substitution.

    Only the first key, in code point order, that occurs in the path counts; all its occurrences change.
    """
    if "" in alias_map:
        raise ValueError("an empty alias key would be found everywhere, again after each replacement")
    path = entry.path
    key = next((key for key in sorted(alias_map) if key in path), None)
    if key is None:
        return entry
    field = aliased_path_field(path.replace(key, alias_map[key]))
    return replace(entry, path_field=field, name_position=name_position_of(field))


def entries_of_directory(
    directory: Union[str, Path],
    collected_paths: Iterable[str],
    alias_map: Optional[Mapping[str, str]] = None,
) -> List[Entry]:
    """Return the entries, in catalogue order, for files collected relative to `directory`.

    The order is that of the collected paths, by code point, before anything is removed or replaced. A
    missing file counts as an empty one.
    """
    entries: List[Entry] = []
    for collected_path in sorted(collected_paths):
        file_path = Path(directory, collected_path)
        content = file_path.read_bytes() if file_path.exists() else b""
        entries.append(with_alias(entry_of_bytes(collected_path, content), alias_map or {}))
    return entries


def _parse_record(block: bytes, position: int, index: int) -> Entry:
    left = len(block) - position
    if left < RECORD_FIXED_SIZE:
        raise FormatError(f"entry {index} needs {RECORD_FIXED_SIZE} bytes, {left} are left")
    size, name_position, path_field, digest_count = _FIXED_PART.unpack_from(block, position)
    digests_start = position + RECORD_FIXED_SIZE
    digests_left = len(block) - digests_start
    if digest_count * DIGEST_SIZE > digests_left:
        raise FormatError(f"entry {index} claims {digest_count} digests, {digests_left} bytes are left")
    digests = tuple(
        block[start : start + DIGEST_SIZE]
        for start in range(digests_start, digests_start + digest_count * DIGEST_SIZE, DIGEST_SIZE)
    )
    return Entry(size, name_position, path_field, digests)


def _check_plain_path_field(path_field: bytes, where: str) -> None:
    units = units_of(path_field)
    text = b"".join(units[: units.index(_ZERO_UNIT)]) if _ZERO_UNIT in units else path_field
    if any(path_field[len(text) :]):
        raise FormatError(f"{where} has bytes other than zero after the end of its path")
    try:
        path = text.decode("utf-16-le")
    except UnicodeDecodeError as error:
        raise FormatError(f"{where} has a path that is not UTF-16: {error}") from error
    if "\\" in path:
        raise FormatError(f"{where} has a path with a backslash: {path!r}")
