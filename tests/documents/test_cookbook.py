"""Each recipe in docs/COOKBOOK.md has the effect on its game that its section shows."""

from __future__ import annotations

import json
import os
import re
import shutil
import subprocess
import unittest
from dataclasses import dataclass
from pathlib import Path
from typing import List

from document_blocks import ROOT, Section, page, sections_of
from sealed_game import CREDENTIALS, INSPECT, PathOrText, SealedGameTest

RECIPES = ROOT / "docs/cookbook"
SEALED = "sealed"
# A path, the size or the link target if the page gives one, and what happens to the file.
LAID_OUT = re.compile(r"^(\S+)(?: -> (\S+))?(?: \((\d+) MB\))? +(\S.*)$")
MEGABYTE = 1_000_000
NOTHING_WRONG, WARNED = 0, 1
OTHER_PRODUCT = 31
UNTRUSTED = 22
FILE_MISSING = 23


@dataclass(frozen=True)
class Laid:
    """A line of a layout."""

    path: str
    target: str
    size: int
    state: str


def layout_of(section: Section) -> List[Laid]:
    """The game shown in a section."""
    lines = section.blocks("layout")[0].text.splitlines()
    matches = [LAID_OUT.match(line) for line in lines]
    return [Laid(match[1], match[2] or "", int(match[3] or 0) * MEGABYTE, match[4]) for match in matches if match]


def recipe_of(section: Section) -> Path:
    """The configuration file that a section links to."""
    return ROOT / "docs" / re.findall(r"\]\((cookbook/[^)]+)\)", section.text)[0]


