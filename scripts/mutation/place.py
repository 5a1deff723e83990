"""A place of a source that can be changed."""

import re
from dataclasses import dataclass, field
from typing import Callable

Text = Callable[[int, int], bytes]  # returns a range of the source with the changes in it


@dataclass
class Place:
    """A range of a source and its changes. `write` returns the text that chooses among them at run time."""

    begin: int
    end: int
    changes: list[str]
    write: Callable[[int, Text], bytes] = field(repr=False)
    first: int = 0  # the number of the first change
    parts: list[tuple[int, int]] = field(default_factory=list)  # the range of each change, if it is smaller

    def part(self, change: int) -> tuple[int, int]:
        return self.parts[change] if self.parts else (self.begin, self.end)


def flat(text: bytes) -> bytes:
    """Puts text that is written twice on one line."""
    return re.sub(rb"\s*\n\s*", b" ", re.sub(rb"//[^\n]*", b"", text))
