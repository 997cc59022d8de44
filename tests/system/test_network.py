#!/usr/bin/env python3
"""The editor over a server: the daily loop, servers that misbehave, and where passwords are not.

NIB_SERVER="PORT USER PASSWORD" takes the daily loop to a real one, whose account TESTACC may be written.
"""
import os
import pathlib
import signal
import subprocess
import time

import faulty
import lib
from fake_server import FakeServer
from lib import eventually, expect, expect_equal
from wire import Wire

PASSWORD = "secret7"
PROGRAM = b"FOR I = 1 TO 3\xfePRINT 'LINE ':I\xfeNEXT I\xfePRINT 'END'\xfeEND"
RELAY = """
import socket, sys, threading, os
far = socket.create_connection(("127.0.0.1", int(sys.argv[1])))
def up():
    while data := os.read(0, 65536):
        far.sendall(data)
    far.shutdown(socket.SHUT_WR)
threading.Thread(target=up, daemon=True).start()
while data := far.recv(65536):
    os.write(1, data)
"""
ACCOUNT, OPEN, READ, READ_LOCKED, WRITE, LOGIN, LOCK_STATE = 3, 4, 6, 9, 17, 24, 34


def connects(desktop, port, user="ada", *lines):
    desktop.config.mkdir(exist_ok=True)
    (desktop.config / "hosts.conf").write_text("\n".join(
        ("[stock]", "kind=network", "name=Stock", "address=127.0.0.1", f"port={port}", f"user={user}", "account=TESTACC",
         *lines, "")), encoding="utf-8")


def logs_in(desktop, password=PASSWORD, shows=None):
    desktop.wait_box()
    desktop.type_text(password)
    desktop.keys("Return", shows=shows)


def finds_nothing(desktop, password, *programs):
    """The password is in no file of the user's, in no log and on no command line."""
    for folder in (desktop.folder, pathlib.Path("/tmp/.X11-unix")):
        for path in folder.rglob("*"):
            if path.is_file() and not path.is_symlink():
                expect(password.encode() not in path.read_bytes(), f"the password is in {path}")
    for line in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
        try:
            expect(password.encode() not in line.read_bytes() or int(line.parent.name) == os.getpid(),
                   f"the password is in {line}")
        except OSError:
            pass
    for program in programs:
        expect(password not in program.output(), "the password is in the output")


def daily_loop(desktop, port, user, password, get):
    """Open, break, compile, jump to the line, mend, save, compile clean; then leave in order."""
    connects(desktop, port, user)
    desktop.results_in_a_window()
    program = desktop.start("/H=stock", "/A=TESTACC", "/F=BP", "/I=LOOP")
    logs_in(desktop, password, shows=r"\[BP LOOP on Stock")
    desktop.keys("Down", "End", "BackSpace", "BackSpace", "BackSpace")  # a quote too few, on the second line
    desktop.keys("F11")
    desktop.wait_box()
    desktop.keys("Return")
    results = desktop.wait_active(r"^Results$")
    expect_equal(get("LOOP").count(b"'"), 3, "quotes in what was saved before it was compiled")
    desktop.keys("Down")  # the line after the one that names the program
    time.sleep(0.1)
    desktop.keys("ctrl+Home")
    double_click_line_two(desktop, results)
    desktop.wait_active(r"\[BP LOOP on Stock")
    desktop.keys("End")
    desktop.type_text("':I")
    desktop.keys("ctrl+s")
    eventually("the program as it was", lambda: get("LOOP") == PROGRAM)
    desktop.keys("F11", "alt+v", "r", shows=r"^Results$")
    desktop.keys("ctrl+a", "ctrl+c", "Escape", shows=r"\[BP LOOP on ")
    desktop.keys("ctrl+End", "Return", "ctrl+v", "ctrl+s")
    eventually("the words that no error was found", lambda: b"0 error(s)" in get("LOOP"))
    finds_nothing(desktop, password, program)
    desktop.keys("ctrl+q")
    expect_equal(program.wait_end(), 0, "the exit code")


