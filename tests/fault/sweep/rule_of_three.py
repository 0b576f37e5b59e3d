"""What must hold after a run with a fault, and the deliberate behaviour that is excepted.

After a single fault either the outputs are those of the clean run, or the exit status is not 0 and no output that was
good before is damaged. Verify and list may give a worse verdict, never a better one. They end with 0 only if the clean
run does and its lines are printed, and they do not skip a check that prints nothing. In all cases: no signal, an end
within ten seconds, a documented status, nothing on standard error, and no stray file among the signed ones.

The companion writes nothing. It ends with 0 only if the clean run does, and then with the same report. With the clean
run's status and another report it must say why. It is never silent.
"""

from __future__ import annotations

import re
from dataclasses import dataclass
from pathlib import Path
from typing import Callable, Dict, FrozenSet, List, Mapping, NamedTuple, Sequence, Tuple

import catalogue_format
import runtime_conf_format
from catalogue_entry import Entry
from fault_runs import LIMIT_SECONDS, Case, Run
from fault_table import ONWARDS
from format_error import FormatError
from scenes import BIG_FILE, GENERATE, INSPECT, RUNTIME_SETTINGS, SKIPPED_FILE, VERIFY, Scene

# docs/exit-status.md.
DOCUMENTED_STATUSES: FrozenSet[int] = frozenset(
    [*range(0, 6), *range(7, 25), 26, 27, *range(30, 36)]
)
# docs/inspect: good, warnings, errors, a wrong command line; and those of verify with additions to the game.
INSPECT_STATUSES: FrozenSet[int] = frozenset([0, 1, 2, 64])
CHECK_STATUSES: FrozenSet[int] = DOCUMENTED_STATUSES | frozenset([40, 64])
OLD, CLEAN, OTHER = "old", "clean", "other"


@dataclass(frozen=True)
class Finding:
    """A run, and what it is judged by."""

    scene: Scene
    case: Case
    run: Run
    clean: Run
    # The catalogue of the run is signed for this one.
    certificate: Path


class DemandedException(NamedTuple):
    """Deliberate behaviour that the rule would not allow."""

    name: str
    reason: str
    # Whether it explains the effect on one output or, for CONSOLE, an exit status of 0 with other lines.
    explains: Callable[[Finding, str], bool]


class Verdict(NamedTuple):
    """What a run broke, in words, and which exceptions excused it."""

    violations: Sequence[str]
    exceptions: Sequence[str]


CONSOLE = "console"
# The output of the companion.
REPORT = "report"
MISSING = ("ENOENT", "ENOTDIR")
FORBIDDEN_OR_MISSING = ("EACCES", *MISSING)
STATUS_CALLS = ("stat", "lstat", "newfstatat", "statx")
WRITING_CALLS = ("write", "fwrite", "fputs", "fputc", "fprintf", "fflush")
RULES_SCENES = ("rules", "rules-warned")
LINK_CALLS = ("readlink", "readlinkat", "realpath", "getcwd")
DIRECTORY_CALLS = (*STATUS_CALLS, "opendir", "scandir", "openat", "getdents64")
PATTERN_MESSAGE = "The following did not match any files"
LEFT_OUT_MESSAGES = ("Unable to open '", "The following path couldn't be opened: '", PATTERN_MESSAGE)
EMPTY_FILE_MESSAGE = "[Warning] Empty file: '"
UNKNOWN_LETTERS = "Letter case was compared in ASCII letters only"
EMPTIED, LEFT_OUT, LET_IN = "emptied", "left out", "let in"
RUNTIME_SECTION = "Validating runtime configuration file at: "


def judge(finding: Finding) -> Verdict:
    """Judge a run by the rule."""
    violations = _always(finding)
    exceptions: List[str] = []
    judged = {GENERATE: _judge_generate, INSPECT: _judge_inspect}.get(finding.scene.kind, _judge_reading)
    for subject, text in judged(finding):
        excused = [known.name for known in EXCEPTIONS if known.explains(finding, subject)]
        if excused:
            exceptions.append(excused[0])
        else:
            violations.append(text)
    return Verdict(violations, exceptions)


