"""Files that demand much memory or time: how much the program uses, and its messages when memory runs out.

Memory tests are skipped under the address sanitizer and under an emulator. Time tests run there too.
"""

from __future__ import annotations

import os
import re
import resource
import signal
import subprocess
import unittest
from pathlib import Path

import catalogue_format
import e2e_console as console
import e2e_read_back as texts
from catalogue_entry import entry_of_bytes
from compressed_bomb import MIB, bomb
from e2e_support import GOOD, PRODUCT, PROGRAM, TIMEOUT_SECONDS, Run, config, with_limited_address_space
from independent_test_support import block_of_codes
from signed_game import STATUSES, SignedGameTest

RECORD = entry_of_bytes("a", b"a").record()
LARGEST = 2**32 - 1
INSPECT = Path(os.environ["SEALKEEPER_INSPECT"]) if "SEALKEEPER_INSPECT" in os.environ else None
KIB = 1024
NOT_STARTED = (127, -signal.SIGKILL, -signal.SIGSEGV)
"""The loader lacks memory, or the kernel does."""
START_STEP = 128 * KIB
BOMB_MEGABYTES = 64
"""The program itself uses 20 MB."""


def signed(block: bytes, count: int, raw_length: int = 0) -> bytes:
    image = catalogue_format.build_from_compressed_block(block, raw_length, count)
    return catalogue_format.sign(image, GOOD.key)


class LimitedTest(SignedGameTest):
    """Runs a child process under resource limits."""

    def run_within(self, limit: int, amount: int, *arguments) -> Run:
        command_line = [str(PROGRAM), *map(str, arguments)]
        finished = subprocess.run(
            command_line,
            capture_output=True,
            timeout=TIMEOUT_SECONDS,
            check=False,
            preexec_fn=lambda: resource.setrlimit(limit, (amount, amount)),
        )
        self.assertEqual(finished.stderr, b"")
        return Run(command_line, finished.returncode, console.to_text(finished.stdout))


class Time(LimitedTest):
    """A process that uses more processor time than this is killed by a signal."""

    SECONDS = 3

    def assert_refused_in_time(self, image: bytes) -> None:
        path = self.put_image(image)
        run = self.run_within(resource.RLIMIT_CPU, self.SECONDS, "list", path)
        self.assert_console(run, 9, texts.list_begun(path) + texts.not_listed(9))
        run = self.run_within(resource.RLIMIT_CPU, self.SECONDS, "-productid", PRODUCT, "verify", self.game)
        text = self.begun() + texts.reading("base.bin") + texts.not_read("base.bin", 9)
        self.assert_console(run, 9, text)

    def test_codes_without_width_are_not_read_for_ever(self) -> None:
        for body in (b"", bytes(1000)):
            self.assert_refused_in_time(signed(b"\x1f\x9d\x80" + body, 1))

    def test_many_entries_in_few_bytes(self) -> None:
        """The last one is missing."""
        count = 10 * MIB // 528
        block = bomb(bytes(4), 10)
        self.assert_refused_in_time(signed(block, 2 * count))

    def test_counts_without_records(self) -> None:
        self.assert_refused_in_time(signed(b"", LARGEST, LARGEST))


