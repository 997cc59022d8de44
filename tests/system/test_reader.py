#!/usr/bin/env python3
"""An assistive tool on a bus of its own reads a document's text, follows its caret and edits it."""
import os
import subprocess
import sys

import gi

import lib
from lib import eventually, expect, expect_equal, expect_file

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

LAUNCHER = "/usr/libexec/at-spi-bus-launcher"


def text_below(node):
    """The first text of several lines that can be edited."""
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child is None:
            continue
        if "EditableText" in child.get_interfaces() and child.get_state_set().contains(Atspi.StateType.MULTI_LINE):
            return child
        if found := text_below(child):
            return found
    return None


def children(node):
    return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child is not None]


def below(node, name, interface=""):
    """The first of that name to be seen that has the interface."""
    for child in children(node):
        if child.get_name() == name and (not interface or interface in child.get_interfaces()):
            if child.get_state_set().contains(Atspi.StateType.SHOWING):
                return child
        if found := below(child, name, interface):
            return found
    return None


def rows_of(node):
    return [child.get_name() for child in children(node)] if node else []


class Reader:
    def __init__(self, desktop):
        lib.with_bus(desktop)
        desktop._programs.append(lib.Program([LAUNCHER, "--launch-immediately"], desktop.env,
                                             desktop.folder / "reader-bus.log"))
        eventually("the readers' bus", lambda: desktop.command(
            "gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus",
            "--method", "org.a11y.Bus.GetAddress", check=False))
        os.environ.update(desktop.env)
        Atspi.init()
        self.heard = []
        self.listener = Atspi.EventListener.new(lambda event, *_: self.heard.append(event))
        for kind in ("object:text-changed", "object:text-caret-moved"):
            self.listener.register(kind)

    def hears(self, what, *wanted):
        """Until an event of this type, place and text has come."""
        def look():
            while GLib.MainContext.default().iteration(False):
                pass
            return any((event.type, event.detail1, event.any_data)[:len(wanted)] == wanted for event in self.heard)
        eventually(f"{what}, {wanted}", look)
        self.heard.clear()


def a_tool_reads_follows_and_edits(desktop):
    reader = Reader(desktop)
    path = desktop.folder / "a.txt"
    path.write_bytes("one\nStra\u00dfe \U0001F600 two\n".encode())
    desktop.start(path, shows=r"\[a\.txt\]", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    text = eventually("the text", lambda: text_below(Atspi.get_desktop(0)))

    def content():
        return Atspi.Text.get_text(text, 0, -1)

    # It reads.
    expect_equal(content(), "one\nStra\u00dfe \U0001F600 two\n", "the text")
    line = Atspi.Text.get_text_at_offset(text, 1, Atspi.TextBoundaryType.LINE_START)
    expect_equal((line.content, line.start_offset, line.end_offset), ("one\n", 0, 4), "the first line")

    # It follows.
    desktop.keys("End")
    reader.hears("the caret", "object:text-caret-moved", 3)
    desktop.keys("exclam")
    reader.hears("the key", "object:text-changed:insert", 3, "!")
    expect_equal(Atspi.Text.get_caret_offset(text), 4, "the caret")
    desktop.keys("BackSpace")
    reader.hears("what went", "object:text-changed:delete", 3, "!")
    desktop.keys("ctrl+a", "x")
    reader.hears("what came for all", "object:text-changed:insert", 0, "x")
    desktop.keys("ctrl+z")
    eventually("all of it back", lambda: content().startswith("one\nStra"))

    # It edits.
    Atspi.EditableText.insert_text(text, 0, "zero ", 5)
    Atspi.EditableText.delete_text(text, 5, 7)
    eventually("its edits", lambda: content().startswith("zero e\n"))
    Atspi.Text.set_caret_offset(text, 4)
    desktop.type_text("!")
    desktop.keys("ctrl+s")
    expect_file(path, "zero! e\nStra\u00dfe \U0001F600 two\n".encode())


def a_tool_reads_panels_and_the_find_bar(desktop):
    item = desktop.sample_accounts() / "BP/INVOICE"
    lines = item.read_text("latin-1").split("\n")
    lines[30] = "      X = (1 + "
    item.write_text("\n".join(lines), "latin-1")
    Reader(desktop)
    desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", shows=r"\[BP INVOICE on ", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")

    def seen(name, interface=""):
        return below(Atspi.get_desktop(0), name, interface)

    desktop.keys("F11")
    results = eventually("the results", lambda: seen("Results", "Text"))
    eventually("their rows", lambda: Atspi.Text.get_text(results, 0, -1) == "Line 31: \"(\" without \")\".")
    for button in ("Close", "Float"):
        eventually(f"the button {button}", lambda: seen(button))
    desktop.keys("alt+v", "b")
    problems = eventually("the problems", lambda: seen("Problems", "Table"))
    eventually("their rows", lambda: any(row.startswith("Error: ") for row in rows_of(problems)))
    desktop.keys("ctrl+i")
    entry = eventually("the find bar", lambda: seen("Find", "Text"))
    eventually("the focus in it", lambda: entry.get_state_set().contains(Atspi.StateType.FOCUSED))
    desktop.type_text("print")
    eventually("what is typed", lambda: Atspi.Text.get_text(entry, 0, -1).lower() == "print")
    for name in ("The hit before (Shift+Enter)", "The next hit (Enter)", "Match case", "Match whole word only", "Regular expression"):
        expect(seen(name), f"no {name} in the bar")


def run_apart(*scenarios):
    """Each in a process of its own: one process is a tool on one bus."""
    if len(sys.argv) != 2:
        lib.run(*scenarios)
    ended = [subprocess.run([sys.executable, *sys.argv, scenario.__name__], check=False) for scenario in scenarios]
    sys.exit(any(one.returncode for one in ended))


if __name__ == "__main__":
    run_apart(a_tool_reads_follows_and_edits, a_tool_reads_panels_and_the_find_bar)
