"""`show` on every truncation of a small catalogue and of a runtime.conf, and on a bit flip in each of their bytes.

`show` must accept exactly what `list` accepts. For a file that it refuses it must name the field at which the
independent reader fails. In every byte one bit is flipped, a different one from byte to byte. In the signature area,
which matters only to the check of the signature, that is done at every sixteenth offset.
"""

from __future__ import annotations

import re
import unittest
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Any, Dict, Iterable, List, NamedTuple, Optional, Tuple

import catalogue_format
import fixed_width_lzw
import runtime_conf_format
from catalogue_entry import entry_of_bytes
from e2e_support import GOOD
from format_error import FormatError
from inspect_support import ERROR, WARNING, InspectTest
from inspect_support import GOOD as GOOD_STATUS
from many_runs import LISTED_EVERY, WORKERS, single_changes, truncations

CRL = b"crl"


class Field(NamedTuple):
    """The expected finding for an invalid file, as far as the independent reader gives it."""

    name: str
    offset: Optional[int] = None
    entry_index: Optional[int] = None
    message: str = ""


def small_catalogue() -> bytes:
    entries = [entry_of_bytes("gone/first.dat", b"hello"), entry_of_bytes("gone/second", b"")]
    return catalogue_format.sign(catalogue_format.build(entries, CRL), GOOD.key)


def number_at(image: bytes, offset: int) -> int:
    return int.from_bytes(image[offset : offset + 4], "little")


def field_of_lengths(image: bytes) -> Field:
    """The position of the block shows which length is wrong."""
    compressed = number_at(image, 1040)
    start = len(image) - compressed
    if start >= 1052 and image[start : start + 2] == fixed_width_lzw.MAGIC:
        return Field("crl_length", 1036)
    return Field("crl_length", 1036) if number_at(image, 1036) > len(image) - 1052 else Field("compressed_length", 1040)


def field_of_records(image: bytes, error: str) -> Field:
    block_start = 1052 + number_at(image, 1036)
    count = number_at(image, 1048)
    block = image[block_start:]
    if code := re.match(r"code number (\d+) is (\d+)", error):
        return Field("code", message=f"number {int(code[1]):,} is {int(code[2]):,}, where only 0 to 255")
    if "flag byte" in error or "0 bits" in error:
        return Field("code width", block_start + 2)
    if block[:2] != fixed_width_lzw.MAGIC:
        return Field("entry block magic", block_start)
    if len(fixed_width_lzw.decompress(block)) < count * 528:
        return Field("entry_count", 1048)
    entry = re.match(r"entry (\d+) (needs|claims)", error)
    assert entry, error
    return Field("record" if entry[2] == "needs" else "digest count", entry_index=int(entry[1]))


def field_of_catalogue(image: bytes) -> Optional[Field]:
    """The field at which the independent reader fails; None if it does not."""
    if len(image) < catalogue_format.HEADER_SIZE:
        return Field("file length", len(image))
    if image[:4] != catalogue_format.MAGIC:
        return Field("magic", 0)
    try:
        catalogue_format.parse(image, strict=False)
    except FormatError as error:
        text = str(error)
        if text.startswith("the format version"):
            return Field("format version", 4)
        if text.startswith("the header claims"):
            return field_of_lengths(image)
        return field_of_records(image, text)
    return None


def field_of_settings(stored: bytes) -> Optional[Field]:
    """As above, for a runtime.conf."""
    if len(stored) < runtime_conf_format.FILE_SIZE:
        return Field("file length", len(stored))
    if runtime_conf_format.unscramble(stored)[:4] != runtime_conf_format.MAGIC:
        return Field("magic", 0)
    if runtime_conf_format.parse(stored, strict=False).version != 1:
        return Field("version", 1032)
    return None


class Case(NamedTuple):
    name: str
    content: bytes
    expected: Optional[Field]
    signature: bool
    """Whether a valid file's signature is good."""


