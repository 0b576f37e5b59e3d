"""The rule that runs are judged by, and the names that the sweep must cover."""

from __future__ import annotations

import unittest
from dataclasses import replace
from pathlib import Path
from typing import Mapping, Sequence

import runtime_conf_format
from fault_runs import LIBRARY, Case, Run, subject_of
from fault_sweep import sample
from fault_table import (
    FAULTS,
    NOT_FAILING,
    Fault,
    errors,
    functions_behind,
    not_accounted_for,
    system_calls_not_accounted_for,
)
from rule_of_three import Finding, judge
from scenes import GENERATE, INSPECT, LIST, RUNTIME_SETTINGS, VERIFY, Scene

OLD = {"base.bin": b"old catalogue", "runtime.conf": b"old settings"}
NEW = {"base.bin": b"new catalogue", "runtime.conf": b"new settings"}
LINES = "[Info] one\n[Info] two\n"


def finding(
    kind: str,
    *,
    status: int = 0,
    console: str = LINES,
    outputs: Mapping[str, bytes] = NEW,
    clean_status: int = 0,
    function: str = "malloc",
    subject: str = "",
    **run: object,
) -> Finding:
    """A run of a scene with signed files, and its clean run."""
    case = Case("scene", LIBRARY, function, 1, "once", errors("ENOMEM")[0])
    before = OLD if kind == GENERATE else NEW
    made = Run(status, console, "", False, outputs, True, subject)
    clean = Run(clean_status, LINES, "", False, NEW)
    return Finding(Scene("scene", kind, [], before=before), case, replace(made, **run), clean, Path("none.cer"))


class RuleOfThree(unittest.TestCase):
    def assert_broken(self, found: Finding, *texts: str) -> None:
        self.assertEqual(list(judge(found).violations), list(texts))

    def test_all_outputs_of_the_clean_run_are_right(self) -> None:
        self.assert_broken(finding(GENERATE))

    def test_a_failure_that_leaves_each_output_old_or_new_is_right(self) -> None:
        self.assert_broken(finding(GENERATE, status=8, outputs={**OLD, "runtime.conf": NEW["runtime.conf"]}))

    def test_success_with_an_old_output_is_wrong(self) -> None:
        self.assert_broken(
            finding(GENERATE, outputs={**NEW, "base.bin": OLD["base.bin"]}), "ended with 0 and the old base.bin"
        )

    def test_success_with_another_output_is_wrong(self) -> None:
        self.assert_broken(finding(GENERATE, outputs={**NEW, "base.bin": b""}), "ended with 0 and another base.bin")

    def test_success_without_an_output_is_wrong(self) -> None:
        outputs = {"base.bin": NEW["base.bin"]}
        self.assert_broken(finding(GENERATE, outputs=outputs), "ended with 0 and no runtime.conf")

    def test_a_failure_that_damages_an_output_is_wrong(self) -> None:
        outputs = {**OLD, "base.bin": b""}
        self.assert_broken(finding(GENERATE, status=8, outputs=outputs), "ended with 8 and damaged base.bin")

    def test_a_failure_that_loses_an_output_is_wrong(self) -> None:
        outputs = {"base.bin": OLD["base.bin"]}
        self.assert_broken(finding(GENERATE, status=8, outputs=outputs), "ended with 8 and lost runtime.conf")

    def test_what_is_left_behind_is_wrong(self) -> None:
        self.assert_broken(finding(GENERATE, status=8, outputs={**OLD, "base.bin.1": b""}), "left base.bin.1 behind")

    def test_what_cannot_be_removed_may_be_left_behind(self) -> None:
        self.assert_broken(finding(GENERATE, status=8, outputs={**OLD, "base.bin.1": b""}, function="unlink"))

    def test_a_signal_is_wrong(self) -> None:
        self.assert_broken(finding(VERIFY, status=-6), "ended by signal 6")

    def test_a_run_without_end_is_wrong(self) -> None:
        self.assert_broken(finding(VERIFY, status=-9, timed_out=True), "did not end within 10 s")

    def test_a_status_that_is_not_documented_is_wrong(self) -> None:
        self.assert_broken(finding(VERIFY, status=28), "ended with 28, which is not documented")

    def test_text_on_standard_error_is_wrong(self) -> None:
        self.assert_broken(finding(VERIFY, status=2, error_text="oh\n"), "wrote to standard error: 'oh'")

    def test_a_worse_verdict_is_right(self) -> None:
        self.assert_broken(finding(VERIFY, status=23))

    def test_a_better_verdict_is_wrong(self) -> None:
        self.assert_broken(finding(VERIFY, clean_status=26), "ended with 0 in place of 26")

    def test_a_good_verdict_on_less_than_all_is_wrong(self) -> None:
        found = finding(VERIFY, console="[Info] one\n")
        self.assert_broken(found, "ended with 0 and without the line '[Info] two'")

    def test_progress_dots_do_not_matter(self) -> None:
        self.assert_broken(finding(VERIFY, console="..[Info] one\n.\n[Info] two\n"))

    def test_verify_writes_nothing(self) -> None:
        self.assert_broken(finding(VERIFY, status=2, outputs=OLD), "changed the signed files")

    def test_a_list_of_less_than_all_is_wrong(self) -> None:
        found = finding(LIST, console="[Info] two\n")
        self.assert_broken(found, "ended with 0 and without the line '[Info] one'")


