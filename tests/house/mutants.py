#!/usr/bin/env python3
"""Small faults put into the source one at a time, to see whether the tests notice.

    mutants.py BUILD draw COUNT   draws COUNT faults that compile and writes mutants.tsv
    mutants.py BUILD run [ID...]  puts each into the test programs and writes down the first test that fails

BUILD is a configured folder with both test programs built. A fault is found again by the name of its file and the text
of its line, wherever they have gone since; one whose line is no more is written down as gone.
"""
import csv
import json
import os
import pathlib
import random
import re
import resource
import shlex
import subprocess
import sys
import tempfile

SRC = pathlib.Path(__file__).resolve().parents[2] / "src"
LIST = pathlib.Path(__file__).with_suffix(".tsv")
COLUMNS = ["id", "file", "nth", "line", "fault", "killed by"]
STYLE = {"delimiter": "\t", "lineterminator": "\n", "quoting": csv.QUOTE_NONE, "quotechar": None}
PROGRAMS = ("nib_logic_tests", "nib_widget_tests")
SEED = 71
SECONDS = 300  # a program that hangs has noticed too
MEMORY = 8 << 30
DRAWN = re.compile(
    r"platform/sourceview/|search/|printing/|persistence/|shell/|documents/|diagnostics/|base/RecentList"
    r"|platform/posix/(File(Content|Saver|Traits)|ItemLock|TransferText|PosixTraceMailbox|Trace(Block|Socket))"
    r"|platform/hosts/(FolderList|HostBrowser|NameFilter|Picker\w*|PlaceTree|TypedNames)|platform/qt/(frmItemPicker|Help\w*"
    r"|Picker\w*|PlaceTree\w*|Qt(DocumentTabs|Menu\w*|MessageBoxes|Printing\w*|Settings\w*|Tool\w*))")
NOT_DRAWN = re.compile(r"modFileReadWrite|clsScanDirectory|modCheckUnicodeFile")  # on their way out
PAIRS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&", "+": "-", "-": "+",
         "*": "+", "/": "*", "&": "|", "|": "&", "+=": "-=", "-=": "+=", "|=": "&=", "true": "false", "false": "true",
         "++": "--", "--": "++", "min": "max", "max": "min"}
OPERATOR = re.compile(r"(?<= )(<=?|>=?|[=!]=|&&|\|\||[-+*/&|]|[-+|]=)(?= )|\b(?:true|false)\b|\+\+|--|\b(?:min|max)(?=\()")
NUMBER = re.compile(r"(?<![\w.'])\d+(?![\w.'])")
NEGATION = re.compile(r"!(?=[\w(])")
CONDITION = re.compile(r"\b(?:if|while) \(((?:[^();=]|[=!<>]=|\((?:[^()=]|[=!<>]=|\([^()]*\))*\))+)\)(?= |$)")
STATEMENT = re.compile(r"(?:(?<=^)|(?<=\) )|(?<=else ))(?!return|delete|throw|using|else|if|for|while|case|break)"
                       r"(?:\+\+)?[\w:]+(?:(?:\.|->)\w+|\((?:[^()]|\([^()]*\))*\)|\[[^\]]*\])*(?: [-+|]?= .*)?;$")
# What only places a widget or names it no test is meant to see.
LAYOUT = re.compile(r"add(Widget|Layout|Item|Stretch|Spacing)\(|set(ContentsMargins|Spacing|SizePolicy|ToolTip)\(|Align|QSize")
NO_CODE = re.compile(r"#|\*|/\*|static_assert|namespace|template|using|class|struct|[\w:<>*& ]+ operator")
HIDDEN = re.compile(r"""u?8?"(?:[^"\\]|\\.)*"|u?'(?:[^'\\]|\\.)+'|//.*""")


def faults_of(line):
    """All that one line can be turned into."""
    shown = HIDDEN.sub(lambda hidden: "#" * len(hidden[0]), line)
    if NO_CODE.match(line) or LAYOUT.search(line):
        return
    for pattern, other in ((OPERATOR, lambda old: PAIRS[old]), (NUMBER, lambda old: str(0 if old == "1" else int(old) + 1)),
                           (NEGATION, lambda old: ""), (CONDITION, None), (STATEMENT, lambda old: "{}")):
        for found in pattern.finditer(shown):
            start, end = found.span(1 if pattern is CONDITION else 0)
            yield line[:start] + (other(found[0]) if other else f"!({line[start:end]})") + line[end:]


