"""Windows texts: a Python text here holds one UTF-16 code unit in each character, surrogates included."""

import re
from typing import Any, Optional

MESSAGE_CAPACITY = 4096
TRUNCATED = "<TRUNCATED>"

_BEYOND_BMP = re.compile("[\U00010000-\U0010ffff]")
_SURROGATE = re.compile("[\ud800-\udfff]")
_UNPAIRED = re.compile("[\ud800-\udbff](?![\udc00-\udfff])|(?<![\ud800-\udbff])[\udc00-\udfff]")


def wide(text: str) -> str:
    """The code units of a text of characters."""
    def pair(character: re.Match) -> str:
        beyond = ord(character[0]) - 0x10000
        return chr(0xD800 + (beyond >> 10)) + chr(0xDC00 + (beyond & 0x3FF))

    return text if text.isascii() else _BEYOND_BMP.sub(pair, text)


def characters(units: str) -> str:
    """The reverse of wide; unpaired surrogates stay."""
    if not _SURROGATE.search(units):
        return units
    return units.encode("utf-16-le", "surrogatepass").decode("utf-16-le", "surrogatepass")


def has_unpaired(units: str) -> bool:
    return _UNPAIRED.search(units) is not None


def shown(units: str) -> str:
    """As a reader of UTF-8 gets it: an unpaired surrogate has become U+FFFD."""
    return units if units.isascii() else characters(_UNPAIRED.sub("\ufffd", units))


def c_text(units: str) -> str:
    """The part that remains where a text ends at its first zero."""
    return units.partition("\0")[0]


def formatted(template: str, *values: Any) -> str:
    """printf: every text ends at its first zero."""
    return template % tuple(c_text(value) if isinstance(value, str) else value for value in values)


def logged(message: str) -> str:
    """A message as its line in the log shows it."""
    if len(message) >= MESSAGE_CAPACITY:
        message = message[:MESSAGE_CAPACITY - 1 - len(TRUNCATED)] + TRUNCATED
    return shown(message.replace("\n", "\\n").replace("\r", "\\r"))


def quoted(text: Optional[str]) -> str:
    return "(null)" if text is None else f'"{text}"'


def session_text(form: Any) -> str:
    """The text that a session file spells."""
    if isinstance(form, str):
        return wide(form)
    if isinstance(form, list):
        return "".join(map(session_text, form))
    if "units" in form:
        return "".join(map(chr, form["units"]))
    return session_text(form["repeat"]) * form["times"]


def session_bytes(form: Any) -> bytes:
    """As session_text for a narrow text."""
    if isinstance(form, str):
        return form.encode("utf-8")
    if isinstance(form, list):
        return b"".join(map(session_bytes, form))
    if "units" in form:
        return bytes(form["units"])
    return session_bytes(form["repeat"]) * form["times"]


def session_dictionary(form: Any) -> dict[str, str]:
    pairs = form.items() if isinstance(form, dict) else form
    return {session_text(key): session_text(value) for key, value in pairs}


_RUN = re.compile(r"(.{1,8}?)\1{30,}", re.DOTALL)


def spelled(units: str) -> Any:
    """How a session file spells a text: runs by their length, unpaired surrogates by their numbers."""
    parts, end = [], 0
    for run in _RUN.finditer(units):
        parts += _plain(units[end:run.start()])
        parts.append({"repeat": _plain(run[1])[0], "times": len(run[0]) // len(run[1])})
        end = run.end()
    parts += _plain(units[end:])
    return parts[0] if len(parts) == 1 else parts or ""


def _plain(units: str) -> list:
    if not units:
        return []
    return [{"units": list(map(ord, units))} if has_unpaired(units) else characters(units)]
