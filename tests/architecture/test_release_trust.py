"""A release cannot be built with the development trust material."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
DEVELOPMENT = ROOT / "trust/development"


class ReleaseTrust(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.ca = pathlib.Path(directory.name, "ca.der")
        self.crl = pathlib.Path(directory.name, "crl.der")
        self.ca.write_bytes(b"another authority")
        self.crl.write_bytes(b"another revocation list")

    def check(self, ca, crl, is_required=True):
        """Return whether configuring continues, and its output."""
        command = [os.environ["SEALKEEPER_CMAKE"], f"-DSEALKEEPER_TRUST_CA={ca}", f"-DSEALKEEPER_TRUST_CRL={crl}",
                   f"-DSEALKEEPER_REQUIRE_OWN_TRUST={is_required}", "-P", HERE / "check_trust_material.cmake"]
        run = subprocess.run(command, capture_output=True, text=True, timeout=60, check=False)
        return run.returncode == 0, " ".join(run.stderr.split())

    def assert_refused(self, ca, crl):
        goes_on, text = self.check(ca, crl)
        self.assertFalse(goes_on)
        self.assertIn("set both -DSEALKEEPER_TRUST_CA=/path/ca.der and -DSEALKEEPER_TRUST_CRL=/path/crl.der", text)
        self.assertIn("cmake --preset demo", text)

    def test_own_material_is_taken_in_silence(self):
        self.assertEqual(self.check(self.ca, self.crl), (True, ""))

    def test_development_material_is_refused(self):
        self.assert_refused(DEVELOPMENT / "ca.der", DEVELOPMENT / "crl.der")

    def test_either_half_of_it_is_refused(self):
        self.assert_refused(self.ca, DEVELOPMENT / "crl.der")
        self.assert_refused(DEVELOPMENT / "ca.der", self.crl)

    def test_copies_of_it_are_refused(self):
        shutil.copy(DEVELOPMENT / "ca.der", self.ca)
        self.assert_refused(self.ca, self.crl)
        self.ca.write_bytes(b"another authority")
        shutil.copy(DEVELOPMENT / "crl.der", self.crl)
        self.assert_refused(self.ca, self.crl)

    def test_other_builds_warn_of_it(self):
        goes_on, text = self.check(DEVELOPMENT / "ca.der", DEVELOPMENT / "crl.der", is_required=False)
        self.assertTrue(goes_on)
        self.assertIn("DEVELOPMENT trust material", text)

    def test_preset_release_demands_it(self):
        command = [os.environ["SEALKEEPER_CMAKE"], "--preset", "release", "-B", self.ca.parent / "build"]
        run = subprocess.run(command, cwd=ROOT, capture_output=True, text=True, timeout=120, check=False)
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("cmake --preset demo", " ".join(run.stderr.split()))

    def test_preset_demo_does_not(self):
        presets = json.loads((ROOT / "CMakePresets.json").read_text())["configurePresets"]
        demo = next(preset for preset in presets if preset["name"] == "demo")
        self.assertEqual(demo["cacheVariables"]["SEALKEEPER_REQUIRE_OWN_TRUST"], "OFF")


if __name__ == "__main__":
    unittest.main()
