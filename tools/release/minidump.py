#!/usr/bin/env python3
"""Shows which functions of Lumeq a crashed host was in: reads a minidump and the symbols of the release.

  tools/release/minidump.py CRASH.dmp SYMBOLS

SYMBOLS is the unpacked lumeq-<version>-win64-symbols.zip. The first line is where the host crashed, if it crashed in one
of our files. The others are addresses of code of ours on the thread's stack, newest first; earlier calls may have left
some of them there.
"""

import argparse
import re
import struct
import subprocess
import sys
import uuid
from pathlib import Path
from typing import Iterator, NamedTuple, Optional

sys.path.insert(0, str(Path(__file__).resolve().parent))
from pe_file import EXECUTABLE, PeFile  # noqa: E402

THREADS, MODULES, EXCEPTION = 3, 4, 6
CONTEXT_RSP, CONTEXT_RIP = 0x98, 0xF8
ADDR2LINE = "x86_64-w64-mingw32-addr2line"


class Module(NamedTuple):
    name: str
    base: int
    size: int
    identifier: Optional[uuid.UUID]


class Crash(NamedTuple):
    code: int
    address: int
    stack: tuple[int, ...]
    """Its words, newest first."""
    modules: list[Module]


class Minidump:
    def __init__(self, content: bytes):
        if content[:4] != b"MDMP":
            raise ValueError("not a minidump")
        self.content = content
        count, start = struct.unpack_from("<II", content, 8)
        self.streams = {}
        for index in range(count):
            kind, _, place = struct.unpack_from("<III", content, start + 12 * index)
            self.streams.setdefault(kind, place)

    def crash(self) -> Crash:
        place = self.streams[EXCEPTION]
        thread, code, address = struct.unpack_from("<I4xI12xQ", self.content, place)
        context, = struct.unpack_from("<I", self.content, place + 164)
        top, = struct.unpack_from("<Q", self.content, context + CONTEXT_RSP)
        return Crash(code, address, self._stack(thread, top), list(self._modules()))

    def _stack(self, wanted: int, top: int) -> tuple[int, ...]:
        place = self.streams[THREADS]
        count, = struct.unpack_from("<I", self.content, place)
        for index in range(count):
            thread, base, size, offset = struct.unpack_from("<I20xQII", self.content, place + 4 + 48 * index)
            if thread == wanted:
                unused = (max(top - base, 0) + 7) & ~7
                return struct.unpack_from(f"<{(size - unused) // 8}Q", self.content, offset + unused)
        return ()

    def _modules(self) -> Iterator[Module]:
        place = self.streams[MODULES]
        count, = struct.unpack_from("<I", self.content, place)
        for index in range(count):
            entry = place + 4 + 108 * index
            base, size, _, _, name = struct.unpack_from("<QIIII", self.content, entry)
            record_size, record = struct.unpack_from("<II", self.content, entry + 76)
            yield Module(self._text(name), base, size, self._identifier(record, record_size))

    def _text(self, place: int) -> str:
        length, = struct.unpack_from("<I", self.content, place)
        return self.content[place + 4:place + 4 + length].decode("utf-16-le")

    def _identifier(self, place: int, size: int) -> Optional[uuid.UUID]:
        if size < 24 or self.content[place:place + 4] != b"RSDS":
            return None
        return uuid.UUID(bytes_le=self.content[place + 4:place + 20])


def symbols_of(module: Module, folder: Path) -> Optional[PeFile]:
    """The complete symbols, which have the build identifier too. Wine's dumps have none, so the name decides."""
    name = re.split(r"[\\/]", module.name)[-1]
    for file in sorted(folder.rglob("*.debug")):
        if not module.identifier and file.name == f"{name}.debug":
            return PeFile(file)
        if module.identifier and (symbols := PeFile(file)).symbols()[0] == module.identifier:
            return symbols
    return None


def functions_at(symbols: PeFile, offsets: list[int]) -> list[list[str]]:
    """For each offset its function and line, the innermost inlined one first. Empty where no function is."""
    printed = subprocess.run([ADDR2LINE, "-e", symbols.path, "--addresses", "--functions", "--inlines", "--demangle",
                              *(f"{symbols.image_base + offset:#x}" for offset in offsets)],
                             check=True, stdout=subprocess.PIPE, text=True).stdout
    found = []
    for answer in re.split(r"^0x[0-9a-f]+\n", printed, flags=re.MULTILINE)[1:]:
        lines = answer.splitlines()
        found.append([f"{name} ({place})" for name, place in zip(lines[::2], lines[1::2]) if name != "??"])
    return found


def is_code(symbols: PeFile, offset: int) -> bool:
    return any(section.flags & EXECUTABLE and section.address <= offset < section.address + section.size
               for section in symbols.sections)


class Address(NamedTuple):
    module: Module
    symbols: PeFile
    offset: int
    before: int
    """The address to ask about: a return address is after its call, which may be the last instruction of its function."""


def addresses_of(crash: Crash, folder: Path) -> list[Address]:
    """That of the crash, then those on the stack, as far as there are symbols for them."""
    symbols = {module: found for module in crash.modules if (found := symbols_of(module, folder))}
    return [Address(module, found, address - module.base, address - module.base - back)
            for address, back in [(crash.address, 0), *((word, 1) for word in crash.stack)]
            for module, found in symbols.items()
            if module.base <= address < module.base + module.size and is_code(found, address - module.base)]


def report(crash: Crash, folder: Path) -> Iterator[str]:
    addresses = addresses_of(crash, folder)
    names = {}
    for symbols in {address.symbols.path: address.symbols for address in addresses}.values():
        asked = [address for address in addresses if address.symbols is symbols]
        names.update(zip(asked, functions_at(symbols, [address.before for address in asked])))
    for address in addresses:
        for function in names[address]:
            name = re.split(r"[\\/]", address.module.name)[-1]
            yield f"{name}+{address.offset:#x} {function}"


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("dump", metavar="CRASH.dmp", type=Path)
    parser.add_argument("symbols", metavar="SYMBOLS", type=Path)
    arguments = parser.parse_args()
    crash = Minidump(arguments.dump.read_bytes()).crash()
    lines = list(report(crash, arguments.symbols))
    print(f"Exception {crash.code:#010x} at {crash.address:#x}")
    print("\n".join(lines) or "No address of the crash belongs to a file with symbols there.")
    return 0 if lines else 1


if __name__ == "__main__":
    sys.exit(main())
