"""Walks through the syntax tree of a source and answers questions about its cursors."""

import re

from clang.cindex import CursorKind as Kind
from clang.cindex import TypeKind

from place import Place

FUNCTIONS = (Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONVERSION_FUNCTION, Kind.FUNCTION_TEMPLATE, Kind.CONSTRUCTOR,
             Kind.DESTRUCTOR)
CONSTANT = (Kind.STATIC_ASSERT, Kind.ENUM_DECL, Kind.PARM_DECL, Kind.TYPE_ALIAS_DECL, Kind.TYPEDEF_DECL)
INTEGERS = (TypeKind.INT, TypeKind.UINT, TypeKind.SHORT, TypeKind.USHORT, TypeKind.LONG, TypeKind.ULONG,
            TypeKind.LONGLONG, TypeKind.ULONGLONG, TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.UCHAR, TypeKind.WCHAR,
            TypeKind.CHAR16, TypeKind.CHAR32)


class Walk:
    """Walks through one file. A derived class has a method `at_…` for each kind of cursor that it changes. The method may
    return children that are not visited."""

    def __init__(self, source: bytes, path: str):
        self.source = source
        self.path = path
        self.places: list[Place] = []
        self.left_out = 0  # changes of constants, whose values the compiler needs
        self.constant = False
        self.result = None  # the type that the enclosing function returns
        self.ignored = False  # nobody looks at what the enclosing function returns
        self.seen: set = set()

    def find(self, unit) -> "Walk":
        for cursor in unit.cursor.get_children():
            if cursor.location.file is not None and cursor.location.file.name == self.path:
                self.visit(cursor)
        return self

    def visit(self, cursor):
        before = (self.constant, self.result, self.ignored)
        if cursor.kind in CONSTANT:
            self.constant = True
        if cursor.kind in FUNCTIONS:
            self.result = cursor.result_type
        if cursor.kind == Kind.LAMBDA_EXPR:
            self.result = None
        if cursor.kind == Kind.CALL_EXPR and cursor.spelling == "ignoreResult":
            self.ignored = True
        look = getattr(self, "at_" + cursor.kind.name.lower(), None)
        skipped = look(cursor) if look else None
        constant = self.constant
        for child in cursor.get_children():
            if skipped is None or child not in skipped:
                self.constant = constant or self.is_constant_part(cursor, child)
                self.visit(child)
        self.constant, self.result, self.ignored = before

    def is_constant_part(self, cursor, child) -> bool:
        """Whether the child is an argument of a variable's type, or its value before the program runs."""
        if cursor.kind not in (Kind.VAR_DECL, Kind.FIELD_DECL):
            return False
        name = cursor.location.offset
        plain = cursor.type.get_canonical().kind in INTEGERS + (TypeKind.BOOL, TypeKind.ENUM)
        literal = child.kind.is_expression() and self.is_literal(child)
        lasting = cursor.semantic_parent.kind not in FUNCTIONS or cursor.type.is_const_qualified()
        return (b"constexpr" in self.source[self.begin(cursor) : name] or self.begin(child) < name
                or (cursor.kind == Kind.VAR_DECL and plain and literal and lasting))

    def begin(self, cursor) -> int:
        return cursor.extent.start.offset

    def end(self, cursor) -> int:
        return cursor.extent.end.offset

    def text_of(self, cursor) -> bytes:
        return self.source[self.begin(cursor) : self.end(cursor)]

    def add(self, begin: int, end: int, changes: list[str], write, parts=()):
        key = (begin, end, tuple(changes))
        if key in self.seen or begin >= end:
            return
        self.seen.add(key)
        if self.constant:
            self.left_out += len(changes)
            return
        self.places.append(Place(begin, end, changes, write, parts=list(parts)))

    def add_expression(self, cursor, changes: list[str], call: str):
        """`call` is the selection's function, with {first} for the number and {text} for the expression."""
        begin, end = self.begin(cursor), self.end(cursor)
        before, after = call.split("{text}")
        self.add(begin, end, changes,
                 lambda first, text: before.format(first=first).encode() + text(begin, end) + after.encode())

    # Questions that the changes ask

    def inner(self, cursor):
        while cursor.kind in (Kind.UNEXPOSED_EXPR, Kind.PAREN_EXPR):
            children = list(cursor.get_children())
            if len(children) != 1:
                break
            cursor = children[0]
        return cursor

    def is_literal(self, value) -> bool:
        inner = self.inner(value)
        target = inner.referenced if inner.kind == Kind.DECL_REF_EXPR else None
        return (inner.kind in (Kind.INTEGER_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR, Kind.CXX_NULL_PTR_LITERAL_EXPR)
                or (target is not None and target.kind == Kind.ENUM_CONSTANT_DECL))

    def operator_between(self, left, right) -> bytes:
        between = self.source[self.end(left) : self.begin(right)]
        return re.sub(rb"//[^\n]*", b"", between).strip()

    def line_ends(self, begin: int, end: int) -> bytes:
        return b"\n" * self.source.count(b"\n", begin, end)

    def makes_room_only(self, cursor) -> bool:
        """Whether the call only reserves memory, on which no result depends."""
        return cursor.kind == Kind.CALL_EXPR and cursor.spelling == "reserve"
