"""What docs/configuration-file.md says about unusual files and patterns is true of the program."""

from __future__ import annotations

import json
import os
import re
import shutil
import sys
import unittest
from dataclasses import dataclass
from typing import Any, Dict, List, Sequence, Tuple, Union

from document_blocks import page
from sealed_game import INSPECT, SealedGameTest

HEAD = "config_info { version = 2; }\n"
FILES = ("lib/a.so", "lib/b.pdb", "bin/c", "Logs/d.log")
RUNTIME_CONF = "Quorvane/Certificates/runtime.conf"
EVERY_FILE = (*FILES, RUNTIME_CONF)
LIB = ("lib/a.so", "lib/b.pdb")
SO = ("lib/a.so",)
BIN = ("bin/c",)
NO_LISTS = "Either include_paths or exclude_paths must be specified."
UNPARSED = "Could not load or parse the configuration file: "
VERSION_1 = "Unsupported config file version: 1."
NO_MATCH = "The following did not match any files, consider removing it"

CONFIG_REFUSED = 4
MEGABYTE = 1_000_000


def search(options: str) -> str:
    """A configuration file with these search options on lines of their own."""
    return f"{HEAD}search_options {{\n{options}\n}}\n"


LIB_ALONE = search('include_paths = ["lib"]')


@dataclass(frozen=True)
class Claim:
    """A statement on the page, and a run that proves it."""

    words: str
    config: Union[bytes, str]
    sealed: Sequence[str] = ()
    status: int = 0
    verified: int = 0
    message: str = ""
    files: Sequence[Union[bytes, str]] = FILES
    links: Sequence[Tuple[str, str]] = ()
    is_warned_of: bool = True


def refused(words: str, config: Union[bytes, str], message: str = NO_LISTS) -> Claim:
    """A claim that generate ends with 4."""
    return Claim(words, config, status=CONFIG_REFUSED, message=message)


ENCODINGS = [
    refused("the mark belongs to the first section's name", b"\xef\xbb\xbf" + LIB_ALONE.encode(), VERSION_1),
    refused("even when a comment comes first", b"\xef\xbb\xbf# rules\n" + LIB_ALONE.encode(), VERSION_1),
    refused("**UTF-16 or UTF-32**, with a mark", LIB_ALONE.encode("utf-16"), VERSION_1),
    refused("or without, ends the same way", LIB_ALONE.encode("utf-16-le"), VERSION_1),
    refused("UTF-32", LIB_ALONE.encode("utf-32"), VERSION_1),
    Claim("Line ends may be LF or CRLF", LIB_ALONE.replace("\n", "\r\n"), LIB, is_warned_of=False),
    Claim("patterns with other than ASCII letters match nothing",
          search('include_paths = ["W\xf6lfe", "lib"]').encode("latin-1"), SO, message=NO_MATCH,
          files=("W\xf6lfe/a", "lib/a.so")),
]

