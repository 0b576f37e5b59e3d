"""Every truncation of a signed runtime.conf, and a bit flip in each of its bytes.

Each truncation is verified. In every byte one bit is flipped, a different one from byte to byte, and each change is
verified. This is done twice: in the stored file, where a change spreads to all bytes before it, and in the bytes before
scrambling. List is run on all changes around the settings at the end, and at every sixteenth offset before them. The
exact console text and the exit status are compared for both actions.
"""

from __future__ import annotations

import unittest
from typing import Optional

import catalogue_format
import e2e_console as console
import e2e_read_back as texts
import runtime_conf_format
from e2e_support import GOOD
from many_runs import LISTED_EVERY, Case, ManyRunsTest, Outcome, single_changes, truncations

VALID = 0
INVALID = 22


def signed_conf() -> bytes:
    """A runtime.conf with a setting in every field."""
    return runtime_conf_format.sign(runtime_conf_format.build(2, b"Reporter", 3), GOOD.key)


def after_empty_catalogue(code: int):
    """The expected outcome of verify after a catalogue without entries."""

    def outcome(folder: str) -> Outcome:
        text = texts.reading("base.bin") + texts.added("base.bin", 0) + texts.verdicts([])
        text += texts.runtime_begun(folder) + console.trusted()
        text += texts.runtime_valid(folder) if code == VALID else texts.runtime_invalid(folder)
        return Outcome(code, text)

    return outcome


def listing(content: bytes) -> Outcome:
    """The expected output of list, from the independent reader."""
    if len(content) < catalogue_format.HEADER_SIZE:
        return Outcome(9, "")
    if len(content) < runtime_conf_format.FILE_SIZE:
        return Outcome(9, texts.too_small(len(content)))
    if runtime_conf_format.unscramble(content)[:4] != runtime_conf_format.MAGIC:
        return Outcome(9, texts.UNSUPPORTED_FORMAT)
    conf = runtime_conf_format.parse(content, strict=False)
    if conf.version != 1:
        return Outcome(10, texts.settings_version(conf.version) + texts.UNSUPPORTED_VERSION)
    name = console.to_text(conf.crash_reporter_name) or "N/A"
    text = texts.settings_until_solution(conf.max_active_instances, name)
    if conf.anti_tamper_solution < len(runtime_conf_format.ANTI_TAMPER_SOLUTIONS):
        solution = runtime_conf_format.ANTI_TAMPER_SOLUTIONS[conf.anti_tamper_solution]
        return Outcome(0, text + texts.solution_line(solution))
    unknown = console.err(f"Called with invalid value: {conf.anti_tamper_solution}.\n")
    return Outcome(0, text + unknown + texts.solution_line("N/A"))


def sampled_listing(offset: int, content: bytes) -> Optional[Outcome]:
    """The expected output of list for a file cut or changed at that offset; None if it is not run."""
    return None if 4 <= offset < 1028 and offset % LISTED_EVERY != 0 else listing(content)


class RuntimeConfBytes(ManyRunsTest):
    """runtime.conf beside a catalogue without entries."""

    def assert_confs(self, cases) -> None:
        empty = catalogue_format.sign(catalogue_format.build([]), GOOD.key)
        self.assert_cases("runtime.conf", cases, [("base.bin", empty)])

    def test_as_it_was_signed(self) -> None:
        settings = Outcome(0, texts.listed_settings(2, "Reporter", "Denuvo"))
        self.assert_confs([Case("unchanged", signed_conf(), settings, after_empty_catalogue(VALID))])

    def test_every_truncation(self) -> None:
        invalid = after_empty_catalogue(INVALID)
        cuts = truncations(signed_conf())
        self.assert_confs(Case(name, cut, sampled_listing(len(cut), cut), invalid) for name, cut in cuts)

    def test_every_byte_changed(self) -> None:
        invalid = after_empty_catalogue(INVALID)
        cases = []
        for name, offset, changed in single_changes(signed_conf()):
            self.assertEqual(listing(changed), Outcome(9, texts.UNSUPPORTED_FORMAT))
            cases.append(Case(name, changed, sampled_listing(offset, changed), invalid))
        self.assert_confs(cases)

    def test_every_byte_changed_before_scrambling(self) -> None:
        signature_end = runtime_conf_format.SIGNATURE_AREA_OFFSET + 256
        unsigned = range(signature_end, runtime_conf_format.SIGNATURE_LENGTH_OFFSET)
        cases = []
        for name, offset, changed in single_changes(runtime_conf_format.unscramble(signed_conf())):
            content = runtime_conf_format.scramble(changed)
            verified = after_empty_catalogue(VALID if offset in unsigned else INVALID)
            cases.append(Case(f"before scrambling, {name}", content, sampled_listing(offset, content), verified))
        self.assert_confs(cases)


if __name__ == "__main__":
    unittest.main()
