"""What verify cannot detect: each of these games has been tampered with and counts as intact.

These are the limits of what is signed, and SECURITY.md lists them. If a test fails here, that page is no longer true.
"""

import os
import shutil
import unittest

from catalogue_entry import with_alias
from e2e_support import GOOD, PRODUCT, Credentials
from signed_game import SignedGameTest

SAME_KEY = Credentials.of("same-key")


class NotProtected(SignedGameTest):
    """A game with a catalogue and a runtime.conf."""

    def setUp(self) -> None:
        super().setUp()
        self.entries = self.put_files({"a": b"a", "data/b": b"b"})
        self.put_catalogue(self.entries)
        self.put_runtime_conf()
        self.assert_intact()

    def assert_intact(self, *options: str, product: str = PRODUCT) -> None:
        run = self.verify_game(*options, product=product)
        self.assertEqual(run.status, 0, run.output)

    def test_rollback_to_an_older_signed_set(self) -> None:
        older = self.directory / "older"
        shutil.copytree(self.game, older)
        self.put_catalogue(self.put_files({"a": b"a, mended", "data/b": b"b"}))
        self.assert_intact()
        shutil.rmtree(self.game)
        shutil.copytree(older, self.game)
        self.assert_intact()

    def test_files_that_no_catalogue_lists(self) -> None:
        self.write("data/added.so", b"anything")
        self.assert_intact()

    def test_link_to_equal_content(self) -> None:
        elsewhere = self.directory / "elsewhere"
        (self.game / "a").rename(elsewhere)
        (self.game / "a").symlink_to(elsewhere)
        self.assert_intact()

    def test_bytes_after_the_certificate(self) -> None:
        with (self.output / "base.cer").open("ab") as certificate:
            certificate.write(b"anything")
        self.assert_intact()

    def test_removed_runtime_conf(self) -> None:
        (self.output / "runtime.conf").unlink()
        self.assert_intact()

    def test_removed_catalogue_beside_another(self) -> None:
        self.put_catalogue(self.put_files({"mod/x": b"x"}), "mod1", credentials=Credentials.of("other-key"))
        self.write("mod/x", b"y")
        self.assertEqual(self.verify_game().status, 26)
        (self.output / "mod1.bin").unlink()
        self.assert_intact()

    def test_another_product_under_the_same_key(self) -> None:
        self.put_catalogue(self.put_files({"a": b"of the other product"}), credentials=SAME_KEY)
        self.assert_intact(product="OtherProduct")
        self.assertEqual(self.verify_game().status, 31)
        shutil.copyfile(GOOD.certificate, self.output / "base.cer")
        self.assert_intact()

    def test_file_whose_path_an_alias_changed(self) -> None:
        plain, other = self.entries
        self.put_catalogue([plain, with_alias(other, {"data": "content"})])
        self.assertEqual(self.verify_game().status, 23)
        # Where verify looks for it: the first character of the path that the alias changed.
        self.write("c", b"b")
        self.assert_intact()
        self.write("data/b", b"changed")
        self.assert_intact()

    def test_mod_of_the_product(self) -> None:
        self.put_catalogue(self.put_files({"mod/x": b"x"}), "mod1", credentials=Credentials.of("mod"))
        self.assertEqual(self.verify_game().status, 22)
        for name in ("mod1.bin", "mod1.cer"):
            (self.output / name).replace(self.game / name)
        self.write("mod/x", b"changed")
        self.assert_intact()

    def test_change_back_before_the_run(self) -> None:
        content = (self.game / "a").read_bytes()
        (self.game / "a").write_bytes(b"x")
        self.assertEqual(self.verify_game().status, 26)
        (self.game / "a").write_bytes(content)
        os.utime(self.game / "a", (0, 0))
        self.assert_intact()


if __name__ == "__main__":
    unittest.main()