@with_limited_address_space
class Memory(LimitedTest):
    """Runs of a child whose address space is limited."""

    def run_limited(self, megabytes: int, *arguments) -> Run:
        return self.run_within(resource.RLIMIT_AS, megabytes * MIB, *arguments)

    def list_limited(self, megabytes: int, path: Path) -> Run:
        return self.run_limited(megabytes, "list", path)

    def verify_limited(self, megabytes: int) -> Run:
        return self.run_limited(megabytes, "-productid", PRODUCT, "verify", self.game)

    def assert_refused(self, megabytes: int, image: bytes) -> None:
        path = self.put_image(image)
        self.assert_console(self.list_limited(megabytes, path), 9, texts.list_begun(path) + texts.not_listed(9))
        text = self.begun() + texts.reading("base.bin") + texts.not_read("base.bin", 9)
        self.assert_console(self.verify_limited(megabytes), 9, text)

    def assert_out_of_memory(self, run: Run, begun: str) -> None:
        """A one-line error, followed only by the action's line about the code."""
        self.assertIn(run.status, STATUSES)
        self.assertNotEqual(run.status, 0)
        expected = console.opening(run.command_line) + console.parsed_all(run.command_line) + begun
        self.assertEqual(run.output[: len(expected)], expected)
        self.assertRegex(run.output[len(expected) :], re.compile(r"\A\[Err!\] [^\n]*memory[^\n]*\n", re.IGNORECASE))

    def test_numbers_reserve_nothing(self) -> None:
        digests = RECORD[:524] + LARGEST.to_bytes(4, "little")
        for name, image in {
            "entry count": signed(block_of_codes(list(RECORD)), LARGEST, LARGEST),
            "digest count": signed(block_of_codes(list(digests)), 1, LARGEST),
            "no block": signed(b"", LARGEST, LARGEST),
        }.items():
            with self.subTest(name=name):
                self.assert_refused(48, image)

    def test_raw_length_reserves_nothing(self) -> None:
        path = self.put_image(signed(block_of_codes(list(RECORD)), 1, LARGEST))
        run = self.list_limited(48, path)
        self.assert_console(run, 0, texts.list_begun(path) + texts.listed(["a"]))

    def test_bomb_takes_no_memory(self) -> None:
        """The file has 1.7 MB and its block almost 4 GiB, but only one record of it, or none, is needed."""
        for name, count, listed in (("no entry", 0, []), ("one entry", 1, ["a"])):
            image = signed(bomb(entry_of_bytes("a", b"").record(), 4080), count)
            self.assertLess(len(image), 2 * MIB)
            path = self.put_image(image)
            with self.subTest(name=name):
                run = self.list_limited(BOMB_MEGABYTES, path)
                self.assert_console(run, 0, texts.list_begun(path) + texts.listed(listed))
                run = self.verify_limited(BOMB_MEGABYTES)
                self.assertIn(f"[Info] Added {count} file entries from 'base.bin'\n", run.output)

    def test_bomb_after_an_incomplete_record(self) -> None:
        record = RECORD[:524] + LARGEST.to_bytes(4, "little")
        self.assert_refused(BOMB_MEGABYTES, signed(bomb(record, 4080), 1))

    def test_bomb_beyond_the_format(self) -> None:
        self.assert_refused(BOMB_MEGABYTES, signed(bomb(RECORD, 4097), 1))

    def test_digests_beyond_the_memory_there_is(self) -> None:
        """An entry has all the digests of its record, however many."""
        digests = 300 * MIB // 32
        image = signed(bomb(RECORD[:524] + digests.to_bytes(4, "little"), 301), 1)
        self.assertLess(len(image), 200 * 1024)
        path = self.put_image(image)
        self.assert_out_of_memory(self.list_limited(200, path), texts.list_begun(path))
        self.assert_out_of_memory(self.verify_limited(200), self.begun() + texts.reading("base.bin"))

    def test_memory_that_ends_anywhere(self) -> None:
        """Records of zero bytes are valid: they are empty files without a name."""
        count = 20 * MIB // 528
        path = self.put_image(signed(bomb(bytes(4), 20), count))
        begun = texts.list_begun(path)
        ended = set()
        for megabytes in range(12, 200, 4):
            with self.subTest(megabytes=megabytes):
                run = self.list_limited(megabytes, path)
                ended.add(run.status)
                if run.status == 0:
                    self.assert_console(run, 0, begun + texts.listed([""] * count))
                else:
                    self.assert_out_of_memory(run, begun)
        self.assertEqual(len(ended), 2, f"one code when memory runs out, and 0 when it does not: {ended}")

    def test_threads_leave_memory_for_the_rest(self) -> None:
        """Their stacks may take all of the address space, of which one job needs little."""
        self.write("f", b"x")
        config_file = self.write_config(config('exclude_paths = ["Quorvane"];'))

        def status(megabytes: int, jobs: str) -> int:
            return self.run_limited(
                megabytes, *self.generate_arguments("-jobs", jobs, config_file=config_file)).status

        enough = [megabytes for megabytes in range(32, 260, 4) if status(megabytes, "1") == 0]
        self.assertGreater(len(enough), 40)
        for megabytes in enough:
            with self.subTest(megabytes=megabytes):
                self.assertEqual(status(megabytes, "64"), 0)

    def test_a_stack_that_cannot_grow(self) -> None:
        """A growing stack takes address space. If there is none left, the process is killed."""
        self.put_image(signed(block_of_codes(list(RECORD)), 1))
        start = self.least_to_start(PROGRAM)
        verify = [PROGRAM, "-productid", PRODUCT, "verify", self.game]
        statuses = {self.run_started(amount, *verify).status for amount in range(start, start + MIB, 32 * KIB)}
        self.assertLessEqual(statuses, set(STATUSES))
        self.assertIn(23, statuses, "the last of them had enough: the file is missing")

    def test_too_little_memory_for_an_exception(self) -> None:
        """The C++ library sets memory aside for exceptions before `main`. Without it, throwing one ends the process."""
        self.write("a")
        path = self.put_image(signed(block_of_codes(list(RECORD)), 1))
        for arguments in (
            ["list", path],
            ["-productid", PRODUCT, "verify", self.game],
            self.generate_arguments(config_file=self.write_config(config(""))),
            ["-h"],
        ):
            self.assert_says_out_of_memory(2, "[Err!] Out of memory.\n", PROGRAM, *arguments)

    @unittest.skipIf(INSPECT is None, "the companion is not built")
    def test_too_little_memory_for_an_exception_of_the_companion(self) -> None:
        path = self.put_image(signed(block_of_codes(list(RECORD)), 1))
        self.assert_says_out_of_memory(2, "sealkeeper-inspect: out of memory\n", INSPECT, "show", path)

    @unittest.skipIf(INSPECT is None, "the companion is not built")
    def test_memory_that_ends_anywhere_in_the_companion(self) -> None:
        self.put_catalogue(self.put_files({f"many/file{number:04}": b"x" for number in range(1500)}))
        start = self.least_to_start(INSPECT)
        check = [INSPECT, "check", self.game, "--product", PRODUCT, "--json"]
        runs = [self.run_started(amount, *check) for amount in range(start, start + 12 * MIB, 512 * KIB)]
        for run in runs:
            self.assertIn(run.status, STATUSES)
            self.assertTrue(run.status == 0 or "sealkeeper-inspect: " in run.output, run.output)
        self.assertEqual((runs[0].status, runs[-1].status), (2, 0))

    def assert_says_out_of_memory(self, status: int, text: str, program: Path, *arguments) -> None:
        """Where memory ends after the program was started, the status is documented; where it ends first, it is this."""
        start = self.least_to_start(program)
        with self.subTest(program=program.name, arguments=arguments):
            runs = [self.run_started(amount, program, *arguments)
                    for amount in range(start, start + START_STEP, 4 * KIB)]
            self.assertEqual((runs[0].status, runs[0].output[-len(text):]), (status, text))
            self.assertLessEqual({run.status for run in runs}, set(STATUSES))

    def least_to_start(self, program: Path) -> int:
        """The least address space, to the page, with which the system starts the program."""
        enough = next(amount for amount in range(START_STEP, 1024 * MIB, START_STEP)
                      if self.run_started(amount, program, "--version").status not in NOT_STARTED)
        return next(amount for amount in range(enough - START_STEP, enough + 1, 4 * KIB)
                    if self.run_started(amount, program, "--version").status not in NOT_STARTED)

    @staticmethod
    def run_started(amount: int, *command_line) -> Run:
        """A run with so much address space; its output is that of both streams."""
        words = list(map(str, command_line))
        finished = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False,
                                  timeout=TIMEOUT_SECONDS,
                                  preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (amount, amount)))
        return Run(words, finished.returncode, console.to_text(finished.stdout))

    def test_file_beyond_the_memory_there_is(self) -> None:
        for name in ("base.bin", "runtime.conf"):
            self.put_catalogue([])
            path = self.write_sparse(f"Quorvane/Certificates/{name}", 300 * MIB)
            with self.subTest(name=name):
                run = self.list_limited(100, path)
                self.assertIn(run.status, STATUSES)
                self.assertNotEqual(run.status, 0)
                self.assertIn("[Err!]", run.output)
                run = self.verify_limited(100)
                self.assertIn(run.status, STATUSES)
            path.unlink()


if __name__ == "__main__":
    unittest.main()
