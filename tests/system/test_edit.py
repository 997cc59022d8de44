#!/usr/bin/env python3
"""Opens, edits, undoes, saves and reopens items and files through the window alone."""
import lib
from lib import eventually, expect, expect_equal, expect_file

INVOICE = ("/H=*", "/A=DEMO", "/F=BP", "/I=INVOICE")


def typing_undo_redo_save(desktop):
    item = desktop.sample_accounts() / "BP" / "INVOICE"
    before = item.read_bytes()
    desktop.start(*INVOICE, shows=r"\[BP INVOICE on ")
    desktop.type_text("abc", shows=r"\[\*BP INVOICE on ")
    desktop.keys("ctrl+z", shows=r"\[BP INVOICE on ")
    desktop.keys("ctrl+shift+z", shows=r"\[\*BP INVOICE on ")
    desktop.keys("ctrl+s", shows=r"\[BP INVOICE on ")
    expect_file(item, b"abc" + before)
    # One more round: the lock is still held, and undo goes back past the save.
    desktop.keys("ctrl+z", shows=r"\[\*BP INVOICE on ")
    desktop.keys("ctrl+s")
    expect_file(item, before)


def lines_typed_come_out_as_attributes(desktop):
    account = desktop.sample_accounts()
    desktop.start("/A=DEMO", "/F=BP", "/I=FRESH")
    desktop.wait_box()
    desktop.keys("alt+y", shows=r"BP FRESH on .* \(New\)")
    desktop.type_text("PROGRAM FRESH\n   CRT 'HI'\nEND")
    desktop.keys("ctrl+bracketright", "ctrl+s")
    expect_file(account / "BP" / "FRESH", b"PROGRAM FRESH\n   CRT 'HI'\n   END\xfd\n")
    desktop.wait_active(r"\[BP FRESH on [^()]*\]$")


def a_local_file_with_mixed_ends_and_tabs(desktop):
    path = desktop.folder / "mixed file.txt"
    path.write_bytes(b"one\ttab\r\ntwo\nthree\r\n")
    desktop.start(path, shows=r"\[mixed file\.txt\]")
    desktop.type_text("X")
    desktop.keys("ctrl+s")
    expect_file(path, b"Xone   tab\r\ntwo\nthree\r\n")


def closing_asks_about_changes(desktop):
    item = desktop.sample_accounts() / "BP" / "MENU"
    before = item.read_bytes()
    program = desktop.start("/A=DEMO", "/F=BP", "/I=MENU", shows=r"\[BP MENU on ")
    desktop.type_text("Z")
    desktop.keys("ctrl+q")
    desktop.wait_box()
    desktop.keys("Escape", shows=r"\[\*BP MENU on ")
    expect(program.alive(), "Cancel must keep the program running")
    desktop.keys("alt+F4")
    desktop.wait_box()
    desktop.keys("alt+n")
    expect_equal(program.wait_end(), 0, "exit code")
    expect_equal(item.read_bytes(), before, "the item after No")


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


def answers_on_the_terminal(desktop):
    for word, answer in (("--version", "nibpad71 "), ("--help", "Usage: nibpad71")):
        program = desktop.start(word, DISPLAY="")
        expect_equal(program.wait_end(), 0, f"exit code of {word}")
        expect(program.output().startswith(answer), f"{word} answered {program.output()!r}")
    eventually("no window", lambda: not desktop.windows(r"."))


if __name__ == "__main__":
    lib.run(typing_undo_redo_save, lines_typed_come_out_as_attributes, a_local_file_with_mixed_ends_and_tabs,
            closing_asks_about_changes, saves_a_new_document_through_the_picker, answers_on_the_terminal)
