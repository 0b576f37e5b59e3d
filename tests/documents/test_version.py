"""The version is that of CMakeLists.txt wherever else it stands. test_guide.py holds the runs of the guide."""

from __future__ import annotations

import re
import unittest

from document_blocks import ROOT


def found_in(path: str, pattern: str) -> str:
    """What a pattern finds first in a file."""
    return re.search(pattern, (ROOT / path).read_text(encoding="utf-8"), re.MULTILINE)[1]


class Version(unittest.TestCase):
    def setUp(self) -> None:
        self.version = found_in("CMakeLists.txt", r"^ +VERSION ([\d.]+)$")

    def test_changelog(self) -> None:
        self.assertEqual(found_in("CHANGELOG.md", r"^## .*?(\d+\.\d+\.\d+)"), self.version)

    def test_formula(self) -> None:
        self.assertEqual(found_in("packaging/homebrew/sealkeeper.rb", r'^  url ".*-([\d.]+)\.tar\.gz"$'), self.version)


if __name__ == "__main__":
    unittest.main()
