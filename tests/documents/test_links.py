"""Every link from a document into this repository leads to something that exists."""

from __future__ import annotations

import re
import subprocess
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LINK = re.compile(r"\]\(([^)\s]+)\)")
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)


def documents() -> "list[Path]":
    listed = subprocess.run(["git", "-C", ROOT, "ls-files", "--cached", "--others", "--exclude-standard", "*.md"],
                            capture_output=True, check=False, text=True)
    names = listed.stdout.split() or [str(path.relative_to(ROOT)) for path in ROOT.glob("docs/**/*.md")]
    return [ROOT / name for name in names if (ROOT / name).exists()]


def anchor_of(heading: str) -> str:
    """As forges generate it: lower-case letters, digits, hyphens and underscores, with hyphens for blanks."""
    text = re.sub(r"[^\w\- ]", "", heading.strip().lower())
    return text.replace(" ", "-")


class Links(unittest.TestCase):
    def test_there_are_documents(self) -> None:
        self.assertGreater(len(documents()), 10)

    def test_they_lead_somewhere(self) -> None:
        for document in documents():
            for link in LINK.findall(document.read_text()):
                if re.match(r"[a-z]+:", link):
                    continue
                path, _, anchor = link.partition("#")
                target = (document.parent / path) if path else document
                with self.subTest(document=str(document.relative_to(ROOT)), link=link):
                    self.assertTrue(target.exists())
                    if anchor:
                        headings = HEADING.findall(target.read_text())
                        self.assertIn(anchor, [anchor_of(heading) for heading in headings])


if __name__ == "__main__":
    unittest.main()
