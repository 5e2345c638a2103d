"""The life cycle of a session: opt-in, pause and resume on both roads, from settings written by hand."""

import unittest

from support.life_cycle import (BOTH_ROADS, CRASH, PAUSED_IN, PAUSED_OUT, RUNNING_IN, RUNNING_OUT, Flags, flags_of,
                             settings_of)
from support import SessionTestCase, call, error

STARTUP = call("StartupEx", appName="App", whyType=0, howType=0, trackSystemInfo=False, trackPrintQueueInfo=False)


class PauseStates(SessionTestCase):
    def assert_moves(self, before: Flags, steps: list[dict], after: Flags, errors=()):
        for road in BOTH_ROADS:
            with self.subTest(road):
                outcome = self.play(*steps, settings=settings_of(before), road=road)
                self.assertEqual((0, ""), (outcome.status, outcome.errors))
                self.assertEqual(after, flags_of(outcome.text("LumeqLocalSettings.xml")))
                self.assertEqual(list(errors), outcome.error_file)

    def test_pause_while_running_remembers_the_choice(self):
        self.assert_moves(RUNNING_IN, [call("Pause")], PAUSED_IN)
        self.assert_moves(RUNNING_OUT, [call("Pause")], PAUSED_OUT)

    def test_pause_while_paused_loses_the_choice(self):
        self.assert_moves(PAUSED_IN, [call("Pause")], PAUSED_OUT)
        self.assert_moves(RUNNING_IN, [call("Pause"), call("Pause"), call("Resume")], RUNNING_OUT)

    def test_resume_while_paused_restores_the_choice(self):
        self.assert_moves(PAUSED_IN, [call("Resume")], RUNNING_IN)
        self.assert_moves(PAUSED_OUT, [call("Resume")], RUNNING_OUT)

    def test_resume_while_running_changes_nothing(self):
        self.assert_moves(RUNNING_IN, [call("Resume")], RUNNING_IN)

    def test_choice_during_a_pause_takes_effect_at_once_and_is_kept(self):
        self.assert_moves(PAUSED_OUT, [call("SetUserOptInEx", userHasOptedIn=True)], Flags("True", "True"))
        self.assert_moves(PAUSED_OUT, [call("SetUserOptInEx", userHasOptedIn=True), call("Resume")], RUNNING_IN)
        self.assert_moves(PAUSED_IN, [call("SetUserOptInEx", userHasOptedIn=False), call("Resume")], RUNNING_OUT)

    def test_choice_while_running_marks_no_pause(self):
        self.assert_moves(RUNNING_OUT, [call("SetUserOptInEx", userHasOptedIn=True)], RUNNING_IN)

    def test_shutdown_ends_a_pause(self):
        self.assert_moves(PAUSED_IN, [call("ShutdownEx", timeoutMsec=0)], RUNNING_IN)
        self.assert_moves(PAUSED_OUT, [call("ShutdownEx", timeoutMsec=0)], RUNNING_OUT)

    def test_startup_mends_a_pause_that_a_crash_left(self):
        self.assert_moves(PAUSED_OUT, [STARTUP], RUNNING_OUT, [CRASH])

    def test_startup_mends_it_with_a_refused_name_as_well(self):
        self.assert_moves(PAUSED_IN, [{**STARTUP, "appName": ""}], RUNNING_IN,
                          [error("StartupEx", 'invalid [REQUIRED] appName arg: ""'), CRASH])

    def test_value_that_is_no_flag_is_no_pause(self):
        self.assert_moves(Flags("False", "maybe"), [STARTUP], Flags("False", "maybe"))

    def test_flag_counts_in_any_case(self):
        self.assert_moves(Flags("False", "tRUE"), [{**STARTUP, "appName": " "}], RUNNING_IN,
                          [error("StartupEx", 'invalid [REQUIRED] appName arg: " "'), CRASH])

    def test_no_settings_file_comes_from_a_resume_without_a_pause(self):
        for road in BOTH_ROADS:
            with self.subTest(road):
                self.assertNotIn("LumeqLocalSettings.xml", self.play(call("Resume"), road=road).files)


class Answers(SessionTestCase):
    def test_opt_in_during_a_pause_is_reported_while_the_pause_is_still_marked(self):
        for road in BOTH_ROADS:
            with self.subTest(road):
                outcome = self.play(call("Pause"), call("GetUserOptInEx"), call("SetUserOptInEx", userHasOptedIn=True),
                                    call("GetUserOptInEx"), call("Resume"), call("GetUserOptInEx"),
                                    settings=settings_of(RUNNING_IN), road=road)
                self.assertEqual([False, True, True],
                                 [line["returns"] for line in outcome.host if "returns" in line])

    def test_subfolder_holds_for_both_stores(self):
        for road in BOTH_ROADS:
            with self.subTest(road):
                outcome = self.play(call("SetLocalSubfolderPathEx", subpath="Brand\\Line"),
                                    call("SetUserOptInEx", userHasOptedIn=True), call("Pause"),
                                    call("SetLocalSubfolderPathEx", subpath="a:b"), call("Resume"), road=road)
                self.assertEqual(RUNNING_IN, flags_of(outcome.text("Brand/Line/LumeqLocalSettings.xml")))
                self.assertNotIn("LumeqLocalSettings.xml", outcome.files)
                self.assertEqual([error("SetLocalSubfolderPathEx", 'invalid [REQUIRED] subpath arg: "a:b"')],
                                 outcome.error_file)


class Starts(SessionTestCase):
    def test_undefined_kind_of_start_starts_nothing(self):
        outcome = self.play({**STARTUP, "whyType": 8}, {**STARTUP, "howType": -1}, {**STARTUP, "whyType": 8, "howType": 10})
        self.assertEqual([], outcome.companion)
        self.assertEqual([error("StartupEx", "[Undefined WhyType: 8]", title="Exception"),
                          error("StartupEx", "[Undefined HowType: -1]", title="Exception"),
                          error("StartupEx", "[Undefined WhyType: 8]", title="Exception")], outcome.error_file)

    def test_every_start_reaches_the_companion_in_order(self):
        outcome = self.play(STARTUP, {**STARTUP, "whyType": 1, "howType": 1})
        self.assertEqual([(9, 4), (0, 0)], [(line["howType"], line["whyType"]) for line in outcome.companion])

    def test_negative_timeout_is_reported_and_replaced(self):
        outcome = self.play(call("FlushEx", timeoutMsec=-1), call("FlushEx", timeoutMsec=0),
                            call("ShutdownEx", timeoutMsec=-2147483648))
        self.assertEqual([("FlushInternal", 10000), ("FlushInternal", 0), ("ShutdownInternal", 10000)],
                         [(line["operation"], line["timeoutMsec"]) for line in outcome.companion])
        self.assertEqual([error("FlushEx", "invalid timeoutMsec arg: -1"),
                          error("ShutdownEx", "invalid timeoutMsec arg: -2147483648")], outcome.error_file)

    def test_nothing_of_it_leaves_a_trace_on_the_basic_road_but_the_log(self):
        outcome = self.play(call("FlushEx", timeoutMsec=5), call("ShutdownEx", timeoutMsec=5),
                            call("TrackPrintQueueInfoEx"), call("TrackSystemInformationEx"),
                            call("ScreenDisplayed", screenName="Home"), road="basic")
        self.assertEqual({"host.jsonl", "Lumeq.Log.txt"}, set(outcome.files))


if __name__ == "__main__":
    unittest.main()
