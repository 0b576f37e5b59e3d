"""Listing: how the kind of a file is told, and what is printed."""

import errno
import os
import struct
import unittest
from dataclasses import replace

import catalogue_format
import e2e_console as console
import e2e_read_back as texts
import runtime_conf_format
from catalogue_entry import PATH_FIELD_SIZE, entry_of_bytes
from e2e_support import GOOD
from signed_game import SignedGameTest, changed_at


def with_path_field(field: bytes):
    """An entry with this path field, padded with zero bytes."""
    return replace(entry_of_bytes("x", b""), path_field=field.ljust(PATH_FIELD_SIZE, b"\0"))


class Catalogues(SignedGameTest):
    """Files that begin with the magic."""

    def assert_paths(self, *paths: str) -> None:
        path = self.put_catalogue(entry_of_bytes(name, b"content") for name in paths)
        self.assert_catalogue_listed(path, paths)

    def test_no_entry(self) -> None:
        self.assert_paths()

    def test_one_entry(self) -> None:
        self.assert_paths("bin/a.dat")

    def test_several_entries_in_file_order(self) -> None:
        self.assert_paths("z", "a", "Dir/B", "a", "dir/with blank/%s%n%d")

    def test_names_beyond_ascii(self) -> None:
        self.assert_paths("Wölfe im Schnee.png", "日本語.txt", "emoji/\U0001f600.pak", "\uffff", "\U0010ffff")

    def test_backslash_is_shown_as_slash(self) -> None:
        path = self.put_catalogue([with_path_field("a\\b\\".encode("utf-16-le"))])
        self.assert_catalogue_listed(path, ["a/b/"])

    def test_empty_path(self) -> None:
        self.assert_catalogue_listed(self.put_catalogue([with_path_field(b"")]), [""])

    def test_path_that_fills_its_field(self) -> None:
        for path in ("d/" + "n" * 254, "é" * 256, "\U0001f600" * 128):
            with self.subTest(first=path[0]):
                catalogue = self.put_catalogue([with_path_field(path.encode("utf-16-le"))])
                self.assert_catalogue_listed(catalogue, [path])

    def test_path_with_line_feed_and_controls(self) -> None:
        self.assert_paths("two\nlines", "tab\there", "\x1b[0m")

    def test_path_that_is_no_utf16(self) -> None:
        cases = {
            "low surrogate": (b"a\x00\x00\xdcb\x00", errno.EILSEQ),
            "high surrogate before a letter": (b"\x00\xd8b\x00", errno.EILSEQ),
            "high surrogate at the end": (b"a\x00\x00\xd8", errno.EINVAL),
        }
        for name, (field, number) in cases.items():
            with self.subTest(name=name):
                catalogue = self.put_catalogue([with_path_field(field)])
                shown = f"utf16_to_wchar iconv ERROR {os.strerror(number)}"
                self.assert_catalogue_listed(catalogue, [shown])

    def test_signature_is_not_checked(self) -> None:
        image = self.put_catalogue([entry_of_bytes("a", b"")]).read_bytes()
        unsigned = catalogue_format.with_signature(image, b"")
        wrong, older = changed_at(image, 8), changed_at(image, 6)
        for name, changed in (("unsigned", unsigned), ("wrong", wrong), ("older layout", older)):
            with self.subTest(name=name):
                self.assert_catalogue_listed(self.put_image(changed), ["a"])

    def test_certificate_is_not_looked_for(self) -> None:
        path = self.put_catalogue([entry_of_bytes("a", b"")])
        (self.output / "base.cer").unlink()
        self.assert_catalogue_listed(path, ["a"])

    def test_revocation_list_is_skipped(self) -> None:
        path = self.put_catalogue([entry_of_bytes("a", b"")], crl=bytes(range(256)) * 300)
        self.assert_catalogue_listed(path, ["a"])

    def test_name_of_the_file_means_nothing(self) -> None:
        image = self.put_catalogue([entry_of_bytes("a", b"")]).read_bytes()
        for name in ("runtime.conf", "no extension", "é.\\cer", "%s%n"):
            with self.subTest(name=name):
                path = self.output / name
                path.write_bytes(image)
                self.assert_catalogue_listed(path, ["a"])

    def test_path_is_resolved(self) -> None:
        path = self.put_catalogue([entry_of_bytes("a", b"")])
        (self.directory / "link").symlink_to(path)
        for given in ("link", "game/../game/Quorvane//Certificates/./base.bin"):
            with self.subTest(given=given):
                run = self.list_file(given)
                self.assert_console(run, 0, texts.list_begun(path) + texts.listed(["a"]))

    def test_options_and_positional_arguments_change_nothing(self) -> None:
        path = self.put_catalogue([entry_of_bytes("a", b"")])
        run = self.run_program("-v", "-gamedev", "list", path, "some.cfg", "other.cfg")
        self.assert_console(run, 0, texts.list_begun(path) + texts.listed(["a"]))

    def test_header_that_does_not_fit(self) -> None:
        image = self.put_catalogue([entry_of_bytes("a", b"")], crl=b"crl").read_bytes()
        cases = {
            "version 3": image[:4] + b"\x03\x00" + image[6:],
            "version 5": image[:4] + b"\x05\x00" + image[6:],
            "version 0x0104": image[:4] + b"\x04\x01" + image[6:],
            "one byte more": image + b"\0",
            "one byte less": image[:-1],
            "another revocation list": changed_at(image, 1036),
            "another block": changed_at(image, 1040),
        }
        for name, changed in cases.items():
            with self.subTest(name=name):
                self.assert_listed(self.put_image(changed), 9, texts.not_listed(9))

    def test_lengths_are_only_summed(self) -> None:
        """A block that does not begin where the writer put it does not begin with its magic."""
        image = self.put_catalogue([], crl=b"crl").read_bytes()
        lengths = struct.pack("<II", 1, len(image) - 1052 - 1)
        self.assert_catalogue_listed(self.put_image(image[:1036] + lengths + image[1044:]), [])


