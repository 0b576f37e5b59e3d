"""What `sealkeeper-inspect show` reports about catalogues and runtime.conf."""

from __future__ import annotations

import hashlib
import os
import resource
import shutil
import struct
import subprocess
import unittest
from dataclasses import replace
from pathlib import Path
from typing import Any, Dict

import catalogue_format
import runtime_conf_format
from catalogue_entry import PATH_FIELD_SIZE, entry_of_bytes, with_alias
from compressed_bomb import MIB, bomb
from e2e_support import GOOD, PRODUCT, TIMEOUT_SECONDS, Credentials, with_limited_address_space
from e2e_terminal import run_on_terminal
from inspect_support import ERROR, INSPECT, USAGE, WARNING, Inspection, InspectTest
from inspect_support import GOOD as GOOD_STATUS
from signed_game import THREE_CHUNKS, SignedGameTest, changed_at

HEADER = [
    ("magic", 0, 4),
    ("format version", 4, 2),
    ("signature layout", 6, 2),
    ("signature area", 8, 1024),
    ("signature_length", 1032, 4),
    ("crl_length", 1036, 4),
    ("compressed_length", 1040, 4),
    ("raw_length", 1044, 4),
    ("entry_count", 1048, 4),
]


def crl() -> bytes:
    """The revocation list of the development authority, which issued the test credentials."""
    root = Path(__file__).resolve().parents[2]
    return (root / "trust/development/crl.der").read_bytes()


class ShowTest(SignedGameTest, InspectTest):
    """Shows signed files."""

    def show(self, path: Path, *options: str) -> Inspection:
        """Show a file, and check that it does not change."""
        before = path.read_bytes()
        run = self.inspect("show", path, *options)
        self.assertEqual(path.read_bytes(), before)
        self.assertEqual(run.errors, "")
        return run

    def document(self, path: Path, status: int, *options: str) -> Dict[str, Any]:
        """Show a file as JSON. The text form has the same status."""
        self.assertEqual(self.show(path, *options).status, status)
        run = self.show(path, "--json", *options)
        self.assertEqual(run.status, status)
        return run.json()

    def fields_of(self, document: Dict[str, Any]) -> Dict[str, Any]:
        """The values of the fields, by name."""
        return {field["name"]: field["value"] for field in document["fields"]}

    def invalid(self, content: bytes) -> Dict[str, Any]:
        """The finding for a file that is not valid."""
        path = self.output / "base.bin"
        path.write_bytes(content)
        document = self.document(path, ERROR)
        self.assertFalse(document["isValid"])
        self.assertNotIn("entries", document)
        return document["invalid"]


