"""Verifying intact games, and how catalogues are found."""

import os
import unittest

import e2e_console as console
import e2e_read_back as texts
from catalogue_entry import CHUNK_SIZE, entry_of_bytes
from e2e_support import PRODUCT, Credentials
from signed_game import SignedGameTest, passed

OTHER_KEY = Credentials.of("other-key")


class Generated(SignedGameTest):
    """Files written by the program itself."""

    def generate(self) -> list:
        sizes = {"empty": 0, "one": 1, "below": CHUNK_SIZE - 1, "chunk": CHUNK_SIZE, "above": CHUNK_SIZE + 1}
        sizes["nine MiB"] = 9 * 1024 * 1024
        pattern = bytes(range(251))
        for name, size in sizes.items():
            self.write(f"data/{name}", (pattern * (size // len(pattern) + 1))[:size])
        self.write("Über/日本語 %s.txt", b"text")
        run = self.collect('include_paths = ["data", "Über"]')
        self.assertEqual(run.status, 0, run.output)
        return self.stored_paths()

    def test_game_as_it_was_generated(self) -> None:
        paths = self.generate()
        self.assertEqual(len(paths), 7)
        self.assert_verified(0, passed(paths), self.runtime_text())

    def test_gamedev(self) -> None:
        paths = self.generate()
        self.assert_verified(0, passed(paths), self.runtime_text(trusted=False), "-gamedev")

    def test_verbose_run_prints_the_same(self) -> None:
        paths = self.generate()
        self.assert_verified(0, passed(paths), self.runtime_text(), "-v")

    def test_product_in_other_letters(self) -> None:
        product = PRODUCT.upper()
        paths = self.generate()
        text = self.runtime_text().replace(console.trusted(), console.trusted(product))
        self.assert_verified(0, passed(paths), text, product=product)


class Catalogues(SignedGameTest):
    """The number of catalogues, and their contents."""

    def test_no_entry(self) -> None:
        self.put_catalogue([])
        self.assert_verified(0, [])

    def test_two_catalogues_are_counted_together(self) -> None:
        own = self.put_files({"a": b"a", "b/c": b"c", "b/d": b""})
        mod = self.put_files({"mod/x": b"x", "mod/y": b"yy"})
        self.put_catalogue(own)
        self.put_catalogue(mod, "mod1", credentials=OTHER_KEY)
        self.put_runtime_conf()
        self.assert_catalogues_verified(
            0, {"base.bin": passed(own), "mod1.bin": passed(mod)}, self.runtime_text()
        )

    def test_same_file_in_both(self) -> None:
        entries = self.put_files({"a": b"a"})
        self.put_catalogue(entries)
        self.put_catalogue(entries, "mod1", credentials=OTHER_KEY)
        self.assert_catalogues_verified(0, {"base.bin": passed(entries), "mod1.bin": passed(entries)})

    def test_mod_alone(self) -> None:
        entries = self.put_files({"mod/x": b"x"})
        self.put_catalogue(entries, "mod1", credentials=OTHER_KEY)
        self.assert_verified(0, passed(entries), name="mod1.bin")

    def test_names_of_catalogues(self) -> None:
        entries = self.put_files({"a": b"a"})
        for name in ("a.b", "with blank", "módulo", "[x]*?", "%s%n"):
            with self.subTest(name=name):
                path = self.put_catalogue(entries, name)
                self.assert_verified(0, passed(entries), name=f"{name}.bin")
                path.unlink()

    def test_revocation_list_is_not_looked_at(self) -> None:
        entries = self.put_files({"a": b"a"})
        self.put_catalogue(entries, crl=b"no revocation list" * 100)
        self.assert_verified(0, passed(entries))

    def test_larger_key(self) -> None:
        entries = self.put_files({"a": b"a"})
        credentials = Credentials.of("big-key")
        self.put_catalogue(entries, credentials=credentials)
        self.put_runtime_conf(credentials=credentials)
        self.assert_verified(0, passed(entries), self.runtime_text())

    def test_symbolic_links_are_followed(self) -> None:
        entries = self.put_files({"a": b"a"})
        image = self.put_catalogue(entries)
        image.rename(self.directory / "elsewhere")
        image.symlink_to(self.directory / "elsewhere")
        self.assert_verified(0, passed(entries))


class OlderLayout(SignedGameTest):
    """Catalogues whose signature does not cover the bytes before it."""

    def test_signed_from_the_end_of_the_signature(self) -> None:
        entries = self.put_files({"a": b"a"})
        for layout in (0, 2, 0x0101, 0xFFFF):
            with self.subTest(layout=layout):
                self.put_catalogue(entries, crl=b"crl", signature_layout=layout)
                self.assert_verified(0, passed(entries))

    def test_layout_itself_is_not_signed(self) -> None:
        entries = self.put_files({"a": b"a"})
        image = self.put_catalogue(entries, signature_layout=0).read_bytes()
        self.put_image(image[:6] + b"\x02\x00" + image[8:])
        self.assert_verified(0, passed(entries))
        self.put_image(image[:6] + b"\x01\x00" + image[8:])
        self.assert_not_read(11)

    def test_current_layout_is_not_taken_for_an_older_one(self) -> None:
        image = self.put_catalogue(self.put_files({"a": b"a"})).read_bytes()
        self.put_image(image[:6] + b"\x00\x00" + image[8:])
        self.assert_not_read(11)


class Places(SignedGameTest):
    """Game directories."""

    def test_ways_to_name_the_game(self) -> None:
        entries = self.put_files({"a": b"a"})
        self.put_catalogue(entries)
        (self.directory / "link").symlink_to(self.game)
        text = self.begun() + texts.reading("base.bin") + texts.added("base.bin", 1) + texts.verdicts(passed(entries))
        for target in ("game", "game/", "./game//", f"{self.game}/", "link", "link/", "game/Quorvane/.."):
            with self.subTest(target=target):
                self.assert_console(self.verify_game(target=target), 0, text)

    def test_special_characters_in_the_path(self) -> None:
        for name in ("a[b]c", "[!x]", "*", "?", "a*?[", "{x,y}", "~", "Spiel Ü 日本", "%s%n", "new\nline"):
            with self.subTest(name=name):
                self.game = self.directory / name / "game"
                self.output.mkdir(parents=True)
                entries = self.put_files({"d/a": b"a"})
                self.put_catalogue(entries)
                self.put_runtime_conf()
                self.assert_verified(0, passed(entries), self.runtime_text())

    def test_a_pattern_in_the_path_matches_no_other_game(self) -> None:
        self.put_catalogue([])
        other = self.directory / "[g]ame"
        other.mkdir()
        run = self.verify_game(target=other)
        self.assert_console(run, 3, texts.no_folder(f"{other}/Quorvane/Certificates/"))
        (other / "Quorvane/Certificates").mkdir(parents=True)
        folder = f"{other}/Quorvane/Certificates/"
        self.assert_console(self.verify_game(target=other), 3, texts.looking(folder) + texts.none_found(folder))

    def test_path_that_is_no_utf8(self) -> None:
        """Its wide form is the converter's error text, and no such folder exists."""
        target = self.directory / "\udcff"
        (target / "Quorvane/Certificates").mkdir(parents=True)
        run = self.verify_game(target=target)
        self.assert_console(run, 3, texts.no_folder("U82W_ERRORQuorvane/Certificates/"))

    def test_backslash_in_the_path(self) -> None:
        for name in ("back\\slash", "backslash\\"):
            with self.subTest(name=name):
                self.game = self.directory / name
                self.output.mkdir(parents=True)
                entries = self.put_files({"a": b"a"})
                self.put_catalogue(entries)
                self.assert_verified(0, passed(entries))


class Search(SignedGameTest):
    """Which files are catalogues."""

    def assert_none_found(self) -> None:
        self.assert_console(self.verify_game(), 3, texts.looking(self.folder) + texts.none_found(self.folder))

    def test_no_folder(self) -> None:
        for path in (self.output, self.output.parent):
            path.rmdir()
            with self.subTest(missing=path.name):
                self.assert_console(self.verify_game(), 3, texts.no_folder(self.folder))

    def test_folder_that_is_a_file(self) -> None:
        self.output.rmdir()
        self.output.write_bytes(b"")
        self.assert_console(self.verify_game(), 3, texts.no_folder(self.folder))

    def test_game_that_is_a_file(self) -> None:
        """A separator after the name of a file makes an invalid path."""
        path = self.write("file", b"")
        run = self.verify_game(target=path)
        self.assert_console(run, 1, texts.unresolved(f"{path}/") + console.USAGE)

    def test_empty_folder(self) -> None:
        self.assert_none_found()

    def test_names_that_do_not_match(self) -> None:
        for name in (".hidden.bin", ".bin", "base.BIN", "base.bin.bak", "bin", "basebin", "runtime.conf"):
            with self.subTest(name=name):
                path = self.output / name
                path.write_bytes(b"")
                self.assert_none_found()
                path.unlink()

    def test_hidden_catalogue_beside_another(self) -> None:
        self.put_catalogue([])
        self.put_image(b"", ".hidden")
        self.assert_verified(0, [])

    def test_catalogues_elsewhere_are_not_found(self) -> None:
        self.put_catalogue([])
        (self.output / "deeper").mkdir()
        self.write("x.bin", b"")
        (self.output / "deeper/x.bin").write_bytes(b"")
        (self.output.parent / "x.bin").write_bytes(b"")
        self.assert_verified(0, [])

    def test_folder_that_cannot_be_read(self) -> None:
        self.put_catalogue([])
        self.become_unprivileged()
        self.output.chmod(0o300)
        before = self.output.stat().st_ctime_ns
        run = self.run_program("-productid", PRODUCT, "verify", self.game)
        self.assertEqual(self.output.stat().st_ctime_ns, before)
        self.assert_console(run, 3, texts.looking(self.folder) + texts.none_found(self.folder))

    def test_folder_that_cannot_be_entered(self) -> None:
        self.put_catalogue([])
        self.become_unprivileged()
        self.game.chmod(0o600)
        self.addCleanup(self.game.chmod, 0o700)
        run = self.run_program("-productid", PRODUCT, "verify", self.game)
        self.assert_console(run, 3, texts.no_folder(self.folder))


class UnreadableCatalogues(SignedGameTest):
    """Matching names that are no readable files."""

    def test_directory(self) -> None:
        (self.output / "x.bin").mkdir()
        self.assert_not_read(8, name="x.bin")

    def test_directory_with_a_certificate(self) -> None:
        self.put_catalogue([]).unlink()
        (self.output / "base.bin").mkdir()
        self.assert_not_read(8)

    def test_fifo_does_not_stop_the_run(self) -> None:
        os.mkfifo(self.output / "x.bin")
        self.assert_not_read(8, name="x.bin")

    def test_dangling_link(self) -> None:
        (self.output / "x.bin").symlink_to("gone")
        self.assert_not_read(8, name="x.bin")

    def test_unreadable_by_permission(self) -> None:
        path = self.put_catalogue([])
        self.become_unprivileged()
        path.chmod(0)
        self.assert_not_read(8)

    def test_name_that_is_no_utf8(self) -> None:
        """The name becomes the converter's error text, which has no "." to cut the extension at."""
        path = os.path.join(os.fsencode(self.output), b"\xff.bin")
        with open(path, "wb"):
            pass
        self.assert_not_read(7, name="U82W_ERROR")

    def test_nothing_is_verified_after_one_that_fails(self) -> None:
        self.put_files({"a": b"a"})
        self.put_catalogue([entry_of_bytes("a", b"other")])
        self.put_image(b"short", "mod1")
        self.put_runtime_conf()
        run = self.verify_game()
        self.assertEqual(run.status, 9)
        self.assertTrue(run.output.endswith(texts.reading("mod1.bin") + texts.not_read("mod1.bin", 9)), run.output)
        for text in ("validation of", "[Success]", "[Failure]", "summary", "runtime"):
            self.assertNotIn(text, run.output)


if __name__ == "__main__":
    unittest.main()
