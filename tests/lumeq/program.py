"""Runs lumeq.exe as a user does."""

import json
import subprocess
from typing import Any

from support import BUILD, ROOT


def run(*arguments: str) -> subprocess.CompletedProcess:
    """Standard output and standard error are texts."""
    return subprocess.run([ROOT / "tools" / "run-wine", BUILD / "lumeq.exe", *arguments], stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8")


def run_json(*arguments: str) -> Any:
    return json.loads(run(*arguments).stdout)
