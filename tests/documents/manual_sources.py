"""The sources of the manual pages, and the programs' tables that they describe."""

from __future__ import annotations

import os
import re
import subprocess
from pathlib import Path
from typing import Dict, List, NamedTuple, Optional

ROOT = Path(__file__).resolve().parents[2]
PAGES_DIRECTORY = ROOT / "docs" / "man"
PAGES = ["sealkeeper.1", "sealkeeper-inspect.1", "sealkeeper.cfg.5"]


def page_source(page: str) -> str:
    return (PAGES_DIRECTORY / f"{page}.scd").read_text()


def part_under(text: str, heading: str) -> str:
    """The text between `heading`, with its number signs, and the next heading of the same or a higher level."""
    rank = len(heading.split()[0])
    begin = re.search(rf"^{re.escape(heading)}$", text, re.MULTILINE)
    if begin is None:
        raise AssertionError(f"there is no heading '{heading}'")
    rest = text[begin.end() :]
    end = re.search(rf"^#{{1,{rank}}} ", rest, re.MULTILINE)
    return rest[: end.start()] if end else rest


def without_marks(text: str) -> str:
    """A line of scdoc without the marks for bold and underlined text."""
    return re.sub(r"(?<![\w\\])_|_(?!\w)|(?<!\\)\*", "", text).replace("\\", "")


class Term(NamedTuple):
    """A line explained by the indented text below it."""

    text: str
    explanation: str


def terms_of(part: str) -> List[Term]:
    found = re.findall(r"^(\S[^\n]*)\n((?:\t[^\n]*\n?|Cure: [^\n]*\n?)+)", part, re.MULTILINE)
    return [Term(without_marks(text), without_marks(explanation)) for text, explanation in found]


class Option(NamedTuple):
    name: str
    takes_value: bool
    is_required: bool = False


def options_in_terms(part: str) -> List[Option]:
    """The options among the terms of `part`, in order."""
    options = []
    for term in terms_of(part):
        for words in term.text.split(", "):
            name, *value = words.split()
            if name.startswith("-") or name in ("verify", "list"):
                options.append(Option(name, bool(value), "Required." in term.explanation))
    return options


def program_options() -> List[Option]:
    """The options of sealkeeper, from the table that its parser uses."""
    table = (ROOT / "src/app/option_table.cpp").read_text()
    rows = re.findall(r'Option\{"([^"]+)", OptionKind::(\w+)', table)
    return [Option(name, kind in ("StoresText", "SetsJobs")) for name, kind in rows]


class CommandHelp(NamedTuple):
    options: List[Option]
    operands: List[str]
    choices: List[str]


def inspect_program() -> Optional[str]:
    return os.environ.get("SEALKEEPER_INSPECT")


def inspect_help(*command: str) -> str:
    program = inspect_program()
    assert program
    return subprocess.run([program, *command, "--help"], capture_output=True, check=True, text=True).stdout


def listed_under(text: str, title: str) -> List[str]:
    """The lines under `title` in a help text."""
    found = re.search(rf"^{title}:\n((?:[ \t]+.*\n)+)", text, re.MULTILINE | re.IGNORECASE)
    return found.group(1).splitlines() if found else []


def inspect_commands() -> List[str]:
    return [line.split()[0] for line in listed_under(inspect_help(), "Subcommands")]


def help_of(*command: str) -> CommandHelp:
    text = inspect_help(*command)
    options = []
    for line in listed_under(text, "Options"):
        found = re.match(r"\s+(?:-\w,\s*)?(--[\w-]+)(?: ([A-Z]+)\b(?!:\s))?(.*)", line)
        if found:
            name, value, rest = found.groups()
            options.append(Option(name, value not in (None, "REQUIRED"), "REQUIRED" in rest))
    operands = [line.split()[0] for line in listed_under(text, "Positionals")]
    choices = re.search(r"\{([\w,]+)\}", text)
    return CommandHelp(options, operands, choices.group(1).split(",") if choices else [])


def config_names() -> Dict[str, List[str]]:
    """The keys of each section."""
    names: Dict[str, List[str]] = {}
    section = ""
    header = (ROOT / "src/config/config_names.h").read_text()
    for kind, name in re.findall(r'k\w+?(Section|Key) = "(\w+)"', header):
        if kind == "Section":
            section = name
            names[section] = []
        else:
            names[section].append(name)
    return names
