"""Changes of conditions."""

import re

from clang.cindex import CursorKind as Kind

from walk import Walk


class Conditions(Walk):
    def at_if_stmt(self, cursor):
        children = list(cursor.get_children())
        condition = next((child for child in children if child.kind.is_expression()), None)
        if condition is None:
            return None
        if re.match(rb"if\s+constexpr", self.text_of(cursor)):
            self.left_out += 3
            self.bodies([child for child in children if self.begin(child) > self.end(condition)])
            return [condition]
        declared = [child for child in children if not child.kind.is_expression()
                    and self.begin(child) <= self.begin(condition) and self.end(condition) <= self.end(child)]
        if not declared:
            self.condition(condition)
        self.bodies([child for child in children if self.begin(child) > self.end(condition)])
        return None

    def at_while_stmt(self, cursor):
        *heads, body = cursor.get_children()
        if len(heads) == 1:
            self.condition(heads[0])
        self.bodies([body])

    def at_for_stmt(self, cursor):
        *heads, body = cursor.get_children()
        ends = self.semicolons(self.begin(cursor), self.begin(body))
        if len(ends) == 2:
            for child in heads:
                if child.kind.is_expression() and ends[0] < self.begin(child) and self.end(child) <= ends[1]:
                    self.condition(child)
        self.bodies([body])

    def at_cxx_for_range_stmt(self, cursor):
        self.bodies([list(cursor.get_children())[-1]])

    def at_do_stmt(self, cursor):
        body, condition = cursor.get_children()
        self.condition(condition)
        self.bodies([body])

    def at_conditional_operator(self, cursor):
        self.condition(next(cursor.get_children()))

    def semicolons(self, begin: int, end: int) -> list[int]:
        depth, found = 0, []
        for at in range(begin, end):
            byte = self.source[at : at + 1]
            depth += (byte in b"([{") - (byte in b")]}")
            if byte == b";" and depth == 1:
                found.append(at)
        return found

    def condition(self, cursor):
        count = 2 if self.negates_itself(cursor) else 3
        changes = ["condition -> true", "condition -> false", "condition negated"]
        self.add_expression(cursor, changes[:count], f"::Mutation::condition({{first}}, {count}, {{text}})")

    def negates_itself(self, cursor) -> bool:
        """Whether another change already negates the condition."""
        cursor = self.inner(cursor)
        if cursor.kind == Kind.UNARY_OPERATOR:
            return self.text_of(cursor).startswith(b"!")
        parts = list(cursor.get_children()) if cursor.kind == Kind.BINARY_OPERATOR else []
        if cursor.kind == Kind.CALL_EXPR and cursor.spelling in ("operator==", "operator!="):
            parts = list(cursor.get_arguments())
        return len(parts) == 2 and self.operator_between(*parts) in (b"==", b"!=", b"<", b">", b"<=", b">=")
