"""Tests of parts of the comparison that need no build."""
import contextlib
import hashlib
import io
import os
import shutil
import subprocess
import tempfile
import unittest
from dataclasses import replace
from pathlib import Path
from typing import List
from unittest import mock

import machine
import report
from benchmark_runs import COMPRESS, DECOMPRESS, LzwResult
from catalogue_digests import CHUNK_SIZE, catalogue_format, whole_file_digests
from catalogue_entry import entry_of_bytes
from cold_runs import READING, ColdResult
from measure import Command, CommandFailed, Times
from memory_allowance import CatalogueSizes, long_path_bytes
from peers import OPENSSL, SameDigests, openssl_with_jobs
from report import MIB
from tree_runs import GENERATE, VERIFY, TreeResult


def seconds(value: float) -> Times:
    return Times([value], [value])


class Report(unittest.TestCase):
    def test_reading_is_in_no_ratio(self) -> None:
        result = TreeResult("small-2000", 1, 1, 1, 0, {GENERATE: seconds(1), VERIFY: seconds(1),
                                                    READING: seconds(0.25)})
        self.assertIsNone(result.fastest_peer())
        result.times["sha256sum"] = seconds(2)
        self.assertEqual(result.fastest_peer(), "sha256sum")
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            report.print_cold(ColdResult(result, "", True))
        self.assertIn("| generate | 1.000 | 1.000 | 1.000 | 2.00 |\n", printed.getvalue())
        self.assertIn("| cat | 0.250 | 0.250 | 0.250 |  |\n", printed.getvalue())

    def test_jobs_are_compared_with_one_and_with_peers_that_use_as_many(self) -> None:
        result = TreeResult("small", 1, 1, 1, 0, {
            GENERATE: seconds(3), VERIFY: seconds(6), "generate -jobs 2": seconds(2),
            "verify -jobs 2": seconds(4), "hashdeep -j 2 -c sha256 -l": seconds(5)})
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            report.print_jobs([result], 2)
        self.assertIn("| generate -jobs 2 | 1.50 | not installed | 2.50 |\n", printed.getvalue())
        self.assertIn("| verify -jobs 2 | 1.50 | not installed | 1.25 |\n", printed.getvalue())

    def test_jobs_have_rows_beside_one(self) -> None:
        times = {name: seconds(2) for name in (GENERATE, "generate -jobs 2", VERIFY, "verify -jobs 2",
                                               "sha256sum", "hashdeep -j 2 -c sha256 -l")}
        peaks = {name: MIB for name in times if name.startswith((GENERATE, VERIFY))}
        allowed = {**peaks, "verify -jobs 2": MIB - 1}
        result = TreeResult("small", 1, 1, 1, 0, times, peaks, allowed)
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            report.print_tree(result, 2)
        rows = [line for line in printed.getvalue().splitlines() if "2.000" in line]
        self.assertEqual(rows, [
            "| generate | 2.000 | 2.000 | 2.000 | 1.00 | 1.0 | 1.0 |",
            "| generate -jobs 2 | 2.000 | 2.000 | 2.000 |  | 1.0 | 1.0 |",
            "| verify | 2.000 | 2.000 | 2.000 | 1.00 | 1.0 | 1.0 |",
            "| verify -jobs 2 | 2.000 | 2.000 | 2.000 |  | **1.0** | 1.0 |",
            "| sha256sum | 2.000 | 2.000 | 2.000 |  |  |  |",
            "| hashdeep -j 2 -c sha256 -l | 2.000 | 2.000 | 2.000 |  |  |  |"])
        self.assertIn("small (verify -jobs 2).", printed.getvalue())

    def test_compressed_sizes(self) -> None:
        own = {COMPRESS: seconds(1), DECOMPRESS: seconds(1)}
        for size, row in ((None, "| compress | not installed |  |\n"),
                          (1500, "| compress | 1,500 | 12.0 |\n")):
            with self.subTest(size=size), contextlib.redirect_stdout(io.StringIO()) as printed:
                report.print_lzw(LzwResult(12_500, 2500, size, own=own))
                self.assertIn("| ours | 2,500 | 20.0 |\n" + row, printed.getvalue())


class MemoryAllowance(unittest.TestCase):
    def test_generate_may_hold_the_catalogue_three_times_over(self) -> None:
        sizes = CatalogueSizes(10, 1000, 5000, 800, 60)
        self.assertEqual(sizes.allowed_for_generate(0), 6800 + 16 * MIB)
        self.assertEqual(sizes.allowed_for_generate(3), 6800 + 22 * MIB)

    def test_verify_may_hold_the_file_and_200_bytes_of_each_file(self) -> None:
        sizes = CatalogueSizes(10, 1000, 5000, 800, 60)
        self.assertEqual(sizes.allowed_for_verify(0), 3060 + 16 * MIB)
        self.assertEqual(sizes.allowed_for_verify(3), 3060 + 22 * MIB)

    def test_long_paths_count_by_their_units(self) -> None:
        for path, expected in (("", 0), ("a" * 30, 0), ("a" * 31, 2), ("ä" * 31, 2),
                               ("\U0001F3AE" * 15, 0), ("\U0001F3AE" * 16, 4)):
            with self.subTest(path=path):
                self.assertEqual(long_path_bytes(os.fsencode(path)), expected)


