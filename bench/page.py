# SPDX-License-Identifier: GPL-3.0-or-later
"""The page docs/BENCHMARKS.md, from the figures of a run and the machine that ran it."""

import datetime
import os
import pathlib
import platform
import re
import shutil
import subprocess

# The programs of the other launchers; their Debian packages have the same names.
LAUNCHERS = ("rofi", "synapse", "xfce4-appfinder")

BUSY = """\
**The machine was busy with other work during this run, so the times and their ratios say little.**"""

METHOD = """\
`scripts/bench` builds Vaskel with optimisation and measures it on a virtual X screen without a window
manager, in a home of its own with 500 desktop entries that are as large as real ones.

A figure is a pair: what Vaskel takes, and the floor, which is what the least program takes that does
the same visible work: a bare window, a bare list with the same style sheet, or the same work without
Vaskel's part in it. Both are measured in turn in the same run, and the table has their medians: of 31
starts, of 1 to 5 runs for the other figures of the whole program, of 9 repetitions for all else. The
ratio depends much less on the machine than the two values, and each ratio has a limit in
`bench/limits`. A figure without a floor has a limit for the value itself.

"Start" is the time from the new process to its first painted window, with the files of the program in
the memory of the system; the figures `shown_list` and `shown_rofi` end when the window is shown.
"Memory" is the process's own and its share of common pages (PSS), two seconds after that."""

OTHERS = """\
The same measurements, of other launchers as they come from the system: each is started in the same home
with the same 500 programs, by `rofi -normal-window -show drun -show-icons`, `synapse` and
`xfce4-appfinder --disable-server`. The ratios are those of the other launcher to Vaskel: above 1, Vaskel
needs less.

They do not show the same: Synapse shows an empty box, the others list the programs with their icons. Rofi and xfce4-appfinder start at each use; Vaskel and Synapse keep
running, so what a user of Vaskel waits for is the figure `hotkey_painted`."""


def first_match(text, pattern):
    found = re.search(pattern, text, re.MULTILINE)
    return found[1] if found else "unknown"


def read(path):
    path = pathlib.Path(path)
    return path.read_text() if path.exists() else ""


def output_of(*command):
    """What a command prints, or an empty string if it fails."""
    try:
        return subprocess.run(command, text=True, stdout=subprocess.PIPE, check=True,
                              stderr=subprocess.DEVNULL, timeout=10).stdout.strip()
    except (OSError, subprocess.SubprocessError):
        return ""


def machine():
    """What the figures depend on, as pairs of name and value."""
    kibibytes = first_match(read("/proc/meminfo"), r"^MemTotal: +(\d+)")
    memory = f"{int(kibibytes) / 2**20:.1f} GiB" if kibibytes.isdigit() else kibibytes
    return [
        ("Date", datetime.date.today().isoformat()),
        ("Processor", first_match(read("/proc/cpuinfo"), r"^model name\s*: (.+)$")),
        ("Cores", str(len(os.sched_getaffinity(0)))),
        ("Memory", memory),
        ("Load before the run", f"{os.getloadavg()[0]:.2f}"),
        ("System", first_match(read("/etc/os-release"), r'^PRETTY_NAME="(.+)"')),
        ("Kernel", platform.release()),
        ("Qt", output_of("qmake6", "-query", "QT_VERSION") or "unknown"),
        ("Compiler", output_of("c++", "--version").partition("\n")[0] or "unknown"),
    ]


def notes(machine_rows):
    """What to say about the machine below its table, in a list."""
    values = dict(machine_rows)
    is_busy = float(values.get("Load before the run", 0)) > float(values.get("Cores", 1)) / 2
    return [BUSY] if is_busy else []


def version_of(launcher):
    return output_of("dpkg-query", "--show", "--showformat=${Version}", launcher) or "unknown"


def table(header, rows):
    """A table in Markdown."""
    lines = [header, ["---"] * len(header), *rows]
    return "\n".join("| " + " | ".join(cells) + " |" for cells in lines)


def ratio(value, base):
    return f"{value / base:.2f}" if value and base else "-"


def compare(others, own_start, own_memory, show):
    """The rows of the other launchers. others: name -> (start in ns, memory in MiB)."""
    yield ["Vaskel", "this one", show(own_start, "ns"), "1.00", show(own_memory, "MiB"), "1.00"]
    for name in LAUNCHERS:
        start, memory = others.get(name, (None, None))
        if start and memory:
            yield [name, version_of(name), show(start, "ns"), ratio(start, own_start),
                   show(memory, "MiB"), ratio(memory, own_memory)]
        else:
            reason = "not measured" if shutil.which(name) else "not installed"
            yield [name, reason, "-", "-", "-", "-"]


def text_of(machine_rows, figures, other_rows, show):
    """The whole page."""
    figure_rows = [[f"`{figure.name}`", figure.description, show(figure.measured, figure.unit),
                    show(figure.floor, figure.unit),
                    show(figure.judged if figure.floor else None), show(figure.limit)]
                   for figure in figures]
    return "\n\n".join([
        "<!-- SPDX-License-Identifier: GPL-3.0-or-later -->",
        "# Benchmarks",
        "Written by `scripts/bench --write docs/BENCHMARKS.md`; run it to get the figures of your "
        "machine.",
        "## Machine", table(["What", "Value"], machine_rows), *notes(machine_rows),
        "## Method", METHOD,
        "## Figures", table(["Figure", "What is measured; what the floor is", "Vaskel", "Floor",
                             "Ratio", "Limit"], figure_rows),
        "## Other launchers", OTHERS,
        table(["Launcher", "Version", "Start", "Ratio", "Memory", "Ratio"], other_rows),
    ]) + "\n"
