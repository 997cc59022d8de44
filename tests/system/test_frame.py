"""The frame from outside: windows, tabs, commands by keys, settings that last."""
import re

import lib
from lib import expect, expect_equal


def windows_and_fast_keys(desktop):
    demo = desktop.sample_accounts()
    program = desktop.start("/A=DEMO", "/F=BP", "/I=MENU", "/I=INVOICE", "/I=GOTO.STYLE", shows=r"\[BP MENU on ")
    desktop.keys("ctrl+Tab", shows=r"\[BP GOTO.STYLE on ")
    desktop.keys("ctrl+shift+Tab", shows=r"\[BP MENU on ")

    # Out of the maximised state and back; tiled and cascaded windows have a title of their own, which the frame's
    # names without brackets.
    for letter in "hvc":
        desktop.keys("alt+w", letter, shows=r"^Nib - BP MENU on ")
    desktop.keys("alt+w", "m", shows=r"\[BP MENU on ")

    # To a line, typed as fast as keys can come.
    desktop.keys("ctrl+g", shows=r"^Goto$")
    desktop.xdotool("key", "--delay", 0, "--", "alt+n", "9", "Return")
    desktop.wait_active(r"\[BP MENU on ")
    desktop.keys("End")
    desktop.type_text("!nine")
    desktop.keys("ctrl+shift+s", shows=r"\[BP MENU on [^*]*\]$")
    lines = (demo / "BP/MENU").read_text("latin-1").split("\n")
    expect(lines[8].endswith("!nine"), "the caret went to line nine")
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the exit code")


def a_double_click_goes_to_the_label(desktop):
    demo = desktop.sample_accounts()
    desktop.start("/A=DEMO", "/F=BP", "/I=MENU", QT_SCALE_FACTOR="1", LANG="de_DE.UTF-8")
    window = desktop.wait_active(r"\[BP MENU auf ")  # in the user's language
    lines = (demo / "BP/MENU").read_text("latin-1").split("\n")
    row = next(i for i, line in enumerate(lines) if "GOSUB SHOW.SCREEN" in line)
    column = lines[row].index("SHOW.SCREEN") + 4

    # The text begins at a place that the pictures show; a row is 18 pixels high, a column not quite 8 wide.
    window.click(47 + round(column * 7.83), 103 + row * 18, count=2)
    desktop.wait_active(r"^Gehe zu$")
    desktop.keys("Return", shows=r"\[BP MENU auf ")
    desktop.keys("Home")
    desktop.type_text("!went")
    desktop.keys("alt+Left")
    desktop.type_text("!back")
    desktop.keys("ctrl+s", shows=r"\[BP MENU auf [^*]*\]$")
    after = (demo / "BP/MENU").read_text("latin-1").split("\n")
    label = next(i for i, line in enumerate(lines) if line.startswith("SHOW.SCREEN:"))
    expect_equal(after[label], "!went" + lines[label], "the caret went to the label")
    expect("!back" in after[row], "and back to the call")


def _place(geometry):
    """Position and size, without the number of the window and of the screen."""
    return re.findall(r"(?:Position|Geometry): (\d+[,x]\d+)", geometry)


def the_frame_finds_its_place_again(desktop):
    desktop.sample_accounts()
    program = desktop.start("/A=DEMO", "/F=BP", "/I=MENU")
    window = desktop.wait_active(r"MENU").number
    desktop.xdotool("windowsize", "--sync", window, 700, 500)
    desktop.xdotool("windowmove", "--sync", window, 200, 150)
    before = desktop.xdotool("getwindowgeometry", window)
    desktop.keys("alt+v", "t")  # the tool bar goes
    desktop.keys("ctrl+q")
    program.wait_end()
    text = (desktop.config / "hive.conf").read_text("utf-8")
    expect("ToolbarVisible=False" in text, "what was hidden is remembered: " + text)
    desktop.start("/A=DEMO", "/F=BP", "/I=MENU")
    again = desktop.wait_active(r"MENU").number
    lib.eventually("the same place and size: " + before,
                   lambda: _place(desktop.xdotool("getwindowgeometry", again)) == _place(before))


def text_is_dragged(desktop):
    demo = desktop.sample_accounts() / "BP"
    menu, invoice = ((demo / name).read_text("latin-1") for name in ("MENU", "INVOICE"))
    first = menu.split("\n")[0] + "\n"
    desktop.start("/A=DEMO", "/F=BP", "/I=MENU", "/I=INVOICE", shows=r"\[BP MENU on ", QT_SCALE_FACTOR="1")
    window = desktop.active_window()

    # From one window to the other: what goes there leaves its place.
    desktop.keys("alt+w", "v", shows=r"^Nib - BP MENU on ")
    desktop.keys("ctrl+Home", "shift+Down")
    window.drag((70, 128), (600, 272))
    desktop.keys("ctrl+shift+s")
    lib.eventually("the line in the other item", lambda: first in (demo / "INVOICE").read_text("latin-1"))
    expect_equal((demo / "INVOICE").read_text("latin-1").replace(first, "", 1), invoice, "and nothing else")
    lib.eventually("and gone here", lambda: first + (demo / "MENU").read_text("latin-1") == menu)

    # From pane to pane: one step of undo.
    desktop.keys("ctrl+z", "alt+w", "m", shows=r"\[\*BP INVOICE on ")
    desktop.keys("F7", "ctrl+Home", "shift+Down")
    window.drag((70, 103), (400, 450))
    desktop.keys("ctrl+s", shows=r"\[BP INVOICE on ")
    moved = (demo / "INVOICE").read_text("latin-1")
    expect(moved != invoice and sorted(moved) == sorted(invoice), "text went to the other pane")
    desktop.keys("ctrl+z", shows=r"\[\*BP INVOICE on ")
    desktop.keys("ctrl+s", shows=r"\[BP INVOICE on ")
    expect_equal((demo / "INVOICE").read_text("latin-1"), invoice, "one step takes it back")


def a_monitor_goes(desktop):
    def edges():
        """The left one of each window, and the right one."""
        for window in desktop.windows():
            place = desktop.xdotool("getwindowgeometry", "--shell", window.number)
            left = int(re.search(r"X=(-?\d+)", place)[1])
            yield left, left + window.size()[0]

    desktop.command("xrandr", "--setmonitor", "left", "640/169x860/227+0+0", "screen")
    desktop.command("xrandr", "--setmonitor", "right", "640/169x860/227+640+0", "none")
    desktop.sample_accounts()
    desktop.start("/A=DEMO", "/F=BP", "/I=MENU", shows=r"\[BP MENU on ")
    frame = desktop.active_window()
    desktop.keys("ctrl+f", shows="^Find$")
    for window in (frame, desktop.active_window()):
        desktop.xdotool("windowmove", "--sync", window.number, 660, 60)
    expect(min(edges())[0] > 640, f"all windows are on the right: {list(edges())}")
    desktop.command("xrandr", "--delmonitor", "right")
    lib.eventually("all windows on the left", lambda: all(0 <= left and right <= 640 for left, right in edges()))


if __name__ == "__main__":
    lib.run(windows_and_fast_keys, text_is_dragged, a_double_click_goes_to_the_label, the_frame_finds_its_place_again,
            a_monitor_goes)
