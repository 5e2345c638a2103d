"""Plays a session on the basic road against a queue service of its own, and shows what the service took.

    python3 tools/show_basic_message.py
"""

import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True
import basic_road  # noqa: E402
import session_player  # noqa: E402
from queue_message import Message  # noqa: E402
from queue_service import QueueService  # noqa: E402
from session_player import DEFAULT_BUILD, ROOT  # noqa: E402
from show_session import INDENT, heading, json_lines, read, show_calls, show_lines  # noqa: E402

SESSION = ROOT / "samples" / "sessions" / "basic-message.jsonl"
FACTORY = SESSION.with_suffix(".factory.xml")


def show_message(message: Message) -> None:
    heading("What the queue service took, decoded")
    print(f"{INDENT}project {message.project}, queue {message.queue}, token {message.token}, "
          f"User-Agent {message.agent}\n")
    for name, value in message.fields.items():
        print(f"{INDENT}{name:<20} {value}")
    for wrong in message.wrong or ["nothing"]:
        print(f"\n{INDENT}Wrong with it: {wrong}")


def play(service: QueueService, out: Path) -> int:
    conditions = session_player.Conditions(road="basic", factory=FACTORY)
    with session_player.machine(DEFAULT_BUILD) as machine:
        machine.set_up(conditions, DEFAULT_BUILD)
        basic_road.trust(machine, service.root, DEFAULT_BUILD)
        status = machine.run_host(SESSION, conditions, out / "host.jsonl", timeout=120)
        session_player.stop_wine(machine.prefix)
        machine.collect(out)
    return status


def main() -> int:
    title = "the message of the basic road"
    print(f"\n{'=' * len(title)}\n{title}\n{'=' * len(title)}")
    with tempfile.TemporaryDirectory(dir=DEFAULT_BUILD) as name:
        out = Path(name)
        try:
            service = QueueService(out / "certificates")
        except OSError as error:
            print(f"\n{INDENT}Left out, since nobody can listen on port 443, where the library goes: {error}")
            return 0
        with service:
            status = play(service, out)
        show_calls(SESSION, json_lines(out / "host.jsonl"))
        for message in service.seen.messages:
            show_message(message)
        show_lines("What Lumeq.Data.txt says", read(out / "Lumeq.Data.txt"))
        show_lines("The local settings after", read(out / session_player.SETTINGS_FILE))
    return status if len(service.seen.messages) == 1 else 1


if __name__ == "__main__":
    sys.exit(main())
