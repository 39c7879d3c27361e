"""Converts "5 miles in km" with qalc. Money is left out: its rates would have to be fetched."""
import json
import re
import subprocess
import sys
import unicodedata

NUMBER = r"[-+]?\d*\.?\d+(?:[eE][-+]?\d+)?"
NAMES = {"C": "oC", "F": "oF"}  # otherwise coulomb and farad
# In other languages, qalc may take a point for a thousands separator.
QALC = ["env", "LC_ALL=C.UTF-8", "qalc", "-t", "-defaults", "-nocurrencies", "-nofunctions",
        "-novariables", "-set", "limit implicit multiplication on", "-file", "/dev/stdin"]


def calculate(*lines):
    """The results of qalc, one for each line."""
    return subprocess.run(QALC, input="\n".join(lines) + "\n", encoding="utf-8",
                          stdout=subprocess.PIPE, check=True).stdout.splitlines()


def convert(text):
    parts = re.fullmatch(rf"({NUMBER})\s*°?([^\s\d.,].*)\s+(?:in|to)\s+°?(.+)", text)
    if not parts:
        return {"title": "Type something like: 5 miles in km", "valid": False}
    number, source, target = parts.groups()
    source, target = NAMES.get(source, source), NAMES.get(target, target)
    # A minus keeps qalc from answering with several units.
    result, *ones = calculate(f"{number} {source} to -{target}", f"1 {source} to -{source}",
                              f"1 {target} to -{target}")
    if any(unicodedata.category(sign) == "Sc" for sign in text + result):
        return {"title": "Money is left out", "valid": False}
    for unit, one in zip((source, target), ones):
        if " " not in one:
            return {"title": f"There is no unit {unit}", "valid": False}
    if result.split(" ", 1)[-1] != ones[1].split(" ", 1)[-1]:
        return {"title": f"{source} cannot be converted to {target}", "valid": False}
    return {"title": result, "subtitle": f"{text} - Press Enter to copy", "arg": result}


print(json.dumps({"items": [convert(sys.argv[1])]}))
