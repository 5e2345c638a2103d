"""Eight threads over all exports, and four processes at once: every call has its whole effect, and has it once."""

import json
import time
import unittest

from support import ROOT, Outcome, SessionTestCase, lines_of
from support import endurance
from support.host_process import HOST_SECONDS, hosts, session_of
from support.standstill import again_if_disturbed
from support.thread_sessions import process_calls, session_steps
import session_player
from call_history import POLICY, History, follow_log
from circumstances import Circumstances
from model_check import operation_differences, settings_differences
from session_model import Prediction

EXPORTS = (ROOT / "tests" / "exports.txt").read_text().split()
ROADS = session_player.ROADS


def sorted_lines(lines: list[dict]) -> list[str]:
    return sorted(json.dumps(line, sort_keys=True) for line in lines)


class HistoryTestCase(SessionTestCase):
    host_seconds = HOST_SECONDS * max(1, endurance.FACTOR)

    def check_host(self, outcome: Outcome, prediction: Prediction):
        """The host saw what every call returned, and the companion got what the log shows, in the log's order."""
        self.assertEqual(0, outcome.status, outcome.errors)
        # Threads may print in another order than that of their calls.
        self.assertEqual(sorted_lines(prediction.answers), sorted_lines(outcome.host))
        self.assertEqual([], list(operation_differences(prediction, outcome)))

    def check_log(self, outcome: Outcome, histories: list[History]) -> int:
        lines = lines_of(outcome.text("Lumeq.Log.txt"))
        self.assertEqual([line for line in lines if "Z ERROR   0x" in line], lines_of(outcome.text("Lumeq.Error.txt")))
        self.assertEqual(4 * len(histories), sum(" | " + POLICY in line for line in lines))
        return follow_log(outcome.text("Lumeq.Log.txt"), histories)


class EightThreads(HistoryTestCase):
    ROUNDS = {"managed": 5, "basic": 4}

    def test_every_call_is_whole_and_counted_once(self):
        for road in ROADS:
            with self.subTest(road):
                calls = process_calls(0, 8, endurance.times(self.ROUNDS[road]))
                self.assertEqual(set(EXPORTS), {step["call"] for step in calls[1]})
                before = time.monotonic()
                outcome = self.play(*session_steps(calls), road=road)
                seconds = time.monotonic() - before
                history = History(Circumstances(road=road), calls)
                lines = self.check_log(outcome, [history])
                prediction = history.prediction()
                self.check_host(outcome, prediction)
                self.assertEqual([], list(settings_differences(prediction, outcome)))
                endurance.print_done(f"8 threads, {road} road: {seconds:.1f} s, {len(outcome.host)} calls, {lines} lines, "
                                     f"{len(outcome.records)} events")


class FourProcesses(HistoryTestCase):
    ROUNDS = {"managed": 3, "basic": 3}

    def test_lines_of_all_stand_whole_in_the_same_files(self):
        for road in ROADS:
            with self.subTest(road):
                # While the machine stands still for a second, a line that waits for the log's mutex is rightly lost.
                again_if_disturbed(lambda road=road: self.check_road(road), 0.5)

    def check_road(self, road: str) -> None:
        processes = [process_calls(at, 2, endurance.times(self.ROUNDS[road])) for at in range(4)]
        before = time.monotonic()
        outcomes = self.play_at_once(road, [session_of(*session_steps(calls)) for calls in processes])
        seconds = time.monotonic() - before
        histories = [History(Circumstances(road=road), calls) for calls in processes]
        lines = self.check_log(outcomes[-1], histories)
        for outcome, history in zip(outcomes, histories):
            self.check_host(outcome, history.prediction())
        endurance.print_done(f"4 processes of 2 threads, {road} road: {seconds:.1f} s, "
                             f"{sum(len(outcome.host) for outcome in outcomes)} calls, {lines} lines")

    def play_at_once(self, road: str, sessions: list[str]) -> list[Outcome]:
        """The last outcome has the whole log, which they shared."""
        conditions = session_player.Conditions(road=road)
        with hosts(self.machine) as start:
            running = [start(session, conditions) for session in sessions]
            return [host.finish(self.host_seconds) for host in running]


if __name__ == "__main__":
    unittest.main()
