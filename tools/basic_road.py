"""What a host on the basic road needs: a machine that trusts the queue service, and settings."""

from pathlib import Path

import session_player
from queue_service import QueueService
from session_player import Conditions, Machine


def trust(machine: Machine, root: Path, build: Path) -> None:
    """Makes the machine trust the certificate, which is in DER."""
    machine.run_program(build / "trust-root.exe", root)


def play_with_service(session: Path, out: Path, conditions: Conditions, build: Path, timeout: float = 600) -> int:
    """Plays as session_player.play does, with a queue service on this machine. `out` also gets each request, byte by
    byte, as request-1.http and so on. Raises OSError if nobody can listen on port 443, where the library goes."""
    out.mkdir(parents=True, exist_ok=True)
    for earlier in out.glob("request-*.http"):
        earlier.unlink()
    with QueueService(build / "queue-service") as service, session_player.machine(build) as machine:
        machine.clear()
        trust(machine, service.root, build)
        status = session_player.play_on(machine, session, out, conditions, build, timeout)
        # The worker can still be sending; it ends with its process.
        session_player.stop_wine(machine.prefix)
        for number, message in enumerate(service.seen.messages, 1):
            (out / f"request-{number}.http").write_bytes(message.raw)
    return status


def settings_text(**values: str) -> str:
    """A settings file with these keys."""
    settings = "".join(f"<{key} xml:space='preserve'>{_escaped(value)}</{key}>" for key, value in values.items())
    return f'<LumeqConfig version="4.0">{settings}</LumeqConfig>\n'


def _escaped(text: str) -> str:
    return text.replace("&", "&amp;").replace("<", "&lt;")
