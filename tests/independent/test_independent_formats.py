"""Tests of the catalogue and runtime.conf modules, against files worked out by hand.

Run from this directory with `python3 -m unittest`. The `openssl` command has to be there.
"""

from __future__ import annotations

import contextlib
import hashlib
import io
import json
import os
import random
import struct
import tempfile
import unittest
from dataclasses import replace
from pathlib import Path
from typing import Tuple

import catalogue_format
import openssl_signature
import print_catalogue
import runtime_conf_format
from catalogue_entry import (
    CHUNK_SIZE,
    aliased_path_field,
    entries_of_directory,
    entry_of_bytes,
    name_position_of,
    plain_path_field,
    with_alias,
)
from format_error import FormatError
from independent_test_support import HELLO_RECORD, SigningMaterial, block_of_codes, flipped

HELLO_CRL = bytes(index % 251 for index in range(1000))

material: SigningMaterial


def setUpModule() -> None:
    """Make the keys once: they are the slow part."""
    global material
    material = SigningMaterial()
    unittest.addModuleCleanup(material.close)


class CatalogueWorkedExampleTest(unittest.TestCase):
    def setUp(self) -> None:
        entry = entry_of_bytes("bin/a.dat", b"hello")
        self.image = catalogue_format.sign(catalogue_format.build([entry], HELLO_CRL), material.key)

    def test_record_is_as_worked_out(self) -> None:
        self.assertEqual(entry_of_bytes("bin/a.dat", b"hello").record(), HELLO_RECORD)

    def test_file_is_as_worked_out(self) -> None:
        self.assertEqual(len(self.image), 2184)
        self.assertEqual(self.image[:8], bytes.fromhex("51 56 52 00 04 00 01 00"))
        self.assertNotEqual(self.image[8:264], bytes(256))
        self.assertEqual(self.image[264:1032], bytes(768))
        lengths = "00 01 00 00  E8 03 00 00  84 00 00 00  30 02 00 00  01 00 00 00"
        self.assertEqual(self.image[1032:1052], bytes.fromhex(lengths))
        self.assertEqual(self.image[1052:2052], HELLO_CRL)
        self.assertEqual(self.image[2052:2064], bytes.fromhex("1F 9D 8C 05 00 00 02 31 10 00 40 00"))

    def test_signature_is_the_one_openssl_makes_of_the_file_with_the_fields_blank(self) -> None:
        blanked = self.image[:8] + bytes(1028) + self.image[1036:]
        self.assertEqual(self.image[8:264], openssl_signature.sign(blanked, material.key))
        self.assertEqual(catalogue_format.signed_bytes(self.image), blanked)

    def test_parse_names_every_field(self) -> None:
        catalogue = catalogue_format.parse(self.image)
        self.assertEqual(catalogue.magic, b"QVR\0")
        self.assertEqual(catalogue.format_version, 4)
        self.assertEqual(catalogue.signature_layout, 1)
        self.assertEqual(catalogue.signature_area, self.image[8:1032])
        self.assertEqual(catalogue.signature, self.image[8:264])
        self.assertEqual(catalogue.signature_length, 256)
        self.assertEqual(catalogue.crl_length, 1000)
        self.assertEqual(catalogue.compressed_length, 132)
        self.assertEqual(catalogue.raw_length, 560)
        self.assertEqual(catalogue.entry_count, 1)
        self.assertEqual(catalogue.crl, HELLO_CRL)
        self.assertEqual(catalogue.raw_block, HELLO_RECORD)
        (entry,) = catalogue.entries
        self.assertEqual((entry.size, entry.name_position, entry.path), (5, 4, "bin/a.dat"))
        self.assertEqual(entry.path_field, HELLO_RECORD[12:524])
        self.assertIsNone(entry.aliased_path)
        self.assertEqual(entry.digests, (hashlib.sha256(b"hello").digest(),))


