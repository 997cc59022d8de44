#!/usr/bin/env python3
"""Every storage call of every operation fails, stops half way, or is the last before a kill, in the real program.

    test_faults.py PROGRAM [--points N] [--seed S] [--only OPERATION...] [--all]

Each operation runs once to see its calls. A point is one of these and what it meets: an error, once or from then on,
half of the bytes, a halt or a kill before or after it, another program that writes to the file. After each the file is
wholly old or wholly new, a save that said yes is the new one, any other left the document changed and was told, owner,
mode and attributes are kept, and the same can be done again without a fault. Two programs share the points.
"""
import argparse
import collections
import contextlib
import errno
import multiprocessing
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import sys
import time

from gi.repository import GLib

import faulty
import lib
from faulty import KINDS
from lib import expect, expect_equal

KILLS = (faulty.KILL_BEFORE, faulty.KILL_AFTER)
EVERY = sum(1 << number for number in range(len(KINDS)))
Point = collections.namedtuple("Point", "operation number kind action error lasting outside")


def read(path):
    """Line ends apart, which are the business of other tests."""
    try:
        return path.read_bytes().replace(b"\r\n", b"\n").rstrip(b"\n")
    except OSError:
        return None


class Save:
    """A document that is open is changed and saved."""
    outside = (faulty.APPEND, faulty.REPLACE, faulty.SAME_SIZE_AND_TIME)
    errors, actions, crashes = faulty.ERRORS, (faulty.HALT_BEFORE, faulty.HALT_AFTER, *KILLS), False
    slow = 1  # how many points of others one of these takes as long as

    def __init__(self, name, path, prepare=lambda target: None, in_place=False):
        self.name, self.path, self.prepare, self.in_place = name, path, prepare, in_place

    def begin(self, driven):
        """In a fresh program."""
        self.driven, self.root = driven, driven.desktop.folder
        accounts = driven.desktop.data / "Accounts"
        local = self.path.startswith("file:")
        self.target = self.root / "files" / self.path[5:] if local else accounts / self.path
        self.saved_copies, self.recovery = driven.desktop.data / "SaveCopies", driven.desktop.data / "AutoRecover"
        self.folders = [accounts, self.saved_copies, self.root / "files"]
        if not self.target.exists() or read(self.target) is None or b"\0" in read(self.target):
            self.target.unlink(missing_ok=True)
            self.target.parent.mkdir(exist_ok=True)
            self.target.write_bytes(b"first\n")
            self.target.chmod(0o640)
            os.setxattr(self.target, "user.nib", b"kept")
            self.prepare(self.target)
        self.document = driven.client.docs("AddNew")
        path = f"file:{self.target}" if local else f"mvdb:*/{self.path}"
        expect(driven.call(self.document, "FileOpen", "(sb)", path, False), f"{path} opens")

    def traits(self):
        status = os.stat(self.target)
        return (status.st_mode, status.st_uid, status.st_nlink, os.getxattr(self.target, "user.nib"),
                self.target.is_symlink())

    def before(self, text):
        self.driven.client.set_text(self.document, text)
        self.old, self.new, self.kept = read(self.target), text.replace("\r\n", "\n").encode(), self.traits()

    def act(self):
        return self.driven.call(self.document, "FileSave")

    def image(self):
        """What is on disk, at any moment."""
        content = read(self.target)
        rescued = self.in_place and any(read(copy) == self.old for copy in lib.plain_files(self.saved_copies))
        expect(content in (self.old, self.new) or rescued,
               f"neither old nor new: {content and content[:100]!r} ({content and len(content)})")
        return content

    def after(self, point, answer, told):
        if point.action == faulty.OUTSIDE:
            kept = read(self.target) not in (self.old, self.new)
            expect(answer is False and told and kept,
                   f"another program's text: answer {answer}, told {told}, {'kept' if kept else 'replaced'}")
        elif answer:
            expect(self.image() == self.new, "not the new text after a save that said yes")
        else:
            self.image()
            expect(told, "nobody was told")
        expect_equal(self.driven.client.get(self.document, "mvDocument", "IsDirty"), not answer, "changed")
        if (point.action, point.outside) != (faulty.OUTSIDE, faulty.REPLACE):
            expect_equal(self.traits(), self.kept, "owner, mode and attributes")

    def settle(self):
        """What a file of another program lacks is given to it. Without a fault the text is saved at the first try, or at
        the second where the file was damaged and nobody could look at it."""
        os.setxattr(self.target, "user.nib", b"kept")
        self.target.chmod(0o640)
        changed = self.driven.client.get(self.document, "mvDocument", "IsDirty")
        expect(not changed or self.driven.call(self.document, "FileSave") or
               self.is_torn() and self.driven.call(self.document, "FileSave"), "the text cannot be saved any more")

    def is_torn(self):
        return self.in_place and read(self.target) not in (self.old, self.new)

    def comes_back(self):
        """The first start after a kill clears what that left, but for the old content of a file that is torn."""
        self.driven.soon("end of the left-overs", lambda: self.is_torn() or not any(self.saved_copies.glob("*")))
        left = [path for folder in self.folders for path in folder.rglob(".nib-*")]
        expect(not left, f"left: {left}")


