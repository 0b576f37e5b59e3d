"""Games with unusual names and file types."""

import fcntl
import os
import shutil
import socket
import subprocess
import sys
import unittest

import e2e_console as console
from e2e_support import PROGRAM, TIMEOUT_SECONDS, EndToEndTest, config

NOT_OPENED = "The following path couldn't be opened: '%s'. (%u)"
UNABLE = "Unable to open '%s'.\n"
TOO_LONG = "Path too long for the catalogue: '%s'.\n"
F_SETPIPE_SZ = 1031
"""Missing from the module fcntl before Python 3.10."""

UNCONVERTED = "U82W_ERROR"
SEALKEEPER_INSIDE = (
    "It is not recommended to run the sealkeeper from the target directory! The tool itself must not be "
    "distributed to end-users!\n"
)
BIN = 'include_paths = ["bin"]'


class Names(EndToEndTest):
    """Names that need care."""

    def test_characters_of_all_kinds(self) -> None:
        names = [
            " ", "!", '"quoted"', "%s%n%d%%", "'", "(x)", "[a]*?", "\u00e9", "e\u0301", "tab\there", "two  words ",
            "x\nline\rbreak", "\u65e5\u672c\u8a9e/\u6f22", "\ufeffmark", "\U0001f600/\U0010ffff", "~", "-v",
            "\x01\x1b[31m", "\x7f", "CON", "a:b", "$HOME", "`x`", "{}", ";",
        ]
        for name in names:
            self.write(f"bin/{name}", name.encode())
        paths = sorted(f"./bin/{name}" for name in names)
        self.assert_collected(BIN, console.matched("./bin"), paths)

    def test_backslash_in_a_name_becomes_a_slash(self) -> None:
        self.write("bin/a\\b\\c.dll", b"x")
        self.assert_collected(BIN, console.matched("./bin"), ["./bin/a\\b\\c.dll"])
        self.assertEqual(self.stored_paths(), ["bin/a/b/c.dll"])

    def test_patterns_of_all_kinds(self) -> None:
        for name in ("a b", "a[b", "%s%n", "\u00e9\U0001f600", "line\rbreak", "{x}", "#"):
            with self.subTest(name=name):
                path = self.write(name, b"x")
                pattern = f"./{name}"
                self.assert_collected(f'include_paths = ["{name}"]', console.matched(pattern), [pattern])
                path.unlink()

    def test_names_that_are_not_utf8_all_become_one_text(self) -> None:
        for name in ("bin/\udcff", "bin/x\udcc3", "bin/\udced\udca0\udc80"):
            self.write(name, b"not empty")
        self.write("bin/ok", b"x")
        # A converted name without a leading "./" sorts after those with one.
        lines = console.hashing("./bin/ok") + console.empty_file(UNCONVERTED) * 3
        run = self.collect(BIN)
        self.assert_console(run, 0, self.collected_text(console.matched("./bin"), lines))
        self.assert_catalogue(self.output / "base.bin", ["./bin/ok"] + [UNCONVERTED] * 3)

    def test_game_directory_with_an_odd_name(self) -> None:
        config_file = self.write_config(config(BIN))
        for name in ("my game [1]*", "%s%n", "é\U0001f600", "line\nbreak", "back\\slash"):
            with self.subTest(name=name):
                self.game = self.directory / name
                self.write("bin/a", b"a")
                run = self.run_program(*self.generate_arguments(config_file=config_file))
                text = self.collected_text(console.matched("./bin"), console.hashing("./bin/a"))
                self.assert_console(run, 0, text.replace("\\", "/"))
                self.assert_catalogue(self.output / "base.bin", ["./bin/a"])

    def test_game_directory_that_is_not_utf8_holds_no_catalogue(self) -> None:
        # Catalogue paths are text, but the certificate copy and runtime.conf are named by bytes.
        self.game = self.directory / "\udcff"
        self.write("bin/a", b"a")
        run = self.collect(BIN)
        end = console.err(f"Failed to open file: '{self.folder}base.bin'.\n")
        end += console.not_created(8, "CatalogueIOError") + console.copied(self.folder)
        self.assertEqual((run.status, run.output.endswith(end)), (8, True), run.output)
        self.assert_files("base.cer", "runtime.conf")
        self.assert_files("Quorvane", "bin", under=self.game)


