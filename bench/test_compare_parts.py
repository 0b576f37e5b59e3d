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
from peers import SameDigests
from tree_runs import GENERATE, VERIFY, TreeResult


def seconds(value: float) -> Times:
    return Times([value], [value])


class Report(unittest.TestCase):
    def test_reading_is_in_no_ratio(self) -> None:
        result = TreeResult("small-2000", 1, 1, 1, {GENERATE: seconds(1), VERIFY: seconds(1),
                                                    READING: seconds(0.25)})
        self.assertIsNone(result.fastest_peer())
        result.times["sha256sum"] = seconds(2)
        self.assertEqual(result.fastest_peer(), "sha256sum")
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            report.print_cold(ColdResult(result, "", True))
        self.assertIn("| generate | 1.000 | 1.000 | 1.000 | 2.00 |\n", printed.getvalue())
        self.assertIn("| cat | 0.250 | 0.250 | 0.250 |  |\n", printed.getvalue())

    def test_compressed_sizes(self) -> None:
        own = {COMPRESS: seconds(1), DECOMPRESS: seconds(1)}
        for size, row in ((None, "| compress | not installed |  |\n"),
                          (1500, "| compress | 1,500 | 12.0 |\n")):
            with self.subTest(size=size), contextlib.redirect_stdout(io.StringIO()) as printed:
                report.print_lzw(LzwResult(12_500, 2500, size, own=own))
                self.assertIn("| ours | 2,500 | 20.0 |\n" + row, printed.getvalue())


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
