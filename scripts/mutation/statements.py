"""Statements that are left out, or change places with the next one."""

import re

from clang.cindex import CursorKind as Kind

from walk import Walk

EFFECTS = (Kind.CALL_EXPR, Kind.CXX_DELETE_EXPR, Kind.COMPOUND_ASSIGNMENT_OPERATOR, Kind.CXX_STATIC_CAST_EXPR)
JUMPS = (Kind.BREAK_STMT, Kind.CONTINUE_STMT)


class Statements(Walk):
    def at_case_stmt(self, cursor):
        label, *statements = cursor.get_children()
        self.left_out += 1
        self.bodies(statements)
        return [label]

    def at_default_stmt(self, cursor):
        self.bodies(list(cursor.get_children()))

    def at_compound_stmt(self, cursor):
        statements = list(cursor.get_children())
        self.bodies(statements)
        run = []
        for statement in statements + [None]:
            if statement is not None and self.can_move(statement):
                run.append(statement)
                continue
            if len(run) > 1:
                self.swapped_statements(run)
            run = []

    def can_move(self, statement) -> bool:
        """What declares something stays where it is, and so does what leaves a loop, for a switch is put around it."""
        if statement.kind == Kind.IF_STMT:
            return not any(each.kind in JUMPS for each in statement.walk_preorder())
        return self.has_effect(statement) and self.is_ended(statement)

    def bodies(self, statements):
        for statement in statements:
            if (self.has_effect(statement) or statement.kind in JUMPS) and self.is_ended(statement):
                self.left_out_statement(statement)

    def has_effect(self, statement) -> bool:
        inner = self.inner(statement)
        step = inner.kind == Kind.UNARY_OPERATOR and re.search(rb"^(\+\+|--)|(\+\+|--)$", self.text_of(inner))
        assignment = inner.kind == Kind.BINARY_OPERATOR  # the only one that stands for itself
        return bool((inner.kind in EFFECTS and not self.makes_room_only(inner)) or step or assignment)

    def is_ended(self, statement) -> bool:
        end = self.end(statement)
        return self.source[end : end + 1] == b";"

    def left_out_statement(self, statement):
        begin, end = self.begin(statement), self.end(statement) + 1
        self.add(begin, end, ["left out"],
                 lambda first, text: b"{if (!::Mutation::on(%d)) %s}" % (first, text(begin, end)))

    def swapped_statements(self, run):
        """Two neighbours of a run. Each statement becomes a case of a switch, and a loop goes through the cases in the
        chosen order."""
        starts = [self.begin(statement) for statement in run]
        ends = starts[1:] + [self.end(run[-1]) + self.is_ended(run[-1])]

        def write(first, text):
            cases = b"".join(b"case %d: %sbreak; " % (number, text(*part) + b" ")
                             for number, part in enumerate(zip(starts, ends)))
            return (b"for (int mutatedStep = 0, mutatedChoice = ::Mutation::chosen(%d, %d); mutatedStep < %d; "
                    b"++mutatedStep) switch (::Mutation::inOrder(mutatedChoice, mutatedStep)) {%s}"
                    % (first, len(run) - 1, len(run), cases))

        self.add(starts[0], ends[-1], ["swapped with the next statement"] * (len(run) - 1), write,
                 parts=[(self.begin(statement), self.end(statement)) for statement in run[:-1]])
