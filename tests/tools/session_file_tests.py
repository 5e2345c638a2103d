"""How the sample host plays session files, and which lines it refuses."""

import json
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import BUILD, SessionTestCase, call, record  # noqa: E402
from support.host_process import HostProcess  # noqa: E402
import session_player  # noqa: E402

SCREEN = call("ScreenDisplayed", screenName="Home")
GOOD = json.dumps(SCREEN) + "\n"


class BadLines(unittest.TestCase):
    """All on one machine, because no call of the library comes into play."""

    @classmethod
    def setUpClass(cls):
        cls.conditions = session_player.Conditions(log="off")
        cls.machine = cls.enterClassContext(session_player.machine(BUILD))
        cls.machine.set_up(cls.conditions, BUILD)

    def play_text(self, session: str) -> tuple[int, str, list[str]]:
        """Exit code, standard error, lines of standard output."""
        with HostProcess(self.machine, self.conditions, session) as host:
            outcome = host.finish()
        return outcome.status, outcome.errors.strip(), outcome.text("host.jsonl").splitlines()

    def assert_bad(self, line: str, problem: str):
        with self.subTest(line):
            # The line before it is played, the one after it is not.
            self.assertEqual((2, f"lumeq-host: line 3: {problem}", ['{"call":"ScreenDisplayed"}']),
                             self.play_text(GOOD + "\n" + line + "\n" + GOOD))

    def test_line_that_is_no_json(self):
        status, errors, _ = self.play_text(GOOD + "{\"call\": \n")
        self.assertEqual(2, status)
        self.assertRegex(errors, r"^lumeq-host: line 2: .*parse error")

    def test_line_that_is_no_step(self):
        self.assert_bad("[]", "expected an object")
        self.assert_bad("{}", "no known step")
        self.assert_bad('{"sleep": 5}', "no known step")

    def test_call_of_an_unknown_name(self):
        self.assert_bad('{"call": "ButtonPressed"}', 'unknown call "ButtonPressed"')
        self.assert_bad('{"call": 7}', '"call": expected the name of an export')

    def test_unknown_argument(self):
        self.assert_bad('{"call": "Pause", "why": "lunch"}', 'unknown argument "why"')
        self.assert_bad('{"call": "Pause", "handle": "h"}', 'unknown argument "handle"')

    def test_missing_argument(self):
        self.assert_bad('{"call": "ScreenDisplayed"}', 'argument "screenName": missing')
        self.assert_bad('{"call": "ScreenDisplayed", "screenName": null}', 'argument "screenName": expected a text')

    def test_argument_of_another_type(self):
        self.assert_bad('{"call": "ScreenDisplayed", "screenName": 5}', 'argument "screenName": expected a text')
        self.assert_bad('{"call": "SetUserOptInEx", "userHasOptedIn": 1}',
                        'argument "userHasOptedIn": expected true or false')
        self.assert_bad('{"call": "FlushEx", "timeoutMsec": 0.5}', 'argument "timeoutMsec": expected a whole number')
        self.assert_bad('{"call": "ScreenDisplayed", "screenName": "a", "localContext": "b"}',
                        'argument "localContext": expected a dictionary')
        self.assert_bad('{"call": "DeviceConfigCompleted", "taskHandle": null, "taskResult": "", "settingType": 0}',
                        'argument "taskHandle": expected the name of a handle')

    def test_number_out_of_range(self):
        wanted = "expected a number from -2147483648 to 2147483647"
        self.assert_bad('{"call": "FlushEx", "timeoutMsec": 2147483648}', f'argument "timeoutMsec": {wanted}')
        self.assert_bad('{"call": "ToString", "enumValue": 18446744073709551615}', f'argument "enumValue": {wanted}')

    def test_bad_step_within_another(self):
        self.assert_bad('{"times": 2, "calls": [{"call": "Pause"}, {"call": "Stop"}]}', 'unknown call "Stop"')
        self.assert_bad('{"threads": [[{"call": "Stop"}]]}', 'unknown call "Stop"')
        self.assert_bad('{"threads": [[{"unload": true}]]}', "a thread cannot load or unload the library")
        self.assert_bad('{"times": 2}', '"times" and "calls" go together')
        self.assert_bad('{"unload": false}', "expected true")
        self.assert_bad('{"unload": true, "waitMsec": -1}', "expected a number from 0 to 2147483647")
        self.assert_bad('{"load": true, "waitMsec": 1}', 'unknown member "waitMsec"')
        self.assert_bad('{"background": [{"unload": true}]}', "a thread cannot load or unload the library")
        self.assert_bad('{"measure": false}', "expected true")

    def test_bad_ending(self):
        self.assert_bad('{"end": "return"}', '"end" and "code" go together')
        self.assert_bad('{"end": "leave", "code": 1}', '"end": no such way')
        self.assert_bad('{"end": "exit", "code": 256}', "expected a number from 0 to 255")
        self.assert_bad('{"threads": [[{"end": "return", "code": 1}]]}',
                        "only the main thread can return from the main function")