class SaveAs(Save):
    """To a new name, or after the question over a file that is there."""
    outside, count = (), 0

    def __init__(self, name, path, over):
        super().__init__(name, path)
        self.over = over

    def before(self, text):
        super().before(text)
        self.count += 1
        self.bound = self.target
        self.target = self.target.with_name(f"{self.name}-{self.count}")
        if self.over:
            shutil.copy2(self.bound, self.target)
        else:
            self.old = None

    def act(self):
        return self.driven.call(self.document, "FileSaveAs", "(s)", f"file:{self.target}")

    def traits(self):
        return None

    def after(self, point, answer, told):
        super().after(point, answer, told)
        path = pathlib.Path(self.driven.client.get(self.document, "mvDocument", "Path").removeprefix("file:"))
        expect_equal(path, self.target if answer else self.bound, "the file that the document is bound to")

    def settle(self):
        if self.driven.client.get(self.document, "mvDocument", "IsDirty"):
            self.target = self.bound
        super().settle()
        for path in self.target.parent.glob(self.name + "-*"):
            if path != self.target:
                path.unlink()


class Recovery(Save):
    """The pass that copies changed documents before the program waits for a host."""
    outside = ()

    def begin(self, driven):
        super().begin(driven)
        self.folders = [self.recovery]
        self.second = driven.client.docs("AddNew")

    def before(self, text):
        self.driven.client.set_text(self.document, text)
        copies = lib.plain_files(self.recovery)
        self.target = copies[0] if copies else None
        self.old = self.target and read(self.target)
        self.new = f"recovery.txt\n{text}".replace("\r\n", "\n").encode()

    def act(self):
        """The copy is written by a thread, which nobody waits for."""
        control = self.driven.control
        answer = self.driven.call(self.second, "FileOpen", "(sb)", "mvdb:*/DEMO/BP/MENU", False)
        self.driven.soon("copy of the new text", lambda: not control.halted() and (
            control.fired() or any(read(copy) == self.new for copy in lib.plain_files(self.recovery))))
        time.sleep(0.02)  # what follows the rename
        return answer

    def image(self):
        found = [read(copy) for copy in lib.plain_files(self.recovery)]
        expect(all(text in (self.old, self.new) for text in found) and (found or self.old is None),
               f"{len(found)} copies, not the old or the new text")

    def after(self, point, answer, told):
        expect(answer and not told, "a copy that fails does not keep an item from being opened, nor asks anything")
        self.image()

    def settle(self):
        pass


