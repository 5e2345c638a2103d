"""What the model predicts of settings files in all their states, of the log and of a failing companion."""

import time
import unittest
import xml.etree.ElementTree
from unittest import mock

from circumstances import Circumstances, logging
from session_model import predict
from session_model_tests import button, call, errors, played, settings, start, warnings
from settings_files import DEFECTS, ENCODINGS, FOLDER, LAYOUTS, SettingsFile

OPT_IN = call("SetUserOptInEx", userHasOptedIn=True)
READ = call("GetUserOptInEx")


class Files(unittest.TestCase):
    def test_mean_the_same_in_every_layout_and_encoding(self):
        elements = [["UserOptIn", "True"], ["Other", "G\u00e4<&>"], ["Empty", ""]]
        for layout in LAYOUTS:
            for encoding in ENCODINGS:
                with self.subTest(layout=layout, encoding=encoding):
                    file = SettingsFile(elements, "Any", {"a": "b"}, layout, encoding)
                    root = xml.etree.ElementTree.fromstring(file.content())
                    self.assertEqual(("Any", {"a": "b"}, elements),
                                     (root.tag, root.attrib, [[child.tag, child.text or ""] for child in root]))

    def test_defects_make_them_unreadable(self):
        for defect in DEFECTS:
            with self.subTest(defect), self.assertRaises(xml.etree.ElementTree.ParseError):
                xml.etree.ElementTree.fromstring(SettingsFile([["UserOptIn", "True"]], defect=defect).content())

    def test_unreadable_local_one_means_no_choice_and_no_log_and_stays(self):
        for defect in DEFECTS:
            file = SettingsFile([["UserOptIn", "True"]], defect=defect)
            prediction = played(OPT_IN, READ, road="basic", settings=file)
            self.assertEqual(([], False, {"programdata\\zuvan\\lumeq": file.content()}),
                             (prediction.log, prediction.answers[1]["returns"], prediction.settings))
        self.assertEqual({}, played(OPT_IN, road="basic", settings=SettingsFile(defect=FOLDER)).settings)

    def test_one_of_a_subfolder_is_read_with_a_log(self):
        prediction = played(call("SetLocalSubfolderPathEx", subpath="Sub"), OPT_IN, road="basic",
                            subfolder_settings=SettingsFile(defect="empty"))
        self.assertEqual([f"{region} exception with Error parsing local settings file"
                          for region in ("BasicDidUserOpted", "BasicSetUserOptIn")], warnings(prediction))

    def test_read_only_one_is_read_and_keeps_its_values(self):
        prediction = played(OPT_IN, READ, road="basic", settings=SettingsFile([["UserOptIn", "FALSE"]], read_only=True))
        self.assertEqual(["BasicSetUserOptIn failed with _com_error exception 0x80070005, Access denied."],
                         warnings(prediction))
        self.assertEqual({"UserOptIn": "FALSE"}, settings(prediction))

    def test_choice_that_could_not_be_saved_is_what_the_next_read_finds_and_only_that(self):
        prediction = played(OPT_IN, READ, READ, road="basic", settings=SettingsFile(read_only=True))
        self.assertEqual([True, False], [answer["returns"] for answer in prediction.answers[1:]])
        prediction = played(OPT_IN, call("SetLocalSubfolderPathEx", subpath="Sub"), OPT_IN, road="basic",
                            settings=SettingsFile([["Other", "x"]], read_only=True))
        self.assertIsNone(settings(prediction, "programdata\\zuvan\\sub\\lumeq").get("Other"))

    def test_first_of_two_equal_keys_counts(self):
        twice = [["UserOptIn", "False"], ["UserOptIn", "True"]]
        self.assertFalse(played(READ, road="basic", settings=SettingsFile(twice)).answers[0]["returns"])


