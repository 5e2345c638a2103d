"""Hosts that are killed while they are paused: what the next one finds, reports and does."""

import contextlib
import json
import unittest
from pathlib import Path
from typing import Iterator, NamedTuple

from support.basic_road_case import BasicRoadTestCase
from support.host_process import HostProcess, hosts, session_of
from support.life_cycle import (CRASH, OPTED_IN, PAUSED_IN, PAUSED_OUT, RUNNING_IN, RUNNING_OUT, STARTED, Flags, flags_of,
                             of_the_exports, settings_of, start, start_line)
from support import LogLine, Outcome, SessionTestCase, call, trace
import session_player

MANAGED = session_player.Conditions()
BASIC = session_player.Conditions(road="basic")
WITHOUT_COMPANION = session_player.Conditions(without_companion=True)

PAUSE, RESUME, ASK = call("Pause"), call("Resume"), call("GetUserOptInEx")
WAIT = {"sleepMsec": 600_000}
OWN_CODE = 9


def choose(opt_in: bool) -> dict:
    return call("SetUserOptInEx", userHasOptedIn=opt_in)


def asked(answer: str) -> list[LogLine]:
    return [trace("GetUserOptInEx"), trace("GetUserOptInEx", f"...returns: {answer}")]


class Case(NamedTuple):
    """What a host does until it is killed, and what is then in the file and after the next host's start."""

    before: Flags
    steps: tuple[dict, ...]
    left: Flags
    restored: Flags


CASES = (
    Case(RUNNING_IN, (start("App"), PAUSE), PAUSED_IN, RUNNING_IN),
    Case(RUNNING_OUT, (start("App"), PAUSE), PAUSED_OUT, RUNNING_OUT),
    Case(RUNNING_IN, (PAUSE, PAUSE), PAUSED_OUT, RUNNING_OUT),
    Case(RUNNING_OUT, (PAUSE, choose(True)), Flags("True", "True"), RUNNING_IN),
    Case(RUNNING_IN, (PAUSE, choose(True), choose(False)), PAUSED_OUT, RUNNING_OUT),
    Case(RUNNING_IN, (PAUSE, RESUME, PAUSE), PAUSED_IN, RUNNING_IN),
)


class KilledHostTestCase(SessionTestCase):
    """Its hosts share a machine's settings and log; each has a folder of its own."""

    @contextlib.contextmanager
    def one_after_another(self, before: Flags) -> Iterator[None]:
        with hosts(self.machine) as self.start_host:
            self.settings_file.parent.mkdir(parents=True)
            self.settings_file.write_text(settings_of(before))
            yield

    @property
    def settings_file(self) -> Path:
        return self.machine.program_data / "LUMEQ" / session_player.SETTINGS_FILE

    @property
    def flags(self) -> Flags:
        return flags_of(self.settings_file.read_text())

    def kill_after(self, *steps: dict, conditions: session_player.Conditions) -> None:
        """From outside, once the last call has returned."""
        victim: HostProcess = self.start_host(session_of(*steps, WAIT), conditions)
        victim.wait_for(lambda: victim.printed() == len(steps))
        victim.kill()

    def end_after(self, *steps: dict, conditions: session_player.Conditions) -> None:
        """By the means of Windows, which ask nobody in the process either."""
        victim: HostProcess = self.start_host(session_of(*steps, {"end": "TerminateProcess", "code": OWN_CODE}), conditions)
        self.assertEqual(OWN_CODE, victim.finish().status)

    def play_next(self, *steps: dict, conditions: session_player.Conditions) -> Outcome:
        """With the log of all hosts so far."""
        outcome = self.start_host(session_of(*steps), conditions).finish()
        self.assertEqual(0, outcome.status)
        return outcome


