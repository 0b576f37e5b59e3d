"""`sealkeeper-inspect rules`: traps about letter case and about size."""

import os
import unittest

from inspect_support import GOOD, WARNING
from test_inspect_rules import RulesWithProgram


class LetterCase(RulesWithProgram):
    """Names and extensions that differ in letter case alone."""

    def test_names_equal_but_for_case(self) -> None:
        self.write("bin/A.exe", b"x")
        self.assert_warned(
            'include_paths = ["bin"]', "'bin/A.exe' and 'bin/a.exe' differ in letter case alone.",
            "Rename one: where file systems ignore letter case, only one of them can be installed, and verify may fail.")

    def test_a_file_left_out_that_differs_from_a_sealed_one_in_case(self) -> None:
        self.write("bin/A.EXE", b"x")
        self.assert_warned(
            'exclude_paths = ["Quorvane"] exclude_extensions = [".EXE"]',
            "'bin/A.EXE' and 'bin/a.exe' differ in letter case alone; 'bin/A.EXE' is left out.",
            "Rename or remove what is left out: where file systems ignore letter case, it may replace the sealed file, "
            "and verify may fail.")

    def test_a_file_and_a_directory_equal_but_for_case(self) -> None:
        self.write("Bin", b"x")
        self.assert_warned(
            'include_paths = ["bin"]',
            "'Bin' and the directory 'bin' differ in letter case alone; 'Bin' is left out.",
            "Rename one: where file systems ignore letter case, a file and a directory of one name cannot both be "
            "installed.")

    def test_a_file_and_an_empty_directory_equal_but_for_case(self) -> None:
        (self.game / "bin/A.EXE").mkdir()
        report = self.report('include_paths = ["bin"]', WARNING)
        self.assertEqual(self.warnings_of(report), [
            "'bin/a.exe' and the directory 'bin/A.EXE' differ in letter case alone; 'bin/A.EXE' is left out."])
        self.assertEqual(self.states(report), {"bin/a.exe": "sealed"})

    def test_directories_equal_but_for_case(self) -> None:
        for name in ("bin/deep/b", "BIN/A.exe", "BIN/deep/b", "BIN/c"):
            self.write(name, b"x")
        report = self.report('include_paths = ["bin", "BIN"]', WARNING)
        self.assertEqual(self.warnings_of(report), [
            "The directories 'BIN' and 'bin' differ in letter case alone, and 2 names below them clash."])

    def test_names_equal_but_for_case_beyond_ascii(self) -> None:
        for name in ("bin/École", "bin/école", "bin/Жук", "bin/жук", "bin/\udcc9", "bin/\udce9"):
            self.write(name, b"x")
        told = self.warnings_of(self.report('include_paths = ["bin"]', WARNING))
        self.assertEqual([message for message in told if "letter case" in message], [
            "'bin/École' and 'bin/école' differ in letter case alone.",
            "'bin/Жук' and 'bin/жук' differ in letter case alone."])

    def test_an_extension_in_another_case(self) -> None:
        for name in ("bin/A.pak", "bin/b.PAK", "bin/c.Pak"):
            self.write(name, b"x")
        for excluded, also, count, example in ((".PAK", '".Pak", ".pak"', 2, "bin/A.pak"),
                                               (".pAK", '".PAK", ".Pak", ".pak"', 3, "bin/A.pak"),
                                               (".EXE", '".exe"', 1, "bin/a.exe")):
            with self.subTest(excluded=excluded):
                report = self.report(f'exclude_paths = ["Quorvane"] exclude_extensions = ["{excluded}"]', WARNING)
                files = f"'{example}' has" if count == 1 else f"{count} files, such as '{example}', have"
                told = [warning for warning in report["warnings"] if "the extension" in warning["message"]]
                self.assertEqual([(warning["message"], warning["cure"]) for warning in told], [(
                    f"{files} the extension '{excluded}' in another letter case and {'is' if count == 1 else 'are'} not "
                    "left out.",
                    f"Letter case counts: write {also}, too, if such files are to be left out.")])

    def test_an_extension_that_no_file_has_is_a_precaution(self) -> None:
        self.assertEqual(self.report('include_paths = ["bin"] exclude_extensions = [".pdb"]', GOOD)["warnings"], [])


class Sizes(RulesWithProgram):
    """Files and directories over the size threshold."""

    def test_a_file_over_the_size_threshold(self) -> None:
        self.write_sparse("bin/world.pak", 1_024_000_001)
        self.assert_warned(
            'include_paths = ["bin"]',
            "1 file above the size threshold of 1.0 GB is silently left out: 'bin/world.pak' with "
            "1.0 GB.",
            "Raise exclude_size_threshold, or name the file itself in include_paths: what is left out can be changed "
            "by anybody.")
        self.assert_warned(
            'exclude_paths = ["Quorvane"]',
            "1 file above the size threshold of 1.0 GB is silently left out: 'bin/world.pak' with "
            "1.0 GB.",
            "Raise exclude_size_threshold, or name the file in exclude_paths if that is meant: what is left out can be "
            "changed by anybody.")

    def test_a_directory_over_the_size_threshold(self) -> None:
        for number in range(5000):
            self.write(f"many/{number:05}{'n' * 240}", b"")
        if (self.game / "many").stat().st_size <= 1_000_000:
            self.skipTest("this file system keeps the entries of directories small")
        (self.game / "many/dangling").symlink_to("nowhere")
        os.mkfifo(self.game / "many/fifo")
        report = self.report('exclude_paths = ["Quorvane"] exclude_size_threshold = 1; ', WARNING)
        states = self.states(report)
        self.assertEqual((states["bin/a.exe"], states["many/dangling"], states["many/fifo"]),
                         ("sealed", "dangling link", "not a regular file"))
        told = [message for message in self.warnings_of(report) if "silently left out" in message]
        self.assertEqual(told, [
            "5,000 files in 'many' are silently left out: the list of names in that directory is itself above the size "
            "threshold of 1.0 MB."])

    def test_a_large_file_that_another_rule_leaves_out(self) -> None:
        self.write_sparse("bin/symbols.pdb", 11_000_000)
        self.write_sparse("bin/bare", 11_000_000)
        report = self.report(
            'include_paths = ["bin"] exclude_extensions = [".pdb"] exclude_size_threshold = 10; '
            "ignore_files_without_extension = true ", GOOD)
        self.assertEqual(self.states(report), {
            "bin/a.exe": "sealed", "bin/symbols.pdb": "extension", "bin/bare": "no extension"})


if __name__ == "__main__":
    unittest.main()
