#!/usr/bin/env python3
"""Two copies of the editor and one item: who may write, and what is left when one of them dies."""
import lib
from lib import expect, expect_equal, expect_file

MENU = ("/A=DEMO", "/F=BP", "/I=MENU")


def the_second_copy_asks_for_read_only(desktop):
    item = desktop.sample_accounts() / "BP" / "MENU"
    before = item.read_bytes()
    first = desktop.start(*MENU)
    desktop.wait_window(r"\[BP MENU on ", program=first)
    second = desktop.start(*MENU)
    desktop.wait_box()
    desktop.keys("alt+y")
    desktop.wait_window(r"\[BP MENU on .* \(Read only\)\]$", program=second).focus()
    desktop.type_text("x")
    desktop.keys("ctrl+s")
    expect_equal(item.read_bytes(), before, "what a read-only document leaves in the item")

    # A crash of the holder frees the lock for a third copy.
    first.kill()
    third = desktop.start(*MENU)
    window = desktop.wait_window(r"\[BP MENU on [^()]*\]$", program=third)
    window.focus()
    desktop.type_text("y")
    desktop.keys("ctrl+s")
    expect_file(item, b"y" + before)


def declining_leaves_no_document(desktop):
    desktop.sample_accounts()
    first = desktop.start(*MENU)
    desktop.wait_window(r"\[BP MENU on ", program=first)
    second = desktop.start(*MENU)
    desktop.wait_box()
    desktop.keys("alt+n")
    desktop.wait_no_window(r"^Nib - \[\*?BP MENU .*Read only", timeout=5)
    expect(second.alive(), "the second copy goes on without the document")


def closing_frees_the_lock(desktop):
    desktop.sample_accounts()
    first = desktop.start(*MENU)
    desktop.wait_active(r"\[BP MENU on ")
    desktop.keys("ctrl+F4")
    desktop.wait_active(r"^Nib$")
    second = desktop.start(*MENU)
    desktop.wait_window(r"\[BP MENU on [^()]*\]$", program=second)
    expect(first.alive(), "the first copy still runs")


if __name__ == "__main__":
    lib.run(the_second_copy_asks_for_read_only, declining_leaves_no_document, closing_frees_the_lock)
