#!/usr/bin/env python3
"""Every screen in the colours, scales, letters and languages that users have; what is cut off, covered or out of the
screen is a failure.

    test_pictures.py PROGRAM [--all] [--pictures FOLDER] [--only WORD...]

In brackets stands what can be translated; a text without them is a failure too.

Without --all each value of the matrix comes up, but not each with each. --only takes the looks whose names have all
these words.
"""
import argparse
import itertools
import pathlib
import sys
import tempfile
import time

import lib
from checks import Failure, eventually, expect
from probe import Probe

DARK = {"Window": "49,54,59", "View": "35,38,41", "Button": "49,54,59", "Selection": "61,174,233"}
KDE = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"}
MENUS = ("File", "Edit", "Search", "Insert", "View", "Tools", "Window", "Help")
PAGES = ("general", "highlight", "tools", "keywords", "user-words")
TABS = ("INVOICE", "MENU", "CUSTOMER.ENTRY", "DATE.UTIL", "GOTO.STYLE", "LONG.LINES", "MARKS.DEMO", "PARSE.CSV", "PRICE.CALC",
        "SORT.DEMO", "STOCK.REPORT", "STRING.DEMO", "VAT.CALC")


class Look:
    """One desktop: `words` name its colours, scale, size of letters, language and screen."""

    def __init__(self, *words):
        self.words, self.name = words, "-".join(words)
        self.colours, self.scale, self.points, self.language, self.screen = words

    def prepare(self, desktop):
        rows = ["[General]", f"font=DejaVu Sans,{self.points.removesuffix('pt')},-1,5,50,0,0,0,0,0"]
        if self.colours == "dark":
            for part, back in DARK.items():
                rows += [f"[Colors:{part}]", f"BackgroundNormal={back}", "ForegroundNormal=252,252,252"]
        (desktop.config.parent / "kdeglobals").write_text("\n".join(rows) + "\n")
        desktop.env.update(KDE, QT_SCALE_FACTOR=self.scale.removesuffix("x"))
        if self.language == "de":
            desktop.env.update(LANG="de_DE.UTF-8", LC_ALL="de_DE.UTF-8", LANGUAGE="de")
        if self.language == "brackets":
            desktop.env["NIB_PROBE_BRACKETS"] = "1"


ONCE = (Look("light", "1x", "10pt", "en", "1280x800"), Look("dark", "1x", "14pt", "de", "1366x768"),
        Look("light", "2x", "10pt", "de", "1366x768"), Look("dark", "2x", "10pt", "brackets", "2560x1600"))
# Large letters twice as large on a small screen are nobody's.
SIZES = (("1x", "10pt", "1280x800"), ("1x", "14pt", "1280x800"), ("1x", "10pt", "1366x768"), ("1x", "14pt", "1366x768"),
         ("2x", "10pt", "1366x768"), ("2x", "10pt", "2560x1600"), ("2x", "14pt", "2560x1600"))
ALL = tuple(Look(colours, scale, points, language, screen) for colours, (scale, points, screen), language
            in itertools.product(("light", "dark"), SIZES, ("en", "de")))


