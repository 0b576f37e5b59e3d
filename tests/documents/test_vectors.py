"""The test vectors in docs/vectors are what their script generates, and give the codes in their table.

The program must give these codes, and the independent reader too as far as it can tell.
"""

from __future__ import annotations

import filecmp
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor
from functools import lru_cache
from pathlib import Path
from typing import Any, Callable, Dict, List, Optional, Tuple

import catalogue_format
import runtime_conf_format
from catalogue_entry import Entry, chunk_digests
from format_error import FormatError

ROOT = Path(__file__).resolve().parents[2]
KEPT = ROOT / "docs" / "vectors"
SCRIPT = ROOT / "tools" / "vectors" / "make_vectors.py"
TABLE = json.loads((KEPT / "vectors.json").read_text(encoding="utf-8"))
VECTORS: List[Dict[str, Any]] = TABLE["vectors"]
CERTIFICATES = "Quorvane/Certificates"
TIMEOUT_SECONDS = 120

Outcome = Dict[str, Any]
Verdicts = List[Tuple[str, int]]

VERDICT = re.compile(r"^\[(?:Info|Err!)\] \[(?:Success|Failure)\] [A-Z][a-z ]+ '(.*)'(?: - Code (\d+) \(.*\))?\.$", re.M)
RUNTIME_CODES = {
    "Successfully validated runtime configuration: ": 0,
    "Validation of runtime configuration failed: ": 22,
    "Error verifying certificate file ": 22,
    "Failed to read certificate file ": 27,
    "Error parsing certificate file ": 27,
}
SOLUTIONS = {name: number for number, name in enumerate(runtime_conf_format.ANTI_TAMPER_SOLUTIONS)}


def run_program(*arguments: str) -> "subprocess.CompletedProcess[str]":
    program = Path(os.environ["SEALKEEPER_PROGRAM"]).resolve()
    return subprocess.run([program, *arguments], stdout=subprocess.PIPE, encoding="utf-8", check=False,
                          timeout=TIMEOUT_SECONDS)


def verified_by_program(directory: Path, product: str) -> Outcome:
    """In the form of the table."""
    run = run_program("-productid", product, "verify", str(directory))
    outcome: Outcome = {"productId": product, "status": run.returncode}
    if "Verification summary:" in run.stdout:
        outcome["files"] = [{"path": path, "status": int(code or 0)} for path, code in VERDICT.findall(run.stdout)]
    if "Validating runtime configuration file at: " in run.stdout:
        (outcome["runtimeConf"],) = [code for text, code in RUNTIME_CODES.items() if text in run.stdout]
    return outcome


def listed_by_program(directory: Path, file: str) -> Outcome:
    """In the form of the table."""
    run = run_program("list", str(directory / file))
    outcome: Outcome = {"file": file, "status": run.returncode}
    if run.returncode != 0:
        return outcome
    _, _, text = run.stdout.partition("Performing list action on: ")
    lines = [line.partition("] ")[2] for line in text.splitlines()[1:]]
    if lines[0].endswith(" files in catalogue:"):
        outcome["paths"] = lines[1:]
    else:
        outcome["settings"] = settings_in(lines)
    return outcome


def settings_in(lines: List[str]) -> Dict[str, Any]:
    values = dict(line.strip().split(": ", 1) for line in lines if line.startswith("    "))
    name = values["Crash reporter name"]
    invalid = [line for line in lines if line.startswith("Called with invalid value: ")]
    solution = int(invalid[0].strip(".").rpartition(" ")[2]) if invalid else SOLUTIONS[values["Game binary anti tamper solution"]]
    return {
        "version": int(values["Version"]),
        "maxActiveInstances": int(values["Maximum amount of active client instances"]),
        "crashReporterName": "" if name == "N/A" else name,
        "antiTamperSolution": solution,
    }


def catalogues_in_any_order(vector: Outcome) -> Outcome:
    """The file system decides which of two catalogues is read first."""
    verify = dict(vector)
    if "files" in verify:
        verify["files"] = sorted(verify["files"], key=lambda file: file["path"])
    return verify


def for_each(vectors: List[Dict[str, Any]], look: Callable[[Dict[str, Any]], Any]) -> "list[Tuple[Dict[str, Any], Any]]":
    with ThreadPoolExecutor(os.cpu_count()) as threads:
        return list(zip(vectors, threads.map(look, vectors)))


