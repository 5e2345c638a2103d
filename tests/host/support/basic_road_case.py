"""The test case of the basic road: its machine trusts the test's own queue service."""

import base64
import contextlib
import json
import shutil
import socket
import tempfile
import unittest
from pathlib import Path
from typing import Optional

from .host_process import HostProcess, session_of
from .outcome import Outcome
from .paths import BUILD
from .session_case import SessionTestCase, call
import basic_road
import certificates
import session_player
from queue_service import Behaviour, QueueService

PROJECT = "0123456789ABCDEF01234567"
PATH = f"/projects/{PROJECT}/queues/sys_info_base/messages"
PREFIX = "=?media_type:application/json.b64?="
START = call("StartupEx", appName="Scan Studio", whyType=4, howType=7, trackSystemInfo=True,
             trackPrintQueueInfo=False)
UNTIL_WORKER_ENDS = {"unload": True, "waitMsec": 60000}
"""A busy machine may let the worker's caller continue before the worker is done."""


def can_listen(address: str) -> bool:
    with contextlib.suppress(PermissionError), socket.create_server((address, 443)):
        return True
    return False


class BasicRoadTestCase(SessionTestCase):
    """Each class has an address of its own, so that files can run at the same time."""

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
        """All bytes of the request with this message, composed independently of the library."""
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
        """The messages in the log, which shows them before they are encoded."""
        return [line.message.removeprefix("Message=") for line in outcome.log
                if line.severity == "TRACE" and line.message.startswith("Message=")]

    def run_host(self, *steps: dict, opted_in: Optional[bool] = True, road: str = "basic",
                 companion: Optional[dict] = None, timeout: float = 100, waits: bool = True,
                 **settings: Optional[str]) -> Outcome:
        """Plays the steps and, if it `waits`, until they have their answer, however long that takes. `companion` is
        its script; the rest as for prepare."""
        self.prepare(opted_in, **settings)
        self._place_companion(road, companion)
        with self.host(*steps, *([UNTIL_WORKER_ENDS] if waits else []), road=road) as host:
            return host.finish(timeout)

    def host(self, *steps: dict, road: str = "basic") -> HostProcess:
        """A host on the prepared machine. Without steps the session is live."""
        return HostProcess(self.machine, session_player.Conditions(road=road), session_of(*steps) if steps else None)

    def prepare(self, opted_in: Optional[bool] = True, **settings: Optional[str]) -> None:
        """Makes the machine ready for a host. `opted_in` goes into the local settings file; None leaves that file as
        it is. The settings replace those of the usual factory settings file; None removes one. Removes the log."""
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
