"""Copies the tree into a folder, rewrites sources in the copy, and builds it."""

import os
import re
import shutil
import subprocess
from pathlib import Path

from clang.cindex import Index

from finder import Finder
from place import Place
from schemata import Rewriter, place_at

COPIED = ("CMakeLists.txt", "CHANGELOG.md", "README.md", "bench", "cmake", "docs", "embedded", "examples", "fuzz",
          "platform", "scripts", "src", "tests", "tools")
OPTIONS = ("-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1", "-DCMAKE_CXX_FLAGS=-w",
           "-DCMAKE_CXX_COMPILER=g++", "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=12")
COMPLAINT = re.compile(r"^(?:In file included from )?(\S+):(\d+):(\d+):(?: error:|   required from)", re.MULTILINE)


class BuildFailed(Exception):
    pass


def write_if_changed(path: Path, content: bytes):
    """Leaves an unchanged file alone, so that it is not compiled again."""
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


class MutatedFile:
    """A source with its places. `drop` removes a place that the compiler does not accept."""

    def __init__(self, root: Path, name: str):
        self.name = name
        self.source = (root / name).read_bytes()
        unit = Index.create().parse(
            str(root / name),
            ["-xc++", "-std=c++20", "-DORVEL_COORDSYS_CORE_BUILD", f"-I{root / 'src'}", f"-I{root}"])
        errors = [str(each) for each in unit.diagnostics if each.severity >= 3]
        if errors:
            raise BuildFailed(f"{name} cannot be read:\n" + "\n".join(errors))
        finder = Finder(self.source, str(root / name)).find(unit)
        self.places: list[Place] = finder.places
        self.left_out = finder.left_out
        self.refused = 0  # changes that do not compile

    def number(self, first: int) -> int:
        for place in self.places:
            place.first = first
            first += len(place.changes)
        return first

    def rewritten(self) -> bytes:
        return Rewriter(self.source, self.places).rewritten() if self.places else self.source

    def drop(self, first: int):
        place = next(each for each in self.places if each.first == first)
        self.places.remove(place)
        self.refused += len(place.changes)


class MutatedTree:
    def __init__(self, root: Path, folder: Path, files: list[MutatedFile], programs: list[str]):
        self.root, self.tree, self.build = root, folder / "tree", folder / "out"
        self.files = {each.name: each for each in files}
        self.programs = programs

    def copy(self):
        wanted = set()
        for name in COPIED:
            top = self.root / name
            for path in [top] if top.is_file() else top.rglob("*"):
                relative = path.relative_to(self.root)
                if not path.is_file() or "__pycache__" in relative.parts:
                    continue
                wanted.add(relative)
                if str(relative) not in self.files:
                    write_if_changed(self.tree / relative, path.read_bytes())
                    shutil.copymode(path, self.tree / relative)
        for path in self.tree.rglob("*"):
            if path.is_file() and path.relative_to(self.tree) not in wanted:
                path.unlink()
        selection = self.root / "scripts" / "mutation" / "selection.h"
        write_if_changed(self.tree / "src" / "mutation" / "selection.h", selection.read_bytes())

    def write_files(self):
        for name, each in self.files.items():
            write_if_changed(self.tree / name, each.rewritten())

    def configure(self):
        listener = self.tree / "scripts" / "mutation" / "reach_listener.cmake"
        options = list(OPTIONS) + [f"-DCMAKE_PROJECT_OrvelCoordsysCore_INCLUDE={listener}",
                                   f"-DORVEL_MUTATED_PROGRAMS={';'.join(self.programs)}"]
        if shutil.which("ccache"):
            options.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        self.run(["cmake", "-S", str(self.tree), "-B", str(self.build), *options])

    def make(self):
        """Builds again and again without the changes that do not compile, until everything does."""
        self.copy()
        self.write_files()
        self.configure()
        while True:
            output = self.run(["ninja", "-C", str(self.build), "-k0", *self.programs], may_fail=True)
            if output is None:
                return
            if not self.drop_refused(output):
                raise BuildFailed(output[-8000:])
            self.write_files()

    def drop_refused(self, output: str) -> int:
        refused = set()
        for path, line, column in COMPLAINT.findall(output):
            name = os.path.relpath(os.path.normpath(self.build / path), self.tree)
            if name in self.files:
                first = place_at(self.files[name].rewritten(), int(line), int(column))
                if first is not None:
                    refused.add((name, first))
        for name, first in refused:
            self.files[name].drop(first)
        return len(refused)

    def run(self, command: list[str], may_fail: bool = False) -> str | None:
        """Returns None, or the output of a command that failed."""
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                              env=os.environ | {"LC_ALL": "C"}, preexec_fn=lambda: os.nice(12))
        if done.returncode == 0:
            return None
        if not may_fail:
            raise BuildFailed(done.stdout[-8000:])
        return done.stdout
