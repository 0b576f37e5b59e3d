"""The expected console texts of the actions that read signed files: list and verify."""

from __future__ import annotations

import errno
import os
import re
from collections import Counter
from typing import Iterable, List, Sequence, Tuple

from catalogue_entry import Entry, units_of
from e2e_console import RULER, err, info, warn

FAILURES = {
    1: "SealkeeperUsageError",
    2: "SealkeeperHashtoolGenericError",
    3: "SealkeeperIOError",
    4: "InitFailedConfig",
    5: "InitFailedWorkingDirectory",
    6: "InitFailedTargetDirectory",
    7: "CatalogueError",
    8: "CatalogueIOError",
    9: "FileInvalid",
    10: "CatalogueFileVersionUnsupported",
    11: "MbedTlsGenericError",
    12: "MbedTlsRandNumGenError",
    13: "MbedTlsFileIOError",
    14: "MbedTlsKeyVersionError",
    15: "MbedTlsKeyFormatError",
    16: "MbedTlsKeyPasswordError",
    17: "MbedTlsKeyInvalidPubkey",
    18: "MbedTlsSigLenMismatch",
    19: "MbedTlsX509VersionError",
    20: "MbedTlsX509FormatError",
    21: "MbedTlsX509SigMismatch",
    22: "MbedTlsX509VerifyFailed",
    23: "FileVerificationIOError",
    24: "FileVerificationSizeMismatch",
    25: "FileVerificationHashingError",
    26: "FileVerificationHashMismatch",
    27: "CertIOError",
    28: "Aborted",
    29: "Unvalidated",
    30: "CertificateExpired - check certificate",
    31: "CertificateCNMismatch - check ProductId",
    32: "CertificateRevoked - check certificate",
    33: "CertificateRLInvalid - check CRL",
    34: "CertificateRLExpired - check CRL",
}

Verdict = Tuple[str, int]
"""A path as the console shows it, and the code of its check."""

_DOTTED = re.compile(
    r"^(\[Info\] \[Success\] .*'\.|\[Err!\] \[Failure\] .*\)\.|)\.+$", flags=re.MULTILINE
)


def without_verify_dots(output: str) -> str:
    """Return console output without the progress dots of verify.

    They end the verdict on the previous file, or follow the empty line before the first one.
    """
    return _DOTTED.sub(r"\1", output)


def unresolved(path: object) -> str:
    """A path cannot be resolved."""
    text = "The provided working directory path couldn't be resolved, please make sure it's a valid path: '%s'.\n"
    return err(text.replace("%s", str(path)))


# List


def list_begun(path: object) -> str:
    """The first line of the action."""
    return info(f"Performing list action on: '{path}'.\n")


def listed(paths: Sequence[str]) -> str:
    """The paths of a catalogue."""
    return info(f"{len(paths)} files in catalogue:\n") + "".join(info(f"{path}\n") for path in paths)


def shown_path(entry: Entry) -> str:
    """The path of an entry as the console shows it, or the error text of its conversion."""
    units = units_of(entry.path_field)
    end = units.index(b"\0\0") if b"\0\0" in units else len(units)
    try:
        return b"".join(units[:end]).decode("utf-16-le")
    except UnicodeDecodeError as error:
        half = error.reason == "unexpected end of data"
        return f"utf16_to_wchar iconv ERROR {os.strerror(errno.EINVAL if half else errno.EILSEQ)}"


def not_listed(code: int) -> str:
    """The catalogue cannot be read."""
    return warn(f"GetUnverifiedCatalogueFileList() failed. Code {code} ({FAILURES[code]}).\n")


def unread_list(path: object) -> str:
    """The file cannot be read."""
    return err(f"Could not locate the file on disk: '{path}'.\n")


def listed_settings(instances: int = 1, name: str = "N/A", solution: str = "None") -> str:
    """The settings of runtime.conf."""
    return settings_until_solution(instances, name) + solution_line(solution)


