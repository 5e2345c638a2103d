"""A small model of the machine that a session plays on: its settings files, its log and its companion."""

import datetime
from dataclasses import dataclass, field
from typing import NamedTuple, Optional

from circumstances import DAMAGED, DAMAGED_SUBFOLDER, Circumstances
from wide_text import c_text, formatted, logged

SEVERITIES = {"ERROR": 1, "WARNING": 2, "TRACE": 3, "DEBUG": 4}


class Failure(Exception):
    """A standard exception within the library, with its text."""


@dataclass
class Document:
    """A local settings file. Elements keep their order; a key may stand twice, of which the first counts."""

    root: str = "LumeqConfig"
    attributes: dict[str, str] = field(default_factory=lambda: {"version": "4.0"})
    elements: list[list[str]] = field(default_factory=list)

    def find(self, key: str) -> Optional[list[str]]:
        return next((element for element in self.elements if element[0] == key), None)

    def text(self, key: str) -> str:
        element = self.find(key)
        return element[1] if element else ""

    def write(self, key: str, value: str) -> None:
        element = self.find(key)
        if element:
            element[1] = value
        else:
            self.elements.append([key, value])

    def seen(self) -> tuple:
        """As a file is compared with another."""
        return self.root, self.attributes, [(name, value.strip()) for name, value in self.elements]


class SettingsFiles:
    """Those of the machine, by subfolder."""

    FOLDER = "C:\\ProgramData\\Zuvan"
    NAME = "LumeqLocalSettings.xml"
    DAMAGE = "Error parsing local settings file"
    TOO_LONG = "One or both arguments to CombinePath exceed the maximum path length."

    def __init__(self, circumstances: Circumstances):
        self._files: dict[str, object] = {}
        if circumstances.damaged_subfolder:
            self._files[self.place(DAMAGED_SUBFOLDER)] = DAMAGED
        initial = circumstances.settings
        if initial is not None:
            self._files[self.place("")] = DAMAGED if initial[0] == DAMAGED else Document(
                initial[0], dict(initial[1]), [list(element) for element in initial[2]])

    def place(self, subfolder: str) -> str:
        """The file's folder, below the drive."""
        folder = self.FOLDER
        if subfolder.startswith("\\"):
            folder = "C:" + subfolder
        elif subfolder.strip(" "):
            folder += "\\" + subfolder
        path = folder.rstrip("\\") + "\\LUMEQ\\" + self.NAME
        if len(path) > 260:
            raise Failure(self.TOO_LONG)
        return path[3:-len(self.NAME) - 1].lower()

    def load(self, subfolder: str, damage: str = DAMAGE) -> Document:
        """A copy of the document, or a new one where there is no file."""
        found = self._files.get(self.place(subfolder))
        if found is DAMAGED:
            raise Failure(damage)
        if found is None:
            return Document()
        return Document(found.root, dict(found.attributes), [list(element) for element in found.elements])

    def save(self, subfolder: str, document: Document) -> None:
        self._files[self.place(subfolder)] = document

    def all(self) -> dict[str, object]:
        """By place; what was never saved is not there."""
        return {place: file if file is DAMAGED else file.seen() for place, file in self._files.items()}


class LogLine(NamedTuple):
    severity: str
    function: str
    messages: tuple[str, ...]
    """Any of these is right. A long line is cut after the number of a source line, whose digits may vary."""


class Log:
    """One process's; empty where nothing is logged."""

    DEFAULT_DATE = "2017-07-07"

    def __init__(self, circumstances: Circumstances):
        self._circumstances = circumstances
        # Neither file can be read without the other, and without them the default holds.
        self._policy_readable = not circumstances.factory_damaged and circumstances.settings != [DAMAGED]
        self.lines: list[LogLine] = []
        self.restart()

    def restart(self) -> None:
        """The library was loaded again and reads its policy again."""
        self._begun = False

    def write(self, severity: str, function: str, *messages: str) -> None:
        if not self._begun:
            self._begun = True
            self._write_policy()
        self._add(severity, function, *messages)

    def _add(self, severity: str, function: str, *messages: str) -> None:
        if self._enabled() and SEVERITIES[severity] <= self._verbosity():
            self.lines.append(LogLine(severity, function, tuple(dict.fromkeys(map(logged, messages)))))

    def _verbosity(self) -> int:
        # ERROR where nothing valid is said.
        return SEVERITIES.get(self._circumstances.log[1].upper(), SEVERITIES["ERROR"])

    def _enabled(self) -> bool:
        switch, _, date = self._circumstances.log
        switch = switch.lower() if self._policy_readable else ""
        if switch in ("on", "off"):
            return switch == "on"
        last = date if switch == "date" and date else self.DEFAULT_DATE
        return datetime.date.today() < datetime.date.fromisoformat(last)

    def _write_policy(self) -> None:
        switch, level, date = (text.lower() for text in self._circumstances.log)
        policy = f"Logger: Log='{switch}'"
        if switch == "date":
            policy += f", LogDate='{date}'"
        for message in (f"Logger: LogLevel='{level}'", policy,
                        f"Logger: Logging is on by default until {self.DEFAULT_DATE}T00:00:00Z",
                        "Logger: Logging is currently ENABLED"):
            self._add("TRACE", "", message)


class Companion:
    """The stand-in: records its operations, fails on demand, keeps the opt-in."""

    KINDS = {
        "vesto": "{region} failed with VestoException exception {operation} was told to fail",
        "com": "{region} failed with _com_error exception 0x80004005, Call failed.",
        "std": "{region} exception with {operation} was told to fail",
        "unknown": "{region} failed with unknown exception",
    }
    MISSING = ("{region} failed with VestoException exception The companion library was not found\n"
               'Path: "C:\\Host\\LumeqShim.Managed.dll"')
    DAMAGE = "the local settings file is damaged"

    def __init__(self, circumstances: Circumstances, files: SettingsFiles):
        self._circumstances = circumstances
        self._files = files
        self._subfolder = ""
        self.operations: list[dict] = []

    def ask(self, region: str, operation: str, **members) -> Optional[str]:
        """The line that the caller's region logs, or None if all went well."""
        if self._circumstances.without_companion:
            return self.MISSING.format(region=region)
        operation += "Internal"
        self.operations.append({"operation": operation, **members})
        if operation in self._circumstances.failures:
            kind = self._circumstances.failures[operation]
            return self.KINDS[kind].format(region=region, operation=operation)
        return None

    def use_subfolder(self, subfolder: str) -> None:
        self._subfolder = subfolder

    def read(self, key: str) -> str:
        return self._files.load(self._subfolder, self.DAMAGE).text(key)

    def write(self, key: str, value: str) -> None:
        document = self._files.load(self._subfolder, self.DAMAGE)
        document.write(key, value)
        self._files.save(self._subfolder, document)


def report(title: str, function: str, detail: str) -> tuple[str, ...]:
    """The message of a refusal. The number of the source line may have any number of digits."""
    def numbered(digits: int) -> str:
        return f"{title} in {function}: {detail}. LumeqApi({'0' * digits})"

    return tuple(formatted("%s: %s", "lumeq-host.exe", numbered(digits)) for digits in (1, 2, 3, 4))


def argument_line(template: str, texts: dict[str, str]) -> str:
    """The line of an export's arguments, each text up to its first zero."""
    return template.format_map({name: c_text(text) for name, text in texts.items()})
