"""The start of a session, and the pause in the settings file."""

import re
from typing import NamedTuple, Optional

from .log_lines import API, LogLine, trace
from .session_case import call

BOTH_ROADS = ("managed", "basic")

CRASH = LogLine("ERROR", API + "StartupEx",
                "OptinBeforePause exists and it shouldn't that means there was a CRASH!!")
OPTED_IN = {"operation": "SetUserOptInInternal", "userHasOptedIn": True}
STARTED = {"operation": "StartupInternal", "appName": "App", "howType": 6, "whyType": 3, "trackSystemInfo": False,
           "trackPrintQueueInfo": False}
"""The operation that start("App") causes."""


def start(name: str, system: bool = False, queue: bool = False) -> dict:
    return call("StartupEx", appName=name, whyType=4, howType=7, trackSystemInfo=system, trackPrintQueueInfo=queue)


def start_line(name: str, system: int = 0, queue: int = 0) -> LogLine:
    return trace("StartupEx", f'appName: "{name}", whyType: start_app, howType: smv_link, trackSystemInfo: {system}, '
                 f"trackPrintQueueInfo: {queue}")


def settings(**elements: str) -> str:
    return ('<LumeqConfig version="4.0">' + "".join(f"<{name}>{value}</{name}>" for name, value in elements.items())
            + "</LumeqConfig>")


def of_the_exports(outcome) -> list[LogLine]:
    """The basic road's start has lines of its own between."""
    return [line for line in outcome.calls if line.function.startswith(API) or line.severity == "ERROR"]


class Flags(NamedTuple):
    """What the settings file holds; None for no such element."""

    user_opt_in: Optional[str]
    before_pause: Optional[str]


RUNNING_IN, RUNNING_OUT = Flags("True", None), Flags("False", None)
PAUSED_IN, PAUSED_OUT = Flags("False", "True"), Flags("False", "False")


def settings_of(flags: Flags) -> str:
    present = {"UserOptIn": flags.user_opt_in, "OptinBeforePause": flags.before_pause}
    return settings(**{name: value for name, value in present.items() if value is not None})


def flags_of(text: str) -> Flags:
    def value(name: str) -> Optional[str]:
        found = re.search(f"<{name}>(.*?)</{name}>", text)
        return found[1] if found else None

    return Flags(value("UserOptIn"), value("OptinBeforePause"))
