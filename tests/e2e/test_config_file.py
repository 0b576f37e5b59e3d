"""The configuration file from the outside: its grammar, its rules, and the runtime settings."""

import os
import unittest
from typing import Sequence

import e2e_console as console
from e2e_support import PRODUCT, EndToEndTest, config

UNREAD = "Could not load or parse the configuration file: '%s'.\n"
VERSION = "Unsupported config file version: %i.\n"
TOO_LARGE = (
    "exclude_size_threshold exceeds the recommended maximum value of 1024 MB, this is very likely to cause "
    "issues for end-users!\n"
)
TOO_SMALL = (
    "exclude_size_threshold is below the recommended minimum value of 10 MB, this is very likely to cause "
    "issues for end-users!\n"
)
BOTH = "Both include_paths and exclude_paths are specified, only one is allowed.\n"
NEITHER = "Either include_paths or exclude_paths must be specified.\n"
ALIAS_LIST = (
    "alias_paths is invalid. It must be in a list & array format( [\"orig1\",\"repl1\"], "
    "[\"orig2\",\"repl2\"] ); ... ).\n"
)
ALIAS_DOTS = "alias_paths is invalid. '..' and ':' are not allowed.All paths are relative to working_directory.\n"
WORKING_DIRECTORY = (
    "working_directory found in the .cfg file, please update the file and provide this through arguments instead."
)
NO_EXTENSION = "ignore_files_without_extension flag has been set.\n"
UNSUPPORTED = (
    "Called with an unsupported anti-tamper solution name: '%s'. The following are supported:\n"
)
PLEASE = (
    "Please provide name of a supported anti-tamper solution, if the one being used is not specifically "
    "listed, use 'Generic'.\n"
)
SOLUTIONS = (
    "None", "Generic", "Arxan", "Denuvo", "Themida", "StarForce", "VMProtect", "Steam DRM", "AppSign",
)
BIN = 'include_paths = ["bin"]'


