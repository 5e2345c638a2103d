"""lumeq-serve.pyz: a real host's message and others, as the service takes, judges and shows them."""

import contextlib
import http.client
import json
import os
import re
import shutil
import signal
import ssl
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any, Iterator, Optional

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "doctor"))
from doctor_case import BUILD, HOST, ROOT, DoctorTestCase  # noqa: E402
from support import call  # noqa: E402
from support.host_process import HostProcess  # noqa: E402
import basic_road  # noqa: E402
import session_player  # noqa: E402

START = call("StartupEx", appName="Scan Studio", whyType=4, howType=7, trackSystemInfo=True, trackPrintQueueInfo=False)
PACKED = "lumeq-serve.pyz"


class Serve(DoctorTestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory(dir=BUILD / "play"))) / "own"
        # Without lumeq.exe beside it.
        cls.packed = shutil.copy(BUILD / PACKED, cls.folder.parent)
        cls.lumeq = cls.folder.parent / "lumeq"
        cls.lumeq.write_text(f'#!/bin/sh\nexec "{ROOT}/tools/run-wine" "{BUILD}/lumeq.exe" "$@"\n')
        cls.lumeq.chmod(0o755)

    @contextlib.contextmanager
    def serve(self, *arguments: str) -> Iterator[str]:
        """Yields the instructions that the service prints. What it prints later is in self.printed."""
        environment = dict(os.environ, WINEPREFIX=str(self.machine.prefix))
        process = subprocess.Popen([sys.executable, self.packed, "--folder", self.folder, *arguments], env=environment,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        try:
            instructions = ""
            while "lumeq doctor" not in instructions:
                line = process.stdout.readline()
                self.assertTrue(line, "it has not ended")
                instructions += line
            yield instructions
        finally:
            process.send_signal(signal.SIGINT)
            self.printed, errors = process.communicate()
        self.assertEqual((0, ""), (process.returncode, errors))

    def ask(self, method: str, path: str, body: Optional[str] = None, **headers: str) -> tuple[int, str]:
        context = ssl.create_default_context(cadata=(self.folder / "root.der").read_bytes())
        connection = http.client.HTTPSConnection("localhost", 443, context=context)
        with contextlib.closing(connection):
            connection.request(method, path, body, {name.replace("_", "-"): value for name, value in headers.items()})
            answer = connection.getresponse()
            return answer.status, answer.read().decode()

    def shown(self, path: str) -> Any:
        status, text = self.ask("GET", path)
        self.assertEqual(200, status)
        return json.loads(text)

    def start_host_as_instructed(self, instructions: str) -> None:
        settings = re.findall(r"^ +(<\w+>.*</\w+>)$", instructions, re.MULTILINE)
        self.assertEqual(3, len(settings))
        self.write_factory(text=f'<LumeqConfig version="4.0">{"".join(settings)}</LumeqConfig>')
        root = re.search(r'-addstore Root "(.*)"', instructions)[1]
        basic_road.trust(self.machine, Path(root), BUILD)
        with HostProcess(self.machine, session_player.Conditions(road="basic")) as host:
            host.play(START)

    def test_host_as_instructed_sends_a_good_message_that_the_page_shows(self):
        with self.serve("--lumeq", str(self.lumeq)) as instructions:
            self.assertIn("Nothing has come yet.", self.ask("GET", "/")[1])
            self.start_host_as_instructed(instructions)
            (message,) = self.shown("/good")
            self.assertEqual([], self.shown("/bad"))
            page = self.ask("GET", "/")[1]
            diagnosis = self.check_found(set(), LUMEQ_WINE_OVERRIDES="mscoree=d", *("--only", "factory,network"))
            self.assertEqual({"removed": 1}, self.shown("/reset"))
            self.assertEqual([], self.shown("/good"))
        self.assertEqual(("local", "sys_info_base", "Scan Studio/0.0.0.0", "local-token", []),
                         tuple(message[key] for key in ("project", "queue", "userAgent", "token", "wrong")))
        self.assertEqual("Scan Studio/0.0.0.0", message["fields"]["app_id"])
        self.assertRegex(message["time"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d$")
        self.assertIn("app_session_uuid", page)
        self.assertIn("<html", page)
        self.assertRegex(self.printed, r"^\n?\d\d:\d\d:\d\d good Scan Studio/0\.0\.0\.0 to sys_info_base\n$")
        self.assertEqual("localhost (127.0.0.1), TLS 1.2", diagnosis.details("network")[0])

    def test_bad_messages_and_their_defects(self):
        path = "/projects/P/queues/sys_info_base/messages"
        with self.serve():
            status, text = self.ask("POST", path, "{}", Authorization="Bearer x", User_Agent="a/1.0.0.0",
                                    Content_Type="application/json", Accept="application/json")
            (bad,) = self.shown("/bad")
            self.assertEqual([], self.shown("/good"))
            page = self.ask("GET", "/")[1]
            self.assertEqual(404, self.ask("GET", "/other")[0])
            self.assertEqual((1, []), (len(self.shown("/bad")), self.shown("/good")), "questions are no messages")
        # The headers are those of another client than the library's, in another order, and not wrong for that.
        self.assertEqual((400, {"wrong": ["the envelope is b'{}'"]}), (status, json.loads(text)))
        self.assertEqual(["the envelope is b'{}'"], bad["wrong"])
        self.assertIn("The page needs lumeq.exe", page)
        self.assertIn("bad  a/1.0.0.0 to sys_info_base\n              the envelope is b'{}'", self.printed)

    def test_nobody_can_issue_another_certificate(self):
        with self.serve():
            self.assertEqual([], sorted(file.name for file in self.folder.glob("*.key") if "localhost" not in file.name))
            with self.assertRaises(ssl.SSLCertVerificationError):
                http.client.HTTPSConnection("localhost", 443, context=ssl.create_default_context()).request("GET", "/")

    def test_port_that_is_taken(self):
        with self.serve():
            second = subprocess.run([sys.executable, self.packed, "--folder", self.folder], stdout=subprocess.PIPE,
                                    stderr=subprocess.PIPE, text=True)
        self.assertEqual((2, ""), (second.returncode, second.stdout))
        self.assertIn("lumeq-serve: cannot listen on port 443", second.stderr)


if __name__ == "__main__":
    unittest.main()
