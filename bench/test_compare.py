"""Tries the comparison in a build with tests: it must run, print every table and report errors. Its
figures mean nothing and are not checked."""
import contextlib
import io
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from dataclasses import replace
from pathlib import Path
from typing import List, Optional, Tuple
from unittest import mock

import compare
import make_tree
import tree_runs
from catalogue_digests import catalogue_format
from cold_runs import READING, Eviction, reading_command, resident_pages, run_cold
from measure import CommandFailed, Times, run
from memory_allowance import CatalogueSizes
from peers import PEERS
# Run with the tests of this module.
from tree_runs import GENERATE, VERIFY, Place, TreeResult

HERE = Path(__file__).resolve().parent
BUILD = Path(os.environ["SEALKEEPER_BENCH_BUILD_DIR"])

HEADINGS = ("## ", "### SHA-256 in the L2 cache", "### Text conversions of one path",
            "### LZW: ", "### one: files 1,", "### mixed: files ", "### small: files ",
            "### Times as fast as the fastest peer", "### Cold page cache, small-2000: files 1,",
            "### Cold page cache, one: files 1,", "### Cost per file of 1 KiB",
            "### Cost per byte of one file")


def run_comparison(*options: str) -> "subprocess.CompletedProcess[str]":
    return subprocess.run([sys.executable, "-B", str(HERE / "compare.py"), "--build-dir", str(BUILD),
                           *options], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False,
                          universal_newlines=True)


def compare_in_process(*options: str) -> Tuple[int, str, str]:
    """The exit status and the texts printed to standard output and standard error."""
    arguments = ["compare.py", "--build-dir", str(BUILD), *options]
    with mock.patch.object(sys, "argv", arguments), \
            contextlib.redirect_stdout(io.StringIO()) as printed, \
            contextlib.redirect_stderr(io.StringIO()) as said:
        status = compare.main()
    return status, printed.getvalue(), said.getvalue()


def result_with_peaks(generate: Optional[int], verify: Optional[int], allowed: int) -> TreeResult:
    times = {name: Times([1.0], [1.0]) for name in (GENERATE, VERIFY)}
    return TreeResult("small", 1, 1, 1, 0, times, {GENERATE: generate, VERIFY: verify},
                      {GENERATE: allowed, VERIFY: allowed})


