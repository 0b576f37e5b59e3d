"""Where `cmake --install` puts the files, and that no installed file contains the build path."""

from __future__ import annotations

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["SEALKEEPER_BUILD_DIR"])
PROGRAMS = {"sealkeeper"} | ({"sealkeeper-inspect"} if os.environ.get("SEALKEEPER_INSPECT") else set())


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        cls.prefix = Path(temporary.name)
        subprocess.run([os.environ["SEALKEEPER_CMAKE"], "--install", BUILD, "--prefix", cls.prefix, "--strip"],
                       check=True, capture_output=True)

    def test_programs_run(self) -> None:
        self.assertEqual({path.name for path in (self.prefix / "bin").iterdir()}, PROGRAMS)
        run = subprocess.run([self.prefix / "bin/sealkeeper", "-h"], capture_output=True, check=False)
        self.assertIn(b"Anti-Cheat Sealkeeper v", run.stdout)
        if "sealkeeper-inspect" in PROGRAMS:
            run = subprocess.run([self.prefix / "bin/sealkeeper-inspect", "--version"], capture_output=True, check=True)
            self.assertTrue(run.stdout.startswith(b"sealkeeper-inspect "))

    def test_both_have_one_version(self) -> None:
        """Both have the version in the top-level CMakeLists.txt, the only place that sets it."""
        text = (ROOT / "CMakeLists.txt").read_text()
        version = re.search(r"^    VERSION ([0-9.]+)$", text, re.MULTILINE).group(1).encode()
        for program, option in (("sealkeeper", "-h"), ("sealkeeper-inspect", "--version")):
            if program in PROGRAMS:
                run = subprocess.run([self.prefix / "bin" / program, option], capture_output=True, check=False)
                self.assertRegex(run.stdout.split(b"\n")[0], rb"\b[v ]?" + version.replace(b".", rb"\.") + rb"\b")

    def test_documents_and_tools(self) -> None:
        """What they hold is the matter of another test."""
        share = self.prefix / "share"
        for name in ("doc/sealkeeper/README.md", "doc/sealkeeper/docs/GUIDE.md", "sealkeeper/tools/issue-credentials.sh"):
            self.assertTrue((share / name).is_file(), name)

    def test_nothing_tells_where_it_was_built(self) -> None:
        """Builds in different folders must give the same bytes."""
        for program in PROGRAMS:
            content = (self.prefix / "bin" / program).read_bytes()
            for place in (ROOT / "src", BUILD):
                self.assertEqual(content.find(str(place).encode()), -1, f"{program} names {place}")


if __name__ == "__main__":
    unittest.main()
