"""Hosts that are killed while they save the settings: what the next one finds."""

import os
import random
import stat
import time
import unittest
from collections import Counter
from pathlib import Path

from support import endurance
from support.host_process import HostProcess, hosts, session_of
from support import SessionTestCase, call
import session_player

BEFORE = "<AppDeployedUuid>kept</AppDeployedUuid>"
NEIGHBOUR = r"^Lumeq[0-9A-F]{8}-[0-9A-F]{4}\.tmp$"
BASIC = session_player.Conditions(road="basic", log="warning")

# Each of these saves, Pause and the second Resume twice.
SAVING = [call("SetUserOptInEx", userHasOptedIn=True), call("Pause"), call("Resume"),
          call("SetUserOptInEx", userHasOptedIn=False), call("Pause"), call("Resume")]


ENDLESS = session_of({"times": 1_000_000, "calls": SAVING})
NEXT = [call("GetUserOptInEx"), call("Resume"), call("SetUserOptInEx", userHasOptedIn=True)]


def document(opted_in: bool, before_pause=None) -> str:
    pause = "" if before_pause is None else f"<OptinBeforePause>{before_pause}</OptinBeforePause>"
    return f'<LumeqConfig version="4.0">{BEFORE}<UserOptIn>{opted_in}</UserOptIn>{pause}</LumeqConfig>'


# All that the file may hold between two saves.
WHOLE = {document(False), document(True), document(True, True), document(False, True), document(False, False)}


class KilledWhileSaving(SessionTestCase):
    KILLS = 40

    def test_next_host_finds_a_whole_file_with_its_rights_and_clears_up(self):
        chance = random.Random(2)
        found: Counter[str] = Counter()
        with hosts(self.machine) as start:
            self.begin(document(False))
            for _ in range(endurance.times(self.KILLS)):
                victim = start(ENDLESS, BASIC)
                self.let_live(victim, chance)
                victim.kill()
                content = self.settings.read_text().strip()
                self.assertIn(content, WHOLE)
                found[content] += 1
            self.assertEqual(0o770, stat.S_IMODE(self.settings.stat().st_mode))
            self.check_next_host(start)
            left = len(self.neighbours())
            self.age_neighbours()
            self.check_next_host(start)
            self.assertEqual([], self.neighbours(), "the leavings of a minute ago")
        endurance.print_done(f"{found.total()} kills; {left} neighbours of the last minute were left; found "
                       f"{sorted(found.values())} times each of {len(found)} contents")

    @property
    def settings(self) -> Path:
        return self.machine.program_data / "LUMEQ" / session_player.SETTINGS_FILE

    def begin(self, content: str) -> None:
        self.settings.parent.mkdir(parents=True)
        self.settings.write_text(content)
        # Not what a new file is given.
        self.settings.chmod(0o770)

    def let_live(self, victim: HostProcess, chance: random.Random) -> None:
        """Until some moment of some call."""
        calls = chance.randrange(len(SAVING))
        victim.wait_for(lambda: victim.printed() > calls)
        time.sleep(chance.uniform(0, 0.03))

    def neighbours(self) -> list[Path]:
        return [file for file in self.settings.parent.iterdir() if file != self.settings]

    def age_neighbours(self) -> None:
        for file in self.neighbours():
            self.assertRegex(file.name, NEIGHBOUR)
            os.utime(file, (time.time() - 120,) * 2)

    def check_next_host(self, start) -> None:
        """It reads the file as it stands, saves it, and neither it nor those before had anything to complain of."""
        opted_in = "<UserOptIn>True</UserOptIn>" in self.settings.read_text()
        outcome = start(session_of(*NEXT), BASIC).finish()
        self.assertEqual(0, outcome.status)
        self.assertEqual(opted_in, outcome.host[0]["returns"])
        self.assertEqual(document(True), outcome.text(session_player.SETTINGS_FILE).strip())
        self.assertEqual("", outcome.text("Lumeq.Log.txt"))


if __name__ == "__main__":
    unittest.main()
