#!/usr/bin/python3 -B
"""Sums up what the tests of a build with coverage counters reached, by folder, and checks it against the goals.

    scripts/coverage.py [--gaps] FOLDER-OF-THE-BUILD

With --gaps it names every line that was not reached, and every line with a branch that was not taken, also where the goal
is reached. Branches that the compiler adds for exceptions do not count, nor does what scripts/coverage-exclusions.txt
lists. The exit status is 1 when a goal is missed, and when the list names code that its file does not have.

    scripts/coverage.py --check-exclusions

checks that list alone.
"""

import argparse
import json
import subprocess
import sys
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
EXCLUSIONS = ROOT / "scripts" / "coverage-exclusions.txt"


@dataclass
class Goal:
    """Per cent; without a figure for branches they are told and not judged."""

    lines: float
    branches: float = 0.0


GOALS = {"src": Goal(lines=100, branches=100), "embedded": Goal(lines=95), "tools": Goal(lines=95)}


# Lines on which g++ branches by itself, without a mark that would tell: which clause catches, what a new-expression that
# fails gives back, whether a pointer is null before it is deleted or asked for its class.
BRANCHES_OF_THE_COMPILER = r".*(catch \(|\bnew\b|\bdelete\b|\bdynamic_cast<).*"


@dataclass
class Figures:
    lines: int = 0
    reached_lines: int = 0
    branches: int = 0
    taken_branches: int = 0
    gaps: list[str] = field(default_factory=list)

    def add(self, other: "Figures"):
        self.lines += other.lines
        self.reached_lines += other.reached_lines
        self.branches += other.branches
        self.taken_branches += other.taken_branches
        self.gaps += other.gaps

    def reaches(self, goal: Goal) -> bool:
        return (self.reached_lines * 100 >= goal.lines * self.lines
                and self.taken_branches * 100 >= goal.branches * self.branches)


@dataclass
class Exclusions:
    """The numbers of the lines that do not count, by file: with all that they have, or with their branches alone."""

    lines: dict[str, set[int]] = field(default_factory=dict)
    branches: dict[str, set[int]] = field(default_factory=dict)
    errors: list[str] = field(default_factory=list)

    def of(self, file: str) -> tuple[set[int], set[int]]:
        return self.lines.get(file, set()), self.branches.get(file, set())


def line_numbers(source: str, code: str) -> set[int]:
    """The lines that hold the code, at each place where they do. Comments and indentation do not matter."""
    lines = [" ".join(line.split("//")[0].split()) for line in source.splitlines()]
    numbers: set[int] = set()
    for first in range(len(lines)):
        text = lines[first]
        last = first
        while text and text != code and code.startswith(text) and last + 1 < len(lines):
            last += 1
            text = f"{text} {lines[last]}".strip()
        if text == code:
            numbers |= set(range(first + 1, last + 2))
    return numbers


def read_exclusions(path: Path) -> Exclusions:
    exclusions = Exclusions()
    for number, line in enumerate(path.read_text().splitlines(), start=1):
        if not line.strip() or line.startswith("#"):
            continue
        place = f"{path.name}:{number}"
        parts = line.split(" | ")
        if len(parts) != 4 or parts[2] not in ("lines", "branches"):
            exclusions.errors.append(f"{place}: expected: file | code | lines or branches | reason")
            continue
        file, code, kind, _ = parts
        source = ROOT / file
        numbers = line_numbers(source.read_text(), code) if source.is_file() else set()
        if not numbers:
            exclusions.errors.append(f"{place}: {file} does not have this code: {code}")
        getattr(exclusions, kind).setdefault(file, set()).update(numbers)
    return exclusions


def measured_files(build: Path) -> list[dict]:
    """One entry a source file, as gcovr has it."""
    command = ["gcovr", "--root", str(ROOT), "-j", "2", "--exclude-throw-branches", "--exclude-unreachable-branches",
               "--exclude-branches-by-pattern", BRANCHES_OF_THE_COMPILER]
    for folder in GOALS:
        command += ["--filter", f"{ROOT}/{folder}/"]
    report = build / "coverage.json"
    subprocess.run([*command, "--json", str(report), str(build)], check=True)
    return json.loads(report.read_text())["files"]


def figures_of(file: dict, exclusions: Exclusions) -> Figures:
    figures = Figures()
    without_lines, without_branches = exclusions.of(file["file"])
    for line in file["lines"]:
        if line.get("gcovr/noncode") or line["line_number"] in without_lines:
            continue
        branches = [] if line["line_number"] in without_branches else line["branches"]
        taken = [branch["count"] > 0 for branch in branches]
        figures.lines += 1
        figures.reached_lines += line["count"] > 0
        figures.branches += len(taken)
        figures.taken_branches += sum(taken)
        place = f"{file['file']}:{line['line_number']}"
        if line["count"] == 0:
            figures.gaps.append(f"{place}: not reached")
        elif not all(taken):
            figures.gaps.append(f"{place}: {taken.count(False)} of {len(taken)} branches not taken")
    return figures


def figures_by_folder(files: list[dict], exclusions: Exclusions) -> dict[str, Figures]:
    """Those of each folder with sources; a file counts for its room, also below `posix`."""
    folders: dict[str, Figures] = {}
    for file in files:
        folder = "/".join(file["file"].split("/")[:2])
        folders.setdefault(folder, Figures()).add(figures_of(file, exclusions))
    return folders


def percentage(part: int, whole: int) -> str:
    """Cut off rather than rounded, so that 100 says that nothing is missing."""
    return f"{part * 1000 // whole / 10:.1f} %" if whole else "-"


def row(name: str, figures: Figures, remark: str = "") -> str:
    lines = f"{figures.reached_lines} of {figures.lines}"
    branches = f"{figures.taken_branches} of {figures.branches}"
    return (f"{name:<28}{lines:>15}{percentage(figures.reached_lines, figures.lines):>9}"
            f"{branches:>17}{percentage(figures.taken_branches, figures.branches):>9}  {remark}").rstrip()


def judged(goal: Goal, figures: Figures) -> str:
    promise = f"{goal.lines:g} % of lines" + (f", {goal.branches:g} % of branches" if goal.branches else "")
    return f"goal {promise}: {'reached' if figures.reaches(goal) else 'MISSED'}"


def main() -> int:
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--gaps", action="store_true", help="name what was not reached also where the goal is reached")
    action = arguments.add_mutually_exclusive_group(required=True)
    action.add_argument("--check-exclusions", action="store_true",
                        help="check only that the sources have the code that the list of exclusions names")
    action.add_argument("build", nargs="?", type=Path)
    options = arguments.parse_args()

    exclusions = read_exclusions(EXCLUSIONS)
    for error in exclusions.errors:
        print(error, file=sys.stderr)
    if options.check_exclusions:
        return 1 if exclusions.errors else 0

    folders = figures_by_folder(measured_files(options.build), exclusions)
    rooms = {room: Figures() for room in GOALS}
    for name in sorted(folders):
        rooms[name.split("/")[0]].add(folders[name])
    missed = [room for room, figures in rooms.items() if not figures.lines or not figures.reaches(GOALS[room])]
    for room in rooms if options.gaps else missed:
        print(*rooms[room].gaps, sep="\n")

    print(f"{'folder':<28}{'lines reached':>24}{'branches taken':>26}")
    for name in sorted(folders):
        print(row(name, folders[name]))
    for room, figures in rooms.items():
        print(row(room, figures, judged(GOALS[room], figures)))
    return 1 if missed or exclusions.errors else 0


if __name__ == "__main__":
    sys.exit(main())
