"""What the tools for executable files print about a DLL."""

import re
import subprocess
from pathlib import Path

from .paths import OBJDUMP


def headers_of(library: Path) -> str:
    return subprocess.run([OBJDUMP, "-p", library], check=True, stdout=subprocess.PIPE, text=True).stdout


def exports_of(library: Path) -> list[str]:
    table = headers_of(library).split("[Ordinal/Name Pointer] Table")[1].split("\n\n")[0]
    return re.findall(r"^\s*\[ *\d+\] (?:\+base\[ *\d+\] +[0-9a-f]+ )?(\S+)$", table, re.MULTILINE)
