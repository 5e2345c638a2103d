"""A model of the log: what its policy lets through, and how its lines read."""

import calendar
import re
import time
from typing import NamedTuple, Optional

from circumstances import Circumstances
from machine_model import factory_failure
from wide_text import c_text, formatted, logged

SEVERITIES = {"ERROR": 1, "WARNING": 2, "TRACE": 3, "DEBUG": 4}
DEFAULT_DATE = "2017-07-07"
LAST_SECOND = 2147483647
"""The last that the log's clock knows. Whatever it does not know leaves the log on."""
_DATE = re.compile("([0-9]{4})-([0-9]{1,2})-([0-9]{1,2})")


class LogLine(NamedTuple):
    severity: str
    function: str
    messages: tuple[str, ...]
    """Any of these is right. A long line is cut after the number of a source line, whose digits may vary."""


def seconds_of(date: str) -> Optional[int]:
    """Midnight of a date in seconds since 1970. Text may follow the date. The day after a month's last is the next month's
    first."""
    match = _DATE.match(date)
    if not match:
        return None
    year, month, day = map(int, match.groups())
    if not (1 <= month <= 12 and 1 <= day <= 31):
        return None
    return calendar.timegm((year, month, 1, 0, 0, 0)) + (day - 1) * 86400


def is_open(date: str) -> bool:
    """Whether a log that ends at this date still goes on."""
    seconds = seconds_of(date)
    if seconds is None:
        seconds = seconds_of(DEFAULT_DATE)
    return not 0 <= seconds <= LAST_SECOND or time.time() <= seconds


class Log:
    """One process's; empty where nothing is logged."""

    def __init__(self, circumstances: Circumstances):
        self._factory = circumstances.factory_in_use if self._can_be_read(circumstances) else None
        self.lines: list[LogLine] = []
        self.restart()

    @staticmethod
    def _can_be_read(circumstances: Circumstances) -> bool:
        """Neither file can be read without the other, and without them the default holds."""
        settings = circumstances.settings
        return not factory_failure(circumstances) and not (settings and settings.defect)

    def restart(self) -> None:
        """The library was loaded again and reads its policy again."""
        self._begun = False

    def write(self, severity: str, function: str, *messages: str) -> None:
        if not self._begun:
            self._begun = True
            self._write_policy()
        self._add(severity, function, *messages)

    def takes(self, severity: str) -> bool:
        return self._enabled() and SEVERITIES[severity] <= self._verbosity()

    def _add(self, severity: str, function: str, *messages: str) -> None:
        if self.takes(severity):
            self.lines.append(LogLine(severity, function, tuple(dict.fromkeys(map(logged, messages)))))

    def _setting(self, key: str) -> str:
        return self._factory.text(key) if self._factory else ""

    def _verbosity(self) -> int:
        # ERROR where nothing valid is said.
        return SEVERITIES.get(self._setting("LogLevel").upper(), SEVERITIES["ERROR"])

    def _enabled(self) -> bool:
        switch = self._setting("Log").lower()
        if switch in ("on", "off"):
            return switch == "on"
        return is_open(self._setting("LogDate") if switch == "date" else DEFAULT_DATE)

    def _write_policy(self) -> None:
        switch = self._setting("Log").lower()
        policy = f"Logger: Log='{switch}'"
        if switch == "date":
            policy += f", LogDate='{self._setting('LogDate')}'"
        for message in (f"Logger: LogLevel='{self._setting('LogLevel').lower()}'", policy,
                        f"Logger: Logging is on by default until {DEFAULT_DATE}T00:00:00Z",
                        "Logger: Logging is currently ENABLED"):
            self._add("TRACE", "", message)


def report(title: str, function: str, detail: str) -> tuple[str, ...]:
    """The message of a refusal. The number of the source line may have any number of digits."""
    def numbered(digits: int) -> str:
        return f"{title} in {function}: {detail}. LumeqApi({'0' * digits})"

    return tuple(formatted("%s: %s", "lumeq-host.exe", numbered(digits)) for digits in (1, 2, 3, 4))


def argument_line(template: str, texts: dict[str, str]) -> str:
    """The line of an export's arguments, each text up to its first zero."""
    return template.format_map({name: c_text(text) for name, text in texts.items()})
