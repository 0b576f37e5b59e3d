"""Finds the conditions of a C++ source and passes each of them through a function."""

from __future__ import annotations

import re
from dataclasses import dataclass
from pathlib import Path
from typing import Iterator, List, Optional, Set, Tuple

from clang.cindex import Cursor, CursorKind, Index, TranslationUnit

INVERT, TRUE, FALSE = "invert", "true", "false"
COMMENT = re.compile(rb"//[^\n]*|/\*.*?\*/", re.DOTALL)


@dataclass(frozen=True)
class Condition:
    """A condition and its place in the source: from its first byte to the one past its last."""

    begin: int
    end: int
    line: int
    text: str
    is_loop: bool
    # The variable that the condition declares, if any; its value decides.
    declared: str = ""

    @property
    def changes(self) -> Tuple[str, ...]:
        """The possible changes. A loop that never ends would only show as a timeout."""
        return (FALSE,) if self.is_loop else (INVERT, TRUE, FALSE)


@dataclass(frozen=True)
class Unchanged:
    """A branch that cannot be changed, and why."""

    line: int
    text: str
    reason: str


@dataclass(frozen=True)
class Branches:
    """The branches of one source in the order of their beginnings; outer ones first."""

    conditions: List[Condition]
    unchanged: List[Unchanged]


def parse(source: Path, arguments: List[str]) -> TranslationUnit:
    unit = Index.create().parse(str(source), args=arguments)
    errors = [str(problem) for problem in unit.diagnostics if problem.severity >= 3]
    if errors:
        raise SystemExit(f"{source} cannot be parsed:\n" + "\n".join(errors))
    return unit


def branches_of(source: Path, arguments: List[str]) -> Branches:
    found = _Search(source)
    for cursor in _own_cursors(parse(source, arguments).cursor, source):
        found.look_at(cursor)
    return Branches(
        sorted(found.conditions, key=lambda condition: (condition.begin, -condition.end)),
        sorted(found.unchanged, key=lambda branch: branch.line),
    )


def instrumented(source: Path, conditions: List[Condition], first_number: int) -> bytes:
    """The source with its conditions numbered from `first_number`."""
    text = source.read_bytes()
    insertions = []
    for number, condition in enumerate(conditions, first_number):
        opening = f"::sealkeeper::mutation::Decide({number}, static_cast<bool>("
        if condition.declared:
            # The declaration becomes the init statement, in front of the condition.
            insertions.append((condition.end, 0, -condition.begin, f"; {opening}{condition.declared}))".encode()))
            continue
        # At the same offset, outer conditions open first and close last.
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


class _Search:
    """Collects the branches of one source."""

    def __init__(self, source: Path) -> None:
        self._source = source
        self._text = source.read_bytes()
        self.conditions: Set[Condition] = set()
        self.unchanged: Set[Unchanged] = set()

    def look_at(self, cursor: Cursor) -> None:
        children = list(cursor.get_children())
        if cursor.kind == CursorKind.IF_STMT:
            self._add_if(cursor, children)
        elif cursor.kind == CursorKind.WHILE_STMT:
            if children[0].kind == CursorKind.VAR_DECL:
                self._leave(cursor, "a loop's condition that declares a variable")
            else:
                self._add(children[0], is_loop=True)
        elif cursor.kind == CursorKind.DO_STMT:
            self._add(children[-1], is_loop=True)
        elif cursor.kind == CursorKind.FOR_STMT:
            self._add_for(cursor, children)
        elif cursor.kind == CursorKind.SWITCH_STMT:
            self._leave(cursor, "a switch has no two ways")
        elif cursor.kind == CursorKind.CONDITIONAL_OPERATOR:
            self._add(children[0])
        elif cursor.kind == CursorKind.BINARY_OPERATOR and len(children) == 2 and self._is_logical(children):
            self._add(children[0])
            self._add(children[1])

    def _add_if(self, cursor: Cursor, children: List[Cursor]) -> None:
        if self._text_of(cursor).startswith(b"if constexpr"):
            self._leave(cursor, "decided while compiling")
            return
        # A declared variable comes first wherever it stands. The other parts keep their order.
        declaration = children[0] if children[0].kind == CursorKind.VAR_DECL else None
        parts = children[1:] if declaration else children
        init = parts[0] if self._is_before_semicolon(parts[0]) else None
        condition = parts[1] if init else parts[0]
        if declaration is None:
            self._add(condition, init=init)
        elif init is None:
            self._add(declaration, declared=declaration.spelling)
        else:
            self._leave(cursor, "a condition that declares a variable, after another declaration")

    def _add_for(self, cursor: Cursor, children: List[Cursor]) -> None:
        """The part between the two semicolons."""
        begin = cursor.extent.start.offset
        for child in children[:-1]:
            if self._text[begin : child.extent.start.offset].count(b";") != 1 or not self._is_before_semicolon(child):
                continue
            if child.kind == CursorKind.VAR_DECL:
                self._leave(cursor, "a loop's condition that declares a variable")
            elif child.kind != CursorKind.DECL_STMT:
                self._add(child, is_loop=True)

    def _add(self, cursor: Cursor, is_loop: bool = False, declared: str = "", init: Optional[Cursor] = None) -> None:
        begin, end = cursor.extent.start, cursor.extent.end
        is_written_here = begin.file and begin.file.name == str(self._source) and begin.offset < end.offset
        if not is_written_here:
            self._leave(cursor, "from a macro")
            return
        text = self._shown(init or cursor, cursor)
        self.conditions.add(Condition(begin.offset, end.offset, begin.line, text, is_loop, declared))

    def _leave(self, cursor: Cursor, reason: str) -> None:
        text = self._text_of(cursor).split(b"{")[0].decode()
        self.unchanged.add(Unchanged(cursor.extent.start.line, " ".join(text.split()), reason))

    def _text_of(self, cursor: Cursor) -> bytes:
        return self._text[cursor.extent.start.offset : cursor.extent.end.offset]

    def _shown(self, first: Cursor, last: Cursor) -> str:
        return " ".join(self._text[first.extent.start.offset : last.extent.end.offset].decode().split())

    def _is_before_semicolon(self, cursor: Cursor) -> bool:
        end = cursor.extent.end.offset
        return self._text_of(cursor).endswith(b";") or self._text[end:].lstrip().startswith(b";")

    def _is_logical(self, operands: List[Cursor]) -> bool:
        begin, end = operands[0].extent.end.offset, operands[1].extent.start.offset
        return COMMENT.sub(b" ", self._text[begin:end]).strip(b"() \n\t") in (b"&&", b"||", b"and", b"or")
