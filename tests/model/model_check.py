"""Compares the results of a session with the model's prediction."""

import functools
import os
import re
import xml.etree.ElementTree
from typing import Any, Iterator, NamedTuple, Sequence

from log_model import LogLine
from session_arguments import SET_HANDLE
from session_model import Chance, Prediction
from support.log_lines import LINE, lines_of
from support.outcome import Outcome
from wide_text import wide

SETTINGS_FILE = "LumeqLocalSettings.xml"
LEFTOVERS = "leftovers.txt"
PLACE = "programdata\\zuvan\\"

_GUID = re.compile("[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}")
_HANDLE = re.compile("^taskHandle: 0x(?!0{16})[0-9A-F]{16}(?=,)")


class Seen:
    """The values that no two runs share, as they came, and what does not fit of them."""

    def __init__(self):
        self.values: dict[Chance, str] = {}
        self.initiated: dict[str, int] = {}
        """By the task's identifier, the time of its first event."""

    def fits(self, chance: Chance, actual: Any) -> bool:
        if chance.kind == "timestamp":
            return isinstance(actual, int) and 1_500_000_000_000 < actual < 2_147_483_647_000
        if chance.kind == "duration":
            return isinstance(actual, str)
        if chance not in self.values:
            if not _GUID.fullmatch(str(actual)) or actual in self.values.values():
                return False
            self.values[chance] = actual
        return self.values[chance] == actual

    def duration_fits(self, operation: dict) -> bool:
        """A task takes the time between its two events."""
        record = operation["record"]
        if record["app_event_object"] != "task":
            return True
        guid = record["app_event_context"]["context_local"]["_app_event_task_guid"]
        if record["app_event_action"] == "initiated":
            self.initiated[guid] = operation["timestamp"]
            return True
        return record["app_event_details"]["task_duration"] == str(operation["timestamp"] - self.initiated[guid])


def differences(prediction: Prediction, outcome: Outcome) -> list[str]:
    """Empty if all is as predicted."""
    found: list[str] = []
    if outcome.status != 0 or outcome.errors:
        found.append(f"the host ended with {outcome.status}: {outcome.errors}")
    try:
        found += _answers(prediction, outcome)
        found += operation_differences(prediction, outcome)
        found += _log(prediction, outcome)
        found += settings_differences(prediction, outcome)
    except (KeyError, TypeError, UnicodeDecodeError, xml.etree.ElementTree.ParseError) as problem:
        found.append(f"the results cannot be read: {problem!r}")
    return found


def _paired(what: str, expected: Sequence, actual: Sequence, equal) -> Iterator[str]:
    """The first difference alone, since one that is missing shifts all that follow."""
    for at, (one, other) in enumerate(zip(expected, actual)):
        if not equal(one, other):
            yield f"{what} {at}: {_contrast(one, other)}"
            return
    if len(expected) != len(actual):
        longer = expected if len(expected) > len(actual) else actual
        yield (f"{what}: predicted {len(expected)}, came {len(actual)}; "
               f"the first without a counterpart: {_around(ascii(longer[min(len(expected), len(actual))]), 0)}")


def _contrast(expected: Any, actual: Any) -> str:
    one, other = ascii(expected), ascii(actual)
    at = len(os.path.commonprefix([one, other]))
    return f"predicted {_around(one, at)}\n    came {_around(other, at)}"


def _around(text: str, at: int) -> str:
    """The text. Of a long one the beginning and the surroundings of the place."""
    if len(text) <= 1200:
        return text
    return f"{text[:300]} ... at {at}: {text[max(at - 300, 300):at + 300]} ..."


def _answers(prediction: Prediction, outcome: Outcome) -> Iterator[str]:
    came = list(outcome.host)
    for together in prediction.together:
        came[together] = _in_order_of(prediction.answers[together], came[together])
    return _paired("answer", prediction.answers, came, lambda expected, actual: expected == actual)


