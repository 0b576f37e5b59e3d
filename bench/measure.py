"""Runs commands and measures their time and memory."""
import os
import shutil
import statistics
import subprocess
import time
from dataclasses import dataclass, field
from pathlib import Path
from typing import List, Optional, Sequence, TypeVar

T = TypeVar("T")


@dataclass(frozen=True)
class Command:
    """A command line, run in `directory` with `input` as standard input."""

    name: str
    arguments: List[str]
    directory: Path
    input: Optional[Path] = None


@dataclass
class Times:
    """Seconds of each run of one command."""

    wall: List[float] = field(default_factory=list)
    # User and system time.
    cpu: List[float] = field(default_factory=list)

    @property
    def median(self) -> float:
        return statistics.median(self.wall)

    @property
    def median_cpu(self) -> float:
        return statistics.median(self.cpu)


class CommandFailed(Exception):
    pass


def run(command: Command, log: Path, times: Optional[Times] = None) -> None:
    """Runs `command` with all its output in `log`, and adds its times to `times`."""
    with open(command.input or os.devnull, "rb") as source, open(log, "wb") as output:
        start = time.perf_counter()
        process = subprocess.Popen(command.arguments, cwd=command.directory, stdin=source,
                                   stdout=output, stderr=subprocess.STDOUT)
        try:
            _, status, usage = os.wait4(process.pid, 0)
        except BaseException:
            process.kill()
            process.wait()
            raise
        wall = time.perf_counter() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        end = log.read_bytes()[-2000:].decode(errors="replace")
        raise CommandFailed(f"{command.name}: {' '.join(command.arguments)}\n"
                            f"ended with {process.returncode}; its last output was:\n{end}")
    if times is not None:
        times.wall.append(wall)
        times.cpu.append(usage.ru_utime + usage.ru_stime)


def rotated(commands: Sequence[T], number: int) -> List[T]:
    """The commands in the order of round `number`: each round starts with another one."""
    start = number % len(commands)
    return [*commands[start:], *commands[:start]]


def gnu_time() -> Optional[str]:
    """GNU time, which other systems call gtime; None if it is missing."""
    for name in ("gtime", "/usr/bin/time"):
        program = shutil.which(name)
        if program is None:
            continue
        trial = subprocess.run([program, "-f", "%M", "true"], capture_output=True, text=True,
                               check=False)
        if trial.returncode == 0 and trial.stderr.strip().isdigit():
            return program
    return None


def run_for_peak_memory(command: Command, log: Path) -> Optional[int]:
    """Runs `command` and returns its peak resident memory in bytes; None if that is unknown.

    What the system reports for a child includes the memory of the forked parent before exec, so a
    small program runs in between.
    """
    program = gnu_time()
    if program is None:
        run(command, log)
        return None
    result = log.with_name("peak-memory")
    arguments = [program, "-f", "%M", "-o", str(result)] + command.arguments
    run(Command(command.name, arguments, command.directory, command.input), log)
    return int(result.read_text()) * 1024
