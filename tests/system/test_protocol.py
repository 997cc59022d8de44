#!/usr/bin/env python3
"""The network protocol as a client relies on it: rules in raw requests, with what the server has to answer.

    test_protocol.py [PROGRAM]                                          against the fake server of the tests
    test_protocol.py --server HOST PORT USER PASSWORD ACCOUNT                         against a real one

The account needs the directory file BP and the hashed file ITEMS. A part is a generator of (rule, what was found, what
is expected); a and b are sessions of the same user.
"""
import re
import struct
import sys
import time

from fake_server import FakeServer
from wire import Wire

DONE = 0, 0, b""
ALL_BYTES = bytes(range(256))


class Server:
    def __init__(self, host, port, user, password, account):
        self.address, self.user, self.password, self.account = (host, port), user, password, account

    def raw(self, login=True):
        wire = Wire(*self.address)
        if login:
            wire.login(self.user, self.password)
        return wire

    def client(self):
        return Wire(*self.address).enter(self.user, self.password, self.account)


def logins(server, a, b):
    raw = server.raw(False)
    yield "the server speaks first", raw.hello, b"\6"
    yield "login", raw.login(server.user, server.password), DONE
    yield "account in any case", raw.call(3, server.account.lower())[::2], (0, b"")
    yield "account is set", raw.execute("WHO")[2].split()[-1], server.account.encode()
    yield "end of input after quit", raw.quit(), True
    for user, password in ((server.user, "no"), ("nobody7", "no"), ("x" * 33, "no"), ("$x", "no")):
        raw = server.raw(False)
        yield f"login {user[:8]} {password}", raw.login(user, password), (1, 0, b"Invalid username or password")
        yield "and closed", raw.closed(), True
    raw = server.raw(False)
    yield "login comes first", (raw.call(4, "BP"), raw.closed()), ((1, 0, b"Not logged in"), True)
    raw = server.raw()
    yield "no account", raw.execute("WHO")[2].split()[-1], b"QMSYS"
    yield "unknown account", raw.call(3, "nosuch"), (3, 3006, b"")
    yield "and its text", raw.call(2)[2], b"Unable to change to directory NOSUCH"
    yield "then nothing opens", raw.call(4, "BP"), (2, 3003, b"")
    for length in (0, 4, -1):
        raw = server.raw()
        raw.socket.sendall(struct.pack("<i", length))
        yield f"length {length} closes", raw.closed(), True
    raw = server.client()
    raw.socket.sendall(struct.pack("<ib", 5, 6))
    yield "length 5 fails", raw.reply()[0], 1
    for byte in struct.pack("<ih", 8, 4) + b"BP":
        raw.socket.sendall(bytes([byte]))
    raw.send(4, b"ITEMS")
    yield "single bytes, and two requests at once", [raw.reply()[0], raw.reply()[0]], [0, 0]


def opening(server, a, b):
    for name, status in (("", 3002), ("NOSUCH", 3007), ("bp", 3007), ("BASIC", 3009)):
        yield f"open '{name}'", a.call(4, name), (2, status, b"")
    about = [a.call(40, struct.pack("<hi", file, key))[2] for file in (a.bp, a.items) for key in (1, 3)]
    yield "kinds of file", about, [b"BP", b"4", b"ITEMS", b"3"]
    yield "dictionary", a.open("DICT ITEMS") > a.items, True
    yield "VOC", a.on(6, a.open("VOC"), "BP")[2][:5], b"F\xfeBP\xfe"
    yield "unknown action", (a.call(99), a.call(2)[2]), ((3, 0, b""), b"Illegal action code (99)")
    yield "unknown file number", (a.on(6, 77, "X"), a.call(2)[2]), ((3, 0, b""), b"Invalid file number")
    yield "the text stays", (a.on(6, a.bp, "T.NONE"), a.call(2)[2]), ((2, 3006, b""), b"Invalid file number")
    for action in (22, 23):
        yield f"{action} without a prompt", (a.call(action)[0], b"no prompt" in a.call(2)[2]), (3, True)


