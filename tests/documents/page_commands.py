"""Runs the commands of a page, in the order of its blocks.

A block of the kind "sh" is a script. One of the kind "console" shows a terminal: a command after each "$ ", and its
output below. In the output "..." stands for any text, and a line of only that for any number of lines.
"""

from __future__ import annotations

import re
import subprocess
from dataclasses import dataclass, field
from pathlib import Path
from typing import Dict, List

from document_blocks import Block

ANY_LINES = "(?:.*\n)*"
# Blocks are pasted into one shell, so what a block leaves in force holds for all that follow.
SAME_MASK = 'status=$?\n[ "$(umask)" = "$mask" ] || { echo "leaves a umask of $(umask)" >&2; exit 1; }\nexit $status\n'
TIMEOUT_SECONDS = 300
# Progress dots, which a slow machine appends: after a hashed file, after a verdict, or on an empty line.
DOTTED = re.compile(r"^(\[Info\] Hashing .*?\.\.\.|\[\w+!?\] \[(?:Success|Failure)\] .*['\)]\.|)\.+$", re.MULTILINE)


class WrongPage(AssertionError):
    """A command did not do what the page shows."""


def without_progress(printed: str) -> str:
    """What sealkeeper prints on a machine that is fast enough to show no progress."""
    return DOTTED.sub(r"\1", printed)


@dataclass
class Shown:
    """A command and the output that the page shows for it."""

    command: str
    output: List[str] = field(default_factory=list)

    def asks_for_status(self) -> bool:
        """Whether the command only prints the status of the one before it."""
        return self.command == "echo $?"

    def matches(self, printed: str) -> bool:
        """Whether the output is as the page shows it, except for trailing blank lines."""
        lines = (ANY_LINES if line == "..." else re.escape(line).replace(re.escape("..."), ".*") + "\n"
                 for line in self.output)
        ended = printed.rstrip("\n") + "\n" if printed else ""
        return re.fullmatch("".join(lines), ended) is not None


def shown_in(block: Block) -> List[Shown]:
    """The commands of a block of the kind "console"."""
    commands: List[Shown] = []
    for line in block.text.splitlines():
        if line.startswith("$ "):
            commands.append(Shown(line[2:]))
        elif commands[-1].command.endswith("\\"):
            commands[-1].command += "\n" + line
        else:
            commands[-1].output.append(line)
    return commands


class Shell:
    """Runs blocks, each from the same directory and with the same environment."""

    def __init__(self, directory: Path, environment: Dict[str, str]) -> None:
        self._directory = directory
        self._environment = environment

    def run_block(self, block: Block) -> None:
        """Run a block. Raises WrongPage at the first command that differs from the page."""
        if block.kind == "sh":
            run = self._run(f"set -euo pipefail\nmask=$(umask)\n{block.text}{SAME_MASK}")
            if run.returncode != 0:
                raise WrongPage(f"{block.text}status {run.returncode}\n{run.stdout}{run.stderr}")
            return
        status = 0
        commands = shown_in(block)
        for index, shown in enumerate(commands):
            if shown.asks_for_status():
                continue
            run = self._run("set -o pipefail\n" + shown.command)
            status = run.returncode
            wanted = self._status_shown_after(commands, index)
            if status != wanted or not shown.matches(run.stdout):
                raise WrongPage(f"{shown.command}\nstatus {status}, shown is {wanted}\n"
                                f"{run.stdout}{run.stderr}")

    @staticmethod
    def _status_shown_after(commands: List[Shown], index: int) -> int:
        """0 if the page shows none."""
        following = commands[index + 1:index + 2]
        return int(following[0].output[0]) if following and following[0].asks_for_status() else 0

    def _run(self, script: str) -> "subprocess.CompletedProcess[str]":
        return subprocess.run(["bash", "-c", script], cwd=self._directory, env=self._environment, check=False,
                              capture_output=True, text=True, stdin=subprocess.DEVNULL, timeout=TIMEOUT_SECONDS)
