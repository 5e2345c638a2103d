"""Plays sessions on the basic road against a queue service, on a machine that trusts it."""

import os
import subprocess
from pathlib import Path

import session_player
from session_player import ROOT, Machine


def trust(machine: Machine, root: Path, build: Path) -> None:
    """Makes the machine trust the certificate, which is in DER."""
    subprocess.run([ROOT / "tools" / "run-wine", build / "trust-root.exe", root], check=True,
                   stdin=subprocess.DEVNULL, env=dict(os.environ, WINEPREFIX=str(machine.prefix)))


def settings_text(**values: str) -> str:
    """A settings file with these keys."""
    settings = "".join(f"<{key} xml:space='preserve'>{_escaped(value)}</{key}>" for key, value in values.items())
    return f'<LumeqConfig version="4.0">{settings}</LumeqConfig>\n'


def _escaped(text: str) -> str:
    return text.replace("&", "&amp;").replace("<", "&lt;")
