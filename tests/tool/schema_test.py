#!/usr/bin/env python3
"""Holds what `ndef json` writes against the JSON Schema: schema_test.py NDEF SCHEMA SAMPLES EVERY_KIND."""
import copy
import json
import pathlib
import subprocess
import sys

import jsonschema

ndef, schema_file, samples, every_kind = sys.argv[1:]
schema = json.loads(pathlib.Path(schema_file).read_text())
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)


def as_json(message):
    return json.loads(subprocess.run([ndef, "json"], input=message, stdout=subprocess.PIPE, check=True).stdout)


def refused(message):
    made = subprocess.run([ndef, "make", "json"], input=json.dumps(message).encode(), capture_output=True)
    return made.returncode == 1 and made.stdout == b""


written = pathlib.Path(every_kind).read_text()
validator.validate(json.loads(written))
made = subprocess.run([ndef, "make", "json"], input=written.encode(), stdout=subprocess.PIPE, check=True).stdout
messages = [made] + [file.read_bytes() for file in sorted(pathlib.Path(samples).glob("*.ndef"))]
assert len(messages) > 5, "too few samples"
seen = set()
for message in messages:
    document = as_json(message)
    validator.validate(document)
    seen |= {record["kind"] for record in document["records"]}
kinds = {option["$ref"].rsplit("/", 1)[1] for option in schema["$defs"]["members"]["oneOf"]}
assert seen | {"collision_resolution", "handover_select_error", "alternative_carrier"} == kinds, kinds - seen

# The schema and the command must refuse the same: a member too many, missing or of another type, in any record.
document = as_json(made)
for index, record in enumerate(document["records"]):
    variants = [dict(record, surprise=1)]
    variants += [dict(record, **{name: ["wrong"]}) for name in record]
    for name in record:
        without = {other: value for other, value in record.items() if other != name}
        if name in schema["$defs"][record["kind"]]["required"]:
            variants.append(without)
    for variant in variants:
        broken = copy.deepcopy(document)
        broken["records"][index] = variant
        assert not validator.is_valid(broken), f"the schema accepts {variant}"
        assert refused(broken), f"the command accepts {variant}"
