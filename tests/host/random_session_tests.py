"""Random sessions, always the same ones, against a model of the exported rules; tools/soak plays others."""

import copy
import time
import unittest
from unittest import mock

from support import BUILD, SessionTestCase
import log_model
import machine_model
import played_sessions
import session_model
from call_history import CallOrder, prediction_of
from circumstances import Circumstances
from delivery_model import Delivery
from log_model import Log
from machine_model import Companion, Document, SettingsFiles
from model_check import differences
from schema import EXPORTS, PATTERNS, WHITE_SPACE, Pattern
from session_generator import FIXED_SEEDS, session_of
from session_model import SessionModel
from settings_files import SettingsFile

# Rules that are almost right, one for each pattern. The sessions have to show the difference.
NEARLY_RIGHT = {
    "appName": r"[^\x00-\x20\x80-\x9f][^\x00-\x1f\x80-\x9f]*",
    "biid": "unknown|[a-fA-F0-9]{64}",
    "adName": r"[^\x00-\x20\x80-\x9f](?:[^\x00-\x1f\x80-\x9f]*[^\x00-\x20\x80-\x9f])?",
    "adProduct": r"(?:[^\x00-\x1f\x80-\x9f]*[^\x00-\x20\x80-\x9f])?",
    "adVariant": r"(?:[^\x00-\x20\x80-\x9f](?:[^\x00-\x1f]*[^\x00-\x20\x80-\x9f])?)?",
    "codeName": "[a-zA-Z]+",
    "controlName": r"[A-Za-z0-9](?:(?:-|\w)*[A-Za-z0-9_])?",
    "context": r"[^\x00-\x1f\x80-\x9f]{1,129}",
    "flow": r"[A-Za-z0-9](?:\w*[A-Za-z0-9])?",
    "formName": "[a-z]+(?:_[a-z]+)*",
    "installName": r'[^\x00-\x1f"*/:<>?\\|\x80-\x9f]+',
    "installVersion": r"[0-9]+\.[0-9]+\.[0-9]+(?:\.[0-9]+)*",
    "subpath": r'\\?[^\x00-\x1f"*/:<>?|\x7f-\x9f]+\\?',
    "mode": "[A-Za-z0-9]+(?:_+[A-Za-z0-9]+)*",
    "orgName": "[a-z]*",
    "paperSize": r"[^\x00-\x20\x80-\x9f](?:[^\x00-\x20\x80-\x9f]*[^\x00-\x20\x80-\x9f])?",
    "reportName": "[a-z]+",
    "screenName": "(?a:[A-Za-z0-9](?:\\w*[A-Za-z0-9])?)",
    "screenPath": r"[A-Za-z0-9]\w*(?:/[A-Za-z0-9]\w*)*",
    "taskResult": "success|unknown|error(?:_(?:[0-9]+|[a-zA-Z][a-zA-Z0-9]+))?",
    "url": r"(?:file|https?)://[^/]+(?:/[^? ]*)?",
    "schemaVersion": r"[0-9]+\.[0-9]+(?:\.[0-9]+)?",
}

LOAD, PLAY_THREADS = SessionModel._load, SessionModel._play_threads
FAILURE = Companion._failure


def load_as_it_was(model: SessionModel) -> None:
    if hasattr(model, "_loaded"):
        model._loaded = True
    else:
        LOAD(model)


def play_threads_without_tasks(model: SessionModel, threads: list) -> None:
    model._handles.clear()
    PLAY_THREADS(model, threads)


def last_of(elements: list, key: str):
    return next((element for element in reversed(elements) if element[0] == key), None)


