#!/usr/bin/env python3
"""schemas.py COMMAND FILE...: the schemas that `rfutils check --schema` prints against the findings of the command.

A well-formed file fits the schema of its kind if and only if the command has neither error nor warning, except for what
no schema can say: rules on several places of a file, and on the bytes of texts."""

import json
import re
import subprocess
import sys

import jsonschema

BEYOND_SCHEMAS = {"id-replaces", "member-repeated", "text-mark-dropped", "text-half-character", "json-encoding"}


def run(*arguments):
    return subprocess.run(arguments, stdout=subprocess.PIPE, check=False).stdout.decode()


def refuse(constant):
    raise ValueError(constant)


def read(name):
    with open(name, "rb") as file:
        try:
            return json.loads(file.read().decode("utf-8-sig"), parse_constant=refuse)
        except (ValueError, RecursionError):
            return None


def main():
    command, files = sys.argv[1], sys.argv[2:]
    counts = {True: 0, False: 0}
    failures = []
    for kind in "catalogue", "setups":
        schema = json.loads(run(command, "check", "--schema", kind))
        jsonschema.Draft202012Validator.check_schema(schema)
        validator = jsonschema.Draft202012Validator(schema)
        for example in schema["examples"]:
            assert validator.is_valid(example)
        for name in files:
            content = read(name)
            if content is None:
                continue
            found = run(command, "check", "--as", kind, name)
            wrong = set(re.findall(r": (?:error|warning): .* \[([a-z-]+)\]$", found, re.MULTILINE))
            if wrong & BEYOND_SCHEMAS or "json-syntax" in wrong:
                continue
            fits = validator.is_valid(content)
            counts[fits] += 1
            if fits != (not wrong):
                failures.append(f"{name} as {kind}: fits {fits}, findings {sorted(wrong)}")
    assert counts[True] > 1 and counts[False] > 10, counts
    assert not failures, "\n".join(failures)


main()