class Cookbook(SealedGameTest):
    """Every section, with its recipe copied beside the game."""

    def setUp(self) -> None:
        super().setUp()
        self.sections = sections_of(page("COOKBOOK.md"))

    def mods(self) -> Section:
        """The section on mods."""
        return next(section for section in self.sections if section.title == "A game with mods")

    def lay_out(self, section: Section) -> List[Laid]:
        """Create the game of a section, replacing the previous one."""
        shutil.rmtree(self.game)
        laid = layout_of(section)
        self.assertEqual(len(laid), len(section.blocks("layout")[0].text.splitlines()))
        for file in laid:
            path = self.game / file.path
            path.parent.mkdir(parents=True, exist_ok=True)
            if file.target:
                path.symlink_to(file.target)
            else:
                path.write_text(file.path)
                os.truncate(path, file.size or len(file.path))
        return laid

    def put_recipe(self, section: Section) -> str:
        """Copy the recipe of a section beside the game; return the name that warnings use for it."""
        return Path(shutil.copy(recipe_of(section), self.directory)).name

    def warnings_of(self, recipe: str) -> str:
        """The output of `rules` before the totals."""
        run = self.run_program(INSPECT, "rules", recipe, "--game", self.game)
        text = run.stdout[: re.search(r"^sealed ", run.stdout, re.MULTILINE).start()].rstrip("\n")
        self.assertEqual(run.returncode, WARNED if text else NOTHING_WRONG, run.stdout)
        return text + "\n" if text else ""

    def test_there_is_a_section_for_each_recipe(self) -> None:
        self.assertEqual(sorted(recipe_of(section) for section in self.sections), sorted(RECIPES.glob("*.cfg")))
        self.assertEqual(len(self.sections), 8)

    def test_each_file_becomes_what_its_section_says(self) -> None:
        for section in self.sections:
            with self.subTest(section.title):
                laid = self.lay_out(section)
                recipe = self.put_recipe(section)
                run = self.run_program(INSPECT, "rules", recipe, "--game", self.game, "--json")
                states = {file["path"]: file["reason"] or file["state"] for file in json.loads(run.stdout)["files"]}
                self.assertEqual(states, {file.path: file.state for file in laid})

    def test_each_game_is_sealed_twice_and_verified(self) -> None:
        for section in self.sections:
            with self.subTest(section.title):
                sealed = sorted(file.path for file in self.lay_out(section) if file.state == SEALED)
                recipe = self.put_recipe(section)
                for _ in range(2):
                    run = self.seal(recipe)
                    self.assertEqual(run.returncode, 0, run.stdout)
                self.assertEqual(self.listed(), sealed)
                run = self.verify()
                self.assertEqual(run.returncode, 0, run.stdout)

    def test_a_recipe_has_the_warning_that_its_section_names_and_no_other(self) -> None:
        for section in self.sections:
            with self.subTest(section.title):
                self.lay_out(section)
                named = [] if section.blocks("alias") else section.blocks("warning")
                self.assertEqual(self.warnings_of(self.put_recipe(section)), "".join(block.text for block in named))

    def test_each_section_explains_every_rule(self) -> None:
        for section in self.sections:
            rules = re.sub(r"#.*", "", recipe_of(section).read_text()).split("search_options", 1)[1]
            for rule in re.findall(r'"([^"]+)"|= (\d+);', rules):
                with self.subTest(section.title, rule=rule):
                    self.assertIn(f"`{rule[0] or rule[1]}`", section.text)

    def issue_for_mod(self) -> Path:
        """Have the game's certificate issue one of a mod, which has a name of its own."""
        issued = self.directory / "mymod"
        subprocess.run(["bash", ROOT / "tools/issue-credentials.sh", "mymod", issued, "--mod", CREDENTIALS / "good"],
                       check=True, stdout=subprocess.DEVNULL)
        return issued

    def seal_mod(self, credentials: PathOrText, *options: str) -> int:
        """Seal a mod; return the exit status of generate."""
        mod = self.directory / "mod.cfg"
        mod.write_text('config_info { version = 2; }\nsearch_options { include_paths = ["Mods/BiggerShips"] }\n')
        return self.seal(mod.name, *options, credentials=credentials).returncode

    def put_mod(self, credentials: PathOrText, *options: str) -> int:
        """Seal a mod and put its catalogue beside the game's; return the exit status of generate."""
        status = self.seal_mod(credentials, "-outname", "mymod", *options)
        for made in self.game.glob("mymod.*"):
            made.replace(self.game / "Quorvane/Certificates" / made.name)
        return status

    def test_the_certificate_of_a_mod_decides_whether_verify_can_check_it(self) -> None:
        section = self.mods()
        self.lay_out(section)
        self.assertEqual(self.seal(self.put_recipe(section)).returncode, 0)
        self.assertEqual(self.put_mod("good"), 0)
        run = self.verify()
        self.assertEqual(run.returncode, 0)
        self.assertIn("Successfully verified 'Mods/BiggerShips/ships.pak'", run.stdout)
        credentials = self.issue_for_mod()
        self.assertEqual(self.put_mod(credentials), OTHER_PRODUCT)
        self.assertEqual(self.put_mod(credentials, "-gamedev"), 0)
        for options in ((), ("-gamedev",)):
            run = self.verify(*options)
            self.assertEqual(run.returncode, OTHER_PRODUCT)
            self.assertNotIn("Successfully verified 'HarborTale'", run.stdout)
        self.assertIn(f"verify ends with {OTHER_PRODUCT} before it looks at any file", section.text)
        # The credentials of the tests have one of a mod that bears the product's name.
        bears_the_name = "mod"
        self.assertEqual(self.put_mod(bears_the_name, "-gamedev"), 0)
        self.assertEqual(self.verify().returncode, UNTRUSTED)
        self.assertIn(f"({UNTRUSTED} if the mod bears the\n  name of the game's product.)", section.text)

    def test_a_mod_without_its_name_replaces_the_game(self) -> None:
        self.lay_out(self.mods())
        self.assertEqual(self.seal(self.put_recipe(self.mods())).returncode, 0)
        self.assertEqual(self.seal_mod(self.issue_for_mod(), "-gamedev"), 0)
        self.assertEqual(self.listed(), ["Mods/BiggerShips/ships.pak"])
        self.assertEqual(self.verify().returncode, OTHER_PRODUCT)
        self.assertIn("Give `-outname` each time.", self.mods().text)

    def test_the_alias_is_the_trap_that_it_is_said_to_be(self) -> None:
        section = next(section for section in self.sections if section.blocks("alias"))
        below_alias = [file for file in self.lay_out(section) if file.path.startswith("Game/") and file.state == SEALED]
        recipe = self.directory / self.put_recipe(section)
        head, end, _ = recipe.read_text().rpartition("}")
        recipe.write_text(f"{head}    {section.blocks('alias')[0].text}{end}\n")
        self.assertEqual(self.warnings_of(recipe.name), section.blocks("warning")[0].text)
        self.assertEqual(self.seal(recipe.name).returncode, 0)
        run = self.verify()
        self.assertEqual(run.returncode, FILE_MISSING)
        self.assertEqual(run.stdout.count(f"- Code {FILE_MISSING} "), len(below_alias))


if __name__ == "__main__":
    unittest.main()
