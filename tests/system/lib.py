"""Drives the real program from outside: a private X display with a window manager, private folders, keys and mouse.

A scenario is a function that takes a Desktop; a script hands its scenarios to run():

    import lib

    def opens_an_item(desktop):
        desktop.sample_accounts()
        desktop.start("/A=DEMO", "/F=BP", "/I=INVOICE")
        desktop.wait_window(r"INVOICE")

    lib.run(opens_an_item)

    python3 test_open.py PROGRAM [SCENARIO...]

Every wait has a time limit and says what it waited for. A failed scenario leaves a picture of its screen in the folder
that NIB_TEST_PICTURES names (the system's temporary folder by default), and the output of the program on stderr.
"""
import ctypes
import os
import pathlib
import re
import select
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import traceback

from checks import TIMEOUT, Failure, eventually, expect, expect_equal, expect_file, stays  # noqa: F401

SOURCE = pathlib.Path(__file__).resolve().parents[2]
PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None)

BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:path={folder}/bus</listen><servicedir>{folder}/services</servicedir>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy>
<limit name="max_incoming_bytes">1000000000</limit><limit name="max_outgoing_bytes">1000000000</limit>
<limit name="max_message_size">1000000000</limit><limit name="max_replies_per_connection">50000</limit></busconfig>
"""

# Clicks and new windows take the focus, Alt+F4 closes; every other key belongs to the program under test.
OPENBOX_CONFIG = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <desktops><number>1</number></desktops>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""


def _dies_with_the_test():
    # A test that is killed (by a time limit, say) runs no clean-up of its own.
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


class Program:
    """One running copy of the program."""

    def __init__(self, words, env, log):
        self.log = log
        with open(log, "wb") as output:
            self.process = subprocess.Popen(words, env=env, stdin=subprocess.DEVNULL, stdout=output,
                                            stderr=subprocess.STDOUT, start_new_session=True,
                                            preexec_fn=_dies_with_the_test)
        self.pid = self.process.pid
        self.may_end = False  # set when the scenario expects it to end

    def alive(self):
        return self.process.poll() is None

    def output(self):
        return self.log.read_text(encoding="utf-8", errors="replace")

    def wait_end(self, timeout=TIMEOUT):
        """Answers the exit code; minus the signal's number when a signal ended it."""
        self.may_end = True
        eventually(f"the end of process {self.pid}", lambda: not self.alive(), timeout)
        return self.process.returncode

    def kill(self):
        """kill -9: the program gets no chance to tidy up. Harmless when it has ended."""
        self.may_end = True
        if self.alive():
            self.process.kill()
        self.process.wait()

    def crashed(self):
        """Ended by itself, and not in the ordinary way."""
        return not self.may_end and self.process.poll() not in (None, 0)

    def destroy(self):
        """Ends it with all that it has started, for the clean-up."""
        try:
            os.killpg(self.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self.process.wait()


class Window:
    def __init__(self, desktop, number):
        self._desktop = desktop
        self.number = number

    def title(self):
        """None when the window has gone."""
        return self._desktop.xdotool("getwindowname", self.number, check=False)

    def size(self):
        answer = self._desktop.xdotool("getwindowgeometry", "--shell", self.number)
        values = dict(line.split("=") for line in answer.splitlines())
        return int(values["WIDTH"]), int(values["HEIGHT"])

    def focus(self):
        self._desktop.xdotool("windowactivate", self.number)
        eventually(f"the focus on \"{self.title()}\"", lambda: self._desktop.active_window() == self)

    def click(self, x, y, button=1, count=1):
        """At a place counted from the window's upper left corner."""
        self._desktop.xdotool("mousemove", "--window", self.number, x, y)
        self._desktop.xdotool("click", "--repeat", count, "--delay", 50, button)

    def drag(self, start, end):
        """With the left button, between places counted from the window's upper left corner."""
        for step in range(11):
            at = [a + (b - a) * step // 10 for a, b in zip(start, end)]
            self._desktop.xdotool("mousemove", "--sync", "--window", self.number, *at)
            if step == 0:
                self._desktop.xdotool("mousedown", 1)
            time.sleep(0.02)
        self._desktop.xdotool("mouseup", 1)

    def rows(self):
        """The window's picture as one bytes object a row of dots."""
        width, height = self.size()
        dots = self._desktop.picture(self.number)
        expect_equal(len(dots), width * height * 3, "the size of the picture")
        return [dots[row * width * 3:(row + 1) * width * 3] for row in range(height)]

    def __eq__(self, other):
        return isinstance(other, Window) and self.number == other.number

    def __hash__(self):
        return hash(self.number)


class Desktop:
    """A screen of its own and folders of its own. Use it as a context; leaving it ends and removes everything."""

    def __init__(self, program, size="1280x860"):
        self.program = str(program)
        self.size = size
        self.folder = None
        self.env = {}
        self.helpers = []
        self._programs = []

    def __enter__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="nib-system-"))
        try:
            self._make_folders()
            self._start_screen()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._programs):
            process.destroy()
        for process in reversed(self.helpers):
            process.destroy()
        self._programs.clear()
        self.helpers.clear()
        shutil.rmtree(self.folder, ignore_errors=True)

    def _make_folders(self):
        keep = ("PATH", "LD_LIBRARY_PATH", "TZ", "ASAN_OPTIONS", "UBSAN_OPTIONS")
        self.env = {name: os.environ[name] for name in keep if name in os.environ}
        # No bus: the program must neither meet the user's own copy of itself nor start one.
        self.env.update(LANG="C.UTF-8", QT_QPA_PLATFORM="xcb", NO_AT_BRIDGE="1", DBUS_SESSION_BUS_ADDRESS="disabled:")
        folders = {"HOME": "home", "XDG_CONFIG_HOME": "config", "XDG_DATA_HOME": "data", "XDG_CACHE_HOME": "cache",
                   "XDG_STATE_HOME": "state", "XDG_RUNTIME_DIR": "run", "TMPDIR": "tmp"}
        for variable, name in folders.items():
            (self.folder / name).mkdir(mode=0o700)
            self.env[variable] = str(self.folder / name)
        self.home, self.config = self.folder / "home", self.folder / "config" / "Orlin"
        self.data = self.folder / "data" / "Orlin" / "Nib"

    def _start_screen(self):
        reader, writer = os.pipe()
        try:
            # The server picks a free display itself, so that tests can run side by side.
            with open(self.folder / "xvfb.log", "wb") as log:
                server = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", self.size + "x24",
                                           "-nolisten", "tcp", "-noreset"], env=self.env, pass_fds=(writer,),
                                          stdin=subprocess.DEVNULL, stdout=log, stderr=log, start_new_session=True,
                                          preexec_fn=_dies_with_the_test)
            self.helpers.append(_Helper(server))
            os.close(writer)
            writer = -1
            number = b""
            while not number.endswith(b"\n"):
                ready, _, _ = select.select([reader], [], [], TIMEOUT)
                piece = os.read(reader, 16) if ready else b""
                expect(piece, "the X server did not start: " + (self.folder / "xvfb.log").read_text(errors="replace"))
                number += piece
        finally:
            os.close(reader)
            if writer >= 0:
                os.close(writer)
        self.env["DISPLAY"] = ":" + number.decode().strip()

        config = self.folder / "openbox.xml"
        config.write_text(OPENBOX_CONFIG, encoding="utf-8")
        self.helpers.append(Program(["openbox", "--config-file", str(config)], self.env, self.folder / "openbox.log"))
        eventually("the window manager", lambda: "window id" in self.command(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK", check=False))

    def command(self, *words, check=True):
        result = subprocess.run([str(word) for word in words], env=self.env, capture_output=True, timeout=TIMEOUT * 2,
                                stdin=subprocess.DEVNULL, check=False)
        if result.returncode != 0:
            if check:
                raise Failure(f"{words[0]} {words[1]} failed: " + result.stderr.decode(errors="replace").strip())
            return "" if words[0] == "xprop" else None
        return result.stdout.decode("utf-8", errors="replace").removesuffix("\n")

    def xdotool(self, *words, check=True):
        """What the command answers; None when it failed and `check` is off."""
        return self.command("xdotool", *words, check=check)

    def start(self, *arguments, program=None, shows=None, **variables):
        """Runs the program, or another copy of its file; each call is a further process. Other keyword arguments are
        environment variables for it. Here and below, `shows` is the title of the window that then has the focus."""
        log = self.folder / f"program-{len(self._programs) + 1}.log"
        words = [str(program or self.program)] + [str(argument) for argument in arguments]
        self._programs.append(program := Program(words, {**self.env, **variables}, log))
        if shows:
            self.wait_active(shows)
        return program

    def sample_accounts(self):
        """Copies the sample accounts to where the program looks for accounts; answers the folder of DEMO."""
        accounts = self.data / "Accounts"
        shutil.copytree(SOURCE / "resources" / "accounts", accounts, dirs_exist_ok=True)
        return accounts / "DEMO"

    def results_in_a_window(self):
        """As a user leaves them who has taken them out of the panel, so that their title tells when they are there."""
        self.config.mkdir(parents=True, exist_ok=True)
        with open(self.config / "hive.conf", "w", encoding="utf-8") as hive:
            hive.write("[Software\\Orlin\\MultiValue Editor\\Settings]\n@=7.1\nDialect=common\nResultsFloating=True\n")

    def program_output(self):
        """The last lines that each copy has printed."""
        return "".join(f"--- output of {process.log.stem}\n" + "\n".join(process.output().splitlines()[-40:]) + "\n"
                       for process in self._programs)

    def windows(self, title=r"", program=None):
        """All visible windows whose title matches, of one copy of the program if that is given."""
        owner = ("--all", "--pid", program.pid) if program else ()
        numbers = self.xdotool("search", "--onlyvisible", *owner, "--name", ".", check=False)
        found = [Window(self, number) for number in (numbers or "").split()]
        return [window for window in found if re.search(title, window.title() or "")]

    def wait_window(self, title, timeout=TIMEOUT, program=None):
        """The first visible window whose title matches the regular expression."""
        def look():
            for process in self._programs:
                if process.crashed():
                    raise Failure(f"the program ended with code {process.process.returncode} "
                                  f"while a window titled /{title}/ was waited for")
            return self.windows(title, program)

        try:
            return eventually(f"a window titled /{title}/", look, timeout)[0]
        except Failure as failure:
            raise Failure(f"{failure}; windows: {[window.title() for window in self.windows()]}") from None

    def wait_no_window(self, title, timeout=TIMEOUT):
        eventually(f"no window titled /{title}/ any more", lambda: not self.windows(title), timeout)

    def active_window(self):
        number = self.xdotool("getactivewindow", check=False)
        return Window(self, number) if number else None

    def active_title(self):
        """Empty when no window has the focus."""
        window = self.active_window()
        return (window.title() or "") if window else ""

    def wait_active(self, title, timeout=TIMEOUT):
        """Until the window with the focus has a title that matches."""
        try:
            eventually(f"an active window titled /{title}/", lambda: re.search(title, self.active_title()), timeout)
        except Failure as failure:
            raise Failure(f"{failure}; active is \"{self.active_title()}\"") from None
        return self.active_window()

    def wait_box(self, timeout=TIMEOUT):
        """The message box with the focus; the empty frame has the same title, but is larger."""
        def look():
            window = self.active_window()
            if window and (window.title() or "") == "Nib" and window.size()[0] < 900:
                return window
            return None

        return eventually("a message box", look, timeout)

    def type_text(self, text, shows=None):
        """Types into the window with the focus; a line feed is the Return key."""
        for number, line in enumerate(text.split("\n")):
            if number > 0:
                self.keys("Return")
            if line:
                self.xdotool("type", "--delay", 12, "--", line)
        return self.wait_active(shows) if shows else None

    def keys(self, *names, shows=None):
        """Presses keys by their X names, one after the other: keys("ctrl+s", "Return")."""
        self.xdotool("key", "--delay", 30, "--", *names)
        return self.wait_active(shows) if shows else None

    def click(self, x, y, button=1, count=1):
        """At a place of the screen."""
        self.xdotool("mousemove", x, y)
        self.xdotool("click", "--repeat", count, "--delay", 50, button)

    def picture(self, window):
        """The dots of a window, three bytes each."""
        result = subprocess.run(["import", "-silent", "-window", window, "-depth", "8", "rgb:-"], env=self.env,
                                capture_output=True, timeout=TIMEOUT * 2, stdin=subprocess.DEVNULL, check=True)
        return result.stdout

    def screenshot(self, path):
        self.command("import", "-silent", "-window", "root", path)
        return path


class _Helper:
    """A process of the screen that was started by hand."""

    def __init__(self, process):
        self.process = process

    def destroy(self):
        self.process.kill()
        self.process.wait()


def plain_files(folder):
    """Those that are whole: half a file is hidden."""
    return sorted(path for path in folder.iterdir() if not path.name.startswith(".")) if folder.is_dir() else []


def with_bus(desktop, name="com.orlin.NibPad71"):
    """A bus of the desktop's own that can start the program; answers its address."""
    (desktop.folder / "services").mkdir()
    (desktop.folder / "services" / (name + ".service")).write_text(
        f"[D-BUS Service]\nName={name}\nExec={desktop.program}\n", encoding="utf-8")
    config = desktop.folder / "bus.conf"
    config.write_text(BUS_CONFIG.format(folder=desktop.folder), encoding="utf-8")
    address = f"unix:path={desktop.folder}/bus"
    desktop.env["DBUS_SESSION_BUS_ADDRESS"] = address
    desktop._programs.append(Program(["dbus-daemon", "--nofork", "--config-file", str(config)], desktop.env,
                                     desktop.folder / "bus.log"))

    # The socket's file is there a moment before anybody listens on it.
    def listening():
        with socket.socket(socket.AF_UNIX) as probe:
            return probe.connect_ex(str(desktop.folder / "bus")) == 0
    eventually("the bus", listening)
    return address


def _report(scenario, desktop):
    traceback.print_exc()
    if "DISPLAY" in desktop.env:
        folder = pathlib.Path(os.environ.get("NIB_TEST_PICTURES") or tempfile.gettempdir())
        name = f"{pathlib.Path(sys.argv[0]).stem}-{scenario.__name__}.png"
        try:
            folder.mkdir(parents=True, exist_ok=True)
            print(f"the screen: {desktop.screenshot(folder / name)}", file=sys.stderr)
        except (Failure, OSError, subprocess.TimeoutExpired) as error:
            print(f"no picture of the screen: {error}", file=sys.stderr)
    print(desktop.program_output(), file=sys.stderr)


def run(*scenarios):
    """Runs each scenario on a desktop of its own and ends the script, with 1 when one has failed."""
    if len(sys.argv) < 2 or not os.access(sys.argv[1], os.X_OK):
        sys.exit(f"usage: {sys.argv[0]} PROGRAM [SCENARIO...]")
    wanted = sys.argv[2:] or [scenario.__name__ for scenario in scenarios]
    unknown = set(wanted) - {scenario.__name__ for scenario in scenarios}
    if unknown:
        sys.exit(f"no such scenario: {', '.join(sorted(unknown))}")
    # So that the clean-up runs when the test itself is told to end.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))

    failed = 0
    for scenario in scenarios:
        if scenario.__name__ not in wanted:
            continue
        began = time.monotonic()
        desktop = Desktop(pathlib.Path(sys.argv[1]).resolve())
        try:
            with desktop:
                try:
                    scenario(desktop)
                except Exception:
                    _report(scenario, desktop)
                    raise
            verdict = "ok    "
        except Exception as error:
            failed += 1
            verdict = "FAILED"
            if not desktop.env.get("DISPLAY"):
                print(error, file=sys.stderr)
        print(f"{verdict} {scenario.__name__} ({time.monotonic() - began:.1f} s)", flush=True)
    sys.exit(1 if failed else 0)
