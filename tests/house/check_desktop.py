#!/usr/bin/env python3
"""Installs a build into a temporary folder and asks the desktop's own validators about what lies there.

    check_desktop.py BUILD_FOLDER
"""
import gzip
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

SOURCE = pathlib.Path(__file__).resolve().parents[2]
ID = "com.orlin.NibPad71"
PROGRAMS = ("nibpad71", "nib-basic", "nib-debuglog", "nib-lsp")
BASH_COMPLETION = "/usr/share/bash-completion/bash_completion"
# File names and the types that the desktop must see in them; those without a type of ours show what is left alone.
TYPES = {
    "INVOICE.mvb": "text/x-mvbasic", "invoice.mvbasic": "text/x-mvbasic", "INVOICE.BP": "text/x-mvbasic",
    "menu.b": "text/x-mvbasic", "notes.txt": "text/plain", "a.c": "text/x-csrc", "a.bib": "text/x-bibtex",
}
# A command line with the word to complete in the last place, and what is offered.
COMPLETIONS = [
    (["nibpad71", "-"], {"-h", "--", "--help", "--version"}),
    (["nibpad71", "/A"], {"/A="}),
    (["nibpad71", "/T="], {"mvdb"}),
    (["nibpad71", "/H="], {r"\*", "stock"}),
    (["nibpad71", "/A=D"], {"DEMO"}),
    (["nibpad71", "/h=STOCK", "/A="], {"YARD"}),
    (["nibpad71", "/A=DEMO", "/F="], {"BP", "DATA", "DATA.DIC", "VOC"}),
    (["nibpad71", "/A=DEMO", "/F=DATA", "/I=S"], {r"SMITH\ \&\ CO"}),
    (["nibpad71", "/A=DEMO", "/F=DATA", "/I=A"], {"A/B"}),
    (["nibpad71", "/A=DEMO", "/F=GONE", "/I="], set()),
    (["nib-basic", "-"], {"--", "--help", "--version"}),
    (["nib-basic", "B"], {"BP"}),
    (["nib-basic", "--", "BP", "INV"], {"INVOICE"}),
    (["nib-debuglog", "--l"], {"--list"}),
    (["nib-lsp", "--d"], {"--dialect"}),
]
faults = []


def expect(truth, what):
    if not truth:
        faults.append(what)


def run(*words, **more):
    return subprocess.run([str(word) for word in words], capture_output=True, text=True, timeout=60,
                          stdin=subprocess.DEVNULL, **more)


def clean(what, *words, **more):
    """Runs a validator, which is to succeed without a word of complaint; answers its output."""
    result = run(*words, **more)
    expect(result.returncode == 0 and not result.stderr.strip(), f"{what}: {result.stdout}{result.stderr}")
    return result.stdout


def check_desktop_files(usr):
    expect(clean("desktop entry", "desktop-file-validate", usr / f"share/applications/{ID}.desktop") == "",
           "the desktop entry is not clean")
    clean("metainfo", "appstreamcli", "validate", "--no-net", "--strict", usr / f"share/metainfo/{ID}.metainfo.xml")
    service = (usr / f"share/dbus-1/services/{ID}.service").read_text()
    expect(f"Exec={usr}/bin/nibpad71\n" in service, f"the bus service starts something else: {service}")
    for size, group, name in (("scalable", "apps", ID), ("symbolic", "apps", ID + "-symbolic"),
                              ("scalable", "mimetypes", "text-x-mvbasic")):
        clean(f"icon {name}", "xmllint", "--noout", usr / f"share/icons/hicolor/{size}/{group}/{name}.svg")


def check_screenshots(usr):
    images = xml.parse(usr / f"share/metainfo/{ID}.metainfo.xml").findall("screenshots/screenshot/image")
    expect(images, "the metainfo has no screenshots")
    for image in images:
        file = SOURCE / "docs/images" / image.text.rpartition("/docs/images/")[2]
        size = struct.unpack(">II", file.read_bytes()[16:24]) if file.is_file() else None
        expect(size == (int(image.get("width")), int(image.get("height"))), f"{file} has the size {size}")


def check_types(usr, work):
    """Beside all types of the system, as on a user's desktop."""
    mime = work / "data/mime"
    (mime / "packages").mkdir(parents=True)
    shutil.copy(usr / f"share/mime/packages/{ID}.xml", mime / "packages")
    env = {**os.environ, "XDG_DATA_HOME": str(work / "data"), "XDG_DATA_DIRS": "/usr/share"}
    clean("type of files", "update-mime-database", mime, env=env)
    for name, kind in TYPES.items():
        (work / name).write_text("PRINT 'A'\n")
        told = run("gio", "info", "-a", "standard::content-type", work / name, env=env).stdout
        expect(f"content-type: {kind}\n" in told, f"{name} is to be {kind}: {told}")
        (work / name).unlink()


