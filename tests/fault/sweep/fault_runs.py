"""Runs of the program in a scene: unharmed, with one function failing, or with one system call failing.

Functions that the program and its libraries call are failed by a preloaded library (tests/fault/preload). It does not
see the calls that the C library makes inside itself, so system calls are failed by strace.
"""

from __future__ import annotations

import os
import re
import signal
import subprocess
import time
from collections import Counter
from dataclasses import dataclass, field
from pathlib import Path
from typing import Dict, List, Mapping, NamedTuple, Optional, Sequence, Tuple

from fault_table import ONWARDS, Fault
from scenes import Scene, read_outputs, restore_outputs

LIMIT_SECONDS = 10
LIBRARY, SYSTEM = "library", "system"
# Written to no file by the preloaded library where the program begins.
MARK = 'write(-1, "sealkeeper begins'


class Case(NamedTuple):
    """One fault in one scene. `call` counts from 1, from where the program begins."""

    scene: str
    level: str
    function: str
    call: int
    reach: str
    fault: Fault

    @property
    def name(self) -> str:
        """The text for --case that runs it again."""
        return "/".join([self.scene, self.level, self.function, str(self.call), self.reach, self.fault.name])


class Frame(NamedTuple):
    """A caller: a module and an offset in it."""

    module: str
    offset: int


@dataclass(frozen=True)
class Run:
    """The result of a run."""

    # Negative for the number of a signal.
    status: int
    console: str
    error_text: str
    timed_out: bool
    outputs: Mapping[str, bytes]
    struck: bool = False
    # A path, "stdout" or empty.
    subject: str = ""
    frames: Sequence[Frame] = ()
    calls: Mapping[str, int] = field(default_factory=dict)


@dataclass(frozen=True)
class Tools:
    """The tools that run the scenes."""

    # The path of each of the two programs by its name.
    programs: Mapping[str, Path]
    preload: Path
    # Without strace, no system calls are failed.
    strace: Optional[str]


class Worker:
    """Runs scenes one after another, each in the worker's own copy."""

    def __init__(self, folder: Path, tools: Tools) -> None:
        self.folder = folder
        self._tools = tools
        self._report = folder / "report"

    def run_clean(self, scene: Scene) -> Run:
        """Without a fault. Counts the calls of each function."""
        return self._run(scene, self._command(scene), self._preload_environment())

    def run(self, case: Case, scene: Scene, loading_calls: Mapping[str, int]) -> Run:
        """With one fault. `loading_calls` are the system calls before the program begins."""
        if case.level == SYSTEM:
            return self._run_system_case(case, scene, loading_calls.get(case.function, 0))
        plan = f"{case.function}:{case.call}:{case.reach}:{case.fault.kind}:{case.fault.value}"
        environment = self._preload_environment(SEALKEEPER_FAULT=plan)
        return self._run(scene, self._command(scene), environment)

    def count_system_calls(self, scene: Scene) -> Tuple[Dict[str, int], Dict[str, int]]:
        """The calls while the program is loaded, and the calls of its first thread from where it begins."""
        trace = self.folder / "trace"
        self._run(scene, self._strace(["-o", str(trace)], scene), os.environ)
        loading: Counter[str] = Counter()
        running: Counter[str] = Counter()
        counted = loading
        lines = trace.read_text(errors="replace").splitlines()
        first_thread = lines[0].split()[0]
        for line in lines:
            thread, _, call = line.partition(" ")
            call = call.lstrip()
            name = re.match(r"(\w+)\(", call)
            if thread != first_thread or name is None:
                continue
            counted[name.group(1)] += 1
            if call.startswith(MARK):
                counted = running
        if counted is loading:
            raise RuntimeError(f"{scene.name}: the trace does not show where the program begins")
        return dict(loading), dict(running)

    # The write of the mark counts as made during loading, as it does for strace.
    def _run_system_case(self, case: Case, scene: Scene, loading_calls: int) -> Run:
        trace = self.folder / "trace"
        trace.unlink(missing_ok=True)
        when = f"{loading_calls + case.call}{'+' if case.reach == ONWARDS else ''}"
        options = ["-o", str(trace), "-y", "-s", "4096", "-e", f"trace={case.function}"]
        options += ["-e", f"inject={case.function}:error={case.fault.name}:when={when}"]
        run = self._run(scene, self._strace(options, scene), os.environ)
        injected = [line for line in trace.read_text(errors="replace").splitlines() if line.endswith("(INJECTED)")]
        return Run(run.status, run.console, run.error_text, run.timed_out, run.outputs, bool(injected),
                   subject_of(injected[0]) if injected else "")

    def _strace(self, options: Sequence[str], scene: Scene) -> List[str]:
        assert self._tools.strace is not None
        environment = ["-E", f"LD_PRELOAD={self._tools.preload}", "-E", "SEALKEEPER_FAULT_MARK=1"]
        return [self._tools.strace, "-f", "-qq", "--seccomp-bpf", "-e", "signal=none", *options, *environment,
                *self._command(scene)]

    def _command(self, scene: Scene) -> List[str]:
        return [str(self._tools.programs[scene.program]), *scene.arguments_in(self.folder / scene.name)]

    def _preload_environment(self, **more: str) -> Mapping[str, str]:
        self._report.unlink(missing_ok=True)
        loaded = {"LD_PRELOAD": str(self._tools.preload), "SEALKEEPER_FAULT_REPORT": str(self._report)}
        return {**os.environ, **loaded, **more}

    def _run(self, scene: Scene, command: Sequence[str], environment: Mapping[str, str]) -> Run:
        folder = self.folder / scene.name
        restore_outputs(folder, scene.before)
        process = subprocess.Popen(
            command,
            cwd=folder,
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            # A process group of its own, so that all of it can be ended.
            start_new_session=True,
        )
        timed_out = False
        try:
            console, errors = process.communicate(timeout=LIMIT_SECONDS)
        except subprocess.TimeoutExpired:
            timed_out = True
            os.killpg(process.pid, signal.SIGKILL)
            console, errors = process.communicate()
        struck, subject, frames, calls = self._read_report()
        # The same text for every worker.
        text = console.decode(errors="replace").replace(str(self.folder), "/worker")
        return Run(process.returncode, text, errors.decode(errors="replace"), timed_out, read_outputs(folder),
                   struck, subject, frames, calls)

    def _read_report(self) -> Tuple[bool, str, List[Frame], Dict[str, int]]:
        struck, subject = False, ""
        frames: List[Frame] = []
        calls: Dict[str, int] = {}
        lines = self._report.read_text(errors="replace").splitlines() if self._report.exists() else []
        for line in lines:
            kind, _, rest = line.partition(" ")
            if kind == "struck":
                struck, subject = True, rest.split(" ", 2)[2]
            elif kind == "frame":
                module, _, offset = rest.rpartition(" ")
                frames.append(Frame(module, int(offset, 16)))
            elif kind == "calls":
                name, count = rest.split()
                calls[name] = int(count)
        return struck, subject, frames, calls


def subject_of(traced: str) -> str:
    """The path in a traced call: that of its descriptor, or its argument."""
    call = traced.split(" ", 1)[1].lstrip()
    arguments = call.partition("(")[2]
    descriptor = re.match(r"(\d+)(?:<(.*?)>)?[,)]", arguments)
    if descriptor:
        return "stdout" if descriptor.group(1) == "1" else descriptor.group(2) or ""
    named = re.search(r'"((?:[^"\\]|\\.)*)"', arguments)
    return named.group(1) if named else ""


def seconds_since(start: float) -> float:
    """By a monotonic clock."""
    return time.monotonic() - start