class PeerOutput(unittest.TestCase):
    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.log = Path(directory.name) / "log"

    def check(self, same_digests: SameDigests, name: str, output: bytes) -> None:
        self.log.write_bytes(output)
        same_digests.check(Command(name, [], self.log.parent), self.log)

    def test_of_processes_may_be_mixed_but_holds_the_same(self) -> None:
        lines = [b"SHA2-256(%d)= %s\n" % (number, hashlib.sha256(b"%d" % number).hexdigest().encode())
                 for number in range(3)]
        same_digests = SameDigests(3)
        with self.assertRaises(CommandFailed):
            self.check(same_digests, openssl_with_jobs(2), b"".join(lines))
        self.check(same_digests, OPENSSL, b"".join(lines))
        self.check(same_digests, openssl_with_jobs(2),
                   lines[1][:20] + lines[2] + lines[1][20:] + lines[0])
        for wrong in (lines[:2], [lines[0], *lines], [lines[0], lines[0], lines[2]]):
            with self.subTest(wrong=wrong), self.assertRaisesRegex(CommandFailed, "^xargs -P 2 "):
                self.check(same_digests, openssl_with_jobs(2), b"".join(wrong))


class Digests(unittest.TestCase):
    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.catalogue = Path(directory.name) / "base.bin"
        contents = {"chunk": bytes(CHUNK_SIZE), "empty": b"", "larger": bytes(CHUNK_SIZE + 1)}
        self.entries = [entry_of_bytes(name, content) for name, content in contents.items()]
        self.size = sum(map(len, contents.values()))
        self.printed = [hashlib.sha256(content).hexdigest() for content in contents.values()]

    def digests_in(self, image: bytes) -> List[bytes]:
        self.catalogue.write_bytes(image)
        return whole_file_digests(self.catalogue, self.size)

    def test_are_those_of_files_of_one_chunk(self) -> None:
        self.assertEqual(self.digests_in(catalogue_format.build(self.entries)),
                         [self.printed[0].encode()])

    def test_are_not_read_from_a_catalogue_that_is_wrong(self) -> None:
        chunk, empty, larger = self.entries
        for wrong in ([chunk, empty], [replace(chunk, digests=()), empty, larger]):
            with self.subTest(wrong=wrong), self.assertRaisesRegex(CommandFailed, "^base.bin: "):
                self.digests_in(catalogue_format.build(wrong))
        with self.assertRaisesRegex(CommandFailed, "^base.bin: "):
            self.digests_in(b"")

    def test_have_to_be_printed_as_often(self) -> None:
        printed = SameDigests(3)
        log = self.catalogue.with_name("log")
        log.write_text("\n".join(self.printed))
        printed.check(Command("peer", [], log.parent), log)
        first, second, third = (digest.encode() for digest in self.printed)
        printed.check_printed("own", [third, first])
        for digests in ([first, first], [first, second[::-1]]):
            with self.subTest(digests=digests), \
                    self.assertRaisesRegex(CommandFailed, "own: 1 of 2 "):
                printed.check_printed("own", digests)
        with self.assertRaises(CommandFailed):
            SameDigests(3).check_printed("own", [first])


class CommitOfTree(unittest.TestCase):
    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.tree = Path(directory.name)

    def git(self, *arguments: str) -> str:
        identity = ["-c", "user.name=a", "-c", "user.email=a@localhost",
                    "-c", "commit.gpgsign=false"]
        return subprocess.run(["git", "-C", str(self.tree), *identity, *arguments], check=True,
                              stdout=subprocess.PIPE, universal_newlines=True).stdout.strip()

    @unittest.skipUnless(shutil.which("git"), "needs git")
    def test_is_told_with_whether_there_are_changes(self) -> None:
        self.assertEqual(machine.commit_of(self.tree), "unknown")
        self.git("init", "--quiet")
        self.assertEqual(machine.commit_of(self.tree), "unknown")
        file = self.tree / "file"
        file.write_text("as committed")
        self.git("add", "file")
        self.git("commit", "--quiet", "--message", "first")
        commit = self.git("rev-parse", "--short", "HEAD")
        self.assertRegex(commit, "^[0-9a-f]{4,}$")
        self.assertEqual(machine.commit_of(self.tree), commit)
        file.write_text("otherwise")
        self.assertEqual(machine.commit_of(self.tree), commit + ", modified")
        unpacked = self.tree / "unpacked"
        unpacked.mkdir()
        (unpacked / "file").write_text("of another project")
        self.assertEqual(machine.commit_of(unpacked), "unknown")

    def test_is_not_told_without_git(self) -> None:
        with mock.patch.dict(os.environ, {"PATH": str(self.tree)}):
            self.assertEqual(machine.commit_of(self.tree), "not installed")


if __name__ == "__main__":
    unittest.main()
