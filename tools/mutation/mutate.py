"""Changes each conditional branch of one unit in turn and runs the unit tests against it.

The sources of the unit are compiled once. Every condition passes through a function that can invert it, or make it true
or false, as an environment variable says. A mutant that no test notices is a survivor. Known survivors are explained in
survivors.txt, one per line. Any other survivor, or fewer than 95 % caught, fails the run.
"""

from __future__ import annotations

import argparse
import concurrent.futures
import os
import resource
import shutil
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass
from pathlib import Path
from typing import Dict, List, Set, Tuple

from conditions import Condition, Unchanged, branches_of, instrumented

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
LEAST_CAUGHT = 0.95


@dataclass(frozen=True)
class Unit:
    """What is changed, and the tests to run first, in turn. If they notice nothing, all tests run."""

    files: Tuple[str, ...]
    own_tests: Tuple[str, ...]


UNITS: Dict[str, Unit] = {
    "reader": Unit(
        (
            "catalogue/catalogue_reader.cpp",
            "catalogue/entry_block_reader.cpp",
            "catalogue/entry_record_reader.cpp",
            "catalogue/stored_entry.cpp",
        ),
        ("CatalogueReader*:EntryRecordReader*:HostileCatalogue*:StoredEntry*:HashCatalogueRead*:HashCatalogueList*:"
         "ReadingMemoryFaults*:VerifyFaults.Catalogue*",),
    ),
    "lzw": Unit(("catalogue/lzw/*.cpp",), ("*Lzw*:EntryRecordReader*:HostileCatalogue*",)),
    "signatures": Unit(
        ("catalogue/catalogue_signature.cpp", "runtime/sign*.cpp", "runtime/stored_signature.cpp"),
        ("CatalogueSignature*:Sign*:StoredSignature*:FileStatusFaults*",),
    ),
    "trust": Unit(
        ("runtime/certificate_trust.cpp", "runtime/mbedtls_result.cpp", "app/runtime_configuration_check.cpp"),
        ("CertificateTrust*:MbedTls*:TrustMaterial*:RuntimeConfigurationCheck*",),
    ),
    "file-check": Unit(
        ("catalogue/file_verification.cpp",),
        ("FileVerificationFaults*:FileChanging*", "FileVerificationTest*:ReaderFallback*"),
    ),
    "hashing": Unit(
        (
            "catalogue/catalogue_entry.cpp",
            "catalogue/hash_catalogue.cpp",
            "catalogue/hashing/chunk*.cpp",
            "catalogue/hashing/file_*.cpp",
            "catalogue/hashing/game_file*.cpp",
            "catalogue/hashing/make_chunk_hasher.cpp",
            "catalogue/hashing/sequential_chunk_hasher.cpp",
            "catalogue/progress.cpp",
        ),
        # Tests of single calls take almost no time.
        ("CatalogueEntry*:CatalogueWriterC*:Chunked*:FileHasherFaults*:FileStatusFaults*:GameFile*:HashCatalogueTest*:"
         "JobsFaults*:Progress*:ReaderFallback*:SequentialChunkHasher*",
         "*Changing*:AppearingFile*:*FileHasher*:FileHashing*:HashCatalogueRead*:CatalogueWriterMemory*"),
    ),
    "writer": Unit(
        ("catalogue/catalogue_writer.cpp", "catalogue/path_alias.cpp"),
        ("CatalogueWriter*:HashCatalogueTest*:*Alias*:*ConverterFaults*:OutputFileFaults*",),
    ),
}
ALL_TESTS = "*"
# Tests that take seconds run only with all the others, for mutants that nothing else notices.
SLOW_TESTS = ":".join((
    "*ConverterFaults.GenerateWrites*",
    "HostileCatalogue.EverySingleBit*",
    "MemoryFaults.EveryAllocationOfARun*",
    "SignedCatalogue.Every*",
))
MOST_DATA_BYTES = 4 << 30
# Before a run counts as hanging: on a busy machine any run may take tens of seconds longer.
LEAST_WAIT_SECONDS = 60


@dataclass(frozen=True)
class Mutant:
    """A condition in a file, and the change to it."""

    number: int
    file: str
    condition: Condition
    # Counted from 1 among the conditions in the file with the same text.
    occurrence: int
    change: str

    @property
    def choice(self) -> str:
        """The value of the environment variable."""
        return f"{self.number}:{self.change}"

    def __str__(self) -> str:
        which = f" ({self.occurrence})" if self.occurrence > 1 else ""
        return f"{self.file}: {self.condition.text}{which}: {self.change}"


