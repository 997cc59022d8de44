"""Programs without a fault, made at random, and faults that are put into programs one at a time.

A fault is (kind, lines, first, last): the program with it, and the lines, from 1, that a finding has to stand on.
"""
import re

INDENT = "   "
NAMES = "ORDER PRICE QTY TOTAL LINE.NO NAME CITY STATUS PART BIN RATE COST DUE PAID ROW FLAG TEXT AREA".split()


class Program:
    """One item: subroutines with labels, each of its variables set before it is read, and read after it is set."""

    def __init__(self, rng, name, parameters, callees, uses_common):
        self.rng, self.name, self.parameters, self.callees = rng, name, parameters, callees
        self.variables = rng.sample(NAMES, 6)
        self.labels = [f"STEP.{name}.{n}" for n in range(rng.randint(1, 4))]
        self.lines, self.depth, self.loops = [], 2, 0
        self.locked = rng.choice((1, 99))  # locks that it takes at most
        self.add(f"SUBROUTINE {name}({', '.join(parameters)})" if parameters else f"PROGRAM {name}")
        self.add("* Made up.")
        if uses_common:
            self.add("$INCLUDE BP GEN.INC")
        self.add("DIM CELL(12), GRID(4,5)")
        self.add('OPEN "DATA" TO F.GEN ELSE STOP')
        self.add('MAT CELL = 0; MAT GRID = ""')
        for variable in self.variables:
            self.add(f"{variable} = {rng.choice(['0', '1', chr(34) * 2, 'DATE()'])}")
        self.block(rng.randint(6, 14), self.labels)
        for label in self.labels:
            self.add(f"GOSUB {label}")
        for variable in self.variables + parameters[:1]:
            self.add(f"PRINT {variable}")
        self.add("PRINT CELL(1):GRID(2,3)")
        self.add("RETURN" if parameters else "STOP")
        for label in self.labels:
            self.add("*")
            self.lines.append(label + ":")
            self.block(rng.randint(2, 6), [])
            self.add("RETURN")
        self.lines.append(INDENT + "END")

    def add(self, line):
        self.lines.append(line if line.startswith("*") else INDENT * self.depth + line)

    def value(self):
        rng, name = self.rng, self.rng.choice(self.variables)
        return rng.choice([
            name, str(rng.randint(0, 999)), f"{name} + 1", f'"{name.lower()}"', f"LEN({name})", f"CELL({rng.randint(1, 12)})",
            f"GRID({rng.randint(1, 4)},{rng.randint(1, 5)})", f"{name}<1,2>", f"{name}[1,3]", f'OCONV({name}, "D2")',
            f"FIELD({name}, \",\", 2)", f"{name}:'x'", f"INT({name} / 2)", f'TRIM({name}):""'])

    def condition(self):
        name = self.rng.choice(self.variables)
        return self.rng.choice([f"{name} = {self.value()}", f"{name} > 10", f"NOT({name})", f'{name} MATCHES "3N"',
                                f'{name} # "" AND {name} < 5', f"NUM({name})"])

    def block(self, count, labels):
        for _ in range(count):
            self.rng.choice((self.simple, self.simple, self.choice, self.loop, self.cases, self.reads, self.locks,
                             self.call))()
        if labels and self.rng.random() < 0.3:
            self.add(f"IF {self.condition()} THEN GOSUB {self.rng.choice(labels)}")

    def inner(self):
        self.depth += 1
        if self.depth < 6:
            self.block(self.rng.randint(1, 2), [])
        else:
            self.simple()
        self.depth -= 1

    def simple(self):
        name = self.rng.choice(self.variables)
        self.add(self.rng.choice([
            f"{name} = {self.value()}", f"{name} = {self.value()}; PRINT {name}", f"{name}<-1> = {self.value()}",
            f"CELL({self.rng.randint(1, 12)}) = {self.value()}", f"PRINT {self.value()}:", f"{name} += 1",
            f"GRID({self.rng.randint(1, 4)},2) = {self.value()}", f"{name}[1,2] = \"ab\"", f"INPUT {name}",
            f"IF {self.condition()} THEN {name} = {self.value()} ELSE PRINT {self.value()}"]))

    def choice(self):
        self.add(f"IF {self.condition()} THEN")
        self.inner()
        if self.rng.random() < 0.5:
            self.add("END ELSE")
            self.inner()
        self.add("END")

    def loop(self):
        self.loops += 1
        name, kind = f"N{self.loops}", self.rng.randint(0, 2)
        if kind == 0:
            self.add(f"FOR {name} = 1 TO 10")
            self.inner()
            self.add(f"{INDENT}CELL({name}) = {name}")
            self.add(f"NEXT {name}")
            return
        variable = self.rng.choice(self.variables)
        self.add("LOOP")
        if kind == 1:
            self.add(f"WHILE {self.condition()} DO")
        self.inner()
        self.add(f"{INDENT}{variable} += 1")
        if kind == 2:
            self.add(f"UNTIL {variable} > 100 DO")
        self.add("REPEAT")

    def cases(self):
        self.add("BEGIN CASE")
        self.depth += 1
        for _ in range(self.rng.randint(1, 3)):
            self.add(f"CASE {self.condition()}")
            self.inner()
        self.depth -= 1
        self.add("END CASE")

    def reads(self):
        name, other = self.rng.sample(self.variables, 2)
        self.add(f'READ {name} FROM F.GEN, {other} THEN')
        self.inner()
        self.add("END ELSE")
        self.add(f"{INDENT}{name} = \"\"")
        self.add("END")

    def locks(self):
        self.locked -= 1
        if self.locked < 0:
            return self.simple()
        name, other = self.rng.sample(self.variables, 2)
        self.add(f'READU {name} FROM F.GEN, {other} ELSE {name} = ""')
        self.add(f"{name}<1> = {self.value()}")
        self.add(self.rng.choice([f"WRITE {name} ON F.GEN, {other}", f"RELEASE F.GEN, {other}"]))

    def call(self):
        if self.callees:
            name, count = self.rng.choice(self.callees)
            self.add(f"CALL {name}({', '.join(self.rng.choice(self.variables) for _ in range(count))})")


