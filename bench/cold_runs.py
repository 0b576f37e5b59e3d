"""Runs on files that are not in the page cache."""
import os
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path
from typing import Optional

from measure import Command
from peers import called_with_files
from tree_runs import Place, TreeResult, run_tree

# Reads the files one after another and discards them.
READING = "cat"


@dataclass
class ColdResult:
    # Has no times if there is an obstacle.
    result: TreeResult
    obstacle: str
    is_proven: bool


def resident_pages(game: Path, listing: Path) -> Optional[int]:
    """How many pages of the listed files are in the page cache; None if that is unknown."""
    if shutil.which("fincore") is None:
        return None
    with open(listing, "rb") as source:
        result = subprocess.run(["xargs", "-0", "fincore", "--noheadings", "--output", "PAGES"],
                                cwd=game, stdin=source, stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL, check=False)
    if result.returncode != 0:
        return None
    return sum(int(line) for line in result.stdout.split())


class Eviction:
    """Evicts the listed files from the page cache, and checks that it worked."""

    def __init__(self, game: Path, listing: Path) -> None:
        self._game = game
        self._listing = listing
        self.obstacle = ""
        self._was_cached = False
        self._has_looked_each_time = True

    @property
    def is_proven(self) -> bool:
        """Whether pages of the files were seen in the cache before, and none after any eviction."""
        return not self.obstacle and self._was_cached and self._has_looked_each_time

    def run(self) -> bool:
        """Evicts the files. Returns False if they are known to be still cached."""
        if not hasattr(os, "posix_fadvise"):
            self.obstacle = "this system has no posix_fadvise"
            return False
        before = resident_pages(self._game, self._listing)
        self._evict()
        after = resident_pages(self._game, self._listing)
        if after:
            self.obstacle = f"{after:,} pages stayed in the page cache"
            return False
        self._was_cached = self._was_cached or bool(before)
        self._has_looked_each_time = self._has_looked_each_time and after is not None
        return True

    def _evict(self) -> None:
        # Pages that are not yet written out cannot be evicted.
        os.sync()
        for name in self._listing.read_bytes().split(b"\0")[:-1]:
            descriptor = os.open(os.path.join(os.fsencode(self._game), name), os.O_RDONLY)
            try:
                os.posix_fadvise(descriptor, 0, 0, os.POSIX_FADV_DONTNEED)
            finally:
                os.close(descriptor)


def reading_command(game: Path, listing: Path) -> Command:
    """Writes to /dev/null: the log is a file, and writing it would be measured as well."""
    arguments = ["sh", "-c", 'exec "$@" > /dev/null', "sh", *called_with_files(["cat"])]
    return Command(READING, arguments, game, listing)


def run_cold(place: Place, tree: str, scale: float, rounds: int) -> ColdResult:
    game = place.trees / tree
    eviction = Eviction(game, place.listing)
    result = run_tree(place, tree, scale, rounds, with_peers=True,
                      others=[reading_command(game, place.listing)], before_each=eviction.run)
    return ColdResult(result, eviction.obstacle, eviction.is_proven)