class Lengths(EndToEndTest):
    """Paths around the limit of the catalogue: 255 UTF-16 units."""

    # File systems limit names to 255 bytes, so the units are spread over several names.
    LONGEST = (
        "d" * 100 + "/" + "f" * 154,
        "d" * 100 + "/" + "\u00e9" * 77 + "/" + "\u00e9" * 76,
        "d" * 99 + "/" + "\U0001f600" * 38 + "/" + "\U0001f600" * 39,
    )

    def units(self, path: str) -> int:
        return len(path.encode("utf-16-le")) // 2

    def test_longest(self) -> None:
        for path in self.LONGEST:
            with self.subTest(path=path[100:103]):
                self.assertEqual(self.units(path), 255)
                self.write(path, b"x")
                self.assert_collected('include_paths = ["d*"]', console.matched("./d*"), [f"./{path}"])
                shutil.rmtree(self.game)

    def assert_too_long(self, run, path: str) -> None:
        self.assertEqual(run.status, 7)
        end = console.err(TOO_LONG.replace("%s", f"./{path}")) + console.not_created(7, "CatalogueError")
        self.assertTrue(run.output.endswith(end + console.copied(self.folder)), run.output)
        self.assertFalse((self.output / "base.bin").exists())

    def test_one_unit_too_many(self) -> None:
        for path in ("d" + path for path in self.LONGEST):
            with self.subTest(path=path[100:103]):
                self.assertEqual(self.units(path), 256)
                self.write(path, b"x")
                self.assert_too_long(self.collect('include_paths = ["d*"]'), path)
                shutil.rmtree(self.game)

    def test_single_file(self) -> None:
        # Only the first "./" is not stored.
        longest = "./" * 100 + "f" * 55
        run = self.run_program(*self.generate_arguments("-target_file", f"./{longest}"))
        self.assertEqual((run.status, self.stored_paths()), (0, [longest]))
        shutil.rmtree(self.output)
        run = self.run_program(*self.generate_arguments("-target_file", f"./{longest}f"))
        self.assert_too_long(run, f"{longest}f")


