"""Tests of the entry block's compression, against codes packed by hand.

Run from this directory with `python3 -m unittest`.
"""

from __future__ import annotations

import random
import unittest

import fixed_width_lzw
from format_error import FormatError
from independent_test_support import HELLO_RECORD, block_of_codes, twelve_bit_codes


class FixedWidthLzwTest(unittest.TestCase):
    def test_compresses_the_worked_example(self) -> None:
        block = fixed_width_lzw.compress(HELLO_RECORD)
        self.assertEqual(len(block), 132)
        self.assertEqual(block[:12], bytes.fromhex("1F 9D 8C 05 00 00 02 31 10 00 40 00"))

    def test_compresses_short_inputs_to_bytes_packed_by_hand(self) -> None:
        cases = {
            b"": "1F 9D 8C",
            b"a": "1F 9D 8C 61 00",
            b"ab": "1F 9D 8C 61 20 06",
            b"abab": "1F 9D 8C 61 20 06 01 01",
            b"aaa": "1F 9D 8C 61 10 10",
            b"aaaa": "1F 9D 8C 61 10 10 61 00",
            b"\xff\xff": "1F 9D 8C FF F0 0F",
        }
        for data, block in cases.items():
            with self.subTest(data=data):
                self.assertEqual(fixed_width_lzw.compress(data), bytes.fromhex(block))
                self.assertEqual(fixed_width_lzw.decompress(bytes.fromhex(block)), data)

    def test_runs_of_one_byte_use_each_code_as_soon_as_it_is_assigned(self) -> None:
        block = fixed_width_lzw.compress(bytes(1 + 2 + 3 + 4 + 5))
        self.assertEqual(twelve_bit_codes(block)[:5], [0, 257, 258, 259, 260])

    def test_runs_of_every_length_come_back(self) -> None:
        for length in range(400):
            data = b"\x07" * length
            self.assertEqual(fixed_width_lzw.decompress(fixed_width_lzw.compress(data)), data)

    def test_random_inputs_come_back(self) -> None:
        source = random.Random(20240229)
        for case in range(150):
            alphabet = source.choice([1, 2, 3, 16, 256])
            length = source.choice([0, 1, 2, 3, 100, 5000, 30000])
            data = bytes(source.randrange(alphabet) for _ in range(length))
            with self.subTest(case=case, alphabet=alphabet, length=length):
                self.assertEqual(fixed_width_lzw.decompress(fixed_width_lzw.compress(data)), data)

    def test_full_dictionary_stops_at_4094_and_stays(self) -> None:
        source = random.Random(1)
        start = bytes(source.randrange(256) for _ in range(20000))
        data = start * 3 + bytes(100000)
        block = fixed_width_lzw.compress(data)
        codes = twelve_bit_codes(block)
        self.assertEqual(max(codes), 4094)
        self.assertNotIn(256, codes)
        self.assertEqual(fixed_width_lzw.decompress(block), data)
        # The long run came too late to be learned, so every few bytes of it cost a code to the end.
        self.assertGreater(len(block), len(start))

    def test_last_code_names_the_string_learnt_last(self) -> None:
        # In a run of zeros each code sent adds one string: code c stands for c - 255 zeros.
        sent = [0] + list(range(257, 4095))
        zeros = sum(1 if code == 0 else code - 255 for code in sent)
        block = fixed_width_lzw.compress(bytes(zeros))
        self.assertEqual(block, block_of_codes(sent))
        self.assertEqual(fixed_width_lzw.decompress(block), bytes(zeros))

    def test_other_magic_gives_nothing(self) -> None:
        for block in (b"", b"\x1f", b"\x1f\x8b\x8c\x61\x00", b"\x9d\x1f\x8c\x61\x00"):
            with self.subTest(block=block):
                self.assertEqual(fixed_width_lzw.decompress(block), b"")

    def test_width_comes_from_the_flag_byte_and_the_flag_bit_does_not_matter(self) -> None:
        codes = [0x61, 0x62, 257, 259]
        for width in (9, 12, 16):
            for flags in (0x80, 0x00):
                with self.subTest(width=width, flags=flags):
                    self.assertEqual(fixed_width_lzw.decompress(block_of_codes(codes, width, flags)), b"abababa")

    def test_rejects_what_no_compressor_sends(self) -> None:
        full = [0] + list(range(257, 4095))
        cases = {
            "no flag byte": b"\x1f\x9d",
            "width 0": b"\x1f\x9d\x80\x61",
            "unknown first code": block_of_codes([257]),
            "clear code": block_of_codes([0x61, 256]),
            "code after the next": block_of_codes([0x61, 258]),
            "code beyond a full dictionary": block_of_codes(full + [0, 4095]),
        }
        for name, block in cases.items():
            with self.subTest(name), self.assertRaises(FormatError):
                fixed_width_lzw.decompress(block)


if __name__ == "__main__":
    unittest.main()
