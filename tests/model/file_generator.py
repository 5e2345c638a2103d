"""Makes settings files in every state."""

import random
from typing import Any, Callable, Optional

from session_texts import FLAGS, NO_PROJECTS
from settings_files import DEFECTS, ENCODINGS, FOLDER, LAYOUTS, SettingsFile

# Of the factory file: Log, LogLevel and LogDate.
LOGS = [("on", "trace", "")] * 12 + [
    ("on", "debug", ""), ("on", "warning", ""), ("on", "error", ""), ("off", "trace", ""), ("ON", "Trace", ""),
    ("on", "", ""), ("on", "loud", ""), ("on", "WARNING", "2001-02-03"), ("OFF", "debug", "2036-12-31"),
    ("", "trace", ""), ("perhaps", "debug", "2036-12-31"), ("date", "trace", ""),
    ("date", "trace", "2036-12-31"), ("Date", "TRACE", "2001-02-03"), ("DATE", "warning", "2036-1-2"),
    ("date", "debug", "2036-02-30"), ("date", "trace", "2036-12-31T23:59Z"),
    # None of these is a date, so the default date holds, which is past.
    ("date", "trace", "tomorrow"), ("date", "trace", "2036-13-01"), ("date", "trace", "2036/12/31"),
    # The log's clock knows none of these.
    ("date", "trace", "2039-01-01"), ("date", "trace", "9999-12-31"), ("date", "trace", "1969-12-31")]
OTHER_VERSIONS = [{}, {"version": ""}, {"version": "4"}, {"version": "4.1"}, {"version": "4.0 "}, {"Version": "4.0"}]
KEYS = ["UserOptIn", "OptinBeforePause", "AppDeployedUuid", "Other", "Log", "ProjectId"]


class FileGenerator:
    def __init__(self, chance: random.Random, block_text: Callable[[], str]):
        self._random = chance
        self._block_text = block_text

    def factory(self, is_used: bool = True) -> Optional[SettingsFile]:
        """Most of those in use can be read, because the log is off without them."""
        unusable = 0.15 if is_used else 0.5
        if self._chance(unusable / 3):
            return None
        file = self._file(unusable / 3)
        file.attributes = self._one({"version": "4.0"}, {"version": "4.0", "other": "x"})
        if self._chance(unusable / 3):
            file.attributes = self._one(*OTHER_VERSIONS)
        switch, level, date = self._one(*LOGS)
        elements = [[key, value] for key, value in (("Log", switch), ("LogLevel", level), ("LogDate", date))
                    if value or self._chance(0.5)]
        self._random.shuffle(elements)
        return self._filled(file, elements + self._not_used())

    def local(self, unreadable: float, may_be_read_only: bool) -> Optional[SettingsFile]:
        if self._chance(0.35):
            return None
        file = self._file(unreadable)
        file.attributes = self._one({"version": "4.0"}, {"version": "9"}, {}, {"version": "4.0", "other": "x"})
        file.read_only = may_be_read_only and file.defect != FOLDER and self._chance(0.15)
        keys = self._random.sample(KEYS * 2, self._random.randint(0, 5))
        return self._filled(file, [[key, self._value(key)] for key in keys])

    def _chance(self, probability: float) -> bool:
        return self._random.random() < probability

    def _one(self, *choices: Any) -> Any:
        return self._random.choice(choices)

    def _file(self, unreadable: float) -> SettingsFile:
        return SettingsFile(root=self._one("LumeqConfig", "LumeqConfig", "LUMConfig", "Anything"),
                            defect=self._one(*DEFECTS, FOLDER, FOLDER) if self._chance(unreadable) else "",
                            layout=self._one("plain", *LAYOUTS), encoding=self._one(*ENCODINGS))

    @staticmethod
    def _filled(file: SettingsFile, elements: list[list[str]]) -> SettingsFile:
        file.elements = elements
        if file.encoding == "latin-1" and any(ord(unit) > 0xFF for _, value in elements for unit in value):
            file.encoding = "utf-8"
        return file

    def _not_used(self) -> list[list[str]]:
        """Later elements of the same names, and settings of the other file."""
        elements = [["ProjectId", self._one(*NO_PROJECTS)], ["Log", "off"], ["LogLevel", "error"],
                    ["LogDate", "2001-02-03"], ["UserOptIn", "True"], ["OptinBeforePause", "True"],
                    ["Other", self._value("Other")]]
        return self._random.sample(elements, self._random.choice((0, 0, 1, 3, len(elements))))

    def _value(self, key: str) -> str:
        if key == "Log":
            return "off"
        if key == "Other":
            # What XML may hold.
            return "".join(unit for unit in "x" + self._block_text()
                           if "\x20" <= unit and not "\ud800" <= unit <= "\udfff" and unit < "\ufffe")
        return self._one(*FLAGS)
