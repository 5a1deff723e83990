#!/usr/bin/env python3
"""Fails when the hosted workflow is not YAML of the expected shape. project_tests checks what its commands call."""

import pathlib
import sys

import yaml

FILE = pathlib.Path(__file__).resolve().parents[1] / ".github/workflows/ci.yml"


def find_faults(workflow):
    if not isinstance(workflow, dict) or not isinstance(workflow.get("jobs"), dict):
        return ["expected a mapping with jobs"]
    faults = []
    # YAML 1.1 reads the key "on" as a truth value.
    if not workflow.get("on", workflow.get(True)):
        faults.append("expected events under on")
    for name, job in workflow["jobs"].items():
        if not job.get("runs-on"):
            faults.append(f"{name}: expected runs-on")
        steps = job.get("steps") or []
        if not steps:
            faults.append(f"{name}: expected steps")
        for number, step in enumerate(steps, 1):
            if len({"run", "uses"} & set(step)) != 1:
                faults.append(f"{name}, step {number}: expected either run or uses, found {', '.join(step)}")
    return faults


def main():
    try:
        faults = find_faults(yaml.safe_load(FILE.read_text()))
    except yaml.YAMLError as error:
        faults = [" ".join(str(error).split())]
    for fault in faults:
        print(f"{FILE.name}: {fault}", file=sys.stderr)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
