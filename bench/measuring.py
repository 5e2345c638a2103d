"""What the programs of this folder share: the measuring processes, and tables of what they found."""

import contextlib
import datetime
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Iterator, Optional

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tools"))
import basic_road  # noqa: E402
import session_player  # noqa: E402
from queue_service import QueueService  # noqa: E402
from session_player import Conditions, Machine  # noqa: E402

DEFAULT_BUILD = ROOT / "build" / "bench"
HOST = "lumeq-bench.exe"
START_HOST = "lumeq-bench-start.exe"
SECONDS = 900
QUEUE_ADDRESS = "127.0.0.45"

Results = dict[tuple[str, str], float]
"""Microseconds by name and circumstances of the measurement."""


class Bench:
    """Runs the measuring programs. Tracking is disabled on a second machine, because clearing a machine between runs
    does not clear its registry."""

    def __init__(self, build: Path, usual: Machine, disabled: Machine):
        self.build = build
        self.library = build / "Lumeq.dll"
        """What is measured."""
        self._usual = usual
        self._disabled = disabled
        self._registry_is_written = False

    def measure_by(self, host: str, what: str, conditions: Conditions) -> Results:
        """As measure, by another program."""
        self._set_up(self._usual, conditions, host)
        return self._results(self._usual, host, [what], conditions)

    def measure(self, what: str, conditions: Conditions) -> Results:
        self._set_up(self._usual, conditions)
        results = self._results(self._usual, HOST, [what], conditions)
        check_refusals(self._usual, conditions, expected=conditions.log != "off" and what == "refused")
        return results

    def measure_disabled(self, conditions: Conditions) -> Results:
        conditions.disabled = None if self._registry_is_written else 1
        self._registry_is_written = True
        self._set_up(self._disabled, conditions)
        results = self._results(self._disabled, HOST, ["accepted"], conditions)
        if self._disabled.log_folder():
            sys.exit("something was logged though tracking is disabled")
        return results

    def _set_up(self, machine: Machine, conditions: Conditions, host: str = HOST) -> None:
        machine.clear()
        machine.set_up(conditions, self.build, host, "silent-companion")
        shutil.copy(self.library, machine.host_folder / "Lumeq.dll")

    def measure_start(self, folder: Path, starts: int) -> Optional[list[Results]]:
        """The first start with its message, and its parts; None if this user may not listen on the library's port."""
        try:
            service = QueueService(folder, QUEUE_ADDRESS)
        except OSError:
            return None
        factory = folder / "factory.xml"
        factory.write_text(basic_road.settings_text(
            Log="off", ProjectId="0123456789ABCDEF01234567", LUMServerUri=f"https://{QUEUE_ADDRESS}",
            AppDeployedId="scan-station-eu", AuthenticationToken="QrzbGbxra42"))
        settings = folder / "settings.xml"
        settings.write_text(basic_road.settings_text(UserOptIn="True"))
        conditions = Conditions(road="basic", factory=factory, settings=settings)
        basic_road.trust(self._usual, service.root, self.build)
        with service:
            samples = [self._start(conditions) for _ in range(starts)]
        if len([message for message in service.seen.messages if not message.wrong]) != 2 * starts:
            sys.exit("not every start sent its message")
        return samples

    def _start(self, conditions: Conditions) -> Results:
        results: Results = {}
        for host, arguments in ((HOST, ["start"]), (START_HOST, [])):
            self._usual.clear()
            self._usual.set_up(conditions, self.build, host)
            results |= self._results(self._usual, host, arguments, conditions)
        return results

    def _results(self, machine: Machine, host: str, arguments: list[str], conditions: Conditions) -> Results:
        with tempfile.TemporaryDirectory(dir=self.build) as name:
            output = Path(name) / "output"
            with open(Path(name) / "errors", "w+b") as errors:
                status = machine.run(host, arguments, conditions, output, SECONDS, errors)
                errors.seek(0)
                if status != 0:
                    sys.exit(f"{host} {' '.join(arguments)} ended with {status}: {errors.read().decode()}")
            lines = [line.split("\t") for line in output.read_text().splitlines()]
        return {(what, circumstances): float(microseconds) for what, circumstances, microseconds in lines}


def check_refusals(machine: Machine, conditions: Conditions, expected: bool) -> None:
    """Only the log shows whether calls were refused, so nothing is checked with logging off."""
    logs = machine.log_folder()
    found = bool(logs and (logs / "Lumeq.Error.txt").exists())
    if found != expected:
        sys.exit(f"{conditions}: calls were {'refused' if found else 'accepted'} and should not have been")


def stripped_size(library: Path) -> int:
    with tempfile.TemporaryDirectory() as folder:
        copy = shutil.copy(library, folder)
        subprocess.run(["x86_64-w64-mingw32-strip", copy], check=True)
        return Path(copy).stat().st_size


def text(microseconds: float) -> str:
    decimals = 2 if microseconds < 10 else 1 if microseconds < 100 else 0
    return f"{microseconds:,.{decimals}f}"


def print_table(heads: list[str], rows: list[list[str]]) -> None:
    print(f"| {' | '.join(heads)} |")
    print(f"| {' | '.join(['---'] + ['---:'] * (len(heads) - 1))} |")
    for row in rows:
        print(f"| {' | '.join(row)} |")
    print(flush=True)


def print_circumstances() -> None:
    model = re.search(r"model name\s*: (.*)", Path("/proc/cpuinfo").read_text())
    wine = subprocess.run(["/usr/lib/wine/wine64", "--version"], capture_output=True, text=True).stdout.strip()
    print(f"{datetime.date.today()}, {os.cpu_count()} cores ({model[1] if model else 'unknown'}), {wine}; "
          f"load average at the start {os.getloadavg()[0]:.1f}.\n")


def print_load() -> None:
    print(f"Load average at the end {os.getloadavg()[0]:.1f}.")


@contextlib.contextmanager
def benches(build: Path) -> Iterator[Bench]:
    with session_player.machine(build) as usual, session_player.machine(build) as disabled:
        yield Bench(build, usual, disabled)
