"""A limit on open files: the program opens files ahead only as far as its other needs allow, so no result changes."""

import resource
import subprocess
import unittest

import e2e_console as console
from e2e_support import PRODUCT, TIMEOUT_SECONDS, UNDER_SANITIZER, EndToEndTest, Run, config

# The standard streams, the file being checked, and its second reading or a converter table.
LEAST = 6
# Leaves one descriptor: enough for one file at a time.
TOO_FEW = 4
CONVERTER_MISSING = "The system's character-set converter could not be used, so names would be wrong.\n"
LIMITS = (LEAST, 7, 8, 12, 16, 24, 40, 64, 66, 68, 72, 80)
# Options, and the limits to run them with.
SEVERAL_JOBS = (("-jobs", "3"), (LEAST, 8, 24, 66))


class FewDescriptors(EndToEndTest):
    def setUp(self) -> None:
        super().setUp()
        self.write("a.pak", bytes(5 * 4194304))
        for number in range(90):
            self.write(f"f{number:02}", b"x" * 5000)
        # Verify loads the converter only at the first of these names.
        self.write("g\u00e9.dat", b"hello")
        self.write("h\U0001f600.dat", b"hello")
        self.config_file = self.write_config(config("exclude_paths = [\"Quorvane\"];"))

    def run_with(self, limit: int, *arguments: object) -> Run:
        command_line = [str(self.program), *map(str, arguments)]
        finished = subprocess.run(
            command_line,
            cwd=self.directory,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=TIMEOUT_SECONDS,
            check=False,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (limit, limit)),
        )
        self.assertEqual(finished.stderr, b"")
        return Run(command_line, finished.returncode, console.without_dots(console.to_text(finished.stdout)))

    def verify(self, limit: int, *options: str) -> Run:
        return self.run_with(limit, "-productid", PRODUCT, *options, "verify", self.game)

    def generate(self, limit: int, *options: str) -> bytes:
        run = self.run_with(limit, *self.generate_arguments(*options, config_file=self.config_file))
        self.assertEqual(run.status, 0, run.output)
        return (self.output / "base.bin").read_bytes()

    def test_generate_writes_the_same_catalogue(self) -> None:
        expected = self.generate(1024)
        self.assertEqual(self.stored_paths()[-2:], ["g\u00e9.dat", "h\U0001f600.dat"])
        for limit in LIMITS:
            with self.subTest(limit=limit):
                self.assertEqual(self.generate(limit), expected)
        options, limits = SEVERAL_JOBS
        for limit in limits:
            with self.subTest(limit=limit, options=options):
                self.assertEqual(self.generate(limit, *options), expected)

    @unittest.skipIf(UNDER_SANITIZER, "the sanitizer wants a descriptor for its own checks")
    def test_generate_loads_the_converter_before_it_opens_files(self) -> None:
        expected = self.generate(1024)
        self.assertEqual(self.generate(TOO_FEW), expected)

    @unittest.skipIf(UNDER_SANITIZER, "the sanitizer wants a descriptor for its own checks")
    def test_verify_ends_where_there_are_too_few(self) -> None:
        """A file whose name cannot be converted does not count as missing."""
        self.generate(1024)
        run = self.verify(TOO_FEW)
        self.assertEqual(run.status, 7, run.output)
        self.assertTrue(run.output.endswith(console.err(CONVERTER_MISSING)), run.output)
        self.assertNotIn("ERROR", run.output)

    def test_verify_gives_the_same_verdicts(self) -> None:
        self.generate(1024)
        self.expect_same_verdicts(0, 0)
        # Both differ on both readings. The second reading needs a descriptor of its own.
        self.write("a.pak", b"\x01" + bytes(5 * 4194304 - 1))
        self.write("f33", b"y" * 5000)
        self.expect_same_verdicts(26, 2)

    def expect_same_verdicts(self, status: int, failure_count: int) -> None:
        for options, limits in (((), LIMITS), SEVERAL_JOBS):
            expected = self.verify(1024, *options)
            self.assertEqual(expected.status, status)
            self.assertEqual(expected.output.count("Failed to verify"), failure_count, expected.output)
            for limit in limits:
                with self.subTest(limit=limit, options=options):
                    self.assertEqual(self.verify(limit, *options), expected)


if __name__ == "__main__":
    unittest.main()
