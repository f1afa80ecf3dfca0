#!/usr/bin/env python3
"""Writes the seeds of the fuzz targets: seeds.py DIRECTORY VECTORS.json [SAMPLE...]"""
import json
import pathlib
import sys

out = pathlib.Path(sys.argv[1])
vectors = json.loads(pathlib.Path(sys.argv[2]).read_text())
messages = [bytes.fromhex(vector["hex"]) for vector in vectors]


def write(target, seeds):
    directory = out / target
    directory.mkdir(parents=True, exist_ok=True)
    for number, seed in enumerate(seeds):
        (directory / f"{number:03}").write_bytes(seed)


write("record", messages)
write("message", messages)
(out / "done").touch()
