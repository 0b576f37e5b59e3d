#!/usr/bin/env python3
"""Writes the seeds of the fuzzers to fuzz/corpus, with the independent writers of both formats."""

from __future__ import annotations

import pathlib
import struct
import sys

_HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(_HERE.parent / "tests" / "independent"))

import catalogue_format  # noqa: E402
import fixed_width_lzw  # noqa: E402
import runtime_conf_format  # noqa: E402
from catalogue_entry import Entry, entry_of_bytes  # noqa: E402
from independent_test_support import block_of_codes  # noqa: E402


def with_digests(entry: Entry, count: int) -> bytes:
    """Return the record of an entry that claims `count` digests, as many as it has or not."""
    record = entry.record()
    return record[:524] + struct.pack("<I", count) + record[528:]


def seeds() -> "dict[str, dict[str, bytes]]":
    """Return the seeds by fuzzer and name."""
    entries = [entry_of_bytes("./bin/a.dat", b"hello"), entry_of_bytes("日本語/ä🎮", b""), entry_of_bytes("c", b"x")]
    block = b"".join(entry.record() for entry in entries)
    sound = catalogue_format.build(entries, b"revoked")
    return {
        "catalogue": {
            "sound": sound,
            "header_alone": catalogue_format.build_from_compressed_block(b"", 0, 0),
            "no_entries": catalogue_format.build([]),
            "older_layout": catalogue_format.build(entries[:1], signature_layout=0),
            "more_entries_than_records": catalogue_format.build_from_raw_block(block, 2**32 - 1),
            "no_lzw_magic": catalogue_format.build_from_compressed_block(block, len(block), 1),
        },
        "entry_block": {
            "sound": struct.pack("<I", len(entries)) + block,
            "no_entries": struct.pack("<I", 0) + block,
            "more_entries_than_records": struct.pack("<I", 2**32 - 1) + block,
            "more_digests_than_bytes": struct.pack("<I", 1) + with_digests(entries[0], 2**32 - 1),
            "fewer_digests": struct.pack("<I", 2) + with_digests(entries[0], 0) + block,
        },
        "lzw": {
            "sound": fixed_width_lzw.compress(block),
            "one_letter": fixed_width_lzw.compress(b"a" * 500),
            "first_code_too_large": block_of_codes([256, 65]),
            "code_about_to_be_assigned": block_of_codes([65, 257, 258, 259]),
            "code_not_assigned": block_of_codes([65, 258]),
            "nine_bits": block_of_codes([65, 257, 66], width=9),
            "thirty_one_bits": block_of_codes([65, 257, 66], width=31),
            "no_bits": bytes([0x1F, 0x9D, 0x80, 1, 2, 3]),
        },
        "signature": {
            "catalogue": sound,
            "older_layout": catalogue_format.build(entries[:1], signature_layout=0),
            "full_length": catalogue_format.with_signature(sound, b"\1" * 512),
            "length_above_the_area": sound[:1032] + struct.pack("<I", 2**32 - 1) + sound[1036:],
            "runtime_conf": runtime_conf_format.build(),
        },
        "runtime_conf": {
            "sound": runtime_conf_format.unscramble(runtime_conf_format.build(1, b"CrashReporter", 1)),
            "full_name": runtime_conf_format.unscramble(runtime_conf_format.build(2**32 - 1, b"n" * 64, 9)),
            "version_two": runtime_conf_format.unscramble(runtime_conf_format.build(version=2)),
        },
    }


def main() -> None:
    """Write every seed, replacing what is there under its name."""
    for fuzzer, files in seeds().items():
        folder = _HERE / "corpus" / fuzzer
        folder.mkdir(parents=True, exist_ok=True)
        for name, content in files.items():
            (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
