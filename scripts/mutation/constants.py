"""Changes of numbers, truth values and enumerators."""

import re

from clang.cindex import CursorKind as Kind

from walk import FUNCTIONS, INTEGERS, Walk

INTEGER = re.compile(rb"(0[xX][0-9a-fA-F']+|[0-9][0-9']*)[uUlLzZ]*$")


class Constants(Walk):
    def at_integer_literal(self, cursor):
        match = INTEGER.match(self.text_of(cursor))
        if match:
            small = int(match.group(1).replace(b"'", b""), 0) < 2
            self.number(cursor, 2 if small else 3)

    def at_character_literal(self, cursor):
        if self.text_of(cursor).endswith(b"'"):
            self.number(cursor, 1)

    def number(self, cursor, count: int):
        text = self.text_of(cursor).decode()
        changes = [f"{text} -> {text} + 1", f"{text} -> {text} - 1", f"{text} -> 0"]
        self.add_expression(cursor, changes[:count], f"::Mutation::number({{first}}, {count}, {{text}})")

    def at_cxx_bool_literal_expr(self, cursor):
        text = self.text_of(cursor)
        if text in (b"true", b"false"):
            other = "false" if text == b"true" else "true"
            self.add_expression(cursor, [f"{text.decode()} -> {other}"],
                                f"(::Mutation::on({{first}}) ? {other} : {{text}})")

    def at_decl_ref_expr(self, cursor):
        target = cursor.referenced
        if target is None or not re.fullmatch(rb"[\w:\s]+", self.text_of(cursor)):
            return
        if target.kind == Kind.ENUM_CONSTANT_DECL:
            self.enumerator(cursor, target)
        elif (target.kind == Kind.VAR_DECL and target.type.is_const_qualified()
              and target.type.get_canonical().kind in INTEGERS
              and target.semantic_parent.kind not in FUNCTIONS):
            zero = [token.spelling for token in target.get_tokens()][-1:] == ["0"]
            self.number(cursor, 2 if zero else 3)

    def enumerator(self, cursor, target):
        others = [each for each in target.semantic_parent.get_children()
                  if each.kind == Kind.ENUM_CONSTANT_DECL and each.enum_value != target.enum_value]
        if not others:
            return
        other = others[0]  # the first is mostly the success or the least
        self.add_expression(cursor, [f"{self.text_of(cursor).decode()} -> {other.spelling}"],
                            f"::Mutation::enumerator({{first}}, {{text}}, {other.enum_value})")

