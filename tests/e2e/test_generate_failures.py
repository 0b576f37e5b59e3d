"""Runs that fail in part: their messages, their exit status, and what they leave on disk."""

import os
import shutil
import unittest

import e2e_console as console
from one_file_game import OneFileTest

UNRESOLVED = (
    "The provided target game directory's path couldn't be resolved, please make sure it's a valid path: '%s'.\n"
)
NOT_A_DIRECTORY = (
    "The provided path, when converted to absolute path: '%s', does not point to an existing directory.\n"
)
NO_CURRENT_DIRECTORY = "Failed to get working directory for current process.\n"
NOT_OPENED = "Failed to open file: '%s'.\n"
NOT_WRITTEN = "Error writing to file stream: '%s'.\n"
CONF_NOT_CREATED = "Could not create file: '%s'. Try running the tool with admin privileges.\n"
CONF_NOT_WRITTEN = "Error writing to file stream: '%s'\n"
HAS_FULL = os.path.exists("/dev/full")


class Directories(OneFileTest):
    """The target directory, the output folder and the working directory."""

    def test_target_that_cannot_be_resolved(self) -> None:
        (self.directory / "loop").symlink_to("loop")
        (self.directory / "dangling").symlink_to("nowhere")
        for target in ("gone", str(self.game / "gone"), "game.cfg/", "loop", "dangling", "x" * 5000, "back\\slash"):
            with self.subTest(target=target[:20]):
                text = console.info(f"Generating signed integrity files for: '{target}'.\n")
                text += console.err(UNRESOLVED.replace("%s", target)) + console.USAGE
                self.assert_console(self.generate(target=target), 8, text)

    def test_target_that_is_no_directory(self) -> None:
        fifo = self.directory / "fifo"
        os.mkfifo(fifo)
        for target in (self.config_file, fifo):
            with self.subTest(target=target.name):
                text = console.info(f"Generating signed integrity files for: '{target}'.\n")
                text += console.err(NOT_A_DIRECTORY.replace("%s", f"{target}/"))
                self.assert_console(self.generate(target=target), 8, text)

    def test_output_folder_blocked_by_a_file(self) -> None:
        for blocking in ("Quorvane", "Quorvane/Certificates"):
            with self.subTest(blocking=blocking):
                path = self.write(blocking, b"in the way")
                self.assert_console(self.generate("-v"), 3, self.until_output())
                self.assertEqual(path.read_bytes(), b"in the way")
                path.unlink()

    def test_output_folder_that_must_not_be_created(self) -> None:
        credentials = self.readable_credentials()
        self.become_unprivileged()
        self.game.chmod(0o555)
        self.assert_console(self.generate(credentials=credentials), 3, self.until_output())
        self.assert_files("bin", under=self.game)

    def test_working_directory_that_is_gone(self) -> None:
        script = 'mkdir gone && cd gone && rmdir ../gone && exec "$0" "$@"'
        arguments = self.generate_arguments(config_file=self.config_file)
        finished = self.run_script(script, *arguments)
        self.assertTrue(console.to_text(finished.stdout).endswith(
            self.until_output() + console.err(NO_CURRENT_DIRECTORY)
        ))
        self.assertEqual((finished.returncode, finished.stderr), (3, b""))
        self.assert_files()

    def test_target_that_must_not_be_entered(self) -> None:
        credentials = self.readable_credentials()
        self.become_unprivileged()
        self.game.chmod(0o600)
        text = console.started(str(self.game), str(self.game)) + console.named_catalogue()
        run = self.generate("-outname", "mod1", credentials=credentials)
        self.assert_console(run, 5, text + console.config_version())

    def test_relative_target_means_another_directory_after_entering_it(self) -> None:
        text = console.started("game", str(self.game)) + console.main_catalogue() + console.config_version()
        text += console.matched("./bin") + console.trusted() + console.runtime_record()
        text += console.err(CONF_NOT_CREATED.replace("%s", "game/Quorvane/Certificates/runtime.conf"))
        self.assert_console(self.generate(target="game"), 3, text)
        self.assert_files()
        self.assertTrue(self.output.is_dir())

    def test_relative_target_with_the_same_path_inside_it(self) -> None:
        inner = self.game / "game/Quorvane/Certificates"
        inner.mkdir(parents=True)
        self.assertEqual(self.generate(target="game").status, 0)
        self.assert_files("base.bin", "base.cer", "runtime.conf", under=inner)
        self.assert_files()

    def test_dot_as_target_means_the_same_directory_throughout(self) -> None:
        arguments = self.generate_arguments(config_file=self.config_file, target=".")
        run = self.run_program(*arguments, cwd=self.game)
        text = self.until_hashing() + console.hashing("./bin/a.dat")
        text += console.created(self.folder) + console.copied(self.folder)
        text = text.replace(self.folder, "./Quorvane/Certificates/").replace(f"for: '{self.game}'", "for: '.'")
        self.assert_console(run, 0, text)
        self.assert_catalogue(self.output / "base.bin", ["./bin/a.dat"])


