#!/usr/bin/env python3
"""Draws the figures of ratios.py and scaling.py with gnuplot: plot.py RATIOS.json SCALING.json OUT.svg"""

import json
import pathlib
import subprocess
import sys


def load(path):
    return json.loads(pathlib.Path(path).read_text(encoding="utf-8"))


def data_block(name, lines):
    return f"${name} << END\n" + "\n".join(lines) + "\nEND\n"


def series(families, value):
    """One block of lines for each family; two empty lines divide them, its name leads each."""
    for name, family in families.items():
        yield f'"{name}"'
        for size, time in sorted((int(size), time) for size, time in family.items()):
            yield f"{size} {value(size, time)}"
        yield "\n"


def main():
    ratios, scaling, target = sys.argv[1:]
    figures = load(scaling)
    rows = [f'"{row["workload"]}" {row["ratio"]} {row["at_most"]}' for row in load(ratios)]
    script = (
        data_block("ratios", rows)
        + data_block("per_record", series(figures["per_record"], lambda count, time: time / count))
        + data_block("per_length", series(figures["per_length"], lambda length, time: time))
        + f"families = {len(figures['per_record'])}\n"
        + f"set output '{target}'\n"
        + f"load '{pathlib.Path(__file__).with_name('plot.gp')}'\n"
    )
    subprocess.run(["gnuplot"], input=script, text=True, check=True)


if __name__ == "__main__":
    main()
