"""`sealkeeper-inspect check`: the same status as verify whatever happened to a game, and what verify does not report.
"""

from __future__ import annotations

import os
import shutil
import socket
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass
from pathlib import Path
from typing import Callable, Dict, List, Sequence, Tuple

import e2e_console as console
from catalogue_entry import CHUNK_SIZE, Entry, entry_of_bytes
from e2e_support import PRODUCT, TIMEOUT_SECONDS, Credentials
from inspect_support import USAGE, Inspection, InspectTest
from signed_game import SignedGameTest, changed_at

OTHER_KEY = Credentials.of("other-key")
CONTENTS = {
    "a.dat": b"first",
    "data/b.pak": bytes(range(256)) * 20000,
    "data/sub/c.txt": b"text",
    "empty": b"",
    "z.dat": b"last",
}
ADDITIONS_STATUS = 40
RUNTIME_CONF = "Quorvane/Certificates/runtime.conf"


class CheckTest(InspectTest, SignedGameTest):
    """A game that starts out as it was sealed."""

    def setUp(self) -> None:
        super().setUp()
        self.seal()

    def seal(self) -> None:
        """Restore the game to its first state."""
        for path in self.game.iterdir():
            if path.is_dir() and not path.is_symlink():
                shutil.rmtree(path)
            else:
                path.unlink()
        self.output.mkdir(parents=True)
        self.entries = self.put_files(CONTENTS)
        self.put_catalogue(self.entries)
        self.put_runtime_conf()

    def put_mod(self, name: str = "mod1", credentials: Credentials = OTHER_KEY) -> None:
        """Add a catalogue of two more files."""
        entries = self.put_files({"mods/x": b"x", "mods/y": b"yy"})
        self.put_catalogue(entries, name, credentials=credentials)

    def check(self, *options: str) -> Inspection:
        """Check the game, and check that nothing in it changed."""
        before = self.shapes()
        run = self.inspect("check", self.game, "--product", PRODUCT, *options)
        self.assertEqual(self.shapes(), before, "check writes nothing")
        return run

    def check_json(self, *options: str) -> Tuple[Inspection, dict]:
        run = self.check("--format", "json", *options)
        return run, run.json()

    def verify_status(self) -> int:
        return self.run_program("-productid", PRODUCT, "verify", self.game).status


@dataclass(frozen=True)
class Situation:
    """What happened to the game, the status of verify, and the other findings by kind and path."""

    name: str
    make: Callable[["Situations"], object]
    status: int
    additions: Sequence[Tuple[str, str]] = ()


def unlisted(*paths: str, kind: str = "unlisted file") -> List[Tuple[str, str]]:
    return [(kind, path) for path in paths]


