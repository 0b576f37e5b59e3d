"""The completions offer exactly the options of the programs, and the right kinds of files."""

from __future__ import annotations

import re
import shlex
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import List, Set

from manual_sources import ROOT, Option, help_of, inspect_commands, inspect_program, program_options

COMPLETIONS = ROOT / "completions"
NEEDS_INSPECT = unittest.skipUnless(inspect_program(), "sealkeeper-inspect is not built")

# Prints the completions that bash offers for the words after the script. The last word is the one being typed.
BASH_DRIVER = """
set -u
source "$1"
shift
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
function=$(complete -p "$1" | sed 's/.*-F \\([^ ]*\\).*/\\1/')
"$function"
if [ ${#COMPREPLY[@]} -gt 0 ]; then
    printf '%s\\n' "${COMPREPLY[@]}"
fi
"""


def completion(name: str) -> str:
    return (COMPLETIONS / name).read_text()


def names_of(options: List[Option]) -> Set[str]:
    return {option.name for option in options}


def names_with_value(options: List[Option]) -> Set[str]:
    return {option.name for option in options if option.takes_value}


class Bash(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        for name in ("game.cfg", "my rules.cfg", "a.key", "a.cer", "a.crl", "base.bin", "runtime.conf", "a.txt",
                     "page.html", "-dash"):
            (self.folder / name).touch()
        (self.folder / "Game").mkdir()

    def offered(self, *words: str) -> List[str]:
        result = subprocess.run(["bash", "-c", BASH_DRIVER, "bash", COMPLETIONS / "sealkeeper.bash", *words],
                                cwd=self.folder, capture_output=True, check=False, text=True)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return sorted(result.stdout.splitlines())

    def test_options(self) -> None:
        options = {name for name in names_of(program_options()) if name.startswith("-")}
        self.assertEqual(set(self.offered("sealkeeper", "-")), options)
        self.assertEqual(self.offered("sealkeeper", "-target_"), ["-target_file", "-target_game_dir"])

    def test_operands(self) -> None:
        words = [word for word in self.offered("sealkeeper", "") if not word.startswith("-")]
        self.assertEqual(words, ["Game", "game.cfg", "list", "my rules.cfg", "verify"])
        self.assertEqual(self.offered("sealkeeper", "-v", "ver"), ["verify"])

    def test_values_are_not_options(self) -> None:
        for option in names_with_value(program_options()):
            with self.subTest(option=option):
                self.assertEqual([word for word in self.offered("sealkeeper", option, "-") if word != "-dash"], [])

    def test_options_follow_those_without_value(self) -> None:
        for option in names_of(program_options()) - names_with_value(program_options()):
            with self.subTest(option=option):
                self.assertIn("-incert", self.offered("sealkeeper", option, "-"))

    def test_files_by_kind(self) -> None:
        for option, files in (
            ("-inkey", ["a.key"]),
            ("-incert", ["a.cer"]),
            ("-incrl", ["a.crl"]),
            ("-target_game_dir", []),
            ("verify", []),
            ("list", ["base.bin", "runtime.conf"]),
        ):
            with self.subTest(option=option):
                self.assertEqual(self.offered("sealkeeper", option, ""), sorted([*files, "Game"]))
                self.assertEqual(self.offered("sealkeeper", option, "=", ""), sorted([*files, "Game"]))
                self.assertEqual(self.offered("sealkeeper", option, "="), sorted([*files, "Game"]))
        self.assertIn("a.txt", self.offered("sealkeeper", "-target_file", ""))

    def test_quoted_names(self) -> None:
        for typed in ("my\\ r", "'my r", '"my r'):
            with self.subTest(typed=typed):
                self.assertEqual(self.offered("sealkeeper", typed), ["my rules.cfg"])

    @NEEDS_INSPECT
    def test_commands_of_inspect(self) -> None:
        words = self.offered("sealkeeper-inspect", "")
        self.assertEqual(words, sorted([*inspect_commands(), *names_of(help_of().options)]))

    @NEEDS_INSPECT
    def test_options_of_inspect(self) -> None:
        for command in inspect_commands():
            options = help_of(command).options
            with self.subTest(command=command):
                self.assertEqual(set(self.offered("sealkeeper-inspect", command, "--")), names_of(options))
            for option in options:
                with self.subTest(command=command, option=option.name):
                    offered = self.offered("sealkeeper-inspect", command, option.name, "--")
                    self.assertEqual(bool(offered), not option.takes_value)

    @NEEDS_INSPECT
    def test_files_of_inspect(self) -> None:
        for line, offered in (
            ("rules", ["Game", "game.cfg", "my rules.cfg"]),
            ("rules game.cfg --game", ["Game"]),
            ("rules game.cfg --html", ["Game", "page.html"]),
            ("credentials --cert", ["Game", "a.cer"]),
            ("credentials --key", ["Game", "a.key"]),
            ("credentials --crl", ["Game", "a.crl"]),
            ("check", ["Game"]),
            ("check Game --format", help_of("check").choices),
            ("show", ["Game", "base.bin", "runtime.conf"]),
            ("compare base.bin", ["Game", "base.bin"]),
            ("trust", []),
        ):
            with self.subTest(line=line):
                words = [word for word in self.offered("sealkeeper-inspect", *line.split(), "") if word[0] != "-"]
                self.assertEqual(words, sorted(offered))


class Zsh(unittest.TestCase):
    @staticmethod
    def options_in(text: str) -> List[Option]:
        """The options in a call of `_arguments`. An equals sign means that a value follows."""
        specs = re.findall(r"^ +'(?:\([^)]*\))?(--?[\w?-]+)(=?)\[", text, re.MULTILINE)
        options = [Option(name, bool(equals)) for name, equals in specs]
        for names in re.findall(r"^ +'\([^)]*\)'\{([^}]*)\}'\[", text, re.MULTILINE):
            options += [Option(name, False) for name in names.split(",") if name != "-h"]
        return options

    def test_options(self) -> None:
        text = completion("_sealkeeper")
        expected = [option for option in program_options() if option.name.startswith("-")]
        self.assertCountEqual(self.options_in(text), expected)
        for word in names_of(program_options()) - names_of(expected):
            with self.subTest(word=word):
                self.assertRegex(text, rf'[( ]{word}\\:"')

    @NEEDS_INSPECT
    def test_options_of_inspect(self) -> None:
        text = completion("_sealkeeper-inspect")
        self.assertCountEqual(re.findall(r"^ +'([a-z]+):", text, re.MULTILINE), inspect_commands())
        cases = dict(re.findall(r"^        (\w+)\)\n(.*?)\n +;;", text, re.MULTILINE | re.DOTALL))
        self.assertCountEqual(cases, inspect_commands())
        for command, case in cases.items():
            with self.subTest(command=command):
                expected = help_of(command)
                self.assertCountEqual(self.options_in(case),
                                      [option._replace(is_required=False) for option in expected.options])
                self.assertEqual(len(re.findall(r"^ +':", case, re.MULTILINE)), len(expected.operands))
        self.assertCountEqual(self.options_in(text.split("esac")[1]), help_of().options)

    @unittest.skipUnless(shutil.which("zsh"), "there is no zsh")
    def test_syntax(self) -> None:
        for name in ("_sealkeeper", "_sealkeeper-inspect"):
            with self.subTest(name=name):
                result = subprocess.run(["zsh", "-n", COMPLETIONS / name], capture_output=True, check=False)
                self.assertEqual((result.returncode, result.stderr), (0, b""))


class Fish(unittest.TestCase):
    @staticmethod
    def options_in(text: str, program: str, condition: str) -> List[Option]:
        options = []
        for line in re.findall(rf"^complete -c {program} (.*)$", text, re.MULTILINE):
            words = shlex.split(line)
            if ("-n" in words) != bool(condition) or (condition and words[words.index("-n") + 1] != condition):
                continue
            for flag, dashes in (("-o", "-"), ("-s", "-"), ("-l", "--")):
                if flag in words and words[words.index(flag) + 1] != "h":
                    name = dashes + words[words.index(flag) + 1]
                    options.append(Option(name, "-x" in words or "-r" in words))
        return options

    def test_options(self) -> None:
        text = completion("sealkeeper.fish")
        expected = [option for option in program_options() if option.name.startswith("-")]
        self.assertCountEqual(self.options_in(text, "sealkeeper", ""), expected)
        for word in names_of(program_options()) - names_of(expected):
            with self.subTest(word=word):
                self.assertRegex(text, rf"(?m) -a {word} -d ")

    @NEEDS_INSPECT
    def test_options_of_inspect(self) -> None:
        text = completion("sealkeeper-inspect.fish")
        self.assertCountEqual(re.findall(r"__fish_use_subcommand -a (\w+)", text), inspect_commands())
        self.assertCountEqual(re.findall(r"__fish_seen_subcommand_from (\w+)", text), inspect_commands())
        for command in inspect_commands():
            with self.subTest(command=command):
                expected = [option._replace(is_required=False)
                            for option in help_of(command).options if option.name != "--help"]
                self.assertCountEqual(self.options_in(text, "sealkeeper-inspect", f"$in_{command}"), expected)
        of_program = (self.options_in(text, "sealkeeper-inspect", "")
                      + self.options_in(text, "sealkeeper-inspect", "__fish_use_subcommand"))
        self.assertCountEqual(of_program, help_of().options)

    @unittest.skipUnless(shutil.which("fish"), "there is no fish")
    def test_syntax(self) -> None:
        for name in ("sealkeeper.fish", "sealkeeper-inspect.fish"):
            with self.subTest(name=name):
                result = subprocess.run(["fish", "-n", COMPLETIONS / name], capture_output=True, check=False)
                self.assertEqual((result.returncode, result.stderr), (0, b""))


if __name__ == "__main__":
    unittest.main()
