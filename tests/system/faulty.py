"""What tests with thousands of steps need: a program that is driven over the bus and by keys sent straight to its
windows, without a process for each, and the driver's side of tests/faults/Faults.cpp."""
import ctypes
import ctypes.util
import errno
import mmap
import struct
import time

from gi.repository import Gio, GLib

import lib
from test_automation import DOCUMENTS, NAME, Client, pump

KINDS = ("open read write sync close rename link unlink mkdir truncate allocate mode owner getattr setattr stat "
         "readlink access list").split()
COUNT, FAIL, SHORT, KILL_BEFORE, KILL_AFTER, HALT_BEFORE, HALT_AFTER, OUTSIDE = range(8)
APPEND, REPLACE, SAME_SIZE_AND_TIME = range(3)
ERRORS = [errno.ENOSPC, errno.EIO, errno.EDQUOT, errno.EROFS, errno.EACCES, errno.EMFILE, errno.ESTALE, errno.EINTR]
MASKS = {"shift": 1, "ctrl": 4, "alt": 8}
CONTROL, STEPS = struct.Struct("9I1024s512s"), 4096


class Control:
    """The memory that the library in the program shares."""

    def __init__(self, path):
        path.write_bytes(bytes(CONTROL.size + STEPS))
        with open(path, "r+b") as file:
            self.memory = mmap.mmap(file.fileno(), 0)

    def arm(self, folders, target="", first=0, action=COUNT, error=0, lasting=0, outside=0):
        self.disarm()
        CONTROL.pack_into(self.memory, 0, 0, 0, 0, 0, first, lasting, error, action, outside,
                          ":".join(map(str, folders)).encode(), str(target).encode())
        self.memory[:4] = struct.pack("I", 1)

    def disarm(self):
        self.memory[:4] = bytes(4)
        self.go_on()

    def go_on(self):
        self.memory[12:16] = bytes(4)

    def _number(self, at):
        return struct.unpack_from("I", self.memory, at)[0]

    def fired(self):
        return self._number(8)

    def halted(self):
        return self._number(12)

    def steps(self):
        """The kind of each call since it was armed."""
        return [KINDS[code] for code in self.memory[CONTROL.size:CONTROL.size + min(self._number(4), STEPS)]]


class XKeyEvent(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("root", ctypes.c_ulong),
                ("subwindow", ctypes.c_ulong), ("time", ctypes.c_ulong), ("x", ctypes.c_int), ("y", ctypes.c_int),
                ("x_root", ctypes.c_int), ("y_root", ctypes.c_int), ("state", ctypes.c_uint),
                ("keycode", ctypes.c_uint), ("same_screen", ctypes.c_int), ("room", ctypes.c_long * 24)]


class Screen:
    """Windows and keys of a display that has no window manager."""

    def __init__(self, display):
        self.x, self.test = (ctypes.CDLL(ctypes.util.find_library(name)) for name in ("X11", "Xtst"))
        for name in ("XOpenDisplay", "XDefaultRootWindow", "XStringToKeysym"):
            getattr(self.x, name).restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(display.encode()))
        self.root = self.x.XDefaultRootWindow(self.display)
        # A window may be gone before a request about it is there.
        self._handler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda *_: 0)
        self.x.XSetErrorHandler(self._handler)

    def activate(self, window):
        """A window that a dialog still blocked when it got the focus hears of it again."""
        for target in (1, window):
            self.x.XSetInputFocus(self.display, ctypes.c_ulong(target), 1, ctypes.c_ulong(0))

    def click(self, x, y, button=1):
        """At a place of the screen."""
        self.test.XTestFakeMotionEvent(self.display, -1, x, y, ctypes.c_ulong(0))
        for down in (1, 0):
            self.test.XTestFakeButtonEvent(self.display, button, down, ctypes.c_ulong(0))
        self.x.XFlush(self.display)

    def windows(self):
        """Visible ones with a title, the latest last."""
        root, parent, count = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_uint()
        children = ctypes.POINTER(ctypes.c_ulong)()
        self.x.XQueryTree(self.display, ctypes.c_ulong(self.root), ctypes.byref(root), ctypes.byref(parent),
                          ctypes.byref(children), ctypes.byref(count))
        found = [children[i] for i in range(count.value)]
        if found:
            self.x.XFree(children)
        return [(window, title) for window in found if (title := self.title(window))]

    def title(self, window):
        attributes, name = (ctypes.c_int * 64)(), ctypes.c_char_p()
        if not self.x.XGetWindowAttributes(self.display, ctypes.c_ulong(window), attributes) or attributes[23] != 2:
            return ""
        if not self.x.XFetchName(self.display, ctypes.c_ulong(window), ctypes.byref(name)):
            return ""
        text = name.value.decode(errors="replace")
        self.x.XFree(name)
        return text

    def key(self, window, name):
        """A key with its modifiers, as ctrl+s, sent to the window, which gets the focus."""
        self.x.XSetInputFocus(self.display, ctypes.c_ulong(window), 1, ctypes.c_ulong(0))
        *modifiers, key = name.split("+")
        symbol = self.x.XStringToKeysym(key.encode())
        state = sum(MASKS[modifier] for modifier in modifiers)
        code = self.x.XKeysymToKeycode(self.display, ctypes.c_ulong(symbol))
        for kind in (2, 3):
            event = XKeyEvent(kind, 0, 1, self.display, window, self.root, 0, 0, 1, 1, 1, 1, state, code, 1)
            self.x.XSendEvent(self.display, ctypes.c_ulong(window), 1, ctypes.c_long(kind - 1), ctypes.byref(event))
        self.x.XFlush(self.display)


