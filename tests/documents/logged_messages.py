"""The messages of the program, read from the calls of `Log` in its sources.

A call that cannot be read is an error unless it is skipped, so that no message is missed silently.
"""

from __future__ import annotations

import functools
import re
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SOURCES = ROOT / "src"
DOCUMENTS = ROOT / "docs"
# The folders of sealkeeper itself; the companion logs nothing.
FOLDERS = ("app", "catalogue", "config", "platform", "runtime")
TAGS = {"Error": "Err!", "Warning": "Warn", "Info": "Info", "Verbose": "Verb", "Trace": "Verb"}

LITERAL = r'"(?:[^"\\\n]|\\.)*"'
LITERALS = rf"{LITERAL}(?:\s*{LITERAL})*"
CALL = re.compile(r"(?<![\w:])Log\(")
COMMENT = re.compile(rf"({LITERAL})|//[^\n]*")
TEXT_CONSTANT = re.compile(rf"constexpr\s+(?:const char\*|std::string_view)\s+(k\w+)\s*=\s*({LITERALS})")
NUMBER_CONSTANT = re.compile(r"constexpr\s+[\w:]+\s+(k\w+)\s*=\s*([\d']+);")
CONVERSION = re.compile(r"%[-+ #0]*\d*(?:\.\d+)?(?:hh|h|ll|l|z|j|t)?[a-zA-Z]")
# A function that logs its argument. The possible texts are the sentences in its file.
RELAYED = "%s\n"
SENTENCE = re.compile(r".* .*\.", re.DOTALL)
ESCAPES = {"n": "\n", "r": "\r", "t": "\t", "0": "\0"}


@dataclass(frozen=True)
class Message:
    """A message with its tag. `text` is a printf format, without the final line feed."""

    tag: str
    text: str
    ends_its_line: bool

    def pattern(self) -> "re.Pattern[str]":
        """Matches the message as a page shows it, with an upper-case name for each conversion."""
        parts = [re.escape(part) for part in CONVERSION.split(self.text)]
        return re.compile("[A-Z][A-Z_]*".join(parts))


class UnreadableCall(Exception):
    pass


def text_of(literals: str) -> str:
    """The text of adjacent string literals."""
    bodies = "".join(literal[1:-1] for literal in re.findall(LITERAL, literals))
    return re.sub(r"\\(.)", lambda found: ESCAPES.get(found[1], found[1]), bodies)


def call_at(source: str, begin: int) -> str:
    """The arguments of the call whose first argument begins at `begin`."""
    depth = 1
    for token in re.finditer(rf"{LITERAL}|[()]", source[begin:]):
        depth += {"(": 1, ")": -1}.get(token[0], 0)
        if depth == 0:
            return source[begin : begin + token.start()]
    raise UnreadableCall(source[begin : begin + 80])


def with_numbers(text: str, arguments: str, source: str) -> str:
    """If a message always shows the same number, put it in place of its only conversion."""
    constants = {**shared_numbers(), **dict(NUMBER_CONSTANT.findall(source))}
    shown = [constants[name] for name in re.findall(r"\bk\w+", arguments) if name in constants]
    if len(shown) == 1 and len(CONVERSION.findall(text)) == 1:
        return CONVERSION.sub(shown[0].replace("'", ""), text)
    return text


@functools.lru_cache(maxsize=None)
def shared_numbers() -> "dict[str, str]":
    """The numeric constants in headers, which the sources share."""
    return {name: number for text in headers() for name, number in NUMBER_CONSTANT.findall(text)}


def relayed_texts(source: str, calls: "list[str]") -> "list[str]":
    for call in calls:
        source = source.replace(call, "")
    texts = [text_of(literals) for literals in re.findall(LITERALS, source)]
    sentences = [text + "\n" for text in texts if SENTENCE.fullmatch(text)]
    if not sentences:
        raise UnreadableCall("a text is logged that stands in another file")
    return sentences


def texts_of_call(call: str, calls: "list[str]", source: str, constants: "dict[str, str]") -> "list[str]":
    arguments = call.split(",", 1)[1].strip()
    literals = re.match(LITERALS, arguments)
    name = re.match(r"k\w+", arguments)
    if literals and arguments[literals.end() :].lstrip()[:1] in ("", ","):
        text = text_of(literals[0])
        if text == RELAYED:
            return relayed_texts(source, calls)
        return [with_numbers(text, arguments[literals.end() :], source)]
    if name and name[0] in constants:
        return [constants[name[0]]]
    raise UnreadableCall(call)


def messages_in(
    source: str, constants: "dict[str, str]", levels: "tuple[str, ...]", skip_unreadable: bool = False
) -> "set[Message]":
    calls = [call_at(source, found.end()) for found in CALL.finditer(source)]
    messages = set()
    for call in calls:
        level = re.match(r"\s*LogLevel::(\w+)\s*,", call)
        if not level:
            if re.match(r"LogLevel level\b", call):
                continue
            raise UnreadableCall(call)
        if level[1] not in levels:
            continue
        try:
            texts = texts_of_call(call, calls, source, constants)
        except UnreadableCall:
            if not skip_unreadable:
                raise
            continue
        messages |= {Message(TAGS[level[1]], text.removesuffix("\n"), text.endswith("\n")) for text in texts}
    return messages


def files_with(*suffixes: str) -> "list[str]":
    paths = [path for folder in FOLDERS for path in sorted((SOURCES / folder).rglob("*"))]
    texts = [path.read_text() for path in paths if path.suffix in suffixes]
    return [COMMENT.sub(lambda found: found[1] or "", text) for text in texts]


@functools.lru_cache(maxsize=None)
def sources() -> "list[str]":
    return files_with(".cpp", ".h")


def headers() -> "list[str]":
    return files_with(".h")


def logged_messages(*levels: str, skip_unreadable: bool = False) -> "set[Message]":
    """The messages at these levels, named as in `LogLevel`."""
    texts = sources()
    constants = {name: text_of(literals) for text in texts for name, literals in TEXT_CONSTANT.findall(text)}
    return {message for text in texts for message in messages_in(text, constants, levels, skip_unreadable)}
