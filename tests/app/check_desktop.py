#!/usr/bin/env python3
"""What is installed for the desktop: entries, data, completions, entries of file managers.

  check_desktop.py <build folder> <zorvane>
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import types
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PACKAGING = ROOT / "packaging"
build, program = None, None


class FakeFile:
    def __init__(self, path, folder=False):
        self.path, self.folder = path, folder

    def get_location(self):
        return types.SimpleNamespace(get_path=lambda: self.path)

    def is_directory(self):
        return self.folder


class FakeItem:
    def __init__(self, name, label):
        self.label = label

    def connect(self, _, act):
        self.act = act


class Desktop(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(dir=os.environ["ZORVANE_TEST_HOME"]))
        self.said = self.folder / "said"
        # The script prefers the program beside it.
        for name, text in (("zorvane", f'#!/bin/sh\nprintf "%s\\n" "$@" >>"{self.said}"\n'),
                           ("zorvane-later", (PACKAGING / "zorvane-later").read_text())):
            (self.folder / name).write_text(text)
            (self.folder / name).chmod(0o755)

    def later(self, *words, status=0):
        environment = {"PATH": os.environ["PATH"], "XDG_RUNTIME_DIR": str(self.folder / "run")}
        done = subprocess.run([self.folder / "zorvane-later", *words], env=environment, cwd=self.folder,
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, status, done.stderr)
        return done.stderr

    def test_a_file_is_compared_later(self):
        odd = self.folder / "an odd 'name'\n"
        for name in (odd, self.folder / "b"):
            name.write_text("x")
        self.assertIn("No file was chosen", self.later("--compare", "b", status=2))
        self.later(odd.name)
        self.later("--compare", "b")
        self.assertEqual(self.said.read_text(), f"{odd}\nb\n")
        self.later("--compare", "b", str(odd))
        self.assertTrue(self.said.read_text().endswith(f"b\n{odd}\n"))
        odd.unlink()
        self.assertIn("no longer there", self.later("--compare", "b", status=2))
        self.later("a", "b", status=2)
        self.later(status=2)

    def test_file_managers_offer_it(self):
        os.environ["XDG_RUNTIME_DIR"] = str(self.folder / "run")
        (self.folder / "run" / "zorvane").mkdir(parents=True)
        for folder, module in (("nautilus-python", "Nautilus"), ("caja-python", "Caja"),
                               ("thunarx-python", "Thunarx")):
            with self.subTest(folder):
                kit = types.SimpleNamespace(MenuProvider=type("MenuProvider", (), {}), MenuItem=FakeItem)
                objects = types.SimpleNamespace(GObject=type("GObject", (), {}))
                names = types.ModuleType("gi.repository")
                names.GObject = objects
                setattr(names, module, kit)
                sys.modules |= {"gi": types.ModuleType("gi"), "gi.repository": names}
                space = {}
                exec((build / "packaging" / folder / "zorvane.py").read_text(), space)
                started = []
                space["subprocess"] = types.SimpleNamespace(Popen=started.append)
                for name in ("LC_ALL", "LC_MESSAGES", "LANG"):
                    os.environ.pop(name, None)
                menu = space["ZorvaneMenu"]()
                remembered = self.folder / "run" / "zorvane" / "compare-later"
                remembered.unlink(missing_ok=True)
                self.assertEqual([item.label for item in menu.get_file_items([FakeFile("/a")])],
                                 ["Compare Later"])
                remembered.write_text("/x/old_one.odt")
                items = menu.get_file_menu_items("a window", [FakeFile("/a")])
                self.assertEqual([item.label for item in items],
                                 ["Compare Later", "Compare with “old__one.odt”"])
                items[1].act(items[1])
                menu.get_file_items([FakeFile("/a"), FakeFile("/b")])[0].act()
                self.assertEqual(started, [["zorvane-later", "--compare", "/a"],
                                           ["zorvane-later", "--compare", "/a", "/b"]])
                self.assertEqual(menu.get_file_items([FakeFile("/a", folder=True)]), [])
                self.assertEqual(menu.get_file_items([FakeFile(None)]), [])
                os.environ["LANG"] = "de_DE.UTF-8"
                self.assertEqual(menu.get_file_items([FakeFile("/a")])[0].label, "Später vergleichen")

    def test_completions_and_man_page_are_those_of_help(self):
        done = subprocess.run([sys.executable, ROOT / "tools" / "make_completions.py", "--check", program],
                              capture_output=True, text=True)
        self.assertEqual((done.stdout, done.returncode), ("", 0))

    def test_bash_completes(self):
        script = PACKAGING / "completions" / "zorvane.bash"

        def complete(*words):
            ask = (f'source {script}; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _zorvane; '
                   'printf "%s\\n" "${COMPREPLY[@]}"')
            done = subprocess.run(["bash", "-c", ask, "-", "zorvane", *words], cwd=self.folder,
                                  capture_output=True, text=True)
            self.assertEqual(done.stderr, "")
            return done.stdout.split("\n")[:-1]

        (self.folder / "with blank.odt").write_text("")
        self.assertEqual(complete("inst"), ["install-git"])
        self.assertEqual(complete("compare", "--ignore-c"), ["--ignore-case"])
        self.assertEqual(complete("compare", "a", "b", "--view", "a"), ["all-in-one"])
        self.assertEqual(complete("compare", "with"), ["with blank.odt"])
        self.assertEqual(complete("compare", "-o", "with"), ["with blank.odt"])
        self.assertEqual(complete("compare", "--title", "w"), [""])

    def check_by(self, tool, *words):
        if shutil.which(tool) is None:
            self.skipTest(f"{tool} is missing")
        done = subprocess.run([tool, *words], capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_completions_of_other_shells_are_whole(self):
        self.check_by("zsh", "-n", PACKAGING / "completions" / "_zorvane")

    def test_completions_of_fish_are_whole(self):
        self.check_by("fish", "-n", PACKAGING / "completions" / "zorvane.fish")

    def test_the_desktop_entry_is_valid(self):
        self.check_by("desktop-file-validate", PACKAGING / "zorvane.desktop")

    def test_the_data_for_software_centres_is_valid(self):
        self.check_by("appstreamcli", "validate", "--no-net", PACKAGING / "org.zorvane.Zorvane.metainfo.xml")


if __name__ == "__main__":
    build, program = pathlib.Path(sys.argv[1]), os.path.abspath(sys.argv[2])
    with tempfile.TemporaryDirectory() as home:
        os.environ["ZORVANE_TEST_HOME"] = home
        unittest.main(argv=sys.argv[:1], verbosity=2)
