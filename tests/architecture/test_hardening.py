"""The hardening of each built program, read from its file."""

import os
import re
import shutil
import subprocess
import sys
import unittest

TOOLS = ("readelf", "objdump")
# The machines of ELF files by their number, with the instructions to which indirect calls may lead.
X86_64 = 62
AARCH64 = 183
LANDING_INSTRUCTIONS = {X86_64: ("endbr64",), AARCH64: ("bti", "paciasp")}


class HardeningOf:
    """The tests for one program, whose path is in the environment."""

    variable = ""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.program = os.environ[cls.variable]
        with open(cls.program, "rb") as file:
            # The machine need not be the one that runs this test.
            cls.machine = int.from_bytes(file.read(20)[18:], "little")
        cls.dynamic_section = cls.output_of("readelf", "--dynamic", "--wide")
        cls.dynamic_symbols = cls.output_of("readelf", "--dyn-syms", "--wide")
        cls.instructions = cls.output_of("objdump", "--disassemble", "--no-show-raw-insn")

    @classmethod
    def output_of(cls, *command):
        run = subprocess.run([*command, cls.program], capture_output=True, text=True, timeout=60, check=True,
                             env={**os.environ, "LC_ALL": "C"})
        return run.stdout

    def test_position_independent_executable(self):
        self.assertRegex(self.output_of("readelf", "--file-header"), r"Type:\s+DYN ")
        self.assertRegex(self.dynamic_section, r"\(FLAGS_1\).*\bPIE\b")

    def test_relocations_are_read_only_and_bound_at_start(self):
        self.assertRegex(self.output_of("readelf", "--segments", "--wide"), r"\n\s+GNU_RELRO\s")
        self.assertRegex(self.dynamic_section, r"\(FLAGS_1\).*\bNOW\b")

    def test_stack_cannot_be_executed(self):
        self.assertRegex(self.output_of("readelf", "--segments", "--wide"), r"\n\s+GNU_STACK\s.*\sRW\s")

    def test_stack_protector(self):
        self.assertRegex(self.dynamic_symbols, r"\sUND __stack_chk_fail\b")

    def test_fortified_calls_of_the_c_library(self):
        self.assertRegex(self.dynamic_symbols, r"\sUND __\w+_chk\b")

    def test_assertions_of_the_cxx_library(self):
        # The names of libstdc++ and of libc++.
        self.assertRegex(self.dynamic_symbols, r"\sUND \w*(?:__glibcxx_assert_fail|__libcpp_verbose_abort)")

    def test_functions_begin_where_calls_may_land(self):
        if self.machine not in LANDING_INSTRUCTIONS:
            self.skipTest("knows the instructions of x86-64 and ARM64 only")
        functions = re.findall(r"<(main|_ZN10sealkeeper\w+)>:\n\s*\w+:\s+(\w+)", self.instructions)
        # Functions that are only called directly need no mark.
        marked = [name for name, instruction in functions if instruction in LANDING_INSTRUCTIONS[self.machine]]
        self.assertIn("main", marked)
        self.assertGreater(len(marked), 100)

    def test_large_stack_frames_are_probed(self):
        if self.machine != X86_64:
            self.skipTest("knows the probes of x86-64 only")
        probe = r"sub\s+\$0x1000,%rsp\n.*\t(?:or|mov)q\s+\$0x0,(?:0x[0-9a-f]+)?\(%rsp\)"
        self.assertTrue(re.search(probe, self.instructions))


def reads_hardened_programs(tests):
    """Skips the tests if there is nothing to check or no tool to check it with."""
    for condition, reason in (
        (os.environ.get("SEALKEEPER_IS_HARDENED") == "1", "this build is not hardened"),
        (sys.platform == "linux", "reads ELF, and the names of the GNU C library"),
        (all(map(shutil.which, TOOLS)), "readelf and objdump, of binutils, are not here"),
    ):
        tests = unittest.skipUnless(condition, reason)(tests)
    return tests


@reads_hardened_programs
class Sealkeeper(HardeningOf, unittest.TestCase):
    variable = "SEALKEEPER_PROGRAM"


@reads_hardened_programs
@unittest.skipUnless("SEALKEEPER_INSPECT" in os.environ, "this build has no companion")
class SealkeeperInspect(HardeningOf, unittest.TestCase):
    variable = "SEALKEEPER_INSPECT"


if __name__ == "__main__":
    unittest.main()
