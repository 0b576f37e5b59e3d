"""A root directory without the C library's converter modules, like a small container.

The system cannot convert text there, and an error text replaces each name that needs conversion. No such name is
signed, looked up or shown. ASCII names need no converter.
"""

import json
import os
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path
from typing import List, Optional

import e2e_console as console
import e2e_read_back as texts
from e2e_support import (
    GOOD,
    OUTPUT_FOLDER,
    PRODUCT,
    PROGRAM,
    TIMEOUT_SECONDS,
    UNDER_SANITIZER,
    Credentials,
    EndToEndTest,
    Run,
    config,
)

# The companion, if it is built.
INSPECT = Path(os.environ["SEALKEEPER_INSPECT"]).resolve() if "SEALKEEPER_INSPECT" in os.environ else None
PROGRAMS = [PROGRAM] if INSPECT is None else [PROGRAM, INSPECT]
MODULES = "gconv"
MESSAGE_TEXT = "The system's character-set converter could not be used, so names would be wrong."
MESSAGE = console.err(MESSAGE_TEXT + "\n")
# Files named like the error texts, which a look-up by such a text would find.
DECOYS = ("U82W_ERROR", "W2U8_ERROR", "wchar_to_utf16 iconv_open ERROR )")


def libraries_of(program: Path) -> List[Path]:
    """The shared libraries that a program is loaded with, and the loader."""
    # As ldd does, which knows no programs for other machines.
    environment = {**os.environ, "LD_TRACE_LOADED_OBJECTS": "1"}
    listed = subprocess.run([program], capture_output=True, text=True, check=True, env=environment).stdout
    return [Path(path) for path in re.findall(r"(/\S+) \(0x", listed)]


def module_folder(libraries: List[Path]) -> Optional[Path]:
    """Where the C library has its converter modules."""
    folders = [path.resolve().parent / MODULES for path in libraries if path.name.startswith("libc.")]
    return next((folder for folder in folders if (folder / "UTF-32.so").is_file()), None)


@unittest.skipIf(UNDER_SANITIZER, "the sanitizer needs more of the system than this root has")
@unittest.skipUnless(sys.platform == "linux", "asks the loader of Linux for the libraries of the program")
class RootWithoutModules(EndToEndTest):
    def setUp(self) -> None:
        super().setUp()
        self.root = self.directory / "root"
        self.libraries = [library for program in PROGRAMS for library in libraries_of(program)]
        for source in {*PROGRAMS, *self.libraries}:
            self.put_into_root(source)
        credentials = self.root / "credentials"
        credentials.mkdir()
        for path in (GOOD.key, GOOD.certificate):
            shutil.copy(path, credentials)
        self.credentials = Credentials(*(Path("/credentials") / path.name for path in (GOOD.key, GOOD.certificate)))
        self.game = self.root / "game"
        self.game.mkdir()
        for decoy in DECOYS:
            self.write(decoy, b"hello")
        self.require_change_of_root()

    def put_into_root(self, source: Path) -> None:
        """Copy a file to the same place under the root."""
        target = self.root / source.relative_to("/")
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(source, target)

    # Runs

    def change_of_root(self) -> List[str]:
        """The prefix that makes a command line run in the root."""
        change = ["chroot", str(self.root)]
        return change if os.geteuid() == 0 else ["unshare", "--user", "--map-root-user", *change]

    def in_root(self, program: Path, *arguments: object) -> "subprocess.CompletedProcess[bytes]":
        return subprocess.run(
            [*self.change_of_root(), str(program), *map(str, arguments)],
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=TIMEOUT_SECONDS,
            check=False,
        )

    def require_change_of_root(self) -> None:
        try:
            probe = subprocess.run([*self.change_of_root(), str(PROGRAM), "--version"], capture_output=True, check=False)
        except FileNotFoundError as error:
            self.skipTest(f"{error.filename} is not there")
        # chroot returns 125 to 127, unshare 1.
        if probe.returncode != 0 and not probe.stdout:
            self.skipTest(f"nobody may change the root here: {os.fsdecode(probe.stderr)}")
        self.assertEqual(probe.returncode, 0, probe)

    def run_in_root(self, *arguments: object) -> Run:
        finished = self.in_root(PROGRAM, *arguments)
        self.assertEqual(finished.stderr, b"")
        command_line = [str(PROGRAM), *map(str, arguments)]
        return Run(command_line, finished.returncode, console.to_text(finished.stdout))

    def generate(self, *options: object, target: str = "/game", config_file: Optional[str] = "/game.cfg") -> Run:
        arguments = ["-productid", PRODUCT, *self.credentials.arguments(), "-target_game_dir", target]
        return self.run_in_root(*arguments, *options, *([] if config_file is None else [config_file]))

    def verify(self, *options: object) -> Run:
        return self.run_in_root("-productid", PRODUCT, *options, "verify", "/game")

    def list_catalogue(self) -> Run:
        return self.run_in_root("list", f"/game/{OUTPUT_FOLDER}/base.bin")

    def configure(self, search_options: str = 'exclude_paths = ["Quorvane", "*ERROR*"];') -> None:
        (self.root / "game.cfg").write_bytes(console.to_bytes(config(search_options)))

    def seal_outside(self) -> None:
        """Generate with the converters of the system that runs the tests."""
        config_file = self.write_config(config('exclude_paths = ["Quorvane", "*ERROR*"];'))
        run = self.run_program(*self.generate_arguments(config_file=config_file))
        self.assertEqual(run.status, 0, run.output)

    # What a run must have done

    def assert_refused(self, run: Run) -> None:
        """There is no output, and the run says why."""
        self.assertEqual(run.status, 7, run.output)
        self.assertEqual(run.output.count(MESSAGE), 1, run.output)
        self.assertNotIn("[Success]", run.output)
        self.assert_files()

    def assert_ended(self, run: Run) -> None:
        """The run says why it ended, and shows no name that it could not convert."""
        self.assertEqual(run.status, 7, run.output)
        self.assertTrue(run.output.endswith(MESSAGE), run.output)
        self.assertNotIn("ERROR", run.output)