def items(server, a, b):
    for item, back in ((b"a\nb", b"a\xfeb"), (b"x\xfe", b"x\xfe"), (b"", b""), (b"a\r\n\xfe", b"a\r\xfe\xfe"),
                       (ALL_BYTES, ALL_BYTES.replace(b"\n", b"\xfe")), (b"y" * 300000, b"y" * 300000)):
        for file, expected in ((a.bp, back), (a.items, item)):
            done = a.write(file, "T.1", item)
            yield f"{len(item)} bytes in {file}", (done, a.on(6, file, "T.1")), ((0, 0), (0, 0, expected))
    names = ["T" * 63, "T/1", "T\\:*?.~,\"<>|;=+%&' ", "..", "../T", ".T", "~T"]
    for file, fine, missing in ((a.bp, range(32, 127), (0, 3000, b"")), (a.items, range(1, 251), (2, 3006, b""))):
        for name in names + [f"T{chr(byte)}z" for byte in range(256)]:
            good = name in names or ord(name[1]) in fine
            wrote, read = a.write(file, name, b"v"), a.on(6, file, name)
            if name in names or (wrote, read) != ((0, 0) if good else (1, 3000), (0, 0, b"v") if good else missing):
                yield f"id {name}", (wrote, read, a.on(18, file, name)), ((0, 0), (0, 0, b"v"), DONE)
            a.on(18, file, name)
        for name in ("", "T" * 64):
            yield f"id of {len(name)}", (a.write(file, name, b"v"), a.on(6, file, name)[:2]), ((1, 3000), (2, 3000))
    yield "release of a long id", a.on(15, a.bp, "T" * 64)[0], 1
    a.write(a.items, "T.1", b"")
    yield "ids of a file", b"T.1" in a.on(37, a.items)[2].split(b"\xfe"), True
    yield "delete, also what is gone", [a.on(18, a.items, "T.1") for _ in "12"], [DONE, DONE]


def locks(server, a, b):
    free, held = (0, 0), (2, a.number)
    for mine, other in ((a.bp, b.bp), (a.items, b.items)):
        a.write(mine, "T.1", b"v")
        yield "take it twice", [a.on(9, mine, "T.1") for _ in "12"], [(0, 0, b"v")] * 2
        yield "refused, with the holder", b.on(9, other, "T.1"), (4, a.number, b"")
        yield "a read does not ask", b.on(6, other, "T.1"), (0, 0, b"v")
        yield "states", (a.state(mine, "T.1"), b.state(other, "T.1")), (held, (-2, a.number))
        yield "17 keeps it", (a.write(mine, "T.1", b"w", 17), a.state(mine, "T.1")), ((0, 0), held)
        yield "16 ends it", (a.write(mine, "T.1", b"w"), a.state(mine, "T.1")), ((0, 0), free)
        yield "17 does not take it", (a.write(mine, "T.1", b"w", 17), a.state(mine, "T.1")), ((0, 0), free)
        a.on(9, mine, "T.1")
        yield "advisory: others write", (b.write(other, "T.1", b"x"), a.on(6, mine, "T.1")[2]), ((0, 0), b"x")
        yield "and delete", (b.on(18, other, "T.1"), a.state(mine, "T.1")), (DONE, held)
        yield "18 ends it", (a.on(18, mine, "T.1"), a.state(mine, "T.1")), (DONE, free)
    missing, illegal = (2, 3006, b""), (0, 3000, b"")
    for file, name, reply in ((a.bp, "T.1", missing), (a.items, "T.1", missing), (a.bp, "T\1", illegal)):
        yield "what is not there is locked", (a.on(9, file, name), a.state(file, name)), (reply, held)
        yield "and released", (a.on(15, file, name), a.state(file, name)), (DONE, free)
    for rule, request, after in (
            ("release of an id", lambda f: a.on(15, a.bp, "T.1"), free), ("of its number", lambda f: a.on(15, f), free),
            ("of another number", lambda f: a.on(15, a.bp), held), ("of all", lambda f: a.on(15, 0), free),
            ("a refusal", lambda f: a.call(99) and DONE, held),
            ("a command", lambda f: a.execute("WHO")[0] or DONE, held)):
        number = a.open("BP")
        a.on(9, number, "T.1")
        yield f"after {rule}", (request(number), a.state(a.bp, "T.1")), (DONE, after)
        a.on(15, 0)
    a.write(a.bp, "T.1", b"before")
    for last in (b"", struct.pack("<ihhh", 500, 16, 1, 3) + b"T.1 half", struct.pack("<ih", 13, 21) + b"SLEEP 9"):
        gone = server.client()
        gone.on(9, gone.bp, "T.1")
        gone.socket.sendall(last)
        time.sleep(0.1)
        gone.socket.close()
        end = time.monotonic() + 2
        while a.state(a.bp, "T.1") != free and time.monotonic() < end:
            time.sleep(0.01)
        yield f"dropped after {last[:6]}", (a.state(a.bp, "T.1"), a.on(6, a.bp, "T.1")[2]), (free, b"before")
    lines = b.execute("LISTU")[2].decode("latin1").split("\xfe")[1:]
    found = [re.fullmatch(r"(.) *(\d+)  \d+ .*? [\d.]+: (.*)", line) for line in lines]
    users = {int(line[2]): (line[1], line[3]) for line in found if line}
    yield "LISTU", (users[a.number], users[b.number]), ((" ", server.user), ("*", server.user))
    yield "numbers rise", b.number > a.number, True


