#!/usr/bin/env python3
"""Writes the seeds of the fuzzers to fuzz/corpus, and the sealed game that one of them changes to
fuzz/sealed_game, with the independent writers of both formats and the credentials in fuzz/credentials.
"""

from __future__ import annotations

import base64
import pathlib
import random
import struct
import sys

_HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(_HERE.parent / "tests" / "independent"))

import catalogue_format  # noqa: E402
import fixed_width_lzw  # noqa: E402
import runtime_conf_format  # noqa: E402
from catalogue_entry import Entry, entry_of_bytes  # noqa: E402
from independent_test_support import block_of_codes, flipped  # noqa: E402

_CREDENTIALS = _HERE / "credentials"
_AUTHORITY = _HERE.parent / "trust" / "development"
_CERTIFICATES = ("game", "other_name", "alt_name", "revoked", "expired", "mod", "self_signed")
_SIGNED_FILES = "Quorvane/Certificates/"


def with_digests(entry: Entry, count: int) -> bytes:
    """Return the record of an entry that claims `count` digests, as many as it has or not."""
    record = entry.record()
    return record[:524] + struct.pack("<I", count) + record[528:]


def credential(name: str) -> bytes:
    """Return one of the files that issue_credentials.sh issued."""
    return (_CREDENTIALS / name).read_bytes()


def sealed_game() -> "dict[str, bytes]":
    """Return the files of a small game with its signed files, by path."""
    game = {"data/empty": b"", "data/level.pak": bytes(range(256)) * 2, "game": b"\x7fELF and so on\n"}
    key = _CREDENTIALS / "game.key"
    catalogue = catalogue_format.build([entry_of_bytes(path, game[path]) for path in sorted(game)], b"revoked")
    signed = {
        "base.bin": catalogue_format.sign(catalogue, key),
        "base.cer": credential("game.cer"),
        "runtime.conf": runtime_conf_format.sign(runtime_conf_format.build(2, b"CrashReporter", 3), key),
    }
    return {**game, **{_SIGNED_FILES + name: content for name, content in signed.items()}}


def configuration_seeds() -> "dict[str, bytes]":
    """Return the examples and texts with every kind of value."""
    examples = {path.stem: path.read_bytes() for path in (_HERE.parent / "examples").glob("*.cfg")}
    texts = {
        "all_kinds": 'S : {\n n = 12; f = true t=FALSE l=["a" "b"] l = ["c"] p = ( ["x", "1"] ); s = "v"; }\n\n',
        "wrapped_numbers": "a { n = 4294967297; m = 3000000000; z = 0; n = false } \n",
        "comments": 'a { # c /* d\n e */ k = 1; // x\n l = /* y */ [ "v" ] }\n\n',
        "sections_that_merge": 'A { l = ["1"] p = (["x","1"]); }\na { L = ["2"] P = (["x","2"]); }\n\n',
        "backslashes": 'search_options { alias_paths = (["a\\\\\\\\b", "c\\d"]); include_paths = ["x\\\\y"] } \n',
        "negative_threshold": "search_options { include_paths = [ ] exclude_size_threshold = 3000000000; }\n\n",
        "line_feed_in_element": 'a { l = ["1\n2"] }\n',
        "aliases_that_leave": 'search_options { include_paths = [ ] alias_paths = (["a", "../b"]); }\n\n',
        "settings": 'runtime_configuration { max_active_game_instances = 4; anti_tamper_solution_name = "denuvo" '
        'crash_reporter_name = "' + "n" * 70 + '" }\n\n',
        "no_solution": 'runtime_configuration { anti_tamper_solution_name = "Nonexistent" }\n\n',
    }
    return {**examples, **{name: text.encode() for name, text in texts.items()}}


def outline_seeds() -> "dict[str, bytes]":
    """Return those of these texts whose outlines have the most, and some whose scan ends early."""
    named = ("all_kinds", "comments", "sections_that_merge", "line_feed_in_element")
    ends = {
        "no_semicolon": "a { n = 12 }\n\n",
        "key_in_an_earlier_section": "a { k\n}\nb { = [ 'x' ] } c { k }\nd { true; \"e\" }\n\n",
        "pairs_that_end": 'a { p = (["x", "1"], ["", "2"], ["y", "3"]) p = (["z" "4"] ["u") # /* /*\n} \n',
    }
    return {
        **{name: text for name, text in configuration_seeds().items() if name in named},
        **{name: text.encode() for name, text in ends.items()},
    }


