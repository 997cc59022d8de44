#!/usr/bin/env python3
"""A crash and what comes after it: the copies, the dialog of the next start, and nothing left in the end.

A pass runs before the program waits for a host, so the Open dialog is enough to bring one about.
"""
import os
import signal
import time

import lib
from lib import eventually, expect, expect_equal, stays

MENU = ("/T=mvdb", "/H=*", "/A=DEMO", "/F=BP", "/I=MENU")
DIALOG = r"^Nib Auto Recover$"


def copies(desktop):
    return lib.plain_files(desktop.data / "AutoRecover")


def run_a_pass(desktop, count, title):
    desktop.keys("ctrl+o")
    eventually(f"{count} recovery copies", lambda: len(copies(desktop)) == count)
    desktop.wait_active(r"^Open")
    desktop.keys("Escape", shows=title)


def end(desktop, program):
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the exit code")


def three_changed_documents(desktop):
    """A local file, an item of a host and a new document, each changed and copied; answers the program."""
    desktop.sample_accounts()
    local = desktop.folder / "local.txt"
    local.write_text("local\n", encoding="utf-8")
    program = desktop.start(local, *MENU)

    def menu_is_open_and_active():
        # While documents open, each is active for a moment.
        desktop.keys("ctrl+F6")
        time.sleep(0.5)
        return "[BP MENU on " in desktop.active_title()

    eventually("the second document", menu_is_open_and_active)
    desktop.type_text("TWO ", shows=r"\[\*BP MENU on ")
    desktop.keys("ctrl+F6", shows=r"\[local\.txt\]$")
    desktop.type_text("ONE ", shows=r"\[\*local\.txt\]$")
    desktop.keys("ctrl+n", shows=r"NewItem1 \(New\)")
    desktop.type_text("THREE", shows=r"\[\*NewItem1")
    run_a_pass(desktop, 3, r"\[\*NewItem1")
    return program


def a_crash_brings_the_documents_back(desktop):
    first = three_changed_documents(desktop)
    expect_equal([oct(path.stat().st_mode & 0o777) for path in copies(desktop)], ["0o600"] * 3, "who may read copies")
    expect_equal(oct(copies(desktop)[0].parent.stat().st_mode & 0o777), "0o700", "who may enter the folder")
    time.sleep(1)
    first.kill()
    before = [path.read_bytes() for path in copies(desktop)]

    second = desktop.start(shows=DIALOG)
    # A look at what would come back leaves the dialog as it is.
    desktop.keys("Tab", "Tab", "Tab", "space", shows=r"^Compare local\.txt$")
    time.sleep(0.5)
    desktop.keys("F8", "alt+Left", "Escape", shows=DIALOG)
    desktop.keys("shift+Tab", "shift+Tab", "shift+Tab")
    # All are checked, in the order of the documents: the first two are recovered, and the third is deleted.
    desktop.keys("Down", "Down", "space", "Return")
    desktop.wait_window(r"BP MENU on ", program=second)
    desktop.wait_active(DIALOG)
    desktop.keys("Tab", "Tab", "Tab")  # Recover has nothing to do and is passed over
    desktop.keys("space")
    desktop.wait_box()
    desktop.keys("alt+y")
    desktop.wait_no_window(DIALOG)
    expect_equal(sorted(path.read_bytes() for path in copies(desktop)), sorted(before), "nothing goes before the end")

    menu = desktop.data / "Accounts" / "DEMO" / "BP" / "MENU"
    old = menu.read_bytes()
    desktop.wait_active(r"\[\*local\.txt\]$")
    desktop.keys("ctrl+s", shows=r"\[local\.txt\]$")
    expect_equal((desktop.folder / "local.txt").read_bytes(), b"ONE local\n", "the local file")
    desktop.keys("ctrl+F6", shows=r"\[\*BP MENU on ")
    desktop.keys("ctrl+s", shows=r"\[BP MENU on ")
    expect_equal(menu.read_bytes(), b"TWO " + old, "the item of the host")
    desktop.keys("ctrl+z", shows=r"\[\*BP MENU on ")
    desktop.keys("ctrl+s", shows=r"\[BP MENU on ")
    expect_equal(menu.read_bytes(), old, "one step of undo")
    end(desktop, second)
    expect_equal(copies(desktop), [], "copies after a clean end")
    third = desktop.start(shows=r"^Nib$")
    stays("no dialog", lambda: third.alive() and not desktop.windows(DIALOG))


