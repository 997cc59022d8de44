#!/usr/bin/env python3
"""A site governs its editors: what the record of the account says holds for the run and is not stored."""
import time

import lib
from lib import eventually, expect_equal, expect_file

# The user's own settings.
OWN = {"TabSize": "7", "Margin": "2", "IndentStar": "2", "IndentBang": "2", "IndentUserComment": "0",
       "CompileCommand": "OWN", "CompileOptions": "(X", "UserKeywords": "MINE", "CommentPrefixes": "*,!,$",
       "LanguageKeywords": "IF THEN ELSE END", "ToolbarLargeIcons": "False"}
PROGRAM = "IF A THEN\nB = 1\nEND\n"
FORMATTED_BY_HOST = b"      IF A THEN\n         B = 1\n      END\n"
FORMATTED_BY_USER = b"  IF A THEN\n         B = 1\n  END\n"


def hive(desktop):
    path = desktop.config / "hive.conf"
    lines = path.read_text("utf-8").splitlines() if path.is_file() else []
    return dict(line.split("=", 1) for line in lines if "=" in line)


def governed_account(desktop, record):
    """A second account beside DEMO, with a record of its own; the user's settings lie in the store."""
    account = desktop.sample_accounts()
    site = account.parent / "SITE"
    account.rename(site)
    desktop.sample_accounts()
    (site / "VOC" / "NIB").write_bytes(record)
    (site / "VOC" / "STAMP").write_text("V\nsh -c 'echo \"$@\" > stamped' --\n20\n")
    (site / "VOC" / "OWN").write_text("V\nsh -c 'echo own \"$@\" > stamped' --\n20\n")
    (site / "BP" / "WORDS").write_text("KNIT\nIF\nTHEN+\nEND-\n")
    (site / "BP" / "MORE").write_text("PURL\n")
    (site / "BP" / "PROG").write_text(PROGRAM)
    return site


def start(desktop):
    program = desktop.start("/T=mvdb", "/H=*", "/A=SITE", "/F=BP", "/I=PROG", shows=r"BP PROG on ")
    return program


def end(desktop, program):
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the exit code")


def formats_as(desktop, site, expected):
    (site / "BP" / "PROG").write_text(PROGRAM)
    program = start(desktop)
    desktop.keys("F12", "ctrl+s")
    expect_file(site / "BP" / "PROG", expected)
    desktop.keys("F11", shows=r"^Results$")
    told = (site / "stamped").read_text()
    (site / "stamped").unlink()
    desktop.wait_window(r"BP PROG").focus()
    end(desktop, program)
    return told


def open_settings(desktop):
    desktop.keys("alt+t", "Up", "Return")
    return desktop.wait_active(r"^Nib Settings$")


def store_settings(desktop, settings):
    """By the program's own hand first, so that the store has its form."""
    desktop.config.mkdir(parents=True, exist_ok=True)
    program = desktop.start(shows=r"^Nib$")
    end(desktop, program)
    path = desktop.config / "hive.conf"
    lines = [line for line in path.read_text("utf-8").splitlines() if line.split("=")[0] not in settings]
    lines += [f"{name}={value}" for name, value in settings.items()]
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def each_group_holds_and_is_not_stored(desktop):
    site = governed_account(desktop, b"governs\nBP\\WORDS\nBP\\MORE\nSTAMP\n6,3,1,0,2\n%\n")
    store_settings(desktop, OWN)
    before = hive(desktop)

    # A setting of the user's own is changed beside those of the host, and all is taken with OK.
    program = start(desktop)
    dialog = open_settings(desktop)
    before_the_key = dialog.rows()
    desktop.keys("alt+i")
    eventually("the key's box pressed", lambda: dialog.rows() != before_the_key)
    time.sleep(0.5)  # it stays pressed for a moment before it changes
    desktop.keys("Return")
    desktop.wait_no_window(r"^Nib Settings$")
    eventually("the new setting in the store", lambda: hive(desktop).get("ToolbarLargeIcons") == "True")
    end(desktop, program)
    kept = {name: value for name, value in hive(desktop).items() if name in OWN and name != "ToolbarLargeIcons"}
    expect_equal(kept, {name: before[name] for name in kept}, "the user's own values")
    expect_equal(set(kept) | {"ToolbarLargeIcons"}, set(OWN), "the user's own settings")
    expect_equal(formats_as(desktop, site, FORMATTED_BY_HOST), "BP PROG\n", "the words for the host's compiler")

    # The account no longer governs: the next run has the user's settings.
    (site / "VOC" / "NIB").unlink()
    expect_equal(formats_as(desktop, site, FORMATTED_BY_USER), "own BP PROG (X\n", "the words for the user's compiler")


if __name__ == "__main__":
    lib.run(each_group_holds_and_is_not_stored)
