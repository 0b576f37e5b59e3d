"""How the three outputs are written: regular files are replaced, links followed, and modes kept."""

import os
import resource
import subprocess
import threading
import unittest

import e2e_console as console
from e2e_support import GOOD, PROGRAM, TIMEOUT_SECONDS
from one_file_game import OneFileTest

NAMES = ("base.bin", "base.cer", "runtime.conf")
NOT_WRITTEN = "Error writing to file stream: '%s'"


class OutputFileTest(OneFileTest):
    def setUp(self) -> None:
        super().setUp()
        self.assertEqual(self.generate().status, 0)
        self.clean = {name: (self.output / name).read_bytes() for name in NAMES}

    def set_mask(self, mask: int) -> None:
        """Set the file mode mask of later runs."""
        before = os.umask(mask)
        self.addCleanup(os.umask, before)

    def put_old(self) -> None:
        for name in NAMES:
            (self.output / name).write_bytes(b"the old " + name.encode())

    def remove_old(self) -> None:
        for name in NAMES:
            (self.output / name).unlink()

    def modes(self):
        return [(self.output / name).stat().st_mode & 0o7777 for name in NAMES]

    def assert_clean(self) -> None:
        """The outputs are those of any other run, and nothing else is there."""
        self.assert_files(*NAMES)
        for name in NAMES:
            self.assertEqual((self.output / name).read_bytes(), self.clean[name], name)

    def assert_generated(self, **choices) -> None:
        run = self.generate(**choices)
        self.assertEqual(run.status, 0, run.output)
        self.assert_clean()


class Modes(OutputFileTest):
    def test_new_ones_have_what_the_mask_leaves(self) -> None:
        for mask, mode in ((0o000, 0o666), (0o027, 0o640), (0o077, 0o600)):
            with self.subTest(mask=oct(mask)):
                self.set_mask(mask)
                self.remove_old()
                self.assert_generated()
                self.assertEqual(self.modes(), [mode] * 3)

    def test_replaced_ones_keep_theirs(self) -> None:
        self.set_mask(0o077)
        modes = [0o664, 0o600, 0o755]
        for name, mode in zip(NAMES, modes):
            (self.output / name).chmod(mode)
        self.assert_generated()
        self.assertEqual(self.modes(), modes)


class Links(OutputFileTest):
    def test_a_hard_link_to_a_file_of_the_game(self) -> None:
        """The game's file, which is the other name, is not overwritten."""
        game_file = self.game / "bin/a.dat"
        for name in NAMES:
            (self.output / name).unlink()
            os.link(game_file, self.output / name)
        self.assert_generated()
        self.assertEqual(game_file.read_bytes(), b"hello")

    def test_symbolic_links_lead_to_what_is_replaced(self) -> None:
        store = self.directory / "store"
        store.mkdir()
        for name in NAMES:
            (self.output / name).rename(store / name)
            (store / name).write_bytes(b"old")
            os.link(store / name, self.directory / name)
            (self.output / f"link_{name}").symlink_to(store / name)
            (self.output / name).symlink_to(f"link_{name}")
        self.assertEqual(self.generate().status, 0)
        self.assert_files(*NAMES, under=store)
        self.assert_files(*NAMES, *(f"link_{name}" for name in NAMES))
        for name in NAMES:
            self.assertTrue((self.output / name).is_symlink())
            self.assertEqual((store / name).read_bytes(), self.clean[name])
            self.assertEqual((self.directory / name).read_bytes(), b"old", "replaced, not written in place")

    def test_the_target_of_a_dangling_link_is_created(self) -> None:
        store = self.directory / "store"
        store.mkdir()
        self.remove_old()
        for name in NAMES:
            (self.output / name).symlink_to(store / name)
        self.assert_generated()
        self.assert_files(*NAMES, under=store)


