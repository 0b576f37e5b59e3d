"""The command lines that docs/MESSAGES.md says get the usage text and no message."""

from __future__ import annotations

import os
import re
import shlex
import subprocess
import unittest

from document_blocks import page

USAGE_ERROR = 1


class UsageAlone(unittest.TestCase):
    def test_each_has_no_message(self) -> None:
        explained = re.search(r"^- The usage text alone,(.*?)^- ", page("MESSAGES.md"), re.MULTILINE | re.DOTALL)[1]
        examples = re.findall(r"`([^`]+)`", explained)
        self.assertGreater(len(examples), 8)
        for example in examples:
            with self.subTest(example):
                words = shlex.split(example)
                arguments = words[1:] if words[0] == "sealkeeper" else words
                run = subprocess.run([os.environ["SEALKEEPER_PROGRAM"], *arguments], capture_output=True, text=True,
                                     check=False)
                self.assertEqual(run.returncode, USAGE_ERROR)
                self.assertIn("\nUsage: ", run.stdout)
                self.assertIsNone(re.search(r"^\[(Err!|Warn)\]", run.stdout, re.MULTILINE), run.stdout)


if __name__ == "__main__":
    unittest.main()