class RuntimeConf(SignedGameTest):
    """Everything that does not begin with the magic."""

    def put_plain(self, plain: bytes):
        path = self.output / "runtime.conf"
        path.write_bytes(runtime_conf_format.scramble(plain))
        return path

    def plain(self, *settings, **choices) -> bytes:
        return runtime_conf_format.unscramble(runtime_conf_format.build(*settings, **choices))

    def test_settings(self) -> None:
        for number, solution in enumerate(runtime_conf_format.ANTI_TAMPER_SOLUTIONS):
            with self.subTest(solution=solution):
                path = self.put_runtime_conf(number, b"Crash%sReporter", number)
                self.assert_listed(path, 0, texts.listed_settings(number, "Crash%sReporter", solution))

    def test_defaults(self) -> None:
        self.assert_listed(self.put_runtime_conf(), 0, texts.listed_settings())

    def test_largest_instance_count(self) -> None:
        self.assert_listed(self.put_runtime_conf(2**32 - 1), 0, texts.listed_settings(2**32 - 1))

    def test_names(self) -> None:
        cases = {
            "63 bytes": (b"x" * 63, "x" * 63),
            "64 bytes": (b"y" * 64, "y" * 64),
            "zero inside": (b"cut\0here", "cut"),
            "zero first": (b"\0here", "N/A"),
            "UTF-8": ("Übergabe".encode(), "Übergabe"),
            "not UTF-8": (b"\xff\xfe", "\udcff\udcfe"),
            "backslash": (b"a\\b", "a/b"),
        }
        for case, (name, shown) in cases.items():
            with self.subTest(name=case):
                self.assert_listed(self.put_runtime_conf(1, name), 0, texts.listed_settings(1, shown))

    def test_name_of_64_bytes_before_a_solution(self) -> None:
        """Only the end of its field ends the name."""
        path = self.put_runtime_conf(1, b"n" * 64, 0x01)
        self.assert_listed(path, 0, texts.listed_settings(1, "n" * 64, "Generic"))

    def test_unknown_solution(self) -> None:
        for value in (9, 0x100, 2**31, 2**32 - 1):
            with self.subTest(value=value):
                path = self.put_runtime_conf(3, b"name", value)
                text = texts.settings_until_solution(3, "name")
                text += console.err(f"Called with invalid value: {value}.\n") + texts.solution_line("N/A")
                self.assert_listed(path, 0, text)

    def test_other_versions(self) -> None:
        for version in (0, 2, 0x10001, 2**32 - 1):
            with self.subTest(version=version):
                path = self.put_plain(self.plain(version=version))
                self.assert_listed(path, 10, texts.settings_version(version) + texts.UNSUPPORTED_VERSION)

    def test_signature_is_not_checked(self) -> None:
        plain = self.plain(7)
        wrong, long = changed_at(plain, 4), changed_at(plain, 1031, 255)
        for name, changed in (("none", plain), ("wrong", wrong), ("length", long)):
            with self.subTest(name=name):
                self.assert_listed(self.put_plain(changed), 0, texts.listed_settings(7))

    def test_wrong_magic(self) -> None:
        for offset in range(4):
            with self.subTest(offset=offset):
                path = self.put_plain(changed_at(self.plain(), offset))
                self.assert_listed(path, 9, texts.UNSUPPORTED_FORMAT)

    def test_longer_file_is_unscrambled_from_its_own_end(self) -> None:
        signed = self.put_runtime_conf().read_bytes()
        path = self.output / "runtime.conf"
        path.write_bytes(signed + b"\0")
        self.assert_listed(path, 9, texts.UNSUPPORTED_FORMAT)

    def test_longer_file_whose_magic_is_right(self) -> None:
        path = self.put_plain(self.plain(5) + b"more than the settings")
        self.assert_listed(path, 0, texts.listed_settings(5))

    def test_name_of_the_file_means_nothing(self) -> None:
        path = self.put_runtime_conf().rename(self.output / "base.bin")
        self.assert_listed(path, 0, texts.listed_settings())


