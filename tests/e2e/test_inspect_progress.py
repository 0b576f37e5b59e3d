"""What `sealkeeper-inspect check` shows beside its report while it works."""

import unittest

from e2e_support import INCLUDE_BIN, PRODUCT
from e2e_terminal import run_on_terminal
from inspect_support import GOOD, INSPECT, InspectTest


class Progress(InspectTest):
    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a.pak", b"hello")
        config_file = self.write_config(INCLUDE_BIN)
        self.assertEqual(self.run_program(*self.generate_arguments(config_file=config_file)).status, 0)
        self.arguments = ["check", self.game, "--product", PRODUCT]

    def test_nothing_is_shown_where_it_is_no_terminal(self) -> None:
        run = self.inspect(*self.arguments)
        self.assertEqual((run.status, run.errors), (GOOD, ""))

    def test_a_terminal_for_errors_takes_nothing_from_the_report(self) -> None:
        run = run_on_terminal([INSPECT, *self.arguments], of_errors=True, environment={"TERM": "xterm"})
        self.assertEqual((run.status, run.other), (GOOD, self.inspect(*self.arguments).output))


if __name__ == "__main__":
    unittest.main()
