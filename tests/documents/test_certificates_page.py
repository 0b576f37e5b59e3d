"""Each command in docs/CERTIFICATES.md does what the page says, and the codes in its table are the program's.

Only the compilation in "cmake --build" is not run; cmake_without_compiling.py replaces it. Everything else runs
unchanged, in a home directory of its own.
"""

from __future__ import annotations

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from certificate_cases import CASES, LATER, PRODUCT, PRODUCTS, Authority, codes_of
from document_blocks import ROOT, Block, blocks_of, page
from page_commands import Shell, Shown, shown_in

HERE = Path(__file__).resolve().parent
PAGE = page("CERTIFICATES.md")
KEY = "credentials/harbortale-2/base_private.key"
VERSION = subprocess.run(["openssl", "version"], capture_output=True, text=True, check=True).stdout.strip()
of_openssl_3 = unittest.skipIf(re.match("OpenSSL [3-9]", VERSION) is None, f"openssl is here {VERSION}")


def section(heading: str) -> str:
    """What stands under a heading of the page, up to the next one of any level."""
    return re.split(r"^##+ ", PAGE.split(f"\n{heading}\n")[1], flags=re.MULTILINE)[0]


def openssl_output(*arguments: object) -> str:
    """What openssl prints."""
    return subprocess.run(["openssl", *map(str, arguments)], capture_output=True, text=True, check=True).stdout


def serial_of(certificate: Path) -> str:
    """The serial number of a certificate in DER, in hexadecimal."""
    return openssl_output("x509", "-inform", "DER", "-in", certificate, "-noout", "-serial").strip().split("=")[1]


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
        # What a build server's user has: others may read what is made.
        cls.addClassCleanup(os.umask, os.umask(0o022))
        cls.environment = {**os.environ, "HOME": str(cls.home), "PATH": f"{directory / 'bin'}:{os.environ['PATH']}"}

    def secret(self) -> str:
        """The key that a build server would provide."""
        key = self.home / KEY
        return key.read_text() if key.exists() else ""

    def run_blocks(self, text: str, *kinds: str) -> None:
        """Run the blocks of these kinds in a part of the page."""
        for block in blocks_of(text):
            if block.kind in kinds:
                if "$SIGNING_KEY" in block.text:
                    self.remove_outputs()
                Shell(self.sources, {**self.environment, "SIGNING_KEY": self.secret()}).run_block(block)

    def remove_outputs(self) -> None:
        """A build server begins with a tree in which nothing has been sealed."""
        shutil.rmtree(self.home / "harbortale/Quorvane")

    def test_page(self) -> None:
        self.assertGreater(len([block for block in blocks_of(PAGE) if block.kind in ("sh", "console")]), 20)
        self.run_blocks(PAGE, "sh", "console")
        self.check_what_is_built_in()
        self.check_modes_of_keys()
        self.check_modes_of_outputs()
        self.check_that_no_renewal_escapes_the_list()

    def check_what_is_built_in(self) -> None:
        built = self.sources / "build/release"
        self.assertEqual((built / "kAuthorityDer").read_bytes(), (self.home / "authority/ca.der").read_bytes())
        self.assertEqual((built / "kRevocationListDer").read_bytes(), (self.home / "authority/crl.der").read_bytes())

    def check_modes_of_keys(self) -> None:
        keys = list(self.home.rglob("*_private.key"))
        self.assertEqual(len(keys), 4)
        for key in keys:
            self.assertEqual(oct(key.stat().st_mode & 0o777), oct(0o600), key.name)
        for folder in ("authority", "authority/issued"):
            self.assertEqual(oct((self.home / folder).stat().st_mode & 0o777), oct(0o700), folder)

    def check_modes_of_outputs(self) -> None:
        """Whoever installs the game verifies it, and seldom is the user who sealed it."""
        outputs = self.home / "harbortale/Quorvane"
        modes = {path.name: oct(path.stat().st_mode & 0o777) for path in [outputs, *outputs.rglob("*")]}
        wanted = {"Quorvane": 0o755, "Certificates": 0o755, "base.bin": 0o644, "base.cer": 0o644, "runtime.conf": 0o644}
        self.assertEqual(modes, {name: oct(mode) for name, mode in wanted.items()})

    def check_that_no_renewal_escapes_the_list(self) -> None:
        """The commands for renewing twice more, and then those for revoking a second time."""
        certificate = self.home / "credentials/harbortale/base_public.cer"
        issued = {serial_of(certificate)}
        for _ in range(2):
            self.run_blocks(section("### A newer product certificate"), "sh")
            issued.add(serial_of(certificate))
        self.assertEqual(len(issued), 3)
        revoking = [block for block in blocks_of(section("## Revoking")) if "-revoke" in block.text]
        self.run_blocks(f"```sh\n{revoking[0].text}```\n", "sh")
        revoked = openssl_output("crl", "-inform", "DER", "-in", self.home / "authority/crl.der", "-noout", "-text")
        for serial in issued:
            self.assertIn(serial, revoked)
        self.assertNotIn(serial_of(self.home / "credentials/harbortale-2/base_public.cer"), revoked)


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

    def test_star_takes_one_part_of_the_product_id(self) -> None:
        taken, part = re.search(r"`(\*\.\w+)` takes `(\w+\.\w+)`", PAGE).group(1, 2)
        case = self.authority.case(self.authority.issue(self.authority.own, taken))
        for case.product, code in ((part, 0), (f"more.{part}", 31), (taken[2:], 31)):
            with self.subTest(case.product):
                self.assertEqual((case.generate(), case.verify()), (code, code))

    def test_renewal_keeps_alternative_names_by_the_line_shown(self) -> None:
        line = re.search(r"^    (subjectAltName = .*)$", PAGE, re.MULTILINE).group(1)
        for extension, code in ((line, 0), ("", 31)):
            with self.subTest(extension):
                case = self.authority.case(self.authority.issue(self.authority.own, "a name", PRODUCTS + extension))
                self.assertEqual((case.generate(), case.verify()), (code, code))

    def test_older_program_takes_what_a_newer_authority_issued(self) -> None:
        newer = self.authority.authority(dates=LATER)
        case = self.authority.case(self.authority.issue(newer, PRODUCT))
        self.assertEqual((case.generate(), case.verify()), (0, 0))

    def test_mods_stay_good_with_the_key_of_the_product(self) -> None:
        mod = self.authority.issue(self.authority.product, "mod", "basicConstraints = critical, CA:FALSE")
        for key, is_chain in ((self.authority.product.key, True), (self.authority.new_key(2048), False)):
            with self.subTest(is_chain=is_chain):
                renewed = self.authority.issue(self.authority.own, PRODUCT, key=key)
                run = subprocess.run(["openssl", "verify", "-CAfile", self.authority.own.certificate, "-untrusted",
                                      renewed.certificate, mod.certificate], capture_output=True, check=False)
                self.assertEqual(run.returncode == 0, is_chain, run.stderr)

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
