#!/usr/bin/env python3
"""Measures how the cost grows, prints the time per record and writes all figures as JSON."""

import argparse
import json

from runs import fastest

PER_RECORD = {
    "parse": "parse",
    "join_chunks": "join chunks",
    "encode": "encode",
    "find_by_type": "find by type",
    "extract_poster": "extract a poster",
}
PER_LENGTH = {"payload": "parse", "payload_floor": "floor"}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", help="the directory with the built benchmarks")
    parser.add_argument("--repetitions", type=int, default=15)
    parser.add_argument("--seconds", type=float, default=0.01, help="time of one repetition")
    parser.add_argument("--json", required=True, help="file to write the figures to")
    options = parser.parse_args()

    times = fastest(f"{options.build}/ndef_bench", "^scaling/", options.repetitions, options.seconds)
    figures = {"per_record": {}, "per_length": {}}
    for kind, families in (("per_record", PER_RECORD), ("per_length", PER_LENGTH)):
        for family, what in families.items():
            prefix = f"scaling/{family}/"
            figures[kind][what] = {
                int(name.removeprefix(prefix)): time for name, time in times.items() if name.startswith(prefix)
            }

    counts = sorted({count for family in figures["per_record"].values() for count in family})
    print(f"{'ns per record, of':<20}" + "".join(f"{count:>7}" for count in counts))
    for what, family in figures["per_record"].items():
        cells = (f"{family[count] / count:>7.1f}" if count in family else f"{'':>7}" for count in counts)
        print(f"{what:<20}" + "".join(cells))
    with open(options.json, "w", encoding="utf-8") as file:
        json.dump(figures, file, indent=2)


if __name__ == "__main__":
    main()
