"""A game with signed files made by the independent writer and openssl, and runs that read them."""

from __future__ import annotations

import os
import re
import shutil
from pathlib import Path
from typing import Dict, Iterable, List, Mapping, Optional, Sequence, Tuple, Union

import catalogue_format
import e2e_console as console
import e2e_read_back as texts
import runtime_conf_format
from catalogue_entry import CHUNK_SIZE, Entry, entry_of_bytes
from e2e_read_back import Verdict
from e2e_support import GOOD, PRODUCT, Credentials, EndToEndTest, PathOrText, Run

STATUSES = range(0, 36)
"""The possible exit statuses of a run; none is a signal."""

Shape = Tuple[int, ...]


class SignedGameTest(EndToEndTest):
    """Puts signed files into the standard folder, lists and verifies them."""

    def setUp(self) -> None:
        super().setUp()
        self.output.mkdir(parents=True)

    # Signed files

    def put_catalogue(
        self,
        entries: Iterable[Entry],
        name: str = "base",
        *,
        credentials: Credentials = GOOD,
        crl: bytes = b"",
        signature_layout: int = catalogue_format.WHOLE_FILE_LAYOUT,
    ) -> Path:
        """Write a signed catalogue and its certificate."""
        image = catalogue_format.build(entries, crl, signature_layout=signature_layout)
        return self.put_image(catalogue_format.sign(image, credentials.key), name, credentials.certificate)

    def put_image(self, image: bytes, name: str = "base", certificate: Path = GOOD.certificate) -> Path:
        """Write a catalogue unchanged, and its certificate."""
        path = self.output / f"{name}.bin"
        path.write_bytes(image)
        shutil.copyfile(certificate, self.output / f"{name}.cer")
        return path

    def put_runtime_conf(
        self, instances: int = 1, name: bytes = b"", solution: int = 0, *, credentials: Credentials = GOOD
    ) -> Path:
        """Write a signed runtime.conf."""
        image = runtime_conf_format.build(instances, name, solution)
        path = self.output / "runtime.conf"
        path.write_bytes(runtime_conf_format.sign(image, credentials.key))
        return path

    def entry_of(self, name: str) -> Entry:
        """The entry for a file as it is now."""
        return entry_of_bytes(name, (self.game / name).read_bytes())

    def put_files(self, contents: Mapping[str, bytes]) -> List[Entry]:
        """Write files; return their entries in the same order."""
        for name, content in contents.items():
            self.write(name, content)
        return [self.entry_of(name) for name in contents]

    # List

    def list_file(self, path: PathOrText, **choices) -> Run:
        """List one file."""
        return self.run_program("list", path, **choices)

    def assert_listed(self, path: Path, status: int, text: str) -> None:
        """List one file; `text` is what follows the first line of the action."""
        self.assert_console(self.list_file(path), status, texts.list_begun(path) + text)

    def assert_catalogue_listed(self, path: Path, paths: Sequence[str]) -> None:
        """List a catalogue that holds these paths."""
        self.assert_listed(path, 0, texts.listed(paths))

    # Verify

    def verify_game(self, *options: PathOrText, target: Optional[PathOrText] = None, product: str = PRODUCT) -> Run:
        """Verify the game, and check that the run changed nothing in it."""
        before = self.shapes()
        run = self.run_program("-productid", product, *options, "verify", target or self.game)
        self.assertEqual(self.shapes(), before, "verify writes nothing")
        return Run(run.command_line, run.status, texts.without_verify_dots(run.output))

    def shapes(self) -> Dict[str, Shape]:
        """The status of each file of the game, which tells whether it was written."""
        paths = [str(self.game)]
        for folder, subfolders, names in os.walk(self.game):
            paths += [os.path.join(folder, name) for name in subfolders + names]
        return {path: self._shape(os.lstat(path)) for path in paths}

    @staticmethod
    def _shape(found: os.stat_result) -> Shape:
        # The access time is left out, since reading changes it.
        return (found.st_mode, found.st_ino, found.st_size, found.st_mtime_ns, found.st_ctime_ns)

    def begun(self) -> str:
        """The output of a run before its first catalogue."""
        return texts.looking(self.folder) + texts.changed_folder(self.game)

    def assert_verified(
        self,
        status: int,
        checked: Sequence[Verdict],
        runtime: str = "",
        *options: PathOrText,
        name: str = "base.bin",
        product: str = PRODUCT,
    ) -> None:
        """Verify a game of one catalogue; `runtime` is what is printed after the summary."""
        read = texts.reading(name) + texts.added(name, len(checked))
        text = self.begun() + read + texts.verdicts(checked) + runtime
        self.assert_console(self.verify_game(*options, product=product), status, text)

    def assert_not_read(self, code: int, *options: PathOrText, name: str = "base.bin", product: str = PRODUCT) -> None:
        """Verify a game whose only catalogue is refused: that ends the run."""
        text = self.begun() + texts.reading(name) + texts.not_read(name, code)
        self.assert_console(self.verify_game(*options, product=product), code, text)

    def assert_catalogues_verified(
        self, status: int, checked: Mapping[str, Sequence[Verdict]], runtime: str = "", *options: PathOrText
    ) -> None:
        """Verify a game of several catalogues, which may be read in any order."""
        run = self.verify_game(*options)
        order = re.findall(r"^\[Info\] Reading the contents of: '(.*)'\.$", run.output, flags=re.MULTILINE)
        self.assertEqual(sorted(order), sorted(checked))
        text = self.begun()
        all_checked: List[Verdict] = []
        for name in order:
            all_checked += checked[name]
            text += texts.reading(name) + texts.added(name, len(all_checked))
        self.assert_console(run, status, text + texts.verdicts(all_checked) + runtime)

    def runtime_text(self, *, trusted: bool = True) -> str:
        """The output for a valid runtime.conf; not `trusted` under -gamedev."""
        trust = console.trusted() if trusted else ""
        return texts.runtime_begun(self.folder) + trust + texts.runtime_valid(self.folder)


def passed(entries: Iterable[Union[Entry, str]]) -> List[Verdict]:
    """The verdicts for entries or paths whose files are all good."""
    return [(entry if isinstance(entry, str) else entry.path, 0) for entry in entries]


def changed_at(content: bytes, offset: int, difference: int = 1) -> bytes:
    """The content with one byte changed."""
    changed = bytearray(content)
    changed[offset] ^= difference
    return bytes(changed)


THREE_CHUNKS = bytes(range(256)) * (2 * CHUNK_SIZE // 256) + b"the third chunk"