def lint_seeds() -> "dict[str, bytes]":
    """Return texts that the linter has something to say of, and one that it has not."""
    head = "config_info { version = 2; }\n"
    texts = {
        "nothing_to_say": head + 'search_options { include_paths = ["Content"]; alias_paths = (["a/b", "c"]); }\n\n',
        "misread_values": head + "search_options { include_paths = [a \"b\" /* ] */ 'c']\n"
        'exclude_size_threshold = 10\nalias_paths = (["a" "b"], ["", "x"]) }\n\n',
        "wrong_names": '\ufeffconfig_inf { version=2; }\nsearch_option { inclde_paths = ["\\\\a\\b/../c"] }\n\n',
        "refused_values": 'search_options { include_paths = ["a\\*"]\nexclude_paths = [ ]\nworking_directory = "."\n'
        'exclude_extensions = ["log", "*.Txt"]\nalias_paths = (["../a", "c:"] ["..\\a", "d"]) }\n'
        'runtime_configuration { anti_tamper_solution_name = "none"; max_active_game_instances = 0; }\n\n',
        "nested_comments": head + '# a /* b\n/* c */ */ search_options { include_paths = ["x"] // ["y"\n}\n\n',
        "pattern_with_control_characters": head + 'search_options { include_paths = ["a\x1b[2J", "[\xe9", "b//./c"] }\n\n',
    }
    utf16 = {"utf16": (head * 2).encode("utf-16")}
    return {**{name: text.encode() for name, text in texts.items()}, **utf16}


def command_line_seeds() -> "dict[str, bytes]":
    """Return command lines, an argument a line."""
    lines = {
        "generate": "-productid X -target_game_dir . -inkey k -incert c -incrl r -outname o -jobs 4 -v game.cfg",
        "generate_one_file": "-productid=X -target_g=. -target_file f -gamedev",
        "two_configurations": "-prod X -target_game_dir . a.cfg b.cfg",
        "verify": "-productid X -jobs=0 verify .",
        "list": "li . ignored",
        "verify_and_list": "verify . list .",
        "help": "-?",
        "version": "--v",
        "too_many_jobs": "-productid X -jobs 257 verify .",
        "value_missing": "-inkey -v",
        "value_unexpected": "-v=1",
        "ambiguous": "-in k",
    }
    return {name: line.replace(" ", "\n").encode() for name, line in lines.items()}


def with_other_end(content: bytes) -> bytes:
    """Return `content` with another last byte, which belongs to the signature of a certificate."""
    return flipped(content, len(content) - 1)


def certificate_seeds() -> "dict[str, bytes]":
    """Return what the first byte says the rest is, and genuine ones of each."""
    certificate, mod_certificate, parent, revocation_list, key, product = (bytes([kind]) for kind in range(6))
    return {
        **{f"certificate_{name}": certificate + credential(f"{name}.cer") for name in _CERTIFICATES},
        "certificate_authority": certificate + (_AUTHORITY / "ca.der").read_bytes(),
        "certificate_and_more": certificate + credential("game.cer") + b"more",
        "certificate_with_other_signature": certificate + with_other_end(credential("game.cer")),
        "mod_certificate": mod_certificate + credential("mod.cer"),
        "mod_certificate_self_signed": mod_certificate + credential("self_signed.cer"),
        "mod_certificate_with_other_signature": mod_certificate + with_other_end(credential("mod.cer")),
        "parent_game": parent + credential("game.cer"),
        "parent_revoked": parent + credential("revoked.cer"),
        "parent_with_other_signature": parent + with_other_end(credential("game.cer")),
        "revocation_list": revocation_list + (_AUTHORITY / "crl.der").read_bytes(),
        "key": key + credential("game.key"),
        "key_of_none": key + credential("another.key"),
        "product_id": product + b"fuzzedGAME",
        "product_id_with_wildcard": product + b"*.FuzzedGame",
    }


def credential_file_seeds() -> "dict[str, bytes]":
    """Return which of the files the rest is, a certificate (0), a key (1) or a list (2), and genuine and other ones."""
    certificate, key, revocation_list = (bytes([file]) for file in range(3))
    game = credential("game.cer")
    return {
        "certificate": certificate + game,
        "certificate_in_pem": certificate + pem("CERTIFICATE", game),
        "certificate_in_pkcs7": certificate + b"\x30\x0b\x06\x09" + bytes.fromhex("2a864886f70d010702"),
        "key": key + credential("game.key"),
        "key_of_none_in_der": key + der_of_pem(credential("another.key")),
        "key_with_password": key + pem("ENCRYPTED PRIVATE KEY", bytes(32)),
        "key_of_openssh": key + b"ssh-rsa AAAA",
        "list": revocation_list + (_AUTHORITY / "crl.der").read_bytes(),
    }


def pem(label: str, content: bytes) -> bytes:
    """Return `content` in PEM form."""
    lines = base64.encodebytes(content).replace(b"\n", b"")
    text = b"\n".join(lines[at : at + 64] for at in range(0, len(lines), 64))
    return b"-----BEGIN %b-----\n%b\n-----END %b-----\n" % (label.encode(), text, label.encode())


def der_of_pem(text: bytes) -> bytes:
    """Return the content of a file in PEM form."""
    return base64.b64decode(b"".join(line for line in text.splitlines() if b"-" not in line))


