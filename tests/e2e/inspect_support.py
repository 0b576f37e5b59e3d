"""Runs of sealkeeper-inspect on a game."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Dict, List, Optional

import e2e_console as console
from e2e_support import TIMEOUT_SECONDS, EndToEndTest, PathOrText

INSPECT = Path(os.environ["SEALKEEPER_INSPECT"]).resolve()

GOOD = 0
WARNING = 1
ERROR = 2
USAGE = 64


@dataclass(frozen=True)
class Inspection:
    """One finished run: exit status, standard output, standard error."""

    status: int
    output: str
    errors: str

    def json(self) -> Dict[str, Any]:
        """The report, which must be a single JSON document."""
        return json.loads(self.output)


class InspectTest(EndToEndTest):
    """Base of the tests of sealkeeper-inspect."""

    def setUp(self) -> None:
        super().setUp()
        self.companion = INSPECT

    def become_unprivileged(self) -> None:
        """For both programs, each copied to where that user can run it."""
        super().become_unprivileged()
        self.companion = Path(shutil.copy(INSPECT, self.directory / "sealkeeper-inspect"))
        self.companion.chmod(0o755)

    def inspect(self, *arguments: PathOrText, environment: Optional[Dict[str, str]] = None) -> Inspection:
        """Run the program. It must end by itself."""
        finished = subprocess.run(
            [console.to_bytes(str(argument)) for argument in [self.companion, *arguments]],
            cwd=self.directory,
            env=dict(os.environ, **environment) if environment else None,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=TIMEOUT_SECONDS,
            check=False,
            **self._identity(),
        )
        self.assertGreaterEqual(finished.returncode, 0, "no signal ends it")
        return Inspection(finished.returncode, console.to_text(finished.stdout), console.to_text(finished.stderr))

    def assert_json_failure(self, run: Inspection, subject: Dict[str, Any], status: int = ERROR) -> None:
        """What keeps the report from being made stands in JSON as on standard error, after what was to be looked at."""
        self.assertRegex(run.errors, r"\Asealkeeper-inspect: .+\n\Z")
        failure = run.errors[len("sealkeeper-inspect: "):-1]
        self.assertEqual((run.status, run.json()), (status, {**subject, "failure": failure, "status": status}))

    def warnings_of(self, report: Dict[str, Any]) -> List[str]:
        """The messages of a report's warnings."""
        return [warning["message"] for warning in report["warnings"]]