READING = [
    Claim("without regard to letter case", 'CONFIG_INFO { Version = 2; } Search_Options { Include_Paths = ["lib"] }\n',
          LIB, is_warned_of=False),
    Claim("A section may stand twice", LIB_ALONE + 'search_options { include_paths = ["bin"] }\n', LIB + BIN),
    Claim("A key that nobody knows is ignored",
          search('include_paths = ["lib"]\nexclude_extension = [".pdb"]'), LIB),
    refused("is no list", search('include_paths = "lib"')),
    Claim("the last one counts",
          search('include_paths = ["lib"]\nignore_files_without_extension = false ignore_files_without_extension = true'),
          SO, files=("lib/a.so", "lib/none"), message="ignore_files_without_extension flag has been set."),
    refused("goes on to the next one, and swallows what stands between",
            search('exclude_size_threshold = 20\ninclude_paths = ["lib"];')),
    Claim("where none follows, the reading ends",
          search('include_paths = ["lib"]\nexclude_size_threshold = 20\nexclude_extensions = [".pdb"]'), LIB),
    Claim("Everywhere else they are passed over",
          search('include_paths = ["lib"];\nexclude_extensions = [".pdb"];;') + ";", SO, is_warned_of=False),
    Claim('`"a#b"` and `"c//d"` are names', search('include_paths = ["a#b", "lib/a.so"]'), ("a#b", "lib/a.so"),
          files=("a#b", "lib/a.so"), is_warned_of=False),
    Claim("is still an element", search('include_paths = ["lib",\n# "bin"\n]'), LIB + BIN),
    refused("`# all of lib/*` hides everything", search('# all of lib/*\ninclude_paths = ["lib"]')),
    Claim("The first `*/` ends them all", search('/* a /* b */ include_paths = ["lib"]'), LIB, is_warned_of=False),
    Claim("lost with all that come after it",
          search('include_paths = ["lib", "bin/[ab]", "Logs"]\nexclude_extensions = [".pdb"]'), LIB),
    Claim("every file is sealed", search('include_paths = ["bin/[ab]", "lib"]'), EVERY_FILE),
    Claim("A `[` alone stands for itself", search('include_paths = ["lib/[*"]'), ("lib/[a",),
          files=("lib/[a", "lib/a"), is_warned_of=False),
    Claim("A `)` ends a table of pairs",
          search('include_paths = ["lib"]\nalias_paths = ( ["x(1)", "y"] );\nexclude_extensions = [".pdb"]'), LIB),
    Claim("A list in single quotes is an empty list", search("include_paths = ['lib']"), EVERY_FILE),
    Claim("An empty list is written `[ ]`", search("exclude_paths = [ ]"), EVERY_FILE),
    refused("`[]` ends the reading", search('exclude_extensions = []\ninclude_paths = ["lib"]')),
    refused("and so does `()`", search('alias_paths = ()\ninclude_paths = ["lib"]')),
    refused("A line feed inside an element", search('include_paths = ["li\nb"]'), UNPARSED),
    Claim("Two and more backslashes in a row are read as one", search('include_paths = ["lib\\\\\\a.so"]'), SO),
    Claim("such as `yes`",
          search('include_paths = ["lib"]\nignore_files_without_extension = yes\nexclude_extensions = [".pdb"]'), LIB),
    Claim("one that begins with `-`",
          search('include_paths = ["lib"]\nexclude_size_threshold = -1;\nexclude_extensions = [".pdb"]'), LIB),
    Claim("that nothing closes", search('include_paths = ["lib"]\nexclude_extensions = [".pdb"'), LIB),
    refused("`config_info{` is a section of that name", LIB_ALONE.replace("config_info ", "config_info"), VERSION_1),
    refused("after `true}` the section is still open",
            HEAD.replace("2;", "2; x = true").replace(" }", "}") + 'search_options { include_paths = ["lib"] }\n'),
    Claim("the very last character of the file is not looked at",
          LIB_ALONE[:-2] + "ignore_files_without_extension = 1", LIB),
]

