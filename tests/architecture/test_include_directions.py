"""Dependencies between the source folders go one way.

The console log and the result codes are exceptions: every folder may use them.
"""

import pathlib
import re
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2] / "src"

# The folders that each folder may include from.
ALLOWED = {
    "platform": {"platform"},
    "config": {"config", "platform"},
    "runtime": {"runtime", "config", "platform"},
    "catalogue/hashing": {"catalogue/hashing", "runtime", "platform"},
    "catalogue/lzw": {"catalogue/lzw", "platform"},
    "catalogue": {"catalogue", "catalogue/hashing", "catalogue/lzw", "runtime", "platform"},
    "app": {"app", "catalogue", "catalogue/hashing", "runtime", "config", "platform"},
    "inspect/check": {"inspect/check", "inspect/command_line", "inspect/report", "inspect/tree", "inspect/x509", "app", "catalogue", "catalogue/hashing", "runtime", "platform"},
    "inspect/command_line": {"inspect/command_line", "inspect/report"},
    "inspect/credentials": {"inspect/credentials", "inspect/command_line", "inspect/report", "inspect/x509", "runtime", "platform"},
    "inspect/lint": {"inspect/lint", "inspect/report", "inspect/tree", "runtime", "config", "platform"},
    "inspect/report": {"inspect/report", "app", "platform"},
    "inspect/rules": {"inspect/rules", "inspect/command_line", "inspect/lint", "inspect/report", "inspect/tree", "app",
                      "catalogue", "runtime", "config", "platform"},
    "inspect/show": {"inspect/show", "inspect/command_line", "inspect/report", "inspect/tree", "inspect/x509", "app",
                     "catalogue", "catalogue/hashing", "catalogue/lzw", "runtime", "config", "platform"},
    "inspect/tree": {"inspect/tree", "platform"},
    "inspect/x509": {"inspect/x509", "runtime", "platform"},
    "inspect": {"inspect", "inspect/check", "inspect/command_line", "inspect/credentials", "inspect/report",
                "inspect/rules", "inspect/show", "runtime", "platform"},
}
FOR_EVERY_FOLDER = {"app/console_log.h", "app/result_code.h"}
TYPE = re.compile(r"^(?:struct|class|enum class) (\w+)[^;\n]*\{$", re.MULTILINE)
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)

# Free functions: what is indented is a member.
FUNCTION = re.compile(r"^(?:\[\[\w+\]\] )*[\w:<>,&*][\w:<>,&* ]*[ &*]([A-Z]\w*)\(([^;{}]*?)\);", re.MULTILINE)


def folder_of(path):
    """The folder of a file, relative to src/."""
    return pathlib.PurePosixPath(path).parent.as_posix()


def source_files():
    return sorted(path for path in SOURCES.rglob("*") if path.suffix in (".h", ".cpp", ".in"))


class IncludeDirections(unittest.TestCase):
    def test_every_source_lies_in_a_known_folder(self):
        self.assertEqual({folder_of(path.relative_to(SOURCES)) for path in source_files()}, set(ALLOWED))

    def test_includes_follow_the_directions(self):
        for path in source_files():
            folder = folder_of(path.relative_to(SOURCES))
            for included in INCLUDE.findall(path.read_text()):
                with self.subTest(file=str(path.relative_to(SOURCES)), included=included):
                    self.assertTrue((SOURCES / included).is_file(), "written from src/")
                    if included not in FOR_EVERY_FOLDER:
                        self.assertIn(folder_of(included), ALLOWED[folder])

    def test_no_type_is_declared_in_two_headers(self):
        """All types are in one namespace. If two have the same name, the linker picks either."""
        declared = {}
        for path in source_files():
            if path.suffix == ".h":
                for name in TYPE.findall(path.read_text()):
                    declared.setdefault(name, []).append(path.name)
        self.assertEqual({name: headers for name, headers in declared.items() if len(headers) > 1}, {})

    def test_no_function_is_declared_in_two_headers(self):
        """The same holds for functions with the same parameters, whatever these are called."""
        declared = {}
        for path in source_files():
            if path.suffix == ".h":
                for name, parameters in FUNCTION.findall(path.read_text()):
                    types = re.sub(r"\s*\w+(?=,|$)", "", " ".join(parameters.split()))
                    declared.setdefault(f"{name}({types})", []).append(path.name)
        self.assertGreater(len(declared), 100)
        self.assertEqual({name: headers for name, headers in declared.items() if len(headers) > 1}, {})

    def test_files_are_short(self):
        for path in source_files():
            with self.subTest(file=str(path.relative_to(SOURCES))):
                self.assertLessEqual(len(path.read_text().splitlines()), 500)


class Tests(unittest.TestCase):
    def test_none_sleeps(self):
        """They wait for an event, or set the clock."""
        sleep = re.compile(r"(?:\b(?:u|nano)?sleep|sleep_for|sleep_until)\(|^\s*sleep ", re.MULTILINE)
        for path in sorted((SOURCES.parent / "tests").rglob("*")):
            if path.suffix in (".h", ".cpp", ".py", ".sh") and path != pathlib.Path(__file__).resolve():
                with self.subTest(file=path.name):
                    self.assertNotRegex(path.read_text(), sleep)


class Documents(unittest.TestCase):
    def test_sources_that_they_name_exist(self):
        """Paths relative to src/; a star stands for any text."""
        named = set(re.findall(r"`((?:app|catalogue|config|inspect|platform|runtime)/[\w/*.]+\.(?:h|cpp))`",
                               (SOURCES.parent / "ARCHITECTURE.md").read_text()))
        self.assertTrue(named)
        for path in sorted(named):
            with self.subTest(path=path):
                self.assertTrue(list(SOURCES.glob(path)), "ARCHITECTURE.md names it")

    def test_tests_that_the_page_on_security_names_exist(self):
        """`Suite.Name` must occur in a C++ source, `test_module.Class` in the module of that name."""
        tests = SOURCES.parent / "tests"
        cases = {f"{suite}.{name}" for path in tests.rglob("*.cpp")
                 for suite, name in re.findall(r"^TEST(?:_[FP])?\((\w+), (\w+)\)", path.read_text(), re.MULTILINE)}
        for path in (tests / "e2e").glob("test_*.py"):
            classes = re.findall(r"^class (\w+)", path.read_text(), re.MULTILINE)
            cases |= {path.stem} | {f"{path.stem}.{name}" for name in classes}
        rows = [row for row in (SOURCES.parent / "SECURITY.md").read_text().splitlines() if row.startswith("| ")]
        named = {name for row in rows for name in re.findall(r"`([\w.]+)`", row.split("|")[3])}
        self.assertTrue(named)
        self.assertEqual(named - cases, set())
        attempts = [row.split("|")[1:4] for row in rows if not row.startswith(("| attempt ", "|---"))]
        without = [attempt.strip() for attempt, _, shown in attempts if not shown.strip()]
        self.assertEqual([attempt.split(",")[0] for attempt in without], ["change the program"])

    def test_no_merge_is_left_unfinished(self):
        for path in sorted(SOURCES.parent.glob("*.md")):
            with self.subTest(path=path.name):
                self.assertNotIn("\n<<<<<<< ", path.read_text())


if __name__ == "__main__":
    unittest.main()
