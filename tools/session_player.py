"""Plays sessions of the sample host against the built library, each on a machine of its own."""

import contextlib
import json
import os
import shutil
import subprocess
import tempfile
from dataclasses import dataclass
from pathlib import Path
from typing import BinaryIO, Iterator, Optional

ROOT = Path(__file__).resolve().parent.parent
DEFAULT_BUILD = ROOT / "build" / "mingw"

ROADS = ("managed", "basic")
LOG_LEVELS = ("off", "error", "warning", "trace", "debug")

LOG_FILES = ("Lumeq.Log.txt", "Lumeq.Data.txt", "Lumeq.Error.txt")
SETTINGS_FILE = "LumeqLocalSettings.xml"
RESULTS = ("host.jsonl", "companion.jsonl", *LOG_FILES, SETTINGS_FILE)


@dataclass
class Conditions:
    """What a session finds on its machine."""

    road: str = "managed"
    log: str = "trace"
    settings: Optional[Path] = None
    """The local settings file to start from."""
    factory: Optional[Path] = None
    """The factory settings file, instead of one that only sets the log."""
    companion: Optional[Path] = None
    """The stand-in's script."""
    without_companion: bool = False
    """The managed runtime is there and the companion library is not."""
    disabled: Optional[int] = None
    """The registry value TrackingDisabled; None: there is none."""


class Machine:
    """A Wine prefix with the host, the library and their files in it."""

    host_name = "lumeq-host.exe"

    def __init__(self, prefix: Path):
        self.prefix = prefix
        self.host_folder = prefix / "drive_c" / "Host"
        self.program_data = prefix / "drive_c" / "ProgramData" / "Zuvan"

    def log_folder(self) -> Optional[Path]:
        return next(self.prefix.glob("drive_c/users/*/**/Temp/Zuvan/LUMEQ"), None)

    def current_folder(self) -> Path:
        """The host's."""
        return self.host_folder

    def clear(self) -> None:
        """Removes the files of an earlier session. The registry stays as it is."""
        for folder in (self.host_folder, self.program_data, self.log_folder()):
            if folder and folder.exists():
                shutil.rmtree(folder)

    def set_up(self, conditions: Conditions, build: Path, host: str = "lumeq-host.exe",
               companion_folder: str = "companion") -> None:
        self.host_folder.mkdir()
        for file in (host, "Lumeq.dll", "LumeqC.dll"):
            shutil.copy(build / file, self.host_folder)
        if conditions.road == "managed" and not conditions.without_companion:
            shutil.copy(build / companion_folder / "LumeqShim.Managed.dll", self.host_folder)
        if conditions.companion:
            shutil.copy(conditions.companion, self.host_folder / "LumeqCompanion.json")
        factory = self.host_folder / "LumeqConfig.xml"
        if conditions.factory:
            shutil.copy(conditions.factory, factory)
        else:
            factory.write_text(factory_settings(conditions.log), encoding="utf-8")
        if conditions.settings:
            folder = self.program_data / "LUMEQ"
            folder.mkdir(parents=True)
            shutil.copy(conditions.settings, folder / SETTINGS_FILE)
        if conditions.disabled is not None:
            self._disable_tracking(conditions.disabled)

    def _disable_tracking(self, value: int) -> None:
        with open(self.prefix / "user.reg", "a", encoding="ascii") as registry:
            registry.write("\n[Software\\\\Zuvan\\\\NG\\\\Tracking\\\\Lumeq]\n"
                           f'"TrackingDisabled"=dword:{value:08x}\n')

    def run_host(self, session: Path, conditions: Conditions, output: Path, timeout: float,
                 errors: Optional[BinaryIO] = None) -> int:
        """Plays the session. Returns what run returns."""
        shutil.copy(session, self.host_folder / "session.jsonl")
        return self.run(self.host_name, ["session.jsonl"], conditions, output, timeout, errors)

    def run(self, host: str, arguments: list[str], conditions: Conditions, output: Path, timeout: float,
            errors: Optional[BinaryIO] = None) -> int:
        """Returns the host's exit code, or 124 if it had to be ended after `timeout` seconds."""
        process = self.start(host, arguments, conditions, output, errors)
        try:
            return process.wait(timeout)
        except subprocess.TimeoutExpired:
            stop_wine(self.prefix)
            process.wait()
            return 124

    def start(self, host: str, arguments: list[str], conditions: Conditions, output: Path,
              errors: Optional[BinaryIO] = None) -> subprocess.Popen:
        """Starts the host as start_program does."""
        environment = dict(os.environ)
        if conditions.road == "basic":
            others = environment.get("LUMEQ_WINE_OVERRIDES")
            environment["LUMEQ_WINE_OVERRIDES"] = "mscoree=d" + (f";{others}" if others else "")
        with open(output, "wb") as lines:
            return self.start_program(self.host_folder / host, *arguments, cwd=self.current_folder(),
                                      env=environment, stdout=lines, stderr=errors)

    def start_program(self, *command, **options) -> subprocess.Popen:
        """Starts the script that runs a Windows program on this machine and exits with its code. Options as for Popen."""
        environment = dict(options.pop("env", os.environ), WINEPREFIX=str(self.prefix))
        return subprocess.Popen([ROOT / "tools" / "run-wine", *command], env=environment,
                                **{"stdin": subprocess.DEVNULL, **options})

    def run_program(self, *command) -> None:
        """Runs a Windows program to its end. Raises if it fails."""
        process = self.start_program(*command, stdout=subprocess.DEVNULL)
        if process.wait() != 0:
            raise subprocess.CalledProcessError(process.returncode, process.args)

    def collect(self, out: Path) -> None:
        transcript = self.host_folder / "LumeqCompanion.jsonl"
        if transcript.exists():
            shutil.copy(transcript, out / "companion.jsonl")
        logs = self.log_folder()
        for name in LOG_FILES:
            if logs and (logs / name).exists():
                shutil.copy(logs / name, out)
        # Zuvan/LUMEQ/..., and Zuvan/<subfolder>/LUMEQ/... where the session chose one.
        for settings in self.program_data.glob(f"**/LUMEQ/{SETTINGS_FILE}"):
            if not settings.is_file():
                continue
            target = out / settings.relative_to(self.program_data).parent.parent
            target.mkdir(parents=True, exist_ok=True)
            shutil.copy(settings, target)


