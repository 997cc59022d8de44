#!/usr/bin/env python3
"""Two copies of the editor and one item: who may write, and what is left when one of them dies."""
import lib
from lib import expect_equal, expect_file

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


if __name__ == "__main__":
    lib.run(the_second_copy_asks_for_read_only)
