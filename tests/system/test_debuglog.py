#!/usr/bin/env python3
"""The debug log's viewer beside a running editor: each of its lines, and a viewer and a block that are no good."""
import contextlib
import fcntl
import mmap
import os
import pathlib
import re
import signal
import socket
import struct
import subprocess
import threading
import time

import lib
from lib import eventually, expect, expect_equal

BLOCK = pathlib.Path("/dev/shm/qkDebugLog")
WORDS = 254
ALL = 1 | 2 | 4 | 16
# Behind each line the number of the category; all that one run of the editor can be made to write.
LINES = {
    "mdiform initialize": 2, "mdiform load begin": 2, "mdiform load end": 2, "mdiform terminate": 2,
    "mvdocument initialize begin": 2, "mvdocument initialize end": 2, "mvdocument terminate begin": 2,
    "mvdocument terminate end": 2, "frmdocument initialize begin": 2, "frmdocument initialize end": 2,
    "frmdocument terminate": 2, "documents initialize": 2, "documents terminate": 2,
    "application initialize begin: process=": 2, "application initialize end": 2,
    "application terminate begin: process=": 2, "applicaiton terminate end": 2,
    "parse begin": 4, "command = /A=DEMO /F=BP /I=MENU": 4, "parse end": 4,
    "LexClass.ScanToken: token=LOOP type=10 atts=1 flags=0x4": 16,
    "HostConfiguration.ReplaceKeywords: error=0x": 1,
}


@contextlib.contextmanager
def the_only_one():
    """There is one block for all programs of a user, those of tests that run beside this one included."""
    with open("/tmp/nib-trace-test.lock", "a+b") as turn:
        fcntl.flock(turn, fcntl.LOCK_EX)
        yield


@contextlib.contextmanager
def viewer_of(desktop, *words):
    program = pathlib.Path(desktop.program).parent / "nib-debuglog"
    log = desktop.folder / f"viewer-{time.monotonic_ns()}.log"
    with open(log, "wb") as output:
        process = subprocess.Popen([program, *words], env=desktop.env, stdout=output, stderr=output,
                                   stdin=subprocess.DEVNULL)
    process.text = lambda: log.read_text("utf-8", errors="replace")
    try:
        eventually("the viewer", lambda: process.poll() is not None or slot(0) == process.pid)
        yield process
    finally:
        process.kill()
        process.wait()


def ask(desktop, *words):
    program = pathlib.Path(desktop.program).parent / "nib-debuglog"
    return subprocess.run([program, *words], env=desktop.env, capture_output=True, timeout=20, check=False, text=True)


def slot(number):
    content = BLOCK.read_bytes() if BLOCK.exists() else b""
    return struct.unpack_from("<I", content, 8 + 4 * number)[0] if len(content) == 4 * WORDS else None


def start(desktop):
    program = desktop.start("/A=DEMO", "/F=BP", "/I=MENU", shows=r"BP MENU")
    return program


def end(desktop, program):
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the editor's exit code")


def types_at_once(desktop, what):
    """A key and its undo, each seen in the title; a log that held the editor up for each token would take minutes."""
    began = time.monotonic()
    desktop.type_text("x", shows=r"\[\*BP MENU")
    desktop.keys("ctrl+z", shows=r"\[BP MENU")
    expect(time.monotonic() - began < 10, f"{what}: the editor goes on at its own pace")


def the_viewer_shows_every_line_of_every_category(desktop):
    account = desktop.sample_accounts()
    (account / "VOC" / "NIB").write_text("governs\nGONE\\WORDS\n")  # what cannot be read is an error line
    lib.with_bus(desktop)
    with the_only_one(), viewer_of(desktop, "--mask", str(ALL)) as viewer:
        program = desktop.start("/T=mvdb", "/H=*", "/A=DEMO", "/F=BP", "/I=MENU", shows=r"BP MENU")
        # A client of automation that comes and goes.
        desktop.command("gdbus", "call", "--session", "--dest", "com.orlin.NibPad71", "--object-path",
                        "/com/orlin/NibPad71", "--method", "com.orlin.NibPad71.Application.Hold")
        eventually("the lexer's line", lambda: "token=LOOP" in viewer.text())
        listed = ask(desktop, "--list").stdout
        expect(re.search(rf"^1 {program.pid} {ALL} nibpad71$", listed, re.M), listed)
        end(desktop, program)
        for line in LINES:
            line = line.replace("command = ", "command = /T=mvdb /H=* ")
            pattern = rf"(?m)^\d\d:\d\d:\d\d\.\d{{3}} 1 nibpad71\[{program.pid}\] {re.escape(line)}"
            eventually(f"the line {line!r}", lambda pattern=pattern: re.search(pattern, viewer.text()))
        viewer.send_signal(signal.SIGINT)
        expect_equal(viewer.wait(10), 0, "the viewer's exit code")


def a_viewer_that_speaks_nonsense(desktop):
    desktop.sample_accounts()
    answers = [b"", b"x", os.urandom(40), struct.pack("<III", 12, 0, 1), struct.pack("<III", 12, 0xFFFFFFFF, 1),
               struct.pack("<III", 12, 252, 1), struct.pack("<III", 99, 1, 1) + b"x" * 30000]
    with the_only_one():
        with viewer_of(desktop):
            pass  # makes the block
        ended = threading.Event()
        path = pathlib.Path(desktop.env["XDG_RUNTIME_DIR"]) / f"qkDebugLog.{os.getpid()}"
        mail = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        mail.bind(str(path))
        mail.settimeout(0.1)

        def speak():
            while not ended.is_set():
                with contextlib.suppress(OSError):
                    _, sender = mail.recvfrom(65536)
                    for answer in answers * 20:
                        mail.sendto(answer, socket.MSG_DONTWAIT, sender)

        with open(BLOCK, "r+b") as file, mmap.mmap(file.fileno(), 4 * WORDS) as block:
            before = block[:]
            block[:] = struct.pack("<III", 252, 252, os.getpid()) + b"\xff" * (4 * 251)  # everybody wants everything
            speaker = threading.Thread(target=speak)
            speaker.start()
            try:
                program = start(desktop)
                types_at_once(desktop, "a viewer that speaks nonsense")
                end(desktop, program)
            finally:
                block[:] = before
                ended.set()
                speaker.join()
                mail.close()


def a_block_without_sense(desktop):
    desktop.sample_accounts()
    with the_only_one():
        before = BLOCK.read_bytes() if BLOCK.exists() else None
        try:
            BLOCK.unlink(missing_ok=True)  # those who have the old one keep it
            BLOCK.write_bytes(struct.pack("<II", 5000, 252) + b"\xff" * 1008)  # of more slots than it has
            BLOCK.chmod(0o600)
            program = start(desktop)
            types_at_once(desktop, "a block without sense")
            end(desktop, program)
            refused = ask(desktop)
            expect_equal((refused.returncode, refused.stderr),
                         (1, "nib-debuglog: The block of the debug log is of another size.\n"), "what the viewer says")
        finally:
            BLOCK.unlink(missing_ok=True)
            if before is not None:
                BLOCK.write_bytes(before)
                BLOCK.chmod(0o600)


if __name__ == "__main__":
    lib.run(the_viewer_shows_every_line_of_every_category, a_viewer_that_speaks_nonsense,
            a_block_without_sense)
