"""Plays random sessions on the library with the companion stand-in and on the double, and compares them."""

import copy
import itertools
import json
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Any, Iterator, NamedTuple

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import BUILD  # noqa: E402
import played_sessions  # noqa: E402
import session_player  # noqa: E402
from circumstances import Circumstances, Session  # noqa: E402
from session_texts import BASIC_SUBFOLDERS  # noqa: E402
from wide_text import spelled  # noqa: E402

LINE_START = re.compile(r"(?:^|\r\n)\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z (\w+) *0x[0-9a-f]{8} \| (?:<([^>]*)> )?")
CUT = "<TRUNCATED>"
OF_THE_BASIC_ROAD = [spelled(path) for path in BASIC_SUBFOLDERS]


class Recorded(NamedTuple):
    answers: list[dict]
    """What the calls returned to the host."""
    operations: list[dict]
    log: list[str]
    """The lines at TRACE and ERROR."""
    refusals: list[dict]


def for_the_double(session: Session) -> Session:
    """The session where tracking is enabled and the companion library works, which is all that the double knows. The
    double forgets all when it is unloaded, so the session keeps it. One thread makes the calls of several, because the
    device model of an event depends on the order of the calls. Without the subfolders that the generator keeps from the
    companion library."""
    return Session(list(_steps_in_order(session.steps)), Circumstances())


def play_on_library(session: Session, machine: session_player.Machine) -> Recorded:
    outcome = played_sessions.play(session, machine, BUILD)
    if outcome.status != 0:
        raise AssertionError(f"the host ended with {outcome.status}: {outcome.errors}")
    parts = LINE_START.split(outcome.text("Lumeq.Log.txt").removesuffix("\r\n"))[1:]
    lines = [f"{level} {function}: {message}" if function else f"{level} {message}"
             for level, function, message in zip(*[iter(parts)] * 3)]
    return Recorded(outcome.host, outcome.companion,
                    [line for line in lines if _is_of_call(line) and "Logger: " not in line[:20]], [])


def play_on_double(session: Session, machine: session_player.Machine) -> Recorded:
    with tempfile.TemporaryDirectory(dir=machine.prefix) as name:
        folder = Path(name)
        for file in ("double/Lumeq.dll", "double/lumeq-host.exe", "LumeqC.dll"):
            shutil.copy(BUILD / file, folder)
        (folder / "session.jsonl").write_text("".join(json.dumps(step) + "\n" for step in session.steps))
        with open(folder / "output", "wb") as output:
            process = machine.start_program(folder / "lumeq-host.exe", "session.jsonl", cwd=folder, stdout=output,
                                            stderr=subprocess.DEVNULL)
            if process.wait(300) != 0:
                raise AssertionError(f"the host on the double ended with {process.returncode}")
        lines = [json.loads(line) for line in (folder / "output").read_bytes().decode("utf-8").split("\n") if line]
    recorded = lines.pop()
    for operation in recorded["operations"]:
        del operation["call"]
    return Recorded(lines, recorded["operations"], [line for line in recorded["log"] if _is_of_call(line)],
                    recorded["refusals"])


def differences(library: Recorded, double: Recorded) -> list[str]:
    found = []
    for what in ("answers", "operations", "log"):
        one, other = (_comparable(what, getattr(recorded, what)) for recorded in (library, double))
        found += [f"{what} {number}: library {mine!r:.2000}, double {its!r:.2000}"
                  for number, (mine, its) in enumerate(itertools.zip_longest(one, other)) if mine != its]
    return found


def _steps_in_order(steps: list[dict]) -> Iterator[dict]:
    for step in steps:
        if "threads" in step:
            yield from _steps_in_order(list(itertools.chain(*step["threads"])))
        elif "times" in step:
            yield {**step, "calls": list(_steps_in_order(step["calls"]))}
        elif "load" not in step and "unload" not in step and step.get("subpath") not in OF_THE_BASIC_ROAD:
            yield step


def _is_of_call(line: str) -> bool:
    return line.startswith(("TRACE ", "ERROR "))


def _comparable(what: str, elements: list) -> list:
    if what == "operations":
        return _without_chance(elements)
    return [_comparable_line(line) for line in elements] if what == "log" else elements


def _comparable_line(line: str) -> str:
    """Without the addresses of tasks, and as short as the longest line of the library."""
    line = re.sub(r"taskHandle: 0x[0-9A-F]{16}", "taskHandle: 0x", line)
    line = line.removesuffix(CUT)
    return line[:3500]


def _without_chance(operations: list[dict]) -> list[dict]:
    """Times differ, and so do the identifiers of tasks: these get numbers in the order in which they come."""
    names: dict[str, str] = {}
    plain: list[Any] = copy.deepcopy(operations)
    for operation in plain:
        operation.pop("timestamp", None)
        record = operation.get("record", {})
        details = record.get("app_event_details") or {}
        if "task_duration" in details:
            details["task_duration"] = "some"
        local = record.get("app_event_context", {}).get("context_local") or {}
        if record.get("app_event_object") == "task" and "_app_event_task_guid" in local:
            guid = local["_app_event_task_guid"]
            local["_app_event_task_guid"] = names.setdefault(guid, f"task {len(names)}")
    return plain
