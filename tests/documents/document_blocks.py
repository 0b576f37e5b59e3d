"""The fenced blocks of a page, by section."""

from __future__ import annotations

import re
from dataclasses import dataclass
from pathlib import Path
from typing import List

ROOT = Path(__file__).resolve().parents[2]

FENCED = re.compile(r"^```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^## +(.*)$", re.MULTILINE)


@dataclass(frozen=True)
class Block:
    """A fenced block: its info string, its text, and the line of prose before it."""

    kind: str
    text: str
    lead: str


@dataclass(frozen=True)
class Section:
    """The text under one second-level heading."""

    title: str
    text: str

    def blocks(self, kind: str) -> List[Block]:
        """The blocks of one kind."""
        return [block for block in blocks_of(self.text) if block.kind == kind]


def page(name: str) -> str:
    """The text of a page of docs/."""
    return (ROOT / "docs" / name).read_text(encoding="utf-8")


def blocks_of(text: str) -> List[Block]:
    """All blocks of a text, in order."""
    found = []
    for match in FENCED.finditer(text):
        before = text[: match.start()].rstrip().rsplit("\n", 1)[-1]
        found.append(Block(match[1], match[2], before))
    return found


def sections_of(text: str) -> List[Section]:
    """The sections of a text, without what comes before the first heading."""
    parts = HEADING.split(text)[1:]
    return [Section(title, body) for title, body in zip(parts[::2], parts[1::2])]
