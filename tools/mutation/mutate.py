"""Changes each conditional branch of one unit in turn and runs the unit tests against it.

The sources of the unit are compiled once, with every condition passing through a function that an
environment variable makes invert it, or take it for true or false. A mutant that no test notices is a
survivor. Survivors that are known are explained in survivors.txt, one a line; any other, or fewer than 95 %
caught, fails the run.
"""

from __future__ import annotations

import argparse
import concurrent.futures
import os
import shutil
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path
from typing import Dict, List, Set, Tuple

from conditions import Condition, conditions_of, instrumented

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
LEAST_CAUGHT = 0.95


@dataclass(frozen=True)
class Unit:
    """What is changed, and the tests that are asked first. All are, where those notice nothing."""

    files: Tuple[str, ...]
    own_tests: str


UNITS: Dict[str, Unit] = {
    "reader": Unit(
        ("catalogue/catalogue_reader.cpp", "catalogue/entry_block_reader.cpp", "catalogue/stored_entry.cpp"),
        "CatalogueReader*:HostileCatalogue*:StoredEntry*:HashCatalogueRead*",
    ),
    "lzw": Unit(("catalogue/lzw/*.cpp",), "*Lzw*:HostileCatalogue*"),
    "signatures": Unit(
        ("catalogue/catalogue_signature.cpp", "runtime/sign*.cpp", "runtime/stored_signature.cpp"),
        "CatalogueSignature*:Sign*:StoredSignature*:-SignedCatalogue.Every*",
    ),
    "trust": Unit(
        ("runtime/certificate_trust.cpp", "runtime/mbedtls_result.cpp", "app/runtime_configuration_check.cpp"),
        "CertificateTrust*:MbedTls*:TrustMaterial*",
    ),
    "file-check": Unit(("catalogue/file_verification.cpp",), "FileVerification*:FileChanging*"),
    "hashing": Unit(
        (
            "catalogue/catalogue_entry.cpp",
            "catalogue/hash_catalogue.cpp",
            "catalogue/hashing/chunk*.cpp",
            "catalogue/hashing/file_*.cpp",
            "catalogue/hashing/game_file*.cpp",
            "catalogue/hashing/make_chunk_hasher.cpp",
            "catalogue/hashing/sequential_chunk_hasher.cpp",
        ),
        "CatalogueEntry*:HashCatalogue*:Chunk*:FileHash*:FileChanging*:GameFile*:Changing*:Sequential*",
    ),
    "writer": Unit(("catalogue/catalogue_writer.cpp", "catalogue/path_alias.cpp"), "CatalogueWriter*:*PathAlias*:*Alias*"),
}
ALL_TESTS = "*"


@dataclass(frozen=True)
class Mutant:
    """A condition of a file and what becomes of it."""

    number: int
    file: str
    condition: Condition
    change: str

    def __str__(self) -> str:
        return f"{self.file}: {self.condition.text}: {self.change}"


