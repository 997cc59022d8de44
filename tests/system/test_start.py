#!/usr/bin/env python3
"""The start page: read by an assistive tool, and the keys counted that it takes to a program."""
import lib
from lib import eventually, expect, expect_equal
from test_reader import Atspi, Reader, below


def focused_list(name):
    """Waits until the keys go to the list; answers what is read of its rows."""
    def look():
        found = below(Atspi.get_desktop(0), name)
        return found if found and found.get_state_set().contains(Atspi.StateType.FOCUSED) else None
    rows = eventually(f"the focus in \"{name}\"", look)
    return [rows.get_child_at_index(i).get_name() for i in range(rows.get_child_count())]


def few_keys_lead_to_a_program(desktop):
    Reader(desktop)
    first = desktop.start(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    rows = focused_list("Start and first steps")
    expect_equal(rows[:4], ["Start", "Open an item or a file, Ctrl+O", "New document, Ctrl+N",
                            "Open DEMO, the sample account"], "what can be begun with")
    desktop.keys("Down", "Down", "Return", shows="^Open$")
    desktop.keys("i", "Return", shows=r"\[BP INVOICE on ")
    desktop.keys("ctrl+q")
    expect_equal(first.wait_end(), 0, "the end")

    desktop.start(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    rows = focused_list("Recent items, connections and accounts")
    expect("BP INVOICE, DEMO" in rows, f"no INVOICE in {rows}")
    desktop.keys("Return", shows=r"\[BP INVOICE on ")
    desktop.keys("ctrl+F4", "ctrl+o", shows="^Open$")
    desktop.keys("m", "Return", shows=r"\[BP M")


lib.run(few_keys_lead_to_a_program)
