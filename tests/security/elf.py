# SPDX-License-Identifier: GPL-3.0-or-later
"""What a program tells the dynamic loader, as readelf prints it."""

import re
import subprocess


def readelf(option, program):
    return subprocess.run(["readelf", "--wide", option, program], check=True, text=True,
                          env={"LC_ALL": "C", "PATH": "/usr/bin:/bin"},
                          stdout=subprocess.PIPE).stdout


def search_path(program):
    """The entries of RPATH and RUNPATH; an empty one means the current folder."""
    values = re.findall(r"\((?:RPATH|RUNPATH)\).*\[(.*)\]", readelf("--dynamic", program))
    return [folder for value in values for folder in value.split(":")]