def verify_seeds() -> "dict[str, bytes]":
    """Return changes of the sealed game: which file, how, and with what."""
    catalogue, certificate, configuration, program, level, empty = (bytes([file]) for file in range(6))
    edit, cut, whole, remove = b"e", b"c", b"w", b"r"
    files = sealed_game()
    size = len(files[_SIGNED_FILES + "base.bin"])
    return {
        "entry_count": catalogue + edit + struct.pack("<HB", 1048, 4),
        "older_layout": catalogue + edit + struct.pack("<HB", 6, 0),
        "signature": catalogue + edit + struct.pack("<HB", 8, 0),
        "after_signature": catalogue + edit + struct.pack("<HB", 8 + 256, 1),
        "signature_length": catalogue + edit + struct.pack("<HB", 1033, 2),
        "byte_too_many": catalogue + cut + struct.pack("<H", size) + b"\0",
        "catalogue_removed": catalogue + remove,
        "certificate": certificate + whole + files[_SIGNED_FILES + "base.cer"],
        "certificate_of_another": certificate + whole + credential("other_name.cer"),
        "certificate_of_same_name": certificate + whole + credential("alt_name.cer"),
        "certificate_and_more": certificate + cut + struct.pack("<H", len(credential("game.cer"))) + b"more",
        "setting": configuration + edit + struct.pack("<HB", 1036, 0),
        "configuration_removed": configuration + remove,
        "configuration_cut": configuration + cut + struct.pack("<H", 1107),
        "program_as_it_was": program + whole + files["game"],
        "program_longer": program + cut + struct.pack("<H", len(files["game"])) + b"\n",
        "program_removed": program + remove,
        "level_edited": level + edit + struct.pack("<HBHB", 0, 0, 511, 254),
        "empty_no_more": empty + whole + b"x",
        "empty_removed": empty + remove,
    }


def reader_seeds() -> "dict[str, dict[str, bytes]]":
    """Return the seeds of the fuzzers of both formats, by fuzzer and name."""
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
        "lzw_round_trip": {
            "record": bytes([99, 49, 0, 0]) + block,
            "zeros": bytes([0, 255, 255, 0]) + bytes(300),
            "long_strings": bytes([7, 7, 255, 0]) + b"abracadabra",
            "full_dictionary": bytes([255, 255, 255, 63]) + random.Random(1).randbytes(40),
            "long_strings_and_full_dictionary": bytes([255, 255, 255, 3]) + random.Random(2).randbytes(100),
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


def shown_file_seeds(readers: "dict[str, dict[str, bytes]]") -> "dict[str, bytes]":
    """Return how the rest becomes a file, as it is (0), scrambled (1) or as an entry block (2), and some of each."""
    plain, scrambled, block = (bytes([form]) for form in range(3))
    sound = sealed_game()[_SIGNED_FILES + "base.bin"]
    return {
        "catalogue": plain + sound,
        "catalogue_cut_off": plain + sound[:-3],
        "catalogue_of_older_layout": plain + readers["catalogue"]["older_layout"],
        "text": plain + b"version https://git-lfs.github.com/spec/v1\n" + b"oid sha256:0123\n" * 70,
        "runtime_conf": scrambled + readers["runtime_conf"]["sound"],
        "runtime_conf_of_version_two": scrambled + readers["runtime_conf"]["version_two"],
        "entry_block": block + readers["entry_block"]["sound"],
        "entry_block_of_many_digests": block + readers["entry_block"]["more_digests_than_bytes"],
    }


def seeds() -> "dict[str, dict[str, bytes]]":
    """Return the seeds by fuzzer and name."""
    text = "aä日🎮"
    readers = reader_seeds()
    return {
        **readers,
        "certificates": certificate_seeds(),
        "command_line": command_line_seeds(),
        "configuration": configuration_seeds(),
        "credential_file": credential_file_seeds(),
        "lint": lint_seeds(),
        "outline": outline_seeds(),
        "shown_file": shown_file_seeds(readers),
        "text_encoding": {
            "ascii": b"bin/a.dat\0b",
            "utf8": text.encode(),
            "utf8_cut": text.encode()[:-1],
            "utf8_overlong": b"\xc0\xaf\xe0\x80\xaf",
            "utf16": text.encode("utf-16-le"),
            "utf16_with_mark": text.encode("utf-16"),
            "utf16_surrogate": "a\ud800b".encode("utf-16-le", "surrogatepass"),
            "wide": text.encode("utf-32-le"),
            "wide_surrogate": "\udfff".encode("utf-32-le", "surrogatepass"),
            "wide_past_the_end": struct.pack("<II", 0x10FFFF, 0x110000),
        },
        "verify": verify_seeds(),
    }


def write(folder: pathlib.Path, files: "dict[str, bytes]") -> None:
    """Write files into a folder, by their path in it."""
    for name, content in files.items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def main() -> None:
    """Write every file, replacing what is there under its name."""
    write(_HERE / "sealed_game", sealed_game())
    for fuzzer, files in seeds().items():
        write(_HERE / "corpus" / fuzzer, files)


if __name__ == "__main__":
    main()
