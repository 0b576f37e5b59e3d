"""The runs that README.md and the pages of docs/inspect show are what the programs print.

Those pages show a run in an indented block: after "$ " the command, and below it the output.
"""

from __future__ import annotations

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import Dict, List

from document_blocks import ROOT, Block, page
from page_commands import Shown, shown_in, without_progress

RUN = re.compile(r"^    \$ .*\n(?:    .*\n|\n(?=    ))*", re.MULTILINE)
# How a run begins, which the README leaves out.
HEAD = re.compile(r"\A.*\n\n\[Info\] Provided command line arguments:\n(?:\[Info\]     arg\[\d+\]: .*\n)*")
# What differs from one run to the next: the time, the key and the digests of files that have no meaning.
VARYING = [
    (re.compile(r"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d UTC"), "TIME"),
    (re.compile(r"[\d,]+ days left"), "DAYS left"),
    (re.compile(r"(serial +)[0-9A-F]+"), r"\1NUMBER"),
    (re.compile(r"(signature area +)[0-9a-f]{16}"), r"\1BYTES"),
    (re.compile(r"(hash catalogue, )[\d,]+ bytes"), r"\1BYTES"),
    (re.compile(r"(compressed_length +)[\d,]+"), r"\1NUMBER"),
    (re.compile(r"is [\d,]+, where the file has [\d,]+ bytes"), "is N, where the file has N bytes"),
]
CONFIG = "config_info { version = 2; }\nsearch_options {\n%s\n}\n"
MEGABYTE = 1_000_000
TIMEOUT_SECONDS = 60


def runs_in(text: str) -> List[Shown]:
    """All runs that a text shows, in its order."""
    blocks = (re.sub(r"^    ", "", shown, flags=re.MULTILINE) for shown in RUN.findall(text))
    return [run for block in blocks for run in shown_in(Block("console", block.rstrip("\n") + "\n", ""))]


def without_varying(text: str) -> str:
    """A text with a word in place of what differs from one run to the next."""
    for pattern, replacement in VARYING:
        text = pattern.sub(replacement, text)
    return text


class TranscriptTest(unittest.TestCase):
    """Runs what a page shows, in a directory of its own."""

    maxDiff = None

    def setUp(self) -> None:
        self.directory = Path(tempfile.mkdtemp(prefix="sealkeeper-transcripts-")).resolve()
        self.addCleanup(shutil.rmtree, self.directory, ignore_errors=True)
        self.addCleanup(os.umask, os.umask(0o022))
        for name, variable in (("sealkeeper", "SEALKEEPER_PROGRAM"), ("sealkeeper-inspect", "SEALKEEPER_INSPECT")):
            (self.directory / name).symlink_to(Path(os.environ[variable]).resolve())
        self.credentials = Path(os.environ["SEALKEEPER_TEST_CREDENTIALS_DIR"]).resolve() / "good"

    def put(self, sizes: Dict[str, int], game: str = ".") -> None:
        """Write files of these sizes."""
        for name, size in sizes.items():
            path = self.directory / game / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.touch()
            os.truncate(path, size)

    def shell(self, command: str) -> "subprocess.CompletedProcess[str]":
        """Run a command; standard error is part of what a terminal shows."""
        path = f"{self.directory}{os.pathsep}{os.environ['PATH']}"
        return subprocess.run(["bash", "-c", command], cwd=self.directory, env={**os.environ, "PATH": path}, check=False,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              encoding="utf-8", timeout=TIMEOUT_SECONDS)

    def must(self, command: str) -> None:
        """Run a command that has to succeed."""
        run = self.shell(command)
        self.assertEqual(run.returncode, 0, f"{command}\n{run.stdout}")

    def issue(self, product: str) -> None:
        """Put the key and the certificate of a product where the program looks for them."""
        self.must(f"'{ROOT / 'tools/issue-credentials.sh'}' '{product}' .")

    def seal(self, game: str, rules: str, *options: str, product: str = "harbortale-demo") -> None:
        """Generate with the credentials that are here."""
        (self.directory / "game.cfg").write_text(CONFIG % rules, encoding="utf-8")
        self.must(f"sealkeeper -productid {product} {' '.join(options)} -target_game_dir '{self.directory / game}' game.cfg")

    def check(self, shown: Shown, printed: str) -> None:
        """Hold what a page shows against what was printed."""
        expected = Shown(shown.command, without_varying("\n".join(shown.output)).split("\n"))
        got = without_varying(printed)
        if not expected.matches(got):
            self.assertMultiLineEqual(got, "\n".join(expected.output) + "\n", shown.command)


