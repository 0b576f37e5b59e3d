"""Describes the machine and the programs that the figures were measured with."""
import datetime
import json
import os
import platform
import re
import shutil
import subprocess
from pathlib import Path
from typing import List, Optional, Tuple

MISSING = "not installed"
UNKNOWN = "unknown"

ROOT = Path(__file__).resolve().parent.parent


def first_line_of(arguments: List[str]) -> str:
    """The first line that a command prints, to either stream; `MISSING` if there is no such command."""
    if shutil.which(arguments[0]) is None:
        return MISSING
    result = subprocess.run(arguments, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, text=True, errors="replace", check=False)
    lines = result.stdout.strip().splitlines()
    return lines[0] if lines else UNKNOWN


def processor() -> Tuple[str, str]:
    """The name of the processor, and its caches if known."""
    if platform.system() == "Darwin":
        return first_line_of(["sysctl", "-n", "machdep.cpu.brand_string"]), ""
    if shutil.which("lscpu") is None:
        return platform.machine(), ""
    listing = subprocess.run(["lscpu"], stdout=subprocess.PIPE, text=True, check=False,
                             env={**os.environ, "LC_ALL": "C"}).stdout
    fields = dict(re.findall(r"^\s*([^:]+):\s*(.*)$", listing, re.MULTILINE))
    caches = ", ".join(f"{name} {fields[name]}" for name in ("L1d cache", "L2 cache", "L3 cache")
                       if name in fields)
    name = fields.get("Model name", platform.machine())
    # A virtual machine often reports only the vendor's name for a whole family.
    if "CPU family" in fields and "Model" in fields:
        name += f" family {fields['CPU family']} model {fields['Model']}"
    return name, caches


def processor_with_caches() -> str:
    name, caches = processor()
    return f"{name} ({caches})" if caches else name


def name_of_machine() -> str:
    """The heading of the figures of this machine."""
    return f"{processor()[0]}, {os.cpu_count()} cores"


def memory() -> str:
    pages = os.sysconf("SC_PHYS_PAGES")
    return f"{pages * os.sysconf('SC_PAGE_SIZE') / 2**30:.0f} GiB"


def output_of_git(tree: Path, *arguments: str) -> Optional[str]:
    """The output of a git command; None if it fails. Takes no locks, so that it disturbs nobody who
    works in the same repository."""
    result = subprocess.run(["git", "--no-optional-locks", "-C", str(tree), *arguments],
                            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.DEVNULL, text=True, errors="replace", check=False)
    return result.stdout.strip() if result.returncode == 0 else None


def commit_of(tree: Path) -> str:
    """The commit of `tree`, and whether the tree has changes that are not in it."""
    if shutil.which("git") is None:
        return MISSING
    # Sources unpacked inside another repository are not at its commit.
    if output_of_git(tree, "ls-files", "--error-unmatch", "--", ".") is None:
        return UNKNOWN
    commit = output_of_git(tree, "rev-parse", "--short", "HEAD")
    changes = output_of_git(tree, "status", "--porcelain", "--", ".")
    if commit is None or changes is None:
        return UNKNOWN
    return commit + (", modified" if changes else "")


def describe(build: Path, rounds: int) -> str:
    description = json.loads((build / "bench" / "build_description.json").read_text())
    rows = [
        ("Date", datetime.date.today().isoformat()),
        ("Commit", commit_of(ROOT)),
        ("Processor", processor_with_caches()),
        ("Cores", str(os.cpu_count())),
        ("Memory", memory()),
        ("System", f"{platform.system()} {platform.release()} {platform.machine()}"),
        ("Compiler", f"{description['compiler']}, {description['buildType']}"),
        ("mbed TLS", description["mbedTls"]),
        ("openssl", first_line_of(["openssl", "version"])),
        ("rhash", first_line_of(["rhash", "--version"])),
        ("sha256sum", first_line_of(["sha256sum", "--version"])),
        ("hashdeep", first_line_of(["hashdeep", "-V"])),
        ("compress", first_line_of(["compress", "-V"])),
        ("Rounds", str(rounds)),
    ]
    return "\n".join(f"- {name}: {value}" for name, value in rows)
