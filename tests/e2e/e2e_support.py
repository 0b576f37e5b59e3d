"""A fresh directory with a game, and runs of the built program on it.

The environment names the program (SEALKEEPER_PROGRAM) and the folder with the test credentials
(SEALKEEPER_TEST_CREDENTIALS_DIR).
"""

from __future__ import annotations

import os
import shutil
import stat
import subprocess
import tempfile
import unittest
from dataclasses import dataclass
from pathlib import Path
from typing import Dict, Iterable, List, Mapping, Optional, Sequence, Union

import catalogue_format
import e2e_console as console
import runtime_conf_format
from catalogue_entry import entries_of_directory

PROGRAM = Path(os.environ["SEALKEEPER_PROGRAM"]).resolve()
CREDENTIALS = Path(os.environ["SEALKEEPER_TEST_CREDENTIALS_DIR"]).resolve()
PRODUCT = "TestProduct42"
STEP = int(os.environ.get("SEALKEEPER_TEST_STEP", "1"))
"""Try only every so many places or files: under the sanitizers a run takes several times as long."""
TIMEOUT_SECONDS = 60
NOBODY = 65534
# A sanitizer uses memory and descriptors of its own.
UNDER_SANITIZER = b"__asan_init" in PROGRAM.read_bytes()
# tools/check-arm64.sh says so of an emulator.
LACKS_ADDRESS_SPACE_LIMITS = os.environ.get("SEALKEEPER_TEST_LACKS") == "address-space-limits"
with_limited_address_space = unittest.skipIf(
    UNDER_SANITIZER or LACKS_ADDRESS_SPACE_LIMITS,
    "a sanitizer or an emulator takes more address space than any limit leaves",
)
OUTPUT_FOLDER = "Quorvane/Certificates"

INCLUDE_BIN = 'config_info { version = 2; }\nsearch_options { include_paths = ["bin"] }\n'

PathOrText = Union[Path, str]


@dataclass(frozen=True)
class Run:
    """One finished run: its command line (program path first), exit status and standard output."""

    command_line: List[str]
    status: int
    output: str


@dataclass(frozen=True)
class Credentials:
    """A key file and a certificate file, which need not belong together."""

    key: Path
    certificate: Path

    @staticmethod
    def of(folder: PathOrText) -> "Credentials":
        """The pair in a folder of the test credentials."""
        directory = CREDENTIALS / folder
        return Credentials(directory / "base_private.key", directory / "base_public.cer")

    def arguments(self) -> List[str]:
        """The options that name both files."""
        return ["-inkey", str(self.key), "-incert", str(self.certificate)]


GOOD = Credentials.of("good")


def config(search_options: str, runtime_configuration: str = "") -> str:
    """Return the text of a configuration file with these entries in its sections."""
    text = f"config_info {{ version = 2; }}\nsearch_options {{ {search_options} }}\n"
    return text + (f"runtime_configuration {{ {runtime_configuration} }}\n" if runtime_configuration else "")


