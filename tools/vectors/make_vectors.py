#!/usr/bin/env python3
"""Write the test vectors of docs/vectors and their table.

    make_vectors.py            # docs/vectors
    make_vectors.py OUT_DIR    # elsewhere, with those that are too large to be kept

The keys are not made here, see issue_keys.sh. With the same keys the same bytes are written.
"""

from __future__ import annotations

import json
import shutil
import sys
from pathlib import Path
from typing import Any, Dict, List

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "independent"))

import catalogue_vectors
import certificate_vectors
import game_file_vectors
import runtime_conf_vectors
from vector import Vector, Vectors

KEPT = ROOT / "docs" / "vectors"


def all_vectors() -> Vectors:
    """In the order of the table."""
    return (
        catalogue_vectors.vectors()
        + certificate_vectors.vectors()
        + game_file_vectors.vectors()
        + runtime_conf_vectors.vectors()
    )


def table_of(vectors: Vectors) -> Dict[str, Any]:
    """The content of vectors.json."""
    return {
        "goodFrom": "2026-01-02T00:00:00Z",
        "goodUntil": "2075-01-01T00:00:00Z",
        "vectors": [vector.described() for vector in vectors],
    }


def write(vectors: Vectors, directory: Path) -> None:
    """Replace the sets and the table in a directory."""
    shutil.rmtree(directory / "sets", ignore_errors=True)
    for vector in vectors:
        write_files(vector, directory)
    text = json.dumps(table_of(all_vectors()), indent=2, ensure_ascii=False)
    (directory / "vectors.json").write_text(text + "\n", encoding="utf-8")


def write_files(vector: Vector, directory: Path) -> None:
    """Write the files of one vector. A vector that shares the set of another has none."""
    for name, content in vector.files.items():
        path = directory / vector.directory / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def main(arguments: List[str]) -> int:
    """Write all of them, or only those that are stored."""
    if len(arguments) > 1:
        print("usage: make_vectors.py [OUT_DIR]", file=sys.stderr)
        return 1
    if arguments:
        write(all_vectors(), Path(arguments[0]))
    else:
        write([vector for vector in all_vectors() if not vector.is_large], KEPT)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
