#!/usr/bin/env python3
"""Each translation holds exactly the texts of the source, and all of them translated with the same place holders.

    check_translations.py LUPDATE SOURCE_FOLDER TRANSLATION...

To bring a translation up to date, from the top folder:
    /usr/lib/qt6/bin/lupdate src -I src -locations none -no-obsolete -ts resources/translations/nibpad71_de.ts
"""
import collections
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree


def messages(path):
    """From context and source text to the translation, None where it is not finished."""
    found = {}
    for context in ElementTree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            done = translation is not None and translation.get("type") is None and translation.text
            found[context.findtext("name"), message.findtext("source")] = translation.text if done else None
    return found


def holders(text):
    return collections.Counter(re.findall(r"%\d|\n", text))


def main(lupdate, sources, *translations):
    faults = []
    with tempfile.TemporaryDirectory() as folder:
        fresh = pathlib.Path(folder) / "fresh.ts"
        subprocess.run([lupdate, sources, "-I", sources, "-locations", "none", "-ts", fresh], check=True,
                       capture_output=True)
        wanted = messages(fresh)
    if not wanted:
        faults.append("no texts found in the source")
    for path in translations:
        have = messages(path)
        faults += [f"{path}: missing {key}" for key in wanted.keys() - have.keys()]
        faults += [f"{path}: no longer in the source {key}" for key in have.keys() - wanted.keys()]
        for (context, source), translation in have.items():
            if translation is None:
                faults.append(f"{path}: not translated {context, source}")
            elif holders(source) != holders(translation):
                faults.append(f"{path}: place holders differ in {context, source}")
            elif ("&" in source) != ("&" in translation):
                faults.append(f"{path}: an access key lost or gained in {context, source}")
    print("\n".join(sorted(faults)) or f"{len(wanted)} texts in each of {len(translations)} translations")
    return 1 if faults else 0


sys.exit(main(*sys.argv[1:]))
