"""The documents of a package: every link leads to a file that the package has too.

LUMEQ_PACKAGE names an unpacked release to test instead of what this build would pack.
"""

import os
import shutil
import sys
import unittest
from pathlib import Path

from links import ROOT, dead_links
sys.path.insert(0, str(ROOT / "tools" / "release"))
import make  # noqa: E402

RELEASE = os.environ.get("LUMEQ_PACKAGE")
BUILD = Path(os.environ["LUMEQ_BUILD_DIR"])
WORK = BUILD / "shipped-documents"
PACKAGE = Path(RELEASE or WORK / "package")
SITE = PACKAGE / "share" / "doc" / "Lumeq"
EXPECTED = ("CHANGELOG", "SECURITY", "any-host", "data-protection", "headers/lumeq.h", "in-your-process", "index", "operating",
            "start/index", "start/rust", "support", "unit-tests")


@unittest.skipUnless(RELEASE or Path("/usr/bin/mkdocs").exists() and shutil.which("doxygen"),
                     "mkdocs and doxygen are not installed: tools/setup --site")
class ShippedDocuments(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        if not RELEASE:
            shutil.rmtree(WORK, ignore_errors=True)
            made = make.Made(WORK)
            made.source, made.build = ROOT, BUILD
            WORK.mkdir()
            make.stage(made, PACKAGE)
            make.write_introduction(make.Source("0" * 40, 0, "1.0.0"), made, PACKAGE, with_demo_key=True)

    def test_are_the_pages_that_hosts_and_operators_need(self):
        self.assertEqual([], [name for name in EXPECTED if not (SITE / f"{name}.html").is_file()])

    def test_have_no_dead_link(self):
        documents = [file for file in sorted(PACKAGE.rglob("*")) if file.suffix in (".html", ".md")]
        self.assertIn(PACKAGE / "README.md", documents)
        for document in documents:
            with self.subTest(str(document.relative_to(PACKAGE))):
                self.assertEqual([], dead_links(document, PACKAGE))


if __name__ == "__main__":
    unittest.main()