def _always(finding: Finding) -> List[str]:
    run = finding.run
    violations = []
    if run.timed_out:
        violations.append(f"did not end within {LIMIT_SECONDS} s")
    elif run.status < 0 or run.status > 128:
        violations.append(f"ended by signal {-run.status if run.status < 0 else run.status - 128}")
    elif run.status not in _documented_statuses(finding.scene):
        violations.append(f"ended with {run.status}, which is not documented")
    if run.error_text and (finding.scene.kind != INSPECT or run.status == 0):
        violations.append(f"wrote to standard error: {run.error_text.strip()[:80]!r}")
    strange = sorted(set(run.outputs) - set(finding.scene.before) - set(finding.clean.outputs))
    if strange and finding.case.function not in ("unlink", "unlinkat", "remove"):
        violations.append(f"left {', '.join(strange)} behind")
    return violations


def _documented_statuses(scene: Scene) -> FrozenSet[int]:
    if scene.kind != INSPECT:
        return DOCUMENTED_STATUSES
    return CHECK_STATUSES if scene.name == "check" else INSPECT_STATUSES


def _judge_inspect(finding: Finding) -> List[Tuple[str, str]]:
    run, clean = finding.run, finding.clean
    found = []
    if run.outputs != finding.scene.before:
        found.append(("outputs", "changed the signed files"))
    if run.status == 0 and clean.status != 0:
        found.append((REPORT, f"ended with 0 in place of {clean.status}"))
    elif run.console != clean.console and (run.status == 0 or run.status == clean.status and not run.error_text):
        found.append((REPORT, f"ended with {run.status} and {_first_difference(run.console, clean.console)}"))
    if run.status != 0 and not run.console and not run.error_text:
        found.append((REPORT, f"ended with {run.status} and said nothing"))
    return found


def _judge_generate(finding: Finding) -> List[Tuple[str, str]]:
    run, clean, before = finding.run, finding.clean, finding.scene.before
    found = []
    for name in sorted({*before, *clean.outputs}):
        state = _state_of(run.outputs.get(name), before.get(name), clean.outputs.get(name))
        if run.status == 0 and state != CLEAN:
            what = "no" if name not in run.outputs else "the old" if state == OLD else "another"
            found.append((name, f"ended with 0 and {what} {name}"))
        elif run.status != 0 and state == OTHER and name in before:
            what = "lost" if name not in run.outputs else "damaged"
            found.append((name, f"ended with {run.status} and {what} {name}"))
    return found


def _state_of(content: object, old: object, clean: object) -> str:
    if content == clean:
        return CLEAN
    return OLD if content == old else OTHER


def _judge_reading(finding: Finding) -> List[Tuple[str, str]]:
    run, clean = finding.run, finding.clean
    found = []
    if run.outputs != finding.scene.before:
        found.append(("outputs", "changed the signed files"))
    if run.status == 0 and clean.status != 0:
        found.append((CONSOLE, f"ended with 0 in place of {clean.status}"))
    elif run.status == 0 and lines_of(run.console) != lines_of(clean.console):
        found.append((CONSOLE, f"ended with 0 and {_first_difference(run.console, clean.console)}"))
    return found


def lines_of(console: str) -> List[str]:
    """The lines of a console, without empty ones and without progress dots, which depend on time."""
    stripped = (line.strip(".") for line in console.splitlines())
    return [line for line in stripped if line]


def _first_difference(console: str, clean: str) -> str:
    lines = lines_of(console)
    missing = [line for line in lines_of(clean) if line not in lines]
    return f"without the line {missing[0].strip()!r}" if missing else "other lines"


# Exceptions


def _has_no_signature(finding: Finding, output: str) -> bool:
    return output == "runtime.conf" and finding.run.outputs.get(output) == runtime_conf_format.build(*RUNTIME_SETTINGS)


def _signed_entries(finding: Finding) -> Dict[str, Entry]:
    """The entries of the run's catalogue by path; none unless it is sound and signed."""
    image = finding.run.outputs.get("base.bin", b"")
    try:
        entries = catalogue_format.parse(image).entries
        if not catalogue_format.verify(image, finding.certificate):
            return {}
    except FormatError:
        return {}
    return {_path_of(entry): entry for entry in entries}


