"""Prints results as Markdown."""
from typing import Dict, List, Optional, Sequence

from benchmark_runs import COMPRESS, DECOMPRESS, LzwResult
from cold_runs import READING, ColdResult
from peers import PEERS, peers_with_jobs
from tree_runs import GENERATE, VERIFY, TreeResult, with_jobs

MIB = 2**20

OWN = (GENERATE, VERIFY)
TIME_COLUMNS = ("command", "median s", "lowest s", "highest s", "times as fast as the fastest peer")
# How each kind of tree differs from files of 1 KiB with short paths.
FILE_KINDS = {"files": "", "deep": ", paths of 100 characters", "larger": ", one of them of 5 MiB"}


def print_table(header: Sequence[str], rows: Sequence[Sequence[str]]) -> None:
    print("| " + " | ".join(header) + " |")
    print("|---" + "|--:" * (len(header) - 1) + "|")
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print(flush=True)


def mebibytes(size: Optional[int]) -> str:
    return "not measured" if size is None else f"{size / MIB:.1f}"


def peak_memory(result: TreeResult, command: str) -> str:
    peak = mebibytes(result.peak_memory[command])
    return f"**{peak}**" if result.exceeds_memory(command) else peak


def allowed_memory(result: TreeResult, command: str) -> str:
    return mebibytes(result.allowed_memory[command])


def print_exceeded_memory(results: Sequence[TreeResult]) -> None:
    exceeded = [f"{result.tree} ({', '.join(commands)})" for result in results
                for commands in [result.exceeding_memory()] if commands]
    if exceeded:
        print("**More memory than is allowed:** " + ", ".join(exceeded) + ".\n", flush=True)


def ratio(result: TreeResult, command: str) -> str:
    """How many times as fast as the fastest peer each command is."""
    peer = result.fastest_peer()
    if peer is None:
        return "no peer"
    return f"{result.times[peer].median / result.times[command].median:.2f}"


def time_columns(result: TreeResult, name: str, missing: str) -> List[str]:
    times = result.times.get(name)
    if times is None:
        return [name, missing, "", "", ""]
    return [name, f"{times.median:.3f}", f"{min(times.wall):.3f}", f"{max(times.wall):.3f}",
            ratio(result, name) if name in OWN else ""]


def print_tree(result: TreeResult, jobs: Optional[int]) -> None:
    commands = [*OWN, *PEERS]
    if jobs is not None:
        commands = [*own_with_jobs(jobs), *PEERS, *peers_with_jobs(jobs)]
    print(f"### {result.tree}: files {result.file_count:,}, bytes {result.size_bytes:,}\n")
    print_table((*TIME_COLUMNS, "peak MiB", "allowed MiB"),
                [[*time_columns(result, name, "not installed"),
                  peak_memory(result, name) if name in result.peak_memory else "",
                  allowed_memory(result, name) if name in result.peak_memory else ""]
                 for name in commands])
    print_exceeded_memory([result])


def print_cold(cold: ColdResult) -> None:
    result = cold.result
    print(f"### Cold page cache, {result.tree}: files {result.file_count:,}, "
          f"bytes {result.size_bytes:,}\n")
    missing = "not measured" if cold.obstacle else "not installed"
    print_table(TIME_COLUMNS, [time_columns(result, name, missing)
                               for name in (*OWN, *PEERS, READING)])
    if cold.obstacle:
        print(f"Not measured: {cold.obstacle}.\n", flush=True)
        return
    proof = ("fincore found none of their pages there" if cold.is_proven
             else "whether it worked is unknown")
    print("These figures depend on the disk. The files were evicted from the page cache before "
          f"each command; {proof}.\n", flush=True)


def print_summary(results: Sequence[TreeResult]) -> None:
    print("### Times as fast as the fastest peer\n")
    print_table(("tree", "generate", "verify", "fastest peer"),
                [(result.tree, ratio(result, GENERATE), ratio(result, VERIFY),
                  result.fastest_peer() or "none installed") for result in results])


def own_with_jobs(jobs: int) -> List[str]:
    """Compares each command with itself without jobs."""
    return [name for command in OWN for name in (command, with_jobs(command, jobs))]