class Catalogues(ShowTest):
    """Catalogues that list accepts."""

    def test_every_field(self) -> None:
        entries = [entry_of_bytes("bin/a.dat", b"hello"), entry_of_bytes("empty", b""), entry_of_bytes("c", THREE_CHUNKS)]
        path = self.put_catalogue(entries, crl=crl())
        document = self.document(path, GOOD_STATUS, "--digests")
        parsed = catalogue_format.parse(path.read_bytes())
        self.assertEqual([(f["name"], f["offset"], f["bytes"]) for f in document["fields"]], HEADER)
        fields = self.fields_of(document)
        self.assertEqual(fields["magic"], "51 56 52 00")
        for name in ("format version", "signature layout", "signature_length", "crl_length", "compressed_length"):
            self.assertEqual(fields[name], getattr(parsed, name.replace(" ", "_")), name)
        self.assertEqual(fields["signature area"], parsed.signature_area.hex())
        self.assertEqual(fields["raw_length"], parsed.raw_length)
        self.assertEqual(fields["entry_count"], 3)
        self.assertEqual(document["kind"], "catalogue")
        self.assertEqual(document["bytes"], len(path.read_bytes()))
        self.assertTrue(document["isValid"])
        self.assertEqual(document["notes"], [])
        self.assertEqual(document["signature"], {"state": "good", "certificate": str(self.output / "base.cer")})
        chunks = 1 + 0 + 3
        size = len(THREE_CHUNKS) + 5
        self.assertEqual(document["totals"], {"files": 3, "bytes": size, "chunks": chunks, "oddFiles": 0})
        self.assertEqual(
            document["entries"],
            [
                {
                    "path": entry.path,
                    "bytes": entry.size,
                    "chunks": len(entry.digests),
                    "namePosition": entry.name_position,
                    "digests": [digest.hex() for digest in entry.digests],
                }
                for entry in entries
            ],
        )

    def test_text(self) -> None:
        path = self.put_catalogue([entry_of_bytes("bin/a.dat", b"hello"), entry_of_bytes("Wölfe 日本", b"")])
        text = self.show(path).output
        self.assertIn(f"{path}: valid, hash catalogue, {len(path.read_bytes()):,} bytes\n", text)
        self.assertIn("\n    1048      4  entry_count        2\n", text)
        self.assertIn(f"  signature area     {path.read_bytes()[8:16].hex()} ...\n", text)
        self.assertIn("\nRevocation list  none\n", text)
        self.assertIn(f"\nSignature        good, by '{self.output / 'base.cer'}'\n", text)
        self.assertTrue(text.endswith("\nbytes  chunks  path\n    5       1  bin/a.dat\n    0       0  Wölfe 日本\n"))
        digest = hashlib.sha256(b"hello").hexdigest()
        self.assertIn(f"  bin/a.dat\n               {digest}\n", self.show(path, "--digests").output)

    def test_limit(self) -> None:
        path = self.put_catalogue(entry_of_bytes(name, b"") for name in ("one", "two", "three"))
        text = self.show(path, "--limit", "2").output
        self.assertIn("  two\nand 1 more file\n", text)
        self.assertNotIn("three", text)
        self.assertTrue(self.show(path, "--limit", "1").output.endswith("  one\nand 2 more files\n"))
        self.assertNotIn("  one\n", self.show(path, "--limit", "0").output)
        self.assertEqual(self.show(path, "--limit", "9").output, self.show(path).output)
        for limit, shown in ((0, 0), (2, 2), (3, 3), (9, 3)):
            document = self.document(path, GOOD_STATUS, "--limit", str(limit))
            self.assertEqual(len(document["entries"]), shown)
            self.assertEqual(document["totals"]["files"], 3)

    def test_no_entry(self) -> None:
        path = self.put_catalogue([])
        self.assertEqual(self.document(path, GOOD_STATUS)["entries"], [])
        self.assertIn("\nEntries          0 files, 0 bytes, 0 chunks\n", self.show(path).output)

    def test_revocation_list(self) -> None:
        listed = self.document(self.put_catalogue([], crl=crl()), GOOD_STATUS)["revocationList"]
        self.assertEqual(listed["bytes"], len(crl()))
        self.assertTrue(listed["isList"])
        self.assertEqual(listed["revoked"], 2)
        self.assertEqual(listed["issuer"], "O=Sealkeeper, CN=Development CA that protects nothing")
        self.assertEqual((listed["thisUpdate"], listed["nextUpdate"]), ("2026-01-01T00:00:00Z", "2076-01-01T00:00:00Z"))
        other = self.document(self.put_catalogue([], crl=b"hello"), GOOD_STATUS)["revocationList"]
        self.assertEqual(other, {"bytes": 5, "isList": False, "remark": "no revocation list in DER form"})
        self.assertIn("\nRevocation list  5 bytes, no revocation list in DER form\n", self.show(self.output / "base.bin").output)

    def test_aliased_paths(self) -> None:
        aliased = with_alias(entry_of_bytes("data/bin", b""), {"bin": "Wölfe"})
        path = self.put_catalogue([aliased, entry_of_bytes("plain", b"")])
        document = self.document(path, GOOD_STATUS)
        first, second = document["entries"]
        self.assertEqual((first["path"], first["seenAs"]), ("data/Wölfe", "d"))
        self.assertEqual(len(first["oddities"]), 1)
        self.assertNotIn("seenAs", second)
        self.assertEqual(document["totals"]["oddFiles"], 1)
        text = self.show(path).output
        self.assertIn("  data/Wölfe\n", text)
        self.assertIn("! looks aliased: list and verify see 'd'", text)

    def test_paths_that_are_no_utf16(self) -> None:
        field = b"a\x00\x00\xdcb\x00".ljust(PATH_FIELD_SIZE, b"\0")
        path = self.put_catalogue([replace(entry_of_bytes("x", b""), path_field=field)])
        document = self.document(path, GOOD_STATUS)
        self.assertEqual(document["entries"][0]["path"], "a\\udc00b")
        self.assertIn("is no UTF-16", document["entries"][0]["oddities"][0])

    def test_what_readers_do_not_check_is_noted(self) -> None:
        image = self.put_catalogue([entry_of_bytes("a", b"")]).read_bytes()
        raw_length = self.document(self.put_image(image[:1044] + struct.pack("<I", 5) + image[1048:]), WARNING)
        self.assertEqual(raw_length["notes"], ["raw_length is 5, and the entry block has 528 bytes; no reader checks it"])
        area = self.document(self.put_image(changed_at(image, 1031)), GOOD_STATUS)
        self.assertEqual(area["notes"], ["the signature area has other bytes than zeros after the signature"])
        older = self.put_catalogue([entry_of_bytes("a", b"")], signature_layout=0)
        self.assertEqual(
            self.document(older, GOOD_STATUS)["notes"],
            ["signature layout 0 is an older one: nothing before offset 1,036 is signed"],
        )
        more = catalogue_format.build_from_raw_block(entry_of_bytes("a", b"").record() + b"more", 1)
        document = self.document(self.put_image(catalogue_format.sign(more, GOOD.key)), GOOD_STATUS)
        self.assertEqual(document["notes"], ["the entry block has 4 bytes after its last record, which no reader looks at"])

    def test_control_characters_on_a_terminal(self) -> None:
        path = self.put_catalogue([entry_of_bytes("a\x1b[31mb\nc", b"")])
        self.assertIn("a\x1b[31mb\nc", self.show(path).output)
        shown = run_on_terminal([INSPECT, "show", path], environment={"NO_COLOR": "1"}).shown
        self.assertIn("a\\x1b[31mb\\x0ac", shown)
        self.assertNotIn("\x1b[31m", shown)


