"""The manual pages describe exactly what is in the programs' own tables."""

from __future__ import annotations

import re
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import List

import exit_status
from manual_sources import (
    PAGES,
    PAGES_DIRECTORY,
    ROOT,
    config_names,
    help_of,
    inspect_commands,
    inspect_program,
    options_in_terms,
    page_source,
    part_under,
    program_options,
    terms_of,
    without_marks,
)


def option_names_in(synopsis: str) -> List[str]:
    return re.findall(r"(?<![\w-])--?[a-z_?][\w-]*", synopsis)


class SealkeeperOptions(unittest.TestCase):
    page = page_source("sealkeeper.1")

    def test_the_table_was_read(self) -> None:
        self.assertGreater(len(program_options()), 10)

    def test_each_is_explained_once_with_its_value(self) -> None:
        explained = options_in_terms(part_under(self.page, "# OPTIONS"))
        self.assertCountEqual(explained, program_options())

    def test_each_is_in_the_synopsis(self) -> None:
        synopsis = without_marks(part_under(self.page, "# SYNOPSIS"))
        named = set(option_names_in(synopsis)) | {word for word in ("verify", "list") if word in synopsis.split()}
        self.assertEqual(named, {option.name for option in program_options()})

    def test_shortest_forms(self) -> None:
        names = [option.name for option in program_options()]

        def is_clear(short: str, name: str) -> bool:
            dashes = len(short) - len(short.lstrip("-"))
            alike = [other for other in names if other.startswith(short) and not other[dashes:].startswith("-")]
            return short == name or (short not in names and alike == [name])

        shortest = {
            name: next(name[:end] for end in range(1, len(name) + 1) if name[:end].strip("-") and is_clear(name[:end], name))
            for name in names
        }
        rows = re.findall(r"^\|  (\S+)\n:  (\S+)$", part_under(self.page, "## Abbreviations"), re.MULTILINE)
        self.assertEqual(dict(rows), shortest)

    def test_defaults(self) -> None:
        defaults = re.findall(r'std::string \w+ = "([^"]+)";', (ROOT / "src/app/command_line_options.h").read_text())
        self.assertEqual(len(defaults), 3)
        files = part_under(self.page, "# FILES")
        for name in defaults:
            with self.subTest(name=name):
                self.assertIn(f"_{name}_", files)

    def test_examples_name_options_that_are_there(self) -> None:
        examples = re.findall(r"^\t\*sealkeeper ([^*]*)\*", part_under(self.page, "# EXAMPLES"), re.MULTILINE)
        self.assertGreater(len(examples), 4)
        for example in examples:
            with self.subTest(example=example):
                names = {option.name for option in program_options()}
                self.assertLessEqual(set(option_names_in(re.sub(r" \S*/\S+", "", example))), names)


class SealkeeperResultCodes(unittest.TestCase):
    def test_each_has_its_number_its_text_and_a_cure(self) -> None:
        source = (ROOT / "src/app/result_code.cpp").read_text()
        table = source[source.index("kTexts = {") : source.index("};")]
        texts = re.findall(r'"([^"]+)"', table)
        unknown = re.search(r'kUnknownCodeText = "([^"]+)"', source)
        missing_key = re.search(r"kPrivateKeyFileMissing\{(\d+)\}", (ROOT / "src/app/result_code.h").read_text())
        assert unknown and missing_key
        expected = [f"{number} {text}" for number, text in enumerate(texts)]
        expected.append(f"{missing_key.group(1)} {unknown.group(1)}")

        codes = terms_of(part_under(page_source("sealkeeper.1"), "# EXIT STATUS"))
        self.assertEqual([code.text for code in codes], expected)
        for code in codes[1:]:
            with self.subTest(code=code.text):
                self.assertRegex(code.explanation, r"(?m)^Cure: \w|^\tReserved\. No run ends with it\.$")

    def test_those_that_are_never_returned_are_called_reserved(self) -> None:
        codes = terms_of(part_under(page_source("sealkeeper.1"), "# EXIT STATUS"))
        reserved = {int(code.text.split()[0]) for code in codes if "Reserved." in code.explanation}
        self.assertEqual(reserved, set(exit_status.names()) - exit_status.returned())