PATTERNS = [
    Claim("the same as `lib`", search('include_paths = ["lib/"]'), LIB, is_warned_of=False),
    Claim("the file is sealed as `/lib/a`", search('include_paths = ["/lib"]'), ("/lib/a.so", "/lib/b.pdb"), verified=23),
    Claim("In `exclude_paths` it excludes nothing that a walk finds",
          search('exclude_paths = ["/lib", "Quorvane"]'), FILES),
    Claim("the catalogue has the path as it is written",
          search('include_paths = ["./bin", "lib//a.so"]'), ("./bin/c", "lib//a.so")),
    Claim("in `exclude_paths` it excludes nothing",
          search('exclude_paths = ["./bin", "lib//a.so", "Quorvane"]'), FILES),
    Claim("`..` is not refused", search('include_paths = ["lib/../bin"]'), ("lib/../bin/c",)),
    Claim("the same; `..`", search('exclude_paths = ["lib/../bin", "Quorvane"]'), FILES),
    Claim("matches nothing where letter case counts", search('include_paths = ["lib", "BIN"]'), LIB, message=NO_MATCH),
    Claim("leaves the game directory", search('include_paths = ["../outside"]'), ("../outside",)),
    Claim("it is listed, hashed and verified twice", search('include_paths = ["lib", "lib/a.so"]'), (*LIB, "lib/a.so")),
    Claim("`**` is no more than `*`", search('include_paths = ["**/*.so"]'), SO,
          files=("lib/a.so", "lib/deep/b.so", "c.so")),
    Claim("match within one directory", search('include_paths = ["*.so"]'), ("c.so",),
          files=("lib/a.so", "c.so"), is_warned_of=False),
    Claim("not a dot at the start of a name", search('include_paths = ["lib/*"]'), SO, files=("lib/a.so", "lib/.b"),
          is_warned_of=False),
    refused("When no include pattern matches, generate ends with 4", search('include_paths = ["libs"]'), NO_MATCH),
]

LEFT_OUT = [
    Claim("are passed over in directories", search('include_paths = ["lib"]'), SO,
          files=("lib/a.so", "lib/.b", "lib/.d/e"), is_warned_of=False),
    Claim("`.env`, `.d`, or `.e*`", search('include_paths = [".env", ".d", ".x*"]'), (".env", ".d/e", ".xy"),
          files=(".env", ".d/e", ".xy"), is_warned_of=False),
    Claim("**Symbolic links** are passed over in directories", search('include_paths = ["lib"]'), LIB,
          links=(("lib/link", "a.so"),)),
    Claim("what it leads to is sealed under the link's name", search('include_paths = ["bin", "lib/li*"]'),
          BIN + ("lib/link",), links=(("lib/link", "a.so"),), is_warned_of=False),
    Claim("also outside of the game", search('include_paths = ["lib/link"]'), ("lib/link",),
          links=(("lib/link", "../../outside"),)),
    Claim("`log` without its dot excludes nothing",
          search('include_paths = ["lib", "Logs"]\nexclude_extensions = ["log", ".PDB"]'), LIB + ("Logs/d.log",)),
    Claim("nor does `.tar.gz`", search('include_paths = ["lib"]\nexclude_extensions = [".tar.gz"]'), ("lib/a.tar.gz",),
          files=("lib/a.tar.gz",)),
    Claim("They are about files", search('include_paths = ["lib"]\nexclude_extensions = [".dSYM"]'), ("lib/Game.dSYM/a",),
          files=("lib/Game.dSYM/a",), is_warned_of=False),
    Claim("The catalogue lists an empty file `U82W_ERROR`", search('include_paths = ["lib"]'), ("lib/a.so", "U82W_ERROR"),
          verified=23, message="Empty file: 'U82W_ERROR'", files=("lib/a.so", b"lib/\xff")),
    Claim("A backslash in a name is stored as `/`", search('include_paths = ["lib"]'), ("lib/a/b",), verified=23,
          files=("lib/a\\b",)),
    Claim("generate ends with 7", search('include_paths = ["lib"]'), status=7, message="Path too long for the catalogue",
          files=("lib/" + "d" * 150 + "/" + "e" * 150,)),
]

RUNTIME = [
    Claim("found anywhere in the text, without regard to letter case",
          LIB_ALONE + 'runtime_configuration { anti_tamper_solution_name = "my denuvo 5" }\n', LIB,
          message="Game binary anti tamper solution: Denuvo", is_warned_of=False),
    refused("Any other text, `None` too, ends generate with 4",
            LIB_ALONE + 'runtime_configuration { anti_tamper_solution_name = "None" }\n',
            "Please provide name of a supported anti-tamper solution"),
    Claim("cut to 64 bytes without a message",
          LIB_ALONE + 'runtime_configuration { crash_reporter_name = "' + "x" * 70 + '" }\n', LIB,
          message="Crash reporter name: " + "x" * 64 + "\n"),
]

