#!/usr/bin/env python3
"""Puts faults into programs, one at a time, and counts which of them are found where they are.

    test_findings.py PROGRAM [--faults N] [--seed S] [--folder ACCOUNT FILE]...

PROGRAM lies beside nib-lsp, which does the looking. The programs are those of the sample account and made ones; a
folder is a further account whose programs count as well.
Nothing may be found in the programs as they come, and 95 % of the faults have to be.
"""
import argparse
import collections
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import time

import seeds

FINDING = re.compile(r"(\S+) (.+):(\d+):(\d+): (error|warning|hint): (.*) \[([\w-]+)\]$")


def findings(program, account, file, *items):
    """(item, line, code, text) of each."""
    done = subprocess.run([program, "--check", account, file, *items], capture_output=True, text=True, timeout=120)
    if done.returncode not in (0, 1):
        sys.exit(f"{program} ended with {done.returncode}: {done.stderr}")
    found = [FINDING.match(line) for line in done.stdout.splitlines()]
    return [(one[2], int(one[3]), one[7], one[6]) for one in found if one]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--faults", type=int, default=200)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.add_argument("--folder", nargs=2, action="append", default=[])
    options = parser.parse_args()
    program, rng = options.program.resolve().with_name("nib-lsp"), random.Random(options.seed)
    sample = next(folder for folder in (program.parent / "accounts" / "DEMO",
                                        program.parents[1] / "share/nibpad71/accounts/DEMO") if folder.is_dir())
    alarms, missed, seen, met = [], [], collections.Counter(), collections.Counter()
    with tempfile.TemporaryDirectory() as temporary:
        places = []
        for number, (folder, file) in enumerate([(sample, "BP")] + options.folder):
            places.append((pathlib.Path(temporary) / f"ACCOUNT{number}", file))
            shutil.copytree(folder, places[-1][0])
        seeds.generate(rng, places[0][0] / "BP", 40)
        programs, before = [], {}
        for folder, file in places:
            of_file = findings(program, folder, file)
            alarms += [f"{file} {item}:{line}: {text} [{code}]" for item, line, code, text in of_file]
            for path in sorted((folder / file).iterdir()):
                before[path] = collections.Counter((code, text) for item, _, code, text in of_file if item == path.name)
                programs.append((folder, file, path))
        kinds = list(seeds.FAULTS)
        tries = 0
        while sum(met.values()) < options.faults and tries < options.faults * 50:
            tries += 1
            folder, file, path = rng.choice(programs)
            kind = kinds[sum(met.values()) % len(kinds)]
            lines = path.read_text("latin-1").splitlines()
            put = seeds.put(rng, kind, lines)
            if not put:
                continue
            changed, first, last = put
            whole = path.read_bytes()
            path.write_text("\n".join(changed) + "\n", "latin-1")
            found = findings(program, folder, file, path.name)
            met[kind] += 1
            hit = [one for one in found if first <= one[1] <= last and not before[path][one[2], one[3]]]
            seen[kind] += bool(hit)
            if not hit:
                missed.append(f"{kind} in {path.name} {first} to {last}: " + (lines + changed)[len(lines) + first - 1].strip())
            path.write_bytes(whole)
    total = sum(met.values())
    print(f"seed {options.seed}: {sum(seen.values())} of {total} faults, {len(alarms)} alarms without one; " +
          ", ".join(f"{kind} {seen[kind]}/{met[kind]}" for kind in met))
    print("\n".join(alarms + missed))
    if alarms and not options.folder or sum(seen.values()) < 0.95 * total or total < options.faults:
        sys.exit(1)


if __name__ == "__main__":
    main()
