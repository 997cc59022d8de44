"""One connection of a fake server: its packets, and what each request does."""
import select
import socket
import struct
import time
import types

from fake_commands import VERBS, Abort, Leave, run_line
from fake_database import FE, Account

ILLEGAL_ID, NO_NAME, NO_FILE, NOT_FOUND, NOT_IN_VOC, NO_TYPE = 3000, 3002, 3003, 3006, 3007, 3009
FAILED, ELSE, REFUSED, LOCKED, PROMPT = 1, 2, 3, 4, 5
QUIT, ACCOUNT, RELEASE, RESPOND, END_COMMAND, LOGIN = 1, 3, 15, 22, 23, 24
NEVER = (10, 25, 31, 32, 33)  # Waits for a lock, needs no password, works on the wrong file.
LONGEST_ID = 63
LARGEST = 99_999_999


class Answer(Exception):
    """Any reply but 0/0."""

    def __init__(self, result, status=0, data=b""):
        super().__init__(result, status, data)
        self.reply = (result, status, data)


def short(data, at=0):
    return int.from_bytes(data[at:at + 2], "little", signed=True)


class Session:
    def __init__(self, server, number, connection):
        self.server, self.number, self.connection = server, number, connection
        self.user = self.command = self.entry = None
        self.account = server.accounts["QMSYS"]
        self.files, self.lists = {}, {}
        self.refusal = self.abort = b""
        self.output, self.code = "", 0
        self.quitting = self.dropped = False

    # The wire.

    def serve(self):
        how = "cut"
        try:
            if len(self.server.sessions) > self.server.seats:
                self.connection.sendall(b"\6")
                time.sleep(self.server.full_delay)
                raise Leave
            self.send("hello", b"\6")
            while not self.quitting:
                self.converse()
            if self.entry.action == QUIT:
                how = "left" if select.select([self.connection], [], [], 0.05)[0] else "eof"
        except (Leave, OSError) as end:
            how = "left" if end.args and not self.dropped else "cut"
        finally:
            self.server.ended(self, how)

    def converse(self):
        length = struct.unpack("<i", self.take(4))[0]
        if length < 5:
            raise Leave
        action = short(self.take(min(2, length - 4)))
        self.entry = types.SimpleNamespace(session=self.number, action=action, file="", id="", size=length - 6)
        self.server.log.append(self.entry)
        data = self.take(length - 6, self.server.due("drop", action))
        with self.server.guard:
            try:
                reply = self.server.due("refuse", action) or (0, 0, self.act(action, data, length) or b"")
            except Answer as other:
                reply = other.reply
            except Abort as wrong:
                reply = FAILED, 0, str(wrong).encode("latin1")
        result, status, data = reply
        if result == FAILED:
            self.abort = data = data or self.abort
        elif result == REFUSED:
            self.refusal, data = data, b""
        self.send(action, struct.pack("<ihi", 10 + len(data), result, status) + data)

    def take(self, size, drop=None):
        taken = bytearray()
        while len(taken) < size and (drop is None or len(taken) < drop):
            piece = self.connection.recv(min(size - len(taken), 65536))
            if not piece:
                raise Leave("by the client")
            taken += piece
            if self.server.rate:
                time.sleep(len(piece) / self.server.rate)
        if drop is not None:
            raise Leave
        return bytes(taken)

    def send(self, action, packet):
        due = {kind: self.server.due(kind, action) for kind in ("delay", "length", "cut", "trickle", "unanswered")}
        if due["delay"]:
            self.pause(due["delay"])
        if due["unanswered"] is not None:
            raise Leave
        if due["length"] is not None:
            packet = struct.pack("<i", due["length"]) + packet[4:]
        packet = packet[:due["cut"]]
        step = len(packet) if due["trickle"] is None else 1
        for at in range(0, len(packet), step or 1):
            self.connection.sendall(packet[at:at + step])
        if due["cut"] is not None:
            raise Leave

    def pause(self, seconds):
        """Notices when the client goes."""
        if select.select([self.connection], [], [], seconds)[0]:
            if not self.connection.recv(1, socket.MSG_PEEK):
                raise Leave("by the client")
            time.sleep(seconds)

    # Requests.

    def act(self, action, data, length):
        if length == 5:
            raise Abort("0000042B: Non-numeric where numeric required")
        if not self.user and action != LOGIN or action in NEVER:
            self.quitting = True
            raise Abort("Not logged in")
        if self.command and action not in (RESPOND, END_COMMAND):
            self.advance(wrong=Abort(f"000000AA: Incorrect message type from client ({action})"))
        if action not in ACTIONS:
            raise Answer(REFUSED, 0, f"Illegal action code ({action})".encode())
        return ACTIONS[action](self, data)

    def opened(self, data):
        if short(data) not in self.files:
            raise Answer(REFUSED, 0, b"Invalid file number")
        self.entry.file, file = self.files[short(data)]
        return file

    def named(self, data, at=2):
        """The file, and the id that stands behind it."""
        file, name = self.opened(data), data[at:at + 99].decode("latin1")
        self.entry.id = name
        return file, name

    def quit(self, _):
        self.quitting = True

    def text(self, _):
        return self.refusal

    def login(self, data):
        user = data[2:2 + short(data)].decode("latin1")
        at = 2 + len(user) + len(user) % 2
        password = data[at + 2:at + 2 + short(data, at)].decode("latin1")
        if self.user or not 1 <= len(user) <= 32 or user[0] == "$" or len(password) > 32:
            self.quitting = True
        elif self.server.users.get(user) != password:
            self.server.rest(self, self.server.login_delay)
            self.quitting = True
        if self.quitting:
            raise Abort("Invalid username or password")
        self.user = user

    def set_account(self, data):
        name = data.decode("latin1").upper()
        if not 1 <= len(name) <= 32:
            raise Answer(REFUSED, NOT_FOUND, b"Invalid account name")
        self.account = self.server.accounts.get(name)
        if self.account is None:
            self.account = Account("QMSYS", VERBS)
            del self.account["BP"], self.account["ITEMS"]
            raise Answer(REFUSED, NOT_FOUND, b"Unable to change to directory " + name.encode("latin1"))
        self.code = NOT_FOUND
        return self.start(run_line(self, "LOGIN") if "LOGIN" in self.account["VOC"] else iter(()))

    def open(self, data):
        name = data.decode("latin1")
        if not name:
            raise Answer(ELSE, NO_NAME)
        plain = name.removeprefix("DICT ")
        record = self.account["VOC"].get(plain)
        if record is None or not record.startswith(b"F\xfe"):
            raise Answer(ELSE, NOT_IN_VOC if record is None else NO_TYPE)
        if name not in self.account:
            raise Answer(ELSE, NO_FILE)
        number = next(n for n in range(1, 30000) if n not in self.files)
        self.files[number] = name, self.account[name]
        return struct.pack("<h", number)

    def read(self, data, locks=False):
        file, name = self.named(data)
        if not 1 <= len(name) <= LONGEST_ID:
            raise Answer(ELSE, ILLEGAL_ID)
        if locks:
            holder = self.server.locks.take(self.number, short(data), (file.path, name))
            if holder:
                raise Answer(LOCKED, holder)
        if file.odd(name) and not file.hashed:
            raise Answer(0, ILLEGAL_ID)
        if name not in file:
            raise Answer(ELSE, NOT_FOUND)
        return file.item(name)

    def holder(self, data):
        file, name = self.named(data)
        self.legal(name)
        state, number = self.server.locks.state(self.number, (file.path, name))
        raise Answer(0, number, struct.pack("<i", state))

    @staticmethod
    def legal(name):
        if not 1 <= len(name) <= LONGEST_ID:
            raise Abort("00001472: Illegal record id")

    def release(self, data):
        if short(data) == 0:
            return self.server.locks.free(self.number)
        file, name = self.named(data)
        if not name:
            return self.server.locks.free(self.number, short(data))
        self.legal(name)
        return self.server.locks.free(self.number, key=(file.path, name))

    def write(self, data, keep=True):
        data = data[:LARGEST]
        size = short(data, 2)
        file, name = self.named(data[:4 + max(0, size)], 4)
        self.may_change(file, name)
        file.put(name, data[4 + size:])
        if not keep:
            self.server.locks.free(self.number, key=(file.path, name))

    def delete(self, data):
        file, name = self.named(data)
        self.may_change(file, name, file.hashed)
        file.pop(name, None)
        self.server.locks.free(self.number, key=(file.path, name))

    @staticmethod
    def may_change(file, name, any_byte=False):
        if not 1 <= len(name) <= LONGEST_ID or file.odd(name) and not any_byte:
            raise Answer(FAILED, ILLEGAL_ID)

    def clear_list(self, data):
        self.take_list(data)

    def take_list(self, data):
        if not 0 <= short(data) <= 10:
            raise Answer(REFUSED, 0, b"Invalid select list number")
        return FE.join(self.lists.pop(short(data), ()))

    def names(self, data):
        file = self.opened(data)
        return FE.join(name.encode("latin1") for name in [*file, *file.foreign])

    def about(self, data):
        file = self.opened(data)
        known = {1: self.entry.file, 2: file.path, 3: "3" if file.hashed else "4"}
        return known.get(short(data, 2), "").encode("latin1")

    # Commands.

    def execute(self, data):
        return self.start(run_line(self, data.decode("latin1")))

    def respond(self, data):
        if not self.command:
            raise Answer(REFUSED, 0, b"Response to prompt sent when no prompt outstanding")
        return self.advance(data.decode("latin1"))

    def end_command(self, _):
        if not self.command:
            raise Answer(REFUSED, 0, b"End command request sent when no prompt outstanding")
        self.command = None
        raise Answer(0, self.code)

    def start(self, command):
        self.output, self.command = "", command
        return self.advance()

    def advance(self, line=None, wrong=None):
        command, self.command = self.command, None
        try:
            wanted = command.throw(wrong) if wrong else next(command) if line is None else command.send(line)
            while wanted != "":
                self.server.rest(self, wanted)
                wanted = next(command)
        except StopIteration:
            raise Answer(0, self.code, self.printed().replace(b"\n", FE).removesuffix(FE)) from None
        self.command = command
        raise Answer(PROMPT, 0, self.printed())

    def emit(self, text):
        self.output += text

    def printed(self):
        text, self.output = self.output, ""
        return text.encode("latin1")


ACTIONS = {
    QUIT: Session.quit, 2: Session.text, ACCOUNT: Session.set_account, 4: Session.open, 6: Session.read,
    9: lambda session, data: session.read(data, True), 13: Session.clear_list, 14: Session.take_list,
    RELEASE: Session.release, 16: lambda session, data: session.write(data, False), 17: Session.write,
    18: Session.delete, 21: Session.execute, RESPOND: Session.respond, END_COMMAND: Session.end_command, LOGIN: Session.login,
    34: Session.holder, 37: Session.names, 40: Session.about}
