#!/usr/bin/env python3
"""Walks the includes under src/ and says where a room knows one that it must not.

Lower rooms never include upper ones, the logic includes no Qt, and folders form no circle.
"""
import pathlib
import re
import sys

ROOMS = ["base", "diagnostics", "persistence/store", "editing", "documents",
         ("search", "persistence", "printing"), "shell", "app"]
LOGIC = {"base", "diagnostics", "persistence/store", "editing", "documents", "search", "persistence", "printing", "shell"}
SCREENLESS = LOGIC | {"platform", "platform/sourceview", "platform/posix", "platform/hosts"}
# What an implementation of the ports may know beside the ports themselves.
IMPLEMENTATIONS = {
    "platform/sourceview": {"base", "diagnostics", "editing"},
    "platform/sourceview/widget": {"base", "diagnostics", "editing", "platform/sourceview"},
    "platform/posix": {"base", "diagnostics"},
    "platform/hosts": {"base", "diagnostics", "platform/posix", "persistence/store"},
    "platform/qt": LOGIC | {"platform/sourceview", "platform/sourceview/widget", "platform/hosts"},
}
LEVEL = {name: level for level, names in enumerate(ROOMS)
         for name in (names if isinstance(names, tuple) else (names,))}


def room_of(path):
    folder = path.parent.as_posix()
    while folder not in LEVEL and folder not in IMPLEMENTATIONS and folder != "platform":
        folder = pathlib.PurePosixPath(folder).parent.as_posix()
    return folder


def allowed(room, other, is_form):
    if other in (room, "platform"):
        return True
    if room == "platform":
        return other == "base"
    if room in IMPLEMENTATIONS:
        return other in IMPLEMENTATIONS[room]
    if room == "app":
        return True
    if other in LEVEL:
        return LEVEL[other] < LEVEL[room]
    return is_form and other in ("platform/qt", "platform/sourceview", "platform/sourceview/widget")


def main(src):
    faults = []
    count = 0
    for path in sorted(p for p in src.rglob("*") if p.suffix in (".h", ".cpp")):
        count += 1
        relative = path.relative_to(src)
        room = room_of(relative)
        is_form = path.name.startswith("frm")
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            quoted = re.match(r'\s*#include "([^"]+)"', line)
            if quoted and not quoted[1].endswith(".moc"):
                if not (src / quoted[1]).exists():
                    faults.append(f"{relative}:{number}: no such file {quoted[1]}")
                elif not allowed(room, room_of(pathlib.PurePosixPath(quoted[1])), is_form):
                    faults.append(f"{relative}:{number}: {room} must not know {quoted[1]}")
            if re.match(r"\s*#include <Q", line) and room in SCREENLESS and not is_form:
                faults.append(f"{relative}:{number}: Qt in a room that knows no screen")
    print("\n".join(faults) if faults else f"{count} files keep to the plan of the rooms")
    return 1 if faults or not count else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