class Journal(Save):
    """What is typed and not saved, each change on disk before the next; after a fault one more."""
    errors, actions, crashes, outside = (errno.ENOSPC, errno.EIO, errno.EINTR), KILLS, True, ()
    slow = 20

    def begin(self, driven):
        super().begin(driven)
        self.folders = [driven.desktop.data / "Journal"]

    def before(self, text):
        self.old = self.new = read(self.target)
        self.text, self.states = text, [self.driven.client.text(self.document)]

    def types(self):
        self.states.append(f"CHANGE {len(self.states)}\r\n{self.text}\r\n{self.states[-1]}")
        self.driven.client.doc(self.document, "GotoLine", "(i)", 1)
        self.driven.client.set_text(self.document, self.states[-1].removesuffix(self.states[-2]), "SelText")

    def is_on_disk(self):
        typed = f"CHANGE {len(self.states) - 1}\n{self.text}".replace("\r\n", "\n").encode()
        return any(typed in (read(path) or b"") for path in lib.plain_files(self.folders[0]) if path.suffix[-1] != "~")

    def act(self):
        fired = self.driven.control.fired
        with contextlib.suppress(GLib.Error):  # a kill in the middle of a call
            for _ in range(3):
                self.types()
                self.driven.soon("change in the journal", lambda: self.is_on_disk() or fired())
                if fired():
                    time.sleep(0.6)
                    return self.driven.program.alive() and self.types()

    def after(self, point, answer, told):
        lib.eventually("the whole text in a journal", self.is_on_disk, 3.5)
        if point.number:
            del self.states[:-1]

    def comes_back(self):
        """Before the first change is on disk, there may be nothing to recover."""
        first = len(self.states) == 2
        time.sleep(0.3 * first)
        self.driven.recovers(lambda texts: (texts or first) and all(text in self.states[-2:] for text in texts))
        expect_equal(read(self.target), self.old, "the file")
        self.driven.soon("end of the left-overs", lambda: not list(self.folders[0].glob("*~")))


class History(Save):
    """The version that a save leaves, by a thread which nobody waits for: whatever it meets, the save is done, and what
    was kept before can be read by git."""
    errors, actions, outside = (errno.ENOSPC, errno.EIO), KILLS, ()
    slow = 3

    def begin(self, driven):
        super().begin(driven)
        self.folders = [driven.desktop.data / "History"]
        self.repository = self.folders[0] / "hosts" / "%2A" / "DEMO.git"
        self.count = self.versions()

    def versions(self):
        if not self.repository.exists():
            return 0
        counted = subprocess.run(["git", "-C", self.repository, "rev-list", "--count", "BP/FAULTS"],
                                 capture_output=True, check=False)
        return int(counted.stdout or 0)

    def before(self, text):
        super().before(text)
        self.count = self.versions()

    def act(self):
        driven, tip = self.driven, self.repository / "refs/heads/BP/FAULTS"
        was = tip.read_bytes() if tip.exists() else b""
        answer = super().act()
        end = time.monotonic() + 3
        while driven.program.alive() and (not tip.exists() or tip.read_bytes() == was) and time.monotonic() < end:
            if driven.control.fired() and end > time.monotonic() + 0.1:
                end = time.monotonic() + 0.1
            time.sleep(0.002)
        time.sleep(0.01)
        return answer

    def after(self, point, answer, told):
        expect(answer and not told, "the save is done, and asks nothing")
        super().after(point, answer, told)
        self.sound()

    def sound(self):
        if self.repository.exists():
            checked = subprocess.run(["git", "-C", self.repository, "fsck", "--strict"], capture_output=True, check=False)
            expect_equal(checked.returncode, 0, f"git's look at the repository: {checked.stdout + checked.stderr}")
            expect(self.versions() >= self.count, "versions are lost")

    def comes_back(self):
        self.sound()
        super().comes_back()