class InPlace(OutputFileTest):
    """What is no regular file, or may be written but not replaced."""

    def test_standard_output(self) -> None:
        (self.output / "base.cer").unlink()
        (self.output / "base.cer").symlink_to("/dev/stdout")
        run = self.generate()
        self.assertEqual(run.status, 0)
        self.assertIn(GOOD.certificate.read_bytes(), console.to_bytes(run.output))
        self.assertTrue((self.output / "base.cer").is_symlink())

    def test_the_file_of_standard_output(self) -> None:
        """Later console output must not go into a file that has lost its name."""
        (self.output / "runtime.conf").unlink()
        (self.output / "runtime.conf").symlink_to("/dev/stdout")
        path = self.directory / "console"
        with path.open("ab") as stdout:
            finished = subprocess.run(
                [str(PROGRAM), *self.generate_arguments(config_file=self.config_file)],
                cwd=self.directory,
                stdout=stdout,
                timeout=TIMEOUT_SECONDS,
                check=False,
            )
        self.assertEqual(finished.returncode, 0)
        self.assertTrue(path.read_bytes().endswith(console.to_bytes(console.copied(self.folder))))

    def test_a_fifo_with_a_reader(self) -> None:
        for name in NAMES:
            with self.subTest(name=name):
                path = self.output / name
                path.unlink()
                os.mkfifo(path)
                received = []
                # Opened before the program, which does not wait for a reader.
                descriptor = os.open(path, os.O_RDONLY | os.O_NONBLOCK)
                os.set_blocking(descriptor, True)
                run = self.generate()
                reader = threading.Thread(target=lambda: received.append(os.read(descriptor, 1 << 16)))
                reader.start()
                reader.join(TIMEOUT_SECONDS)
                os.close(descriptor)
                self.assertEqual(run.status, 0, run.output)
                self.assertEqual(received, [self.clean[name]])
                self.assertTrue(path.is_fifo())
                path.unlink()
                path.write_bytes(b"old")

    def test_a_directory_that_must_not_be_written(self) -> None:
        credentials = self.readable_credentials()
        self.put_old()
        for name in NAMES:
            os.link(self.output / name, self.directory / name)
        self.become_unprivileged()
        self.output.chmod(0o555)
        self.assert_generated(credentials=credentials)
        for name in NAMES:
            self.assertEqual((self.directory / name).read_bytes(), self.clean[name], "written in place")
        (self.output / "base.bin").chmod(0o444)
        self.assertEqual(self.generate(credentials=credentials).status, 8)

    def test_a_new_file_in_such_a_directory(self) -> None:
        credentials = self.readable_credentials()
        self.become_unprivileged()
        (self.output / "base.cer").unlink()
        self.output.chmod(0o555)
        run = self.generate(credentials=credentials)
        self.assertEqual(run.status, 27)
        self.assertTrue(run.output.endswith(console.err(console.COPY_NOT_OPENED)))
        self.assert_files("base.bin", "runtime.conf")


class Limits(OutputFileTest):
    def test_the_longest_name(self) -> None:
        name = "n" * 251
        self.assertEqual(self.generate("-outname", name).status, 0)
        self.assertEqual(self.generate("-outname", name).status, 0)
        self.assert_files(f"{name}.bin", f"{name}.cer", "Quorvane", "bin", under=self.game)
        self.assertEqual(self.generate("-outname", name + "n").status, 27)

    def test_files_larger_than_the_process_may_write(self) -> None:
        """The old ones are kept. The certificate, which is below the limit, is copied."""
        self.put_old()
        for limit, status, written in ((1107, 3, []), (1108, 8, ["base.cer", "runtime.conf"])):
            with self.subTest(limit=limit):
                finished = subprocess.run(
                    [str(PROGRAM), *self.generate_arguments(config_file=self.config_file)],
                    cwd=self.directory,
                    capture_output=True,
                    timeout=TIMEOUT_SECONDS,
                    check=False,
                    preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)),
                )
                self.assertEqual(finished.returncode, status)
                failing = "runtime.conf" if status == 3 else "base.bin"
                text = NOT_WRITTEN.replace("%s", f"{self.folder}{failing}")
                self.assertIn(text, console.to_text(finished.stdout))
                self.assert_files(*NAMES)
                for name in NAMES:
                    expected = self.clean[name] if name in written else b"the old " + name.encode()
                    self.assertEqual((self.output / name).read_bytes(), expected)


if __name__ == "__main__":
    unittest.main()
