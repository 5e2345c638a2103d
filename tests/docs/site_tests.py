"""The documentation site, as tools/site builds it: links, anchors, headings, and what a browser asks for."""

import functools
import hashlib
import http.server
import json
import shutil
import subprocess
import tempfile
import threading
import unittest
from pathlib import Path

from links import ROOT, dead_links, page

SITE = ROOT / "build" / "site"
BROWSER = shutil.which("chromium")
TOOLS = Path("/usr/bin/mkdocs").exists() and shutil.which("doxygen")
VIEWED = ("index.html", "start/cpp.html", "headers/LumeqApi.h.html")


@unittest.skipUnless(TOOLS, "mkdocs and doxygen are not installed: tools/setup --all")
class Site(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        built = subprocess.run([ROOT / "tools" / "site"], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if built.returncode != 0 or built.stdout:
            raise AssertionError(built.stdout)
        # The page for wrong addresses has absolute links, because it is shown at any.
        cls.pages = [file for file in sorted(SITE.rglob("*.html")) if file.name != "404.html"]

    def test_every_link_leads_to_a_file_of_the_site_and_an_anchor(self):
        self.assertGreater(len(self.pages), 40)
        for file in self.pages:
            self.assertEqual([], dead_links(file, SITE), file.relative_to(SITE))

    def test_every_page_has_one_title_and_no_level_without_the_one_above(self):
        for file in self.pages:
            levels = page(file).headings
            with self.subTest(str(file.relative_to(SITE))):
                self.assertEqual([1], [level for level in levels if level == 1])
                self.assertEqual(1, levels[0])
                self.assertLessEqual(max((after - before for before, after in zip(levels, levels[1:])), default=0), 1)

    def test_same_pages_are_the_same_bytes(self):
        before = contents()
        subprocess.run([ROOT / "tools" / "site"], check=True)
        self.assertEqual(before, contents())

    def test_every_function_of_the_headers_has_an_entry(self):
        for name, exports in (("LumeqApi.h", "exports.txt"), ("lumeq.h", "c_exports.txt")):
            functions = (ROOT / "tests" / exports).read_text(encoding="utf-8").split()
            self.assertEqual([], [function for function in functions
                                  if function not in page(SITE / "headers" / f"{name}.html").ids])

    def test_search_finds_functions_and_no_files(self):
        entries = json.loads((SITE / "search" / "search_index.json").read_text(encoding="utf-8"))["docs"]
        places = [entry["location"] for entry in entries]
        self.assertIn("headers/LumeqApi.h.html#StartupEx", places)
        self.assertEqual([], [place for place in places if place.startswith("source/")])

    @unittest.skipUnless(BROWSER, "chromium is not installed: tools/setup --all")
    def test_browser_asks_nobody_but_the_sites_own_server(self):
        handler = functools.partial(QuietHandler, directory=str(SITE))
        # Processes of the browser may write to the folder for a moment after the first has ended.
        with http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler) as server, \
                tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as work:
            threading.Thread(target=server.serve_forever, daemon=True).start()
            origin = f"http://127.0.0.1:{server.server_port}"
            for viewed in VIEWED:
                asked = requests_by(origin, f"{origin}/{viewed}", Path(work))
                self.assertIn(f"{origin}/lumeq.css", asked)
                self.assertEqual([], [address for address in asked if not address.startswith((f"{origin}/", "data:"))])
            server.shutdown()


def contents() -> dict[Path, str]:
    return {file: hashlib.sha256(file.read_bytes()).hexdigest() for file in SITE.rglob("*") if file.is_file()}


class QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_) -> None:
        pass


def requests_by(origin: str, address: str, work: Path) -> list[str]:
    """What a page asks for while the browser shows it. The browser's own requests have no origin, and resolve no name."""
    log = work / "net.json"
    subprocess.run([BROWSER, "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
                    "--host-resolver-rules=MAP * ~NOTFOUND , EXCLUDE 127.0.0.1", f"--user-data-dir={work}/profile",
                    f"--log-net-log={log}", "--virtual-time-budget=3000", "--dump-dom", address],
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=120, check=True)
    log_of = json.loads(log.read_text(encoding="utf-8"))
    start = log_of["constants"]["logEventTypes"]["URL_REQUEST_START_JOB"]
    requests = [event["params"] for event in log_of["events"] if event["type"] == start and "params" in event]
    return [request["url"] for request in requests if request.get("initiator") == origin]


if __name__ == "__main__":
    unittest.main()
