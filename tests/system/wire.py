"""A client of the network protocol in raw requests, for rules and as the other desk."""
import contextlib
import socket
import struct


def latin(text):
    return text.encode("latin1") if isinstance(text, str) else text


class Wire:
    def __init__(self, host, port):
        self.socket = socket.create_connection((host, int(port)), timeout=20)
        self.hello = self.socket.recv(1)

    def enter(self, user, password, account):
        self.login(user, password)
        self.call(3, account)
        self.bp, self.items = self.open("BP"), self.open("ITEMS")
        self.number = int(self.execute("WHO")[2].split()[0])
        return self

    def send(self, action, data=b""):
        self.socket.sendall(struct.pack("<ih", 6 + len(data), action) + latin(data))

    def _take(self, size):
        data = bytearray()
        while len(data) < size:
            piece = self.socket.recv(size - len(data))
            if not piece:
                raise EOFError
            data += piece
        return bytes(data)

    def reply(self):
        length, result, status = struct.unpack("<ihi", self._take(10))
        return result, status, self._take(length - 10)

    def call(self, action, data=b""):
        self.send(action, data)
        return self.reply()

    def login(self, *words):
        return self.call(24, b"".join(struct.pack("<h", len(w)) + w.encode() + b"\0" * (len(w) % 2) for w in words))

    def open(self, name):
        return struct.unpack("<h", self.call(4, name)[2])[0]

    def on(self, action, file, name=b""):
        return self.call(action, struct.pack("<h", file) + latin(name))

    def write(self, file, name, item, action=16):
        return self.call(action, struct.pack("<hh", file, len(name)) + latin(name) + latin(item))[:2]

    def state(self, file, name):
        _, status, data = self.on(34, file, name)
        return struct.unpack("<i", data)[0], status

    def execute(self, command):
        return self.call(21, command)

    def closed(self):
        with contextlib.suppress(ConnectionError):
            return self.socket.recv(1) == b""
        return True

    def quit(self):
        self.call(15, b"\0\0")
        return self.call(1) == (0, 0, b"") and self.closed()
