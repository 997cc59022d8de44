#!/usr/bin/env python3
"""Runs the tests of the link over the fake server: over_fake.py NIB_NETWORK_TESTS [ROUNDS] [options of the framework]"""
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "system"))
from checks import eventually, expect_equal
from fake_server import FakeServer

for tests, breaks in (("ServerTest.*", False), ("ServerRace.*", True)):
    with FakeServer() as server:
        server.login_delay, server.seats = 0.1, 40
        ended = subprocess.run([sys.argv[1], "127.0.0.1", str(server.port), "ada", "secret7", "bob", "secret8",
                                "TESTACC", "--gtest_filter=" + tests, *sys.argv[2:]], check=False)
        expect_equal(ended.returncode, 0, "the exit code of the tests")
        expect_equal(server.forbidden(), [], "actions that are never to be sent")
        eventually("the end of all sessions", lambda: not server.sessions)
        if not breaks:
            expect_equal(server.rude(), [], "sessions that were not left in order")
