"""What the tests of this folder have in common: they play sessions against the built DLL and read what came."""

import contextlib
import functools
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import NamedTuple, Optional

ROOT = Path(__file__).resolve().parent.parent.parent
BUILD = Path(os.environ.get("LUMEQ_BUILD_DIR", ROOT / "build" / "mingw"))
sys.path.insert(0, str(ROOT / "tools"))
import session_player  # noqa: E402

OBJDUMP = os.environ.get("LUMEQ_OBJDUMP", "x86_64-w64-mingw32-objdump")

API = "Zuvan::Lumeq::API::"

# No session here takes more than some seconds; a loaded machine may make them long.
HOST_SECONDS = 200


class LogLine(NamedTuple):
    """A line of the log without its time and thread."""

    severity: str
    function: str
    """Empty for none."""
    message: str


LINE = re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z (?P<severity>\w+) *0x[0-9a-f]{8} \| "
                  r"(?:<(?P<function>[^>]*)> )?(?P<message>.*)")


def lines_of(text: str) -> list[str]:
    """Only a line feed ends a line here, and none of the other characters that end one for Python."""
    return text.replace("\r\n", "\n").removesuffix("\n").split("\n") if text else []


def parse_log(text: str) -> list[LogLine]:
    """Numbers of source lines become "line"; they mean nothing to a reader of the log."""
    lines = []
    for line in lines_of(re.sub(r"LumeqApi\(\d+\)", "LumeqApi(line)", text)):
        match = LINE.fullmatch(line)
        if not match:
            raise AssertionError(f"no log line: {line!r}")
        lines.append(LogLine(match["severity"], match["function"] or "", match["message"]))
    return lines


def trace(export: str, message: str = "") -> LogLine:
    return LogLine("TRACE", API + export, message)


def error(export: str, detail: str, title: str = "Validation failed") -> LogLine:
    return LogLine("ERROR", "", f"lumeq-host.exe: {title} in {API}{export}: {detail}. LumeqApi(line)")


def record(actor: str, action: str, object_: str, label: str, details: Optional[dict] = None,
           local: Optional[dict] = None, model: Optional[str] = None) -> dict:
    """An event's record, every key of it."""
    return {
        "schema": "app_eventinfo/2.0.1",
        "app_event_actor": actor,
        "app_event_action": action,
        "app_event_object": object_,
        "app_event_object_label": label,
        "app_event_context": {
            "schema": "app_event_context/1.0.0",
            "context_global": {"_dev_modelname": model},
            "context_local": local,
        },
        "app_event_details": details,
    }


class Outcome:
    """What playing a session left behind."""

    def __init__(self, status: int, errors: str, folder: Path):
        self.status = status
        # Wine's own helper processes share the host's standard error and may complain there of themselves; a crash of
        # the host shows in its status.
        self.errors = "".join(line for line in errors.splitlines(keepends=True) if not line.startswith("wine: "))
        """The host's standard error."""
        self.files = {str(file.relative_to(folder)): file.read_bytes()
                      for file in folder.rglob("*") if file.is_file()}
        self.host = self._json_lines("host.jsonl")
        self.companion = self._json_lines("companion.jsonl")

    def text(self, name: str) -> str:
        return self.files.get(name, b"").decode("utf-8")

    def _json_lines(self, name: str) -> list[dict]:
        return [json.loads(line) for line in lines_of(self.text(name))]

    @property
    def log(self) -> list[LogLine]:
        return parse_log(self.text("Lumeq.Log.txt"))

    @property
    def error_file(self) -> list[LogLine]:
        return parse_log(self.text("Lumeq.Error.txt"))

    @property
    def calls(self) -> list[LogLine]:
        """The log without the lines of the log's own start."""
        return [line for line in self.log if not line.message.startswith("Logger: ")]

    def operations(self, name: str) -> list[dict]:
        return [line for line in self.companion if line["operation"] == name]

    @property
    def records(self) -> list[dict]:
        """Of the events that reached the companion."""
        return [line["record"] for line in self.operations("PostEventInternal")]


def exports_of(library: Path) -> list[str]:
    headers = subprocess.run([OBJDUMP, "-p", library], check=True, stdout=subprocess.PIPE,
                             text=True).stdout
    table = headers.split("[Ordinal/Name Pointer] Table")[1].split("\n\n")[0]
    return re.findall(r"^\s*\[ *\d+\] (?:\+base\[ *\d+\] +[0-9a-f]+ )?(\S+)$", table, re.MULTILINE)


@functools.cache
def _machine_of_the_file() -> session_player.Machine:
    return unittest.enterModuleContext(session_player.machine(BUILD))


class SessionTestCase(unittest.TestCase):
    """The sessions of a file share a machine, cleared in between; one with a registry value of its own has its own."""

    CHANGES_THE_MACHINE = False
    """What clear does not take away: such a class has one of its own."""

    maxDiff = None
    host_seconds: float = HOST_SECONDS

    @classmethod
    def setUpClass(cls):
        cls.machine = (cls.enterClassContext(session_player.machine(BUILD)) if cls.CHANGES_THE_MACHINE
                       else _machine_of_the_file())

    def play(self, *steps: dict, **circumstances) -> Outcome:
        """Plays the steps. Circumstances as for play_text."""
        return self.play_text("".join(json.dumps(step) + "\n" for step in steps), **circumstances)

    def play_to_end(self, *steps: dict, **circumstances) -> Outcome:
        """As play; a host that crashed or stopped at a line fails the test."""
        outcome = self.play(*steps, **circumstances)
        # Wine's helpers write to the same standard error, so that it is no sign of the host's health.
        self.assertEqual(0, outcome.status, outcome.errors)
        return outcome

    def play_text(self, session: str, companion: Optional[dict] = None, settings: Optional[str] = None,
                  factory: Optional[str] = None, **conditions) -> Outcome:
        """The files are given as what stands in them; the rest as for Conditions."""
        with tempfile.TemporaryDirectory(dir=self.machine.prefix) as name:
            folder = Path(name)

            def file(file_name: str, content: Optional[str]) -> Optional[Path]:
                if content is None:
                    return None
                (folder / file_name).write_text(content, encoding="utf-8", newline="\n")
                return folder / file_name

            its_conditions = session_player.Conditions(
                companion=file("companion.json", json.dumps(companion) if companion else None),
                settings=file("settings.xml", settings), factory=file("factory.xml", factory), **conditions)
            out = folder / "out"
            with contextlib.ExitStack() as stack:
                errors = stack.enter_context(open(folder / "errors", "w+b"))
                its_machine = self.machine
                if its_conditions.disabled is not None:
                    its_machine = stack.enter_context(session_player.machine(BUILD))
                its_machine.clear()
                status = session_player.play_on(its_machine, file("session.jsonl", session), out, its_conditions,
                                                BUILD, self.host_seconds, errors)
                errors.seek(0)
                return Outcome(status, errors.read().decode("utf-8", "replace"), out)


def call(export: str, /, **arguments) -> dict:
    return {"call": export, **arguments}
