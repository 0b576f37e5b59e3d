"""Complete successful runs: every byte on the console and in the files produced."""

import os
import unittest

import catalogue_format
import e2e_console as console
from catalogue_entry import CHUNK_SIZE
from e2e_support import GOOD, INCLUDE_BIN, STEP, Credentials, EndToEndTest, config

SEARCH = 'include_paths = ["bin"]'


class MainCatalogue(EndToEndTest):
    """Runs with the output name "base"."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a.dat", b"hello")

    def expected(self, record=None) -> str:
        return self.collected_text(console.matched("./bin"), console.hashing("./bin/a.dat"), record)

    def test_whole_run_with_every_setting(self) -> None:
        self.write("bin/sub/b.so", b"\x00\xff" * 1000)
        self.write("bin/empty.txt")
        settings = (
            "max_active_game_instances = 3; crash_reporter_name = \"CrashReporter\" "
            'anti_tamper_solution_name = "my denuvo build"'
        )
        run = self.run_program(
            *self.generate_arguments(config_file=self.write_config(config(SEARCH, settings)))
        )
        hashed = console.hashing("./bin/a.dat") + console.empty_file("./bin/empty.txt")
        hashed += console.hashing("./bin/sub/b.so")
        record = console.runtime_record(3, "CrashReporter", "Denuvo")
        self.assert_console(run, 0, self.collected_text(console.matched("./bin"), hashed, record))
        self.assert_catalogue(self.output / "base.bin", ["./bin/a.dat", "./bin/empty.txt", "./bin/sub/b.so"])
        self.assert_runtime_conf(self.output / "runtime.conf", 3, b"CrashReporter", 3)
        self.assertEqual((self.output / "base.cer").read_bytes(), GOOD.certificate.read_bytes())
        self.assert_files("base.bin", "base.cer", "runtime.conf")

    def test_default_names_are_looked_for_in_the_working_directory(self) -> None:
        for name, source in (("base_private.key", GOOD.key), ("base_public.cer", GOOD.certificate)):
            (self.directory / name).write_bytes(source.read_bytes())
        self.write_config(INCLUDE_BIN, "anticheat_sealkeeper.cfg")
        run = self.run_program("-productid", "TestProduct42", "-target_game_dir", self.game)
        self.assert_console(run, 0, self.expected())
        self.assert_catalogue(self.output / "base.bin", ["./bin/a.dat"])

    def test_second_run_gives_the_same_bytes(self) -> None:
        def produced():
            return {path.name: path.read_bytes() for path in self.output.iterdir()}

        first = self.collect(SEARCH)
        before = produced()
        second = self.collect(SEARCH)
        self.assertEqual((first.status, second.status), (0, 0))
        self.assertEqual(first.output, second.output)
        self.assertEqual(produced(), before)
        self.assertEqual(len(before), 3)

    def test_longer_files_of_an_earlier_run_are_replaced(self) -> None:
        for name in ("base.bin", "base.cer", "runtime.conf"):
            self.write(f"Quorvane/Certificates/{name}", bytes(100_000))
        self.assert_collected(SEARCH, console.matched("./bin"), ["./bin/a.dat"])

    def test_crl_bytes_are_embedded_unparsed(self) -> None:
        for crl in (b"", b"\x00", bytes(range(256)) * 5):
            with self.subTest(length=len(crl)):
                crl_file = self.directory / "mods.crl"
                crl_file.write_bytes(crl)
                run = self.collect(SEARCH, "-incrl", crl_file)
                self.assert_console(run, 0, self.expected())
                self.assert_catalogue(self.output / "base.bin", ["./bin/a.dat"], crl=crl)

    def test_key_of_4096_bits(self) -> None:
        big = Credentials.of("big-key")
        arguments = self.generate_arguments(config_file=self.write_config(INCLUDE_BIN), credentials=big)
        self.assert_console(self.run_program(*arguments), 0, self.expected())
        self.assert_catalogue(self.output / "base.bin", ["./bin/a.dat"], credentials=big)
        self.assert_runtime_conf(self.output / "runtime.conf", credentials=big)
        image = (self.output / "base.bin").read_bytes()
        self.assertEqual(catalogue_format.parse(image).signature_length, 512)

    def test_chunk_boundaries(self) -> None:
        for extra in (-1, 0, 1):
            self.write(f"bin/{extra + 1}.pak", b"\x5a" * (CHUNK_SIZE + extra))
        self.write("bin/long.pak", os.urandom(3 * CHUNK_SIZE + 17))
        self.write("bin/one.pak", b"1")
        names = ["0.pak", "1.pak", "2.pak", "a.dat", "long.pak", "one.pak"]
        self.assert_collected(SEARCH, console.matched("./bin"), [f"./bin/{name}" for name in names])
        image = (self.output / "base.bin").read_bytes()
        counts = [len(entry.digests) for entry in catalogue_format.parse(image).entries]
        self.assertEqual(counts, [1, 1, 2, 1, 4, 1])

    def test_order_is_that_of_code_points(self) -> None:
        names = ["Z", "a", "a-b", "a/b", "a0", "é", "\uffee", "\U0001f600"]
        for name in names:
            self.write(f"bin/{name.replace('a/b', 'a.d/b')}", name.encode())
        paths = ["./bin/Z", "./bin/a", "./bin/a-b", "./bin/a.d/b", "./bin/a.dat", "./bin/a0"]
        paths += ["./bin/é", "./bin/\uffee", "./bin/\U0001f600"]
        self.assert_collected(SEARCH, console.matched("./bin"), paths)

    def test_many_files(self) -> None:
        self.write_sparse("bin/a.dat", 0)
        paths = [f"./bin/{number // 1000:02}/{number:05}" for number in range(20_000 // STEP)]
        for path in paths:
            self.write(path, path.encode())
        run = self.collect(SEARCH)
        hashed = console.hashing(*paths) + console.empty_file("./bin/a.dat")
        self.assert_console(run, 0, self.collected_text(console.matched("./bin"), hashed))
        self.assert_catalogue(self.output / "base.bin", paths + ["./bin/a.dat"])

    def test_locale_and_environment_change_nothing(self) -> None:
        self.write("bin/ÄÖ日本.txt", b"x")
        baseline = self.collect(SEARCH)
        self.assertEqual(baseline.status, 0)
        image = (self.output / "base.bin").read_bytes()
        for value in ("C", "C.UTF-8", "de_DE.ISO-8859-1", "tr_TR.UTF-8", "no such locale", ""):
            with self.subTest(locale=value):
                config_file = self.write_config(config(SEARCH))
                environment = {"LANG": value, "LC_ALL": value, "LANGUAGE": value, "HOME": "", "TZ": "X"}
                run = self.run_program(
                    *self.generate_arguments(config_file=config_file), environment=environment
                )
                self.assertEqual((run.status, run.output), (0, baseline.output))
                self.assertEqual((self.output / "base.bin").read_bytes(), image)

    def test_gamedev_writes_runtime_conf_without_asking_for_trust(self) -> None:
        foreign = Credentials.of("foreign")
        config_file = self.write_config(INCLUDE_BIN)
        run = self.run_program(
            *self.generate_arguments("-gamedev", config_file=config_file, credentials=foreign, product="Any")
        )
        self.assert_console(run, 0, self.expected().replace(console.trusted(), ""))
        self.assert_catalogue(self.output / "base.bin", ["./bin/a.dat"], credentials=foreign)
        self.assert_runtime_conf(self.output / "runtime.conf", credentials=foreign)


class OutputName(EndToEndTest):
    """What -outname changes."""

    def setUp(self) -> None:
        super().setUp()
        self.write("bin/a.dat", b"hello")

    def test_name_of_a_mod(self) -> None:
        run = self.collect(SEARCH, "-outname", "mod1")
        text = console.started(str(self.game), str(self.game)) + console.named_catalogue()
        text += console.config_version() + console.matched("./bin") + console.hashing("./bin/a.dat")
        self.assert_console(run, 0, text + console.created("", "mod1") + console.copied("", "mod1"))
        self.assert_files("bin", "mod1.bin", "mod1.cer", under=self.game)
        self.assert_catalogue(self.game / "mod1.bin", ["./bin/a.dat"])
        self.assertEqual((self.game / "mod1.cer").read_bytes(), GOOD.certificate.read_bytes())

    def test_base_in_other_letters_makes_no_runtime_conf(self) -> None:
        for name in ("Base", "BASE", "bASe"):
            with self.subTest(name=name):
                run = self.collect(SEARCH, "-outname", name)
                text = console.started(str(self.game), str(self.game)) + console.main_catalogue()
                text += console.config_version() + console.matched("./bin") + console.hashing("./bin/a.dat")
                text += console.created(self.folder, name) + console.copied(self.folder, name)
                self.assert_console(run, 0, text)
                self.assert_catalogue(self.output / f"{name}.bin", ["./bin/a.dat"])
        names = [name + end for name in ("Base", "BASE", "bASe") for end in (".bin", ".cer")]
        self.assert_files(*names)

    def test_near_misses_of_base_are_mods(self) -> None:
        for name in ("base1", "bas", "base ", "baſe"):
            with self.subTest(name=name):
                run = self.collect(SEARCH, "-outname", name)
                self.assertEqual(run.status, 0)
                self.assertIn(console.named_catalogue(), run.output)
                self.assert_catalogue(self.game / f"{name}.bin", ["./bin/a.dat"])
        self.assertFalse(self.output.exists())

    def test_empty_name_and_name_with_a_path(self) -> None:
        (self.game / "deep").mkdir()
        for name in ("", "deep/mod", str(self.directory / "absolute")):
            with self.subTest(name=name):
                run = self.collect(SEARCH, f"-outname={name}")
                self.assertEqual(run.status, 0)
                self.assertTrue(run.output.endswith(console.created("", name) + console.copied("", name)))
                self.assert_catalogue(self.game / f"{name}.bin", ["./bin/a.dat"])


class SingleFile(EndToEndTest):
    """What -target_file changes."""

    def text(self, middle: str, end: str, chosen: str = "") -> str:
        return console.started(str(self.game), str(self.game)) + (chosen or console.main_catalogue()) + middle + end

    def success(self, name: str = "base") -> str:
        folder = self.folder if name == "base" else ""
        return console.created(folder, name) + console.copied(folder, name)

    def test_one_file_without_configuration(self) -> None:
        self.write("mods/packed.pak", b"packed")
        (self.directory / "packed.pak").write_bytes(b"beside the game")
        run = self.run_program(*self.generate_arguments("-target_file", "./packed.pak"))
        self.assert_console(run, 0, self.text(console.hashing("./packed.pak"), self.success()))
        self.assert_catalogue(self.output / "base.bin", ["./packed.pak"], base=self.directory)
        self.assert_files("base.bin", "base.cer")

    def test_mod_is_written_to_the_working_directory(self) -> None:
        start = self.directory / "start"
        start.mkdir()
        (start / "packed.pak").write_bytes(b"packed")
        run = self.run_program(
            *self.generate_arguments("-target_file", "packed.pak", "-outname", "mod1"), cwd=start
        )
        text = self.text(console.hashing("packed.pak"), self.success("mod1"), console.named_catalogue())
        self.assert_console(run, 0, text)
        self.assert_catalogue(start / "mod1.bin", ["packed.pak"], base=start)
        self.assert_files("mod1.bin", "mod1.cer", "packed.pak", under=start)
        self.assert_files(under=self.game)

    def test_path_is_stored_as_given(self) -> None:
        pak = self.write("mods/packed.pak", b"packed")
        for given in (str(pak), "game/mods/../mods/packed.pak", ".//game/mods/packed.pak", "././game/mods/packed.pak"):
            with self.subTest(given=given):
                run = self.run_program(*self.generate_arguments("-target_file", given))
                self.assert_console(run, 0, self.text(console.hashing(given), self.success()))
                self.assert_catalogue(self.output / "base.bin", [given], base=self.directory)

    def test_missing_file_is_recorded_as_empty(self) -> None:
        run = self.run_program(*self.generate_arguments("-target_file", "gone.pak"))
        self.assert_console(run, 0, self.text(console.empty_file("gone.pak"), self.success()))
        self.assert_catalogue(self.output / "base.bin", ["gone.pak"])
        image = catalogue_format.parse((self.output / "base.bin").read_bytes())
        self.assertEqual((image.entry_count, image.raw_length), (1, 528))

    def test_backslash_is_a_character_on_disk_and_a_slash_in_the_catalogue(self) -> None:
        (self.directory / "mods\\packed.pak").write_bytes(b"packed")
        run = self.run_program(*self.generate_arguments("-target_file", "mods\\packed.pak"))
        self.assert_console(run, 0, self.text(console.hashing("mods\\packed.pak"), self.success()))
        self.assert_catalogue(self.output / "base.bin", ["mods\\packed.pak"], base=self.directory)
        self.assertEqual(self.stored_paths(), ["mods/packed.pak"])


if __name__ == "__main__":
    unittest.main()
