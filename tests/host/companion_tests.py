"""The managed road's failures, and what the companion stand-in promises."""

import unittest

from support import BUILD, LogLine, SessionTestCase, call
from support.library_file import exports_of

KINDS = {
    "vesto": "{region} failed with VestoException exception {operation} was told to fail",
    "com": "{region} failed with _com_error exception 0x80004005, Call failed.",
    "std": "{region} exception with {operation} was told to fail",
    "unknown": "{region} failed with unknown exception",
    "managed": "{region} failed with unknown exception",
}

STARTUP = call("StartupEx", appName="App", whyType=0, howType=0, trackSystemInfo=True, trackPrintQueueInfo=False)

# Operation, the region that reports its failure, and a call that leads to it alone.
ROUTES = [
    ("ShutdownInternal", "ShutdownXX", call("ShutdownEx", timeoutMsec=5)),
    ("FlushInternal", "FlushXX", call("FlushEx", timeoutMsec=5)),
    ("GetUserOptInInternal", "GetUserOptInXX", call("GetUserOptInEx")),
    ("SetUserOptInInternal", "SetUserOptInXX", call("SetUserOptInEx", userHasOptedIn=True)),
    ("LocalSettingsSubfolderInternal", "LocalSubfolderPathXX", call("SetLocalSubfolderPathEx", subpath="sub")),
    ("PostEventInternal", "PostEventXX", call("ScreenDisplayed", screenName="Home")),
    ("PostDataInternal", "PostDataXX", call("TrackDiscoveredPrintersEx", discoveredDeviceList=[{"dev_biid": "unknown"}])),
    ("TrackPrintQueueInfoInternal", "TrackPrintQueueInfoXX", call("TrackPrintQueueInfoEx")),
    ("TrackSystemInformationInternal", "TrackSystemInformationXX", call("TrackSystemInformationEx")),
    ("StartupInternal", "StartupXX", STARTUP),
]


def warnings(outcome) -> list[LogLine]:
    return [line for line in outcome.log if line.severity == "WARNING"]


def failure(kind: str, region: str, operation: str) -> LogLine:
    return LogLine("WARNING", "", KINDS[kind].format(region=region, operation=operation))


class RaisingCompanion(SessionTestCase):
    def test_every_wrapper_reports_every_kind_of_failure_and_the_host_goes_on(self):
        for kind in KINDS:
            with self.subTest(kind):
                outcome = self.play(*(step for _, _, step in ROUTES),
                                    companion={"raise": {operation: kind for operation, _, _ in ROUTES}}, log="warning")
                self.assertEqual((0, ""), (outcome.status, outcome.errors))
                self.assertEqual([operation for operation, _, _ in ROUTES],
                                 [line["operation"] for line in outcome.companion])
                # The user has opted in by then, so the failed start ends in a basic one, which has no project here.
                self.assertEqual([failure(kind, region, operation) for operation, region, _ in ROUTES]
                                 + [LogLine("WARNING", "", "Project ID is empty. Ensure *LumeqConfig.xml is in path!")],
                                 warnings(outcome))

    def test_failed_read_of_the_opt_in_gives_false_without_a_second_try(self):
        outcome = self.play(call("GetUserOptInEx"), companion={"raise": {"GetUserOptInInternal": "std"}},
                            settings='<LumeqConfig version="4.0"><UserOptIn>True</UserOptIn></LumeqConfig>', log="debug")
        self.assertEqual([{"call": "GetUserOptInEx", "returns": False}], outcome.host)
        self.assertFalse([line for line in outcome.log if "BasicGetUserOptIn" in line.message + line.function])

    def test_failed_write_of_the_opt_in_leaves_the_choice_written(self):
        for kind in KINDS:
            with self.subTest(kind):
                outcome = self.play(call("SetUserOptInEx", userHasOptedIn=True), call("GetUserOptInEx"),
                                    companion={"raise": {"SetUserOptInInternal": kind}})
                self.assertEqual({"call": "GetUserOptInEx", "returns": True}, outcome.host[1])
                self.assertIn("<UserOptIn>True</UserOptIn>", outcome.text("LumeqLocalSettings.xml"))

    def test_failed_write_of_the_pause_leaves_the_mark_written(self):
        for kind in KINDS:
            with self.subTest(kind):
                outcome = self.play(call("SetUserOptInEx", userHasOptedIn=True), call("Pause"),
                                    companion={"raise": {"SetLocalValueInternal": kind}})
                self.assertEqual([failure(kind, "SetLocalValue", "SetLocalValueInternal")], warnings(outcome))
                settings = outcome.text("LumeqLocalSettings.xml")
                self.assertIn("<OptinBeforePause>True</OptinBeforePause>", settings)
                self.assertIn("<UserOptIn>False</UserOptIn>", settings)

    def test_list_of_failures_is_for_the_calls_in_turn_and_starts_again(self):
        kinds = [None, "managed", "std", None]
        flush = call("FlushEx", timeoutMsec=0)
        outcome = self.play(*[flush] * 6, call("TrackPrintQueueInfoEx"), log="warning",
                            companion={"raise": {"FlushInternal": kinds, "TrackPrintQueueInfoInternal": "std"}})
        self.assertEqual((0, ["FlushInternal"] * 6 + ["TrackPrintQueueInfoInternal"]),
                         (outcome.status, [line["operation"] for line in outcome.companion]))
        self.assertEqual([failure("managed", "FlushXX", "FlushInternal"), failure("std", "FlushXX", "FlushInternal"),
                          failure("managed", "FlushXX", "FlushInternal"),
                          failure("std", "TrackPrintQueueInfoXX", "TrackPrintQueueInfoInternal")], warnings(outcome))

    def test_later_events_still_try_the_companion_and_each_reports_its_own_failure(self):
        screen = call("ScreenDisplayed", screenName="Home")
        outcome = self.play(STARTUP, screen, screen,
                            companion={"raise": {"StartupInternal": "unknown", "PostEventInternal": "unknown"}})
        self.assertEqual([failure("unknown", "StartupXX", "StartupInternal")]
                         + [failure("unknown", "PostEventXX", "PostEventInternal")] * 2, warnings(outcome))


