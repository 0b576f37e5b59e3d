"""Verifying games that differ from their catalogues, and catalogues that are not trustworthy."""

import os
import unittest
from typing import Sequence

import catalogue_format
from catalogue_entry import CHUNK_SIZE, entry_of_bytes
from e2e_support import CREDENTIALS, PRODUCT, Credentials
from signed_game import THREE_CHUNKS, SignedGameTest, changed_at


class OneFile(SignedGameTest):
    """A file of three chunks among others that do not change."""

    def setUp(self) -> None:
        super().setUp()
        self.put_catalogue(self.put_files({"a": b"a", "data/big.pak": THREE_CHUNKS, "z": b"z"}))
        self.put_runtime_conf()
        self.big = self.game / "data/big.pak"

    def assert_big(self, code: int) -> None:
        checked = [("a", 0), ("data/big.pak", code), ("z", 0)]
        self.assert_verified(code, checked, self.runtime_text())

    def test_one_byte_changed(self) -> None:
        offsets = {
            "first byte": 0,
            "end of the first chunk": CHUNK_SIZE - 1,
            "begin of the second chunk": CHUNK_SIZE,
            "end of the second chunk": 2 * CHUNK_SIZE - 1,
            "begin of the third chunk": 2 * CHUNK_SIZE,
            "last byte": len(THREE_CHUNKS) - 1,
        }
        for name, offset in offsets.items():
            with self.subTest(name=name):
                self.big.write_bytes(changed_at(THREE_CHUNKS, offset))
                self.assert_big(26)

    def test_first_two_chunks_changed(self) -> None:
        self.big.write_bytes(changed_at(changed_at(THREE_CHUNKS, 1), CHUNK_SIZE + 1))
        self.assert_big(26)

    def test_other_size(self) -> None:
        for size in (0, 1, 2 * CHUNK_SIZE, len(THREE_CHUNKS) - 1, len(THREE_CHUNKS) + 1, 4 * CHUNK_SIZE):
            with self.subTest(size=size):
                os.truncate(self.big, size)
                self.assert_big(24)

    def test_removed(self) -> None:
        self.big.unlink()
        self.assert_big(23)
        self.big.parent.rmdir()
        self.assert_big(23)

    def test_name_in_other_letters(self) -> None:
        self.big.rename(self.big.with_name("BIG.pak"))
        self.assert_big(23)

    def test_fifo_does_not_stop_the_run(self) -> None:
        self.big.unlink()
        os.mkfifo(self.big)
        self.assert_big(23)

    def test_link_to_the_file(self) -> None:
        self.big.rename(self.directory / "elsewhere")
        self.big.symlink_to(self.directory / "elsewhere")
        self.assert_big(0)

    def test_dangling_link(self) -> None:
        self.big.unlink()
        self.big.symlink_to("gone")
        self.assert_big(23)

    def test_unreadable_by_permission(self) -> None:
        self.become_unprivileged()
        self.big.chmod(0)
        self.assert_big(23)


class Directories(SignedGameTest):
    """A directory where a file should be."""

    def test_directory_in_place_of_a_file(self) -> None:
        (self.game / "a").mkdir()
        self.put_catalogue([entry_of_bytes("a", b"a")])
        """It opens, but its size is not that of the file."""
        self.assert_verified(24, [("a", 24)])

    def test_directory_of_the_size_expected(self) -> None:
        folder = self.game / "a"
        folder.mkdir()
        size = folder.stat().st_size
        if size == 0:
            self.skipTest("directories have no size on this file system")
        self.put_catalogue([entry_of_bytes("a", bytes(size))])
        self.assert_verified(23, [("a", 23)])


class Statuses(SignedGameTest):
    """Which one of several codes a run returns."""

    def lay_out(self, codes: Sequence[int]) -> None:
        contents = {f"f{index}": b"content" for index in range(len(codes))}
        entries = self.put_files(contents)
        self.put_catalogue(entries)
        for name, code in zip(contents, codes):
            if code == 23:
                (self.game / name).unlink()
            elif code == 24:
                self.write(name, b"contents")
            elif code == 26:
                self.write(name, b"Content")

    def assert_status(self, status: int, *codes: int) -> None:
        with self.subTest(codes=codes):
            self.lay_out(codes)
            self.assert_verified(status, [(f"f{index}", code) for index, code in enumerate(codes)])

    def test_last_file_decides_when_it_failed(self) -> None:
        self.assert_status(26, 24, 26)
        self.assert_status(26, 23, 0, 24, 26)
        self.assert_status(24, 26, 24)
        self.assert_status(24, 23, 26, 24)
        self.assert_status(23, 26, 24, 0, 23)

    def test_smallest_code_decides_when_it_passed(self) -> None:
        self.assert_status(24, 24, 26, 0)
        self.assert_status(24, 26, 24, 0)
        self.assert_status(23, 26, 24, 23, 0)
        self.assert_status(23, 26, 26, 23, 24, 24, 0, 0)
        self.assert_status(26, 26, 0)

    def test_all_passed(self) -> None:
        self.assert_status(0, 0, 0, 0)

    def test_runtime_conf_that_is_right_changes_nothing(self) -> None:
        self.put_runtime_conf()
        self.lay_out((26, 24, 0))
        self.assert_verified(24, [("f0", 26), ("f1", 24), ("f2", 0)], self.runtime_text())


