"""Finds the places of a C++ file at which a small change makes a mistake that compiles.

The places come from the syntax tree, by libclang, so that a `<` of a template, a `+` of two texts
or a number in a comment is never taken for one. A change that does not compile all the same does no
harm: it is found out when it is built, and does not count.
"""
import math
import re
from dataclasses import dataclass
from pathlib import Path

from clang.cindex import Cursor, CursorKind, Index, TranslationUnit, TypeKind

COMPARISONS = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
               "==": ("!=",), "!=": ("==",)}
LOGICAL = {"&&": ("||",), "||": ("&&",)}
ARITHMETIC = {"+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",), "%": ("*",), "<<": (">>",),
              ">>": ("<<",), "&": ("|",), "|": ("&",)}
ASSIGNMENTS = {"+=": ("-=",), "-=": ("+=",)}
UNARY = {"++": "--", "--": "++", "!": "", "-": ""}

FUNCTIONS = {CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.FUNCTION_TEMPLATE}
LOOPS = {CursorKind.FOR_STMT, CursorKind.WHILE_STMT, CursorKind.CXX_FOR_RANGE_STMT}
WITH_CONDITION = {CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.CONDITIONAL_OPERATOR}
REFERENCES = {TypeKind.LVALUEREFERENCE, TypeKind.RVALUEREFERENCE}
ALREADY_EMPTY = {"{}", "0", '""', "nullptr", "std::nullopt", "std::string_view()"}


@dataclass(frozen=True, order=True)
class Mutation:
    """One small change of one file, in bytes from the file's beginning."""
    file: str
    line: int
    start: int
    end: int
    replacement: str
    change: str

    def __str__(self) -> str:
        return f"{self.file}:{self.line}: {self.change}"

    def apply(self, text: bytes) -> bytes:
        """The text of the file with the change made."""
        return text[:self.start] + self.replacement.encode() + text[self.end:]


class MutationFinder:
    """Collects the mutations of one file while it goes through the file's syntax tree."""

    def __init__(self, root: Path, file: str):
        self.file = file
        self.text = (root / file).read_bytes()
        self.found: set[Mutation] = set()
        unit = Index.create().parse(str(root / file),
                                    args=["-x", "c++", "-std=c++20", f"-I{root / 'src'}"])
        require_no_error(unit)
        for cursor in unit.cursor.get_children():
            if cursor.location.file is not None and cursor.location.file.name == str(root / file):
                self.visit(cursor, None)

    def visit(self, cursor: Cursor, function: Cursor | None) -> None:
        """Looks at one node and all below it; `function` is the one that a return leaves."""
        if cursor.kind in FUNCTIONS:
            function = cursor
        elif cursor.kind == CursorKind.LAMBDA_EXPR:
            function = None
        self.change_operator(cursor)
        self.change_literal(cursor)
        self.negate_condition(cursor)
        for statement in statements_of(cursor):
            self.drop(statement)
        if cursor.kind == CursorKind.RETURN_STMT:
            self.change_return(cursor, function)
        for child in cursor.get_children():
            self.visit(child, function)

    def add(self, start: int, end: int, replacement: str, change: str) -> None:
        """Notes the change of the bytes from `start` to `end`, said in words."""
        line = self.text.count(b"\n", 0, start) + 1
        self.found.add(Mutation(self.file, line, start, end, replacement, change))

    def source(self, cursor: Cursor) -> str:
        """The text of a node on one line."""
        text = self.text[cursor.extent.start.offset:cursor.extent.end.offset].decode()
        return " ".join(text.split())

    def change_operator(self, cursor: Cursor) -> None:
        """Turns a comparison, swaps "and" and "or", plus and minus and their like."""
        if cursor.kind == CursorKind.UNARY_OPERATOR:
            self.change_unary(cursor)
            return
        children = sorted(cursor.get_children(), key=offset_of)
        if not 2 <= len(children) <= 3:
            return
        start, end = children[0].extent.end.offset, children[-1].extent.start.offset
        operator = self.text[start:end].decode().strip()
        for other in replacements_of(cursor, operator):
            place = self.text.index(operator.encode(), start)
            self.add(place, place + len(operator), other, f"`{operator}` becomes `{other}`")

    def change_unary(self, cursor: Cursor) -> None:
        """Counts the other way, or leaves out a negation or a sign."""
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        text = self.source(cursor)
        for operator, other in UNARY.items():
            change = f"`{operator}` becomes `{other}`" if other else f"`{operator}` is left out"
            if text.startswith(operator):
                self.add(start, start + len(operator), other, change)
                return
            if text.endswith(operator):
                self.add(end - len(operator), end, other, change)
                return

    def change_literal(self, cursor: Cursor) -> None:
        """Moves a constant by one, or turns `true` and `false`."""
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        text = self.source(cursor)
        other = other_literal(cursor.kind, text)
        if other is not None:
            self.add(start, end, other, f"`{text}` becomes `{other}`")

    def negate_condition(self, cursor: Cursor) -> None:
        """Asks for the opposite, where no turned operator does so already."""
        if cursor.kind not in WITH_CONDITION:
            return
        condition = next(cursor.get_children())
        if condition.kind.is_expression() and not self.has_operator(condition):
            self.negate(condition)

    def has_operator(self, condition: Cursor) -> bool:
        """Whether an expression has a comparison, a negation, an "and" or an "or" to change."""
        text = self.source(condition).replace("->", ".")
        return re.search(r"[!=<>]=|[!<>]|&&|\|\|", text) is not None

    def negate(self, cursor: Cursor) -> None:
        """Turns the truth of an expression."""
        text = self.source(cursor)
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        self.add(start, end, f"!({text})", f"`{text}` is negated")

    def drop(self, statement: Cursor) -> None:
        """Leaves a statement out; the semicolon after it stays as an empty one."""
        self.add(statement.extent.start.offset, statement.extent.end.offset, "",
                 f"`{shortened(self.source(statement))}` is left out")

    def change_return(self, statement: Cursor, function: Cursor | None) -> None:
        """Returns the opposite or nothing in the place of a value."""
        value = next(statement.get_children(), None)
        if value is None or function is None or function.result_type.kind in REFERENCES:
            return
        text = self.source(value)
        if function.result_type.kind == TypeKind.BOOL:
            if not self.has_operator(value) and text not in ("true", "false"):
                self.negate(value)
        elif text not in ALREADY_EMPTY:
            self.add(value.extent.start.offset, value.extent.end.offset, "{}",
                     f"`{shortened(self.source(statement))}` returns nothing")


