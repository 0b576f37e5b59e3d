"""The companion's libraries are not in `sealkeeper`, as read from the built files."""

import os
import re
import shutil
import subprocess
import sys
import unittest

COMPANION_LIBRARIES = ("CLI::", "nlohmann::", "pugi::")
EXPECTED = re.compile(r"^(libmbed\w+|libstdc\+\+|libc\+\+(abi)?|libgcc_s|libunwind|libm|libc|libpthread|lib\w*san|ld-linux.*)\.so\.")


def needed_by(program):
    """The shared libraries that the program needs."""
    run = subprocess.run(["readelf", "--dynamic", "--wide", program], capture_output=True, text=True, timeout=60,
                         check=True, env={**os.environ, "LC_ALL": "C"})
    return re.findall(r"\(NEEDED\).*\[(.+)\]", run.stdout)


def symbols_of(program):
    """The demangled names of all symbols."""
    run = subprocess.run(["nm", "--demangle", program], capture_output=True, text=True, timeout=60, check=True)
    return run.stdout


@unittest.skipUnless(sys.platform == "linux", "reads ELF")
@unittest.skipUnless(all(map(shutil.which, ("readelf", "nm"))), "readelf and nm, of binutils, are not here")
class LinkedLibraries(unittest.TestCase):
    def test_sealkeeper_links_what_it_did_before_it_had_a_companion(self):
        for library in needed_by(os.environ["SEALKEEPER_PROGRAM"]):
            with self.subTest(library=library):
                self.assertRegex(library, EXPECTED)

    def test_no_code_of_the_companions_libraries_is_in_sealkeeper(self):
        names = symbols_of(os.environ["SEALKEEPER_PROGRAM"])
        # Not assertIn, which would print all names.
        self.assertTrue("sealkeeper::RunProgram" in names, "these are the names of sealkeeper")
        for library in COMPANION_LIBRARIES:
            with self.subTest(library=library):
                self.assertFalse(library in names)

    @unittest.skipUnless("SEALKEEPER_INSPECT" in os.environ, "the companion is not built")
    def test_the_companion_has_them(self):
        """Otherwise the test above looks for the wrong names."""
        names = symbols_of(os.environ["SEALKEEPER_INSPECT"])
        for library in COMPANION_LIBRARIES:
            with self.subTest(library=library):
                self.assertTrue(library in names)


if __name__ == "__main__":
    unittest.main()