class Tool(RootWithoutModules):
    def test_generate(self) -> None:
        self.write("a.dat", b"hello")
        self.write("g\u00e9.dat", b"hello")
        self.configure()
        for options in ((), ("-jobs", "2"), ("-gamedev",), ("-v",)):
            with self.subTest(options=options):
                run = self.generate(*options)
                self.assert_refused(run)
                self.assertTrue(run.output.endswith(MESSAGE), run.output)

    def test_generate_where_only_utf16_is_missing(self) -> None:
        folder = module_folder(self.libraries)
        if folder is None:
            self.skipTest("the C library has no modules to leave one of them out")
        for name in ("gconv-modules", "UTF-32.so"):
            self.put_into_root(folder / name)
        # Some systems split the list into several files.
        for path in (folder / "gconv-modules.d").glob("*.conf"):
            self.put_into_root(path)
        self.write("g\u00e9.dat", b"hello")
        self.configure()
        self.assert_refused(self.generate())
        self.put_into_root(folder / "UTF-16.so")
        self.assertEqual(self.generate().status, 0)
        self.assertEqual(self.stored_paths(), ["g\u00e9.dat"])

    def test_generate_with_included_path(self) -> None:
        self.write("g\u00e9.dat", b"hello")
        self.configure('include_paths = ["g\u00e9.dat"];')
        self.assert_refused(self.generate())

    def test_generate_with_alias(self) -> None:
        self.write("a.dat", b"hello")
        for pair in ('["a", "\u00e9"]', '["\u00e9", "a"]'):
            with self.subTest(pair=pair):
                self.configure(f'exclude_paths = ["Quorvane", "*ERROR*"]; alias_paths = ( {pair} )')
                self.assert_refused(self.generate())

    def test_generate_of_one_file(self) -> None:
        path = self.write("g\u00e9.dat", b"hello")
        run = self.generate("-target_file", f"/game/{path.name}", config_file=None)
        self.assert_refused(run)
        self.assertTrue(run.output.endswith(MESSAGE + console.not_created(7, "CatalogueError")), run.output)

    def test_generate_of_a_mod(self) -> None:
        self.write("a.dat", b"hello")
        self.configure('exclude_paths = ["*ERROR*"];')
        self.assert_refused(self.generate("-outname", "mod\u00e9"))
        self.assert_files("a.dat", *DECOYS, under=self.game)

    def test_generate_into_a_directory(self) -> None:
        self.game = self.game.rename(self.root / "g\u00e9")
        self.write("a.dat", b"hello")
        self.configure()
        self.assert_refused(self.generate(target="/g\u00e9"))

    def test_verify(self) -> None:
        self.write("a.dat", b"hello")
        self.write("g\u00e9.dat", b"hello")
        self.seal_outside()
        for options in ((), ("-jobs", "2"), ("-gamedev",)):
            with self.subTest(options=options):
                run = self.verify(*options)
                self.assert_ended(run)
                self.assertNotIn("g\u00e9", run.output)
                self.assertNotIn("Code 23", run.output)

    def test_verify_of_a_catalogue_of_another_name(self) -> None:
        self.write("a.dat", b"hello")
        self.seal_outside()
        (self.output / "base.bin").rename(self.output / "\u00e9.bin")
        self.assert_ended(self.verify())

    def test_verify_in_a_directory(self) -> None:
        self.write("a.dat", b"hello")
        self.seal_outside()
        self.game.rename(self.root / "g\u00e9")
        self.assert_ended(self.run_in_root("-productid", PRODUCT, "verify", "/g\u00e9"))

    def test_list(self) -> None:
        self.write("a.dat", b"hello")
        self.write("g\u00e9.dat", b"hello")
        self.seal_outside()
        self.assert_ended(self.list_catalogue())

    def test_ascii_names_take_no_converter(self) -> None:
        self.write("a.dat", b"hello")
        self.write("sub/b.dat", b"hello")
        self.configure()
        self.assertEqual(self.generate().status, 0)
        self.assert_files("base.bin", "base.cer", "runtime.conf")
        self.assert_catalogue(self.output / "base.bin", ["./a.dat", "./sub/b.dat"])
        run = self.verify()
        self.assertEqual(run.status, 0, run.output)
        self.assertEqual(run.output.count("Successfully verified '"), 2, run.output)
        run = self.list_catalogue()
        self.assertEqual(run.status, 0, run.output)
        self.assertTrue(run.output.endswith(texts.listed(["a.dat", "sub/b.dat"])), run.output)


