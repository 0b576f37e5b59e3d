"""Output on a terminal: names may hold control characters, which are escaped."""

import unittest

import e2e_console as console
import e2e_read_back as texts
from catalogue_entry import entry_of_bytes
from e2e_support import PRODUCT, Credentials, Run, config
from e2e_terminal import run_on_terminal
from signed_game import SignedGameTest

# Ends the verdict and begins a forged one.
FORGED = "a'.\n[Info] [Success] Successfully verified 'b"
# Writes to the clipboard.
CLIPBOARD = "\x1b]52;c;aGVsbG8=\x07"
# Names with each kind of control character, and their escaped forms.
SHOWN = {
    FORGED: "a'.\\x0a[Info] [Success] Successfully verified 'b",
    CLIPBOARD: "\\x1b]52;c;aGVsbG8=\\x07",
    "tab\tback\x08return\rdel\x7f": "tab\\x09back\\x08return\\x0ddel\\x7f",
    "c1\u009b31m": "c1\\xc2\\x9b31m",
    "W\u00f6lfe \u65e5\u672c \U0001f600": "W\u00f6lfe \u65e5\u672c \U0001f600",
}


class Terminal(SignedGameTest):
    def run_on_terminal(self, *arguments: object) -> Run:
        """Run the program with a terminal as its output."""
        command_line = [str(self.program), *map(str, arguments)]
        run = run_on_terminal(command_line, directory=self.directory)
        self.assertEqual(run.other, "")
        return Run(command_line, run.status, run.shown)

    def assert_shown_alone(self, run: Run) -> None:
        """The output has no control characters except the program's own line feeds."""
        for line in run.output.split("\n"):
            self.assertRegex(line, r"^(\[(Err!|Warn|Info|Verb)\] |Anti-Cheat |Usage: |Run sealkeeper |\.*$)")
        self.assertNotRegex(run.output, "[\x00-\x09\x0b-\x1f\x7f-\x9f\udc80-\udc9f]")

    def put_all(self) -> None:
        self.put_catalogue(entry_of_bytes(name, b"hello") for name in SHOWN)

    def test_list(self) -> None:
        self.put_all()
        path = self.output / "base.bin"
        run = self.run_on_terminal("list", path)
        # Backslashes in paths are shown as slashes, but those of escapes are not.
        lines = "".join(f"[Info] {shown}\n" for shown in SHOWN.values())
        self.assert_console(run, 0, texts.list_begun(path) + f"[Info] {len(SHOWN)} files in catalogue:\n" + lines)
        self.assert_shown_alone(run)

    def test_list_elsewhere_changes_nothing(self) -> None:
        self.put_all()
        run = self.run_program("list", self.output / "base.bin")
        self.assertTrue(run.output.endswith(texts.listed(list(SHOWN))), run.output)

    def test_list_of_settings(self) -> None:
        path = self.put_runtime_conf(1, b"x\n[Info] \x9b\x1b[2J", 0)
        run = self.run_on_terminal("list", path)
        self.assertEqual(run.status, 0)
        self.assertIn("[Info]     Crash reporter name: x\\x0a[Info] \\x9b\\x1b[2J\n", run.output)
        self.assert_shown_alone(run)

    def test_verify(self) -> None:
        self.put_all()
        for name in SHOWN:
            self.write(name, b"hello")
        run = self.run_on_terminal("-productid", PRODUCT, "verify", self.game)
        self.assertEqual(run.status, 0, run.output)
        for shown in SHOWN.values():
            self.assertIn(f"\n[Info] [Success] Successfully verified '{shown}'.", run.output)
        self.assert_shown_alone(run)

    def test_verify_of_files_that_are_not_there(self) -> None:
        self.put_all()
        run = self.run_on_terminal("-productid", PRODUCT, "verify", self.game)
        self.assertEqual(run.status, 23, run.output)
        for shown in SHOWN.values():
            line = f"\n[Err!] [Failure] Failed to verify '{shown}' - Code 23 (FileVerificationIOError)."
            self.assertIn(line, run.output)
        self.assert_shown_alone(run)

    def test_generate(self) -> None:
        for name in SHOWN:
            self.write(name, b"hello")
        config_file = self.write_config(config('include_paths = ["*", "none\x1b[2J"];'))
        run = self.run_on_terminal(*self.generate_arguments("-v", config_file=config_file))
        self.assertEqual(run.status, 0, run.output)
        for shown in SHOWN.values():
            self.assertIn(f"\n[Info] Hashing ./{shown}...", run.output)
            self.assertIn(f"\n[Verb] Excluded path: './{shown}'\n", run.output)
        self.assertIn("consider removing it: './none\\x1b[2J'.\n", run.output)
        self.assert_shown_alone(run)
        self.assertEqual(sorted(name for name in self.stored_paths() if name in SHOWN), sorted(SHOWN))

    def test_arguments(self) -> None:
        run = self.run_on_terminal("-productid", "\x1b[2J\udc9b\n", "-target_game_dir", "none\x1b", "a\\x1b")
        self.assertEqual(run.status, 8, run.output)
        self.assertIn("[Info]     arg[2]: \\x1b[2J\\x9b\\x0a\n", run.output)
        self.assertIn("[Info] Parsed Nimbrel product id: '\\x1b[2J\\x9b\\x0a'.\n", run.output)
        # A backslash in the argument has become a slash by then, so it cannot be part of an escape.
        self.assertIn("[Info]     arg[5]: a/x1b\n", run.output)
        self.assert_shown_alone(run)

    def test_message_of_several_lines(self) -> None:
        """Line feeds in a message's own text stay, inside it and at its end."""
        config_file = self.write_config(config('include_paths = ["*"];'))
        credentials = Credentials.of("foreign")
        run = self.run_on_terminal(*self.generate_arguments(config_file=config_file, credentials=credentials))
        self.assertIn("is not valid.\n    Check that ", run.output)

    def test_message_that_is_cut(self) -> None:
        """The cut at 4095 bytes comes before the escapes, which are longer than what they stand for."""
        # In front of the argument stand 12 bytes; the line feed after it is lost.
        for name, argument, shown in (
            ("control last", "\x1b" * 5000, "\\x1b" * 4083),
            ("control past the cut", "n" * 4083 + "\x1b", "n" * 4083),
            ("letter cut in two", "n" * 4082 + "\u00e9", "n" * 4082 + "\udcc3"),
        ):
            with self.subTest(name=name):
                run = self.run_on_terminal(argument)
                self.assertIn(f"[Info]     arg[1]: {shown}{console.USAGE}", run.output)


if __name__ == "__main__":
    unittest.main()
