"""Fails every call of every function and system call of the program, one run each. See tools/fault-sweep.sh."""

from __future__ import annotations

import argparse
import hashlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Dict, Iterable, Iterator, List, Mapping, NamedTuple, Optional, Sequence, Tuple

import catalogue_format
import runtime_conf_format
from fault_runs import LIBRARY, SYSTEM, Case, Frame, Run, Tools, Worker, seconds_since
from fault_table import MOST_CALLS, not_accounted_for, system_calls_not_accounted_for, tables
from rule_of_three import EXCEPTIONS, Finding, Verdict, judge
from scenes import COMPANION, GENERATE, INSPECT, PROGRAM, RUNTIME_SETTINGS, Credentials, Scene, SceneMaker

WORKERS = 2
PROGRESS_EVERY = 1000
SKIPPED = 77
SHOWN_FRAMES = 4


class Baseline(NamedTuple):
    """What a scene does without a fault."""

    clean: Run
    loading_calls: Mapping[str, int]
    calls: Mapping[str, Mapping[str, int]]


class Sweep:
    """The scenes, their unharmed runs, and the cases that follow from them."""

    def __init__(self, folder: Path, tools: Tools, credentials: Credentials) -> None:
        self._tools = tools
        self._credentials = credentials
        maker = SceneMaker(folder / "w", tools.programs[PROGRAM], credentials)
        scenes = maker.make_all_of_companion() if COMPANION in tools.programs else maker.make_all()
        self.scenes = {scene.name: scene for scene in scenes}
        self._workers = [Worker(maker.folder, tools)]
        # Paths of the same length lead to the same allocations.
        for number in range(1, WORKERS):
            shutil.copytree(maker.folder, folder / str(number), symlinks=True)
            self._workers.append(Worker(folder / str(number), tools))
        self.baselines = {scene.name: self._baseline(scene) for scene in self.scenes.values()}

    def cases(self) -> Iterator[Case]:
        """Every fault of every call."""
        for scene_name, baseline in self.baselines.items():
            for level, faults in tables().items():
                for function, count in sorted(baseline.calls[level].items()):
                    for call in range(1, min(count, MOST_CALLS.get(function, count)) + 1):
                        for fault in faults.get(function, ()):
                            # A wrong byte that is hashed first cannot be detected.
                            if fault.kind == "wrong" and self.scenes[scene_name].kind == GENERATE:
                                continue
                            for reach in fault.reaches:
                                yield Case(scene_name, level, function, call, reach, fault)

    def run_all(self, cases: Sequence[Case]) -> "Results":
        """Run the cases; each worker takes the next one."""
        results = Results(len(cases))
        waiting = iter(cases)
        lock = threading.Lock()

        def work(worker: Worker) -> None:
            while True:
                with lock:
                    case = next(waiting, None)
                if case is None:
                    return
                run, verdict = self.run_one(case, worker)
                with lock:
                    results.add(case, run, verdict)

        with ThreadPoolExecutor(len(self._workers)) as pool:
            for future in [pool.submit(work, worker) for worker in self._workers]:
                future.result()
        return results

    def run_one(self, case: Case, worker: Optional[Worker] = None) -> Tuple[Run, Verdict]:
        """Run one case and judge it."""
        scene, baseline = self.scenes[case.scene], self.baselines[case.scene]
        run = (worker or self._workers[0]).run(case, scene, baseline.loading_calls)
        certificate = self._credentials.good / "base_public.cer"
        return run, judge(Finding(scene, case, run, baseline.clean, certificate))

    def _baseline(self, scene: Scene) -> Baseline:
        first, *others = [worker.run_clean(scene) for worker in (*self._workers, self._workers[0])]
        for other in others:
            if (other.status, other.outputs) != (first.status, first.outputs) or (
                    scene.kind == INSPECT and other.console != first.console):
                raise RuntimeError(f"{scene.name}: two clean runs have different results")
        self._check_clean(scene, first)
        loading: Mapping[str, int] = {}
        system: Mapping[str, int] = {}
        if self._tools.strace is not None and not scene.has_threads:
            loading, system = self._workers[0].count_system_calls(scene)
            require_nothing(f"{scene.name}: system calls", system_calls_not_accounted_for(system))
        return Baseline(first, loading, {LIBRARY: first.calls, SYSTEM: system})

    # The clean outputs are the reference for all others, so they are checked by other means.
    def _check_clean(self, scene: Scene, run: Run) -> None:
        must_fail = (scene.name.startswith("verify-") and not scene.name.startswith("verify-good")
                     or scene.name in ("compare", "rules-warned"))
        if (run.status != 0) != must_fail or run.error_text:
            raise RuntimeError(f"{scene.name}: a clean run ends with {run.status}:\n{run.console}{run.error_text}")
        if scene.kind != GENERATE:
            return
        certificate = self._credentials.good / "base_public.cer"
        is_signed = catalogue_format.verify(run.outputs["base.bin"], certificate)
        catalogue_format.parse(run.outputs["base.bin"])
        if "runtime.conf" in scene.written:
            is_signed = is_signed and runtime_conf_format.verify(run.outputs["runtime.conf"], certificate)
            conf = runtime_conf_format.parse(run.outputs["runtime.conf"])
            is_signed = is_signed and (conf.max_active_instances, conf.crash_reporter_name) == RUNTIME_SETTINGS
        if not is_signed or run.outputs["base.cer"] != certificate.read_bytes():
            raise RuntimeError(f"{scene.name}: the outputs of a clean run are not good")