def settings_until_solution(instances: int = 1, name: str = "N/A") -> str:
    """The settings of runtime.conf before the anti-tamper solution."""
    return (
        settings_version(1)
        + info(f"    Maximum amount of active client instances: {instances}\n")
        + info(f"    Crash reporter name: {name}\n")
    )


def settings_version(version: int) -> str:
    """The first lines of the settings."""
    return info("Anti-cheat client configuration:\n") + info(f"    Version: {version}\n")


def solution_line(solution: str) -> str:
    """The last line of the settings."""
    return info(f"    Game binary anti tamper solution: {solution}\n")


UNSUPPORTED_VERSION = err("Called with an unsupported version!\n")
UNSUPPORTED_FORMAT = err("Unsupported file format.\n")


def too_small(size: int) -> str:
    """The file is too short for a runtime.conf."""
    text = f"The provided file was too small to be a configuration file, file size: {size}, expected: 1108.\n"
    return err(text)


# Verify


def no_folder(folder: str) -> str:
    """The game has no folder with signed files."""
    return err(f"The provided path: '{folder}' does not match with existing directories.\n")


def looking(folder: str) -> str:
    """The folder that is searched for catalogues."""
    return info(f"Looking for the catalogue to validate under: '{folder}'.\n")


def none_found(folder: str) -> str:
    """There is no catalogue."""
    return err(f"Couldn't find the .bin file under: '{folder}'.\n")


def changed_folder(game: object) -> str:
    """The working directory is the game's, given without a trailing separator."""
    return info(f"Changed working directory to: '{game}/'.\n")


def reading(name: str) -> str:
    """The catalogue that is read."""
    return info(f"Reading the contents of: '{name}'.\n")


def added(name: str, total: int) -> str:
    """The number of entries in all catalogues so far."""
    return info(f"Added {total} file entries from '{name}'\n")


def not_read(name: str, code: int) -> str:
    """A catalogue is refused."""
    return err(f"Reading the catalogue '{name}' file failed. Code {code} ({FAILURES[code]})\n")


def verdicts(checked: Sequence[Verdict]) -> str:
    """A line for each file, which begins with the line feed that ends the previous one, and the summary."""
    lines = [info(f"Will begin the validation of {len(checked)} files:\n")]
    lines += ["\n" + _verdict(path, code) for path, code in checked]
    return "".join(lines) + _summary(code for _, code in checked)


def _verdict(path: str, code: int) -> str:
    if code == 0:
        return info(f"[Success] Successfully verified '{path}'.")
    return err(f"[Failure] Failed to verify '{path}' - Code {code} ({FAILURES[code]}).")


def _summary(codes: Iterable[int]) -> str:
    counts = sorted(Counter(codes).items())
    lines: List[str] = ["\n\n", info("Verification summary:\n"), info(RULER)]
    lines += [info(f"Code {code} ({FAILURES.get(code, 'Ok')}): {count} files.\n\n") for code, count in counts]
    return "".join(lines)


def runtime_begun(folder: str) -> str:
    """runtime.conf is checked."""
    return info(f"Validating runtime configuration file at: {folder}runtime.conf\n")


def runtime_valid(folder: str) -> str:
    """The signature of runtime.conf is valid."""
    return info(f"Successfully validated runtime configuration: '{folder}runtime.conf'.\n")


def runtime_invalid(folder: str) -> str:
    """The signature of runtime.conf is not valid."""
    return err(f"Validation of runtime configuration failed: '{folder}runtime.conf'.\n")


def certificate_unread(folder: str) -> str:
    """base.cer cannot be read."""
    return err(f"Failed to read certificate file {folder}base.cer.\n")


def certificate_not_parsed(folder: str) -> str:
    """base.cer is no DER certificate."""
    return err(f"Error parsing certificate file '{folder}base.cer'.\n")


def certificate_not_trusted(folder: str, product: str) -> str:
    """base.cer is not the game's own."""
    text = err(f"Failed to verify the certificate for product ID: {product}\n")
    return text + err(f"Error verifying certificate file '{folder}base.cer'.\n")
