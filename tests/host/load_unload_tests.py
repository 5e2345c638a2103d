"""Loading the library and letting it go, again and again: nothing of the host's process is used up."""

import os
import shutil
import unittest
from unittest import mock

from support import endurance
from support import BUILD, SessionTestCase, call
import session_player

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

    def growths(self, first: int, then: int, batches: int, *calls: dict, **circumstances) -> list[dict]:
        """What there is more of after each batch of `then` rounds, which come after `first` ones."""
        again = [{"times": then, "calls": [*AGAIN, *calls]}, MEASURE]
        outcome = self.play_to_end({"times": first, "calls": [*AGAIN, *calls]}, MEASURE, *again * batches, **circumstances)
        measured = [line for line in outcome.host if "handles" in line]
        self.assertEqual(1 + batches, len(measured))
        self.assertGreater(measured[0]["handles"], 0)
        return [{name: after[name] - before[name] for name in before} for before, after in zip(measured, measured[1:])]


class LoadAndUnload(RoundsTestCase):
    def check_growth(self, rounds: int, *calls: dict, **circumstances):
        """What the system makes once, when threads first meet at a lock of its own, may come in any batch; what is
        used up by rounds comes in each."""
        growths = self.growths(10, rounds, 3, *calls, **circumstances)
        endurance.print_done(f"3 times {rounds} rounds: {growths}")
        for growth in growths:
            self.assertLess(growth.pop("bytes"), SOME_BYTES)
            self.assertLess(max(growth.values()), 3, "a lock or two")
        self.assertIn({"handles": 0, "threads": 0, "slots": 0}, growths)

    def test_uses_nothing_up(self):
        self.check_growth(endurance.times(50))

    def test_uses_nothing_up_with_calls_between(self):
        for road in session_player.ROADS:
            with self.subTest(road):
                self.check_growth(10, *CALLS, road=road)

    def test_uses_nothing_up_with_calls_between_however_often(self):
        # Whenever Wine's WMI is loaded anew, which the message of the basic road causes, it keeps two copies each of the
        # machine's maker and model: 180 bytes a round, as a walk over the heap showed.
        with mock.patch.dict(os.environ, LUMEQ_WINE_OVERRIDES="wbemprox=d"):
            for road in session_player.ROADS:
                with self.subTest(road):
                    self.check_growth(endurance.times(10), *CALLS, road=road)

    def test_uses_nothing_up_with_calls_of_several_threads_between(self):
        threads = {"threads": [[call("ScreenDisplayed", screenName="Home"), CALLS[3]] * 5] * 4}
        self.check_growth(endurance.times(10), threads)


class Control(RoundsTestCase):
    """A library that takes something at each loading, instead of the one under test."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        set_up = cls.machine.set_up

        def set_up_loud(*arguments):
            set_up(*arguments)
            shutil.copy(BUILD / "tests" / "lumeq-loud.dll", cls.machine.host_folder / "Lumeq.dll")

        cls.enterClassContext(mock.patch.object(cls.machine, "set_up", set_up_loud))

    def test_growth_is_seen(self):
        rounds = 200
        for loud, name, least in (("leaked handle", "handles", rounds), ("leaked memory", "bytes", SOME_BYTES),
                                  ("leaked thread-local storage", "slots", rounds)):
            with self.subTest(loud), mock.patch.dict(os.environ, LOUD=loud):
                self.assertGreaterEqual(self.growths(10, rounds, 1)[0][name], least)


if __name__ == "__main__":
    unittest.main()