class KilledWhilePaused(KilledHostTestCase):
    def test_next_start_reports_the_crash_and_restores_the_choice(self):
        for conditions, cases in ((MANAGED, CASES), (BASIC, CASES), (WITHOUT_COMPANION, CASES[:2])):
            for case in cases:
                with self.subTest(conditions, case=case), self.one_after_another(case.before):
                    self.kill_after(*case.steps, conditions=conditions)
                    self.check_next_start(case, conditions)

    def test_process_that_is_terminated_leaves_the_same(self):
        for conditions in (MANAGED, BASIC):
            for case in CASES[:2]:
                with self.subTest(conditions.road, case=case), self.one_after_another(case.before):
                    self.end_after(*case.steps, conditions=conditions)
                    self.check_next_start(case, conditions)

    def check_next_start(self, case: Case, conditions: session_player.Conditions) -> None:
        self.assertEqual(case.left, self.flags)
        self.assertEqual([CRASH], self.play_next(start("App"), conditions=conditions).error_file)
        self.assertEqual(case.restored, self.flags)

    def test_lines_of_both_hosts_are_these(self):
        for conditions in (MANAGED, BASIC):
            with self.subTest(conditions.road), self.one_after_another(RUNNING_IN):
                self.kill_after(start("Killed"), PAUSE, ASK, conditions=conditions)
                outcome = self.play_next(ASK, start("App"), ASK, start("App"), conditions=conditions)
                self.assertEqual([start_line("Killed"), trace("Pause"), *asked("false"),
                                  *asked("false"), start_line("App"), CRASH, *asked("true"), start_line("App")],
                                 of_the_exports(outcome))
                self.assertEqual([False, True], [line["returns"] for line in outcome.host if "returns" in line])

    def test_start_asks_and_mends_in_this_order(self):
        with self.one_after_another(RUNNING_IN):
            self.kill_after(PAUSE, conditions=BASIC)
            outcome = self.play_next(start("App"), conditions=session_player.Conditions(road="basic", log="debug"))
            basic = ("OptinBeforePause exists", "Basic Did ", "Basic Get ", "Basic Set ", "BasicClear Opt In ")
            self.assertEqual(["Basic Did User Opted returns 1 from True", CRASH.message,
                              "Basic Get User Opt-In returns 1 for key 'True'", "Basic Set User Opt-In",
                              "BasicClear Opt In returns 1",
                              # Whether the user has opted in, which decides on the message.
                              "Basic Get User Opt-In returns 1 for key 'True'"],
                             [line.message for line in outcome.log if line.message.startswith(basic)])

    def test_companion_is_reported_the_choice_before_the_start(self):
        for before, operations in ((RUNNING_IN, [OPTED_IN, STARTED]), (RUNNING_OUT, [STARTED])):
            with self.subTest(before), self.one_after_another(before):
                self.kill_after(start("App"), PAUSE, conditions=MANAGED)
                self.assertEqual(operations, self.play_next(start("App"), conditions=MANAGED).companion)

    def test_choice_survives_any_number_of_kills(self):
        for conditions in (MANAGED, BASIC):
            with self.subTest(conditions.road), self.one_after_another(RUNNING_IN):
                for _ in range(3):
                    self.kill_after(start("App"), PAUSE, conditions=conditions)
                outcome = self.play_next(start("App"), conditions=conditions)
                self.assertEqual([CRASH] * 3, outcome.error_file)
                self.assertEqual(RUNNING_IN, self.flags)

    def test_hosts_of_either_road_restore_what_the_other_left(self):
        for first, second in ((MANAGED, BASIC), (BASIC, MANAGED)):
            with self.subTest(first.road), self.one_after_another(RUNNING_IN):
                self.kill_after(start("App"), PAUSE, conditions=first)
                self.assertEqual([CRASH], self.play_next(start("App"), conditions=second).error_file)
                self.assertEqual(RUNNING_IN, self.flags)

    def test_next_host_that_does_not_start_leaves_the_pause_to_the_one_after_it(self):
        for conditions in (MANAGED, BASIC):
            with self.subTest(conditions.road), self.one_after_another(RUNNING_IN):
                self.kill_after(start("App"), PAUSE, conditions=conditions)
                self.assertEqual([], self.play_next(ASK, call("ScreenDisplayed", screenName="Home"),
                                                    call("FlushEx", timeoutMsec=0), conditions=conditions).error_file)
                self.assertEqual(PAUSED_IN, self.flags)
                self.assertEqual([CRASH], self.play_next(start("App"), conditions=conditions).error_file)

    def test_resume_and_shutdown_of_the_next_host_restore_the_choice_without_a_word(self):
        for conditions in (MANAGED, BASIC):
            for ending in (RESUME, call("ShutdownEx", timeoutMsec=0)):
                with self.subTest(conditions.road, ending=ending), self.one_after_another(RUNNING_IN):
                    self.kill_after(start("App"), PAUSE, conditions=conditions)
                    outcome = self.play_next(ending, start("App"), conditions=conditions)
                    self.assertEqual([], outcome.error_file)
                    self.assertEqual(RUNNING_IN, self.flags)

    def test_pause_in_a_subfolder_is_seen_by_hosts_that_chose_it(self):
        subfolder = call("SetLocalSubfolderPathEx", subpath="Brand")
        for conditions in (MANAGED, BASIC):
            with self.subTest(conditions.road), self.one_after_another(RUNNING_OUT):
                self.kill_after(subfolder, choose(True), PAUSE, conditions=conditions)
                self.assertEqual([], self.play_next(start("App"), conditions=conditions).error_file)
                outcome = self.play_next(subfolder, start("App"), conditions=conditions)
                self.assertEqual([CRASH], outcome.error_file)
                self.assertEqual(RUNNING_IN, flags_of(outcome.text("Brand/LumeqLocalSettings.xml")))
                self.assertEqual(RUNNING_OUT, self.flags)


