#!/usr/bin/env python3
"""Makes the directories of files that the comparison runs on, the same in every run.

Their bytes are random and do not compress; no two files are equal.
"""
import argparse
import json
import math
import os
import random
import shutil
import sys
from pathlib import Path
from typing import Callable, Dict, Iterator, Tuple

KIB = 1024
MIB = 1024 * KIB
GIB = 1024 * MIB

BLOCK_BYTES = 8 * MIB
COUNTER_BYTES = 8
FILES_PER_DIRECTORY = 1000
SMALL_FILES = 30_000
# Its paths have 100 characters.
DEEP_FOLDER = "content/environments/northern_district/architecture/modular_facades/weathered_brick"
# More than one chunk: hashed as two.
TWO_CHUNKS_BYTES = 5 * MIB
# Increased when a tree of the same name and scale gets different files.
VERSION = 1

# Relative path and size.
File = Tuple[str, int]


def numbered(folder: str, index: int) -> str:
    return f"{folder}/{index // FILES_PER_DIRECTORY:04}/{index:07}.dat"


def one(scale: float) -> Iterator[File]:
    yield from one_of_bytes(int(2 * GIB * scale))


def mixed(scale: float) -> Iterator[File]:
    for index in range(4):
        yield f"paks/world{index}.pak", int(256 * MIB * scale)
    numbers = random.Random(1)
    lowest, highest = math.log(KIB), math.log(16 * MIB)
    for index in range(max(1, int(4000 * scale))):
        yield numbered("assets", index), int(math.exp(numbers.uniform(lowest, highest)))
    yield "game", int(80_000_000 * scale)


def small(count: int) -> Iterator[File]:
    numbers = random.Random(2)
    for index in range(count):
        yield numbered("assets", index), numbers.randint(KIB, 32 * KIB)


def many(count: int, folder: str = "assets") -> Iterator[File]:
    for index in range(count):
        yield numbered(folder, index), KIB


def many_deep(count: int) -> Iterator[File]:
    yield from many(count, DEEP_FOLDER)


def many_and_a_larger(count: int) -> Iterator[File]:
    yield from many(count)
    yield "world.pak", TWO_CHUNKS_BYTES


def one_of_bytes(size: int) -> Iterator[File]:
    yield "world.pak", size


def whole_small(scale: float) -> Iterator[File]:
    yield from small(max(1, int(SMALL_FILES * scale)))


TREES: Dict[str, Callable[[float], Iterator[File]]] = {
    "one": one, "mixed": mixed, "small": whole_small}
# By the number of files or of bytes.
KINDS: Dict[str, Callable[[int], Iterator[File]]] = {
    "files": many, "deep": many_deep, "larger": many_and_a_larger, "small": small,
    "bytes": one_of_bytes}


def files_of(tree: str, scale: float) -> Iterator[File]:
    """The files of a tree named in TREES, or named by one of KINDS and "-N"."""
    if tree in TREES:
        return TREES[tree](scale)
    kind, _, number = tree.partition("-")
    if kind not in KINDS or not number.isdigit():
        raise ValueError(f"no such tree: {tree}")
    return KINDS[kind](max(1, int(int(number) * scale)))


class Contents:
    """Yields one random block again and again, each time with another counter at its start."""

    def __init__(self) -> None:
        self._block = bytearray(random.Random(3).randbytes(BLOCK_BYTES))
        self._counter = 0

    def write(self, path: Path, size: int) -> None:
        with open(path, "wb", buffering=0) as file:
            while size > 0:
                length = min(size, BLOCK_BYTES)
                self._counter += 1
                self._block[:COUNTER_BYTES] = self._counter.to_bytes(COUNTER_BYTES, "little")
                written = file.write(memoryview(self._block)[:length])
                if written != length:
                    raise OSError(f"{path}: written in part only")
                size -= length


def write_files(directory: Path, files: Iterator[File]) -> None:
    directory.mkdir(parents=True)
    contents = Contents()
    folder = None
    for name, size in files:
        path = directory / name
        if path.parent != folder:
            folder = path.parent
            folder.mkdir(parents=True, exist_ok=True)
        contents.write(path, size)


def make(tree: str, directory: Path, scale: float = 1.0) -> bool:
    """Makes `tree` in `directory`. A complete tree of the same scale is kept. Returns whether the
    tree was made."""
    stamp = directory.with_name(directory.name + ".made")
    description: Dict[str, object] = {"tree": tree, "scale": scale, "version": VERSION}
    if directory.is_dir() and stamp.is_file() and json.loads(stamp.read_text()) == description:
        return False
    if directory.exists() and not stamp.exists() and any(directory.iterdir()):
        raise FileExistsError(f"{directory} is there, but not as a complete tree: remove it first")
    remove(directory)
    try:
        write_files(directory, files_of(tree, scale))
    except BaseException:
        # No partial tree is left, not even after an interrupt.
        remove(directory)
        raise
    # Otherwise the system would write it out while something is measured.
    os.sync()
    stamp.write_text(json.dumps(description))
    return True


def remove(directory: Path) -> None:
    """Removes the tree in `directory`, if any, and the note of what is in it."""
    stamp = directory.with_name(directory.name + ".made")
    if directory.exists():
        shutil.rmtree(directory)
    if stamp.exists():
        stamp.unlink()


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("tree", help=", ".join([*TREES, *(f"{kind}-N" for kind in KINDS)]))
    parser.add_argument("directory", type=Path)
    parser.add_argument("--scale", type=float, default=1.0, help="a part of it, to try things out")
    options = parser.parse_args()
    try:
        make(options.tree, options.directory, options.scale)
    except (OSError, ValueError) as error:
        print(f"make_tree.py: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