def generate(rng, folder, count):
    """Writes the items of a file; answers their names."""
    (folder / "GEN.INC").write_text("* Shared by the programs.\n      COMMON /GEN/ GEN.USER, GEN.LIST(10), GEN.DAY\n")
    callees, names = [], []
    for number in range(count):
        arguments = number % 4
        name = f"GEN.{number:02}"
        program = Program(rng, name, [f"ARG.{n}" for n in range(arguments)], callees[-6:], number % 3 == 0)
        (folder / name).write_text("\n".join(program.lines) + "\n")
        names.append(name)
        if arguments:
            callees.append((name, arguments))
    return names


STRINGS = re.compile(r'"[^"]*"|\'[^\']*\'')
CODE = re.compile(r"^(\s*)([A-Z][\w.$%]*:?|\d+)?")


def bare(line):
    """Without strings, which become blanks, and without comments."""
    line = STRINGS.sub(lambda found: " " * len(found[0]), line)
    return "" if re.match(r"\s*[*!]", line) else re.sub(r";\s*[*!].*|;\s*REM\b.*", "", line)


def _matches(lines, pattern):
    return [(number, found) for number, line in enumerate(lines) if (found := re.search(pattern, bare(line)))]


def _without(lines, number):
    return lines[:number] + lines[number + 1:]


def _instead(lines, number, line):
    return lines[:number] + [line] + lines[number + 1:]


def _closer(pattern):
    def put(rng, lines):
        number, _ = rng.choice(_matches(lines[:-2], pattern))  # the END of a program may be left out
        return _without(lines, number), 1, len(lines)
    return put


def _label_gone(rng, lines):
    defined = {found[1]: number for number, found in _matches(lines, r"^([A-Z][\w.]*|\d+):?(?=\s|$)")}
    used = [(number, found[1]) for number, found in _matches(lines, r"\bGO(?:SUB|TO| TO)?\s+([A-Z][\w.]*|\d+)\b")
            if found[1] in defined]
    number, label = rng.choice(used)
    at = defined[label]
    rest = re.sub(r"^[\w.]+:?", lambda found: " " * len(found[0]), lines[at])
    places = [line + 1 for line, name in used if name == label]
    return _instead(lines, at, rest), min(places), max(places)


def _misspelt_read(rng, lines):
    """A variable that is read once more under a name of its own."""
    places = _matches(lines, r"(?<=[=(,:+] )([A-Z][A-Z.]{3,})\b(?![(:.])")
    number, found = rng.choice([place for place in places if not re.search(r"\b(LOCATE|SETTING|CALL|INPUT|EQU|FROM|COMMON|SUBROUTINE)\b",
                                                                           bare(lines[place[0]]))])
    line = lines[number]
    return _instead(lines, number, line[:found.start(1)] + found[1] + "X" + line[found.end(1):]), number + 1, number + 1


def _misspelt_set(rng, lines):
    number, found = rng.choice(_matches(lines, r"^\s+([A-Z][A-Z.]{2,}) = "))
    line = lines[number]
    return _instead(lines, number, line[:found.end(1)] + "Z" + line[found.end(1):]), number + 1, number + 1


def _argument(rng, lines):
    number, found = rng.choice(_matches(lines, r"\bCALL [\w.]+\(([^()]*)\)"))
    line = lines[number]
    changed = line[:found.start(1)] + found[1].rpartition(", ")[0] + line[found.end(1):] if rng.random() < 0.5 and \
        ", " in found[1] else line[:found.end(1)] + ", 1" + line[found.end(1):]
    return _instead(lines, number, changed), number + 1, number + 1