ALIASES = [
    refused("`..` and `:` are refused", search('include_paths = ["lib"]\nalias_paths = ( ["lib", "../x"] );'),
            "'..' and ':' are not allowed."),
    refused("so is a list in square brackets alone", search('include_paths = ["lib"]\nalias_paths = [ "lib", "x" ]'),
            "alias_paths is invalid. It must be in a list & array format"),
    Claim("is looked for as `d`. Without a file of that name verify ends with 23.",
          search('include_paths = ["Content"]\nalias_paths = ( ["Content", "data"] );'), ("d",), verified=23,
          files=("Content/a",)),
    Claim("With one, it checks that file in place of the sealed one.",
          search('include_paths = ["Content"]\nalias_paths = ( ["Content", "data"] );'), ("d",), verified=0,
          files=("Content/a", "d")),
    Claim("the first in the order of their bytes",
          search('include_paths = ["Logs"]\nalias_paths = ( ["d", "x"], ["L", "y"] );'), ("y",), verified=23),
    Claim("In patterns and aliases a backslash is a `/`",
          search('include_paths = ["bin\\c", "Logs"]\nalias_paths = ( ["Logs\\d", "x"] );'), BIN + ("x",), verified=23),
    Claim("an alias that puts the same text back",
          search('include_paths = ["lib/a.so"]\nalias_paths = ( ["lib", "lib"] );'), ("l",), verified=23),
]

CLAIMS = ENCODINGS + READING + PATTERNS + LEFT_OUT + RUNTIME + ALIASES


