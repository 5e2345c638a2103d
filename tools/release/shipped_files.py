#!/usr/bin/env python3
"""Checks the executable files that ship: protections, imports, size, version, and that no path shows where they were
built. Prints what is wrong.

  tools/release/shipped_files.py --version 1.0.0 [--path DIR]... FILE...

Without --version, none is asked for: the samples have no version.
"""

import argparse
import re
import sys
from pathlib import Path
from typing import Iterable, Optional

sys.path.insert(0, str(Path(__file__).resolve().parent))
from pe_file import EXECUTABLE, WRITABLE, PeFile  # noqa: E402

AMD64 = 0x8664
HIGH_ENTROPY, DYNAMIC_BASE, NX_COMPATIBLE = 0x20, 0x40, 0x100
PROTECTIONS = {HIGH_ENTROPY: "high-entropy addresses", DYNAMIC_BASE: "any base address", NX_COMPATIBLE: "no executable data"}

# What a DLL of ours loads at once. Every process has kernel32.dll, and every program of this toolchain msvcrt.dll.
MAY_IMPORT = {
    "Lumeq.dll": {"kernel32.dll", "msvcrt.dll"},
    "LumeqC.dll": {"kernel32.dll", "msvcrt.dll", "ntdll.dll", "ole32.dll", "lumeq.dll"},
}
# What each Windows has, for programs and the DLLs of the tests.
SYSTEM = {"advapi32.dll", "crypt32.dll", "kernel32.dll", "msvcrt.dll", "ntdll.dll", "ole32.dll", "oleaut32.dll", "psapi.dll",
          "rpcrt4.dll", "secur32.dll", "shell32.dll", "shlwapi.dll", "urlmon.dll", "user32.dll", "version.dll", "winhttp.dll",
          "wininet.dll", "ws2_32.dll"}

# Bytes, also checked by the library's own tests: hosts carry both files in their installers.
LARGEST = {"Lumeq.dll": 640_000, "LumeqC.dll": 300_000}

# The recording double has the library's name and a folder of its own. Only unit tests load it.
DOUBLE = "double"

# Folders in which packages and programs are built.
BUILD_PLACES = ("/build/", "/home/", "/root/", "/tmp/", "/usr/")


def paths_in(content: bytes, places: Iterable[str]) -> list[str]:
    found = set()
    for place in places:
        # Followed by a name, because a program may look for such places.
        for pattern, encoding in ((re.escape(place.encode()) + rb"[\w/.+-][ -~]*", "ascii"),
                                  (re.escape(place.encode("utf-16-le")) + rb"[\w/.+-]\0(?:[ -~]\0)*", "utf-16-le")):
            found.update(match.decode(encoding) for match in re.findall(pattern, content))
    return sorted(found)


def problems_of(path: Path, version: Optional[str], places: Iterable[str] = ()) -> list[str]:
    file = PeFile(path)
    found = []
    if file.machine != AMD64:
        found.append(f"is for another processor: {file.machine:#06x}")
    found += [f"does not allow {text}" for flag, text in PROTECTIONS.items() if not file.protections & flag]
    if not file.has_relocations():
        found.append("cannot be moved: it has no relocations")
    found += [f"section {section.name} is writable and executable" for section in file.sections
              if section.flags & WRITABLE and section.flags & EXECUTABLE]
    if any(file.times()):
        found.append(f"shows the time of its build: {file.times()}")
    found += [f"shows a path of its build: {text}" for text in paths_in(file.content, [*BUILD_PLACES, *places])]
    is_double = path.parent.name == DOUBLE
    allowed = MAY_IMPORT.get(path.name, SYSTEM)
    found += [f"imports {library}" for library in file.imports() if library.lower() not in allowed]
    if not is_double and len(file.content) > LARGEST.get(path.name, sys.maxsize):
        found.append(f"has {len(file.content):,} bytes of {LARGEST[path.name]:,}")
    product = "Lumeq recording double" if is_double else "Lumeq"
    return found + (version_problems(file, version, product) if version else [])


def version_problems(file: PeFile, version: str, product: str) -> list[str]:
    resource = file.version()
    wanted = {"ProductName": product, "ProductVersion": version, "FileVersion": f"{version}.0", "(product)": f"{version}.0",
              "(file)": f"{version}.0", "OriginalFilename": file.path.name, "CompanyName": "Zuvan"}
    return [f"has the {name} {resource.get(name)!r} instead of {value!r}" for name, value in wanted.items()
            if resource.get(name) != value]


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--version", help="which they have to show")
    parser.add_argument("--path", action="append", default=[], help="a folder of the build, which they must not show")
    parser.add_argument("files", metavar="FILE", nargs="+", type=Path)
    arguments = parser.parse_args()
    found = [f"{file.name} {problem}" for file in arguments.files
             for problem in problems_of(file, arguments.version, arguments.path)]
    print("\n".join(found) or f"{len(arguments.files)} files are fit to ship")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
