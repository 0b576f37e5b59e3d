"""Prints which lines and branches of each file were run, from gcovr's JSON, and judges them.

gcovr leaves out branches that only exceptions take. LEAST_LINES and LEAST_BRANCHES are the minimum over all files. In
the files that decide what is trusted, everything must be run except what unreached.txt names, one entry per line. An
entry holds the text of a source line, which stays valid when the lines above it change.
"""

from __future__ import annotations

import json
import sys
from dataclasses import dataclass, field
from pathlib import Path
from typing import Dict, List, Tuple

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
LEAST_LINES = 0.97
LEAST_BRANCHES = 0.94

TRUST_PATH = (
    "src/app/runtime_configuration_check.cpp",
    "src/catalogue/catalogue_reader.cpp",
    "src/catalogue/catalogue_signature.cpp",
    "src/catalogue/entry_block_reader.cpp",
    "src/catalogue/entry_record_reader.cpp",
    "src/catalogue/file_verification.cpp",
    "src/catalogue/stored_entry.cpp",
    "src/platform/standard_descriptors.cpp",
    "src/runtime/certificate_trust.cpp",
    "src/runtime/mbedtls_result.cpp",
    "src/runtime/runtime_configuration_reader.cpp",
    "src/runtime/sign_buffer.cpp",
    "src/runtime/stored_signature.cpp",
)

# A path and the text of one of its lines.
Place = Tuple[str, str]


@dataclass
class Tally:
    """How many there are, and how many of them were run."""

    reached: int = 0
    total: int = 0

    def add(self, other: "Tally") -> None:
        self.reached += other.reached
        self.total += other.total

    @property
    def share(self) -> float:
        return self.reached / self.total if self.total else 1.0

    def __str__(self) -> str:
        return f"{self.reached:5} of {self.total:5} {100 * self.share:6.1f} %"


@dataclass
class File:
    """The coverage of one file. `unreached` holds the numbers of lines that were not run in full."""

    path: str
    lines: Tally = field(default_factory=Tally)
    branches: Tally = field(default_factory=Tally)
    unreached: List[int] = field(default_factory=list)

    def texts(self) -> List[str]:
        return [line.strip() for line in (ROOT / self.path).read_text(encoding="utf-8").splitlines()]


def read_file(entry: dict) -> File:
    file = File(entry["file"])
    for line in entry["lines"]:
        if line.get("gcovr/noncode"):
            continue
        taken = [branch["count"] > 0 for branch in line["branches"]]
        is_run = line["count"] > 0
        file.lines.add(Tally(is_run, 1))
        file.branches.add(Tally(sum(taken), len(taken)))
        if not is_run or not all(taken):
            file.unreached.append(line["line_number"])
    return file


def named_places() -> Dict[Place, List[str]]:
    """The reasons in unreached.txt. Its lines hold a path, the text of a line and the reason, separated by " | "."""
    reasons: Dict[Place, List[str]] = {}
    for line in (HERE / "unreached.txt").read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            path, text, reason = line.split(" | ")
            reasons.setdefault((path, text), []).append(reason)
    return reasons


def judge_trust_path(files: List[File]) -> bool:
    """Prints what was not run in the trust path. False if some of it has no reason. A reason covers one line."""
    reasons = named_places()
    is_whole = True
    for file in files:
        if file.path not in TRUST_PATH:
            continue
        texts = file.texts()
        for number in file.unreached:
            place = (file.path, texts[number - 1])
            left = reasons.get(place, [])
            is_whole = is_whole and bool(left)
            print(f"{file.path}:{number}: {place[1]}\n    {left.pop(0) if left else 'NOT RUN IN FULL'}")
    for path, text in sorted(place for place, left in reasons.items() if left):
        is_whole = False
        print(f"{path}: {text}\n    is named as not run, but is run in full or is there no more")
    missing = set(TRUST_PATH) - {file.path for file in files}
    for path in sorted(missing):
        print(f"{path}: NOT MEASURED")
    return is_whole and not missing


def main() -> int:
    with open(sys.argv[1], encoding="utf-8") as stream:
        files = [read_file(entry) for entry in json.load(stream)["files"]]
    lines, branches = Tally(), Tally()
    for file in files:
        lines.add(file.lines)
        branches.add(file.branches)
        print(f"{file.path:55} lines {file.lines}   branches {file.branches}")
    print(f"{'all files':55} lines {lines}   branches {branches}")
    is_whole = judge_trust_path(files)
    is_enough = lines.share >= LEAST_LINES and branches.share >= LEAST_BRANCHES
    if not is_enough:
        print(f"too few: {100 * LEAST_LINES:.0f} % of lines and {100 * LEAST_BRANCHES:.0f} % of branches must be run")
    if not is_whole:
        print("the trust path is to be run in full, or tools/coverage/unreached.txt has to say why it is not")
    return 0 if is_enough and is_whole else 1


if __name__ == "__main__":
    sys.exit(main())
