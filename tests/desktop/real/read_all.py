#!/usr/bin/env -S /usr/bin/python3 -u
"""Reads every form of the program through AT-SPI, as a screen reader does: each control has a role, a name and its state.

usage: read_all.py PROGRAM [ARGUMENT...]   (under dbus-run-session, on an X server)

PROGRAM shows one form after the other with all its controls; it tells the form's name in a line and waits for one."""
import os
import re
import subprocess
import sys
import time
from gi.repository import Gio, GLib

ACCESSIBLE, ROOT = "org.a11y.atspi.Accessible", "/org/a11y/atspi/accessible/root"
ENABLED, EXPANDABLE, FOCUSABLE, MULTILINE, SHOWING = 8, 9, 11, 17, 25  # bits of a state

# Role: whether it has to be named, its states besides being enabled, and its interfaces.
ROLES = {role: (True, set(), set()) for role in ("frame", "dialog", "graphic", "label", "column header")}
ROLES |= {role: (False, set(), set()) for role in ("panel", "separator", "cell")}
ROLES |= {
    "link": (True, {FOCUSABLE}, {"Action"}),
    "push button": (True, {FOCUSABLE}, {"Action"}),
    "check box": (True, {FOCUSABLE}, {"Action"}),
    "radio button": (True, {FOCUSABLE}, {"Action"}),
    "combo box": (True, {FOCUSABLE, EXPANDABLE}, {"Action", "Text"}),
    "text": (True, {FOCUSABLE}, {"Text"}),
    "terminal": (True, {FOCUSABLE, MULTILINE}, {"Text"}),
    "table": (True, set(), {"Table"}),
    "scroll bar": (True, set(), {"Value"}),
    "progress bar": (True, set(), {"Value"}),
}
MAY_BE_OFF = {"push button", "check box", "radio button", "combo box", "text", "label", "scroll bar"}


class Bus:
    def __init__(self):
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0, -1)
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(address.unpack()[0], flags)

    def ask(self, what, method, interface=ACCESSIBLE, arguments=None):
        return self.bus.call_sync(*what, interface, method, arguments, None, 0, 20000).unpack()[0]

    def name(self, what):
        arguments = GLib.Variant("(ss)", (ACCESSIBLE, "Name"))
        return self.ask(what, "Get", "org.freedesktop.DBus.Properties", arguments)

    def states(self, what):
        low, high = self.ask(what, "GetState")
        return {bit for bit in range(64) if (low | high << 32) >> bit & 1}


class Reader:
    def __init__(self):
        self.bus, self.roles, self.faults, self.read, self.windows = Bus(), set(), [], 0, set()

    def new_windows(self):
        """Those that have come since. The program is not on the bus from its first moment on."""
        for _ in range(400):
            applications = self.bus.ask(("org.a11y.atspi.Registry", ROOT), "GetChildren")
            windows = {window for application in applications for window in self.bus.ask(application, "GetChildren")}
            if new := windows - self.windows:
                self.windows |= new
                return new
            time.sleep(0.05)
        raise SystemExit("the window of a form has not come to the bus")

    def read_all(self, what, path):
        states = self.bus.states(what)
        if SHOWING not in states:
            return
        role, name, self.read = self.bus.ask(what, "GetRoleName"), self.bus.name(what), self.read + 1
        self.roles.add(role)
        path = f"{path} / {role} '{name}'"
        if role not in ROLES:
            return self.faults.append(f"{path}: no role for a control")
        named, needed, interfaces = ROLES[role]
        if named and not re.search(r"\w", name):
            self.faults.append(f"{path}: no name")
        if not states.issuperset(needed) or (ENABLED not in states and role not in MAY_BE_OFF):
            self.faults.append(f"{path}: states {sorted(states)}")
        found = {interface.split(".")[-1] for interface in self.bus.ask(what, "GetInterfaces")} if interfaces else set()
        if not found.issuperset(interfaces):
            self.faults.append(f"{path}: interfaces {sorted(found)}")
        if role == "table":
            self.read_table(what, path)
        for child in self.bus.ask(what, "GetChildren"):
            self.read_all(child, path)

    def read_table(self, what, path):
        """A table says what its columns and its rows are."""
        table, first, heads = "org.a11y.atspi.Table", GLib.Variant("(i)", (0,)), []
        for which in ("Column", "Row"):
            heads.append(self.bus.ask(what, f"Get{which}Description", table, first))
            heads.append(self.bus.name(self.bus.ask(what, f"Get{which}Header", table, first)))
        if not all(heads):
            self.faults.append(f"{path}: heads {heads}")


def main():
    if len(sys.argv) < 2 or sys.argv[1].startswith("-"):
        print(__doc__.strip(), file=sys.stdout if sys.argv[1:] == ["--help"] else sys.stderr)
        sys.exit(0 if sys.argv[1:] == ["--help"] else 2)
    os.environ["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
    program = subprocess.Popen(sys.argv[1:], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1)
    reader, forms = Reader(), 0
    for line in program.stdout:
        if not re.fullmatch(r"[A-Z]\w+\n", line):
            continue  # what the test program says by itself
        for window in reader.new_windows():
            reader.read_all(window, line.strip())
        forms += 1
        program.stdin.write("\n")
    missing = ROLES.keys() - reader.roles
    print(*reader.faults, sep="\n")
    print(f"{forms} forms, {reader.read} controls, {len(reader.faults)} faults; never seen: {sorted(missing)}")
    sys.exit(1 if program.wait() or reader.faults or missing or forms < 10 else 0)


main()
