"""Asks the program under test, by a plugin in it, how its windows look from within; see tests/pictures/Probe.cpp."""
import json
import os
import time

from checks import POLL, TIMEOUT, Failure, eventually, expect


class Probe:
    def __init__(self, desktop, plugins):
        self.desktop, self.folder = desktop, desktop.folder / "probe"
        self.folder.mkdir()
        desktop.env.update(NIB_PROBE=str(self.folder), QT_PLUGIN_PATH=str(plugins), QT_QPA_GENERIC_PLUGINS="nibprobe")

    def ask(self, *words):
        answer = self.folder / "answer"
        (self.folder / "part").write_text(" ".join(map(str, words)), encoding="utf-8")
        os.replace(self.folder / "part", self.folder / "ask")
        eventually(f"an answer to {words}", answer.exists)
        said = json.loads(answer.read_text(encoding="utf-8"))[0]
        answer.unlink()
        return said

    def do(self, *words):
        """A thing that the program can do by now, or in a moment."""
        eventually(f"{words} to be possible", lambda: self.ask(*words))

    def windows(self, name=""):
        return [window for window in self.ask("look") if name in ("", window["class"])]

    def wait(self, name):
        """Until a window of this class is in front."""
        try:
            return eventually(f"a window of {name}", lambda: [w for w in self.windows(name) if w["active"]], TIMEOUT)[0]
        except Failure as failure:
            raise Failure(f"{failure}; there are {self.windows()}") from None

    def settled(self):
        """What all windows say once that stays the same."""
        seen, before, end = self.ask("look"), None, time.monotonic() + TIMEOUT
        while seen != before:
            expect(time.monotonic() < end, f"no rest in {seen}")
            time.sleep(2 * POLL)
            before, seen = seen, self.ask("look")
        return seen

    def close(self, name):
        self.ask("close", name)
        eventually(f"the end of {name}", lambda: not self.windows(name))