def _in_order_of(expected: list[dict], actual: list[dict]) -> list[dict]:
    """Those that were expected come first, in that order."""
    left = list(actual)
    ordered = []
    for answer in expected:
        if answer in left:
            left.remove(answer)
            ordered.append(answer)
    return ordered + left


def operation_differences(prediction: Prediction, outcome: Outcome) -> Iterator[str]:
    seen = Seen()

    def equal(expected: dict, actual: dict) -> bool:
        return _same(expected, actual, seen) and ("record" not in actual or seen.duration_fits(actual))

    return _paired("operation", prediction.operations, outcome.companion, equal)


def _same(expected: Any, actual: Any, seen: Seen) -> bool:
    if isinstance(expected, Chance):
        return seen.fits(expected, actual)
    if isinstance(expected, dict):
        if not isinstance(actual, dict):
            return False
        actual = {wide(key): value for key, value in actual.items()}
        return expected.keys() == actual.keys() and all(_same(expected[key], actual[key], seen) for key in expected)
    if isinstance(expected, str):
        return isinstance(actual, str) and expected == wide(actual)
    return type(expected) is type(actual) and expected == actual


def _without_numbers(message: str) -> str:
    """Handles differ from run to run, and source lines from version to version."""
    return re.sub(r"LumeqApi\(\d+", "LumeqApi(", _HANDLE.sub("taskHandle: 0x" + SET_HANDLE, message))


class ReadLine(NamedTuple):
    """A line of a real log."""

    severity: str
    function: str
    message: str
    thread: str


@functools.lru_cache(maxsize=100)
def read_log(text: str) -> tuple[ReadLine, ...]:
    lines = []
    for line in lines_of(text):
        match = LINE.fullmatch(line)
        lines.append(ReadLine(match["severity"], match["function"] or "", _without_numbers(match["message"]),
                              match["thread"]) if match else ReadLine("(not a log line)", "", line, ""))
    return tuple(lines)


def same_line(expected: LogLine, actual: ReadLine) -> bool:
    return expected[:2] == actual[:2] and actual.message in map(_without_numbers, expected.messages)


def _log(prediction: Prediction, outcome: Outcome) -> Iterator[str]:
    lines = read_log(outcome.text("Lumeq.Log.txt"))
    yield from _paired("log line", prediction.log, [line for line in lines if line.severity != "DEBUG"], same_line)
    yield from _paired("line of the error file", [line for line in prediction.log if line.severity == "ERROR"],
                       read_log(outcome.text("Lumeq.Error.txt")), same_line)
    for name in ("Lumeq.Data.txt", LEFTOVERS):
        if name in outcome.files:
            yield f"{name} came: {_around(outcome.text(name), 0)}"


def settings_differences(prediction: Prediction, outcome: Outcome) -> Iterator[str]:
    actual = {_place(name): content for name, content in outcome.files.items() if name.endswith(SETTINGS_FILE)}
    for place in sorted(prediction.settings.keys() | actual.keys()):
        expected = prediction.settings.get(place)
        came = _read_settings(actual[place]) if place in actual else None
        if expected != came:
            yield f"settings in {place}: {_contrast(expected, came)}"


def _place(name: str) -> str:
    """Of a collected file; those in the drive's other folders are collected under "drive"."""
    folder = name.removesuffix(SETTINGS_FILE).rstrip("/").replace("/", "\\").lower()
    if folder == "drive" or folder.startswith("drive\\"):
        return folder.removeprefix("drive\\")
    return PLACE + (folder + "\\" if folder else "") + "lumeq"


def _read_settings(content: bytes) -> Any:
    """The bytes of a file that is no XML."""
    try:
        root = xml.etree.ElementTree.fromstring(content)
    except xml.etree.ElementTree.ParseError:
        return content
    return root.tag, dict(root.attrib), [(child.tag, (child.text or "").strip()) for child in root]