class MissingCompanion(SessionTestCase):
    def test_its_absence_is_a_failure_of_every_operation(self):
        screen = call("ScreenDisplayed", screenName="Home")
        outcome = self.play(screen, call("SetUserOptInEx", userHasOptedIn=True), screen, without_companion=True)
        self.assertEqual((0, ""), (outcome.status, outcome.errors))
        not_found = 'The companion library was not found\\nPath: "C:\\Host\\LumeqShim.Managed.dll"'
        self.assertEqual([LogLine("WARNING", "", f"{region} failed with VestoException exception {not_found}")
                          for region in ("PostEventXX", "SetUserOptInXX", "PostEventXX")], warnings(outcome))
        self.assertIn("<UserOptIn>True</UserOptIn>", outcome.text("LumeqLocalSettings.xml"))


class StandIn(SessionTestCase):
    def test_writes_down_every_operation_with_its_arguments(self):
        outcome = self.play(
            call("StartupEx", appName="Scan \"Station\"", whyType=1, howType=0, trackSystemInfo=True,
                 trackPrintQueueInfo=False),
            call("SetLocalSubfolderPathEx", subpath="deep\\er"),
            call("SetUserOptInEx", userHasOptedIn=True),
            call("Pause"),
            call("TrackDiscoveredPrintersEx", discoveredDeviceList=[{"dev_biid": "unknown", "b": "ü", "a": ""}]),
            call("TrackPrintQueueInfoEx"), call("TrackSystemInformationEx"),
            call("FlushEx", timeoutMsec=0), call("FlushEx", timeoutMsec=-1),
            call("GetUserOptInEx"), call("ShutdownEx", timeoutMsec=2147483647))
        self.assertEqual([
            {"operation": "StartupInternal", "appName": "Scan \"Station\"", "howType": 9, "whyType": 0,
             "trackSystemInfo": True, "trackPrintQueueInfo": False},
            {"operation": "LocalSettingsSubfolderInternal", "path": "deep\\er"},
            {"operation": "SetUserOptInInternal", "userHasOptedIn": True},
            {"operation": "SetLocalValueInternal", "key": "OptinBeforePause", "value": "True"},
            {"operation": "SetUserOptInInternal", "userHasOptedIn": False},
            {"operation": "PostDataInternal", "dataType": "sys_printer_discoverylist",
             "data": {"dev_biid": "unknown", "b": "ü", "a": ""}},
            {"operation": "TrackPrintQueueInfoInternal"},
            {"operation": "TrackSystemInformationInternal"},
            {"operation": "FlushInternal", "timeoutMsec": 0},
            {"operation": "FlushInternal", "timeoutMsec": 10000},
            {"operation": "GetUserOptInInternal"},
            {"operation": "SetUserOptInInternal", "userHasOptedIn": True},
            {"operation": "ShutdownInternal", "timeoutMsec": 2147483647},
        ], outcome.companion)
        self.assertIn("<UserOptIn>True</UserOptIn>", outcome.text("deep/er/LumeqLocalSettings.xml"))
        self.assertNotIn("LumeqLocalSettings.xml", outcome.files)

    def test_keeps_what_else_stands_in_the_settings_file(self):
        outcome = self.play(
            call("SetUserOptInEx", userHasOptedIn=True), call("GetUserOptInEx"),
            settings='<LumeqConfig version="4.0" odd="1"><Foreign>kept</Foreign><UserOptIn>False</UserOptIn></LumeqConfig>')
        self.assertEqual({"call": "GetUserOptInEx", "returns": True}, outcome.host[1])
        self.assertEqual('<LumeqConfig version="4.0" odd="1"><Foreign>kept</Foreign><UserOptIn>True</UserOptIn></LumeqConfig>',
                         outcome.text("LumeqLocalSettings.xml").strip())

    def test_saves_texts_of_a_file_in_another_encoding_unchanged(self):
        outcome = self.play(
            *[call("SetUserOptInEx", userHasOptedIn=True)] * 2,
            settings='<?xml version="1.0" encoding="ISO-8859-1"?><LumeqConfig version="4.0"><Foreign>&#233;</Foreign></LumeqConfig>')
        self.assertEqual('<LumeqConfig version="4.0"><Foreign>\u00e9</Foreign><UserOptIn>True</UserOptIn></LumeqConfig>',
                         outcome.text("LumeqLocalSettings.xml").strip())

    def test_answers_from_the_settings_file_whoever_wrote_it(self):
        outcome = self.play(call("GetUserOptInEx"),
                            settings='<LumeqConfig version="4.0"><UserOptIn>TRUE</UserOptIn></LumeqConfig>')
        self.assertEqual([{"call": "GetUserOptInEx", "returns": True}], outcome.host)

    def test_exports_the_eleven_operations(self):
        exports = exports_of(BUILD / "companion" / "LumeqShim.Managed.dll")
        self.assertEqual([
            "FlushInternal", "GetUserOptInInternal", "LocalSettingsSubfolderInternal", "PostDataInternal",
            "PostEventInternal", "SetLocalValueInternal", "SetUserOptInInternal", "ShutdownInternal",
            "StartupInternal", "TrackPrintQueueInfoInternal", "TrackSystemInformationInternal"], exports)


if __name__ == "__main__":
    unittest.main()
