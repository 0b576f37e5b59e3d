"""A reader who types what docs/GUIDE.md says sees what it shows."""

from __future__ import annotations

import os
import re
import shlex
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import List

from document_blocks import ROOT, Block, blocks_of, page
from page_commands import without_progress

CONTINUED = "\\\n"
# Printed after each command, whose own output may lack a line end.
MARK = "\x01"
HOME_IN_GUIDE = "/home/you"
ELISION = re.escape("...\n")
INDENTED = re.compile(r"^    (.*)$", re.MULTILINE)
SAVED_AS = re.compile(r"[Ss]ave this as `([^`]+)`")
TIMEOUT_SECONDS = 120


class Typed:
    """A command as typed, and the pattern of the output shown below it."""

    def __init__(self, text: str) -> None:
        lines = text.splitlines(keepends=True)
        length = 1
        while lines[length - 1].endswith(CONTINUED):
            length += 1
        self.command = "".join(lines[:length])
        self.shown = "".join(lines[length:])

    def is_shown(self, output: str) -> bool:
        """Whether the page shows this output."""
        pattern = re.escape(self.shown).replace(ELISION, r"(?:.*\n)*?")
        return re.fullmatch(pattern, output) is not None


def typed_in(block: Block) -> List[Typed]:
    """The commands in a console block."""
    return [Typed(part) for part in re.split(r"^\$ ", block.text, flags=re.MULTILINE)[1:]]


def script_of(blocks: List[Block]) -> str:
    """A shell script that follows the page from beginning to end."""
    parts = []
    for block in blocks:
        saved = SAVED_AS.search(block.lead)
        if saved:
            parts.append(f"printf %s {shlex.quote(block.text)} > {saved[1]}\n")
        for typed in typed_in(block) if block.kind == "console" else []:
            # Passes the status on to the next command, which may print it.
            parts.append(f"{typed.command}status=$?; printf '{MARK}'; (exit $status)\n")
    return "".join(parts)


class Guide(unittest.TestCase):
    """The page as typed by a new user with an empty home directory."""

    maxDiff = None

    def setUp(self) -> None:
        self.home = Path(tempfile.mkdtemp(prefix="sealkeeper-guide-")).resolve()
        self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
        # Outside the home directory: the page calls the programs by fixed names, but they may have others.
        self.programs = Path(tempfile.mkdtemp(prefix="sealkeeper-programs-")).resolve()
        self.addCleanup(shutil.rmtree, self.programs, ignore_errors=True)
        for name, variable in (("sealkeeper", "SEALKEEPER_PROGRAM"), ("sealkeeper-inspect", "SEALKEEPER_INSPECT")):
            (self.programs / name).symlink_to(Path(os.environ[variable]).resolve())

    def follow(self, script: str) -> List[str]:
        """The output of each command in a script, on either stream."""
        path = os.pathsep.join([str(self.programs), str(ROOT / "tools"), os.environ["PATH"]])
        finished = subprocess.run(
            ["bash"],
            input=script,
            cwd=self.home,
            env=dict(os.environ, HOME=str(self.home), PATH=path),
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            encoding="utf-8",
            timeout=TIMEOUT_SECONDS,
            check=False,
        )
        printed = finished.stdout.replace(str(self.home), HOME_IN_GUIDE)
        return [without_progress(output) for output in printed.split(MARK)[:-1]]

    def test_every_command_prints_what_is_shown(self) -> None:
        blocks = blocks_of(page("GUIDE.md"))
        commands = [typed for block in blocks if block.kind == "console" for typed in typed_in(block)]
        outputs = self.follow(script_of(blocks))
        self.assertEqual(len(outputs), len(commands))
        self.assertGreater(len(commands), 20)
        for typed, output in zip(commands, outputs):
            with self.subTest(typed.command):
                if not typed.is_shown(output):
                    self.assertMultiLineEqual(output, typed.shown)

    def test_scripts_of_the_first_step_are_there(self) -> None:
        typed = INDENTED.findall(page("GUIDE.md").split("## 2. ")[0])
        scripts = [shlex.split(line) for line in typed if re.match(r"(\./|tools/)", line)]
        self.assertEqual([script[0] for script in scripts], ["./demo.sh", "tools/install-packages.sh"])
        for path, *options in scripts:
            self.assertTrue(os.access(ROOT / path, os.X_OK), path)
            for option in options:
                self.assertIn(f"        {option}) ", (ROOT / path).read_text(encoding="utf-8"))
        # What cpack needs is installed before it is called.
        self.assertLess(typed.index("tools/install-packages.sh --package"), typed.index("(cd build/demo && cpack)"))

    def test_every_block_is_typed_or_saved(self) -> None:
        for block in blocks_of(page("GUIDE.md")):
            with self.subTest(block.text):
                self.assertTrue(block.kind == "console" or SAVED_AS.search(block.lead))


if __name__ == "__main__":
    unittest.main()
