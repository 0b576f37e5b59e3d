"""What the pages of the formats say by example is what the program writes and reads."""

from __future__ import annotations

import json
import re
import unittest
from typing import Any, Dict

from document_blocks import ROOT, page
from sealed_game import INSPECT, SealedGameTest

CONFIG = 'config_info { version = 2; }\nsearch_options {\n    include_paths = ["game"]\n    %s\n}\n'
VECTORS = ROOT / "docs/vectors/vectors.json"


def numbered_steps(text: str) -> "list[str]":
    """The steps of a numbered list, each on one line."""
    return [" ".join(step.split()) for step in re.findall(r"^\d\. (.*?)(?=^\d\. |\n\n)", text, re.MULTILINE | re.DOTALL)]


class Catalogue(SealedGameTest):
    def stored(self, path: str, options: str) -> Dict[str, Any]:
        """The first entry of the catalogue of a game with one file."""
        (self.game / path).parent.mkdir(parents=True)
        (self.game / path).write_text("a")
        (self.directory / "game.cfg").write_text(CONFIG % options)
        self.assertEqual(self.seal("game.cfg").returncode, 0)
        run = self.run_program(INSPECT, "show", "--json", self.game / "Quorvane/Certificates/base.bin")
        return json.loads(run.stdout)["entries"][0]

    def test_name_position_of_a_path_that_an_alias_changed(self) -> None:
        position, path = re.search(r"(\d+) for `([\w/.]+)`", page("catalogue-format.md")).group(1, 2)
        first, rest = path.split("/", 1)
        entry = self.stored(f"game/{rest}", f'alias_paths = ( ["game", "{first}"] );')
        self.assertEqual((entry["path"], entry["namePosition"]), (path, int(position)))

    def test_steps_have_the_codes_of_the_vectors(self) -> None:
        codes = {vector["name"]: vector["verify"]["status"] for vector in json.loads(VECTORS.read_text())["vectors"]}
        steps = numbered_steps(page("catalogue-format.md"))
        tried = (("invalid-before-certificate", 0), ("certificate-missing", 1), ("certificate-pem", 1),
                 ("signature-too-long", 2), ("current-layout-called-older", 2), ("entries-unknown-code", 3))
        for name, step in tried:
            with self.subTest(name):
                self.assertRegex(steps[step], rf"\b{codes[name]}\b")

    def test_code_that_is_never_assigned(self) -> None:
        source = (ROOT / "src/catalogue/lzw/lzw_format.h").read_text(encoding="utf-8")
        limit = re.search(r"kEndOfCodes = (\d+);", source)[1]
        self.assertIn(f"the code {limit} is never assigned", page("catalogue-format.md"))


class RuntimeConf(unittest.TestCase):
    def test_shortest_that_can_be_signed(self) -> None:
        source = (ROOT / "src/runtime/runtime_configuration_format.h").read_text(encoding="utf-8")
        shortest = re.search(r"kVersionOffset = (\d+);", source)[1]
        self.assertIn(f"Validating needs at least {shortest} bytes", page("runtime-conf-format.md"))


if __name__ == "__main__":
    unittest.main()
