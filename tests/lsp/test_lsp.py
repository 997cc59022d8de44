#!/usr/bin/env python3
"""The language server, driven by real clients: the protocol's own library under node, and Neovim without a screen.

    test_lsp.py NIB_LSP MODULES [session | answers | neovim]...

The library's packages come to the folder MODULES, as package-lock.json has them.
"""
import hashlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
SAMPLE = HERE.parents[1] / "resources/accounts/DEMO"
PARTS = ("session", "answers", "neovim")


def install(modules):
    """Fetches the packages unless those of this lock are there."""
    lock = (HERE / "package-lock.json").read_bytes()
    stamp = modules / "stamp"
    if stamp.exists() and stamp.read_text() == hashlib.sha256(lock).hexdigest():
        return
    shutil.rmtree(modules, ignore_errors=True)
    modules.mkdir(parents=True)
    for name in ("package.json", "package-lock.json"):
        shutil.copy(HERE / name, modules)
    fetched = subprocess.run(["npm", "ci", "--prefer-offline", "--no-audit", "--no-fund"], cwd=modules, timeout=120,
                             capture_output=True, text=True, stdin=subprocess.DEVNULL)
    if fetched.returncode != 0:
        sys.exit("The packages of the test's client cannot be had. Without a way to the registry of npm they must be "
                 f"in its cache.\n{fetched.stdout}{fetched.stderr}")
    stamp.write_text(hashlib.sha256(lock).hexdigest())


def run_part(part, program, modules, work):
    env = {**os.environ, "NODE_PATH": str(modules / "node_modules"), "NIB_LSP": str(program), "NIB_WORK": str(work)}
    for variable in ("CONFIG", "CACHE", "DATA", "STATE"):
        env[f"XDG_{variable}_HOME"] = str(work / variable.lower())
    if part == "neovim":
        shutil.copytree(SAMPLE, work / "DEMO")
        words = ["nvim", "--clean", "--headless", "-u", HERE / "neovim.lua"]
    else:
        words = ["node", HERE / f"{part}.js", program, SAMPLE, work]
    return subprocess.run(words, env=env, timeout=150, stdin=subprocess.DEVNULL, cwd=work).returncode


def main(program, modules, parts):
    install(modules)
    failed = 0
    for part in parts or PARTS:
        with tempfile.TemporaryDirectory(prefix="nib-lsp-") as work:
            failed |= run_part(part, program, modules, pathlib.Path(work)) != 0
    return int(failed)


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve(), sys.argv[3:]))
