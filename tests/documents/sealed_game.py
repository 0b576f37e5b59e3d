"""A game in a fresh directory, and runs of the two programs on it with the test credentials."""

from __future__ import annotations

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import List, Union

PROGRAM = Path(os.environ["SEALKEEPER_PROGRAM"]).resolve()
INSPECT = Path(os.environ["SEALKEEPER_INSPECT"]).resolve()
CREDENTIALS = Path(os.environ["SEALKEEPER_TEST_CREDENTIALS_DIR"]).resolve()
PRODUCT = "TestProduct42"
TIMEOUT_SECONDS = 60

LISTED = "[Info] "

PathOrText = Union[Path, str]
Finished = subprocess.CompletedProcess


class SealedGameTest(unittest.TestCase):
    """Base of the tests for what pages say about rules."""

    maxDiff = None

    def setUp(self) -> None:
        self.directory = Path(tempfile.mkdtemp(prefix="sealkeeper-documents-")).resolve()
        self.addCleanup(shutil.rmtree, self.directory, ignore_errors=True)
        self.game = self.directory / "game"
        self.game.mkdir()

    def run_program(self, program: Path, *arguments: PathOrText) -> "Finished[str]":
        """Run one of the programs. It must end by itself and write nothing to standard error."""
        finished = subprocess.run(
            [str(part) for part in (program, *arguments)],
            cwd=self.directory,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            encoding="utf-8",
            errors="surrogateescape",
            timeout=TIMEOUT_SECONDS,
            check=False,
        )
        self.assertGreaterEqual(finished.returncode, 0, "no signal ends it")
        self.assertEqual(finished.stderr, "")
        return finished

    def seal(self, config: PathOrText, *options: str, credentials: PathOrText = "good") -> "Finished[str]":
        """Generate with one of the test credentials, or with those in a directory."""
        pair = CREDENTIALS / credentials
        return self.run_program(
            PROGRAM, *options, "-productid", PRODUCT, "-inkey", pair / "base_private.key",
            "-incert", pair / "base_public.cer", "-target_game_dir", self.game, config)

    def verify(self, *options: str) -> "Finished[str]":
        """Verify the game."""
        return self.run_program(PROGRAM, *options, "-productid", PRODUCT, "verify", self.game)

    def listed(self) -> List[str]:
        """The paths in the catalogue, sorted."""
        run = self.run_program(PROGRAM, "list", self.game / "Quorvane/Certificates/base.bin")
        self.assertEqual(run.returncode, 0, run.stdout)
        lines = run.stdout.split(" files in catalogue:\n")[1].splitlines()
        return sorted(line[len(LISTED):] for line in lines)
