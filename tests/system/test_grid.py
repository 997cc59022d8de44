#!/usr/bin/env python3
"""A record as a grid: names and dates of its dictionary, one date changed, and no other byte of the item."""
import lib
from lib import eventually, expect, expect_equal, expect_file
from test_reader import Atspi, Reader


def texts_below(node, found):
    """What is read of cells and headers."""
    for child in (node.get_child_at_index(i) for i in range(node.get_child_count())):
        if child is not None and child.get_child_count() == 0:
            found.append(child.get_name())
        elif child is not None:
            texts_below(child, found)
    return found


def one_date_is_changed(desktop):
    Reader(desktop)
    item = desktop.sample_accounts() / "DATA" / "O5001"
    before = item.read_bytes()
    expect(before.split(b"\n")[1] == b"21137", f"the sample has another date: {before}")
    program = desktop.start("/A=DEMO", "/F=DATA", "/I=O5001", shows=r"\[DATA O5001 on ",
                            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    desktop.keys("ctrl+shift+g")

    def seen():
        texts = texts_below(Atspi.get_desktop(0), [])
        return texts if "13 NOV 2025" in texts else None
    texts = eventually("the date in the grid", seen)
    for text in ("2  Date", "Own price", "6.00", "SL-0041\u00a6SL-0042"):
        expect(text in texts, f"no {text} in {texts}")
    desktop.keys("Down", "F2", "ctrl+a")
    desktop.type_text("tomorrow")
    desktop.keys("Return", "ctrl+a", "ctrl+F4")  # it is refused, and the cell stays open
    desktop.keys("alt+F4")
    desktop.wait_box()
    desktop.keys("Return")
    desktop.wait_active(r"\[DATA O5001 on ")
    desktop.keys("ctrl+y", "F12", "ctrl+a")  # no line behind the cell is deleted or formatted
    desktop.type_text("14 NOV 2025")
    desktop.keys("Return", "ctrl+s")
    expect_file(item, before.replace(b"21137", b"21138"))
    desktop.keys("ctrl+z", "ctrl+s")
    expect_file(item, before)
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the end")


lib.run(one_date_is_changed)
