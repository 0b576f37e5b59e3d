"""Standard output that cannot be written: the action does its work, and the exit status is its own."""

import os
import resource
import subprocess
import unittest

from e2e_support import GOOD, PRODUCT, PROGRAM, TIMEOUT_SECONDS
from one_file_game import OneFileTest

HAS_FULL = os.path.exists("/dev/full")


class BrokenConsole(OneFileTest):
    def setUp(self) -> None:
        super().setUp()
        # More lines than one write to the console holds.
        for number in range(300):
            self.write(f"bin/{number}", b"hello")

    def status_with(self, console: int, arguments, **choices) -> int:
        finished = subprocess.run(
            [str(PROGRAM), *map(str, arguments)],
            cwd=self.directory,
            stdin=subprocess.DEVNULL,
            stdout=console,
            stderr=subprocess.PIPE,
            timeout=TIMEOUT_SECONDS,
            check=False,
            **choices,
        )
        self.assertEqual(finished.stderr, b"")
        return finished.returncode

    def assert_does_its_work(self, console: int, **choices) -> None:
        """Every action, once successful and once failing."""
        verify = ("-productid", PRODUCT, "verify", self.game)
        generate = self.generate_arguments(config_file=self.config_file)
        self.assertEqual(self.status_with(console, generate, **choices), 0)
        self.assert_files("base.bin", "base.cer", "runtime.conf")
        self.assertEqual(len(self.stored_paths()), 301)
        self.assertEqual((self.output / "base.cer").read_bytes(), GOOD.certificate.read_bytes())
        self.assertEqual(self.status_with(console, verify, **choices), 0)
        self.assertEqual(self.status_with(console, ("list", self.output / "base.bin"), **choices), 0)
        self.assertEqual(self.status_with(console, ("list", self.config_file), **choices), 9)
        self.assertEqual(self.status_with(console, ("--unknown",), **choices), 1)
        self.write("bin/a.dat", b"HELLO")
        self.assertEqual(self.status_with(console, verify, **choices), 26)

    def test_pipe_that_nobody_reads(self) -> None:
        reader, writer = os.pipe()
        os.close(reader)
        self.addCleanup(os.close, writer)
        self.assert_does_its_work(writer)

    def test_reader_that_leaves_after_a_line(self) -> None:
        arguments = self.generate_arguments(config_file=self.config_file)
        script = '{ "$0" "$@"; echo $? > status; } | head -n 1'
        finished = self.run_script(script, *arguments)
        self.assertEqual(finished.stdout.count(b"\n"), 1)
        self.assertEqual((self.directory / "status").read_text(), "0\n")
        self.assertEqual(len(self.stored_paths()), 301)

    @unittest.skipUnless(HAS_FULL, "needs /dev/full")
    def test_full_device(self) -> None:
        with open("/dev/full", "wb") as console:
            self.assert_does_its_work(console.fileno())

    def test_file_that_must_not_grow(self) -> None:
        """The limit is above the size of the outputs, and below that of the console text."""
        path = self.directory / "console"
        path.write_bytes(bytes(100_000))
        with path.open("ab") as console:
            limit = (path.stat().st_size, resource.getrlimit(resource.RLIMIT_FSIZE)[1])
            self.assert_does_its_work(
                console.fileno(), preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, limit)
            )
        self.assertEqual(path.stat().st_size, 100_000)


if __name__ == "__main__":
    unittest.main()
