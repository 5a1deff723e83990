"""Where a C++ source can be changed, and into what: found in libclang's syntax tree."""

import re
from dataclasses import dataclass, field
from typing import Callable

from clang.cindex import CursorKind as Kind
from clang.cindex import TypeKind

OPERATORS = {  # what is written, what it can become
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
ASSIGNMENTS = {b"+=": b"-=", b"-=": b"+=", b"*=": b"/=", b"/=": b"*=", b"<<=": b">>=", b">>=": b"<<=",
               b"&=": b"|=", b"|=": b"&=", b"^=": b"&="}
FUNCTIONS = (Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONVERSION_FUNCTION, Kind.FUNCTION_TEMPLATE, Kind.CONSTRUCTOR,
             Kind.DESTRUCTOR)
CONSTANT = (Kind.STATIC_ASSERT, Kind.ENUM_DECL, Kind.PARM_DECL, Kind.TYPE_ALIAS_DECL, Kind.TYPEDEF_DECL)
CALLS = (Kind.CALL_EXPR, Kind.CXX_DELETE_EXPR, Kind.COMPOUND_ASSIGNMENT_OPERATOR, Kind.CXX_STATIC_CAST_EXPR,
         Kind.BREAK_STMT, Kind.CONTINUE_STMT)
INTEGERS = (TypeKind.INT, TypeKind.UINT, TypeKind.SHORT, TypeKind.USHORT, TypeKind.LONG, TypeKind.ULONG,
            TypeKind.LONGLONG, TypeKind.ULONGLONG, TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.UCHAR, TypeKind.WCHAR,
            TypeKind.CHAR16, TypeKind.CHAR32)
INTEGER = re.compile(rb"(0[xX][0-9a-fA-F']+|[0-9][0-9']*)[uUlLzZ]*$")

Text = Callable[[int, int], bytes]  # a range of the source, with what is to be changed in it


@dataclass
class Place:
    """A range of a source and its changes. `write` gives the text that chooses among them at run time."""

    begin: int
    end: int
    line: int
    changes: list[str]
    write: Callable[[int, Text], bytes] = field(repr=False)
    first: int = 0  # the number of the first change


def flat(text: bytes) -> bytes:
    """On one line, for text that is written twice."""
    return re.sub(rb"\s*\n\s*", b" ", re.sub(rb"//[^\n]*", b"", text))


class Finder:
    """The places of one file."""

    def __init__(self, source: bytes, path: str):
        self.source = source
        self.path = path
        self.places: list[Place] = []
        self.left_out = 0  # for their values are needed when the source is compiled
        self.constant = False
        self.result = None  # the type that the function around returns
        self.seen: set = set()

    def find(self, unit) -> "Finder":
        for cursor in unit.cursor.get_children():
            if cursor.location.file is not None and cursor.location.file.name == self.path:
                self.visit(cursor)
        return self

    # The walk

    def visit(self, cursor):
        before = (self.constant, self.result)
        if cursor.kind in CONSTANT:
            self.constant = True
        if cursor.kind in FUNCTIONS:
            self.result = cursor.result_type
        if cursor.kind == Kind.LAMBDA_EXPR:
            self.result = None
        look = getattr(self, "at_" + cursor.kind.name.lower(), None)
        skipped = look(cursor) if look else None
        constant = self.constant
        for child in cursor.get_children():
            if skipped is None or child not in skipped:
                self.constant = constant or self.is_constant_part(cursor, child)
                self.visit(child)
        self.constant, self.result = before

    def is_constant_part(self, cursor, child) -> bool:
        """Of a variable: the arguments of its type, and the value that it has before the program runs."""
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

    def add(self, begin: int, end: int, changes: list[str], write):
        key = (begin, end, tuple(changes))
        if key in self.seen or begin >= end:
            return
        self.seen.add(key)
        if self.constant:
            self.left_out += len(changes)
            return
        line = self.source.count(b"\n", 0, begin) + 1
        self.places.append(Place(begin, end, line, changes, write))

    def add_expression(self, cursor, changes: list[str], call: str):
        """`call` is the selection's function, with {first} for the number and {text} for the expression."""
        begin, end = self.begin(cursor), self.end(cursor)
        before, after = call.split("{text}")
        self.add(begin, end, changes,
                 lambda first, text: before.format(first=first).encode() + text(begin, end) + after.encode())

    # Operators

    def operator_between(self, left, right) -> bytes:
        between = self.source[self.end(left) : self.begin(right)]
        return re.sub(rb"//[^\n]*", b"", between).strip()

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

    def makes_room_only(self, cursor) -> bool:
        """No result depends on how much room a container has."""
        return cursor.kind == Kind.CALL_EXPR and cursor.spelling == "reserve"

    def operands(self, cursor, left, right):
        written = self.operator_between(left, right)
        if written in (b"&&", b"||"):
            self.logical(cursor, left, right, written)
        if written not in OPERATORS:
            return
        original, *others = OPERATORS[written]
        templates = ", ".join([original] + [template for _, template in others])
        ranges = (self.begin(left), self.end(left), self.begin(right), self.end(right))
        self.add(self.begin(cursor), self.end(cursor), [f"{written.decode()} -> {other}" for other, _ in others],
                 lambda first, text: b"::Mutation::binary<%s>(%d, %s,%s%s)" % (
                     templates.encode(), first, text(*ranges[:2]), self.line_ends(ranges[1], ranges[2]),
                     text(*ranges[2:])))

    def logical(self, cursor, left, right, written: bytes):
        """The right operand alone is written twice, so that a long chain stays short."""
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

    def line_ends(self, begin: int, end: int) -> bytes:
        return b"\n" * self.source.count(b"\n", begin, end)

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

    # Constants

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

    def at_case_stmt(self, cursor):
        label = next(cursor.get_children())
        self.left_out += 1
        return [label]

    # Conditions

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

    def inner(self, cursor):
        while cursor.kind in (Kind.UNEXPOSED_EXPR, Kind.PAREN_EXPR):
            children = list(cursor.get_children())
            if len(children) != 1:
                break
            cursor = children[0]
        return cursor

    def negates_itself(self, cursor) -> bool:
        """Where another change does the same as negating."""
        cursor = self.inner(cursor)
        if cursor.kind == Kind.UNARY_OPERATOR:
            return self.text_of(cursor).startswith(b"!")
        parts = list(cursor.get_children()) if cursor.kind == Kind.BINARY_OPERATOR else []
        if cursor.kind == Kind.CALL_EXPR and cursor.spelling in ("operator==", "operator!="):
            parts = list(cursor.get_arguments())
        return len(parts) == 2 and self.operator_between(*parts) in (b"==", b"!=", b"<", b">", b"<=", b">=")

    # Statements

    def at_compound_stmt(self, cursor):
        self.bodies(list(cursor.get_children()))

    def bodies(self, statements):
        for statement in statements:
            inner = self.inner(statement)
            step = inner.kind == Kind.UNARY_OPERATOR and re.search(rb"^(\+\+|--)|(\+\+|--)$", self.text_of(inner))
            assignment = inner.kind == Kind.BINARY_OPERATOR  # the only one that stands for itself
            if (inner.kind in CALLS and not self.makes_room_only(inner)) or step or assignment:
                self.left_out_statement(statement)

    def left_out_statement(self, statement):
        begin, end = self.begin(statement), self.end(statement)
        if self.source[end : end + 1] == b";":
            self.add(begin, end + 1, ["left out"],
                     lambda first, text: b"{if (!::Mutation::on(%d)) %s}" % (first, text(begin, end + 1)))

    # Returns

    def at_return_stmt(self, cursor):
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

    def is_literal(self, value) -> bool:
        inner = self.inner(value)
        target = inner.referenced if inner.kind == Kind.DECL_REF_EXPR else None
        return (inner.kind in (Kind.INTEGER_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR, Kind.CXX_NULL_PTR_LITERAL_EXPR)
                or (target is not None and target.kind == Kind.ENUM_CONSTANT_DECL))

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