# Steps that a model might forget.
FORGOTTEN = {
    "the end of a pause": (Delivery, "end_pause", lambda self: None),
    "the pause that a choice goes to": (Delivery, "has_flag", lambda self, key: False),
    "that the message goes out once": (
        Delivery, "_message_sent", property(lambda self: False, lambda self, value: None)),
    "the fallback of a failed write": (Delivery, "set_flag", lambda self, key, value: None),
    "that a library loaded again starts afresh": (SessionModel, "_load", load_as_it_was),
    "the model name of all events": (SessionModel, "_global_context", lambda self, export, arguments: [
        self._passes(export, arguments)].clear()),
    "the spaces that make no name": (WHITE_SPACE, "matches", lambda text: False),
    "the factory file with the host's name": (Circumstances, "factory_in_use", property(lambda self: self.factory)),
    "the factory file's version": (machine_model, "FACTORY_VERSION", mock.ANY),
    "what needs a factory file": (Delivery, "_load", lambda self: self.files.load(self._subfolder)),
    "what makes a file unreadable": (
        SettingsFiles, "load", lambda self, subfolder, damage="": self._files.get(self.place(subfolder)) or Document()),
    "that the log needs both files": (Log, "_can_be_read", staticmethod(lambda circumstances: True)),
    "the first of equal keys in the factory file": (
        SettingsFile, "text", lambda self, key: (last_of(self.elements, key) or ["", ""])[1]),
    "the first of equal keys in the local file": (Document, "find", lambda self, key: last_of(self.elements, key)),
    "the root of older files": (Delivery, "_save", lambda self, document: self.files.save(self._subfolder, document)),
    "that a file is read-only": (
        SettingsFiles, "save", lambda self, subfolder, document: self._files.update({self.place(subfolder): document})),
    "what a failed save leaves": (Delivery, "_left", property(lambda self: None, lambda self, value: None)),
    "the end of the log": (log_model, "is_open", lambda date: True),
    "the dates that the log's clock does not know": (
        log_model, "is_open",
        lambda date: time.time() <= (log_model.seconds_of(date) or log_model.seconds_of(log_model.DEFAULT_DATE))),
    "that a failing companion recovers": (
        Companion, "_failure", lambda self, operation: FAILURE(self, operation) and self._calls.clear() or None),
    "that a call may fail later": (
        Companion, "_failure", lambda self, operation: None if operation in self._calls else FAILURE(self, operation)),
    "the tasks of other threads": (SessionModel, "_play_threads", play_threads_without_tasks),
    "the order of several threads": (
        CallOrder, "next_thread", lambda self, logged, left: next(at for at, calls in enumerate(left) if calls)),
}


