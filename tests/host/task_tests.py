"""Tasks from their first call to their last, as a host sees them: handles, refusals, log lines and records."""

import re
import unittest

from support import LogLine, SessionTestCase, error
from support.tasks import (CONFIG, CONNECT, GUID, INSTALL, NULL_HANDLE, PAIRS, PRINT, SCAN, SEND, Pair, completed,
                          completed_line, completed_record, guids, initiated, initiated_line, initiated_record, masked,
                          refusal, task_records)

NULL_REFUSED = "null taskHandle arg"
RESULT_REFUSED_LATE = ("Task result is not formatted correctly. Must be of form "
                       "success|unknown|(error(_([a-zA-Z][a-zA-Z0-9]+|[0-9]+))?)")

# The exports with a number of pages.
PAGED = (SCAN, PRINT, SEND)

UNDEFINED = 99
# The enumerated arguments in the order of their conversion, with the name that an undefined value is reported by.
CONVERSIONS = (
    (SCAN, (("mimeType", "Scan::MimeType"), ("sourceType", "Scan::SourceType"), ("pageSizeType", "Scan::PageSizeType"),
            ("colorModeType", "Scan::ColorModeType"), ("resolutionType", "Scan::ResolutionType"),
            ("itemType", "Scan::ItemType"), ("shortcutVarianceType", "Scan::ShortcutVarianceType"),
            ("shortcutType", "Scan::ShortcutType"))),
    (PRINT, (("pageSizeType", "Print::PageSizeType"), ("mimeType", "Print::MimeType"), ("itemType", "Print::ItemType"),
             ("subsystemType", "Print::SubsystemType"))),
    (SEND, (("destinationType", "File::DestinationType"), ("mimeType", "File::MimeType"),
            ("shortcutVarianceType", "File::ShortcutVarianceType"), ("shortcutType", "File::ShortcutType"))),
    (CONNECT, (("methodType", "ConnectionMethodType"), ("scenarioType", "ConnectionScenarioType"))),
    (CONFIG, (("settingType", "ConfigurationSettingType"),)),
    (INSTALL, (("installerType", "InstallType"),)),
)


def undefined(arguments) -> dict:
    return {argument: UNDEFINED for argument, _ in arguments}


def handles(outcome) -> list[str]:
    return [line["handle"] for line in outcome.host]


class WholeLife(SessionTestCase):
    def test_every_task_leaves_two_records_and_its_log_lines(self):
        outcome = self.play_to_end(*(step for pair in PAIRS for step in (
            initiated(pair, localContext={"job": "7", "tray": ""}, globalContext="Model 5"), completed(pair), completed(pair))))
        context = {"local": {"job": "7", "tray": ""}, "model": "Model 5"}
        self.assertEqual([its_record for pair in PAIRS
                          for its_record in (initiated_record(pair, **context), completed_record(pair, **context))],
                         task_records(outcome))
        self.assertEqual([line for pair in PAIRS for line in (
            initiated_line(pair, "[2 item(s)]", '"Model 5"'), completed_line(pair), completed_line(pair, NULL_HANDLE),
            refusal(pair, NULL_REFUSED))], masked(outcome.calls))
        # After the end the variable is null, and a second end does no harm.
        self.assertEqual(["set", "null", "null"] * len(PAIRS), handles(outcome))

    def test_both_events_carry_the_same_identifier_and_no_two_tasks_do(self):
        outcome = self.play_to_end(*(initiated(pair, pair.name) for pair in PAIRS), initiated(SCAN, "second"),
                                 *(completed(pair, pair.name) for pair in PAIRS), completed(SCAN, "second"))
        self.assertEqual(14, len(outcome.records))
        opened, closed = guids(outcome)[:7], guids(outcome)[7:]
        self.assertEqual(opened, closed)
        self.assertEqual(7, len(set(opened)))

    def test_host_cannot_set_the_identifier(self):
        outcome = self.play_to_end(*(step for pair in PAIRS for step in (
            initiated(pair, localContext={"_app_event_task_guid": "mine", "_App_event_task_guid": "kept"}), completed(pair))))
        self.assertEqual([{"_app_event_task_guid": GUID, "_App_event_task_guid": "kept"}] * 12,
                         [its["app_event_context"]["context_local"] for its in task_records(outcome)])

    def test_absent_and_empty_local_context_hold_the_identifier_alone(self):
        outcome = self.play_to_end(initiated(CONFIG), completed(CONFIG), initiated(CONFIG, localContext={}), completed(CONFIG))
        self.assertEqual([initiated_record(CONFIG), completed_record(CONFIG)] * 2, task_records(outcome))
        self.assertEqual([initiated_line(CONFIG), completed_line(CONFIG), initiated_line(CONFIG, "[0 item(s)]"),
                          completed_line(CONFIG)], masked(outcome.calls))

    def test_duration_is_the_time_between_the_two_events(self):
        outcome = self.play_to_end(initiated(SCAN), {"sleepMsec": 120}, completed(SCAN))
        first, second = (operation["timestamp"] for operation in outcome.companion)
        self.assertEqual(str(second - first), outcome.records[1]["app_event_details"]["task_duration"])
        self.assertGreaterEqual(second - first, 100)

    def test_line_shows_the_handle_and_not_where_it_is_kept(self):
        outcome = self.play_to_end(initiated(CONFIG, "one"), initiated(CONFIG, "two"), completed(CONFIG, "one", "Error"),
                                 completed(CONFIG, "two"), completed(CONFIG, "one"))
        first, second, third = re.findall(r"taskHandle: 0x([0-9A-F]{16}),", "\n".join(line.message for line in outcome.calls))
        self.assertEqual(first, third)
        self.assertNotEqual(first, second)