@dataclass(frozen=True)
class Limit:
    """The seconds that a test run may take, of elapsed and of processor time."""

    wall: float
    processor: int


class Mutation:
    """One unit, its mutants, and the program that contains them all."""

    def __init__(self, unit: str, build: Path, jobs: int) -> None:
        self.tree = build / "tree"
        self.build = build / "build"
        self.jobs = jobs
        self.files = [
            path.relative_to(ROOT / "src").as_posix()
            for pattern in UNITS[unit].files
            for path in sorted((ROOT / "src").glob(pattern))
        ]
        self.own_tests = UNITS[unit].own_tests
        self.mutants: List[Mutant] = []
        self.unchanged: List[Tuple[str, Unchanged]] = []
        # The mutants whose tests did not end in time. They count as caught.
        self.out_of_time: List[str] = []

    def compile(self) -> None:
        """Copy the tree, change the sources of the unit, and build the unit tests."""
        copy_changed(ROOT, self.tree)
        numbered = 0
        for name in self.files:
            source = ROOT / "src" / name
            found = branches_of(source, ["-xc++", "-std=c++20", f"-I{ROOT / 'src'}"])
            text = b'#include "mutation.h"\n#line 1\n' + instrumented(source, found.conditions, numbered)
            write_changed(self.tree / "src" / name, text)
            self.mutants += mutants_of(name, found.conditions, numbered)
            self.unchanged += [(name, branch) for branch in found.unchanged]
            numbered += len(found.conditions)
        write_changed(self.tree / "src" / "mutation.h", (HERE / "mutation.h").read_bytes())
        # Fast compilation matters more here than fast code.
        self._run_quietly(
            [str(self.tree / "tools/configure.sh"), "dev", "-B", str(self.build),
             "-DSEALKEEPER_WARNINGS_AS_ERRORS=OFF", "-DSEALKEEPER_BUILD_BENCHMARKS=OFF",
             "-DSEALKEEPER_TEST_COMPILE_OPTIONS=-O0;-g0", "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1"])
        self._run_quietly(["cmake", "--build", str(self.build), "--target", "sealkeeper_unit_tests",
                           "--", "-j", str(self.jobs)])
        credentials = self.tree / "build" / "test-credentials"
        self._run_quietly(["bash", str(self.tree / "tests/support/issue_test_credentials.sh"), str(credentials)])

    def _run_quietly(self, command: List[str]) -> None:
        done = subprocess.run(command, cwd=self.tree, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if done.returncode != 0:
            sys.stderr.buffer.write(done.stdout)
            raise SystemExit(f"{command[0]} failed")

    def pass_with(self, mutant: str, tests: str, limit: Limit) -> bool:
        """Whether these unit tests pass with that mutant."""
        # The directory takes along what a test that crashes or hangs leaves behind.
        with tempfile.TemporaryDirectory(prefix="sealkeeper_mutant_") as temporary:
            environment = {**os.environ, "SEALKEEPER_MUTANT": mutant, "TMPDIR": temporary,
                           "GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "1"}
            try:
                # The processor time stops an endless loop. Unlike elapsed time it does not depend on the load.
                done = subprocess.run(["bash", "-c", 'ulimit -t "$1" && exec "${@:2}"', "bash", str(limit.processor),
                                       str(self.build / "tests" / "sealkeeper_unit_tests"), f"--gtest_filter={tests}"],
                                      env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                      stderr=subprocess.DEVNULL, timeout=limit.wall, check=False)
            except subprocess.TimeoutExpired:
                self.out_of_time.append(mutant)
                return False
        return done.returncode == 0

    def limit_of(self, tests: str) -> Limit:
        """The limit for these tests with a mutant. Several of them run at a time."""
        begun, used = time.monotonic(), processor_time_of_children()
        if not self.pass_with("", tests, Limit(600, 600)):
            raise SystemExit(f"the unit tests {tests} fail without any mutant")
        return Limit(LEAST_WAIT_SECONDS + 3 * self.jobs * (time.monotonic() - begun),
                     5 + 3 * round(processor_time_of_children() - used))

    def left_by(self, tests: str, mutants: List[Mutant], runs: int = 1) -> List[Mutant]:
        """The mutants that these tests do not notice in every one of `runs` runs."""
        begun, limit = time.monotonic(), self.limit_of(tests)

        def passes(mutant: Mutant) -> bool:
            return any(self.pass_with(mutant.choice, tests, limit) for _ in range(runs))

        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            passed = list(pool.map(passes, mutants))
        left = [mutant for mutant, alive in zip(mutants, passed) if alive]
        print(f"{len(left)} of {len(mutants)} left after {time.monotonic() - begun:.0f} s of {tests}", flush=True)
        return left

    def survivors(self, own_tests_alone: bool) -> List[Mutant]:
        """Run the tests of the unit against every mutant, and all tests against those left."""
        # A mutant may allocate without end, or crash hundreds of times.
        resource.setrlimit(resource.RLIMIT_DATA, (MOST_DATA_BYTES, resource.getrlimit(resource.RLIMIT_DATA)[1]))
        resource.setrlimit(resource.RLIMIT_CORE, (0, resource.getrlimit(resource.RLIMIT_CORE)[1]))
        stages = [f"{tests}-{SLOW_TESTS}" for tests in self.own_tests]
        left = self.mutants
        for tests in stages:
            left = self.left_by(tests, left) if left else left
        if left and not own_tests_alone:
            # Among so many tests one may fail for another reason, which must not count as noticing the mutant.
            left = self.left_by(ALL_TESTS, left, runs=2)
        return left


def processor_time_of_children() -> float:
    """In seconds, for all that have ended."""
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def mutants_of(file: str, conditions: List[Condition], first_number: int) -> List[Mutant]:
    """All mutants of the conditions in a file. The conditions are numbered from `first_number`."""
    mutants = []
    seen: Dict[str, int] = {}
    for number, condition in enumerate(conditions, first_number):
        seen[condition.text] = seen.get(condition.text, 0) + 1
        mutants += [Mutant(number, file, condition, seen[condition.text], change) for change in condition.changes]
    return mutants


def write_changed(path: Path, content: bytes) -> None:
    """Write a file only if its content changes, since it would be compiled again."""
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def copy_changed(source: Path, target: Path) -> None:
    """Copy the files under version control."""
    listed = subprocess.run(["git", "ls-files", "-z"], cwd=source, stdout=subprocess.PIPE, check=True).stdout
    for name in listed.decode().split("\0"):
        path = source / name
        if name and path.is_file():
            write_changed(target / name, path.read_bytes())
            shutil.copymode(path, target / name)


def explained() -> Set[str]:
    """The survivors explained in survivors.txt: the text before ' # ' in each line."""
    lines = (HERE / "survivors.txt").read_text().splitlines()
    return {line.split(" # ")[0].strip() for line in lines if line.strip() and not line.startswith("#")}


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("unit", choices=sorted(UNITS))
    parser.add_argument("--build-dir", type=Path, default=ROOT / "build" / "mutation")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    parser.add_argument("--own-tests", action="store_true", help="ask the tests of the unit alone, without the slow ones, to be done sooner")
    options = parser.parse_args()

    begun = time.monotonic()
    mutation = Mutation(options.unit, options.build_dir.resolve(), options.jobs)
    mutation.compile()
    print(f"{options.unit}: {len(mutation.mutants)} mutants in {len(mutation.files)} files, compiled in "
          f"{time.monotonic() - begun:.0f} s", flush=True)
    for file, branch in mutation.unchanged:
        print(f"not mutated: {file}:{branch.line}: {branch.text}: {branch.reason}")
    return report(options.unit, mutation, begun, options.own_tests)


def report(unit: str, mutation: Mutation, begun: float, own_tests_alone: bool) -> int:
    """Run the mutants and print the result."""
    known = explained()
    survivors = mutation.survivors(own_tests_alone)
    for mutant in survivors:
        mark = "explained" if str(mutant) in known else "UNEXPLAINED"
        print(f"{mark}: {mutant} # line {mutant.condition.line}")
    names = {str(mutant) for mutant in survivors}
    stale = sorted(name for name in known if name.split(": ")[0] in mutation.files and name not in names)
    for mutant in mutation.mutants:
        if mutant.choice in mutation.out_of_time:
            print(f"noticed by the clock alone: {mutant}")
    for name in stale:
        print(f"explained in survivors.txt, but no survivor: {name}")
    caught = len(mutation.mutants) - len(survivors)
    share = caught / len(mutation.mutants)
    unexplained = len(names - known)
    print(f"{unit}: {caught} of {len(mutation.mutants)} caught, {100 * share:.1f} %, "
          f"in {(time.monotonic() - begun) / 60:.1f} minutes; {len(mutation.unchanged)} branches not mutated; "
          f"{unexplained} survivors without an explanation")
    return 0 if share >= LEAST_CAUGHT and not unexplained and not stale else 1


if __name__ == "__main__":
    sys.exit(main())
