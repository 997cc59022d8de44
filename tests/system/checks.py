"""What system tests expect, with a time limit for all that comes by itself."""
import pathlib
import time

TIMEOUT = 60.0
POLL = 0.05


class Failure(AssertionError):
    """What a scenario expected did not come; the message is for the reader of the test's output."""


def eventually(what, probe, timeout=TIMEOUT):
    """Polls until probe() answers something true, and answers that."""
    end = time.monotonic() + timeout
    while True:
        seen = probe()
        if seen:
            return seen
        if time.monotonic() > end:
            raise Failure(f"waited {timeout:g} s for {what}")
        time.sleep(POLL)


def stays(what, probe, seconds=1.0):
    """The opposite of eventually: probe() must answer something true all the time."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if not probe():
            raise Failure(f"ended too soon: {what}")
        time.sleep(POLL)


def expect(condition, message):
    if not condition:
        raise Failure(message)


def expect_equal(actual, expected, what):
    if actual != expected:
        raise Failure(f"{what}:\n  expected {expected!r}\n  found    {actual!r}")


def expect_file(path, expected, timeout=TIMEOUT):
    """The file gets exactly these bytes in time; a save is seen when it is on disk, not when its key was pressed."""
    path = pathlib.Path(path)

    def content():
        return path.read_bytes() if path.is_file() else None

    try:
        eventually(f"the new content of {path}", lambda: content() == expected, timeout)
    except Failure:
        found = content()
    else:
        return
    expect_equal(found, expected, f"content of {path}")