@unittest.skipUnless(inspect_program(), "sealkeeper-inspect is not built")
class InspectOptions(unittest.TestCase):
    page = page_source("sealkeeper-inspect.1")

    def test_commands(self) -> None:
        commands = part_under(self.page, "# COMMANDS")
        self.assertCountEqual(re.findall(r"^## (.*)$", commands, re.MULTILINE), inspect_commands())
        self.assertGreater(len(inspect_commands()), 5)

    def test_those_of_the_program(self) -> None:
        explained = options_in_terms(part_under(self.page, "# OPTIONS"))
        self.assertCountEqual([option.name for option in explained if option.name != "-h"],
                              [option.name for option in help_of().options])

    def test_those_of_each_command(self) -> None:
        for command in inspect_commands():
            part = part_under(self.page, f"## {command}")
            expected = help_of(command)
            with self.subTest(command=command):
                self.assertGreater(len(expected.options), 1)
                self.assertCountEqual(options_in_terms(part),
                                      [option for option in expected.options if option.name != "--help"])
                operands = [term.text for term in terms_of(part) if not term.text.startswith("-")]
                self.assertEqual(operands, expected.operands)

    def test_synopsis(self) -> None:
        synopsis = without_marks(part_under(self.page, "# SYNOPSIS"))
        for command in inspect_commands():
            line = re.search(rf"^sealkeeper-inspect {command} (.*)$", synopsis, re.MULTILINE)
            expected = help_of(command)
            with self.subTest(command=command):
                assert line
                optional = " ".join(re.findall(r"\[([^]]*)\]", line.group(1)))
                required = re.sub(r"\[[^]]*\]", "", line.group(1))
                options = [option for option in expected.options if option.name != "--help"]
                self.assertCountEqual(option_names_in(required), [o.name for o in options if o.is_required])
                self.assertCountEqual(option_names_in(optional), [o.name for o in options if not o.is_required])
                values = [word for word in re.findall(r"(?<!\S)(?:--\S+ )?[A-Z]+", required) if "--" not in word]
                self.assertEqual(values, expected.operands)

    def test_choices(self) -> None:
        part = part_under(self.page, "## check")
        for choice in help_of("check").choices:
            self.assertIn(f"*{choice}*", part)
        self.assertEqual(help_of("check").choices, ["text", "json", "junit"])

    def test_examples_name_options_of_their_command(self) -> None:
        examples = re.findall(r"^\t\*sealkeeper-inspect (\w+) ([^*]*)\*", part_under(self.page, "# EXAMPLES"), re.MULTILINE)
        self.assertGreater(len(examples), 3)
        for command, arguments in examples:
            with self.subTest(command=command):
                self.assertLessEqual(set(option_names_in(arguments)), {option.name for option in help_of(command).options})


class ConfigurationFile(unittest.TestCase):
    def test_sections_and_keys(self) -> None:
        sections = part_under(page_source("sealkeeper.cfg.5"), "# SECTIONS")
        explained = {
            section: [term.text.split(" = ")[0] for term in terms_of(part_under(sections, f"## {section}"))]
            for section in re.findall(r"^## (.*)$", sections, re.MULTILINE)
        }
        self.assertEqual(explained, config_names())
        self.assertEqual(len(explained), 3)

    def test_kinds_of_values(self) -> None:
        page = page_source("sealkeeper.cfg.5")
        kinds = {"Number": "number", "Flag": "flag", "String": "text", "List": "list", "PairTable": "table"}
        constants = dict(re.findall(r'(k\w+) = "(\w+)"', (ROOT / "src/config/config_names.h").read_text()))
        rows = re.findall(r"\{k\w+Section, (k\w+), ConfigValueKind::(\w+),",
                          (ROOT / "src/inspect/lint/known_keys.cpp").read_text())
        expected = {f"{constants[key]} = {kinds[kind]}" for key, kind in rows}
        self.assertEqual({term.text for term in terms_of(part_under(page, "# SECTIONS"))}, expected)

    def test_anti_tamper_solutions(self) -> None:
        source = (ROOT / "src/runtime/anti_tamper_solutions.cpp").read_text()
        table = source[source.index("kSolutionNames = {") : source.index("};")]
        names = re.findall(r'"([^"]+)"', table)
        part = page_source("sealkeeper.cfg.5").split("*anti_tamper_solution_name*")[1].split("\n\n")[0]
        self.assertEqual(re.findall(r"\*([\w ]+)\*", part), names[1:] + names[:1])

    @unittest.skipUnless(inspect_program(), "sealkeeper-inspect is not built")
    def test_nothing_is_wrong_with_the_examples(self) -> None:
        examples = re.findall(r"^```\n(.*?)^```$", page_source("sealkeeper.cfg.5"), re.MULTILINE | re.DOTALL)
        self.assertEqual(len(examples), 2)
        for example in examples:
            with self.subTest(example=example), tempfile.TemporaryDirectory() as folder:
                game = Path(folder) / "game"
                for name in ("HarborTale", "lib/a.so", "Content/a.pak", "Saved/a.sav", "Logs/a.log", "Quorvane/a"):
                    (game / name).parent.mkdir(parents=True, exist_ok=True)
                    (game / name).write_text("a")
                config = Path(folder) / "game.cfg"
                config.write_text(example)
                result = subprocess.run([inspect_program() or "", "rules", config, "--game", game],
                                        capture_output=True, check=False, text=True)
                self.assertEqual((result.returncode, result.stderr), (0, ""), result.stdout)


class Sources(unittest.TestCase):
    def test_every_page_is_tested(self) -> None:
        self.assertEqual({path.stem for path in PAGES_DIRECTORY.iterdir()}, set(PAGES))

    def test_no_version_is_written_by_hand(self) -> None:
        for page in PAGES:
            with self.subTest(page=page):
                text = page_source(page)
                self.assertIn('"Sealkeeper @PROJECT_VERSION@"', text.splitlines()[0])
                self.assertEqual(re.findall(r"\b\d+\.\d+\.\d+\b", text), [])


if __name__ == "__main__":
    unittest.main()
