"""The program is killed, or a call fails, at every call that changes a file. Good outputs stay good."""

import errno
import os
import signal
import unittest
from pathlib import Path
from typing import Dict, Iterator, List, Tuple

from e2e_support import UNDER_SANITIZER, Run, config
from one_file_game import OneFileTest

PRELOADED = os.environ.get("SEALKEEPER_OUTPUT_FAULTS", "")
NAMES = ("base.bin", "base.cer", "runtime.conf")
# Checking the old file; opening, filling, setting the mode of, flushing and closing a temporary one; renaming it;
# flushing the directory.
LEAST_CALLS = 3 * 9

MOST_CALLS = 2 * LEAST_CALLS
"""If a replacement is refused, further calls write the file in place."""


@unittest.skipUnless(PRELOADED, "needs a library that is preloaded, which this system has no way for")
@unittest.skipIf(UNDER_SANITIZER, "the sanitizer wants to be loaded first")
class OutputFaults(OneFileTest):
    """Each run replaces the outputs of an earlier one, which differ in as many bytes as possible."""

    def setUp(self) -> None:
        super().setUp()
        self.config_file = self.write_config(config('include_paths = ["bin"]', "max_active_game_instances = 2;"))
        self.assertEqual(self.generate().status, 0)
        self.new = self.outputs()
        self.old = {name: f"the old {name}".encode() for name in NAMES}
        self.assertEqual(sorted(self.new), sorted(NAMES))

    def outputs(self) -> Dict[str, bytes]:
        """The files in the output folder whose names are not hidden."""
        return {path.name: path.read_bytes() for path in self.output.iterdir() if path not in self.hidden()}

    def hidden(self) -> List[Path]:
        """The temporary files in the output folder."""
        return [path for path in self.output.iterdir() if path.name[0] == "."]

    def put_old(self) -> None:
        """Leave only the old outputs in their folder, with a mode that new files do not get."""
        for path in self.output.iterdir():
            path.unlink()
        for name, content in self.old.items():
            (self.output / name).write_bytes(content)
            (self.output / name).chmod(0o606)

    def runs(self, fault: str) -> Iterator[Tuple[int, Run]]:
        """Runs over the old outputs, with a fault at each call in turn until there are no more."""
        call = 0
        while True:
            self.put_old()
            environment = {"LD_PRELOAD": PRELOADED, "SEALKEEPER_FAULT": fault, "SEALKEEPER_FAULT_AT": str(call)}
            yield call, self.generate_with(environment)
            call += 1

    def generate_with(self, environment: Dict[str, str]) -> Run:
        return self.run_program(*self.generate_arguments(config_file=self.config_file), environment=environment)

    def assert_old_or_new(self) -> None:
        outputs = self.outputs()
        self.assertEqual(sorted(outputs), sorted(NAMES))
        for name, content in outputs.items():
            self.assertIn(content, (self.old[name], self.new[name]), name)
            self.assertEqual((self.output / name).stat().st_mode & 0o7777, 0o606)

    def test_killed_at_every_call(self) -> None:
        for call, run in self.runs("kill"):
            with self.subTest(call=call):
                self.assert_old_or_new()
                for left_behind in self.hidden():
                    self.assertEqual(left_behind.stat().st_mode & ~0o606 & 0o7777, 0, "open to no more users")
            if run.status != -signal.SIGKILL:
                break
        self.assertEqual((run.status, self.outputs()), (0, self.new))
        self.assertGreaterEqual(call, LEAST_CALLS)

    def test_an_error_at_every_call(self) -> None:
        for error in (errno.EIO, errno.ENOSPC, errno.EACCES, errno.EINTR):
            failed = 0
            for call, run in self.runs(str(error)):
                with self.subTest(error=errno.errorcode[error], call=call):
                    self.assert_old_or_new()
                    self.assertEqual(self.hidden(), [])
                    if run.status == 0:
                        self.assertEqual(self.outputs(), self.new)
                    else:
                        self.assertIn(run.status, (3, 8, 27))
                        failed += 1
                if call == MOST_CALLS:
                    break
            # At least a failed check of each of the three files must end the run.
            self.assertGreaterEqual(failed, 3)

    def test_a_killed_run_does_not_hinder_the_next(self) -> None:
        for _, run in self.runs("kill"):
            if run.status != -signal.SIGKILL:
                break
            self.assertEqual(self.generate().status, 0)
            self.assertEqual(self.outputs(), self.new)


if __name__ == "__main__":
    unittest.main()
