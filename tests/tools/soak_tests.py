"""What tools/soak prints and keeps, with sessions that are not played."""

import contextlib
import io
import os
import re
import runpy
import sys
import tempfile
import threading
import time
import unittest
from pathlib import Path
from typing import Optional
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import ROOT  # noqa: E402
import played_sessions  # noqa: E402
import session_player  # noqa: E402
from circumstances import Session, count_calls  # noqa: E402
from session_generator import session_of  # noqa: E402

SOAK = ROOT / "tools" / "soak"


def calls_of(session: Session, export: str) -> int:
    return sum(step.get("call") == export for step in session.steps)


def found_in(session: Session, machine, build: Path, keep: Optional[Path] = None) -> list[str]:
    """A library that fails where a session calls ToString twice."""
    if keep:
        played_sessions.write(session, keep)
    return ["answer 1: other"] if calls_of(session, "ToString") >= 2 else []


class Soak(unittest.TestCase):
    def setUp(self):
        self.build = Path(self.enterContext(tempfile.TemporaryDirectory()))
        (self.build / "lumeq-host.exe").touch()
        self.enterContext(mock.patch.object(played_sessions, "differences_of", found_in))
        self.machines = []
        self.enterContext(mock.patch.object(session_player, "machine", self.machine))
        self.main = runpy.run_path(str(SOAK))["main"]

    def machine(self, build: Path) -> contextlib.AbstractContextManager:
        self.machines.append(f"machine {len(self.machines)}")
        return contextlib.nullcontext(self.machines[-1])

    def run_soak(self, *arguments: str) -> tuple[int, list[str]]:
        with mock.patch.object(sys, "argv", ["soak", *arguments, "--build", str(self.build)]), \
                contextlib.redirect_stdout(io.StringIO()) as printed:
            status = self.main()
        return status, re.sub(r"\d+(\.\d s| calls a minute)", "(time)", printed.getvalue()).splitlines()

    def test_prints_the_seed_of_each_session_and_the_sums(self):
        sessions = [session_of(seed, 1) for seed in (5, 6)]
        self.assertEqual([0, 0], [len(found_in(session, None, self.build)) for session in sessions])
        status, lines = self.run_soak("2", "--seed", "5", "--decks", "1", "--machines", "1")
        self.assertEqual(0, status)
        self.assertEqual([f"seed 5: {sessions[0].calls} calls, (time), as predicted",
                          f"seed 6: {sessions[1].calls} calls, (time), as predicted",
                          f"2 sessions, {sessions[0].calls + sessions[1].calls} calls, (time), 0 with differences"], lines)

    def test_calls_a_minute_are_those_of_all_machines(self):
        seconds = iter(range(0, 1000, 15))
        with mock.patch.object(time, "monotonic", lambda: next(seconds)), \
                contextlib.redirect_stdout(io.StringIO()) as printed, \
                mock.patch.object(sys, "argv", ["soak", "1", "--seed", "5", "--build", str(self.build)]):
            self.main()
        # Of the four times that were taken the first and the last are 45 seconds apart.
        calls = session_of(5).calls
        self.assertIn(f"{calls} calls, {calls / 0.75:.0f} calls a minute", printed.getvalue())

    def test_machines_share_the_seeds(self):
        begun = threading.Barrier(3, timeout=60)
        used = {}

        def differences_of(session: Session, machine: str, build: Path, keep: Optional[Path] = None) -> list[str]:
            used.setdefault(machine, []).append(session)
            begun.wait()
            return []

        with mock.patch.object(played_sessions, "differences_of", differences_of):
            _, lines = self.run_soak("6", "--seed", "5", "--decks", "1", "--machines", "3")
        self.assertEqual([2, 2, 2], list(map(len, used.values())))
        self.assertEqual({f"seed {seed}" for seed in range(5, 11)}, {line.partition(":")[0] for line in lines[:-1]})

    def test_has_a_machine_for_each_processor_but_none_too_many(self):
        self.run_soak("99", "--seed", "5", "--decks", "0")
        self.assertEqual(os.cpu_count(), len(self.machines))
        self.run_soak("1", "--seed", "5", "--machines", "7")
        self.assertEqual(os.cpu_count() + 1, len(self.machines))

    def test_difference_that_does_not_come_again_is_printed_as_it_came(self):
        results = iter([["answer 1: other"], []])
        with mock.patch.object(played_sessions, "differences_of", lambda *_: next(results)):
            status, lines = self.run_soak("1", "--seed", "5")
        self.assertEqual((1, ["  none when it was played again, but before:", "  answer 1: other"]), (status, lines[1:3]))

    def test_failing_machine_stops_the_others_and_fails_the_run(self):
        def differences_of(session: Session, machine: str, build: Path, keep: Optional[Path] = None) -> list[str]:
            if machine == "machine 1":
                raise OSError("no space")
            return []

        with mock.patch.object(played_sessions, "differences_of", differences_of), self.assertRaises(OSError):
            self.run_soak("1000000", "--decks", "0", "--machines", "2")

    def test_first_seed_is_random_unless_it_is_given(self):
        self.assertNotEqual(self.run_soak("1", "--decks", "1")[1][0], self.run_soak("1", "--decks", "1")[1][0])

    def test_difference_is_reported_and_kept_so_that_it_can_be_played_again(self):
        status, lines = self.run_soak("2", "--seed", "5")
        kept = self.build / "soak" / "seed-5"
        self.assertEqual(1, status)
        self.assertIn("  answer 1: other", lines)
        self.assertEqual(["2 with differences", "  seed 5", "  seed 6"], [lines[-3].split(", ")[3], *sorted(lines[-2:])])
        self.assertTrue(any(f"--replay {kept}" in line for line in lines))
        self.assertEqual(session_of(5), played_sessions.read(kept))
        status, lines = self.run_soak("--replay", str(kept))
        self.assertEqual((1, "1 sessions"), (status, lines[-2].split(", ")[0]))

    def test_stops_at_the_first_difference_on_demand(self):
        _, lines = self.run_soak("9", "--seed", "5", "--stop", "--machines", "1")
        self.assertEqual("  seed 5", lines[-1])

    def test_shrunk_session_holds_what_the_difference_needs(self):
        self.run_soak("1", "--seed", "5", "--shrink")
        kept = played_sessions.read(self.build / "soak" / "seed-5")
        self.assertEqual((2, 2), (calls_of(kept, "ToString"), len(kept.steps)))
        self.assertEqual(session_of(5).circumstances, kept.circumstances)

    def test_what_is_not_there_is_refused(self):
        for reason, *arguments in (("session.jsonl: no such file", "--replay", str(self.build / "nothing")),
                                   ("at least one machine is needed", "--machines", "0")):
            with self.assertRaises(SystemExit), contextlib.redirect_stderr(io.StringIO()) as errors:
                self.run_soak(*arguments)
            self.assertIn(reason, errors.getvalue())


class KeptSessions(unittest.TestCase):
    def test_read_the_same_as_they_were_written(self):
        with tempfile.TemporaryDirectory() as name:
            for seed in range(30):
                session = session_of(seed, 1)
                played_sessions.write(session, Path(name) / str(seed))
                self.assertEqual(session, played_sessions.read(Path(name) / str(seed)))

    def test_calls_within_other_steps_count(self):
        call = {"call": "Pause"}
        self.assertEqual(8, count_calls([call, {"sleepMsec": 1}, {"times": 3, "calls": [call, call]},
                                         {"threads": [[call, {"unload": True}]]}, {"times": 0, "calls": [call]}]))


if __name__ == "__main__":
    unittest.main()
