#!/usr/bin/env python3
"""Holds `ndef json` and `ndef make json` against the schema, the vectors and each other:
json_test.py NDEF SCHEMA SAMPLES DATA"""
import json
import pathlib
import re
import subprocess
import sys

import jsonschema

from json_refusals import refusals

ndef, schema_file, samples, data = (pathlib.Path(argument) for argument in sys.argv[1:])
schema = json.loads(schema_file.read_text())
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)


def as_json(message):
    return json.loads(subprocess.run([ndef, "json", "--raw"], input=message, stdout=subprocess.PIPE, check=True).stdout)


def make(document):
    return subprocess.run([ndef, "make", "json"], input=json.dumps(document, ensure_ascii=False).encode(), capture_output=True)


# What is written keeps to the schema and makes the same bytes, for one record of every kind, samples and vectors.
every_kind = json.loads((data / "every-kind.json").read_text())
validator.validate(every_kind)
one_of_each = make(every_kind).stdout
vectors = json.loads((data / "vectors.json").read_text())
round_trips = [(bytes.fromhex(vector["hex"]), bytes.fromhex(vector.get("encoded", vector["hex"])))
               for vector in vectors if "refused" not in vector]
round_trips += [(one_of_each, one_of_each)]
messages = [file.read_bytes() for file in samples.glob("*.ndef") if file.name != "text-chunked.ndef"]
round_trips += [(message, message) for message in messages]
assert len(round_trips) > 150, "too few messages"
seen = set()
for message, again in round_trips:
    document = as_json(message)
    validator.validate(document)
    seen |= {record["kind"] for record in document["records"]}
    assert make(document).stdout == again, f"{message.hex()} became {make(document).stdout.hex()}"
kinds = {option["$ref"].rsplit("/", 1)[1] for option in schema["$defs"]["members"]["oneOf"]}
assert seen == kinds, kinds ^ seen

# Records and their JSON, both by hand, for what reader and writer could both get wrong. In the bytes, text is quoted.
for row in json.loads((data / "json-forms.json").read_text()):
    message = bytes.fromhex(re.sub("'([^']*)'", lambda quoted: quoted[1].encode().hex(), row["hex"]))
    document = {"records": row["records"]}
    validator.validate(document)
    assert as_json(message) == document, f"{row['about']}: {as_json(message)}"
    assert make(document).stdout == message, f"{row['about']}: {make(document)}"

# Types of record as others write them: what is read, what is refused and therefore generic, and what is shown. Rows of
# one record go into long messages, for the command is started for each.
def joined(messages):
    flags = [(0x80 if i == 0 else 0) | (0x40 if i + 1 == len(messages) else 0) for i in range(len(messages))]
    return b"".join(bytes([flag | message[0] & 0x3F]) + message[1:] for flag, message in zip(flags, messages))


rows = json.loads((data / "record-types.json").read_text())
refusals += [(row["refused"], row["why"]) for row in rows if "refused" in row]
rows = [row for row in rows if "hex" in row]
alone = [row for row in rows if int(row["hex"][:2], 16) & 0xC0 == 0xC0]
batches = [alone[i:i + 200] for i in range(0, len(alone), 200)] + [[row] for row in rows if row not in alone]
for batch in batches:
    message = joined([bytes.fromhex(row["hex"]) for row in batch]) if len(batch) > 1 else bytes.fromhex(batch[0]["hex"])
    document = as_json(message)
    validator.validate(document)
    assert make(document).stdout == message, make(document)
    shown = subprocess.run([ndef, "show", "--raw"], input=message, stdout=subprocess.PIPE, check=True).stdout.decode()
    shown = re.split(r"^Record \d+: .*\n", shown, flags=re.MULTILINE)[1:]
    for i, row in enumerate(batch, batch[0].get("record", 1) - 1):
        record = document["records"][i]
        members = {name: value for name, value in record.items() if name not in ("payload", "other_records")}
        fields = re.findall(r"^  (?!type|flags|payload|uri|0)(.*)$", shown[i], re.MULTILINE)
        if "shows" in row:
            assert sorted(fields) == sorted(row["shows"]), f"{row['hex']}: {shown[i]}"
        elif row["reads_as"]:
            assert members == row["reads_as"], f"{row['hex']}: {record}"
        else:
            assert record["kind"] == "generic" and fields[0].startswith("malformed: byte "), f"{row['hex']}: {shown[i]}"

for record, reason in refusals:
    refused = make({"records": [record]})
    printed = refused.stderr.decode().removeprefix("ndef: standard input: /records/0").rstrip("\n")
    told = printed.startswith(reason[:-3]) if reason.endswith("...") else printed == reason
    assert told and refused.returncode == 1 and refused.stdout == b"", f"{record}: {printed} instead of {reason}"

# The schema that people find is the one that the command writes.
assert subprocess.run([ndef, "json", "--schema"], stdout=subprocess.PIPE, check=True).stdout.decode() == schema_file.read_text()


# The members that a record must have; beside a payload, a schema leaves it to the command what it reads as.
def needed(record):
    kind = schema["$defs"][record["kind"]]
    rules = [kind] if "payload" in record else [kind] + kind.get("then", {}).get("allOf", [])
    return {name for rule in rules for name in rule.get("required", [])}


# The schema and the command must refuse the same: a member too many, missing or of another type, in any record.
for record in as_json(one_of_each)["records"]:
    variants = [dict(record, surprise=1)]
    variants += [dict(record, **{name: ["wrong"]}) for name in record]
    for name in record:
        without = {other: value for other, value in record.items() if other != name}
        if name in needed(record):
            variants.append(without)
    for variant in variants:
        broken = {"records": [variant]}
        assert not validator.is_valid(broken), f"the schema accepts {variant}"
        refused = make(broken)
        assert refused.returncode == 1 and refused.stdout == b"", f"the command accepts {variant}"