def differences(document: Dict[str, Any], expected: Field) -> bool:
    invalid = document["invalid"]
    return (
        invalid["field"] != expected.name
        or (expected.offset is not None and invalid["offset"] != expected.offset)
        or invalid.get("entryIndex") != expected.entry_index
        or expected.message not in invalid["message"]
    )


class EveryByteTest(InspectTest):
    """Shows many versions of one file, two runs at a time."""

    def assert_cases(self, file_name: str, cases: Iterable[Case]) -> None:
        all_cases = list(cases)
        self.assertNotEqual(all_cases, [])
        with ThreadPoolExecutor(WORKERS) as pool:
            shares = [
                pool.submit(self.run_share, self.directory / f"share{number}", file_name, all_cases[number::WORKERS])
                for number in range(WORKERS)
            ]
        failures = [failure for share in shares for failure in share.result()]
        self.assertEqual(failures[:5], [], f"{len(failures)} of {len(all_cases)} cases")

    def run_share(self, folder: Path, file_name: str, cases: List[Case]) -> List[str]:
        folder.mkdir()
        (folder / "base.cer").write_bytes(GOOD.certificate.read_bytes())
        path = folder / file_name
        failures = []
        for case in cases:
            path.write_bytes(case.content)
            failures += self.failures_of(path, case)
        return failures

    def failures_of(self, path: Path, case: Case) -> List[str]:
        shown = self.inspect("show", "--json", path)
        listed = self.run_program("list", path)
        expected = ERROR if case.expected else GOOD_STATUS if case.signature else WARNING
        if (shown.status, listed.status != 0, shown.errors) != (expected, expected == ERROR, ""):
            return [f"{case.name}: show {shown.status}, not {expected}; list {listed.status}; {shown.errors}"]
        document = shown.json()
        if case.expected and differences(document, case.expected):
            return [f"{case.name}: {document['invalid']}, not {case.expected}"]
        return []


def kept(offset: int, area: Tuple[int, int]) -> bool:
    return not area[0] <= offset < area[1] or offset % LISTED_EVERY == 0


class CatalogueBytes(EveryByteTest):
    AREA = (8, 1032)

    def test_every_truncation(self) -> None:
        whole = small_catalogue()
        cases = [Case("unchanged", whole, None, True), Case("longer", whole + b"\0", Field("compressed_length", 1040), True)]
        for name, cut in truncations(whole):
            if kept(len(cut), self.AREA):
                cases.append(Case(name, cut, field_of_catalogue(cut), False))
        self.assertTrue(all(case.expected for case in cases[1:]))
        self.assert_cases("base.bin", cases)

    def test_every_byte_changed(self) -> None:
        signature_end = 8 + 256
        cases = [
            Case(name, changed, field_of_catalogue(changed), signature_end <= offset < 1032)
            for name, offset, changed in single_changes(small_catalogue())
            if kept(offset, self.AREA)
        ]
        self.assert_cases("base.bin", cases)


class RuntimeConfBytes(EveryByteTest):
    AREA = (4, 1028)

    def signed_conf(self) -> bytes:
        return runtime_conf_format.sign(runtime_conf_format.build(2, b"Reporter", 3), GOOD.key)

    def test_every_truncation(self) -> None:
        whole = self.signed_conf()
        cases = [Case("unchanged", whole, None, True)]
        for name, cut in truncations(whole):
            if kept(len(cut), self.AREA):
                cases.append(Case(name, cut, field_of_settings(cut), False))
        self.assert_cases("runtime.conf", cases)

    def test_every_byte_changed_before_scrambling(self) -> None:
        signature_end = 4 + 256
        cases = []
        for name, offset, changed in single_changes(runtime_conf_format.unscramble(self.signed_conf())):
            if kept(offset, self.AREA):
                stored = runtime_conf_format.scramble(changed)
                cases.append(Case(name, stored, field_of_settings(stored), signature_end <= offset < 1028))
        self.assert_cases("runtime.conf", cases)


if __name__ == "__main__":
    unittest.main()
