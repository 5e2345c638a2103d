"""lumeq view: which calls the page shows, and what came of each."""

import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import call  # noqa: E402
from viewed import ViewTestCase, event, log_line, refusal  # noqa: E402

HOME = {"screenName": "Home", "controlName": "ok"}
TRACE_OF_HOME = 'flow: (null), screenPath: (null), screenName: "{}", mode: (null), controName: "ok", ' \
                'localContext: (null), globalContext: (null)'
BEGIN = call("DeviceConfigInitiated", handle="t")
END = call("DeviceConfigCompleted", taskHandle="t", taskResult="success", settingType=1)


def click(screen: str = "Home", **more) -> dict:
    return call("ButtonClicked", screenName=screen, controlName="ok", **more)


def click_line(screen: str = "Home", **where) -> str:
    return log_line(TRACE_OF_HOME.format(screen), "ButtonClicked", **where)


class Session(ViewTestCase):
    def test_call_has_its_arguments_its_record_and_its_log_lines(self):
        folder = self.write_run(session=[click(localContext={"a": "b"}), click("Other")],
                                companion=[event("clicked", "button", "/Home#ok", a="b"),
                                           event("clicked", "button", "/Other#ok")],
                                log=[click_line(second=1.5), click_line("Other", second=1.75)])
        page = self.page(folder)
        self.assertEqual([("call-1", "1", "0.000", 'ButtonClicked screenName "Home", controlName "ok", localContext {a: "b"}',
                           ["recorded clicked button /Home#ok"]),
                          ("call-2", "2", "0.250", 'ButtonClicked screenName "Other", controlName "ok"',
                           ["recorded clicked button /Other#ok"])],
                         [(row.id, row.number, row.second, row.call, row.outcomes) for row in page.rows])
        first, second = page.details()
        self.assertEqual([["screenName", '"Home"'], ["controlName", '"ok"'], ["localContext", '{a: "b"}']], first["arguments"])
        self.assertEqual({"a": "b"}, first["companion"][0]["record"]["app_event_context"]["context_local"])
        self.assertEqual([["TRACE", click_line("Other", second=1.75)]], second["log"])

    def test_refused_call_has_the_linters_words(self):
        (its,) = self.page(self.write("calls.jsonl", click(mode="dark__v2"))).details()
        self.assertEqual([{"argument": "mode", "layer": "export", "message": 'mode "dark__v2"', "text": "dark__v2", "at": 5,
                           "words": "Letters A to Z and a to z and digits, with single underscores between them.",
                           "nearest": "dark_v2"}], its["reasons"])
        self.assertEqual([("ButtonClicked", 'refused mode "dark__v2" (nearest: "dark_v2")')],
                         self.outcomes(self.folder / "calls.jsonl"))

    def test_place_of_an_error_counts_what_is_shown(self):
        (its,) = self.page(self.write("calls.jsonl", click(globalContext="a\tb\u0085"))).details()
        self.assertEqual(("a\\tb\\u0085", 1), (its["reasons"][0]["text"], its["reasons"][0]["at"]))

    def test_each_kind_of_outcome(self):
        session = [call("GetUserOptInEx"), call("ToString_Internal", enumValue=2), call("SetGlobalContextEx", globalContext="m"),
                   call("Pause"), call("Resume"), call("ShutdownEx", timeoutMsec=1),
                   call("TrackDiscoveredPrintersEx", discoveredDeviceList=[{"dev_biid": "unknown"}, {}, {"dev_biid": "unknown"}]),
                   call("UrlLaunchedEx", url="http://a/b?c"), {"unload": True}, click()]
        def optin(value: bool) -> dict:
            return {"operation": "SetUserOptInInternal", "userHasOptedIn": value}
        printer = {"operation": "PostDataInternal", "dataType": "d", "data": {"dev_biid": "unknown"}}
        pause = [{"operation": "SetLocalValueInternal", "key": "OptinBeforePause", "value": "True"}, optin(False)]
        folder = self.write_run(
            session=session,
            companion=[{"operation": "GetUserOptInInternal"}, *pause, optin(True), {"operation": "ShutdownInternal"}, printer, printer,
                       event("launched", "url", "http://a/b")],
            host=[{"call": "GetUserOptInEx", "returns": False},
                  {"call": "ToString_Internal", "returns": {"result": 0, "text": "usb"}}])
        self.assertEqual(
            [("GetUserOptInEx", "accepted returns false"), ("ToString_Internal", 'accepted returns "usb"'),
             ("SetGlobalContextEx", "accepted "),
             ("Pause", "accepted companion library: SetLocalValue, SetUserOptIn"),
             ("Resume", "accepted companion library: SetUserOptIn"), ("ShutdownEx", "accepted companion library: Shutdown"),
             ("TrackDiscoveredPrintersEx", "recorded 2 printers"), ("UrlLaunchedEx", "recorded launched url http://a/b"),
             ("ButtonClicked", "not made the library is not loaded")], self.outcomes(folder))

    def test_end_of_a_pause_is_told_from_the_next_choice(self):
        def operation(name: str, **more) -> dict:
            return {"operation": f"{name}Internal", **more}
        choice = call("SetUserOptInEx", userHasOptedIn=True)
        for opted_in, session in (("False", [call("Resume"), choice]), ("True", [call("Resume")]), ("False", [choice, call("Resume")])):
            operations = [operation("SetLocalValue", value=opted_in), operation("SetUserOptIn", userHasOptedIn=False),
                          operation("SetUserOptIn", userHasOptedIn=True)]
            if session[0] is choice:
                operations.append(operation("SetUserOptIn", userHasOptedIn=True))
            folder = self.write_run(session=[call("Pause"), *session], companion=operations)
            with self.subTest(f"{opted_in} {[step['call'] for step in session]}"):
                given = {name: outcome for name, outcome in self.outcomes(folder)}
                self.assertEqual(opted_in == "True" or session[0] is choice, "SetUserOptIn" in given["Resume"])
                self.assertTrue("SetUserOptIn" in given.get("SetUserOptInEx", "SetUserOptIn"))

    def test_task_that_is_completed_as_another(self):
        folder = self.write_run(session=[call("ScanAcquireInitiated", handle="t"), END], companion=[
            event("initiated", "task", "task_scan_acquire"), event("completed", "task", "task_scan_acquire", {"schema": "app_event_task_device_config/1.0.0"})])
        self.assertEqual(["recorded initiated task_scan_acquire", "recorded completed task_scan_acquire"],
                         [outcome for _, outcome in self.outcomes(folder)])

    def test_call_that_threw(self):
        folder = self.write_run(session=[click()], host=[{"call": "ButtonClicked", "error": "it threw"}])
        self.assertEqual([("ButtonClicked", "failed it threw")], self.outcomes(folder))

    def test_lost_log_line_leaves_the_other_calls_theirs(self):
        folder = self.write_run(session=[click("A"), click("B"), click("C")], log=[click_line("A"), click_line("C")])
        self.assertEqual([[["TRACE", click_line("A")]], None, [["TRACE", click_line("C")]]],
                         [its.get("log") for its in self.page(folder).details()])

    def test_cut_log_line_is_paired_if_nothing_is_lost(self):
        cut = click_line("B")[:-40]
        for names, is_paired in (("AB", True), ("ABC", False)):
            folder = self.write_run(session=[click(name) for name in names], log=[click_line("A"), cut])
            self.assertEqual([["TRACE", cut]] if is_paired else None, self.page(folder).details()[1].get("log"))

    def test_refused_call_takes_no_record(self):
        folder = self.write_run(session=[click(mode=""), click()], companion=[event("clicked", "button", "/Home#ok")])
        self.assertEqual([("ButtonClicked", 'refused mode ""'), ("ButtonClicked", "recorded clicked button /Home#ok")],
                         self.outcomes(folder))

    def test_calls_of_threads_are_in_the_order_of_the_log(self):
        folder = self.write_run(session=[{"threads": [[click("A"), click("B")], [click("C")]]}],
                                log=[click_line("C", thread="28000000", second=1), click_line("A", second=2),
                                     click_line("B", second=3)],
                                companion=[event("clicked", "button", f"/{name}#ok") for name in "CAB"])
        self.assertEqual([f"recorded clicked button /{name}#ok" for name in "CAB"],
                         [outcome for _, outcome in self.outcomes(folder)])

    def test_lines_of_the_posting_worker_belong_to_the_call_that_waits_for_it(self):
        start = call("StartupEx", appName="A", whyType=1, howType=1, trackSystemInfo=False, trackPrintQueueInfo=False)
        post = log_line(" ->HTTP POST: /x", severity="DATA", thread="11000000")
        folder = self.write_run(session=[start, call("Pause")], log=[
            log_line('appName: "A", whyType: start_app', "StartupEx"), post, log_line("", "Pause")])
        page = self.page(folder)
        self.assertEqual(["DATA"], [severity for severity, _ in page.details()[0]["log"][1:]])
        self.assertEqual("accepted sends the message about the machine", page.rows[0].outcomes[0])

    def test_failure_that_the_linter_cannot_know(self):
        folder = self.write_run(session=[click()], log=[click_line(), refusal("ButtonClicked", "bad alloc", "Exception")])
        self.assertEqual([("ButtonClicked", "refused bad alloc")], self.outcomes(folder))
        self.assertIn("something else failed", str(self.page(folder).details()[0]["remarks"]))

    def test_tasks_with_their_durations(self):
        details = {"schema": "app_event_task_device_config/1.0.0", "task_result": "success", "task_duration": "412"}
        folder = self.write_run(session=[BEGIN, END, BEGIN], companion=[
            event("initiated", "task", "task_device_config"), event("completed", "task", "task_device_config", details)])
        page = self.page(folder)
        self.assertEqual("recorded completed task_device_config: success, 412 ms", page.rows[1].outcomes[0])
        self.assertIn('DeviceConfig1 \u2013 2success412 ms', page.text)
        self.assertIn("DeviceConfig3never completed", page.text)

    def test_refusals_are_counted_by_reason(self):
        text = self.page(self.write("calls.jsonl", click(mode=""), click(), click(mode="-"), click(flow="-"))).text
        self.assertIn("2mode: Letters A to Z and a to z and digits, with single underscores between them.export1", text)
        self.assertIn("4 calls1 accepted3 refused", text)

    def test_warnings_stand_at_their_call(self):
        remarks = self.page(self.write("calls.jsonl", click(), BEGIN)).details()
        self.assertEqual([["comes before StartupEx"], ['the task in "t" is never completed']],
                         [its.get("remarks") for its in remarks])

    def test_what_belongs_to_no_call_is_kept(self):
        folder = self.write_run(session=[click()], log=[log_line("Logger: Log='on'"), log_line("", "Pause")],
                                companion=[{"operation": "FlushInternal"}])
        text = self.page(folder).text
        self.assertIn("2 log lines of no call", text)
        self.assertIn("1 operation of the companion library of no known call", text)

    def test_half_a_line_of_a_killed_host_is_left_out(self):
        folder = self.write_run(session=[click()], companion=['{"operation": "PostEv'], host=['{"call": "Bu'], log=["2026-11"])
        self.assertEqual([("ButtonClicked", "accepted ")], self.outcomes(folder))


