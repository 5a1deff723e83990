"""Runs test programs with one mutant at a time, and only those tests that reach it."""

import os
import resource
import shutil
import subprocess
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

CANNOT_BE_MADE = 97  # selection.h
BATCHES_MS = (300, 4000, float("inf"))  # a few quick tests kill most mutants
LARGEST_MEMORY = 4 << 30


@dataclass
class Test:
    name: str
    milliseconds: int
    reached: dict[int, int]  # how often the test reaches a place, by the first number of the place


class TestProgram:
    def __init__(self, build: Path, name: str, filter: str = "*"):
        self.name = name
        self.filter = filter
        self.path = build / "bin" / name
        self.tests: list[Test] = []

    def record(self, folder: Path):
        """Runs every test once, without a mutant."""
        record = folder / f"{self.name}.reached"
        status = self.run(folder, -1, self.filter, 600, {"ORVEL_MUTANT_RECORD": str(record)})
        if status != 0:
            raise RuntimeError(f"{self.name} fails without a mutant; run {self.path} to see why")
        for line in record.read_text().splitlines():
            name, milliseconds, reached = line.split("\t")
            pairs = (pair.split(":") for pair in reached.split())
            self.tests.append(Test(name, int(milliseconds), {int(place): int(times) for place, times in pairs}))

    def batches(self, place: int) -> list[list[Test]]:
        """The tests that reach the place, in batches, the quickest first."""
        reaching = sorted((test for test in self.tests if place in test.reached), key=lambda test: test.milliseconds)
        batches, spent = [[] for _ in BATCHES_MS], 0
        for test in reaching:
            spent += test.milliseconds
            batches[next(index for index, most in enumerate(BATCHES_MS) if spent <= most)].append(test)
        return [batch for batch in batches if batch]

    def run(self, folder: Path, mutant: int, names: str, seconds: int, variables: dict) -> int:
        """Returns the exit status. It is negative when a signal or a lack of time ended the process."""
        own = folder / f"run-{threading.get_ident()}"
        own.mkdir(parents=True, exist_ok=True)
        environment = os.environ | {"ORVEL_MUTANT": str(mutant), "TMPDIR": str(own), "GTEST_FILTER": names,
                                    "GTEST_FAIL_FAST": "1"} | variables

        def limit_resources():
            os.nice(12)
            resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            resource.setrlimit(resource.RLIMIT_AS, (LARGEST_MEMORY, LARGEST_MEMORY))

        process = subprocess.Popen([str(self.path)], env=environment, cwd=own, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=limit_resources,
                                   start_new_session=True)
        try:
            return process.wait(timeout=seconds * 10)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
            return -1
        finally:
            shutil.rmtree(own, ignore_errors=True)


@dataclass
class Verdict:
    outcome: str  # killed, survived, not reached, cannot be made
    by: str = ""
    seconds: float = 0.0


class Trials:
    def __init__(self, programs: list[TestProgram], folder: Path):
        self.programs = programs
        self.folder = folder

    def order(self, file: str) -> list[TestProgram]:
        """The program of the source's room comes first, the sweep last."""
        room = Path(file).parts[1]
        return sorted(self.programs, key=lambda program: program.name != f"{room}_tests")

    def judge(self, file: str, place: int, mutant: int) -> Verdict:
        start = time.monotonic()
        reached = False
        for program in self.order(file):
            for batch in program.batches(place):
                reached = True
                status = self.run_batch(program, batch, place, mutant)
                if status != 0:
                    outcome = "cannot be made" if status == CANNOT_BE_MADE else "killed"
                    return Verdict(outcome, program.name, time.monotonic() - start)
        return Verdict("survived" if reached else "not reached", "", time.monotonic() - start)

    def run_batch(self, program: TestProgram, batch: list[Test], place: int, mutant: int) -> int:
        reaches = sum(test.reached[place] for test in batch)
        seconds = 3 + sum(test.milliseconds for test in batch) * 10 // 1000
        names = ":".join(test.name for test in batch)
        return program.run(self.folder, mutant, names, seconds,
                           {"ORVEL_MUTANT_REACHES": str(reaches * 20 + 100000)})

    def judge_all(self, mutants, report):
        """`mutants` are tuples of file, place and number. Calls `report` with each verdict, in any order."""
        turn = threading.Lock()
        waiting = iter(mutants)

        def work():
            while True:
                with turn:
                    mutant = next(waiting, None)
                if mutant is None:
                    return
                verdict = self.judge(*mutant)
                with turn:
                    report(mutant[2], verdict)

        jobs = os.cpu_count()
        with ThreadPoolExecutor(jobs) as pool:
            for each in [pool.submit(work) for _ in range(jobs)]:
                each.result()