class Features(SessionTestCase):
    def test_none_are_counted_as_zero_and_sent_as_an_empty_dictionary(self):
        outcome = self.play_to_end(initiated(SCAN), completed(SCAN, features={}))
        self.assertEqual([initiated_record(SCAN), completed_record(SCAN, details={"scan_acquire_features": {}})],
                         task_records(outcome))
        self.assertEqual([initiated_line(SCAN), completed_line(SCAN, features="0")], masked(outcome.calls))

    def test_each_is_true_or_false_whatever_its_name(self):
        outcome = self.play_to_end(initiated(SCAN), completed(SCAN, features={"x": False, "": True, "schema": False}))
        self.assertEqual({"x": "false", "": "true", "schema": "false"},
                         outcome.records[1]["app_event_details"]["scan_acquire_features"])


class Results(SessionTestCase):
    REFUSED = ("", "Success", "UNKNOWN", "Error", "error_", "error_1a", "error_a-b", "error_a_b", "error ", " success",
               "successful", "error_\u00e4")
    ACCEPTED = ("success", "unknown", "error", "error_12", "error_1", "error_ab", "error_A1", "error_OutOfPaper")

    def test_refused_ones_are_reported_and_leave_the_task_to_be_completed(self):
        for pair in PAIRS:
            with self.subTest(pair.name):
                outcome = self.play_to_end(initiated(pair), *(completed(pair, result=result) for result in self.REFUSED),
                                         completed(pair))
                self.assertEqual([refusal(pair, f'invalid [REQUIRED] taskResult arg: "{result}"') for result in self.REFUSED],
                                 outcome.error_file)
                self.assertEqual(["set"] * (1 + len(self.REFUSED)) + ["null"], handles(outcome))
                self.assertEqual([initiated_record(pair), completed_record(pair)], task_records(outcome))

    def test_accepted_ones_stand_in_the_record(self):
        outcome = self.play_to_end(*(step for pair in PAIRS for result in self.ACCEPTED
                                   for step in (initiated(pair), completed(pair, result=result))))
        self.assertEqual([], outcome.error_file)
        self.assertEqual([its_record for pair in PAIRS for result in self.ACCEPTED
                          for its_record in (initiated_record(pair), completed_record(pair, result))], task_records(outcome))

    def test_single_letter_passes_the_check_and_not_the_event_and_the_same_task_takes_two(self):
        for pair in PAIRS:
            with self.subTest(pair.name):
                outcome = self.play_to_end(initiated(pair), completed(pair, result="error_a"), completed(pair, result="error_ab"))
                self.assertEqual([initiated_line(pair), completed_line(pair, result="error_a"),
                                  refusal(pair, RESULT_REFUSED_LATE, title="Exception"),
                                  completed_line(pair, result="error_ab")], masked(outcome.calls))
                self.assertEqual(["set", "set", "null"], handles(outcome))
                self.assertEqual([initiated_record(pair), completed_record(pair, "error_ab")], task_records(outcome))
                self.assertEqual(1, len(set(guids(outcome))))


