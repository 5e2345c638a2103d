"""Hosts that run beside the test and beside each other, and may be killed."""

import contextlib
import itertools
import json
import os
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path
from typing import Callable, Iterator

from support import BUILD, ROOT, Outcome, session_player


def wait_until(condition: Callable[[], bool], seconds: float = 60) -> None:
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            raise AssertionError("it did not come to be in time")
        time.sleep(0.005)


def kill_program(script: subprocess.Popen) -> None:
    """Ends the Windows program that tools/run-wine runs at once and without a word. None that has ended already."""
    if script.poll() is None:
        for child in Path(f"/proc/{script.pid}/task/{script.pid}/children").read_text().split():
            os.kill(int(child), signal.SIGKILL)
    script.wait()


class RunningHost:
    """Plays a session in a folder of its own, on a machine that others play on as well."""

    def __init__(self, machine: session_player.Machine, folder: Path, conditions: session_player.Conditions,
                 session: str):
        self._machine = session_player.Machine(machine.prefix)
        self._machine.host_folder = folder / "Host"
        self._folder = folder
        folder.mkdir()
        self._machine.set_up(conditions, BUILD)
        (self._machine.host_folder / "session.jsonl").write_text(session)
        with open(folder / "errors", "wb") as errors:
            self._script = self._machine.start("lumeq-host.exe", ["session.jsonl"], conditions, self._output, errors)

    @property
    def _output(self) -> Path:
        return self._folder / "host.jsonl"

    def printed(self) -> int:
        """How many lines it has printed so far."""
        return self._output.read_bytes().count(b"\n")

    def operations(self) -> list[str]:
        """What its companion has been told to do so far."""
        transcript = self._machine.host_folder / "LumeqCompanion.jsonl"
        lines = transcript.read_text(encoding="utf-8").split("\n") if transcript.exists() else [""]
        # The last one may still be being written.
        return [json.loads(line)["operation"] for line in lines[:-1]]

    def wait_for(self, condition: Callable[[], bool]) -> None:
        """Until it has come so far; fails if it ends before."""
        def come_so_far() -> bool:
            ended = self._script.poll()
            if condition():
                return True
            if ended is not None:
                raise AssertionError(f"the host ended with {ended} before: {(self._folder / 'errors').read_text()}")
            return False

        wait_until(come_so_far)

    def wait(self, seconds: float) -> int:
        """The exit code."""
        return self._script.wait(seconds)

    def kill(self) -> None:
        kill_program(self._script)
        # There may be a thousand of them.
        shutil.rmtree(self._machine.host_folder, ignore_errors=True)

    def outcome(self) -> Outcome:
        """After its end. With the log as it then is."""
        self._machine.collect(self._folder)
        return Outcome(self._script.returncode, (self._folder / "errors").read_text(errors="replace"), self._folder)


Start = Callable[..., RunningHost]
"""Takes the session and, for a road other than the usual one, the conditions."""


@contextlib.contextmanager
def hosts(machine: session_player.Machine) -> Iterator[Start]:
    """Starts as many as are wanted, on a machine that is cleared before. Whatever still runs at the end is killed."""
    machine.clear()
    with tempfile.TemporaryDirectory(dir=machine.prefix) as name, contextlib.ExitStack() as started:
        count = itertools.count()

        def start(session: str, conditions: session_player.Conditions = session_player.Conditions()) -> RunningHost:
            host = RunningHost(machine, Path(name) / str(next(count)), conditions, session)
            started.callback(host.kill)
            return host

        yield start


@contextlib.contextmanager
def program(machine: session_player.Machine, name: str, *arguments: str) -> Iterator[subprocess.Popen]:
    """A program of the build's tests, with its input and output at hand; killed at the end if it still runs."""
    script = subprocess.Popen([ROOT / "tools" / "run-wine", BUILD / "tests" / name, *arguments], text=True,
                              env=dict(os.environ, WINEPREFIX=str(machine.prefix)), stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    try:
        yield script
    finally:
        kill_program(script)
        script.stdin.close()
        script.stdout.close()