def _callee(rng, lines):
    number, found = rng.choice(_matches(lines, r"\bCALL ([\w.]+)\("))
    line = lines[number]
    return _instead(lines, number, line[:found.end(1)] + "Q" + line[found.end(1):]), number + 1, number + 1


def _index(rng, lines):
    places = _matches(lines, r"\b(CELL)\((\d+)\)|\b(GRID)\((\d+),")
    number, found = rng.choice([place for place in places if not re.match(r"\s*DIM\b", lines[place[0]])])
    line = lines[number]
    if found[1]:
        other = rng.choice(["CELL(13)", "CELL(0,1,2)", f"CELL({found[2]},{found[2]})"])
        return _instead(lines, number, line[:found.start()] + other + line[found.end():]), number + 1, number + 1
    return _instead(lines, number, line[:found.start(4)] + "7" + line[found.end(4):]), number + 1, number + 1


def _unreachable(rng, lines):
    number, _ = rng.choice(_matches(lines, r"^\s+(RETURN|STOP|GOTO [\w.]+)\s*$"))
    return lines[:number + 1] + [INDENT * 2 + "PRINT 'never'"] + lines[number + 1:], number + 2, number + 2


def _unused_label(rng, lines):
    number, _ = rng.choice(_matches(lines, r"^\s+(PRINT|[A-Z.]{3,} = )"))
    return lines[:number] + ["NOBODY.COMES:"] + lines[number:], number + 1, number + 1


def _quote(rng, lines):
    number, line = rng.choice([(number, line) for number, line in enumerate(lines)
                               if bare(line).strip() and re.search(r'"[A-Za-z ]+"\s*$', line)])
    return _instead(lines, number, line.rstrip()[:-1]), number + 1, number + 1


def _parenthesis(rng, lines):
    number, found = rng.choice(_matches(lines, r"^\s+[A-Z.]{3,} = .*\)"))
    at = bare(lines[number]).rindex(")")
    return _instead(lines, number, lines[number][:at] + lines[number][at + 1:]), number + 1, len(lines)


def _no_return(rng, lines):
    """The last subroutine runs into the end of the program."""
    ends = _matches(lines, r"^\s+RETURN\s*$")
    labels = [number for number, _ in _matches(lines, r"^[A-Z][\w.]*:")]
    number = ends[-1][0]
    assert labels and labels[-1] < number and not _matches(lines[labels[-1]:number], r"\bRETURN\b")
    return _without(lines, number), 1, len(lines)


def _no_gosub(rng, lines):
    """A RETURN that the first lines of a program come to."""
    assert not _matches(lines, r"^\s*(SUBROUTINE|FUNCTION)\b")
    number, found = rng.choice([place for place in _matches(lines, r"^(\s+)(STOP)\s*$")])
    assert not _matches(lines[:number], r"^[A-Z][\w.]*:|^\d+ ")
    return _instead(lines, number, found[1] + "RETURN"), number + 1, number + 1


def _lock(rng, lines):
    """A subroutine that returns with a lock which nothing lets go."""
    assert _matches(lines, r"^\s*SUBROUTINE\b")
    held = _matches(lines, r"\bREADU \w[\w.]* FROM ([\w.]+)")
    number, found = rng.choice(held)
    rest = [line for line in lines if line is lines[number] or
            not re.search(r"\bREADU\b|\b(WRITE|RELEASE|DELETE|CLEARFILE)\b", bare(line))]
    assert len(held) == 1
    at = rest.index(lines[number])
    return rest, at + 1, at + 1


def _common(rng, lines):
    number, _ = rng.choice(_matches(lines, r"\$INCLUDE BP GEN\.INC"))
    other = rng.choice(["GEN.USER, GEN.DAY", "GEN.USER, GEN.LIST(10), GEN.DAY, GEN.MORE", "GEN.USER, GEN.LIST(12), GEN.DAY"])
    return _instead(lines, number, f"{INDENT * 2}COMMON /GEN/ {other}"), number + 1, number + 1


FAULTS = {
    "END gone": _closer(r"^\s+END$"), "NEXT gone": _closer(r"^\s+NEXT\b"), "REPEAT gone": _closer(r"^\s+REPEAT$"),
    "END CASE gone": _closer(r"^\s+END CASE$"), "label gone": _label_gone, "misspelt read": _misspelt_read,
    "misspelt set": _misspelt_set, "argument count": _argument, "call of nowhere": _callee, "index": _index,
    "unreachable": _unreachable, "unused label": _unused_label, "quote": _quote, "parenthesis": _parenthesis,
    "no RETURN": _no_return, "RETURN without GOSUB": _no_gosub, "lock kept": _lock, "COMMON": _common,
}


def put(rng, kind, lines):
    """Nothing when the program has no place for it."""
    try:
        return FAULTS[kind](rng, lines)
    except (IndexError, AssertionError, ValueError):
        return None
