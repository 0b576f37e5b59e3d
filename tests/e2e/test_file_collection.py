"""Which files the rules select, as seen on the console and in the catalogue's bytes."""

import unittest

import e2e_console as console
from catalogue_entry import Entry, aliased_path_field, name_position_of
from catalogue_format import parse
from e2e_support import EndToEndTest, config

EXCLUDE_NOTHING = "exclude_paths was specified but did not match any files.\n"
INCLUDE_NOTHING = "include_paths was specified but did not match any files.\n"
NO_EXTENSION = "ignore_files_without_extension flag has been set.\n"
NO_OUTPUT = 'exclude_paths = ["Quorvane"]'
TOO_SMALL = (
    "exclude_size_threshold is below the recommended minimum value of 10 MB, this is very likely to cause "
    "issues for end-users!\n"
)
TOO_LARGE = (
    "exclude_size_threshold exceeds the recommended maximum value of 1024 MB, this is very likely to cause "
    "issues for end-users!\n"
)


class Include(EndToEndTest):
    """Runs with "include_paths"."""

    def test_patterns(self) -> None:
        for name in ("a.exe", "b.EXE", "sub/c.exe", "sub/deep/d.exe", ".hidden.exe", "plain"):
            self.write(name, name.encode())
        cases = (
            ('"*.exe"', ["./*.exe"], ["./a.exe"]),
            ('"*.ex?"', ["./*.ex?"], ["./a.exe"]),
            ('"*/*.exe"', ["./*/*.exe"], ["./sub/c.exe"]),
            ('"sub"', ["./sub"], ["./sub/c.exe", "./sub/deep/d.exe"]),
            ('"sub/"', ["./sub"], ["./sub/c.exe", "./sub/deep/d.exe"]),
            ('"sub\\"', ["./sub"], ["./sub/c.exe", "./sub/deep/d.exe"]),
            ('"sub\\deep"', ["./sub/deep"], ["./sub/deep/d.exe"]),
            ('"s*"', ["./s*"], ["./sub/c.exe", "./sub/deep/d.exe"]),
            ('"s*/"', ["./s*"], ["./sub/c.exe", "./sub/deep/d.exe"]),
            ('".hidden.exe"', ["./.hidden.exe"], ["./.hidden.exe"]),
            ('".h*"', ["./.h*"], ["./.hidden.exe"]),
            ('"plain", "a.exe"', ["./plain", "./a.exe"], ["./a.exe", "./plain"]),
            ('"a.exe", "a.exe", "?.exe"', ["./a.exe", "./a.exe", "./?.exe"], ["./a.exe"]),
        )
        for patterns, matched, paths in cases:
            with self.subTest(patterns=patterns):
                self.assert_collected(f"include_paths = [{patterns}]", console.matched(*matched), paths)

    def test_spellings_of_one_file_are_several_files(self) -> None:
        self.write("sub/a.exe", b"a")
        lines = console.matched("./sub", "./sub/a.exe", "././sub/../sub/a.exe", ".//sub/a.exe")
        paths = ["././sub/../sub/a.exe", ".//sub/a.exe", "./sub/a.exe", "./sub/a.exe"]
        options = 'include_paths = ["sub", "sub/a.exe", "./sub/../sub/a.exe", "/sub/a.exe"]'
        self.assert_collected(options, lines, paths)

    def test_one_separator_at_the_end_is_dropped(self) -> None:
        self.write("sub/a.exe", b"a")
        self.assert_collected('include_paths = ["sub//"]', console.matched("./sub/"), ["./sub//a.exe"])

    def test_file_outside_the_game(self) -> None:
        (self.directory / "beside.dll").write_bytes(b"beside")
        path = "./../beside.dll"
        self.assert_collected('include_paths = ["../beside.dll"]', console.matched(path), [path])

    def test_whole_directory_by_a_dot(self) -> None:
        self.write("a", b"a")
        run = self.collect('include_paths = ["."]', "-outname", "mod")
        self.assertEqual((run.status, self.stored_paths(self.game / "mod.bin")), (0, ["./a"]))

    def test_patterns_without_a_match(self) -> None:
        self.write("a", b"a")
        lines = console.unmatched("./b", "./*.x", "./A") + console.matched("./a") + console.unmatched("./a/b")
        self.assert_collected('include_paths = ["b", "*.x", "A", "a", "a/b"]', lines, ["./a"])

    def test_nothing_matched(self) -> None:
        run = self.collect('include_paths = ["b", "%s"]')
        text = console.started(str(self.game), str(self.game)) + console.main_catalogue()
        text += console.config_version() + console.unmatched("./b", "./%s") + console.err(INCLUDE_NOTHING)
        self.assert_console(run, 4, text)
        self.assert_files()

    def test_empty_list_takes_the_whole_directory(self) -> None:
        self.write("bin/a", b"a")
        paths = ["./Quorvane/Certificates/runtime.conf", "./bin/a"]
        self.assert_collected("include_paths = [ ]", console.warn(EXCLUDE_NOTHING), paths)

    def test_file_named_directly_passes_every_rule(self) -> None:
        self.write_sparse("big.log", 1_000_001)
        self.write(".noext", b"n")
        options = (
            'include_paths = ["big.log", ".noext"] exclude_extensions = [".log"] '
            "exclude_size_threshold = 1; ignore_files_without_extension = true "
        )
        lines = console.warn(TOO_SMALL) + console.warn(NO_EXTENSION) + console.matched("./big.log", "./.noext")
        self.assert_collected(options, lines, ["./.noext", "./big.log"])

    def test_verbose_run_tells_the_paths(self) -> None:
        self.write("bin/a", b"a")
        lines = console.matched("./bin/") + console.verb("Excluded path: './bin/'\n")
        self.assert_collected('include_paths = ["bin//"]', lines, ["./bin//a"], "-v")


