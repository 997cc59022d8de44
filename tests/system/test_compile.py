#!/usr/bin/env python3
"""Compilers that misbehave: endless output, output that is no text, and none at all."""
import os
import time

import lib
from lib import expect, expect_equal

# 100 for a measurement by hand.
MEGABYTES = int(os.environ.get("NIB_COMPILE_MEGABYTES", "16"))
LIMIT = 60

FLOOD = r"""
import sys
out = sys.stdout.buffer
line = b"Line 12: ELSE is not closed by END before the label in line 65, \x1b[31mred\x1b[0m, caf\xc3\xa9.\n"
odd = b"odd \0 \xff\xfe \xc3( \x1b]0;title\x07 \x9b2K end\n"
size = int(sys.argv[1]) << 20
out.write(b"first line\n" + odd)
block = line * 4096 + odd
for _ in range(size // len(block)):
    out.write(block)
out.write(b"last line without an end")
"""


def compiler(desktop, *line, seconds=60):
    """The account's compiler is this program."""
    demo = desktop.sample_accounts()
    (demo / "VOC/BASIC").write_text("V\n" + " ".join(str(word) for word in line) + f"\n{seconds}\n")
    return demo


def opened(desktop):
    program = desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", shows=r"\[BP INVOICE on ")
    return program


def shown_text(desktop, demo):
    """What the results window shows, by way of the clipboard and the item."""
    desktop.wait_active(r"^Results$")
    desktop.keys("ctrl+a", "ctrl+c", "Escape", shows=r"\[\*?BP INVOICE on ")
    item = demo / "BP/INVOICE"
    before = item.stat().st_ino  # a save puts another file in its place
    desktop.keys("ctrl+a", "ctrl+v", "ctrl+s")
    lib.eventually("the saved results", lambda: item.stat().st_ino != before, LIMIT)
    return item.read_text("latin-1").split("\n")


def peak_megabytes(program):
    with open(f"/proc/{program.pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) // 1024 for line in status if line.startswith("VmHWM"))


def endless_output_that_is_no_text(desktop):
    script = desktop.folder / "flood.py"
    script.write_text(FLOOD)
    demo = compiler(desktop, "/usr/bin/python3", script, MEGABYTES, "--")
    program = opened(desktop)
    before = peak_megabytes(program)
    began = time.monotonic()
    desktop.keys("F11")
    desktop.wait_active(r"^Results$", LIMIT)
    spent = time.monotonic() - began
    used = peak_megabytes(program) - before
    print(f"{MEGABYTES} MB of output shown after {spent:.1f} s, {used} MB of memory at the most")
    expect(used < 100 + 8 * MEGABYTES, f"{used} MB of memory for {MEGABYTES} MB of output")
    lines = shown_text(desktop, demo)
    expect_equal(lines[0], "first line", "the first line")
    expect_equal([line.strip() for line in lines if line.strip()][-1], "last line without an end", "the last line")
    expect(lines[1].startswith("odd "), f"the odd line: {lines[1]!r}")
    expect(not any(c < " " for line in lines for c in line), "nothing that a terminal would obey")
    expect(any("Line 12:" in line and "red, caf" in line for line in lines), "the lines between")


def cancel_ends_what_hangs(desktop):
    demo = compiler(desktop, "sh -c 'echo begun; sleep 1000 & echo $! > child; sleep 1000'", seconds=900)
    program = opened(desktop)
    desktop.keys("F11")
    box = desktop.wait_box()  # comes up after a second
    child = int((demo / "child").read_text())
    before = box.rows()
    lib.eventually("the elapsed time to go on", lambda: box.rows() != before)
    desktop.keys("Escape")
    lines = shown_text(desktop, demo)
    expect_equal([line.strip() for line in lines if line], ["begun", "BASIC was stopped."], "the results")
    lib.eventually("the end of the child", lambda: not os.path.exists(f"/proc/{child}/exe"))
    expect(program.alive(), "the program goes on")


if __name__ == "__main__":
    lib.run(endless_output_that_is_no_text, cancel_ends_what_hangs)
