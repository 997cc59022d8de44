#!/usr/bin/env python3
"""An assistive tool on a bus of its own reads a document's text, follows its caret and edits it."""
import os

import gi

import lib
from lib import eventually, expect_equal, expect_file

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


if __name__ == "__main__":
    lib.run(a_tool_reads_follows_and_edits)
