"""The Kaitai Struct definitions have the same offsets and sizes as the sources.

tools/check-formats.sh compiles them and reads files with them; this test only parses their text.
"""

from __future__ import annotations

import re
import unittest
from pathlib import Path
from typing import Dict, List, Tuple

ROOT = Path(__file__).resolve().parents[2]
FORMATS = ROOT / "docs" / "formats"
SIZES = {"u1": 1, "u2": 2, "u4": 4, "u8": 8}

Field = Dict[str, str]
Offsets = Dict[str, int]


def fields_of(definition: str, *path: str) -> List[Field]:
    """The fields of the "seq" at `path`, each with its keys and values as text."""
    lines = (FORMATS / definition).read_text(encoding="utf-8").splitlines()
    for depth, key in enumerate((*path, "seq")):
        indent = "  " * depth
        start = lines.index(f"{indent}{key}:") + 1
        end = next((i for i in range(start, len(lines)) if re.match(rf" {{0,{len(indent)}}}\S", lines[i])), len(lines))
        lines = lines[start:end]
    indent = "  " * (len(path) + 1)
    fields: List[Field] = []
    for line in lines:
        found = re.match(rf"{indent}(- |  )([a-z-]+): *(.*)$", line)
        if not found:
            continue
        if found.group(1) == "- ":
            fields.append({})
        fields[-1][found.group(2)] = found.group(3)
    return fields


def layout_of(fields: List[Field]) -> Tuple[Offsets, int]:
    """The offset of each field up to the first of unknown size, and where the fields end."""
    offsets: Offsets = {}
    position = 0
    for field in fields:
        size = size_of(field)
        if size is None:
            break
        offsets[field["id"]] = position
        position += size
    return offsets, position


def size_of(field: Field) -> "int | None":
    if "repeat" in field:
        return None
    if "contents" in field:
        return len(field["contents"].split(","))
    if "size" in field:
        return int(field["size"]) if field["size"].isdigit() else None
    return SIZES.get(field.get("type", ""))


def constants_of(header: str, namespace: str) -> Dict[str, int]:
    """The plain numbers in one namespace of a header file."""
    text = (ROOT / "src" / header).read_text(encoding="utf-8")
    begin = text.index(f"{namespace} {{")
    body = text[begin : text.index("}  // namespace", begin)]
    return {name: int(value) for name, value in re.findall(r"inline constexpr [\w:]+ k(\w+) = (\d+);", body)}


def offsets_in(constants: Dict[str, int]) -> Offsets:
    """The offsets by the names in the definitions: SignatureLengthOffset becomes signature_length."""
    offsets = {name[: -len("Offset")]: value for name, value in constants.items() if name.endswith("Offset")}
    found = {re.sub(r"(?<=.)([A-Z])", r"_\1", name).lower(): value for name, value in offsets.items()}
    if "signature" in found:
        found["signature_area"] = found.pop("signature")
    return found


class Definitions(unittest.TestCase):
    """Compares each definition with the header file that defines the layout."""

    def test_catalogue_header(self) -> None:
        constants = constants_of("catalogue/catalogue_format.h", "namespace catalogue_header")
        fields = fields_of("hash_catalogue.ksy")
        self.assertEqual(layout_of(fields), (offsets_in(constants), constants["SizeBytes"]))
        self.assertEqual([field["valid"] for field in fields if field["id"] == "format_version"],
                         [str(constants["FormatVersion"])])
        after = [(field["id"], field["size"]) for field in fields if field["id"] in ("revocation_list", "entry_block")]
        self.assertEqual(after, [("revocation_list", "crl_length"), ("entry_block", "compressed_length")])

    def test_entry(self) -> None:
        constants = constants_of("catalogue/catalogue_format.h", "namespace entry_record")
        fields = fields_of("hash_catalogue.ksy", "types", "entry")
        self.assertEqual(layout_of(fields), (offsets_in(constants), constants["FixedBytes"]))
        digests = fields[-1]
        self.assertEqual((digests["size"], digests["repeat-expr"]), (str(constants["DigestBytes"]), "digest_count"))

    def test_prefix_of_the_entry_block(self) -> None:
        text = (ROOT / "src/catalogue/lzw/lzw_format.h").read_text(encoding="utf-8")
        magic = re.search(r"kPrefix = \{(0x..), (0x..), ", text)
        mask = re.search(r"kCodeBitsMask = (0x..);", text)
        assert magic and mask
        definition = (FORMATS / "hash_catalogue.ksy").read_text(encoding="utf-8").lower()
        self.assertIn(f"prefix == [{magic.group(1)}, {magic.group(2)}]".lower(), definition)
        self.assertIn(f"flags & {mask.group(1)}".lower(), definition)

    def test_runtime_conf(self) -> None:
        constants = constants_of("runtime/runtime_configuration_format.h", "namespace sealkeeper::runtime_file")
        fields = fields_of("runtime_conf.ksy", "types", "plain")
        self.assertEqual(layout_of(fields), (offsets_in(constants), constants["SizeBytes"]))

    def test_magic(self) -> None:
        text = (ROOT / "src/runtime/signed_file_format.h").read_text(encoding="utf-8")
        magic = re.search(r"kMagic = \{(.*)\};", text)
        assert magic
        for fields in (fields_of("hash_catalogue.ksy"), fields_of("runtime_conf.ksy", "types", "plain")):
            self.assertEqual(fields[0]["contents"], f"[{magic.group(1)}]")

    def test_anti_tamper_solutions(self) -> None:
        text = (ROOT / "src/runtime/anti_tamper_solutions.cpp").read_text(encoding="utf-8")
        names = re.findall(r'"([^"]*)"', text[text.index("kSolutionNames = {") : text.index("};")])
        expected = {number: name.lower().replace(" ", "_") for number, name in enumerate(names)}
        definition = (FORMATS / "runtime_conf.ksy").read_text(encoding="utf-8")
        found = re.findall(r"^    (\d+): (\w+)$", definition[definition.index("\nenums:") :], re.M)
        self.assertEqual({int(number): name for number, name in found}, expected)


if __name__ == "__main__":
    unittest.main()