class Exclude(EndToEndTest):
    """Runs with "exclude_paths"."""

    def setUp(self) -> None:
        super().setUp()
        for name in ("bin/a.dll", "bin/b.log", "saved/c.sav", "saved/.d", "e"):
            self.write(name, name.encode())

    def test_patterns(self) -> None:
        everything = ["./bin/a.dll", "./bin/b.log", "./e", "./saved/c.sav"]
        cases = (
            ('"Quorvane"', ["./Quorvane"], everything),
            ('"Quorvane/", "bin"', ["./Quorvane", "./bin"], ["./e", "./saved/c.sav"]),
            ('"Q*", "*/*.log", "e"', ["./Q*", "./*/*.log", "./e"], ["./bin/a.dll", "./saved/c.sav"]),
            ('"*"', ["./*"], []),
        )
        for patterns, matched, paths in cases:
            with self.subTest(patterns=patterns):
                options = f"exclude_paths = [{patterns}]"
                if paths:
                    self.assert_collected(options, console.matched(*matched), paths)
                else:
                    self.assertEqual(self.collect(options).status, 7)

    def test_another_spelling_excludes_nothing(self) -> None:
        paths = ["./Quorvane/Certificates/runtime.conf", "./bin/a.dll", "./bin/b.log", "./e", "./saved/c.sav"]
        self.assert_collected('exclude_paths = ["./bin", "/bin"]', console.matched("././bin", ".//bin"), paths)

    def test_nothing_matched_is_a_warning(self) -> None:
        paths = ["./Quorvane/Certificates/runtime.conf", "./bin/a.dll", "./bin/b.log", "./e", "./saved/c.sav"]
        lines = console.unmatched("./gone") + console.warn(EXCLUDE_NOTHING)
        self.assert_collected('exclude_paths = ["gone"]', lines, paths)

    def test_verbose_run_tells_the_paths(self) -> None:
        lines = console.matched("./Quorvane") + console.verb("Excluded path: './Quorvane'\n")
        paths = ["./bin/a.dll", "./bin/b.log", "./e", "./saved/c.sav"]
        self.assert_collected(NO_OUTPUT, lines, paths, "-v")

    def test_only_the_certificate_copy_is_kept_out_by_itself(self) -> None:
        config_file = self.write_config(config('exclude_paths = ["bin", "saved"]'))
        folder = "Quorvane/Certificates"
        for target, expected in ((".", ["base.bin", "runtime.conf"]), (self.game, ["base.bin", "base.cer", "runtime.conf"])):
            with self.subTest(target=str(target)):
                arguments = self.generate_arguments(config_file=config_file, target=target)
                for _ in range(2):
                    self.assertEqual(self.run_program(*arguments, cwd=self.game).status, 0)
                self.assertEqual(self.stored_paths(), [f"{folder}/{name}" for name in expected] + ["e"])


