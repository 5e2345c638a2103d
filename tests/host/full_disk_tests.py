"""A disk that is full or read-only, for the log and for the settings, and has room again while the host runs."""

import contextlib
import os
import unittest
from typing import Iterator

from support.host_process import HostProcess
from support.places import PlacedTestCase, warning, warnings_of
from support.small_disk import SmallDisk, keep_mounts_private, small_disk
from support import call, error, record

from session_player import Conditions

HOME = call("ScreenDisplayed", screenName="Home")
HOME_RECORD = record("app", "displayed", "screen", "/Home")
LOST = call("TileClicked", screenName="", controlName="ok")
LATER = call("ScreenDisplayed", screenName="")
TILE_LINE = error("TileClicked", 'invalid [REQUIRED] screenName arg: ""')
SCREEN_LINE = error("ScreenDisplayed", 'invalid [REQUIRED] screenName arg: ""')
OPT_OUT = call("SetUserOptInEx", userHasOptedIn=False)
READ = call("GetUserOptInEx")
SETTINGS = b'<LumeqConfig version="4.0"><UserOptIn>True</UserOptIn><Other>kept &amp; whole</Other></LumeqConfig>'
PAUSED = SETTINGS.replace(b"<Other>", b"<OptinBeforePause>False</OptinBeforePause><Other>")
FULL = "failed with _com_error exception 0x80070070, Disk full."
DENIED = "failed with _com_error exception 0x80070005, Access denied."


class DiskTestCase(PlacedTestCase):
    @classmethod
    def setUpClass(cls):
        keep_mounts_private()
        super().setUpClass()

    @contextlib.contextmanager
    def log_disk(self) -> Iterator[SmallDisk]:
        with small_disk(self.machine.folder(self.machine.places.temporary)) as disk:
            yield disk

    @contextlib.contextmanager
    def live_with_settings(self, road: str, settings: bytes) -> Iterator[tuple[HostProcess, SmallDisk]]:
        start = self.machine.prefix / "settings.xml"
        start.write_bytes(settings)
        with small_disk(self.machine.program_data.parent) as disk, \
                self.live(Conditions(road=road, log="warning", settings=start)) as session:
            yield session, disk

    def expect_settings(self, settings: bytes) -> None:
        self.assertEqual(settings, self.machine.settings_file.read_bytes().replace(b"\r", b"").replace(b"\n", b""))
        self.assertEqual([self.machine.settings_file.name], os.listdir(self.machine.settings_file.parent))


class LogDisk(DiskTestCase):
    def test_full_one_loses_whole_lines_and_later_ones_stand_alone(self):
        for road, records in (("managed", [HOME_RECORD] * 2), ("basic", [])):
            with self.subTest(road), self.log_disk() as disk:
                with self.live(Conditions(road=road, log="error")) as session:
                    session.play(LOST)
                    disk.fill()
                    # More than fits into what is left of the files' last pages.
                    for _ in range(50):
                        session.play(LOST)
                    session.play(HOME)
                    disk.make_room()
                    session.play(LATER)
                    session.play(HOME)
                outcome = session.outcome
                self.assertEqual(records, outcome.records)
                for lines in (outcome.error_file, outcome.calls):
                    self.assertEqual([TILE_LINE] * (len(lines) - 1) + [SCREEN_LINE], lines)
                    self.assertIn(len(lines), range(10, 40))

    def test_read_only_one_loses_lines_until_it_can_be_written(self):
        for road in ("managed", "basic"):
            with self.subTest(road), self.log_disk() as disk:
                # First there is not even the folder, then the files are there.
                disk.make_read_only(True)
                with self.live(Conditions(road=road, log="error")) as session:
                    for _ in range(2):
                        session.play(LOST)
                        disk.make_read_only(False)
                        session.play(LATER)
                        disk.make_read_only(True)
                self.assertEqual([SCREEN_LINE] * 2, session.outcome.error_file)
                self.assertEqual([SCREEN_LINE] * 2, session.outcome.calls)


class SettingsDisk(DiskTestCase):
    def refuse_saves_on_the_basic_road(self, prevent, allow, reason: str) -> None:
        with self.live_with_settings("basic", SETTINGS) as (session, disk):
            prevent(disk)
            for step in (OPT_OUT, call("Pause")):
                session.play(step)
                self.assertEqual(SETTINGS, self.machine.settings_file.read_bytes())
            # What could not be saved is found by the next use alone.
            session.play(READ)
            self.assertTrue(session.play(READ)["returns"])
            allow(disk)
            session.play(OPT_OUT)
            self.assertFalse(session.play(READ)["returns"])
            self.expect_settings(SETTINGS.replace(b"True", b"False"))
        self.assertEqual([warning(f"BasicSetUserOptIn {reason}")] * 3, warnings_of(session.outcome))

    def refuse_saves_on_the_managed_road(self, prevent, allow, reason: str) -> None:
        with self.live_with_settings("managed", PAUSED) as (session, disk):
            prevent(disk)
            for step in (call("Resume"), HOME):
                session.play(step)
                self.expect_settings(PAUSED)
            allow(disk)
            for step in (call("Resume"), HOME):
                session.play(step)
            session.play(call("Resume"))
            self.expect_settings(SETTINGS)
        self.assertEqual([warning(f"BasicClearOptIn {reason}")], warnings_of(session.outcome))
        self.assertEqual([HOME_RECORD] * 2, session.outcome.records)

    def test_full_one_keeps_the_file_until_it_has_room(self):
        refusal = (SmallDisk.fill, SmallDisk.make_room, FULL)
        self.refuse_saves_on_the_basic_road(*refusal)
        self.refuse_saves_on_the_managed_road(*refusal)

    def test_read_only_one_keeps_the_file_until_it_can_be_written(self):
        refusal = (lambda disk: disk.make_read_only(True), lambda disk: disk.make_read_only(False), DENIED)
        self.refuse_saves_on_the_basic_road(*refusal)
        self.refuse_saves_on_the_managed_road(*refusal)


if __name__ == "__main__":
    unittest.main()
