"""Changes of operators."""

import re

from clang.cindex import CursorKind as Kind
from clang.cindex import TypeKind

from place import flat
from walk import INTEGERS, Walk

OPERATORS = {  # each operator and its replacements
    b"<": ("std::less<>", ("<=", "std::less_equal<>"), (">=", "std::greater_equal<>")),
    b"<=": ("std::less_equal<>", ("<", "std::less<>"), (">", "std::greater<>")),
    b">": ("std::greater<>", (">=", "std::greater_equal<>"), ("<=", "std::less_equal<>")),
    b">=": ("std::greater_equal<>", (">", "std::greater<>"), ("<", "std::less<>")),
    b"==": ("std::equal_to<>", ("!=", "std::not_equal_to<>")),
    b"!=": ("std::not_equal_to<>", ("==", "std::equal_to<>")),
    b"+": ("std::plus<>", ("-", "std::minus<>")),
    b"-": ("std::minus<>", ("+", "std::plus<>")),
    b"*": ("std::multiplies<>", ("/", "std::divides<>")),
    b"/": ("std::divides<>", ("*", "std::multiplies<>")),
    b"%": ("std::modulus<>", ("/", "std::divides<>")),
    b"<<": ("::Mutation::ShiftLeft", (">>", "::Mutation::ShiftRight")),
    b">>": ("::Mutation::ShiftRight", ("<<", "::Mutation::ShiftLeft")),
    b"&": ("std::bit_and<>", ("|", "std::bit_or<>")),
    b"|": ("std::bit_or<>", ("&", "std::bit_and<>")),
    b"^": ("std::bit_xor<>", ("&", "std::bit_and<>")),
}
ORDERED = {  # further replacements when numbers are compared
    b"==": (("<=", "std::less_equal<>"), (">=", "std::greater_equal<>")),
    b"!=": (("<", "std::less<>"), (">", "std::greater<>")),
}
UNSIGNED = (TypeKind.UINT, TypeKind.USHORT, TypeKind.ULONG, TypeKind.ULONGLONG, TypeKind.UCHAR, TypeKind.WCHAR,
            TypeKind.CHAR16, TypeKind.CHAR32)  # wide characters are never below 0
ASSIGNMENTS = {b"+=": b"-=", b"-=": b"+=", b"*=": b"/=", b"/=": b"*=", b"<<=": b">>=", b">>=": b"<<=",
               b"&=": b"|=", b"|=": b"&=", b"^=": b"&="}


