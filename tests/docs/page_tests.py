"""The Markdown files: every link leads somewhere, and every snippet is code that the tests run."""

import re
import tempfile
import unittest
from pathlib import Path
from unittest import mock

from links import ROOT, dead_links, site_pages

COMMANDS = ("sh", "bat")
"""What a start page may show that is in no file."""


class Pages(unittest.TestCase):
    def test_every_link_leads_to_a_file_and_a_heading(self):
        for page in site_pages.markdown_files():
            with self.subTest(str(page.relative_to(ROOT))):
                self.assertEqual([], dead_links(page, ROOT))

    def test_wrong_links_are_found(self):
        with tempfile.TemporaryDirectory() as name:
            root = Path(name) / "project"
            root.mkdir()
            (root.parent / "outside.md").touch()
            page = root / "page.md"
            page.write_text("# One thing\n[a](gone.md) [b](#one-thing) [c](page.md#other) `[d](code.md)` [e](https://x.y/z)\n"
                            "```\n[f](code.md)\n```\n[g](../outside.md)\n")
            self.assertEqual(["gone.md: no such file", "page.md#other: no such heading", "../outside.md: no such file"],
                             dead_links(page, root))

    def test_wrong_links_of_html_are_found(self):
        with tempfile.TemporaryDirectory() as name:
            page = Path(name) / "page.html"
            page.write_text("<a href='gone.html'></a><a href='#here' id='here'></a><a href='page.html#other'></a>"
                            "<a href='/'></a><a href='https://x.y/z'></a><script src='https://x.y/z.js'></script>")
            self.assertEqual(["gone.html", "page.html#other", "/", "https://x.y/z.js"], dead_links(page, Path(name)))


class Navigation(unittest.TestCase):
    def test_lists_every_document_once(self):
        lines = (ROOT / "docs" / "site" / "mkdocs.yml").read_text(encoding="utf-8").partition("\nnav:\n")[2].splitlines()
        self.assertEqual([], [line for line in lines if not re.match(" +- ", line)])
        listed = [line.split()[-1] for line in lines if line.endswith(".md")]
        self.assertEqual(len(set(listed)), len(listed))
        documents = {str(file.relative_to(ROOT / "docs")) for file in (ROOT / "docs").rglob("*.md")}
        self.assertEqual(set(), documents - set(listed))
        others = {str(place) for place in site_pages.pages().values()}
        self.assertEqual([], [page for page in listed if page not in others and not page.startswith("headers/")])


class Snippets(unittest.TestCase):
    def test_start_pages_show_no_code_but_that_of_the_samples(self):
        for page in sorted((ROOT / "docs" / "start").glob("*.md")):
            text = page.read_text(encoding="utf-8")
            with self.subTest(page.name):
                self.assertLessEqual(set(re.findall(r"^```(\w+)", text, re.MULTILINE)), set(COMMANDS))
                shown = [link for link in site_pages.links(text) if site_pages.SNIPPET.fullmatch(link["title"] or "")]
                self.assertGreater(len(shown), 0)
                for link in shown:
                    file, _ = site_pages.target_of(page, link["target"])
                    self.assertIn(ROOT / "samples" / "start", file.parents)
                    name = site_pages.SNIPPET.fullmatch(link["title"])["name"]
                    self.assertNotEqual("", site_pages.snippet(file, name))

    def test_first_page_shows_the_first_host(self):
        code = re.search(r"^```cpp\n(.*?)^```", (ROOT / "README.md").read_text(encoding="utf-8"), re.DOTALL | re.MULTILINE)[1]
        sample = ROOT / "samples" / "start" / "cpp" / "main.cpp"
        self.assertTrue(code.endswith(f"\n\n{site_pages.snippet(sample, 'run')}\n"), code)
        for line in code.partition("\n\n")[0].split("\n"):
            self.assertIn(line, sample.read_text(encoding="utf-8").split("\n"))

    def test_snippet_is_what_lies_between_its_markers(self):
        with tempfile.TemporaryDirectory() as name:
            file = Path(name) / "host.c"
            file.write_text("first\n    /* [one] */\n    second\n      // [two]\n      third\n      // [/two]\n    /* [/one] */\n")
            self.assertEqual("second\n  third", site_pages.snippet(file, "one"))
            self.assertEqual("third", site_pages.snippet(file, "two"))
            self.assertEqual("first\n    second\n      third", site_pages.snippet(file, None))
            with mock.patch.object(site_pages, "ROOT", Path(name)), self.assertRaises(site_pages.BadPage):
                site_pages.snippet(file, "three")

    def test_page_gets_its_code_and_a_page_for_each_file_it_links_to(self):
        with tempfile.TemporaryDirectory() as name:
            root = Path(name) / "project"
            (root / "docs").mkdir(parents=True)
            (root / "host.py").write_text("# [run]\nstart()\n# [/run]\n")
            (root / "docs" / "a.md").write_text('[host](../host.py "snippet run")\n\n[b](b.md#x) [file](../host.py)\n')
            (root / "docs" / "b.md").write_text("# X\n![a picture](../x.png)\n")
            (root / "x.png").write_bytes(b"\x89PNG")
            with mock.patch.object(site_pages, "ROOT", root):
                site_pages.Site(Path(name), {}).write_pages()
            self.assertEqual('``` { .python title="host.py" }\nstart()\n```\n\n[b](b.md#x) [file](source/host.py.md)\n',
                             (Path(name) / "a.md").read_text())
            self.assertIn("start()", (Path(name) / "source" / "host.py.md").read_text())
            self.assertIn("![a picture](pictures/x.png)", (Path(name) / "b.md").read_text())
            self.assertEqual(b"\x89PNG", (Path(name) / "pictures" / "x.png").read_bytes())


if __name__ == "__main__":
    unittest.main()
