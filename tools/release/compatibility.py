#!/usr/bin/env python3
"""Compares what hosts and the companion library depend on with compatibility/baseline.json, and says of each difference
whether it is compatible. docs/compatibility.md explains the rules.

  tools/release/compatibility.py            compares; exit code 1 if anything differs
  tools/release/compatibility.py --write    makes the present state the baseline, if the version of the project allows it
"""

import argparse
import json
import sys
from pathlib import Path
from typing import Iterator, NamedTuple

sys.path.insert(0, str(Path(__file__).resolve().parent))
import interfaces  # noqa: E402

BASELINE = interfaces.ROOT / "compatibility" / "baseline.json"
COMPILER = "x86_64-w64-mingw32-g++-posix"


class Change(NamedTuple):
    is_breaking: bool
    text: str

    def __str__(self) -> str:
        return f"{'BREAKING' if self.is_breaking else 'compatible'}: {self.text}"


def differences(old: dict, new: dict) -> list[Change]:
    found = list(_values("export of", old["exports"], new["exports"], "ordinal"))
    found += _values("function of", old["functions"], new["functions"], "signature", closed="LumeqRecords.h")
    found += _values("value of", old["enumerations"], new["enumerations"], "number")
    for kind, rows in old["layouts"].items():
        found += _structs(rows, new["layouts"][kind], may_grow=kind == "lumeq.h")
    if old["abi"] != new["abi"]:
        found.append(Change(True, f"LUMEQ_ABI_NUMBER {old['abi']} is {new['abi']} now"))
    return found


def _values(what: str, old: dict, new: dict, column: str, closed: str = "") -> Iterator[Change]:
    """Of tables by name: names with one value each. Nothing may be added to the table `closed`."""
    for table in sorted(old.keys() | new.keys()):
        before, after = old.get(table, {}), new.get(table, {})
        for name in sorted(before.keys() | after.keys()):
            if name not in after:
                yield Change(True, f"{what} {table}: {name} is gone")
            elif name not in before:
                yield Change(table == closed, f"{what} {table}: {name} is new")
            elif before[name] != after[name]:
                yield Change(True, f"{what} {table}: {name} has the {column} {after[name]} instead of {before[name]}")


def _structs(old: dict, new: dict, may_grow: bool) -> Iterator[Change]:
    for name in sorted(old.keys() | new.keys()):
        if name not in new:
            yield Change(True, f"struct {name} is gone")
        elif name not in old:
            yield Change(False, f"struct {name} is new")
        else:
            yield from _fields(name, old[name], new[name], may_grow and "size" in old[name]["fields"])


def _fields(name: str, old: dict, new: dict, may_grow: bool) -> Iterator[Change]:
    """A struct that begins with its size may grow at its end, because an older host passes the smaller size."""
    for field in sorted(old["fields"].keys() | new["fields"].keys()):
        before, after = old["fields"].get(field), new["fields"].get(field)
        if after is None:
            yield Change(True, f"struct {name}: field {field} is gone")
        elif before is None:
            at_end = after[0] >= old["size"]
            yield Change(not (may_grow and at_end), f"struct {name}: field {field} is new, at {after[0]} of {old['size']} bytes")
        elif before != after:
            yield Change(True, f"struct {name}: field {field} is {after} instead of {before}")
    if old["size"] != new["size"]:
        grows = may_grow and new["size"] > old["size"]
        yield Change(not grows, f"struct {name} has {new['size']} bytes instead of {old['size']}")


def least_version(old: str, changes: list[Change]) -> str:
    """The version that may have these changes to the version `old`."""
    major, minor, patch = map(int, old.split("."))
    if any(change.is_breaking for change in changes):
        return f"{major + 1}.0.0"
    return f"{major}.{minor + 1}.0" if changes else f"{major}.{minor}.{patch}"


def is_before(one: str, other: str) -> bool:
    return list(map(int, one.split("."))) < list(map(int, other.split(".")))


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", metavar="DIR", type=Path, default=interfaces.ROOT / "build" / "mingw",
                        help="with the DLLs (default: build/mingw)")
    parser.add_argument("--write", action="store_true", help="make the present state the baseline")
    parser.add_argument("--unreleased", action="store_true", help="with --write: the version of the baseline is no release yet")
    arguments = parser.parse_args()
    present = interfaces.snapshot(arguments.build, [COMPILER])
    changes = []
    if BASELINE.exists():
        old = json.loads(BASELINE.read_text(encoding="utf-8"))
        changes = differences(old, present)
        print("\n".join(map(str, changes)) or f"Nothing differs from {old['version']}.")
        least = least_version(old["version"], changes)
        if changes and is_before(present["version"], least):
            print(f"These changes to {old['version']} need version {least} or later.")
            if not arguments.unreleased:
                return 1
    if arguments.write:
        BASELINE.parent.mkdir(exist_ok=True)
        BASELINE.write_text(json.dumps(present, indent=1) + "\n", encoding="utf-8")
        return 0
    return 1 if changes else 0


if __name__ == "__main__":
    sys.exit(main())