class FactoryFiles(unittest.TestCase):
    def test_unusable_one_means_no_log_and_no_settings(self):
        for factory in (None, logging(defect="cut short"), logging(defect=FOLDER), logging(attributes={}),
                        logging(attributes={"version": "4.1"}), logging(attributes={"Version": "4.0"})):
            prediction = played(OPT_IN, button(screenName=""), READ, road="basic", factory=factory)
            self.assertEqual(([], {}, False), (prediction.log, prediction.settings, prediction.answers[2]["returns"]))

    def test_one_with_the_hosts_name_counts_instead_of_the_other(self):
        refused = button(screenName="")
        self.assertEqual(1, len(errors(played(refused, factory=None, named_factory=logging()))))
        self.assertEqual([], errors(played(refused, factory=logging(), named_factory=logging(defect="empty"))))

    def test_any_root_will_do_and_a_key_in_the_other_file_is_not_seen(self):
        factory = logging(root="Anything")
        factory.elements += [["Log", "off"], ["UserOptIn", "True"]]
        prediction = played(button(screenName=""), READ, road="basic", factory=factory,
                            settings=SettingsFile([["Log", "off"], ["LogLevel", "off"]]))
        self.assertEqual((1, False), (len(errors(prediction)), prediction.answers[1]["returns"]))


class Logs(unittest.TestCase):
    def lines(self, *log: str) -> int:
        return len(played(button(screenName=""), call("TrackDiscoveredPrintersEx", discoveredDeviceList=[{}]),
                          factory=logging(*log)).log)

    def test_level_says_what_is_logged(self):
        self.assertEqual([0, 1, 2, 1, 8, 8], [self.lines(*log) for log in (
            ("off", "trace"), ("on", "error"), ("ON", "Warning"), ("on", "loud"), ("on", "trace"),
            ("date", "debug", "2036-12-31"))])

    def test_goes_on_until_its_date_and_where_the_clock_does_not_know_the_date(self):
        with mock.patch.object(time, "time", lambda: 1_600_000_000):
            for date in ("2020-09-14", "2036-1-2", "2036-02-31", "2036-12-31T23:59Z", "2039-01-01", "9999-12-31",
                         "1969-12-31"):
                self.assertEqual(8, self.lines("date", "trace", date), date)
            for date in ("2020-09-13", "2001-02-03", "", "tomorrow", "2036-13-01", "2036-12-32", "2036/12/31", "2036-12"):
                self.assertEqual(0, self.lines("date", "trace", date), date)

    def test_date_is_shown_as_it_is_written_and_the_switch_in_small_letters(self):
        prediction = played(call("Pause"), factory=logging("DATE", "TRACE", "2036-12-31T"))
        self.assertEqual(["Logger: LogLevel='trace'", "Logger: Log='date', LogDate='2036-12-31T'"],
                         [line.messages[0] for line in prediction.log[:2]])


class FailingCompanion(unittest.TestCase):
    def test_list_is_for_the_calls_in_turn_and_starts_again(self):
        flush = call("FlushEx", timeoutMsec=0)
        prediction = played(*[flush] * 5, failures={"FlushInternal": ["std", None, "managed"]})
        std, unknown = "FlushXX exception with FlushInternal was told to fail", "FlushXX failed with unknown exception"
        self.assertEqual([std, unknown, std], warnings(prediction))
        self.assertEqual(5, len(prediction.operations))

    def test_missing_one_has_no_turns(self):
        prediction = played(start(), start(), failures={"StartupInternal": [None, "std"]}, without_companion=True)
        self.assertEqual(2, len(warnings(prediction)))


class SeveralThreads(unittest.TestCase):
    def test_play_in_the_order_that_is_given(self):
        threads = [[call("FlushEx", timeoutMsec=1), call("FlushEx", timeoutMsec=2)], [call("FlushEx", timeoutMsec=3)]]
        turns = iter((0, 1, 0))
        prediction = predict([call("Pause"), {"threads": threads}], Circumstances(), lambda logged, left: next(turns))
        self.assertEqual([1, 3, 2], [operation["timeoutMsec"] for operation in prediction.operations[2:]])
        self.assertEqual([slice(1, 4)], prediction.together)


if __name__ == "__main__":
    unittest.main()
