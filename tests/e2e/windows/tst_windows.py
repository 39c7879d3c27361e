# SPDX-License-Identifier: GPL-3.0-or-later
"""Vaskel.exe under wine: typed to, looked at, launched from, and brought up again.

usage: tst_windows.py with-wine PREFIX Vaskel.exe makelink.exe recorder.exe PICTURES
"""

import os
import subprocess
import sys
import tempfile
import time

with_wine, prefix, program, makelink, recorder, pictures = sys.argv[1:]
patience = 60


def wine(*arguments, desktop=False):
    options = ["--desktop"] if desktop else []
    return [with_wine, "--prefix", prefix, *options, *arguments]


def wait_for(what, condition):
    end = time.monotonic() + patience
    while not condition():
        if time.monotonic() > end:
            look("failure")
            sys.exit(f"not within {patience} s: {what}")
        time.sleep(0.1)


def xdotool(*arguments):
    return subprocess.run(["xdotool", *arguments], capture_output=True, text=True, check=False).stdout


def geometry_of(window):
    # xdotool counts the place of a window in wine's desktop twice.
    lines = subprocess.run(["xwininfo", "-id", window], capture_output=True, text=True,
                           check=False).stdout.splitlines()
    values = dict(line.strip().rsplit(":", 1) for line in lines if ":" in line)
    names = {"X": "Absolute upper-left X", "Y": "Absolute upper-left Y", "WIDTH": "Width",
             "HEIGHT": "Height"}
    return {key: int(values.get(name, 0)) for key, name in names.items()}


def geometry():
    """Where the launcher's window is; nothing if it is hidden. The floating icon is called alike."""
    found = xdotool("search", "--onlyvisible", "--name", "^Vaskel$").split()
    places = [geometry_of(window) for window in found]
    return next((place for place in places if place["WIDTH"] >= 720), None)


def is_shown():
    return geometry() is not None


def height():
    place = geometry()
    return place["HEIGHT"] if place else 0


def look(name):
    os.makedirs(pictures, exist_ok=True)
    subprocess.run(["import", "-window", "root", f"{pictures}/{name}.png"], check=False)


def click_into_the_box():
    place = geometry()
    xdotool("mousemove", str(place["X"] + 200), str(place["Y"] + 64), "click", "1")


def type_text(text):
    xdotool("key", "ctrl+a")
    xdotool("type", "--delay", "30", text)


def check(what, condition):
    print(f"{'PASS' if condition else 'FAIL'}: {what}", flush=True)
    if not condition:
        look("failure")
        sys.exit(1)


folder = tempfile.mkdtemp(dir=prefix)
started = f"{folder}/started"
report = r"C:\files\yearly report.txt"
environment = dict(os.environ, VASKEL_TEST_FILES=report)
subprocess.run(wine(makelink, "VaskelProbe计算器", "Z:" + recorder, "Z:" + started), check=True)

vaskel = subprocess.Popen(wine(program, desktop=True), env=environment)
try:
    wait_for("the window at the start", is_shown)
    click_into_the_box()
    time.sleep(1)
    look("start")
    full = height()

    type_text("vaskelprobe")
    wait_for("one row for the program", lambda: 0 < height() < full)
    look("program")
    xdotool("key", "Return")
    wait_for("the program to be started", lambda: os.path.exists(started))
    wait_for("the window to hide", lambda: not is_shown())
    check("Enter starts the program and hides the window", True)

    xdotool("key", "ctrl+alt+space")
    wait_for("the window after the hotkey", is_shown)
    xdotool("key", "ctrl+alt+space")
    wait_for("the window to hide by the hotkey", lambda: not is_shown())
    check("the hotkey shows and hides the window", True)

    again = subprocess.run(wine(program, desktop=True), env=environment, timeout=patience, check=False)
    check("a second start ends at once", again.returncode == 0)
    wait_for("the window after the second start", is_shown)
    check("a second start brings the window up", vaskel.poll() is None)

    click_into_the_box()
    type_text("jsq")
    time.sleep(1)
    look("pinyin")
    type_text("calc 6*7")
    time.sleep(1)
    look("calculator")
    xdotool("key", "ctrl+a", "BackSpace", "BackSpace", "BackSpace", "BackSpace", "BackSpace", "BackSpace")
    xdotool("type", "--delay", "30", "file report")
    time.sleep(1)
    look("file")
    place = geometry()
    close = (place["X"] + place["WIDTH"] - 22, place["Y"] + 18)
    xdotool("mousemove", *map(str, close), "click", "1")
    wait_for("the window to hide by its button", lambda: not is_shown())
    check("the close button hides the window and ends nothing", vaskel.poll() is None)
finally:
    vaskel.terminate()
    vaskel.wait()
