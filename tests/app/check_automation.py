#!/usr/bin/env python3
"""The automation service as clients of a session bus meet it: started on demand, by gdbus.

  check_automation.py <zorvane-window> <docs/AUTOMATION.md>

Runs itself inside a bus of its own. Exit status 77: a tool is missing, which is said.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

NAME, PATH, FACE = "org.zorvane.Zorvane", "/org/zorvane/Zorvane", "org.zorvane.clsZorvane"
COMMAND = ["gdbus", "call", "--session", "--dest", NAME, "--object-path", PATH, "--method"]
SKIPPED = 77
LINGER = 2
window_program, manual = None, None


def gdbus(*arguments, method=None):
    called = [method, *arguments] if method else [f"{FACE}.{arguments[0]}", *arguments[1:]]
    return subprocess.run(COMMAND + called, capture_output=True, text=True, timeout=60)


def slash_form(line):
    """A "/" begins a switch, so paths have the other one, doubled for gdbus."""
    return line.replace("/", "\\\\").replace("@", "/")


def wait_until(holds, seconds=15):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if holds():
            return True
        time.sleep(0.05)
    return False


def is_served():
    answer = subprocess.run(
        ["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/",
         "--method", "org.freedesktop.DBus.NameHasOwner", NAME], capture_output=True, text=True)
    return answer.stdout.strip() == "(true,)"


class Automation(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(dir=os.environ["HOME"]))
        self.original = self.write("a.txt", "one\ntwo words\nthree\n")
        self.modified = self.write("b.txt", "one\n2 words\nthree\nfour\n")

    def write(self, name, text):
        path = self.folder / name
        path.write_text(text)
        return path

    def line(self, more="@X", modified=None):
        return slash_form(f"@M {self.original} @S {modified or self.modified} {more}")

    def test_is_started_by_a_call_and_answers(self):
        log = self.folder / "run.log"
        self.assertEqual(gdbus("DoCommandLine", self.line(f"@X @L {log}")).stdout[:5], "(0, '")
        self.assertIn("There were 2 Differences.", log.read_text())
        count = gdbus(FACE, "NumDifferencesFound", method="org.freedesktop.DBus.Properties.Get")
        self.assertEqual(count.stdout.strip(), "(<2>,)", "one gdbus after the other meets one service")
        self.assertEqual(gdbus("Run", self.line()).stdout.strip(), "(2,)")
        self.assertEqual(gdbus("Run", self.line(modified=self.original)).stdout.strip(), "(0,)")

    def test_refuses_by_code_by_error_and_by_signal(self):
        watched = self.folder / "signals"
        with open(watched, "w") as target:
            monitor = subprocess.Popen(["gdbus", "monitor", "--session", "--dest", NAME], stdout=target)
        self.addCleanup(lambda: (monitor.kill(), monitor.wait()))
        self.assertTrue(gdbus("DoCommandLine", "").stdout.startswith("(-2, "))
        self.assertTrue(wait_until(lambda: "is owned by" in watched.read_text()))
        self.assertTrue(gdbus("DoCommandLine", "/M only").stdout.startswith("(-3, "))
        self.assertTrue(wait_until(lambda: "Refused ('Missing required command line argument(s)', -3)"
                                   in watched.read_text()), watched.read_text())
        for line, words in (("", "org.zorvane.Error.Empty: Command line is empty"),
                            ("/M only", "org.zorvane.Error.Refused: Missing required command line"),
                            ("x" * 70_000, "The command line is too long")):
            answer = gdbus("Run", line)
            self.assertIn(words, answer.stderr)
            self.assertNotEqual(answer.returncode, 0)

    def test_serves_two_callers_one_after_the_other(self):
        lines = [self.write(f"{name}.txt", "".join(
            f"line {number * factor % 9973}\n" for number in range(20_000)))
            for name, factor in (("big1", 7), ("big2", 11))]
        calls = []  # the first takes much longer
        for number, modified in enumerate((lines[1], self.modified)):
            original = lines[0] if number == 0 else self.original
            log = self.folder / f"{number}.log"
            command = slash_form(f"@M {original} @S {modified} @X @L {log}")
            calls.append((log, subprocess.Popen(
                COMMAND + [f"{FACE}.DoCommandLine", command], stdout=subprocess.PIPE, text=True)))
        for log, call in calls:
            self.assertTrue(call.communicate(timeout=60)[0].startswith("(0, "))
            self.assertEqual(log.read_text().count("Successfully Compared"), 1)
        self.assertIn("There were 2 Differences.", calls[1][0].read_text())

    def test_goes_away_when_nobody_needs_it(self):
        gdbus("Run", self.line())
        self.assertTrue(is_served(), "a client may call again")
        self.assertTrue(wait_until(lambda: not is_served(), LINGER + 10))
        gdbus("Release")
        self.assertTrue(wait_until(lambda: not is_served(), LINGER / 2), "it is released at once")

    def test_the_manual_s_example_works(self):
        text = manual.read_text()
        example = re.search(r"```sh\n(.*?)```\s*\n```\n(.*?)```", text, re.S)
        shell = subprocess.run(["sh", "-e"], input=example[1], capture_output=True, text=True,
                               cwd=self.folder, timeout=60)
        self.assertEqual(shell.stdout.replace(
            str(self.folder).replace("/", "\\\\"), "FOLDER"), example[2], shell.stderr)


def run_inside_a_bus(arguments):
    for tool in ("dbus-run-session", "gdbus"):
        if shutil.which(tool) is None:
            print(f"SKIPPED: {tool} is missing (packages dbus, libglib2.0-bin)")
            return SKIPPED
    with tempfile.TemporaryDirectory() as home:
        services = pathlib.Path(home) / ".local/share/dbus-1/services"
        services.mkdir(parents=True)
        (services / f"{NAME}.service").write_text(
            f"[D-BUS Service]\nName={NAME}\nExec={arguments[0]} --automation={LINGER}\n")
        environment = {key: value for key, value in os.environ.items()
                       if key not in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS")}
        environment |= {"HOME": home, "XDG_DATA_HOME": f"{home}/.local/share",
                        "XDG_CONFIG_HOME": f"{home}/.config", "XDG_RUNTIME_DIR": home,
                        "QT_QPA_PLATFORM": "offscreen"}
        return subprocess.run(["dbus-run-session", "--", sys.executable, __file__, "--inside",
                               *arguments], env=environment).returncode


if __name__ == "__main__":
    if sys.argv[1] != "--inside":
        sys.exit(run_inside_a_bus(sys.argv[1:]))
    window_program, manual = pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    unittest.main(argv=sys.argv[:1], verbosity=2)
