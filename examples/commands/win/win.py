"""Lists the open windows with the text in their title or program; --activate switches to one."""
import json
import sys

from Xlib import X, display
from Xlib.protocol import event

screen = display.Display()
root = screen.screen().root


def read(window, name):
    found = window.get_full_property(screen.intern_atom(name), X.AnyPropertyType)
    return found.value if found else []


def title(window):
    name = read(window, "_NET_WM_NAME")
    return name.decode("utf-8", "replace") if name else window.get_wm_name() or ""


def activate(number):
    window = screen.create_resource_object("window", number)
    message = event.ClientMessage(window=window, client_type=screen.intern_atom("_NET_ACTIVE_WINDOW"),
                                  data=(32, [2, X.CurrentTime, 0, 0, 0]))  # 2: from a pager
    root.send_event(message, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
    screen.flush()


if sys.argv[1] == "--activate" and len(sys.argv) == 3:
    sys.exit(activate(int(sys.argv[2])))
items = []
for number in reversed(read(root, "_NET_CLIENT_LIST_STACKING")):  # the topmost first
    window = screen.create_resource_object("window", number)
    program = (window.get_wm_class() or ["", ""])[1]
    hidden = screen.intern_atom("_NET_WM_STATE_SKIP_TASKBAR") in read(window, "_NET_WM_STATE")
    found = sys.argv[1].lower() in f"{title(window)} {program}".lower()
    if found and not hidden and program != "Vaskel":
        items.append({"title": title(window) or program or "?", "subtitle": program, "arg": number})
print(json.dumps({"items": items}))
