"""Vectors about the catalogue itself: its layout, its signature and its entry block."""

from __future__ import annotations

import hashlib
import struct
from dataclasses import replace
from typing import Any, Dict, Optional, Sequence

import catalogue_format
import fixed_width_lzw
from catalogue_entry import aliased_path_field, entry_of_bytes
from signed_files import (
    ONE_FILE,
    ROOT,
    SETTINGS,
    catalogue,
    catalogue_of_entries,
    certificate_of,
    entries_of,
    flipped,
    in_certificates,
    replaced,
    runtime_conf,
    signed,
)
from vector import Listing, Vector, Vectors, Verdict

ALL_PASS = [("a.txt", 0)]
PATHS = ["a.txt"]
SIGNATURE_LENGTH_OFFSET = 1032
ENTRY_COUNT_OFFSET = 1048


def vectors() -> Vectors:
    """All vectors of this module."""
    return good() + layouts() + bad_signatures() + bad_layouts() + entry_blocks() + older_layout()


def _vector(
    name: str,
    about: str,
    image: bytes,
    status: int,
    *,
    verdicts: Optional[Sequence[Verdict]] = None,
    files: Optional[Dict[str, bytes]] = None,
    certificate: str = "game",
    list_status: int = 0,
    paths: Optional[Sequence[str]] = None,
    **choices: Any,
) -> Vector:
    """A game with one catalogue. By default it lists `a.txt`, which exists."""
    placed = in_certificates({"base.bin": image, "base.cer": certificate_of(certificate)})
    listed = None if list_status != 0 else list(PATHS if paths is None else paths)
    return Vector(
        name,
        about,
        {**(ONE_FILE if files is None else files), **placed},
        status,
        verdicts=ALL_PASS if verdicts is None and status == 0 else verdicts,
        listings=[Listing("base.bin", list_status, listed)],
        **choices,
    )


def good() -> Vectors:
    """Files as generate writes them."""
    game = {"bin/game.exe": b"hello", "data/empty.dat": b"", "data/level.pak": b"level\n" * 20}
    files = {
        **game,
        **in_certificates(
            {"base.bin": catalogue(game), "base.cer": certificate_of("game"), "runtime.conf": runtime_conf()}
        ),
    }
    passed = [(path, 0) for path in game]
    listings = [Listing("base.bin", 0, list(game)), Listing("runtime.conf", 0, settings=SETTINGS)]
    mod = {"mod/b.txt": b"b\n"}
    two = {"base.bin": catalogue(ONE_FILE), "base.cer": certificate_of("game")}
    two.update({"mod1.bin": catalogue(mod, "game-second-key"), "mod1.cer": certificate_of("game-second-key")})
    development_list = (ROOT / "trust" / "development" / "crl.der").read_bytes()
    return [
        Vector("good", "A game of three files with its runtime.conf.", files, 0, passed, 0, listings),
        _vector("good-no-runtime-conf", "A game without runtime.conf is not at fault.", catalogue(ONE_FILE), 0),
        _vector(
            "good-4096-bits",
            "Signed with a key of 4096 bits: the signature has 512 bytes.",
            catalogue(ONE_FILE, "game-4096-bits"),
            0,
            certificate="game-4096-bits",
        ),
        _vector(
            "good-revocation-list",
            "With a revocation list before the entry block.",
            catalogue(ONE_FILE, crl=development_list),
            0,
        ),
        Vector(
            "good-two-catalogues",
            "Two catalogues, each with a certificate of its own. They may be read in any order.",
            {**ONE_FILE, **mod, **in_certificates(two)},
            0,
            verdicts=[("a.txt", 0), ("mod/b.txt", 0)],
            listings=[Listing("base.bin", 0, PATHS), Listing("mod1.bin", 0, list(mod))],
        ),
        _vector(
            "good-path-put-in-by-an-alias",
            "The path stands at four bytes per character: a reader of UTF-16 sees its first character alone.",
            catalogue_of_entries([replace(entry_of_bytes("x", b"a\n"), path_field=aliased_path_field("b/a.txt"))]),
            0,
            files={"b": b"a\n"},
            verdicts=[("b", 0)],
            paths=["b"],
        ),
    ]


