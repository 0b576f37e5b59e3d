"""The peers: programs that a developer would use instead."""
import os
import re
import shutil
from collections import Counter
from pathlib import Path
from typing import Counter as CountOf, Dict, List, Optional

from measure import Command, CommandFailed

OPENSSL = "openssl dgst -sha256"

PEERS: Dict[str, List[str]] = {
    OPENSSL: ["openssl", "dgst", "-sha256"],
    "rhash --sha256": ["rhash", "--sha256"],
    "sha256sum": ["sha256sum"],
    "hashdeep -c sha256 -l": ["hashdeep", "-c", "sha256", "-l"],
}

# Few enough files per call for all processes to get some.
FILES_PER_PROCESS = 64

# Lines without a digest are headers.
DIGEST = re.compile(rb"\b[0-9a-f]{64}\b")


def called_with_files(arguments: List[str]) -> List[str]:
    """Passes the files on standard input as arguments, as many per call as the system allows."""
    environment = sum(len(name) + len(value) + 2 for name, value in os.environb.items())
    longest = os.sysconf("SC_ARG_MAX") - environment - 8192
    return ["xargs", "-0", "-s", str(longest)] + arguments


def peer_commands(game: Path, listing: Path) -> List[Command]:
    """The peers that are installed."""
    return [Command(name, called_with_files(arguments), game, listing)
            for name, arguments in PEERS.items() if shutil.which(arguments[0])]


def openssl_with_jobs(jobs: int) -> str:
    return f"xargs -P {jobs} -n {FILES_PER_PROCESS} {OPENSSL}"


def hashdeep_with_jobs(jobs: int) -> str:
    return f"hashdeep -j {jobs} -c sha256 -l"


def peers_with_jobs(jobs: int) -> List[str]:
    return [openssl_with_jobs(jobs), hashdeep_with_jobs(jobs)]


def peer_commands_with_jobs(game: Path, listing: Path, jobs: int) -> List[Command]:
    """The installed peers that can use several processors, told to use `jobs`."""
    processes = ["xargs", "-0", "-P", str(jobs), "-n", str(FILES_PER_PROCESS), *PEERS[OPENSSL]]
    threads = called_with_files(["hashdeep", "-j", str(jobs), "-c", "sha256", "-l"])
    commands = {"openssl": Command(openssl_with_jobs(jobs), processes, game, listing),
                "hashdeep": Command(hashdeep_with_jobs(jobs), threads, game, listing)}
    return [command for program, command in commands.items() if shutil.which(program)]


class SameDigests:
    """Checks that all peers hash the same files, each file once: no two files are equal."""

    def __init__(self, file_count: int) -> None:
        self._file_count = file_count
        self._digests: Optional[List[bytes]] = None
        self._openssl_bytes: Optional[CountOf[int]] = None

    def check(self, command: Command, log: Path) -> None:
        """`log` contains what the command printed, in any order."""
        output = log.read_bytes()
        if command.name.startswith("xargs "):
            self._check_mixed_output(command, output)
            return
        if command.name == OPENSSL:
            self._openssl_bytes = Counter(output)
        digests = sorted(DIGEST.findall(output))
        if len(digests) != self._file_count:
            raise CommandFailed(f"{command.name}: printed {len(digests)} digests of "
                                f"{self._file_count} files")
        if self._digests is None:
            self._digests = digests
        if digests != self._digests:
            raise CommandFailed(f"{command.name}: printed other digests than the command before")

    def _check_mixed_output(self, command: Command, output: bytes) -> None:
        """Processes that share a file write whenever a buffer is full, so their lines get mixed. All
        bytes together must be those that one process prints."""
        if Counter(output) != self._openssl_bytes:
            raise CommandFailed(f"{command.name}: printed something else than one process alone")

    def check_printed(self, name: str, digests: List[bytes]) -> None:
        """Checks that the `digests`, each of a different file, are among those that were printed."""
        others = Counter(digests) - Counter(self._digests or [])
        if others:
            raise CommandFailed(f"{name}: {sum(others.values())} of {len(digests)} digests are not "
                                "among those that the others printed")
