"""`sealkeeper-inspect rules` where this user may not read all of the game, or names are not UTF-8: as generate."""

import os
import shutil
import unittest
from typing import Any, Dict

import catalogue_format
from e2e_support import config
from inspect_support import ERROR, WARNING
from test_inspect_rules import Rules

NO_UTF8 = "bin/\udcff"
STAND_IN = "U82W_ERROR"


class AccessTest(Rules):
    """A game of which a user that permissions bind makes a report and then a catalogue."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a", b"1")

    def report_and_generate(self, search_options: str, status: int, code: int) -> Dict[str, Any]:
        """The report, which must tell the code with which generate ends."""
        report = self.report(search_options, status)
        refused = report["refusal"]["code"] if report["refusal"] else 0
        generated = self.run_program(*self.generate_arguments(
            config_file=self.directory / "game.cfg", credentials=self.readable_credentials()))
        self.assertEqual((generated.status, refused), (code, code), generated.output)
        return report


class StandIns(AccessTest):
    """What is read and listed in place of a file whose name is not UTF-8."""

    def setUp(self) -> None:
        super().setUp()
        self.file = self.write(NO_UTF8, b"x")

    def test_a_file_that_may_not_be_read_is_not_read_either(self) -> None:
        self.become_unprivileged()
        self.file.chmod(0)
        report = self.report_and_generate('include_paths = ["bin"]', WARNING, 0)
        self.assertEqual(self.warnings_of(report), [
            f"'bin/\ufffd' is not UTF-8: the catalogue lists an empty file '{STAND_IN}' in its place, and verify fails."])

    def test_a_file_of_that_name_is_listed(self) -> None:
        self.write(STAND_IN, b"y")
        self.become_unprivileged()
        report = self.report_and_generate('include_paths = ["bin"]', WARNING, 0)
        self.assertEqual(self.warnings_of(report), [
            f"'bin/\ufffd' is not UTF-8: the catalogue lists the file '{STAND_IN}' in its place, so it is not sealed."])

    def assert_fatal(self, code: int, what: str) -> None:
        report = self.report_and_generate('include_paths = ["bin"]', ERROR, code)
        self.assertEqual(report["refusal"]["message"],
                         f"'{STAND_IN}', which is read in place of a name that is not UTF-8, {what}.")
        self.assertEqual(self.warnings_of(report), [
            f"'bin/\ufffd' is not UTF-8: generate reads '{STAND_IN}' in its place, and fails at that."])

    def test_a_file_of_that_name_that_may_not_be_read_is_fatal(self) -> None:
        stand_in = self.write(STAND_IN, b"y")
        self.become_unprivileged()
        stand_in.chmod(0)
        self.assert_fatal(7, "cannot be read by this user")

    def test_a_directory_of_that_name_is_fatal(self) -> None:
        self.write(f"{STAND_IN}/y", b"y")
        self.become_unprivileged()
        self.assert_fatal(8, "is a directory")

    def test_a_directory_of_that_name_that_may_not_be_read_is_fatal(self) -> None:
        self.write(f"{STAND_IN}/y", b"y")
        self.become_unprivileged()
        (self.game / STAND_IN).chmod(0)
        self.assert_fatal(7, "cannot be read by this user")

    def test_the_first_fatal_file_in_the_order_of_reading_is_told(self) -> None:
        self.write(f"{STAND_IN}/y", b"y")
        closed = self.write("bin/z", b"z")
        self.become_unprivileged()
        closed.chmod(0)
        report = self.report_and_generate('include_paths = ["bin"]', ERROR, 7)
        self.assertEqual(report["refusal"]["message"], "'./bin/z' cannot be read by this user.")


class Closed(AccessTest):
    """Directories that may be listed but not searched, and empty files that may not be read."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/closed/s", b"1")
        self.write("bin/closed/deep/t", b"1")
        self.write("bin/locked", b"").chmod(0)
        os.mkfifo(self.game / "bin/closed/fifo")
        self.become_unprivileged()
        (self.game / "bin/closed").chmod(0o444)

    def listed(self) -> Dict[str, int]:
        """The sizes that generate has catalogued, by path."""
        image = (self.output / "base.bin").read_bytes()
        return {entry.path: entry.size for entry in catalogue_format.parse(image).entries}

    def test_a_walk_seals_what_cannot_be_looked_at_as_empty(self) -> None:
        for rules in ('include_paths = ["bin"]', 'exclude_paths = ["Quorvane"]',
                      'exclude_paths = ["Quorvane"] exclude_size_threshold = 0;'):
            with self.subTest(rules=rules):
                report = self.report_and_generate(rules, WARNING, 0)
                sealed = {"bin/a": 1, "bin/closed/s": 0, "bin/locked": 0}
                self.assertEqual(self.listed(), sealed)
                self.assertEqual({file["path"]: file["bytes"] for file in report["files"] if file["state"] == "sealed"},
                                 sealed)
                self.assertEqual(self.states(report)["bin/closed/deep"], "unlistable")
                self.assertEqual(self.states(report)["bin/closed/fifo"], "not a regular file")
                told = self.warnings_of(report)
                self.assertIn("'bin/closed/s' lies in a directory that this user may not search: the catalogue lists "
                              "it as an empty file, and verify fails.", told)
                self.assertIn("'bin/locked' is empty and cannot be read by this user: generate seals it all the same, "
                              "but verify fails where it cannot be read.", told)
                self.assertIn("'bin/closed/deep' cannot be read, so nothing in it is sealed.", told)

    def test_no_way_leads_on_by_dots(self) -> None:
        self.write("e/z", b"1")
        (self.game / "way").symlink_to("bin/closed/../../e")
        for pattern in ("bin/closed/../../e", "bin/closed/../../Quorvane", "bin/c*/../../e", "bin/c*/..", "bin/c*/.",
                        "bin/closed/.", "bin/closed/./s", "bin/closed//../a", "way", "w*/z"):
            for run in ("first", "second"):
                with self.subTest(pattern=pattern, run=run):
                    report = self.report_and_generate(f'include_paths = ["{pattern}", "bin/a"]', WARNING, 0)
                    self.assertEqual(self.listed(), {"bin/a": 1})
                    self.assertEqual([file["path"] for file in report["files"] if file["state"] == "sealed"],
                                     ["bin/a"])
            shutil.rmtree(self.game / "Quorvane", ignore_errors=True)

    def test_a_pattern_leaves_out_what_cannot_be_looked_at(self) -> None:
        report = self.report_and_generate('include_paths = ["bin/a", "bin/closed/*"]', WARNING, 0)
        self.assertEqual(self.listed(), {"bin/a": 1})
        states = self.states(report)
        self.assertEqual(states, {
            "bin/a": "sealed", "bin/closed/s": "unreachable", "bin/closed/deep": "unlistable",
            "bin/closed/fifo": "not a regular file", "bin/locked": "not included"})
        self.assertIn("'bin/closed/s' lies in a directory that this user may not search, and is not sealed.",
                      self.warnings_of(report))


if __name__ == "__main__":
    unittest.main()
