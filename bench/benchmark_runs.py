"""Runs the C++ benchmarks, and the classic compress program on the same entry block."""
import json
import re
import shutil
import subprocess
from dataclasses import dataclass, field
from functools import partial
from pathlib import Path
from typing import Callable, Dict, List, Optional

from measure import Command, Times, rotated, run
from tree_runs import say

COMPRESS = "compress"
DECOMPRESS = "decompress"

# How long a C++ benchmark is repeated for one figure.
MIN_SECONDS = 0.5


@dataclass
class LzwResult:
    size_bytes: int
    own_compressed_bytes: int = 0
    # None when there is no such program.
    peer_compressed_bytes: Optional[int] = None
    # By direction; empty when there is no such program.
    peer: Dict[str, Times] = field(default_factory=dict)
    own: Dict[str, Times] = field(default_factory=lambda: {COMPRESS: Times(), DECOMPRESS: Times()})


def run_benchmark(build: Path, name: str, rounds: int, scale: float) -> List[Dict[str, object]]:
    """The round of median time of each benchmark of a program. With an even number of rounds, the
    shorter of the two in the middle."""
    say(f"{name}: {rounds} rounds")
    by_name: Dict[object, List[Dict[str, object]]] = {}
    for result in benchmark_results(build, name, [f"--benchmark_repetitions={rounds}",
                                                  f"--benchmark_min_time={scale * MIN_SECONDS}",
                                                  "--benchmark_enable_random_interleaving=true"]):
        if result["run_type"] == "iteration":
            by_name.setdefault(result["run_name"], []).append(result)
    medians = [sorted(results, key=lambda result: float(str(result["cpu_time"])))
               [(len(results) - 1) // 2] for results in by_name.values()]
    # Interleaved rounds are reported in no order; families are numbered as the program lists them.
    return sorted(medians, key=lambda result: int(str(result["family_index"])))


def benchmark_results(build: Path, name: str, options: List[str]) -> List[Dict[str, object]]:
    program = build / "bench" / f"sealkeeper_{name}_benchmark"
    output = subprocess.run([str(program), "--benchmark_format=json"] + options,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=True).stdout
    results = json.loads(output)["benchmarks"]
    for result in results:
        if result.get("error_occurred"):
            raise RuntimeError(f"{result['name']}: {result['error_message']}")
    return results


def add_own_round(build: Path, result: LzwResult) -> None:
    for entry in benchmark_results(build, "lzw", []):
        direction = re.sub(r"^LZW/", "", str(entry["name"]))
        if entry["time_unit"] != "ms":
            raise RuntimeError(f"{entry['name']}: expected milliseconds")
        result.own[direction].wall.append(float(str(entry["real_time"])) / 1000)
        result.own[direction].cpu.append(float(str(entry["cpu_time"])) / 1000)
        if direction == COMPRESS:
            result.own_compressed_bytes = int(float(str(entry["compressedBytes"])))


def run_lzw(build: Path, scratch: Path, rounds: int) -> LzwResult:
    """Our times are measured inside the process, from memory to memory. Theirs are of the whole
    command, from a file in the page cache to /dev/null."""
    block = scratch / "entries"
    compressed = scratch / "entries.Z"
    back = scratch / "entries.back"
    subprocess.run([str(build / "bench" / "sealkeeper_write_entry_block"), str(block)], check=True)
    result = LzwResult(block.stat().st_size)
    commands: List[Command] = []
    if shutil.which("compress"):
        commands = [Command(COMPRESS, ["compress", "-b", "12", "-c"], scratch, block),
                    Command(DECOMPRESS, ["compress", "-d", "-c"], scratch, compressed)]
        run(commands[0], compressed)
        run(commands[1], back)
        if back.read_bytes() != block.read_bytes():
            raise RuntimeError("compress did not give its input back")
        result.peer_compressed_bytes = compressed.stat().st_size
    steps: List[Callable[[], None]] = [partial(add_own_round, build, result)]
    for command in commands:
        times = result.peer.setdefault(command.name, Times())
        steps.append(partial(run, command, Path("/dev/null"), times))
    for number in range(rounds):
        say(f"lzw: round {number + 1} of {rounds}")
        for step in rotated(steps, number):
            step()
    return result