def layouts() -> Vectors:
    """Files that generate does not write, but readers accept."""
    image = catalogue_format.build(entries_of(ONE_FILE))
    raw = catalogue_format.parse(image).raw_block
    entry = entry_of_bytes("a.txt", b"a\n")
    # The digests of an empty file are not compared, so they may be anything. These fill the dictionary.
    digests = tuple(hashlib.sha256(bytes([number])).digest() for number in range(200))
    full = [replace(entry_of_bytes("empty.dat", b""), digests=digests), entry]
    return [
        _vector("layout-no-entry", "A catalogue of no file.", catalogue({}), 0, verdicts=[], paths=[]),
        _vector(
            "layout-no-entry-no-prefix",
            "A block that does not begin with 1F 9D counts as empty; no entry is asked for.",
            signed(catalogue_format.build_from_compressed_block(b"not compressed", 0, 0)),
            0,
            verdicts=[],
            paths=[],
        ),
        _vector(
            "layout-signature-area-tail",
            "A byte after the signature, in its area: the signature does not cover it.",
            flipped(signed(image), 8 + 256),
            0,
        ),
        _vector(
            "layout-raw-length",
            "raw_length is one too large. Nobody relies on it.",
            signed(replaced(image, 1044, struct.pack("<I", len(raw) + 1))),
            0,
        ),
        _vector(
            "layout-bytes-after-the-last-record",
            "The entry block has bytes after its last record.",
            signed(catalogue_format.build_from_raw_block(raw + b"more", 1)),
            0,
        ),
        _vector(
            "layout-fewer-digests",
            "An entry without digests: the size alone is compared, though the content is another.",
            catalogue_of_entries([replace(entry, digests=())]),
            0,
            files={"a.txt": b"b\n"},
        ),
        _vector(
            "layout-name-position",
            "A name position that is not that of the path. Nobody relies on it.",
            catalogue_of_entries([replace(entry, name_position=77)]),
            0,
        ),
        _vector(
            "layout-full-dictionary",
            "More codes than the dictionary has room for: it stays as it is after code 4094.",
            catalogue_of_entries(full),
            0,
            files={"empty.dat": b"", **ONE_FILE},
            verdicts=[("empty.dat", 0), ("a.txt", 0)],
            paths=["empty.dat", "a.txt"],
        ),
        _vector(
            "layout-codes-of-16-bits",
            "The third byte of the entry block says 16 bits, and so wide are the codes.",
            signed(catalogue_format.build_from_compressed_block(_block_of_bytes(raw, width=16), len(raw), 1)),
            0,
        ),
    ]


def bad_signatures() -> Vectors:
    """The signature does not belong to the file and the certificate."""
    image = catalogue(ONE_FILE)
    signature = catalogue_format.signature(image)
    other = {"a.txt": b"b\n"}
    with_list = catalogue(ONE_FILE, crl=b"a list")
    return [
        _vector("signature-bit", "One bit of the signature is another.", flipped(image, 8), 11),
        _vector("signature-none", "No signature.", catalogue_format.build(entries_of(ONE_FILE)), 11),
        _vector(
            "signature-too-long",
            "signature_length is 1025, one more than the area has.",
            replaced(image, SIGNATURE_LENGTH_OFFSET, struct.pack("<I", 1025)),
            11,
        ),
        _vector(
            "signature-of-another-key",
            "Signed with another key than that of the certificate.",
            catalogue(ONE_FILE, "game-second-key"),
            11,
        ),
        _vector(
            "signature-of-another-catalogue",
            "The file was changed, and so was its digest in the catalogue. The signature is the old one.",
            catalogue_format.with_signature(catalogue_format.build(entries_of(other)), signature),
            11,
            files=other,
        ),
        _vector(
            "signature-revocation-list-changed",
            "One bit of the revocation list is another.",
            flipped(with_list, catalogue_format.HEADER_SIZE),
            11,
        ),
        _vector(
            "signature-raw-length-changed",
            "raw_length, which nobody relies on, was changed after signing.",
            flipped(image, 1044),
            11,
        ),
    ]


def bad_layouts() -> Vectors:
    """The header is wrong. The signature is good if that is possible."""
    image = catalogue_format.build(entries_of(ONE_FILE))
    whole = signed(image)
    lengths = replaced(image, 1036, struct.pack("<I", 1))

    def invalid(name: str, about: str, content: bytes, certificate: str = "game") -> Vector:
        return _vector(name, about, content, 9, list_status=9, certificate=certificate)

    return [
        invalid("invalid-empty", "A catalogue of no bytes.", b""),
        invalid("invalid-cut-in-header", "The first 1051 bytes: one is missing to a header.", whole[:1051]),
        invalid("invalid-cut", "The last byte is missing.", whole[:-1]),
        invalid("invalid-longer", "One byte more than the lengths say.", whole + b"\0"),
        invalid("invalid-magic", "The magic is another; the signature is good.", signed(b"QVS\0" + image[4:])),
        invalid(
            "invalid-format-version-3",
            "Format version 3; the signature is good.",
            signed(replaced(image, 4, struct.pack("<H", 3))),
        ),
        invalid(
            "invalid-format-version-5",
            "Format version 5; the signature is good.",
            signed(replaced(image, 4, struct.pack("<H", 5))),
        ),
        invalid("invalid-lengths", "crl_length is 1, of a list that is not there; the signature is good.", signed(lengths)),
        Vector(
            "invalid-runtime-conf",
            "A runtime.conf in place of the catalogue. Listing goes by what it is.",
            {**ONE_FILE, **in_certificates({"base.bin": runtime_conf(), "base.cer": certificate_of("game")})},
            9,
            listings=[Listing("base.bin", 0, settings=SETTINGS)],
        ),
        invalid(
            "invalid-before-certificate",
            "The last byte is missing, and the certificate has expired: the layout is looked at first.",
            whole[:-1],
            certificate="expired",
        ),
    ]


