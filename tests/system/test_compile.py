#!/usr/bin/env python3
"""Compilers that misbehave, and one that helps: find, change, format, compile, jump to the error, mend it."""
import os
import re
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
    desktop.results_in_a_window()
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


def double_click_first_line(desktop, results):
    """With the mouse. Selecting the line shows where it is: in the rows of dots that change."""
    desktop.keys("ctrl+Home")
    before = results.rows()
    desktop.keys("shift+End")

    def changed():
        after = results.rows()
        # A caret that blinks changes a dot or two of a row, a selection most of them.
        return [y for y, (old, new) in enumerate(zip(before, after))
                if sum(a != b for a, b in zip(old, new)) > 150]

    rows = lib.eventually("the line as selected", changed)
    expect(rows[-1] - rows[0] < 60, f"one line is selected, not the rows {rows[0]} to {rows[-1]}")
    desktop.keys("ctrl+Home")
    results.click(20, (rows[0] + rows[-1]) // 2, count=2)


def break_compile_mend(desktop):
    demo = desktop.sample_accounts()
    desktop.results_in_a_window()
    program = desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", shows=r"\[BP INVOICE on ")
    whole = (demo / "BP/INVOICE").read_bytes()
    lines = whole.decode("latin-1").split("\n")
    end = next(i for i, line in enumerate(lines) if line.strip() == "END")

    # Without its END a block stays open.
    desktop.keys("ctrl+g", shows=r"^Goto$")
    desktop.keys("alt+n")
    desktop.type_text(str(end + 1))
    desktop.keys("Return", shows=r"\[BP INVOICE on ")
    desktop.keys("ctrl+y", shows=r"\[\*BP INVOICE on ")
    desktop.keys("F11")
    box = desktop.wait_box()
    expect(box.size()[0] > 100, "the question whether to save first")
    results = desktop.keys("Return", shows=r"^Results$")

    # The first line of the output names a line of the source; a double click on it goes there.
    double_click_first_line(desktop, results)
    desktop.wait_active(r"\[BP INVOICE on ")
    desktop.keys("End")
    desktop.type_text(" !here")
    desktop.keys("ctrl+s", shows=r"\[BP INVOICE on [^*]*\]$")
    broken = (demo / "BP/INVOICE").read_text("latin-1").split("\n")
    marked = [i for i, line in enumerate(broken) if line.endswith("!here")]
    opener = max(i for i in range(end) if re.search(r"\b(THEN|ELSE|LOCKED)\s*$", lines[i]))
    expect_equal(marked, [opener], "the line that opened the block")

    # Undone and saved the program is as it was, and compiles clean.
    for _ in range(20):
        desktop.keys("ctrl+z")
    desktop.keys("ctrl+s")
    lib.eventually("the program as it was", lambda: (demo / "BP/INVOICE").read_bytes() == whole)
    desktop.keys("F11", "alt+v", "r", shows=r"^Results$")
    desktop.keys("ctrl+a", "ctrl+c", "Escape", shows=r"\[BP INVOICE on ")
    desktop.keys("ctrl+End")
    desktop.keys("ctrl+v", "ctrl+s")
    lib.eventually("the words that no error was found",
                   lambda: "no error" in (demo / "BP/INVOICE").read_text("latin-1").lower())
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the exit code")


if __name__ == "__main__":
    lib.run(endless_output_that_is_no_text, cancel_ends_what_hangs, break_compile_mend)
