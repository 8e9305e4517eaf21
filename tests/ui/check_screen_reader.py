#!/usr/bin/env python3
"""The window as a screen reader meets it, over the accessibility bus.

  check_screen_reader.py <zorvane-window>

Runs on a display and a session bus of its own. Exit status 77: a tool is missing, which is said.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

SKIPPED = 77
SYSTEM_PYTHON = "/usr/bin/python3"
PATIENCE = 10
program = None

SAME = [f"Paragraph {number} is the same on both sides.\n" for number in range(1, 31)]
ORIGINAL = ["The rent is thirty a month.\n", *SAME[:15], "To be removed.\n", "The notice is six weeks.\n",
            *SAME[15:], "The last words.\n"]
MODIFIED = ["The rent is forty-five a month.\n", *SAME[:15], "The notice is nine weeks.\n", *SAME[15:],
            "Quite another end of it.\n", "And one more.\n"]


def load_atspi():
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib
    return Atspi, GLib


class ScreenReader(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.Atspi, cls.GLib = load_atspi()
        cls.heard = []
        cls.listener = cls.Atspi.EventListener.new(cls.hear)
        cls.listener.register("object:announcement")
        cls.listener.register("object:state-changed:showing")
        folder = pathlib.Path(os.environ["HOME"])
        (folder / "old.txt").write_text("".join(ORIGINAL))
        (folder / "new.txt").write_text("".join(MODIFIED))
        settings = folder / "Tarnwick, Inc" / "Zorvane"
        settings.mkdir(parents=True)  # without a window manager nothing makes the window large
        (settings / "registry.ini").write_text(
            "[frmMainMDISettings]\nLeft=0\nTop=0\nWidth=20000\nHeight=13000\nWindowState=0\n")
        cls.process = subprocess.Popen([program, str(folder / "old.txt"), str(folder / "new.txt")])
        cls.window = cls.wait_for(cls.main_window)
        cls.wait_for(lambda: cls.find("push button", "Next Difference", enabled=True))
        cls.count = int(cls.find("radio button", "All, ").get_name().split(", ")[1])

    @classmethod
    def tearDownClass(cls):
        cls.process.terminate()
        cls.process.wait()

    # An announcement, or a notification that came into sight.
    @classmethod
    def hear(cls, event):
        if isinstance(event.any_data, str):
            cls.heard.append(event.any_data)
        elif event.detail1 and event.source.get_role() == cls.Atspi.Role.NOTIFICATION:
            cls.heard.append(event.source.get_name())

    # ---- how a reader looks around ----

    @classmethod
    def wait_for(cls, condition, what="something"):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            while cls.GLib.MainContext.default().iteration(False):
                pass
            found = condition()
            if found:
                return found
            time.sleep(0.05)
        seen = "\n".join(f"{node.get_role_name()}: {node.get_name()}" for node in cls.showing())
        raise AssertionError(f"{what} did not come within {PATIENCE} s; there is\n{seen}")

    @classmethod
    def main_window(cls):
        desktop = cls.Atspi.get_desktop(0)
        for at in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(at)
            if application and application.get_name() == "Zorvane" and application.get_child_count():
                return application.get_child_at_index(0)
        return None

    @classmethod
    def showing(cls, node=None):
        """All that is on the screen, from the window down."""
        node = node or cls.window
        yield node
        for at in range(node.get_child_count()):
            child = node.get_child_at_index(at)
            if child and child.get_state_set().contains(cls.Atspi.StateType.SHOWING):
                yield from cls.showing(child)

    @classmethod
    def find(cls, role, name, inside=None, enabled=False):
        for node in cls.showing(inside):
            if node.get_role_name() == role and node.get_name().startswith(name):
                if not enabled or node.get_state_set().contains(cls.Atspi.StateType.ENABLED):
                    return node
        return None

    def press(self, node):
        self.assertTrue(node.get_action_iface().do_action(0))

    # ---- what it hears ----

    def test_walks_to_a_difference_and_reads_it(self):
        self.press(self.find("push button", "First Difference"))
        for number in (2, 3):
            self.heard.clear()
            self.press(self.find("push button", "Next Difference"))
            begin = f"change {number} of {self.count}, paragraph "
            self.wait_for(lambda: any(words.startswith(begin) for words in self.heard), begin)
        self.assertIn(f"change 3 of {self.count}, paragraph 18: deleted six, inserted nine", self.heard)
        pane = self.find("text", "Result, original side")
        self.assertIn("deleted six, inserted nine", pane.get_description())
        self.assertTrue(self.wait_for(
            lambda: self.find("comment", f"change 3 of {self.count}, paragraph 18: deleted six", pane)))
        text = pane.get_text_iface()
        whole = self.Atspi.Text.get_text(text, 0, self.Atspi.Text.get_character_count(text))
        self.assertEqual(whole.replace("\r\n", "\n"), "".join(ORIGINAL))

    def test_hears_what_is_deleted_whole(self):
        self.press(self.find("push button", "First Difference"))
        self.heard.clear()
        self.press(self.find("push button", "Next Difference"))
        words = f"change 2 of {self.count}, paragraph 17: paragraph deleted: To be removed."
        self.wait_for(lambda: words in self.heard, words)

    def test_names_panes_and_tells_which_can_be_edited(self):
        for role, name, editable in (("text", "Original: old.txt", True), ("text", "Modified: new.txt", True),
                                     ("text", "Result, original side", False),
                                     ("text", "Result, modified side", False)):
            node = self.find(role, name)
            self.assertIsNotNone(node, name)
            self.assertEqual(node.get_state_set().contains(self.Atspi.StateType.EDITABLE), editable, name)

    def test_names_copy_buttons_filters_and_overview(self):
        self.press(self.find("push button", "First Difference"))
        for role, name in (("push button", f"Copy change 1 of {self.count} to Modified"),
                           ("push button", f"Copy change 1 of {self.count} to Original"),
                           ("radio button", "Changes, "), ("radio button", "Deletions, ")):
            self.wait_for(lambda: self.find(role, name), name)
        overview = self.find("slider", f"Overview, {self.count} differences")
        self.assertRegex(overview.get_description(), r"^paragraphs 1 to \d+ of 3\d$")
        value = overview.get_value_iface()
        self.assertEqual(self.Atspi.Value.get_current_value(value), 1)
        self.assertTrue(self.Atspi.Value.set_current_value(value, 25))
        self.wait_for(lambda: self.Atspi.Value.get_current_value(value) > 5, "the text scrolled")

    def test_opens_a_folded_stretch(self):
        fold = self.find("check box", "Fold Unchanged")
        self.press(fold)
        pane = self.find("text", "Result, original side")
        part = self.wait_for(lambda: self.find("push button", "1", pane), "a folded stretch")
        self.assertRegex(part.get_name(), r"^1\d unchanged paragraphs, folded$")
        before = part.get_name()
        self.press(part)
        folds = lambda: [node.get_name() for node in self.showing(pane) if "folded" in node.get_name()]
        self.wait_for(lambda: before not in folds() or len(folds()) < 2, "it opened")
        self.press(fold)

    def test_hears_a_run(self):
        self.heard.clear()
        self.press(self.find("push button", "Compare", enabled=True))
        self.wait_for(lambda: f"{self.count} differences" in self.heard, "the verdict")
        self.assertLess(self.heard.index("Comparing the documents"),
                        self.heard.index(f"{self.count} differences"))

    def test_chooses_a_filter_and_an_option(self):
        self.press(self.find("radio button", "Deletions, "))
        self.wait_for(lambda: self.find("text", "Deletions"), "the list of deletions")
        self.press(self.find("radio button", "All, "))
        self.wait_for(lambda: self.find("text", "Result, original side"), "the result")
        self.press(self.find("check box", "Options"))
        self.press(self.wait_for(lambda: self.find("check box", "Ignore Case"), "the options"))
        self.wait_for(lambda: self.find("label", "Diff View not fresh"), "the option's effect")
        self.press(self.find("check box", "Ignore Case"))
        self.press(self.find("check box", "Options"))

    def test_everything_to_press_has_a_name_and_a_plain_description(self):
        for node in self.showing():
            self.assertNotEqual(node.get_role_name(), "layered pane", "readers say it in front of each text")
            if node.get_role_name() in ("push button", "check box", "radio button", "slider", "combo box",
                                        "menu item", "toggle button"):
                self.assertTrue(node.get_name(), f"a {node.get_role_name()} without a name")
                self.assertNotIn("<b>", node.get_description(), node.get_name())


def missing_tools():
    for tool, package in (("Xvfb", "xvfb"), ("dbus-run-session", "dbus")):
        if shutil.which(tool) is None:
            yield f"{tool} (package {package})"
    if not any(os.path.exists(f"{folder}/at-spi-bus-launcher")
               for folder in ("/usr/libexec", "/usr/lib/at-spi2-core")):
        yield "the accessibility bus (package at-spi2-core)"
    if subprocess.run([SYSTEM_PYTHON, "-c", "import gi; gi.require_version('Atspi', '2.0')"],
                      capture_output=True).returncode != 0:
        yield "Python's Atspi (packages python3-gi, gir1.2-atspi-2.0)"


def run_on_a_display(arguments):
    missing = list(missing_tools())
    if missing:
        print("SKIPPED: missing: " + "; ".join(missing))
        return SKIPPED
    read_end, write_end = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1400x900x24"],
                              pass_fds=[write_end], stderr=subprocess.DEVNULL)
    os.close(write_end)
    try:
        display = os.read(read_end, 16).decode().strip()
        with tempfile.TemporaryDirectory() as home:
            kept = {key: value for key, value in os.environ.items()
                    if key not in ("WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS")}
            environment = kept | {"HOME": home, "XDG_CONFIG_HOME": home, "XDG_RUNTIME_DIR": home,
                                  "DISPLAY": f":{display}", "QT_QPA_PLATFORM": "xcb", "LANG": "C.UTF-8",
                                  "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
            return subprocess.run(["dbus-run-session", "--", SYSTEM_PYTHON, "-W", "ignore", __file__,
                                   "--inside", *arguments], env=environment).returncode
    finally:
        server.terminate()
        server.wait()


if __name__ == "__main__":
    if sys.argv[1] != "--inside":
        sys.exit(run_on_a_display(sys.argv[1:]))
    program = sys.argv[2]
    unittest.main(argv=sys.argv[:1], verbosity=2)
