"""Every truncation of a small signed catalogue, and a bit flip in each of its bytes.

Each truncation is verified. In every byte one bit is flipped, a different one from byte to byte, and each change is
verified. All of this is listed too, but in the signature area, which list ignores, only at every sixteenth offset. The
exact console text and the exit status are compared for both actions. For list, the independent reader says what can
still be read.
"""

from __future__ import annotations

import unittest
from typing import Callable, Optional

import catalogue_format
import e2e_read_back as texts
from catalogue_entry import entry_of_bytes
from e2e_support import GOOD
from format_error import FormatError
from many_runs import LISTED_EVERY, Case, ManyRunsTest, Outcome, single_changes, truncations

PATHS = ("gone/first.dat", "gone/second")


def small_catalogue() -> bytes:
    """A signed catalogue of two missing files, with a few bytes of revocation list."""
    entries = [entry_of_bytes(PATHS[0], b"hello"), entry_of_bytes(PATHS[1], b"")]
    return catalogue_format.sign(catalogue_format.build(entries, b"crl"), GOOD.key)


def listing(content: bytes) -> Outcome:
    """The expected output of list, from the independent reader."""
    if len(content) < catalogue_format.HEADER_SIZE:
        return Outcome(9, "")
    if content[:4] != catalogue_format.MAGIC:
        return Outcome(9, texts.UNSUPPORTED_FORMAT)
    try:
        entries = catalogue_format.parse(content, strict=False).entries
    except FormatError:
        return Outcome(9, texts.not_listed(9))
    return Outcome(0, texts.listed([texts.shown_path(entry) for entry in entries]))


def sampled_listing(offset: int, content: bytes) -> Optional[Outcome]:
    """The expected output of list for a file cut or changed at that offset; None if it is not run."""
    return None if 8 <= offset < 1032 and offset % LISTED_EVERY != 0 else listing(content)


def refused(code: int) -> Callable[[str], Outcome]:
    """Verify refuses the catalogue."""
    text = texts.reading("base.bin") + texts.not_read("base.bin", code)
    return lambda folder: Outcome(code, text)


def accepted(folder: str) -> Outcome:
    """Verify accepts the catalogue and misses its files."""
    text = texts.reading("base.bin") + texts.added("base.bin", len(PATHS))
    return Outcome(23, text + texts.verdicts([(path, 23) for path in PATHS]))


def verified(offset: int) -> Callable[[str], Outcome]:
    """The expected outcome of verify if the byte at that offset differs from what was signed."""
    signature_end = 8 + 256
    if signature_end <= offset < 1032:
        return accepted
    # The magic and version, and the lengths that decide where the file ends.
    if offset < 6 or 1036 <= offset < 1044:
        return refused(9)
    return refused(11)


class CatalogueBytes(ManyRunsTest):
    """One catalogue, base.bin, with its certificate."""

    def test_as_it_was_signed(self) -> None:
        image = small_catalogue()
        self.assertLess(len(image), 1300)
        self.assert_cases("base.bin", [Case("unchanged", image, Outcome(0, texts.listed(PATHS)), accepted)])

    def test_every_truncation(self) -> None:
        cases = [
            Case(name, cut, sampled_listing(len(cut), cut), refused(9))
            for name, cut in truncations(small_catalogue())
        ]
        self.assert_cases("base.bin", cases)

    def test_every_byte_changed(self) -> None:
        changes = single_changes(small_catalogue())
        cases = [
            Case(name, changed, sampled_listing(offset, changed), verified(offset))
            for name, offset, changed in changes
        ]
        self.assert_cases("base.bin", cases)


if __name__ == "__main__":
    unittest.main()
