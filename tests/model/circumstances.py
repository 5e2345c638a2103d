"""A session, and what it finds on its machine."""

import dataclasses
from dataclasses import dataclass, field
from typing import NamedTuple, Optional, Union

from settings_files import SettingsFile

SUBFOLDER = "Sub"
"""A subfolder that may have a settings file before the session."""
_FILES = ("factory", "named_factory", "settings", "subfolder_settings")


def logging(switch: str = "on", level: str = "trace", date: str = "", **others) -> SettingsFile:
    """A factory file with these settings of the log."""
    return SettingsFile([["Log", switch], ["LogLevel", level], ["LogDate", date]], **others)


@dataclass
class Circumstances:
    """All of it can be written as JSON."""

    road: str = "managed"
    factory: Optional[SettingsFile] = field(default_factory=logging)
    """A ProjectId is of spaces only, because no session may send anything."""
    named_factory: Optional[SettingsFile] = None
    """The one with the host's name, which counts instead of the other."""
    settings: Optional[SettingsFile] = None
    """The local settings file."""
    subfolder_settings: Optional[SettingsFile] = None
    """The local settings file of SUBFOLDER."""
    failures: dict[str, Union[str, list[Optional[str]]]] = field(default_factory=dict)
    """How each of these operations of the companion fails: always in one way (vesto, com, std, unknown or managed), or as
    a list says for the calls in turn, over and over, with None for a call that succeeds."""
    without_companion: bool = False
    disabled: Optional[int] = None
    """The registry value TrackingDisabled."""

    @property
    def factory_in_use(self) -> Optional[SettingsFile]:
        return self.named_factory or self.factory

    @staticmethod
    def from_json(form: dict) -> "Circumstances":
        """The reverse of dataclasses.asdict."""
        files = {name: SettingsFile(**form[name]) for name in _FILES if form[name] is not None}
        return dataclasses.replace(Circumstances(**form), **files)


class Session(NamedTuple):
    steps: list[dict]
    """The lines of its file, as samples/host/README.md describes them."""
    circumstances: Circumstances

    @property
    def calls(self) -> int:
        return count_calls(self.steps)


def count_calls(steps: list[dict]) -> int:
    count = 0
    for step in steps:
        if "times" in step:
            count += step["times"] * count_calls(step["calls"])
        elif "threads" in step:
            count += sum(map(count_calls, step["threads"]))
        else:
            count += "call" in step
    return count