class Made(unittest.TestCase):
    """The script generates the stored vectors, and those too large to be stored."""

    @classmethod
    def setUpClass(cls) -> None:
        scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(scratch.cleanup)
        cls.made = Path(scratch.name)
        subprocess.run([sys.executable, "-B", str(SCRIPT), str(cls.made)], check=True, timeout=TIMEOUT_SECONDS)

    def test_kept_files_are_those_that_are_made(self) -> None:
        kept = self.files_of(KEPT)
        made = self.files_of(self.made)
        large = {vector["directory"] for vector in VECTORS if vector.get("isLarge")}
        expected = [name for name in made if "/".join(name.split("/")[:2]) not in large]
        self.assertEqual(kept, expected)
        _, different, failed = filecmp.cmpfiles(KEPT, self.made, kept, shallow=False)
        self.assertEqual((different, failed), ([], []))

    def test_table_is_that_which_is_made(self) -> None:
        self.assertEqual(TABLE, json.loads((self.made / "vectors.json").read_text(encoding="utf-8")))

    def test_large_ones_give_the_codes_of_the_table(self) -> None:
        large = [vector for vector in VECTORS if vector.get("isLarge")]
        self.assertTrue(large)
        for vector in large:
            with self.subTest(vector["name"]):
                directory = self.made / vector["directory"]
                self.assertEqual(verified_by_program(directory, vector["verify"]["productId"]), vector["verify"])
                for listing in vector["list"]:
                    self.assertEqual(listed_by_program(directory, listing["file"]), listing)

    @staticmethod
    def files_of(directory: Path) -> List[str]:
        return sorted(path.relative_to(directory).as_posix() for path in directory.glob("sets/**/*") if path.is_file())


