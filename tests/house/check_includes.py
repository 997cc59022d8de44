#!/usr/bin/env python3
"""Walks the includes under src/ and says where a room knows one that it must not.

The rooms are the rows of the table in docs/architecture.md: what a room knows, and what its screen half knows as well.
Whoever knows a room knows what that one knows. A row knows rows above it only, so the rooms form no circle. Only files
of a screen half include Qt. Prints each room's size and share.
"""
import pathlib
import re
import statistics
import sys

MOST_SHARE = 20     # of all lines, in per cent
LEAST_MEDIAN = 90   # lines of a file
MOST_VIRTUALS = 3   # pure ones, a thousand lines
SCREEN_FILE = re.compile(r"(frm|Qt|DBus)")
INCLUDE = re.compile(r'\s*#include\s+(?:"([^"]+)"|<(Q\w+))')


class Room:
    def __init__(self, name, knows, screen):
        self.name, self.knows, self.all_screen = name, knows, screen == ["all"]
        self.screen = None if screen == ["-"] else [] if self.all_screen else screen
        self.lines = self.files = 0


def read_rooms(page):
    """Rows are `| `room` | what it holds | rooms that it knows | rooms that its screen half knows as well |`."""
    rooms = {}
    for row in re.findall(r"^\| `([a-z/]+)` \|[^|]*\|([^|]*)\|([^|]*)\|$", page.read_text(encoding="utf-8"), re.M):
        knows, screen = (re.findall(r"[a-z][a-z/]*|-", cell) for cell in row[1:])
        for other in knows + screen:
            if other not in rooms and other not in ("-", "all"):
                sys.exit(f"{page}: {row[0]} knows {other}, which no row above it names")
        rooms[row[0]] = Room(row[0], [k for k in knows if k != "-"], screen)
    return rooms


def closure(rooms, names):
    known = set()
    todo = list(names)
    while todo:
        name = todo.pop()
        if name not in known:
            known.add(name)
            todo += rooms[name].knows
    return known


class Source:
    def __init__(self, rooms, path, src):
        self.path = path.relative_to(src)
        folder = self.path.parent.as_posix()
        self.room = rooms.get(folder)
        self.screen = bool(self.room) and (self.room.all_screen or
                                           (self.room.screen is not None and bool(SCREEN_FILE.match(path.name))))
        self.text = path.read_text(encoding="utf-8")


def faults_of(source, rooms, sources):
    faults = []
    knows = closure(rooms, [source.room.name])
    both = knows | closure(rooms, source.room.screen or []) if source.screen else set()
    for number, line in enumerate(source.text.splitlines(), 1):
        include = INCLUDE.match(line)
        if not include:
            continue
        place = f"{source.path}:{number}"
        if include[2]:
            if not source.screen:
                faults.append(f"{place}: Qt in a room, or half of one, that knows no screen")
            continue
        other = sources.get(include[1])
        if include[1].endswith(".moc"):
            continue
        if not other:
            faults.append(f"{place}: no such file {include[1]}")
        elif other.room.name not in (both or knows):
            faults.append(f"{place}: {source.room.name} must not know {include[1]}")
        elif other.screen and not source.screen:
            faults.append(f"{place}: {include[1]} is on a screen")
    return faults


def measure(sources, rooms):
    """Prints sizes, answers what is out of bounds."""
    faults = []
    total = sum(s.text.count("\n") for s in sources)
    for source in sources:
        source.room.lines += source.text.count("\n")
        source.room.files += 1
    for room in rooms.values():
        share = 100 * room.lines / total
        print(f"{room.name:22} {room.files:4} files {room.lines:6} lines {share:5.1f} %")
        if share > MOST_SHARE:
            faults.append(f"{room.name} holds {share:.1f} % of the lines")
        if not room.files:
            faults.append(f"{room.name} is a row without a file")
    median = statistics.median(s.text.count("\n") for s in sources)
    virtuals = 1000 * sum(len(re.findall(r"\bvirtual\b[^;{]*= 0;", s.text)) for s in sources) / total
    print(f"{len(sources)} files, {total} lines, median {median:g}, {virtuals:.1f} pure virtuals a thousand lines")
    if median < LEAST_MEDIAN:
        faults.append(f"half of the files have fewer than {median:g} lines")
    if virtuals > MOST_VIRTUALS:
        faults.append(f"{virtuals:.1f} pure virtuals a thousand lines")
    return faults


def main(src, page):
    rooms = read_rooms(page)
    sources = {s.path.as_posix(): s for s in (Source(rooms, p, src) for p in sorted(src.rglob("*"))
                                              if p.suffix in (".h", ".cpp"))}
    homeless = [f"{name}: no row of the table of rooms" for name, s in sources.items() if not s.room]
    if homeless or not sources:
        sys.exit("\n".join(homeless) or f"no sources under {src}")
    faults = [fault for source in sources.values() for fault in faults_of(source, rooms, sources)]
    faults += measure(list(sources.values()), rooms)
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    source_folder = pathlib.Path(sys.argv[1])
    sys.exit(main(source_folder, source_folder.resolve().parent / "docs" / "architecture.md"))