class Companion(unittest.TestCase):
    def assert_broken(self, found: Finding, *texts: str) -> None:
        self.assertEqual(list(judge(found).violations), list(texts))

    def test_the_clean_runs_report_is_right(self) -> None:
        self.assert_broken(finding(INSPECT))

    def test_a_good_end_with_another_report_is_wrong(self) -> None:
        found = finding(INSPECT, console="[Info] one\n")
        self.assert_broken(found, "ended with 0 and without the line '[Info] two'")

    def test_a_better_end_is_wrong(self) -> None:
        self.assert_broken(finding(INSPECT, clean_status=1), "ended with 0 in place of 1")

    def test_a_worse_end_is_right(self) -> None:
        self.assert_broken(finding(INSPECT, status=2, console="[Info] bad\n"))

    def test_the_same_end_with_another_report_needs_a_reason(self) -> None:
        found = finding(INSPECT, status=1, clean_status=1, console="[Info] one\n")
        self.assert_broken(found, "ended with 1 and without the line '[Info] two'")
        self.assert_broken(replace(found, run=replace(found.run, error_text="lost\n")))

    def test_silence_is_wrong(self) -> None:
        self.assert_broken(finding(INSPECT, status=2, console=""), "ended with 2 and said nothing")

    def test_a_reason_is_right_but_for_a_good_end(self) -> None:
        self.assert_broken(finding(INSPECT, status=2, console="", error_text="oh\n"))
        self.assert_broken(finding(INSPECT, error_text="oh\n"), "wrote to standard error: 'oh'")

    def test_a_status_of_another_command_is_not_documented(self) -> None:
        found = finding(INSPECT, status=26)
        self.assert_broken(found, "ended with 26, which is not documented")
        self.assert_broken(replace(found, scene=replace(found.scene, name="check")))

    def test_the_companion_writes_nothing(self) -> None:
        self.assert_broken(finding(INSPECT, status=2, outputs=OLD), "changed the signed files")


