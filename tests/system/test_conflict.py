#!/usr/bin/env python3
"""Two editors change one item: the second one merges, and both changes are stored."""
import time

import lib
from fake_server import FakeServer
from test_network import connects, logs_in
from lib import expect, expect_equal

MINE, THEIRS = "* of the first", "* of the second"


def lines_of(path):
    return path.read_text(encoding="ascii").splitlines()


def without_locks(desktop):
    desktop.config.mkdir(parents=True, exist_ok=True)
    with open(desktop.config / "hive.conf", "w", encoding="utf-8") as hive:
        hive.write("[Software\\Orlin\\MultiValue Editor\\Settings]\n@=7.1\nDialect=common\nRecordLocking=False\n")


def merges_behind_another(desktop, *keys):
    """The first of two editors changes the top of an item; the second stores its change at what the keys lead to. When
    the first one comes back it is asked, and merges."""
    item = desktop.sample_accounts() / "BP" / "SHARED"
    item.write_text("X = 1\nX = 2\nX = 3\n", encoding="ascii")
    without_locks(desktop)
    for text, keys in ((MINE, ("ctrl+Home",)), (THEIRS, keys)):
        program = desktop.start("/A=DEMO", "/F=BP", "/I=SHARED")
        desktop.wait_window(r"\[BP SHARED on ", program=program).focus()
        desktop.keys(*keys)
        desktop.type_text(text + "\n", shows=r"\[\*BP SHARED on ")
        if text == MINE:
            first = desktop.active_window()
    desktop.keys("ctrl+s", shows=r"\[BP SHARED on ")
    desktop.xdotool("windowactivate", first.number)
    desktop.wait_box()
    desktop.keys("Return", shows="^Merge BP SHARED$")
    return item


def both_changes_are_stored(desktop):
    item = merges_behind_another(desktop, "ctrl+End", "Home")
    expect_equal(lines_of(item), ["X = 1", "X = 2", THEIRS, "X = 3"], "what the second one has stored")
    desktop.keys("Return", shows=r"\[\*BP SHARED on ")
    expect(MINE not in lines_of(item), "nothing is stored before the user saves")
    desktop.keys("ctrl+s", shows=r"\[BP SHARED on ")
    expect_equal(lines_of(item), [MINE, "X = 1", "X = 2", THEIRS, "X = 3"], "both changes")
    desktop.keys("ctrl+z", "ctrl+s", shows=r"\[BP SHARED on ")
    expect_equal(lines_of(item), [MINE, "X = 1", "X = 2", "X = 3"], "mine again after one step of undo")


def what_overlaps_is_chosen(desktop):
    item = merges_behind_another(desktop, "ctrl+Home")
    desktop.keys("F8", "Return", "alt+n", shows="^Merge BP SHARED$")
    time.sleep(0.4)  # a button takes a moment to act on its key
    desktop.keys("Return", shows=r"\[\*BP SHARED on ")
    desktop.keys("ctrl+s", shows=r"\[BP SHARED on ")
    expect_equal(lines_of(item), [MINE, THEIRS, "X = 1", "X = 2", "X = 3"], "mine, then theirs")


def a_server_stores_both_too(desktop):
    without_locks(desktop)
    with FakeServer() as server:
        stored = server.accounts["TESTACC"]["BP"]
        stored.put("SHARED", b"X = 1\xfeX = 2\xfeX = 3")
        connects(desktop, server.port)
        desktop.start("/H=stock", "/A=TESTACC", "/F=BP", "/I=SHARED")
        logs_in(desktop, shows=r"\[BP SHARED on Stock")
        desktop.type_text(MINE + "\n")
        stored.put("SHARED", b"X = 1\xfeX = 2\xfeX = 4")
        desktop.keys("ctrl+s")
        desktop.wait_box()
        desktop.keys("Return", shows="^Merge BP SHARED$")
        desktop.keys("Return", shows=r"\[\*BP SHARED on ")
        desktop.keys("ctrl+s", shows=r"\[BP SHARED on ")
        expect_equal(stored["SHARED"], MINE.encode() + b"\nX = 1\nX = 2\nX = 4\n", "both changes")


lib.run(both_changes_are_stored, what_overlaps_is_chosen, a_server_stores_both_too)
