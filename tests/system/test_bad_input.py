#!/usr/bin/env python3
"""Files and items that cannot be what the user hopes: each gives a message, and nothing is lost."""
import os
import shutil
import time

import lib
from lib import expect, expect_file


def refuses_with_a_message(desktop, *arguments):
    program = desktop.start(*arguments)
    try:
        desktop.wait_box(timeout=5)
    except lib.Failure:
        raise lib.Failure(f"no message box for {arguments}") from None
    desktop.keys("Escape")
    lib.eventually("the frame alone", lambda: len(desktop.windows(r".", program)) == 1)
    expect(program.alive(), f"the program must go on after {arguments}")
    program.kill()


def what_is_no_text_is_refused(desktop):
    binary = desktop.folder / "binary"
    binary.write_bytes(b"\x7fELF\0\0\0")
    refuses_with_a_message(desktop, binary)
    refuses_with_a_message(desktop, desktop.folder)


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
    shutil.rmtree(folder)
    desktop.type_text("more ")
    desktop.keys("ctrl+s")
    desktop.wait_box()
    desktop.keys("alt+k")  # keeps the text of what is gone, and then says that there is no place for it
    time.sleep(0.5)
    desktop.wait_box()
    desktop.keys("Escape", shows=r"\[\*a\.txt \(New\)\]")
    folder.mkdir()
    desktop.keys("ctrl+s")
    expect_file(folder / "a.txt", b"more text\n")


if __name__ == "__main__":
    lib.run(what_is_no_text_is_refused, a_name_that_is_no_utf8_opens_and_an_unknown_switch_is_told,
            a_folder_that_vanishes_keeps_the_document)
