"""A session that a test plays step by step, looking at the machine and changing it in between."""

import json
import os
import tempfile
import threading
import time
from pathlib import Path
from typing import Optional

from support import HOST_SECONDS, Outcome

from session_player import Conditions, Machine


class LiveSession:
    """From entry to exit of a with statement. The machine is set up."""

    def __init__(self, machine: Machine, conditions: Conditions, host_name: str = "lumeq-host.exe"):
        self.outcome: Optional[Outcome] = None
        """Afterwards."""
        self._machine = machine
        self._arguments = (host_name, [r"C:\live.jsonl"], conditions)
        self._status = 0

    def __enter__(self) -> "LiveSession":
        self._folder = tempfile.TemporaryDirectory(dir=self._machine.prefix)
        self._output = Path(self._folder.name) / "host.jsonl"
        self._output.touch()
        self._pipe = self._machine.prefix / "drive_c" / "live.jsonl"
        os.mkfifo(self._pipe)
        # For both directions: so neither side waits for the other to come.
        self._steps = os.open(self._pipe, os.O_RDWR)
        self._host = threading.Thread(target=self._run)
        self._host.start()
        return self

    def __exit__(self, *_) -> None:
        os.close(self._steps)
        self._host.join()
        self._pipe.unlink()
        out = Path(self._folder.name)
        self._machine.collect(out)
        self.outcome = Outcome(self._status, "", out)
        self._folder.cleanup()

    def play(self, step: dict) -> dict:
        """The host's line for the call, which has ended by then."""
        lines = self._lines()
        os.write(self._steps, (json.dumps(step) + "\n").encode())
        while self._lines() == lines:
            if not self._host.is_alive():
                raise AssertionError(f"the host ended at {step} with {self._status}")
            time.sleep(0.005)
        return json.loads(self._output.read_text(encoding="utf-8").splitlines()[lines])

    def peak_memory(self) -> int:
        """Of the host up to now, in megabytes."""
        for process in Path("/proc").glob("[0-9]*"):
            if self._is_host(process):
                status = dict(line.split(":", 1) for line in (process / "status").read_text().splitlines())
                return int(status["VmHWM"].split()[0]) // 1024
        raise AssertionError("the host does not run")

    def _is_host(self, process: Path) -> bool:
        try:
            return (f"WINEPREFIX={self._machine.prefix}".encode() in (process / "environ").read_bytes().split(b"\0")
                    and self._arguments[0].encode() in (process / "cmdline").read_bytes()
                    and (process / "exe").resolve().name.startswith("wine64"))
        except OSError:
            return False

    def _lines(self) -> int:
        return self._output.read_bytes().count(b"\n")

    def _run(self) -> None:
        self._status = self._machine.run(*self._arguments, self._output, HOST_SECONDS)
