"""The progress bar of `sealkeeper-inspect check` on a terminal."""

import fcntl
import os
import pty
import re
import struct
import subprocess
import termios
import unittest

from e2e_support import PRODUCT, TIMEOUT_SECONDS, UNDER_SANITIZER, config
from inspect_support import GOOD, INSPECT, InspectTest

BYTES = 700_000_000
"""Takes some tenths of a second, and the bar is drawn ten times a second."""
LINE = re.compile(r"\r\x1b\[K\[=*>? *\] +(\d+) %(  \d+\.\d .?B/s  \d+:\d\d left)?")


class Progress(InspectTest):
    def setUp(self) -> None:
        super().setUp()
        self.write_sparse("data/world.pak", BYTES)
        config_file = self.write_config(config('include_paths = ["data"]'))
        self.assertEqual(self.run_program(*self.generate_arguments(config_file=config_file)).status, 0)

    def shown(self, *arguments: str, columns: int = 80, terminal: str = "xterm") -> str:
        """The output of a run on standard error if that is a terminal of this kind and width."""
        master, slave = pty.openpty()
        fcntl.ioctl(master, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        environment = {**os.environ, "TERM": terminal}
        environment.pop("COLUMNS", None)
        with subprocess.Popen([INSPECT, "check", self.game, "--product", PRODUCT, *arguments], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=slave, env=environment) as run:
            os.close(slave)
            written = b""
            # Once the other end is closed, the system ends the reading with an error.
            try:
                while piece := os.read(master, 65536):
                    written += piece
            except OSError:
                pass
            run.communicate(timeout=TIMEOUT_SECONDS)
            self.assertEqual(run.returncode, GOOD)
        os.close(master)
        return written.decode()

    @unittest.skipIf(UNDER_SANITIZER, "takes several times as long")
    def test_the_bar_moves_within_a_file_and_goes(self) -> None:
        for arguments in ([], ["--jobs", "2"]):
            with self.subTest(arguments=arguments):
                text = self.shown(*arguments)
                shares = [int(share) for share, _ in LINE.findall(text)]
                self.assertTrue(any(0 < share < 100 for share in shares), text)
                self.assertEqual(shares, sorted(shares))
                self.assertTrue(text.endswith("\r\x1b[K"), text)

    @unittest.skipIf(UNDER_SANITIZER, "takes several times as long")
    def test_the_bar_does_not_wrap(self) -> None:
        lines = self.shown(columns=24).split("\r\x1b[K")
        self.assertTrue(any("[" in line for line in lines), lines)
        self.assertLess(max(map(len, lines)), 24)

    @unittest.skipIf(UNDER_SANITIZER, "takes several times as long")
    def test_a_dumb_terminal_is_shown_no_bar(self) -> None:
        self.assertEqual(self.shown(terminal="dumb"), "")

    def test_nothing_is_shown_where_it_is_no_terminal(self) -> None:
        run = self.inspect("check", self.game, "--product", PRODUCT)
        self.assertEqual((run.status, run.errors), (GOOD, ""))


if __name__ == "__main__":
    unittest.main()
