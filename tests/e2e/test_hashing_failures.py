"""Files that cannot be hashed, and files that change while they are hashed."""

import os
import signal
import socket
import subprocess
import threading
import time
import unittest
from pathlib import Path
from typing import Callable, Tuple

import e2e_console as console
from e2e_support import GOOD, PROGRAM, TIMEOUT_SECONDS
from one_file_game import OneFileTest

HAS_PROC = os.path.isdir("/proc/self/fd")


class NothingToHash(OneFileTest):
    """Catalogues without files, and files that cannot be hashed."""

    def failed(self, code: int, text: str) -> str:
        return console.not_created(code, text) + console.copied(self.folder)

    def assert_abandoned(self, run, status: int, text: str) -> None:
        self.assert_console(run, status, text)
        self.assert_files("base.cer", "runtime.conf")
        self.assertEqual((self.output / "base.cer").read_bytes(), GOOD.certificate.read_bytes())

    def test_no_file_selected(self) -> None:
        (self.game / "bin/a.dat").unlink()
        text = self.until_hashing() + console.err(console.EMPTY_CATALOGUE) + self.failed(7, "CatalogueError")
        self.assert_abandoned(self.generate(), 7, text)

    def test_earlier_catalogue_stays_when_there_is_none_now(self) -> None:
        self.assertEqual(self.generate().status, 0)
        before = (self.output / "base.bin").read_bytes()
        (self.game / "bin/a.dat").unlink()
        self.assertEqual(self.generate().status, 7)
        self.assertEqual((self.output / "base.bin").read_bytes(), before)

    def test_unreadable_file(self) -> None:
        credentials = self.readable_credentials()
        self.write("bin/b.dat", b"secret")
        self.become_unprivileged()
        (self.game / "bin/b.dat").chmod(0)
        text = self.until_hashing() + console.hashing("./bin/a.dat") + console.hashing_begun("./bin/b.dat")
        text += self.failed(7, "CatalogueError")
        run = self.generate(credentials=credentials)
        self.assert_console(run, 7, text)
        self.assert_files("base.cer", "runtime.conf")

    def test_directory_as_single_file(self) -> None:
        if (self.game / "bin").stat().st_size == 0:
            self.skipTest("directories have no size on this file system")
        run = self.generate("-target_file", self.game / "bin", config_file=None)
        text = self.until_output() + console.hashing_begun(f"{self.game}/bin") + self.failed(8, "CatalogueIOError")
        self.assert_console(run, 8, text)
        self.assert_files("base.cer")

    def test_special_files_as_single_file_are_empty_files(self) -> None:
        os.mkfifo(self.directory / "fifo")
        listener = socket.socket(socket.AF_UNIX)
        self.addCleanup(listener.close)
        listener.bind(str(self.directory / "socket"))
        for name in ("fifo", "socket", "/dev/null", "/dev/zero"):
            with self.subTest(name=name):
                run = self.generate("-target_file", name, config_file=None)
                text = self.until_output() + console.empty_file(name)
                self.assert_console(run, 0, text + console.created(self.folder) + console.copied(self.folder))
                self.assertEqual(self.stored_paths(), [name])


@unittest.skipUnless(HAS_PROC, "needs /proc to see when a file is open")
class FilesInMotion(OneFileTest):
    """Files that change while they are hashed: the program is stopped while it has one open."""

    SIZE = 256 * 1024 * 1024
    # The first file of the game, which is opened at its turn and not ahead.
    FIRST = "bin/0.pak"

    def run_halted(
        self, name: str, act: Callable[[Path], object], *options: str, size: int = SIZE
    ) -> Tuple[int, str]:
        """Run. While the program has the big file open, stop it and call `act` with that file."""
        big = self.write_sparse(name, size)
        command_line = [str(PROGRAM), *self.generate_arguments(*options, config_file=self.config_file)]
        with subprocess.Popen(command_line, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            try:
                self.wait_until_open(process, big)
                process.send_signal(signal.SIGSTOP)
                self.assert_in_the_middle(process, size)
                act(big)
                process.send_signal(signal.SIGCONT)
                output, errors = process.communicate(timeout=TIMEOUT_SECONDS)
            finally:
                process.kill()
        self.assertEqual(errors, b"")
        return process.returncode, console.to_text(output)

    def assert_in_the_middle(self, process, size: int) -> None:
        """If the whole file has been read by now, the test proves nothing."""
        counters = Path(f"/proc/{process.pid}/io").read_text().split()
        self.assertEqual(counters[0], "rchar:")
        self.assertLess(int(counters[1]), size)

    def wait_until_open(self, process, path: Path) -> None:
        descriptors = Path(f"/proc/{process.pid}/fd")
        deadline = time.monotonic() + TIMEOUT_SECONDS
        while time.monotonic() < deadline:
            self.assertIsNone(process.poll(), "the program ended before it had opened the file")
            for descriptor in descriptors.iterdir():
                try:
                    if os.readlink(descriptor) == str(path):
                        return
                except OSError:
                    continue
        self.fail("the program did not open the file")

    def test_file_that_shrinks(self) -> None:
        status, output = self.run_halted(self.FIRST, lambda big: os.truncate(big, 0))
        text = self.until_hashing() + console.hashing_begun("./" + self.FIRST)
        text += console.not_created(8, "CatalogueIOError") + console.copied(self.folder)
        self.assertTrue(console.without_dots(output).endswith(text), output)
        self.assertEqual(status, 8)

    def assert_hashed_twice(self, act: Callable[[Path], object], *options: str, size: int = SIZE) -> None:
        status, output = self.run_halted(self.FIRST, act, *options, size=size)
        self.assertEqual(status, 0)
        self.assertEqual(console.without_dots(output).count(console.hashing("./" + self.FIRST)), 2)
        self.assert_catalogue(self.output / "base.bin", ["./" + self.FIRST, "./bin/a.dat"])

    def test_file_that_grows_is_hashed_once_more(self) -> None:
        self.assert_hashed_twice(lambda big: os.truncate(big, self.SIZE + 5))

    def test_file_that_grows_is_hashed_once_more_by_several_jobs(self) -> None:
        size = 3 * self.SIZE
        self.assert_hashed_twice(lambda big: os.truncate(big, size + 5), "-jobs", "3", size=size)

    def test_file_that_is_rewritten_is_hashed_once_more(self) -> None:
        """Its first chunk has been hashed by then, but not its last."""

        def rewrite(big: Path) -> None:
            with big.open("r+b") as file:
                file.write(b"first")
                file.seek(-5, os.SEEK_END)
                file.write(b"last.")

        self.assert_hashed_twice(rewrite)

    def test_file_that_is_replaced_is_hashed_once_more(self) -> None:
        self.assert_hashed_twice(lambda big: self.write("new", b"another").rename(big))

    def test_file_that_keeps_changing_is_not_sealed(self) -> None:
        big = self.write_sparse(self.FIRST, self.SIZE)
        is_done = threading.Event()

        def keep_changing() -> None:
            with big.open("r+b", buffering=0) as file:
                while not is_done.is_set():
                    file.seek(0)
                    file.write(b"x")

        writer = threading.Thread(target=keep_changing)
        writer.start()
        try:
            run = self.generate()
        finally:
            is_done.set()
            writer.join()
        path = "./" + self.FIRST
        text = self.until_hashing() + console.hashing(path) * 2
        text += console.err(f"File changed while it was being hashed: '{path}'.\n")
        text += console.not_created(8, "CatalogueIOError") + console.copied(self.folder)
        self.assert_console(run, 8, text)
        self.assert_files("base.cer", "runtime.conf")


if __name__ == "__main__":
    unittest.main()
