"""The page that `lumeq view` makes of messages."""

import html
import json
import shutil
import subprocess
import tempfile
from pathlib import Path
from typing import Callable, Optional

WITHOUT = """<!DOCTYPE html>
<title>Lumeq</title>
<p>{reason}</p>
<p>{count} so far: <a href="/good">the good ones</a>, <a href="/bad">the bad ones</a>.</p>
"""


def find_lumeq(named: Optional[Path], beside: Path) -> Optional[Path]:
    """The program: as named, or beside this one, or on the path."""
    if named:
        return named
    own = beside / "lumeq.exe"
    found = shutil.which("lumeq")
    return own if own.exists() else Path(found) if found else None


def page_maker(lumeq: Optional[Path]) -> Callable[[list[bytes]], str]:
    """A function from the messages, byte by byte, to the page. Says why if there is none."""
    def make(messages: list[bytes]) -> str:
        if lumeq is None:
            return _without("The page needs lumeq.exe: put it beside this program, or name it with --lumeq.", messages)
        if not messages:
            return _without("Nothing has come yet.", messages)
        with tempfile.TemporaryDirectory() as name:
            for number, message in enumerate(messages, 1):
                (Path(name) / f"request-{number}.http").write_bytes(message)
            (Path(name) / "run.json").write_text(json.dumps({"session": "Messages", "road": "basic"}))
            return _view(lumeq, name) or _without(f"{lumeq} cannot make the page.", messages)

    return make


def _view(lumeq: Path, folder: str) -> str:
    """Empty if the program fails."""
    try:
        made = subprocess.run([lumeq, "view", folder, "-o", "-"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    except OSError:
        return ""
    return made.stdout.decode("utf-8", "replace")


def _without(reason: str, messages: list[bytes]) -> str:
    return WITHOUT.format(reason=html.escape(reason), count=len(messages))