class OutputFiles(OneFileTest):
    """Files that cannot be created or written; the certificate is copied after a failed catalogue."""

    def expected(self, name: str, code_lines: str, copy: str = "") -> str:
        if name == "runtime.conf":
            return self.until_collected() + console.trusted() + console.runtime_record() + code_lines
        return self.until_hashing() + console.hashing("./bin/a.dat") + code_lines + copy

    def assert_blocked(self, name: str, status: int, lines: str, copy: str = "", **choices) -> None:
        self.assert_console(self.generate(**choices), status, self.expected(name, lines, copy))

    def cases(self, catalogue: str, conf: str, copy: str):
        """The status and text for each output file if its fault has these messages."""
        failed = console.err(catalogue.replace("%s", f"{self.folder}base.bin"))
        failed += console.not_created(8, "CatalogueIOError") + console.copied(self.folder)
        return (
            ("base.bin", 8, failed),
            ("runtime.conf", 3, console.err(conf.replace("%s", f"{self.folder}runtime.conf"))),
            ("base.cer", 27, console.created(self.folder) + console.err(copy)),
        )

    def test_directory_or_fifo_in_the_place_of_a_file(self) -> None:
        for make in (os.mkdir, os.mkfifo):
            for name, status, lines in self.cases(NOT_OPENED, CONF_NOT_CREATED, console.COPY_NOT_OPENED):
                with self.subTest(name=name, made_by=make.__name__):
                    self.output.mkdir(parents=True)
                    make(self.output / name)
                    self.assert_blocked(name, status, lines)
                    shutil.rmtree(self.output)

    @unittest.skipUnless(HAS_FULL, "needs /dev/full")
    def test_full_device(self) -> None:
        for name, status, lines in self.cases(NOT_WRITTEN, CONF_NOT_WRITTEN, console.COPY_NOT_WRITTEN):
            with self.subTest(name=name):
                self.output.mkdir(parents=True)
                (self.output / name).symlink_to("/dev/full")
                self.assert_blocked(name, status, lines)
                shutil.rmtree(self.output)

    def test_files_that_must_not_be_written(self) -> None:
        credentials = self.readable_credentials()
        for name in ("base.bin", "runtime.conf", "base.cer"):
            self.write(f"Quorvane/Certificates/{name}", b"kept")
        self.become_unprivileged()
        for name, status, lines in self.cases(NOT_OPENED, CONF_NOT_CREATED, console.COPY_NOT_OPENED):
            with self.subTest(name=name):
                path = self.output / name
                path.write_bytes(b"kept")
                path.chmod(0o444)
                self.assert_blocked(name, status, lines, credentials=credentials)
                self.assertEqual(path.read_bytes(), b"kept")
                path.chmod(0o644)

    def test_name_in_a_missing_directory(self) -> None:
        run = self.generate("-outname", "gone/mod")
        text = console.started(str(self.game), str(self.game)) + console.named_catalogue()
        text += console.config_version() + console.matched("./bin") + console.hashing("./bin/a.dat")
        text += console.err(NOT_OPENED.replace("%s", "gone/mod.bin")) + console.not_created(8, "CatalogueIOError")
        self.assert_console(run, 27, text + console.err(console.COPY_NOT_OPENED))


if __name__ == "__main__":
    unittest.main()
