"""Which arguments are accepted or refused, and with which messages."""

import os
import subprocess
import unittest

import e2e_console as console
from e2e_support import GOOD, INCLUDE_BIN, PROGRAM, EndToEndTest

NO_TARGET = (
    "target_game_dir argument must be specified as either absolute or relative path for the signed files "
    "generation.\n"
)
NO_PRODUCT = "ProductId argument must be specified.\n"
VERIFY_AND_LIST = "Verify and List arguments cannot be used together.\n"
FILE_AND_CONFIG = "target_file and config_file arguments cannot be used together.\n"
UNRESOLVED = (
    "The provided working directory path couldn't be resolved, please make sure it's a valid path: '%s'.\n"
)
PRODUCT = ("-productid", "X")
TARGET = ("-target_game_dir", "game")


class Refused(EndToEndTest):
    """Command lines that end with status 1."""

    def assert_refused(self, arguments, text: str, *, parsed: bool = True) -> None:
        with self.subTest(arguments=arguments):
            self.assert_console(self.run_program(*arguments), 1, text, parsed=parsed)

    def test_usage_alone(self) -> None:
        cases = [
            (),
            ("my.cfg",),
            ("a.cfg", "b.cfg"),
            ("-inkey",),
            ("-v=1",),
            ("-v=",),
            ("-gamedev=on",),
            ("--help=1",),
            ("--version=",),
            ("-?=",),
            ("-in", "x"),
            ("-inc", "x"),
            ("-t", "x"),
            ("-target_", "x"),
            ("-i", "x"),
            ("-",),
            ("--",),
            ("---help",),
            ("",),
            ("-x",),
            ("--productid", "X"),
            ("-help",),
            ("-version",),
            ("--verify", "game"),
            ("-verify", "game"),
            ("-list", "game"),
            ("-PRODUCTID", "X"),
            ("-Productid", "X"),
            ("-productidx", "X"),
            ("-config_file", "x.cfg"),
            ("-config_file=x.cfg",),
            ("-productid X",),
            ("-invalid", "--help"),
            ("-invalid", "--version"),
            ("verify",),
            ("list",),
            ("verify", "-v"),
            ("-v",) + ("-inkey",),
            ("-=",),
            ("-=X",),
            ("--=X",),
        ]
        for arguments in cases:
            self.assert_refused(arguments, console.USAGE, parsed=False)

    def test_usage_after_options_already_parsed(self) -> None:
        cases = [
            PRODUCT + ("-inkey",),
            PRODUCT + ("-inkey", "-v"),
            PRODUCT + ("-inkey", "-"),
            PRODUCT + ("-inkey", "-incert=x"),
            PRODUCT + TARGET + ("a.cfg", "b.cfg"),
            PRODUCT + TARGET + ("a.cfg", "b.cfg", "c.cfg"),
            PRODUCT + TARGET + ("-target_file", "f", "a.cfg", "b.cfg"),
            PRODUCT + ("-unknown", "--help"),
        ]
        for arguments in cases:
            parsed = "".join(
                console.parsed(option, value)
                for option, value in zip(arguments, arguments[1:])
                if not value.startswith("-")
            )
            self.assert_refused(arguments, parsed + console.USAGE, parsed=False)

    def test_missing_product_prints_no_usage(self) -> None:
        cases = [TARGET, ("-v",), ("-gamedev", "a.cfg", "b.cfg"), ("verify", "game"), ("verify", "gone"), ("ver", "")]
        for arguments in cases:
            self.assert_refused(arguments, console.err(NO_PRODUCT))
        self.assert_refused(
            ("-productid=",), console.parsed("-productid", "") + console.err(NO_PRODUCT), parsed=False
        )

    def test_missing_target_directory(self) -> None:
        cases = [PRODUCT, PRODUCT + ("a.cfg",), PRODUCT + ("a.cfg", "b.cfg"), PRODUCT + ("-target_game_dir", "")]
        for arguments in cases:
            self.assert_refused(arguments, console.err(NO_TARGET) + console.USAGE)

    def test_two_actions(self) -> None:
        refusal = console.err(VERIFY_AND_LIST) + console.USAGE
        self.assert_refused(PRODUCT + ("verify", "game", "list", "game"), refusal)
        self.assert_refused(("list", "game", "verify", "gone"), refusal)

    def test_an_empty_action_counts_as_not_given(self) -> None:
        refusal = console.err(NO_TARGET) + console.USAGE
        self.assert_refused(PRODUCT + ("verify", ""), refusal)
        self.assert_refused(PRODUCT + ("list", ""), refusal)

    def test_target_file_with_a_configuration_file(self) -> None:
        refusal = console.err(FILE_AND_CONFIG) + console.USAGE
        self.assert_refused(PRODUCT + TARGET + ("-target_file", "f", "a.cfg"), refusal)

    def test_paths_that_cannot_be_resolved(self) -> None:
        refusal = console.err(UNRESOLVED.replace("%s", "gone\\x")) + console.USAGE
        self.assert_refused(("list", "gone\\x"), refusal)
        self.assert_refused(PRODUCT + ("verify", "gone\\x"), refusal)

    def test_word_that_abbreviates_an_action_is_no_configuration_file(self) -> None:
        for word in ("ver", "v", "li", "l", "verif", "lis"):
            (self.directory / word).write_text(INCLUDE_BIN)
            self.assert_refused(PRODUCT + TARGET + (word,), console.USAGE)


