"""tools/play, run as a developer runs it."""

import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import BUILD, ROOT, parse_log  # noqa: E402
from support.basic_road_case import can_listen  # noqa: E402

SCREEN = '{"call": "ScreenDisplayed", "screenName": "Home"}\n'
OPT_IN = '{"call": "SetUserOptInEx", "userHasOptedIn": true}\n'
REFUSED = '{"call": "ScreenDisplayed", "screenName": ""}\n'


class Play(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(dir=BUILD)))
        self.out = self.folder / "new" / "out"

    def file(self, name: str, content: str) -> Path:
        path = self.folder / name
        path.write_text(content, encoding="utf-8")
        return path

    def play(self, session: str, *options) -> subprocess.CompletedProcess:
        return subprocess.run([ROOT / "tools" / "play", "--build", BUILD, *options, self.file("session.jsonl", session),
                               "--out", self.out], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              env=dict(os.environ, LUMEQ_TEST_MARK=str(self.folder)))

    def still_running(self) -> list[bytes]:
        """The processes, Wine's server among them, that have this test's mark in their environment."""
        running = []
        for process in Path("/proc").glob("[0-9]*"):
            try:
                if b"LUMEQ_TEST_MARK=" + bytes(self.folder) in (process / "environ").read_bytes().split(b"\0"):
                    running.append((process / "cmdline").read_bytes())
            except OSError:
                continue
        return running

    def severities(self) -> list[str]:
        log = self.out / "Lumeq.Log.txt"
        return [line.severity for line in parse_log(log.read_text(encoding="utf-8"))] if log.exists() else []

    def left(self) -> set[str]:
        """Without what says what was played, which is always there."""
        files = {file.name for file in self.out.iterdir()}
        self.assertLessEqual({"session.jsonl", "run.json"}, files)
        return files - {"session.jsonl", "run.json"}

    def test_leaves_what_came_to_be_and_nothing_else(self):
        played = self.play(SCREEN + OPT_IN + REFUSED)
        self.assertEqual((0, "", ""), (played.returncode, played.stdout, played.stderr))
        self.assertEqual({"host.jsonl", "companion.jsonl", "Lumeq.Log.txt", "Lumeq.Error.txt", "LumeqLocalSettings.xml"},
                         self.left())
        self.assertEqual([], self.still_running())

    def test_exit_code_and_standard_error_are_the_hosts(self):
        played = self.play(SCREEN + "{}\n")
        self.assertEqual((2, "lumeq-host: line 2: no known step"), (played.returncode, played.stderr.strip()))

    def test_basic_road_has_no_companion(self):
        self.play(SCREEN + OPT_IN, "--road", "basic")
        self.assertEqual({"host.jsonl", "Lumeq.Log.txt", "LumeqLocalSettings.xml"}, self.left())

    def test_log_levels(self):
        session = SCREEN + REFUSED + '{"call": "TrackDiscoveredPrintersEx", "discoveredDeviceList": [{}]}\n'
        for level, severities in (("off", set()), ("error", {"ERROR"}), ("warning", {"ERROR", "WARNING"}),
                                  ("trace", {"ERROR", "WARNING", "TRACE"}),
                                  ("debug", {"ERROR", "WARNING", "TRACE", "DEBUG"})):
            with self.subTest(level):
                self.out = self.folder / level
                self.play(session, "--log", level)
                self.assertEqual(severities, set(self.severities()))

    def test_settings_to_start_from(self):
        settings = self.file("settings.xml", '<LumeqConfig version="4.0"><UserOptIn>True</UserOptIn></LumeqConfig>')
        self.play('{"call": "GetUserOptInEx"}\n', "--settings", settings)
        self.assertEqual({"call": "GetUserOptInEx", "returns": True}, json.loads((self.out / "host.jsonl").read_text()))

    def test_factory_settings_in_the_place_of_the_usual_ones(self):
        factory = self.file("factory.xml", '<LumeqConfig version="4.0"><Log>on</Log><LogLevel>warning</LogLevel></LumeqConfig>')
        self.play(SCREEN + REFUSED, "--factory", factory, "--log", "trace")
        self.assertEqual(["ERROR"], self.severities())

    def test_script_for_the_companion(self):
        script = self.file("script.json", '{"raise": {"PostEventInternal": "std"}}')
        self.play(SCREEN, "--companion", script, "--log", "warning")
        self.assertEqual(["WARNING"], self.severities())

    def test_disabled_tracking(self):
        self.play(SCREEN + OPT_IN, "--disabled")
        self.assertEqual({"host.jsonl"}, self.left())

    def test_takes_away_what_an_earlier_session_left(self):
        self.play(SCREEN + OPT_IN + REFUSED)
        self.play(SCREEN, "--log", "off", "--road", "basic")
        self.assertEqual({"host.jsonl"}, self.left())

    def test_page_of_the_run(self):
        page = self.folder / "page.html"
        played = subprocess.run([ROOT / "tools" / "play", "--build", BUILD, self.file("session.jsonl", SCREEN + REFUSED),
                                 "--html", page], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self.assertEqual((0, ""), (played.returncode, played.stdout))
        html = page.read_text(encoding="utf-8")
        self.assertIn("<em>recorded</em> displayed screen /Home</td>", html)
        self.assertIn("<em>refused</em> screenName &quot;&quot;</td>", html)

    @unittest.skipUnless(can_listen("127.0.0.1"), "no privilege to listen on port 443, where the library goes")
    def test_service_takes_the_message(self):
        """The results have it byte by byte, and so has the page. They also say what was played."""
        factory = self.file("factory.xml", (ROOT / "samples" / "sessions" / "basic-message.factory.xml").read_text())
        start = '{"call": "StartupEx", "appName": "A", "whyType": 0, "howType": 0, "trackSystemInfo": false, ' \
                '"trackPrintQueueInfo": false}\n'
        page = self.folder / "page.html"
        self.play(OPT_IN + start, "--road", "basic", "--service", "--factory", factory, "--html", page)
        self.assertEqual(OPT_IN + start, (self.out / "session.jsonl").read_text())
        self.assertEqual({"session": "session on the basic road", "road": "basic"},
                         json.loads((self.out / "run.json").read_text()))
        request = (self.out / "request-1.http").read_bytes()
        self.assertTrue(request.startswith(b"POST /projects/0123456789ABCDEF01234567/queues/sys_info_base/messages"))
        self.assertIn(f"{len(request)} bytes on the wire", page.read_text(encoding="utf-8"))
        self.assertIn("<em>accepted</em> sends the message about the machine</td>", page.read_text(encoding="utf-8"))

    def test_missing_file_is_named(self):
        played = self.play(SCREEN, "--settings", self.folder / "nowhere.xml")
        self.assertEqual(2, played.returncode)
        self.assertIn("nowhere.xml: no such file", played.stderr)


if __name__ == "__main__":
    unittest.main()