class Comparison(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        subprocess.run([str(HERE.parent / "tools/issue-credentials.sh"), "sealkeeper-bench",
                        str(BUILD / "credentials"), "--force"], check=True,
                       stdout=subprocess.DEVNULL)

    def test_prints_every_table(self) -> None:
        trial = run_comparison("--scale", "0.0005", "--rounds", "1")
        self.assertEqual(trial.returncode, 0, trial.stderr)
        lines = trial.stdout.splitlines()
        found: List[int] = []
        for heading in HEADINGS:
            at = [number for number, line in enumerate(lines) if line.startswith(heading)]
            self.assertEqual(len(at), 1, heading + "\n" + trial.stdout)
            found += at
            below = lines[at[0] + 2:at[0] + 5]
            self.assertTrue(all(line.startswith(("|", "- ")) for line in below),
                            heading + "\n" + trial.stdout)
        self.assertEqual(found, sorted(found), trial.stdout)
        for row in ("| 50 | ", "| 50, paths of 100 characters | ", "| 51, one of them of 5 MiB | "):
            self.assertEqual(len([line for line in lines if line.startswith(row)]), 1, trial.stdout)
        self.assertRegex(trial.stdout,
                         r"\n- Commit: (unknown|not installed|[0-9a-f]{4,}(, modified)?)\n")
        self.assertRegex(trial.stdout, r"\n\| ours \| [1-9][0-9,]* \| [0-9.]+ \|\n\| compress \| ")
        self.assertEqual(len([line for line in lines if line.startswith("| cat | ")]), 2)

    def test_ends_when_a_command_fails(self) -> None:
        broken = run_comparison("--scale", "0.0005", "--rounds", "1", "--only", "one",
                                "--dir", "/dev/null/trees")
        self.assertEqual(broken.returncode, 1)
        self.assertTrue(broken.stderr.splitlines()[-1].startswith("compare.sh: "), broken.stderr)

    def test_refuses_what_it_does_not_know(self) -> None:
        for options in (["--only", "none"], ["--rounds", "0"], ["--scale", "2"], ["--jobs", "1"],
                        ["--jobs", "two"]):
            with self.subTest(options=options):
                refused = run_comparison(*options)
                self.assertEqual(refused.returncode, 2)
                self.assertEqual(refused.stdout, "")

    def test_ends_when_a_peer_leaves_a_file_out(self) -> None:
        self.use_own_sha256sum('shift\nexec {program} "$@"')
        status, _, complaint = compare_in_process("--scale", "0.0005", "--rounds", "1", "--only",
                                                  "mixed")
        self.assertEqual(status, 1)
        self.assertIn("compare.sh: sha256sum: printed 6 digests of 7 files\n", complaint)

    @unittest.skipUnless(shutil.which("openssl"), "needs another to compare with")
    def test_ends_when_a_peer_hashes_another_file_instead(self) -> None:
        self.use_own_sha256sum('shift\nexec {program} "$1" "$@"')
        status, _, complaint = compare_in_process("--scale", "0.0005", "--rounds", "1", "--only",
                                                  "mixed")
        self.assertEqual(status, 1)
        self.assertIn("compare.sh: sha256sum: printed other digests than ", complaint)

    @unittest.skipUnless(any(shutil.which(peer[0]) for peer in PEERS.values()), "needs a peer")
    def test_ends_when_a_digest_in_the_catalogue_is_another(self) -> None:
        def read_and_spoil(result: TreeResult, catalogue: Path) -> CatalogueSizes:
            sizes = read_sizes(result, catalogue)
            parsed = catalogue_format.parse(catalogue.read_bytes())
            last = parsed.entries[-1]
            entries = [*parsed.entries[:-1], replace(last, digests=(bytes(32),))]
            catalogue.write_bytes(catalogue_format.build(entries, parsed.crl))
            return sizes

        read_sizes = tree_runs.read_sizes
        with mock.patch.object(tree_runs, "read_sizes", read_and_spoil):
            status, _, complaint = compare_in_process("--scale", "0.0005", "--rounds", "1", "--only",
                                                      "mixed")
        self.assertEqual(status, 1)
        self.assertIn("compare.sh: generate: 1 of 7 digests are not among those that the others "
                      "printed\n", complaint)

    def use_own_sha256sum(self, script: str) -> None:
        program = shutil.which("sha256sum")
        if program is None:
            self.skipTest("needs sha256sum")
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        replacement = Path(directory.name) / "sha256sum"
        replacement.write_text("#!/bin/sh\n" + script.format(program=program) + "\n")
        replacement.chmod(0o755)
        path = mock.patch.dict(os.environ,
                               {"PATH": directory.name + os.pathsep + os.environ["PATH"]})
        path.start()
        self.addCleanup(path.stop)

    def test_says_when_memory_is_exceeded(self) -> None:
        mib = 2**20
        for generate, verify, text in ((3 * mib, mib, "small (generate)"),
                                       (mib, 3 * mib, "small (verify)")):
            with self.subTest(text=text), mock.patch.object(
                    compare, "run_tree", return_value=result_with_peaks(generate, verify, 2 * mib)):
                status, printed, said = compare_in_process("--only", "small")
                self.assertIn("compare.sh: more memory was used than is allowed", said)
                trial_status, trial_printed, _ = compare_in_process("--only", "small", "--scale",
                                                                    "0.5")
                self.assertEqual((status, trial_status), (3, 0))
                for output in (printed, trial_printed):
                    self.assertIn("| **3.0** | 2.0 |", output)
                    self.assertIn("| 1.0 | 2.0 |", output)
                    self.assertIn(f"**More memory than is allowed:** {text}.", output)
                self.assertIn("### Times as fast as the fastest peer", printed)

    def test_says_nothing_of_memory_that_is_allowed(self) -> None:
        for peak in (2**20, None):
            with self.subTest(peak=peak), mock.patch.object(
                    compare, "run_tree", return_value=result_with_peaks(peak, peak, 2**20)):
                status, printed, _ = compare_in_process("--only", "small")
                self.assertEqual(status, 0)
                self.assertNotIn("**", printed)


# A stand-in for a program that has the option -jobs: it records the number and does the work
# without it.
PROGRAM_WITH_JOBS = """#!/bin/sh
afterwards=:
if [ "$3" = -jobs ]; then
    echo "$4" >> "{directory}/jobs"
    product=$2
    shift 4
    set -- -productid "$product" "$@"
    afterwards='{afterwards}'
fi
"{program}" "$@" || exit
eval "$afterwards"
"""


class Runs(unittest.TestCase):
    def setUp(self) -> None:
        # The usual temporary directory may be in memory, where nothing can be evicted.
        directory = tempfile.TemporaryDirectory(dir=BUILD)
        self.addCleanup(directory.cleanup)
        scratch = Path(directory.name)
        self.place = Place(BUILD / "sealkeeper", BUILD / "credentials", scratch, scratch, False)

    def test_rotate_from_round_to_round(self) -> None:
        names: List[str] = []

        def record(command: tree_runs.Command, log: Path, times: Optional[Times] = None) -> None:
            if times is not None:
                times.wall.append(1.0)
                names.append(command.name)

        with mock.patch.object(tree_runs, "run", record), \
                mock.patch.object(tree_runs, "SameDigests"), \
                contextlib.redirect_stderr(io.StringIO()):
            result = tree_runs.run_tree(self.place, "one", 0.0001, 3, with_peers=True)
        count = len(result.times)
        self.assertEqual(names[:2], [GENERATE, VERIFY])
        self.assertEqual(len(names), 3 * count)
        self.assertEqual(names[count:2 * count], names[1:count] + names[:1])
        self.assertEqual(names[2 * count:], names[2:count] + names[:2])

    def test_default_configuration_up_to_its_threshold(self) -> None:
        self.assertNotIn("exclude_size_threshold", tree_runs.configuration_for(1_024_000_000))
        self.assertIn("exclude_size_threshold = 0;", tree_runs.configuration_for(1_024_000_001))

    def test_deep_paths_are_of_100_characters(self) -> None:
        self.assertEqual({len(name) for name, _ in make_tree.files_of("deep-2000", 1.0)}, {100})

    def run_with_jobs(self, afterwards: str) -> TreeResult:
        program = self.place.scratch / "program"
        program.write_text(PROGRAM_WITH_JOBS.format(
            directory=self.place.scratch, program=self.place.program, afterwards=afterwards))
        program.chmod(0o755)
        with contextlib.redirect_stderr(io.StringIO()):
            return tree_runs.run_tree(replace(self.place, program=program), "mixed", 0.0005, 2,
                                      with_peers=True, jobs=3)

    def test_jobs_are_measured_beside_one(self) -> None:
        result = self.run_with_jobs(":")
        # Generate and verify, once to warm up and once in each of two rounds.
        self.assertEqual((self.place.scratch / "jobs").read_text(), "3\n" * 6)
        installed = [name for name, program in (
            ("xargs -P 3 -n 64 openssl dgst -sha256", "openssl"),
            ("hashdeep -j 3 -c sha256 -l", "hashdeep")) if shutil.which(program)]
        for name in (GENERATE, VERIFY, "generate -jobs 3", "verify -jobs 3", *installed):
            self.assertEqual(len(result.times[name].wall), 2, name)
        self.assertEqual(set(result.peak_memory),
                         {GENERATE, VERIFY, "generate -jobs 3", "verify -jobs 3"})
        for command in (GENERATE, VERIFY):
            self.assertEqual(result.allowed_memory[command + " -jobs 3"],
                             result.allowed_memory[command] + 6 * 2**20)
        self.assertIn(result.fastest_peer(), [*PEERS, None])

    def test_jobs_that_make_another_catalogue_end_it(self) -> None:
        with self.assertRaisesRegex(CommandFailed, "^generate -jobs 3: the catalogue is another "):
            self.run_with_jobs(f'[ "$3" != {VERIFY} ] || printf x >> Quorvane/Certificates/base.bin')

    def write_listed_file(self) -> Eviction:
        (self.place.trees / "file").write_bytes(bytes(100_000))
        self.place.listing.write_bytes(b"file\0")
        return Eviction(self.place.trees, self.place.listing)

    @unittest.skipUnless(shutil.which("fincore") and hasattr(os, "posix_fadvise"), "needs fincore")
    def test_files_are_evicted(self) -> None:
        kind = subprocess.run(["stat", "--file-system", "--format=%T", str(self.place.trees)],
                              stdout=subprocess.PIPE, check=True, universal_newlines=True).stdout
        if kind.strip() in ("tmpfs", "ramfs"):
            self.skipTest("the build directory is in memory")
        eviction = self.write_listed_file()
        self.assertGreater(resident_pages(self.place.trees, self.place.listing) or 0, 0)
        self.assertTrue(eviction.run(), eviction.obstacle)
        self.assertTrue(eviction.is_proven)
        self.assertEqual(resident_pages(self.place.trees, self.place.listing), 0)

    def test_eviction_is_proven_by_what_was_seen(self) -> None:
        for pages, works, is_proven in (([5, 0], True, True), ([5, 1], False, False),
                                        ([0, 0], True, False), ([None, None], True, False),
                                        ([5, 0, 0, 0], True, True), ([5, 0, 5, None], True, False),
                                        ([5, 0, 5, 1], False, False)):
            with self.subTest(pages=pages):
                eviction = self.write_listed_file()
                with mock.patch("cold_runs.resident_pages", side_effect=pages):
                    results = [eviction.run() for _ in range(len(pages) // 2)]
                self.assertEqual((results[-1], eviction.is_proven), (works, is_proven))
                self.assertEqual(eviction.obstacle == "", works)

    def test_without_eviction_nothing_is_measured(self) -> None:
        with mock.patch("cold_runs.resident_pages", return_value=7), \
                contextlib.redirect_stderr(io.StringIO()), \
                contextlib.redirect_stdout(io.StringIO()) as printed:
            cold = run_cold(self.place, "small-2000", 0.0005, 1)
            compare.report.print_cold(cold)
        self.assertIn("| generate | not measured |", printed.getvalue())
        self.assertIn("Not measured: 7 pages stayed in the page cache.", printed.getvalue())
        self.assertIn("| cat | not measured |", printed.getvalue())
        self.assertEqual(cold.result.times, {})

    def test_reading_is_measured_beside_cold_runs(self) -> None:
        with mock.patch.object(Eviction, "run", return_value=True), \
                contextlib.redirect_stderr(io.StringIO()):
            cold = run_cold(self.place, "small-2000", 0.0005, 3)
        self.assertEqual(len(cold.result.times[READING].wall), 3)

    def test_reading_reads_the_listed_files_and_writes_nothing(self) -> None:
        self.write_listed_file()
        command = reading_command(self.place.trees, self.place.listing)
        run(command, self.place.log)
        self.assertEqual(self.place.log.read_bytes(), b"")
        (self.place.trees / "file").unlink()
        with self.assertRaises(CommandFailed):
            run(command, self.place.log)


if __name__ == "__main__":
    unittest.main()