def commands(server, a, b):
    _, count, text = a.execute('SSELECT VOC WITH TYPE = "F"')
    found = a.call(14, b"\0\0")[2].split(b"\xfe")
    yield "files", (text, len(found), found), (b"%d record(s) selected to list 0" % count, count, sorted(found))
    yield "VOC is one of them", {b"BP", b"ITEMS", b"VOC"} <= set(found), True
    yield "a list is used up", a.call(14, b"\0\0"), DONE
    yield "cleared", (a.execute("SSELECT VOC")[0], a.call(13, b"\0\0"), a.call(14, b"\0\0")), (0, DONE, DONE)
    yield "unknown command", a.execute("NOSUCH"), (0, -1, b"NOSUCH is not in your VOC")
    yield "not compiled", a.execute("RUN BP T.NO"), (0, -3006, b"Program BP.OUT T.NO not found")

    def run(*lines):
        a.write(a.bp, "T.RUN", "\xfe".join((*lines, "END")))
        a.execute("BASIC BP T.RUN")
        return a.execute("RUN BP T.RUN")

    yield "lines are joined with FE", run("PRINT 'a'", "PRINT 'b'", "PRINT 'c':")[::2], (0, b"a\xfeb\xfec")
    result, _, said = run("PRINT 'lost'", "B = 1", "X = NOVAR")
    yield "aborted", (result, b": Unassigned variable NOVAR at line 3 of " in said), (1, True)
    ask = 5, 0, b"Hello\nGo? "
    yield "a prompt", run("PRINT 'Hello'", "PRINT 'Go? ':", "INPUT X", "PRINT 'did ':X"), ask
    yield "answered", a.call(22, b"Y")[::2], (0, b"did Y")
    yield "ended", (a.execute("RUN BP T.RUN"), a.call(23)[::2]), (ask, (0, b""))
    wrong = a.execute("RUN BP T.RUN"), a.on(9, a.bp, "T.RUN"), a.state(a.bp, "T.RUN")
    yield "anything else aborts it", (wrong[1][0], b" (9) at line 3 of " in wrong[1][2], wrong[2]), (1, True, (0, 0))
    voc = a.open("VOC")
    for steps, reply in (("DISPLAY Welcome", (0, b"Welcome")), ("DISPLAY Hi\xfeRUN BP T.RUN", (5, b"Hi\nHello\nGo? "))):
        a.write(voc, "LOGIN", f"PA\xfe{steps}")
        raw = server.raw()
        yield "LOGIN of the account", raw.call(3, server.account)[::2], reply
        yield "goes on", (raw.call(23)[0], raw.call(4, "BP")[0]), (0 if reply[0] else 3, 0)
        raw.quit()
        a.on(18, voc, "LOGIN")
    a.send(21, b"OFF")
    yield "OFF closes", a.closed(), True


def compiling(server, a, b):
    data = "Data item or constant not found where expected|"
    for lines, errors, said in ((["PRINT 'it'", "* don't", "END"], 0, ""),
                                (["X = 'a", "Y = \"b'", "END"], 2, f"1: {data}2: {data}")):
        a.write(a.bp, "T.1", "\xfe".join(lines))
        end = "errors in:|   T.1" if errors else "no errors"
        expected = f"Compiling BP T.1|{said}{errors} error(s)|Compiled 1 program(s) with {end}".replace("|", "\xfe")
        yield f"compiling {lines[0]}", a.execute("BASIC BP T.1"), (0, int(not errors), expected.encode("latin1"))
    yield "no source", a.execute("BASIC BP T.NO"), (0, 0, b"Cannot read source record 'T.NO'")
    a.write(a.bp, "T A,B", b"END")
    yield "quoted id", a.execute('BASIC BP "T A,B"')[2][:31], b"Compiling BP T A,B\xfe0 error(s)\xfeC"


def seats(server, a, b):
    taken = []
    try:
        while len(taken) < 64:
            taken.append(server.raw())
    except (EOFError, ConnectionError):
        pass
    yield "a full server closes after its first byte", len(taken) < 64, True
    for wire in taken:
        wire.quit()


def report(name, checks):
    failed = 0
    for rule, found, expected in checks:
        failed += found != expected
        verdict = "PASS" if found == expected else f"FAIL {found!r}, not {expected!r}"
        print(f"{name}: {rule:52} {verdict}", flush=True)
    return failed


def run(server):
    failed = 0
    for part in (logins, opening, items, locks, commands, compiling, seats):
        a, b = server.client(), server.client()
        try:
            failed += report(part.__name__, part(server, a, b))
        finally:
            for name in b.on(37, b.bp)[2].split(b"\xfe"):
                if name.startswith(b"T"):
                    b.on(18, b.bp, name)
            b.on(18, b.items, "T.1")
            b.quit()
            a.socket.close()
    return failed


def run_fake():
    with FakeServer(users={"ada": "secret7"}) as fake:
        fake.login_delay = fake.full_delay = 0.1
        return run(Server("127.0.0.1", fake.port, "ada", "secret7", "TESTACC"))


if __name__ == "__main__":
    if "--server" in sys.argv:
        sys.exit(run(Server(*sys.argv[sys.argv.index("--server") + 1:])) > 0)
    sys.exit(run_fake() > 0)
