"""The build makes the manual pages without warnings, and installs them and the completions in the usual places."""

from __future__ import annotations

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import List, Set

from manual_sources import ROOT

# A project without a programming language, which configures at once.
PROJECT = """
cmake_minimum_required(VERSION 3.21)
project(manual VERSION 98.7.6 LANGUAGES NONE)
set(CMAKE_INSTALL_LIBDIR lib)
list(APPEND CMAKE_MODULE_PATH "{root}/cmake")
include(ManualPages)
sealkeeper_install_manual()
"""

COMPLETIONS = {
    "share/bash-completion/completions/sealkeeper",
    "share/fish/vendor_completions.d/sealkeeper.fish",
    "share/zsh/site-functions/_sealkeeper",
}
INSPECT_COMPLETIONS = {
    "share/bash-completion/completions/sealkeeper-inspect",
    "share/fish/vendor_completions.d/sealkeeper-inspect.fish",
    "share/zsh/site-functions/_sealkeeper-inspect",
}
MANUAL = {"share/man/man1/sealkeeper.1", "share/man/man5/sealkeeper.cfg.5"}
INSPECT_MANUAL = {"share/man/man1/sealkeeper-inspect.1"}


@unittest.skipUnless(shutil.which("cmake"), "there is no cmake")
class Project(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def run_quietly(self, *command: "str | Path", **variables: str) -> str:
        environment = {name: value for name, value in os.environ.items() if name != "SOURCE_DATE_EPOCH"}
        result = subprocess.run(command, capture_output=True, check=False, text=True, env={**environment, **variables})
        self.assertEqual((result.returncode, result.stderr), (0, ""), result.stdout)
        return result.stdout

    def configure(self, *options: str, root: Path = ROOT) -> str:
        source = self.folder / "source"
        source.mkdir()
        (source / "CMakeLists.txt").write_text(PROJECT.format(root=root))
        return self.run_quietly("cmake", "-G", "Ninja", "-S", source, "-B", self.folder / "build", *options)

    def install(self, **variables: str) -> Path:
        build, root = self.folder / "build", self.folder / "root"
        self.run_quietly("cmake", "--build", build, **variables)
        self.run_quietly("cmake", "--install", build, "--prefix", root)
        return root

    @staticmethod
    def files_in(root: Path) -> Set[str]:
        return {str(path.relative_to(root)) for path in root.glob("**/*") if path.is_file()}


class WithoutScdoc(Project):
    def test_pages_are_left_out_with_a_message(self) -> None:
        said = self.configure("-DSEALKEEPER_SCDOC=")
        self.assertIn("scdoc was not found: the manual pages are left out", said)
        self.assertEqual(self.files_in(self.install()), COMPLETIONS)


@unittest.skipUnless(shutil.which("scdoc"), "there is no scdoc")
class Installation(Project):
    def test_files(self) -> None:
        self.assertNotIn("scdoc", self.configure("-DSEALKEEPER_BUILD_INSPECT=ON"))
        installed = self.files_in(self.install())
        self.assertEqual(installed, MANUAL | INSPECT_MANUAL | COMPLETIONS | INSPECT_COMPLETIONS)

    def test_files_without_inspect(self) -> None:
        self.configure("-DSEALKEEPER_BUILD_INSPECT=OFF", "-DSEALKEEPER_ZSH_COMPLETIONS_DIR=share/zsh/elsewhere")
        expected = {name.replace("site-functions", "elsewhere") for name in MANUAL | COMPLETIONS}
        self.assertEqual(self.files_in(self.install()), expected)

    def test_pages(self) -> None:
        self.configure("-DSEALKEEPER_BUILD_INSPECT=ON")
        root = self.install()
        for page in MANUAL | INSPECT_MANUAL:
            with self.subTest(page=page):
                text = (root / page).read_text()
                self.assertRegex(text, r'(?m)^\.TH .* "Sealkeeper 98\.7\.6" "Sealkeeper Manual"$')
                self.assertNotIn("@", text)
                self.assertEqual(self.faults_in(root / page), [])

    @staticmethod
    def faults_in(page: Path) -> List[str]:
        if not shutil.which("mandoc"):
            raise unittest.SkipTest("there is no mandoc")
        result = subprocess.run(["mandoc", "-Tlint", "-Wwarning", page], capture_output=True, check=False, text=True)
        # scdoc ends paragraphs redundantly.
        return [line for line in result.stdout.splitlines() if "skipping paragraph macro" not in line]


@unittest.skipUnless(shutil.which("scdoc"), "there is no scdoc")
class Dates(Project):
    """A page does not contain the build date, so that two builds are identical."""

    def copied_sources(self) -> Path:
        copy = self.folder / "copy"
        for name in ("cmake", "completions", "docs/man"):
            shutil.copytree(ROOT / name, copy / name)
        for page in (copy / "docs/man").iterdir():
            os.utime(page, (86400, 86400))
        return copy

    def assert_date(self, expected: str, root: Path) -> None:
        for page in MANUAL:
            with self.subTest(page=page):
                self.assertRegex((root / page).read_text(), rf'(?m)^\.TH .* "{expected}" ')

    def test_of_the_environment(self) -> None:
        self.configure()
        self.assert_date("1970-01-03", self.install(SOURCE_DATE_EPOCH=str(2 * 86400)))

    def test_of_the_file(self) -> None:
        self.configure(root=self.copied_sources())
        self.assert_date("1970-01-02", self.install())

    def test_of_the_last_commit(self) -> None:
        copy = self.copied_sources()
        author = ("-c", "user.name=a", "-c", "user.email=a@example.com", "-c", "commit.gpgsign=false")
        self.run_quietly("git", "init", "-q", copy)
        self.run_quietly("git", "-C", copy, "add", "docs")
        self.run_quietly("git", "-C", copy, *author, "commit", "-qm", "Pages", GIT_COMMITTER_DATE="2001-02-03T12:00:00Z")
        self.configure(root=copy)
        self.assert_date("2001-02-03", self.install())


if __name__ == "__main__":
    unittest.main()
