"""A machine whose folders are in other places and have other names."""

import contextlib
from dataclasses import dataclass
from pathlib import Path
from typing import Iterator, Optional

from .host_process import HostProcess
from .log_lines import LogLine
from .outcome import Outcome
from .paths import BUILD
from .session_case import SessionTestCase
from session_player import Conditions, Machine

SHELL_FOLDERS = r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Explorer" "\\"
SYSTEM_PATH = r"C:\windows\system32;C:\windows;C:\windows\system32\wbem"


@dataclass
class Places:
    """Paths on the machine, without the drive."""

    host: str = r"\Host"
    host_name: str = "lumeq-host.exe"
    temporary: str = r"\Temporary"
    program_data: str = r"\ProgramData"
    current: str = ""
    """The host's current folder; empty for its own folder."""
    path: str = ""
    """A folder of the search path, before those of the system."""


class PlacedMachine(Machine):
    """Its host, data and current folder are where `places` says."""

    def __init__(self, prefix: Path):
        super().__init__(prefix)
        self._written: dict[str, dict[str, str]] = {}
        self.move(Places())

    def move(self, places: Places) -> None:
        """For the following sessions."""
        self.places = places
        self.host_name = places.host_name
        self.host_folder = self.folder(places.host)
        self.program_data = self.folder(places.program_data) / "Zuvan"
        temporary = "C:" + places.temporary
        path = f"C:{places.path};{SYSTEM_PATH}" if places.path else SYSTEM_PATH
        data = {"Common AppData": "C:" + places.program_data}
        self._write({r"HKEY_CURRENT_USER\Environment": {"TMP": temporary, "TEMP": temporary, "PATH": path},
                     SHELL_FOLDERS + "Shell Folders": data, SHELL_FOLDERS + "User Shell Folders": data})

    def folder(self, place: str) -> Path:
        """The folder's path on this system, which cannot name an unpaired surrogate."""
        return self.prefix.joinpath("drive_c", *place.encode("utf-8", "replace").decode().split("\\"))

    @property
    def settings_file(self) -> Path:
        return self.program_data / "LUMEQ" / "LumeqLocalSettings.xml"

    def log_folder(self) -> Optional[Path]:
        folder = self.folder(self.places.temporary) / "Zuvan" / "LUMEQ"
        return folder if folder.is_dir() else None

    def set_up(self, conditions: Conditions, build: Path, host: str = "lumeq-host.exe",
               companion_folder: str = "companion") -> None:
        for folder in (self.host_folder.parent, self.program_data.parent, self.folder(self.places.temporary)):
            folder.mkdir(parents=True, exist_ok=True)
        super().set_up(conditions, build, host, companion_folder)
        (self.host_folder / host).rename(self.host_folder / self.host_name)

    def current_folder(self) -> Path:
        return self.folder(self.places.current) if self.places.current else super().current_folder()

    def _write(self, keys: dict[str, dict[str, str]]) -> None:
        if keys == self._written:
            return
        self._written = keys
        lines = ["\ufeffWindows Registry Editor Version 5.00"]
        for key, values in keys.items():
            lines += ["", f"[{key}]"]
            lines += [f'"{name}"="{value}"'.replace("\\", "\\\\") for name, value in values.items()]
        (self.prefix / "drive_c" / "places.reg").write_bytes(
            "\r\n".join([*lines, ""]).encode("utf-16-le", "surrogatepass"))
        self.run_program("reg", "import", r"C:\places.reg")


class PlacedTestCase(SessionTestCase):
    """Its machine stays in the places to which a test moved it."""

    CHANGES_THE_MACHINE = True

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.machine = PlacedMachine(cls.machine.prefix)

    def play_at(self, places: Places, *steps: dict, **circumstances) -> Outcome:
        """As play_to_end."""
        self.machine.move(places)
        return self.play_to_end(*steps, **circumstances)

    @contextlib.contextmanager
    def live(self, conditions: Conditions, set_up: bool = True) -> Iterator[HostProcess]:
        """A live session on the machine, which it clears and sets up unless the test has done so."""
        if set_up:
            self.machine.clear()
            self.machine.set_up(conditions, BUILD)
        with HostProcess(self.machine, conditions) as session:
            yield session
            self.assertEqual(0, session.finish().status)


def warning(message: str) -> LogLine:
    return LogLine("WARNING", "", message)


def warnings_of(outcome: Outcome) -> list[LogLine]:
    return [line for line in outcome.log if line.severity == "WARNING"]
