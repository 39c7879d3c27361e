# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: monkey.py [--actions N] [--seed N] [--warm-up N] [--unlimited] PROGRAM

Sends random keys, clicks, drags, hotkeys, changes of settings and hides to the program. Fails if the
program ends, logs a warning or lets the user wait, or if it has gained memory, descriptors or
resources of the X server since the warm-up. The same seed sends the same actions again. --unlimited
is for a build with sanitizers, whose memory and times say nothing about the program.
"""

import argparse
import collections
import pathlib
import random
import re
import signal
import sys
import time

from program import Harmless, Program
from screen import Screen

from desktop import Desktop, wait_until

MEMORY_LIMIT = 2 << 20  # bytes
# If a choice closes a list, Qt keeps its window until the list is closed in another way.
COMBO_BOXES = 3
RESOURCES_OF_A_WINDOW = ("WINDOW", "INPUTCLIENT", "SyncCounter")
# What may grow up to these numbers. Qt keeps each cursor from its first use on: two for texts
# and links, two to resize, four to drag. The settings may give a hotkey to the window and to each of
# nine commands, with four grabs each, for the keys that lock others.
MOST_RESOURCES = {"CURSOR": 8, "PASSIVE GRAB": 40}
# Qt and GIO keep a file from here open from its first use on.
SHARED_FILES = "/usr/share/"
EVENT_DESCRIPTOR = "anon_inode:[eventfd]"
STRETCH_LIMIT = 50  # milliseconds of the thread that handles the events
PROGRESS = 1_000  # actions from line to line
WIDTH, HEIGHT = 1280, 1024
SIZE = f"{WIDTH}x{HEIGHT}"
# A line of the log is a note if it is a warning, or if it was printed by something else.
NOTE = re.compile(r"^(?!\[20\d\d-)|\] \[(warning|error|critical)\] ")
# Qt prints this if a window is shown again before the X server has told that it is hidden. No
# program can wait for that; it changes nothing for a window without a state such as maximised.
SHOWN_AGAIN = "setNetWmStateOnUnmappedWindow() called on mapped window"

HOTKEY = "ctrl+alt+space"  # the default
# Points of the window, on the pages of the preferences.
FIRST_ROW = (300, 150)
SAVE = (593, 422)
HOTKEY_FIELD = (400, 219)
FILTER = (109, 253)  # of the tasks
CONTROLS = {
    "set": ((447, 317), (447, 397)),
    "plugin": ((188, 177), (228, 214), (338, 214), (414, 272), (414, 342)),
    "user": ((188, 209), (188, 237), (188, 265), (188, 293), (188, 321)),
}
COMMAND_HOTKEYS = {"calc": "Ctrl+Alt+C", "todo": "Ctrl+Alt+T", "set": "Ctrl+Alt+P"}
LETTERS = "abcdefghijklmnopqrstuvwxyz0123456789 .,;:-_+*/()[]{}<>|&%$#@!?\"'\\=~^`"
EDITING = ("BackSpace", "BackSpace", "BackSpace", "Delete", "Left", "Right", "Home", "End",
           "shift+Home", "shift+End", "ctrl+a", "ctrl+c", "ctrl+x", "ctrl+v", "ctrl+z",
           "ctrl+shift+z", "ctrl+Left", "ctrl+BackSpace")
MOVING = ("Down", "Down", "Down", "Up", "Up", "Page_Down", "Page_Up", "Tab", "Tab", "shift+Tab",
          "ctrl+Home", "ctrl+End", "ctrl+Tab")
ACTING = ("Return", "Return", "Return", "ctrl+Return", "ctrl+shift+c", "alt+1", "alt+2", "alt+9",
          "space", "F2", "F5", "Insert", "Menu", "shift+F10", "ctrl+p", "ctrl+o", "ctrl+n", "ctrl+d",
          "Delete", "alt+Down", "alt+Up")
WORDS = ("note", "term", "zhong", "wjgl", "e", "1", "calc 1+2", "calc sqrt(2)*3", "calc 1/0",
         "calc ((((", "todo", "todo buy milk", "todo call the bank", "set", "user", "plugin",
         "file file 1", "file txt", "cd", "cd /", "cd ~", "cd ~/Documents", "app", "app note",
         "echo hello", "echo", "what is this", "http://localhost/", "    ", "CALC 7*6", "calc")


class Monkey:
    """Chooses the actions from the numbers of the seed alone, so that each run has the same."""

    def __init__(self, program, screen, seed):
        self._program = program
        self._screen = screen
        self._random = random.Random(seed)
        self.last = collections.deque(maxlen=30)
        self.counts = collections.Counter()
        self._kinds = {
            self._press_key: 50, self._type_word: 14, self._click: 15, self._turn_wheel: 3,
            self._drag: 4, self._press_hotkey: 4, self._change_setting: 2, self._hide: 2,
            self._leave: 1, self._wait: 3,
        }

    def act(self):
        """Does one thing and waits until the program has handled it."""
        action = self._random.choices(list(self._kinds), list(self._kinds.values()))[0]
        # Each action takes its numbers from a generator of its own: what it finds on the screen
        # must not change the actions that follow.
        numbers = random.Random(self._random.random())
        name = action.__name__.strip("_")
        self.counts[name] += 1
        self.last.append(name)
        if self._program.hotkey() not in (None, HOTKEY):
            self._restore_hotkey()
        if not self._program.is_showing() and numbers.random() < 0.7:
            self._show(numbers)
        action(numbers)
        self._program.settle()

    def _note(self, text):
        self.last.append(f"{self.last.pop()} {text}")

    def _show(self, numbers):
        self._note("(show)")
        if numbers.random() < 0.8:
            self._toggle()
        else:
            self._program.order("--show")

    def _toggle(self):
        was_showing = self._program.is_showing()
        self._screen.press(HOTKEY)
        self._program.becomes_visible(not was_showing)

    def _press_key(self, numbers):
        kind = numbers.choices((LETTERS, EDITING, MOVING, ACTING, ("Escape",)),
                               (40, 20, 25, 13, 2))[0]
        key = numbers.choice(kind)
        self._note(key)
        if len(key) == 1:
            self._screen.type(key)
        else:
            self._screen.press(key)

    def _type_word(self, numbers):
        word = numbers.choice(WORDS)
        self._note(word)
        if numbers.random() < 0.5:
            self._screen.press("ctrl+a")
            self._screen.press("BackSpace")
        self._screen.type(word)
        if numbers.random() < 0.6:
            self._program.searches()
        if numbers.random() < 0.4:
            self._screen.press("Return")

    def _wait(self, _):
        self._program.searches()

    def _point(self, numbers):
        """A place within one of the windows, or anywhere if there is none."""
        windows = self._program.windows()
        # A menu is the topmost window.
        topmost, choice = numbers.random() < 0.6, numbers.random()
        window = windows[-1 if topmost else int(choice * len(windows))] if windows else None
        x, y, width, height = window and self._screen.place(window) or (0, 0, WIDTH, HEIGHT)
        # A drag may have moved the window partly out of the screen.
        left, top = max(x, 0), max(y, 0)
        return (left + numbers.random() * (min(x + width, WIDTH) - 1 - left),
                top + numbers.random() * (min(y + height, HEIGHT) - 1 - top))

    def _move(self, numbers):
        x, y = self._point(numbers)
        self._note(f"{x:.0f},{y:.0f}")
        self._screen.move(x, y)

    def _click(self, numbers):
        self._move(numbers)
        button = numbers.choices((1, 2, 3), (80, 5, 15))[0]
        # A double click of a user is fast, but the program answers the first one before.
        for _ in range(numbers.choices((1, 2, 3), (80, 15, 5))[0]):
            self._screen.click(button)
            self._program.settle()

    def _turn_wheel(self, numbers):
        self._move(numbers)
        button = numbers.choice((4, 5))
        for _ in range(numbers.randint(1, 5)):
            self._screen.click(button)

    def _drag(self, numbers):
        self._move(numbers)
        self._screen.hold(1)
        self._program.settle()
        for _ in range(numbers.randint(1, 4)):
            self._move(numbers)
        if numbers.random() < 0.1:
            self._toggle()
        self._screen.release(1)

    def _press_hotkey(self, numbers):
        key = numbers.choice((HOTKEY, HOTKEY, *COMMAND_HOTKEYS.values()))
        self._note(key)
        if key == HOTKEY:
            self._toggle()
        else:
            self._screen.press(key.lower())
            self._program.becomes_visible(True)

    def _change_setting(self, numbers):
        """Changes one or two controls of a page of the preferences with the mouse, and saves."""
        page = numbers.choice(list(CONTROLS))
        self._open_page(page)
        for _ in range(numbers.randint(1, 2)):
            self._click_at(*numbers.choice(CONTROLS[page]))
            if page == "set":  # the list of a combo box is open
                self._screen.press(numbers.choice(("Down", "Up")))
                self._screen.press("Return")
        self._click_at(*SAVE)

    def open_lists(self):
        """Opens the lists of all combo boxes. The program keeps what it draws them in, and it keeps
        the window of each that has been closed by a choice."""
        for page, points in (("set", CONTROLS["set"]), ("todo", [FILTER])):
            self._open_page(page)
            for point in points:
                self._click_at(*point)
                self._screen.press("Escape")
                self._program.settle()

    def _restore_hotkey(self):
        """A random key may become the hotkey, which no other window would get any more."""
        self._note("(restore the hotkey)")
        self._open_page("set")
        self._click_at(*HOTKEY_FIELD)
        self._screen.press(HOTKEY)
        self._click_at(*SAVE)

    def _open_page(self, command):
        for _ in range(2):  # closes a menu
            self._screen.press("Escape")
        self._program.order("--query", command)
        for _ in range(2):  # the window changes its height after the search
            self._program.searches()
        for _ in range(2):  # not Enter, which may be the hotkey
            self._click_at(*FIRST_ROW)

    def _click_at(self, x, y):
        """Clicks a point of the main window."""
        left, top, _, _ = self._program.place()
        if not (0 <= left + x < WIDTH and 0 <= top + y < HEIGHT):
            # A drag has moved it there, where a user would not leave it.
            left, top = self._program.move_back()
        self._screen.move(left + x, top + y)
        self._screen.click()
        self._program.settle()

    def _hide(self, numbers):
        if numbers.random() < 0.5:
            self._screen.press("Escape")
        else:
            self._program.order("--hide")

    def _leave(self, _):
        """Clicks the window of another program."""
        self._screen.move(1270, 1014)
        self._screen.click()


class Figures:
    """What the process holds while it shows the empty box."""

    def __init__(self, program, screen):
        # A menu or a dialog may be open, and a page shown.
        for _ in range(4):
            screen.press("Escape")
            program.settle()
        program.order("--query", "x")
        program.rests()
        program.order("--query", "")
        program.rests()
        # Each has a descriptor of its own.
        wait_until(lambda: not program.has_pooled_threads(), "the threads of Qt's pool have ended")
        self.memory = program.memory()
        self.descriptors = program.descriptors()
        self.threads = program.threads()
        self.lists = screen.hidden_lists(program.pid)
        self.resources = screen.resources(program.pid) - collections.Counter(
            dict.fromkeys(RESOURCES_OF_A_WINDOW, self.lists))

    def gained(self, before, memory_limit=MEMORY_LIMIT):
        """What is more than it was before, as texts."""
        found = []
        if self.memory - before.memory > memory_limit:
            found.append(f"{(self.memory - before.memory) / 1024:.0f} KiB of memory")
        more = collections.Counter(self.descriptors) - collections.Counter(before.descriptors)
        # A thread that is started at its first use has one to wake it up.
        first_threads = self.threads.keys() - before.threads.keys()
        more[EVENT_DESCRIPTOR] -= len(first_threads)
        found += [f"{count} descriptors of {name}" for name, count in more.items() if count > 0 and
                  not (name.startswith(SHARED_FILES) and name not in before.descriptors and count == 1)]
        found += [f"{count} threads {name}" for name, count in (self.threads - before.threads).items()
                  if name not in first_threads or count > 1]
        found += [f"{count} X resources {name}" for name, count
                  in (self.resources - before.resources).items()
                  if self.resources[name] > MOST_RESOURCES.get(name, 0)]
        if self.lists > COMBO_BOXES:
            found.append(f"{self.lists} windows of lists")
        return found

    def __str__(self):
        return (f"{self.memory / 1024:.0f} KiB, {len(self.descriptors)} descriptors, "
                f"{sum(self.resources.values())} X resources, {self.lists} lists")


class Failure(Exception):
    pass


class Run:
    def __init__(self, path, desktop, seed, unlimited=False):
        self._unlimited = unlimited
        self.longest = 0, "nothing"
        self._harmless = Harmless()
        try:
            self._harmless.home.set_preferences({f"pluginHotkeys/{command}": key for command, key
                                                 in COMMAND_HOTKEYS.items()})
            self._screen = Screen(desktop.display)
            self._other = self._screen.make_window(1080, 924, 200, 100)
            self._program = Program(path, desktop, self._screen, self._harmless)
            self._monkey = Monkey(self._program, self._screen, seed)
        except BaseException:
            self._harmless.remove()
            raise

    def close(self):
        self._program.stop()
        self._harmless.remove()

    def carry_out(self, actions, warm_up):
        """Raises Failure with the number of the action; returns the figures before and after."""
        before = None
        self._check(self._monkey.open_lists, "the lists of the combo boxes")
        for number in range(1, actions + 1):
            self._check(self._monkey.act, f"action {number}")
            if number % PROGRESS == 0:
                print(f"{number} actions, {self._program.memory() >> 10} KiB; longest stretch: "
                      f"{self.longest[1]}", file=sys.stderr)
            if number == warm_up:
                before = Figures(self._program, self._screen)
        after = Figures(self._program, self._screen)
        self._check(lambda: None, f"the pause after {actions} actions")
        self._end()
        gained = after.gained(before)
        if gained and not self._unlimited:
            raise Failure(f"since action {warm_up}: {', '.join(gained)}")
        return before, after, self._monkey.counts

    def _end(self):
        """A sanitizer looks for leaks at the end."""
        self._program.stop()
        status = self._program.has_ended()
        texts = [] if status in (0, -signal.SIGTERM) else [f"The program ended with {status}"]
        texts += self._warnings()
        if texts:
            raise Failure("\n".join(["the end:", *texts]))

    def _check(self, act, name):
        texts = []
        try:
            act()
        except AssertionError as error:  # the program does not answer
            texts.append(str(error))
        status = self._program.has_ended()
        if status is not None:
            texts.append(f"The program ended with {status}")
        texts += self._warnings()
        texts += self._stretches()
        if texts:
            raise Failure("\n".join([f"{name}:", *texts, "The last actions:", *self._monkey.last]))

    def _stretches(self):
        """The stretches of the event loop over the limit since the last call."""
        found = []
        for line in self._program.new_stretches():
            milliseconds = float(line.split()[0])
            self.longest = max(self.longest, (milliseconds, line))
            if milliseconds > STRETCH_LIMIT and not self._unlimited:
                found.append(line)
        return found

    def _warnings(self):
        return [line for line in self._program.new_messages()
                if NOTE.search(line) and SHOWN_AGAIN not in line]


def run(path, seed, actions, warm_up, desktop, unlimited=False):
    """Does all this on a desktop; prints what was found."""
    begin = time.monotonic()
    monkey = Run(path, desktop, seed, unlimited)
    try:
        before, after, counts = monkey.carry_out(actions, warm_up)
    except Failure as failure:
        raise Failure(f"Seed {seed}, {failure}") from None
    finally:
        monkey.close()
    print(f"{actions} actions of seed {seed} in {time.monotonic() - begin:.0f} s:",
          ", ".join(f"{count} {name}" for name, count in counts.most_common()))
    print(f"after {warm_up} actions: {before}\nafter {actions} actions: {after}\n"
          f"longest stretch: {monkey.longest[1]}")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--actions", type=int, default=20_000)
    parser.add_argument("--seed", type=int, default=random.randrange(1_000_000))
    parser.add_argument("--warm-up", type=int, default=2_000)
    parser.add_argument("--unlimited", action="store_true")
    arguments = parser.parse_args()
    desktop = Desktop(SIZE)
    try:
        run(arguments.program.resolve(), arguments.seed, arguments.actions, arguments.warm_up,
            desktop, arguments.unlimited)
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
