"""Random games and configuration files, from a seed."""

from __future__ import annotations

import os
import random
from pathlib import Path
from typing import List

NAMES = [
    "a", "b", "A", "bin", "data", "Data", "lib.so", "x.pdb", "x.PDB", "y.log", "readme", "z.", ".hidden", ".d",
    "a b", "[ab]", "ab", "q?", "s*", "\u00e9.txt", "\U0001f600", "back\\slash", "Quorvane", "Certificates", "..x", "%s",
]
ODD_NAMES = ["\udcff.bin", "line\nfeed", "\x1b[31m"]
PATTERNS = [
    "*", "*/*", "?", "*.so", "*.pdb", "[ab]", "[ab]*", "*[!b]", "./a", "a/", "bin//*", "../game/a", "..", ".", "*/",
    "Quorvane", "Quorvane/*", "Quorvane/Certificates", "Quorvane/Certificates/base.bin", "*/Certificates", "nothing",
    ".hidden", ".*", "data/../a", "Q*", "back\\\\slash", "", "missing/../Quorvane", "Quorvane/../Q*/./*",
]
EXTENSIONS = [".pdb", ".PDB", "pdb", ".log", ".so", "."]


def lay_out(game: Path, source: random.Random) -> None:
    """Fill the game directory."""
    folders = [game]
    for _ in range(source.randrange(1, 18)):
        folder = source.choice(folders)
        name = source.choice(NAMES if source.random() < 0.96 else ODD_NAMES)
        path = folder / name
        if os.path.lexists(path):
            continue
        kind = source.random()
        if kind < 0.35 and name not in ODD_NAMES:
            path.mkdir()
            folders.append(path)
        elif kind < 0.42:
            path.symlink_to(source.choice(["a", "..", "nowhere", "bin", "."]))
        elif kind < 0.45:
            os.mkfifo(path)
        else:
            path.write_bytes(b"x" * source.randrange(0, 9))
            if source.random() < 0.08:
                os.truncate(path, source.choice([1_000_000, 1_000_001, 2_500_000]))


def existing_paths(game: Path, source: random.Random) -> List[str]:
    """Some paths of the game in the form of patterns."""
    found = [os.path.relpath(os.path.join(folder, name), game)
             for folder, folders, files in os.walk(game) for name in folders + files]
    usable = [path for path in found if not set(path) & set('"\n]') and path.isprintable()]
    return source.sample(usable, min(len(usable), 4))


def configuration(game: Path, source: random.Random) -> str:
    """A configuration file that the tool accepts, or sometimes refuses."""
    candidates = PATTERNS + existing_paths(game, source) * 4
    patterns = [pattern for pattern in source.choices(candidates, k=source.randrange(0, 5)) if "]" not in pattern]
    key = source.choice(["include_paths", "exclude_paths"])
    lines = [f"{key} = [ " + ", ".join(f'"{pattern}"' for pattern in patterns) + " ]"]
    if source.random() < 0.4:
        lines.append("exclude_extensions = [ " + " ".join(f'"{e}"' for e in source.sample(EXTENSIONS, 2)) + " ]")
    if source.random() < 0.4:
        lines.append(f"exclude_size_threshold = {source.choice([0, 1, 2, 10, 4294967295])};")
    if source.random() < 0.3:
        lines.append("ignore_files_without_extension = " + source.choice(["true", "false", "1;"]))
    version = source.choice([2, 2, 2, 2, 2, 2, 2, 2, 2, 1])
    return f"config_info {{ version = {version}; }}\nsearch_options {{\n" + "\n".join(lines) + "\n}\n"
