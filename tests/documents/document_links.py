"""The links of Markdown pages, and whether they lead to something."""

from __future__ import annotations

import re
from pathlib import Path
from typing import List

LINK = re.compile(r"\]\(([^)\s]+)\)")
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)


def local_links(document: Path) -> List[str]:
    """The links of a page, without those that name a protocol."""
    return [link for link in LINK.findall(document.read_text(encoding="utf-8")) if not re.match(r"[a-z]+:", link)]


def anchor_of(heading: str) -> str:
    """As forges generate it: lower-case letters, digits, hyphens and underscores, with hyphens for blanks."""
    text = re.sub(r"[^\w\- ]", "", heading.strip().lower())
    return text.replace(" ", "-")


def is_dead(document: Path, link: str) -> bool:
    """Whether a link of a page names a file that is not there, or a heading that its page does not have."""
    path, _, anchor = link.partition("#")
    target = document.parent / path if path else document
    if not target.exists():
        return True
    headings = HEADING.findall(target.read_text(encoding="utf-8")) if anchor else []
    return bool(anchor) and anchor not in [anchor_of(heading) for heading in headings]
