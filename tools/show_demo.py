"""Plays the sample sessions and shows in short what the library does: what came of each call, and the message of the
basic road. Writes one page about all of it.

    python3 tools/show_demo.py
"""

import itertools
import shutil
import sys
from pathlib import Path

sys.dont_write_bytecode = True
import basic_road  # noqa: E402
import session_player  # noqa: E402
from queue_message import read_message  # noqa: E402
from session_player import DEFAULT_BUILD, ROOT, Conditions  # noqa: E402

SESSIONS = ROOT / "samples" / "sessions"
OUT = ROOT / "build" / "demo"
PAGE = OUT / "lumeq.html"
MASKED = ("sys_uuid", "app_deployed_uuid", "pc_sku")
"""The page masks identifiers of a machine; so does this."""

COLUMN = 36


def cut(line: str) -> str:
    width = shutil.get_terminal_size((100, 24)).columns
    return line if len(line) < width else line[:width - 4] + "..."


def play(name: str, road: str, settings: str = "") -> Path:
    out = OUT / f"{name}-{road}"
    conditions = Conditions(road=road, settings=SESSIONS / settings if settings else None)
    session = SESSIONS / f"{name}.jsonl"
    session_player.play(session, out, conditions)
    session_player.keep_conditions(session, out, conditions)
    return out


def play_basic_message() -> tuple[Path, str]:
    """The second is why there is no message; empty if there is one."""
    session = SESSIONS / "basic-message.jsonl"
    out = OUT / "basic-message-basic"
    conditions = Conditions(road="basic", factory=session.with_suffix(".factory.xml"))
    problem = ""
    try:
        basic_road.play_with_service(session, out, conditions, DEFAULT_BUILD)
    except OSError as error:
        problem = f"nobody can listen on port 443, where the library goes: {error}"
        session_player.play(session, out, conditions)
    session_player.keep_conditions(session, out, conditions)
    return out, problem


def show_calls(run: Path) -> None:
    *calls, _ = session_player.write_page([run], PAGE, options=("--text",)).splitlines()
    for line in calls:
        print(cut(line))


def show_message(out: Path, problem: str) -> None:
    request = out / "request-1.http"
    if not request.exists():
        print(f"  None: {problem or 'the library sent none'}")
        return
    message = read_message(request.read_bytes())
    fields = [f"{name} {'x' * len(value) if name in MASKED else value}" for name, value in sorted(message.fields.items())]
    short = [field for field in fields if len(field) < COLUMN]
    for first, second in itertools.zip_longest(short[::2], short[1::2], fillvalue=""):
        print(f"  {first:<{COLUMN}} {second}".rstrip())
    for field in fields:
        if field not in short:
            print(f"  {field}")
    for wrong in message.wrong:
        print(f"  WRONG: {wrong}")


def main() -> int:
    shutil.rmtree(OUT, ignore_errors=True)
    first = play("first-light", "managed")
    print("\nA host sets a printer up. What came of each call:")
    show_calls(first)
    message, problem = play_basic_message()
    print("\nWithout the managed runtime, one message about the machine goes out instead:")
    show_message(message, problem)
    settings = "working-day.settings.xml"
    runs = [first, play("working-day", "managed", settings), play("first-light", "basic"),
            play("working-day", "basic", settings), message]
    session_player.write_page(runs, PAGE, options=("--each",))
    print(f"\nEvery argument, record, log line and byte of these and three more runs:\n  {PAGE.relative_to(ROOT)}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
