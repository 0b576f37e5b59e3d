"""Several jobs give the same files, console output, exit status and failures as one."""

import os
import unittest

import e2e_console as console
from e2e_support import PRODUCT, EndToEndTest, Run, config

JOBS = ("2", "3", "16", "256", "0")


class SeveralJobs(EndToEndTest):
    def setUp(self) -> None:
        super().setUp()
        for number in range(120):
            self.write(f"f{number:03}", b"x" * (number * 977 % 50000))
        self.write_sparse("large", 9 * 4194304 + 1)
        self.config_file = self.write_config(config('exclude_paths = ["Quorvane"];'))

    def text_of(self, run: Run) -> str:
        """The output without the echo of the arguments, the only part that may differ."""
        echo = console.opening(run.command_line)
        self.assertTrue(run.output.startswith(echo), run.output)
        return console.without_dots(run.output[len(echo):])

    def generate(self, *options: str) -> Run:
        return self.run_program(*self.generate_arguments(*options, config_file=self.config_file))

    def verify(self, *options: str) -> Run:
        return self.run_program("-productid", PRODUCT, *options, "verify", self.game)

    def assert_same(self, run_with) -> Run:
        """Compare runs with one job, with and without the option, to runs with several."""
        one = run_with()
        for jobs in ("1", *JOBS):
            with self.subTest(jobs=jobs):
                run = run_with("-jobs", jobs)
                self.assertEqual(self.text_of(run), self.text_of(one))
                self.assertEqual(run.status, one.status)
        return one

    def generate_to_files(self, *options: str) -> Run:
        run = self.generate(*options)
        files = {path.name: path.read_bytes() for path in sorted(self.output.iterdir())}
        if not options:
            self.files = files
        self.assertEqual(files, self.files)
        return run

    def test_generate(self) -> None:
        self.assertEqual(self.assert_same(self.generate_to_files).status, 0)
        self.assertIn("base.bin", self.files)

    def test_verify(self) -> None:
        self.assertEqual(self.generate().status, 0)
        self.assertEqual(self.assert_same(self.verify).status, 0)
        self.write("f007", b"y" * (7 * 977))
        self.write("f050", b"longer" * 50000)
        (self.game / "f099").unlink()
        with (self.game / "large").open("r+b") as file:
            file.seek(-1, os.SEEK_END)
            file.write(b"x")
        damaged = self.assert_same(self.verify)
        self.assertEqual(damaged.output.count("Failed to verify"), 4)

    def test_first_failure_is_reported(self) -> None:
        for number in (60, 61, 110):
            (self.game / f"f{number:03}").unlink()
            (self.game / f"f{number:03}").mkdir()
            self.write(f"f{number:03}/inner", b"z")
        self.become_unprivileged()
        credentials = self.readable_credentials()
        for number in (61, 110):
            (self.game / f"f{number:03}/inner").chmod(0)

        def run_with(*options: str) -> Run:
            return self.run_program(
                *self.generate_arguments(*options, config_file=self.config_file, credentials=credentials))

        failed = self.assert_same(run_with)
        self.assertEqual(failed.status, 7)
        self.assertNotIn("f110", failed.output)

    def test_single_file(self) -> None:
        def run_with(*options: str) -> Run:
            return self.run_program(*self.generate_arguments(*options, "-target_file", self.game / "large"))

        self.assertEqual(self.assert_same(run_with).status, 0)

    def test_list_takes_the_option_and_needs_none(self) -> None:
        self.assertEqual(self.generate().status, 0)
        path = self.output / "base.bin"
        plain = self.run_program("list", path)
        self.assertEqual(self.text_of(self.run_program("-jobs", "2", "list", path)), self.text_of(plain))


class TheOption(EndToEndTest):
    """How its value may be written."""

    def test_good_values(self) -> None:
        for arguments in (["-jobs", "1"], ["-jobs=256"], ["-jobs", "0"], ["-j", "2"], ["-jo=3"], ["-job", "007"],
                          ["-jobs", "9", "-jobs", "2"]):
            with self.subTest(arguments=arguments):
                run = self.run_program(*arguments)
                self.assert_console(run, 1, console.err("ProductId argument must be specified.\n"))

    def test_bad_values_print_the_usage(self) -> None:
        for arguments in (["-jobs"], ["-jobs", ""], ["-jobs="], ["-jobs", "-1"], ["-jobs=-1"], ["-jobs", "257"],
                          ["-jobs", "two"], ["-jobs", "2x"], ["-jobs", "+2"], ["-jobs", " 2"], ["-jobs", "0x2"],
                          ["-jobs", "2.0"], ["-jobs", "99999999999999999999"], ["-jobsx", "2"], ["jobs", "2"]):
            with self.subTest(arguments=arguments):
                run = self.run_program(*arguments)
                self.assert_console(run, 1, console.USAGE)


if __name__ == "__main__":
    unittest.main()
