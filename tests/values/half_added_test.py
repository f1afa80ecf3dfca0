#!/usr/bin/env python3
"""A type of record that lacks something must not compile, and the first error must name what and of which type:
half_added_test.py COMPILER INCLUDE_DIRECTORY..."""
import concurrent.futures
import pathlib
import re
import subprocess
import sys

compiler, *directories = sys.argv[1:]
source = pathlib.Path(__file__).with_name("half_added.cpp")
members = re.findall(r"WITHOUT_(\w+)$", source.read_text(), re.M)
assert len(members) == 9, members


def errors_without(member):
    compiled = subprocess.run(
        [compiler, "-std=c++20", "-fsyntax-only", "-fno-diagnostics-color", f"-DWITHOUT_{member}", source]
        + [f"-I{directory}" for directory in directories], capture_output=True, text=True)
    return [line for line in compiled.stderr.splitlines() if "error:" in line]


assert errors_without("nothing") == []
with concurrent.futures.ThreadPoolExecutor(2) as pool:
    for member, errors in zip(members, pool.map(errors_without, members)):
        assert errors, f"without {member} it compiles"
        assert re.search(rf"\b{member}\b", errors[0]) and "Kind<Half>" in errors[0], f"{member}: {errors[0]}"
