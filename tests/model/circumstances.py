"""A session, and what it finds on its machine."""

from dataclasses import dataclass, field
from typing import NamedTuple, Optional

DAMAGED = "damaged"
DAMAGED_TEXT = "<LumeqConfig><UserOptIn>True</UserOptIn>"
DAMAGED_SUBFOLDER = "Sub"

# The text before the root element, around a value, and between elements.
LAYOUTS = {
    "plain": ("", "{}", ""),
    "spread": ('<?xml version="1.0"?>\n<!-- by hand -->\n', "{}", "\n  <!-- one more -->\n\t"),
    "cdata": ("\n", "<![CDATA[{}]]>", ""),
}


@dataclass
class Circumstances:
    """All of it can be written as JSON."""

    road: str = "managed"
    log: tuple[str, str, str] = ("on", "trace", "")
    """The factory file's Log, LogLevel and LogDate."""
    project: Optional[str] = None
    """Its ProjectId, of spaces only, because no session may send anything. None: no such key."""
    factory_damaged: bool = False
    settings: Optional[list] = None
    """The local settings file: its root's name, its root's attributes, its elements; or [DAMAGED]; None: no file."""
    layout: str = "plain"
    """How that file is written: plain, spread over lines with comments, or cdata; all mean the same."""
    damaged_subfolder: bool = False
    """DAMAGED_SUBFOLDER begins with a file that is no XML."""
    failures: dict[str, str] = field(default_factory=dict)
    """The companion's operations that fail, and how: vesto, com, std or unknown."""
    without_companion: bool = False
    disabled: Optional[int] = None
    """The registry value TrackingDisabled."""

    def factory_text(self) -> str:
        switch, level, date = self.log
        project = "" if self.project is None else f"<ProjectId>{self.project}</ProjectId>"
        return (f'<LumeqConfig version="4.0"><Log>{switch}</Log><LogLevel>{level}</LogLevel><LogDate>{date}</LogDate>'
                f"{project}{'' if self.factory_damaged else '</LumeqConfig>'}")

    def settings_text(self) -> Optional[str]:
        if self.settings is None:
            return None
        if self.settings[0] == DAMAGED:
            return DAMAGED_TEXT
        root, attributes, elements = self.settings
        before, value_form, between = LAYOUTS[self.layout]
        return (before + f"<{root}" + "".join(f' {name}="{value}"' for name, value in attributes.items()) + ">"
                + "".join(between + f"<{name}>{value_form.format(value)}</{name}>" for name, value in elements)
                + between + f"</{root}>")


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
