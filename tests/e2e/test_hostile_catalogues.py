"""Catalogues meant to mislead a reader, signed wherever verify must get as far as reading them."""

from __future__ import annotations

import struct
import unittest
from itertools import zip_longest
from typing import List, Optional, Sequence

import catalogue_format
import e2e_read_back as texts
import fixed_width_lzw
from catalogue_entry import Entry, entry_of_bytes
from e2e_support import GOOD
from independent_test_support import block_of_codes
from signed_game import SignedGameTest

LARGEST = 2**32 - 1
RECORD = entry_of_bytes("a", b"a").record()
SIZES = struct.Struct("<IIIII")
"""Signature length, revocation list, block, block before compression, entry count."""


def with_sizes(image: bytes, *sizes: Optional[int]) -> bytes:
    """The image with new values for the given ones of its five sizes."""
    present = SIZES.unpack_from(image, 1032)
    chosen = [old if new is None else new for old, new in zip_longest(present, sizes)]
    return image[:1032] + SIZES.pack(*chosen) + image[1052:]


def of_raw(raw: bytes, count: int) -> bytes:
    """A signed catalogue with an entry block given before compression."""
    return catalogue_format.sign(catalogue_format.build_from_raw_block(raw, count), GOOD.key)


def of_block(block: bytes, count: int, raw_length: int = len(RECORD), crl: bytes = b"") -> bytes:
    """A signed catalogue with a compressed entry block."""
    image = catalogue_format.build_from_compressed_block(block, raw_length, count, crl)
    return catalogue_format.sign(image, GOOD.key)


class HostileTest(SignedGameTest):
    """A game with the only file that the harmless parts of the catalogues name."""

    def setUp(self) -> None:
        super().setUp()
        self.write("a", b"a")

    def assert_refused(self, image: bytes) -> None:
        """Both actions refuse the catalogue."""
        path = self.put_image(image)
        self.assert_listed(path, 9, texts.not_listed(9))
        self.assert_not_read(9)

    def assert_taken(self, image: bytes, paths: Sequence[str] = ("a",)) -> None:
        """Both actions read these paths."""
        path = self.put_image(image)
        self.assert_catalogue_listed(path, paths)
        checked = [(name, 0 if name == "a" else 23) for name in paths]
        self.assert_verified(max([code for _, code in checked], default=0), checked)


class Headers(HostileTest):
    """Header numbers without the bytes to match."""

    def test_header_alone(self) -> None:
        self.assert_taken(of_block(b"", 0, 0), [])
        self.assert_refused(of_block(b"", 1, 0))
        self.assert_refused(of_block(b"", LARGEST, LARGEST))

    def test_signature_length(self) -> None:
        signed = of_raw(RECORD, 1)
        for length in (0, 1, 255, 257, 512, 1023, 1024, 1025, 1044, 2**31 - 1, 2**31, LARGEST):
            with self.subTest(length=length):
                path = self.put_image(with_sizes(signed, length))
                self.assert_catalogue_listed(path, ["a"])
                self.assert_not_read(11)

    def test_signature_length_of_an_older_layout_is_not_signed_either(self) -> None:
        image = catalogue_format.build_from_raw_block(RECORD, 1, signature_layout=0)
        signed = catalogue_format.sign(image, GOOD.key)
        self.assert_taken(signed)
        for length in (0, 257, 1025, LARGEST):
            with self.subTest(length=length):
                self.put_image(with_sizes(signed, length))
                self.assert_not_read(11)

    def test_entry_count(self) -> None:
        self.assert_taken(of_raw(RECORD, 1))
        for count in (2, 3, 2**31, LARGEST):
            with self.subTest(count=count):
                self.assert_refused(of_raw(RECORD, count))

    def test_lengths_that_overflow(self) -> None:
        signed = of_raw(RECORD, 1)
        rest = len(signed) - 1052
        for crl, compressed in ((LARGEST, rest + 1), (rest + 1, LARGEST), (2**31, 2**31 + rest), (LARGEST, LARGEST)):
            with self.subTest(crl=crl, compressed=compressed):
                self.assert_refused(with_sizes(signed, None, crl, compressed))

    def test_lengths_beyond_the_file(self) -> None:
        signed = of_raw(RECORD, 1)
        for crl, compressed in ((LARGEST, 0), (0, LARGEST), (1, None), (None, 0), (0, 0)):
            with self.subTest(crl=crl, compressed=compressed):
                self.assert_refused(with_sizes(signed, None, crl, compressed))

    def test_revocation_list_that_takes_the_whole_file(self) -> None:
        image = catalogue_format.build_from_raw_block(RECORD, 1)
        moved = with_sizes(image, None, len(image) - 1052, 0)
        self.assert_refused(catalogue_format.sign(moved, GOOD.key))

    def test_raw_length_only_reserves_room(self) -> None:
        block = fixed_width_lzw.compress(RECORD)
        for raw_length in (0, 1, len(RECORD) - 1, len(RECORD) + 1, 2**31, LARGEST):
            with self.subTest(raw_length=raw_length):
                self.assert_taken(of_block(block, 1, raw_length))


