"""A place of a source that can be changed."""

import re
from dataclasses import dataclass, field
from typing import Callable

Text = Callable[[int, int], bytes]  # a range of the source, with what is to be changed in it


@dataclass
class Place:
    """A range of a source and its changes. `write` gives the text that chooses among them at run time."""

    begin: int
    end: int
    changes: list[str]
    write: Callable[[int, Text], bytes] = field(repr=False)
    first: int = 0  # the number of the first change
    parts: list[tuple[int, int]] = field(default_factory=list)  # what each change is about, where it is not all of it

    def part(self, change: int) -> tuple[int, int]:
        return self.parts[change] if self.parts else (self.begin, self.end)


def flat(text: bytes) -> bytes:
    """On one line, for text that is written twice."""
    return re.sub(rb"\s*\n\s*", b" ", re.sub(rb"//[^\n]*", b"", text))
