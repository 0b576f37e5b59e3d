"""Vectors about the files of the game. Catalogue and certificate are good."""

from __future__ import annotations

from typing import Mapping, Optional, Sequence

from signed_files import catalogue, certificate_of, flipped, in_certificates
from vector import Listing, Vector, Vectors, Verdict

SEALED = {"a.txt": b"a\n", "b.txt": b"bb\n", "c.txt": b"ccc\n"}


def vectors() -> Vectors:
    """All vectors of this module."""
    return single_files() + statuses() + catalogues()


def _vector(
    name: str,
    about: str,
    found: Mapping[str, bytes],
    status: int,
    verdicts: Sequence[Verdict],
    sealed: Optional[Mapping[str, bytes]] = None,
) -> Vector:
    paths = SEALED if sealed is None else sealed
    files = in_certificates({"base.bin": catalogue(paths), "base.cer": certificate_of("game")})
    return Vector(name, about, {**found, **files}, status, verdicts, listings=[Listing("base.bin", 0, list(paths))])


def single_files() -> Vectors:
    """The second of three files has changed."""

    def second(name: str, about: str, content: Optional[bytes], status: int, path: str = "b.txt") -> Vector:
        found = {**SEALED, path: content} if content is not None else dict(SEALED)
        if content is None or path != "b.txt":
            del found["b.txt"]
        return _vector(name, about, found, status, [("a.txt", 0), ("b.txt", status), ("c.txt", 0)])

    rare = "data/\u00c4rger/\u65e5\u672c\U0001f600.pak"
    return [
        second("file-missing", "b.txt is not there.", None, 23),
        second("file-in-other-letters", "b.txt is B.txt. (Where the file system tells the two apart.)", b"bb\n", 23, "B.txt"),
        second("file-empty", "b.txt has no byte.", b"", 24),
        second("file-shorter", "b.txt has a byte less.", b"bb", 24),
        second("file-longer", "b.txt has a byte more.", b"bb\n\n", 24),
        second("file-changed", "b.txt has another content of the same size.", b"bB\n", 26),
        _vector(
            "file-not-ascii-missing",
            "A path beyond ASCII, with a character of two UTF-16 units. The file is not there.",
            {"a.txt": b"a\n"},
            23,
            [("a.txt", 0), (rare, 23)],
            sealed={"a.txt": b"a\n", rare: b"x"},
        ),
    ]


def statuses() -> Vectors:
    """Several files fail. The code is that of the last file if that failed, else the smallest failure."""
    changed = b"CCC\n"
    return [
        _vector(
            "status-smallest",
            "26, then 24, and the last file passes.",
            {**SEALED, "a.txt": b"A\n", "b.txt": b"b"},
            24,
            [("a.txt", 26), ("b.txt", 24), ("c.txt", 0)],
        ),
        _vector(
            "status-of-the-last-file",
            "24 and 23, and the last file fails with 26.",
            {"a.txt": b"", "c.txt": changed},
            26,
            [("a.txt", 24), ("b.txt", 23), ("c.txt", 26)],
        ),
        _vector(
            "status-added-file",
            "A file that no catalogue lists is not looked at.",
            {**SEALED, "d.txt": b"d\n"},
            0,
            [(path, 0) for path in SEALED],
        ),
    ]


def catalogues() -> Vectors:
    """There is no catalogue, or a second one is not good."""
    certificate = certificate_of("game")
    mod = flipped(catalogue({"a.txt": b"a\n"}), 8)
    two = {"base.bin": catalogue(SEALED), "base.cer": certificate, "mod1.bin": mod, "mod1.cer": certificate}
    return [
        Vector("catalogue-no-directory", "There is no Quorvane/Certificates.", SEALED, 3),
        Vector(
            "catalogue-none",
            "There is a certificate, and no catalogue.",
            {**SEALED, **in_certificates({"base.cer": certificate})},
            3,
        ),
        Vector(
            "catalogue-second-is-bad",
            "The signature of mod1.bin is bad: no file is looked at, also not those of base.bin.",
            {**SEALED, **in_certificates(two)},
            11,
            listings=[Listing("base.bin", 0, list(SEALED)), Listing("mod1.bin", 0, ["a.txt"])],
        ),
    ]