class CatalogueEntryTest(unittest.TestCase):
    def test_chunks_are_counted_at_their_edges(self) -> None:
        for size, expected in ((0, 0), (1, 1), (CHUNK_SIZE - 1, 1), (CHUNK_SIZE, 1), (CHUNK_SIZE + 1, 2)):
            with self.subTest(size=size):
                entry = entry_of_bytes("a", bytes(size))
                self.assertEqual(len(entry.digests), expected)
                catalogue = catalogue_format.parse(catalogue_format.build([entry]))
                self.assertEqual(catalogue.raw_length, 528 + 32 * expected)
                self.assertEqual(catalogue.entries, (entry,))

    def test_second_chunk_is_digested_by_itself(self) -> None:
        content = bytes(CHUNK_SIZE) + b"x"
        expected = (hashlib.sha256(bytes(CHUNK_SIZE)).digest(), hashlib.sha256(b"x").digest())
        self.assertEqual(entry_of_bytes("a", content).digests, expected)

    def test_stored_path_and_name_position(self) -> None:
        cases = {
            "a": ("a", 0),
            "./a": ("a", 0),
            "a/b": ("a/b", 2),
            "./a/b": ("a/b", 2),
            "././a": ("./a", 2),
            "a\\b\\c": ("a/b/c", 4),
            ".\\a": ("./a", 2),
            "Ä/é": ("Ä/é", 2),
            "\U0001f600/b": ("\U0001f600/b", 3),
        }
        for collected, expected in cases.items():
            with self.subTest(collected=collected):
                entry = entry_of_bytes(collected, b"")
                self.assertEqual((entry.path, entry.name_position), expected)
                catalogue_format.parse(catalogue_format.build([entry]))

    def test_longest_path_leaves_one_zero_unit(self) -> None:
        self.assertEqual(entry_of_bytes("x" * 255, b"").path, "x" * 255)
        with self.assertRaises(ValueError):
            entry_of_bytes("x" * 256, b"")

    def test_alias_stores_four_bytes_per_character(self) -> None:
        entry = with_alias(entry_of_bytes("Binaries/Mac/game", b""), {"Binaries/Mac": "bin"})
        self.assertEqual(entry.path_field, "bin/game".encode("utf-32-le").ljust(512, b"\0"))
        self.assertEqual(entry.name_position, 7)
        self.assertEqual(entry.path, "b")
        self.assertEqual(entry.aliased_path, "bin/game")
        (read_back,) = catalogue_format.parse(catalogue_format.build([entry])).entries
        self.assertEqual(read_back, entry)

    def test_alias_takes_the_first_key_found_and_changes_all_its_places(self) -> None:
        cases = [
            ("x/ab/ab", {"b": "2", "ab": "1"}, "x/1/1"),
            ("aaa", {"aa": "a"}, "aa"),
            ("abc", {"b": "bb"}, "abbc"),
            ("abc", {"x": "y"}, None),
            ("abc", {}, None),
        ]
        for path, alias_map, expected in cases:
            with self.subTest(path=path, alias_map=alias_map):
                self.assertEqual(with_alias(entry_of_bytes(path, b""), alias_map).aliased_path, expected)

    def test_alias_field_limit(self) -> None:
        self.assertEqual(len(aliased_path_field("x" * 128)), 512)
        with self.assertRaises(ValueError):
            aliased_path_field("x" * 129)

    def test_alias_field_with_text_after_its_end_is_no_alias(self) -> None:
        field = "ab".encode("utf-32-le") + bytes(8) + "c".encode("utf-32-le")
        entry = replace(entry_of_bytes("a", b""), path_field=field.ljust(512, b"\0"))
        self.assertIsNone(entry.aliased_path)

    def test_directory_entries_are_in_code_point_order_of_collected_paths(self) -> None:
        with tempfile.TemporaryDirectory() as directory:
            for name in ("a", "Z", "\U0001f600", "\uff21", "ab"):
                Path(directory, name).write_bytes(name.encode("utf-8"))
            collected = ["a", "./Z", "Z", "\U0001f600", "\uff21", "ab", "missing"]
            entries = entries_of_directory(directory, collected)
        # "./" sorts before every letter, and U+1F600 after U+FF21 although its UTF-16 form would not.
        self.assertEqual(
            [entry.path for entry in entries], ["Z", "Z", "a", "ab", "missing", "\uff21", "\U0001f600"]
        )
        self.assertEqual(entries[2], entry_of_bytes("a", b"a"))
        self.assertEqual((entries[4].size, entries[4].digests), (0, ()))


