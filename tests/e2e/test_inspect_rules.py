"""`sealkeeper-inspect rules`: what generate would hash, why it leaves out the rest, and mistakes in the rules."""

import os
import random
import subprocess
import unittest
from dataclasses import replace
from pathlib import Path
from typing import Any, Dict, List, Optional

import catalogue_format
import random_games
from e2e_support import OUTPUT_FOLDER, STEP, config
from inspect_support import ERROR, GOOD, INSPECT, USAGE, WARNING, InspectTest

RANDOM_GAMES = int(os.environ.get("SEALKEEPER_RANDOM_GAMES", "60")) // STEP
NO_UTF8 = "U82W_ERROR"


class Rules(InspectTest):
    """One report."""

    def report(self, search_options: str, status: int, *options: str, game: Optional[Path] = None) -> Dict[str, Any]:
        """The report on a configuration file. It must have this status."""
        config_file = self.write_config(config(search_options))
        run = self.inspect("rules", config_file, "--game", game or self.game, "--json", *options)
        self.assertEqual((run.status, run.errors), (status, ""), run.output)
        return run.json()

    def states(self, report: Dict[str, Any]) -> Dict[str, str]:
        """The state of each file, by path."""
        return {file["path"]: file["reason"] or file["state"] for file in report["files"]}

    def assert_warned(self, search_options: str, message: str, cure: str, at: Optional[str] = None) -> None:
        """Expects one warning to be this one, at the text `at` in the options or without a place."""
        report = self.report(search_options, WARNING)
        line, column = (None, None) if at is None else (2, config(search_options).splitlines()[1].index(at) + 1)
        expected = {"line": line, "column": column, "message": message, "cure": cure}
        self.assertIn(expected, report["warnings"])


