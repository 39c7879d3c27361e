# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks what scripts/bench writes to docs/BENCHMARKS.md."""

import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "bench"))

import page  # noqa: E402
import report  # noqa: E402


def rows_below(heading, text):
    """The cells of the table in this section, without its header."""
    section = text.partition(f"\n## {heading}\n")[2].partition("\n## ")[0]
    lines = [line for line in section.splitlines() if line.startswith("|")]
    return [line.strip("| ").split(" | ") for line in lines[2:]]


def figure(name, measured, floor=None, limit=1.0):
    return report.Figure(name, f"what {name} is", measured, floor, "ns", limit)


def comparison(others):
    return list(page.compare(others, own_start=100e6, own_memory=20, show=report.show))


class Figures(unittest.TestCase):
    def test_ratio_is_to_the_floor(self):
        found = figure("start", 300, 200, limit=1.4)
        self.assertEqual(found.judged, 1.5)
        self.assertTrue(found.is_missed)

    def test_value_counts_without_a_floor(self):
        self.assertFalse(figure("idle", 0, limit=0).is_missed)
        self.assertTrue(figure("idle", 1, limit=0).is_missed)

    def test_median_of_all_results(self):
        results = {("start", "measured"): [(9, "ns"), (1, "ns"), (5, "ns")],
                   ("start", "floor"): [(2, "ns")]}
        found = report.figure_of("start", 3, "the start", results)
        self.assertEqual((found.measured, found.floor, found.judged), (5, 2, 2.5))
        self.assertIsNone(report.figure_of("memory", 3, "the memory", results))


class OtherLaunchers(unittest.TestCase):
    def test_ratios_are_to_this_program(self):
        rows = {row[0]: row for row in comparison({"rofi": (250e6, 30)})}
        self.assertEqual(rows["Vaskel"][2:], ["100 ms", "1.00", "20 MiB", "1.00"])
        self.assertEqual(rows["rofi"][2:], ["250 ms", "2.50", "30 MiB", "1.50"])

    def test_one_that_was_not_measured_has_no_figures(self):
        for row in comparison({name: (None, None) for name in page.LAUNCHERS})[1:]:
            self.assertEqual(row[2:], ["-"] * 4)
            self.assertIn(row[1], ("not installed", "not measured"))

    def test_all_are_measured_by_the_benchmark(self):
        source = (ROOT / "bench/bench_Launchers.cpp").read_text()
        self.assertEqual(re.findall(r'^    \{"([\w-]+)", \{', source, re.MULTILINE),
                         list(page.LAUNCHERS))


class Page(unittest.TestCase):
    def test_has_what_was_measured(self):
        text = page.text_of([("Cores", "2")], [figure("start", 3e6, 2e6, 1.3), figure("idle", 4e3)],
                            comparison({}), report.show)
        self.assertEqual(rows_below("Machine", text), [["Cores", "2"]])
        self.assertEqual(rows_below("Figures", text),
                         [["`start`", "what start is", "3 ms", "2 ms", "1.5", "1.3"],
                          ["`idle`", "what idle is", "4 us", "-", "-", "1"]])
        self.assertEqual(rows_below("Other launchers", text), comparison({}))

    def test_tells_the_machine(self):
        self.assertTrue(all(value for _, value in page.machine()))


if __name__ == "__main__":
    unittest.main(verbosity=2)
