"""Each example of the catalogue, played against the built DLL."""

import json
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import SessionTestCase  # noqa: E402
from catalogue_tests import CATALOGUE, OPERATIONS, PATTERNS, example_session, record_differences  # noqa: E402
from dll_verdicts import verdicts_of  # noqa: E402


class Case:
    """One call that the catalogue says something about, with the calls that lead to it."""

    def __init__(self, operation: dict, changes: dict, accepted: bool, layer: str = ""):
        self.operation, self.changes, self.accepted, self.layer = operation, changes, accepted, layer
        *self.before, its_call = example_session(operation)
        self.call = {**its_call, **changes}

    def __str__(self) -> str:
        return f"{self.operation['name']} {self.changes}"


def cases_of_operations() -> list[Case]:
    cases = []
    for operation in OPERATIONS.values():
        cases.append(Case(operation, {}, True))
        cases += [Case(operation, changes, True) for changes in operation["accepted"]]
        cases += [Case(operation, refusal["with"], False, refusal["refusedBy"]) for refusal in operation["refused"]]
    return cases


def cases_of_patterns() -> list[Case]:
    """Each text of a pattern as the argument of the first operation that uses it. The exports check first."""
    cases = []
    for name, pattern in PATTERNS.items():
        users = [(operation, argument["name"]) for operation in OPERATIONS.values() for argument in operation["arguments"]
                 if argument.get("pattern") == name and argument["type"] == "text"]
        for verdict in ("accepted", "refused"):
            for text in pattern[verdict] if users else ():
                operation, argument = users[0]
                cases.append(Case(operation, {argument: text}, verdict == "accepted", "export"))
    return cases


class Examples(SessionTestCase):
    def verdicts_of(self, cases: list[Case]) -> list:
        steps, places = [], []
        for case in cases:
            steps += case.before
            places.append(len(steps))
            steps.append(case.call)
        verdicts = verdicts_of(self, steps)
        return [verdicts[place] for place in places]

    def test_of_operations_are_accepted_and_refused_as_stated(self):
        cases = cases_of_operations()
        for case, verdict in zip(cases, self.verdicts_of(cases)):
            with self.subTest(str(case)):
                self.assertEqual(case.accepted, not verdict.is_refused, verdict.refusals)
                if not case.accepted:
                    self.assertEqual({case.layer}, {layer for layer, _ in verdict.refusals})
                if "record" in case.operation and case.changes.get("discoveredDeviceList") != []:
                    self.assertEqual(case.accepted, bool(verdict.operations))

    def test_of_patterns_are_accepted_and_refused_as_stated(self):
        cases = cases_of_patterns()
        self.assertGreater(len(cases), 140)
        for case, verdict in zip(cases, self.verdicts_of(cases)):
            with self.subTest(str(case)):
                self.assertEqual(case.accepted, not verdict.is_refused, verdict.refusals)

    def test_leave_the_records_that_the_catalogue_describes(self):
        cases = [Case(operation, {}, True) for operation in OPERATIONS.values() if "record" in operation]
        for case, verdict in zip(cases, self.verdicts_of(cases)):
            with self.subTest(str(case)):
                self.assertEqual([], self.described_differently(case.operation, verdict.operations[-1]))

    def described_differently(self, operation: dict, handed: dict) -> list[str]:
        described = operation["record"]
        if described["kind"] == "event":
            return self.unknown_fields(handed["record"]) + record_differences(operation, handed["record"])
        if described["kind"] == "data":
            self.assertEqual((described["name"], operation["example"]["discoveredDeviceList"][0]),
                             (handed["dataType"], handed["data"]))
            return []
        fields = sorted(field["field"] for field in described["details"])
        return [] if fields == sorted(handed.keys() - {"operation"}) else [f"{fields} is {json.dumps(handed)}"]

    def unknown_fields(self, record: dict) -> list[str]:
        """Fields that no event has."""
        names = set()
        for name, value in record.items():
            names |= {f"{name}.{inner}" for inner in value} if name == "app_event_context" else {name}
        context = record["app_event_context"]
        names |= {f"app_event_context.context_global.{name}" for name in context["context_global"]}
        described = {field["field"] for field in CATALOGUE["event"]["fields"]}
        return sorted(names - described - {"app_event_context.context_global"})


if __name__ == "__main__":
    unittest.main()
