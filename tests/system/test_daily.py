"""The daily loop on the sample account: find, change, format, compile, jump to the error, mend it, compile clean."""
import re

import lib
from lib import expect, expect_equal


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
    desktop.keys("F11", shows=r"^Results$")
    desktop.keys("ctrl+a", "ctrl+c", "Escape", shows=r"\[BP INVOICE on ")
    desktop.keys("ctrl+End")
    desktop.keys("ctrl+v", "ctrl+s")
    lib.eventually("the words that no error was found",
                   lambda: "no error" in (demo / "BP/INVOICE").read_text("latin-1").lower())
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the exit code")


if __name__ == "__main__":
    lib.run(break_compile_mend)
