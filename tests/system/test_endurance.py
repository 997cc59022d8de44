#!/usr/bin/env python3
"""Thousands of documents opened and closed, and starts over files of the program's own that chance has mutilated.

The numbers are NIB_TEST_CYCLES and NIB_TEST_STARTS; chance begins with NIB_TEST_SEED.
"""
import os
import pathlib
import random
import shutil
import time

import faulty
import lib
from lib import expect, expect_equal

PIECES = (b"\0", b"\n", b"\r\n", b"=", b"[", b"]", b"[*]\n", b"%u", b"%", b"\xff\xfe", b"\xef\xbb\xbf", b"\xc3", b"\"",
          b"99999999999", b"-1", b"/", b"../", b"kind=network\n", b"root=x\n", b"charset=nonsense\n", b"A" * 5000)
HOSTS = b"[*]\naccount=DEMO\n\n[prod]\nroot=/tmp/none\ncharset=windows-1252\nverbs=VOC\n"


def memory(program):
    """Resident kilobytes, and open files."""
    pages = int(pathlib.Path(f"/proc/{program.pid}/statm").read_text(encoding="ascii").split()[1])
    return pages * 4, len(os.listdir(f"/proc/{program.pid}/fd"))


def open_and_close(desktop):
    cycles = int(os.environ.get("NIB_TEST_CYCLES", 2000))
    driven = faulty.Driven(desktop).start()
    local = desktop.folder / "local.txt"
    local.write_bytes(b"one line\n" * 500)
    seen = []
    for cycle in range(cycles):
        document = driven.client.docs("AddNew")
        path = f"file:{local}" if cycle % 2 else "mvdb:*/DEMO/BP/INVOICE"
        expect(driven.call(document, "FileOpen", "(sb)", path, False), "FileOpen")
        driven.client.set_text(document, "x", "SelText")
        driven.call(document, "FileClose", "(b)", False)
        if cycle in (min(1000, cycles // 2), cycles - 1):
            seen.append(memory(driven.program))
    print(f"{cycles} cycles: {seen[0]} kB and files, in the end {seen[1]}")
    expect(seen[1][0] < seen[0][0] * 1.1, "memory grows")
    expect_equal(seen[1][1], seen[0][1], "open files")


def mutilated(chance, content):
    content = bytearray(content)
    for _ in range(chance.randint(1, 12)):
        at, length = chance.randint(0, len(content)), chance.choice((0, 1, 4, 40))
        kind = chance.random()
        piece = (chance.choice(PIECES) if kind < 0.5 else chance.randbytes(chance.randint(1, 20)) if kind < 0.8
                 else content[at:at + 200] * 3)
        content[at:at + length] = piece
    return bytes(content)


def ends(driven):
    """What cannot be read is told, one box after the other."""
    up = driven.dialogs()
    driven.screen.key(*((up[-1][0], "Escape") if up else (driven.main, "ctrl+q")))
    time.sleep(0.05)
    return not driven.program.alive()


def starts_over_mutilated_files(desktop):
    seed, starts = int(os.environ.get("NIB_TEST_SEED", time.time())), int(os.environ.get("NIB_TEST_STARTS", 60))
    print(f"seed {seed}")
    chance = random.Random(seed)
    driven = faulty.Driven(desktop)
    folder = desktop.folder / "copy"
    shutil.copytree(pathlib.Path(desktop.program).parent / "accounts", folder / "accounts")
    shutil.copy2(desktop.program, folder)
    driven.start()
    driven.accept_settings()
    driven.client.set_text(driven.client.docs("AddNew"), "changed")
    driven.call(driven.client.docs("AddNew"), "FileOpen", "(sb)", "mvdb:*/DEMO/BP/MENU", False)
    copies = desktop.data / "AutoRecover"
    # A thread behind all others writes it; nobody waits for it but the next start.
    lib.eventually("a recovery copy", lambda: lib.plain_files(copies))
    driven.end()
    good = {desktop.config / "hive.conf": None, desktop.config / "hosts.conf": HOSTS,
            folder / "isolation.ini": b"[Isolation]\nPersistSettings=1\nAppDataDirectory=./\n",
            desktop.data / "Accounts" / "DEMO" / "VOC" / "NIB": b"X\nKEYWORDS\nIF THEN+\n3\n6\n",
            lib.plain_files(copies)[0]: None}
    good = {path: content or path.read_bytes() for path, content in good.items()}
    for number in range(starts):
        for path, content in good.items():
            path.write_bytes(mutilated(chance, content) if chance.random() < 0.6 else content)
        if number % 10 == 9:
            path = chance.choice([path for path in good if "hosts" not in path.name])
            path.unlink()
            chance.choice((path.mkdir, lambda path=path: os.mkfifo(path), lambda path=path: path.touch(0)))()
        began = time.monotonic()
        driven.start("/A=DEMO", program=folder / "nibpad71", answer="Escape")
        driven.soon("end of the program", lambda: ends(driven))
        expect_equal(driven.program.wait_end(), 0, f"start {number}: the exit code")
        expect(time.monotonic() - began < 10, f"start {number} took too long")
        for path in good:
            if path.is_dir():
                shutil.rmtree(path)
            path.unlink(missing_ok=True)


if __name__ == "__main__":
    lib.run(open_and_close, starts_over_mutilated_files)
