"""The log lines of the session's life cycle, whole, and what its refused calls leave undone."""

import unittest

from support.life_cycle import (BOTH_ROADS, CRASH, OPTED_IN, STARTED, of_the_exports, settings, start,
                             start_line)
from support import LogLine, SessionTestCase, call, error, trace

# Refused names, with what the log shows of them.
BAD_NAMES = [("", ""), (" App", " App"), ("App ", "App "), ("A\u0085pp", "A\u0085pp"), ("A\npp", "A\\npp")]

# Calls that are not refused, with their lines.
SESSION = [
    (start("Scan Station", system=True), [start_line("Scan Station", system=1)]),
    (start("App", queue=True), [start_line("App", queue=1)]),
    (call("FlushEx", timeoutMsec=0), [trace("FlushEx", "timeoutMsec: 0")]),
    (call("FlushEx", timeoutMsec=2147483647), [trace("FlushEx", "timeoutMsec: 2147483647")]),
    (call("SetUserOptInEx", userHasOptedIn=True), [trace("SetUserOptInEx", "userHasOptedIn: 1")]),
    (call("GetUserOptInEx"), [trace("GetUserOptInEx"), trace("GetUserOptInEx", "...returns: true")]),
    (call("Pause"), [trace("Pause")]),
    (call("GetUserOptInEx"), [trace("GetUserOptInEx"), trace("GetUserOptInEx", "...returns: false")]),
    (call("Resume"), [trace("Resume")]),
    (call("GetUserOptInEx"), [trace("GetUserOptInEx"), trace("GetUserOptInEx", "...returns: true")]),
    (call("TrackPrintQueueInfoEx"), [trace("TrackPrintQueueInfoEx")]),
    (call("TrackSystemInformationEx"), [trace("TrackSystemInformationEx")]),
    (call("SetLocalSubfolderPathEx", subpath="Brand\\Line"), [trace("SetLocalSubfolderPathEx", 'subpath: "Brand\\Line"')]),
    (call("SetUserOptInEx", userHasOptedIn=False), [trace("SetUserOptInEx", "userHasOptedIn: 0")]),
    (call("GetUserOptInEx"), [trace("GetUserOptInEx"), trace("GetUserOptInEx", "...returns: false")]),
    (call("ShutdownEx", timeoutMsec=3000), [trace("ShutdownEx", "timeoutMsec: 3000")]),
]


class Lines(SessionTestCase):
    def test_every_call_of_a_session_stands_in_the_log(self):
        self.assertEqual(10, len({step["call"] for step, _ in SESSION}))
        expected = [line for _, lines in SESSION for line in lines]
        outcome = self.play_to_end(*(step for step, _ in SESSION))
        self.assertEqual(expected, outcome.calls)
        outcome = self.play_to_end(*(step for step, _ in SESSION), road="basic")
        self.assertEqual(expected, of_the_exports(outcome))

    def test_failed_read_of_the_opt_in_returns_false_and_says_so(self):
        outcome = self.play_to_end(call("GetUserOptInEx"), companion={"raise": {"GetUserOptInInternal": "com"}},
                                   settings=settings(UserOptIn="True"))
        self.assertEqual([{"call": "GetUserOptInEx", "returns": False}], outcome.host)
        self.assertEqual((trace("GetUserOptInEx"), trace("GetUserOptInEx", "...returns: false")),
                         (outcome.calls[0], outcome.calls[-1]))

    def test_global_context(self):
        outcome = self.play_to_end(call("SetGlobalContextEx", globalContext="Model 5"),
                                   call("SetGlobalContextEx", globalContext="a \"b\""))
        self.assertEqual([trace("SetGlobalContextEx", 'globalContext: "Model 5"'),
                          trace("SetGlobalContextEx", 'globalContext: "a "b""')], outcome.calls)