class Log(ViewTestCase):
    def log(self, *lines: str) -> Path:
        return self.write("Lumeq.Log.txt", *lines)

    def test_calls_and_their_arguments(self):
        path = self.log(log_line("Logger: Log='on'"), click_line(second=1),
                        log_line('taskResult: "a", installerType: msi, name: "n, version: 1", version: \'"2.0"\'',
                                 "SoftwareInstallCompleted", second=2),
                        log_line("", "GetUserOptInEx", second=2.5), log_line("...returns: true", "GetUserOptInEx", second=2.6))
        page = self.page(path)
        self.assertEqual([("0.000", 'ButtonClicked screenName "Home", controlName "ok"', "accepted "),
                          ("1.000", 'SoftwareInstallCompleted taskResult "a", installerType msi, name "n, version: 1", '
                                    'version \'"2.0"\'', "accepted "),
                          ("1.500", "GetUserOptInEx ", "accepted returns: true")],
                         [(row.second, row.call, row.outcomes[0]) for row in page.rows])
        self.assertIn("3 calls in 1.60 s from 2026-11-22 10:04:01 UTC.", page.text)
        self.assertIn("Read from the log.", page.text)

    def test_refusal_is_explained(self):
        page = self.page(self.log(click_line(), refusal("ButtonClicked", 'invalid [optional] mode arg: "dark__v2"'),
                                  refusal("ButtonClicked", "null taskHandle arg"),
                                  refusal("ButtonClicked", "objectLabel is bad", "Exception")))
        self.assertEqual(["refused mode \"dark__v2\", taskHandle null, objectLabel is bad"], page.rows[0].outcomes)
        reasons = page.details()[0]["reasons"]
        self.assertEqual((5, "dark_v2"), (reasons[0]["at"], reasons[0]["nearest"]))
        self.assertEqual(["export", "export", "event class"], [reason["layer"] for reason in reasons])

    def test_url_is_explained_without_its_query(self):
        page = self.page(self.log(log_line('url: "ftp://a?b"', "UrlLaunchedEx"),
                                  refusal("UrlLaunchedEx", 'invalid [REQUIRED] urlNoPii arg: "ftp://a"')))
        self.assertEqual(['refused url "ftp://a" (nearest: "http://a")'], page.rows[0].outcomes)

    def test_replaced_timeout_is_no_refusal(self):
        self.assertEqual([("FlushEx", "accepted ")], self.outcomes(self.log(
            log_line("timeoutMsec: -1", "FlushEx"), refusal("FlushEx", "invalid timeoutMsec arg: -1"))))

    def test_log_of_errors_shows_the_refused_calls(self):
        path = self.log(refusal("ButtonClicked", 'invalid [optional] mode arg: ""'), refusal("ButtonClicked", "x arg: 1"),
                        refusal("FormSubmitted", 'invalid [REQUIRED] orgName arg: "A"'))
        self.assertEqual([("ButtonClicked", 'refused mode "", x 1'), ("FormSubmitted", 'refused orgName "A" (nearest: "a")')],
                         self.outcomes(path))
        self.assertIn("no lines at TRACE", self.page(path).text)

    def test_lines_of_two_processes_are_told_apart_by_their_threads(self):
        page = self.page(self.log(click_line("A"), click_line("B", thread="30000000"),
                                  refusal("ButtonClicked", "x arg: 1"),
                                  refusal("ButtonClicked", "y arg: 1", thread="30000000")))
        self.assertEqual([["refused x 1"], ["refused y 1"]], [row.outcomes for row in page.rows])

    def test_message_of_the_basic_road(self):
        page = self.page(self.log(
            log_line('->/projects/p/queues/q/messages {"os_name":"Windows 7","x":"<b>"}', severity="DATA"),
            log_line(" <-HTTP RESULT=OK (200)", severity="DATA")))
        self.assertIn("To /projects/p/queues/q/messages", page.text)
        self.assertIn("os_nameWindows 7The system's name.", page.text)
        self.assertIn("HTTP RESULT=OK (200)", page.text)


