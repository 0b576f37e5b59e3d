"""The compressed entry block, read by programs other than the one under test.

The classic `uncompress`, and `gzip -d`, which reads its files, recognise the three bytes at the start of the block.
They cannot read the codes: theirs begin at 9 bits and grow to the width in the header, while all codes here have that
width. So the classic program checks the container, and the reader in tests/independent the content.
"""

from __future__ import annotations

import subprocess

import catalogue_format
import fixed_width_lzw
from one_file_game import OneFileTest

UNKNOWN_CONTAINER = (b"not in gzip format", b"unknown compression format")


def classic_decompress(block: bytes) -> subprocess.CompletedProcess:
    return subprocess.run(["gzip", "-dc"], input=block, capture_output=True, timeout=60, check=False)


def knows_container(block: bytes) -> bool:
    errors = classic_decompress(block).stderr
    return not any(text in errors for text in UNKNOWN_CONTAINER)


class CompressedBlock(OneFileTest):
    def setUp(self) -> None:
        super().setUp()
        self.assertEqual(self.generate().status, 0)
        self.catalogue = catalogue_format.parse((self.output / "base.bin").read_bytes())
        self.block = self.catalogue.compressed_block

    def test_classic_program_knows_the_container(self) -> None:
        self.assertTrue(knows_container(self.block))
        self.assertFalse(knows_container(b"\x00" + self.block[1:]))

    def test_classic_program_cannot_read_the_codes(self) -> None:
        self.assertNotEqual(classic_decompress(self.block).stdout, self.catalogue.raw_block)

    def test_independent_reader_decompresses_it(self) -> None:
        raw = fixed_width_lzw.decompress(self.block)
        self.assertEqual(len(raw), self.catalogue.raw_length)
        self.assertEqual(raw[:8], (5).to_bytes(8, "little"))
        self.assertEqual(raw[12:30].decode("utf-16-le"), "bin/a.dat")
