# SPDX-License-Identifier: GPL-3.0-or-later
"""A stand-in for the desktop portal with global shortcuts, a template of python-dbusmock.

usage: python3 -m dbusmock --session --template portal.py [--parameters JSON]

Parameters:
  version    of the interface GlobalShortcuts, 1 by default; 0: there is no such interface
  binds      when the shortcuts get their keys: at "CreateSession", as in KDE 5.27, or at
             "BindShortcuts", the default
  leaves     ids of shortcuts that it does not bind
  registry   whether it takes the names of programs, true by default
  responses  the response of a method, 0 by default
  fails      methods that return an error
  fails_late methods that are answered, and return an error after that
  hangs      methods that never return
  waits      methods that are answered by Answer() alone

The interface CONTROL is for tests. Like the portal, the stand-in sends the repetitions of a held key.
"""

import dbus
import dbus.service

BUS_NAME = "org.freedesktop.portal.Desktop"
MAIN_OBJ = "/org/freedesktop/portal/desktop"
MAIN_IFACE = "org.freedesktop.portal.GlobalShortcuts"
SYSTEM_BUS = False
REGISTRY = "org.freedesktop.host.portal.Registry"
REQUEST = "org.freedesktop.portal.Request"
SESSION = "org.freedesktop.portal.Session"
CONTROL = "local.vaskel.Portal"

SHORTCUTS = "a(sa{sv})"


def load(mock, parameters):
    mock.portal = Portal(mock, parameters)


class Portal:
    def __init__(self, mock, parameters):
        self.mock = mock
        self.parameters = {"version": 1, "binds": "BindShortcuts", "leaves": [], "registry": True,
                           "responses": {}, "fails": [], "fails_late": [], "hangs": [],
                           "waits": []} | parameters
        self.calls = []
        self.sessions = {}  # from path to the bound shortcuts
        self.owner = None   # of the newest session
        self.waiting = {}  # from path to answer()
        if self.parameters["version"]:
            mock.AddProperty(MAIN_IFACE, "version", dbus.UInt32(self.parameters["version"]))

    def note(self, *words):
        self.calls.append(" ".join(words))

    def call(self, method, sender, options, reply, results):
        """Replies with the handle of the request, and answers with results() after that."""
        if method in self.parameters["fails"]:
            raise dbus.DBusException("no such luck", name="org.freedesktop.portal.Error.Failed")
        if method in self.parameters["hangs"]:
            return
        path = path_of("request", sender, options["handle_token"])
        self.mock.AddObject(path, REQUEST, {}, [("Close", "", "", close_code("request", path))])

        def answer():
            self.mock.RemoveObject(path)
            response = self.parameters["responses"].get(method, 0)
            self.emit(sender, path, REQUEST, "Response", "ua{sv}",
                      response, results() if response == 0 else {})
        if method in self.parameters["fails_late"]:
            answer()
            raise dbus.DBusException("too late", name="org.freedesktop.portal.Error.Failed")
        reply(path)
        if method in self.parameters["waits"]:
            self.waiting[path] = answer
        else:
            answer()

    def create_session(self, path, shortcuts):
        self.mock.AddObject(path, SESSION, {}, [("Close", "", "", close_code("session", path))])
        self.sessions[path] = []
        if self.parameters["binds"] == "CreateSession":
            self.bind(path, shortcuts)

    def bind(self, path, shortcuts):
        self.sessions[path] = [
            (shortcut_id, {"description": properties["description"],
                           "trigger_description": str(properties.get("preferred_trigger", ""))})
            for shortcut_id, properties in shortcuts if shortcut_id not in self.parameters["leaves"]]

    def listed(self, path):
        return {"shortcuts": dbus.Array(self.sessions[path], signature="(sa{sv})")}

    def close(self, kind, path):
        """A session or request that the program closes."""
        self.note(f"Close {kind}")
        self.mock.RemoveObject(path)
        self.waiting.pop(path, None)
        self.sessions.pop(path, None)

    def session(self):
        return next(reversed(self.sessions))

    def emit(self, receiver, path, interface, name, signature, *arguments):
        self.mock.EmitSignalDetailed(interface, name, signature, arguments,
                                     {"path": path, "destination": receiver})


def path_of(kind, sender, token):
    return f"{MAIN_OBJ}/{kind}/{sender[1:].replace('.', '_')}/{token}"


