#!/usr/bin/env python3
"""Makes the Debian package of a build in a temporary folder and looks at it: lintian, control fields, what lies where.

    check_package.py BUILD_FOLDER
"""
import pathlib
import re
import subprocess
import sys
import tempfile

NEEDED = {
    "/usr/bin/nibpad71": "0755", "/usr/bin/nib-basic": "0755", "/usr/bin/nib-debuglog": "0755",
    "/usr/bin/nib-lsp": "0755", "/usr/share/doc/nibpad71/language-server.md": "0644",
    "/usr/share/applications/com.orlin.NibPad71.desktop": "0644",
    "/usr/share/dbus-1/services/com.orlin.NibPad71.service": "0644",
    "/usr/share/nibpad71/accounts/DEMO/BP/INVOICE": "0644",
    "/usr/share/doc/nibpad71/copyright": "0644", "/usr/share/doc/nibpad71/changelog.Debian.gz": "0644",
    "/usr/share/man/man1/nibpad71.1.gz": "0644",
}
LIBRARIES = ("libc6", "libstdc[+][+]6", "libicu[0-9]+", "libacl1", "libqt6core6", "libqt6gui6", "libqt6widgets6",
             "libqt6dbus6", "libqt6printsupport6", "libqt6svg6", "fonts-dejavu-core")
LETTERS = {"r": 4, "w": 2, "x": 1, "-": 0}
faults = []


def expect(truth, what):
    if not truth:
        faults.append(what)


def run(*words):
    result = subprocess.run([str(word) for word in words], capture_output=True, text=True, timeout=120,
                            stdin=subprocess.DEVNULL)
    return result.returncode, result.stdout + result.stderr


def mode(letters):
    values = [sum(LETTERS[letter] for letter in letters[at:at + 3]) for at in (1, 4, 7)]
    return "0" + "".join(str(value) for value in values)


def check_contents(package):
    modes = {}
    for line in run("dpkg-deb", "--contents", package)[1].splitlines():
        letters, owner, _size, _day, _time, name = line.split(None, 5)
        path = name.split(" -> ")[0].removeprefix(".").rstrip("/")
        expect(owner == "root/root", f"{path} is of {owner}")
        expect(letters[0] != "d" or mode(letters) == "0755", f"the folder {path} has the mode {letters}")
        modes[path] = mode(letters)
    for path, wanted in NEEDED.items():
        expect(modes.get(path) == wanted, f"{path} is there with {modes.get(path)}, not {wanted}")
    stray = [path for path in modes if not re.match(r"(/usr(/bin|/share)?)?$|/usr/(bin|share)/", path)]
    expect(not stray, f"outside of /usr/bin and /usr/share: {stray}")


def main(build):
    with tempfile.TemporaryDirectory(prefix="nib-package-") as folder:
        code, text = run("cpack", "--config", build / "CPackConfig.cmake", "-B", folder)
        packages = list(pathlib.Path(folder).glob("*.deb"))
        expect(code == 0 and len(packages) == 1, f"no package: {text}")
        if packages:
            check_contents(packages[0])
            code, text = run("lintian", "--fail-on", "error,warning", "--allow-root", packages[0])
            expect(code == 0, f"lintian: {text}")
            depends = run("dpkg-deb", "--field", packages[0], "Depends")[1]
            for library in LIBRARIES:
                expect(re.search(rf"(^|, ){library}\b", depends), f"{library} is not in {depends}")
            service = run("sh", "-c", f"dpkg-deb --fsys-tarfile {packages[0]} | tar -xO "
                          "./usr/share/dbus-1/services/com.orlin.NibPad71.service")[1]
            expect("\nExec=/usr/bin/nibpad71\n" in service, f"the bus starts something else: {service}")
    print("\n".join(faults) if faults else "the package is clean")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