class Trust(SignedGameTest):
    """Catalogues with wrong certificates or signatures."""

    def setUp(self) -> None:
        super().setUp()
        self.entries = self.put_files({"a": b"a"})

    def test_certificates_that_are_not_trusted(self) -> None:
        cases = {"expired": 30, "expired-revoked": 30, "revoked": 32, "other-name": 31, "foreign": 22, "mod": 22}
        for folder, code in cases.items():
            with self.subTest(folder=folder):
                credentials = Credentials.of(folder)
                self.put_catalogue(self.entries, credentials=credentials)
                self.put_runtime_conf(credentials=credentials)
                self.assert_not_read(code)
                self.assert_not_read(code, "-gamedev")

    def test_another_product(self) -> None:
        self.put_catalogue(self.entries)
        for product in ("TestProduct43", PRODUCT + " ", "*"):
            with self.subTest(product=product):
                self.assert_not_read(31, product=product)
                self.assert_not_read(31, "-gamedev", product=product)

    def test_certificates_that_are_no_der(self) -> None:
        self.put_catalogue(self.entries)
        for name in ("pem.cer", "truncated.cer", "empty.cer", "text.key"):
            with self.subTest(name=name):
                (self.output / "base.cer").write_bytes((CREDENTIALS / "damaged" / name).read_bytes())
                self.assert_not_read(20)
                self.assert_not_read(20, "-gamedev")

    def test_certificates_that_cannot_be_read(self) -> None:
        path = self.put_catalogue(self.entries).with_suffix(".cer")
        path.unlink()
        self.assert_not_read(27)
        self.assert_not_read(27, "-gamedev")
        path.mkdir()
        self.assert_not_read(27)
        path.rmdir()
        os.mkfifo(path)
        self.assert_not_read(27)

    def test_certificate_that_is_unreadable_by_permission(self) -> None:
        path = self.put_catalogue(self.entries).with_suffix(".cer")
        self.become_unprivileged()
        path.chmod(0)
        self.assert_not_read(27)

    def test_certificate_under_another_name(self) -> None:
        path = self.put_catalogue(self.entries).with_suffix(".cer")
        for name in ("BASE.cer", "base.CER", "mod1.cer", "base.bin.cer"):
            path = path.rename(path.with_name(name))
            with self.subTest(name=name):
                self.assert_not_read(27)

    def test_certificate_of_another_key(self) -> None:
        self.put_catalogue(self.entries)
        for folder in ("other-key", "big-key"):
            with self.subTest(folder=folder):
                certificate = Credentials.of(folder).certificate
                (self.output / "base.cer").write_bytes(certificate.read_bytes())
                self.assert_not_read(11)

    def test_no_signature(self) -> None:
        self.put_image(catalogue_format.build(self.entries))
        self.assert_not_read(11)

    def test_signature_of_an_older_layout_in_a_current_one(self) -> None:
        older = self.put_catalogue(self.entries, signature_layout=0).read_bytes()
        signature = catalogue_format.signature(older)
        self.put_image(catalogue_format.with_signature(catalogue_format.build(self.entries), signature))
        self.assert_not_read(11)

    def test_lengths_are_checked_before_the_certificate(self) -> None:
        image = self.put_catalogue(self.entries).read_bytes()
        for name, changed in (("longer", image + b"\0"), ("shorter", image[:-1]), ("version", changed_at(image, 4))):
            with self.subTest(name=name):
                path = self.put_image(changed)
                path.with_suffix(".cer").unlink()
                self.assert_not_read(9)

    def test_certificate_is_checked_before_the_signature(self) -> None:
        image = self.put_catalogue(self.entries).read_bytes()
        self.put_image(changed_at(image, 8), certificate=Credentials.of("expired").certificate)
        self.assert_not_read(30)

    def test_runtime_conf_in_place_of_a_catalogue(self) -> None:
        self.put_image(self.put_runtime_conf().read_bytes())
        self.assert_not_read(9)


if __name__ == "__main__":
    unittest.main()