class Settings(Save):
    """OK in the dialog of the settings, where the file has another value than the program."""
    outside, value = (), re.compile(rb"(T\0?a\0?b\0?S\0?i\0?z\0?e\0?=\0?)\d")

    def begin(self, driven):
        self.driven, desktop = driven, driven.desktop
        self.saved_copies = desktop.data / "SaveCopies"
        self.target = driven.copy / "appstate.ini" if self.name == "ini" else desktop.config / "hive.conf"
        self.folders, self.count = [self.target.parent], 0
        self.act()
        self.whole = self.target.read_bytes()

    def traits(self):
        return None

    def before(self, text):
        self.count += 1
        changed = self.value.sub(lambda found: found[1] + (b"4" if found[0].endswith(b"3") else b"3"), self.whole)
        self.target.write_bytes(changed)
        expect(changed != self.whole, "a value of the settings")
        self.old, self.new = read(self.target), self.whole.replace(b"\r\n", b"\n").rstrip(b"\n")

    def act(self):
        self.driven.accept_settings()

    def after(self, point, answer, told):
        self.image()

    def settle(self):
        self.act()
        expect_equal(read(self.target), self.new, "the settings that are stored when nothing fails")


def operations():
    def linked(target):
        target.with_suffix(".second").unlink(missing_ok=True)
        os.link(target, target.with_suffix(".second"))

    def symbolic(target):
        target.rename(target.with_suffix(".real"))
        target.symlink_to(target.with_suffix(".real").name)

    return [Save("host item", "DEMO/BP/FAULTS"), Save("local file", "file:local.txt"), History("history", "DEMO/BP/FAULTS"),
            Save("hard link", "file:linked.txt", linked, in_place=True),
            Save("symbolic link", "file:symbolic.txt", symbolic), SaveAs("save as new", "file:as.txt", 0),
            SaveAs("save as over", "file:over.txt", 1), Recovery("recovery copy", "file:recovery.txt"),
            Journal("journal", "file:journal.txt"), Settings("hive", ""), Settings("ini", "")]


def points_of(operation, steps):
    """All that can happen in one run of the operation, whose calls these are."""
    synced = next((number for number, kind in enumerate(steps, 1) if kind == "sync"), 0)
    for number, kind in enumerate(steps, 1):
        def point(action, error=0, lasting=0, outside=0, number=number, kind=kind):
            return Point(operation.name, number, kind, action, error, lasting, outside)
        for error in operation.errors:
            yield point(faulty.FAIL, error)
            # Nothing goes on for ever that is tried again because of a signal.
            if error != errno.EINTR:
                yield point(faulty.FAIL, error, EVERY)
                yield point(faulty.FAIL, error, 1 << KINDS.index(kind))
        if kind in ("read", "write"):
            yield point(faulty.SHORT)
            yield point(faulty.SHORT, lasting=EVERY)
        for action in operation.actions:
            yield point(action)
        if number <= synced:
            for outside in operation.outside:
                yield point(faulty.OUTSIDE, outside=outside)