class Situations(CheckTest):
    """Each is verified with the tool and checked in every format."""

    def at(self, name: str):
        return self.game / name

    def move_behind_link(self, name: str) -> None:
        elsewhere = self.directory / f"elsewhere-{name}"
        self.at(name).rename(elsewhere)
        self.at(name).symlink_to(elsewhere)

    def listen(self, name: str) -> None:
        with socket.socket(socket.AF_UNIX) as listener:
            listener.bind(str(self.at(name)))

    def use_certificate(self, kind: str) -> None:
        self.put_catalogue(self.entries, credentials=Credentials.of(kind))

    def remove_runtime_conf(self) -> None:
        (self.output / "runtime.conf").unlink()

    def replace(self, name: str, make: Callable[[object], object]) -> None:
        self.at(name).unlink()
        make(self.at(name))

    def list_in_other_ways(self) -> None:
        paths = ["data/../a.dat", "data//b.pak", "data/./sub/c.txt", str(self.game / "empty"), "z.dat"]
        contents = list(CONTENTS.values())
        self.put_catalogue(entry_of_bytes(path, content) for path, content in zip(paths, contents))

    def list_alias(self) -> None:
        entry = entry_of_bytes("c/sub/c.txt", b"text")
        field = "content/c.txt".encode("utf-32-le").ljust(512, b"\0")
        aliased = Entry(entry.size, 16, field, entry.digests)
        self.put_catalogue([*self.entries[:2], aliased, *self.entries[3:]])

    def leave_mod_alone(self) -> None:
        shutil.rmtree(self.game)
        self.output.mkdir(parents=True)
        self.put_mod()

    def damage(self, name: str, offset: int) -> None:
        path = self.at(name)
        path.write_bytes(changed_at(path.read_bytes(), offset))

    def put_unreadable_name(self) -> None:
        with open(os.path.join(os.fsencode(self.output), b"\xff.bin"), "wb"):
            pass

    SITUATIONS = [
        Situation("untouched", lambda t: None, 0),
        Situation("byte changed", lambda t: t.damage("data/b.pak", CHUNK_SIZE + 1), 26),
        Situation("longer", lambda t: t.write("a.dat", b"first!"), 24),
        Situation("removed", lambda t: t.at("a.dat").unlink(), 23),
        Situation("removed with its directory", lambda t: shutil.rmtree(t.at("data")), 23),
        Situation("directory in its place", lambda t: t.replace("a.dat", os.mkdir), 24),
        Situation("FIFO in its place", lambda t: t.replace("a.dat", os.mkfifo), 23),
        Situation("FIFO in place of an empty one", lambda t: t.replace("empty", os.mkfifo), 23),
        Situation("renamed in other letters", lambda t: t.at("a.dat").rename(t.at("A.DAT")), 23, unlisted("A.DAT")),
        Situation(
            "two fail, the last one passes",
            lambda t: (t.write("a.dat", b"f"), t.at("data/sub/c.txt").unlink()),
            23,
        ),
        Situation("two fail, one of them the last", lambda t: (t.at("a.dat").unlink(), t.write("z.dat")), 24),
        Situation("added", lambda t: t.write("data/new"), 0, unlisted("data/new")),
        Situation("added and hidden", lambda t: t.write(".cache/.x"), 0, unlisted(".cache/.x")),
        Situation("added directory", lambda t: t.at("nothing").mkdir(), 0),
        Situation(
            "added link",
            lambda t: t.at("l").symlink_to("a.dat"),
            0,
            unlisted("l", kind="unlisted link"),
        ),
        Situation(
            "added FIFO and socket",
            lambda t: (os.mkfifo(t.at("p")), t.listen("s")),
            0,
            unlisted("p", "s", kind="unlisted special file"),
        ),
        Situation("changed and added", lambda t: (t.write("z.dat", b"LAST"), t.write("n")), 26, unlisted("n")),
        Situation(
            "names that no text holds",
            lambda t: (t.write("\x01\n\t"), t.write("\uFFFE&<\">'"), t.write("\udcff")),
            0,
            unlisted("\x01\n\t", "\uFFFE&<\">'", "\uFFFD"),
        ),
        Situation("moved behind a link", lambda t: t.move_behind_link("a.dat"), 0, [("link where sealed", "a.dat")]),
        Situation("directory behind a link", lambda t: t.move_behind_link("data"), 0, [("link where sealed", "data")]),
        Situation(
            "dangling link in its place",
            lambda t: t.replace("a.dat", lambda path: path.symlink_to("gone")),
            23,
            [("link where sealed", "a.dat")],
        ),
        Situation("no runtime.conf", lambda t: t.remove_runtime_conf(), 0, [("missing runtime.conf", RUNTIME_CONF)]),
        Situation(
            "runtime.conf that is a directory",
            lambda t: (t.remove_runtime_conf(), (t.output / "runtime.conf").mkdir()),
            0,
            [("unreadable runtime.conf", RUNTIME_CONF)],
        ),
        Situation("runtime.conf damaged", lambda t: t.damage(RUNTIME_CONF, 1100), 22),
        Situation("runtime.conf of another key", lambda t: t.put_runtime_conf(credentials=OTHER_KEY), 22),
        Situation("runtime.conf damaged, a file too", lambda t: (t.damage(RUNTIME_CONF, 0), t.write("z.dat")), 22),
        Situation("second catalogue", lambda t: t.put_mod(), 0),
        Situation("second catalogue, its file gone", lambda t: (t.put_mod(), t.at("mods/y").unlink()), 23),
        Situation("mod alone", lambda t: t.leave_mod_alone(), 0),
        Situation("mod with its own certificate", lambda t: t.put_mod("mod2", Credentials.of("mod")), 22),
        Situation(
            "certificate of no catalogue",
            lambda t: (t.output / "old.cer").write_bytes(b""),
            0,
            unlisted("Quorvane/Certificates/old.cer"),
        ),
        Situation("other ways to write a path", lambda t: t.list_in_other_ways(), 0),
        Situation("aliased", lambda t: t.list_alias(), 23, unlisted("data/sub/c.txt")),
        Situation("catalogue cut off", lambda t: os.truncate(t.output / "base.bin", 1051), 9),
        Situation("catalogue changed", lambda t: t.damage("Quorvane/Certificates/base.bin", 1060), 11),
        Situation("catalogue that is a directory", lambda t: (t.output / "x.bin").mkdir(), 8),
        Situation("catalogue whose name is no text", lambda t: t.put_unreadable_name(), 7),
        Situation("certificate gone", lambda t: (t.output / "base.cer").unlink(), 27),
        Situation("certificate expired", lambda t: t.use_certificate("expired"), 30),
        Situation("certificate of another product", lambda t: t.use_certificate("other-name"), 31),
        Situation("certificate revoked", lambda t: t.use_certificate("revoked"), 32),
        Situation("certificate of another authority", lambda t: t.use_certificate("foreign"), 22),
        Situation("no catalogue", lambda t: [path.unlink() for path in t.output.iterdir()], 3),
        Situation("no certificates", lambda t: shutil.rmtree(t.output), 3),
    ]

    def test_status_is_that_of_verify(self) -> None:
        for situation in self.SITUATIONS:
            with self.subTest(situation.name):
                self.seal()
                situation.make(self)
                self.assertEqual(self.verify_status(), situation.status)
                self.assert_checked(situation)

    def assert_checked(self, situation: Situation) -> None:
        run, document = self.check_json()
        self.assertEqual(run.status, situation.status)
        self.assertEqual(document["status"], situation.status)
        self.assertEqual(document["verification"]["code"], situation.status)
        found = [(addition["kind"], addition["path"]) for addition in document["additions"]]
        self.assertEqual(found, list(situation.additions))
        text = self.check()
        self.assertEqual(text.status, situation.status)
        self.assertIn(f"tatus {situation.status} ", text.output)
        self.assert_errors(run, document)
        self.assert_errors(text, document)
        self.assert_strict(situation, document)

    def assert_errors(self, run: Inspection, document: dict) -> None:
        """The reason for an early end is on standard error, and nothing else is."""
        runtime = document["runtimeConfiguration"] or {"code": 0}
        expected = [document["verification"].get("failure"), runtime.get("failure") if runtime["code"] else None]
        lines = [f"sealkeeper-inspect: {line}\n" for line in expected if line]
        self.assertEqual(run.errors, "".join(lines))

    def assert_strict(self, situation: Situation, document: dict) -> None:
        run = self.check("--strict", "--format", "junit")
        status = ADDITIONS_STATUS if document["additions"] and situation.status == 0 else situation.status
        self.assertEqual(run.status, status)
        suites = ElementTree.fromstring(console.to_bytes(run.output))
        failed = suites.findall("./testsuite/testcase/failure") + suites.findall("./testsuite/testcase/error")
        self.assertEqual(bool(failed), status != 0)
        self.assertEqual(len(failed), int(suites.get("failures", "")) + int(suites.get("errors", "")))
        additions = suites.findall("./testsuite[@name='additions']/testcase")
        self.assertEqual(len(additions), len(document["additions"]))


