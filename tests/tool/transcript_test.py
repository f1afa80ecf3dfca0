#!/usr/bin/env python3
"""Runs the shell commands of a transcript and compares what they print: transcript_test.py NDEF SAMPLES TRANSCRIPT

A command follows "$ ", and what it prints follows the command: standard output, then standard error behind "! ", then
an exit status other than 0, as "[1]". A line that ends in "[...]" stands for any line that begins like it. A blank line
ends each, one that is printed is written "~", and "#" begins a remark. The commands run one after another in a copy of
the samples, beside every-kind.json. With UPDATE set in the environment the transcript is written
anew, to be read before it is committed.
"""
import difflib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

ndef, samples, transcript = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
path = f"{ndef.parent}:{os.environ['PATH']}"


def printed_by(command, directory):
    done = subprocess.run(["bash", "-c", command], cwd=directory, env=dict(os.environ, PATH=path, LC_ALL="C.UTF-8"),
                          stdin=subprocess.DEVNULL, capture_output=True)
    errors = ["! " + line for line in done.stderr.decode().splitlines()]
    return [line or "~" for line in done.stdout.decode().splitlines()] + errors + ([f"[{done.returncode}]"] if done.returncode else [])


def meant(line, printed):
    return line if line.endswith("[...]") and printed.startswith(line.removesuffix("[...]")) else printed


def played(block, directory):
    lines = block.splitlines()
    at = next((i + 1 for i, line in enumerate(lines) if line.startswith("$ ")), len(lines))
    if at == len(lines) and not lines[-1].startswith("$ "):
        if not all(line.startswith("#") for line in lines):
            sys.exit(f"{transcript}: no command prints what begins with: {lines[0]}")
        return block
    printed = printed_by(lines[at - 1].removeprefix("$ "), directory)
    expected = lines[at:] + [""] * len(printed)
    return "\n".join(lines[:at] + [meant(*pair) for pair in zip(expected, printed)])


expected = transcript.read_text()
with tempfile.TemporaryDirectory() as directory:
    shutil.copytree(samples, directory, dirs_exist_ok=True)
    shutil.copy(transcript.parents[2] / "data" / "every-kind.json", directory)
    seen = "\n\n".join(played(block, directory) for block in expected.rstrip("\n").split("\n\n")) + "\n"
if os.environ.get("UPDATE"):
    transcript.write_text(seen)
differences = difflib.unified_diff(expected.splitlines(), seen.splitlines(), "expected", "printed", lineterm="")
print("\n".join(differences))
sys.exit(seen != expected)
