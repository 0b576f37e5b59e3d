"""Special files in the game: FIFOs with a waiting writer, and files under a lease."""

import fcntl
import os
import signal
import threading
import unittest

import e2e_console as console
from catalogue_entry import entry_of_bytes
from e2e_support import PRODUCT, config
from signed_game import SignedGameTest


class WaitingWriter:
    """A process that opened a FIFO for writing and waits for a reader."""

    def __init__(self, path) -> None:
        os.mkfifo(path)
        self.path = path
        self.thread = threading.Thread(target=self._write, daemon=True)
        self.thread.start()

    def _write(self) -> None:
        os.close(os.open(self.path, os.O_WRONLY))

    def still_waits(self) -> bool:
        self.thread.join(0.2)
        return self.thread.is_alive()

    def let_go(self) -> None:
        os.close(os.open(self.path, os.O_RDONLY | os.O_NONBLOCK))
        self.thread.join()


class Fifos(SignedGameTest):
    def setUp(self) -> None:
        super().setUp()
        self.writer = WaitingWriter(self.game / "fifo")
        self.addCleanup(self.writer.let_go)

    def test_verify_does_not_open_one(self) -> None:
        self.put_catalogue([entry_of_bytes("fifo", b""), entry_of_bytes("z", b"")])
        self.write("z")
        self.assert_verified(23, [("fifo", 23), ("z", 0)])
        self.assertTrue(self.writer.still_waits())

    def test_generate_does_not_open_one(self) -> None:
        config_file = self.write_config(config('include_paths = ["fif*"]'))
        run = self.run_program(*self.generate_arguments(config_file=config_file))
        self.assertEqual(run.status, 0, run.output)
        self.assertIn(console.empty_file("./fifo"), run.output)
        self.assertTrue(self.writer.still_waits())

    def test_verify_does_not_open_one_in_place_of_a_catalogue(self) -> None:
        writer = WaitingWriter(self.output / "base.bin")
        self.addCleanup(writer.let_go)
        run = self.run_program("-productid", PRODUCT, "verify", self.game)
        self.assertEqual(run.status, 8, run.output)
        self.assertTrue(writer.still_waits())

    def test_list_does_not_open_one(self) -> None:
        self.assertEqual(self.list_file(self.game / "fifo").status, 8)
        self.assertTrue(self.writer.still_waits())

    def test_nor_as_the_single_file(self) -> None:
        run = self.run_program(*self.generate_arguments("-target_file", self.game / "fifo"))
        self.assertEqual(run.status, 0, run.output)
        self.assertTrue(self.writer.still_waits())


@unittest.skipUnless(hasattr(fcntl, "F_SETLEASE"), "this system has no leases")
class Leases(SignedGameTest):
    """Opening the file asks the holder to release the lease. An opener that does not wait gets an error."""

    def setUp(self) -> None:
        super().setUp()
        self.path = self.write("a", b"hello")
        self.descriptor = os.open(self.path, os.O_RDWR)
        self.addCleanup(os.close, self.descriptor)
        self.asked = 0
        # What the holder still has to write at that moment.
        self.unwritten = b""
        before = signal.signal(signal.SIGIO, self.give_up)
        self.addCleanup(signal.signal, signal.SIGIO, before)
        self.take()

    def take(self) -> None:
        try:
            fcntl.fcntl(self.descriptor, fcntl.F_SETLEASE, fcntl.F_WRLCK)
        except OSError as error:
            self.skipTest(f"no lease to be had on this file system: {error}")

    def give_up(self, *_) -> None:
        self.asked += 1
        os.lseek(self.descriptor, 0, os.SEEK_END)
        os.write(self.descriptor, self.unwritten)
        fcntl.fcntl(self.descriptor, fcntl.F_SETLEASE, fcntl.F_UNLCK)

    def test_verify_waits_for_the_file(self) -> None:
        self.put_catalogue([entry_of_bytes("a", b"hello")])
        self.assert_verified(0, [("a", 0)])
        self.assertEqual(self.asked, 1)

    def test_verify_checks_what_the_holder_leaves(self) -> None:
        self.unwritten = b" and more"
        self.put_catalogue([entry_of_bytes("a", b"hello and more")])
        run = self.run_program("-productid", PRODUCT, "verify", self.game)
        self.assertEqual(run.status, 0, run.output)
        self.assertEqual(self.asked, 1)

    def test_generate_waits_for_the_file(self) -> None:
        run = self.run_program(*self.generate_arguments("-target_file", self.path))
        self.assertEqual(run.status, 0, run.output)
        self.assertEqual(self.asked, 1)
        self.assertIn(console.hashing(str(self.path)), console.without_dots(run.output))


if __name__ == "__main__":
    unittest.main()
