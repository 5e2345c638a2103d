"""lumeq lint and lumeq explain: what they print, and how they end."""

import json
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import BUILD, ROOT, call  # noqa: E402
from program import run  # noqa: E402

HOME = {"screenName": "Home", "controlName": "ok"}
START = call("StartupEx", appName="Scan Studio", whyType=4, howType=2, trackSystemInfo=True, trackPrintQueueInfo=False)
SHUTDOWN = call("ShutdownEx", timeoutMsec=1000)
CONFIG = {"taskResult": "success", "settingType": 1}


class LintTestCase(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.file = Path(self.enterContext(tempfile.TemporaryDirectory(dir=BUILD))) / "calls.jsonl"

    def lint(self, *lines, options: tuple = ()):
        """Each line is a step, or a text."""
        texts = [line if isinstance(line, str) else json.dumps(line) for line in lines]
        self.file.write_text("\n".join(texts) + "\n", encoding="utf-8", newline="\n")
        return run("lint", *options, str(self.file))

    def printed(self, *lines, options: tuple = ()) -> str:
        """Without the file's name."""
        result = self.lint(*lines, options=options)
        self.assertEqual("", result.stderr)
        return result.stdout.replace(str(self.file), "calls.jsonl")

    def findings(self, *lines) -> list[tuple[int, str, str]]:
        (its,) = json.loads(self.lint(*lines, options=("--json",)).stdout)
        return [(finding["line"], finding["rule"], finding["argument"]) for finding in its["findings"]]

    def of_rule(self, rule: str, *lines) -> list[int]:
        """The lines with such a finding."""
        return [line for line, its, _ in self.findings(*lines) if its == rule]


class Texts(LintTestCase):
    def test_caret_stands_under_the_first_character_after_which_nothing_could_be_accepted(self):
        self.assertEqual(
            'calls.jsonl:2: error: ButtonClicked: mode "dark__v2" is refused by the export\n'
            "    dark__v2\n"
            "         ^ letters A to Z and a to z and digits, with single underscores between them; nearest: "
            '"dark_v2"\n'
            "calls.jsonl: 3 calls, 2 accepted, 1 refused; 0 warnings, 0 notes\n",
            self.printed(START, call("ButtonClicked", **HOME, mode="dark__v2"), SHUTDOWN))

    def test_text_that_ends_too_early(self):
        self.assertIn("    dark_\n         ^ the text ends too early; expected: letters",
                      self.printed(call("ButtonClicked", **HOME, mode="dark_")))

    def test_empty_text(self):
        self.assertIn('mode "" is refused by the export\n    expected: letters',
                      self.printed(call("ButtonClicked", **HOME, mode="")))

    def test_characters_that_cannot_be_seen_are_escaped_and_the_caret_counts_them(self):
        self.assertIn("    a\\tb\\u0085c\n     ^ 1 to 128 characters",
                      self.printed(call("ButtonClicked", **HOME, globalContext="a\tb\u0085c")))
        self.assertIn("    \u6f22\u00e9\\u0085\n      ^ 1 to 128",
                      self.printed(call("ButtonClicked", **HOME, globalContext="\u6f22\u00e9\u0085")))

    def test_long_text_shows_the_surroundings_of_the_caret(self):
        printed = self.printed(call("ButtonClicked", screenName="a" * 500 + "-" + "b" * 500, controlName="ok"))
        self.assertIn("    ..." + "a" * 40 + "-" + "b" * 31 + "...\n" + " " * 47 + "^ letters", printed)

    def test_event_class_names_the_argument_in_the_composed_text(self):
        self.assertIn(
            'HyperlinkClicked: "/Home-on_line#url_help", composed of its arguments, is refused by the event class for its '
            "mode\n    /Home-on_line#url_help\n            ^ ",
            self.printed(call("HyperlinkClicked", screenName="Home", mode="on_line", controlName="help")))

    def test_event_class_blames_the_argument_before_a_character_of_its_own(self):
        self.assertIn((1, "refused", "screenPath"), self.findings(
            call("HyperlinkClicked", screenName="Home", screenPath="a_/b", controlName="help")))
        self.assertIn((1, "refused", "screenPath"), self.findings(
            call("HyperlinkClicked", screenName="Home", screenPath="a_", controlName="help")))

    def test_each_layer(self):
        for step, refused_by, argument in (
                (call("UrlLaunchedEx", url="ftp://a"), "export", "url"),
                (call("UrlLaunchedEx", url="HTTP://a"), "event class", "url"),
                (call("UrlLaunchedEx", url={"units": [104, 116, 116, 112, 58, 47, 47, 0xD800]}), "event class", "url"),
                (call("AdDisplayed", adType=9, product="", name="", variant="", **HOME), "event class", "adType"),
                (call("SetGlobalContextEx", globalContext=None), "export", "globalContext"),
                (call("GetBiid", deviceUuid=""), "export", "deviceUuid"),
                (call("GetBiid_Internal", deviceUuid={"units": [0, 97]}), "export", "deviceUuid"),
                (call("TrackDiscoveredPrintersEx", discoveredDeviceList=[{"a": "b"}]), "event class",
                 "discoveredDeviceList")):
            with self.subTest(step["call"]):
                (its,) = json.loads(self.lint(step, options=("--json",)).stdout)
                refusals = [finding for finding in its["findings"] if finding["rule"] == "refused"]
                self.assertEqual([(refused_by, argument)],
                                 [(finding["refusedBy"], finding["argument"]) for finding in refusals])

    def test_optional_text_ends_at_its_first_zero_and_a_required_one_does_not(self):
        self.assertEqual([], self.of_rule("refused", call("ButtonClicked", **HOME, mode="dark\0-")))
        self.assertEqual([1], self.of_rule("refused", call("ButtonClicked", screenName="a\0-", controlName="ok")))


class Sessions(LintTestCase):
    def test_clean_session(self):
        result = self.lint(START, call("DeviceConfigInitiated", handle="t"),
                           call("DeviceConfigCompleted", taskHandle="t", **CONFIG), SHUTDOWN)
        self.assertEqual((0, ": 4 calls, 4 accepted, 0 refused; 0 warnings, 0 notes\n"),
                         (result.returncode, result.stdout.removeprefix(str(self.file))))

    def test_task_that_is_never_completed(self):
        self.assertEqual([2], self.of_rule("task-never-completed", START, call("DeviceConfigInitiated", handle="t")))
        self.assertEqual([1], self.of_rule("task-never-completed", call("DeviceConfigInitiated", handle="t"),
                                           call("DeviceConfigInitiated", handle="t"),
                                           call("DeviceConfigCompleted", taskHandle="t", **CONFIG)))

    def test_task_that_is_completed_twice(self):
        begin, end = call("DeviceConfigInitiated", handle="t"), call("DeviceConfigCompleted", taskHandle="t", **CONFIG)
        self.assertEqual([3], self.of_rule("task-completed-twice", begin, end, end))
        self.assertEqual([], self.of_rule("task-completed-twice", begin, {**end, "taskResult": "bad"}, end))

    def test_task_that_was_not_begun(self):
        end = call("DeviceConfigCompleted", taskHandle="t", **CONFIG)
        self.assertEqual([1], self.of_rule("task-not-begun", end))
        self.assertIn("line 1 was refused, so there is no task",
                      self.printed(call("DeviceConfigInitiated", handle="t", globalContext=""), end))

    def test_task_of_another_kind(self):
        self.assertEqual([2], self.of_rule("task-of-another-kind", call("ScanAcquireInitiated", handle="t"),
                                           call("DeviceConfigCompleted", taskHandle="t", **CONFIG)))

    def test_event_before_the_start_and_after_the_shutdown_is_reported_once(self):
        click = call("ButtonClicked", **HOME)
        self.assertEqual([(1, "before-start", ""), (5, "after-shutdown", "")],
                         self.findings(click, click, START, SHUTDOWN, click, click))

    def test_missing_shutdown(self):
        self.assertEqual([1], self.of_rule("no-shutdown", START))
        self.assertEqual([1], self.of_rule("no-shutdown", START, {"unload": True}, {"load": True}, START, SHUTDOWN))

    def test_call_without_the_library(self):
        self.assertEqual([2], self.of_rule("not-loaded", {"unload": True}, call("Pause")))

    def test_repetitions_and_threads_are_looked_into(self):
        bad = call("ButtonClicked", **HOME, mode="")
        self.assertEqual([1], self.of_rule("refused", {"times": 2, "calls": [bad]}))
        self.assertEqual([1], self.of_rule("refused", {"threads": [[{"comment": "x"}], [bad]]}))
        self.assertEqual([1], self.of_rule("refused", {"background": [bad]}))
        self.assertEqual([], self.of_rule("refused", {"times": 0, "calls": [bad]}))
        self.assertEqual([], self.of_rule("refused", {"end": "exit", "code": 0}, bad))

    def test_malformed_lines_are_named_and_the_rest_is_checked(self):
        self.assertEqual([(1, "malformed", ""), (2, "malformed", ""), (3, "malformed", ""), (4, "malformed", ""),
                          (5, "refused", "mode")],
                         [finding for finding in self.findings(
                             "not json", {"cal": "x"}, call("ButtonClicked", screenName="a"),
                             call("ButtonClicked", **HOME, colour="red"), call("ButtonClicked", **HOME, mode=""))
                          if finding[1] != "before-start"])


class Remarks(LintTestCase):
    def test_value_recorded_as_unknown(self):
        self.assertEqual(
            [(1, "recorded-as-unknown", "adType"), (1, "recorded-as-unknown", "product"),
             (1, "recorded-as-unknown", "variant")],
            [finding for finding in self.findings(
                call("AdDisplayed", adType=0, product="\u2003", name="n", variant="", **HOME)) if finding[1] != "before-start"])

    def test_user_and_password_in_a_url(self):
        for url, rules in (("https://ann:pw@host/a", ["url-credentials"]), ("https://ann@host/a", ["url-credentials"]),
                           ("https://host/a@b", []), ("https://host/a#b", ["url-fragment"]),
                           ("https://host/?ann:pw@host", []), ("https://host/a?b#c", [])):
            with self.subTest(url):
                self.assertEqual(rules, [rule for _, rule, _ in self.findings(START, call("UrlLaunchedEx", url=url), SHUTDOWN)])

    def test_values_that_look_personal(self):
        for value, is_personal in (("ann@example.org", True), ("mail ann.b+c@mail.example.org, please", True),
                                   ("C:\\Users\\ann\\scan.pdf", True), ("/home/ann/scan.pdf", True), ("10.0.0.17", True),
                                   ("00:1b:44:11:3a:b7", True), ("good", False), ("a@b", False), ("1.2.3", False),
                                   ("12:30:45", False), ("C:\\Program Files\\Scan", False)):
            with self.subTest(value):
                step = call("ButtonClicked", **HOME, localContext={"value": value})
                self.assertEqual([2] if is_personal else [], self.of_rule("personal", START, step, SHUTDOWN))

    def test_fields_with_personal_names(self):
        for name, is_personal in (("user_name", True), ("SerialNumber", True), ("e-mail", True), ("signal", False)):
            with self.subTest(name):
                step = call("FormSubmitted", orgName="o", codeName="c", formName="f", version="1.0", details={name: "x"})
                self.assertEqual([1] if is_personal else [], self.of_rule("personal", step))

    def test_personal_values_elsewhere(self):
        self.assertEqual([1], self.of_rule("personal", call("SetGlobalContextEx", globalContext="ann@example.org")))
        self.assertEqual([1], self.of_rule("personal", call("TrackDiscoveredPrintersEx", discoveredDeviceList=[
            {"dev_biid": "unknown", "dev_ip": "192.168.0.7"}])))
        # A version is no address.
        self.assertEqual([], self.of_rule("personal", call("SoftwareInstallInitiated", handle="t"), call(
            "SoftwareInstallCompleted", taskHandle="t", taskResult="success", installerType=1, name="n", version="1.2.3.4")))

    def test_what_the_library_replaces_or_skips(self):
        self.assertEqual([1], self.of_rule("number-replaced", call("FlushEx", timeoutMsec=-1)))
        self.assertEqual([1], self.of_rule("field-replaced", call(
            "ReportGenerated", orgName="o", codeName="c", reportName="r", version="1.0", details={"moniker": "x"})))
        self.assertEqual([1], self.of_rule("field-replaced", call(
            "ScanAcquireInitiated", handle="t", localContext={"_app_event_task_guid": "x"})))
        self.assertEqual([1, 1], self.of_rule("printer-skipped", call(
            "TrackDiscoveredPrintersEx", discoveredDeviceList=[{}, {"dev_biid": "0123"}, {"dev_biid": "unknown"}])))


class CommandLine(LintTestCase):
    def test_exit_codes(self):
        warned = (START,)
        self.assertEqual(0, self.lint(*warned).returncode)
        self.assertEqual(1, self.lint(*warned, options=("--strict",)).returncode)
        self.assertEqual(1, self.lint(call("ButtonClicked", **HOME, mode="")).returncode)
        self.assertEqual(2, run("lint", str(self.file.with_name("absent.jsonl"))).returncode)

    def test_file_that_is_no_session_is_named_once(self):
        result = self.lint("<LumeqConfig>", "", "</LumeqConfig>", "17")
        self.assertEqual((2, "", f"lumeq: {self.file} is no session: none of its lines is a JSON object\n"),
                         (result.returncode, result.stdout, result.stderr))
        self.assertEqual((0, ""), (self.lint("").returncode, self.lint("").stderr))

    def test_notes_can_be_left_out(self):
        step = call("DeviceConnectInitiated"), {**START, "whyType": 0}, SHUTDOWN
        self.assertIn("note: ", self.printed(*step))
        self.assertNotIn("note: ", self.printed(*step, options=("--no-notes",)))

    def test_json_has_the_advice_and_a_verdict_on_each_call(self):
        result = self.lint(START, call("ButtonClicked", **HOME, mode="Dark__v2"), SHUTDOWN, options=("--json",))
        (its,) = json.loads(result.stdout)
        self.assertEqual({"text": "Dark__v2", "pattern": "mode", "at": 5, "nearest": "Dark_v2",
                          "words": "Letters A to Z and a to z and digits, with single underscores between them."},
                         its["findings"][0]["refusedText"])
        self.assertEqual([(1, "StartupEx", "accepted"), (2, "ButtonClicked", "refused"), (3, "ShutdownEx", "accepted")],
                         [(each["line"], each["call"], each["verdict"]) for each in its["calls"]])

    def test_several_files_and_the_samples(self):
        result = run("lint", *(str(ROOT / "samples" / "sessions" / f"{name}.jsonl")
                               for name in ("first-light", "working-day", "basic-message")))
        self.assertEqual(1, result.returncode)
        for name, counts in (("first-light", "25 calls, 18 accepted, 7 refused"),
                             ("working-day", "35 calls, 33 accepted, 2 refused"),
                             ("basic-message", "5 calls, 5 accepted, 0 refused")):
            self.assertIn(f"{name}.jsonl: {counts}", result.stdout)

    def test_help_has_examples(self):
        for command in ("lint", "explain"):
            self.assertIn(f"Examples:\n  lumeq {command} ", run(command, "--help").stdout)


class ExplainTestCase(unittest.TestCase):
    def test_accepted_text(self):
        result = run("explain", "mode", "dark_v2")
        self.assertEqual((0, "mode: accepted (Letters A to Z and a to z and digits, with single underscores between them)\n"),
                         (result.returncode, result.stdout))

    def test_refused_text(self):
        result = run("explain", "orgName", "DVRN")
        self.assertEqual((1, 'orgName: refused by the export\n    DVRN\n    ^ lower-case letters a to z; nearest: "dvrn"\n'),
                         (result.returncode, result.stdout))

    def test_text_that_the_event_class_refuses(self):
        result = run("explain", "taskResult", "error_a")
        self.assertEqual(1, result.returncode)
        self.assertIn("taskResult: refused by the event class, which asks for completedResult\n", result.stdout)

    def test_text_as_a_session_spells_it(self):
        result = run("explain", "--spelled", "context", '{"units": [133]}', "--json")
        explained = json.loads(result.stdout)
        self.assertEqual((1, "refused", 0), (result.returncode, explained["verdict"], explained["refusedText"]["at"]))
        self.assertEqual(2, run("explain", "--spelled", "context", "{").returncode)

    def test_text_beyond_ascii(self):
        self.assertEqual(0, run("explain", "controlName", "caf\u00e9s").returncode)
        self.assertEqual(1, run("explain", "controlName", "caf\u00e9").returncode)

    def test_unknown_pattern_names_those_there_are(self):
        result = run("explain", "colour", "red")
        self.assertEqual(2, result.returncode)
        self.assertIn("there are appName, biid, ", result.stderr)


if __name__ == "__main__":
    unittest.main()
