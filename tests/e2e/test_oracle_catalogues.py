"""The program and the independent reader and writer, each with the files of the other."""

from __future__ import annotations

import hashlib
import struct
import subprocess
import unittest
from pathlib import Path
from typing import List

import catalogue_format
import e2e_read_back as texts
import runtime_conf_format
from catalogue_entry import CHUNK_SIZE, Entry, chunk_digests
from e2e_support import GOOD, Credentials, config
from one_file_game import OneFileTest
from signed_game import THREE_CHUNKS, SignedGameTest, passed


class WrittenIndependently(SignedGameTest):
    """The program lists and verifies what the independent writer wrote and openssl signed."""

    def assert_read(self, entries: List[Entry], **choices) -> None:
        path = self.put_catalogue(entries, **choices)
        paths = [entry.path for entry in entries]
        self.assert_catalogue_listed(path, paths)
        self.assert_verified(0, passed(paths))

    def test_files_of_all_sizes(self) -> None:
        contents = {
            "empty": b"",
            "one": b"1",
            "below": bytes(CHUNK_SIZE - 1),
            "chunk": bytes(CHUNK_SIZE),
            "above": bytes(CHUNK_SIZE + 1),
            "three": THREE_CHUNKS,
        }
        self.assert_read(self.put_files(contents))

    def test_dictionary_that_fills_up(self) -> None:
        """Digests compress badly, so these entries need more strings than there are codes."""
        contents = {f"data/{index:04}/文件.pak": str(index).encode() for index in range(600)}
        entries = self.put_files(contents)
        self.assertGreater(len(catalogue_format.build(entries)), 2 * 4096 * 12 // 8)
        self.assert_read(entries)

    def test_longest_path(self) -> None:
        folders = "/".join(["d" * 50] * 4)
        path = folders + "/" + "n" * (255 - len(folders) - 1)
        self.assertEqual(len(path), 255)
        self.assert_read(self.put_files({path: b"content"}))

    def test_order_of_the_file_is_kept(self) -> None:
        self.assert_read(self.put_files({"z": b"z", "a": b"a", "m": b"m"}))

    def test_revocation_list_and_larger_key(self) -> None:
        crl = hashlib.sha512(b"crl").digest() * 100
        self.assert_read(self.put_files({"a": b"a"}), crl=crl, credentials=Credentials.of("big-key"))

    def test_runtime_conf(self) -> None:
        self.put_catalogue([])
        path = self.put_runtime_conf(12, b"C" * 64, 7)
        self.assert_listed(path, 0, texts.listed_settings(12, "C" * 64, "Steam DRM"))
        self.assert_verified(0, [], self.runtime_text())


class WrittenByTheProgram(OneFileTest):
    """The independent reader parses the program's files, and openssl checks their signatures."""

    def openssl_accepts(self, signed: bytes, signature: bytes, certificate: Path) -> bool:
        public_key = self.directory / "public.pem"
        command = ["openssl", "x509", "-inform", "DER", "-in", str(certificate), "-noout", "-pubkey"]
        public_key.write_bytes(subprocess.run(command, check=True, capture_output=True).stdout)
        (self.directory / "signature").write_bytes(signature)
        command = ["openssl", "dgst", "-sha256", "-verify", str(public_key)]
        command += ["-signature", str(self.directory / "signature")]
        finished = subprocess.run(command, input=signed, capture_output=True, check=False)
        return finished.returncode == 0

    def test_catalogue_field_by_field(self) -> None:
        self.write("bin/big.pak", THREE_CHUNKS)
        self.write("bin/Ünter/empty")
        crl = self.directory / "some.crl"
        crl.write_bytes(b"a revocation list" * 10)
        self.assertEqual(self.generate("-incrl", crl).status, 0)
        image = (self.output / "base.bin").read_bytes()
        read = catalogue_format.parse(image)

        self.assertEqual(image[:8], b"QVR\0\x04\x00\x01\x00")
        self.assertEqual((read.magic, read.format_version, read.signature_layout), (b"QVR\0", 4, 1))
        self.assertEqual(read.signature_length, 256)
        self.assertEqual(read.signature_area[256:], bytes(768))
        self.assertEqual((read.crl_length, read.crl), (170, crl.read_bytes()))
        self.assertEqual(read.compressed_length, len(image) - 1052 - 170)
        self.assertEqual(read.compressed_block[:3], b"\x1f\x9d\x8c")
        self.assertEqual(read.raw_length, 3 * 528 + 32 * (1 + 3))
        self.assertEqual(read.entry_count, 3)
        found = [(entry.path, entry.size, entry.name_position, entry.digests) for entry in read.entries]
        expected = [
            ("bin/a.dat", 5, 4, (hashlib.sha256(b"hello").digest(),)),
            ("bin/big.pak", len(THREE_CHUNKS), 4, chunk_digests(THREE_CHUNKS)),
            ("bin/Ünter/empty", 0, 10, ()),
        ]
        self.assertEqual(found, expected)

        blanked = image[:8] + bytes(1028) + image[1036:]
        self.assertTrue(self.openssl_accepts(blanked, read.signature, self.output / "base.cer"))
        self.assertFalse(self.openssl_accepts(blanked + b"\0", read.signature, self.output / "base.cer"))
        self.assertEqual((self.output / "base.cer").read_bytes(), GOOD.certificate.read_bytes())

    def test_runtime_conf_field_by_field(self) -> None:
        settings = 'max_active_game_instances = 7; crash_reporter_name = "Reporter";'
        settings += ' anti_tamper_solution_name = "Arxan";'
        config_file = self.write_config(config('include_paths = ["bin"]', settings))
        self.assertEqual(self.generate(config_file=config_file).status, 0)
        content = (self.output / "runtime.conf").read_bytes()
        read = runtime_conf_format.parse(content)

        self.assertEqual((read.magic, read.version, read.max_active_instances), (b"QVR\0", 1, 7))
        self.assertEqual(read.crash_reporter_name_field, b"Reporter".ljust(64, b"\0"))
        self.assertEqual(read.anti_tamper_solution, 2)
        self.assertEqual(read.signature_length, 256)
        self.assertEqual(read.signature_area[256:], bytes(768))

        plain = runtime_conf_format.unscramble(content)
        self.assertEqual(struct.unpack_from("<III", plain, 1028), (256, 1, 7))
        blanked = plain[:4] + bytes(1028) + plain[1032:]
        self.assertTrue(self.openssl_accepts(blanked, read.signature, self.output / "base.cer"))
        self.assertFalse(self.openssl_accepts(plain, read.signature, self.output / "base.cer"))

        run = self.run_program("list", self.output / "runtime.conf")
        begun = texts.list_begun(self.output / "runtime.conf")
        self.assert_console(run, 0, begun + texts.listed_settings(7, "Reporter", "Arxan"))

    def test_aliased_path_reads_as_its_first_letter(self) -> None:
        """An alias takes four bytes per character, and a UTF-16 reader stops at the first zero unit."""
        text = config('include_paths = ["bin"] alias_paths = ( ["bin", "out"] )')
        run = self.generate(config_file=self.write_config(text))
        self.assertEqual(run.status, 0, run.output)
        path = self.output / "base.bin"
        (entry,) = catalogue_format.parse(path.read_bytes()).entries
        self.assertEqual((entry.path, entry.aliased_path), ("o", "out/a.dat"))
        run = self.run_program("list", path)
        self.assert_console(run, 0, texts.list_begun(path) + texts.listed(["o"]))


if __name__ == "__main__":
    unittest.main()
