"""Reads include/Lumeq/lumeq.h for the tools that write its declarations in another form."""

import re
import sys
from pathlib import Path
from typing import NamedTuple

ROOT = Path(__file__).resolve().parent.parent
INCLUDE = ROOT / "include" / "Lumeq"


class Function(NamedTuple):
    result: str
    name: str
    """Without its prefix."""
    parameters: list[tuple[str, str]]
    """Types and names."""

    @property
    def parameter_list(self) -> str:
        return ", ".join(f"{its_type} {name}" for its_type, name in self.parameters) or "void"


class Struct(NamedTuple):
    name: str
    fields: list[tuple[str, str]]
    """Types and names."""

    @property
    def has_size(self) -> bool:
        return self.fields[0][1] == "size"


class Enumeration(NamedTuple):
    name: str
    """Without its prefix, as the rows."""
    rows: dict[str, int]


def header() -> str:
    """Without comments."""
    return re.sub(r"//.*", "", (INCLUDE / "lumeq.h").read_text(encoding="utf-8"))


def _declared(text: str, end: str) -> list[tuple[str, str]]:
    """Types and names of parameters or fields, each of which ends with `end`."""
    return [(its_type.strip(), name)
            for its_type, name in re.findall(rf"([\w* ]+[ *])(\w+){end}", " ".join(text.split()))]


def functions() -> list[Function]:
    return [Function(result, name, _declared(parameters if parameters != "void" else "", "(?:,|$)"))
            for result, name, parameters in
            re.findall(r"^LUMEQ_C_API (\w+) lumeq_(\w+)\(([^)]*)\);", header(), re.MULTILINE)]


def structs() -> list[Struct]:
    return [Struct(name, _declared(body, ";"))
            for body, name in re.findall(r"^typedef struct \w+ \{(.*?)\} (\w+);", header(), re.MULTILINE | re.DOTALL)]


def enumerations() -> list[Enumeration]:
    found = []
    for name, body in re.findall(r"^enum lumeq_(\w+) \{(.*?)\}", header(), re.MULTILINE | re.DOTALL):
        rows = {row: int(value) for row, value in re.findall(r"(\w+) = (\d+)", body)}
        prefix = next(iter(rows)).removesuffix("UNKNOWN")
        found.append(Enumeration(name, {row.removeprefix(prefix): value for row, value in rows.items()}))
    return found


def write_or_print(file: Path, text: str) -> None:
    """As the arguments of the tool say."""
    if "--print" in sys.argv[1:]:
        print(text, end="")
    else:
        file.write_text(text, encoding="utf-8", newline="\n")
