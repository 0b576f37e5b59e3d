"""Runs this program and its peers on one tree, in turn, and checks that they did the same work."""
import os
import struct
import sys
from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable, Dict, List, Optional, Sequence, Tuple

import make_tree
from catalogue_digests import whole_file_digests
from measure import Command, CommandFailed, Times, rotated, run, run_for_peak_memory
from memory_allowance import CatalogueSizes, long_path_bytes
from peers import PEERS, SameDigests, peer_commands, peer_commands_with_jobs

PRODUCT = "sealkeeper-bench"
OUTPUT = Path("Quorvane/Certificates")
CATALOGUE_NAME = "base.bin"

GENERATE = "generate"
VERIFY = "verify"


def with_jobs(command: str, jobs: int) -> str:
    """The name of `command`, generate or verify, when it uses `jobs` jobs."""
    return f"{command} -jobs {jobs}"


CONFIGURATION = """config_info {{ version = 2; }}
search_options {{
    exclude_paths = ["Quorvane"]
{size_threshold}}}
"""
NO_SIZE_THRESHOLD = "    exclude_size_threshold = 0;\n"
# Larger files are not hashed unless the configuration says so.
DEFAULT_SIZE_THRESHOLD_BYTES = 1_024_000_000

# compressed_length, raw_length and entry_count (docs/catalogue-format.md).
COUNTS_OFFSET = 1040
COUNTS_FORMAT = "<III"


@dataclass
class Place:
    """The paths that a run uses."""

    program: Path
    credentials: Path
    trees: Path
    # For temporary files.
    scratch: Path
    keep_trees: bool

    @property
    def log(self) -> Path:
        return self.scratch / "output.log"

    @property
    def listing(self) -> Path:
        """The files of the tree that is measured."""
        return self.scratch / "files"


@dataclass
class TreeResult:
    tree: str
    file_count: int
    size_bytes: int
    largest_bytes: int
    long_path_bytes: int
    times: Dict[str, Times] = field(default_factory=dict)
    # Bytes of each of our commands; None if unknown.
    peak_memory: Dict[str, Optional[int]] = field(default_factory=dict)
    # Bytes that the same commands may use.
    allowed_memory: Dict[str, int] = field(default_factory=dict)

    def fastest_peer(self) -> Optional[str]:
        peers = [name for name in self.times if name in PEERS]
        return min(peers, key=lambda name: self.times[name].median, default=None)

    def exceeds_memory(self, command: str) -> bool:
        peak = self.peak_memory[command]
        return peak is not None and peak > self.allowed_memory[command]

    def exceeding_memory(self) -> List[str]:
        return [command for command in self.peak_memory if self.exceeds_memory(command)]


def say(text: str) -> None:
    print(text, file=sys.stderr, flush=True)


def list_files(game: Path, listing: Path) -> Tuple[int, int, int, int]:
    """Writes the paths of the files below `game` to `listing`, relative and zero-terminated. Returns
    the number of files, their bytes, those of the largest, and the extra bytes of long paths."""
    count = total = largest = long_paths = 0
    with open(listing, "wb") as output:
        for folder, folders, names in os.walk(game):
            if Path(folder) == game and "Quorvane" in folders:
                folders.remove("Quorvane")
            folders.sort()
            for name in sorted(names):
                path = os.path.join(folder, name)
                size = os.stat(path).st_size
                total += size
                largest = max(largest, size)
                count += 1
                relative = os.fsencode(os.path.relpath(path, game))
                long_paths += long_path_bytes(relative)
                output.write(relative + b"\0")
    return count, total, largest, long_paths


def configuration_for(largest_bytes: int) -> str:
    """The default configuration, unless it would leave a file out."""
    return CONFIGURATION.format(size_threshold=NO_SIZE_THRESHOLD
                                if largest_bytes > DEFAULT_SIZE_THRESHOLD_BYTES else "")


def own_commands(place: Place, game: Path, configuration: Path,
                 jobs: Optional[int] = None) -> List[Command]:
    """Generate and verify; without `jobs`, with their default."""
    sign = ["-inkey", str(place.credentials / "base_private.key"),
            "-incert", str(place.credentials / "base_public.cer")]
    program = [str(place.program), "-productid", PRODUCT]
    names = [GENERATE, VERIFY]
    if jobs is not None:
        program += ["-jobs", str(jobs)]
        names = [with_jobs(name, jobs) for name in names]
    return [
        Command(names[0], program + sign + ["-target_game_dir", str(game), str(configuration)], game),
        Command(names[1], program + ["verify", str(game)], game),
    ]


