"""A small model of the machine that a session plays on: its settings files and its companion."""

from dataclasses import dataclass, field
from typing import Optional

from circumstances import SUBFOLDER, Circumstances
from settings_files import FOLDER, SettingsFile

FACTORY_VERSION = "4.0"


class Failure(Exception):
    """A standard exception within the library, with its text."""

    def line(self, region: str) -> str:
        """As the region that catches it reports it."""
        return f"{region} exception with {self}"


class ComFailure(Failure):
    """A _com_error, with its code and text."""

    def line(self, region: str) -> str:
        return f"{region} failed with _com_error exception {self}"


def factory_failure(circumstances: Circumstances) -> str:
    """Why the factory file cannot be used; empty if it can."""
    file = circumstances.factory_in_use
    if file is None:
        return "No factory settings file found"
    if file.defect:
        return "Error parsing factory settings file"
    version = file.attributes.get("version", "")
    if version != FACTORY_VERSION:
        return f"Factory settings version mismatch; expected: '{FACTORY_VERSION}', actual: '{version}'"
    return ""


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

    ALL_USERS = "C:\\ProgramData\\Zuvan"
    NAME = "LumeqLocalSettings.xml"
    DAMAGE = "Error parsing local settings file"
    DENIED = "0x80070005, Access denied."
    TOO_LONG = "One or both arguments to CombinePath exceed the maximum path length."

    def __init__(self, circumstances: Circumstances):
        self._files: dict[str, Document] = {}
        self._unreadable: dict[str, SettingsFile] = {}
        self._read_only: set[str] = set()
        for subfolder, file in (("", circumstances.settings), (SUBFOLDER, circumstances.subfolder_settings)):
            if file:
                self._find(self.place(subfolder), file)

    def _find(self, place: str, file: SettingsFile) -> None:
        if file.defect:
            self._unreadable[place] = file
        else:
            self._files[place] = Document(file.root, dict(file.attributes), [list(element) for element in file.elements])
        if file.read_only:
            self._read_only.add(place)

    def place(self, subfolder: str) -> str:
        """The file's folder, below the drive."""
        folder = self.ALL_USERS
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
        place = self.place(subfolder)
        if place in self._unreadable:
            raise Failure(damage)
        found = self._files.get(place, Document())
        return Document(found.root, dict(found.attributes), [list(element) for element in found.elements])

    def save(self, subfolder: str, document: Document) -> None:
        place = self.place(subfolder)
        if place in self._read_only:
            raise ComFailure(self.DENIED)
        self._files[place] = document

    def all(self) -> dict[str, object]:
        """By place; what was never saved is not there. An unreadable file has the bytes that it had."""
        unreadable = {place: file.content() for place, file in self._unreadable.items() if file.defect != FOLDER}
        return {**unreadable, **{place: file.seen() for place, file in self._files.items()}}


class Companion:
    """The stand-in: records its operations, fails on demand, keeps the opt-in. It stays when the library is unloaded."""

    KINDS = {
        "vesto": "{region} failed with VestoException exception {operation} was told to fail",
        "com": "{region} failed with _com_error exception 0x80004005, Call failed.",
        "std": "{region} exception with {operation} was told to fail",
        "unknown": "{region} failed with unknown exception",
        "managed": "{region} failed with unknown exception",
    }
    MISSING = ("{region} failed with VestoException exception The companion library was not found\n"
               'Path: "C:\\Host\\LumeqShim.Managed.dll"')
    DAMAGE = "the local settings file is damaged"

    def __init__(self, circumstances: Circumstances, files: SettingsFiles):
        self._circumstances = circumstances
        self._files = files
        self._subfolder = ""
        self._calls: dict[str, int] = {}
        """How often each operation that may fail was called."""
        self.operations: list[dict] = []

    def ask(self, region: str, operation: str, **members) -> Optional[str]:
        """The line that the caller's region logs, or None if all went well."""
        if self._circumstances.without_companion:
            return self.MISSING.format(region=region)
        operation += "Internal"
        self.operations.append({"operation": operation, **members})
        kind = self._failure(operation)
        return self.KINDS[kind].format(region=region, operation=operation) if kind else None

    def _failure(self, operation: str) -> Optional[str]:
        plan = self._circumstances.failures.get(operation)
        if not isinstance(plan, list):
            return plan
        call = self._calls[operation] = self._calls.get(operation, -1) + 1
        return plan[call % len(plan)]

    def use_subfolder(self, subfolder: str) -> None:
        self._subfolder = subfolder

    def read(self, key: str) -> str:
        return self._files.load(self._subfolder, self.DAMAGE).text(key)

    def write(self, key: str, value: str) -> None:
        document = self._files.load(self._subfolder, self.DAMAGE)
        document.write(key, value)
        self._files.save(self._subfolder, document)