class Signatures(ShowTest):
    """The signature, and the certificate beside the file."""

    def state(self, path: Path, status: int, *options: str) -> Dict[str, Any]:
        return self.document(path, status, *options)["signature"]

    def test_bad(self) -> None:
        image = self.put_catalogue([entry_of_bytes("a", b"")]).read_bytes()
        self.assertEqual(self.state(self.put_image(changed_at(image, 20)), WARNING)["state"], "bad")
        unsigned = self.state(self.put_image(catalogue_format.with_signature(image, b"")), WARNING)
        self.assertEqual(unsigned["reason"], "the file holds no signature")
        other = self.state(self.put_image(image, certificate=Credentials.of("other-key").certificate), WARNING)
        self.assertEqual(other["state"], "bad")

    def test_certificate_missing_or_no_certificate(self) -> None:
        path = self.put_catalogue([entry_of_bytes("a", b"")])
        (self.output / "base.cer").unlink()
        missing = self.state(path, WARNING)
        self.assertEqual((missing["state"], missing["reason"]), ("certificate missing", "No such file or directory"))
        (self.output / "base.cer").write_bytes(b"-----BEGIN CERTIFICATE-----\n")
        self.assertEqual(self.state(path, WARNING)["state"], "certificate unusable")

    def test_certificate_of_a_mod(self) -> None:
        path = self.put_catalogue([entry_of_bytes("a", b"")], "my.mod")
        self.assertEqual(self.state(path, GOOD_STATUS)["certificate"], str(self.output / "my.mod.cer"))

    def test_trust(self) -> None:
        path = self.put_catalogue([entry_of_bytes("a", b"")])
        self.assertNotIn("isTrusted", self.state(path, GOOD_STATUS))
        trusted = self.state(path, GOOD_STATUS, "--product", PRODUCT)
        self.assertEqual((trusted["productId"], trusted["isTrusted"]), (PRODUCT, True))
        other = self.state(path, WARNING, "--product", "Other")
        self.assertFalse(other["isTrusted"])
        self.assertEqual(other["trustReason"], "the certificate names another product id")
        self.assertIn("not trusted for product id 'Other'", self.show(path, "--product", "Other").output)
        for folder in ("expired", "revoked", "mod"):
            path = self.put_catalogue([entry_of_bytes("a", b"")], credentials=Credentials.of(folder))
            self.assertEqual(self.state(path, GOOD_STATUS)["state"], "good")
            self.assertFalse(self.state(path, WARNING, "--product", PRODUCT)["isTrusted"])

    def test_signature_of_what_is_not_valid(self) -> None:
        image = self.put_catalogue([entry_of_bytes("a", b"")]).read_bytes()
        raw = entry_of_bytes("a", b"").record()
        signed = catalogue_format.sign(catalogue_format.build_from_raw_block(raw, 2), GOOD.key)
        self.assertEqual(self.state(self.put_image(signed), ERROR)["state"], "good")
        changed = image[:1048] + struct.pack("<I", 2) + image[1052:]
        self.assertEqual(self.state(self.put_image(changed), ERROR)["state"], "bad")