def offset_of(cursor: Cursor) -> int:
    """Where a node begins."""
    return int(cursor.extent.start.offset)


def require_no_error(unit: TranslationUnit) -> None:
    """A tree with holes would hide places."""
    for diagnostic in unit.diagnostics:
        if diagnostic.severity >= diagnostic.Error:
            raise RuntimeError(str(diagnostic))


def replacements_of(cursor: Cursor, operator: str) -> tuple[str, ...]:
    """What may stand for a binary operator; none where the node is no operation."""
    if cursor.kind == CursorKind.BINARY_OPERATOR:
        return (COMPARISONS | LOGICAL | ARITHMETIC).get(operator, ())
    if cursor.kind == CursorKind.COMPOUND_ASSIGNMENT_OPERATOR:
        return ASSIGNMENTS.get(operator, ())
    if cursor.kind in (CursorKind.CALL_EXPR, CursorKind.UNEXPOSED_EXPR):
        if "string" in cursor.type.get_canonical().spelling:
            return ()
        return (COMPARISONS | ASSIGNMENTS).get(operator, ())
    return ()


def other_literal(kind: CursorKind, text: str) -> str | None:
    """The literal next to one; none where `text` is no literal of that kind."""
    if kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
        return {"true": "false", "false": "true"}.get(text)
    if kind == CursorKind.INTEGER_LITERAL:
        if match := re.fullmatch(r"(0[xX][0-9a-fA-F]+|\d+)([uUlLzZ]*)", text):
            return f"{int(match[1], 0) + 1}{match[2]}"
    if kind == CursorKind.FLOATING_LITERAL and re.fullmatch(r"[\d.]+", text):
        number = float(text)
        return repr(max(number + 1, math.nextafter(number, math.inf)))
    # Neither the next of a character nor it itself may need an escape.
    if kind == CursorKind.CHARACTER_LITERAL and re.fullmatch(r"'[!-%(-Z\]-}]'", text):
        return f"'{chr(ord(text[1]) + 1)}'"
    return None


def statements_of(cursor: Cursor) -> list[Cursor]:
    """The statements directly below a node that can be left out one by one."""
    children = list(cursor.get_children())
    if cursor.kind == CursorKind.IF_STMT:
        children = children[1:]
    elif cursor.kind in LOOPS or cursor.kind in (CursorKind.CASE_STMT, CursorKind.DEFAULT_STMT):
        children = children[-1:]
    elif cursor.kind != CursorKind.COMPOUND_STMT:
        children = []
    return [child for child in children if is_droppable(child)]


def is_droppable(statement: Cursor) -> bool:
    """Whether the code around stays whole without a statement: not without a declaration."""
    if statement.kind in (CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT):
        return True
    if statement.kind == CursorKind.RETURN_STMT:
        return not list(statement.get_children())
    return bool(statement.kind.is_expression())


def shortened(text: str) -> str:
    """A text of one line that leaves room for the rest of a report's line."""
    return text if len(text) <= 60 else text[:57] + "..."


def mutations_of(root: Path, file: str) -> list[Mutation]:
    """All mutations of a file below `root`, in the order of the text."""
    return sorted(MutationFinder(root, file).found)
