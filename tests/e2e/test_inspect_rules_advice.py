"""`sealkeeper-inspect rules`: what it says of two paths to a file and of a second run is what then happens."""

import unittest
from typing import List

from e2e_support import GOOD, OUTPUT_FOLDER, PRODUCT, Credentials, config
from inspect_support import GOOD as NOTHING_WRONG
from inspect_support import WARNING
from test_inspect_rules import Rules


class SecondRun(Rules):
    """Rules that take in an output of the first run."""

    def generate_and_verify(self, search_options: str, credentials: Credentials) -> int:
        """Seal the game, and return the status of verify."""
        config_file = self.write_config(config(search_options))
        generated = self.run_program(*self.generate_arguments(config_file=config_file, credentials=credentials))
        self.assertEqual(generated.status, 0, generated.output)
        return self.run_program("-productid", PRODUCT, "verify", self.game).status

    def test_the_copy_of_the_certificate_alone(self) -> None:
        self.write("a", b"1")
        for rules in (f'exclude_paths = ["{OUTPUT_FOLDER}/*.bin"]', 'exclude_paths = [ ] exclude_extensions = [".bin"]'):
            with self.subTest(rules=rules):
                self.assertIn(f"A second run seals '{OUTPUT_FOLDER}/base.cer' of the first one and then replaces it, so "
                              "verify fails once another certificate is used.",
                              self.warnings_of(self.report(rules, WARNING)))
                for run in ("first", "second", "third"):
                    self.assertEqual(self.generate_and_verify(rules, GOOD), 0, run)
                self.assertNotEqual(self.generate_and_verify(rules, Credentials.of("big-key")), 0)
                self.assertEqual(self.generate_and_verify(rules, Credentials.of("big-key")), 0)
                self.assertNotEqual(self.generate_and_verify(rules, GOOD), 0)


class Overlap(Rules):
    """Patterns that lead to the same files."""

    def setUp(self) -> None:
        super().setUp()
        for name in ("d/a", "d/b", "e/b", "d/x.pdb"):
            self.write(name, b"1")

    def cures(self, search_options: str) -> List[str]:
        """What to do about files that are sealed twice."""
        return [warning["cure"] for warning in self.report(search_options, WARNING)["warnings"]
                if "more than once" in warning["message"]]

    def test_each_pattern_seals_files_of_its_own(self) -> None:
        cure = ("Write patterns that do not overlap, and that still lead to every file: more than once, a file only takes "
                "longer to hash and verify.")
        for rules in ('include_paths = ["d", "*/b"]',
                      'include_paths = ["d", "d/*"] exclude_extensions = [".pdb"]'):
            with self.subTest(rules=rules):
                self.assertEqual(self.cures(rules), [cure])

    def test_one_pattern_seals_all(self) -> None:
        self.assertEqual(self.cures('include_paths = ["d/b", "d", "d/*"]'), [
            "Take out the patterns 'd/b' and 'd/*': 'd' seals all of them, and a file is hashed and verified once for "
            "each.",
            "Take out the pattern 'd/*': 'd' seals all of it, and a file is hashed and verified once for each."])
        before = self.report('include_paths = ["d/b", "d", "d/*"]', WARNING)
        after = self.report('include_paths = ["d"]', NOTHING_WRONG)
        self.assertEqual(self.states(before), self.states(after))


if __name__ == "__main__":
    unittest.main()