class Records(HostileTest):
    """Entry blocks that decompress, but hold incomplete records."""

    def test_digest_count(self) -> None:
        for count in (2, 3, 2**27, 2**27 + 1, 2**31, LARGEST):
            with self.subTest(count=count):
                self.assert_refused(of_raw(RECORD[:524] + struct.pack("<I", count) + RECORD[528:], 1))

    def test_digest_count_in_the_last_of_several(self) -> None:
        hostile = RECORD[:524] + struct.pack("<I", LARGEST) + RECORD[528:]
        self.assert_refused(of_raw(RECORD * 3 + hostile, 4))
        self.assert_taken(of_raw(RECORD * 3 + hostile, 3), ["a"] * 3)

    def test_record_that_is_cut(self) -> None:
        for size in (0, 1, 523, 524, 527, 528, 559):
            with self.subTest(size=size):
                self.assert_refused(of_raw(RECORD[:size], 1))
                self.assert_refused(of_raw(RECORD + RECORD[:size], 2))

    def test_bytes_after_the_last_record(self) -> None:
        for more in (b"\0", b"more", RECORD[:300], RECORD, bytes(5000)):
            with self.subTest(more=len(more)):
                self.assert_taken(of_raw(RECORD + more, 1))

    def test_no_entry_counted(self) -> None:
        for raw in (b"", b"x", RECORD * 3):
            with self.subTest(size=len(raw)):
                self.assert_taken(of_raw(raw, 0), [])


class Blocks(HostileTest):
    """Compressed blocks that no writer produces."""

    def test_block_without_its_magic(self) -> None:
        good = fixed_width_lzw.compress(RECORD)
        short = (b"", b"\x1f", b"\x9d", b"\x1f\x9c\x8c", b"\x1e\x9d\x8c", b"\x9d\x1f\x8c")
        for block in (*short, b"\0" + good, b"\x1f\x8b" + good[2:]):
            with self.subTest(block=block[:4].hex()):
                self.assert_taken(of_block(block, 0), [])
                self.assert_refused(of_block(block, 1))
                self.assert_refused(of_block(block, LARGEST))

    def test_block_that_ends_early(self) -> None:
        good = fixed_width_lzw.compress(RECORD)
        for size in range(2, len(good)):
            with self.subTest(size=size):
                self.assert_refused(of_block(good[:size], 1))

    def test_last_code_that_is_cut(self) -> None:
        """Bits too few for a code are ignored, whatever they are."""
        raw = RECORD + b"z"
        good = fixed_width_lzw.compress(raw)
        whole_codes = (len(good) - 3) * 8 // 12
        self.assertEqual(fixed_width_lzw.decompress(good), raw)
        self.assert_taken(of_block(good[:3] + good[3 : 3 + whole_codes * 12 // 8], 1))
        even = good if whole_codes % 2 == 0 else fixed_width_lzw.compress(raw + b"y")
        self.assertEqual((len(even) - 3) % 3, 0)
        self.assert_taken(of_block(even + b"\xff", 1))

    def test_first_code_above_a_byte(self) -> None:
        for code in (256, 257, 300, 4094, 4095):
            with self.subTest(code=code):
                self.assert_refused(of_block(block_of_codes([code, *RECORD]), 1))
                self.assert_refused(of_block(block_of_codes([code]), 0))

    def test_code_in_the_middle_that_stands_for_nothing(self) -> None:
        known = 257 + len(RECORD) - 1
        for code in (256, known + 1, 4094, 4095):
            with self.subTest(code=code):
                self.assert_refused(of_block(block_of_codes([*RECORD, code, 0]), 1))
        self.assert_taken(of_block(block_of_codes([*RECORD, known, 0]), 1))

    def test_codes_after_the_dictionary_is_full(self) -> None:
        codes = [*RECORD, *[7] * 5000]
        self.assert_taken(of_block(block_of_codes([*codes, 4094, 4094]), 1))
        self.assert_refused(of_block(block_of_codes([*codes, 4095]), 1))

    def test_other_code_widths(self) -> None:
        for width in (8, 9, 11, 13, 16, 24, 31):
            for flags in (0, 0x20, 0x80, 0xE0):
                with self.subTest(width=width, flags=flags):
                    self.assert_taken(of_block(block_of_codes(list(RECORD), width, flags), 1))

    def test_codes_of_one_bit(self) -> None:
        self.assert_taken(of_block(block_of_codes([0] * 528, 1), 1), [""])

    def test_strings_in_codes_of_other_widths(self) -> None:
        raw = bytes(528)
        codes = [0] + list(range(257, 257 + 32))
        for width in (9, 10, 16, 31):
            with self.subTest(width=width):
                self.assertEqual(fixed_width_lzw.decompress(block_of_codes(codes, width))[:528], raw)
                self.assert_taken(of_block(block_of_codes(codes, width), 1), [""])

    def test_width_that_is_not_that_of_the_codes(self) -> None:
        good = fixed_width_lzw.compress(RECORD)
        for width in (0, 9, 16, 31):
            for flags in (0, 0x80):
                with self.subTest(width=width, flags=flags):
                    self.assert_refused(of_block(good[:2] + bytes([flags | width]) + good[3:], 1))

    def test_no_width_at_all(self) -> None:
        self.assert_refused(of_block(b"\x1f\x9d\x80" + bytes(1000), 1))
        self.assert_refused(of_block(b"\x1f\x9d", 1))

    def test_many_small_entries(self) -> None:
        entries: List[Entry] = [entry_of_bytes("a", b"a")] * 20000
        self.assert_taken(catalogue_format.sign(catalogue_format.build(entries), GOOD.key), ["a"] * len(entries))


if __name__ == "__main__":
    unittest.main()
