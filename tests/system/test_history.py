#!/usr/bin/env python3
"""Saves leave versions that git can read, and an earlier text comes back and goes again."""
import os
import stat
import subprocess
import time

import lib
from lib import eventually, expect, expect_equal, expect_file


def git(repository, *words):
    result = subprocess.run(["git", "-C", str(repository), *words], capture_output=True, check=False, timeout=60)
    expect_equal(result.returncode, 0, f"git {words}: {result.stderr}")
    return result.stdout.decode()


def versions(repository, branch):
    # The repository is there before its first branch.
    made = repository.exists() and git(repository, "for-each-ref", f"refs/heads/{branch}")
    return git(repository, "log", "--format=%s", branch).splitlines() if made else []


def yesterdays_text_comes_back(desktop):
    item = desktop.sample_accounts() / "BP" / "HISTORY"
    item.write_bytes(b"first\nsecond\n")
    program = desktop.start("/A=DEMO", "/F=BP", "/I=HISTORY", shows=r"\[BP HISTORY on ")
    desktop.type_text("changed ")
    desktop.keys("ctrl+s")
    expect_file(item, b"changed first\nsecond\n")
    repository = desktop.data / "History" / "hosts" / "%2A" / "DEMO.git"
    eventually("two versions", lambda: len(versions(repository, "BP/HISTORY")) == 2)
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the end")

    # Behind its back; and a day later for the versions so far.
    item.write_bytes(b"by another\nsecond\n")
    desktop.start("/A=DEMO", "/F=BP", "/I=HISTORY", shows=r"\[BP HISTORY on ")
    desktop.type_text("mine ")
    desktop.keys("ctrl+s")
    eventually("four versions", lambda: len(versions(repository, "BP/HISTORY")) == 4)
    expect_equal(versions(repository, "BP/HISTORY"), [
        "Saved DEMO BP HISTORY", "Read DEMO BP HISTORY", "Saved DEMO BP HISTORY", "Read DEMO BP HISTORY"], "versions")
    expect_equal(git(repository, "show", "BP/HISTORY~1:HISTORY"), "by another\nsecond\n", "what another program wrote")
    git(repository, "fsck", "--strict")
    for folder in (desktop.data / "History", repository):
        expect_equal(stat.S_IMODE(os.stat(folder).st_mode), 0o700, f"mode of {folder}")

    # The oldest one by keys: the panel's last row, and its first button.
    desktop.keys("ctrl+alt+h")
    time.sleep(0.5)
    desktop.keys("Down", "End", "Tab", "space", shows=r"\[\*BP HISTORY on ")
    desktop.keys("ctrl+s")
    expect_file(item, b"first\nsecond\n")
    desktop.keys("Escape", "ctrl+z", "ctrl+s")
    expect_file(item, b"mine by another\nsecond\n")


def an_account_without_history_leaves_none(desktop):
    folder = desktop.sample_accounts() / "BP"
    desktop.config.mkdir(parents=True, exist_ok=True)
    (desktop.config / "hosts.conf").write_text("[*]\nhistory.demo=no\n", encoding="utf-8")
    (folder / "SECRET").write_bytes(b"a\n")
    local = desktop.folder / "local.txt"
    local.write_bytes(b"a\n")
    desktop.start("/A=DEMO", "/F=BP", "/I=SECRET", local, shows=r"\[BP SECRET on ")
    desktop.type_text("b")
    desktop.keys("ctrl+s", "ctrl+Tab", shows=r"\[local\.txt\]")
    desktop.type_text("b")
    desktop.keys("ctrl+s")
    expect_file(folder / "SECRET", b"ba\n")
    eventually("a version of the local file", lambda: (desktop.data / "History" / "files.git").exists())
    time.sleep(0.3)
    expect_equal([path.name for path in (desktop.data / "History").iterdir()], ["files.git"], "repositories")


lib.run(yesterdays_text_comes_back, an_account_without_history_leaves_none)
