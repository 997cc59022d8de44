#!/usr/bin/env python3
"""Opens, edits, saves and closes items and files through the window alone."""
import os
import shutil
import time

import lib
from lib import eventually, expect, expect_equal, expect_file


def saves_a_new_document_through_the_picker(desktop):
    desktop.start(shows=r"^Nib$")
    desktop.keys("ctrl+n", shows=r"NewItem1 \(New\)")
    desktop.type_text("hello")
    desktop.keys("ctrl+s", shows=r"^Save$")
    target = desktop.folder / "new text"
    desktop.type_text(str(target))
    desktop.keys("Return")
    expect_file(target, b"hello")
    desktop.wait_active(r"\[new text\]$")


def a_name_that_is_no_utf8_opens_and_an_unknown_switch_is_told(desktop):
    path = desktop.folder / os.fsdecode(b"caf\xe9.txt")
    path.write_bytes(b"old\n")
    program = desktop.start("/X", path, shows=r"\[caf")
    desktop.type_text("new ")
    desktop.keys("ctrl+s")
    expect_file(path, b"new old\n")
    expect("nibpad71: unknown switch /X\n" in program.output(), f"nothing told of /X: {program.output()}")


def a_folder_that_vanishes_keeps_the_document(desktop):
    folder = desktop.folder / "work"
    folder.mkdir()
    (folder / "a.txt").write_bytes(b"text\n")
    desktop.start(folder / "a.txt", shows=r"\[a\.txt\]")
    desktop.type_text("more ")  # the look at files that comes with the window's activation is over then
    shutil.rmtree(folder)
    desktop.keys("ctrl+s")
    desktop.wait_box()
    desktop.keys("alt+k")  # keeps the text of what is gone, and then says that there is no place for it
    time.sleep(0.5)
    desktop.wait_box()
    desktop.keys("Escape", shows=r"\[\*a\.txt \(New\)\]")
    folder.mkdir()
    desktop.keys("ctrl+s")
    expect_file(folder / "a.txt", b"more text\n")


def finds_in_the_account_and_goes_there(desktop):
    folder = desktop.sample_accounts() / "BP"
    desktop.results_in_a_window()
    (folder / "FIRST").write_bytes(b"one\ntwo needle\n")
    (folder / "OBJECT").write_bytes(b"needle\0\n")
    desktop.start("/A=DEMO", "/F=BP", "/I=MENU", shows=r"\[BP MENU on ")
    desktop.keys("ctrl+shift+f", shows=r"^Find in Account$")
    desktop.type_text("NEEDLE")
    desktop.keys("Return", shows=r"^Results$")
    desktop.keys("ctrl+Home", "Down", "Down", "Down", "Return", shows=r"\[BP FIRST on ")
    desktop.type_text("!")
    desktop.keys("ctrl+s")
    expect_file(folder / "FIRST", b"one\n!two needle\n")


def answers_on_the_terminal(desktop):
    for word, answer in (("--version", "nibpad71 "), ("--help", "Usage: nibpad71")):
        program = desktop.start(word, DISPLAY="")
        expect_equal(program.wait_end(), 0, f"exit code of {word}")
        expect(program.output().startswith(answer), f"{word} answered {program.output()!r}")
    eventually("no window", lambda: not desktop.windows(r"."))


if __name__ == "__main__":
    lib.run(saves_a_new_document_through_the_picker, a_name_that_is_no_utf8_opens_and_an_unknown_switch_is_told,
            a_folder_that_vanishes_keeps_the_document, finds_in_the_account_and_goes_there, answers_on_the_terminal)
