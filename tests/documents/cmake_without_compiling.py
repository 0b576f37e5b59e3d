"""Stands in for "cmake" where a page builds the program: does everything but compile.

CMake itself configures, and configures again after the trust material has changed. The program is replaced by one that
reads its trust material from files: the bytes that CMake wrote into the source file.
"""

from __future__ import annotations

import os
import re
import subprocess
import sys
from pathlib import Path

BUILD = Path("build/release")
PROGRAMS = {"sealkeeper": "SEALKEEPER_TRUSTING_FILES", "sealkeeper-inspect": "SEALKEEPER_INSPECT_TRUSTING_FILES"}
ARRAYS = {"SEALKEEPER_TEST_TRUST_CA": "kAuthorityDer", "SEALKEEPER_TEST_TRUST_CRL": "kRevocationListDer"}


def configured_bytes(array: str) -> bytes:
    """The bytes that CMake wrote into an array of the trust material's source file."""
    text = (BUILD / "src/runtime/trust_material.cpp").read_text()
    numbers = re.search(array + r"\[\] = \{(.*?)\};", text).group(1)
    return bytes(int(number, 16) for number in re.findall("0x[0-9a-f]{2}", numbers))


def put_programs() -> None:
    """Put the programs where the build would put them."""
    variables = ""
    for variable, array in ARRAYS.items():
        path = (BUILD / array).absolute()
        path.write_bytes(configured_bytes(array))
        variables += f"{variable}='{path}' "
    for name, variable in PROGRAMS.items():
        script = BUILD / name
        script.write_text(f"#!/bin/sh\n{variables} exec '{os.environ[variable]}' \"$@\"\n")
        script.chmod(0o755)


def main() -> int:
    """Run CMake. A build is replaced as the module says."""
    if sys.argv[1:] != ["--build", "--preset", "release"]:
        return subprocess.run([os.environ["SEALKEEPER_CMAKE"], *sys.argv[1:]], check=False).returncode
    configured = subprocess.run(["ninja", "-C", BUILD, "build.ninja"], check=False)
    if configured.returncode == 0:
        put_programs()
    return configured.returncode


if __name__ == "__main__":
    sys.exit(main())
