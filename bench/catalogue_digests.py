"""Reads the digests in a catalogue with the reader of the tests, which shares no code with the
program."""
import sys
from pathlib import Path
from typing import List

from measure import CommandFailed

sys.path.append(str(Path(__file__).resolve().parent.parent / "tests/independent"))

# The modules of the reader import each other by these names.
import catalogue_format  # noqa: E402
from catalogue_entry import CHUNK_SIZE  # noqa: E402
from format_error import FormatError  # noqa: E402


def whole_file_digests(catalogue: Path, size_bytes: int) -> List[bytes]:
    """The digests, in hexadecimal, of the files of one chunk: the digests of their whole content.

    The sizes in the catalogue tell which files these are, so they must add up to `size_bytes`. The
    reader refuses an entry whose number of digests does not fit its size.
    """
    try:
        entries = catalogue_format.parse(catalogue.read_bytes()).entries
    except FormatError as error:
        raise CommandFailed(f"{catalogue.name}: {error}") from error
    catalogued_bytes = sum(entry.size for entry in entries)
    if catalogued_bytes != size_bytes:
        raise CommandFailed(f"{catalogue.name}: tells of {catalogued_bytes} bytes, the files have "
                            f"{size_bytes}")
    return [digest.hex().encode() for entry in entries if entry.size <= CHUNK_SIZE
            for digest in entry.digests]