if INSPECT is not None:

    class Companion(RootWithoutModules):
        def rules(self, *options: str) -> "subprocess.CompletedProcess[bytes]":
            return self.in_root(INSPECT, "rules", "/game.cfg", "--game", "/game", *options)

        def test_rules(self) -> None:
            self.write("a.dat", b"hello")
            self.write("g\u00e9.dat", b"hello")
            self.configure()
            for options in ((), ("--json",), ("--html", "/page.html")):
                with self.subTest(options=options):
                    run = self.rules(*options)
                    self.assertEqual(run.returncode, 2)
                    self.assertEqual(run.stderr, b"sealkeeper-inspect: " + MESSAGE_TEXT.encode() + b"\n")
                    if "--json" in options:
                        self.assertEqual(json.loads(run.stdout)["failure"], MESSAGE_TEXT)
                    else:
                        self.assertEqual(run.stdout, b"")
                    self.assertFalse((self.root / "page.html").exists())

        def test_rules_that_an_alias_is_matched_by(self) -> None:
            self.write("a.dat", b"hello")
            self.configure('exclude_paths = ["Quorvane", "*ERROR*"]; alias_paths = ( ["\u00e9", "a"] )')
            self.assertEqual((self.rules().returncode, self.rules().stdout), (2, b""))

        def test_rules_of_ascii_names_take_no_converter(self) -> None:
            self.write("a.dat", b"hello")
            self.configure()
            run = self.rules()
            self.assertEqual((run.returncode, run.stderr), (0, b""), run.stdout)


if __name__ == "__main__":
    unittest.main()
