"""Counts the results of the mutants by file, and lists the survivors that equivalent.txt does not explain."""

import re
from pathlib import Path

from place import flat

EQUIVALENT = Path("scripts/mutation/equivalent.txt")
# The text and the change may contain the operator |.
LINE = re.compile(r"(?P<file>\S+) \| (?P<text>.+) \| "
                  r"(?P<change>\| -> \S+|(?!-> )(?:(?! \| ).)+(?: \|)?) \| (?P<reason>[^|]+)")


def known_equivalents(root: Path) -> dict[tuple[str, str, str], str]:
    """The reasons by file, text and change. A place is identified by its text, since line numbers change. If the same text
    stands elsewhere in the file, the text is the whole line of the source without its comment."""
    path = root / EQUIVALENT
    known = {}
    for line in path.read_text().splitlines() if path.exists() else []:
        if line.strip() and not line.startswith("#"):
            parts = LINE.fullmatch(line.strip())
            if parts is None:
                raise ValueError(f"{EQUIVALENT}: expected 'file | text | change | reason', found: {line}")
            known[parts["file"], parts["text"], parts["change"]] = parts["reason"]
    return known


class Report:
    def __init__(self, root: Path, files):
        self.files = files
        self.known = known_equivalents(root)
        self.verdicts: dict = {}
        self.described = {}
        for each in files:
            lines = each.source.decode().splitlines()
            for place in each.places:
                for index, change in enumerate(place.changes):
                    begin, end = place.part(index)
                    line = each.source.count(b"\n", 0, begin) + 1
                    text = " ".join(flat(each.source[begin:end]).decode().split())
                    self.described[place.first + index] = (each.name, line, text, change, lines[line - 1].strip())

    def add(self, mutant: int, verdict):
        self.verdicts[mutant] = verdict
        if len(self.verdicts) % 100 == 0:
            print(f"mutate: {len(self.verdicts)} of {len(self.described)} mutants are done", flush=True)
        if self.is_survivor(mutant):
            print(self.line_of(mutant), flush=True)

    def is_known(self, mutant: int) -> bool:
        file, _, text, change, source = self.described[mutant]
        return (file, text, change) in self.known or (file, self.code_of(source), change) in self.known

    def stale(self) -> list[str]:
        """The lines of equivalent.txt on these files that describe none of their mutants."""
        names = {each.name for each in self.files}
        described = {(file, words, change) for file, _, text, change, source in self.described.values()
                     for words in (text, self.code_of(source))}
        return [" | ".join(entry) for entry in self.known if entry[0] in names and entry not in described]

    @staticmethod
    def code_of(source: str) -> str:
        return source.split(" //")[0].rstrip()

    def results(self) -> list[dict]:
        keys = ("file", "line", "text", "change", "source")
        return [dict(zip(keys, self.described[mutant])) | {"number": mutant} | vars(verdict)
                for mutant, verdict in sorted(self.verdicts.items())]

    def table(self) -> str:
        rows = [("file", "mutants", "killed", "equivalent", "survived", "%", "left out", "seconds")]
        for each in self.files:
            rows.append(self.row(each.name, [each]))
        if len(self.files) > 1:
            rows.append(self.row("together", self.files))
        widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]
        return "\n".join("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip() for row in rows)

    def row(self, name: str, files) -> tuple[str, ...]:
        numbers = [place.first + index for each in files for place in each.places
                   for index in range(len(place.changes))]
        made = [mutant for mutant in numbers if self.verdicts[mutant].outcome != "cannot be made"]
        killed = [mutant for mutant in made if self.verdicts[mutant].outcome == "killed"]
        equivalent = [mutant for mutant in made if mutant not in set(killed) and self.is_known(mutant)]
        survived = len(made) - len(killed) - len(equivalent)
        share = 100 * len(killed) / (len(killed) + survived) if killed or survived else 100
        left_out = sum(each.left_out + each.refused for each in files) + len(numbers) - len(made)
        seconds = sum(self.verdicts[mutant].seconds for mutant in numbers)
        return (name, str(len(made)), str(len(killed)), str(len(equivalent)), str(survived), f"{share:.1f}",
                str(left_out), f"{seconds:.0f}")

    def is_survivor(self, mutant: int) -> bool:
        return self.verdicts[mutant].outcome in ("survived", "not reached") and not self.is_known(mutant)

    def line_of(self, mutant: int) -> str:
        file, line, text, change, source = self.described[mutant]
        outcome = self.verdicts[mutant].outcome
        return f"{file}:{line}: {change} in `{text}` ({outcome}, {mutant})\n    {source}"

    def survivors(self) -> list[str]:
        return [self.line_of(mutant) for mutant in sorted(self.verdicts) if self.is_survivor(mutant)]
