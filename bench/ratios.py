#!/usr/bin/env python3
"""Measures the library against the floor, prints the table of ratios and writes it as JSON.

A round is one process that runs every workload by turns of the library and the floor in random order; its ratio is the
library's fastest repetition over the floor's fastest. The figure of a workload is the median of the rounds: whatever
else the machine does makes repetitions slower, never faster.
"""

import argparse
import json
import statistics

from runs import fastest, run

WORKLOADS = {  # name in the program: what it is, and the ratio that is not to be exceeded
    "text": ("parse a message of one Text record", 1.3),
    "poster": ("parse and extract a Smart Poster", 1.3),
    "100_records": ("parse 100 short records", 1.2),
    "64_KiB": ("parse one payload of 64 KiB", 1.1),
    "encode_100": ("encode 100 short records", 1.2),
    "50_chunks": ("parse 50 chunks of 200 bytes", 1.4),
    "handover": ("parse and extract a handover", 1.3),
}
IN_PLACE = {  # the same in place, against whom, and the ratio that is not to be exceeded
    "text": ("read one Text record", "floor", 0.17),
    "poster": ("read a Smart Poster", "floor", 0.12),
    "100_records": ("read 100 short records", "floor", 0.11),
    "64_KiB": ("read one payload of 64 KiB", "floor", 0.02),
    "encode_100": ("write 100 short records", "library", 0.95),
    "50_chunks": ("read 50 chunks of 200 bytes", "floor", 0.70),
    "handover": ("read a handover", "floor", 0.15),
}
ONLY = "^(" + "|".join(WORKLOADS) + ")/"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", help="the directory with the built benchmarks")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--repetitions", type=int, default=15)
    parser.add_argument("--seconds", type=float, default=0.05, help="time of one repetition")
    parser.add_argument("--json", help="file to write the figures to")
    options = parser.parse_args()

    program = f"{options.build}/ndef_bench"
    rounds = [fastest(program, ONLY, options.repetitions, options.seconds) for _ in range(options.rounds)]
    counted = run(f"{options.build}/ndef_bench_blocks", ONLY, "--benchmark_min_time=0")
    blocks = {one["run_name"]: round(one["blocks"]) for one in counted}

    table, in_place_table = [], []
    print(f"{'':<36}{'ratio':>6}{'at most':>9}{'rounds':>14}{'library':>13}{'floor':>10}{'blocks':>8}{'floor':>7}")
    for name, (what, at_most) in WORKLOADS.items():
        library, floor = f"{name}/library", f"{name}/floor"
        ratios = [times[library] / times[floor] for times in rounds]
        row = {
            "workload": what,
            "ratio": statistics.median(ratios),
            "at_most": at_most,
            "rounds": ratios,
            "library_ns": min(times[library] for times in rounds),
            "floor_ns": min(times[floor] for times in rounds),
            "library_blocks": blocks[library],
            "floor_blocks": blocks[floor],
        }
        table.append(row)
        print(
            f"{what:<36}{row['ratio']:>6.2f}{at_most:>9.1f}{min(ratios):>8.2f}..{max(ratios):.2f}"
            f"{row['library_ns']:>10.0f} ns{row['floor_ns']:>7.0f} ns{blocks[library]:>8}{blocks[floor]:>7}"
            + ("  exceeded" if row["ratio"] > at_most else "")
        )
    print(f"\n{'':<36}{'ratio':>6}{'at most':>9}{'rounds':>14}{'in place':>13}{'blocks':>8}")
    for name, (what, against, at_most) in IN_PLACE.items():
        in_place = f"{name}/in_place"
        ratios = [times[in_place] / times[f"{name}/{against}"] for times in rounds]
        row = {
            "workload": f"{what} in place, against the {against}",
            "ratio": statistics.median(ratios),
            "at_most": at_most,
            "rounds": ratios,
            "library_ns": min(times[in_place] for times in rounds),
            "library_blocks": blocks[in_place],
        }
        print(
            f"{what:<36}{row['ratio']:>6.3f}{at_most:>9.2f}{min(ratios):>7.3f}..{max(ratios):.3f}"
            f"{row['library_ns']:>10.1f} ns{blocks[in_place]:>8}" + ("  exceeded" if row["ratio"] > at_most else "")
        )
        in_place_table.append(row)
    if options.json:
        with open(options.json, "w", encoding="utf-8") as file:
            json.dump(table, file, indent=2)


if __name__ == "__main__":
    main()