def _clean_entries(finding: Finding) -> Dict[str, Entry]:
    return {_path_of(entry): entry for entry in catalogue_format.parse(finding.clean.outputs["base.bin"]).entries}


def _path_of(entry: Entry) -> str:
    return entry.aliased_path or entry.path


def _effects_of_missing(finding: Finding, output: str) -> FrozenSet[str]:
    """What forbidden or missing paths changed in the catalogue, each with a message; empty if more was changed."""
    case, console = finding.case, finding.run.console
    if output != "base.bin" or case.function not in DIRECTORY_CALLS or case.fault.name not in FORBIDDEN_OR_MISSING:
        return frozenset()
    entries, clean = _signed_entries(finding), _clean_entries(finding)
    if not entries:
        return frozenset()
    emptied = [path for path in clean if path in entries and entries[path] != clean[path]]
    effects = {EMPTIED for path in emptied} | {LEFT_OUT for path in clean.keys() - entries.keys()}
    # The size rule never skips an empty file, and a pattern without matches excludes nothing.
    effects |= {EMPTIED if path == SKIPPED_FILE else LET_IN for path in entries.keys() - clean.keys()}
    is_told = {
        EMPTIED: EMPTY_FILE_MESSAGE in console or not emptied,
        LEFT_OUT: any(message in console for message in LEFT_OUT_MESSAGES),
        LET_IN: PATTERN_MESSAGE in console,
    }
    are_empty = all(entries[path].size == 0 for path in emptied)
    return frozenset(effects) if are_empty and all(is_told[effect] for effect in effects) else frozenset()


def _counts_missing_as_empty(finding: Finding, output: str) -> bool:
    return _effects_of_missing(finding, output) == {EMPTIED}


def _leaves_out(finding: Finding, output: str) -> bool:
    return bool(_effects_of_missing(finding, output) & {LEFT_OUT, LET_IN})


def _skips_unread_runtime_conf(finding: Finding, output: str) -> bool:
    if output != CONSOLE or finding.scene.kind != VERIFY or RUNTIME_SECTION in finding.run.console:
        return False
    clean = lines_of(finding.clean.console)
    begin = next((number for number, line in enumerate(clean) if RUNTIME_SECTION in line), None)
    # With several faults only the subject of the first is known; an allocation has none.
    is_unread = (finding.run.subject.endswith("runtime.conf") or finding.case.reach == ONWARDS
                 or finding.case.fault.name == "ENOMEM")
    return begin is not None and is_unread and lines_of(finding.run.console) == clean[:begin]


def _loses_console_text(finding: Finding, output: str) -> bool:
    is_about_text = finding.run.subject == "stdout" or finding.case.function == "vsnprintf"
    return output == CONSOLE and is_about_text and finding.clean.status == 0


def _is_lenient_after_recovery(finding: Finding, output: str) -> bool:
    return (output == CONSOLE and finding.scene.name == "verify-second-chunk"
            and finding.case.fault.kind == "wrong" and finding.run.subject.endswith(BIG_FILE))


def _is_not_heard(finding: Finding, output: str) -> bool:
    is_unheard = finding.case.function in WRITING_CALLS and finding.case.reach == ONWARDS
    return output == REPORT and is_unheard and finding.run.status != 0


def _sealed_lines(console: str) -> List[str]:
    return [" ".join(line.split()) for line in lines_of(console) if line.startswith("sealed")]


def _leaves_excluded_unlisted(finding: Finding, output: str) -> bool:
    case, run = finding.case, finding.run
    is_missing = case.function in DIRECTORY_CALLS and case.fault.name in FORBIDDEN_OR_MISSING
    has_all_sealed = _sealed_lines(run.console) == _sealed_lines(finding.clean.console)
    return output == REPORT and finding.scene.name in RULES_SCENES and is_missing and has_all_sealed


def _tells_of_unlistable_directories(finding: Finding, output: str) -> bool:
    case, run = finding.case, finding.run
    is_missing = case.function in DIRECTORY_CALLS and case.fault.name in FORBIDDEN_OR_MISSING
    told = re.findall(r"'([^']+)' cannot be read, so nothing in it is sealed", run.console)
    # A file, not their number.
    files = {line for line in _sealed_lines(finding.clean.console) if not re.search(r" \d+ files?\b", line)}
    lost = files - set(_sealed_lines(run.console))
    are_told = all(any(f" {directory}/" in line for directory in told) for line in lost)
    return output == REPORT and finding.scene.name in RULES_SCENES and is_missing and bool(told) and are_told


