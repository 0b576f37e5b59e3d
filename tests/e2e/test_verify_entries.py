"""Entries that no writer makes: how verify resolves their paths, sizes and digests."""

import errno
import hashlib
import os
import unittest
from dataclasses import replace

from catalogue_entry import CHUNK_SIZE, PATH_FIELD_SIZE, Entry, entry_of_bytes
from signed_game import THREE_CHUNKS, SignedGameTest, changed_at

NO_BYTES = hashlib.sha256(b"").digest()


class Entries(SignedGameTest):
    """Entries that no writer makes, in a signed catalogue."""

    def assert_entry(self, entry: Entry, code: int, shown: str = "a") -> None:
        self.put_catalogue([entry])
        self.assert_verified(code, [(shown, code)])

    def test_size_zero(self) -> None:
        self.write("a")
        entry = entry_of_bytes("a", b"")
        self.assert_entry(entry, 0)
        self.assert_entry(replace(entry, digests=(bytes(32),)), 0)
        self.write("a", b"x")
        self.assert_entry(entry, 24)
        (self.game / "a").unlink()
        self.assert_entry(entry, 23)

    def test_more_digests_than_chunks(self) -> None:
        for content in (b"a", bytes(CHUNK_SIZE)):
            self.write("a", content)
            entry = entry_of_bytes("a", content)
            with self.subTest(size=len(content)):
                self.assert_entry(replace(entry, digests=entry.digests + (NO_BYTES,)), 0)
                self.assert_entry(replace(entry, digests=entry.digests + (NO_BYTES,) * 40), 0)
                self.assert_entry(replace(entry, digests=entry.digests + (bytes(32),)), 26)
                self.assert_entry(replace(entry, digests=entry.digests + (NO_BYTES, bytes(32))), 26)
                self.assert_entry(replace(entry, digests=entry.digests * 2), 26)

    def test_fewer_digests_than_chunks(self) -> None:
        self.write("a", changed_at(THREE_CHUNKS, CHUNK_SIZE))
        entry = entry_of_bytes("a", THREE_CHUNKS)
        self.assert_entry(replace(entry, digests=entry.digests[:1]), 0)
        self.assert_entry(replace(entry, digests=entry.digests[:2]), 26)
        self.assert_entry(replace(entry, digests=()), 0)

    def test_no_digest_still_compares_the_size(self) -> None:
        self.write("a", b"four")
        self.assert_entry(replace(entry_of_bytes("a", b"five5"), digests=()), 24)

    def test_sizes_beyond_any_file(self) -> None:
        self.write("a", b"a")
        for size in (2**32 + 1, 2**63 - 1, 2**63, 2**64 - 1):
            with self.subTest(size=size):
                self.assert_entry(replace(entry_of_bytes("a", b"a"), size=size), 24)

    def test_name_position_is_not_looked_at(self) -> None:
        self.write("a", b"a")
        self.assert_entry(replace(entry_of_bytes("a", b"a"), name_position=2**32 - 1), 0)

    def test_absolute_path(self) -> None:
        path = self.directory / "outside"
        path.write_bytes(b"content")
        self.assert_entry(entry_of_bytes(str(path), b"content"), 0, str(path))
        self.assert_entry(entry_of_bytes(str(path), b"Content"), 26, str(path))

    def test_path_that_leaves_the_game(self) -> None:
        (self.directory / "outside").write_bytes(b"content")
        self.write("d/inside", b"inside")
        self.assert_entry(entry_of_bytes("../outside", b"content"), 0, "../outside")
        self.assert_entry(entry_of_bytes("d/../../game/d//inside", b"inside"), 0, "d/../../game/d//inside")
        self.assert_entry(entry_of_bytes("../gone", b"content"), 23, "../gone")

    def test_path_is_no_pattern(self) -> None:
        self.write("a", b"a")
        for path in ("*", "?", "[a]", "~/a", "$HOME"):
            with self.subTest(path=path):
                self.assert_entry(entry_of_bytes(path, b"a"), 23, path)

    def test_path_with_backslash_is_shown_with_slash(self) -> None:
        """The file is opened by its unchanged name. Only the console replaces the backslash."""
        self.write("d\\a", b"a")
        entry = self.with_field("d\\a".encode("utf-16-le"))
        self.assert_entry(entry, 0, "d/a")
        (self.game / "d\\a").unlink()
        self.write("d/a", b"a")
        self.assert_entry(entry, 23, "d/a")

    def test_empty_path(self) -> None:
        self.assert_entry(self.with_field(b""), 23, "")

    def test_path_that_is_no_utf16(self) -> None:
        shown = f"utf16_to_wchar iconv ERROR {os.strerror(errno.EILSEQ)}"
        self.assert_entry(self.with_field(b"\x00\xdca\x00"), 23, shown)

    def test_path_that_fills_its_field(self) -> None:
        path = "d/" + "n" * 251 + "/xy"
        self.write(path, b"a")
        self.assert_entry(self.with_field(path.encode("utf-16-le")), 0, path)

    def test_path_with_line_feed(self) -> None:
        self.write("two\nlines", b"a")
        self.assert_entry(entry_of_bytes("two\nlines", b"a"), 0, "two\nlines")

    def test_path_put_in_by_an_alias(self) -> None:
        """With four bytes per character, only the first one comes before a zero unit."""
        self.write("b", b"a")
        self.assert_entry(self.with_field("bin/a".encode("utf-32-le")), 0, "b")

    def test_character_above_16_bits(self) -> None:
        path = "\U0001f600/\U0010ffff"
        self.write(path, b"a")
        self.assert_entry(entry_of_bytes(path, b"a"), 0, path)

    @staticmethod
    def with_field(field: bytes) -> Entry:
        return replace(entry_of_bytes("x", b"a"), path_field=field.ljust(PATH_FIELD_SIZE, b"\0"))


if __name__ == "__main__":
    unittest.main()
