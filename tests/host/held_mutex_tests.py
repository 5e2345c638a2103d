"""The log's mutex held by another process: which lines are lost, how long callers wait, and what a killed owner causes."""

import re
import time
import unittest
from typing import NamedTuple

from support.host_process import hosts, kill_program, program, session_of, wait_until
from support.standstill import again_if_disturbed
from support import SessionTestCase, call, lines_of

HOLDER = "lumeq-hold-log-mutex.exe"
LINE = re.compile(r"T(\d\d):(\d\d):(\d\d)\.(\d\d\d)Z TRACE +0x\w+ \| <[^>]*> timeoutMsec: (\d+)")
DAY = 24 * 3600 * 1000
CALLS = 60
FIRSTS = (0, 1000)


class Absence(NamedTuple):
    """The lines that a host lost."""

    lost: int
    before: int
    """When the line before them was made, in milliseconds since midnight. Only then is the mutex waited for."""
    after: int

    @property
    def milliseconds(self) -> int:
        return (self.after - self.before) % DAY


def session(first: int) -> str:
    """One line of the log for each call, numbered."""
    return session_of(*(step for number in range(first, first + CALLS)
                        for step in (call("FlushEx", timeoutMsec=number), {"sleepMsec": 20})))


def times_by_number(log: str) -> dict[int, int]:
    """When each line was made. Fails for a line that is none of the session's, or is there twice."""
    lines = [line for line in lines_of(log) if " | Logger: " not in line]
    times = {}
    for line in lines:
        hours, minutes, seconds, milliseconds, number = map(int, LINE.search(line).groups())
        # The hour in the log is one more than the clock's.
        times[number] = (((hours - 1) * 60 + minutes) * 60 + seconds) * 1000 + milliseconds
    if len(times) != len(lines):
        raise AssertionError("a line is there twice")
    return times


class HeldMutex(SessionTestCase):
    """Two hosts log all the time while another program has the mutex."""

    def play(self, milliseconds: int, meanwhile=lambda holder: None) -> tuple[list[str], list[Absence]]:
        """What the holder printed, and what each host lost. `meanwhile` is run once the mutex is held."""
        with hosts(self.machine) as start, program(self.machine, HOLDER, str(milliseconds)) as holder:
            players = [start(session(first)) for first in FIRSTS]
            wait_until(lambda: all(player.printed() >= 5 for player in players))
            holder.stdin.write("now\n")
            holder.stdin.flush()
            printed = [holder.stdout.readline()]
            meanwhile(holder)
            printed += holder.stdout.readlines()
            self.assertEqual([0, 0], [player.finish().status for player in players])
            log = players[-1].outcome.text("Lumeq.Log.txt")
        return printed, self.absences(log)

    def play_undisturbed(self, milliseconds: int, check, meanwhile=lambda holder: None) -> None:
        """Runs `check` on the result of play. Runs both again if the check fails and the machine stood still for longer
        than the test can tolerate."""
        again_if_disturbed(lambda: check(*self.play(milliseconds, meanwhile)), 0.1)

    def absences(self, log: str) -> list[Absence]:
        written = times_by_number(log)
        self.assertLessEqual(set(written), {first + at for first in FIRSTS for at in range(CALLS)})
        found = []
        for first in FIRSTS:
            lost = [number for number in range(first, first + CALLS) if number not in written]
            if lost:
                self.assertEqual(list(range(lost[0], lost[-1] + 1)), lost, "all in a row")
                found.append(Absence(len(lost), written[lost[0] - 1], written[lost[-1] + 1]))
        return found

    def test_lines_of_that_time_are_lost_and_each_waits_once(self):
        def check(printed: list[str], absences: list[Absence]) -> None:
            (held, released) = (int(line.split()[1]) for line in printed)
            self.assertEqual(2, len(absences), "both hosts")
            for absence in absences:
                self.assertEqual(2, absence.lost)
                # The last line before was made, at the latest, while the mutex was being taken.
                self.assertLess((absence.before - held + DAY // 2) % DAY - DAY // 2, 100)
                self.assertGreaterEqual(absence.milliseconds, 2000)
                self.assertLess(absence.milliseconds, 2900)
                # The first line after waited less than the second that it may.
                self.assertLess((released - absence.after) % DAY, 1000)

        self.play_undisturbed(2600, check)

    def test_owner_that_is_killed_costs_the_first_in_line_its_line_and_nobody_a_wait(self):
        def check(printed: list[str], absences: list[Absence]) -> None:
            self.assertEqual(1, len(printed))
            self.assertEqual([1], [absence.lost for absence in absences], "the mutex passed on to the other at once")
            self.assertLess(absences[0].milliseconds, 900)

        self.play_undisturbed(60_000, check, lambda holder: (time.sleep(0.4), kill_program(holder)))

    def test_owner_that_is_killed_after_lines_were_lost_stalls_nobody(self):
        def check(_, absences: list[Absence]) -> None:
            # The second that each waited, and the one in line when the owner died.
            self.assertEqual([1, 2], sorted(absence.lost for absence in absences))
            for absence in absences:
                self.assertLess(absence.milliseconds, 2000)

        self.play_undisturbed(60_000, check, lambda holder: (time.sleep(1.5), kill_program(holder)))

    def test_owner_that_was_killed_before_anybody_came_costs_nothing(self):
        with hosts(self.machine) as start:
            with program(self.machine, HOLDER, "60000") as holder:
                holder.stdin.write("now\n")
                holder.stdin.flush()
                holder.stdout.readline()
            outcome = start(session(0)).finish()
            self.assertEqual(0, outcome.status)
            self.assertEqual(list(range(CALLS)), list(times_by_number(outcome.text("Lumeq.Log.txt"))))


if __name__ == "__main__":
    unittest.main()