class CatalogueReaderTest(unittest.TestCase):
    def setUp(self) -> None:
        self.entry = entry_of_bytes("bin/a.dat", b"hello")
        self.image = catalogue_format.build([self.entry], b"crl")

    def assert_rejects(self, image: bytes, reason: str, strict: bool = True) -> None:
        with self.assertRaisesRegex(FormatError, reason):
            catalogue_format.parse(image, strict=strict)

    def patched(self, layout: str, offset: int, value: int) -> bytes:
        image = bytearray(self.image)
        struct.pack_into(layout, image, offset, value)
        return bytes(image)

    def test_rejects_header_errors(self) -> None:
        cases = [
            (b"", "0 bytes"),
            (self.image[:1051], "1051 bytes"),
            (b"QVS\0" + self.image[4:], "magic"),
            (self.patched("<H", 4, 3), "version"),
            (self.image + b"\0", "claims"),
            (self.image[:-1], "claims"),
            (self.patched("<I", 1036, 4), "claims"),
            (self.patched("<I", 1040, 0xFFFFFFFF), "claims"),
        ]
        for image, reason in cases:
            with self.subTest(reason=reason):
                self.assert_rejects(image, reason, strict=False)

    def test_rejects_lengths_that_only_agree_modulo_32_bits(self) -> None:
        image = bytearray(self.patched("<I", 1036, 0xFFFFFFFF))
        struct.pack_into("<I", image, 1040, 1 + len(self.image) - 1052)
        self.assert_rejects(bytes(image), "claims", strict=False)

    def test_rejects_every_truncation(self) -> None:
        for length in range(len(self.image)):
            with self.assertRaises(FormatError):
                catalogue_format.parse(self.image[:length])

    def test_rejects_records_that_do_not_fit_the_entry_block(self) -> None:
        record = self.entry.record()
        huge_count = record[:524] + b"\xff\xff\xff\xff" + record[528:]
        cases = [
            (record, 2, "entry 1 needs 528"),
            (record, 0xFFFFFFFF, "entry 1 needs 528"),
            (record[:-1], 1, "claims 1 digests"),
            (huge_count, 1, "claims 4294967295 digests"),
            (b"", 1, "entry 0 needs 528"),
        ]
        for raw_block, count, reason in cases:
            with self.subTest(count=count, reason=reason):
                self.assert_rejects(catalogue_format.build_from_raw_block(raw_block, count), reason, strict=False)

    def test_rejects_an_entry_block_without_the_compress_magic(self) -> None:
        image = catalogue_format.build_from_compressed_block(self.entry.record(), 560, 1)
        self.assert_rejects(image, "entry 0 needs 528", strict=False)

    def test_only_the_strict_reader_rejects_what_no_writer_makes(self) -> None:
        def rebuilt(**changes: object) -> bytes:
            return catalogue_format.build([replace(self.entry, **changes)])

        record = self.entry.record()
        other_width = block_of_codes(list(record), width=13)
        path_with_tail = bytearray(self.entry.path_field)
        path_with_tail[511] = 1
        cases = [
            (self.patched("<I", 1032, 1025), "signature length"),
            (self.patched("<B", 1031, 1), "signature area"),
            (catalogue_format.build_from_raw_block(record, 0), "560 bytes are left over"),
            (catalogue_format.build_from_raw_block(record + b"\0", 1), "1 bytes are left over"),
            (self.patched("<I", 1044, 561), "561 raw bytes"),
            (catalogue_format.build_from_compressed_block(other_width, 560, 1), "one rule"),
            (rebuilt(name_position=0), "name position"),
            (rebuilt(size=0), "1 digests"),
            (rebuilt(digests=()), "0 digests"),
            (rebuilt(path_field=bytes(path_with_tail)), "after the end of its path"),
            (rebuilt(path_field=plain_path_field("a\\b"), name_position=0), "backslash"),
            (rebuilt(path_field=b"\0\xd8".ljust(512, b"\0"), name_position=0), "not UTF-16"),
        ]
        for image, reason in cases:
            with self.subTest(reason=reason):
                catalogue_format.parse(image, strict=False)
                self.assert_rejects(image, reason)

    def test_reads_a_catalogue_without_entries(self) -> None:
        catalogue = catalogue_format.parse(catalogue_format.build([]))
        self.assertEqual((catalogue.entry_count, catalogue.raw_length, catalogue.entries), (0, 0, ()))

    def test_many_random_entries_come_back_in_order(self) -> None:
        source = random.Random(7)
        entries = [
            entry_of_bytes(f"data/{index}/{source.randrange(10**9)}.pak", os.urandom(source.randrange(50)))
            for index in range(300)
        ]
        catalogue = catalogue_format.parse(catalogue_format.build(entries, b"x" * 77))
        self.assertEqual(list(catalogue.entries), entries)
        self.assertEqual(catalogue.crl, b"x" * 77)

    def test_name_position_looks_at_the_whole_field(self) -> None:
        self.assertEqual(name_position_of(bytes(512)), 0)
        self.assertEqual(name_position_of(plain_path_field("a/b/")), 4)