class Mutation:
    """One unit, its mutants, and the program that holds them all."""

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

    def compile(self) -> None:
        """Copy the tree, change the sources of the unit, and build the unit tests."""
        copy_changed(ROOT, self.tree)
        numbered = 0
        for name in self.files:
            source = ROOT / "src" / name
            found = conditions_of(source, ["-std=c++20", f"-I{ROOT / 'src'}"])
            text = b'#include "mutation.h"\n#line 1\n' + instrumented(source, found, numbered)
            write_changed(self.tree / "src" / name, text)
            for number, condition in enumerate(found, numbered):
                self.mutants += [Mutant(number, name, condition, change) for change in condition.changes]
            numbered += len(found)
        write_changed(self.tree / "src" / "mutation.h", (HERE / "mutation.h").read_bytes())
        self._run_quietly(
            [str(self.tree / "tools/configure.sh"), "dev", "-B", str(self.build),
             "-DSEALKEEPER_WARNINGS_AS_ERRORS=OFF", "-DSEALKEEPER_BUILD_BENCHMARKS=OFF"])
        self._run_quietly(["cmake", "--build", str(self.build), "--target", "sealkeeper_unit_tests",
                           "--", "-j", str(self.jobs)])
        credentials = self.tree / "build" / "test-credentials"
        self._run_quietly(["bash", str(self.tree / "tests/support/issue_test_credentials.sh"), str(credentials)])

    def _run_quietly(self, command: List[str]) -> None:
        done = subprocess.run(command, cwd=self.tree, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if done.returncode != 0:
            sys.stderr.buffer.write(done.stdout)
            raise SystemExit(f"{command[0]} failed")

    def pass_with(self, mutant: str, tests: str, timeout: float) -> bool:
        """Whether these unit tests pass with that mutant."""
        environment = {**os.environ, "SEALKEEPER_MUTANT": mutant, "GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "1"}
        try:
            done = subprocess.run([str(self.build / "tests" / "sealkeeper_unit_tests"), f"--gtest_filter={tests}"],
                                  env=environment,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                  timeout=timeout, check=False)
        except subprocess.TimeoutExpired:
            return False
        return done.returncode == 0

    def timeout_of(self, tests: str) -> float:
        """How many seconds these tests may take with a mutant: several run at a time."""
        begun = time.monotonic()
        if not self.pass_with("", tests, 600):
            raise SystemExit(f"the unit tests {tests} fail without any mutant")
        return 5 + 3 * self.jobs * (time.monotonic() - begun)

    def survivors(self) -> List[Mutant]:
        """Run the tests against every mutant: those of the unit first, then all."""
        left = self.mutants
        for tests in (self.own_tests, ALL_TESTS):
            timeout = self.timeout_of(tests)
            with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
                passed = list(pool.map(
                    lambda mutant: self.pass_with(f"{mutant.number}:{mutant.change}", tests, timeout), left))
            left = [mutant for mutant, alive in zip(left, passed) if alive]
            print(f"{len(left)} left after {tests}", flush=True)
        return left


def write_changed(path: Path, content: bytes) -> None:
    """Write a file, unless that is what it holds: it would be compiled again."""
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def copy_changed(source: Path, target: Path) -> None:
    """Copy what is under version control."""
    listed = subprocess.run(["git", "ls-files", "-z"], cwd=source, stdout=subprocess.PIPE, check=True).stdout
    for name in listed.decode().split("\0"):
        path = source / name
        if name and path.is_file():
            write_changed(target / name, path.read_bytes())
            shutil.copymode(path, target / name)


def explained() -> Set[str]:
    """The survivors that survivors.txt explains: what stands before ' # ' in each line."""
    lines = (HERE / "survivors.txt").read_text().splitlines()
    return {line.split(" # ")[0].strip() for line in lines if line.strip() and not line.startswith("#")}


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("unit", choices=sorted(UNITS))
    parser.add_argument("--build-dir", type=Path, default=ROOT / "build" / "mutation")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    options = parser.parse_args()

    mutation = Mutation(options.unit, options.build_dir.resolve(), options.jobs)
    mutation.compile()
    print(f"{options.unit}: {len(mutation.mutants)} mutants in {len(mutation.files)} files", flush=True)
    survivors = mutation.survivors()
    unexplained = [mutant for mutant in survivors if str(mutant) not in explained()]
    for mutant in survivors:
        mark = "UNEXPLAINED" if mutant in unexplained else "explained"
        print(f"{mark}: {mutant.file}:{mutant.condition.line}: {mutant.condition.text}: {mutant.change}")
    caught = len(mutation.mutants) - len(survivors)
    share = caught / len(mutation.mutants)
    print(f"{options.unit}: {caught} of {len(mutation.mutants)} caught, {100 * share:.1f} %; "
          f"{len(unexplained)} survivors without an explanation")
    return 0 if share >= LEAST_CAUGHT and not unexplained else 1


if __name__ == "__main__":
    sys.exit(main())