class Timeouts(SessionTestCase):
    def test_negative_one_is_reported_and_ten_seconds_are_taken(self):
        for export, operation in (("FlushEx", "FlushInternal"), ("ShutdownEx", "ShutdownInternal")):
            for road in BOTH_ROADS:
                with self.subTest(export, road=road):
                    outcome = self.play_to_end(call(export, timeoutMsec=-1), call(export, timeoutMsec=0), road=road)
                    self.assertEqual([trace(export, "timeoutMsec: -1"), error(export, "invalid timeoutMsec arg: -1"),
                                      trace(export, "timeoutMsec: 0")], outcome.calls)
                    expected = [{"operation": operation, "timeoutMsec": taken} for taken in (10000, 0)]
                    self.assertEqual(expected if road == "managed" else [], outcome.companion)


class Starts(SessionTestCase):
    def test_refused_name_starts_nothing(self):
        outcome = self.play_to_end(*(start(name) for name, _ in BAD_NAMES))
        self.assertEqual([line for _, shown in BAD_NAMES for line in (
            start_line(shown), error("StartupEx", f'invalid [REQUIRED] appName arg: "{shown}"'))], outcome.calls)
        self.assertEqual([], outcome.companion)

    def test_refused_name_is_reported_before_an_undefined_kind_of_start_which_is_not_reached(self):
        outcome = self.play_to_end({**start(""), "whyType": 99, "howType": 99})
        self.assertEqual([error("StartupEx", 'invalid [REQUIRED] appName arg: ""')], outcome.error_file)

    def assert_mended(self, name: str, before: str, lines: list[LogLine], operations: list[dict]):
        for road in BOTH_ROADS:
            with self.subTest(name, before=before, road=road):
                outcome = self.play_to_end(start(name), settings=settings(UserOptIn="False", OptinBeforePause=before), road=road)
                self.assertEqual(lines, of_the_exports(outcome))
                after = outcome.text("LumeqLocalSettings.xml")
                self.assertIn(f"<UserOptIn>{before}</UserOptIn>", after)
                self.assertNotIn("OptinBeforePause", after)
                self.assertEqual(operations if road == "managed" else [], outcome.companion)

    def test_pause_left_by_a_crash_is_mended_before_the_start(self):
        self.assert_mended("App", "True", [start_line("App"), CRASH], [OPTED_IN, STARTED])

    def test_pause_left_without_an_opt_in_is_mended_and_opts_nobody_in(self):
        self.assert_mended("App", "False", [start_line("App"), CRASH], [STARTED])

    def test_pause_left_by_a_crash_is_mended_though_a_refused_name_starts_nothing(self):
        self.assert_mended("", "True", [start_line(""), error("StartupEx", 'invalid [REQUIRED] appName arg: ""'), CRASH],
                           [OPTED_IN])


class Subfolders(SessionTestCase):
    REFUSED = ["", "\\", "a\\\\b", "\\\\a", "a\\\\", *(f"a{character}b" for character in '"*/:<>?|\t\x7f\u009f')]

    def test_refused_path_is_reported_and_leaves_the_earlier_one(self):
        for road in BOTH_ROADS:
            with self.subTest(road):
                outcome = self.play_to_end(
                    call("SetLocalSubfolderPathEx", subpath="Earlier"),
                    *(call("SetLocalSubfolderPathEx", subpath=path) for path in self.REFUSED),
                    call("SetUserOptInEx", userHasOptedIn=True), road=road)
                self.assertEqual([
                    trace("SetLocalSubfolderPathEx", 'subpath: "Earlier"'),
                    *(line for path in self.REFUSED for line in (
                        trace("SetLocalSubfolderPathEx", f'subpath: "{path}"'),
                        error("SetLocalSubfolderPathEx", f'invalid [REQUIRED] subpath arg: "{path}"'))),
                    trace("SetUserOptInEx", "userHasOptedIn: 1")], outcome.calls)
                self.assertEqual(["Earlier/LumeqLocalSettings.xml"],
                                 [name for name in outcome.files if name.endswith("LumeqLocalSettings.xml")])
                if road == "managed":
                    self.assertEqual([{"operation": "LocalSettingsSubfolderInternal", "path": "Earlier"}, OPTED_IN],
                                     outcome.companion)


if __name__ == "__main__":
    unittest.main()