class SignatureTest(unittest.TestCase):
    """Both signed formats, and what the signature of each covers."""

    def setUp(self) -> None:
        entry = entry_of_bytes("a", b"1")
        self.catalogue = catalogue_format.sign(catalogue_format.build([entry], b"c"), material.key)
        older = catalogue_format.build([entry], b"c", signature_layout=0)
        self.older = catalogue_format.sign(older, material.key)
        self.conf = runtime_conf_format.sign(runtime_conf_format.build(2, "R", 3), material.key)

    def catalogue_holds(self, image: bytes) -> bool:
        return catalogue_format.verify(image, material.certificate)

    def test_holds_under_the_signer_only(self) -> None:
        cases = [
            (catalogue_format.verify, self.catalogue),
            (catalogue_format.verify, self.older),
            (runtime_conf_format.verify, self.conf),
        ]
        for verify, signed in cases:
            self.assertTrue(verify(signed, material.certificate))
            self.assertFalse(verify(signed, material.other_certificate))

    def test_signing_again_changes_nothing(self) -> None:
        self.assertEqual(catalogue_format.sign(self.catalogue, material.key), self.catalogue)
        self.assertEqual(runtime_conf_format.sign(self.conf, material.key), self.conf)

    def test_current_layout_covers_all_but_the_signature_fields(self) -> None:
        covered = catalogue_format.signed_bytes(self.catalogue)
        self.assertEqual(len(covered), len(self.catalogue))
        for offset in (0, 5, 1036, 1051, 1052, len(self.catalogue) - 1):
            with self.subTest(offset=offset):
                self.assertFalse(self.catalogue_holds(flipped(self.catalogue, offset)))
        self.assertTrue(self.catalogue_holds(flipped(self.catalogue, 264)))
        self.assertTrue(self.catalogue_holds(flipped(self.catalogue, 1031)))
        self.assertFalse(self.catalogue_holds(flipped(self.catalogue, 263)))

    def test_older_layout_covers_what_follows_the_signature_fields(self) -> None:
        self.assertEqual(catalogue_format.signed_bytes(self.older), self.older[1036:])
        self.assertTrue(self.catalogue_holds(flipped(self.older, 4)))
        self.assertFalse(self.catalogue_holds(flipped(self.older, 1036)))
        self.assertFalse(self.catalogue_holds(flipped(self.older, len(self.older) - 1)))

    def test_relabelled_layout_does_not_hold(self) -> None:
        self.assertFalse(self.catalogue_holds(self.catalogue[:6] + b"\0\0" + self.catalogue[8:]))
        self.assertFalse(self.catalogue_holds(self.older[:6] + b"\1\0" + self.older[8:]))

    def test_runtime_conf_signature_covers_magic_and_record(self) -> None:
        plain = runtime_conf_format.unscramble(self.conf)
        for offset, holds in ((0, False), (4, False), (260, True), (1027, True), (1032, False), (1107, False)):
            with self.subTest(offset=offset):
                changed = runtime_conf_format.scramble(flipped(plain, offset))
                self.assertIs(runtime_conf_format.verify(changed, material.certificate), holds)

    def test_runtime_conf_of_another_length_does_not_hold(self) -> None:
        plain = runtime_conf_format.unscramble(self.conf)
        for other in (plain + b"\0", plain[:1032]):
            self.assertFalse(runtime_conf_format.verify(runtime_conf_format.scramble(other), material.certificate))
        with self.assertRaises(FormatError):
            runtime_conf_format.verify(self.conf[:1031], material.certificate)

    def test_signature_of_another_length_does_not_hold(self) -> None:
        exact = catalogue_format.signature(self.catalogue)
        self.assertEqual(len(exact), 256)
        for wrong in (b"", exact[:-1], exact + b"\0"):
            with self.subTest(length=len(wrong)):
                self.assertFalse(self.catalogue_holds(catalogue_format.with_signature(self.catalogue, wrong)))
                conf = runtime_conf_format.with_signature(self.conf, wrong)
                self.assertFalse(runtime_conf_format.verify(conf, material.certificate))

    def test_signature_larger_than_its_area_is_refused(self) -> None:
        for with_signature, signed in (
            (catalogue_format.with_signature, self.catalogue),
            (runtime_conf_format.with_signature, self.conf),
        ):
            with self.assertRaises(ValueError):
                with_signature(signed, bytes(1025))

    def test_signature_length_beyond_the_area_is_a_format_error(self) -> None:
        long_length = self.catalogue[:1032] + struct.pack("<I", 1025) + self.catalogue[1036:]
        plain = runtime_conf_format.unscramble(self.conf)
        long_conf = runtime_conf_format.scramble(plain[:1028] + struct.pack("<I", 1025) + plain[1032:])
        for verify, signed in ((catalogue_format.verify, long_length), (runtime_conf_format.verify, long_conf)):
            with self.assertRaisesRegex(FormatError, "signature length"):
                verify(signed, material.certificate)

    def test_unreadable_key_or_certificate_is_not_a_bad_signature(self) -> None:
        with self.assertRaises(openssl_signature.OpensslError):
            catalogue_format.verify(self.catalogue, material.key)
        with self.assertRaises(openssl_signature.OpensslError):
            catalogue_format.sign(self.catalogue, material.certificate)


