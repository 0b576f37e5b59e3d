"""Runs of a program with a terminal for one of its outputs."""

from __future__ import annotations

import fcntl
import os
import pty
import select
import struct
import subprocess
import tempfile
import termios
import time
import tty
from dataclasses import dataclass
from pathlib import Path
from typing import Mapping, Optional, Sequence

import e2e_console as console
from e2e_support import TIMEOUT_SECONDS


@dataclass(frozen=True)
class TerminalRun:
    """One finished run: exit status, what the terminal was sent, and what went to the other output."""

    status: int
    shown: str
    other: str


def run_on_terminal(
    command_line: Sequence[object],
    *,
    of_errors: bool = False,
    environment: Optional[Mapping[str, str]] = None,
    directory: Optional[Path] = None,
) -> TerminalRun:
    """Run with a terminal of 80 columns for standard output or, with of_errors, for standard error.

    Raises TimeoutError or subprocess.TimeoutExpired, with the program killed, if it takes too long.
    """
    master, slave = pty.openpty()
    fcntl.ioctl(master, termios.TIOCSWINSZ, struct.pack("HHHH", 24, 80, 0, 0))
    # Otherwise the terminal puts a carriage return before each line feed.
    tty.setraw(slave)
    # A file: a pipe that nobody reads while the terminal is read may fill.
    with tempfile.TemporaryFile() as other:
        outputs = (other, slave) if of_errors else (slave, other)
        with subprocess.Popen(
            [console.to_bytes(str(argument)) for argument in command_line],
            cwd=directory,
            env={**os.environ, **(environment or {})},
            stdin=subprocess.DEVNULL,
            stdout=outputs[0],
            stderr=outputs[1],
        ) as process:
            os.close(slave)
            deadline = time.monotonic() + TIMEOUT_SECONDS
            try:
                shown = _read_to_end(master, deadline)
                status = process.wait(timeout=max(0.0, deadline - time.monotonic()))
            except (TimeoutError, subprocess.TimeoutExpired):
                # Otherwise leaving the block would wait for it.
                process.kill()
                raise
        other.seek(0)
        return TerminalRun(status, console.to_text(shown), console.to_text(other.read()))


def _read_to_end(master: int, deadline: float) -> bytes:
    output = b""
    with open(master, "rb", buffering=0) as terminal:
        while True:
            if not select.select([terminal], [], [], max(0.0, deadline - time.monotonic()))[0]:
                raise TimeoutError(f"the terminal is still open; so far it was sent {output!r}")
            try:
                read = terminal.read(65536)
            except OSError:
                # On Linux this means that the other side is closed.
                return output
            if not read:
                return output
            output += read