class EndToEndTest(unittest.TestCase):
    """Base of all end-to-end tests."""

    maxDiff = None

    def setUp(self) -> None:
        self.directory = Path(tempfile.mkdtemp(prefix="sealkeeper-e2e-")).resolve()
        self.addCleanup(shutil.rmtree, self.directory, ignore_errors=True)
        # Another user starts some of the runs.
        self.directory.chmod(0o755)
        self.game = self.directory / "game"
        self.game.mkdir()
        self.program = PROGRAM
        self.user: Optional[int] = None

    # The game

    def write(self, name: str, content: bytes = b"") -> Path:
        """Add a file to the game, with its directories; the name may hold bytes that are not UTF-8."""
        path = self.game / os.fsdecode(console.to_bytes(name))
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path

    def write_sparse(self, name: str, size: int) -> Path:
        """Add a file of so many zero bytes to the game that takes no disk space."""
        path = self.write(name)
        os.truncate(path, size)
        return path

    def write_config(self, text: Union[bytes, str], name: str = "game.cfg") -> Path:
        """Put a configuration file beside the game."""
        path = self.directory / name
        path.write_bytes(text if isinstance(text, bytes) else console.to_bytes(text))
        return path

    @property
    def output(self) -> Path:
        """The standard folder for the program's output."""
        return self.game / OUTPUT_FOLDER

    @property
    def folder(self) -> str:
        """The same as the console prints it if the game is given by its absolute path."""
        return f"{self.output}/"

    # Runs

    def become_unprivileged(self) -> None:
        """Start later runs as a user to whom permissions apply, unlike root.

        The game becomes that user's. The program and the credentials are copied to where that user can read them.
        """
        self.program = Path(shutil.copy(PROGRAM, self.directory / "sealkeeper"))
        self.program.chmod(0o755)
        if os.geteuid() == 0:
            self.user = NOBODY
            for path in [self.directory, self.game, *self.game.rglob("*")]:
                os.chown(path, NOBODY, NOBODY)
        self.addCleanup(self._open_all)

    def _open_all(self) -> None:
        for folder, subfolders, _ in os.walk(self.directory):
            for name in subfolders:
                os.chmod(os.path.join(folder, name), stat.S_IRWXU)

    def readable_credentials(self) -> Credentials:
        """A copy of the good pair that the unprivileged user can read."""
        copies = [Path(shutil.copy(path, self.directory)) for path in (GOOD.key, GOOD.certificate)]
        for path in copies:
            path.chmod(0o644)
        return Credentials(*copies)

    def run_program(
        self,
        *arguments: PathOrText,
        cwd: Optional[Path] = None,
        first_argument: Optional[str] = None,
        environment: Optional[Mapping[str, str]] = None,
    ) -> Run:
        """Run the program and check that it wrote nothing to standard error."""
        command_line = [first_argument or str(self.program)] + [str(argument) for argument in arguments]
        finished = subprocess.run(
            [console.to_bytes(argument) for argument in command_line],
            executable=self.program,
            cwd=cwd or self.directory,
            env=dict(os.environ, **environment) if environment else None,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=TIMEOUT_SECONDS,
            check=False,
            **self._identity(),
        )
        self.assertEqual(finished.stderr, b"", "nothing is written to standard error")
        return Run(command_line, finished.returncode, console.to_text(finished.stdout))

    def run_script(self, script: str, *arguments: PathOrText) -> "subprocess.CompletedProcess[bytes]":
        """Run a shell script in which "$0" is the program and "$@" are the arguments."""
        return subprocess.run(
            ["sh", "-c", script, str(PROGRAM), *map(str, arguments)],
            cwd=self.directory,
            capture_output=True,
            timeout=TIMEOUT_SECONDS,
            check=False,
        )

    def _identity(self) -> Dict[str, object]:
        if self.user is None:
            return {}
        return {"user": self.user, "group": self.user, "extra_groups": []}

    def generate_arguments(
        self,
        *options: PathOrText,
        config_file: Optional[PathOrText] = None,
        credentials: Credentials = GOOD,
        target: Optional[PathOrText] = None,
        product: str = PRODUCT,
    ) -> List[str]:
        """The command line of a generate run on the game, without the program."""
        arguments = ["-productid", product, *credentials.arguments()]
        arguments += ["-target_game_dir", str(self.game if target is None else target)]
        arguments += [str(option) for option in options]
        return arguments + ([] if config_file is None else [str(config_file)])

    # What a run must have done

    def assert_console(self, run: Run, status: int, text: str, *, parsed: bool = True) -> None:
        """Compare the exit status and the whole console output, from the banner to the end.

        `text` is what follows the echo of the arguments and, with `parsed`, the parser's lines about options.
        """
        expected = console.opening(run.command_line) + (console.parsed_all(run.command_line) if parsed else "")
        self.assertMultiLineEqual(console.without_dots(run.output), console.without_dots(expected + text))
        self.assertEqual(run.status, status)

    def assert_files(self, *names: str, under: Optional[Path] = None) -> None:
        """Compare the names in the standard folder, or in another one, with these."""
        folder = under or self.output
        found = sorted(path.name for path in folder.iterdir()) if folder.exists() else []
        self.assertEqual(found, sorted(names))

    def assert_catalogue(
        self,
        path: Path,
        collected_paths: Iterable[str],
        *,
        crl: bytes = b"",
        aliases: Optional[Mapping[str, str]] = None,
        credentials: Credentials = GOOD,
        base: Optional[Path] = None,
    ) -> None:
        """Compare a catalogue byte for byte with one made by the independent writer and openssl.

        `collected_paths` are relative to `base`, by default the game directory.
        """
        entries = entries_of_directory(base or self.game, collected_paths, aliases)
        expected = catalogue_format.sign(catalogue_format.build(entries, crl), credentials.key)
        written = path.read_bytes()
        if written != expected:
            read = catalogue_format.parse(written, strict=False)
            self.assertEqual([entry.path for entry in read.entries], [entry.path for entry in entries])
            self.assertEqual(read.entries, tuple(entries))
            self.fail(f"the catalogue differs outside its entries: {len(written)} bytes, {len(expected)} expected")
        self.assertTrue(catalogue_format.verify(written, credentials.certificate))

    def assert_runtime_conf(
        self,
        path: Path,
        instances: int = 1,
        name: bytes = b"",
        solution: int = 0,
        *,
        credentials: Credentials = GOOD,
    ) -> None:
        """Compare a runtime.conf byte for byte with one made by the independent writer and openssl."""
        unsigned = runtime_conf_format.build(instances, name, solution)
        expected = runtime_conf_format.sign(unsigned, credentials.key)
        written = path.read_bytes()
        self.assertEqual(runtime_conf_format.unscramble(written), runtime_conf_format.unscramble(expected))
        self.assertTrue(runtime_conf_format.verify(written, credentials.certificate))

    def stored_paths(self, path: Optional[Path] = None) -> List[str]:
        """Return the paths in a catalogue, by default base.bin, in file order."""
        image = (path or self.output / "base.bin").read_bytes()
        return [entry.path for entry in catalogue_format.parse(image).entries]

    # Runs with the usual texts

    def collected_text(self, lines: str, hashed: str, record: Optional[str] = None) -> str:
        """The text after the parser's lines, for a successful run on the game given by its absolute path.

        `lines` is what collection prints after the configuration version, `hashed` what hashing prints.
        """
        return (
            console.started(str(self.game), str(self.game))
            + console.main_catalogue()
            + console.config_version()
            + lines
            + console.trusted()
            + (console.runtime_record() if record is None else record)
            + console.runtime_written(self.folder)
            + hashed
            + console.created(self.folder)
            + console.copied(self.folder)
        )

    def collect(self, search_options: str, *options: PathOrText) -> Run:
        """Generate with these search options on the game given by its absolute path."""
        config_file = self.write_config(config(search_options))
        return self.run_program(*self.generate_arguments(*options, config_file=config_file))

    def assert_collected(
        self,
        search_options: str,
        lines: str,
        paths: Sequence[str],
        *options: PathOrText,
        aliases: Optional[Mapping[str, str]] = None,
    ) -> None:
        """Generate, and compare the console, base.bin, base.cer and runtime.conf.

        `paths` are the collected paths in catalogue order. Empty files are recognised by their size.
        """
        run = self.collect(search_options, *options)
        hashed = "".join(self.hashed_line(path) for path in paths)
        self.assert_console(run, 0, self.collected_text(lines, hashed))
        self.assert_catalogue(self.output / "base.bin", paths, aliases=aliases)
        self.assertEqual((self.output / "base.cer").read_bytes(), GOOD.certificate.read_bytes())
        self.assert_runtime_conf(self.output / "runtime.conf")

    def hashed_line(self, path: str) -> str:
        """The line that hashing prints for a collected path, by its current size."""
        file_path = self.game / path
        size = file_path.stat().st_size if file_path.exists() else 0
        return console.hashing(path) if size else console.empty_file(path)
