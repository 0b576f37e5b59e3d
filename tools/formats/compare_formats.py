#!/usr/bin/env python3
"""Compares what the compiled definitions read with what sealkeeper-inspect shows.

    compare_formats.py BUILD_DIR READERS_DIR

The files are those of a game sealed here, and the test vectors. A file that only one of the two accepts is a difference
too.
"""

from __future__ import annotations

import json
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Any, Dict, List, Optional

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "independent"))

import catalogue_format
import fixed_width_lzw
from format_error import FormatError

VECTORS = ROOT / "docs" / "vectors"
CONFIG = """config_info { version = 2; }
search_options { include_paths = ["bin", "data"] }
runtime_configuration {
    max_active_game_instances = 300; crash_reporter_name = "Melder \u65e5"; anti_tamper_solution_name = "Steam DRM";
}
"""

Fields = Dict[str, Any]


class Comparison:
    """The two programs of a build, and the compiled readers."""

    def __init__(self, build: Path, readers: Path, scratch: Path) -> None:
        self.build = build
        self.readers = readers
        self.scratch = scratch
        self.valid_files = 0

    def sealed_files(self) -> List[Path]:
        """Seal a game; return its signed files."""
        game = self.scratch / "game"
        contents = {"bin/game.exe": b"hello", "data/\u00dcbung/empty": b"", "data/two chunks": bytes(4 * 1024 * 1024 + 1)}
        for name, content in contents.items():
            (game / name).parent.mkdir(parents=True, exist_ok=True)
            (game / name).write_bytes(content)
        (self.scratch / "game.cfg").write_text(CONFIG, encoding="utf-8")
        keys = VECTORS / "keys" / "game"
        command = [self.build / "sealkeeper", "-productid", "VectorProduct", "-inkey", keys / "base_private.key"]
        command += ["-incert", keys / "base_public.cer", "-incrl", ROOT / "trust" / "development" / "crl.der"]
        command += ["-target_game_dir", game, self.scratch / "game.cfg"]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        folder = game / "Quorvane" / "Certificates"
        sealed = [folder / "base.bin", folder / "runtime.conf"]
        for file in sealed:
            if not self.shown(file)["isValid"]:
                raise RuntimeError(f"{file} was sealed just now and is not valid")
        return sealed

    def differences(self, file: Path) -> List[str]:
        """The differences between the two for one file."""
        shown = self.shown(file)
        self.valid_files += shown["isValid"]
        kind = shown["kind"] if shown["kind"] != "unknown" else self.kind_by_name(file)
        read = self.read(file, kind)
        if read is None or not shown["isValid"]:
            return [] if read is None and not shown["isValid"] else [f"valid: {shown['isValid']}, read: {read is not None}"]
        return self.differing(self.expected(shown, file.read_bytes()), read)

    def shown(self, file: Path) -> Fields:
        """The output of sealkeeper-inspect."""
        command = [self.build / "sealkeeper-inspect", "show", file, "--digests", "--json"]
        return json.loads(subprocess.run(command, check=False, stdout=subprocess.PIPE).stdout)

    def read(self, file: Path, kind: str) -> Optional[Fields]:
        """The output of the compiled reader; None if it refuses the file."""
        command = ["node", ROOT / "tools" / "formats" / "print_fields.js", self.readers, kind, file]
        if kind == "catalogue":
            raw = self.raw_entry_block(file)
            if raw is None:
                return None
            command.append(raw)
        run = subprocess.run(command, check=False, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        if run.returncode == 0:
            return json.loads(run.stdout)
        # A bug in the readers or their caller must not count as a refusal.
        if "ValidationNotEqualError" in run.stderr or "ValidationExprError" in run.stderr or "EOFError" in run.stderr:
            return None
        raise RuntimeError(f"{file}: {run.stderr}")

    def raw_entry_block(self, file: Path) -> Optional[Path]:
        """A file with the decompressed entry block; None if it cannot be decompressed."""
        content = file.read_bytes()
        crl_length = int.from_bytes(content[1036:1040], "little")
        raw = self.scratch / "raw"
        try:
            raw.write_bytes(fixed_width_lzw.decompress(content[catalogue_format.HEADER_SIZE + crl_length :]))
        except FormatError:
            return None
        return raw

    @staticmethod
    def kind_by_name(file: Path) -> str:
        """For a file that is neither by its content."""
        return "catalogue" if file.suffix == ".bin" else "runtime.conf"

    @staticmethod
    def expected(shown: Fields, content: bytes) -> Fields:
        """The output that the compiled reader should give."""
        fields = {field["name"]: field["value"] for field in shown["fields"]}
        entries = [
            {
                "path": entry.get("seenAs", entry["path"]),
                "bytes": entry["bytes"],
                "namePosition": entry["namePosition"],
                "digests": entry["digests"],
            }
            for entry in shown.get("entries", [])
        ]
        length = fields.get("signature_length", fields.get("signature length"))
        signature = fields["signature area"][: 2 * length] if length <= 1024 else None
        blocks: Fields = {"signature": signature}
        if shown["kind"] == "catalogue":
            blocks["revocationListBytes"] = shown["revocationList"]["bytes"]
            block = content[catalogue_format.HEADER_SIZE + blocks["revocationListBytes"] :]
            blocks["isCompressed"] = block.startswith(fixed_width_lzw.MAGIC)
            blocks["codeBits"] = block[2] & fixed_width_lzw.CODE_WIDTH_MASK if blocks["isCompressed"] else None
        return {"fields": fields, "blocks": blocks, "entries": entries}

    @staticmethod
    def differing(expected: Fields, read: Fields) -> List[str]:
        """The fields that differ."""
        return [
            f"{part}: {json.dumps(expected[part])} is shown, {json.dumps(read[part])} is read"
            for part in expected
            if expected[part] != read[part]
        ]


def vector_files() -> List[Path]:
    """The signed files of all stored test vectors."""
    folders = "sets/*/Quorvane/Certificates"
    return sorted(VECTORS.glob(f"{folders}/*.bin")) + sorted(VECTORS.glob(f"{folders}/*.conf"))


def main(arguments: List[str]) -> int:
    """Compare; return 1 if anything differs."""
    build, readers = (Path(argument).resolve() for argument in arguments)
    with tempfile.TemporaryDirectory() as scratch:
        comparison = Comparison(build, readers, Path(scratch))
        files = comparison.sealed_files() + vector_files()
        differing = {file: comparison.differences(file) for file in files}
    for file, differences in differing.items():
        for difference in differences:
            print(f"{file}: {difference}")
    if any(differing.values()):
        return 1
    print(f"{len(files)} files, {comparison.valid_files} of them valid: the definitions read what sealkeeper-inspect shows.")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
