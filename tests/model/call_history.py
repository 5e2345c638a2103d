"""Predicts in log order what hosts of several threads leave.

Exports are serialised, so the lines of the log are in the order of the calls. The first line of each call shows whose
call it is, and the model then predicts the call.
"""

from typing import Iterator

from circumstances import Circumstances, Session
from log_model import LogLine
from model_check import ReadLine, read_log, same_line
from session_model import Prediction, SessionModel, predict
from support.outcome import Outcome

POLICY = "Logger: "
"""So begin the lines about the log's policy, which come once per process, before whichever call is first."""


class BrokenHistory(AssertionError):
    """The log does not show a history of these calls."""


class History:
    """Follows the lines of one process."""

    def __init__(self, circumstances: Circumstances, threads: list[list[dict]]):
        """Each thread's first call logs a line that no other call logs."""
        self._model = SessionModel(circumstances)
        self._first_lines = [_of_the_call(SessionModel(circumstances).call(calls[0]))[0] for calls in threads]
        self._to_come = [iter(calls) for calls in threads]
        self._threads: dict[str, Iterator[dict]] = {}
        self._caller = ""
        self._lines_to_come: list[LogLine] = []
        """Those of the call in progress."""

    def owns(self, line: ReadLine) -> bool:
        """Whether the line is from one of the process's threads."""
        for first, calls in zip(self._first_lines, self._to_come):
            if same_line(first, line):
                self._threads.setdefault(line.thread, calls)
        return line.thread in self._threads

    def follow(self, line: ReadLine) -> None:
        if not self._lines_to_come:
            self._begin_call(line)
        expected = self._lines_to_come.pop(0)
        if line.thread != self._caller or not same_line(expected, line):
            raise BrokenHistory(f"expected {expected} of thread {self._caller}, got {line}")

    def _begin_call(self, line: ReadLine) -> None:
        call = next(self._threads[line.thread], None)
        if call is None:
            raise BrokenHistory(f"the thread has no call left for {line}")
        self._caller, self._lines_to_come = line.thread, _of_the_call(self._model.call(call))

    def prediction(self) -> Prediction:
        """At the log's end. Fails if lines are missing."""
        left = [call for calls in self._to_come for call in calls]
        if left or self._lines_to_come:
            raise BrokenHistory(f"lost: {self._lines_to_come} and the lines of {len(left)} calls: {left[:3]}")
        return self._model.prediction()


class CallOrder:
    """The order in which the threads of a session made their calls.

    Each call logs at least one line, and each thread's first call a line that no other thread's first call logs.
    """

    def __init__(self, session: Session, outcome: Outcome):
        self._circumstances = session.circumstances
        self._lines = [line for line in read_log(outcome.text("Lumeq.Log.txt")) if line.severity != "DEBUG"]
        self._started: dict[str, list[dict]] = {}
        """What each thread has still to make, by its number. The system uses the number of an ended thread again."""

    def next_thread(self, logged: int, left: list[list[dict]]) -> int:
        """Any thread that has calls to make, where the log is not as predicted; the comparison shows that."""
        if logged < len(self._lines):
            line = self._lines[logged]
            if not self._started.get(line.thread):
                self._start(line, left)
            for at, calls in enumerate(left):
                if calls and calls is self._started.get(line.thread):
                    return at
        return next(at for at, calls in enumerate(left) if calls)

    def _start(self, line: ReadLine, left: list[list[dict]]) -> None:
        started = list(map(id, self._started.values()))
        for calls in left:
            if calls and id(calls) not in started and self._begins_with(line, calls[0]):
                self._started[line.thread] = calls

    def _begins_with(self, line: ReadLine, call: dict) -> bool:
        expected = _of_the_call(SessionModel(self._circumstances).call(call))[:1]
        return any(same_line(first, line) for first in expected)


def prediction_of(session: Session, outcome: Outcome) -> Prediction:
    """Takes from the outcome only in which order its threads made their calls."""
    return predict(*session, CallOrder(session, outcome).next_thread)


def _of_the_call(lines: list[LogLine]) -> list[LogLine]:
    return [line for line in lines if not line.messages[0].startswith(POLICY)]


def follow_log(text: str, histories: list[History]) -> int:
    """Accounts for every line of a log that the processes shared. Returns the number of lines."""
    lines = [line for line in read_log(text) if not line.message.startswith(POLICY)]
    for line in lines:
        owner = next((history for history in histories if history.owns(line)), None)
        if owner is None:
            raise BrokenHistory(f"no process has this line: {line}")
        owner.follow(line)
    return len(lines)
