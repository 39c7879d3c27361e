# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs the benchmark programs and prints one table of their figures.

usage: report.py FOLDER LIMITS [--strict] [--figure NAME]...

A figure is a pair of benchmarks, "<figure>/measured" and "<figure>/floor". Its limit applies to the
ratio of their medians, or to the measured value if there is no floor. --strict exits with 1 if a
figure exceeds its limit. A figure without a result is always an error, unless it needs a tool that is
not installed.
"""

import argparse
import collections
import json
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

TOOLS = {"instructions": "valgrind"}
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def read_limits(path):
    limits = {}
    for line in path.read_text().splitlines():
        if line and not line.startswith("#"):
            figure, limit, description = line.split(maxsplit=2)
            limits[figure] = (float(limit), description)
    return limits


def run(program, figures):
    """All results of a program, as (figure, side) -> values with their unit."""
    with tempfile.NamedTemporaryFile("r", suffix=".json") as output:
        subprocess.run([program, f"--benchmark_out={output.name}", "--benchmark_out_format=json",
                        "--benchmark_filter=^(" + "|".join(map(re.escape, figures)) + ")/",
                        "--benchmark_repetitions=9", "--benchmark_enable_random_interleaving=true"],
                       check=True, stdout=subprocess.DEVNULL)
        text = output.read()
    results = collections.defaultdict(list)
    for entry in json.loads(text)["benchmarks"] if text else []:
        if entry.get("error_occurred"):
            sys.exit(f"{entry['name']}: {entry['error_message']}")
        if entry["run_type"] == "iteration":
            figure, side = entry["name"].split("/")[:2]
            results[figure, side].append(value_of(entry))
    return results


def value_of(entry):
    if "value" in entry:
        return entry["value"], entry["label"]
    # Wall time counts if another process does the work.
    is_wall = entry["name"].endswith(("/manual_time", "/real_time"))
    clock = "real_time" if is_wall else "cpu_time"
    return entry[clock] * NANOSECONDS[entry["time_unit"]], "ns"


def median(values):
    return statistics.median(value for value, _ in values) if values else None


def show(number, unit=""):
    """Formats at most four digits with a suitable unit."""
    if number is None:
        return "-"
    if unit == "ns":
        unit = max((u for u in NANOSECONDS if NANOSECONDS[u] <= number), key=NANOSECONDS.get,
                   default="ns")
        number /= NANOSECONDS[unit]
    return f"{number:.4g} {unit}".strip()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("limits", type=pathlib.Path)
    parser.add_argument("--strict", action="store_true")
    parser.add_argument("--figure", action="append", metavar="NAME")
    arguments = parser.parse_args()

    limits = read_limits(arguments.limits)
    figures = arguments.figure or list(limits)
    left_out = [name for name in figures if name in TOOLS and not shutil.which(TOOLS[name])]
    figures = [name for name in figures if name not in left_out]
    results = {}
    for program in sorted(arguments.folder.glob("bench_*")):
        if os.access(program, os.X_OK) and program.is_file():
            print(f"Running {program.name}", file=sys.stderr)
            results |= run(program, figures)

    missing, missed = [], 0
    print(f"{'figure':<26}{'measured':>14}{'floor':>14}{'ratio':>8}{'limit':>8}")
    for figure in figures:
        limit, description = limits[figure]
        values = results.get((figure, "measured"))
        if not values:
            missing.append(figure)
            continue
        measured, floor = median(values), median(results.get((figure, "floor")))
        judged = measured / floor if floor else measured
        verdict = "ok" if judged <= limit else "MISSED"
        missed += verdict == "MISSED"
        unit = values[0][1]
        print(f"{figure:<26}{show(measured, unit):>14}{show(floor, unit):>14}"
              f"{show(judged if floor else None):>8}{show(limit):>8}  {verdict:<8}{description}")
    for figure in left_out:
        print(f"{figure:<26}not measured: {TOOLS[figure]} is not installed")
    if missing:
        sys.exit("no result: " + ", ".join(missing))
    return 1 if missed and arguments.strict else 0


if __name__ == "__main__":
    sys.exit(main())
