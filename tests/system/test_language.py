#!/usr/bin/env python3
"""The user's language: what may be translated is, what is fixed stays."""
import lib


def titles(desktop, **variables):
    """Of the dialog for a place to go to, and of the one for a text to find."""
    desktop.sample_accounts()
    program = desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE", **variables)
    desktop.wait_active(r"INVOICE")
    seen = []
    for key in ("ctrl+g", "ctrl+f"):
        desktop.keys(key)
        lib.eventually("a dialog", lambda: "INVOICE" not in desktop.active_title() and desktop.active_title())
        seen.append(desktop.active_title())
        desktop.keys("Escape")
        desktop.wait_active(r"INVOICE")
    desktop.keys("ctrl+q")
    program.wait_end()
    return seen


def german(desktop):
    lib.expect_equal(titles(desktop, LANG="de_DE.UTF-8"), ["Gehe zu", "Find"], "titles")


def english_before_german(desktop):
    lib.expect_equal(titles(desktop, LANG="en_GB.UTF-8", LANGUAGE="en:de"), ["Goto", "Find"], "titles")


if __name__ == "__main__":
    lib.run(german, english_before_german)
