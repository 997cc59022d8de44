"""Runs a program while an assistive tool hears of each change of a text and reads the line at the caret, as a reader of
the screen does: listen.py PROGRAM [ARGUMENT...]"""
import subprocess
import sys
import threading

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

heard = 0


def on_event(event, *_):
    global heard
    heard += 1
    if event.type.startswith("object:text-caret-moved"):
        try:
            Atspi.Text.get_text_at_offset(event.source, event.detail1, Atspi.TextBoundaryType.LINE_START)
        except Exception:
            pass  # the program has gone, or is busy


def run():
    subprocess.run(sys.argv[1:], check=False)
    Atspi.event_quit()


Atspi.init()
listener = Atspi.EventListener.new(on_event)
for kind in ("object:text-changed", "object:text-caret-moved", "object:text-selection-changed",
             "object:visible-data-changed", "object:state-changed", "object:property-change"):
    listener.register(kind)
threading.Thread(target=run, daemon=True).start()
Atspi.event_main()
print(f"{heard} events were heard")
