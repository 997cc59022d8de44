"""The commands of a fake server, with a crude compiler and runner of programs. A command is a function or generator of
a session and words; it yields "" for a line of input and a number for as many seconds of sleep."""
import re

from fake_database import FE

NO_DATA = "Data item or constant not found where expected"


class Abort(Exception):
    """A program or command ended in the middle; what it had printed is lost."""


class Leave(Exception):
    """The connection ends."""


def faults_of(lines):
    """Sees texts that are not closed."""
    for number, line in enumerate(lines, 1):
        if not line.startswith("*") and re.search("['\"]", re.sub(r"'[^']*'|\"[^\"]*\"", "", line)):
            yield f"{number}: {NO_DATA}"


def run_program(lines, path, emit):
    """Knows PRINT, CRT, INPUT, END and assignments of texts and variables joined by colons."""
    variables = {}

    def value(text, where):
        words = re.findall(r"'[^']*'|\"[^\"]*\"|[\w.]+", text)
        for word in words:
            if word[0].isalpha() and word not in variables:
                raise Abort(f"000000B6: Unassigned variable {word}{where}")
        return "".join(variables.get(word, word.strip("'\"")) for word in words)

    for number, line in enumerate(lines, 1):
        where = f" at line {number} of {path}"
        word, _, rest = line.strip().partition(" ")
        if word in ("PRINT", "CRT"):
            emit(value(rest, where) + ("" if rest.endswith(":") else "\n"))
        elif word == "INPUT":
            try:
                variables[rest] = yield ""
            except Abort as wrong:
                raise Abort(f"{wrong}{where}") from None
        elif word == "END":
            return
        elif rest.startswith("="):
            variables[word] = value(rest[1:], where)


def run_line(session, line):
    verb, *words = re.findall(r"'[^']*'|\"[^\"]*\"|\S+", line) or [""]
    entry = session.account["VOC"].get(verb.upper())
    if entry is None or not (entry.startswith(b"PA") or verb.upper() in VERBS):
        session.code = -1
        session.emit(f"{verb} is not in your VOC\n")
    elif entry.startswith(b"PA"):
        for step in entry.decode("latin1").split("\xfe")[1:]:
            yield from run_line(session, step)
    else:
        command = VERBS[verb.upper()]
        yield from command(session, *[word.strip("'\"") for word in words]) or ()


def basic(session, file, *items):
    account = session.account
    wrong, tried, session.code = "", 0, 0
    for item in items:
        if item not in account.get(file, ()):
            session.emit(f"Cannot read source record '{item}'\n")
            continue
        lines = account[file].lines(item)
        faults = list(faults_of(lines))
        out = account[file + ".OUT"] if file + ".OUT" in account else account.create(file + ".OUT", False)
        out.pop(item, None)
        if faults:
            wrong += f"   {item}\n"
        else:
            out[item] = b"d\0" + "\xfe".join(lines).encode("latin1")
            session.code += 1
        tried += 1
        session.emit("\n".join([f"Compiling {file} {item}", *faults, f"{len(faults)} error(s)\n"]))
    if tried:
        session.emit(f"Compiled {tried} program(s) with " + (f"errors in:\n{wrong}" if wrong else "no errors\n"))


def run(session, file="", item=""):
    out = session.account.get(file + ".OUT", {})
    if item in out:
        yield from run_program(out[item][2:].decode("latin1").split("\xfe"), f"{out.path}/{item}", session.emit)
    else:
        session.code = -3006
        session.emit(f"Program {file}.OUT {item} not found\n")


def sselect(session, file="", *words):
    types = [word.encode() for word in words if word.upper() not in ("WITH", "TYPE", "=", "OR")]
    found = sorted(name for name, item in session.account[file].items() if not types or item.split(FE)[0][:1] in types)
    session.lists[0] = [name.encode("latin1") for name in found]
    session.code = len(found)
    session.emit(f"{len(found)} record(s) selected to list 0\n")


def listu(session):
    session.emit("  User  Pid          Puid  Login time    Origin : Username\n")
    for number, other in sorted(session.server.sessions.items()):
        lead = f"{'*' if other is session else ' '}{number:5}  {9000 + number:<17}"
        session.emit(f"{lead}  21 Nov 06:22  QMVbSrvr 127.0.0.1: {other.user or ''}\n")


def off(session):
    raise Leave


VERBS = {
    "BASIC": basic, "RUN": run, "SSELECT": sselect, "LISTU": listu, "OFF": off,
    "WHO": lambda session: session.emit(f"{session.number} {session.account.name}\n"),
    "SLEEP": lambda session, seconds="0": iter([float(seconds)]),
    "DISPLAY": lambda session, *words: session.emit(" ".join(words) + "\n")}
