"""Libraries and settings that somebody put where a search might look: the current folder, and a folder of the path."""

import os
import re
import shutil
import subprocess
import unittest
from unittest import mock

from support.places import Places, PlacedTestCase, warning, warnings_of
from support import BUILD, ROOT, Outcome, call, record

from session_player import Conditions

PLANTED = Places(current=r"\Current", path=r"\On the path")
COMPANION = BUILD / "companion" / "LumeqShim.Managed.dll"
LOADED = re.compile(r'loaddll:build_module Loaded L"([^"]+)"')
HOME = call("ScreenDisplayed", screenName="Home")
HOME_RECORD = record("app", "displayed", "screen", "/Home")
START = call("StartupEx", appName="App", whyType=4, howType=7, trackSystemInfo=True, trackPrintQueueInfo=False)
OPT_IN = call("SetUserOptInEx", userHasOptedIn=True)
NOT_FOUND = (r"failed with VestoException exception The companion library was not found\nPath: "
             r'"C:\Host\LumeqShim.Managed.dll"')


class Planted(PlacedTestCase):
    def setUp(self):
        self.machine.move(PLANTED)
        for folder in self.folders():
            shutil.rmtree(folder, ignore_errors=True)
            folder.mkdir()

    def folders(self):
        return [self.machine.folder(place) for place in (PLANTED.current, PLANTED.path)]

    def plant(self, name: str, content: bytes) -> None:
        for folder in self.folders():
            (folder / name).write_bytes(content)

    def loaded(self, outcome: Outcome) -> list[str]:
        """The files of the libraries that were loaded, in lower case."""
        return [path.replace("\\\\", "\\").lower() for path in re.findall(LOADED, outcome.errors)]

    def play_watched(self, *steps: dict, **conditions) -> Outcome:
        """Nothing is loaded from where things were planted."""
        with mock.patch.dict(os.environ, WINEDEBUG="+loaddll"):
            outcome = self.play_to_end(*steps, **conditions)
        loaded = self.loaded(outcome)
        self.assertIn(r"c:\host\lumeq.dll", loaded)
        self.assertEqual([], [path for path in loaded if path.startswith((r"c:\current", r"c:\on the path"))])
        return outcome


class Companion(Planted):
    def setUp(self):
        super().setUp()
        self.plant(COMPANION.name, COMPANION.read_bytes())

    def test_would_be_loaded_by_its_bare_name(self):
        for current, folder in (("Current", "Current"), ("windows", "On the path")):
            asked = subprocess.run(
                [ROOT / "tools" / "run-wine", "rundll32", COMPANION.name + ",Nothing"],
                cwd=self.machine.prefix / "drive_c" / current, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                stderr=subprocess.PIPE, text=True,
                env=dict(os.environ, WINEPREFIX=str(self.machine.prefix), WINEDEBUG="+loaddll"))
            self.assertIn(rf"C:\\{folder}\\{COMPANION.name}", re.findall(LOADED, asked.stderr))

    def test_is_not_loaded_where_there_is_none(self):
        outcome = self.play_watched(START, HOME, call("ShutdownEx", timeoutMsec=0), without_companion=True)
        self.assertEqual([warning(f"{region} {NOT_FOUND}") for region in ("StartupXX", "PostEventXX", "ShutdownXX")],
                         warnings_of(outcome))
        self.assertNotIn("companion.jsonl", outcome.files)

    def test_is_not_loaded_in_the_place_of_a_broken_one(self):
        conditions = Conditions(log="warning", without_companion=True)
        self.machine.clear()
        self.machine.set_up(conditions, BUILD)
        (self.machine.host_folder / COMPANION.name).write_bytes(b"no library")
        with self.live(conditions, set_up=False) as session:
            session.play(HOME)
        self.assertEqual([warning("PostEventXX failed with VestoException exception The companion library could not "
                                  r'be loaded: error 193\nPath: "C:\Host\LumeqShim.Managed.dll"')],
                         warnings_of(session.outcome))
        self.assertNotIn("companion.jsonl", session.outcome.files)

    def test_is_not_touched_on_the_basic_road(self):
        outcome = self.play_watched(START, HOME, road="basic")
        self.assertEqual([], warnings_of(outcome))
        self.assertNotIn("companion.jsonl", outcome.files)

    def test_own_one_is_loaded_all_the_same(self):
        self.plant(COMPANION.name, b"no library")
        self.assertEqual([HOME_RECORD], self.play_watched(HOME).records)


class OthersByName(Planted):
    """What the library loads by its bare name is the system's, which is looked at first."""

    def test_are_the_systems_own(self):
        for name in ("mscoree.dll", "shell32.dll", "ntdll.dll", "msxml3.dll", "wininet.dll", "urlmon.dll"):
            self.plant(name, b"no library")
        for road, records in (("managed", [HOME_RECORD]), ("basic", [])):
            with self.subTest(road):
                outcome = self.play_watched(OPT_IN, HOME, call("GetUserOptInEx"), road=road)
                self.assertTrue(outcome.host[2]["returns"])
                self.assertEqual(records, outcome.records)
                self.assertEqual([], warnings_of(outcome))

    def test_are_not_looked_for_beside_the_host(self):
        planted = ("shlwapi.dll", "urlmon.dll", "version.dll", "wininet.dll")
        set_up = self.machine.set_up

        def set_up_and_plant(*arguments):
            set_up(*arguments)
            for name in planted:
                (self.machine.host_folder / name).write_bytes(b"no library")

        with mock.patch.object(self.machine, "set_up", set_up_and_plant):
            outcome = self.play_watched(OPT_IN, START, road="basic")
        self.assertEqual([warning("Project ID is empty. Ensure *LumeqConfig.xml is in path!")], warnings_of(outcome))
        loaded = self.loaded(outcome)
        for name in planted:
            self.assertIn(rf"c:\windows\system32\{name}", loaded)
            self.assertNotIn(rf"c:\host\{name}", loaded)


class Settings(Planted):
    def test_factory_file_is_not_looked_for(self):
        for name in ("LumeqConfig.xml", "lumeq-host.LumeqConfig.xml", ".LumeqConfig.xml"):
            self.plant(name, b'<LumeqConfig version="4.0"><Log>on</Log><LogLevel>debug</LogLevel></LumeqConfig>')
        conditions = Conditions(road="basic")
        with self.live(conditions) as session:
            (self.machine.host_folder / "LumeqConfig.xml").unlink()
            session.play(HOME)
            session.play(OPT_IN)
        self.assertEqual({"host.jsonl"}, set(session.outcome.files))


if __name__ == "__main__":
    unittest.main()
