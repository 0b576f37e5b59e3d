"""What `sealkeeper-inspect compare` reports about two catalogues."""

from __future__ import annotations

import unittest
from dataclasses import replace
from pathlib import Path
from typing import Any, Dict, Iterable, List

import catalogue_format
from catalogue_entry import Entry, entry_of_bytes, with_alias
from e2e_support import GOOD, Credentials
from inspect_support import USAGE, Inspection, InspectTest
from signed_game import THREE_CHUNKS, changed_at

SAME = 0
DIFFERENT = 1
TROUBLE = 2


class Compare(InspectTest):
    def put(self, name: str, entries: Iterable[Entry], *, crl: bytes = b"", credentials: Credentials = GOOD) -> Path:
        """Write a signed catalogue. It needs no certificate beside it."""
        path = self.directory / name
        path.write_bytes(catalogue_format.sign(catalogue_format.build(entries, crl), credentials.key))
        return path

    def compare(self, old: Path, new: Path, status: int) -> Dict[str, Any]:
        """Compare two catalogues. Text and JSON have the same status."""
        self.text = self.inspect("compare", old, new)
        run = self.inspect("compare", "--json", old, new)
        self.assertEqual((self.text.status, run.status), (status, status))
        self.assertEqual((self.text.errors, run.errors), ("", ""))
        return run.json()

    def paths(self, entries: List[Dict[str, Any]]) -> List[str]:
        return [entry["path"] for entry in entries]

    def test_same(self) -> None:
        entries = [entry_of_bytes("a", b"1"), entry_of_bytes("b", b"22")]
        document = self.compare(self.put("old", entries), self.put("new", entries), SAME)
        self.assertTrue(document["hasSameEntries"])
        self.assertEqual(document["otherDifferences"], [])
        self.assertEqual(document["unchanged"], 2)
        self.assertEqual(document["old"], {"file": str(self.directory / "old"), "files": 2, "bytes": 3})
        self.assertIn("\nThe catalogues are the same: 2 files, 3 bytes\n", self.text.output)

    def test_added_removed_and_changed(self) -> None:
        changed = THREE_CHUNKS[:-1] + b"?"
        old = self.put("old", [entry_of_bytes(*one) for one in (("same", b""), ("gone", b"12"), ("more", b"1"), ("big", THREE_CHUNKS))])
        new = self.put("new", [entry_of_bytes(*one) for one in (("same", b""), ("new/é", b"123"), ("more", b"12"), ("big", changed))])
        document = self.compare(old, new, DIFFERENT)
        self.assertFalse(document["hasSameEntries"])
        self.assertEqual(document["removed"], [{"path": "gone", "isAliased": False, "bytes": 2, "chunks": 1}])
        self.assertEqual(document["added"], [{"path": "new/é", "isAliased": False, "bytes": 3, "chunks": 1}])
        self.assertEqual(self.paths(document["changed"]), ["big", "more"])
        big, more = document["changed"]
        self.assertEqual((big["oldBytes"], big["bytes"], big["differingChunks"]), (len(changed), len(changed), 1))
        self.assertEqual((more["oldBytes"], more["bytes"]), (1, 2))
        self.assertEqual(document["unchanged"], 1)
        width = len(f"{len(changed):,}")
        self.assertEqual(
            self.text.output,
            f"{old} -> {new}\n\n"
            f"- {'2':>{width}}  gone\n"
            f"+ {'3':>{width}}  new/é\n"
            f"~ {len(changed):,}  big  (1 of 3 chunks)\n"
            f"~ {'2':>{width}}  more  (was 1)\n"
            "\n1 removed (2 bytes), 1 added (3 bytes), 2 changed, 1 the same\n"
            f"4 files, {len(changed) + 3:,} bytes -> 4 files, {len(changed) + 5:,} bytes\n",
        )

    def test_paths_that_stand_several_times(self) -> None:
        one, two = entry_of_bytes("a", b"1"), entry_of_bytes("a", b"22")
        document = self.compare(self.put("old", [one, two, one]), self.put("new", [two, one]), DIFFERENT)
        self.assertEqual((self.paths(document["removed"]), document["added"], document["changed"]), (["a"], [], []))
        self.assertEqual(document["unchanged"], 2)

    def test_aliased_path(self) -> None:
        alias = with_alias(entry_of_bytes("data/x", b""), {"x": "other"})
        document = self.compare(self.put("old", [alias]), self.put("new", [entry_of_bytes("data/x", b"")]), DIFFERENT)
        self.assertEqual(document["removed"], [{"path": "data/other", "isAliased": True, "bytes": 0, "chunks": 0}])
        self.assertIn("- 0  data/other (aliased)\n", self.text.output)

    def test_what_is_no_entry(self) -> None:
        entries = [entry_of_bytes("a", b"1"), entry_of_bytes("b", b"")]
        old = self.put("old", entries)
        crl = self.compare(old, self.put("new", entries, crl=b"list"), DIFFERENT)
        self.assertEqual(crl["otherDifferences"], ["signature", "revocation list"])
        self.assertTrue(crl["hasSameEntries"])
        self.assertTrue(self.text.output.endswith("\nThe entries are the same: 2 files, 1 byte\nDifferent: signature and revocation list\n"))
        key = self.compare(old, self.put("new", entries, credentials=Credentials.of("other-key")), DIFFERENT)
        self.assertEqual(key["otherDifferences"], ["signature"])
        order = self.compare(old, self.put("new", entries[::-1]), DIFFERENT)
        self.assertEqual(order["otherDifferences"], ["signature", "order of entries"])
        both = self.compare(old, self.put("new", entries[:1], crl=b"list"), DIFFERENT)
        self.assertEqual(both["otherDifferences"], ["signature", "revocation list"])
        self.assertTrue(self.text.output.endswith("\nAlso different: revocation list\n"))

    def test_many_entries(self) -> None:
        entries = [entry_of_bytes(f"dir{number % 7}/file{number}", b"x" * (number % 3)) for number in range(3000)]
        moved = [replace(entry, size=entry.size + 1) if index % 100 == 0 else entry for index, entry in enumerate(entries)]
        document = self.compare(self.put("old", entries[10:]), self.put("new", moved[:-5]), DIFFERENT)
        self.assertEqual(len(document["added"]), 10)
        self.assertEqual(len(document["removed"]), 5)
        self.assertEqual(len(document["changed"]), 29)
        self.assertEqual(document["unchanged"], 3000 - 15 - 29)
        self.assertEqual(self.paths(document["changed"]), sorted(self.paths(document["changed"])))

    def assert_trouble(self, old: Path, new: Path, path: Path, reason: str) -> None:
        run = self.inspect("compare", old, new)
        errors = f"sealkeeper-inspect: '{path}': {reason}\n"
        self.assertEqual((run.status, run.output, run.errors), (TROUBLE, "", errors))
        run = self.inspect("compare", "--json", old, new)
        self.assertEqual(run.errors, errors)
        self.assert_json_failure(run, {"old": {"file": str(old)}, "new": {"file": str(new)}}, TROUBLE)

    def test_trouble(self) -> None:
        good = self.put("good", [entry_of_bytes("a", b"1")])
        image = good.read_bytes()
        bad = self.directory / "bad"
        cases = {
            "cut": (image[:-1], f"is no valid catalogue: compressed_length, at offset 1040, is {len(image) - 1052}, "
                                f"where the file has {len(image) - 1053} bytes for it"),
            "count": (changed_at(image, 1048, 2), "is no valid catalogue: entry_count, at offset 1048, is 3, where the "
                                                  "entry block has room for 1 record at most"),
            "other": (b"x" * 2000, "is no catalogue; the command show may tell what it is"),
            "empty": (b"", "is no valid catalogue: file length, at offset 0, has 0 bytes, where a catalogue has 1,052 at "
                           "least and a runtime.conf 1,108"),
        }
        for name, (content, reason) in cases.items():
            with self.subTest(name=name):
                bad.write_bytes(content)
                self.assert_trouble(bad, good, bad, reason)
                self.assert_trouble(good, bad, bad, reason)
        gone = self.directory / "gone"
        self.assert_trouble(good, gone, gone, "cannot be read: No such file or directory")
        self.assert_trouble(self.game, good, self.game, "cannot be read: it is a directory")

    def test_usage(self) -> None:
        for arguments in (["compare"], ["compare", "a"], ["compare", "a", "b", "c"], ["compare", "a", "b", "--nix"]):
            self.assertEqual(self.inspect(*arguments).status, USAGE, arguments)


if __name__ == "__main__":
    unittest.main()