class Comparing(ViewTestCase):
    def compare(self, a: list, b: list) -> list[tuple[str, str, list[str]]]:
        self.write("a.jsonl", *a)
        self.write("b.jsonl", *b)
        return [(row.second, row.call, row.outcomes) for row in self.page(self.folder / "a.jsonl", self.folder / "b.jsonl").rows]

    def test_calls_are_paired(self):
        self.assertEqual(
            [("same", 'ButtonClicked screenName "A", controlName "ok"', ["accepted ", "accepted "]),
             ("arguments, verdict", 'ButtonClicked screenName "B", controlName "ok"', ["accepted ", 'refused mode ""']),
             ("only in A", "Pause ", ["accepted ", "no such call"]),
             ("same", 'ButtonClicked screenName "C", controlName "ok"', ["accepted ", "accepted "]),
             ("only in B", "Resume ", ["no such call", "accepted "])],
            self.compare([click("A"), click("B"), call("Pause"), click("C")],
                         [click("A"), click("B", mode=""), click("C"), call("Resume")]))

    def test_times_and_identifiers_of_tasks_make_no_difference(self):
        def run_of(name: str, guid: str, more: str = "") -> Path:
            return self.write_run(name, session=[click("A")], companion=[
                event("clicked", "button", "/A#ok", _app_event_task_guid=guid, more=more)])
        self.assertEqual(["same"], [row.second for row in self.page(run_of("a", "1"), run_of("b", "2")).rows])
        self.assertEqual(["record"], [row.second for row in self.page(run_of("a", "1"), run_of("c", "1", "x")).rows])

    def test_details_of_both_are_there(self):
        self.compare([click("A")], [click("B")])
        page = self.page(self.folder / "a.jsonl", self.folder / "b.jsonl")
        self.assertEqual(['"A"', '"B"'], [page.details(block)[0]["arguments"][0][1] for block in ("data-1", "data-2")])


