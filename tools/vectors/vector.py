"""A test vector: the files of a game, and the results that a reader should give."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Dict, List, Mapping, Optional, Sequence, Tuple

CERTIFICATES = "Quorvane/Certificates"
PRODUCT = "VectorProduct"

Verdict = Tuple[str, int]
"""The path of a file of the game, and its result code."""


@dataclass(frozen=True)
class Listing:
    """The result of listing one file: its paths or its settings if the code is 0."""

    name: str
    status: int
    paths: Optional[Sequence[str]] = None
    settings: Optional[Mapping[str, Any]] = None

    def described(self) -> Dict[str, Any]:
        """In the form of the table."""
        description: Dict[str, Any] = {"file": f"{CERTIFICATES}/{self.name}", "status": self.status}
        if self.paths is not None:
            description["paths"] = list(self.paths)
        if self.settings is not None:
            description["settings"] = dict(self.settings)
        return description


@dataclass(frozen=True)
class Vector:
    """The codes are written down by hand: no reader is asked for them.

    `verdicts` is None where no file of the game is looked at, `runtime_status` where runtime.conf is not.
    """

    name: str
    about: str
    files: Mapping[str, bytes]
    status: int
    verdicts: Optional[Sequence[Verdict]] = None
    runtime_status: Optional[int] = None
    listings: Sequence[Listing] = ()
    product: str = PRODUCT
    shares_files_of: str = ""
    is_large: bool = False

    @property
    def directory(self) -> str:
        """The directory of its files, relative to the table."""
        return f"sets/{self.shares_files_of or self.name}"

    def described(self) -> Dict[str, Any]:
        """In the form of the table."""
        verify: Dict[str, Any] = {"productId": self.product, "status": self.status}
        if self.verdicts is not None:
            verify["files"] = [{"path": path, "status": status} for path, status in self.verdicts]
        if self.runtime_status is not None:
            verify["runtimeConf"] = self.runtime_status
        description: Dict[str, Any] = {"name": self.name, "about": self.about, "directory": self.directory}
        if self.is_large:
            description["isLarge"] = True
        description["verify"] = verify
        description["list"] = [listing.described() for listing in self.listings]
        return description


Vectors = List[Vector]
