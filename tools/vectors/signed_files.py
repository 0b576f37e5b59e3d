"""Signed files made by the independent writer, and the credentials that sign them."""

from __future__ import annotations

from functools import lru_cache
from pathlib import Path
from typing import Any, Dict, Iterable, List, Mapping

import catalogue_format
import runtime_conf_format
from catalogue_entry import Entry, entry_of_bytes
from vector import CERTIFICATES

ROOT = Path(__file__).resolve().parents[2]
KEYS = ROOT / "docs" / "vectors" / "keys"

ONE_FILE = {"a.txt": b"a\n"}
"""The game of every vector that is not about its files."""

SETTINGS = {"version": 1, "maxActiveInstances": 2, "crashReporterName": "CrashReporter", "antiTamperSolution": 3}
"""The settings in `runtime_conf`."""


def key_of(owner: str) -> Path:
    """The private key in a folder of the credentials."""
    return KEYS / owner / "base_private.key"


def certificate_of(owner: str) -> bytes:
    """The certificate in a folder of the credentials."""
    return (KEYS / owner / "base_public.cer").read_bytes()


def entries_of(files: Mapping[str, bytes]) -> List[Entry]:
    """The entries of these files, in order."""
    return [entry_of_bytes(path, content) for path, content in files.items()]


# Most sets contain the same few files.
@lru_cache(maxsize=None)
def signed(image: bytes, owner: str = "game") -> bytes:
    """The catalogue with a good signature."""
    return catalogue_format.sign(image, key_of(owner))


def catalogue(files: Mapping[str, bytes], owner: str = "game", **choices: Any) -> bytes:
    """A good catalogue of these files."""
    return signed(catalogue_format.build(entries_of(files), **choices), owner)


def catalogue_of_entries(entries: Iterable[Entry]) -> bytes:
    """A catalogue of any entries, with a good signature."""
    return signed(catalogue_format.build(entries))


@lru_cache(maxsize=None)
def runtime_conf(owner: str = "game") -> bytes:
    """A good runtime.conf with `SETTINGS`."""
    unsigned = runtime_conf_format.build(
        SETTINGS["maxActiveInstances"], SETTINGS["crashReporterName"], SETTINGS["antiTamperSolution"]
    )
    return runtime_conf_format.sign(unsigned, key_of(owner))


def in_certificates(files: Mapping[str, bytes]) -> Dict[str, bytes]:
    """These files with their paths in the game."""
    return {f"{CERTIFICATES}/{name}": content for name, content in files.items()}


def flipped(content: bytes, offset: int) -> bytes:
    """The content with the lowest bit of one byte changed."""
    return content[:offset] + bytes([content[offset] ^ 1]) + content[offset + 1 :]


def replaced(content: bytes, offset: int, new: bytes) -> bytes:
    """The content with the bytes from `offset` replaced by `new`."""
    return content[:offset] + new + content[offset + len(new) :]