class Driven:
    """A running program with its client, its screen and its library of faults."""

    def __init__(self, desktop, library=None):
        self.desktop, self.program, self.client = desktop, None, None
        self.told = False  # there was a box after the fault
        self.asked = None  # the last box that came during the last wait
        self.on_halt = None  # what looks at the files while the program stands still
        desktop.helpers.pop().destroy()  # the window manager: boxes come up in a third of the time
        desktop.sample_accounts()
        self.address = lib.with_bus(desktop, "com.orlin.NobodyStartsIt")
        self.screen = Screen(desktop.env["DISPLAY"])
        self.control = Control(desktop.folder / "control")
        self.variables = {"NIB_FAULTS": str(desktop.folder / "control")}
        if library:
            self.variables["LD_PRELOAD"] = str(library)

    def start(self, *arguments, program=None, answer="Return"):
        """Until it answers on the bus; what it asks at first gets the key."""
        self.program = self.desktop.start(*arguments, program=program, **self.variables)
        self.program.may_end = True
        self.client, self.main = self.client or Client(self.address), None
        end = time.monotonic() + lib.TIMEOUT
        while time.monotonic() < end and self.program.alive():
            up = self.screen.windows()
            self.main = self.main or (up and up[0][0])
            if self.main and self.owned() and isinstance(self.wait(self.client.start(
                    DOCUMENTS, NAME + ".mvDocuments", "Count"), answer), tuple):
                return self
            time.sleep(0.005)
        raise lib.Failure("the program did not start: " + self.program.output()[-2000:])

    def owned(self):
        return self.client.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                         "NameHasOwner", GLib.Variant("(s)", (NAME,)), None, 0, 5000,
                                         None).unpack()[0]

    def end(self):
        self.control.disarm()
        self.program.kill()
        lib.eventually("the name on the bus to be free", lambda: not self.owned())

    def dialogs(self):
        return [window for window in self.screen.windows() if window[0] != self.main]

    def wait(self, result, key="Return", timeout=10.0):
        """Until the started call is answered; boxes get the key. None when the program has ended."""
        end, again, self.asked = time.monotonic() + timeout, 0.0, None
        while not result:
            pump()
            self.look_at_halt()
            up = self.dialogs()
            if up and (up[-1] != self.asked or time.monotonic() > again):
                self.told = self.told or self.control.fired() > 0
                self.asked, again = up[-1], time.monotonic() + 0.2
                # A merge waits for choices that no single key makes.
                self.screen.key(self.asked[0], "Escape" if self.asked[1].startswith("Merge ") else key)
            if not self.program.alive():
                return None
            if time.monotonic() > end:
                raise lib.Failure(f"no answer within {timeout:g} s; windows {self.screen.windows()}")
            time.sleep(0.0005)
        return result[0]

    def call(self, path, member, types=None, *values, key="Return"):
        """A method of a document that may ask something."""
        result = self.client.start(path, NAME + ".mvDocument", member, GLib.Variant(types, values) if types else None)
        answer = self.wait(result, key)
        if isinstance(answer, GLib.Error):
            # The program that the bus lost sight of has been killed.
            if "NoReply" in str(Gio.DBusError.get_remote_error(answer)):
                return None
            raise answer
        return answer[0] if answer else answer

    def accept_settings(self):
        """The dialog, and Return in it; the file is written at the next turn of the loop."""
        dialog = self.press("the dialog of the settings", ("Escape", "alt+t", "Up", "Return"),
                            lambda: self.titled("Nib Settings"))
        self.screen.key(dialog or 0, "Return")
        self.soon("the end of the dialog", lambda: self.titled("Nib Settings") != dialog)
        for _ in range(3):
            self.wait(self.client.start(DOCUMENTS, NAME + ".mvDocuments", "Count"))

    def press(self, what, keys, probe):
        """Keys for the main window, once more a second later when it was not ready for them."""
        pressed = 0.0

        def look():
            nonlocal pressed
            if time.monotonic() > pressed + 1:
                pressed = time.monotonic()
                self.screen.activate(self.main)
                for key in keys:
                    self.screen.key(self.main, key)
            return probe()
        return self.soon(what, look)

    def look_at_halt(self):
        if self.control.halted():
            self.on_halt()
            self.control.go_on()

    def recovers(self, fits):
        """Until what is offered has been recovered and the texts fit; the list comes before or after the first answer."""
        def look():
            if dialog := self.titled("Nib Auto Recover"):
                self.screen.key(dialog, "Return")
                return False
            self.wait(self.client.start(DOCUMENTS, NAME + ".mvDocuments", "Count"))
            return fits([self.client.text(document) for document in self.client.docs("NewEnum")])
        self.soon("texts that were typed before the end", look)

    def titled(self, title):
        return next((window for window, text in self.screen.windows() if text == title), None)

    def soon(self, what, probe):
        """As eventually, for what takes milliseconds; None when the program has ended."""
        end = time.monotonic() + 10
        while not (seen := probe()) and self.program.alive():
            self.look_at_halt()
            if time.monotonic() > end:
                picture = self.desktop.screenshot(f"/tmp/nib-{self.program.pid}.png")
                raise lib.Failure(f"no {what}, windows {self.screen.windows()}, {picture}")
            time.sleep(0.001)
        return seen