class OtherChecks(SessionTestCase):
    def assert_refused(self, pair: Pair, changes: list[dict], details: list[str]):
        """Each change costs its own line, and the task completes afterwards."""
        outcome = self.play_to_end(initiated(pair), *(completed(pair, **change) for change in changes), completed(pair))
        self.assertEqual([refusal(pair, detail) for detail in details], outcome.error_file)
        self.assertEqual(["set"] * (1 + len(changes)) + ["null"], handles(outcome))
        self.assertEqual([initiated_record(pair), completed_record(pair)], task_records(outcome))

    def assert_accepted(self, pair: Pair, argument: str, key: str, values: list):
        outcome = self.play_to_end(*(step for value in values for step in (initiated(pair), completed(pair, **{argument: value}))))
        self.assertEqual([], outcome.error_file)
        self.assertEqual([its_record for value in values for its_record in (
            initiated_record(pair), completed_record(pair, details={key: str(value)}))], task_records(outcome))

    def test_negative_pages_are_refused_with_their_number(self):
        for pair in PAGED:
            with self.subTest(pair.name):
                self.assert_refused(pair, [{"pages": -1}, {"pages": -2147483648}],
                                    ["invalid pages arg: -1", "invalid pages arg: -2147483648"])

    def test_no_pages_and_very_many_are_accepted(self):
        for pair, key in zip(PAGED, ("scan_acquire_pages", "print_basic_pages", "scan_sendto_pages")):
            with self.subTest(pair.name):
                self.assert_accepted(pair, "pages", key, [0, 2147483647])

    def test_paper_size_needs_a_character_and_has_no_blank_at_its_ends(self):
        sizes = ["", " ", " A4", "A4 ", "A\t4", "A\u00854"]
        self.assert_refused(PRINT, [{"paperSize": size} for size in sizes],
                            [f'invalid [REQUIRED] paperSize arg: "{size}"' for size in sizes])
        self.assert_accepted(PRINT, "paperSize", "print_basic_papersize", ["A", "4 x 6 in", "\u00a0DIN \u20ac"])

    def test_install_name_is_a_file_name(self):
        names = ["", *(f"a{character}b" for character in '"*/:<>?\\|\t\x7f\u009f')]
        self.assert_refused(INSTALL, [{"name": name} for name in names],
                            [f'invalid [REQUIRED] name arg: "{name}"' for name in names])
        self.assert_accepted(INSTALL, "name", "install_name", ["a", " ", "Ünï-tool (2).msi"])

    def test_install_version_has_three_numbers_or_four(self):
        versions = ["", "1", "1.2", "1.2.", "1.2.3.", "1.2.3.4.5", "v1.2.3", "1.2.x", "1,2,3", " 1.2.3"]
        self.assert_refused(INSTALL, [{"version": version} for version in versions],
                            [f'invalid [REQUIRED] version arg: "{version}"' for version in versions])
        self.assert_accepted(INSTALL, "version", "install_version", ["1.2.3", "1.2.3.4", "0010.0.99999999999"])

    def test_every_check_of_a_call_reports_in_order_and_no_conversion_is_reached(self):
        bad = {"pages": -7, "paperSize": "", "name": "", "version": "1.2"}
        details = {
            SCAN.name: ["invalid pages arg: -7"],
            PRINT.name: ['invalid [REQUIRED] paperSize arg: ""', "invalid pages arg: -7"],
            SEND.name: ["invalid pages arg: -7"],
            CONNECT.name: [],
            CONFIG.name: [],
            INSTALL.name: ['invalid [REQUIRED] name arg: ""', 'invalid [REQUIRED] version arg: "1.2"'],
        }
        all_bad = [completed(pair, "never", "bad", **undefined(arguments),
                             **{name: value for name, value in bad.items() if name in pair.good})
                   for pair, arguments in CONVERSIONS]
        outcome = self.play_to_end(*all_bad)
        self.assertEqual([refusal(pair, detail) for pair in PAIRS for detail in (
            NULL_REFUSED, 'invalid [REQUIRED] taskResult arg: "bad"', *details[pair.name])], outcome.error_file)
        self.assertEqual([], outcome.companion)


class NullHandles(SessionTestCase):
    def test_undefined_value_is_not_reached(self):
        outcome = self.play_to_end(*(completed(pair, "never", **undefined(arguments)) for pair, arguments in CONVERSIONS))
        self.assertEqual([refusal(pair, NULL_REFUSED) for pair in PAIRS], outcome.error_file)
        self.assertEqual(["null"] * 6, handles(outcome))

    def test_bad_result_is_reported_as_well(self):
        outcome = self.play_to_end(*(completed(pair, "never", "done") for pair in PAIRS))
        self.assertEqual([line for pair in PAIRS for line in (
            completed_line(pair, NULL_HANDLE, "done"), refusal(pair, NULL_REFUSED),
            refusal(pair, 'invalid [REQUIRED] taskResult arg: "done"'))], outcome.calls)


