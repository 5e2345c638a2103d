"""Eight threads over all exports, and four processes at once: every call has its whole effect, and has it once."""

import json
import tempfile
import time
import unittest
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import endurance
from call_history import ROADS, History, Step, follow_log, process_steps
from standstill import again_if_disturbed
from support import BUILD, HOST_SECONDS, ROOT, Outcome, SessionTestCase, lines_of, session_player
from task_support import without_chance

EXPORTS = (ROOT / "tests" / "exports.txt").read_text().split()


def session_text(first: list[Step], *threads: list[Step]) -> str:
    """The first list is the main thread's, before the others begin."""
    lines = [step.call for step in first] + [{"threads": [[step.call for step in steps] for steps in threads]}]
    return "".join(json.dumps(line) + "\n" for line in lines)


class HistoryTestCase(SessionTestCase):
    host_seconds = HOST_SECONDS * max(1, endurance.FACTOR)

    def check_host(self, outcome: Outcome, history: History, threads: list[list[Step]]):
        """The host saw every call return, and the companion what the log tells, in the log's order."""
        self.assertEqual(0, outcome.status, outcome.errors)
        self.assertEqual(Counter(step.call["call"] for steps in threads for step in steps),
                         Counter(line["call"] for line in outcome.host))
        self.assertEqual([], [line for line in outcome.host if "error" in line])
        for ending, handle in (("Initiated", "set"), ("Completed", "null")):
            self.assertEqual({handle}, {line["handle"] for line in outcome.host if line["call"].endswith(ending)})
        self.assertEqual(history.operations, [without_chance(operation) for operation in outcome.companion])

    def check_log(self, outcome: Outcome, histories: list[History]) -> int:
        lines = lines_of(outcome.text("Lumeq.Log.txt"))
        self.assertEqual([line for line in lines if "Z ERROR   0x" in line], lines_of(outcome.text("Lumeq.Error.txt")))
        self.assertEqual(4 * len(histories), sum(" | Logger: " in line for line in lines))
        return follow_log(outcome.text("Lumeq.Log.txt"), histories)


class EightThreads(HistoryTestCase):
    ROUNDS = {"managed": 5, "basic": 4}

    def test_every_call_is_whole_and_counted_once(self):
        for road in ROADS:
            with self.subTest(road):
                threads = process_steps(0, 8, endurance.times(self.ROUNDS[road]))
                self.assertEqual(set(EXPORTS), {step.call["call"] for step in threads[1]})
                before = time.monotonic()
                outcome = self.play_text(session_text(*threads), road=road)
                seconds = time.monotonic() - before
                history = History(road, threads)
                lines = self.check_log(outcome, [history])
                self.check_host(outcome, history, threads)
                endurance.tell(f"8 threads, {road} road: {seconds:.1f} s, {len(outcome.host)} calls, {lines} lines, "
                               f"{len(outcome.records)} events")


class FourProcesses(HistoryTestCase):
    ROUNDS = {"managed": 3, "basic": 3}

    def test_lines_of_all_stand_whole_in_the_same_files(self):
        for road in ROADS:
            with self.subTest(road):
                # A line that waits for its turn when the machine stands still for a second is lost, as it is to be.
                again_if_disturbed(lambda road=road: self.check_road(road), 0.5)

    def check_road(self, road: str) -> None:
        processes = [process_steps(at, 2, endurance.times(self.ROUNDS[road])) for at in range(4)]
        before = time.monotonic()
        outcomes = self.play_at_once(road, [session_text(*threads) for threads in processes])
        seconds = time.monotonic() - before
        histories = [History(road, threads) for threads in processes]
        lines = self.check_log(outcomes[0], histories)
        for outcome, history, threads in zip(outcomes, histories, processes):
            self.check_host(outcome, history, threads)
        endurance.tell(f"4 processes of 2 threads, {road} road: {seconds:.1f} s, "
                       f"{sum(len(outcome.host) for outcome in outcomes)} calls, {lines} lines")

    def play_at_once(self, road: str, sessions: list[str]) -> list[Outcome]:
        """Each in a host folder of its own. All outcomes have the log that they shared."""
        self.machine.clear()
        conditions = session_player.Conditions(road=road)
        with tempfile.TemporaryDirectory(dir=self.machine.prefix) as name:
            players = [Player(self.machine, Path(name) / str(at), conditions) for at in range(len(sessions))]
            with ThreadPoolExecutor(len(sessions)) as pool:
                statuses = pool.map(Player.play, players, sessions, [self.host_seconds] * len(sessions))
            return [player.outcome(status) for player, status in zip(players, statuses)]


class Player:
    """A host of its own folder, on a machine that others play on as well."""

    def __init__(self, machine: session_player.Machine, folder: Path, conditions: session_player.Conditions):
        self.machine = session_player.Machine(machine.prefix)
        self.machine.host_folder = folder / "Host"
        self.folder = folder
        self.conditions = conditions
        folder.mkdir()
        self.machine.set_up(conditions, BUILD)

    def play(self, session: str, seconds: float) -> int:
        (self.folder / "session").write_text(session)
        with open(self.folder / "errors", "wb") as errors:
            return self.machine.run_host(self.folder / "session", self.conditions, self.folder / "host.jsonl", seconds,
                                         errors)

    def outcome(self, status: int) -> Outcome:
        self.machine.collect(self.folder)
        return Outcome(status, (self.folder / "errors").read_text(errors="replace"), self.folder)


if __name__ == "__main__":
    unittest.main()
