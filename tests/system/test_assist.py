#!/usr/bin/env python3
"""What the editor knows of an account's programs, seen from outside."""
import time

import lib
from lib import eventually

CALLED = b"      SUBROUTINE WITH.TWO(FIRST, SECOND)\n      SECOND = FIRST\n      RETURN\n"
CALLER = b"      A = 1\n      B = 2\n      CALL WITH.TWO(A)\n      PRINT B\n      STOP\n"


def wave_colours(window):
    """Dots in the two colours of waves, red and orange."""
    dots = b"".join(window.rows())
    pixels = [dots[i:i + 3] for i in range(0, len(dots), 3)]
    return sum(pixels.count(colour) for colour in (b"\xc0\x39\x2b", b"\xe8\x8a\x1a"))


def a_wrong_argument_count_is_underlined_before_compiling(desktop):
    folder = desktop.sample_accounts() / "BP"
    (folder / "WITH.TWO").write_bytes(CALLED)
    (folder / "CALLER").write_bytes(CALLER)
    desktop.start("/A=DEMO", "/F=BP", "/I=CALLER", shows=r"\[BP CALLER on ")
    window = desktop.active_window()
    eventually("a wave under the call", lambda: wave_colours(window) > 20)
    desktop.keys("F8")
    desktop.type_text("X")
    desktop.keys("ctrl+s")
    eventually("the caret before the call's name",
               lambda: (folder / "CALLER").read_bytes() == CALLER.replace(b"WITH.TWO(", b"XWITH.TWO("))


def quick_open_goes_to_an_item_and_the_definition_to_another(desktop):
    folder = desktop.sample_accounts() / "BP"
    (folder / "WITH.TWO").write_bytes(CALLED)
    (folder / "CALLER").write_bytes(CALLER)
    desktop.start("/A=DEMO", "/F=BP", "/I=MENU", shows=r"\[BP MENU on ")
    desktop.keys("ctrl+e", shows=r"^Quick Open$")
    desktop.type_text("caller")
    time.sleep(1)  # until the account has been read, and the list shows it
    desktop.keys("Return")
    desktop.wait_active(r"\[BP CALLER on ")
    desktop.keys("Down", "Down", "End", "Left", "Left", "Left", "Left", "ctrl+F12")
    desktop.wait_active(r"\[BP WITH\.TWO on ")


lib.run(a_wrong_argument_count_is_underlined_before_compiling,
        quick_open_goes_to_an_item_and_the_definition_to_another)