def read_sizes(result: TreeResult, catalogue: Path) -> CatalogueSizes:
    """Checks that the catalogue lists all files."""
    with open(catalogue, "rb") as file:
        file.seek(COUNTS_OFFSET)
        compressed, raw, entries = struct.unpack(COUNTS_FORMAT,
                                                 file.read(struct.calcsize(COUNTS_FORMAT)))
    if entries != result.file_count:
        raise CommandFailed(f"{result.tree}: {entries} of {result.file_count} files were catalogued")
    return CatalogueSizes(entries, catalogue.stat().st_size, raw, compressed, result.long_path_bytes)


def warm_up_own(place: Place, game: Path, configuration: Path, result: TreeResult,
                jobs: Optional[int] = None) -> List[Command]:
    """Runs the commands once, to learn the memory that they use and may use. Returns them."""
    own = own_commands(place, game, configuration, jobs)
    for command in own:
        result.peak_memory[command.name] = run_for_peak_memory(command, place.log)
    sizes = read_sizes(result, game / OUTPUT / CATALOGUE_NAME)
    workers = 0 if jobs is None else jobs
    result.allowed_memory.update(zip((command.name for command in own), (
        sizes.allowed_for_generate(workers), sizes.allowed_for_verify(workers))))
    return own


def warm_up_with_jobs(place: Place, game: Path, configuration: Path, result: TreeResult,
                      jobs: int) -> List[Command]:
    """The same with jobs. Also checks that the catalogue, which is made again, is the same."""
    catalogue = game / OUTPUT / CATALOGUE_NAME
    expected = catalogue.read_bytes()
    catalogue.unlink()
    own = warm_up_own(place, game, configuration, result, jobs)
    if catalogue.read_bytes() != expected:
        raise CommandFailed(f"{own[0].name}: the catalogue is another than that of {GENERATE}")
    return own


def check_digests(result: TreeResult, catalogue: Path, same_digests: SameDigests) -> None:
    """Checks the digests against those of the peers, for files of one chunk: peers hash whole files."""
    digests = whole_file_digests(catalogue, result.size_bytes)
    same_digests.check_printed(GENERATE, digests)
    say(f"{result.tree}: the digests of {len(digests)} of {result.file_count} files were compared with "
        "the catalogue")


def run_tree(place: Place, tree: str, scale: float, rounds: int, with_peers: bool,
             others: Sequence[Command] = (), before_each: Callable[[], bool] = lambda: True,
             jobs: Optional[int] = None) -> TreeResult:
    """A first, unmeasured round brings the files into the page cache and measures peak memory.

    With `jobs`, our commands, and the peers that can, are measured with that many as well.
    `others` are measured in addition. `before_each` is called before each measured command; if it
    returns false, the whole run ends without times.
    """
    game = place.trees / tree
    say(f"{tree}: making the files")
    made = make_tree.make(tree, game, scale)
    try:
        configuration = place.scratch / "bench.cfg"
        result = TreeResult(tree, *list_files(game, place.listing))
        configuration.write_text(configuration_for(result.largest_bytes))
        peers = peer_commands(game, place.listing) if with_peers else []
        if with_peers and jobs is not None:
            peers += peer_commands_with_jobs(game, place.listing, jobs)
        same_digests = SameDigests(result.file_count)
        say(f"{tree}: warming up")
        own = warm_up_own(place, game, configuration, result)
        if jobs is not None:
            own += warm_up_with_jobs(place, game, configuration, result, jobs)
        for command in peers:
            run(command, place.log)
            same_digests.check(command, place.log)
        if peers:
            check_digests(result, game / OUTPUT / CATALOGUE_NAME, same_digests)
        elif with_peers:
            say(f"{tree}: no peer is installed that our digests could be compared with")
        for command in others:
            run(command, place.log)
        for number in range(rounds):
            say(f"{tree}: round {number + 1} of {rounds}")
            for command in rotated([*own, *peers, *others], number):
                if not before_each():
                    result.times.clear()
                    return result
                run(command, place.log, result.times.setdefault(command.name, Times()))
                if command in peers:
                    same_digests.check(command, place.log)
    finally:
        if made and not place.keep_trees:
            make_tree.remove(game)
    return result