def close_code(kind, path):
    return f"objects['{MAIN_OBJ}'].portal.close('{kind}', '{path}')"


def texts(shortcuts):
    """The shortcuts as id=trigger, for the list of calls."""
    return (f"{shortcut_id}={properties.get('preferred_trigger', '')}"
            for shortcut_id, properties in shortcuts)


@dbus.service.method(REGISTRY, in_signature="sa{sv}")
def Register(self, app_id, _options):
    self.portal.note("Register", app_id)
    if not self.portal.parameters["registry"]:
        raise dbus.DBusException("no such interface",
                                 name="org.freedesktop.DBus.Error.UnknownMethod")


@dbus.service.method(MAIN_IFACE, in_signature="a{sv}", out_signature="o", sender_keyword="sender",
                     async_callbacks=("reply", "error"))
def CreateSession(self, options, sender, reply, error):
    portal = self.portal
    path = path_of("session", sender, options["session_handle_token"])
    portal.note("CreateSession", path.split("/")[-1], *texts(options.get("shortcuts", [])))
    if path in portal.sessions:
        raise dbus.DBusException("the session exists", name="org.freedesktop.portal.Error.Exists")
    portal.owner = sender

    def results():
        portal.create_session(path, options.get("shortcuts", []))
        return {"session_handle": path}
    portal.call("CreateSession", sender, options, reply, results)


@dbus.service.method(MAIN_IFACE, in_signature="oa{sv}", out_signature="o", sender_keyword="sender",
                     async_callbacks=("reply", "error"))
def ListShortcuts(self, session, options, sender, reply, error):
    portal = self.portal
    portal.note("ListShortcuts")
    portal.call("ListShortcuts", sender, options, reply, lambda: portal.listed(session))


@dbus.service.method(MAIN_IFACE, in_signature=f"o{SHORTCUTS}sa{{sv}}", out_signature="o",
                     sender_keyword="sender", async_callbacks=("reply", "error"))
def BindShortcuts(self, session, shortcuts, parent_window, options, sender, reply, error):
    portal = self.portal
    portal.note("BindShortcuts", parent_window.split(":")[0], *texts(shortcuts))

    def results():
        portal.bind(session, shortcuts)
        return portal.listed(session)
    portal.call("BindShortcuts", sender, options, reply, results)


@dbus.service.method(MAIN_IFACE, in_signature="osa{sv}")
def ConfigureShortcuts(self, session, parent_window, _options):
    self.portal.note("ConfigureShortcuts", session.split("/")[-1], parent_window.split(":")[0])
    if "ConfigureShortcuts" in self.portal.parameters["fails"]:
        raise dbus.DBusException("no such luck", name="org.freedesktop.portal.Error.Failed")


@dbus.service.method(CONTROL, out_signature="as")
def Calls(self):
    """What was called since the last time."""
    calls, self.portal.calls = self.portal.calls, []
    return dbus.Array(calls, signature="s")


@dbus.service.method(CONTROL, out_signature="s")
def Session(self):
    """The path of the newest session."""
    return self.portal.session()


@dbus.service.method(CONTROL)
def Answer(self):
    """Answers what waits."""
    waiting, self.portal.waiting = self.portal.waiting, {}
    for answer in waiting.values():
        answer()


@dbus.service.method(CONTROL, in_signature="ss")
def Send(self, name, shortcut_id):
    """Sends Activated or Deactivated for a shortcut of the newest session."""
    portal = self.portal
    portal.emit(portal.owner, MAIN_OBJ, MAIN_IFACE, name, "osta{sv}",
                portal.session(), shortcut_id, dbus.UInt64(0), {})


@dbus.service.method(CONTROL, in_signature="ss")
def SetTrigger(self, shortcut_id, trigger):
    """Another trigger, as if the user had chosen it."""
    portal = self.portal
    changed = [(shortcut_id, {"description": "", "trigger_description": trigger})]
    portal.emit(portal.owner, MAIN_OBJ, MAIN_IFACE, "ShortcutsChanged", f"o{SHORTCUTS}",
                portal.session(), dbus.Array(changed, signature="(sa{sv})"))


@dbus.service.method(CONTROL)
def CloseSession(self):
    """Closes the newest session."""
    portal = self.portal
    path = portal.session()
    del portal.sessions[path]
    self.RemoveObject(path)
    portal.emit(portal.owner, path, SESSION, "Closed", "")