class RuntimeConfTest(unittest.TestCase):
    def test_scrambles_the_worked_example(self) -> None:
        plain = (
            bytes.fromhex("51 56 52 00 5C")
            + bytes(1023)
            + bytes.fromhex("00 01 00 00  01 00 00 00  01 00 00 00")
            + b"CrashReporter".ljust(64, b"\0")
            + bytes.fromhex("01 00 00 00")
        )
        self.assertEqual(len(plain), 1108)
        scrambled = runtime_conf_format.scramble(plain)
        self.assertEqual(scrambled[:4], bytes.fromhex("A7 AB 58 65"))
        self.assertEqual(scrambled[1028:1040], bytes.fromhex("0D 10 12 16 19 1B 1E 22 25 27 2A 70"))
        self.assertEqual(scrambled[1100:], bytes.fromhex("E4 E7 EA EE F1 F3 F6 F9"))
        self.assertEqual(runtime_conf_format.unscramble(scrambled), plain)
        conf = runtime_conf_format.parse(runtime_conf_format.scramble(plain))
        self.assertEqual(conf.signature_length, 256)
        self.assertEqual(conf.signature, b"\x5c" + bytes(255))
        self.assertEqual((conf.version, conf.max_active_instances), (1, 1))
        self.assertEqual(conf.crash_reporter_name, b"CrashReporter")
        self.assertEqual(conf.anti_tamper_solution, 1)

    def test_scrambling_comes_back_at_any_length(self) -> None:
        for length in list(range(70)) + [1107, 1108, 1109]:
            data = os.urandom(length)
            self.assertEqual(runtime_conf_format.unscramble(runtime_conf_format.scramble(data)), data)

    def test_scrambles_short_buffers_worked_out_by_hand(self) -> None:
        cases = {"": "", "7B": "7B", "01 02": "03 05", "FF FF": "FE 02", "01 02 03": "03 08 09"}
        for plain, scrambled in cases.items():
            with self.subTest(plain=plain):
                self.assertEqual(runtime_conf_format.scramble(bytes.fromhex(plain)), bytes.fromhex(scrambled))

    def test_build_and_sign_come_back(self) -> None:
        file_bytes = runtime_conf_format.sign(runtime_conf_format.build(4294967295, "Café", 8), material.key)
        self.assertEqual(len(file_bytes), 1108)
        conf = runtime_conf_format.parse(file_bytes)
        self.assertEqual(conf.max_active_instances, 4294967295)
        self.assertEqual(conf.crash_reporter_name, "Café".encode("utf-8"))
        self.assertEqual(conf.anti_tamper_solution, 8)
        self.assertEqual(conf.signature_length, 256)
        plain = runtime_conf_format.unscramble(file_bytes)
        self.assertEqual(conf.signature, openssl_signature.sign(plain[:4] + bytes(1028) + plain[1032:], material.key))

    def test_name_fills_its_field_and_is_cut_there(self) -> None:
        for length, expected in ((0, 0), (63, 63), (64, 64), (65, 64)):
            with self.subTest(length=length):
                conf = runtime_conf_format.parse(runtime_conf_format.build(crash_reporter_name="n" * length))
                self.assertEqual(conf.crash_reporter_name, b"n" * expected)

    def test_rejects_other_files(self) -> None:
        good = runtime_conf_format.build()
        plain = runtime_conf_format.unscramble(good)
        foreign = runtime_conf_format.scramble(b"QVS\0" + plain[4:])
        for file_bytes, reason in (
            (b"", "0 bytes"),
            (good[:-1], "1107 bytes"),
            (good + b"\0", "1109 bytes"),
            (foreign, "magic"),
        ):
            with self.subTest(reason=reason), self.assertRaisesRegex(FormatError, reason):
                runtime_conf_format.parse(file_bytes, strict=False)

    def test_only_the_strict_reader_rejects_what_no_writer_makes(self) -> None:
        plain = runtime_conf_format.unscramble(runtime_conf_format.build())
        long_signature = runtime_conf_format.scramble(plain[:1028] + struct.pack("<I", 1025) + plain[1032:])
        for file_bytes, reason in (
            (long_signature, "signature length"),
            (runtime_conf_format.build(version=2), "version"),
            (runtime_conf_format.build(anti_tamper_solution=9), "solution 9"),
            (runtime_conf_format.build(crash_reporter_name=b"a\0b"), "after its end"),
            (runtime_conf_format.scramble(flipped(plain, 4)), "after the signature"),
        ):
            with self.subTest(reason=reason):
                runtime_conf_format.parse(file_bytes, strict=False)
                with self.assertRaisesRegex(FormatError, reason):
                    runtime_conf_format.parse(file_bytes)


