"""The lines of the log, read and expected."""

import re
from typing import NamedTuple

API = "Zuvan::Lumeq::API::"


class LogLine(NamedTuple):
    """A line of the log without its time and thread."""

    severity: str
    function: str
    """Empty if the line names none."""
    message: str


LINE = re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z (?P<severity>\w+) *0x(?P<thread>[0-9a-f]{8}) \| "
                  r"(?:<(?P<function>[^>]*)> )?(?P<message>.*)")


def lines_of(text: str) -> list[str]:
    """Splits at line feeds only; Python's splitlines knows other line ends too."""
    return text.replace("\r\n", "\n").removesuffix("\n").split("\n") if text else []


def parse_log(text: str) -> list[LogLine]:
    """Replaces the numbers of source lines by "line", because receivers ignore them."""
    lines = []
    for line in lines_of(re.sub(r"LumeqApi\(\d+\)", "LumeqApi(line)", text)):
        match = LINE.fullmatch(line)
        if not match:
            raise AssertionError(f"not a log line: {line!r}")
        lines.append(LogLine(match["severity"], match["function"] or "", match["message"]))
    return lines


def trace(export: str, message: str = "") -> LogLine:
    return LogLine("TRACE", API + export, message)


def error(export: str, detail: str, title: str = "Validation failed") -> LogLine:
    return LogLine("ERROR", "", f"lumeq-host.exe: {title} in {API}{export}: {detail}. LumeqApi(line)")
