#!/usr/bin/env python3
"""sarif.py COMMAND FOLDER: the log that `rfutils check --format sarif` writes of files against the part of SARIF 2.1.0
that it uses, which SCHEMA below writes down, and against what --format json says of them."""

import json
import pathlib
import subprocess
import sys

import jsonschema

TEXT = {
    "type": "object",
    "properties": {"text": {"type": "string", "minLength": 1}},
    "required": ["text"],
    "additionalProperties": False,
}
LEVEL = {"enum": ["none", "note", "warning", "error"]}
SCHEMA = {
    "$schema": "https://json-schema.org/draft/2020-12/schema",
    "type": "object",
    "properties": {
        "$schema": {"type": "string", "format": "uri"},
        "version": {"const": "2.1.0"},
        "runs": {"type": "array", "minItems": 1, "maxItems": 1, "items": {"$ref": "#/$defs/run"}},
    },
    "required": ["version", "runs"],
    "additionalProperties": False,
    "$defs": {
        "run": {
            "type": "object",
            "properties": {
                "tool": {
                    "type": "object",
                    "properties": {"driver": {"$ref": "#/$defs/driver"}},
                    "required": ["driver"],
                    "additionalProperties": False,
                },
                "columnKind": {"enum": ["utf16CodeUnits", "unicodeCodePoints"]},
                "results": {"type": "array", "items": {"$ref": "#/$defs/result"}},
            },
            "required": ["tool", "columnKind", "results"],
            "additionalProperties": False,
        },
        "driver": {
            "type": "object",
            "properties": {
                "name": {"type": "string", "minLength": 1},
                "rules": {"type": "array", "uniqueItems": True, "items": {"$ref": "#/$defs/rule"}},
            },
            "required": ["name", "rules"],
            "additionalProperties": False,
        },
        "rule": {
            "type": "object",
            "properties": {
                "id": {"type": "string", "minLength": 1},
                "shortDescription": TEXT,
                "fullDescription": TEXT,
                "help": TEXT,
                "defaultConfiguration": {
                    "type": "object",
                    "properties": {"level": LEVEL},
                    "required": ["level"],
                    "additionalProperties": False,
                },
            },
            "required": ["id", "shortDescription", "fullDescription", "help", "defaultConfiguration"],
            "additionalProperties": False,
        },
        "result": {
            "type": "object",
            "properties": {
                "ruleId": {"type": "string", "minLength": 1},
                "ruleIndex": {"type": "integer", "minimum": 0},
                "level": LEVEL,
                "message": TEXT,
                "locations": {"type": "array", "minItems": 1, "maxItems": 1, "items": {"$ref": "#/$defs/location"}},
            },
            "required": ["ruleId", "ruleIndex", "level", "message", "locations"],
            "additionalProperties": False,
        },
        "location": {
            "type": "object",
            "properties": {
                "physicalLocation": {
                    "type": "object",
                    "properties": {
                        "artifactLocation": {
                            "type": "object",
                            "properties": {"uri": {"type": "string", "pattern": "^[!-~]+$"}},
                            "required": ["uri"],
                            "additionalProperties": False,
                        },
                        "region": {
                            "type": "object",
                            "properties": {
                                "startLine": {"type": "integer", "minimum": 1},
                                "startColumn": {"type": "integer", "minimum": 1},
                            },
                            "required": ["startLine", "startColumn"],
                            "additionalProperties": False,
                        },
                    },
                    "required": ["artifactLocation", "region"],
                    "additionalProperties": False,
                }
            },
            "required": ["physicalLocation"],
            "additionalProperties": False,
        },
    },
}

FILES = {
    "a b.json": '{"é": [{"label": "µµ", "ID": "x", "enum": 1, "dispSeq": 1}]}\n',
    "empty catalogue.json": "",
    "good.json": '{"a": [{"label": "L", "id": "x", "enum": 1, "dispSeq": 1}]}\n',
    "map.asc": "NCOLS 2\n",
}


def main():
    command, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for name, text in FILES.items():
        (folder / name).write_text(text, encoding="utf-8")

    def output(form):
        arguments = [command, "check", "--format", form, *FILES]
        return subprocess.run(arguments, cwd=folder, stdout=subprocess.PIPE, check=False).stdout.decode()

    log = json.loads(output("sarif"))
    jsonschema.Draft202012Validator.check_schema(SCHEMA)
    jsonschema.validate(log, SCHEMA, jsonschema.Draft202012Validator)
    run = log["runs"][0]
    rules = run["tool"]["driver"]["rules"]
    listed = subprocess.run([command, "check", "--rules", "--format", "json"], stdout=subprocess.PIPE, check=True)
    assert [rule["id"] for rule in rules] == [rule["rule"] for rule in json.loads(listed.stdout)], "not every rule"

    findings = json.loads(output("json"))
    assert len(findings) == len(run["results"]) > 5
    for finding, result in zip(findings, run["results"]):
        assert result["ruleId"] == rules[result["ruleIndex"]]["id"] == finding["rule"], result
        assert result["level"] == finding["severity"] and result["message"]["text"] == finding["message"], result
        place = result["locations"][0]["physicalLocation"]
        assert place["artifactLocation"]["uri"] == finding["file"].replace(" ", "%20"), place
        assert place["region"]["startLine"] == (finding["line"] or 1), place
    misspelt = next(result for result in run["results"] if result["ruleId"] == "member-misspelt")
    column = misspelt["locations"][0]["physicalLocation"]["region"]["startColumn"]
    assert FILES["a b.json"][column - 1 :].startswith('"ID"'), column


main()