def options_of(program, usr):
    """The words that --help names as options."""
    text = clean(f"{program} --help", usr / "bin" / program, "--help")
    found = set(re.findall(r"(?<![\w'=])(/[A-Z]=?|--[a-z]*|-[a-z]\b)", text))
    expect(len(found) >= 2, f"{program} --help names no options")
    return found


def check_manuals(usr):
    bash = (usr / "share/bash-completion/completions/nibpad71").read_text()
    zsh = (usr / "share/zsh/vendor-completions/_nibpad71").read_text()
    for program in PROGRAMS:
        page = usr / f"share/man/man1/{program}.1.gz"
        env = {**os.environ, "LC_ALL": "C.UTF-8", "MANROFFSEQ": "", "MANWIDTH": "80"}
        clean(f"manual of {program}", "man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page, env=env)
        roff = gzip.open(page, "rt").read()
        text = roff.replace("\\-", "-").replace("\\", "")
        for section in ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS", "FILES", "EXAMPLES", "SEE ALSO"):
            expect(re.search(rf'^\.SH "?{section}"?$', roff, re.M), f"the manual of {program} has no {section}")
        options = options_of(program, usr)
        described = set(re.findall(r"^\.T[PQ]\n\.[BI]+ (/[A-Z]=?|--[a-z]*|-[a-z]\b)", text, re.M))
        expect(options == described, f"{program}: --help names {sorted(options)}, the manual {sorted(described)}")
        for option in options:
            expect(option in bash and option in zsh, f"the completion of {program} does not know {option}")
        version = clean(f"{program} --version", usr / "bin" / program, "--version").split()
        expect(version[0] == program and f"Nib {version[1]}" in roff, f"{program} and its manual differ in version")


def check_completion(usr, work):
    file = usr / "share/bash-completion/completions/nibpad71"
    clean("syntax of the completion", "bash", "-n", file)
    home = work / "home"
    demo = home / ".local/share/Orlin/Nib/Accounts/DEMO"
    shutil.copytree(usr / "share/nibpad71/accounts/DEMO", demo)
    (home / "stock/YARD").mkdir(parents=True)
    (home / ".config/Orlin").mkdir(parents=True)
    (home / ".config/Orlin/hosts.conf").write_text("[*]\nname=x\n[stock]\nkind=accounts\nroot = ~/stock\n")
    env = {"HOME": str(home), "PATH": os.environ["PATH"], "LANG": "C.UTF-8"}
    script = (f'. {BASH_COMPLETION}; . "$0"; compopt() {{ :; }}; COMP_WORDBREAKS=$\' \\t\\n"\\\'><=;|&(:\'; '
              'COMP_LINE="$*"; COMP_POINT=${#COMP_LINE}; declare -a COMP_WORDS=(); '
              # As readline cuts the line: "=" is a word of its own.
              'for word; do while [[ $word == *=* ]]; do COMP_WORDS+=("${word%%=*}" "="); word=${word#*=}; done; '
              '[[ -z $word && ${COMP_WORDS[-1]-} == "=" ]] || COMP_WORDS+=("$word"); done; '
              'COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); read -r _ _ name _ < <(complete -p "$1"); $name; '
              'printf "%s\\n" "${COMPREPLY[@]}"')
    for words, offered in COMPLETIONS:
        folder = demo if words[0] == "nib-basic" else work
        told = run("bash", "--norc", "-c", script, file, *words, env=env, cwd=folder)
        found = {line.strip() for line in told.stdout.splitlines() if line.strip()}
        expect(found == offered, f"{' '.join(words)}: offered {sorted(found)}, not {sorted(offered)} {told.stderr}")
    for program in PROGRAMS:
        expect((file.parent / program).exists(), f"bash finds no completion for {program}")


def main(build):
    with tempfile.TemporaryDirectory(prefix="nib-desktop-") as folder:
        work = pathlib.Path(folder)
        usr = work / "usr"
        clean("installing", "cmake", "--install", build, "--prefix", usr, "--component", "program")
        check_desktop_files(usr)
        check_screenshots(usr)
        check_types(usr, work)
        check_manuals(usr)
        check_completion(usr, work)
    print("\n".join(faults) if faults else "what is installed is clean")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
