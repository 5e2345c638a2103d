"""What a host on the basic road needs: a machine that trusts the queue service, and settings."""

from pathlib import Path

from session_player import Machine


def trust(machine: Machine, root: Path, build: Path) -> None:
    """Makes the machine trust the certificate, which is in DER."""
    machine.run_program(build / "trust-root.exe", root)


def settings_text(**values: str) -> str:
    """A settings file with these keys."""
    settings = "".join(f"<{key} xml:space='preserve'>{_escaped(value)}</{key}>" for key, value in values.items())
    return f'<LumeqConfig version="4.0">{settings}</LumeqConfig>\n'


def _escaped(text: str) -> str:
    return text.replace("&", "&amp;").replace("<", "&lt;")
