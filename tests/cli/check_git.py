#!/usr/bin/env python3
"""`zorvane install-git` with the real git, in a home of its own.  check_git.py <zorvane>"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

program = None


class InstallGit(unittest.TestCase):
    def setUp(self):
        self.home = pathlib.Path(tempfile.mkdtemp(dir=os.environ["ZORVANE_TEST_HOME"]))
        self.repository = self.home / "work"
        self.repository.mkdir()
        self.environment = {"HOME": str(self.home), "PATH": os.environ["PATH"], "LANG": "C.UTF-8",
                            "XDG_RUNTIME_DIR": str(self.home), "GIT_CONFIG_NOSYSTEM": "1",
                            "GIT_PAGER": "cat"}
        self.git("init", "-q")
        for who in ("AUTHOR", "COMMITTER"):
            self.environment |= {f"GIT_{who}_NAME": "A", f"GIT_{who}_EMAIL": "a@example.org"}

    def run_in(self, *words, status=0):
        done = subprocess.run(words, cwd=self.repository, env=self.environment, capture_output=True,
                              text=True)
        self.assertEqual(done.returncode, status, f"{words}: {done.stdout}{done.stderr}")
        return done.stdout + done.stderr

    def git(self, *words):
        return self.run_in("git", *words)

    def zorvane(self, *words, status=0):
        return self.run_in(program, *words, status=status)

    def commit_rtf(self, name, *versions):
        for version in versions:
            (self.repository / name).write_text("{\\rtf1\\ansi " + version + "\\par}")
            self.git("add", "-A")
            self.git("commit", "-qm", version)

    def files(self):
        """All that the user has, but the objects of the repository."""
        return {str(path.relative_to(self.home)): path.read_bytes() for path in self.home.rglob("*")
                if path.is_file() and "objects" not in path.parts and "logs" not in path.parts}

    def test_shows_words_of_documents_in_git_diff(self):
        self.commit_rtf("a.rtf", "The rent is {\\b 2,400}.", "The rent is {\\b 2,650}.")
        self.assertIn("\\rtf1", self.git("diff", "HEAD~1"))
        for scope in ("--global", "--local"):
            self.zorvane("install-git", scope)
            shown = self.git("diff", "HEAD~1")
            self.assertIn("-The rent is 2,400.\n+The rent is 2,650.\n", shown)
            self.assertNotIn("\\rtf1", shown)
            self.assertIn("refs/notes/textconv/zorvane", self.git("for-each-ref"), "it is cached")
            self.zorvane("install-git", scope, "--remove")
            self.assertIn("\\rtf1", self.git("diff", "HEAD~1"))

    def test_an_unreadable_document_does_not_end_git(self):
        self.zorvane("install-git")
        for content in (b"PK\3\4 broken", b"PK\3\4 otherwise"):
            (self.repository / "a.docx").write_bytes(content)
            self.git("add", "-A")
            self.git("commit", "-qm", "x")
        shown = self.git("log", "-p")
        self.assertEqual(shown.count("+zorvane could not read this document:"), 1)
        self.assertRegex(shown, r"\n-[0-9a-f]{40}\n\+[0-9a-f]{40}\n")

    def test_difftool_hands_over_both_versions(self):
        self.commit_rtf("with blank.rtf", "one word", "two words")
        self.zorvane("install-git")
        told = self.git("difftool", "-y", "-t", "zorvane", "HEAD~1")
        self.assertIn("one word", told)
        self.assertIn("two words", told)

    def test_takes_back_exactly_what_it_put(self):
        mine = "*.bin binary\n*.pdf -diff"  # no line end at the end
        for scope, attributes in (("--global", self.home / ".config/git/attributes"),
                                  ("--local", self.repository / ".git/info/attributes")):
            for content in (None, mine, ""):
                with self.subTest(scope=scope, content=content):
                    attributes.parent.mkdir(parents=True, exist_ok=True)
                    attributes.unlink(missing_ok=True)
                    if content is not None:
                        attributes.write_text(content)
                    self.git("config", "--global", "user.name", "Somebody")
                    before = self.files()
                    self.zorvane("install-git", scope)
                    installed = self.files()
                    self.assertNotEqual(installed, before)
                    self.zorvane("install-git", scope)
                    self.assertEqual(self.files(), installed, "installing twice is installing once")
                    self.zorvane("install-git", scope, "--remove")
                    self.assertEqual(self.files(), before)
                    self.zorvane("install-git", scope, "--remove")
                    self.assertEqual(self.files(), before)

    def test_a_user_s_line_wins(self):
        attributes = self.home / ".config/git/attributes"
        attributes.parent.mkdir(parents=True)
        attributes.write_text("*.pdf -diff\n")
        self.zorvane("install-git")
        self.assertIn("diff: unset", self.git("check-attr", "diff", "a.pdf"))
        self.assertIn("diff: zorvane", self.git("check-attr", "diff", "a.docx"))

    def test_overwrites_nothing(self):
        self.git("config", "--global", "diff.zorvane.textconv", "my own")
        before = self.files()
        told = self.zorvane("install-git", status=2)
        self.assertIn('diff.zorvane.textconv is set to "my own"; nothing was changed', told)
        self.assertEqual(self.files(), before)
        self.zorvane("install-git", "--remove")
        self.assertEqual(self.files(), before)

    def test_asks_for_a_repository_where_it_needs_one(self):
        self.repository = self.home
        self.assertIn("no repository", self.zorvane("install-git", "--local", status=2))
        self.zorvane("install-git", "--local", "--global", status=2)


if __name__ == "__main__":
    program = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as home:
        os.environ["ZORVANE_TEST_HOME"] = home
        unittest.main(argv=sys.argv[:1])