class Operators(Walk):
    def at_binary_operator(self, cursor):
        children = list(cursor.get_children())
        if len(children) == 2:
            self.operands(cursor, *children)

    def at_call_expr(self, cursor):
        arguments = list(cursor.get_arguments())
        if self.makes_room_only(cursor):
            self.left_out += 1
            return arguments
        if cursor.spelling in ("operator==", "operator!=", "operator<") and len(arguments) == 2:
            self.operands(cursor, *arguments)
        return None

    def operands(self, cursor, left, right):
        written = self.operator_between(left, right)
        if written in (b"&&", b"||"):
            self.logical(cursor, left, right, written)
        if written not in OPERATORS:
            return
        original, *others = OPERATORS[written]
        if written in ORDERED and self.is_between(left, right):
            others += ORDERED[written]
        templates = ", ".join([original] + [template for _, template in others])
        ranges = (self.begin(left), self.end(left), self.begin(right), self.end(right))
        self.add(self.begin(cursor), self.end(cursor), [f"{written.decode()} -> {other}" for other, _ in others],
                 lambda first, text: b"::Mutation::binary<%s>(%d, %s,%s%s)" % (
                     templates.encode(), first, text(*ranges[:2]), self.line_ends(ranges[1], ranges[2]),
                     text(*ranges[2:])))

    def is_between(self, left, right) -> bool:
        """Whether values exist on both sides of the right operand, so that the order makes a difference."""
        kinds = [side.type.get_canonical().kind for side in (self.inner(left), self.inner(right))]
        if not all(kind in INTEGERS or kind == TypeKind.ENUM for kind in kinds):
            return False
        right = self.inner(right)
        target = right.referenced if right.kind == Kind.DECL_REF_EXPR else None
        if target is not None and target.kind == Kind.ENUM_CONSTANT_DECL:
            values = [each.enum_value for each in target.semantic_parent.get_children()
                      if each.kind == Kind.ENUM_CONSTANT_DECL]
            return min(values) < target.enum_value < max(values)
        text = self.text_of(right)
        is_zero = re.fullmatch(rb"[a-zA-Z]*(?:0|'\\0')", text) is not None
        return not (is_zero and kinds[0] in UNSIGNED) and not text.endswith(b"npos")

    def logical(self, cursor, left, right, written: bytes):
        """Writes only the right operand twice, so that a long chain stays short."""
        a, b, c, d = self.begin(left), self.end(left), self.begin(right), self.end(right)
        if written == b"&&":
            form = (b"(static_cast<bool>(%(a)s) ? (::Mutation::oneOf(%(n)d, 1, 2) || static_cast<bool>(%(flat)s))"
                    b":%(gap)s (::Mutation::oneOf(%(n)d, 1, 3) && static_cast<bool>(%(b)s)))")
        else:
            form = (b"(static_cast<bool>(%(a)s) ? (!::Mutation::oneOf(%(n)d, 1, 3) || static_cast<bool>(%(flat)s))"
                    b":%(gap)s (!::Mutation::oneOf(%(n)d, 1, 2) && static_cast<bool>(%(b)s)))")
        other = "||" if written == b"&&" else "&&"
        self.add(self.begin(cursor), self.end(cursor),
                 [f"{written.decode()} -> {other}", "the left operand alone", "the right operand alone"],
                 lambda first, text: form % {b"n": first, b"a": text(a, b), b"b": text(c, d),
                                             b"flat": flat(text(c, d)), b"gap": self.line_ends(b, c)})

    def at_compound_assignment_operator(self, cursor):
        left, right = cursor.get_children()
        written = self.operator_between(left, right)
        if written not in ASSIGNMENTS:
            return
        a, b, c, d = self.begin(left), self.end(left), self.begin(right), self.end(right)
        other = ASSIGNMENTS[written]
        self.add(self.begin(cursor), self.end(cursor), [f"{written.decode()} -> {other.decode()}"],
                 lambda first, text: b"(::Mutation::on(%d) ? (%s %s %s) : (%s %s%s %s))" % (
                     first, flat(text(a, b)), other, flat(text(c, d)), text(a, b), written, self.line_ends(b, c),
                     text(c, d)))

    def at_unary_operator(self, cursor):
        text = self.text_of(cursor)
        operand = next(cursor.get_children(), None)
        if operand is None:
            return
        a, b = self.begin(operand), self.end(operand)
        for written, other in ((b"++", b"--"), (b"--", b"++")):
            if text.startswith(written):
                self.step(cursor, written, other, lambda sign, value: sign + value, (a, b))
            elif text.endswith(written):
                self.step(cursor, written, other, lambda sign, value: value + sign, (a, b))
        if text.startswith(b"!") and not text.startswith(b"!="):  # C++20 makes one of a negated ==
            self.add(self.begin(cursor), self.end(cursor), ["! left out"],
                     lambda first, text: b"(::Mutation::on(%d) != !static_cast<bool>(%s))" % (first, text(a, b)))

    def step(self, cursor, written: bytes, other: bytes, form, operand):
        self.add(self.begin(cursor), self.end(cursor), [f"{written.decode()} -> {other.decode()}"],
                 lambda first, text: b"(::Mutation::on(%d) ? %s : %s)" % (
                     first, form(other, flat(text(*operand))), form(written, text(*operand))))
