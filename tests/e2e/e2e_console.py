"""The expected console texts of runs, built line by line.

Texts are `str`. Bytes that are not UTF-8 appear as lone surrogates, as from `os.fsdecode`.
"""

from __future__ import annotations

import pathlib
import re
from typing import List, Sequence

_ROOT = pathlib.Path(__file__).resolve().parents[2]
_VERSION = re.search(r"^    VERSION ([0-9.]+)$", (_ROOT / "CMakeLists.txt").read_text(), re.MULTILINE).group(1)
BANNER = f"Anti-Cheat Sealkeeper v{_VERSION} (for game developers only, must not be shipped to players)\n\n"

_GOLDEN = _ROOT / "tests/golden"
USAGE = (_GOLDEN / "usage.txt").read_text(encoding="utf-8")
HELP = (_GOLDEN / "help.txt").read_text(encoding="utf-8")

RULER = "=======================================\n"
EMPTY_CATALOGUE = "Cannot create an empty catalogue, at least all executables and libraries must be included."
COPY_NOT_OPENED = "Error copying certificate to working directory - failed to open file.\n"
COPY_NOT_WRITTEN = "Error copying certificate to working directory - error writing to stream.\n"

LONGEST_MESSAGE = 4095
"""The length of the longest message that is printed in full; longer ones are cut."""

_PARSED = {
    "-incert": "Parsed certificate filename: '%s'.\n",
    "-incrl": "Parsed certificate revocation list: '%s'.\n",
    "-inkey": "Parsed private key filename: '%s'.\n",
    "-target_file": "Parsed target filename: '%s'.\n",
    "-outname": "Parsed output catalogue filename: '%s'.\n",
    "-productid": "Parsed Nimbrel product id: '%s'.\n",
    "-target_game_dir": "Parsed target game directory: '%s'.\n",
}


def to_bytes(text: str) -> bytes:
    """Return the bytes of a text whose lone surrogates stand for bytes that are not UTF-8."""
    return text.encode("utf-8", "surrogateescape")


def to_text(data: bytes) -> str:
    """The reverse of `to_bytes`."""
    return data.decode("utf-8", "surrogateescape")


def err(message: str) -> str:
    """An error as the console shows it."""
    return _tagged("Err!", message)


def warn(message: str) -> str:
    """A warning as the console shows it."""
    return _tagged("Warn", message)


def info(message: str) -> str:
    """An information message as the console shows it."""
    return _tagged("Info", message)


def verb(message: str) -> str:
    """A detail message as the console shows it with -v."""
    return _tagged("Verb", message)


def _tagged(tag: str, message: str) -> str:
    shown = to_text(to_bytes(message)[:LONGEST_MESSAGE])
    return f"[{tag}] " + shown.replace("\\", "/")


def opening(command_line: Sequence[str]) -> str:
    """The start of every run; `command_line` begins with the program path."""
    lines = [info(f"    arg[{index}]: {argument}\n") for index, argument in enumerate(command_line)]
    return BANNER + info("Provided command line arguments:\n") + "".join(lines)


def parsed(option: str, value: str) -> str:
    """The parser's line for one option; empty for an option that it accepts silently."""
    return info(_PARSED[option].replace("%s", value)) if option in _PARSED else ""


def parsed_all(command_line: Sequence[str]) -> str:
    """The parser's lines for options written in full with their values as separate arguments."""
    pairs = zip(command_line[1:], command_line[2:])
    return "".join(parsed(option, value) for option, value in pairs)


def started(target: str, resolved: str) -> str:
    """The first lines of the generate action; `resolved` has no trailing separator."""
    return info(f"Generating signed integrity files for: '{target}'.\n") + info(
        f"Using '{resolved}/' as working directory.\n"
    )


def main_catalogue() -> str:
    """The output goes to the standard folder."""
    return info("Generating the game's main catalogue alongside the associated folder structure.\n")


def named_catalogue() -> str:
    """The output has a name of its own."""
    return warn("Output name defined, please note that the game's main catalogue MUST be base.bin.\n")


def config_version() -> str:
    """The configuration file has the supported version."""
    return info("Using config version: 2.\n")


def matched(*patterns: str) -> str:
    """One line for each pattern that matched; patterns begin with "./"."""
    text = "The following matched certain files in the target directory: '%s'.\n"
    return "".join(info(text.replace("%s", pattern)) for pattern in patterns)


def unmatched(*patterns: str) -> str:
    """One line for each pattern that matched nothing; patterns begin with "./"."""
    text = "The following did not match any files, consider removing it: '%s'.\n"
    return "".join(warn(text.replace("%s", pattern)) for pattern in patterns)


def trusted(product: str = "TestProduct42") -> str:
    """The certificate is the game's own."""
    return info(f"Successfully verified the certificate for product ID: {product}\n")


def runtime_record(instances: int = 1, name: str = "N/A", solution: str = "None") -> str:
    """The settings in runtime.conf, framed by their rulers."""
    return (
        "\n"
        + info(RULER)
        + info("The following configuration will be used by clients with the file present:\n")
        + info("Anti-cheat client configuration:\n")
        + info("    Version: 1\n")
        + info(f"    Maximum amount of active client instances: {instances}\n")
        + info(f"    Crash reporter name: {name}\n")
        + info(f"    Game binary anti tamper solution: {solution}\n")
    )


def runtime_written(folder: str) -> str:
    """runtime.conf was written to `folder`, which ends in "/"."""
    text = f"Anti-cheat client-side configuration file was successfully created: '{folder}runtime.conf'.\n"
    return info(text) + info(RULER + "\n")


def hashing(*paths: str) -> str:
    """One line for each file hashed, without progress dots."""
    return "".join(hashing_begun(path) + "\n" for path in paths)


def hashing_begun(path: str) -> str:
    """An unfinished hashing line."""
    return info(f"Hashing {path}...")


def empty_file(*paths: str) -> str:
    """One line for each empty file."""
    return "".join(warn(f"[Warning] Empty file: '{path}'.\n") for path in paths)


def created(folder: str, name: str = "base") -> str:
    """The catalogue was written to `folder`, which is empty or ends in "/"."""
    return info(f"[Success] QVR Hash Catalogue created: {folder}{name}.bin\n")


def not_created(code: int, text: str) -> str:
    """No catalogue was written, and why."""
    return err(f"No catalogue file was created. Code {code} ({text}).\n")


def copied(folder: str, name: str = "base") -> str:
    """The certificate was copied to `folder`, which is empty or ends in "/"."""
    return info(f"[Success] Certificate copied: {folder}{name}.cer\n")


# Generate puts them after the path that it hashes. Verify puts them after the verdict on the file before, and on the
# empty line before the first verdict.
BEFORE_DOTS = "|".join((
    r"\[Info\] Hashing .*?\.\.\.",
    r"\[Info\] \[Success\] Successfully verified '.*'\.",
    r"\[Err!\] \[Failure\] Failed to verify '.*' - Code \d+ \(.*\)\.",
    "",
))


def without_dots(output: str) -> str:
    """Return console output without progress dots, which depend on the speed of the machine."""
    return re.sub(rf"^({BEFORE_DOTS})\.+$", r"\1", output, flags=re.MULTILINE)


def lines_of(output: str) -> List[str]:
    """Return the lines of console output, each without its line feed."""
    return output.split("\n")
