#!/usr/bin/env python3
"""A crash and what comes after it: the copies, the dialog of the next start, and nothing left in the end.

A pass runs before the program waits for a host, so the Open dialog is enough to bring one about.
"""
import lib
from lib import eventually, expect, expect_equal, expect_file, stays

HEADER = "*---> Recovered document: "
MENU = ("/A=DEMO", "/F=BP", "/I=MENU")
DIALOG = r"^Nib Auto Recover$"


def copies(desktop):
    folder = desktop.data / "AutoRecover"
    return sorted(path for path in folder.iterdir() if not path.name.startswith(".")) if folder.is_dir() else []


def run_a_pass(desktop, count, title):
    desktop.keys("ctrl+o")
    eventually(f"{count} recovery copies", lambda: len(copies(desktop)) == count)
    desktop.wait_active(r"^Open")
    desktop.keys("Escape")
    desktop.wait_active(title)


def end(desktop, program):
    """By the menu's key; every question about changes is answered with No."""
    desktop.keys("ctrl+q")

    def ended():
        window = desktop.active_window()
        if program.alive() and window and (window.title() or "") == "Nib" and window.size()[0] < 900:
            desktop.keys("alt+n")
        return not program.alive()

    program.may_end = True
    eventually("the end of the program", ended)


def three_changed_documents(desktop):
    """A local file, an item of a host and a new document, each changed and copied; answers the program."""
    desktop.sample_accounts()
    local = desktop.folder / "local.txt"
    local.write_text("local\n", encoding="utf-8")
    program = desktop.start(local, *MENU)
    desktop.wait_active(r"local\.txt|BP MENU")
    desktop.wait_active(r"\[local\.txt\]$")  # the first is activated in the end
    desktop.type_text("ONE ")
    desktop.wait_active(r"\[\*local\.txt\]$")
    desktop.keys("ctrl+F6")
    desktop.wait_active(r"\[BP MENU on ")
    desktop.type_text("TWO ")
    desktop.wait_active(r"\[\*BP MENU on ")
    desktop.keys("ctrl+n")
    desktop.wait_active(r"NewItem1 \(New\)")
    desktop.type_text("THREE")
    desktop.wait_active(r"\[\*NewItem1")
    run_a_pass(desktop, 3, r"\[\*NewItem1")
    return program


def a_crash_brings_the_documents_back(desktop):
    first = three_changed_documents(desktop)
    expect_equal([oct(path.stat().st_mode & 0o777) for path in copies(desktop)], ["0o600"] * 3, "who may read copies")
    expect_equal(oct(copies(desktop)[0].parent.stat().st_mode & 0o777), "0o700", "who may enter the folder")
    first.kill()
    before = [path.read_bytes() for path in copies(desktop)]

    second = desktop.start()
    desktop.wait_active(DIALOG)
    # The rows are in the order of the documents: the first two are recovered, and the third is deleted.
    desktop.keys("space", "Down", "space", "Return")
    desktop.wait_window(r"\[\*NewItem2 \(New\)\]$", program=second)
    desktop.wait_active(DIALOG)
    desktop.keys("Tab", "Tab", "Tab")  # Recover has nothing to do and is passed over
    desktop.keys("space")
    desktop.wait_box()
    desktop.keys("alt+y")
    desktop.wait_no_window(DIALOG)
    expect_equal(sorted(path.read_bytes() for path in copies(desktop)), sorted(before), "nothing goes before the end")

    target = desktop.folder / "recovered.txt"
    desktop.wait_active(r"\[\*NewItem2")
    desktop.keys("ctrl+a", "ctrl+c")
    desktop.start(target)
    desktop.wait_box()
    desktop.keys("alt+y")
    desktop.wait_active(r"\[recovered\.txt")
    desktop.keys("ctrl+v", "ctrl+s")
    text = (desktop.data / "Accounts/DEMO/BP/MENU").read_bytes()
    eventually("the recovered text", lambda: target.is_file() and target.stat().st_size > len(text))
    found = target.read_bytes().replace(b"\r\n", b"\n")
    expect_equal(found.rstrip(b"\n"), (HEADER + "MENU\nTWO ").encode() + text.rstrip(b"\n"), "the recovered text")
    desktop.keys("ctrl+q")
    desktop.wait_active(r"NewItem2")
    end(desktop, second)
    expect_equal(copies(desktop), [], "copies after a clean end")
    third = desktop.start()
    desktop.wait_active(r"^Nib$")
    stays("no dialog", lambda: third.alive() and not desktop.windows(DIALOG))


def cancel_asks_again_and_a_running_copy_is_left_alone(desktop):
    first = three_changed_documents(desktop)
    second = desktop.start()
    desktop.wait_window(r"^Nib$", program=second)
    stays("no dialog", lambda: second.alive() and not desktop.windows(DIALOG))
    second.kill()
    first.kill()
    for _ in range(2):
        program = desktop.start()
        desktop.wait_active(DIALOG)
        desktop.keys("Escape")
        desktop.wait_no_window(DIALOG)
        desktop.wait_active(r"^Nib$")
        end(desktop, program)
        expect_equal(len(copies(desktop)), 3, "copies after Cancel")


def what_was_saved_or_closed_leaves_nothing(desktop):
    program = three_changed_documents(desktop)
    end(desktop, program)
    expect_equal(copies(desktop), [], "copies after a clean end")
    sessions = desktop.data / "Sessions"
    expect_equal(list(sessions.iterdir()), [], "locks after a clean end")


if __name__ == "__main__":
    lib.run(a_crash_brings_the_documents_back, cancel_asks_again_and_a_running_copy_is_left_alone,
            what_was_saved_or_closed_leaves_nothing)
