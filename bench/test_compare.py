"""A trial of the comparison in a build with tests: that it runs and prints every table. Its figures
mean nothing and are not looked at."""
import os
import subprocess
import sys
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
BUILD = Path(os.environ["SEALKEEPER_BENCH_BUILD_DIR"])

HEADINGS = ("## Machine", "### SHA-256 in the L2 cache", "### Text conversions of one path",
            "### LZW: ", "### one: files 1,", "### mixed: files ", "### small: files ",
            "### Times as fast as the fastest peer", "### Cost per file of 1 KiB",
            "### Cost per byte of one file")


def run_comparison(*options: str) -> "subprocess.CompletedProcess[str]":
    return subprocess.run([sys.executable, "-B", str(HERE / "compare.py"), "--build-dir", str(BUILD),
                           *options], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False,
                          universal_newlines=True)


class Comparison(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        subprocess.run([str(HERE.parent / "tools/issue-credentials.sh"), "sealkeeper-bench",
                        str(BUILD / "credentials"), "--force"], check=True,
                       stdout=subprocess.DEVNULL)

    def test_prints_every_table(self) -> None:
        trial = run_comparison("--scale", "0.0005", "--rounds", "1")
        self.assertEqual(trial.returncode, 0, trial.stderr)
        lines = trial.stdout.splitlines()
        for heading in HEADINGS:
            at = [number for number, line in enumerate(lines) if line.startswith(heading)]
            self.assertEqual(len(at), 1, heading + "\n" + trial.stdout)
            below = lines[at[0] + 2:at[0] + 5]
            self.assertTrue(all(line.startswith(("|", "- ")) for line in below),
                            heading + "\n" + trial.stdout)

    def test_ends_when_a_command_fails(self) -> None:
        broken = run_comparison("--scale", "0.0005", "--rounds", "1", "--only", "one",
                                "--dir", "/dev/null/trees")
        self.assertEqual(broken.returncode, 1)
        self.assertTrue(broken.stderr.splitlines()[-1].startswith("compare.sh: "), broken.stderr)

    def test_refuses_what_it_does_not_know(self) -> None:
        for options in (["--only", "none"], ["--rounds", "0"], ["--scale", "2"]):
            with self.subTest(options=options):
                refused = run_comparison(*options)
                self.assertEqual(refused.returncode, 2)
                self.assertEqual(refused.stdout, "")


if __name__ == "__main__":
    unittest.main()
