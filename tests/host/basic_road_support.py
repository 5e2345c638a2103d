"""What the tests of the basic road have in common: one machine that trusts a queue service of the test's own."""

import base64
import contextlib
import json
import shutil
import socket
import tempfile
import unittest
from pathlib import Path
from typing import Optional

from support import BUILD, Outcome, SessionTestCase, call, session_player

import basic_road
import certificates
from queue_service import Behaviour, QueueService

PROJECT = "0123456789ABCDEF01234567"
PATH = f"/projects/{PROJECT}/queues/sys_info_base/messages"
PREFIX = "=?media_type:application/json.b64?="
START = call("StartupEx", appName="Scan Studio", whyType=4, howType=7, trackSystemInfo=True,
             trackPrintQueueInfo=False)
UNTIL_WORKER_ENDS = {"unload": True, "waitMsec": 60000}
"""For a worker whose caller goes on before it is done, as it does on a machine that is busy."""


def can_listen(address: str) -> bool:
    with contextlib.suppress(PermissionError), socket.create_server((address, 443)):
        return True
    return False


class BasicRoadTestCase(SessionTestCase):
    """Each file of tests has an address of its own, so that files may run side by side."""

    ADDRESS = ""

    @classmethod
    def setUpClass(cls):
        if not can_listen(cls.ADDRESS):
            raise unittest.SkipTest("no privilege to listen on port 443, where the library goes")
        (BUILD / "play").mkdir(exist_ok=True)
        cls.folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory(dir=BUILD / "play")))
        cls.machine = cls.enterClassContext(session_player.machine(BUILD))
        cls.machine.set_up(session_player.Conditions(road="basic"), BUILD)
        basic_road.trust(cls.machine, certificates.make_root(cls.folder), BUILD)

    def setUp(self):
        shutil.rmtree(self.machine.program_data, ignore_errors=True)

    def serve(self, misbehaviour: str = "none", certificate: str = "valid", answers: tuple[bytes, ...] = (),
              address: Optional[str] = None, port: int = 443, **behaviour) -> QueueService:
        """For a with statement. `behaviour`: more of Behaviour."""
        return QueueService(self.folder, address or self.ADDRESS, port,
                            Behaviour(misbehaviour, certificate, answers=answers, **behaviour))

    def expected_request(self, message: str, path: str = PATH, token: str = " token9",
                         agent: str = "Scan Studio/0.0.0.0") -> bytes:
        """All bytes of the request with this message. Written out once more, by the means of this language."""
        body = '{"messages":[{"body":"' + PREFIX + base64.b64encode(message.encode()).decode() + '"}]}'
        return (f"POST {path} HTTP/1.1\r\n"
                f"Host: {self.ADDRESS}\r\n"
                "Pragma: no-cache\r\n"
                "Cache-Control: no-cache\r\n"
                "Content-Type: application/json\r\n"
                "Accept: application/json\r\n"
                f"Authorization: Bearer{token}\r\n"
                f"User-Agent: {agent}\r\n"
                f"Content-Length: {len(body)}\r\n"
                f"\r\n{body}").encode("latin-1")

    def logged_messages(self, outcome: Outcome) -> list[str]:
        """The messages as the log has them before they are encoded."""
        return [line.message.removeprefix("Message=") for line in outcome.log
                if line.severity == "TRACE" and line.message.startswith("Message=")]

    def run_host(self, *steps: dict, opted_in: Optional[bool] = True, road: str = "basic",
                 companion: Optional[dict] = None, timeout: float = 100, waits: bool = True,
                 **settings: Optional[str]) -> Outcome:
        """Plays the steps, and `waits` then until what they sent has its answer, however long that takes. `companion`
        is its script; the rest as for prepare."""
        self.prepare(opted_in, **settings)
        self._place_companion(road, companion)
        return self._play((*steps, UNTIL_WORKER_ENDS) if waits else steps, road, timeout)

    def prepare(self, opted_in: Optional[bool] = True, **settings: Optional[str]) -> None:
        """Makes the machine ready for a host. `opted_in` is in the local settings file to start from; None leaves
        that as it is. The settings are put into the usual factory settings file or taken out with None. There is no
        log yet."""
        deployment = {"Log": "on", "LogLevel": "debug", "ProjectId": PROJECT,
                      "LUMServerUri": f"https://{self.ADDRESS}", "AppDeployedId": "deployed-7",
                      "AuthenticationToken": "gbxra9"} | settings
        present = {key: value for key, value in deployment.items() if value is not None}
        host_folder = self.machine.host_folder
        (host_folder / "LumeqConfig.xml").write_text(basic_road.settings_text(**present), encoding="utf-8")
        if opted_in is not None:
            self.local_settings_file.parent.mkdir(parents=True, exist_ok=True)
            self.local_settings_file.write_text(basic_road.settings_text(UserOptIn=str(opted_in)))
        if logs := self.machine.log_folder():
            shutil.rmtree(logs)

    @property
    def local_settings_file(self) -> Path:
        return self.machine.program_data / "LUMEQ" / session_player.SETTINGS_FILE

    def _place_companion(self, road: str, script: Optional[dict]) -> None:
        library = self.machine.host_folder / "LumeqShim.Managed.dll"
        library.unlink(missing_ok=True)
        if road == "managed":
            shutil.copy(BUILD / "companion" / library.name, library)
            (library.parent / "LumeqCompanion.json").write_text(json.dumps(script))

    def _play(self, steps: tuple, road: str, timeout: float) -> Outcome:
        with tempfile.TemporaryDirectory(dir=BUILD / "play") as name:
            out = Path(name)
            session = out / "session.jsonl"
            session.write_text("".join(json.dumps(step) + "\n" for step in steps))
            with open(out / "errors", "w+b") as errors:
                status = self.machine.run_host(session, session_player.Conditions(road=road), out / "host.jsonl",
                                               timeout, errors)
                errors.seek(0)
                self.machine.collect(out)
                return Outcome(status, errors.read().decode("utf-8", "replace"), out)
