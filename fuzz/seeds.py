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
for sample in map(pathlib.Path, sys.argv[3:]):
    if sample.suffix == ".json":
        documents.append(sample.read_bytes())
    elif sample.suffix == ".ndef":
        messages.append(sample.read_bytes())
    elif sample.suffix == ".bin":
        tags.append(sample.read_bytes())

# In the order of each target's table of types, whose choice of one is twice its number, and 1 for reading.
types = {
    "flat_types": [b"T", b"U", b"Hc", b"ac", b"cr", b"example.com:she"],
    "nested_types": [b"Sp", b"Gc", b"Hr", b"Hs"],
    "bluetooth": [b"application/vnd.bluetooth.ep.oob", b"example.com:bt"],
}


def short_records(message):
    """The type and payload of each record up to the first that is not a short one."""
    while len(message) > 3 and message[0] & 0x10:
        name = 3 + (message[0] >> 3 & 1)
        payload = name + message[1] + (message[3] if name == 4 else 0)
        end = payload + message[2]
        if end > len(message):
            return
        yield message[name : name + message[1]], message[payload:end]
        message = message[end:]


def write(target, seeds):
    directory = out / target
    directory.mkdir(parents=True, exist_ok=True)
    for number, seed in enumerate(seeds):
        (directory / f"{number:03}").write_bytes(seed)


for target in ("record", "message", "editing"):
    write(target, messages)
write("in_place", messages + [payload for message in messages for _, payload in short_records(message)] + tags)
for target, names in types.items():
    flags = b"\x03" if target == "nested_types" else b""
    write(
        target,
        [bytes([2 * number]) for number in range(len(names))]
        + [
            bytes([2 * names.index(name) + 1]) + flags + payload
            for message in messages
            for name, payload in short_records(message)
            if name in names
        ],
    )
write("json", documents + messages)
write(
    "encoded_input",
    [b"\x00" + message.hex().encode() for message in messages]
    + [b"\x01" + base64.b64encode(message) for message in messages]
    + [b"\x02\x03" + bytes([len(message)]) + message + b"\xfe" for message in messages if len(message) < 255]
    + [b"\x02" + tag for tag in tags]
    + [b"\x03" + message for message in messages],
)
(out / "done").touch()