class Formats(CheckTest):
    """The contents of the formats."""

    def test_text(self) -> None:
        self.write("data/b.pak", b"other")
        self.write("new")
        self.assertEqual(
            self.check().output,
            "base.bin: 5 files\n"
            "runtime.conf: good\n"
            "\n"
            "24 (FileVerificationSizeMismatch)  data/b.pak\n"
            "\n"
            "1 file that no catalogue lists:\n"
            "  new\n"
            "\n"
            "5 files: 4 with 0 (Ok), 1 with 24 (FileVerificationSizeMismatch)\n"
            "Status 24 (FileVerificationSizeMismatch)\n",
        )

    def test_json_is_the_same_as_its_format(self) -> None:
        self.write("new")
        self.assertEqual(self.check("--json").output, self.check("--format", "json").output)

    def test_json_has_every_file(self) -> None:
        self.put_mod()
        self.write("z.dat", b"LAST")
        _, document = self.check_json()
        self.assertEqual(document["gameDirectory"], str(self.game))
        self.assertEqual(document["productId"], PRODUCT)
        files = [(file["path"], file["catalogue"], file["bytes"], file["code"]) for file in document["files"]]
        expected = [(path, "base.bin", len(content), 26 if path == "z.dat" else 0)
                    for path, content in CONTENTS.items()]
        expected += [("mods/x", "mod1.bin", 1, 0), ("mods/y", "mod1.bin", 2, 0)]
        self.assertEqual(sorted(files), sorted(expected))
        self.assertEqual(
            document["summary"],
            [{"code": 0, "result": "Ok", "files": 6},
             {"code": 26, "result": "FileVerificationHashMismatch", "files": 1}],
        )

    def test_link_with_its_target_and_its_files(self) -> None:
        (self.game / "data").rename(self.directory / "elsewhere")
        (self.game / "data").symlink_to("../elsewhere")
        _, document = self.check_json()
        self.assertEqual(
            document["additions"],
            [{"kind": "link where sealed", "path": "data", "target": "../elsewhere", "sealedFiles": 2}],
        )

    def test_aliased_path_is_told(self) -> None:
        self.put_files({"src/app.txt": b"text"})
        self.collect('exclude_paths = ["Quorvane"]; alias_paths = ( ["src", "content"] );')
        run, document = self.check_json()
        self.assertEqual(run.status, self.verify_status())
        self.assertEqual(run.status, 23)
        self.assertEqual([file["path"] for file in document["files"] if file["isAliased"]], ["c"])
        self.assertIn("alias_paths", self.check().output)

    def junit(self, *options: str) -> Dict[Tuple[str, str], ElementTree.Element]:
        run = self.check("--format", "junit", *options)
        root = ElementTree.fromstring(console.to_bytes(run.output))
        self.assertEqual(root.tag, "testsuites")
        cases = {}
        for suite in root.findall("testsuite"):
            for case in suite.findall("testcase"):
                cases[case.get("classname", ""), case.get("name", "")] = case
            self.assertEqual(suite.get("tests"), str(len(suite.findall("testcase"))))
            for counted, element in (("failures", "failure"), ("errors", "error"), ("skipped", "skipped")):
                self.assertEqual(suite.get(counted), str(len(suite.findall(f"testcase/{element}"))))
        self.assertEqual(root.get("tests"), str(len(root.findall("testsuite/testcase"))))
        return cases

    def test_junit(self) -> None:
        self.put_mod()
        self.write("z.dat", b"LAST")
        self.write("new")
        cases = self.junit()
        failure = cases["base.bin", "z.dat"].find("failure")
        self.assertIsNotNone(failure)
        self.assertEqual(failure.attrib, {"type": "26", "message": "26 (FileVerificationHashMismatch)"})
        self.assertEqual(len(cases["mod1.bin", "mods/x"]), 0)
        self.assertIn("unlisted file", cases["additions", "new"].find("skipped").get("message"))
        self.assertEqual(self.junit("--strict")["additions", "new"].find("failure").get("type"), "40")

    def test_junit_of_a_verification_that_ended(self) -> None:
        os.truncate(self.output / "base.bin", 1051)
        error = self.junit()["verification", "base.bin"].find("error")
        self.assertEqual(error.get("type"), "9")
        self.assertIn("damaged or cut off", error.get("message"))

    def test_junit_of_names_that_xml_cannot_hold(self) -> None:
        names = {
            b"\x01\x1f": "\\x01\\x1f",
            b"tab\tline\n": "tab\\x09line\\x0a",
            b"\xff\xfe": "\\xff\\xfe",
            "\uFFFE\uFFFF".encode(): "\\xef\\xbf\\xbe\\xef\\xbf\\xbf",
            b"\xed\xa0\x80": "\\xed\\xa0\\x80",
            "<&>\"' ä日本 \U0001F3AE".encode(): "<&>\"' ä日本 \U0001F3AE",
        }
        for name in names:
            with open(os.path.join(os.fsencode(self.game), name), "wb"):
                pass
        # In the catalogue as well, if it can hold them.
        listed = ["\x01listed\x1b", "\uFFFElisted"]
        self.put_catalogue([*self.entries, *self.put_files({name: b"x" for name in listed})])
        found = {name for suite, name in self.junit() if suite == "additions"}
        self.assertEqual(found, set(names.values()))
        cases = self.junit()
        self.assertIn(("base.bin", "\\x01listed\\x1b"), cases)
        self.assertIn(("base.bin", "\\xef\\xbf\\xbelisted"), cases)
        self.assert_well_formed_for_xmllint(console.to_bytes(self.check("--format", "junit").output))

    def assert_well_formed_for_xmllint(self, document: bytes) -> None:
        if shutil.which("xmllint") is None:
            return
        read = subprocess.run(["xmllint", "--noout", "-"], input=document, capture_output=True,
                              timeout=TIMEOUT_SECONDS, check=False)
        self.assertEqual((read.returncode, read.stderr), (0, b""))

    def test_twenty_of_a_kind_in_the_text_and_all_in_the_others(self) -> None:
        for number in range(25):
            self.write(f"new{number:02}")
        text = self.check().output
        self.assertIn("  new19\n  and 5 more\n", text)
        self.assertNotIn("new20", text)
        self.assertIn("  new24\n", self.check("--verbose").output)
        self.assertEqual(len(self.check_json()[1]["additions"]), 25)

    def test_verbose_text_has_the_good_files(self) -> None:
        self.assertNotIn("data/b.pak", self.check().output)
        self.assertIn("0 (Ok)  data/b.pak\n", self.check("--verbose").output)

    def test_jobs_change_nothing(self) -> None:
        self.write("data/b.pak", changed_at(CONTENTS["data/b.pak"], CHUNK_SIZE))
        one = self.check("--json")
        for jobs in ("0", "1", "3", "256"):
            self.assertEqual(self.check("--json", "--jobs", jobs), one)


