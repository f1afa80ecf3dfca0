#!/usr/bin/env python3
"""Measures the library against the floor, prints the table of ratios and writes it as JSON.

A round is one process that runs every workload by turns of the library and the floor in random order; its ratio is the
library's fastest repetition over the floor's fastest. The figure of a workload is the median of the rounds: whatever
else the machine does makes repetitions slower, never faster.
"""

import argparse
import json
import statistics
import subprocess
import sys

WORKLOADS = {  # name in the program: what it is, and the ratio that is not to be exceeded
    "text": ("parse a message of one Text record", 1.3),
    "poster": ("parse and extract a Smart Poster", 1.3),
    "100_records": ("parse 100 short records", 1.2),
    "64_KiB": ("parse one payload of 64 KiB", 1.1),
    "encode_100": ("encode 100 short records", 1.2),
    "50_chunks": ("parse 50 chunks of 200 bytes", 1.4),
    "handover": ("parse and extract a handover", 1.3),
}
FILTER = "^(" + "|".join(WORKLOADS) + ")/"


def run(program, *options):
    command = [program, "--benchmark_format=json", f"--benchmark_filter={FILTER}", *options]
    report = json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)
    return [one for one in report["benchmarks"] if one["run_type"] == "iteration"]


def fastest(runs):
    times = {}
    for one in runs:
        if one.get("error_occurred"):
            sys.exit(f"{one['name']}: {one['error_message']}")
        assert one["time_unit"] == "ns"
        times.setdefault(one["run_name"], []).append(one["cpu_time"])
    return {name: min(found) for name, found in times.items()}


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", help="the directory with the built benchmarks")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--repetitions", type=int, default=15)
    parser.add_argument("--seconds", type=float, default=0.05, help="time of one repetition")
    parser.add_argument("--json", help="file to write the figures to")
    options = parser.parse_args()

    rounds = [
        fastest(
            run(
                f"{options.build}/ndef_bench",
                "--benchmark_enable_random_interleaving=true",
                f"--benchmark_repetitions={options.repetitions}",
                f"--benchmark_min_time={options.seconds}",
            )
        )
        for _ in range(options.rounds)
    ]
    blocks = {
        one["run_name"]: round(one["blocks"])
        for one in run(f"{options.build}/ndef_bench_blocks", "--benchmark_min_time=0")
    }

    table = []
    print(f"{'workload':<38}{'ratio':>7}{'at most':>9}{'rounds':>15}{'library':>12}{'floor':>12}{'blocks':>8}{'floor':>7}")
    for name, (what, limit) in WORKLOADS.items():
        library, floor = f"{name}/library", f"{name}/floor"
        ratios = [times[library] / times[floor] for times in rounds]
        row = {
            "workload": name,
            "ratio": statistics.median(ratios),
            "at_most": limit,
            "rounds": ratios,
            "library_ns": min(times[library] for times in rounds),
            "floor_ns": min(times[floor] for times in rounds),
            "library_blocks": blocks[library],
            "floor_blocks": blocks[floor],
        }
        table.append(row)
        print(
            f"{what:<38}{row['ratio']:>7.2f}{limit:>9.1f}{min(ratios):>9.2f}..{max(ratios):.2f}"
            f"{row['library_ns']:>9.0f} ns{row['floor_ns']:>9.0f} ns{row['library_blocks']:>8}{row['floor_blocks']:>7}"
            + (" over" if row["ratio"] > limit else "")
        )
    if options.json:
        with open(options.json, "w", encoding="utf-8") as file:
            json.dump(table, file, indent=2)


if __name__ == "__main__":
    main()