class ConfigurationFile(SealedGameTest):
    """Each claim, on a game of its own."""

    def setUp(self) -> None:
        super().setUp()
        self.page = re.sub(r"\s+", " ", page("configuration-file.md"))
        (self.directory / "outside").write_text("outside")
        self.config = self.directory / "game.cfg"

    def write(self, name: Union[bytes, str], size: int = 1) -> None:
        """Add a file of zeros to the game."""
        path = self.game / os.fsdecode(name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.touch()
        os.truncate(path, size)

    def set_up(self, claim: Claim) -> None:
        """Set up the game and the configuration file of a claim, replacing the previous ones."""
        shutil.rmtree(self.game)
        for name in claim.files:
            self.write(name)
        for name, target in claim.links:
            (self.game / name).symlink_to(target)
        self.config.write_bytes(claim.config if isinstance(claim.config, bytes) else claim.config.encode())

    def warnings(self) -> List[Dict[str, Any]]:
        """The companion's warnings, before a run adds its output to the game."""
        return json.loads(self.run_program(INSPECT, "rules", self.config, "--game", self.game, "--json").stdout)["warnings"]

    def check(self, claim: Claim) -> None:
        """Check the run of a claim."""
        warnings = self.warnings()
        run = self.seal(self.config)
        self.assertEqual(run.returncode, claim.status, run.stdout)
        self.assertIn(claim.message, run.stdout)
        if claim.status == 0:
            self.assertEqual(self.listed(), sorted(claim.sealed))
            self.assertEqual(self.verify().returncode, claim.verified)
            self.assertEqual(bool(warnings), claim.is_warned_of, warnings)

    def test_each_claim_stands_on_the_page_and_is_true(self) -> None:
        for claim in CLAIMS:
            with self.subTest(claim.words):
                self.assertIn(claim.words, self.page)
                if sys.platform == "darwin" and any(isinstance(name, bytes) for name in claim.files):
                    self.skipTest("there are no such names")
                self.set_up(claim)
                self.check(claim)

    def test_large_files_are_left_out_without_a_message(self) -> None:
        for threshold, largest in (("", 1024), ("exclude_size_threshold = 20 MB;", 20),
                                   ("exclude_size_threshold = 4294967306;", 10)):
            with self.subTest(threshold):
                self.set_up(Claim("", search(f'include_paths = ["lib"]\n{threshold}'), files=("lib/a.so",)))
                self.write("lib/world.pak", largest * MEGABYTE + 1)
                run = self.seal(self.config, "-v")
                self.assertEqual((run.returncode, self.listed()), (0, ["lib/a.so"]))
                self.assertNotIn("world.pak", run.stdout)

    def test_a_named_file_is_hashed_whatever_its_size(self) -> None:
        self.set_up(Claim("", search('include_paths = ["lib/world.pak"]\nexclude_size_threshold = 10;'), files=()))
        self.write("lib/world.pak", 10 * MEGABYTE + 1)
        self.assertEqual(self.seal(self.config).returncode, 0)
        self.assertEqual(self.listed(), ["lib/world.pak"])

    def test_unusual_thresholds_give_a_warning(self) -> None:
        for threshold, is_warned in ((0, True), (9, True), (10, False), (1024, False), (1025, True)):
            with self.subTest(threshold):
                self.set_up(Claim("", search(f'include_paths = ["lib"]\nexclude_size_threshold = {threshold};')))
                self.assertEqual("[Warn] exclude_size_threshold" in self.seal(self.config).stdout, is_warned)

    def test_a_second_run_seals_the_output_of_the_first(self) -> None:
        self.set_up(Claim("", search('exclude_paths = ["Logs"]')))
        # The second catalogue lists more than the first and is longer. The third may be as long as the second.
        for statuses in ((0,), (24,), (24, 26)):
            self.assertEqual(self.seal(self.config).returncode, 0)
            self.assertIn(self.verify().returncode, statuses)
        self.assertIn("ends with 24, or with 26 where both have the same size", self.page)

    def test_what_is_sealed_has_one_of_two_lines(self) -> None:
        self.set_up(Claim("", search('include_paths = ["lib"]')))
        self.write("lib/empty", 0)
        lines = self.seal(self.config).stdout
        hashed = re.findall(r"^\[Info\] Hashing \./(.*?)\.\.\.", lines, re.MULTILINE)
        empty = re.findall(r"^\[Warn\] \[Warning\] Empty file: '\./(.*)'", lines, re.MULTILINE)
        self.assertEqual(empty, ["lib/empty"])
        self.assertEqual(self.listed(), sorted(hashed + empty))
        self.assertIn("`Hashing` line is one sealed file, and so is each warning of an `Empty file`", page("GUIDE.md"))

    def test_aliases_are_put_in_everywhere(self) -> None:
        self.set_up(Claim("", search('include_paths = ["Content"]\nalias_paths = ( ["on", "off"] );'),
                          files=("Content/icon",)))
        self.assertEqual(self.seal(self.config).returncode, 0)
        shown = self.run_program(INSPECT, "show", self.game / "Quorvane/Certificates/base.bin", "--json").stdout
        path = json.loads(shown)["entries"][0]["path"]
        self.assertIn(f'`["on", "off"]` makes `{path}` of `Content/icon`', self.page)

    def test_v_adds_the_matched_paths_and_no_more(self) -> None:
        for key in ("include_paths", "exclude_paths"):
            with self.subTest(key):
                self.set_up(Claim("", search(f'{key} = ["lib", "Logs"]\nexclude_extensions = [".pdb"]')))
                quiet = self.seal(self.config).stdout.splitlines()
                added = [line for line in self.seal(self.config, "-v").stdout.splitlines() if line not in quiet]
                said = sorted(line for line in added if "arg[" not in line and "Hashing" not in line)
                self.assertEqual(said, ["[Verb] Excluded path: './Logs'", "[Verb] Excluded path: './lib'"])
                self.assertIn(f"`{said[1]}`", self.page)


if __name__ == "__main__":
    unittest.main()
