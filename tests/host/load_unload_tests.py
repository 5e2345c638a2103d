"""Loading the library and letting it go, again and again: nothing of the host's process is used up."""

import os
import shutil
import unittest
from unittest import mock

import endurance
from support import BUILD, SessionTestCase, call, session_player

MEASURE = {"measure": True}
AGAIN = [{"unload": True}, {"load": True}]

# With all that takes something of the process: settings, events, refusals, exceptions, tasks.
CALLS = [
    call("StartupEx", appName="App", whyType=4, howType=7, trackSystemInfo=True, trackPrintQueueInfo=False),
    call("ScreenDisplayed", screenName="Home"), call("ButtonClicked", screenName="Home", controlName="a b"),
    call("AdDisplayed", adType=5, product="", name="", variant="", screenName="Home", controlName="ok"),
    call("SetUserOptInEx", userHasOptedIn=True), call("GetUserOptInEx"), call("GetBiid", deviceUuid="x"),
    call("DeviceConfigInitiated", handle="h"),
    call("DeviceConfigCompleted", taskHandle="h", taskResult="success", settingType=1),
    call("TrackDiscoveredPrintersEx", discoveredDeviceList=[{"dev_biid": "unknown"}]),
    call("Pause"), call("Resume"), call("ShutdownEx", timeoutMsec=1)]

# What the C library and the system keep of this and that. It has been 12 KB at most.
SOME_BYTES = 48 * 1024


class RoundsTestCase(SessionTestCase):
    host_seconds = SessionTestCase.host_seconds * max(1, endurance.FACTOR)

    def growth(self, first: int, then: int, *calls: dict, **circumstances) -> dict:
        """What there is more of after `then` rounds that come after `first` ones."""
        outcome = self.play_to_end({"times": first, "calls": [*AGAIN, *calls]}, MEASURE,
                                   {"times": then, "calls": [*AGAIN, *calls]}, MEASURE, **circumstances)
        before, after = (line for line in outcome.host if "handles" in line)
        self.assertGreater(before["handles"], 0)
        return {name: after[name] - before[name] for name in before}


class LoadAndUnload(RoundsTestCase):
    def check_growth(self, rounds: int, *calls: dict, **circumstances):
        rounds = endurance.times(rounds)
        growth = self.growth(10, rounds, *calls, **circumstances)
        endurance.tell(f"{rounds} rounds: {growth}")
        self.assertLess(growth.pop("bytes"), SOME_BYTES)
        self.assertEqual({"handles": 0, "threads": 0, "slots": 0}, growth)

    def test_uses_nothing_up(self):
        self.check_growth(100)

    def test_uses_nothing_up_with_calls_between(self):
        for road in session_player.ROADS:
            with self.subTest(road):
                self.check_growth(20, *CALLS, road=road)

    def test_uses_nothing_up_with_calls_of_several_threads_between(self):
        threads = {"threads": [[call("ScreenDisplayed", screenName="Home"), CALLS[3]] * 5] * 4}
        self.check_growth(20, threads)


class Control(RoundsTestCase):
    """A library that takes something at each loading, in the place of the one under test."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        set_up = cls.machine.set_up

        def set_up_loud(*arguments):
            set_up(*arguments)
            shutil.copy(BUILD / "tests" / "lumeq-loud.dll", cls.machine.host_folder / "Lumeq.dll")

        cls.machine.set_up = set_up_loud

    def test_growth_is_seen(self):
        rounds = 200
        for loud, name, least in (("leaked handle", "handles", rounds), ("leaked memory", "bytes", SOME_BYTES),
                                  ("leaked thread-local storage", "slots", rounds)):
            with self.subTest(loud), mock.patch.dict(os.environ, LOUD=loud):
                self.assertGreaterEqual(self.growth(10, rounds)[name], least)


if __name__ == "__main__":
    unittest.main()
