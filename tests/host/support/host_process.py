"""The one way in which tests start and drive a host process, and other programs on its machine."""

import contextlib
import json
import os
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path
from typing import Callable, Iterator, Optional

from .outcome import Outcome
from .paths import BUILD
from session_player import Conditions, Machine

HOST_SECONDS = 200
"""No session here takes more than some seconds, but a loaded machine may make it long."""


def wait_until(condition: Callable[[], bool], seconds: float = 60) -> None:
    deadline = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > deadline:
            raise AssertionError(f"the condition did not hold within {seconds} seconds")
        time.sleep(0.005)


def session_of(*steps: dict) -> str:
    """The session file of these steps."""
    return "".join(json.dumps(step) + "\n" for step in steps)


def kill_program(script: subprocess.Popen) -> None:
    """Kills the Windows program that tools/run-wine runs. Does nothing if it has ended."""
    if script.poll() is None:
        for process in _windows_processes(script):
            os.kill(process, signal.SIGKILL)
    script.wait()


def _windows_processes(script: subprocess.Popen) -> list[int]:
    return [int(child) for child in Path(f"/proc/{script.pid}/task/{script.pid}/children").read_text().split()]


class HostProcess:
    """A host that plays a session on a machine that is set up. For a with statement, which kills it if it still runs.

    Without a session the test plays it live, step by step, and can look at the machine and change it in between.
    With `own_folder` the host gets a host folder of its own, so that several can run at the same time.
    """

    def __init__(self, machine: Machine, conditions: Conditions, session: Optional[str] = None,
                 own_folder: bool = False):
        self.outcome: Optional[Outcome] = None
        """Set by finish."""
        # On the drive itself, so that the path of the session is never too long.
        self._folder = Path(tempfile.mkdtemp(prefix="run-", dir=machine.prefix / "drive_c"))
        self._machine = machine
        if own_folder:
            self._machine = Machine(machine.prefix)
            self._machine.host_folder = self._folder / "Host"
            self._machine.set_up(conditions, BUILD)
        self._out = self._folder / "out"
        self._out.mkdir()
        self._live: Optional[int] = None
        file = self._folder / "session.jsonl"
        if session is None:
            os.mkfifo(file)
            # Opened for both directions, so that neither side waits for the other one.
            self._live = os.open(file, os.O_RDWR)
        else:
            file.write_text(session, encoding="utf-8", newline="\n")
        with open(self._folder / "errors", "wb") as errors:
            self._script = self._machine.start(
                self._machine.host_name, [rf"C:\{self._folder.name}\session.jsonl"], conditions,
                self._out / "host.jsonl", errors)

    def __enter__(self) -> "HostProcess":
        return self

    def __exit__(self, *_) -> None:
        self.kill()

    def send(self, *steps: dict) -> None:
        """Appends the steps to a live session and returns at once."""
        os.write(self._live, session_of(*steps).encode())

    def play(self, step: dict) -> dict:
        """Plays a call in a live session. Returns the host's line for it."""
        lines = self.printed()
        self.send(step)
        self.wait_for(lambda: self.printed() > lines)
        return json.loads((self._out / "host.jsonl").read_text(encoding="utf-8").split("\n")[lines])

    def printed(self) -> int:
        """The number of lines that the host has printed so far."""
        return (self._out / "host.jsonl").read_bytes().count(b"\n")

    def operations(self) -> list[str]:
        """The operations that the companion was asked for so far."""
        transcript = self._machine.host_folder / "LumeqCompanion.jsonl"
        lines = transcript.read_text(encoding="utf-8").split("\n") if transcript.exists() else [""]
        # The last one may be incomplete.
        return [json.loads(line)["operation"] for line in lines[:-1]]

    def peak_memory(self) -> int:
        """In megabytes, since its start."""
        (process,) = _windows_processes(self._script)
        status = dict(line.split(":", 1) for line in Path(f"/proc/{process}/status").read_text().splitlines())
        return int(status["VmHWM"].split()[0]) // 1024

    def ended(self) -> bool:
        return self._script.poll() is not None

    def wait_for(self, condition: Callable[[], bool], seconds: float = HOST_SECONDS) -> None:
        """Waits until the condition holds. Fails if the host ends before."""
        def holds() -> bool:
            ended = self.ended()
            if condition():
                return True
            if ended:
                raise AssertionError(f"the host ended early with {self._script.returncode}: {self._errors()}")
            return False

        wait_until(holds, seconds)

    def finish(self, seconds: float = HOST_SECONDS) -> Outcome:
        """Ends a live session, waits until the host has ended, and returns what there is then on the machine."""
        self._end_session()
        try:
            self._script.wait(seconds)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"the host did not end within {seconds} seconds: {self._errors()}") from None
        self._machine.collect(self._out)
        self.outcome = Outcome(self._script.returncode, self._errors(), self._out)
        return self.outcome

    def kill(self) -> None:
        """Kills the host if it still runs, and removes its files."""
        kill_program(self._script)
        self._end_session()
        shutil.rmtree(self._folder, ignore_errors=True)

    def _end_session(self) -> None:
        if self._live is not None:
            os.close(self._live)
            self._live = None

    def _errors(self) -> str:
        return (self._folder / "errors").read_text(encoding="utf-8", errors="replace")


Start = Callable[..., HostProcess]
"""Takes the session and, if they are not the usual ones, the conditions."""


@contextlib.contextmanager
def hosts(machine: Machine) -> Iterator[Start]:
    """Starts any number of hosts on a machine that it clears first, each with a host folder of its own."""
    machine.clear()
    with contextlib.ExitStack() as started:
        def start(session: Optional[str] = None, conditions: Conditions = Conditions()) -> HostProcess:
            return started.enter_context(HostProcess(machine, conditions, session, own_folder=True))

        yield start


@contextlib.contextmanager
def program(machine: Machine, name: str, *arguments: str) -> Iterator[subprocess.Popen]:
    """Runs a program of the build's tests with pipes for its input and output. Kills it if it still runs at the end."""
    script = machine.start_program(BUILD / "tests" / name, *arguments, text=True, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    try:
        yield script
    finally:
        kill_program(script)
        script.stdin.close()
        script.stdout.close()
