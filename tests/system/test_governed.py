#!/usr/bin/env python3
"""A site governs its editors: what the record of the account says holds for the run, is marked, and is not stored."""
import access
import lib
from lib import eventually, expect, expect_equal, expect_file

# The user's own settings. Each kind of code has a colour that nothing else on the screen has.
OWN = {"TabSize": "7", "Margin": "2", "IndentStar": "2", "IndentBang": "2", "IndentUserComment": "0",
       "CompileCommand": "OWN", "CompileOptions": "(X", "UserKeywords": "MINE", "CommentPrefixes": "*,!,$",
       "LanguageKeywords": "IF THEN ELSE END", "ReservedColor": str(0x563412), "KeywordColor": str(0x123456),
       "CommentColor": str(0x105010), "FontSize": "20", "ToolbarLargeIcons": "False"}
WORD, USER_WORD, COMMENT = "#123456", "#563412", "#105010"
PROGRAM = "IF A THEN\nB = 1\nEND\n"
FORMATTED_BY_HOST = b"      IF A THEN\n         B = 1\n      END\n"
FORMATTED_BY_USER = b"  IF A THEN\n         B = 1\n  END\n"
MARKED = ("Case sensitive keywords", "Command", "Options", "Tab size", "Margin", "* comment line indent",
          "! comment line indent", "Prefix character", "user-defined comment line indent")
DAGGER = "\N{DAGGER}"


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
    (site / "BP" / "LOOKS").write_text("KNIT\nPURL\nMINE\n% remark\n")
    return site


def start(desktop, item):
    program = desktop.start("/T=mvdb", "/H=*", "/A=SITE", "/F=BP", "/I=" + item)
    desktop.wait_active(rf"BP {item} on ")
    return program


def end(desktop, program):
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the exit code")


def colours(desktop):
    picture = desktop.screenshot(desktop.folder / "screen.png")
    listed = desktop.command("convert", picture, "-format", "%c", "histogram:info:")
    return {colour for colour in (WORD, USER_WORD, COMMENT) if colour in listed}


def expect_colours(desktop, expected, what):
    try:
        eventually(what, lambda: colours(desktop) == expected)
    except lib.Failure:
        expect_equal(colours(desktop), expected, what)


def formats_as(desktop, site, expected):
    (site / "BP" / "PROG").write_text(PROGRAM)
    program = start(desktop, "PROG")
    desktop.keys("F12", "ctrl+s")
    expect_file(site / "BP" / "PROG", expected)
    desktop.keys("F11")
    desktop.wait_active(r"^Results$")
    told = (site / "stamped").read_text()
    (site / "stamped").unlink()
    desktop.wait_window(r"BP PROG").focus()
    end(desktop, program)
    return told


def open_settings(desktop):
    desktop.keys("alt+t", "Up", "Return")
    return desktop.wait_active(r"^Nib Settings$")


def marked_controls(tree):
    """The captions of the page on view that end in the dagger, without it."""
    dialog = tree.find("dialog", "^Nib Settings$")
    names = (" ".join(node.name.split()) for node in dialog.walk() if "showing" in node.states)
    return {name.removesuffix(DAGGER).strip(" :") for name in names if name.endswith(DAGGER)}


def store_settings(desktop, settings):
    """By the program's own hand first, so that the store has its form."""
    desktop.config.mkdir(parents=True, exist_ok=True)
    program = desktop.start()
    desktop.wait_active(r"^Nib$")
    end(desktop, program)
    path = desktop.config / "hive.conf"
    lines = [line for line in path.read_text("utf-8").splitlines() if line.split("=")[0] not in settings]
    lines += [f"{name}={value}" for name, value in settings.items()]
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def each_group_holds_is_marked_and_is_not_stored(desktop):
    access.start_bus(desktop)
    site = governed_account(desktop, b"governs\nBP\\WORDS\nBP\\MORE\nSTAMP\n6,3,1,0,2\n%\n")
    store_settings(desktop, OWN)
    before = hive(desktop)

    program = start(desktop, "LOOKS")
    expect_colours(desktop, {WORD, USER_WORD, COMMENT}, "the host's words and comments in their colours")
    open_settings(desktop)
    seen = set()
    for _ in range(5):
        seen |= marked_controls(access.tree(desktop, program))
        desktop.keys("ctrl+Tab")
    expect_equal(seen - {"Defined keywords"}, set(MARKED), "what is marked")
    expect("Defined keywords" in seen, "the lists of keywords are marked")
    # A setting of the user's own is changed beside them, and all is taken with OK.
    desktop.keys("alt+i")
    eventually("the check mark of the user's choice", lambda: "checked" in access.tree(desktop, program).find(
        "check box", "^Show large icons").states)
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
    program = start(desktop, "LOOKS")
    expect_colours(desktop, {USER_WORD}, "the user's one word, no comment and none of the host's words")
    open_settings(desktop)
    expect_equal(marked_controls(access.tree(desktop, program)), set(), "what is marked")
    desktop.keys("Escape")
    desktop.wait_active(r"BP LOOKS")
    end(desktop, program)
    expect_equal(formats_as(desktop, site, FORMATTED_BY_USER), "own BP PROG (X\n", "the words for the user's compiler")


if __name__ == "__main__":
    lib.run(each_group_holds_is_marked_and_is_not_stored)
