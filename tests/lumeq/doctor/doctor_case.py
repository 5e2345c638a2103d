"""The test case of lumeq doctor: a healthy machine that each test breaks in its own way."""

import json
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Any, NamedTuple, Optional

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "host"))
from support import BUILD, ROOT, SessionTestCase  # noqa: E402
import basic_road  # noqa: E402
import session_player  # noqa: E402
from queue_service import Behaviour, QueueService  # noqa: E402

HOST = r"C:\Host\lumeq-host.exe"
COMPANION = "LumeqShim.Managed.dll"
PROJECT = "0123456789ABCDEF01234567"
SETTINGS = {"Log": "off", "LogLevel": "error", "ProjectId": PROJECT, "AppDeployedId": "deployed-7",
            "AuthenticationToken": "gbxra9"}
UUID = "12345678-9abc-4def-8123-456789abcdef"


class Diagnosis(NamedTuple):
    status: int
    report: dict[str, Any]

    @property
    def found(self) -> set[str]:
        """The names of what is wrong."""
        return {finding["finding"] for finding in self.report["findings"] if finding["finding"]}

    def of(self, name: str) -> dict[str, str]:
        return next(finding for finding in self.report["findings"] if finding["finding"] == name)

    def details(self, check: str) -> list[str]:
        return [finding["detail"] for finding in self.report["findings"] if finding["check"] == check]


class DoctorTestCase(SessionTestCase):
    CHANGES_THE_MACHINE = True
    SERVER = "127.0.0.64"
    """Nobody listens there. At localhost, tests that run at the same time do, and they count who comes."""

    def setUp(self):
        self.make_healthy()

    def make_healthy(self) -> None:
        """All but a server: with it, nothing is found."""
        self.machine.clear()
        self.machine.set_up(session_player.Conditions(), BUILD)
        self.write_factory()
        self.local_file.parent.mkdir(parents=True)
        for folder in (self.local_file.parent, self.local_file.parent.parent):
            folder.chmod(0o777)
        self.write_local(UserOptIn="True", AppDeployedUuid=UUID)

    @property
    def host_folder(self) -> Path:
        return self.machine.host_folder

    @property
    def local_file(self) -> Path:
        return self.machine.program_data / "LUMEQ" / session_player.SETTINGS_FILE

    def write_factory(self, name: str = "LumeqConfig.xml", text: Optional[str] = None, **changes: Optional[str]) -> None:
        """None removes a key."""
        server = {"LUMServerUri": f"https://{self.SERVER}"}
        settings = {key: value for key, value in (SETTINGS | server | changes).items() if value is not None}
        (self.host_folder / name).write_text(text or basic_road.settings_text(**settings), encoding="utf-8")

    def write_local(self, **settings: str) -> None:
        self.local_file.write_text(basic_road.settings_text(**settings), encoding="utf-8")

    def run_doctor(self, *arguments: str, **environment: str) -> subprocess.CompletedProcess:
        process = self.machine.start_program(BUILD / "lumeq.exe", "doctor", *arguments, stdout=subprocess.PIPE,
                                             stderr=subprocess.PIPE, encoding="utf-8", cwd=self.machine.prefix / "drive_c",
                                             env=dict(os.environ, **environment))
        output, errors = process.communicate()
        return subprocess.CompletedProcess(arguments, process.returncode, output, errors)

    def examine(self, *arguments: str, host: Optional[str] = HOST, **environment: str) -> Diagnosis:
        named = [host] if host else []
        result = self.run_doctor(*named, "--json", *arguments, **environment)
        self.assertTrue(result.stdout, result.stderr)
        return Diagnosis(result.returncode, json.loads(result.stdout))

    def check_found(self, expected: set[str], *arguments: str, host: Optional[str] = HOST,
                    **environment: str) -> Diagnosis:
        """Exactly this is found, and the exit code and the blocker fit it."""
        diagnosis = self.examine(*arguments, host=host, **environment)
        self.assertEqual(expected, diagnosis.found)
        effects = [finding.get("effect") for finding in diagnosis.report["findings"]]
        blocks = "stops everything" in effects or "loses events" in effects
        self.assertEqual(int(blocks), diagnosis.status)
        self.assertEqual(blocks, diagnosis.report["blocker"] is not None)
        return diagnosis

    def set_registry(self, key: str, name: str, value: str, kind: str = "REG_SZ") -> None:
        """Until the end of the test."""
        self.machine.run_program("reg", "add", key, "/v", name, "/t", kind, "/d", value, "/f")
        self.addCleanup(self.machine.run_program, "reg", "delete", key, "/v", name, "/f")


class ServedTestCase(DoctorTestCase):
    """With a server that the machine trusts."""

    SERVER = "localhost"

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory(dir=BUILD / "play")))
        with QueueService(cls.folder, cls.SERVER) as service:
            basic_road.trust(cls.machine, service.root, BUILD)

    def serve(self, misbehaviour: str = "none", certificate: str = "valid", **behaviour) -> QueueService:
        return QueueService(self.folder, self.SERVER, behaviour=Behaviour(misbehaviour, certificate, **behaviour))
