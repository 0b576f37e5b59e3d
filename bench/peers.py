"""The programs that a developer would use instead."""
import os
import re
import shutil
from collections import Counter
from pathlib import Path
from typing import Dict, List, Optional

from measure import Command, CommandFailed

PEERS: Dict[str, List[str]] = {
    "openssl dgst -sha256": ["openssl", "dgst", "-sha256"],
    "rhash --sha256": ["rhash", "--sha256"],
    "sha256sum": ["sha256sum"],
    "hashdeep -c sha256 -l": ["hashdeep", "-c", "sha256", "-l"],
}

# Lines without one are headers.
DIGEST = re.compile(rb"\b[0-9a-f]{64}\b")


def called_with_files(arguments: List[str]) -> List[str]:
    """Takes the files from standard input, as many in one call as the system takes."""
    environment = sum(len(name) + len(value) + 2 for name, value in os.environb.items())
    longest = os.sysconf("SC_ARG_MAX") - environment - 8192
    return ["xargs", "-0", "-s", str(longest)] + arguments


def peer_commands(game: Path, listing: Path) -> List[Command]:
    """Those that are installed."""
    return [Command(name, called_with_files(arguments), game, listing)
            for name, arguments in PEERS.items() if shutil.which(arguments[0])]


class SameDigests:
    """That all of them hash the same files, each of them once: no two files are equal."""

    def __init__(self, file_count: int) -> None:
        self._file_count = file_count
        self._digests: Optional[List[bytes]] = None

    def check(self, command: Command, log: Path) -> None:
        """`log` holds what the command printed, in any order."""
        digests = sorted(DIGEST.findall(log.read_bytes()))
        if len(digests) != self._file_count:
            raise CommandFailed(f"{command.name}: printed {len(digests)} digests of "
                                f"{self._file_count} files")
        if self._digests is None:
            self._digests = digests
        if digests != self._digests:
            raise CommandFailed(f"{command.name}: printed other digests than the command before")

    def check_printed(self, name: str, digests: List[bytes]) -> None:
        """That the `digests`, each of another file, are among those that were printed."""
        others = Counter(digests) - Counter(self._digests or [])
        if others:
            raise CommandFailed(f"{name}: {sum(others.values())} of {len(digests)} digests are not "
                                "among those that the others printed")
