"""Each command in docs/CERTIFICATES.md does what the page says, and the codes in its table are the program's.

Only the compilation in "cmake --build" is not run; cmake_without_compiling.py replaces it. Everything else runs
unchanged, in a home directory of its own.
"""

from __future__ import annotations

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from certificate_cases import CASES, Authority, codes_of
from document_blocks import ROOT, Block, blocks_of, page
from page_commands import Shell, Shown, shown_in

HERE = Path(__file__).resolve().parent
PAGE = page("CERTIFICATES.md")
KEY = "credentials/harbortale-2/base_private.key"
VERSION = subprocess.run(["openssl", "version"], capture_output=True, text=True, check=True).stdout.strip()
of_openssl_3 = unittest.skipIf(re.match("OpenSSL [3-9]", VERSION) is None, f"openssl is here {VERSION}")


def new_directory(test: "type[unittest.TestCase]") -> Path:
    directory = tempfile.TemporaryDirectory()
    test.addClassCleanup(directory.cleanup)
    return Path(directory.name)


@of_openssl_3
class Commands(unittest.TestCase):
    """Runs the page once, from the first block to the last."""

    @classmethod
    def setUpClass(cls) -> None:
        directory = new_directory(cls)
        cls.home, cls.sources = directory / "home", directory / "sources"
        for made in (cls.home, cls.sources, directory / "bin"):
            made.mkdir()
        # The page builds inside the source folder. Links to the sources keep that away from a real build folder.
        for entry in ROOT.iterdir():
            if entry.name != "build":
                (cls.sources / entry.name).symlink_to(entry)
        cmake = directory / "bin/cmake"
        cmake.write_text(f"#!/bin/sh\nexec '{sys.executable}' -B '{HERE / 'cmake_without_compiling.py'}' \"$@\"\n")
        cmake.chmod(0o755)
        cls.environment = {**os.environ, "HOME": str(cls.home), "PATH": f"{directory / 'bin'}:{os.environ['PATH']}"}

    def secret(self) -> str:
        """The key that a build server would provide."""
        key = self.home / KEY
        return key.read_text() if key.exists() else ""

    def test_page(self) -> None:
        blocks = [block for block in blocks_of(PAGE) if block.kind in ("sh", "console")]
        self.assertGreater(len(blocks), 20)
        for block in blocks:
            Shell(self.sources, {**self.environment, "SIGNING_KEY": self.secret()}).run_block(block)
        self.check_what_is_built_in()
        self.check_modes_of_keys()

    def check_what_is_built_in(self) -> None:
        built = self.sources / "build/release"
        self.assertEqual((built / "kAuthorityDer").read_bytes(), (self.home / "authority/ca.der").read_bytes())
        self.assertEqual((built / "kRevocationListDer").read_bytes(), (self.home / "authority/crl.der").read_bytes())

    def check_modes_of_keys(self) -> None:
        keys = list(self.home.rglob("*_private.key"))
        self.assertEqual(len(keys), 4)
        for key in keys:
            self.assertEqual(oct(key.stat().st_mode & 0o777), oct(0o600), key.name)


@of_openssl_3
class Codes(unittest.TestCase):
    """The table of codes, row by row."""

    @classmethod
    def setUpClass(cls) -> None:
        cls.authority = Authority(new_directory(cls))

    def test_every_row_is_tried(self) -> None:
        self.assertEqual(sorted(what for _, what in codes_of(PAGE)), sorted(CASES))

    def test_nothing_is_wrong(self) -> None:
        case = self.authority.case()
        self.assertEqual((case.generate(), case.verify()), (0, 0))

    def test_older_program_trusts_what_is_revoked(self) -> None:
        case = CASES["the product's certificate is revoked"](self.authority)
        case.revocation_list = self.authority.case().revocation_list
        self.assertEqual((case.generate(), case.verify()), (0, 0))

    def test_rows(self) -> None:
        for code, what in codes_of(PAGE):
            with self.subTest(what):
                case = CASES[what](self.authority)
                self.assertEqual((case.generate(), case.verify()), (code, code))

    def test_first_row_is_told(self) -> None:
        ranks = [code for code, _ in codes_of(PAGE)]
        for code, case in self.authority.cases_with_two_faults():
            with self.subTest(code):
                self.assertEqual(case.verify(), min(code, key=ranks.index))


class Reading(unittest.TestCase):
    """How the page is parsed."""

    def test_text_left_out(self) -> None:
        self.assertTrue(Shown("x", ["a ... c", "...", "d"]).matches("a b c\n1\n2\nd\n"))
        self.assertFalse(Shown("x", ["a ... c", "...", "d"]).matches("a b c\n1\n2\n"))
        self.assertFalse(Shown("x", ["a"]).matches("a\nb\n"))

    def test_command_of_several_lines(self) -> None:
        block = Block("console", "$ a \\\n  b\nc\n$ echo $?\n1\n", "")
        self.assertEqual(shown_in(block), [Shown("a \\\n  b", ["c"]), Shown("echo $?", ["1"])])


if __name__ == "__main__":
    unittest.main()
