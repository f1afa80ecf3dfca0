#!/usr/bin/env python3
"""Writes the seeds of the fuzz targets: seeds.py DIRECTORY VECTORS.json [SAMPLE...]"""
import base64
import json
import pathlib
import sys

out = pathlib.Path(sys.argv[1])
vectors = json.loads(pathlib.Path(sys.argv[2]).read_text())
messages = [bytes.fromhex(vector["hex"]) for vector in vectors]
documents = []
tags = []
forms = []  # texts and files of tools
for sample in map(pathlib.Path, sys.argv[3:]):
    if sample.name.startswith("every"):
        documents.append(sample.read_bytes())
    elif sample.suffix == ".ndef":
        messages.append(sample.read_bytes())
    elif sample.suffix == ".bin":
        tags.append(sample.read_bytes())
    else:
        forms.append(sample.read_bytes())


def short_payloads(message):
    """The payload of each record up to the first that is not a short one."""
    while len(message) > 3 and message[0] & 0x10:
        name = 3 + (message[0] >> 3 & 1)
        payload = name + message[1] + (message[3] if name == 4 else 0)
        end = payload + message[2]
        if end > len(message):
            return
        yield message[payload:end]
        message = message[end:]


def write(target, seeds):
    directory = out / target
    directory.mkdir(parents=True, exist_ok=True)
    for number, seed in enumerate(seeds):
        (directory / f"{number:03}").write_bytes(seed)


for target in ("record", "message", "editing"):
    write(target, messages)
payloads = sorted({payload for message in messages for payload in short_payloads(message)})
# The first byte is the number of a type, which only the list of types knows: so every payload is read as every type.
write("kinds", [bytes([kind, 3]) + payload for payload in payloads for kind in range(32)])
write("in_place", messages + payloads + tags)
write("json", documents + messages)
write(
    "encoded_input",
    [b"\x00" + message.hex().encode() for message in messages]
    + [b"\x01" + base64.b64encode(message) for message in messages]
    + [b"\x02\x03" + bytes([len(message)]) + message + b"\xfe" for message in messages if len(message) < 255]
    + [way + tag for tag in tags + forms for way in (b"\x02", b"\x04")]
    + [b"\x03" + message for message in messages],
)
(out / "done").touch()
