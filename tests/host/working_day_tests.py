"""The second sample session: a whole day of a host, compared with what it must leave on both roads."""

import unittest

from support import ROOT, SessionTestCase, error, record
from support.tasks import GUID, MILLISECONDS, without_chance

SAMPLES = ROOT / "samples" / "sessions"
MODEL = "Model 8100"


def task(action: str, name: str, details=None, **local) -> dict:
    return record("self", action, "task", f"task_{name}", details, local={"_app_event_task_guid": GUID, **local},
                  model=MODEL)


def finished(name: str, result: str, local: dict, **details) -> dict:
    return task("completed", name, {"schema": f"app_event_task_{name}/1.0.0", "task_result": result,
                                    "task_duration": MILLISECONDS, **details}, **local)


def event(its_record: dict) -> dict:
    return {"operation": "PostEventInternal", "record": its_record}


OPERATIONS = [
    {"operation": "StartupInternal", "appName": "Scan Station", "howType": 6, "whyType": 3, "trackSystemInfo": True,
     "trackPrintQueueInfo": False},
    {"operation": "GetUserOptInInternal"},
    event(record("app", "displayed", "screen", "/welcome.flow/Consent", local={"language": "de-AT"})),
    event(record("user", "checked", "checkbox", "/welcome.flow/Consent#agree")),
    {"operation": "SetUserOptInInternal", "userHasOptedIn": True},
    {"operation": "GetUserOptInInternal"},
    {"operation": "TrackSystemInformationInternal"},
    {"operation": "TrackPrintQueueInfoInternal"},
    {"operation": "PostDataInternal", "dataType": "sys_printer_discoverylist",
     "data": {"dev_biid": "unknown", "dev_modelname": "Model 8100", "dev_connection": "wifi"}},
    {"operation": "PostDataInternal", "dataType": "sys_printer_discoverylist",
     "data": {"dev_biid": "0123456789abcdef" * 4, "dev_modelname": "Model 400"}},
    event(task("initiated", "device_connect", attempt="1")),
    event(task("initiated", "sw_install")),
    event(finished("sw_install", "success", {}, install_type="msi", install_name="scan-station.msi",
                   install_version="2.14.0")),
    event(finished("device_connect", "success", {"attempt": "1"}, connect_scenario="add",
                   connect_method="auto_wireless_connect")),
    event(task("initiated", "device_config")),
    event(finished("device_config", "error_Timeout", {}, config_setting="webservices_registration")),
    event(record("app", "displayed", "screen", "/scan.flow/Preview-document", model=MODEL)),
    event(task("initiated", "scan_acquire", source="feeder")),
    event(finished("scan_acquire", "success", {"source": "feeder"}, scan_acquire_shortcut="save_pdf",
                   scan_acquire_shortcut_variance="original", scan_acquire_itemtype="document",
                   scan_acquire_resolution="dpi_300", scan_acquire_colormode="color", scan_acquire_pagesize="a4",
                   scan_acquire_source="adf_duplex_book", scan_acquire_mimetype="application/pdf",
                   scan_acquire_features={"deskew": "true", "remove_blank_pages": "false"}, scan_acquire_pages="4")),
    event(task("initiated", "file_sendto")),
    event(finished("file_sendto", "success", {}, scan_sendto_shortcut="email_pdf",
                   scan_sendto_shortcut_variance="original", scan_sendto_mimetype="application/pdf",
                   scan_sendto_destination="email_mapi", scan_sendto_pages="4")),
    event(task("initiated", "print_basic")),
    event(finished("print_basic", "error_OutOfPaper", {}, print_basic_subsystem="native",
                   print_basic_type="photo/multi", print_basic_mimetype="image/*", print_basic_size="size_4x6",
                   print_basic_papersize="4x6 in", print_basic_pages="3")),
    {"operation": "SetLocalValueInternal", "key": "OptinBeforePause", "value": "True"},
    {"operation": "SetUserOptInInternal", "userHasOptedIn": False},
    {"operation": "GetUserOptInInternal"},
    {"operation": "SetUserOptInInternal", "userHasOptedIn": True},
    {"operation": "GetUserOptInInternal"},
    {"operation": "FlushInternal", "timeoutMsec": 500},
    {"operation": "SetUserOptInInternal", "userHasOptedIn": False},
    {"operation": "GetUserOptInInternal"},
    {"operation": "ShutdownInternal", "timeoutMsec": 3000},
]

ERRORS = [
    error("PrintBasicCompleted", 'invalid [REQUIRED] taskResult arg: "out of paper"'),
    error("PrintBasicCompleted", 'invalid [REQUIRED] paperSize arg: ""'),
    error("PrintBasicCompleted", "invalid pages arg: -1"),
    error("PrintBasicCompleted", "null taskHandle arg"),
]

OPT_INS = [False, True, False, True, False]
HANDLES = ["set", "set", "null", "null", "set", "null", "set", "null", "set", "null", "set", "set", "null", "null"]
SETTINGS_AFTER = ('<LumeqConfig version="4.0"><AppDeployedUuid>0f8b2c1e-4d53-4e6a-9b7c-2a1d3e5f7081</AppDeployedUuid>'
                  "<UserOptIn>False</UserOptIn></LumeqConfig>")


class WorkingDay(SessionTestCase):
    def play_on(self, road: str):
        outcome = self.play_text((SAMPLES / "working-day.jsonl").read_text(encoding="utf-8"), road=road,
                                 settings=(SAMPLES / "working-day.settings.xml").read_text(encoding="utf-8"))
        self.assertEqual((0, ""), (outcome.status, outcome.errors))
        self.assertEqual(OPT_INS, [line["returns"] for line in outcome.host if line["call"] == "GetUserOptInEx"])
        self.assertEqual(HANDLES, [line["handle"] for line in outcome.host if "handle" in line])
        self.assertEqual(ERRORS, outcome.error_file)
        self.assertEqual(SETTINGS_AFTER, outcome.text("LumeqLocalSettings.xml").strip())
        return outcome

    def test_managed_road_hands_the_whole_day_over(self):
        outcome = self.play_on("managed")
        guids = [line["app_event_context"]["context_local"]["_app_event_task_guid"] for line in outcome.records
                 if line["app_event_object"] == "task"]
        # Both events of a task carry the same identifier, and no two tasks do.
        self.assertEqual(6, len(set(guids)))
        self.assertEqual({2}, {guids.count(guid) for guid in guids})
        self.assertEqual(OPERATIONS, [without_chance(line) for line in outcome.companion])

    def test_basic_road_keeps_the_opt_in_and_drops_the_rest(self):
        outcome = self.play_on("basic")
        self.assertEqual([], outcome.companion)


if __name__ == "__main__":
    unittest.main()
