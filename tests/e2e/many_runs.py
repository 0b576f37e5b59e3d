"""Many runs on the same game, each with a different version of one file."""

from __future__ import annotations

from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Callable, Iterable, List, NamedTuple, Optional, Tuple

import e2e_console as console
import e2e_read_back as texts
from e2e_support import GOOD, OUTPUT_FOLDER, PRODUCT, STEP, EndToEndTest, Run

WORKERS = 2


class Outcome(NamedTuple):
    """The expected exit status of a run, and its output after the first lines."""

    status: int
    text: str


class Case(NamedTuple):
    """The content of the file, and the expected outcomes."""

    name: str
    content: bytes
    listed: Optional[Outcome]
    """None if the content is only verified."""
    verified: Callable[[str], Outcome]
    """Takes the folder of the signed files; the text follows the line that names the game directory."""


LISTED_EVERY = 16
"""Where a change means nothing to list, only every so many changes are listed."""


def truncations(content: bytes) -> Iterable[Tuple[str, bytes]]:
    """Every proper beginning of the content, with a name for each."""
    return ((f"cut to {size}", content[:size]) for size in range(0, len(content), STEP))


def single_changes(content: bytes) -> Iterable[Tuple[str, int, bytes]]:
    """The content with one bit of each byte flipped in turn: name, offset, content."""
    for offset in range(0, len(content), STEP):
        difference = 1 << offset % 8
        changed = bytearray(content)
        changed[offset] ^= difference
        yield f"byte {offset} ^ {difference:#x}", offset, bytes(changed)


class ManyRunsTest(EndToEndTest):
    """Verifies and lists many versions of one file, two runs at a time, each in a game of its own."""

    def assert_cases(self, file_name: str, cases: Iterable[Case], others: Iterable[Tuple[str, bytes]] = ()) -> None:
        """Verify each case, and list it if it has a listing; `others` are the files beside it."""
        all_cases = list(cases)
        beside = [("base.cer", GOOD.certificate.read_bytes()), *others]
        self.assertNotEqual(all_cases, [])
        with ThreadPoolExecutor(WORKERS) as pool:
            shares = [
                pool.submit(self._run_share, number, file_name, beside, all_cases[number::WORKERS])
                for number in range(min(WORKERS, len(all_cases)))
            ]
        failures = [failure for share in shares for failure in share.result()]
        self.assertEqual(failures[:5], [], f"{len(failures)} runs of {len(all_cases)} cases")

    def _run_share(self, number: int, file_name: str, beside: List[Tuple[str, bytes]], cases: List[Case]) -> List[str]:
        game = self.directory / f"game{number}"
        folder = game / OUTPUT_FOLDER
        folder.mkdir(parents=True)
        for name, content in beside:
            (folder / name).write_bytes(content)
        path = folder / file_name
        failures: List[str] = []
        for case in cases:
            path.write_bytes(case.content)
            if case.listed is not None:
                expected = Outcome(case.listed.status, texts.list_begun(path) + case.listed.text)
                failures += self._differences(f"list: {case.name}", self.run_program("list", path), expected)
            run = self.run_program("-productid", PRODUCT, "verify", game)
            failures += self._differences(f"verify: {case.name}", run, self._verify(game, f"{folder}/", case))
            if path.read_bytes() != case.content:
                failures.append(f"{case.name}: the file was written")
        self.assert_files(file_name, *(name for name, _ in beside), under=folder)
        return failures

    @staticmethod
    def _verify(game: Path, folder: str, case: Case) -> Outcome:
        expected = case.verified(folder)
        return Outcome(expected.status, texts.looking(folder) + texts.changed_folder(game) + expected.text)

    @staticmethod
    def _differences(name: str, run: Run, expected: Outcome) -> List[str]:
        begun = console.opening(run.command_line) + console.parsed_all(run.command_line)
        output = run.output if run.command_line[1] == "list" else texts.without_verify_dots(run.output)
        if (run.status, output) == (expected.status, begun + expected.text):
            return []
        return [f"{name}: status {run.status}, not {expected.status}; {output[len(begun):]!r}, not {expected.text!r}"]