class Results:
    """The results of the cases so far."""

    def __init__(self, expected: int) -> None:
        self.violations: List[Tuple[Case, Run, Sequence[str]]] = []
        self.exceptions: Counter[str] = Counter()
        self.count = 0
        self.not_reached = 0
        self._expected = expected
        self._start = time.monotonic()

    def add(self, case: Case, run: Run, verdict: Verdict) -> None:
        """Add the result of one run."""
        self.count += 1
        self.not_reached += not run.struck
        self.exceptions.update(set(verdict.exceptions))
        if verdict.violations:
            self.violations.append((case, run, verdict.violations))
        if self.count % PROGRESS_EVERY == 0:
            taken = seconds_since(self._start)
            print(f"{self.count} of {self._expected} runs, {len(self.violations)} violations, {taken:.0f} s", flush=True)

    def print_summary(self, program: Path) -> None:
        """Print each violation on a line, then how often each exception applied."""
        callers = source_lines(program, (run.frames for _, run, _ in self.violations))
        for case, run, texts in sorted(self.violations, key=lambda violation: violation[0].name):
            places = [callers[frame] for frame in run.frames if frame in callers][:SHOWN_FRAMES]
            about = f" of {run.subject}" if run.subject else ""
            print(f"VIOLATION {case.name}{about}: {'; '.join(texts)}"
                  + (f" [{' < '.join(places)}]" if places else ""))
        for known in EXCEPTIONS:
            print(f"exception: {known.name}: {self.exceptions[known.name]} runs")
        print(f"{self.count} runs in {seconds_since(self._start):.0f} s, in {self.not_reached} of them the fault was not "
              f"reached; {len(self.violations)} violations")


def source_lines(program: Path, frames: Iterable[Sequence[Frame]]) -> Dict[Frame, str]:
    """The source lines of the program's own frames."""
    own = sorted({frame for group in frames for frame in group if Path(frame.module).name == program.name})
    tool = shutil.which("addr2line")
    if not own or tool is None:
        return {}
    # A frame holds the return address, which is after the call.
    addresses = [f"{frame.offset - 1:#x}" for frame in own]
    lines = subprocess.run([tool, "-s", "-e", str(program), *addresses], capture_output=True, text=True, check=True)
    found = (line.split(" ")[0] for line in lines.stdout.splitlines())
    return {frame: place for frame, place in zip(own, found) if "?" not in place}


def sample(cases: Iterable[Case], size: int) -> List[Case]:
    """A fixed sample of this size: each function in turn, its cases in a pseudo-random order."""
    by_function: Dict[Tuple[str, str], List[Tuple[bytes, Case]]] = {}
    for case in cases:
        lot = hashlib.sha256(case.name.encode()).digest()
        by_function.setdefault((case.level, case.function), []).append((lot, case))
    queues = [sorted(group, reverse=True) for _, group in sorted(by_function.items())]
    chosen: List[Case] = []
    while queues and len(chosen) < size:
        queues = [queue for queue in queues if queue]
        chosen += [queue.pop()[1] for queue in queues]
    return chosen[:size]