class Texts(SessionTestCase):
    def label_of(self, screen_path) -> str:
        outcome = self.play(call("ScreenDisplayed", screenPath=screen_path, screenName="z"))
        return outcome.records[0]["app_event_object_label"]

    def test_repeated_text(self):
        self.assertEqual("/" + "ab" * 3000 + "/z", self.label_of({"repeat": "ab", "times": 3000}))

    def test_joined_texts(self):
        self.assertEqual("/one/two/z", self.label_of(["one", "/", {"repeat": "two", "times": 1}]))

    def test_code_units_and_unpaired_surrogates_arrive_as_they_are(self):
        outcome = self.play(call("ScreenDisplayed", screenName="z",
                                 localContext=[["key", {"units": [0x41, 0xD83D, 0xDE00]}],
                                               [{"units": [0xDC00]}, {"units": [0xD800, 0x42]}]]))
        self.assertEqual({"key": "A\U0001F600", "\udc00": "\ud800B"},
                         outcome.records[0]["app_event_context"]["context_local"])

    def test_beyond_ascii(self):
        outcome = self.play(call("ScreenDisplayed", screenName="z", globalContext="Größe 漢字 \U0001F600 \"\\\t".strip()))
        self.assertEqual("Größe 漢字 \U0001F600 \"\\",
                         outcome.records[0]["app_event_context"]["context_global"]["_dev_modelname"])

    def test_omitted_optional_argument_is_null(self):
        outcome = self.play(call("ScreenDisplayed", screenName="a"),
                            call("ScreenDisplayed", screenName="a", flow=None, screenPath=None, mode=None,
                                 localContext=None, globalContext=None))
        self.assertEqual([record("app", "displayed", "screen", "/a")] * 2, outcome.records)
        self.assertEqual(outcome.calls[0], outcome.calls[1])


class Steps(SessionTestCase):
    def test_repetition(self):
        outcome = self.play({"times": 3, "calls": [SCREEN, {"times": 2, "calls": [call("FlushEx", timeoutMsec=0)]}]})
        self.assertEqual((["ScreenDisplayed", "FlushEx", "FlushEx"]) * 3, [line["call"] for line in outcome.host])
        self.assertEqual((["PostEventInternal", "FlushInternal", "FlushInternal"]) * 3,
                         [line["operation"] for line in outcome.companion])

    def test_no_call_of_two_threads_is_lost_or_torn(self):
        outcome = self.play({"threads": [
            [{"times": 100, "calls": [call("ScreenDisplayed", screenName=name, mode="m")]}] for name in "abcd"]})
        self.assertEqual((0, ""), (outcome.status, outcome.errors))
        self.assertEqual([{"call": "ScreenDisplayed"}] * 400, outcome.host)
        labels = [event["app_event_object_label"] for event in outcome.records]
        self.assertEqual(400, len(labels))
        self.assertEqual({f"/{name}-m": 100 for name in "abcd"}, {label: labels.count(label) for label in set(labels)})
        self.assertEqual(400, len(outcome.calls))

    def test_handles_are_shared_by_threads(self):
        outcome = self.play(call("DeviceConfigInitiated", handle="h"), {"threads": [
            [call("DeviceConfigCompleted", taskHandle="h", taskResult="success", settingType=1)]]},
            call("DeviceConfigCompleted", taskHandle="h", taskResult="success", settingType=1))
        self.assertEqual(["set", "null", "null"], [line["handle"] for line in outcome.host])
        self.assertEqual(["initiated", "completed"], [event["app_event_action"] for event in outcome.records])

    def test_handle_never_set_is_null(self):
        outcome = self.play(call("DeviceConfigCompleted", taskHandle="never", taskResult="success", settingType=1))
        self.assertEqual([{"call": "DeviceConfigCompleted", "handle": "null"}], outcome.host)
        self.assertEqual([], outcome.companion)

    def test_unloaded_library_starts_afresh(self):
        outcome = self.play(call("SetGlobalContextEx", globalContext="Model"), SCREEN, {"unload": True}, SCREEN,
                            {"load": True}, SCREEN)
        self.assertEqual([{"call": "SetGlobalContextEx"}, {"call": "ScreenDisplayed"},
                          {"call": "ScreenDisplayed", "error": "Lumeq.dll is not loaded"},
                          {"call": "ScreenDisplayed"}], outcome.host)
        self.assertEqual([record("app", "displayed", "screen", "/Home", model="Model"),
                          record("app", "displayed", "screen", "/Home")], outcome.records)
        self.assertEqual(2, sum(line.message == "Logger: Logging is currently ENABLED" for line in outcome.log))

    def test_comments_do_nothing(self):
        outcome = self.play({"comment": "nothing"}, SCREEN)
        self.assertEqual([{"call": "ScreenDisplayed"}], outcome.host)


class Buffers(SessionTestCase):
    def test_too_small_a_buffer_comes_back_empty_with_the_error(self):
        outcome = self.play(call("ToString_Internal", enumValue=7, size=4), call("ToString_Internal", enumValue=7, size=3),
                            call("GetBiid_Internal", deviceUuid="abc", size=64, buffer="before"))
        self.assertEqual([{"result": 0, "text": "usb"}, {"result": 34, "text": ""}, {"result": 34, "text": ""}],
                         [line["returns"] for line in outcome.host])

    def test_null_buffer_and_size_zero_give_the_error_and_the_host_lives_on(self):
        outcome = self.play(call("ToString_Internal", enumValue=7, buffer=None),
                            call("ToString_Internal", enumValue=7, size=0, buffer="before"),
                            call("ToString_Internal", enumValue=7))
        self.assertEqual([{"result": 22, "text": None}, {"result": 22, "text": "before"}, {"result": 0, "text": "usb"}],
                         [line["returns"] for line in outcome.host])


if __name__ == "__main__":
    unittest.main()
