"""The game that most tests of failing runs use."""

from __future__ import annotations

import e2e_console as console
from e2e_support import INCLUDE_BIN, EndToEndTest, Run


class OneFileTest(EndToEndTest):
    """Runs on a game of one file with a configuration that includes it."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a.dat", b"hello")
        self.config_file = self.write_config(INCLUDE_BIN)

    def generate(self, *options, **choices) -> Run:
        """Run with these options and the keyword arguments of `generate_arguments`."""
        choices.setdefault("config_file", self.config_file)
        return self.run_program(*self.generate_arguments(*options, **choices))

    def until_output(self) -> str:
        """The output until the output folder is created."""
        return console.started(str(self.game), str(self.game)) + console.main_catalogue()

    def until_collected(self) -> str:
        """The output until the patterns are expanded."""
        return self.until_output() + console.config_version() + console.matched("./bin")

    def until_hashing(self) -> str:
        """The output until runtime.conf is written."""
        written = console.runtime_record() + console.runtime_written(self.folder)
        return self.until_collected() + console.trusted() + written
