"""What the scripts that users run first say when they cannot go on, and which files they leave alone."""

from __future__ import annotations

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


class Scripts(unittest.TestCase):
    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)

    def run_script(self, *command, path: "str | None" = None, answer: bytes = b"") -> "subprocess.CompletedProcess[bytes]":
        environment = dict(os.environ)
        if path is not None:
            environment["PATH"] = path
        return subprocess.run([shutil.which("bash"), *command], input=answer, capture_output=True, check=False,
                              timeout=60, env=environment)

    def test_the_demonstration_asks_before_it_replaces_signed_files(self) -> None:
        """The question must come before the build, which would take minutes."""
        certificates = self.directory / "Quorvane/Certificates"
        certificates.mkdir(parents=True)
        for name in ("base.bin", "runtime.conf"):
            (certificates / name).write_bytes(b"signed by a release")
        for answer in (b"", b"n\n", b"\n"):
            run = self.run_script(ROOT / "demo.sh", self.directory, answer=answer)
            self.assertEqual(run.returncode, 1)
            self.assertIn(b"holds signed files: base.bin runtime.conf.", run.stdout)
            self.assertIn(b"nothing was changed", run.stderr)
        self.assertEqual((certificates / "base.bin").read_bytes(), b"signed by a release")

    def stub(self, name: str, text: str) -> None:
        path = self.directory / name
        path.write_text("#!/bin/sh\n" + text)
        path.chmod(0o755)

    def test_packages_that_nobody_here_may_install_are_named(self) -> None:
        for tool in ("grep", "dirname"):
            (self.directory / tool).symlink_to(shutil.which(tool))
        self.stub("uname", "echo Linux\n")
        self.stub("id", "echo 1000\n")
        self.stub("apt-get", "exit 1\n")
        self.stub("dpkg-query", "exit 1\n")
        run = self.run_script(ROOT / "tools/install-packages.sh", path=str(self.directory))
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"There is no sudo here", run.stderr)
        self.assertRegex(run.stderr, rb"apt-get install --no-install-recommends .*\bninja-build\b.*\blibmbedtls-dev\b")
        self.assertNotIn(b"command not found", run.stderr)

    def test_the_formula_is_of_this_version(self) -> None:
        version = re.search(r"^    VERSION ([0-9.]+)$", (ROOT / "CMakeLists.txt").read_text(), re.MULTILINE).group(1)
        self.assertIn(f"sealkeeper-{version}.tar.gz", (ROOT / "packaging/homebrew/sealkeeper.rb").read_text())

    def test_the_forge_runs_the_commands_of_the_readme(self) -> None:
        readme = re.findall(r"^    (\./\w+\.sh)\b", (ROOT / "README.md").read_text(), re.MULTILINE)[:2]
        forge = re.findall(r"^      - run: (\S+)", (ROOT / ".github/workflows/ci.yml").read_text(), re.MULTILINE)
        self.assertEqual(forge, readme)


if __name__ == "__main__":
    unittest.main()