class CommandLine(ViewTestCase):
    def test_counts_and_the_page_are_named(self):
        path = self.write("calls.jsonl", click(), click(mode=""))
        viewed = self.view(path, "-o", self.folder / "p.html")
        self.assertEqual(0, viewed.returncode)
        self.assertRegex(viewed.stdout, r"^calls.jsonl: 2 calls, 1 accepted, 1 refused\nThe page is .*p.html \(\d+ KB\)\n$")

    def test_standard_output(self):
        self.assertTrue(self.view(self.write("calls.jsonl", click()), "-o", "-").stdout.startswith("<!DOCTYPE html>"))

    def test_text(self):
        path = self.write("calls.jsonl", click(), click(mode=""))
        self.assertEqual('  ButtonClicked             accepted\n  ButtonClicked             refused  mode ""\n'
                         "calls.jsonl: 2 calls, 1 accepted, 1 refused\n", self.view("--text", path).stdout)

    def test_several_runs_one_after_the_other(self):
        path = self.write("calls.jsonl", click())
        page = self.page("--each", path, path, path)
        self.assertEqual(["run1-call-1", "run2-call-1", "run3-call-1"], [row.id for row in page.rows])
        self.assertEqual(2, self.view(path, path, path).returncode)

    def test_what_cannot_be_read(self):
        (self.folder / "empty").mkdir()
        for path, problem in ((self.folder / "absent", "cannot be read"), (self.folder / "empty", "has neither"),
                              (self.write("x.xml", "<a>"), "is neither a session nor a log")):
            with self.subTest(path.name):
                viewed = self.view(path, "-o", self.folder / "p.html")
                self.assertEqual(2, viewed.returncode)
                self.assertIn(problem, viewed.stderr)
        self.assertEqual(2, self.view(self.write("calls.jsonl", click()), "-o", self.folder / "no" / "p.html").returncode)


if __name__ == "__main__":
    unittest.main()
