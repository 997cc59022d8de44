#!/usr/bin/env python3
"""A multi-user server for tests, that speaks the network protocol in threads of the test's own process.

    with FakeServer(users={"ada": "secret7"}) as server:
        server.accounts["TESTACC"]["BP"]["PROG1"] = b"CRT 'HI'\\nEND\\n"
        server.fault("delay", 17, 2.0)

The accounts QMSYS and TESTACC have the directory files BP and BP.OUT and the hashed files ITEMS and VOC each.
fault(kind, action, value, times) is for one action or for all (None), from then on or so many times. An action is its
number, or "hello" for the first byte:

    delay       done, and answered so many seconds later          refuse      not done: (result, status, text)
    cut         only so many bytes of the reply, then closed      length      the reply's length field says that
    trickle     the reply comes in single bytes                   unanswered  done, then closed without a reply
    drop        closed after so many bytes of the request's data

Further ones are attributes of FakeServer. log has an entry for each request (session, action, file, id, size) and for
each end of a connection: "eof" where the client waited for it after Quit, "left" where it did not, "cut" by the server.
"""
import argparse
import collections
import socket
import struct
import threading
import types

from fake_commands import VERBS
from fake_database import FILE_LOCK, UPDATE, Account, Locks
from fake_session import ACCOUNT, NEVER, QUIT, RELEASE, Session


class FakeServer:
    def __init__(self, users=None, port=0, accounts=("QMSYS", "TESTACC")):
        self.users = users or {"ada": "secret7", "bob": "secret8"}
        self.accounts = {name: Account(name, VERBS) for name in accounts}
        self.seats = 10  # So many sessions at a time; 0 is a full server.
        self.full_delay, self.login_delay = 2.0, 3.0  # Before a connection is closed that gets no seat, or is refused.
        self.rate = 0  # Bytes a second that are taken in; 0 is no limit.
        self.reset = False  # Connections end by a reset.
        self.port, self.locks, self.sessions, self.log, self.faults = port, Locks(), {}, [], []
        self.guard, self.listener, self.last = threading.RLock(), None, 130

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self.stop()

    def start(self):
        """After a stop: on the same port, with all items, without sessions and locks."""
        self.listener = socket.create_server(("127.0.0.1", self.port))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self._listen, args=(self.listener,), daemon=True).start()

    def stop(self):
        self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()
        self.drop()
        self.locks, self.sessions = Locks(), {}

    def _listen(self, listener):
        while True:
            try:
                connection, _ = listener.accept()
            except OSError:
                return
            connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            with self.guard:
                self.last += 1
                session = self.sessions[self.last] = Session(self, self.last, connection)
            threading.Thread(target=session.serve, daemon=True).start()

    def ended(self, session, how):
        """A session that its client left at a prompt runs for ever, with its locks and its seat."""
        with self.guard:
            if not (session.command and not session.quitting):
                self.locks.free(session.number)
                self.sessions.pop(session.number, None)
            self.log.append(types.SimpleNamespace(session=session.number, action=how, file="", id="", size=0))
        if self.reset:
            session.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        session.connection.close()

    def rest(self, session, seconds):
        """Others go on meanwhile."""
        self.guard.release()
        try:
            session.pause(seconds)
        finally:
            self.guard.acquire()

    def fault(self, kind, action=None, value=0, times=None):
        self.faults.append([kind, action, value, times])

    def heal(self):
        self.faults.clear()

    def due(self, kind, action):
        for fault in self.faults:
            if fault[0] == kind and fault[1] in (None, action) and fault[3] != 0:
                fault[3] = fault[3] and fault[3] - 1
                return fault[2]
        return None

    def hold(self, account, file, name, session=99):
        """A lock of a session that is not there; without a name the file's."""
        self.locks.held[self.accounts[account][file].path, name] = (UPDATE if name else FILE_LOCK, {session: 1})

    def drop(self):
        """All connections break, as when the server is killed."""
        for session in list(self.sessions.values()):
            session.dropped = True
            try:
                session.connection.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass

    def forbidden(self):
        return [entry for entry in self.log if entry.action in NEVER]

    def rude(self):
        """Sessions that had an account and ended by anything but Release, Quit and waiting for the end of input."""
        actions = collections.defaultdict(list)
        for entry in list(self.log):
            actions[entry.session].append(entry.action)
        return [number for number, seen in actions.items()
                if ACCOUNT in seen and seen[-1] in ("eof", "left") and seen[-3:] != [RELEASE, QUIT, "eof"]]


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="a fake server; users ada/secret7 and bob/secret8, account TESTACC")
    parser.add_argument("--port", type=int, default=4243)
    with FakeServer(port=parser.parse_args().port) as running:
        print(f"127.0.0.1:{running.port}", flush=True)
        threading.Event().wait()
