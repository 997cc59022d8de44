#!/usr/bin/env python3
"""Two editors change one item: the second one merges, and both changes are stored."""
import time

import lib
from lib import expect, expect_equal

MINE, THEIRS = "* of the first", "* of the second"


def lines_of(path):
    return path.read_text(encoding="ascii").splitlines()


def without_locks(desktop):
    desktop.config.mkdir(parents=True, exist_ok=True)
    with open(desktop.config / "hive.conf", "w", encoding="utf-8") as hive:
        hive.write("[Software\\Orlin\\MultiValue Editor\\Settings]\n@=7.1\nDialect=common\nRecordLocking=False\n")


def opened_twice(desktop):
    """With the place that each was opened from, and what is stored at first."""
    item = desktop.sample_accounts() / "BP" / "SHARED"
    without_locks(desktop)
    before = ["X = 1", "X = 2", "X = 3"]
    item.write_text("\n".join(before) + "\n", encoding="ascii")
    for _ in range(2):
        program = desktop.start("/A=DEMO", "/F=BP", "/I=SHARED")
        yield desktop.wait_window(r"\[BP SHARED on ", program=program), item, before


def saves_first(desktop, window, *keys):
    window.focus()
    desktop.keys(*keys)
    desktop.type_text(THEIRS + "\n")
    desktop.keys("ctrl+s", shows=r"\[BP SHARED on ")


def asks_to_merge(desktop, window):
    """The window that then has the focus is the merge."""
    desktop.xdotool("windowactivate", window.number)
    desktop.wait_box()
    desktop.keys("Return", shows="^Merge BP SHARED$")


def both_changes_are_stored(desktop):
    (first, item, before), (second, _, _) = opened_twice(desktop)
    second.focus()
    desktop.keys("ctrl+Home")
    desktop.type_text(MINE + "\n")
    saves_first(desktop, first, "ctrl+End", "Home")
    expect_equal(lines_of(item), [*before[:-1], THEIRS, before[-1]], "what the first one has stored")
    asks_to_merge(desktop, second)
    desktop.keys("Return", shows=r"\[\*BP SHARED on ")
    expect(MINE not in lines_of(item), "nothing is stored before the user saves")
    desktop.keys("ctrl+s", shows=r"\[BP SHARED on ")
    expect_equal(lines_of(item), [MINE, *before[:-1], THEIRS, before[-1]], "both changes")
    desktop.keys("ctrl+z", "ctrl+s", shows=r"\[BP SHARED on ")
    expect_equal(lines_of(item), [MINE, *before], "mine again after one step of undo")


def what_overlaps_is_chosen(desktop):
    (first, item, before), (second, _, _) = opened_twice(desktop)
    second.focus()
    desktop.keys("ctrl+Home")
    desktop.type_text(MINE + "\n")
    saves_first(desktop, first, "ctrl+Home")
    asks_to_merge(desktop, second)
    desktop.keys("F8", "Return", "alt+n", shows="^Merge BP SHARED$")
    time.sleep(0.4)  # a button takes a moment to act on its key
    desktop.keys("Return", shows=r"\[\*BP SHARED on ")
    desktop.keys("ctrl+s", shows=r"\[BP SHARED on ")
    expect_equal(lines_of(item), [MINE, THEIRS, *before], "mine, then theirs")


lib.run(both_changes_are_stored, what_overlaps_is_chosen)