class Kept(unittest.TestCase):
    """The table, checked with the program and with the independent reader."""

    def setUp(self) -> None:
        self.vectors = [vector for vector in VECTORS if not vector.get("isLarge")]
        # On a file system that ignores letter case the reader is not to blame for finding the file.
        if (KEPT / "VECTORS.json").exists():
            self.vectors = [vector for vector in self.vectors if vector["name"] != "file-in-other-letters"]

    def test_table_and_sets_go_together(self) -> None:
        names = [vector["name"] for vector in VECTORS]
        self.assertEqual(len(names), len(set(names)))
        directories = {vector["directory"] for vector in VECTORS if not vector.get("isLarge")}
        self.assertEqual(directories, {f"sets/{path.name}" for path in (KEPT / "sets").iterdir()})

    def test_they_stay_small(self) -> None:
        self.assertLess(sum(path.stat().st_size for path in KEPT.glob("**/*") if path.is_file()), 500_000)

    def test_program_verifies_them_so(self) -> None:
        def look(vector: Dict[str, Any]) -> Outcome:
            return verified_by_program(KEPT / vector["directory"], vector["verify"]["productId"])

        for vector, found in for_each(self.vectors, look):
            with self.subTest(vector["name"]):
                self.assertEqual(catalogues_in_any_order(found), catalogues_in_any_order(vector["verify"]))

    def test_program_lists_them_so(self) -> None:
        def look(vector: Dict[str, Any]) -> List[Outcome]:
            return [listed_by_program(KEPT / vector["directory"], listing["file"]) for listing in vector["list"]]

        for vector, found in for_each(self.vectors, look):
            with self.subTest(vector["name"]):
                self.assertEqual(found, vector["list"])

    def test_every_signed_file_is_listed(self) -> None:
        for vector in self.vectors:
            folder = KEPT / vector["directory"] / CERTIFICATES
            signed = [path.name for path in folder.glob("*") if path.suffix in (".bin", ".conf")]
            listed = [Path(listing["file"]).name for listing in vector["list"]]
            with self.subTest(vector["name"]):
                self.assertEqual(sorted(listed), sorted(signed))

    def test_independent_reader_verifies_them_so(self) -> None:
        judged = 0
        for vector, found in for_each(self.vectors, lambda vector: IndependentReader(vector).verify()):
            expected = {name: vector["verify"].get(name) for name in found}
            judged += bool(found)
            with self.subTest(vector["name"]):
                self.assertEqual(catalogues_in_any_order(found), catalogues_in_any_order(expected))
        # It knows no authority, so it cannot judge vectors whose certificate is not good.
        self.assertGreater(judged, len(self.vectors) // 2)

    def test_independent_reader_lists_them_so(self) -> None:
        for vector, found in for_each(self.vectors, lambda vector: IndependentReader(vector).listings()):
            expected = [listing for listing in vector["list"] if listing["file"] in [one["file"] for one in found]]
            with self.subTest(vector["name"]):
                self.assertEqual(found, expected)
                self.assertLessEqual(len(vector["list"]) - len(found), 1)


# Most sets contain the same good files.
@lru_cache(maxsize=None)
def is_signature_good(file_format: Any, content: bytes, certificate: bytes) -> bool:
    """By the independent reader's module for the format."""
    with tempfile.NamedTemporaryFile() as copy:
        copy.write(certificate)
        copy.flush()
        try:
            return file_format.verify(content, copy.name)
        except FormatError:
            return False


class IndependentReader:
    """The independent reader's result for a vector, without what it cannot tell."""

    def __init__(self, vector: Dict[str, Any]) -> None:
        self.game = KEPT / vector["directory"]
        self.folder = self.game / CERTIFICATES
        self.product = vector["verify"]["productId"]
        self.vector = vector

    def verify(self) -> Outcome:
        catalogues = sorted(self.folder.glob("*.bin"))
        if not catalogues:
            return {"status": 3}
        codes = [self.catalogue_code(path) for path in catalogues]
        if None in codes:
            return {}
        if any(codes):
            return {"status": max(code for code in codes if code is not None)}
        verdicts = [verdict for path in catalogues for verdict in self.verdicts(path)]
        outcome: Outcome = {"files": [{"path": path, "status": code} for path, code in verdicts]}
        outcome.update(self.runtime_conf_code())
        return outcome

    def catalogue_code(self, path: Path) -> Optional[int]:
        try:
            catalogue_format.parse(path.read_bytes(), strict=False)
        except FormatError:
            return 9
        certificate = path.with_suffix(".cer")
        if not certificate.exists():
            return 27
        if not self.is_trusted(certificate):
            return None
        return 0 if is_signature_good(catalogue_format, path.read_bytes(), certificate.read_bytes()) else 11

    def is_trusted(self, certificate: Path) -> bool:
        """Compares certificates byte for byte, since no authority is known here."""
        good = [KEPT / "keys" / owner / "base_public.cer" for owner in ("game", "game-second-key", "game-4096-bits")]
        return self.product == "VectorProduct" and certificate.read_bytes() in [path.read_bytes() for path in good]

    def verdicts(self, path: Path) -> Verdicts:
        entries = catalogue_format.parse(path.read_bytes(), strict=False).entries
        return [(entry.path, self.verdict(entry)) for entry in entries]

    def verdict(self, entry: Entry) -> int:
        file = self.game / entry.path
        if not file.is_file():
            return 23
        content = file.read_bytes()
        if len(content) != entry.size:
            return 24
        if entry.size == 0 or not entry.digests:
            return 0
        return 0 if chunk_digests(content) == entry.digests else 26

    def runtime_conf_code(self) -> Outcome:
        conf, certificate = self.folder / "runtime.conf", self.folder / "base.cer"
        if not conf.exists():
            return {"runtimeConf": None}
        if not certificate.exists():
            return {"runtimeConf": 27}
        if not self.is_trusted(certificate):
            return {}
        is_good = is_signature_good(runtime_conf_format, conf.read_bytes(), certificate.read_bytes())
        return {"runtimeConf": 0 if is_good else 22}

    def listings(self) -> List[Outcome]:
        files = [self.vector["list"][index]["file"] for index in range(len(self.vector["list"]))]
        found = [self.listing(file) for file in files]
        return [listing for listing in found if listing]

    def listing(self, file: str) -> Outcome:
        content = (self.game / file).read_bytes()
        try:
            if content.startswith(catalogue_format.MAGIC):
                entries = catalogue_format.parse(content, strict=False).entries
                return {"file": file, "status": 0, "paths": [entry.path for entry in entries]}
            if len(content) > runtime_conf_format.FILE_SIZE:
                # Unlike the program, the reader takes no longer file.
                return {}
            return self.runtime_listing(file, runtime_conf_format.parse(content, strict=False))
        except FormatError:
            return {"file": file, "status": 9}

    @staticmethod
    def runtime_listing(file: str, conf: runtime_conf_format.RuntimeConf) -> Outcome:
        if conf.version != runtime_conf_format.SUPPORTED_VERSION:
            return {"file": file, "status": 10}
        settings = {
            "version": conf.version,
            "maxActiveInstances": conf.max_active_instances,
            "crashReporterName": conf.crash_reporter_name.decode("utf-8"),
            "antiTamperSolution": conf.anti_tamper_solution,
        }
        return {"file": file, "status": 0, "settings": settings}


if __name__ == "__main__":
    unittest.main()