def double_click_line_two(desktop, results):
    """The one below the first, which is as high."""
    rows = []
    desktop.keys("ctrl+Home")
    before = results.rows()
    desktop.keys("shift+Down", "shift+End")

    def changed():
        nonlocal rows
        rows = [y for y, (old, new) in enumerate(zip(before, results.rows()))
                if sum(a != b for a, b in zip(old, new)) > 150]
        return len(rows) > 20
    eventually("two lines as selected", changed)
    desktop.keys("ctrl+Home")
    results.click(20, rows[0] + (rows[-1] - rows[0]) * 3 // 4, count=2)


def a_day_over_a_server(desktop):
    if "NIB_SERVER" in os.environ:
        port, user, password = os.environ["NIB_SERVER"].split()
        wire = Wire("127.0.0.1", int(port)).enter(user, password, "TESTACC")
        wire.write(wire.bp, "LOOP", PROGRAM)
        daily_loop(desktop, port, user, password, lambda name: wire.on(READ, wire.bp, name)[2])
        wire.quit()
        return
    with FakeServer() as server:
        file = server.accounts["TESTACC"]["BP"]
        file.put("LOOP", PROGRAM)
        daily_loop(desktop, server.port, "ada", PASSWORD, lambda name: file.item(name))
        expect_equal(server.forbidden(), [], "forbidden actions")
        eventually("the end of all sessions", lambda: not server.sessions)
        expect_equal(server.rude(), [], "sessions that were not left in order")


class Session:
    """The editor over a fake server and the bus, logged in, with the item MAIN open."""

    def __init__(self, desktop, server, *lines):
        server.login_delay = server.full_delay = 0.1
        self.server, self.file = server, server.accounts["TESTACC"]["BP"]
        self.file.put("MAIN", PROGRAM)
        connects(desktop, server.port, "ada", *lines)
        self.driven = faulty.Driven(desktop)
        self.driven.start()
        self.client = self.driven.client
        self.document = self.client.docs("AddNew")
        opening = self.client.start(self.document, faulty.NAME + ".mvDocument", "FileOpen",
                                    faulty.GLib.Variant("(sb)", ("mvdb:stock/TESTACC/BP/MAIN", False)))
        self.password()
        expect_equal(self.driven.wait(opening), (True,), "the answer of FileOpen")

    def password(self):
        def asked():
            faulty.pump()
            return self.driven.dialogs()
        dialog = eventually("the question for the password", asked)[0][0]
        for key in (*PASSWORD, "Return"):
            self.driven.screen.key(dialog, key)
        eventually("the end of the question", lambda: dialog not in dict(self.driven.dialogs()))

    def save(self, key="Return"):
        return self.driven.call(self.document, "FileSave", key=key)

    def text(self):
        return self.client.text(self.document)

    def type(self, text):
        self.client.set_text(self.document, text)

    def dirty(self):
        return self.client.get(self.document, "mvDocument", "IsDirty")

    def stored(self):
        return self.file.item("MAIN")


def a_server_that_dies_takes_no_text_along(desktop):
    with FakeServer() as server:
        session = Session(desktop, server)
        for number, how in enumerate((("drop", WRITE, 20), ("unanswered", WRITE, 0), ("cut", WRITE, 3))):
            text = f"PRINT 'AGAIN {number}'"
            session.type(text)
            server.fault(*how)
            expect_equal(session.save(), False, f"a save with {how}")
            server.stop()
            server.heal()
            expect_equal(session.save(), False, "a save without a server")
            expect_equal((session.text(), session.dirty()), (text, True), "what is open")
            server.start()
            expect_equal(session.save(), True, f"the save after {how}")
            expect_equal((session.stored(), session.dirty()), (text.encode(), False), "what is stored")
            holder = [holders for (path, name), (_, holders) in server.locks.held.items() if name == "MAIN"]
            expect_equal(len(holder), 1, "locks of the item, taken again")
        # Somebody else was quicker.
        session.type("MINE")
        server.stop()
        server.start()
        session.file.put("MAIN", b"THEIRS")
        expect_equal((session.save(), session.stored()), (False, b"THEIRS"), "a save over what another wrote")
        expect_equal((session.text(), session.dirty()), ("MINE", True), "what is open")
        server.stop()
        server.start()
        server.hold("TESTACC", "BP", "MAIN")
        expect_equal((session.save(), session.dirty()), (False, True), "a save under the lock of another")
        expect_equal(server.forbidden(), [], "forbidden actions")


def a_server_that_misbehaves_takes_no_text_along(desktop):
    """Each fault at each action of a save and of an open."""
    with FakeServer() as server:
        session = Session(desktop, server)
        kinds = [("refuse", (1, 3035, b"")), ("refuse", (1, 0, b"Abort")), ("refuse", (3, 0, b"")),
                 ("refuse", (2, 3006, b"")), ("cut", 0), ("cut", 7), ("length", 0), ("length", -1), ("length", 9),
                 ("length", 2**31 - 1), ("trickle", 0)]
        number = 0
        for action in (LOCK_STATE, WRITE, READ_LOCKED, READ, OPEN, LOGIN, ACCOUNT):
            for kind, value in kinds:
                if (kind, action) == ("refuse", LOGIN):
                    continue  # asks for another password
                number += 1
                text = f"PRINT {number}"
                session.type(text)
                before = session.stored()
                server.fault(kind, action, value)
                if action in (READ_LOCKED, OPEN, LOGIN, ACCOUNT):
                    server.drop()
                saved = session.save()
                server.heal()
                stored = session.stored()
                expect(saved in (True, False), f"no answer of a save with {kind} {value!r:.30} at {action}")
                expect_equal((session.text(), session.dirty()), (text, not saved),
                             f"what is open after {kind} {value!r:.30} at {action}")
                expect(stored in (before, text.encode()) and (not saved or stored == text.encode()),
                       f"{stored} is stored after {kind} {value!r:.30} at {action}, saved {saved}")
        server.drop()
        for _ in range(2):  # the first may tell of a change that was its own
            saved = session.save()
        expect_equal((saved, session.stored()), (True, text.encode()), "the last save, on a server that has healed")


def the_way_leads_through_a_tunnel(desktop):
    relay = desktop.folder / "relay.py"
    relay.write_text(RELAY)
    with FakeServer() as server:
        session = Session(desktop, server, f"tunnel=/usr/bin/python3 '{relay}' %p", "address=far.invalid")
        session.type("THROUGH")
        expect_equal((session.save(), session.stored()), (True, b"THROUGH"), "a save")
        session.type("AGAIN")
        subprocess.run(["pkill", "-f", str(relay)], check=True)
        expect_equal((session.save("Home"), session.stored()), (True, b"AGAIN"), "a save through the next tunnel")
        session.driven.end()
        eventually("the end of the tunnel", lambda: subprocess.run(["pgrep", "-f", str(relay)], check=False,
                                                                  stdout=subprocess.DEVNULL).returncode == 1)


def odd_accounts_are_told_of(desktop):
    with FakeServer() as server:
        session = Session(desktop, server)
        account = server.accounts["TESTACC"]
        for asks in (b"PA\xfeDISPLAY hello", b"V\xfeCS\xfeBP LOGINPROG"):
            account["VOC"]["LOGIN"] = asks
            account["BP"].put("LOGINPROG", b"INPUT X\xfeEND")
            session.type(asks.decode("latin1")[:2])
            server.drop()
            expect_equal(session.save("Home"), True, "a save into an account that greets or asks")
        server.seats = 0
        server.drop()
        session.type("FULL")
        expect_equal((session.save(), session.dirty()), (False, True), "a save on a full server")
        server.seats = 10
        del account["BP"], account["VOC"]["BP"]
        expect_equal((session.save(), session.text()), (False, "FULL"), "a save without the file")


def a_slow_server_keeps_nobody_waiting(desktop):
    with FakeServer() as server:
        session = Session(desktop, server)
        session.type("SLOW")
        server.fault("delay", WRITE, 3.0, 1)
        began = time.monotonic()
        boxes = set()
        saving = session.client.start(session.document, faulty.NAME + ".mvDocument", "FileSave")
        while not saving:
            faulty.pump()
            boxes.update(title for _, title in session.driven.dialogs())
            time.sleep(0.02)
        expect_equal((saving[0], boxes), ((True,), {"Busy"}), "a save of three seconds and what was shown")
        # Escape ends the wait; the answer that comes late is no other's.
        session.type("LATER")
        server.fault("delay", WRITE, 4.0, 1)
        expect_equal(session.save("Escape"), False, "a save that was cancelled")
        expect_equal((session.text(), session.dirty()), ("LATER", True), "what is open")
        expect_equal((session.save("Home"), session.stored()), (True, b"LATER"), "the next save")
        # A request that is cut short is none, and what is left of its session is waited for.
        session.type("LONG" * 500_000)
        server.rate = 200_000
        expect_equal(session.save("Escape"), False, "a save that was cancelled while it was sent")
        server.rate = 0
        expect_equal((session.stored(), session.save("Home")), (b"LATER", True), "what is stored, and the next save")
        expect_equal(len(session.stored()), 2_000_000, "bytes that are stored")
        # The session is asked to end while a host is waited for.
        session.type("ENDING")
        server.fault("delay", WRITE, 60.0, 1)
        session.client.start(session.document, faulty.NAME + ".mvDocument", "FileSave")
        eventually("the wait to be told", lambda: session.driven.titled("Busy"))
        program = session.driven.program
        os.kill(program.pid, signal.SIGTERM)
        expect_equal(program.wait_end(), 0, "the exit code")
        expect(time.monotonic() - began < 25, "the end comes soon")


def passwords_are_kept_by_the_desktop_alone(desktop):
    address = lib.with_bus(desktop, "com.orlin.NobodyStartsIt")
    with FakeServer() as server:
        server.login_delay = 0.1
        server.accounts["TESTACC"]["BP"].put("MAIN", PROGRAM)
        connects(desktop, server.port)
        keyring = subprocess.Popen(["gnome-keyring-daemon", "--foreground", "--unlock", "--components=secrets"],
                                   env=desktop.env, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        desktop.helpers.append(lib._Helper(keyring))
        keyring.stdin.write(b"opens the store\n")
        keyring.stdin.close()
        eventually("the store of secrets", lambda: "org.freedesktop.secrets" in (desktop.command(
            "gdbus", "call", "--address", address, "--dest", "org.freedesktop.DBus", "--object-path",
            "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.ListNames", check=False) or ""))
        arguments = ("/H=stock", "/A=TESTACC", "/F=BP", "/I=MAIN")
        first = desktop.start(*arguments)
        desktop.wait_box()
        desktop.type_text("wrong")
        desktop.keys("alt+k", "Return")
        eventually("the refusal", lambda: server.log)
        time.sleep(0.5)
        logs_in(desktop)
        desktop.wait_active(r"\[BP MAIN on Stock")
        desktop.keys("ctrl+q")
        expect_equal(first.wait_end(), 0, "the exit code")
        # That one was not to be kept.
        second = desktop.start(*arguments)
        desktop.wait_box()
        desktop.keys("alt+k")
        desktop.keys("shift+Tab")
        logs_in(desktop, shows=r"\[BP MAIN on Stock")
        desktop.keys("ctrl+q")
        second.wait_end()
        third = desktop.start(*arguments, shows=r"\[BP MAIN on Stock")
        finds_nothing(desktop, PASSWORD, first, second, third)
        desktop.keys("ctrl+q")
        third.wait_end()


if __name__ == "__main__":
    lib.run(a_day_over_a_server, a_server_that_dies_takes_no_text_along,
            a_server_that_misbehaves_takes_no_text_along, the_way_leads_through_a_tunnel, odd_accounts_are_told_of,
            a_slow_server_keeps_nobody_waiting,
            passwords_are_kept_by_the_desktop_alone)
