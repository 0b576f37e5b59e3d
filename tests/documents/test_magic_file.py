"""The output of file(1) with docs/formats/sealkeeper.magic."""

from __future__ import annotations

import subprocess
import tempfile
import unittest
from pathlib import Path

import runtime_conf_format

ROOT = Path(__file__).resolve().parents[2]
MAGIC = ROOT / "docs" / "formats" / "sealkeeper.magic"
SETS = ROOT / "docs" / "vectors" / "sets"


def said_of(path: Path) -> str:
    run = subprocess.run(["file", "--brief", "--magic-file", MAGIC, path], check=True, capture_output=True, text=True)
    assert run.stderr == "", run.stderr
    return run.stdout.strip()


class Vectors(unittest.TestCase):
    """For the signed files of the test vectors."""

    def assert_said(self, name: str, file: str, text: str) -> None:
        with self.subTest(name):
            self.assertEqual(said_of(SETS / name / "Quorvane" / "Certificates" / file), text)

    def test_catalogues(self) -> None:
        begin = "Sealkeeper hash catalogue"
        known = f"{begin}, format version 4"
        texts = {
            "good": f"{known}, 3 files, signature of 256 bytes",
            "good-4096-bits": f"{known}, 1 file, signature of 512 bytes",
            "good-revocation-list": f"{known}, 1 file, signature of 256 bytes, revocation list of 756 bytes",
            "layout-no-entry": f"{known}, 0 files, signature of 256 bytes",
            "older-layout": f"{known}, 1 file, signature of 256 bytes in an older layout",
            "signature-none": f"{known}, 1 file, not signed",
            "invalid-format-version-3": f"{begin}, unknown format version 3",
            "invalid-magic": "data",
        }
        for name, text in texts.items():
            self.assert_said(name, "base.bin", text)

    def test_runtime_confs(self) -> None:
        known = "Sealkeeper runtime.conf, version 1, instances 2"
        texts = {
            "good": f"{known}, anti-tamper solution Denuvo",
            "runtime-conf-not-signed": f"{known}, anti-tamper solution Denuvo",
            "runtime-conf-unknown-solution": known,
            "runtime-conf-longer": f"{known}, anti-tamper solution Denuvo, 1109 bytes in place of 1108",
            "runtime-conf-cut": f"{known}, 1107 bytes in place of 1108",
            "runtime-conf-version-2": "data",
            "runtime-conf-magic": "data",
        }
        for name, text in texts.items():
            self.assert_said(name, "runtime.conf", text)


class Settings(unittest.TestCase):
    """For every solution, and for instance counts of one byte and of more."""

    def setUp(self) -> None:
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.path = Path(scratch.name, "runtime.conf")

    def test_solutions(self) -> None:
        for solution, name in enumerate(runtime_conf_format.ANTI_TAMPER_SOLUTIONS):
            self.path.write_bytes(runtime_conf_format.build(1, b"N" * 64, solution))
            with self.subTest(name):
                text = "no anti-tamper solution" if solution == 0 else f"anti-tamper solution {name}"
                self.assertEqual(said_of(self.path), f"Sealkeeper runtime.conf, version 1, instances 1, {text}")

    def test_instances(self) -> None:
        for instances in (0, 1, 219, 220, 255, 256, 65536, 2**24, 2**32 - 1):
            self.path.write_bytes(runtime_conf_format.build(instances))
            with self.subTest(instances=instances):
                shown = f", instances {instances}" if instances < 256 else ""
                text = f"Sealkeeper runtime.conf, version 1{shown}, no anti-tamper solution"
                self.assertEqual(said_of(self.path), text)


if __name__ == "__main__":
    unittest.main()
