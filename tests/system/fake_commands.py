"""The commands of a fake server, with a crude compiler and runner of programs. A command is a function or generator of
a session and words; it yields "" for a line of input and a number for as many seconds of sleep."""
import re

from fake_database import FE

NO_DATA = "Data item or constant not found where expected"


class Abort(Exception):
    """A program or command ended in the middle; what it had printed is lost."""


class Leave(Exception):
    """The connection ends."""


class Compiler:
    """Sees quotes, brackets, includes and what is broken off; what is not complete is told of on the next line."""

    def __init__(self, account, file, item):
        self.account, self.output, self.errors, self.stars = account, [], 0, ""
        self._read(account[file].lines(item), "", file)
        self._flush()
        if "END" not in [line.strip() for line in account[file].lines(item)]:
            self.output.append("WARNING: Final END statement is missing")

    def _flush(self):
        self.output += [self.stars] if self.stars else []
        self.stars = ""

    def _fault(self, place, text):
        self._flush()
        self.output.append(f"{place}: {text}")
        self.errors += 1

    def _read(self, lines, prefix, file):
        pending = None
        for number, line in enumerate(lines, 1):
            place = f"{prefix}{number}"
            self.stars += "*" if number % 10 == 0 and not prefix else ""
            code = re.sub(r"'[^']*'|\"[^\"]*\"", "1", line).split(";")[0].strip()
            if pending:
                self._fault(place, pending)
                pending = None
            elif re.match(r"[*!]|REM\b", line.strip(), re.I):
                continue
            elif include := re.match(r"\s*\$?INCLUDE\s+(\S+)\s+(\S+)$", line, re.I):
                if include[2] in self.account.get(include[1], ()):
                    self._read(self.account[include[1]].lines(include[2]), place + ".", include[1])
                else:
                    self._fault(place, f"Include record {include[1]} {include[2]} not found")
            elif "'" in code or '"' in code:
                self._fault(place, NO_DATA)
            elif code.count("(") > code.count(")"):
                pending = "Mismatched brackets"
            elif code.endswith(("+", "-", "/", "=")):
                pending = NO_DATA
        if pending:
            self._fault(f"{prefix}{len(lines)}", pending)


def run_program(lines, path, emit):
    """Knows PRINT, CRT, INPUT, SLEEP, STOP, ABORT, KEYIN() and assignments of texts and variables joined by colons."""
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
        if "KEYIN()" in line:
            raise Abort(f"000000A7: QMClient requested keyboard input{where}")
        if word in ("PRINT", "CRT", "DISPLAY"):
            emit(value(rest, where) + ("" if rest.endswith(":") else "\n"))
        elif word == "INPUT":
            try:
                variables[rest] = yield ""
            except Abort as wrong:
                raise Abort(f"{wrong}{where}") from None
        elif word == "SLEEP":
            yield float(value(rest, where))
        elif word == "ABORT":
            raise Abort(f"000000B0: Abort{where}")
        elif word in ("STOP", "END", "RETURN"):
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
        yield from command(session, *(words if command is catalogue else [word.strip("'\"") for word in words])) or ()


def basic(session, file="", *items):
    account = session.account
    items = items or [name.decode("latin1") for name in session.lists.pop(0, ())]
    wrong, tried, session.code = "", 0, 0
    for item in items:
        if item not in account.get(file, ()):
            session.emit(f"Cannot read source record '{item}'\n")
            continue
        if session.user in session.server.guests:
            raise Abort("00000575: Error -3035 deleting record in $BASIC")
        compiler = Compiler(account, file, item)
        out = account[file + ".OUT"] if file + ".OUT" in account else account.create(file + ".OUT", False)
        out.pop(item, None)
        if compiler.errors:
            wrong += f"   {item}\n"
        else:
            out[item] = b"d\0" + "\xfe".join(account[file].lines(item)).encode("latin1")
            session.code += 1
        tried += 1
        session.emit("\n".join([f"Compiling {file} {item}", *compiler.output, f"{compiler.errors} error(s)\n"]))
    if tried:
        session.emit(f"Compiled {tried} program(s) with " + (f"errors in:\n{wrong}" if wrong else "no errors\n"))
    if not items:
        session.emit("Program name(s) or * required\n")


def run(session, file="", item=""):
    out = session.account.get(file + ".OUT", {})
    if item in out:
        yield from run_program(out[item][2:].decode("latin1").split("\xfe"), f"{out.path}/{item}", session.emit)
    else:
        session.code = -3006
        session.emit(f"Program {file}.OUT {item} not found\n")


def catalogue(session, *words):
    """Does not see a name in quotes."""
    names = [word for word in words if word[0] not in "'\"" and word != "LOCAL"]
    file, item = (["BP"] + names)[-2:] if names else ("", "")
    out = session.account.get(file + ".OUT", {})
    session.code = 0
    if item not in out:
        session.emit(f"{file}.OUT {item} not found\n" if item else "Program name or select list required\n")
        return
    kinds = {"private": session.account.catalogue, "local": session.account["VOC"]}
    kind, other = ("local", "private") if "LOCAL" in words else ("private", "local")
    kinds[kind][item] = f"V\xfeCS\xfe{out.path}/{item}".encode("latin1")
    session.emit(f"{item} added to {kind} catalogue\n")
    if item in kinds[other]:
        session.emit(f"Program is also in {other} catalogue. Remove? ")
        if (yield "") == "Y":
            del kinds[other][item]


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
    "BASIC": basic, "RUN": run, "CATALOGUE": catalogue, "CATALOG": catalogue, "SSELECT": sselect, "LISTU": listu,
    "OFF": off, "WHO": lambda session: session.emit(f"{session.number} {session.account.name}\n"),
    "LIST.READU": lambda session: session.emit("\n".join(session.server.locks.report())),
    "SLEEP": lambda session, seconds="0": iter([float(seconds)]),
    "DISPLAY": lambda session, *words: session.emit(" ".join(words) + "\n")}