class Exceptions(unittest.TestCase):
    def assert_excused(self, found: Finding, *names: str) -> None:
        verdict = judge(found)
        self.assertEqual((list(verdict.violations), list(verdict.exceptions)), ([], list(names)))

    def test_runtime_conf_without_a_signature_is_excused_and_no_other_content(self) -> None:
        unsigned = runtime_conf_format.build(*RUNTIME_SETTINGS)
        self.assert_excused(
            finding(GENERATE, outputs={**NEW, "runtime.conf": unsigned}), "runtime.conf without a signature"
        )
        other = finding(GENERATE, outputs={**NEW, "runtime.conf": unsigned[:-1]})
        self.assertEqual(len(judge(other).violations), 1)

    def test_lines_that_the_console_does_not_take_are_excused(self) -> None:
        self.assert_excused(finding(LIST, console="", function="fwrite", subject="stdout"), "console text is lost")

    def test_an_unread_runtime_conf_is_excused_and_nothing_else_left_out(self) -> None:
        section = "[Info] Validating runtime configuration file at: x\n[Info] fine\n"
        for console, count in ((LINES, 0), ("[Info] one\n", 1)):
            found = finding(VERIFY, console=console, function="open", subject="/game/runtime.conf")
            found = replace(found, clean=replace(found.clean, console=LINES + section))
            self.assertEqual(len(judge(found).violations), count)

    def test_silence_where_standard_error_takes_nothing_is_excused(self) -> None:
        found = finding(INSPECT, status=2, console="", function="write")
        self.assertEqual(len(judge(found).violations), 1)
        self.assert_excused(replace(found, case=found.case._replace(reach="onwards")), "nobody hears of it")

    def test_what_is_left_out_may_be_missing_from_the_report_and_what_is_sealed_not(self) -> None:
        for console, count in (("sealed 1 a\n", 0), ("out 1 b\n", 1)):
            found = finding(INSPECT, console=console, function="opendir")
            case = found.case._replace(fault=errors("EACCES")[0])
            clean = replace(found.clean, console="sealed   1 a\nout  1 b\n")
            found = replace(found, case=case, clean=clean, scene=replace(found.scene, name="rules"))
            self.assertEqual(len(judge(found).violations), count)


    def test_a_directory_that_cannot_be_listed_is_excused_where_it_is_told(self) -> None:
        warning = "'d' cannot be read, so nothing in it is sealed.\n"
        for console, count in ((warning + "sealed 1 file\nsealed 1 e/b\n", 0), ("sealed 1 file\nsealed 1 e/b\n", 1),
                               (warning + "sealed 1 file\nsealed 1 d/a\n", 1)):
            found = finding(INSPECT, status=1, clean_status=1, console=console, function="opendir")
            case = found.case._replace(fault=errors("EACCES")[0])
            clean = replace(found.clean, console="sealed 2 files\nsealed 1 d/a\nsealed 1 e/b\n")
            found = replace(found, case=case, clean=clean, scene=replace(found.scene, name="rules"))
            self.assertEqual(len(judge(found).violations), count)

    def test_warnings_about_letter_case_may_be_replaced_by_one_and_no_other_warning(self) -> None:
        unknown = "Letter case was compared in ASCII letters only\n"
        for console, count in ((LINES + unknown, 0), (LINES, 1), ("[Info] one\n" + unknown, 1)):
            found = finding(INSPECT, status=1, clean_status=1, console=console, function="openat")
            clean = replace(found.clean, console=LINES + "'a' and 'A' differ in letter case\n")
            self.assertEqual(len(judge(replace(found, clean=clean)).violations), count)


class Tables(unittest.TestCase):
    def test_a_function_that_nobody_knows_is_told(self) -> None:
        self.assertEqual(not_accounted_for(["open", "memcpy", "frobnicate"]), ["frobnicate"])

    def test_a_system_call_that_nobody_knows_is_told(self) -> None:
        self.assertEqual(system_calls_not_accounted_for(["openat", "futex", "frobnicate"]), ["frobnicate"])

    def test_allocation_by_the_cxx_library_comes_down_to_one_by_the_c_library(self) -> None:
        self.assertEqual(functions_behind("_Znwm"), ("malloc",))
        self.assertEqual(functions_behind("_ZnwmSt11align_val_t"), ("aligned_alloc",))

    def test_no_covered_function_is_named_as_not_failing(self) -> None:
        plain = {pattern for pattern, _ in NOT_FAILING if "*" not in pattern}
        self.assertEqual(plain & FAULTS.keys(), set())


class Cases(unittest.TestCase):
    def test_a_sample_is_the_same_each_time_and_takes_from_every_function(self) -> None:
        fault = Fault("EIO", "fail", 5)
        counts = {"malloc": 500, "open": 3, "read": 40}
        cases = [Case("s", LIBRARY, name, call, "once", fault) for name, n in counts.items() for call in range(n)]
        chosen = sample(cases, 30)
        self.assertEqual(sample(list(reversed(cases)), 30), chosen)
        taken: Sequence[int] = [sum(case.function == name for case in chosen) for name in counts]
        self.assertEqual(len(set(chosen)), 30)
        self.assertEqual(taken, [14, 3, 13])

    def test_what_a_traced_call_is_about(self) -> None:
        for line, subject in (
            ('12 openat(AT_FDCWD, "a \\"b\\"", O_RDONLY) = -1 EIO (INJECTED)', 'a \\"b\\"'),
            ("12 read(3</game/x>, 0x1, 2) = -1 EIO (Input/output error) (INJECTED)", "/game/x"),
            ("12 write(1<pipe:[5]>, 0x1, 2) = -1 EIO (Input/output error) (INJECTED)", "stdout"),
            ("12 close(4</game/y>) = -1 EIO (Input/output error) (INJECTED)", "/game/y"),
            ("12 mmap(NULL, 8192, PROT_READ) = -1 ENOMEM (INJECTED)", ""),
        ):
            with self.subTest(line=line):
                self.assertEqual(subject_of(line), subject)


if __name__ == "__main__":
    unittest.main()