def recovers(desktop, typed):
    """The next start offers what was typed in MENU; it is put back, saved, and taken out again."""
    menu = desktop.data / "Accounts" / "DEMO" / "BP" / "MENU"
    old = menu.read_bytes()
    program = desktop.start(shows=DIALOG)
    desktop.keys("Return", shows=r"\[\*BP MENU on ")
    desktop.keys("ctrl+s", shows=r"\[BP MENU on ")
    expect_equal(menu.read_bytes(), typed + old, "what was typed")
    eventually("the end of copies of what is saved", lambda: not copies(desktop))
    program.kill()
    menu.write_bytes(old)


def no_end_takes_what_was_typed(desktop):
    desktop.sample_accounts()
    for number, dialog in ((signal.SIGTERM, None), (signal.SIGHUP, "ctrl+o"), (signal.SIGINT, "ctrl+f"),
                           (signal.SIGKILL, "ctrl+o")):
        program = desktop.start(*MENU, shows=r"\[BP MENU on ")
        desktop.type_text("typed ")
        if dialog:
            desktop.keys(dialog, shows=r"^Open|^Find")
        if number == signal.SIGKILL:
            time.sleep(1)  # the promise
        os.kill(program.pid, number)
        expect_equal(program.wait_end(), -9 if number == signal.SIGKILL else 0, "the exit code")
        if number != signal.SIGKILL:
            recent = (desktop.config / "hive.conf").read_text(encoding="utf-8")
            expect("RecentFile_1" in recent, "the recent files are stored")
        recovers(desktop, b"typed ")


def what_was_typed_is_in_front_of_what_others_stored(desktop):
    menu = desktop.sample_accounts() / "BP" / "MENU"
    program = desktop.start(*MENU, shows=r"\[BP MENU on ")
    desktop.type_text("typed ", shows=r"\[\*BP MENU on ")
    time.sleep(6)  # the session knows the document, too
    program.kill()
    menu.write_bytes(b"theirs\n")
    desktop.start(shows=DIALOG)
    desktop.keys("Return", shows=r"\[\*NewItem1")
    desktop.wait_window(r"NewItem1")
    stays("the recovered text in front", lambda: "NewItem1" in desktop.active_title())


def a_file_that_may_grow_no_further_ends_nothing(desktop):
    menu = desktop.sample_accounts() / "BP" / "MENU"
    old = menu.read_bytes()
    program = desktop.start(*MENU, shows=r"\[BP MENU on ")
    desktop.keys("ctrl+a", "ctrl+c", "ctrl+v", "ctrl+v")
    desktop.command("prlimit", f"--pid={program.pid}", "--fsize=2000")
    desktop.keys("ctrl+s")
    desktop.wait_box()
    desktop.keys("Return", shows=r"\[\*BP MENU on ")
    expect_equal(menu.read_bytes(), old, "the item")


def open_documents_come_back(desktop):
    """After a crash, with the caret where it was; after an ordinary end where the user has asked for it."""
    desktop.sample_accounts()
    local = desktop.folder / "local.txt"
    local.write_text("".join(f"line {n}\n" for n in range(1, 200)), encoding="utf-8")
    program = desktop.start(local, *MENU)
    desktop.wait_window(r"BP MENU on |local\.txt")
    eventually("the local file", lambda: desktop.keys("ctrl+F6") or "local" in desktop.active_title())
    desktop.keys("ctrl+End", "Up", "Home")
    time.sleep(6)
    program.kill()
    for end_it in (lambda: program.kill(), lambda: end(desktop, program)):
        program = desktop.start(shows=r"\[local\.txt\]$")
        desktop.type_text("here ", shows=r"\[\*local\.txt\]$")
        desktop.keys("ctrl+s", shows=r"\[local\.txt\]$")
        expect(local.read_bytes().splitlines()[-1].startswith(b"here "), "the caret is where it was")
        time.sleep(6)
        end_it()
    program = desktop.start(shows=r"^Nib$")
    stays("no document", lambda: program.alive() and desktop.active_title() == "Nib")


def the_end_of_the_session_asks_nothing(desktop):
    desktop.sample_accounts()
    (desktop.home / ".xsmstartup").write_text(f"{desktop.program} {' '.join(MENU)}\n", encoding="utf-8")
    manager = desktop.start(program="xsm", shows=r"\[BP MENU on ")
    desktop.type_text("typed ", shows=r"\[\*BP MENU on ")
    os.kill(manager.pid, signal.SIGTERM)
    manager.wait_end()
    desktop.wait_no_window(r"BP MENU on ")
    recovers(desktop, b"typed ")


if __name__ == "__main__":
    lib.run(a_crash_brings_the_documents_back, a_file_that_may_grow_no_further_ends_nothing,
            no_end_takes_what_was_typed, what_was_typed_is_in_front_of_what_others_stored,
            the_end_of_the_session_asks_nothing, open_documents_come_back)
