"""lumeq_get_state on a machine: what it shows, and that it changes nothing."""

import shutil
import subprocess
import sys
import unittest
from pathlib import Path
from typing import Optional

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import BUILD, SessionTestCase  # noqa: E402
import session_player  # noqa: E402

UNKNOWN, UNSET, NO, YES = range(4)
MANAGED, BASIC = 1, 2


def shown(choice: int = UNSET, paused: int = 0, road: int = UNKNOWN, disabled: int = 0) -> str:
    return f"1: disabled {disabled}, choice {choice}, paused {paused}, road {road}"


def settings(**values: str) -> str:
    return '<LumeqConfig version="4.0">' + "".join(f"<{k}>{v}</{k}>" for k, v in values.items()) + "</LumeqConfig>"


class State(SessionTestCase):
    def states(self, *calls: str, local: Optional[str] = None, **conditions) -> list[str]:
        machine = self.machine
        if conditions.get("disabled") is not None:
            # The registry is read when a machine starts.
            machine = self.enterContext(session_player.machine(BUILD))
        machine.clear()
        machine.set_up(session_player.Conditions(log="debug", **conditions), BUILD)
        shutil.copy(BUILD / "tests" / "lumeq-state.exe", machine.host_folder)
        if local is not None:
            self.local_file.parent.mkdir(parents=True)
            self.local_file.write_text(local)
        process = machine.start_program(machine.host_folder / "lumeq-state.exe", *calls, cwd=machine.host_folder,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        output, _ = process.communicate(timeout=60)
        self.assertEqual(0, process.returncode)
        return output.decode().splitlines()

    @property
    def local_file(self) -> Path:
        return self.machine.program_data / "LUMEQ" / "LumeqLocalSettings.xml"

    def files(self) -> dict[Path, bytes]:
        places = (self.machine.host_folder, self.machine.program_data, self.machine.log_folder())
        return {file: file.read_bytes() for place in places if place and place.exists() for file in place.rglob("*")
                if file.is_file() and file.suffix != ".exe"}

    def test_choice_is_that_of_the_settings_file(self):
        for content, expected in ((None, shown(UNSET)), (settings(UserOptIn="True"), shown(YES)),
                                  (settings(UserOptIn="fALSE"), shown(NO)), (settings(UserOptIn="maybe"), shown(UNSET)),
                                  (settings(), shown(UNSET)), ("<damaged", shown(UNKNOWN)),
                                  (settings(UserOptIn="False", OptinBeforePause="True"), shown(YES, paused=1)),
                                  (settings(UserOptIn="False", OptinBeforePause="False"), shown(NO, paused=1))):
            with self.subTest(content):
                self.assertEqual([expected], self.states(local=content))

    def test_changes_nothing(self):
        self.states("nothing", "nothing", local=settings(UserOptIn="True"))
        self.assertEqual(settings(UserOptIn="True"), self.local_file.read_text())
        self.assertEqual({"LumeqLocalSettings.xml", "LumeqConfig.xml", "Lumeq.dll", "LumeqC.dll", "LumeqShim.Managed.dll"},
                         {file.name for file in self.files()})

    def test_follows_the_calls_on_the_managed_road(self):
        self.assertEqual([shown(), shown(YES, road=MANAGED), shown(YES, paused=1, road=MANAGED),
                          shown(YES, road=MANAGED), shown(UNSET, road=MANAGED), shown(NO, road=MANAGED)],
                         self.states("yes", "pause", "resume", "in:Sub", "no"))

    def test_without_companion_library_is_the_basic_road(self):
        self.assertEqual([shown(road=BASIC), shown(YES, road=BASIC)], self.states("yes", without_companion=True))


    def test_registry_switch_is_shown(self):
        for value, expected in ((1, 1), (2, 0)):
            with self.subTest(value):
                self.assertEqual([shown(disabled=expected)], self.states(disabled=value))


if __name__ == "__main__":
    unittest.main()