def entry_blocks() -> Vectors:
    """The entry block is wrong. The signature is good."""
    image = catalogue_format.build(entries_of(ONE_FILE))
    raw = catalogue_format.parse(image).raw_block
    codes = fixed_width_lzw.compress(raw)

    def invalid_block(name: str, about: str, block: bytes, count: int = 1) -> Vector:
        built = catalogue_format.build_from_compressed_block(block, len(raw), count)
        return _vector(name, about, signed(built), 9, list_status=9)

    def invalid_raw(name: str, about: str, changed: bytes, count: int = 1) -> Vector:
        return _vector(name, about, signed(catalogue_format.build_from_raw_block(changed, count)), 9, list_status=9)

    too_many = struct.pack("<I", 2)
    return [
        invalid_raw("entries-count-too-large", "entry_count is 2, and there is one.", raw, 2),
        invalid_raw("entries-count-largest", "entry_count is 4294967295, and there is one.", raw, 2**32 - 1),
        invalid_raw("entries-cut-in-record", "The last byte of the last digest is missing.", raw[:-1]),
        invalid_raw("entries-cut-in-fixed-part", "The record ends within its path.", raw[:100]),
        invalid_raw("entries-digest-count", "An entry claims two digests and has one.", replaced(raw, 524, too_many)),
        invalid_raw(
            "entries-digest-count-largest",
            "An entry claims 4294967295 digests and has one.",
            replaced(raw, 524, b"\xff" * 4),
        ),
        invalid_block("entries-no-prefix", "The entry block does not begin with 1F 9D.", b"\x1f\x9e" + codes[2:]),
        invalid_block("entries-no-width", "The entry block ends before the byte with the width.", codes[:2]),
        invalid_block("entries-width-0", "The width of a code is 0.", codes[:2] + b"\x80" + codes[3:]),
        invalid_block("entries-empty", "The entry block has no byte.", b""),
        invalid_block(
            "entries-unknown-first-code",
            "The first code is 257, which stands for nothing yet.",
            fixed_width_lzw.HEADER + b"\x01\x01" + codes[5:],
        ),
        invalid_block(
            "entries-unknown-code",
            "After all good codes comes 4095, which never stands for anything.",
            _with_last_code(raw, 4095),
        ),
        invalid_block("entries-clear-code", "After all good codes comes 256, which is never used.", _with_last_code(raw, 256)),
    ]


def older_layout() -> Vectors:
    """The signature covers only the file from offset 1036."""
    image = catalogue(ONE_FILE, signature_layout=0)
    return [
        _vector("older-layout", "Signature layout 0, with its signature.", image, 0),
        _vector(
            "older-layout-2", "Any signature layout but 1 is an older one: here 2.", replaced(image, 6, b"\x02\x00"), 0
        ),
        _vector(
            "older-layout-called-current",
            "Signature layout 0 was signed, and 1 stands in the file.",
            replaced(image, 6, b"\x01\x00"),
            11,
        ),
        _vector(
            "current-layout-called-older",
            "Signature layout 1 was signed, and 0 stands in the file.",
            replaced(catalogue(ONE_FILE), 6, b"\x00\x00"),
            11,
        ),
        _vector("older-layout-bit", "One bit of what an older layout signs is another.", flipped(image, 1036 + 8), 11),
        _vector(
            "older-layout-before-a-current-file",
            "An older header before a file of the current layout, whose signature it took over. The signature fits, "
            "and must be refused all the same.",
            _older_header_before_current_file(),
            11,
            paths=[],
            is_large=True,
        ),
    ]


def _older_header_before_current_file() -> bytes:
    """The signed bytes of a current file are read as lengths and blocks of an older one. Its magic and versions are the
    two lengths, so the file has five megabytes.
    """
    crl_length, compressed_length = struct.unpack("<II", b"QVR\0\x04\x00\x01\x00")
    length = catalogue_format.HEADER_SIZE + crl_length + compressed_length - catalogue_format.OLDER_LAYOUT_SIGNED_FROM
    empty = len(catalogue_format.build([]))
    current = signed(catalogue_format.build([], bytes(length - empty)))
    signature = catalogue_format.signature(current)
    header = struct.pack("<4sHH1024sI", b"QVR\0", 4, 0, signature, len(signature))
    return header + catalogue_format.signed_bytes(current)


def _block_of_bytes(raw: bytes, width: int) -> bytes:
    """A block with a separate code for each byte."""
    return _packed(list(raw), width)


def _with_last_code(raw: bytes, code: int) -> bytes:
    return _packed(list(raw) + [code], fixed_width_lzw.CODE_WIDTH)


def _packed(codes: Sequence[int], width: int) -> bytes:
    number = sum(code << (width * index) for index, code in enumerate(codes))
    size = (width * len(codes) + 7) // 8
    return fixed_width_lzw.MAGIC + bytes([fixed_width_lzw.BLOCK_MODE_FLAG | width]) + number.to_bytes(size, "little")