class Runner:
    """One program, and the operations in it one after the other."""

    def __init__(self, desktop, library):
        self.driven = faulty.Driven(desktop, library)
        self.texts, self.bad, self.done = 0, [], collections.Counter()

    def begin(self, operation, after_kill=False):
        if not after_kill:
            self.clear("AutoRecover", "Journal")
        shutil.rmtree(self.driven.desktop.data / "Documents", ignore_errors=True)  # else they come back
        self.driven.copy = self.ini_program() if operation.name == "ini" else None
        self.driven.start(program=self.driven.copy and self.driven.copy / "nibpad71",
                          answer="Return" if operation.crashes else "Escape")
        if after_kill:
            operation.comes_back()
            if operation.crashes:
                self.driven.end()
                return self.begin(operation)
        # What leads to left-overs has been used by now.
        self.clear("AutoRecover", "SaveCopies")
        operation.begin(self.driven)

    def clear(self, *folders):
        for folder in folders:
            for path in lib.plain_files(self.driven.desktop.data / folder):
                path.unlink()

    def ini_program(self):
        """The switch file lies beside the program."""
        folder, program = self.driven.desktop.folder / "copy", pathlib.Path(self.driven.desktop.program)
        if not folder.exists():
            shutil.copytree(program.parent / "accounts", folder / "accounts")
            shutil.copy2(program, folder)
            (folder / "isolation.ini").write_text("[Isolation]\nPersistSettings=2\nAppDataDirectory=./\n", encoding="ascii")
        return folder

    def steps(self, operation):
        """Of the second run: the first makes folders."""
        for _ in range(2):
            operation.before(self.text())
            self.arm(operation)
            answer = operation.act()
            steps = self.driven.control.steps()
            self.driven.control.disarm()
            operation.after(Point(operation.name, 0, "", faulty.COUNT, 0, 0, 0), answer, False)
            operation.settle()
        return steps

    def text(self):
        """At times longer than the last, at times shorter."""
        self.texts += 1
        return "\r\n".join(f"LINE {line} OF TEXT {self.texts}" for line in range(5 + self.texts * 7 % 120))

    def meet(self, operation, point):
        driven = self.driven
        operation.before(self.text())
        driven.told = False
        self.arm(operation, os.path.realpath(operation.target or ""), point.number, point.action, point.error, point.lasting,
                 point.outside)
        driven.on_halt = operation.image
        answer = operation.act()
        fired, steps = driven.control.fired(), driven.control.steps()
        if point.action == faulty.OUTSIDE and "sync" in steps[:point.number - 1]:
            fired = False  # it came too late this time
        driven.control.disarm()
        self.done[operation.name] += bool(fired)
        killed = fired and point.action in KILLS
        if killed:
            driven.program.process.wait(lib.TIMEOUT)
            operation.image()
        else:
            expect(driven.program.alive(), "it has ended by itself")
            if fired:
                operation.after(point, answer, driven.told)
        if not killed and not (fired and operation.crashes):
            operation.settle()
            return
        driven.end()
        self.begin(operation, True)

    def arm(self, operation, *rest):
        """Titles and commands are drawn a turn after a change, with looks at the same files: first, or not at all."""
        for _ in range(2):
            self.driven.client.docs("Count")
        self.driven.control.arm(operation.folders, *rest)

    def run(self, operation, points):
        self.begin(operation)
        for point in points:
            try:
                self.meet(operation, point)
            except (lib.Failure, OSError, GLib.Error) as failure:
                error = errno.errorcode.get(point.error, "")
                name = ("", "fail", "short", "kill before", "kill after", "halt before", "halt after", "outside")
                self.bad.append(f"{operation.name}: {name[point.action]} {error} {point.kind} {point.number} "
                                f"{'lasting ' if point.lasting else ''}{point.outside}: {failure} "
                                f"({' '.join(self.driven.control.steps())})")
                self.driven.end()
                if operation.target:
                    operation.target.unlink(missing_ok=True)
                self.begin(operation)
        self.driven.end()


def half(work):
    """The points of every operation that fall to one of the programs."""
    program, library, number, options = work
    with lib.Desktop(program) as desktop:
        runner = Runner(desktop, library)
        chosen = random.Random(options.seed)
        for operation in operations():
            if options.only and operation.name not in options.only:
                continue
            runner.begin(operation)
            points = list(points_of(operation, runner.steps(operation)))
            runner.driven.end()
            if not options.all:
                wanted = options.points // len(operations()) // operation.slow
                points = chosen.sample(points, min(len(points), wanted))
            runner.run(operation, points[number::2])
        return runner.done, runner.bad


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--points", type=int, default=6000)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.add_argument("--only", action="append")
    parser.add_argument("--all", action="store_true")
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    began = time.monotonic()
    program = options.program.resolve()
    library = program.parents[1] / "tests" / "libnib_faults.so"
    with multiprocessing.Pool(2) as pool:
        halves = pool.map(half, [(program, library, number, options) for number in range(2)])
    done = sum((part[0] for part in halves), collections.Counter())
    bad = [line for part in halves for line in part[1]]
    print(f"seed {options.seed}: {sum(done.values())} points in {time.monotonic() - began:.0f} s: " +
          ", ".join(f"{name} {count}" for name, count in done.items()))
    print("\n".join(bad[:200]))
    sys.exit(1 if bad else 0)


if __name__ == "__main__":
    main()
