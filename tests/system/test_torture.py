#!/usr/bin/env python3
"""Keys, clicks, menu commands, bus calls and kills by chance, beside a model of the texts and files.

    test_torture.py PROGRAM [--seconds N] [--seed S] [--patience SECONDS]

The program neither crashes nor keeps a client waiting for longer than the patience. What clients put into a text is
there as the model has it; what a save wrote stays on disk, through kills as well.
"""
import argparse
import pathlib
import random
import shutil
import signal
import sys
import time
import urllib.parse

from gi.repository import GLib

import faulty
import lib
from lib import expect, expect_equal
from test_automation import DOCUMENTS, NAME

TEXTS = ("X = 1", "FOR I = 1 TO 10\r\n  PRINT I\r\nNEXT I", "IF A THEN\r\nB = 'x'\r\nEND", "", "* caf\u00e9",
         "TOP:\r\n" * 40, "      GOSUB TOP ;* far", "CRT \"" + "long " * 400 + "\"")
KEYS = ("a b x space Return Return Tab BackSpace Delete Left Right Up Down Home End Prior Next shift+Down shift+End "
        "shift+Left ctrl+z ctrl+z ctrl+y ctrl+x ctrl+c ctrl+v ctrl+a ctrl+k ctrl+shift+k F12 F6 ctrl+F6 ctrl+shift+F6 "
        "F2 ctrl+F2 alt+Left alt+Right ctrl+Home ctrl+End ctrl+Tab Insert Escape").split()
MENUS = ("ctrl+n ctrl+o ctrl+F4 ctrl+p ctrl+l ctrl+f F3 ctrl+h ctrl+g F11 F1 alt+f alt+e alt+s alt+i alt+v alt+t alt+w "
         "alt+h Up Down Down Return Return space Tab Escape alt+y alt+n a 1").split()
MARKS = {0xf800 + byte: 0xdc00 + byte for byte in range(0xfb, 0x100)}  # bytes of their own in items
QUESTIONS = ("Return", "Escape")


