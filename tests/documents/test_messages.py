"""docs/MESSAGES.md explains every error and warning that the sources can print, and no others."""

from __future__ import annotations

import re
import unittest
from dataclasses import dataclass

import exit_status
from logged_messages import DOCUMENTS, UnreadableCall, logged_messages, messages_in

PAGE = DOCUMENTS / "MESSAGES.md"
# The start of an explanation.
OUTCOME = re.compile(r"\*\*(?:The run goes on|Exit status( [^*]*|: [^*]*))\.\*\*")
TAGGED = re.compile(r"^\[(\w+!?)\] ")


@dataclass(frozen=True)
class Entry:
    """A message on the page, and the text up to the next one."""

    tag: str
    text: str
    explanation: str


def entries() -> "list[Entry]":
    blocks = re.split(r"\n\n+", PAGE.read_text())
    found = []
    for number, block in enumerate(blocks):
        text = re.sub(r"^    ", "", block, flags=re.MULTILINE)
        tagged = TAGGED.match(text)
        if block.startswith("    ") and tagged:
            found.append(Entry(tagged[1], text[tagged.end() :].rstrip("\n"), blocks[number + 1]))
    return found


class Messages(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.entries = entries()
        cls.logged = logged_messages("Error", "Warning")

    def explanations_of(self, message) -> "list[Entry]":
        return [entry for entry in self.entries if entry.tag == message.tag and message.pattern().fullmatch(entry.text)]

    def test_there_are_many(self) -> None:
        self.assertGreater(len(self.logged), 70)

    def test_each_error_and_warning_is_explained_once(self) -> None:
        for message in sorted(self.logged, key=lambda message: message.text):
            with self.subTest(message=message.text):
                self.assertEqual(1, len(self.explanations_of(message)))

    def test_each_that_is_explained_is_printed(self) -> None:
        printed = self.logged | logged_messages("Info", skip_unreadable=True)
        for entry in self.entries:
            with self.subTest(message=entry.text):
                matching = [one for one in printed if one.tag == entry.tag and one.pattern().fullmatch(entry.text)]
                self.assertEqual(1, len(matching))

    def test_a_missing_line_feed_is_told(self) -> None:
        for message in self.logged:
            for entry in self.explanations_of(message):
                with self.subTest(message=message.text):
                    self.assertEqual(not message.ends_its_line, "no line feed" in entry.explanation.replace("\n", " "))

    def test_each_tells_the_exit_status(self) -> None:
        for entry in self.entries:
            with self.subTest(message=entry.text):
                outcome = OUTCOME.match(entry.explanation.replace("\n", " "))
                self.assertIsNotNone(outcome)
                for status in re.findall(r"\b\d+\b", outcome[1] or ""):
                    self.assertIn(int(status), exit_status.returned())


class ReadingSources(unittest.TestCase):
    """Reading calls of `Log`, including forms that the sources do not use."""

    def texts_of(self, source: str, constants: "dict[str, str]" = {}) -> "set[str]":
        return {message.text for message in messages_in(source, constants, ("Error",))}

    def test_literals_are_joined(self) -> None:
        self.assertEqual({"one two"}, self.texts_of('Log(LogLevel::Error, "one "\n    "two\\n");'))

    def test_constants_are_looked_up(self) -> None:
        self.assertEqual({"one"}, self.texts_of("Log(LogLevel::Error, kText);", {"kText": "one"}))

    def test_other_levels_are_left_out(self) -> None:
        self.assertEqual(set(), self.texts_of('Log(LogLevel::Info, "one");'))

    def test_a_number_that_is_always_the_same_is_shown(self) -> None:
        source = 'constexpr int kMost = 1\'024;\nLog(LogLevel::Error, "%i MB", kMost);'
        self.assertEqual({"1024 MB"}, self.texts_of(source))

    def test_relayed_texts_are_those_of_the_file(self) -> None:
        source = 'void Say(const char* text) { Log(LogLevel::Error, "%s\\n", text); }\nSay("One is too many.");'
        self.assertEqual({"One is too many."}, self.texts_of(source))

    def test_what_cannot_be_read_is_an_error(self) -> None:
        calls = ("Log(LogLevel::Error, kText);", 'Log(LogLevel::Error, isOne ? "one" : "two");', 'Log(level, "one");',
                 'Log(LogLevel::Error, "%s\\n", text);')
        for call in calls:
            with self.subTest(call=call), self.assertRaises(UnreadableCall):
                self.texts_of(call)


if __name__ == "__main__":
    unittest.main()