def require_nothing(what: str, names: Sequence[str]) -> None:
    """Exit if names are left over: the sweep would claim more than it covers."""
    if names:
        raise RuntimeError(f"{what} are neither covered nor named as not failing: {', '.join(names)}")


def imported_functions(program: Path) -> List[str]:
    """The functions that the program and the cryptographic libraries import, without symbol versions."""
    # As ldd does, which knows no programs for other machines.
    environment = {**os.environ, "LD_TRACE_LOADED_OBJECTS": "1"}
    linked = subprocess.run([str(program)], capture_output=True, text=True, check=True, env=environment).stdout
    libraries = re.findall(r"=> (\S*/libmbed\S*)", linked)
    names: List[str] = []
    for module in [str(program), *libraries]:
        listed = subprocess.run(["readelf", "--dyn-syms", "--wide", module], capture_output=True, text=True, check=True)
        # Which data is imported depends on the machine.
        imported = re.findall(r"\s(?!OBJECT|TLS)\S+\s+(?:GLOBAL|WEAK)\s+\S+\s+UND ([^\s@]+)", listed.stdout)
        # The program has no influence on what these libraries call in each other.
        names += [name for name in imported if module == str(program) or not name.startswith("mbedtls_")]
    return sorted(set(names))


def arguments_of(command_line: Sequence[str]) -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path)
    parser.add_argument("--companion", type=Path, help="sweep this one, and make its games with the program")
    parser.add_argument("--preload", type=Path)
    parser.add_argument("--credentials", type=Path, help="the folder of the credentials issued for the tests")
    parser.add_argument("--revocation-list", type=Path)
    parser.add_argument("--sample", type=int, metavar="N", help="N runs of all, the same ones each time")
    parser.add_argument("--only", metavar="TEXT", help="only the cases whose name begins so")
    parser.add_argument("--case", metavar="NAME", help="one case, with its console")
    parser.add_argument("--exceptions", action="store_true", help="print what is excepted from the rule, and why")
    return parser.parse_args(command_line)


def show(case: Case, run: Run, verdict: Verdict, program: Path) -> None:
    """Everything known about one case."""
    print(run.console)
    print(f"-- {case.name}: status {run.status}, {'struck ' + run.subject if run.struck else 'not reached'}")
    callers = source_lines(program, [run.frames])
    print("-- called from: " + " < ".join(callers.get(frame, Path(frame.module).name) for frame in run.frames))
    print(f"-- violations: {verdict.violations or 'none'}; exceptions: {verdict.exceptions or 'none'}")


def main(command_line: Sequence[str]) -> int:
    options = arguments_of(command_line)
    if options.exceptions:
        for known in EXCEPTIONS:
            print(f"{known.name}: {known.reason}")
        return 0
    programs = {PROGRAM: options.program.resolve()}
    if options.companion:
        programs[COMPANION] = options.companion.resolve()
    program = list(programs.values())[-1]
    require_nothing("functions", not_accounted_for(imported_functions(program)))
    strace = shutil.which("strace")
    if strace is None:
        print("strace is not here: system calls inside the C library do not fail in this run.")
    tools = Tools(programs, options.preload.resolve(), strace)
    issued = options.credentials.resolve()
    credentials = Credentials(issued / "good", issued / "other-key", issued / "other-name",
                              options.revocation_list.resolve())
    with tempfile.TemporaryDirectory(prefix="sealkeeper-sweep-") as folder:
        sweep = Sweep(Path(folder).resolve(), tools, credentials)
        cases: Iterable[Case] = sweep.cases()
        if options.case:
            case = next(case for case in cases if case.name == options.case)
            run, verdict = sweep.run_one(case)
            show(case, run, verdict, program)
            return 1 if verdict.violations else 0
        if options.only:
            cases = (case for case in cases if case.name.startswith(options.only))
        chosen = sample(cases, options.sample) if options.sample else list(cases)
        print(f"{len(chosen)} runs to do", flush=True)
        results = sweep.run_all(chosen)
        results.print_summary(program)
    # A sweep without runs proves nothing.
    return 1 if results.violations or results.count == 0 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