def ratio_to(result: TreeResult, command: str, other: str) -> str:
    if other not in result.times:
        return "not installed"
    return f"{result.times[other].median / result.times[command].median:.2f}"


def print_jobs(results: Sequence[TreeResult], jobs: int) -> None:
    print(f"### With {jobs} jobs, times as fast as\n")
    rows = []
    for result in results:
        for command in OWN:
            name = with_jobs(command, jobs)
            rows.append((result.tree, name, *(ratio_to(result, name, other)
                                              for other in (command, *peers_with_jobs(jobs)))))
    print_table(("tree", "command", "our single job", *peers_with_jobs(jobs)), rows)


def compressed_columns(name: str, compressed_bytes: Optional[int], size_bytes: int) -> List[str]:
    if compressed_bytes is None:
        return [name, "not installed", ""]
    return [name, f"{compressed_bytes:,}", f"{100 * compressed_bytes / size_bytes:.1f}"]


def print_lzw(result: LzwResult) -> None:
    print(f"### LZW: an entry block of {result.size_bytes:,} bytes\n")
    rows = []
    for direction in (COMPRESS, DECOMPRESS):
        own = result.own[direction]
        peer = result.peer.get(direction)
        peer_columns = ("not installed", "", "") if peer is None else (
            f"{peer.median:.3f}", f"{peer.median_cpu:.3f}", f"{peer.median_cpu / own.median_cpu:.2f}")
        rows.append((direction, f"{own.median:.3f}", f"{own.median_cpu:.3f}", *peer_columns))
    print_table(("direction", "ours s", "ours CPU s", "compress s", "compress user+sys s",
                 "ours times as fast, by CPU"), rows)
    print_table(("compressed by", "bytes", "% of the block"),
                [compressed_columns("ours", result.own_compressed_bytes, result.size_bytes),
                 compressed_columns("compress", result.peer_compressed_bytes, result.size_bytes)])


def print_kernels(results: Sequence[Dict[str, object]]) -> None:
    print("### SHA-256 in the L2 cache\n")
    rows = []
    for result in results:
        _, implementation, lanes = str(result["run_name"]).split("/")
        rate = float(str(result["bytes_per_second"])) / 1e9
        rows.append((implementation, lanes, f"{rate:.2f}"))
    print_table(("implementation", "lanes", "GB/s"), rows)


def print_conversions(results: Sequence[Dict[str, object]]) -> None:
    print("### Text conversions of one path\n")
    rows = []
    for result in results:
        conversion, path = str(result["run_name"]).split("/")
        rows.append((conversion, path, f"{float(str(result['cpu_time'])):.0f}"))
    print_table(("conversion", "path", "ns"), rows)


def print_per_file(results: Sequence[TreeResult]) -> None:
    """The first result is of one file: the fixed cost of a run."""
    base = results[0]
    print("### Cost per file of 1 KiB\n")
    rows = []
    for result in results:
        row = [f"{result.file_count:,}" + FILE_KINDS[result.tree.partition("-")[0]]]
        for command in OWN:
            seconds = result.times[command].median
            above = seconds - base.times[command].median
            added = result.file_count - base.file_count
            row += [f"{seconds:.3f}", f"{seconds / result.file_count * 1e6:.1f}",
                    f"{above / added * 1e6:.1f}" if added else "",
                    peak_memory(result, command), allowed_memory(result, command)]
        rows.append(row)
    costs = ("µs per file", "without the run on one file", "peak MiB", "allowed MiB")
    print_table(("files", "generate s", *costs, "verify s", *costs), rows)
    print_exceeded_memory(results)


def print_per_byte(results: Sequence[TreeResult]) -> None:
    print("### Cost per byte of one file\n")
    rows = []
    for result in results:
        row = [f"{result.size_bytes / MIB:,.0f}"]
        for command in OWN:
            seconds = result.times[command].median
            row += [f"{seconds:.3f}", f"{seconds / result.size_bytes * 1e9:.3f}",
                    peak_memory(result, command), allowed_memory(result, command)]
        rows.append(row)
    costs = ("ns per byte", "peak MiB", "allowed MiB")
    print_table(("MiB", "generate s", *costs, "verify s", *costs), rows)
    print_exceeded_memory(results)
