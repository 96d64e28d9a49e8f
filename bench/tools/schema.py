#!/usr/bin/env python3
"""Validates a JSON file with a JSON Schema, as an editor does.

usage: schema.py SCHEMA FILE
"""
import json
import pathlib
import sys

import jsonschema

schema, document = (json.loads(pathlib.Path(name).read_text(encoding="utf-8")) for name in sys.argv[1:])
sys.exit(1 if list(jsonschema.Draft202012Validator(schema).iter_errors(document)) else 0)
