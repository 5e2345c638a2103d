"""The test case that runs a first host of samples/start: each kind does the same and leaves the same records."""

from pathlib import Path

from day_case import SOURCES, DayTestCase
from support import record
from support.tasks import GUID, MILLISECONDS, without_chance

START = SOURCES / "samples" / "start"
MODEL = "Tarvik 3000"
TASK = {"_app_event_task_guid": GUID}


def _event(its_record: dict) -> dict:
    return {"operation": "PostEventInternal", "record": its_record}


def _operations(details: dict, system_info: bool) -> list[dict]:
    chosen = {"shortcut": "unknown", "shortcut_variance": "unknown", "itemtype": "unknown", "resolution": "unknown",
              "colormode": "color", "pagesize": "unknown", "source": "unknown", "mimetype": "unknown", "features": {},
              "pages": "3", **details}
    return [
        {"operation": "StartupInternal", "appName": "Scan Studio", "howType": 1, "whyType": 3,
         "trackSystemInfo": system_info, "trackPrintQueueInfo": False},
        {"operation": "SetUserOptInInternal", "userHasOptedIn": True},
        _event(record("app", "displayed", "screen", "/setup.flow/Home")),
        _event(record("user", "clicked", "button", "/setup.flow/Home#scan")),
        _event(record("self", "initiated", "task", "task_scan_acquire", None, TASK, MODEL)),
        _event(record("self", "completed", "task", "task_scan_acquire", {
            "schema": "app_event_task_scan_acquire/1.0.0", "task_result": "success", "task_duration": MILLISECONDS,
            **{f"scan_acquire_{name}": value for name, value in chosen.items()}}, TASK, MODEL)),
        {"operation": "ShutdownInternal", "timeoutMsec": 10000},
    ]


SHORT = _operations({}, False)
FULL = _operations({"shortcut": "save_pdf", "shortcut_variance": "original", "itemtype": "document",
                    "resolution": "dpi_300", "pagesize": "a4", "source": "flatbed", "mimetype": "application/pdf",
                    "features": {"crop": "true"}}, True)
"""The C++ exports take all details."""


class FirstHostTestCase(DayTestCase):
    def assert_leaves_its_records(self, host: Path, *arguments: str, operations: list = SHORT):
        outcome = self.run_host(host, "managed", list(arguments), START / "LumeqConfig.xml")
        self.assertEqual(0, outcome.status, outcome.errors)
        self.assertEqual([], outcome.error_file)
        # So the log was on.
        self.assertGreater(len(outcome.log), 10)
        self.assertEqual(operations, [without_chance(operation) for operation in outcome.companion])
