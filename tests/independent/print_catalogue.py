#!/usr/bin/env python3
"""Print what a hash catalogue or a `runtime.conf` holds, as text or as JSON.

    print_catalogue.py base.bin
    print_catalogue.py --json runtime.conf

The kind of file is told by its content. Nothing is verified: use the tool for that.
"""

from __future__ import annotations

import argparse
import json
import sys
from pathlib import Path
from typing import Any, Dict, List

import catalogue_format
import runtime_conf_format
from catalogue_entry import Entry
from format_error import FormatError


def main(arguments: List[str]) -> int:
    """Print the file named in `arguments`; return 0, or 1 with the reason on standard error."""
    options = _parse_arguments(arguments)
    try:
        description = describe(Path(options.file).read_bytes(), strict=not options.lenient)
    except (OSError, FormatError) as error:
        print(f"{options.file}: {error}", file=sys.stderr)
        return 1
    print(json.dumps(description, indent=2) if options.json else text_of(description))
    return 0


def describe(file_bytes: bytes, *, strict: bool = True) -> Dict[str, Any]:
    """Return the fields of either kind of file by name; byte strings become hexadecimal text."""
    if is_runtime_conf(file_bytes):
        return _describe_runtime_conf(runtime_conf_format.parse(file_bytes, strict=strict))
    return _describe_catalogue(catalogue_format.parse(file_bytes, strict=strict))


def is_runtime_conf(file_bytes: bytes) -> bool:
    """Return whether the bytes have the one size of `runtime.conf` and its magic once unscrambled."""
    if len(file_bytes) != runtime_conf_format.FILE_SIZE:
        return False
    return runtime_conf_format.unscramble(file_bytes).startswith(runtime_conf_format.MAGIC)


def text_of(description: Dict[str, Any]) -> str:
    """Return a description as text: the plain fields, then a block for each entry."""
    entries = description.get("entries", [])
    lines = [f"{name}: {value}" for name, value in description.items() if name != "entries"]
    for index, entry in enumerate(entries):
        lines += ["", f"entry {index}"]
        lines += [f"  {name}: {value}" for name, value in entry.items() if name != "digests"]
        lines += [f"  digest {chunk}: {digest}" for chunk, digest in enumerate(entry["digests"])]
    # Lone surrogates, which a broken path field may hold, cannot be written as UTF-8.
    return "\n".join(lines).encode("utf-8", "backslashreplace").decode("utf-8")


def _describe_catalogue(catalogue: catalogue_format.Catalogue) -> Dict[str, Any]:
    return {
        "kind": "catalogue",
        "magic": catalogue.magic.hex(),
        "format_version": catalogue.format_version,
        "signature_layout": catalogue.signature_layout,
        "signature": catalogue.signature.hex(),
        "signature_length": catalogue.signature_length,
        "crl_length": catalogue.crl_length,
        "compressed_length": catalogue.compressed_length,
        "raw_length": catalogue.raw_length,
        "entry_count": catalogue.entry_count,
        "crl": catalogue.crl.hex(),
        "entries": [_describe_entry(entry) for entry in catalogue.entries],
    }


def _describe_entry(entry: Entry) -> Dict[str, Any]:
    return {
        "path": entry.path,
        "aliased_path": entry.aliased_path,
        "name_position": entry.name_position,
        "size": entry.size,
        "digests": [digest.hex() for digest in entry.digests],
    }


def _describe_runtime_conf(conf: runtime_conf_format.RuntimeConf) -> Dict[str, Any]:
    names = dict(enumerate(runtime_conf_format.ANTI_TAMPER_SOLUTIONS))
    return {
        "kind": "runtime.conf",
        "magic": conf.magic.hex(),
        "signature": conf.signature.hex(),
        "signature_length": conf.signature_length,
        "version": conf.version,
        "max_active_instances": conf.max_active_instances,
        "crash_reporter_name": conf.crash_reporter_name.decode("utf-8", "backslashreplace"),
        "anti_tamper_solution": conf.anti_tamper_solution,
        "anti_tamper_solution_name": names.get(conf.anti_tamper_solution),
    }


def _parse_arguments(arguments: List[str]) -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Print a hash catalogue or a runtime.conf.")
    parser.add_argument("file", metavar="FILE", help="the catalogue (*.bin) or runtime.conf to print")
    parser.add_argument("--json", action="store_true", help="print JSON instead of text")
    parser.add_argument("--lenient", action="store_true", help="print what can be read even if no writer made it so")
    return parser.parse_args(arguments)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
