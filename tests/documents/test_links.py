"""Every link from a document into this repository leads to something that exists."""

from __future__ import annotations

import subprocess
import unittest
from pathlib import Path

from document_links import is_dead, local_links

ROOT = Path(__file__).resolve().parents[2]


def documents() -> "list[Path]":
    listed = subprocess.run(["git", "-C", ROOT, "ls-files", "--cached", "--others", "--exclude-standard", "*.md"],
                            capture_output=True, check=False, text=True)
    names = listed.stdout.split() or [str(path.relative_to(ROOT)) for path in ROOT.glob("docs/**/*.md")]
    return [ROOT / name for name in names if (ROOT / name).exists()]


class Links(unittest.TestCase):
    def test_there_are_documents(self) -> None:
        self.assertGreater(len(documents()), 10)

    def test_they_lead_somewhere(self) -> None:
        for document in documents():
            for link in local_links(document):
                with self.subTest(document=str(document.relative_to(ROOT)), link=link):
                    self.assertFalse(is_dead(document, link))


if __name__ == "__main__":
    unittest.main()