class RandomSessions(SessionTestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.played = [(seed, session, played_sessions.play(session, cls.machine, BUILD))
                      for seed in FIXED_SEEDS for session in [session_of(seed)]]
        # The short ones first, because most changes of the model show in any session.
        cls.played.sort(key=lambda played: played[1].calls)

    def noticed(self) -> bool:
        """Whether any of the sessions differs from the model as it is now."""
        return any(differences(prediction_of(session, outcome), outcome) for _, session, outcome in self.played)

    def test_all_comes_as_predicted(self):
        for seed, session, outcome in self.played:
            with self.subTest(seed=seed):
                found = differences(prediction_of(session, outcome), outcome)
                self.assertEqual([], found, f"tools/soak 1 --seed {seed} plays it again")

    def test_nearly_right_rule_is_noticed(self):
        self.assertEqual(PATTERNS.keys(), NEARLY_RIGHT.keys())
        for name, expression in NEARLY_RIGHT.items():
            with self.subTest(name), mock.patch.dict(PATTERNS, {name: Pattern(expression, name == "url")}):
                self.assertTrue(self.noticed())

    def test_other_text_of_any_export_is_noticed(self):
        for name, export in EXPORTS.items():
            if export.family == "plain":
                continue
            with self.subTest(name), mock.patch.dict(EXPORTS, {name: export._replace(trace=export.trace + ".")}):
                self.assertTrue(self.noticed())

    def test_forgotten_step_is_noticed(self):
        for what, (owner, name, without) in FORGOTTEN.items():
            with self.subTest(what), mock.patch.object(owner, name, without, create=True):
                self.assertTrue(self.noticed())

    def test_stricter_check_of_the_event_is_noticed(self):
        for name in ("HYPERLINK_LABEL", "URL_LABEL", "TASK_RESULT"):
            with self.subTest(name), mock.patch.object(session_model, name, Pattern(".*")):
                self.assertTrue(self.noticed())


class Comparison(SessionTestCase):
    """Every deviation from the prediction is reported."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.session = session_of(148)
        cls.outcome = played_sessions.play(cls.session, cls.machine, BUILD)
        cls.prediction = prediction_of(cls.session, cls.outcome)

    def setUp(self):
        self.tampered = copy.deepcopy(self.outcome)
        self.assertEqual([], differences(self.prediction, self.tampered))
        # So that there is something to tamper with.
        self.assertGreater(len(self.tampered.records), 10)
        self.assertIn("LumeqLocalSettings.xml", self.tampered.files)
        self.assertEqual(2, len(self.prediction.together))

    def replace(self, name: str, old: bytes, new: bytes):
        content = self.tampered.files[name]
        self.assertIn(old, content)
        self.tampered.files[name] = content.replace(old, new, 1)

    def assert_reported(self, *beginnings: str):
        found = differences(self.prediction, self.tampered)
        self.assertEqual(list(beginnings), [text[:len(beginning)] for text, beginning in zip(found, beginnings)])
        self.assertEqual(len(beginnings), len(found), found)

    def test_exit_code(self):
        self.tampered.status = 5
        self.assert_reported("the host ended with 5")

    def test_answer(self):
        self.tampered.host[-1]["call"] += "Ex"
        self.assert_reported("answer ")

    def test_answers_of_threads_count_in_any_order(self):
        together = self.prediction.together[0]
        self.tampered.host[together] = reversed(self.tampered.host[together])
        self.assert_reported()
        self.tampered.host[together.start], self.tampered.host[0] = self.tampered.host[0], {"call": "Pause"}
        self.assert_reported("answer ")

    def test_lines_of_threads_in_another_order(self):
        lines = self.tampered.files["Lumeq.Log.txt"].split(b"\r\n")
        at = next(at for at, line in enumerate(lines) if b"TileClicked> " in line and b"Thread" not in lines[at + 1])
        lines[at], lines[at + 1] = lines[at + 1], lines[at]
        self.tampered.files["Lumeq.Log.txt"] = b"\r\n".join(lines)
        self.assert_reported("log line ")

    def test_missing_record(self):
        del self.tampered.companion[-1]
        self.assert_reported("operation: predicted")

    def test_value_in_a_record(self):
        self.tampered.records[5]["app_event_object_label"] += "x"
        self.assert_reported("operation ")

    def test_key_too_many_in_a_record(self):
        self.tampered.records[5]["app_event_session_time"] = None
        self.assert_reported("operation ")

    def test_null_for_an_empty_dictionary(self):
        record = next(record for record in self.tampered.records if record["app_event_details"] is None)
        record["app_event_details"] = {}
        self.assert_reported("operation ")

    def test_duration_of_a_task(self):
        record = next(record for record in self.tampered.records if record["app_event_action"] == "completed")
        record["app_event_details"]["task_duration"] += "0"
        self.assert_reported("operation ")

    def test_identifiers_of_tasks(self):
        contexts = [record["app_event_context"]["context_local"] for record in self.tampered.records
                    if record["app_event_object"] == "task"]
        contexts[1]["_app_event_task_guid"] = contexts[0]["_app_event_task_guid"]
        self.assert_reported("operation ")

    def test_lost_line_of_the_log(self):
        self.tampered.files["Lumeq.Log.txt"] = self.tampered.files["Lumeq.Log.txt"].rsplit(b"\r\n", 2)[0] + b"\r\n"
        self.assert_reported("log line: predicted")

    def test_character_in_the_log(self):
        self.replace("Lumeq.Log.txt", b"screenName: ", b"screenname: ")
        self.assert_reported("log line ")

    def test_line_break_in_the_log(self):
        self.replace("Lumeq.Log.txt", b"screenName: ", b"screenName:\n")
        self.assert_reported("log line ")

    def test_line_that_is_in_one_file_alone(self):
        lines = self.tampered.files["Lumeq.Error.txt"].split(b"\r\n")
        self.tampered.files["Lumeq.Error.txt"] = b"\r\n".join(lines[:3] + lines[2:])
        self.assert_reported("line of the error file ")

    def test_settings(self):
        self.replace("LumeqLocalSettings.xml", b"<UserOptIn>", b"<UserOptIn>Not")
        self.assert_reported("settings in programdata\\zuvan\\lumeq")

    def test_settings_file_in_another_place(self):
        self.tampered.files["a/LumeqLocalSettings.xml"] = self.tampered.files["LumeqLocalSettings.xml"]
        self.assert_reported("settings in programdata\\zuvan\\a\\lumeq")

    def test_file_that_nobody_is_to_make(self):
        self.tampered.files["Lumeq.Data.txt"] = b""
        self.tampered.files["leftovers.txt"] = b"LumeqLocalSettings.xml.new"
        self.assert_reported("Lumeq.Data.txt came", "leftovers.txt came")


if __name__ == "__main__":
    unittest.main()
