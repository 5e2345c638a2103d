"""Plays a session and shows the host's calls, the operations of the companion library, the log, and the settings file
before and after.

    python3 tools/show_session.py SESSION --road managed|basic [--settings FILE]
"""

import argparse
import json
import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True
import session_player  # noqa: E402

INDENT = "    "


def heading(text: str) -> None:
    print(f"\n{text}\n{'-' * len(text)}")


def read(path: Path) -> str:
    return path.read_text(encoding="utf-8") if path.is_file() else ""


def json_lines(path: Path) -> list[dict]:
    return [json.loads(line) for line in read(path).split("\n") if line.strip()]


def as_text(value) -> str:
    text = json.dumps(value, ensure_ascii=False)
    return text if len(text) <= 100 else text[:97] + "..."


def show_calls(session: Path, answers: list[dict]) -> None:
    """The steps of the session, each call with its result. Only for sessions without threads and repetitions."""
    heading("What the host did")
    remaining = iter(answers)
    for step in json_lines(session):
        if "comment" in step:
            print(f"\n  {step['comment']}")
        elif "call" in step:
            arguments = ", ".join(f"{name}: {as_text(value)}" for name, value in step.items() if name != "call")
            answer = {name: value for name, value in next(remaining, {}).items() if name != "call"}
            print(f"{INDENT}{step['call']}({arguments})" + (f"  ->  {as_text(answer)}" if answer else ""))
        else:
            print(f"{INDENT}{as_text(step)}")


def show_records(operations: list[dict]) -> None:
    heading("What the companion library was handed")
    if not operations:
        print(f"{INDENT}Nothing.")
    for operation in operations:
        name = operation.pop("operation")
        print(f"{INDENT}{name}" + (f" {as_text(operation)}" if operation and "record" not in operation else ""))
        if "record" in operation:
            for line in json.dumps(operation, indent=2, ensure_ascii=False).split("\n"):
                print(f"{INDENT}{INDENT}{line}")


def show_lines(title: str, text: str) -> None:
    heading(title)
    for line in text.splitlines() or ["Nothing."]:
        print(f"{INDENT}{line}")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("session", type=Path)
    parser.add_argument("--road", choices=session_player.ROADS, required=True)
    parser.add_argument("--settings", type=Path)
    arguments = parser.parse_args()

    title = f"{arguments.session.stem} on the {arguments.road} road"
    print(f"\n{'=' * len(title)}\n{title}\n{'=' * len(title)}")
    with tempfile.TemporaryDirectory(dir=session_player.DEFAULT_BUILD) as name:
        out = Path(name)
        conditions = session_player.Conditions(road=arguments.road, settings=arguments.settings)
        status = session_player.play(arguments.session, out, conditions)
        show_calls(arguments.session, json_lines(out / "host.jsonl"))
        show_records(json_lines(out / "companion.jsonl"))
        show_lines("What the log says", read(out / "Lumeq.Log.txt"))
        if arguments.settings:
            show_lines("The local settings before", read(arguments.settings))
            show_lines("The local settings after", read(out / session_player.SETTINGS_FILE))
    return status


if __name__ == "__main__":
    sys.exit(main())
