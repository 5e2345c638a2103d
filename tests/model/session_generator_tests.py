"""What random sessions are made of, and how a failing one is made smaller."""

import json
import unittest
from pathlib import Path
from typing import Any

from circumstances import Circumstances, Session
from log_model import is_open
from schema import EXPORTS, PATTERNS
from session_generator import FIXED_SEEDS, session_of
from session_texts import BASIC_SUBFOLDERS, BESIDE, SEEDS, SUBFOLDERS
from settings_files import ENCODINGS, LAYOUTS
from smaller_session import smaller
from unicode_blocks import BLOCKS, ROW
from wide_text import characters, session_text

SESSIONS = [session_of(seed) for seed in FIXED_SEEDS]


def calls(steps: list[dict]) -> list[dict]:
    found = []
    for step in steps:
        if "call" in step:
            found.append(step)
        for inner in (step.get("calls", []), *step.get("threads", [])):
            found += calls(inner)
    return found


class Generator(unittest.TestCase):
    def test_seed_says_all(self):
        self.assertEqual(session_of(7), session_of(7))
        self.assertNotEqual(session_of(7).steps, session_of(8).steps)

    def test_every_session_calls_every_export(self):
        exports = set((Path(__file__).resolve().parent.parent / "exports.txt").read_text(encoding="ascii").split())
        self.assertEqual(exports, set(EXPORTS))
        for session in SESSIONS:
            self.assertEqual(exports, {step["call"] for step in calls(session.steps)})

    def test_sessions_can_be_written(self):
        for session in SESSIONS:
            for step in session.steps:
                # A text that is no UTF-8 has to be spelled in numbers.
                json.dumps(step, ensure_ascii=False).encode("utf-8")

    def test_no_task_outlives_its_library(self):
        for session in SESSIONS:
            loads = 0
            for step in session.steps:
                loads += "load" in step
                for one in calls([step]):
                    name = one.get("handle") or one.get("taskHandle")
                    self.assertTrue(name is None or name.endswith(f"-{loads}"), step)

    def test_numbers_of_enumerations_go_from_minus_two_to_seventy_and_to_the_ends(self):
        names = {argument.name for export in EXPORTS.values() for argument in export.arguments if argument.enumeration}
        numbers = {one[name] for session in SESSIONS for one in calls(session.steps) for name in names & one.keys()}
        self.assertEqual({*range(-2, 71), -2147483648, 2147483647}, numbers)

    def test_sessions_differ_in_what_they_find(self):
        found = [session.circumstances for session in SESSIONS]
        self.assertEqual({"managed", "basic"}, {one.road for one in found})
        failures = [failure for one in found for failure in one.failures.values()]
        self.assertTrue({str, list} <= set(map(type, failures)))
        self.assertTrue(any(one.without_companion for one in found))
        self.assertTrue(any(one.disabled == 1 for one in found))

    def test_sessions_differ_in_their_settings_files(self):
        found = [session.circumstances for session in SESSIONS]
        local = [file for one in found for file in (one.settings, one.subfolder_settings)]
        files = [file for file in local if file] + [one.factory_in_use for one in found if one.factory_in_use]
        readable = [file for file in files if not file.defect]
        self.assertIn(None, local)
        self.assertEqual(LAYOUTS.keys(), {file.layout for file in readable})
        self.assertEqual(ENCODINGS.keys(), {file.encoding for file in readable})
        self.assertEqual({"LumeqConfig", "LUMConfig", "Anything"}, {file.root for file in readable})
        self.assertGreater(len({file.defect for file in files}), 5)
        self.assertTrue(any(file.read_only for file in files))
        self.assertTrue(any(one.named_factory for one in found))
        self.assertTrue(any(one.factory_in_use is None for one in found))
        self.assertTrue(any(one.factory_in_use and one.factory_in_use.attributes.get("version") != "4.0" for one in found))
        self.assertTrue(any(len(set(keys)) < len(keys) for keys in ([key for key, _ in file.elements] for file in files)))

    def test_sessions_differ_in_what_they_log(self):
        factories = [session.circumstances.factory_in_use for session in SESSIONS]
        logs = {tuple(map(factory.text, ("Log", "LogLevel", "LogDate"))) for factory in factories if factory}
        self.assertGreater(len(logs), 6)
        self.assertEqual({True, False}, {is_open(date) for switch, _, date in logs if switch.lower() == "date"})

    def test_texts_beside_a_rule_are_refused_and_there_are_some_that_are_not(self):
        self.assertEqual(PATTERNS.keys() - {"biid", "subpath"}, BESIDE.keys())
        for name, texts in SEEDS.items():
            self.assertTrue(any(map(PATTERNS[name].matches, texts)), name)
        self.assertTrue(all(map(PATTERNS["subpath"].matches, [*SUBFOLDERS, *BASIC_SUBFOLDERS])))

    def test_sessions_hold_what_is_hard_to_take(self):
        text = "".join(json.dumps(step) for session in SESSIONS for step in session.steps)
        for hard in ('"times": 100000', '"units": [55296]', "\\u0000", "\\u0001", "\\u0080", "\\ud83d\\ude00", "%s%n%d",
                     "null"):
            self.assertIn(hard, text)


    def test_texts_hold_characters_of_every_block(self):
        texts = set()

        def look(form: Any) -> None:
            if isinstance(form, str) or isinstance(form, dict) and "units" in form:
                texts.update(characters(session_text(form)))
            elif isinstance(form, (list, dict)):
                for part in form.values() if isinstance(form, dict) else form:
                    look(part)

        look([session.steps for session in SESSIONS])
        self.assertEqual([], [hex(block) for block in BLOCKS
                              if not texts & set(map(chr, range(block, block + ROW)))])

    def test_a_context_has_a_thousand_pairs(self):
        self.assertIn(1000, [len(context) // 1000 * 1000 for session in SESSIONS for one in calls(session.steps)
                             for context in [one.get("localContext") or []]])

    def test_sixty_four_tasks_are_open_that_other_threads_complete(self):
        found = 0
        for session in SESSIONS:
            for first, second in zip(session.steps, session.steps[1:]):
                if len(first.get("threads", [])) != 8 or len(second.get("threads", [])) != 8:
                    continue
                found += 1
                opened, closed = ({step[name]: number for number, thread in enumerate(block["threads"])
                                   for step in thread if name in step}
                                  for block, name in ((first, "handle"), (second, "taskHandle")))
                self.assertEqual(64, len(opened))
                self.assertEqual(opened.keys(), closed.keys())
                self.assertTrue(any(opened[task] != closed[task] for task in opened))
                for block in (first, second):
                    self.assertEqual(8, len({json.dumps(thread[0]) for thread in block["threads"]}))
        self.assertGreater(found, 3)


class Smaller(unittest.TestCase):
    def test_keeps_the_steps_that_the_difference_needs(self):
        session = Session([{"sleepMsec": number} for number in range(37)], Circumstances(road="basic"))

        def fails(other: Session) -> bool:
            return {3, 20, 36} <= {step["sleepMsec"] for step in other.steps}

        self.assertEqual(session._replace(steps=[{"sleepMsec": 3}, {"sleepMsec": 20}, {"sleepMsec": 36}]),
                         smaller(session, fails))

    def test_may_come_to_nothing(self):
        self.assertEqual([], smaller(Session([{"sleepMsec": 1}], Circumstances()), lambda session: True).steps)


if __name__ == "__main__":
    unittest.main()