class Entries(EndToEndTest):
    """Directory entries that are neither plain files nor directories."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/file", b"file")
        self.write("other/inside", b"inside")
        (self.game / "bin/link").symlink_to("file")
        (self.game / "bin/dirlink").symlink_to("../other")
        (self.game / "bin/dangling").symlink_to("nowhere")
        (self.game / "bin/loop").symlink_to(".")
        os.mkfifo(self.game / "bin/fifo")
        self.listener = socket.socket(socket.AF_UNIX)
        self.addCleanup(self.listener.close)
        self.listener.bind(str(self.game / "bin/socket"))

    def test_walking_passes_over_them(self) -> None:
        self.assert_collected(BIN, console.matched("./bin"), ["./bin/file"])
        shutil.rmtree(self.output)
        self.assert_collected(
            'exclude_paths = ["Quorvane", "other"]', console.matched("./Quorvane", "./other"), ["./bin/file"]
        )

    def test_links_named_directly_are_followed(self) -> None:
        names = ["./bin/link", "./bin/dirlink", "./bin/loop/file"]
        paths = ["./bin/dirlink/inside", "./bin/link", "./bin/loop/file"]
        patterns = ", ".join(f'"{name[2:]}"' for name in names)
        self.assert_collected(f"include_paths = [{patterns}]", console.matched(*names), paths)

    def test_others_named_directly_do_not_match(self) -> None:
        options = 'include_paths = ["bin/fifo", "bin/socket", "bin/dangling", "bin/file"]'
        lines = console.unmatched("./bin/fifo", "./bin/socket", "./bin/dangling") + console.matched("./bin/file")
        self.assert_collected(options, lines, ["./bin/file"])

    def test_wildcards_take_them_all(self) -> None:
        for name in ("fifo", "socket"):
            with self.subTest(name=name):
                pattern = f"./bin/{name[:-1]}?"
                path = f"./bin/{name}"
                run = self.collect(f'include_paths = ["{pattern[2:]}"]')
                text = self.collected_text(console.matched(pattern), console.empty_file(path))
                self.assert_console(run, 0, text)
                # Read from a directory without it, since the independent writer must not open a FIFO either.
                self.assert_catalogue(self.output / "base.bin", [path], base=self.directory)

    def test_dangling_link_matched_by_a_wildcard_cannot_be_opened(self) -> None:
        run = self.collect('include_paths = ["bin/dang*", "bin/file"]')
        lines = console.matched("./bin/dang*", "./bin/file")
        complaint = console.err(NOT_OPENED.replace("%s", "./bin/dangling").replace("%u", "2"))
        text = self.collected_text(lines, complaint + console.hashing("./bin/file"))
        self.assert_console(run, 0, text)
        self.assert_catalogue(self.output / "base.bin", ["./bin/file"])

    def test_link_to_the_game_directory_itself(self) -> None:
        link = self.directory / "link"
        link.symlink_to("game")
        run = self.run_program(*self.generate_arguments(target=link, config_file=self.write_config(config(BIN))))
        text = self.collected_text(console.matched("./bin"), console.hashing("./bin/file"))
        text = text.replace(f"for: '{self.game}'", f"for: '{link}'").replace(self.folder, f"{link}/Quorvane/Certificates/")
        self.assert_console(run, 0, text)


class Directories(EndToEndTest):
    """Directories that cannot be walked, and deep or empty ones."""

    def test_unreadable_directory_is_left_out(self) -> None:
        credentials = self.readable_credentials()
        self.write("bin/a", b"a")
        self.write("bin/secret/b", b"b")
        self.write("bin/z", b"z")
        config_file = self.write_config(config(BIN))
        self.become_unprivileged()
        (self.game / "bin/secret").chmod(0)
        run = self.run_program(*self.generate_arguments(config_file=config_file, credentials=credentials))
        hashed = console.err(UNABLE.replace("%s", "./bin/secret/")) + console.hashing("./bin/a", "./bin/z")
        self.assert_console(run, 0, self.collected_text(console.matched("./bin"), hashed))
        self.assert_catalogue(self.output / "base.bin", ["./bin/a", "./bin/z"])

    def test_directory_that_can_be_listed_but_not_entered(self) -> None:
        credentials = self.readable_credentials()
        self.write("bin/half/b", b"b")
        config_file = self.write_config(config(BIN))
        self.become_unprivileged()
        (self.game / "bin/half").chmod(0o444)
        run = self.run_program(*self.generate_arguments(config_file=config_file, credentials=credentials))
        # The size of the file cannot be read, so the file counts as empty.
        hashed = console.empty_file("./bin/half/b")
        self.assert_console(run, 0, self.collected_text(console.matched("./bin"), hashed))
        self.assertEqual(self.stored_paths(), ["bin/half/b"])

    def test_empty_and_deep_directories(self) -> None:
        (self.game / "bin/empty/er").mkdir(parents=True)
        deep = "bin/" + "d/" * 120 + "f"
        self.write(deep, b"deep")
        self.assert_collected(BIN, console.matched("./bin"), [f"./{deep}"])

    def test_hidden_directory(self) -> None:
        self.write("bin/.git/config", b"x")
        self.write("bin/a", b"a")
        self.assert_collected(BIN, console.matched("./bin"), ["./bin/a"])
        self.assert_collected('include_paths = ["bin/.git"]', console.matched("./bin/.git"), ["./bin/.git/config"])


class ProgramInside(EndToEndTest):
    """A file in the game directory with the name of the program leads to a warning only."""

    def assert_warned(self, first_argument, lines: str) -> None:
        config_file = self.write_config(config(BIN))
        arguments = self.generate_arguments(config_file=config_file)
        run = self.run_program(*arguments, first_argument=first_argument)
        text = self.collected_text(console.matched("./bin") + lines, console.hashing("./bin/a"))
        with self.subTest(first_argument=first_argument):
            self.assert_console(run, 0, text)

    def test_base_name_of_the_program_path_counts(self) -> None:
        self.write("bin/a", b"a")
        self.write("sealkeeper", b"any file of that name")
        self.write("renamed", b"another")
        warning = console.warn(SEALKEEPER_INSIDE)
        for path in (None, "sealkeeper", "/tools/sealkeeper", "C:\\tools\\sealkeeper", "a\\b/renamed", "a/b\\renamed"):
            self.assert_warned(path, warning)
        for path in ("./other", "sealkeeper.exe", "Sealkeeper", "sealkeeperr"):
            self.assert_warned(path, "")

    def test_program_path_without_a_base_name_is_taken_whole(self) -> None:
        self.write("bin/a", b"a")
        self.assert_warned("gone/", "")

    def test_run_from_the_game_directory(self) -> None:
        self.write("bin/a", b"a")
        self.program = shutil.copy(PROGRAM, self.game / "sealkeeper")
        run = self.run_program(*self.generate_arguments(config_file=self.write_config(config(BIN))), cwd=self.game)
        text = self.collected_text(
            console.matched("./bin") + console.warn(SEALKEEPER_INSIDE), console.hashing("./bin/a")
        )
        self.assert_console(run, 0, text)


@unittest.skipUnless(sys.platform.startswith("linux"), "the size of a pipe can be set on Linux only")
class FilesThatGo(EndToEndTest):
    """Files that exist when files are collected, but are gone at their turn."""

    def test_vanished_file_is_recorded_as_empty(self) -> None:
        # The console is a pipe of one page, read only up to the line about the first file. By then the program has
        # collected everything, and it cannot reach the last file before the pipe is read.
        names = [f"{number:03}{'n' * 180}" for number in range(200)] + ["last"]
        for name in names:
            self.write(f"bin/{name}", b"x")
        arguments = self.generate_arguments(config_file=self.write_config(config(BIN)))
        reading, writing = os.pipe()
        fcntl.fcntl(writing, F_SETPIPE_SZ, 4096)
        with subprocess.Popen([str(PROGRAM), *arguments], stdout=writing) as process, open(reading, "rb", 0) as pipe:
            os.close(writing)
            output = b""
            while b"Hashing" not in output:
                byte = pipe.read(1)
                self.assertNotEqual(byte, b"", output)
                output += byte
            (self.game / "bin/last").unlink()
            output += pipe.read()
            self.assertEqual(process.wait(TIMEOUT_SECONDS), 0)
        self.assertIn(console.empty_file("./bin/last"), console.to_text(output))
        self.assert_catalogue(self.output / "base.bin", [f"./bin/{name}" for name in names])


if __name__ == "__main__":
    unittest.main()
