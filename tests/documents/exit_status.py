"""The exit statuses in the sources and in docs/exit-status.md."""

from __future__ import annotations

import functools
import re

from logged_messages import DOCUMENTS, SOURCES, sources

ENUMERATOR = re.compile(r"^    (\w+) = (\d+),$", re.MULTILINE)
WITHOUT_NAME = re.compile(r"constexpr ResultCode \w+\{(\d+)\};")
TEXT = re.compile(r'constexpr const char\* kUnknownCodeText = "([^"]+)"')
ROW = re.compile(r"^\| (\d+) \| (.+?) \| (.*) \|$", re.MULTILINE)
NEVER = "never returned"


def names() -> "dict[int, str]":
    """The name of each status, from the sources."""
    header = (SOURCES / "app/result_code.h").read_text()
    found = {int(number): name for name, number in ENUMERATOR.findall(header)}
    texts = (SOURCES / "app/result_code.cpp").read_text()
    found[int(WITHOUT_NAME.search(header)[1])] = TEXT.search(texts)[1]
    return found


@functools.lru_cache(maxsize=None)
def returned() -> "set[int]":
    """The statuses that are used anywhere but in the list of them."""
    used = {name for text in sources() if "kTexts.size()" not in text for name in re.findall(r"ResultCode::(\w+)", text)}
    return {number for number, name in names().items() if name in used or " " in name}


def rows() -> "list[tuple[int, str, str]]":
    """Status, name and meaning of each row of the page."""
    return [(int(row[0]), row[1], row[2]) for row in ROW.findall((DOCUMENTS / "exit-status.md").read_text())]
