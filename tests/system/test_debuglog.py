"""The debug log's viewer beside a running editor."""
import pathlib
import re
import signal
import subprocess

import lib
from lib import eventually, expect, expect_equal


def the_viewer_shows_every_category(desktop):
    desktop.sample_accounts()
    viewer = pathlib.Path(desktop.program).parent / "nib-debuglog"
    log = desktop.folder / "viewer.log"
    with open(log, "wb") as output:
        process = subprocess.Popen([viewer, "--mask", "23"], env=desktop.env, stdout=output, stderr=output,
                                   stdin=subprocess.DEVNULL)
    try:
        text = lambda: log.read_text("utf-8", errors="replace")  # noqa: E731
        program = desktop.start("/A=DEMO", "/F=BP", "/I=MENU")
        desktop.wait_active(r"BP MENU")
        wanted = (r"parse begin", r"command = /A=DEMO /F=BP /I=MENU", r"mdiform load end", r"frmdocument initialize end",
                  r"LexClass.ScanToken: token=LOOP type=10 atts=1 flags=0x4")
        for line in wanted:
            eventually(f"the line {line}", lambda line=line: line in text())
        listed = subprocess.run([viewer, "--list"], env=desktop.env, capture_output=True, timeout=20, check=True)
        expect(re.search(rf"^1 {program.pid} 23 nibpad71$", listed.stdout.decode(), re.M), listed.stdout.decode())

        # A place that is not there is an error of the program's; the lexer's lines stop when nobody wants them.
        subprocess.run([viewer, "--mask", "nibpad71=1"], env=desktop.env, check=True, timeout=20,
                       stdout=subprocess.DEVNULL)
        desktop.type_text("X")
        desktop.keys("ctrl+z")
        length = len(text())
        desktop.type_text("Y")
        expect_equal(text()[length:].count("ScanToken"), 0, "lines of the lexer")

        # A viewer that hangs does not stop the editor.
        process.send_signal(signal.SIGSTOP)
        desktop.keys("ctrl+z", "ctrl+q")
        expect_equal(program.wait_end(), 0, "the editor's exit code")
        process.send_signal(signal.SIGCONT)
        process.send_signal(signal.SIGINT)
        expect_equal(process.wait(10), 0, "the viewer's exit code")
    finally:
        process.kill()
        process.wait()


if __name__ == "__main__":
    lib.run(the_viewer_shows_every_category)
