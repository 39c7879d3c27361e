# SPDX-License-Identifier: GPL-3.0-or-later
"""What readelf tells about a program and the libraries that it loads."""

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


def missing_protections(program):
    """What the flags of cmake/VaskelCompiler.cmake and the compiler's defaults should have left."""
    dynamic = readelf("--dynamic", program)
    segments = readelf("--program-headers", program)
    symbols = readelf("--dyn-syms", program)
    stack = re.search(r"GNU_STACK.*", segments)
    found = {
        "position-independent": "DYN (" in readelf("--file-header", program),
        "no executable stack": stack is not None and "RWE" not in stack.group(),
        "relocations read-only": "GNU_RELRO" in segments,
        "all symbols bound before main()": re.search(r"FLAGS_1.*\bNOW\b", dynamic) is not None,
        "stack protector": "__stack_chk_fail" in symbols,
        "fortified functions": re.search(r"__\w+_chk\b", symbols.replace("__stack_chk_fail", ""))
        is not None,
    }
    return [name for name, is_there in found.items() if not is_there]
