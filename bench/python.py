#!/usr/bin/env python3
"""Measures the module for Python against the floor of the owning parse: parses, then touches every typed field."""

import argparse
import operator
import os
import pathlib
import statistics
import subprocess
import timeit

import nfc_ndef
from runs import fastest

AT_MOST = {"text": 30, "poster": 15, "100_records": 18, "64_KiB": 2, "encode_100": 80, "50_chunks": 6, "handover": 25}


def fields_of():
    """For each class of values a function that gets all members of one."""
    getters = {}
    for name, _, fields, *_ in nfc_ndef._core._describe_classes():
        names = [field for field, *_ in fields]
        getter = operator.attrgetter(*names)
        getters[getattr(nfc_ndef, name)] = getter if len(names) > 1 else lambda value, get=getter: (get(value),)
    return getters


def workloads(messages):
    fields = fields_of()
    record_class = nfc_ndef.Record

    def touch(records):
        for record in records:
            content = record.content
            if content is None:
                record.type, record.payload
                continue
            for value in fields[type(content)](content):
                if type(value) is tuple:
                    touch_all(value)
                elif type(value) is record_class:
                    touch((value,))

    def touch_all(values):
        for value in values:
            if type(value) is record_class:
                touch((value,))
            elif type(value) in fields:
                fields[type(value)](value)

    def reading(message):
        return lambda: touch(nfc_ndef.parse(message))

    runs = {name: reading(message) for name, message in messages.items()}
    records = list(nfc_ndef.parse(messages["100_records"]))
    runs["encode_100"] = lambda: nfc_ndef.encode(records)
    return runs


def nanoseconds(run, repetitions, seconds):
    timer = timeit.Timer(run)
    count = max(1, int(seconds / max(timer.timeit(3) / 3, 1e-9)))
    return min(timer.repeat(repetitions, count)) / count * 1e9


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path, help="the directory with the built benchmarks")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--repetitions", type=int, default=15)
    parser.add_argument("--seconds", type=float, default=0.02, help="time of one repetition")
    options = parser.parse_args()
    build = options.build.resolve()

    made = build / "messages"
    made.mkdir(exist_ok=True)
    subprocess.run([build / "ndef_bench_messages"], check=True, cwd=made)
    runs = workloads({path.stem: path.read_bytes() for path in made.glob("*.ndef")})
    ratios = {name: [] for name in AT_MOST}
    times = {}
    for _ in range(options.rounds):
        floors = fastest(os.fspath(build / "ndef_bench"), "/floor$", options.repetitions, options.seconds)
        for name, found in ratios.items():
            times[name] = nanoseconds(runs[name], options.repetitions, options.seconds)
            found.append(times[name] / floors[f"{name}/floor"])
    print(f"{'':<14}{'ratio':>7}{'at most':>9}{'rounds':>15}{'Python':>13}")
    for name, found in ratios.items():
        ratio = statistics.median(found)
        print(
            f"{name:<14}{ratio:>7.1f}{AT_MOST[name]:>9}{min(found):>8.1f}..{max(found):<5.1f}{times[name]:>10.0f} ns"
            + ("  exceeded" if ratio > AT_MOST[name] else "")
        )


if __name__ == "__main__":
    main()