class Conversions(SessionTestCase):
    def test_first_undefined_value_of_the_order_is_reported_and_the_task_stays(self):
        for pair, order in CONVERSIONS:
            with self.subTest(pair.name):
                # From all undefined to none: each call has one more that is good.
                outcome = self.play_to_end(initiated(pair), *(completed(pair, **undefined(order[first:]))
                                                            for first in range(len(order) + 1)))
                self.assertEqual([refusal(pair, f"[Undefined {name}: 99]", title="Exception") for _, name in order],
                                 outcome.error_file)
                self.assertEqual(["set"] * (1 + len(order)) + ["null"], handles(outcome))
                self.assertEqual([initiated_record(pair), completed_record(pair)], task_records(outcome))

    def test_undefined_value_hides_a_result_that_only_the_event_refuses(self):
        outcome = self.play_to_end(*(step for pair, order in CONVERSIONS for step in (
            initiated(pair), completed(pair, result="error_a", **undefined(order[-1:])))))
        self.assertEqual([refusal(pair, f"[Undefined {order[-1][1]}: 99]", title="Exception") for pair, order in CONVERSIONS],
                         outcome.error_file)


class NoTask(SessionTestCase):
    def test_bad_global_context_gives_none(self):
        for value, logged in (("", ""), ("line\nfeed", "line\\nfeed"), ({"repeat": "x", "times": 129}, "x" * 129)):
            with self.subTest(logged):
                outcome = self.play_to_end(*(initiated(pair, globalContext=value) for pair in PAIRS))
                self.assertEqual([line for pair in PAIRS for line in (
                    initiated_line(pair, model=f'"{logged}"'),
                    error(pair.name + "Initiated", f'invalid [optional] globalContext arg: "{logged}"'))], outcome.calls)
                self.assertEqual(["null"] * 6, handles(outcome))
                self.assertEqual([], outcome.companion)

    def test_disabled_tracking_gives_none_and_says_nothing_of_it(self):
        outcome = self.play_to_end(*(step for pair in PAIRS for step in (initiated(pair), completed(pair),
                                                                       completed(pair, result="bad"))), disabled=1)
        self.assertEqual(["null"] * 18, handles(outcome))
        self.assertEqual({"host.jsonl"}, set(outcome.files))


class Threads(SessionTestCase):
    def test_task_is_opened_and_completed_by_different_ones(self):
        outcome = self.play_to_end({"threads": [[initiated(pair, pair.name)] for pair in PAIRS]},
                                 {"threads": [[completed(pair, pair.name)] for pair in PAIRS]})
        self.assertEqual(["set"] * 6 + ["null"] * 6, handles(outcome))
        self.assertEqual([], outcome.error_file)

        def key(its_record: dict) -> str:
            return its_record["app_event_object_label"]

        ids = guids(outcome)
        self.assertEqual((6, sorted(ids[:6])), (len(set(ids)), sorted(ids[6:])))
        records = task_records(outcome)
        self.assertEqual(sorted(map(initiated_record, PAIRS), key=key), sorted(records[:6], key=key))
        self.assertEqual(sorted(map(completed_record, PAIRS), key=key), sorted(records[6:], key=key))

    def test_only_one_of_many_completes_a_task(self):
        outcome = self.play_to_end(initiated(CONFIG), {"threads": [[completed(CONFIG)]] * 8})
        self.assertEqual([initiated_record(CONFIG), completed_record(CONFIG)], task_records(outcome))
        self.assertEqual([refusal(CONFIG, NULL_REFUSED)] * 7, outcome.error_file)


class BasicRoad(SessionTestCase):
    def test_handles_are_given_and_taken_although_no_event_goes_out(self):
        outcome = self.play_to_end(*(step for pair in PAIRS for step in (
            initiated(pair), completed(pair, result="error_a"), completed(pair), completed(pair))), road="basic")
        self.assertEqual(["set", "set", "null", "null"] * 6, handles(outcome))
        self.assertEqual([line for pair in PAIRS for line in (
            initiated_line(pair), completed_line(pair, result="error_a"),
            refusal(pair, RESULT_REFUSED_LATE, title="Exception"), completed_line(pair),
            completed_line(pair, NULL_HANDLE), refusal(pair, NULL_REFUSED))], masked(outcome.calls))
        self.assertEqual({"host.jsonl", "Lumeq.Log.txt", "Lumeq.Error.txt"}, set(outcome.files))


class FailingCompanion(SessionTestCase):
    def test_handles_are_given_and_taken_although_no_event_arrives(self):
        outcome = self.play_to_end(*(step for pair in PAIRS for step in (initiated(pair), completed(pair))),
                                 companion={"raise": {"PostEventInternal": "std"}}, log="warning")
        self.assertEqual(["set", "null"] * 6, handles(outcome))
        self.assertEqual([LogLine("WARNING", "", "PostEventXX exception with PostEventInternal was told to fail")] * 12,
                         outcome.log)


if __name__ == "__main__":
    unittest.main()