class RulesWithProgram(Rules):
    """One report on a game that has the program bin/a.exe."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a.exe", b"1")


class Reasons(Rules):
    """Every file has a state. A file left out has the rule as its state."""

    def test_each_reason_of_a_walk(self) -> None:
        for name in ("a.exe", ".hidden", ".cache/x", "out/y", "out/deep/z", "x.pdb", "bare"):
            self.write(name, b"12345")
        self.write_sparse("big.pak", 11_000_001)
        (self.game / "link").symlink_to("a.exe")
        (self.game / "dangling").symlink_to("nowhere")
        os.mkfifo(self.game / "fifo.p")
        report = self.report(
            'exclude_paths = ["out", "Quorvane"] exclude_extensions = [".pdb"] exclude_size_threshold = 11; '
            "ignore_files_without_extension = true ",
            WARNING,
        )
        self.assertEqual(self.states(report), {
            "a.exe": "sealed",
            ".hidden": "hidden",
            ".cache/x": "hidden",
            "out/y": "excluded path",
            "out/deep/z": "excluded path",
            "x.pdb": "extension",
            "bare": "no extension",
            "big.pak": "size",
            "link": "link",
            "dangling": "dangling link",
            "fifo.p": "not a regular file",
        })
        self.assertEqual(report["totals"]["sealed"], {"files": 1, "bytes": 5})
        self.assertEqual(report["totals"]["leftOut"]["files"], 10)

    def test_what_no_pattern_includes(self) -> None:
        self.write("bin/a", b"1")
        self.write("data/b", b"2")
        self.write("data/.c", b"3")
        report = self.report('include_paths = ["bin"]', GOOD)
        self.assertEqual(self.states(report), {
            "bin/a": "sealed", "data/b": "not included", "data/.c": "not included"})

    def test_a_directory_that_cannot_be_read(self) -> None:
        self.write("bin/a", b"1")
        self.write("closed/b", b"1")
        self.become_unprivileged()
        (self.game / "closed").chmod(0)
        report = self.report('exclude_paths = ["Quorvane"]', WARNING)
        self.assertEqual(self.states(report)["closed"], "unlistable")
        self.assertIn("'closed' cannot be read, so nothing in it is sealed.", self.warnings_of(report))

    def test_a_game_directory_that_cannot_be_read(self) -> None:
        self.write("bin/a", b"1")
        self.become_unprivileged()
        self.game.chmod(0o300)
        self.addCleanup(self.game.chmod, 0o755)
        report = self.report("exclude_paths = [ ]", ERROR)
        self.assertEqual(self.states(report), {".": "unlistable"})
        told = [(warning["message"], warning["cure"]) for warning in report["warnings"]]
        self.assertIn(("'.' cannot be read, so nothing in it is sealed.", "Give this user the right to read it."), told)

    def test_directories_that_only_a_pattern_leads_to(self) -> None:
        for name in ("bin/a", "other/b", "real/sub/c"):
            self.write(name, b"1")
        (self.game / "link").symlink_to("real")
        self.become_unprivileged()
        for closed in ("bin", "real/sub"):
            (self.game / closed).chmod(0)
        self.game.chmod(0o311)
        self.addCleanup(self.game.chmod, 0o755)
        report = self.report('include_paths = ["bin", "other", "link"]', WARNING)
        self.assertEqual(self.states(report), {
            ".": "unlistable", "bin": "unlistable", "link/sub": "unlistable", "other/b": "sealed"})
        self.assertEqual(self.warnings_of(report), [
            "The game directory cannot be listed, so the files that are left out are not known.",
            "'bin' and 'link/sub' cannot be read, so nothing in them is sealed."])

    def test_a_dangling_link_that_a_pattern_names(self) -> None:
        self.write("bin/a", b"1")
        (self.game / "bin/gone").symlink_to("nowhere")
        report = self.report('include_paths = ["bin/*"]', WARNING)
        self.assertEqual(self.states(report)["bin/gone"], "dangling link")

    def test_a_link_to_sealed_files_is_not_left_out(self) -> None:
        self.write("real/a", b"1")
        (self.game / "link").symlink_to("real")
        report = self.report('include_paths = ["link"]', GOOD)
        self.assertEqual(self.states(report), {
            "link/a": "sealed", "real/a": "not included"})


class Traps(RulesWithProgram):
    """What generate does silently, or what makes verify fail."""

    def test_a_pattern_that_matches_nothing(self) -> None:
        self.assert_warned(
            'include_paths = ["bin", "lib/*.so"]', "The pattern 'lib/*.so' matches nothing.",
            "Correct it or take it out: what it was meant for is not sealed.", "lib/*.so")

    def test_a_pattern_in_another_encoding_than_the_names_of_files(self) -> None:
        self.write("café/b", b"1")
        config_file = self.write_config(config('include_paths = ["bin", "café/*"]').encode("latin-1"))
        report = self.inspect("rules", config_file, "--game", self.game, "--json").json()
        self.assertEqual(self.warnings_of(report), [
            "The pattern 'caf\ufffd/*' matches nothing, perhaps because it is not UTF-8."])
        self.assertEqual(report["warnings"][0]["cure"],
                         "Where the names of the files are UTF-8, save the configuration file as UTF-8 without a "
                         "byte-order mark.")

    def test_a_pattern_below_a_directory_that_cannot_be_read(self) -> None:
        self.write("closed/s", b"1")
        self.become_unprivileged()
        (self.game / "closed").chmod(0)
        for pattern in ("closed/s", "closed/*", "./closed//deep/s"):
            with self.subTest(pattern=pattern):
                self.assert_warned(
                    f'include_paths = ["bin", "{pattern}"]',
                    f"The pattern '{pattern}' matches nothing: the directory 'closed' cannot be read.",
                    "Give this user the right to read it, or take the pattern out.", pattern)

    def test_a_link_that_leads_out_of_the_game(self) -> None:
        beside = self.directory / "beside"
        beside.mkdir()
        (beside / "x").write_bytes(b"x")
        (self.game / "lib").symlink_to(beside)
        (self.game / "bin/y").symlink_to(beside / "x")
        cure = "Ship files in place of links: on another machine there is something else where they lead."
        for pattern, link in (("lib", "lib"), ("lib/x", "lib"), ("lib/*", "lib"), ("bin/?", "bin/y")):
            with self.subTest(pattern=pattern):
                self.assert_warned(
                    f'include_paths = ["bin", "{pattern}"]',
                    f"The pattern '{pattern}' leads out of the game directory by the link '{link}'.", cure, pattern)

    def test_a_pattern_that_leads_out_of_the_game(self) -> None:
        (self.directory / "beside").write_bytes(b"x")
        self.assert_warned(
            'include_paths = ["bin", "../beside"]',
            "The pattern '../beside' leads out of the game directory by '..'.",
            "Name only files of the game: on another machine there is something else beside it.", "../beside")

    def test_a_wildcard_that_leads_out_of_the_game(self) -> None:
        self.assert_warned(
            'include_paths = ["bin", ".*"]', "The pattern '.*' leads out of the game directory by '..'.",
            "Name only files of the game: on another machine there is something else beside it.", ".*")

    def test_a_file_reached_twice(self) -> None:
        self.assert_warned(
            'include_paths = ["bin", "bin/a.exe"]',
            "'bin/a.exe' is sealed more than once, because several paths lead there (patterns 'bin' and 'bin/a.exe').",
            "Take out the pattern 'bin/a.exe': 'bin' seals all of it, and a file is hashed and verified once for each.",
            "bin/a.exe")

    def test_a_file_sealed_under_two_names(self) -> None:
        cure = "Write patterns that lead to each file by one name only: it is hashed and verified once for each."
        (self.game / "tool.exe").symlink_to("bin/a.exe")
        self.assert_warned(
            'include_paths = ["bin/a.exe", "tool.exe"]',
            "'bin/a.exe' and 'tool.exe' are one file because of a link, and it is sealed under each name "
            "(patterns 'bin/a.exe' and 'tool.exe').", cure, 'tool.exe"')
        self.write("bin/b.exe", b"2")
        (self.game / "old").symlink_to("bin")
        self.assert_warned(
            'include_paths = ["old", "bin"]',
            "'bin/a.exe' and 'old/a.exe' are one file because of a link, and it is sealed under each name, as "
            "is 1 more file (patterns 'old' and 'bin').", cure, 'bin"')
        self.assertEqual(self.report('include_paths = ["old"]', GOOD)["warnings"], [])
        self.assertEqual(self.report('include_paths = ["bin/a.exe", "old/b.exe"]', GOOD)["warnings"], [])

    def test_own_output_is_foreseen_before_the_first_run(self) -> None:
        message = (f"A second run seals '{OUTPUT_FOLDER}/base.bin' and '{OUTPUT_FOLDER}/base.cer' of the first one and "
                   "then replaces them, so verify fails.")
        self.assert_warned('exclude_paths = ["*.log"]', message, 'Add "Quorvane" to exclude_paths.', '["*.log"')
        self.assert_warned('include_paths = ["bin", "*"]', message,
                           "Write in include_paths what to hash, but not \"Quorvane\".", '*"')
        self.assertFalse((self.game / "Quorvane").exists(), "nothing is written")

    def test_own_output_by_another_way(self) -> None:
        self.write("b", b"1")
        (self.game / "me").symlink_to(".")
        (self.game / "old").symlink_to("Quorvane")
        beside = f"../{self.game.name}"
        # The outputs alone are named where the same way leads to other files.
        ways = (("me", f"me/{OUTPUT_FOLDER}", False), ("old", "old/Certificates", True),
                (beside, f"{beside}/{OUTPUT_FOLDER}", False))
        for pattern, folder, is_folder_named in ways:
            with self.subTest(pattern=pattern):
                left_out = f'"{pattern}"' if is_folder_named else f'"{folder}/base.bin", "{folder}/base.cer"'
                self.assert_warned(
                    f'include_paths = ["b", "{pattern}"]',
                    f"A second run seals '{folder}/base.bin' and '{folder}/base.cer' of the first one and then replaces "
                    "them, so verify fails.",
                    f"Write in include_paths what to hash, but not {left_out}.", f'{pattern}"')

    def test_own_settings_alone(self) -> None:
        self.write(f"{OUTPUT_FOLDER}/runtime.conf", b"x")
        self.assert_warned(
            f'include_paths = ["bin", "{OUTPUT_FOLDER}/runtime.conf"]',
            f"A run seals '{OUTPUT_FOLDER}/runtime.conf', which it writes itself and which has a signature of its own.",
            "Write in include_paths what to hash, but not \"Quorvane\".",
            f"{OUTPUT_FOLDER}/runtime.conf")

    def test_a_file_that_this_user_may_not_read(self) -> None:
        self.write("bin/secret", b"1")
        self.become_unprivileged()
        (self.game / "bin/secret").chmod(0)
        report = self.report('include_paths = ["bin"]', ERROR)
        self.assertEqual(report["refusal"], {"code": 7, "result": "CatalogueError",
                                             "message": "'./bin/secret' cannot be read by this user."})
        self.assertIn("'bin/secret' cannot be read by this user: generate fails at it.", self.warnings_of(report))
        generated = self.run_program(*self.generate_arguments(
            config_file=self.directory / "game.cfg", credentials=self.readable_credentials()))
        self.assertEqual(generated.status, 7)

    def test_own_output_of_a_mod(self) -> None:
        report = self.report('exclude_paths = ["Quorvane"]', WARNING, "--outname", "mod1")
        self.assertIn("A second run seals 'mod1.bin' and 'mod1.cer' of the first one and then replaces them, so "
                      "verify fails.", self.warnings_of(report))
        self.assertIn('Add "mod1.bin", "mod1.cer" to exclude_paths.',
                      [warning["cure"] for warning in report["warnings"]])
        cured = self.report('exclude_paths = ["Quorvane", "mod1.bin", "mod1.cer"]', WARNING, "--outname", "mod1")
        self.assertEqual(self.warnings_of(cured), ["The pattern 'Quorvane' matches nothing."])

    def test_names_that_are_no_utf8(self) -> None:
        self.write("bin/\udcff", b"x")
        report = self.report('include_paths = ["bin"]', WARNING)
        self.assertEqual([w for w in self.warnings_of(report) if "not UTF-8" in w][0][-72:],
                         "the catalogue lists an empty file 'U82W_ERROR' in its place, and verify fails."[-72:])
        self.assertEqual([file["pathHex"] for file in report["files"] if "pathHex" in file], ["62696e2fff"])

    def test_a_name_with_a_backslash(self) -> None:
        self.write("bin/a\\b", b"x")
        self.assert_warned(
            'include_paths = ["bin"]',
            "'bin/a\\b' has a backslash, which the catalogue holds as a slash: verify looks for another file and fails.",
            "Rename it, or write patterns that do not take it in.")
        report = self.report('exclude_paths = ["Quorvane"]', WARNING)
        self.assertIn("Rename it, or exclude it by a pattern with '?' in place of the backslash.",
                      [warning["cure"] for warning in report["warnings"]])
        cured = self.report('exclude_paths = ["bin/a?b"]', WARNING)
        self.assertEqual(self.states(cured)["bin/a\\b"], "excluded path")

    def test_a_path_over_the_limit(self) -> None:
        name = "bin/" + "/".join(["d" * 62] * 4)
        self.assertEqual(len(name), 255)
        self.write(name, b"x")
        self.report('include_paths = ["bin"]', GOOD)
        self.write(name + "e", b"x")
        report = self.report('include_paths = ["bin"]', ERROR)
        self.assertEqual(report["refusal"], {"code": 7, "result": "CatalogueError",
                                             "message": f"Path too long for the catalogue: './{name}e'."})
        self.assertIn(
            f"'{name}e' is longer than the 255 UTF-16 units that a catalogue has room for: generate fails at it.",
            self.warnings_of(report))

    def test_aliases_and_what_they_do_to_verify(self) -> None:
        self.assert_warned(
            'include_paths = ["bin"] alias_paths = ( ["bin", "Binaries"], ["zz", "y"] );',
            "The alias 'bin' changes the stored paths of 1 file: verify looks for another file in place of each, "
            "and usually fails.",
            "Take it out, unless these files are checked by a client that knows aliases and never by verify.", 'bin", "Bin')
        self.assert_warned(
            'include_paths = ["bin"] alias_paths = ( ["bin", "Binaries"], ["zz", "y"] );',
            "The alias 'zz' changes no path: none contains it, or another alias applies first.",
            "Correct it or take it out.", 'zz"')

    def test_links(self) -> None:
        (self.game / "bin/link").symlink_to("a.exe")
        self.assert_warned(
            'include_paths = ["bin"]',
            "'bin/link' is a link and left out: links found in a directory are neither followed nor sealed.",
            "Ship files in place of links.")

    def test_a_fifo_that_a_pattern_names(self) -> None:
        os.mkfifo(self.game / "bin/fifo")
        self.assert_warned(
            'include_paths = ["bin/*"]',
            "'bin/fifo' is not a regular file: the catalogue lists it as an empty one, and verify fails.",
            "Write patterns that do not match it.")


class Refusals(Rules):
    """If generate would end without a catalogue, the report says so."""

    def assert_refused(self, text: str, code: int, message: str) -> None:
        config_file = self.write_config(text)
        run = self.inspect("rules", config_file, "--game", self.game, "--json")
        self.assertEqual((run.status, run.errors), (ERROR, ""))
        refusal = run.json()["refusal"]
        self.assertEqual((refusal["code"], refusal["message"]), (code, message))
        generated = self.run_program(*self.generate_arguments(config_file=config_file))
        self.assertEqual(generated.status, code)

    def test_refusals_are_those_of_generate(self) -> None:
        self.write("a", b"x")
        self.assert_refused("x {}\n", 4, "Unsupported config file version: 1.")
        self.assert_refused(config(""), 4, "Either include_paths or exclude_paths must be specified.")
        self.assert_refused(config('include_paths = ["b"]'), 4,
                            "include_paths was specified but did not match any files.")
        self.assert_refused(config('exclude_paths = ["a", "Quorvane"]'), 7,
                            "Cannot create an empty catalogue, at least all executables and libraries must be included.")
        self.assert_refused(config('include_paths = ["a"]', 'anti_tamper_solution_name = "None"'), 4,
                            "Please provide name of a supported anti-tamper solution, if the one being used is not "
                            "specifically listed, use 'Generic'.")

    def test_files_that_cannot_be_read_are_named(self) -> None:
        run = self.inspect("rules", "missing.cfg", "--game", self.game)
        self.assertEqual((run.status, run.output), (ERROR, ""))
        self.assertEqual(run.errors, "sealkeeper-inspect: 'missing.cfg': No such file or directory\n")
        run = self.inspect("rules", self.game.name, "--game", self.game)
        self.assertEqual((run.status, run.output), (ERROR, ""))
        self.assertEqual(run.errors, f"sealkeeper-inspect: '{self.game.name}': cannot be read: it is a directory\n")
        config_file = self.write_config(config('include_paths = ["a"]'))
        run = self.inspect("rules", config_file, "--game", "nowhere")
        self.assertEqual((run.status, run.errors),
                         (ERROR, "sealkeeper-inspect: 'nowhere': No such file or directory\n"))

    def test_what_keeps_a_report_from_being_made_is_told_as_json(self) -> None:
        good = self.write_config(config('include_paths = ["a"]'))
        self.write("a", b"1")
        page = self.game / "page.html"
        cases = (("missing.cfg", self.game), (str(self.game), self.game), (str(good), "nowhere"), (str(good), good),
                 (str(good), self.game, "--html", page), ("no UTF-8 \udcff", self.game))
        for config_file, game, *options in cases:
            with self.subTest(config_file=config_file, game=game):
                run = self.inspect("rules", config_file, "--game", game, "--json", *options)
                subject = {"configFile": config_file, "gameDirectory": str(game)}
                if "\udcff" in config_file:
                    subject = {"configFile": "no UTF-8 \ufffd", "configFileHex": "6e6f205554462d3820ff",
                               "gameDirectory": str(game)}
                    run = replace(run, errors=run.errors.replace("\udcff", "\ufffd"))
                self.assert_json_failure(run, subject)

    def test_a_report_that_cannot_be_written_is_no_good_one(self) -> None:
        self.write("bin/a", b"1")
        config_file = self.write_config(config('include_paths = ["bin"]'))
        warned_of = self.write_config(config('include_paths = ["bin", "gone"]'), name="warned.cfg")
        for rules in (config_file, warned_of):
            with open("/dev/full", "wb") as full:
                run = subprocess.run([INSPECT, "rules", rules, "--game", self.game, "--json"], stdout=full,
                                     stderr=subprocess.PIPE, check=False, timeout=60)
            self.assertEqual((run.returncode, run.stderr), (
                ERROR, b"sealkeeper-inspect: the report could not be written: No space left on device\n"))

    def test_nobody_need_read_all_of_it(self) -> None:
        self.write("bin/a", b"1")
        config_file = self.write_config(config('include_paths = ["bin"]'))
        reading, writing = os.pipe()
        os.close(reading)
        run = subprocess.run([INSPECT, "rules", config_file, "--game", self.game], stdout=writing,
                             stderr=subprocess.PIPE, check=False, timeout=60)
        os.close(writing)
        self.assertEqual((run.returncode, run.stderr), (GOOD, b""))

    def test_an_unknown_option_is_named(self) -> None:
        for arguments in (["rules", "x.cfg", "--game", self.game, "--frob"], ["rules", "--frob"], ["check", "--frob", "x"]):
            run = self.inspect(*arguments)
            self.assertEqual(run.status, USAGE)
            self.assertIn("--frob", run.errors)

    def test_a_page_needs_a_name(self) -> None:
        self.write("bin/a", b"1")
        config_file = self.write_config(config('include_paths = ["bin"]'))
        run = self.inspect("rules", config_file, "--game", self.game, "--html", "")
        self.assertEqual((run.status, run.output), (USAGE, ""))
        self.assertEqual(run.errors, "sealkeeper-inspect: --html: the name of a file is required (see --help)\n")

    def test_the_page_replaces_nothing_of_the_game(self) -> None:
        self.write("bin/a", b"1")
        config_file = self.write_config(config('include_paths = ["bin"]'))
        for page in (config_file, self.game / "bin/a", self.game / "page.html"):
            before = page.read_bytes() if page.exists() else None
            run = self.inspect("rules", config_file, "--game", self.game, "--html", page)
            self.assertEqual(run.status, ERROR)
            self.assertIn(f"'{page}': ", run.errors)
            self.assertEqual(page.read_bytes() if page.exists() else None, before)
        run = self.inspect("rules", config_file, "--game", self.game, "--html", self.directory / "page.html")
        self.assertEqual((run.status, run.errors), (GOOD, ""))
        self.assertIn(b"<!DOCTYPE html>", (self.directory / "page.html").read_bytes()[:100])


    def test_the_page_lies_in_a_game_that_is_the_root(self) -> None:
        config_file = self.write_config(config('include_paths = ["no-such-file"]'))
        page = self.directory / "page.html"
        run = self.inspect("rules", config_file, "--game", "/", "--html", page)
        self.assertEqual((run.status, run.output), (ERROR, ""))
        self.assertEqual(run.errors, f"sealkeeper-inspect: '{page}': lies in the game, to which nothing is written\n")
        self.assertFalse(page.exists())


class SameAsGenerate(Rules):
    """The sealed files in the report are those that generate puts into the catalogue."""

    def listed(self) -> Optional[List[str]]:
        """The paths in the catalogue that generate writes, in order; None if it refuses."""
        run = self.run_program(*self.generate_arguments(config_file=self.directory / "game.cfg"))
        if run.status != 0:
            return None
        image = (self.output / "base.bin").read_bytes()
        return sorted(entry.path for entry in catalogue_format.parse(image, strict=False).entries)

    def told(self) -> Optional[List[str]]:
        """The paths that generate would catalogue according to the report."""
        run = self.inspect("rules", "game.cfg", "--game", self.game, "--json")
        self.assertEqual(run.errors, "")
        report = run.json()
        if report["refusal"]:
            self.assertEqual(run.status, ERROR)
            return None
        return sorted(NO_UTF8 if "pathHex" in file else file["path"].replace("\\", "/")
                      for file in report["files"] if file["state"] == "sealed")

    def test_through_links_to_the_output_folder(self) -> None:
        cases = (("Quorvane", '["a", "old"]'), ("Quorvane", '["*/*"]'), (OUTPUT_FOLDER, '["*"]'),
                 ("Quorvane", '["a", "old/*"]'), ("Quorvane/../a", '["old"]'), (".", '["a", "old"]'),
                 ("Quorvane", '["../game6"]'))
        for number, (target, patterns) in enumerate(cases):
            with self.subTest(target=target, patterns=patterns):
                self.game = self.directory / f"game{number}"
                self.write("a", b"1")
                self.write("d/b", b"2")
                (self.game / "old").symlink_to(target)
                self.write_config(config(f"include_paths = {patterns}"))
                for _ in range(2):
                    told = self.told()
                    self.assertIsNotNone(told)
                    self.assertEqual(told, self.listed())

    def test_on_random_games(self) -> None:
        for seed in range(RANDOM_GAMES):
            with self.subTest(seed=seed):
                source = random.Random(seed)
                self.game = self.directory / f"game{seed}" / "game"
                self.game.mkdir(parents=True)
                random_games.lay_out(self.game, source)
                self.write_config(random_games.configuration(self.game, source))
                # Before the first run, and before the second, which finds the output of the first.
                for _ in range(2):
                    told = self.told()
                    self.assertEqual(told, self.listed(), (self.directory / "game.cfg").read_text())


if __name__ == "__main__":
    unittest.main()
