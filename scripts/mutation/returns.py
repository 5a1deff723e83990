"""Changes of returned values."""

import re

from clang.cindex import CursorKind as Kind
from clang.cindex import TypeKind

from place import flat
from walk import INTEGERS, Walk


class Returns(Walk):
    def at_return_stmt(self, cursor):
        if self.ignored:
            return
        value = next(cursor.get_children(), None)
        if value is None or (self.result is not None and self.result.kind == TypeKind.LVALUEREFERENCE):
            return
        kind = (self.result or value.type).get_canonical().kind
        if self.is_literal(value) or self.is_empty(value):
            return
        if kind == TypeKind.BOOL:
            self.condition(value)
        elif kind in INTEGERS:
            self.returned(value, "number({first}, 3, ", ["+ 1", "- 1", "0"])
        elif kind == TypeKind.ENUM:
            self.returned(value, "enumerator({first}, ", ["0"], ", 0")
        elif kind == TypeKind.POINTER:
            self.returned(value, "pointer({first}, ", ["null"])
        elif kind in (TypeKind.RECORD, TypeKind.ELABORATED, TypeKind.UNEXPOSED):
            self.empty_return(cursor, value)

    def is_empty(self, value) -> bool:
        """Where a returned {} would be the same."""
        text = self.text_of(value)
        inner = self.inner(value)
        made = inner.referenced if inner.kind == Kind.CALL_EXPR else None
        return (re.fullmatch(rb"\{\s*\}|std::nullopt", text) is not None
                or (made is not None and made.kind == Kind.CONSTRUCTOR and text.endswith(b"()")))

    def returned(self, value, call: str, changes: list[str], last: str = ""):
        self.add_expression(value, [f"returned value -> {change}" for change in changes],
                            "::Mutation::" + call + "{text}" + last + ")")

    def empty_return(self, statement, value):
        text = self.text_of(value)
        begin, end, close = self.begin(value), self.end(value), self.end(statement) + 1
        if self.source[close - 1 : close] != b";":
            return
        evaluated = not text.startswith(b"{")
        self.add(self.begin(statement), close, ["returned value -> {}"],
                 lambda first, text: b"{if (::Mutation::on(%d)) {%sreturn {};} return %s;}" % (
                     first, b"static_cast<void>(%s); " % flat(text(begin, end)) if evaluated else b"",
                     text(begin, end)))