class PrintCatalogueTest(unittest.TestCase):
    def run_on(self, file_bytes: bytes, *options: str) -> Tuple[int, str, str]:
        with tempfile.TemporaryDirectory() as directory:
            path = Path(directory, "file")
            path.write_bytes(file_bytes)
            output, errors = io.StringIO(), io.StringIO()
            with contextlib.redirect_stdout(output), contextlib.redirect_stderr(errors):
                status = print_catalogue.main([*options, str(path)])
            return status, output.getvalue(), errors.getvalue()

    def test_prints_a_catalogue(self) -> None:
        image = catalogue_format.build([entry_of_bytes("bin/a.dat", b"hello")])
        status, text, _ = self.run_on(image)
        self.assertEqual(status, 0)
        for line in ("entry_count: 1", "entry 0", "  path: bin/a.dat", "  size: 5"):
            self.assertIn(line, text.splitlines())
        status, text, _ = self.run_on(image, "--json")
        self.assertEqual(status, 0)
        self.assertEqual(json.loads(text)["entries"][0]["name_position"], 4)

    def test_prints_a_runtime_conf(self) -> None:
        file_bytes = runtime_conf_format.build(3, "Reporter", 7)
        status, text, _ = self.run_on(file_bytes)
        self.assertEqual(status, 0)
        self.assertIn("anti_tamper_solution_name: Steam DRM", text.splitlines())
        status, text, _ = self.run_on(file_bytes, "--json")
        self.assertEqual(status, 0)
        self.assertEqual(json.loads(text)["max_active_instances"], 3)

    def test_catalogue_of_the_size_of_a_runtime_conf_is_still_a_catalogue(self) -> None:
        image = catalogue_format.build([], bytes(1108 - 1052 - 3))
        self.assertEqual(len(image), 1108)
        status, text, _ = self.run_on(image, "--json")
        self.assertEqual((status, json.loads(text)["kind"]), (0, "catalogue"))

    def test_reports_a_broken_file_unless_lenient(self) -> None:
        broken = catalogue_format.build([replace(entry_of_bytes("a/b", b""), name_position=9)])
        status, text, errors = self.run_on(broken)
        self.assertEqual((status, text), (1, ""))
        self.assertIn("name position 9", errors)
        self.assertEqual(self.run_on(broken, "--lenient")[0], 0)
        self.assertEqual(self.run_on(b"", "--lenient")[0], 1)


if __name__ == "__main__":
    unittest.main()
