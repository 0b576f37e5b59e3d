"""Runs of the sealkeeper-inspect commands for credentials and trust."""

from __future__ import annotations

import json
import os
import subprocess
from pathlib import Path
from typing import Any, Dict, List, Tuple

INSPECT = Path(os.environ["SEALKEEPER_INSPECT"]).resolve()
ROOT = Path(__file__).resolve().parents[2]
TRUST = ROOT / "trust/development"
ISSUE = ROOT / "tools/issue-credentials.sh"


def inspect(*arguments: object, program: Path = INSPECT, **process: object) -> Tuple[int, str, str]:
    """Exit status, standard output and standard error of a run; `process` is passed to subprocess."""
    run = subprocess.run(
        [str(program), *map(str, arguments)],
        stdin=subprocess.DEVNULL,
        capture_output=True,
        timeout=60,
        check=False,
        **process,
    )
    return run.returncode, run.stdout.decode(), run.stderr.decode()


def inspect_json(*arguments: object, **options: object) -> Tuple[int, Dict[str, Any]]:
    """Exit status and report of a run with --json."""
    status, output, errors = inspect(*arguments, "--json", **options)
    if errors:
        raise AssertionError(errors)
    return status, json.loads(output)


def names(report: Dict[str, Any]) -> List[str]:
    """The names of the findings in a report."""
    return [finding["name"] for finding in report["findings"]]


def openssl(*arguments: object) -> str:
    """The output of openssl."""
    return subprocess.run(
        ["openssl", *map(str, arguments)], check=True, capture_output=True, text=True
    ).stdout.strip()