class Torture:
    def __init__(self, driven, seed, patience):
        self.driven, self.chance, self.patience = driven, random.Random(seed), patience
        self.saved = {}  # of each file what was saved last
        self.done, self.worst, self.counts = [], 0.0, {}
        self.begin()

    def begin(self):
        if self.chance.random() < 0.5:
            shutil.rmtree(self.driven.desktop.data / "AutoRecover", ignore_errors=True)
        self.driven.start(answer="Escape")
        self.client = self.driven.client

    # What is looked at

    def ping(self):
        began = time.monotonic()
        result = self.client.start(DOCUMENTS, NAME + ".mvDocuments", "Count")
        while not result and time.monotonic() < began + self.patience:
            faulty.pump()
            time.sleep(0.001)
        self.worst = max(self.worst, time.monotonic() - began)
        if self.driven.program.alive():
            expect(result, f"no answer within {self.patience:g} s")

    def calm(self):
        """Until no menu and no dialog is open; False when the program has ended by a command."""
        for _ in range(30):
            # Keys and calls come by two ways: what a key does may not have begun when a call is answered.
            time.sleep(0.02)
            self.ping()
            if not self.driven.program.alive():
                expect_equal(self.driven.program.process.wait(), 0, "the exit code")
                self.begin()
                return False
            up = self.driven.dialogs()
            self.driven.screen.key(up[-1][0] if up else self.driven.main, "Escape")
            if not up:
                self.driven.screen.key(self.driven.main, "Escape")
                self.ping()
                return self.driven.program.alive()
        raise lib.Failure(f"windows that do not go: {self.driven.dialogs()}")

    def disk(self, path):
        kind, name = path.split(":", 1)
        file = pathlib.Path(name) if kind == "file" else (
            self.driven.desktop.data / "Accounts" / urllib.parse.unquote(name.split("/", 1)[1]))
        return file.read_bytes() if file.is_file() else None

    def look_at_files(self):
        for path, content in self.saved.items():
            expect_equal(self.disk(path), content, f"what was saved as {path}")

    def see_files_anew(self):
        """A command of a menu may have saved: no file is torn then, and what is there counts from now on."""
        for path, content in self.saved.items():
            found = self.disk(path)
            expect(found is not None and (found == content or b"\0" not in found), f"{path} is torn")
            self.saved[path] = found

    # What is done

    def document(self):
        open_ones = self.client.docs("NewEnum")
        if open_ones and (len(open_ones) > 6 or self.chance.random() < 0.8):
            return self.chance.choice(open_ones)
        return self.client.docs("AddNew")

    def call(self, document, member, types=None, *values):
        self.done.append(f"{member} {values!r:.80}")
        return self.driven.call(document, member, types, *values, key=self.chance.choice(QUESTIONS))

    def replaces_a_text(self):
        document, text = self.document(), "\r\n".join(self.chance.choices(TEXTS, k=self.chance.randint(1, 30)))
        self.client.set_text(document, text)
        if not self.client.get(document, "mvDocument", "ReadOnly"):
            expect_equal(self.client.text(document), text, "the text that was set")

    def inserts_a_line(self):
        document = self.document()
        lines = self.client.text(document).split("\r\n")
        line, text = self.chance.randint(1, len(lines)), self.chance.choice(TEXTS) + "\r\n"
        self.call(document, "GotoLine", "(i)", line)
        self.client.set_text(document, text, "SelText")
        expect_equal(self.client.text(document), "\r\n".join(lines[:line - 1] + [text + "\r\n".join(lines[line - 1:])]),
                     "the text after a line was inserted")

    def opens(self):
        path = self.chance.choice(list(self.saved) + ["mvdb:*/DEMO/BP/MENU", "mvdb:*/DEMO/BP/NONE", "file:/dev/null"])
        self.may_save(self.document(), "FileOpen", "(sb)", path, self.chance.random() < 0.1)

    def may_save(self, document, *call):
        """A call that takes the text away asks for what was changed, and the answer may be Yes."""
        path, text = self.client.get(document, "mvDocument", "Path"), self.client.text(document)
        self.call(document, *call)
        if path in self.saved and self.disk(path) != self.saved[path]:
            self.is_saved(path, text)

    def saves(self):
        document = self.document()
        before = self.client.text(document)
        if self.chance.random() < 0.5:
            folder = self.driven.desktop.folder
            answer = self.call(document, "FileSaveAs", "(s)", self.chance.choice(
                [f"file:{folder}/torture{number}.txt" for number in range(5)] +
                [f"mvdb:*/DEMO/BP/TORTURE{number}" for number in range(5)]))
        else:
            answer = self.call(document, "FileSave")
        asked, path = self.driven.asked, self.client.get(document, "mvDocument", "Path")
        if answer and path:
            # A box may have been the one about a file that another document has saved, which Return reloads first.
            self.is_saved(path, self.client.text(document) if asked else before)

    def is_saved(self, path, text):
        content, text = self.disk(path) or b"", text.replace("\r\n", "\n").rstrip("\n")
        expect(content.replace(b"\r\n", b"\n").rstrip(b"\n") in
               (text.encode(), text.translate(MARKS).encode("utf-8", "surrogateescape")),
               f"{path} does not hold {text!r:.300}, but {content!r:.300}")
        self.saved[path] = content

    def closes(self):
        self.may_save(self.document(), "FileClose", "(b)", self.chance.random() < 0.5)

    def formats(self):
        self.call(self.document(), "Format")

    def presses_keys(self):
        for key in self.chance.choices(KEYS, k=self.chance.randint(1, 12)):
            self.done.append(key)
            self.driven.screen.key(self.driven.main, key)

    def picks_from_menus(self):
        for key in self.chance.choices(MENUS, k=self.chance.randint(1, 6)):
            self.done.append(key)
            up = self.driven.dialogs()
            self.driven.screen.key(up[-1][0] if up else self.driven.main, key)
            self.ping()
        self.calm()
        self.see_files_anew()

    def clicks(self):
        x, y, button = self.chance.randint(130, 1150), self.chance.randint(90, 770), self.chance.choice((1, 1, 1, 3))
        self.done.append(f"click {x} {y} {button}")
        self.driven.screen.click(x, y, button)
        self.calm()
        self.see_files_anew()

    def is_killed(self):
        """What was typed a second before is there again, in its place or as a new document that says why not."""
        if not self.calm():
            return
        unsaved = [self.client.text(document) for document in self.client.docs("NewEnum")
                   if self.client.get(document, "mvDocument", "IsDirty")]
        time.sleep(1)
        self.driven.end()
        self.look_at_files()
        self.driven.start(answer="Return")
        self.driven.recovers(lambda texts: set(unsaved) <= set(texts).union(
            text.partition("\r\n")[2] for text in texts if text.startswith("*---> Recovered")))
        self.calm()

    ACTIONS = ((replaces_a_text, 8), (inserts_a_line, 10), (opens, 6), (saves, 10), (closes, 3), (formats, 4),
               (presses_keys, 20), (picks_from_menus, 8), (clicks, 8), (is_killed, 2))

    def step(self):
        actions, weights = zip(*self.ACTIONS)
        action = self.chance.choices(actions, weights)[0]
        self.counts[action.__name__] = self.counts.get(action.__name__, 0) + 1
        self.done.append(action.__name__)
        if self.calm():
            action(self)
            self.look_at_files()
            self.ping()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--seconds", type=float, default=120)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.add_argument("--patience", type=float, default=2.0)
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    with lib.Desktop(options.program.resolve()) as desktop:
        driven = faulty.Driven(desktop)
        torture = Torture(driven, options.seed, options.patience)
        end = time.monotonic() + options.seconds
        try:
            while time.monotonic() < end:
                torture.step()
        except (lib.Failure, GLib.Error, OSError) as failure:
            sys.exit(f"seed {options.seed}, after {sum(torture.counts.values())} actions: {failure!s:.2000}\n" +
                     "\n".join(torture.done[-50:]) + "\n" + driven.program.output()[-4000:])
        print(f"seed {options.seed}: {torture.counts}, longest wait {torture.worst:.2f} s")


if __name__ == "__main__":
    main()