class Accepted(EndToEndTest):
    """Command lines that reach an action, or end with status 0."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a.dat", b"hello")
        self.write_config(INCLUDE_BIN)

    def assert_reached(self, arguments, parsed: str, target: str = "game", opened: str = "base_public.cer") -> None:
        """The options were parsed as in `parsed`: generate starts, and fails for lack of a certificate."""
        with self.subTest(arguments=arguments):
            text = parsed + console.started(target, str(self.game))
            text += console.err(f"Failed to read certificate file {opened}\n")
            self.assert_console(self.run_program(*arguments), 27, text, parsed=False)

    def test_help(self) -> None:
        shown = console.USAGE + console.HELP
        for arguments in (("--help",), ("-?",), ("--h",), ("--help", "-nonsense"), ("a", "b", "-?", "")):
            with self.subTest(arguments=arguments):
                self.assert_console(self.run_program(*arguments), 0, shown)
        run = self.run_program("-v", "-gamedev", "-outname", "x", "--help", "-inkey")
        self.assert_console(run, 0, console.parsed("-outname", "x") + shown, parsed=False)

    def test_version(self) -> None:
        for arguments in (("--version",), ("--v",), ("--version", "-nonsense"), ("x.cfg", "--ver")):
            with self.subTest(arguments=arguments):
                self.assert_console(self.run_program(*arguments), 0, "")

    def test_ways_to_spell_an_option(self) -> None:
        both = console.parsed("-productid", "X") + console.parsed("-target_game_dir", "game")
        cases = [
            ("-productid", "X", "-target_game_dir", "game"),
            ("-productid=X", "-target_game_dir=game"),
            ("-p", "X", "-target_g", "game"),
            ("-prod=X", "-target_game_di=game"),
            ("-v", "-productid", "X", "-gamedev", "-target_game_dir", "game"),
            ("-productid", "X", "game.cfg", "-target_game_dir", "game"),
            ("-g", "game.cfg", "-p", "X", "-target_g=game", "-v"),
        ]
        for arguments in cases:
            self.assert_reached(arguments, both)

    def test_value_after_the_first_equals_sign(self) -> None:
        for value in ("a=b", "=", "-dash", "-v"):
            parsed = console.parsed("-productid", value) + console.parsed("-target_game_dir", "game")
            self.assert_reached((f"-productid={value}",) + TARGET, parsed)

    def test_word_with_equals_sign_is_positional(self) -> None:
        parsed = console.parsed("-productid", "X") + console.parsed("-target_game_dir", "game")
        self.assert_reached(PRODUCT + TARGET + ("verify=game",), parsed)

    def test_last_value_wins(self) -> None:
        arguments = ("-productid", "W", "-target_game_dir", "gone", "-incert", "w.cer") + PRODUCT + TARGET
        values = (("-productid", "W"), ("-target_game_dir", "gone"), ("-incert", "w.cer"), PRODUCT, TARGET)
        parsed = "".join(console.parsed(*pair) for pair in values) + console.parsed("-incert", "last.cer")
        self.assert_reached(arguments + ("-incert", "last.cer"), parsed, opened="last.cer")

    def test_last_empty_value_wins(self) -> None:
        arguments = PRODUCT + ("-productid=", *TARGET)
        text = console.parsed(*PRODUCT) + console.parsed("-productid", "") + console.parsed(*TARGET)
        self.assert_console(self.run_program(*arguments), 1, text + console.err(NO_PRODUCT), parsed=False)

    def test_more_than_fifty_arguments(self) -> None:
        for count in (45, 46, 47, 200):
            parsed = console.parsed(*PRODUCT) + console.parsed(*TARGET)
            self.assert_reached(("-v",) * count + PRODUCT + TARGET, parsed)

    def test_list_needs_no_product(self) -> None:
        run = self.run_program("list", "game.cfg")
        self.assertNotIn(NO_PRODUCT, run.output)
        self.assertNotIn(console.USAGE, run.output)
        self.assertNotEqual(run.status, 1)

    def test_text_that_looks_like_a_format(self) -> None:
        product = "%s%n%d%%\\n[x]"
        parsed = console.parsed("-productid", product) + console.parsed(*TARGET)
        self.assert_reached(("-productid", product) + TARGET, parsed)

    def test_bytes_that_are_not_utf8_and_line_breaks_are_echoed(self) -> None:
        product = "\udcff\udcc3\n\r\x1b[31m"
        parsed = console.parsed("-productid", product) + console.parsed(*TARGET)
        self.assert_reached(("-productid", product) + TARGET, parsed)

    def test_long_messages_are_cut(self) -> None:
        # "    arg[2]: " and the line feed take 13 bytes of the message.
        for length in (4081, 4082, 4083, 4084, 20_000):
            product = "p" * length
            parsed = console.parsed("-productid", product) + console.parsed(*TARGET)
            self.assert_reached(("-productid", product) + TARGET, parsed)

    def test_program_path_is_echoed_as_given(self) -> None:
        run = self.run_program("--version", first_argument="C:\\tools\\seal keeper%s")
        self.assert_console(run, 0, "")
        self.assertIn("arg[0]: C:/tools/seal keeper%s\n", run.output)


class StandardOutput(EndToEndTest):
    """Output that cannot be written does not disturb the work."""

    def assert_generates(self, redirection: str) -> None:
        self.write("bin/a.dat", b"hello" * 1000)
        paths = ["./bin/a.dat"]
        # More text than any stream buffer holds.
        for number in range(200):
            paths.append(f"./bin/{number:03}{'x' * 150}")
            self.write(paths[-1], b"x")
        config_file = self.write_config(INCLUDE_BIN)
        arguments = self.generate_arguments(config_file=config_file)
        script = f'exec "$0" "$@" {redirection}'
        finished = subprocess.run(
            ["sh", "-c", script, str(PROGRAM), *arguments], stderr=subprocess.PIPE, timeout=60, check=False
        )
        self.assertEqual((finished.returncode, finished.stderr), (0, b""))
        self.assert_catalogue(self.output / "base.bin", sorted(paths))
        self.assert_runtime_conf(self.output / "runtime.conf")
        self.assertEqual((self.output / "base.cer").read_bytes(), GOOD.certificate.read_bytes())

    def test_closed(self) -> None:
        self.assert_generates(">&-")

    def test_closed_with_standard_input(self) -> None:
        self.assert_generates(">&- <&-")

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs /dev/full")
    def test_full(self) -> None:
        self.assert_generates("> /dev/full")


if __name__ == "__main__":
    unittest.main()