class KilledInTheMiddle(KilledHostTestCase):
    """The companion takes so long over one operation that the host is killed in it."""

    def kill_during(self, operation: str, *steps: dict) -> None:
        script = self.machine.prefix / "script.json"
        script.write_text(json.dumps({"sleepMsec": {operation: 600_000}}))
        victim: HostProcess = self.start_host(session_of(*steps), session_player.Conditions(companion=script))
        victim.wait_for(lambda: operation in victim.operations())
        self.assertEqual(len(steps) - 1, victim.printed(), "the last call has not returned")
        victim.kill()

    def check(self, before: Flags, operation: str, steps: tuple[dict, ...], left: Flags, errors: list[LogLine],
              restored: Flags) -> None:
        with self.one_after_another(before):
            self.kill_during(operation, *steps)
            self.assertEqual(left, self.flags)
            self.assertEqual(errors, self.play_next(start("App"), conditions=MANAGED).error_file)
            self.assertEqual(restored, self.flags)

    def test_of_a_pause_before_its_mark(self):
        self.check(RUNNING_IN, "SetLocalValueInternal", (PAUSE,), RUNNING_IN, [], RUNNING_IN)

    def test_of_a_pause_behind_its_mark(self):
        self.check(RUNNING_IN, "SetUserOptInInternal", (PAUSE,), Flags("True", "True"), [CRASH], RUNNING_IN)

    def test_of_a_choice_behind_its_mark(self):
        self.check(PAUSED_OUT, "SetUserOptInInternal", (choose(True),), PAUSED_IN, [CRASH], RUNNING_IN)

    def test_of_a_resume(self):
        self.check(PAUSED_IN, "SetUserOptInInternal", (RESUME,), PAUSED_IN, [CRASH], RUNNING_IN)

    def test_of_a_shutdown_that_has_ended_the_pause(self):
        self.check(PAUSED_IN, "ShutdownInternal", (call("ShutdownEx", timeoutMsec=0),), RUNNING_IN, [], RUNNING_IN)

    def test_of_a_start_that_mends_an_earlier_one(self):
        self.check(PAUSED_IN, "SetUserOptInInternal", (start("App"),), PAUSED_IN, [CRASH] * 2, RUNNING_IN)

    def test_of_a_start_that_has_mended_an_earlier_one(self):
        self.check(PAUSED_IN, "StartupInternal", (start("App"),), RUNNING_IN, [CRASH], RUNNING_IN)


class MessageOfTheNextHost(BasicRoadTestCase):
    ADDRESS = "127.0.0.47"

    def messages_after(self, opted_in: bool, *steps: dict) -> int:
        with self.serve() as service:
            killed = self.run_host(*steps, {"end": "TerminateProcess", "code": OWN_CODE}, opted_in=opted_in)
            self.assertEqual((OWN_CODE, []), (killed.status, service.seen.connections))
            self.assertEqual(0, self.run_host(start("App"), opted_in=None).status)
        self.assertEqual([[]] * len(service.seen.messages), [message.wrong for message in service.seen.messages])
        return len(service.seen.messages)

    def test_goes_out_for_a_restored_choice(self):
        self.assertEqual(1, self.messages_after(True, PAUSE))

    def test_does_not_go_out_for_a_user_who_had_not_opted_in_or_whose_choice_was_lost(self):
        self.assertEqual(0, self.messages_after(False, PAUSE))
        self.assertEqual(0, self.messages_after(True, PAUSE, PAUSE))


if __name__ == "__main__":
    unittest.main()
