"""The console texts that runs are compared with, put together line by line.

Texts are `str` in which bytes that are not UTF-8 stand as lone surrogates, as `os.fsdecode` leaves them.
"""

from __future__ import annotations

import re
from typing import List, Sequence

BANNER = "Anti-Cheat Sealkeeper v2.2.0 (for game developers only, must not be shipped to players)\n\n"

USAGE = (
    "Usage: sealkeeper -productid nimbrel_product_id [-v] [verify game_dir] [list path_to_base.bin] "
    "[-target_file file] [[-inkey file] [-incert file] [-incrl file] [-outname name] "
    "-target_game_dir game_dir config_file]\n\nRun sealkeeper --help for more details\n"
)

HELP = """\
This utility generates signed runtime configuration files which are used to verify file integrity and pass parameters
specific to your game to the anti-cheat.

There are three modes of operation: generate, verify, and list
  Generate (default):
    Given a config file, private key, signed certificate, and optional certificate revocation list, a new catalogue will be created.
    If the certificate is not a mod certificate, a signed runtime configuration file will also be created.

    Args:
      -productid: Nimbrel product identifier.
      -inkey: Private key filename, downloaded from developer portal or generated for mod usage (default 'base_private.key')
      -incert: Certificate filename that corresponds with inkey (default 'base_public.cer')
      -incrl: Optional certificate revocation list to block mod certificates that were previously issued, only applicable for base catalog file
      -outname: Base filename for output, e.g. 'base', 'mod1', etc. (default 'base')
      -target_game_dir: The game distribution's root directory
      -target_file: Ignore config_file and create a catalogue containing this one file only (for packed mods)
      -config_file: config file describing which files to hash (default 'anticheat_sealkeeper.cfg') and additional options to pass to the anti-cheat.

    Examples: sealkeeper -inkey 3f1c9a7be2d84c6a9e05b7d21c4f8a63_private.key -incert 3f1c9a7be2d84c6a9e05b7d21c4f8a63_cert.cer
              sealkeeper -incert mod1.cer -inkey mod1_private.key -outname mod1 mod1.cfg
  Verify:    Given a game root directory containing runtime configuration files, the contents will be verified.

    Args:
      dir: A game's root directory

    Examples: sealkeeper -productid 3f1c9a7be2d84c6a9e05b7d21c4f8a63 verify C:\\Games\\MyGame
  List:
    Given a generated .bin file, display the path of each file listed in the catalogue.
    Given a generated .conf file, the options passed to the anti-cheat client at runtime will be displayed.

    Args:
      path: Path to .bin file.

    Examples: sealkeeper list C:\\Games\\MyGame\\Quorvane\\Certificates\\base.bin
              sealkeeper list C:\\Games\\MyGame\\Quorvane\\Certificates\\runtime.conf

  Universal args:
    --help: Display this usage information and exit
    -productid: The Nimbrel ProductId of the game being worked on
    -v: Verbose mode for troubleshooting

  Issues with using quotes:
    The tool expects that if quotes are being used, they wrap either the option or the associated argument. For example:
      "-productid" "7d2e4b9c1a6f48e0b3c5d8f1a2e7c904" will work, but
      "-productid 7d2e4b9c1a6f48e0b3c5d8f1a2e7c904" will not
"""

RULER = "=======================================\n"
EMPTY_CATALOGUE = "Cannot create an empty catalogue, at least all executables and libraries must be included."
COPY_NOT_OPENED = "Error copying certificate to working directory - failed to open file.\n"
COPY_NOT_WRITTEN = "Error copying certificate to working directory - error writing to stream.\n"

LONGEST_MESSAGE = 4095
"""Bytes of a message that are printed; the rest is cut off."""

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
    """An information as the console shows it."""
    return _tagged("Info", message)


def verb(message: str) -> str:
    """A troubleshooting detail as the console shows it under -v."""
    return _tagged("Verb", message)


def _tagged(tag: str, message: str) -> str:
    shown = to_text(to_bytes(message)[:LONGEST_MESSAGE])
    return f"[{tag}] " + shown.replace("\\", "/")


def opening(command_line: Sequence[str]) -> str:
    """What every run begins with; `command_line` begins with the program path."""
    lines = [info(f"    arg[{index}]: {argument}\n") for index, argument in enumerate(command_line)]
    return BANNER + info("Provided command line arguments:\n") + "".join(lines)


def parsed(option: str, value: str) -> str:
    """What the parser says of one option; nothing for an option that it takes in silence."""
    return info(_PARSED[option].replace("%s", value)) if option in _PARSED else ""


def parsed_all(command_line: Sequence[str]) -> str:
    """What the parser says of options written in full with their values as separate arguments."""
    pairs = zip(command_line[1:], command_line[2:])
    return "".join(parsed(option, value) for option, value in pairs)


def started(target: str, resolved: str) -> str:
    """The first lines of the generate action; `resolved` has no separator at its end."""
    return info(f"Generating signed integrity files for: '{target}'.\n") + info(
        f"Using '{resolved}/' as working directory.\n"
    )


def main_catalogue() -> str:
    """Says that the output goes to the standard folder."""
    return info("Generating the game's main catalogue alongside the associated folder structure.\n")


def named_catalogue() -> str:
    """Says that the output has a name of its own."""
    return warn("Output name defined, please note that the game's main catalogue MUST be base.bin.\n")


def config_version() -> str:
    """Says that the configuration file is of the version that is understood."""
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
    """Says that the certificate is the game's own."""
    return info(f"Successfully verified the certificate for product ID: {product}\n")


def runtime_record(instances: int = 1, name: str = "N/A", solution: str = "None") -> str:
    """The settings of runtime.conf, with the rulers and texts in front of them."""
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
    """Says that runtime.conf is in `folder`, which ends in "/"."""
    text = f"Anti-cheat client-side configuration file was successfully created: '{folder}runtime.conf'.\n"
    return info(text) + info(RULER + "\n")


def hashing(*paths: str) -> str:
    """One line for each file hashed, without progress dots."""
    return "".join(hashing_begun(path) + "\n" for path in paths)


def hashing_begun(path: str) -> str:
    """A hashing line that was not ended."""
    return info(f"Hashing {path}...")


def empty_file(*paths: str) -> str:
    """One line for each file without bytes."""
    return "".join(warn(f"[Warning] Empty file: '{path}'.\n") for path in paths)


def created(folder: str, name: str = "base") -> str:
    """Says that the catalogue is in `folder`, which is empty or ends in "/"."""
    return info(f"[Success] QVR Hash Catalogue created: {folder}{name}.bin\n")


def not_created(code: int, text: str) -> str:
    """Says that there is no catalogue, and why."""
    return err(f"No catalogue file was created. Code {code} ({text}).\n")


def copied(folder: str, name: str = "base") -> str:
    """Says that the certificate is in `folder`, which is empty or ends in "/"."""
    return info(f"[Success] Certificate copied: {folder}{name}.cer\n")


def without_dots(output: str) -> str:
    """Return console output without the progress dots, which depend on how fast the machine is."""
    return re.sub(r"^(\[Info\] Hashing .*?\.\.\.)\.+$", r"\1", output, flags=re.MULTILINE)


def lines_of(output: str) -> List[str]:
    """Return the lines of console output, each without its line feed."""
    return output.split("\n")
