#!/usr/bin/env python3
"""A changed item beside what is stored, what was opened and what was committed; changes are taken back from there."""
import time

import lib
from lib import eventually, expect_equal, expect_file
from test_reader import Atspi, Reader

TWO_TEXTS = "Two texts side by side"


def below(node, name):
    for child in (node.get_child_at_index(i) for i in range(node.get_child_count())):
        if child is not None and (child.get_name() == name or (child := below(child, name))):
            return child
    return None


def reads(what, beginning):
    """What a reader of the screen is told of the present row."""
    def look():
        found = below(Atspi.get_desktop(0), TWO_TEXTS)
        return found is not None and found.get_description().startswith(beginning)
    eventually(f"{what}: \"{beginning}...\"", look)


def take_back(desktop, item, left):
    """As often as the comparison may not be there yet."""
    desktop.keys("alt+Right")
    time.sleep(0.5)
    desktop.keys("ctrl+s")
    time.sleep(0.5)
    return item.read_bytes() == left


def a_change_is_found_and_taken_back(desktop):
    Reader(desktop)
    item = desktop.sample_accounts() / "BP" / "INVOICE"
    stored = item.read_bytes()
    lines = stored.split(b"\n")
    desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", shows=r"\[BP INVOICE on ", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    desktop.keys("ctrl+Home", "End")
    desktop.type_text(" first")
    desktop.keys(*["Down"] * 20, "End")
    desktop.type_text(" second")
    desktop.keys("ctrl+shift+c", shows="Compare BP INVOICE")
    reads("the first change", "Changed. Left line 1: ")
    desktop.keys("F8")
    reads("the second change", "Changed. Left line 21: ")
    desktop.keys("alt+Right")
    reads("taken back", "145 lines alike")
    # The text goes on living in its window, with one step of undo for the change.
    desktop.keys("ctrl+s")
    expect_file(item, b"\n".join([lines[0] + b" first"] + lines[1:]))
    desktop.keys("ctrl+z")
    reads("undone", "Changed. Left line 21: ")
    desktop.keys("Return", shows=r"\[\*BP INVOICE on ")
    desktop.type_text(" third\n")
    desktop.keys("Up", "ctrl+s")
    eventually("the save", lambda: b" third" in item.read_bytes())
    item.unlink()
    desktop.keys("ctrl+shift+c")
    desktop.wait_box()
    desktop.keys("Return")
    # It is told anyway that the item has gone; the text stays.
    desktop.wait_box()
    desktop.keys("Return", shows=r"\[\*BP INVOICE on ")


def other_texts_than_the_stored_one(desktop):
    account = desktop.sample_accounts()
    for words in (("init", "-q"), ("add", "."), ("-c", "user.name=a", "-c", "user.email=a@b", "commit", "-qm", "all")):
        desktop.command("git", "-C", str(account), *words)
    item = account / "BP" / "INVOICE"
    committed = item.read_bytes()
    opened = b"* stored since\n" + committed
    item.write_bytes(opened)
    program = desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", shows=r"\[BP INVOICE on ")
    desktop.keys("ctrl+Home", "Down")
    desktop.type_text("* typed since\n")
    desktop.keys("ctrl+s")
    expect_file(item, opened.replace(b"\n", b"\n* typed since\n", 1))
    desktop.keys("ctrl+Home")
    desktop.type_text("* not saved\n")
    for against, left in ("o", opened.replace(b"\n", b"\n* typed since\n", 1)), ("c", committed):
        desktop.keys("alt+t", "p", against, shows="Compare BP INVOICE")
        eventually("the change taken back", lambda: take_back(desktop, item, left))
        if against == "c":
            # F5 sees what was committed meanwhile.
            later = desktop.folder / "later"
            later.write_bytes(committed + b"* committed later\n")
            blob = desktop.command("git", "-C", str(account), "hash-object", "-w", str(later)).strip()
            for words in (("update-index", "--cacheinfo", f"100644,{blob},BP/INVOICE"),
                          ("-c", "user.name=a", "-c", "user.email=a@b", "commit", "-qm", "later")):
                desktop.command("git", "-C", str(account), *words)
            desktop.keys("F5")
            time.sleep(0.5)
            desktop.keys("F8")
            eventually("the later commit", lambda: take_back(desktop, item, later.read_bytes()))
        desktop.keys("ctrl+Tab", shows=r"\[BP INVOICE on ")
    # The document goes, and its comparisons with it.
    desktop.keys("ctrl+F4")
    eventually("nothing compared any more", lambda: desktop.active_title() == "Nib")
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the end")


lib.run(a_change_is_found_and_taken_back, other_texts_than_the_stored_one)
