"""Finds the conditions of a C++ source and lets each of them pass through a function."""

from __future__ import annotations

from dataclasses import dataclass
from pathlib import Path
from typing import Iterator, List, Optional, Tuple

from clang.cindex import Cursor, CursorKind, Index, TranslationUnit

INVERT, TRUE, FALSE = "invert", "true", "false"


@dataclass(frozen=True)
class Condition:
    """A condition by its place in the source, from the first byte to the one past the last."""

    begin: int
    end: int
    line: int
    text: str
    is_loop: bool

    @property
    def changes(self) -> Tuple[str, ...]:
        """What can become of it. A loop that is never left would show nothing but a timeout."""
        return (FALSE,) if self.is_loop else (INVERT, TRUE, FALSE)


def parse(source: Path, arguments: List[str]) -> TranslationUnit:
    unit = Index.create().parse(str(source), args=arguments)
    errors = [str(problem) for problem in unit.diagnostics if problem.severity >= 3]
    if errors:
        raise SystemExit(f"{source} cannot be parsed:\n" + "\n".join(errors))
    return unit


def conditions_of(source: Path, arguments: List[str]) -> List[Condition]:
    """The conditions of `source`, in the order in which they begin; the outer ones first."""
    text = source.read_bytes()
    found = set()
    for cursor in _own_cursors(parse(source, arguments).cursor, source):
        for condition, is_loop in _conditions_at(cursor, text):
            begin, end = condition.extent.start, condition.extent.end
            if begin.file and begin.file.name == str(source) and begin.offset < end.offset:
                shown = " ".join(text[begin.offset : end.offset].decode().split())
                found.add(Condition(begin.offset, end.offset, begin.line, shown, is_loop))
    return sorted(found, key=lambda condition: (condition.begin, -condition.end))


def instrumented(source: Path, conditions: List[Condition], first_number: int) -> bytes:
    """The source with its conditions numbered from `first_number`."""
    text = source.read_bytes()
    insertions = []
    for number, condition in enumerate(conditions, first_number):
        opening = f"::sealkeeper::mutation::Decide({number}, static_cast<bool>("
        # At one place, what is around comes before what is inside at the beginning, and after it at the end.
        insertions.append((condition.begin, 1, -condition.end, opening.encode()))
        insertions.append((condition.end, 0, -condition.begin, b"))"))
    insertions.sort(key=lambda insertion: insertion[:3])
    parts, position = [], 0
    for offset, _, _, inserted in insertions:
        parts += [text[position:offset], inserted]
        position = offset
    return b"".join(parts + [text[position:]])


def _own_cursors(root: Cursor, source: Path) -> Iterator[Cursor]:
    for child in root.get_children():
        place = child.location.file
        if place is not None and place.name == str(source):
            yield child
            yield from child.walk_preorder()


def _conditions_at(cursor: Cursor, text: bytes) -> Iterator[Tuple[Cursor, bool]]:
    children = list(cursor.get_children())
    if cursor.kind == CursorKind.IF_STMT:
        condition = _before_body(cursor, children)
        if condition is not None and not _begins_with(cursor, text, b"if constexpr"):
            yield condition, False
    elif cursor.kind == CursorKind.WHILE_STMT:
        condition = _before_body(cursor, children)
        if condition is not None:
            yield condition, True
    elif cursor.kind == CursorKind.FOR_STMT:
        # The one of its parts that stands between the two semicolons.
        for child in children[:-1]:
            if _is_second_part(cursor, child, text):
                yield child, True
    elif cursor.kind == CursorKind.CONDITIONAL_OPERATOR:
        yield children[0], False
    elif cursor.kind == CursorKind.BINARY_OPERATOR and len(children) == 2:
        between = text[children[0].extent.end.offset : children[1].extent.start.offset].strip(b"() \n\t")
        if between in (b"&&", b"||"):
            yield children[0], False
            yield children[1], False


def _before_body(cursor: Cursor, children: List[Cursor]) -> Optional[Cursor]:
    """The condition, which stands right before the statement in braces; none where it declares something."""
    for previous, child in zip(children, children[1:]):
        if child.kind == CursorKind.COMPOUND_STMT:
            declares = any(sibling.kind == CursorKind.VAR_DECL for sibling in children[: children.index(child)])
            return None if declares else previous
    return None


def _begins_with(cursor: Cursor, text: bytes, words: bytes) -> bool:
    begin = cursor.extent.start.offset
    return text[begin : begin + len(words)] == words


def _is_second_part(cursor: Cursor, child: Cursor, text: bytes) -> bool:
    before = text[cursor.extent.start.offset : child.extent.start.offset]
    after = text[child.extent.end.offset :].lstrip()
    return before.count(b";") == 1 and after.startswith(b";") and child.kind != CursorKind.DECL_STMT