def _does_not_see_links(finding: Finding, output: str) -> bool:
    case, run = finding.case, finding.run
    is_missing = case.function in LINK_CALLS and case.fault.name in FORBIDDEN_OR_MISSING
    has_all_sealed = _sealed_lines(run.console) == _sealed_lines(finding.clean.console)
    is_same_otherwise = run.status != 0 and has_all_sealed
    return output == REPORT and finding.scene.name == "rules-warned" and is_missing and is_same_otherwise


def _does_not_know_letters(finding: Finding, output: str) -> bool:
    run = finding.run
    others = {line for line in lines_of(finding.clean.console) if "letter case" not in line}
    has_all_others = others <= set(lines_of(run.console))
    return output == REPORT and UNKNOWN_LETTERS in run.console and has_all_others and run.status != 0


def _warns_of_forbidden_file(finding: Finding, output: str) -> bool:
    case, run = finding.case, finding.run
    has_all_lines = set(lines_of(finding.clean.console)) <= set(lines_of(run.console))
    is_forbidden = case.function == "access" and case.fault.name == "EACCES"
    return output == REPORT and is_forbidden and has_all_lines and run.status != 0


EXCEPTIONS: Sequence[DemandedException] = (
    DemandedException(
        "runtime.conf without a signature",
        "Where the random generator cannot be seeded, signing runtime.conf succeeds without a signature; verify then "
        "refuses the file.",
        _has_no_signature,
    ),
    DemandedException(
        "a missing file counts as empty",
        "A file of the game that is not there when its size is asked for, or may not be looked at, counts as an "
        "empty one: the size rule does not skip it, and it is recorded as empty, with a warning.",
        _counts_missing_as_empty,
    ),
    DemandedException(
        "an unlistable directory is left out",
        "A directory or path that is forbidden or missing while files are collected is left out, with a message; so a "
        "pattern that should have excluded it excludes nothing there.",
        _leaves_out,
    ),
    DemandedException(
        "an unreadable runtime.conf is skipped",
        "A game without a runtime.conf verifies without one, so one that cannot be read is passed over in silence.",
        _skips_unread_runtime_conf,
    ),
    DemandedException(
        "console text is lost",
        "Writing to the console reports no failure: a message that cannot be formatted or written is dropped, and "
        "the exit status tells the result.",
        _loses_console_text,
    ),
    DemandedException(
        "leniency after a recovered chunk",
        "After a chunk that differed first and was right when it was read again, the next one is not compared.",
        _is_lenient_after_recovery,
    ),
    DemandedException(
        "nobody hears of it",
        "Where standard error takes no text either, the companion's exit status alone tells that it failed.",
        _is_not_heard,
    ),
    DemandedException(
        "what is left out is not looked into",
        "A directory or file that the rules leave out anyway may be missing or forbidden: the companion lists no files "
        "below it, or no bytes. All that is sealed is listed.",
        _leaves_excluded_unlisted,
    ),
    DemandedException(
        "an unlistable directory is told",
        "A directory that is forbidden, or gone by the time it is listed, is left out by generate, too: the companion "
        "warns of it by name. Nothing else is missing from the list.",
        _tells_of_unlistable_directories,
    ),
    DemandedException(
        "what leads nowhere is not compared",
        "A matched path may be a dangling link, or lie in a directory that this user may not search or that is gone: the "
        "companion does not warn that it is another file by a link. All that is sealed is listed.",
        _does_not_see_links,
    ),
    DemandedException(
        "letters are not known",
        "Where no locale that knows letters beyond ASCII can be read, the companion compares names without them, and "
        "warns that it does.",
        _does_not_know_letters,
    ),
    DemandedException(
        "a forbidden file is warned of",
        "A file that this user may not read is one more warning of the companion, and no failure of the system.",
        _warns_of_forbidden_file,
    ),
)