class Build:
    def __init__(self, folder):
        self.folder = folder.resolve()
        self.scratch = pathlib.Path(tempfile.mkdtemp(prefix="mutants."))
        units = json.loads((self.folder / "compile_commands.json").read_text())
        self.compile = {unit["file"]: shlex.split(unit["command"]) for unit in units}
        self.link = {}
        for program in PROGRAMS:
            steps = subprocess.check_output(["ninja", "-C", self.folder, "-t", "commands", "bin/" + program], text=True)
            step = next(step for step in reversed(steps.splitlines()) if f"-o bin/{program}" in step)
            self.link[program] = step.split(" && ")[1]

    def object_with(self, fault):
        """The compiled unit and the library that it is of, or None where the compiler refuses the fault."""
        path, number = place_of(fault)
        if not path:
            return None
        lines = path.read_text(encoding="utf-8").splitlines()
        lines[number] = fault["fault"]
        source, made = self.scratch / path.name, self.scratch / f"{fault['id']}.o"
        source.write_text("\n".join(lines) + "\n", encoding="utf-8")
        command = self.compile[str(path)]
        output = command.index("-o")
        library = re.search(r"CMakeFiles/(\w+)\.dir", command[output + 1])[1]
        done = subprocess.run([*command[:output], "-w", "-o", made, "-c", source], cwd=self.folder, capture_output=True)
        return (made, library) if done.returncode == 0 else None

    def killer(self, made, library):
        """The first test that fails with this unit in the place of its own."""
        for program in PROGRAMS:
            if f"lib{library}.a" not in self.link[program]:
                continue
            mutant = self.scratch / program
            # The library's own unit is left out where its names are there already.
            subprocess.run(self.link[program].replace(f"-o bin/{program}", f"{made} -o {mutant}"), shell=True,
                           cwd=self.folder, check=True)
            try:
                done = subprocess.run([mutant, "--gtest_fail_fast"], capture_output=True,
                                      env=dict(os.environ, QT_QPA_PLATFORM="offscreen", HOME=str(self.scratch)),
                                      preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY)),
                                      cwd=self.folder, timeout=SECONDS)
            except subprocess.TimeoutExpired:
                return "hangs"
            if done.returncode:
                # One that dies has no word of its end.
                failed = re.search(rb"\[  FAILED  \] (\S+?)(?:,| \()", done.stdout)
                begun = re.findall(rb"\[ RUN      \] (\S+)", done.stdout)
                return (failed[1] if failed else begun[-1]).decode()
        return ""


def place_of(fault):
    """File and number of the line, by its text: in its own file, or wherever there is just one like it."""
    own, others = [], []
    for path in sorted(SRC.rglob("*.cpp")):
        found = [(path, number) for number, line in enumerate(path.read_text(encoding="utf-8").splitlines())
                 if line.strip() == fault["line"]]
        others += found
        if path.name == fault["file"]:
            own = found[int(fault["nth"]):]
    return own[0] if own else others[0] if len(others) == 1 else (None, 0)


def candidates():
    for path in sorted(SRC.rglob("*.cpp")):
        if DRAWN.match(path.relative_to(SRC).as_posix()) and not NOT_DRAWN.search(path.name):
            seen = []
            for line in (line.strip() for line in path.read_text(encoding="utf-8").splitlines()):
                for changed in faults_of(line):
                    yield {"file": path.name, "nth": seen.count(line), "line": line, "fault": changed, "killed by": ""}
                seen.append(line)


def draw(build, count):
    pool = list(candidates())
    random.Random(SEED).shuffle(pool)
    drawn = {}
    for fault in pool:
        fault["id"] = len(drawn) + 1
        if len(drawn) < count and (fault["file"], fault["line"]) not in drawn and build.object_with(fault):
            drawn[fault["file"], fault["line"]] = fault
    return list(drawn.values())


def run(build, chosen):
    with LIST.open(encoding="utf-8", newline="") as file:
        faults = list(csv.DictReader(file, **STYLE))
    for fault in faults:
        if not chosen or fault["id"] in chosen:
            made = build.object_with(fault)
            fault["killed by"] = build.killer(*made) if made else "gone"
            print(fault["id"], fault["file"], fault["killed by"] or "LIVES", flush=True)
    return faults


def main(folder, task, *rest):
    build = Build(pathlib.Path(folder))
    faults = draw(build, int(rest[0])) if task == "draw" else run(build, rest)
    with LIST.open("w", encoding="utf-8", newline="") as file:
        writer = csv.DictWriter(file, COLUMNS, **STYLE)
        writer.writeheader()
        writer.writerows(faults)
    print(sum(bool(fault["killed by"]) for fault in faults), "of", len(faults), "killed")


if __name__ == "__main__":
    main(*sys.argv[1:])
