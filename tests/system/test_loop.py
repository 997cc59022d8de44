#!/usr/bin/env python3
"""The daily loop by keys alone, and how many each step takes: to a program, to its errors, and on with the text."""
from lib import eventually, expect, expect_equal, stays
from test_reader import Atspi, Reader, below, rows_of, run_apart

QUIET = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}


def broken_invoice(demo):
    """Two lines with an error each; answers the text as it is then."""
    item = demo / "BP/INVOICE"
    lines = item.read_text("latin-1").split("\n")
    lines[30], lines[50] = "      X = (1 + ", "      FOR I = 1 TO 3"
    item.write_text("\n".join(lines), "latin-1")
    return item, lines


def results():
    """The rows of the panel; none while it is closed."""
    node = below(Atspi.get_desktop(0), "Results", "Text")
    return Atspi.Text.get_text(node, 0, -1).split("\n") if node else []


def five_keys_lead_to_a_program(desktop):
    desktop.sample_accounts()
    first = desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", shows=r"\[BP INVOICE on ")
    desktop.keys("ctrl+q")
    first.wait_end()
    Reader(desktop)
    desktop.start(shows="^Nib", **QUIET)
    desktop.keys("ctrl+e", shows="^Quick Open$")
    desktop.keys("s", "t", "o")
    eventually("the program, of the account that was used last, as the first of the list", lambda: "STOCK.REPORT" in
               "".join(rows_of(below(Atspi.get_desktop(0), "Found"))[:1]))
    desktop.keys("Return", shows=r"\[BP STOCK\.REPORT on ")


def one_key_leads_to_the_next_error_and_none_to_the_text(desktop):
    item, lines = broken_invoice(desktop.sample_accounts())
    Reader(desktop)
    desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", shows=r"\[BP INVOICE on ", **QUIET)
    desktop.keys("F11")
    rows = eventually("the panel with its rows", results)
    expect_equal([row.split(":")[0] for row in rows], ["Line 31", "Line 51"], "the errors")
    # The text has the keys, and the second error stands where it is by then.
    desktop.keys("F8", "Return", "F8", "exclam", "ctrl+s")
    lines[50] = "!" + lines[50]
    lines.insert(30, "")
    eventually("what was typed at each", lambda: item.read_text("latin-1").split("\n") == lines)
    expect(results(), "the panel stays")


def a_clean_compile_leaves_all_as_it_is(desktop):
    item = desktop.sample_accounts() / "BP/MENU"
    Reader(desktop)
    desktop.start("/A=DEMO", "/F=BP", "/I=MENU", shows=r"\[BP MENU on ", **QUIET)
    desktop.keys("F11")
    eventually("the line in the status bar", lambda: below(
        Atspi.get_desktop(0), "BP MENU: 58 lines checked, no error found."))
    stays("no panel", lambda: not results())
    desktop.keys("asterisk", "ctrl+s")
    eventually("what was typed", lambda: item.read_text("latin-1").startswith("*"))


def output_comes_as_it_is_printed(desktop):
    demo = desktop.sample_accounts()
    (demo / "VOC/BASIC").write_text("V\nsh -c 'echo Line 3: no; while ! test -e go; do sleep 0.1; done; rm go; "
                                    "echo end'\n60\n")
    Reader(desktop)
    desktop.start("/A=DEMO", "/F=BP", "/I=MENU", shows=r"\[BP MENU on ", **QUIET)
    (demo / "go").touch()
    desktop.keys("F11")
    eventually("the panel", results)
    node = below(Atspi.get_desktop(0), "Results", "Text")  # which is looked for in no time as long as nothing runs

    def text():
        return Atspi.Text.get_text(node, 0, -1)
    expect_equal(text(), "Line 3: no\nend", "all of it")
    desktop.keys("F11")
    desktop.wait_box()
    eventually("the first line while the compiler runs", lambda: text() == "Line 3: no")
    (demo / "go").touch()
    eventually("the rest", lambda: text() == "Line 3: no\nend")


def the_panel_is_as_high_as_it_was(desktop):
    broken_invoice(desktop.sample_accounts())
    Reader(desktop)

    def place():
        node = below(Atspi.get_desktop(0), "Results", "Text")
        box = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN) if node else None
        return (box.y, box.height) if box and box.height > 0 else None
    first = desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", shows=r"\[BP INVOICE on ", **QUIET)
    desktop.keys("F11")
    top, height = eventually("the panel", place)
    desktop.xdotool("mousemove", 400, top - 24, "mousedown", 1)
    for step in range(10, 90, 10):
        desktop.xdotool("mousemove", 400, top - 24 - step)
    desktop.xdotool("mouseup", 1)
    high = eventually("a higher panel", lambda: (now := place()) and now[1] > height + 40 and now)
    desktop.keys("ctrl+q")
    expect_equal(first.wait_end(), 0, "the end")
    desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", shows=r"\[BP INVOICE on ", **QUIET)
    eventually("the panel as it was", lambda: place() == high)


if __name__ == "__main__":
    run_apart(five_keys_lead_to_a_program, one_key_leads_to_the_next_error_and_none_to_the_text,
              a_clean_compile_leaves_all_as_it_is, output_comes_as_it_is_printed, the_panel_is_as_high_as_it_was)
