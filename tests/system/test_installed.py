#!/usr/bin/env python3
"""The program as it lies on a machine after its installation, and as a desktop starts it."""
import configparser
import pathlib
import re
import subprocess

import lib
from lib import eventually, expect, expect_equal, expect_file

ID = "com.orlin.NibPad71"


def install(desktop):
    """Answers the prefix; the program of the desktop is the installed one from here on."""
    prefix = desktop.folder / "usr"
    build = pathlib.Path(desktop.program).parents[1]
    subprocess.run(["cmake", "--install", build, "--prefix", prefix, "--component", "program"], check=True, timeout=60,
                   stdout=subprocess.DEVNULL, stdin=subprocess.DEVNULL)
    desktop.program = str(prefix / "bin/nibpad71")
    return prefix


def entry(prefix):
    parser = configparser.RawConfigParser(strict=True, delimiters="=")
    parser.optionxform = str
    parser.read(prefix / f"share/applications/{ID}.desktop", "utf-8")
    return parser["Desktop Entry"]


def property_of(desktop, window, name):
    return desktop.command("xprop", "-id", window.number, name)


def finds_its_parts(desktop):
    prefix = install(desktop)
    desktop.results_in_a_window()
    program = desktop.start("/H=*", "/A=DEMO", "/F=BP", "/I=INVOICE")
    window = desktop.wait_active(r"\[BP INVOICE on ")
    original = prefix / "share/nibpad71/accounts/DEMO/BP/INVOICE"
    expect_file(desktop.data / "Accounts/DEMO/BP/INVOICE", original.read_bytes())

    # The checker is found although no PATH leads to it.
    desktop.keys("F11", "alt+v", "r", shows=r"^Results$")
    desktop.keys("ctrl+a", "ctrl+c", "Escape", shows=r"\[BP INVOICE on ")
    desktop.keys("ctrl+End", "ctrl+v", "ctrl+s")
    copy = desktop.data / "Accounts/DEMO/BP/INVOICE"
    eventually("the words that no error was found", lambda: "no error found" in copy.read_text("latin-1"))

    expect(re.match(r'WM_CLASS\(STRING\) = .*"' + re.escape(entry(prefix)["StartupWMClass"]) + '"',
                    property_of(desktop, window, "WM_CLASS")), "the desktop entry names the class of the window")
    expect(len(property_of(desktop, window, "_NET_WM_ICON")) > 100, "the window has an icon")
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the exit code")


def opens_files_from_a_file_manager(desktop):
    """Names with blanks, quotes and signs of a switch; each start is a copy of its own."""
    prefix = install(desktop)
    expect_equal(entry(prefix)["Exec"], "nibpad71 %F", "how the desktop starts the program")
    desktop.env["PATH"] = f"{prefix / 'bin'}:{desktop.env['PATH']}"
    names = ["two words.b", 'a "quoted" name.b', "A=x.b", "100% $HOME;&.b"]
    files = [desktop.home / name for name in names]
    for file in files:
        file.write_text(f"* {file.name}\n", "utf-8")
    launcher = str(prefix / f"share/applications/{ID}.desktop")
    owners = set()
    for file in files:
        desktop.start("launch", launcher, file, program="gio")
        window = desktop.wait_active(re.escape(file.name))
        owners.add(property_of(desktop, window, "_NET_WM_PID"))
    expect_equal(len(owners), len(files), "copies of the program")


if __name__ == "__main__":
    lib.run(finds_its_parts, opens_files_from_a_file_manager)
