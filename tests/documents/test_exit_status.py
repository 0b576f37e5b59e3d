"""docs/exit-status.md lists every status by name, and says which are never returned."""

from __future__ import annotations

import unittest

import exit_status


class ExitStatus(unittest.TestCase):
    def test_each_has_its_row_and_name(self) -> None:
        self.assertEqual(sorted(exit_status.names().items()), [(status, name) for status, name, _ in exit_status.rows()])

    def test_they_are_0_to_35(self) -> None:
        self.assertEqual(list(range(36)), sorted(exit_status.names()))

    def test_each_has_a_meaning(self) -> None:
        for status, _, meaning in exit_status.rows():
            with self.subTest(status=status):
                self.assertNotEqual("", meaning.strip())

    def test_those_that_are_never_returned_are_marked(self) -> None:
        marked = {status for status, _, meaning in exit_status.rows() if exit_status.NEVER in meaning}
        self.assertEqual(set(exit_status.names()) - exit_status.returned(), marked)


if __name__ == "__main__":
    unittest.main()
