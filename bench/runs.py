"""Runs a benchmark program and reads what it measured."""

import json
import subprocess
import sys


def run(program, only, *options):
    command = [program, "--benchmark_format=json", f"--benchmark_filter={only}", *options]
    report = json.loads(subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout)
    runs = [one for one in report["benchmarks"] if one["run_type"] == "iteration"]
    for one in runs:
        if one.get("error_occurred"):
            sys.exit(f"{one['run_name']}: {one['error_message']}")
    return runs


def fastest(program, only, repetitions, seconds):
    """The nanoseconds of the fastest of several repetitions of each benchmark, all run by turns in random order."""
    times = {}
    for one in run(
        program,
        only,
        "--benchmark_enable_random_interleaving=true",
        f"--benchmark_repetitions={repetitions}",
        f"--benchmark_min_time={seconds}",
    ):
        assert one["time_unit"] == "ns"
        times.setdefault(one["run_name"], []).append(one["cpu_time"])
    return {name: min(found) for name, found in times.items()}