class Sizes(SignedGameTest):
    """Files too short to be either."""

    def assert_size(self, begin: bytes, size: int, text: str) -> None:
        path = self.directory / "short"
        path.write_bytes(begin.ljust(size, b"\x07")[:size])
        with self.subTest(begin=begin, size=size):
            self.assert_listed(path, 9, text)

    def test_below_the_header_there_is_no_message(self) -> None:
        for begin in (b"", b"QVR\0"):
            for size in (0, 1, 2, 4, 1031, 1050, 1051):
                self.assert_size(begin, size, "")

    def test_below_the_settings_the_size_is_told(self) -> None:
        for begin in (b"", b"QVR", b"qvr\0"):
            for size in (1052, 1053, 1107):
                self.assert_size(begin, size, texts.too_small(size))

    def test_settings_without_magic(self) -> None:
        for size in (1108, 5000):
            self.assert_size(b"", size, texts.UNSUPPORTED_FORMAT)

    def test_catalogue_magic_counts_from_the_size_of_its_header(self) -> None:
        for size in (1052, 1107, 1108):
            self.assert_size(b"QVR\0", size, texts.not_listed(9))


class Unreadable(SignedGameTest):
    """What does not open or read like a file."""

    def test_directory(self) -> None:
        self.assert_listed(self.game, 8, texts.unread_list(self.game))

    def test_fifo_does_not_stop_the_run(self) -> None:
        path = self.directory / "fifo"
        os.mkfifo(path)
        self.assert_listed(path, 8, texts.unread_list(path))

    def test_unreadable_by_permission(self) -> None:
        path = self.put_catalogue([entry_of_bytes("a", b"")])
        self.become_unprivileged()
        path.chmod(0)
        self.assert_listed(path, 8, texts.unread_list(path))

    def test_path_that_leads_nowhere(self) -> None:
        (self.directory / "dangling").symlink_to("gone")
        for name in ("gone", "dangling", str(GOOD.certificate / "x")):
            with self.subTest(name=name):
                run = self.list_file(name)
                self.assert_console(run, 1, texts.unresolved(name) + console.USAGE)


if __name__ == "__main__":
    unittest.main()