class SkipRules(EndToEndTest):
    """Rules that leave out files found by walking."""

    def assert_selected(self, options: str, lines: str, *names: str) -> None:
        with self.subTest(options=options):
            paths = [f"./bin/{name}" for name in names]
            self.assert_collected(f'include_paths = ["bin"] {options}', lines + console.matched("./bin"), paths)

    def test_extensions(self) -> None:
        names = ("a.LOG", "a.log", "archive.", "b.log.txt", "noext", ".log", "c.log/d.txt", "e.", "x.y.log")
        for name in names:
            self.write(f"bin/{name}", b"x")
        selected = ["a.LOG", "a.log", "archive.", "b.log.txt", "c.log/d.txt", "e.", "noext", "x.y.log"]
        self.assert_selected("", "", *selected)
        for extension in ("log", "LOG", ".Log", ".y.log", "g"):
            self.assert_selected(f'exclude_extensions = ["{extension}"]', "", *selected)
        without_log = [name for name in selected if not name.endswith(".log")]
        self.assert_selected('exclude_extensions = [".log", ".log"]', "", *without_log)
        self.assert_selected('exclude_extensions = ["."]', "", *selected)
        with_extension = ["a.LOG", "a.log", "b.log.txt", "c.log/d.txt", "x.y.log"]
        warning = console.warn(NO_EXTENSION)
        self.assert_selected("ignore_files_without_extension = true ", warning, *with_extension)
        self.assert_selected("ignore_files_without_extension = false ", "", *selected)

    def test_size_threshold(self) -> None:
        self.write("bin/small", b"s")
        self.write_sparse("bin/even", 1_000_000)
        self.write_sparse("bin/over", 1_000_001)
        small, large = console.warn(TOO_SMALL), console.warn(TOO_LARGE)
        self.assert_selected("exclude_size_threshold = 1;", small, "even", "small")
        self.assert_selected("exclude_size_threshold = 2;", small, "even", "over", "small")
        self.assert_selected("exclude_size_threshold = 0;", small, "even", "over", "small")
        self.assert_selected("exclude_size_threshold = 2147483647;", large, "even", "over", "small")

    def test_negative_threshold_leaves_nothing(self) -> None:
        self.write("bin/small", b"s")
        self.write("bin/empty")
        run = self.collect('include_paths = ["bin"] exclude_size_threshold = 3000000000;')
        self.assertEqual(run.status, 7)
        self.assertIn(console.warn(TOO_LARGE), run.output)
        self.assertIn(console.err(console.EMPTY_CATALOGUE) + console.not_created(7, "CatalogueError"), run.output)

    def test_default_threshold(self) -> None:
        self.write("bin/small", b"s")
        self.write_sparse("bin/over", 1_024_000_001)
        self.assert_selected("", "", "small")


class Aliases(EndToEndTest):
    """Path prefixes, or other parts of paths, that the catalogue renames."""

    def assert_aliased(self, pairs: str, aliases, *names: str) -> None:
        with self.subTest(pairs=pairs):
            options = f'include_paths = ["bin"] alias_paths = ( {pairs} )'
            paths = [f"./bin/{name}" for name in names]
            self.assert_collected(options, console.matched("./bin"), paths, aliases=aliases)

    def test_substitution(self) -> None:
        for name in ("a/bin.dll", "b", "x/y"):
            self.write(f"bin/{name}", name.encode())
        names = ("a/bin.dll", "b", "x/y")
        self.assert_aliased('["bin", "Binaries/Mac"]', {"bin": "Binaries/Mac"}, *names)
        self.assert_aliased('["./bin", "never"]', {}, *names)
        self.assert_aliased('["x/y", "z"], ["bin/b", "Ünïcode 日本 \U0001f600"]', {"x/y": "z", "bin/b": "Ünïcode 日本 \U0001f600"}, *names)
        self.assert_aliased('["x", "1"], ["x", "2"]', {"x": "1"}, *names)
        self.assert_aliased('["in", "1"], ["bin", "2"]', {"in": "1", "bin": "2"}, *names)
        self.assert_aliased('["b", "bb"]', {"b": "bb"}, *names)
        self.assert_aliased('["bin\\a", "p\\\\q"]', {"bin/a": "p/q"}, *names)
        self.assert_aliased('["BIN", "x"], ["q", ""]', {"BIN": "x"}, *names)

    def test_order_of_files_is_that_before_substitution(self) -> None:
        for name in ("a", "b"):
            self.write(f"bin/{name}", name.encode())
        self.assert_aliased('["bin/a", "z"]', {"bin/a": "z"}, "a", "b")

    def test_single_file_mode_has_no_aliases(self) -> None:
        pak = self.write("bin/a.pak", b"x")
        self.assertEqual(self.run_program(*self.generate_arguments("-target_file", pak)).status, 0)
        self.assertEqual(self.stored_paths(), [str(pak)])

    def test_longest_aliased_path(self) -> None:
        self.write("bin/a", b"x")
        for length in (126, 127):
            value = "d/" + "v" * (length - 4)
            self.assert_aliased(f'["bin", "{value}"]', {"bin": value}, "a")
        image = (self.output / "base.bin").read_bytes()
        field = aliased_path_field(f"{value}/a")
        self.assertEqual(parse(image).entries[0], Entry(1, name_position_of(field), field, parse(image).entries[0].digests))

    def test_aliased_path_that_is_too_long(self) -> None:
        self.write("bin/a", b"x")
        value = "é" * 126
        run = self.collect(f'include_paths = ["bin"] alias_paths = ( ["bin", "{value}"] )')
        self.assertEqual(run.status, 7)
        self.assertIn(console.not_created(7, "CatalogueError"), run.output)
        self.assertIn(console.err(f"Path too long for the catalogue: '{value}/a'.\n"), run.output)
        self.assert_files("base.cer", "runtime.conf")


if __name__ == "__main__":
    unittest.main()
