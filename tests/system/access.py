"""What a screen reader is told: the tree of a running program over a private bus for assistive tools.

    access.start_bus(desktop)          # before the program
    program = desktop.start()
    tree = access.tree(desktop, program)
    tree.find("push button", "^Close$")

The tree is read by a process of its own, since the library binds a process to one bus for ever.
"""
import json
import re
import subprocess
import sys

import lib
from lib import Failure, eventually

BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:path={bus}</listen><servicedir>/usr/share/dbus-1/services</servicedir>
<policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy></busconfig>
"""
LONGEST_TEXT = 2000


def start_bus(desktop):
    bus = desktop.folder / "access-bus"
    config = desktop.folder / "access-bus.conf"
    config.write_text(BUS_CONFIG.format(bus=bus), encoding="utf-8")
    desktop.env.pop("NO_AT_BRIDGE", None)
    desktop.env.update(DBUS_SESSION_BUS_ADDRESS=f"unix:path={bus}", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    for words in (["dbus-daemon", "--nofork", "--config-file", str(config)],
                  ["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"]):
        log = desktop.folder / f"access-{len(desktop.helpers)}.log"
        desktop.helpers.append(lib.Program(words, desktop.env, log))
        eventually("the bus", bus.exists)


class Node:
    def __init__(self, values):
        self.role, self.name, self.description = values["role"], values["name"], values["description"]
        self.text, self.states = values["text"], set(values["states"])
        self.children = [Node(child) for child in values["children"]]

    def walk(self):
        yield self
        for child in self.children:
            yield from child.walk()

    def all(self, role, name=""):
        return [node for node in self.walk() if node.role == role and re.search(name, node.name)]

    def find(self, role, name=""):
        found = self.all(role, name)
        if not found:
            raise Failure(f"no {role} named /{name}/ in:\n{self}")
        return found[0]

    def __str__(self, depth=0):
        words = f"{'  ' * depth}{self.role} {self.name!r} {self.description!r} {sorted(self.states)}\n"
        return words + "".join(child.__str__(depth + 1) for child in self.children)


def tree(desktop, program):
    result = subprocess.run([sys.executable, __file__, str(program.pid)], env=desktop.env, capture_output=True,
                            timeout=lib.TIMEOUT * 4, stdin=subprocess.DEVNULL, check=False)
    if result.returncode != 0:
        raise Failure("no tree for assistive tools: " + result.stderr.decode(errors="replace").strip())
    return Node(json.loads(result.stdout))


def _read(process):
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib
    shown = {Atspi.StateType.SHOWING: "showing", Atspi.StateType.FOCUSABLE: "focusable",
             Atspi.StateType.FOCUSED: "focused", Atspi.StateType.CHECKED: "checked",
             Atspi.StateType.ENABLED: "enabled"}

    def application():
        screen = Atspi.get_desktop(0)
        for index in range(screen.get_child_count()):
            child = screen.get_child_at_index(index)
            if child and child.get_process_id() == process:
                return child
        return None

    def values(node):
        states = node.get_state_set()
        text = ""
        if "Text" in node.get_interfaces():
            text = Atspi.Text.get_text(node, 0, min(LONGEST_TEXT, Atspi.Text.get_character_count(node)))
        # A combo box holds the whole of its list, closed as it is.
        count = 0 if node.get_role() == Atspi.Role.COMBO_BOX else node.get_child_count()
        children = [node.get_child_at_index(index) for index in range(count)]
        return {"role": node.get_role_name(), "name": node.get_name() or "", "text": text or "",
                "description": node.get_description() or "",
                "states": [name for state, name in shown.items() if states.contains(state)],
                "children": [values(child) for child in children if child]}

    def whole():
        try:
            root = application()
            return root and values(root)
        except GLib.Error:
            return None  # something has gone while it was read

    json.dump(eventually(f"process {process} on the bus for assistive tools", whole), sys.stdout)


if __name__ == "__main__":
    _read(int(sys.argv[1]))
