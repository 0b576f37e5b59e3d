#!/usr/bin/env python3
"""Compares the program with what a developer would use instead, and prints the figures as Markdown.

Called by compare.sh, which builds what it needs.
"""
import argparse
import signal
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import List

import report
from benchmark_runs import run_benchmark, run_lzw
from cold_runs import run_cold
from machine import describe, name_of_machine
from make_tree import GIB, MIB
from measure import CommandFailed
from tree_runs import Place, TreeResult, run_tree, say

TREES = ("one", "mixed", "small")
COLD_TREES = ("small-2000", "one")
PARTS = ("kernels", "conversions", "lzw", *TREES, "cold", "scaling")

FILE_COUNTS = (1, 1000, 10_000, 100_000)
MANY_FILES = 1_000_000
# Trees with special properties and the same number of files.
OTHER_FILES = ("deep", "larger")
OTHER_FILES_COUNT = 100_000
FILE_SIZES = (256 * MIB, GIB, 4 * GIB)

MEMORY_EXCEEDED = 3


def parse_options() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="compare.sh", description=__doc__.splitlines()[0],
                                     allow_abbrev=False)
    parser.add_argument("--rounds", type=int, default=5, help="how often each is run (5)")
    parser.add_argument("--only", action="append", choices=PARTS, metavar="PART",
                        help="one of: " + ", ".join(PARTS) + "; may be repeated")
    parser.add_argument("--million", action="store_true",
                        help="a row of 1,000,000 files in the table of cost per file")
    parser.add_argument("--dir", type=Path,
                        help="where the trees are made; complete ones that are there are used, and "
                        "stay (default: a new directory under TMPDIR)")
    parser.add_argument("--keep", action="store_true", help="keep the trees")
    parser.add_argument("--scale", type=float, default=1.0,
                        help="a part of each tree, such as 0.01, to try this out")
    parser.add_argument("--jobs", type=int, metavar="N",
                        help="also run one, mixed and small with N jobs (2 or more), beside peers that "
                        "use N processors")
    parser.add_argument("--build-dir", type=Path, metavar="DIR",
                        default=Path(__file__).resolve().parent.parent / "build/bench",
                        help="the build to use or make (build/bench)")
    options = parser.parse_args()
    if options.rounds < 1 or not 0 < options.scale <= 1:
        parser.error("--rounds is at least 1, --scale above 0 and at most 1")
    if options.jobs is not None and options.jobs < 2:
        parser.error("--jobs is at least 2")
    return options


def compare_scaling(place: Place, options: argparse.Namespace) -> List[TreeResult]:
    def measure(trees: List[str], scale: float) -> List[TreeResult]:
        return [run_tree(place, tree, scale, options.rounds, with_peers=False) for tree in trees]

    counts = [*FILE_COUNTS, MANY_FILES] if options.million else [*FILE_COUNTS]
    # The first has one file, whatever the scale.
    counts = [max(1, int(count * options.scale)) for count in counts]
    other_count = max(1, int(OTHER_FILES_COUNT * options.scale))
    per_file = measure([*(f"files-{count}" for count in sorted(set(counts))),
                        *(f"{kind}-{other_count}" for kind in OTHER_FILES)], 1.0)
    report.print_per_file(per_file)
    per_byte = measure([f"bytes-{size}" for size in FILE_SIZES], options.scale)
    report.print_per_byte(per_byte)
    return per_file + per_byte


def compare(options: argparse.Namespace, place: Place) -> List[TreeResult]:
    """Returns the results that include memory."""
    parts = options.only or PARTS
    print(f"## {name_of_machine()}\n\n" + describe(options.build_dir, options.rounds) + "\n")
    if options.scale != 1:
        print(f"Sizes and numbers are {options.scale} of the real ones: a trial, not a result.\n")
    sys.stdout.flush()
    if "kernels" in parts:
        report.print_kernels(run_benchmark(options.build_dir, "kernels", options.rounds,
                                           options.scale))
    if "conversions" in parts:
        report.print_conversions(run_benchmark(options.build_dir, "conversions", options.rounds,
                                               options.scale))
    if "lzw" in parts:
        report.print_lzw(run_lzw(options.build_dir, place.scratch, options.rounds))
    trees = []
    for tree in [tree for tree in TREES if tree in parts]:
        trees.append(run_tree(place, tree, options.scale, options.rounds, with_peers=True,
                              jobs=options.jobs))
        report.print_tree(trees[-1], options.jobs)
    if trees:
        report.print_summary(trees)
        if options.jobs is not None:
            report.print_jobs(trees, options.jobs)
    if "cold" in parts:
        for tree in COLD_TREES:
            report.print_cold(run_cold(place, tree, options.scale, options.rounds))
    return trees + (compare_scaling(place, options) if "scaling" in parts else [])


def tree_directory(options: argparse.Namespace, scratch: Path) -> Path:
    if options.dir is not None:
        options.dir.mkdir(parents=True, exist_ok=True)
        return options.dir.resolve()
    return Path(tempfile.mkdtemp(prefix="sealkeeper-trees.")) if options.keep else scratch


def main() -> int:
    options = parse_options()
    options.build_dir = options.build_dir.resolve()
    with tempfile.TemporaryDirectory(prefix="sealkeeper-bench.") as temporary:
        scratch = Path(temporary).resolve()
        try:
            place = Place(options.build_dir / "sealkeeper", options.build_dir / "credentials",
                          tree_directory(options, scratch), scratch, options.keep)
            results = compare(options, place)
        except (CommandFailed, RuntimeError, OSError, subprocess.CalledProcessError) as error:
            print(f"compare.sh: {error}", file=sys.stderr)
            return 1
        if options.keep:
            say(f"The trees are in {place.trees}")
    # The memory of a trial says nothing about the real trees.
    if options.scale == 1 and any(result.exceeding_memory() for result in results):
        say("compare.sh: more memory was used than is allowed; see the figures in bold")
        return MEMORY_EXCEEDED
    return 0


if __name__ == "__main__":
    # Removes what it made when it is ended this way as well.
    signal.signal(signal.SIGTERM, lambda number, frame: sys.exit(128 + number))
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