class ConfigTest(EndToEndTest):
    """A game of two files."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a.dat", b"a")
        self.write("lib/b", b"b")

    def generate(self, text, *options):
        return self.run_program(*self.generate_arguments(*options, config_file=self.write_config(text)))

    def begun(self) -> str:
        return console.started(str(self.game), str(self.game)) + console.main_catalogue()

    def assert_refused(self, text, lines: str) -> None:
        self.assert_console(self.generate(text), 4, self.begun() + lines)
        self.assert_files()

    def assert_made(self, text, lines: str, paths: Sequence[str], record=None, product: str = PRODUCT) -> None:
        expected = self.collected_text(lines, console.hashing(*paths), record)
        self.assert_console(self.generate(text), 0, expected)
        self.assert_catalogue(self.output / "base.bin", paths)


class Grammar(ConfigTest):
    """How the scanner reads texts."""

    BIN = (console.matched("./bin"), ["./bin/a.dat"])
    BOTH = (console.matched("./bin", "./lib"), ["./bin/a.dat", "./lib/b"])

    def test_file_that_cannot_be_read(self) -> None:
        fifo = self.directory / "fifo"
        os.mkfifo(fifo)
        for path in ("gone\\x.cfg", str(self.game), str(fifo), str(self.write_config(b"", "empty.cfg"))):
            with self.subTest(path=path):
                run = self.run_program(*self.generate_arguments(config_file=path))
                self.assert_console(run, 4, self.begun() + console.err(UNREAD.replace("%s", path)))
        self.assert_files()

    def test_file_that_must_not_be_read(self) -> None:
        credentials = self.readable_credentials()
        config_file = self.write_config(config(BIN))
        self.become_unprivileged()
        config_file.chmod(0)
        run = self.run_program(*self.generate_arguments(config_file=config_file, credentials=credentials))
        self.assert_console(run, 4, self.begun() + console.err(UNREAD.replace("%s", str(config_file))))

    def test_empty_path_as_configuration_file(self) -> None:
        self.assert_console(self.run_program(*self.generate_arguments(config_file="")), 1, console.USAGE)

    def test_line_feed_in_a_list_element(self) -> None:
        refusal = console.err(UNREAD.replace("%s", str(self.directory / "game.cfg")))
        self.assert_refused(config('include_paths = ["bin\n"]'), refusal)

    def test_versions(self) -> None:
        cases = (
            ("\n", 1),
            ("x", 1),
            ("search_options { include_paths = [\"bin\"] }\n", 1),
            ("config_info { }\n", 1),
            ("config_info { version = 1; }\n", 1),
            ("config_info { version = 3; }\n", 3),
            ("config_info { version = \"2\" }\n", 1),
            ("config_info { version = 2 }\n", 1),
            ("config_info { version = true }\n", 1),
            ("config_info { version = -2; }\n", 1),
            ("config_info { version = 4294967295; }\n", 2**64 - 1),
            ("config_info { version = 2147483648; }\n", 2**64 - 2**31),
            ("config_info { version = 2; version = 0; }\n", 0),
            ("# config_info { version = 2; }\n", 1),
        )
        for text, version in cases:
            with self.subTest(text=text):
                self.assert_refused(text, console.err(VERSION.replace("%i", str(version))))

    def test_versions_that_are_two(self) -> None:
        for info in ("version = 4294967298;", "version = 2x;", "version 02 ;", "VERSION==\n=\r\t2;", "version=1;version=2;"):
            with self.subTest(info=info):
                self.assert_made(f"config_info {{ {info} }}\nsearch_options {{ {BIN} }}\n", *self.BIN)

    def test_spellings_of_one_configuration(self) -> None:
        cases = (
            'Config_Info: some words { version = 2; } SEARCH_OPTIONS\r\n\t{ Include_Paths ["bin"] } ',
            '# one\n// two\n/* three\n four */ config_info { version = 2; /* x */ }\nsearch_options {;;\n' + BIN + " }",
            "config_info { version = 2; }\n# /* opened in a line comment\nsearch_options { " + NOTHING + " }\n*/ "
            "search_options { " + BIN + " }\n",
            "config_info { version = 2; }\nsearch_options { " + BIN + "\n",
        )
        for text in cases:
            with self.subTest(text=text):
                self.assert_made(text, *self.BIN)

    def test_texts_that_say_less_than_they_seem_to(self) -> None:
        unclosed = 'config_info { version = 2; } search_options { include_paths = ["bin" '
        self.assert_refused(unclosed, console.config_version() + console.err(NEITHER))
        # A name ends at the next blank, so this section is called "config_info{version".
        glued = "config_info{version = 2;}search_options {" + BIN + "}"
        self.assert_refused(glued, console.err(VERSION.replace("%i", "1")))

    def test_lists_accumulate(self) -> None:
        cases = (
            'include_paths = ["bin", "", "lib"]',
            'include_paths = ["bin"] include_paths = ["lib"]',
            'include_paths = ["bin"] } search_options { include_paths = ["lib"]',
            'include_paths = ["bin" and then "lib"]',
            'include_paths = [\n"bin"\n"lib"\n]',
        )
        for options in cases:
            with self.subTest(options=options):
                self.assert_made(config(options), *self.BOTH)

    def test_scan_ends_silently(self) -> None:
        for options in (BIN + " oops = word ", BIN + " x = [] ", BIN + " x = () ", BIN + ' x = "open '):
            with self.subTest(options=options):
                lost = options + 'working_directory = "/"'
                if options.endswith('"open '):
                    # The next quote closes it, and the rest is no value.
                    lost = options
                self.assert_made(config(lost), *self.BIN)

    def test_word_true_swallows_the_byte_after_it(self) -> None:
        text = "config_info { version = 2; }\nsearch_options { " + BIN + " x = true}\nworking_directory = \"/\" }\n"
        self.assert_refused(text, console.config_version() + console.err(WORKING_DIRECTORY))

    def test_runs_of_backslashes_become_one_slash(self) -> None:
        for path in ("bin\\a.dat", "bin\\\\a.dat", "bin\\\\\\\\a.dat"):
            with self.subTest(path=path):
                text = config(f'include_paths = ["{path}"]')
                self.assert_made(text, console.matched("./bin/a.dat"), ["./bin/a.dat"])


NOTHING = 'include_paths = ["nothing"]'


class Rules(ConfigTest):
    """The rules of the section "search_options"."""

    def test_refused(self) -> None:
        cases = (
            (BIN + ' exclude_paths = ["lib"]', BOTH),
            (BIN + " exclude_paths = [ ]", BOTH),
            ("", NEITHER),
            ('include_paths = "bin"', NEITHER),
            ('include_paths = ( ["bin", "x"] )', NEITHER),
            (BIN + ' alias_paths = ["bin", "b"]', ALIAS_LIST),
            (BIN + ' working_directory = "/" alias_paths = ["bin", "b"]', ALIAS_LIST),
            (BIN + ' working_directory = "game"', WORKING_DIRECTORY),
            (BIN + ' working_directory = "" alias_paths = ( ["..", "b"] )', WORKING_DIRECTORY),
            (BIN + ' alias_paths = ( ["bin", "../b"] )', ALIAS_DOTS),
            (BIN + ' alias_paths = ( ["a..b", "b"] )', ALIAS_DOTS),
            (BIN + ' alias_paths = ( ["bin", "C:\\\\b"] )', ALIAS_DOTS),
            (BIN + ' alias_paths = ( ["b:", "b"] )', ALIAS_DOTS),
            (BIN + ' alias_paths = ( ["a", "b"], ["c", ":"] )', ALIAS_DOTS),
        )
        for options, message in cases:
            with self.subTest(options=options):
                self.assert_refused(config(options), console.config_version() + console.err(message))

    def test_missing_section(self) -> None:
        self.assert_refused("config_info { version = 2; }\n", console.config_version() + console.err(NEITHER))

    def test_warnings_come_before_refusals(self) -> None:
        lines = console.config_version() + console.warn(TOO_SMALL) + console.err(NEITHER)
        self.assert_refused(config("exclude_size_threshold = 9;"), lines)
        lines = console.config_version() + console.warn(TOO_LARGE) + console.warn(NO_EXTENSION)
        options = 'exclude_size_threshold = 1025; ignore_files_without_extension = 1; working_directory = "x" '
        self.assert_refused(config(options + BIN), lines + console.err(WORKING_DIRECTORY))

    def test_accepted(self) -> None:
        cases = (
            ("working_directory = 5;", ""),
            ("exclude_size_threshold = 1024;", ""),
            ("exclude_size_threshold = 10;", ""),
            ("exclude_size_threshold = 1025;", console.warn(TOO_LARGE)),
            ("exclude_size_threshold = 2147483647;", console.warn(TOO_LARGE)),
            ("exclude_size_threshold = 9;", console.warn(TOO_SMALL)),
            ("exclude_size_threshold = 0;", console.warn(TOO_SMALL)),
            ('exclude_size_threshold = "5"', ""),
            ("exclude_size_threshold = 4294967306;", ""),
            ("ignore_files_without_extension = true", console.warn(NO_EXTENSION)),
            ("ignore_files_without_extension = TrUe ", console.warn(NO_EXTENSION)),
            ("ignore_files_without_extension = 7;", console.warn(NO_EXTENSION)),
            ("ignore_files_without_extension = false", ""),
            ("ignore_files_without_extension = 0;", ""),
            ('ignore_files_without_extension = "true"', ""),
            ("unknown_key = 1;", ""),
        )
        for options, warnings in cases:
            with self.subTest(options=options):
                text = config(f"{options} {BIN}")
                self.assert_made(text, warnings + console.matched("./bin"), ["./bin/a.dat"])


class RuntimeSettings(ConfigTest):
    """The section "runtime_configuration"."""

    def test_values(self) -> None:
        long_name = "n" * 63
        cases = (
            ("max_active_game_instances = 0;", 0, "", 0),
            ("max_active_game_instances = 4294967295;", 4294967295, "", 0),
            ("max_active_game_instances = 4294967297;", 1, "", 0),
            ("max_active_game_instances = true", 1, "", 0),
            ('max_active_game_instances = "5"', 1, "", 0),
            ('crash_reporter_name = ""', 1, "", 0),
            ('crash_reporter_name = "a"crash_reporter_name = "b\\\\c"', 1, "b\\c", 0),
            (f'crash_reporter_name = "{long_name}"', 1, long_name, 0),
            (f'crash_reporter_name = "{long_name}6"', 1, long_name + "6", 0),
            (f'crash_reporter_name = "{long_name}65"', 1, long_name + "6", 0),
            ('crash_reporter_name = "%s%n é\\\udcff\n"', 1, "%s%n é\\\udcff\n", 0),
            ('anti_tamper_solution_name = "denuvo"', 1, "", 3),
            ('anti_tamper_solution_name = "VMProtect 3.5"', 1, "", 6),
            ('anti_tamper_solution_name = "GENERIC"', 1, "", 1),
            ('anti_tamper_solution_name = "Denuvo with Arxan"', 1, "", 2),
            ('anti_tamper_solution_name = "my steam drm"', 1, "", 7),
            # Bytes are equal if they differ only in the letter-case bit, so zero bytes match blanks.
            ('anti_tamper_solution_name = "Steam\0DRM"', 1, "", 7),
            ('anti_tamper_solution_name = "APPsIGN"', 1, "", 8),
            ('anti_tamper_solution_name = "Themida" crash_reporter_name = "c"', 1, "c", 4),
            ('anti_tamper_solution_name = "StarForce"', 1, "", 5),
            ("anti_tamper_solution_name = 3;", 1, "", 0),
        )
        for settings, instances, name, solution in cases:
            with self.subTest(settings=settings):
                record = console.runtime_record(instances, name or "N/A", SOLUTIONS[solution])
                self.assert_made(config(BIN, settings), console.matched("./bin"), ["./bin/a.dat"], record)
                name_bytes = console.to_bytes(name)
                self.assert_runtime_conf(self.output / "runtime.conf", instances, name_bytes, solution)

    def assert_unusable(self, name: str, lines: str) -> None:
        before = console.config_version() + console.matched("./bin") + console.trusted()
        before += "\n" + console.info(console.RULER)
        settings = f'anti_tamper_solution_name = "{name}" crash_reporter_name = "c"'
        self.assert_refused(config(BIN, settings), before + lines + console.info(PLEASE))

    def test_none_cannot_be_chosen(self) -> None:
        for name in ("None", "Nonexistent", "Generic, then none"):
            with self.subTest(name=name):
                self.assert_unusable(name, "")

    def test_unsupported_solutions(self) -> None:
        table = "".join(console.info(f"Solution name: '{solution}'.\n") for solution in SOLUTIONS)
        for name in ("Custom protector", "", "my Steam", "%s%n\\"):
            with self.subTest(name=name):
                lines = console.err(UNSUPPORTED.replace("%s", name)) + table
                self.assert_unusable(name, lines)


if __name__ == "__main__":
    unittest.main()