class Failures(CheckTest):
    """Wrong command lines, and games that cannot be examined."""

    def assert_usage(self, *arguments: str, says: str) -> None:
        run = self.inspect("check", *arguments)
        self.assertEqual((run.status, run.output), (USAGE, ""))
        self.assertIn(says, run.errors)

    def test_command_lines(self) -> None:
        game = str(self.game)
        self.assert_usage(game, says="--product")
        self.assert_usage("--product", PRODUCT, says="DIR")
        self.assert_usage(game, "--product", "", says="product id")
        self.assert_usage(game, "--product", PRODUCT, "--format", "html", says="html")
        self.assert_usage(game, "--product", PRODUCT, "--json", "--format", "text", says="--format")
        self.assert_usage(game, "--product", PRODUCT, "--frobnicate", says="--frobnicate")

    def test_values_that_options_refuse(self) -> None:
        for option, value, fault in (
            ("--jobs", "-1", "'-1' is not a whole number from 0 to 256"),
            ("--jobs", "257", "'257' is not a whole number from 0 to 256"),
            ("--jobs", "x", "'x' is not a whole number from 0 to 256"),
            ("--product", "", "a product id is required"),
        ):
            with self.subTest(option=option, value=value):
                product = [] if option == "--product" else ["--product", PRODUCT]
                run = self.inspect("check", self.game, *product, option, value)
                self.assertEqual((run.status, run.output), (USAGE, ""))
                self.assertEqual(run.errors, f"sealkeeper-inspect: {option}: {fault} (see --help)\n")

    def test_help(self) -> None:
        run = self.inspect("check", "--help")
        self.assertEqual((run.status, run.errors), (0, ""))
        for option in ("--product", "--format", "--json", "--strict", "--jobs", "--verbose"):
            self.assertIn(option, run.output)

    def test_reasons_name_the_catalogue(self) -> None:
        (self.output / "base.cer").unlink()
        self.assertEqual(
            self.check().errors,
            "sealkeeper-inspect: 'Quorvane/Certificates/base.bin': 27 (CertIOError): "
            "the certificate beside it cannot be read: No such file or directory\n",
        )

    def test_relative_directory(self) -> None:
        run = self.inspect("check", "game", "--product", PRODUCT)
        self.assertEqual(run.status, 0, run.errors)

    def test_game_that_is_missing(self) -> None:
        gone = self.directory / "gone"
        run = self.inspect("check", gone, "--product", PRODUCT)
        self.assertEqual(run.status, self.run_program("-productid", PRODUCT, "verify", gone).status)
        self.assertEqual(
            run.errors,
            f"sealkeeper-inspect: '{gone}': cannot be entered: No such file or directory\n",
        )

    def test_directory_is_reported_as_given_however_it_ends(self) -> None:
        for directory in ("game", "game/../game/", "gone"):
            with self.subTest(directory=directory):
                run = self.inspect("check", directory, "--product", PRODUCT, "--json")
                self.assertEqual(run.json()["gameDirectory"], directory)

    def test_unreadable_directory_is_told(self) -> None:
        self.write("secret/x")
        self.become_unprivileged()
        (self.game / "secret").chmod(0)
        (self.output / "runtime.conf").chmod(0)
        self.assertEqual(self.verify_status(), 0)
        run = self.inspect("check", self.game, "--product", PRODUCT, "--json", "--strict")
        self.assertEqual(run.status, ADDITIONS_STATUS, run.errors)
        self.assertEqual(
            run.json()["additions"],
            [{"kind": "not looked at", "path": "secret", "reason": "Permission denied"},
             {"kind": "unreadable runtime.conf", "path": RUNTIME_CONF, "reason": "Permission denied"}],
        )

    def test_forbidden_folder_of_the_catalogues_is_told(self) -> None:
        self.become_unprivileged()
        for forbidden, mode in ((self.output.parent, 0), (self.output, 0o300), (self.game, 0o600)):
            with self.subTest(forbidden=forbidden.name):
                forbidden.chmod(mode)
                run = self.inspect("check", self.game, "--product", PRODUCT, "--json")
                forbidden.chmod(0o700)
                self.assertEqual(run.status, 3)
                self.assertIn("Permission denied", run.errors)
                self.assertIn("Permission denied", run.json()["verification"]["failure"])


if __name__ == "__main__":
    unittest.main()