def factory_settings(log: str) -> str:
    switch = "<Log>off</Log>" if log == "off" else f"<Log>on</Log><LogLevel>{log}</LogLevel>"
    return f'<LumeqConfig version="4.0">{switch}</LumeqConfig>\n'


def stop_wine(prefix: Path) -> None:
    subprocess.run([ROOT / "tools" / "wine-stop", prefix], check=True)


@contextlib.contextmanager
def machine(build: Path) -> Iterator[Machine]:
    """A fresh machine. At the end its programs are stopped and its files removed."""
    runs = build / "play"
    runs.mkdir(parents=True, exist_ok=True)
    folder = Path(tempfile.mkdtemp(dir=runs))
    prefix = folder / "prefix"
    try:
        subprocess.run([ROOT / "tools" / "wine-prefix", prefix], check=True)
        yield Machine(prefix)
    finally:
        stop_wine(prefix)
        shutil.rmtree(folder)


def play_on(its_machine: Machine, session: Path, out: Path, conditions: Conditions, build: Path, timeout: float,
            errors: Optional[BinaryIO] = None) -> int:
    """As play, on a machine that is fresh or cleared."""
    out.mkdir(parents=True, exist_ok=True)
    for name in RESULTS:
        # An earlier session may have left it.
        (out / name).unlink(missing_ok=True)
    its_machine.set_up(conditions, build)
    status = its_machine.run_host(session, conditions, out / "host.jsonl", timeout, errors)
    its_machine.collect(out)
    return status


def keep_conditions(session: Path, out: Path, conditions: Conditions) -> None:
    """Adds the session and its conditions to the results, for `lumeq view`."""
    shutil.copy(session, out / "session.jsonl")
    about = {"session": f"{session.stem} on the {conditions.road} road", "road": conditions.road}
    (out / "run.json").write_text(json.dumps(about) + "\n", encoding="utf-8")


def write_page(runs: list[Path], page: Path, build: Path = DEFAULT_BUILD, options: tuple[str, ...] = ()) -> str:
    """Returns what `lumeq view` prints. Raises if it fails."""
    command = [ROOT / "tools" / "run-wine", build / "lumeq.exe", "view", *options, "-o", page.resolve(),
               *(run.resolve() for run in runs)]
    return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=True, encoding="utf-8").stdout


def play(session: Path, out: Path, conditions: Conditions = Conditions(), build: Path = DEFAULT_BUILD,
         timeout: float = 600) -> int:
    """Collects the results in `out`. Returns the host's exit code, or 124 after `timeout` seconds."""
    with machine(build) as its_machine:
        return play_on(its_machine, session, out, conditions, build, timeout)