class Readme(TranscriptTest):
    """The first screen is what stands above the first heading of the second level."""

    def setUp(self) -> None:
        super().setUp()
        self.first_screen, self.sections = (ROOT / "README.md").read_text(encoding="utf-8").split("\n## ", 1)

    def test_first_screen(self) -> None:
        self.issue("harbortale-demo")
        (self.directory / "harbortale.cfg").write_text(
            CONFIG % 'include_paths = ["HarborTale", "lib/*.so", "Content"]'
            + 'runtime_configuration { crash_reporter_name = "CrashReporter" }\n')
        game = self.directory / "games/harbortale"
        self.put({"HarborTale": 3, "lib/libphysics.so": 2, "Content/Music/main theme.ogg": 2,
                  "Content/Paks/world.pak": 2}, "games/harbortale")
        runs = runs_in(self.first_screen.replace("/games/harbortale", str(game)))
        self.assertEqual([run.command.split()[0] for run in runs], ["./sealkeeper", "echo"] * 4)
        for run, status in zip(runs[::2], runs[1::2]):
            if run is runs[-2]:
                (game / "Content/Paks/world.pak").write_bytes(b"\0!")
                (game / "lib/libphysics.so").unlink()
            with self.subTest(run.command):
                finished = self.shell(run.command)
                self.check(run, without_progress(HEAD.sub("", finished.stdout)))
                self.assertEqual([str(finished.returncode)], status.output)

    def test_sections(self) -> None:
        (self.directory / "build").mkdir()
        (self.directory / "build/demo").symlink_to(self.directory)
        game = self.directory / "games/harbortale"
        self.put({"HarborTale": 3, "lib/libphysics.so": 2}, "games/harbortale")
        (self.directory / "game.cfg").write_text(CONFIG % '    exclude_paths = ["lib"]')
        run, = runs_in(self.sections.replace("/games/harbortale", str(game)))
        self.check(run, self.shell(run.command).stdout)


class Companion(TranscriptTest):
    """The examples of docs/inspect."""

    def assert_shown(self, name: str, commands: int = 1) -> None:
        """Run all that a page shows."""
        runs = runs_in(page(f"inspect/{name}.md"))
        self.assertEqual(len(runs), commands)
        for run in runs:
            with self.subTest(run.command):
                self.check(run, self.shell(run.command).stdout)

    def test_check(self) -> None:
        self.issue("harbortale-demo")
        self.put({"HarborTale": 9, "lib/libphysics.so": 9, "Content/Paks/world.pak": 9, "Content/Paks/sea.pak": 9,
                  "Content/Music/theme.ogg": 9, "Content/rules.txt": 9}, "HarborTale")
        self.seal("HarborTale", 'include_paths = ["HarborTale", "lib", "Content"]')
        game = self.directory / "HarborTale"
        self.put({"Saved/slot1.sav": 1, "lib/libcheat.so": 1}, "HarborTale")
        (game / "Content/Paks/world.pak").write_bytes(b"other one")
        (game / "Content/Music").rename(self.directory / "Music")
        (game / "Content/Music").symlink_to("../../Music")
        (game / "Quorvane/Certificates/runtime.conf").unlink()
        self.assert_shown("check")

    def seal_with_list(self, *options: str) -> None:
        """Seal the game of the pages on catalogues, with an alias."""
        self.seal(".", 'include_paths = ["data"]\nalias_paths = ( ["odd", "other"] );', *options,
                  f"-inkey '{self.credentials / 'base_private.key'}'", f"-incert '{self.credentials / 'base_public.cer'}'",
                  product="TestProduct42")

    def test_show(self) -> None:
        self.put({"data/a.txt": 5, "data/big.pak": 9 * MEGABYTE, "data/empty.bin": 0, "data/odd/Wölfe 日本.dat": 1})
        self.seal_with_list(f"-incrl '{ROOT / 'trust/development/crl.der'}'")
        whole = (self.directory / "Quorvane/Certificates/base.bin").read_bytes()
        (self.directory / "base.bin").write_bytes(whole[:-100])
        self.assert_shown("show", 2)

    def test_compare(self) -> None:
        self.put({"data/a.txt": 5, "data/big.pak": 9 * MEGABYTE, "data/empty.bin": 0, "data/same.dat": 1})
        self.seal_with_list(f"-incrl '{ROOT / 'trust/development/crl.der'}'")
        self.must("cp Quorvane/Certificates/base.bin old.bin")
        (self.directory / "data/empty.bin").unlink()
        self.put({"data/a.txt": 6, "data/new.txt": 3})
        with open(self.directory / "data/big.pak", "r+b") as changed:
            changed.write(b"changed")
        self.seal_with_list()
        self.assert_shown("compare")

    def test_rules(self) -> None:
        self.put({"HarborTale": 300_000, "lib/libphysics.so": 120_000,
                  "Content/world.pak": 1_100 * MEGABYTE, "lib/libphysics.pdb": 900_000, ".git/index": 400}, "harbortale")
        (self.directory / "harbortale/lib/libphysics.so.1").symlink_to("libphysics.so")
        (self.directory / "harbortale.cfg").write_text(
            CONFIG % '    exclude_paths = ["logs"]\n    exclude_extensions = [".pdb"]')
        self.assert_shown("rules")

    def test_credentials(self) -> None:
        self.issue("Harbor Tale")
        self.must("openssl x509 -inform DER -in base_public.cer -out pem.cer")
        self.assert_shown("credentials")

    def test_trust(self) -> None:
        self.assert_shown("trust")


if __name__ == "__main__":
    unittest.main()
