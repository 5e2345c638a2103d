"""Reads what a Windows executable file says about itself: sections, imports, exports, version, symbols."""

import struct
import uuid
from pathlib import Path
from typing import Iterator, NamedTuple, Optional

EXPORTS, IMPORTS, RESOURCES, RELOCATIONS, DEBUG = 0, 1, 2, 5, 6
EXECUTABLE, WRITABLE = 0x20000000, 0x80000000
CODEVIEW = 2
VERSION_RESOURCE = 16


class Section(NamedTuple):
    name: str
    address: int
    size: int
    offset: int
    size_in_file: int
    flags: int


class Export(NamedTuple):
    ordinal: int
    name: str


class PeFile:
    def __init__(self, path: Path):
        self.path = path
        self.content = path.read_bytes()
        start = self._number(0x3C, "I")
        if self.content[start:start + 4] != b"PE\0\0" or self._number(start + 24, "H") != 0x20B:
            raise ValueError(f"{path} is not a 64-bit executable file")
        self.machine, sections, self.time = struct.unpack_from("<HHI", self.content, start + 4)
        header_size = self._number(start + 20, "H")
        optional = start + 24
        self.image_base = self._number(optional + 24, "Q")
        self.image_size = self._number(optional + 56, "I")
        self.protections = self._number(optional + 70, "H")
        directories = self._number(optional + 108, "I")
        self.directories = [struct.unpack_from("<II", self.content, optional + 112 + 8 * index)
                            for index in range(directories)]
        self.sections = [self._section(optional + header_size + 40 * index) for index in range(sections)]

    def _number(self, offset: int, kind: str) -> int:
        return struct.unpack_from(f"<{kind}", self.content, offset)[0]

    def _section(self, offset: int) -> Section:
        name, size, address, size_in_file, place, flags = struct.unpack_from("<8sIIII12xI", self.content, offset)
        return Section(name.rstrip(b"\0").decode("ascii"), address, size, place, size_in_file, flags)

    def offset_of(self, address: int) -> int:
        for section in self.sections:
            if section.address <= address < section.address + max(section.size, section.size_in_file):
                return section.offset + address - section.address
        raise ValueError(f"{self.path}: no section holds the address {address:#x}")

    def _text(self, address: int) -> str:
        offset = self.offset_of(address)
        return self.content[offset:self.content.index(b"\0", offset)].decode("ascii")

    def imports(self) -> dict[str, list[str]]:
        """Functions by library, named as in the file."""
        found: dict[str, list[str]] = {}
        address, size = self.directories[IMPORTS]
        while size:
            names, _, _, library, addresses = struct.unpack_from("<5I", self.content, self.offset_of(address))
            if not library:
                break
            found[self._text(library)] = list(self._imported(names or addresses))
            address += 20
        return found

    def _imported(self, address: int) -> Iterator[str]:
        while entry := self._number(self.offset_of(address), "Q"):
            yield f"#{entry & 0xFFFF}" if entry >> 63 else self._text(entry + 2)
            address += 8

    def exports(self) -> list[Export]:
        address, size = self.directories[EXPORTS]
        if not size:
            return []
        base, _, count, _, names, ordinals = struct.unpack_from("<6I", self.content, self.offset_of(address) + 16)
        return sorted(Export(base + self._number(self.offset_of(ordinals) + 2 * index, "H"),
                             self._text(self._number(self.offset_of(names) + 4 * index, "I")))
                      for index in range(count))

    def has_relocations(self) -> bool:
        return self.directories[RELOCATIONS][1] > 0

    def times(self) -> list[int]:
        """Of the file, its export table and its debug entries."""
        found = [self.time]
        if self.directories[EXPORTS][1]:
            found.append(self._number(self.offset_of(self.directories[EXPORTS][0]) + 4, "I"))
        return found + [entry[1] for entry in self._debug_entries()]

    def _debug_entries(self) -> Iterator[tuple]:
        """Flags, time, major and minor version, type, size, address and offset."""
        address, size = self.directories[DEBUG]
        for index in range(size // 28):
            yield struct.unpack_from("<IIHHIIII", self.content, self.offset_of(address) + 28 * index)

    def symbols(self) -> Optional[tuple[uuid.UUID, int, str]]:
        """Identifier and age of the PDB that belongs to the file, and its name."""
        for *_, kind, size, _, offset in self._debug_entries():
            if kind == CODEVIEW and self.content[offset:offset + 4] == b"RSDS":
                identifier = uuid.UUID(bytes_le=self.content[offset + 4:offset + 20])
                name = self.content[offset + 24:offset + size].split(b"\0")[0].decode("utf-8")
                return identifier, self._number(offset + 20, "I"), name
        return None

    def version(self) -> dict[str, str]:
        """The texts of the version resource, and its numbers under "(file)" and "(product)". Empty if there is none."""
        resource = self._resource(VERSION_RESOURCE)
        if not resource:
            return {}
        fixed = resource.index(b"\xbd\x04\xef\xfe")
        file_high, file_low, product_high, product_low = struct.unpack_from("<4I", resource, fixed + 8)
        found = {"(file)": _dotted(file_high, file_low), "(product)": _dotted(product_high, product_low)}
        return found | dict(_strings(resource))

    def _resource(self, kind: int) -> bytes:
        root, size = self.directories[RESOURCES]
        if not size:
            return b""
        offset = at = self.offset_of(root)
        for wanted in (kind, None, None):
            named, numbered = struct.unpack_from("<HH", self.content, at + 12)
            entries = (struct.unpack_from("<II", self.content, at + 16 + 8 * index) for index in range(named + numbered))
            place = next((place for its_id, place in entries if wanted in (its_id, None)), None)
            if place is None:
                return b""
            at = offset + (place & 0x7FFFFFFF)
        address, length = struct.unpack_from("<II", self.content, at)
        start = self.offset_of(address)
        return self.content[start:start + length]


def _dotted(high: int, low: int) -> str:
    return f"{high >> 16}.{high & 0xFFFF}.{low >> 16}.{low & 0xFFFF}"


def _strings(resource: bytes) -> Iterator[tuple[str, str]]:
    """The blocks of the string table: length, length of the value in characters, type 1, name, padding, value."""
    start = resource.index("StringFileInfo".encode("utf-16-le"))
    # After its own name come a block for the language and its name of eight characters.
    at = _aligned(_aligned(start + 30) + 6 + 18)
    while at + 6 < len(resource):
        length, characters, kind = struct.unpack_from("<3H", resource, at)
        if not length or kind != 1 or not characters:
            break
        name, _, rest = resource[at + 6:at + length].decode("utf-16-le", "replace").partition("\0")
        yield name, rest.lstrip("\0").partition("\0")[0]
        at = _aligned(at + length)


def _aligned(offset: int) -> int:
    return (offset + 3) & ~3