class RuntimeConf(ShowTest):
    """runtime.conf, beside base.cer."""

    def setUp(self) -> None:
        super().setUp()
        shutil.copyfile(GOOD.certificate, self.output / "base.cer")

    def put_plain(self, plain: bytes) -> Path:
        path = self.output / "runtime.conf"
        path.write_bytes(runtime_conf_format.scramble(plain))
        return path

    def test_every_field(self) -> None:
        for number, solution in enumerate(runtime_conf_format.ANTI_TAMPER_SOLUTIONS):
            document = self.document(self.put_runtime_conf(7, b"Reporter", number), GOOD_STATUS)
            self.assertEqual(document["kind"], "runtime.conf")
            conf = runtime_conf_format.parse((self.output / "runtime.conf").read_bytes())
            self.assertEqual(
                self.fields_of(document),
                {
                    "magic": "51 56 52 00",
                    "signature area": conf.signature_area.hex(),
                    "signature length": 256,
                    "version": 1,
                    "instances": 7,
                    "crash reporter": "Reporter",
                    "anti-tamper solution": number,
                },
            )
            self.assertEqual(document["fields"][-1]["meaning"], solution)
            self.assertEqual([field["offset"] for field in document["fields"]], [0, 4, 1028, 1032, 1036, 1040, 1104])
            self.assertEqual(document["signature"]["state"], "good")
            self.assertNotIn("revocationList", document)
            self.assertNotIn("entries", document)

    def test_without_certificate(self) -> None:
        path = self.put_runtime_conf()
        (self.output / "base.cer").unlink()
        document = self.document(path, WARNING)
        self.assertEqual(document["signature"]["certificate"], str(self.output / "base.cer"))
        self.assertEqual(document["signature"]["state"], "certificate missing")

    def test_bad_signature(self) -> None:
        plain = runtime_conf_format.unscramble(self.put_runtime_conf().read_bytes())
        self.assertEqual(self.document(self.put_plain(changed_at(plain, 5)), WARNING)["signature"]["state"], "bad")

    def test_unknown_solution(self) -> None:
        document = self.document(self.put_runtime_conf(1, b"", 99), GOOD_STATUS)
        self.assertEqual(document["notes"], ["anti-tamper solution 99 is not known"])
        self.assertNotIn("meaning", document["fields"][-1])

    def test_bytes_after_the_settings(self) -> None:
        plain = runtime_conf_format.unscramble(self.put_runtime_conf().read_bytes())
        document = self.document(self.put_plain(plain + b"xyz"), WARNING)
        self.assertEqual(document["notes"], ["the file has 3 bytes after its settings, all of which count as signed"])

    def test_another_version(self) -> None:
        document = self.document(self.put_plain(runtime_conf_format.unscramble(runtime_conf_format.build(version=2))), ERROR)
        self.assertEqual(document["invalid"]["field"], "version")
        self.assertEqual(document["invalid"]["offset"], 1032)
        self.assertEqual(document["invalid"]["likelyCauses"], [])

    def test_name_that_is_no_utf8(self) -> None:
        path = self.put_runtime_conf(1, b"a\xff")
        self.assertEqual(self.fields_of(self.document(path, GOOD_STATUS))["crash reporter"], "a\ufffd")


