"""A source in which every place chooses among its changes at run time."""

import re

from place import Place

NUMBERED = re.compile(rb"::Mutation::\w+(?:<[^()]*?>)?\((\d+)")
HEAD = b'#include "mutation/selection.h"\n#line 1\n'  # keeps the numbers of the lines


class Rewriter:
    def __init__(self, source: bytes, places: list[Place]):
        self.source = source
        self.order = {id(place): order for order, place in enumerate(places)}
        self.inside = self.nested(places)

    def nested(self, places: list[Place]) -> dict:
        """The places directly inside each, and under None the outermost. Of two that are equally wide the one that was
        found first is outside."""
        inside: dict = {None: []}
        around: list[Place] = []
        for place in sorted(places, key=lambda p: (p.begin, -p.end, self.order[id(p)])):
            while around and not (around[-1].begin <= place.begin and place.end <= around[-1].end):
                around.pop()
            inside.setdefault(id(around[-1]) if around else None, []).append(place)
            inside.setdefault(id(place), [])
            around.append(place)
        return inside

    def text(self, around, begin: int, end: int) -> bytes:
        parts, at = [], begin
        for place in self.inside[around]:
            if at <= place.begin and place.end <= end:
                parts.append(self.source[at : place.begin])
                parts.append(place.write(place.first, lambda b, e, p=place: self.text(id(p), b, e)))
                at = place.end
        return b"".join(parts) + self.source[at:end]

    def rewritten(self) -> bytes:
        return HEAD + self.text(None, 0, len(self.source))


def place_at(rewritten: bytes, line: int, column: int) -> int | None:
    """The first number of the place that a compiler's complaint is about: the last that begins before it."""
    lines = rewritten[len(HEAD) :].split(b"\n")
    for number in range(line, max(line - 8, 0), -1):
        found = list(NUMBERED.finditer(lines[number - 1]))
        before = [match for match in found if number < line or match.start() < column]
        if before:
            return int(before[-1].group(1))
        if found:
            return int(found[0].group(1))
    return None