class Tour:
    def __init__(self, desktop, look, plugins, pictures):
        self.desktop, self.pictures, self.faults = desktop, pictures, {}
        self.probe = Probe(desktop, plugins)
        look.prepare(desktop)
        self.account = desktop.sample_accounts()

    def picture(self, name):
        """Of the screen as it stands once it has come to rest."""
        for window in self.probe.settled():
            for fault in window["faults"]:
                self.faults.setdefault(f"{window['class']}: {fault}", name)
        if self.pictures:
            self.desktop.screenshot(self.pictures / f"{name}.png")

    def form(self, name, form, *steps):
        """Brings a dialog up, by the last of the steps, and closes it."""
        for step in steps:
            self.probe.do(*step)
        self.probe.wait(form)
        self.picture(name)
        self.probe.close(form)

    def start(self, *words):
        program = self.desktop.start(*words)
        self.probe.wait("frmMain")
        return program

    def documents(self):
        first = self.start("/A=DEMO", "/F=BP", *("/I=" + name for name in TABS))
        self.desktop.wait_window(r"INVOICE")
        self.desktop.keys("ctrl+Home", *["Down"] * 15, "End", "shift+Home")
        self.picture("document")
        for menu in MENUS:
            self.probe.do("menu", menu)
            eventually(f"the menu {menu}", lambda: any("Menu" in window["class"] for window in self.probe.windows()))
            self.picture(f"menu-{menu.lower()}")
            self.desktop.keys("Escape", "Escape")
        self.dialogs()
        self.panels()
        self.probe.do("run", "TileVertical")
        self.picture("tiled")
        return first

    def dialogs(self):
        probe, form = self.probe, self.form
        form("open", "frmItemPicker", ("run", "Open"))
        form("save-as", "frmItemPicker", ("run", "SaveAs"))
        form("print", "QPrintDialog", ("run", "Print"))
        form("properties", "frmProperties", ("run", "Properties"))
        form("goto", "frmGoto", ("run", "Goto"))
        form("quick-open", "frmQuickOpen", ("run", "QuickOpen"))
        form("help", "HelpWindow", ("run", "HelpTopics"))
        form("replace", "frmFind", ("run", "Replace"))
        probe.do("run", "HelpAbout")
        self.box("about")
        probe.do("run", "Print")
        probe.wait("QPrintDialog")
        form("print-preview", "QPrintPreviewDialog", ("press", "Printing|Pre&view..."))
        probe.close("QPrintDialog")
        probe.do("run", "Settings")
        probe.wait("frmSettings")
        for number, page in enumerate(PAGES):
            probe.do("page", number)
            self.picture(f"settings-{page}")
        probe.do("page", 0)
        form("settings-font", "QFontDialog", ("press", "Logic|&Select font..."))
        form("connections", "frmConnections", ("press", "frmSettings|Co&nnections..."))
        probe.close("frmSettings")
        self.desktop.keys("ctrl+Home", *["Down"] * 15, "Home")
        form("rename", "frmRename", ("run", "Rename"))

    def box(self, name, answer=""):
        probe = self.probe
        box = eventually(name, lambda: [window for window in probe.windows() if window["modal"]])[0]
        self.picture(name)
        if answer:
            self.desktop.keys(answer)
        else:
            probe.close(box["class"])

    def panels(self):
        probe, desktop = self.probe, self.desktop
        probe.do("run", "FindBar")
        desktop.type_text("TOTAL")
        self.picture("find-bar")
        desktop.keys("Escape")
        probe.do("run", "FindInAccount")
        probe.wait("frmFindAccount")
        desktop.type_text("PRINT\n")
        time.sleep(1)
        self.picture("find-in-account")
        probe.close("frmFindAccount")
        probe.do("run", "Find")
        probe.wait("frmFind")
        desktop.type_text("PRINT")
        self.picture("find")
        probe.do("press", "frmFind|Find &All")
        eventually("the end of the dialog", lambda: not probe.windows("frmFind"))
        self.picture("results")
        desktop.keys("Escape", "ctrl+Home", "End")
        desktop.type_text("\nGOSUB NOWHERE")
        probe.do("run", "Outline")
        self.picture("outline")
        probe.do("run", "Problems")
        self.picture("problems")
        probe.do("run", "History")
        self.picture("history")
        probe.do("run", "RecordGrid")
        self.picture("grid")
        probe.do("run", "RecordGrid")
        probe.do("run", "CompareStored")
        time.sleep(0.5)
        self.picture("compare")
        desktop.keys("ctrl+F4")
        item = self.account / "BP" / "INVOICE"
        item.write_bytes(item.read_bytes().replace(b"STOP", b"RETURN"))
        probe.do("run", "Save")
        self.box("changed-elsewhere", answer="Return")
        self.form("merge", "frmMerge")
        probe.do("run", "Close")
        self.box("save-question")

    def walk(self):
        self.start()
        self.picture("start-page")
        self.desktop.keys("ctrl+q")
        first = self.documents()
        first.kill()
        self.desktop.start()
        self.probe.wait("frmAutoRecover")
        self.picture("recovery")
        self.form("recovery-compare", "QDialog", ("press", "frmAutoRecover|Compare"))
        self.probe.close("frmAutoRecover")
        expect(not self.faults, "\n".join(f"{name}: {fault}" for fault, name in self.faults.items()))


def main():
    words = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    words.add_argument("program", type=pathlib.Path)
    words.add_argument("--all", action="store_true")
    words.add_argument("--pictures", type=pathlib.Path)
    words.add_argument("--only", nargs="*", default=())
    given = words.parse_args()
    program = given.program.resolve()
    failed = 0
    for look in ALL if given.all else ONCE:
        if not set(given.only) <= set(look.words):
            continue
        began = time.monotonic()
        folder = (given.pictures or pathlib.Path(tempfile.mkdtemp(prefix="nib-pictures-"))) / look.name
        folder.mkdir(parents=True, exist_ok=True)
        with lib.Desktop(program, look.screen) as desktop:
            try:
                Tour(desktop, look, program.parents[1] / "tests" / "plugins", folder).walk()
                verdict = "ok    "
            except Failure as failure:
                failed += 1
                verdict = "FAILED"
                desktop.screenshot(folder / "failed.png")
                print(failure, desktop.program_output(), sep="\n", file=sys.stderr)
        print(f"{verdict} {look.name} ({time.monotonic() - began:.1f} s), {folder}", flush=True)
    sys.exit(1 if failed else 0)


main()
