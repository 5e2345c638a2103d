"""Many hosts that start at about the same time, against one stand-in of the queue service."""

import contextlib
import subprocess
import tempfile
import time
from dataclasses import dataclass
from pathlib import Path
from statistics import median
from typing import Iterator

import basic_road
import certificates
import session_player
from queue_service import Behaviour, QueueService

SERVICES = {"healthy": "none", "slow": "slow-headers", "silent": "never-answer", "gone": None}
"""What each does with a request: answers at once, takes six seconds, never answers, does not even listen."""
HOST = "lumeq-fleet-host.exe"
PROJECT = "0123456789ABCDEF01234567"


@dataclass
class Start:
    """How long a host was in StartupEx, in milliseconds, and how long of that it waited for the post."""

    whole: float
    post: float


@dataclass
class Run:
    starts: list[Start]
    codes: set[int]
    requests: list[bytes]
    """As the service received them, without TLS."""


class Fleet:
    """Hosts on one machine that trusts the service at `address`."""

    def __init__(self, machine: session_player.Machine, build: Path, address: str, folder: Path):
        self._machine = machine
        self._build = build
        self._address = address
        self._folder = folder
        machine.set_up(session_player.Conditions(road="basic", log="off"), build, f"tests/{HOST}")
        basic_road.trust(machine, certificates.make_root(folder), build)
        (machine.host_folder / "LumeqConfig.xml").write_text(basic_road.settings_text(
            ProjectId=PROJECT, LUMServerUri=f"https://{address}", AppDeployedId="fleet", AuthenticationToken="gbxra9"))
        local = machine.program_data / "LUMEQ" / session_player.SETTINGS_FILE
        local.parent.mkdir(parents=True)
        local.write_text(basic_road.settings_text(UserOptIn="True"))

    def run(self, hosts: int, within: float, service: str, seconds: float = 600) -> Run:
        """Starts the hosts at even distances within so many seconds, after all of them are ready."""
        with self._serve(service) as requests:
            outputs = [self._folder / f"host-{number}.txt" for number in range(hosts)]
            # A host is quick to wait and slow to become ready, so many become ready together.
            started = [self._start([str(round(1000 * within * number / hosts))], output)
                       for number, output in enumerate(outputs)]
            _wait_until(lambda: all(output.read_bytes().startswith(b"ready") for output in outputs), seconds)
            self._start(["open"], self._folder / "gate.txt").wait(seconds)
            codes = {process.wait(seconds) for process in started}
            return Run([_start_of(output) for output in outputs], codes, list(requests))

    def _start(self, arguments: list[str], output: Path) -> subprocess.Popen:
        return self._machine.start(HOST, arguments, session_player.Conditions(road="basic"), output)

    @contextlib.contextmanager
    def _serve(self, service: str) -> Iterator[list[bytes]]:
        misbehaviour, requests = SERVICES[service], []
        if misbehaviour is None:
            yield requests
            return
        with QueueService(self._folder, self._address, behaviour=Behaviour(misbehaviour),
                          on_message=lambda message: requests.append(message.raw)):
            yield requests


@contextlib.contextmanager
def fleet(build: Path, address: str = "127.0.0.61") -> Iterator[Fleet]:
    with session_player.machine(build) as machine, tempfile.TemporaryDirectory(dir=build / "play") as folder:
        yield Fleet(machine, build, address, Path(folder))


def _start_of(output: Path) -> Start:
    _, times = output.read_text().split("\n", 1)
    return Start(*map(float, times.split()))


def _wait_until(condition, seconds: float) -> None:
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise TimeoutError("the hosts did not become ready")
        time.sleep(0.1)


def row(service: str, run: Run) -> str:
    """Of a table: seconds that hosts were held."""
    whole = sorted(start.whole / 1000 for start in run.starts)
    post = sorted(start.post / 1000 for start in run.starts)
    return (f"| {service} | {len(run.requests)} | {median(post):.2f} | {post[-1]:.2f} | {median(whole):.2f} "
            f"| {whole[-1]:.2f} |")


TABLE_HEAD = ("| service | requests | waited for the post: median | longest | in `StartupEx`: median | longest |\n"
              "| --- | ---: | ---: | ---: | ---: | ---: |")
