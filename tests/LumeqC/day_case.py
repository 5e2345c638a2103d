"""The test case that plays samples/hosts/day.jsonl by a host of any language."""

import os
import re
import shutil
import sys
import tempfile
from pathlib import Path
from typing import Optional

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import BUILD, ROOT, Outcome, SessionTestCase  # noqa: E402
from support.host_process import HOST_SECONDS  # noqa: E402
from support.tasks import HANDLE, without_chance  # noqa: E402
from session_player import Conditions  # noqa: E402

PACKAGE = os.environ.get("LUMEQ_PACKAGE")
SOURCES = Path(PACKAGE, "share", "Lumeq") if PACKAGE else ROOT
"""Has the samples, and the bindings beside them, in the source tree and in a release."""
DAY = ROOT / "samples" / "hosts" / "day.jsonl"
SETTINGS = ROOT / "samples" / "sessions" / "working-day.settings.xml"
MODES = {"direct": [], "worker": ["worker"]}


def left_by(outcome: Outcome, host: str) -> dict:
    """Without what no two runs share, which the name of the host is part of."""
    def lines(log: list) -> list:
        return [(line.severity, line.function,
                 re.sub(r"0x(?!0{16})[0-9A-F]{16}", HANDLE, line.message.replace(f"{host}: ", "(host): ")))
                for line in log]
    return {"operations": [without_chance(operation) for operation in outcome.companion],
            "log": [line for line in lines(outcome.log) if not line[2].startswith("Logger: ")],
            "errors": lines(outcome.error_file),
            "settings": outcome.text("LumeqLocalSettings.xml")}


class DayTestCase(SessionTestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.expected = {}

    def expected_on(self, road: str) -> dict:
        if road not in self.expected:
            outcome = self.play_text(DAY.read_text(encoding="utf-8"), road=road,
                                     settings=SETTINGS.read_text(encoding="utf-8"))
            self.assertEqual(0, outcome.status, outcome.errors)
            self.expected[road] = left_by(outcome, "lumeq-host.exe")
            self.assertGreater(len(self.expected[road]["log"]), 30)
            self.assertGreater(len(self.expected[road]["operations"]), 20 if road == "managed" else -1)
        return self.expected[road]

    def run_host(self, host: Path, road: str, arguments: list[str], factory: Optional[Path] = None) -> Outcome:
        conditions = Conditions(road=road, settings=SETTINGS, factory=factory)
        self.machine.clear()
        self.machine.set_up(conditions, BUILD)
        shutil.copy(host, self.machine.host_folder)
        with tempfile.TemporaryDirectory() as name:
            out = Path(name)
            with open(out / "errors", "w+b") as errors:
                status = self.machine.run(host.name, arguments, conditions, out / "output", HOST_SECONDS, errors)
            self.machine.collect(out)
            return Outcome(status, (out / "errors").read_text(errors="replace"), out)

    def assert_prints_the_state(self, expected: str, host: Path, *arguments: str):
        outcome = self.run_host(host, "managed", list(arguments))
        self.assertEqual(expected, " ".join(outcome.text("output").split()))

    def assert_plays_the_day(self, host: Path, *arguments: str):
        """On both roads, without and with the worker thread. The host takes the latter for any further argument."""
        for road in ("managed", "basic"):
            for mode, more in MODES.items():
                with self.subTest(road=road, mode=mode):
                    expected = self.expected_on(road)
                    outcome = self.run_host(host, road, [*arguments, *more])
                    self.assertEqual(0, outcome.status, outcome.errors)
                    self.assertEqual(expected, left_by(outcome, host.name))
