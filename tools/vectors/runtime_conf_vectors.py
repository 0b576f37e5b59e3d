"""Vectors about runtime.conf and its certificate, base.cer. All files of the game pass unless said."""

from __future__ import annotations

import struct
from typing import Any, Dict, Mapping, Optional

import runtime_conf_format
from signed_files import ONE_FILE, SETTINGS, catalogue, certificate_of, flipped, in_certificates, key_of, replaced
from signed_files import runtime_conf
from vector import Listing, Vector, Vectors

VERSION_OFFSET = 1032
INSTANCES_OFFSET = 1036


def vectors() -> Vectors:
    """All vectors of this module."""
    return tampered() + signed_oddly() + certificates()


def _signed_plain(plain: bytes) -> bytes:
    """These bytes, of any length, with a good signature."""
    return runtime_conf_format.sign(runtime_conf_format.scramble(plain), key_of("game"))


def _plain() -> bytes:
    return runtime_conf_format.unscramble(runtime_conf())


def _settings(**changes: Any) -> Dict[str, Any]:
    return {**SETTINGS, **changes}


def _vector(
    name: str,
    about: str,
    conf: bytes,
    status: int,
    *,
    list_status: int = 0,
    settings: Optional[Mapping[str, Any]] = None,
    base_certificate: Optional[bytes] = None,
) -> Vector:
    """If base.cer is given, the catalogue is mod1.bin, so that base.cer matters to runtime.conf alone."""
    stem = "base" if base_certificate is None else "mod1"
    files = {f"{stem}.bin": catalogue(ONE_FILE), f"{stem}.cer": certificate_of("game"), "runtime.conf": conf}
    if base_certificate:
        files["base.cer"] = base_certificate
    shown = None if list_status != 0 else (SETTINGS if settings is None else settings)
    listings = [Listing(f"{stem}.bin", 0, list(ONE_FILE)), Listing("runtime.conf", list_status, settings=shown)]
    return Vector(name, about, {**ONE_FILE, **in_certificates(files)}, status, [("a.txt", 0)], status, listings)


def tampered() -> Vectors:
    """The signature is not good. List does not check it."""
    conf = runtime_conf()
    plain = _plain()
    instances = runtime_conf_format.scramble(replaced(plain, INSTANCES_OFFSET, struct.pack("<I", 99)))
    bad_file = _vector("runtime-conf-before-files", "a.txt is changed, too: the code of runtime.conf goes first.", instances, 22)
    return [
        _vector(
            "runtime-conf-setting",
            "A setting was changed.",
            instances,
            22,
            settings=_settings(maxActiveInstances=99),
        ),
        _vector(
            "runtime-conf-signature-bit",
            "One bit of the signature is another.",
            runtime_conf_format.scramble(flipped(plain, 4)),
            22,
        ),
        _vector(
            "runtime-conf-not-signed",
            "No signature.",
            runtime_conf_format.with_signature(conf, b""),
            22,
        ),
        _vector(
            "runtime-conf-of-another-key",
            "Signed with another key than that of base.cer.",
            runtime_conf("game-second-key"),
            22,
        ),
        _vector("runtime-conf-empty", "A file of no byte.", b"", 22, list_status=9),
        _vector("runtime-conf-cut", "The last byte is missing.", conf[:-1], 22, list_status=9),
        _vector("runtime-conf-cut-in-signature", "The first 1000 bytes.", conf[:1000], 22, list_status=9),
        _vector("runtime-conf-longer", "A byte more: it is unscrambled from another end.", conf + b"\0", 22, list_status=9),
        _vector(
            "runtime-conf-not-scrambled",
            "Stored as it was before scrambling. By its magic it is listed as a catalogue.",
            plain,
            22,
            list_status=9,
        ),
        Vector(
            bad_file.name,
            bad_file.about,
            {**bad_file.files, "a.txt": b"A\n"},
            22,
            [("a.txt", 26)],
            22,
            [bad_file.listings[0], Listing("runtime.conf", 0, settings=_settings(maxActiveInstances=99))],
        ),
    ]


def signed_oddly() -> Vectors:
    """The signature is good. Verify checks nothing else."""
    plain = _plain()
    name = b"N" * 64
    built = runtime_conf_format.build(2, name, 3)
    empty = runtime_conf_format.build(2, b"", 3)
    return [
        _vector(
            "runtime-conf-name-of-64-bytes",
            "The name of the crash reporter fills its field, with no zero at its end.",
            runtime_conf_format.sign(built, key_of("game")),
            0,
            settings=_settings(crashReporterName=name.decode()),
        ),
        _vector(
            "runtime-conf-no-name",
            "No name of a crash reporter.",
            runtime_conf_format.sign(empty, key_of("game")),
            0,
            settings=_settings(crashReporterName=""),
        ),
        _vector(
            "runtime-conf-unknown-solution",
            "Anti-tamper solution 9, which does not exist. Listing goes on.",
            _signed_plain(replaced(plain, 1104, struct.pack("<I", 9))),
            0,
            settings=_settings(antiTamperSolution=9),
        ),
        _vector(
            "runtime-conf-version-2",
            "Version 2.",
            _signed_plain(replaced(plain, VERSION_OFFSET, struct.pack("<I", 2))),
            0,
            list_status=10,
        ),
        _vector("runtime-conf-magic", "The magic is another.", _signed_plain(b"QVS" + plain[3:]), 0, list_status=9),
        _vector("runtime-conf-longer-and-signed", "Four bytes more, signed with them.", _signed_plain(plain + b"more"), 0),
        _vector(
            "runtime-conf-shorter-and-signed",
            "The first 1050 bytes, signed as they are.",
            _signed_plain(plain[:1050]),
            0,
            list_status=9,
        ),
    ]


def certificates() -> Vectors:
    """base.cer is not good. The catalogue has another certificate, which is good."""

    def vector(owner: str, about: str) -> Vector:
        name = f"runtime-conf-certificate-{owner}"
        return _vector(name, about, runtime_conf(owner), 22, base_certificate=certificate_of(owner))

    conf = runtime_conf()
    only = in_certificates({"runtime.conf": conf, "base.cer": certificate_of("game")})
    return [
        _vector("runtime-conf-certificate-missing", "There is no base.cer.", conf, 27, base_certificate=b""),
        _vector("runtime-conf-certificate-no-der", "base.cer is text.", conf, 27, base_certificate=b"text\n"),
        vector("expired", "base.cer has expired."),
        vector("revoked", "base.cer is revoked."),
        vector("foreign", "base.cer was issued by another authority."),
        vector("other-product", "base.cer is another product's."),
        vector("mod-named-as-the-game", "base.cer is a mod's."),
        Vector(
            "runtime-conf-alone",
            "A runtime.conf, and no catalogue.",
            {**ONE_FILE, **only},
            3,
            listings=[Listing("runtime.conf", 0, settings=SETTINGS)],
        ),
    ]
