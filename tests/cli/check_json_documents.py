#!/usr/bin/python3 -B
"""Checks what orvelcs printed with --json against the JSON Schemas that it prints.

usage: check_json_documents.py [--all] ORVELCS FILE...

Each line of a file is a JSON object of the test, the arguments of a run, and its output. With --all every schema must
have been met by a document that is not just an error.
"""

import json
import subprocess
import sys

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit("check_json_documents: the Debian package python3-jsonschema is missing, version 4 or newer")


def printed(program, *arguments):
    return json.loads(subprocess.run([program, "--json", "schema", *arguments], check=True, capture_output=True).stdout)


class Validators:
    """A validator for each name such as "catalog search"."""

    def __init__(self, program):
        self.program = program
        self.names = printed(program)
        self.known = {}

    def find(self, name):
        if name not in self.known:
            schema = printed(self.program, *name.split())
            Draft202012Validator.check_schema(schema)
            self.known[name] = Draft202012Validator(schema)
        return self.known[name]


def causes(error):
    """The errors of the alternative that the document comes closest to: one of its type, with the fewest errors."""
    if error.validator != "anyOf":
        return [error]
    alternatives = {}
    for cause in error.context:
        alternatives.setdefault(cause.relative_schema_path[0], []).append(cause)
    is_other_type = lambda cause: cause.validator == "type" and not cause.relative_path
    closest = min(alternatives.values(), key=lambda errors: (any(map(is_other_type, errors)), len(errors)))
    return [cause for nearest in closest for cause in causes(nearest)]


def schema_name(arguments, names):
    """The longest command that the arguments name; version and error without one."""
    if "--version" in arguments or "-V" in arguments:
        return "version"
    firsts = {name.split()[0] for name in names}
    for index, argument in enumerate(arguments):
        if argument in firsts:
            words = [word for word in arguments[index:] if not word.startswith("-")]
            two = " ".join(words[:2])
            return two if two in names else argument if argument in names else "error"
    return "error"


def is_error(document):
    return isinstance(document, dict) and document.keys() == {"error"}


def describe(record, problem):
    return f'{record["test"]}: orvelcs {" ".join(record["arguments"])}\n  {problem}'


def find_problem(record, validators, met):
    """What is wrong with the document of a run; None where nothing is. Adds the name of the schema to `met`."""
    try:
        document = json.loads(record["output"])
    except ValueError as error:
        return f'not JSON: {error}: {record["output"][:200]!r}'
    name = schema_name(record["arguments"], validators.names)
    met.add("error" if is_error(document) else name)
    for error in validators.find(name).iter_errors(document):
        return f"not a document of {name}: " + "; ".join(f"{e.json_path}: {e.message[:500]}" for e in causes(error))
    return None


def read_records(files):
    """Each document once for the same arguments."""
    records = {}
    for file in files:
        with open(file, encoding="utf-8") as lines:
            for line in lines:
                record = json.loads(line)
                records.setdefault((tuple(record["arguments"]), record["output"]), record)
    return [record for record in records.values() if not {"--help", "-h"} & set(record["arguments"])]


def main(arguments):
    wants_all = arguments[:1] == ["--all"]
    program, *files = arguments[1:] if wants_all else arguments
    validators = Validators(program)
    met = set()
    records = read_records(files)
    problems = []
    for record in records:
        problem = find_problem(record, validators, met)
        if problem:
            problems.append(describe(record, problem))
    if wants_all:
        problems += [f"no document of {name} was checked" for name in validators.names if name not in met]
    for problem in problems:
        print(problem)
    print(f"{len(records)} documents of {len(met)} schemas, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
