# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs the benchmark programs and prints one table of their figures.

usage: report.py FOLDER LIMITS [--strict] [--figure NAME]... [--write FILE]

A figure is a pair of benchmarks, "<figure>/measured" and "<figure>/floor". Its limit applies to the
ratio of their medians, or to the measured value if there is no floor. --strict exits with 1 if a
figure exceeds its limit. A figure without a result is always an error, unless it needs a tool that is
not installed. --write also writes the page of the benchmarks, with other launchers where they are
installed; it takes all figures.
"""

import argparse
import collections
import dataclasses
import json
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

import page

TOOLS = {"instructions": "valgrind", "shown_rofi": "rofi"}
OTHER_START, OTHER_MEMORY = "other_start", "other_memory"  # the benchmarks of other launchers
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


@dataclasses.dataclass
class Figure:
    """A measured figure and its limit."""

    name: str
    description: str
    measured: float
    floor: float  # None if there is none
    unit: str
    limit: float

    @property
    def judged(self):
        return self.measured / self.floor if self.floor else self.measured

    @property
    def is_missed(self):
        return self.judged > self.limit


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
            if entry["name"].split("/")[0] in (OTHER_START, OTHER_MEMORY):
                print(f"{entry['name']}: {entry['error_message']}", file=sys.stderr)
                continue
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


def run_all(folder, figures):
    """The results of all programs in a folder."""
    results = {}
    for program in sorted(folder.glob("bench_*")):
        if os.access(program, os.X_OK) and program.is_file():
            print(f"Running {program.name}", file=sys.stderr)
            results |= run(program, figures)
    return results


def figure_of(name, limit, description, results):
    """The figure, or None without a result."""
    values = results.get((name, "measured"))
    if not values:
        return None
    floor = median(results.get((name, "floor")))
    return Figure(name, description, median(values), floor, values[0][1], limit)


def print_table(figures):
    print(f"{'figure':<26}{'measured':>14}{'floor':>14}{'ratio':>8}{'limit':>8}")
    for figure in figures:
        verdict = "MISSED" if figure.is_missed else "ok"
        print(f"{figure.name:<26}{show(figure.measured, figure.unit):>14}"
              f"{show(figure.floor, figure.unit):>14}"
              f"{show(figure.judged if figure.floor else None):>8}{show(figure.limit):>8}  "
              f"{verdict:<8}{figure.description}")


def other_launchers(results):
    """Start and memory of the other launchers by their names, as page.compare() takes them."""
    return {name: (median(results.get((OTHER_START, name))),
                   median(results.get((OTHER_MEMORY, name)))) for name in page.LAUNCHERS}


def write_page(path, machine, figures, results):
    by_name = {figure.name: figure for figure in figures}
    rows = page.compare(other_launchers(results), by_name["start"].measured,
                        by_name["memory"].measured, show)
    path.write_text(page.text_of(machine, figures, rows, show))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("limits", type=pathlib.Path)
    parser.add_argument("--strict", action="store_true")
    parser.add_argument("--figure", action="append", metavar="NAME")
    parser.add_argument("--write", type=pathlib.Path, metavar="FILE")
    arguments = parser.parse_args()
    if arguments.write and arguments.figure:
        parser.error("--write takes all figures")

    machine = page.machine()  # before the run adds to the load
    limits = read_limits(arguments.limits)
    names = arguments.figure or list(limits)
    left_out = [name for name in names if name in TOOLS and not shutil.which(TOOLS[name])]
    names = [name for name in names if name not in left_out]
    others = [OTHER_START, OTHER_MEMORY] if arguments.write else []
    results = run_all(arguments.folder, names + others)

    found = {name: figure_of(name, *limits[name], results) for name in names}
    figures = [figure for figure in found.values() if figure]
    print_table(figures)
    for name in left_out:
        print(f"{name:<26}not measured: {TOOLS[name]} is not installed")
    if missing := [name for name, figure in found.items() if not figure]:
        sys.exit("no result: " + ", ".join(missing))
    if arguments.write:
        write_page(arguments.write, machine, figures, results)
    return 1 if arguments.strict and any(figure.is_missed for figure in figures) else 0


if __name__ == "__main__":
    sys.exit(main())