class NotValid(ShowTest):
    """What makes a file invalid, and what probably happened to it."""

    def setUp(self) -> None:
        super().setUp()
        self.image = self.put_catalogue([entry_of_bytes("a", b"hello")], crl=b"crl").read_bytes()

    def assert_cause(self, content: bytes, *words: str) -> None:
        causes = self.invalid(content)["likelyCauses"]
        self.assertEqual(len(causes), 1, causes)
        for word in words:
            self.assertIn(word, causes[0])
        self.assertIn(f"\nLikely           {causes[0]}\n", self.show(self.output / "base.bin").output)

    def test_fields_of_the_entry_block(self) -> None:
        record = entry_of_bytes("a", b"hello").record()
        build = catalogue_format.build_from_raw_block
        count = self.invalid(build(record, 2))
        self.assertEqual((count["field"], count["offset"], count["isInEntryBlock"]), ("entry_count", 1048, False))
        digests = self.invalid(build(record[:524] + struct.pack("<I", 2) + record[528:], 1))
        self.assertEqual((digests["field"], digests["offset"], digests["entryIndex"]), ("digest count", 524, 0))
        self.assertTrue(digests["isInEntryBlock"])
        many = entry_of_bytes("a", b"").record()[:524] + struct.pack("<I", 17) + bytes(17 * 32)
        cut = self.invalid(build(many + b"x", 2))
        self.assertEqual((cut["field"], cut["offset"], cut["entryIndex"]), ("record", 1072, 1))
        magic = self.invalid(catalogue_format.build_from_compressed_block(b"\x1f\x8b", 0, 1, b"12345"))
        self.assertEqual((magic["field"], magic["offset"]), ("entry block magic", 1057))
        width = self.invalid(catalogue_format.build_from_compressed_block(b"\x1f\x9d\x80abc", 0, 1, b"12345"))
        self.assertEqual((width["field"], width["offset"]), ("code width", 1059))
        code = self.invalid(catalogue_format.build_from_compressed_block(b"\x1f\x9d\x8c\x00\x01", 0, 0, b"12345"))
        self.assertEqual((code["field"], code["offset"]), ("code", 1060))

    def test_other_files(self) -> None:
        self.assert_cause(b"", "empty")
        self.assert_cause(bytes(3000), "zeros")
        self.assert_cause(GOOD.certificate.read_bytes(), "a certificate")
        self.assert_cause(b"-----BEGIN CERTIFICATE-----\n" + b"A" * 2000, "a certificate in PEM form")
        self.assert_cause(GOOD.key.read_bytes(), "a private key in PEM form")
        self.assert_cause(crl(), "a revocation list")
        self.assert_cause(b"config_info { version = 2; }\nsearch_options { }\n" + b"#" * 2000, "a configuration file")

    def test_transfer(self) -> None:
        self.assert_cause(self.image[:-5], "cut off: 5 bytes")
        self.assert_cause(self.image + b"12", "2 bytes were added")
        # The signature area is intact. The bytes that change belong to the revocation list.
        image = self.put_catalogue([entry_of_bytes("a", b"")], crl=b"\n\n\n\n").read_bytes()
        self.assert_cause(image.replace(b"\n", b"\r\n"), "transferred as text")
        self.assert_cause(self.image.decode("utf-8", "replace").encode(), "as UTF-8 text")

    def test_runtime_conf(self) -> None:
        stored = self.put_runtime_conf(3, b"Reporter").read_bytes()
        self.assert_cause(runtime_conf_format.unscramble(stored), "not scrambled")
        self.assert_cause(runtime_conf_format.scramble(stored), "scrambled twice")
        self.assert_cause(stored[:900], "was cut off: 208 bytes")
        self.assert_cause(changed_at(stored, 700), "was changed")

    def test_damaged_beginning(self) -> None:
        self.assert_cause(changed_at(self.image, 0), "damaged beginning")
        self.assert_cause(changed_at(self.image, 5), "damaged beginning")


