#!/usr/bin/env python3
"""The checker nib-basic as the verb BASIC of an account runs it."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

PROGRAM = pathlib.Path(sys.argv[1]).resolve().parent / "nib-basic"
SAMPLE = pathlib.Path(__file__).resolve().parents[2] / "resources/accounts/DEMO"
faults = 0


def expect(account, words, output, code):
    global faults
    run = subprocess.run([PROGRAM, *words], cwd=account, capture_output=True, timeout=20)
    text = (run.stdout + run.stderr).decode()
    if not (output in text and run.returncode == code):
        faults += 1
        print(f"{words}: {run.returncode} {text!r}, expected {code} {output!r}")


with tempfile.TemporaryDirectory(prefix="nib-basic-") as folder:
    account = pathlib.Path(folder) / "DEMO"
    shutil.copytree(SAMPLE, account)
    items = {
        "BROKEN": b"A = 'x\n$INCLUDE BP GONE\n",
        "A%2FB": b"IF A THEN\r\n B = 1\r\n",
        "TWO WORDS": b"A = (1\n",
        "X (OLD)": b"A = 1\nB = 2\n",
        "lower": b"$INCLUDE BP common.inc\n",
        "AWAY": b"$INCLUDE AWAY.BP X\n$INCLUDE SYSCOM KEYS.H\nGOSUB THERE\n",
        "MARKS": b"A = 'x\xfdy' ; B = \"\xe4\"\n",
        "NULS": b"A\0B\n",
        "EMPTY": b"",
        "-x": b"A = 1",
    }
    for name, content in items.items():
        (account / "BP" / name).write_bytes(content)
    (account / "VOC" / "AWAY.BP").write_text("F\n/somewhere/BP\n")

    for item in os.listdir(SAMPLE / "BP"):
        expect(account, ["BP", item], " lines checked, no error found.\n", 0)
    expect(account, ["BP", "BROKEN"], "Line 1: The string that begins with ' is not closed.\n"
           "Line 2: Include item BP GONE does not exist.\n", 1)
    expect(account, ["BP", "A/B"], "Line 1: THEN is not closed: END is missing.\n", 1)
    expect(account, ["BP", "TWO", "WORDS", "(L"], "Line 1: \"(\" without \")\".\n", 1)
    expect(account, ["BP", "MENU", "(L", "x"], "58 lines checked, no error found.\n", 0)
    expect(account, ["BP", "X", "(OLD)", "(L"], "2 lines checked, no error found.\n", 0)
    expect(account, ["BP", "NOT", "HERE", "(L"], "Item BP NOT HERE does not exist.\n", 1)
    for item in ("lower", "AWAY", "MARKS", "EMPTY"):
        expect(account, ["BP", item], " checked, no error found.\n", 0)
    expect(account, ["--", "BP", "-x"], "1 line checked, no error found.\n", 0)
    expect(account, ["BP", "NULS"], "BP NULS is not a text: it holds NUL bytes.\n", 1)
    expect(account, ["BP", "GONE"], "Item BP GONE does not exist.\n", 1)
    expect(account, ["BP", "../VOC/WHO"], "Item BP ../VOC/WHO does not exist.\n", 1)
    expect(account, ["NONE", "X"], "There is no file NONE in this account.\n", 1)
    expect(account, ["BP", "x" * 300], " does not exist.\n", 1)
    expect(account, ["BP"], "see --help", 2)
    expect(account, ["--help"], "Usage: nib-basic [--] FILE ITEM", 0)
    expect(account, ["--version"], "nib-basic 7", 0)

print("faults:", faults)
sys.exit(1 if faults else 0)