@with_limited_address_space
class Memory(ShowTest):
    """Small files that claim to be large. The program itself uses 20 MB."""

    MEGABYTES = 400

    def run_limited(self, *arguments: object) -> subprocess.CompletedProcess:
        """Run with 100 MB of address space, a quarter of the size of the blocks."""
        limit = 100 * MIB
        return subprocess.run(
            [str(INSPECT), *map(str, arguments)],
            capture_output=True,
            timeout=TIMEOUT_SECONDS,
            check=False,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)),
        )

    def put_bomb(self, begin: bytes, count: int) -> Path:
        block = bomb(begin, self.MEGABYTES)
        path = self.put_image(catalogue_format.build_from_compressed_block(block, 0, count))
        self.assertLess(path.stat().st_size, MIB)
        return path

    def test_many_entries(self) -> None:
        count = self.MEGABYTES * MIB // 528
        path = self.put_bomb(bytes(4), count)
        run = self.run_limited("show", "--limit", "1", path)
        self.assertEqual((run.returncode, run.stderr), (WARNING, b""))
        self.assertTrue(run.stdout.endswith(f"\nand {count - 1:,} more files\n".encode()))
        compared = self.run_limited("compare", path, path)
        self.assertEqual((compared.returncode, compared.stdout), (2, b""))
        self.assertEqual(compared.stderr, b"sealkeeper-inspect: out of memory\n")

    def test_entry_of_many_digests(self) -> None:
        path = self.put_bomb(bytes(526) + b"\x80\0", 1)
        run = self.run_limited("show", path)
        self.assertEqual((run.returncode, run.stderr), (WARNING, b""))
        self.assertIn(b"has 8,388,608 digests; a file of its size has 0 chunks", run.stdout)


class NotRead(InspectTest):
    """Files that cannot be read at all."""

    def assert_unread(self, path: Path, reason: str) -> None:
        run = self.inspect("show", path)
        self.assertEqual(run.status, ERROR)
        self.assertEqual(run.output, "")
        errors = f"sealkeeper-inspect: '{path}': cannot be read: {reason}\n"
        self.assertEqual(run.errors, errors)
        run = self.inspect("show", path, "--json")
        self.assertEqual(run.errors, errors)
        self.assert_json_failure(run, {"file": str(path)})

    def test_reasons(self) -> None:
        self.assert_unread(self.directory / "gone", "No such file or directory")
        self.assert_unread(self.game, "it is a directory")
        fifo = self.directory / "fifo"
        os.mkfifo(fifo)
        self.assert_unread(fifo, "it is a FIFO, which is not opened")
        self.assert_unread(GOOD.certificate / "x", "Not a directory")

    def test_usage(self) -> None:
        for arguments in (
            [],
            ["a", "b"],
            ["a", "--limit", "x"],
            ["a", "--limit=-1"],
            ["a", "--product", ""],
            ["a", "--nix"],
        ):
            run = self.inspect("show", *arguments)
            self.assertEqual(run.status, USAGE, arguments)
            self.assertEqual(run.output, "")
        self.assertIn("--digests", self.inspect("show", "--help").output)

    def test_help_and_version_that_cannot_be_written_are_told(self) -> None:
        for arguments in (["--version"], ["--help"], ["show", "--help"]):
            with self.subTest(arguments=arguments), open("/dev/full", "wb") as full:
                run = subprocess.run([INSPECT, *arguments], stdout=full, stderr=subprocess.PIPE, check=False, timeout=60)
                self.assertEqual(run.returncode, ERROR)
                self.assertIn(b"No space left on device", run.stderr)



if __name__ == "__main__":
    unittest.main()
