"""The linker's PDB: which executable file it belongs to, and the same bytes wherever and whenever it was written.

A PDB is a file of numbered streams, each in blocks that a directory lists.
"""

import struct
import uuid
from pathlib import Path
from typing import NamedTuple

SIGNATURE = b"Microsoft C/C++ MSF 7.00\r\n\x1aDS\0\0\0"
ABSENT = 0xFFFFFFFF

# Streams. The first starts with version, time, age and identifier; the other with a table of the linked objects.
INFORMATION, OBJECTS = 1, 3
OBJECTS_SIZE, SOURCES_SIZE, OBJECTS_START = 24, 36, 64

# Of an object: the part before its names, and where that has the number of its stream and the size of its symbols there.
FIXED_PART, SYMBOLS, NO_STREAM = 64, 34, 0xFFFF
SYMBOLS_START = 4
END, LABEL, FUNCTION, ENVIRONMENT = 6, 0x1105, 0x1110, 0x113D
FUNCTION_HEAD = 39
LINES = 0xF2


class Pdb(NamedTuple):
    block: int
    """Size of a block."""
    streams: list[bytes]


def _blocks(size: int, block: int) -> int:
    return -(-size // block)


def read(path: Path) -> Pdb:
    content = path.read_bytes()
    if not content.startswith(SIGNATURE):
        raise ValueError(f"{path} is no PDB")
    block, _, _, size, _, place = struct.unpack_from("<6I", content, len(SIGNATURE))

    def joined(numbers: tuple[int, ...], length: int) -> bytes:
        return b"".join(content[number * block:(number + 1) * block] for number in numbers)[:length]

    directory = joined(struct.unpack_from(f"<{_blocks(size, block)}I", content, place * block), size)
    count, = struct.unpack_from("<I", directory)
    sizes = [0 if length == ABSENT else length for length in struct.unpack_from(f"<{count}I", directory, 4)]
    streams, at = [], 4 + 4 * count
    for length in sizes:
        numbers = struct.unpack_from(f"<{_blocks(length, block)}I", directory, at)
        streams.append(joined(numbers, length))
        at += 4 * len(numbers)
    return Pdb(block, streams)


def write(pdb: Pdb, path: Path) -> None:
    block, blocks = pdb.block, [b"", b"", b""]

    def place(data: bytes) -> list[int]:
        numbers = []
        for start in range(0, len(data), block):
            while len(blocks) % block in (1, 2):  # Reserved for the lists of free blocks.
                blocks.append(b"")
            numbers.append(len(blocks))
            blocks.append(data[start:start + block])
        return numbers

    numbers = [place(stream) for stream in pdb.streams]
    directory = struct.pack(f"<{len(numbers) + 1}I", len(numbers), *map(len, pdb.streams))
    directory += b"".join(struct.pack(f"<{len(its)}I", *its) for its in numbers)
    listed = place(directory)
    map_of_directory, = place(struct.pack(f"<{len(listed)}I", *listed))
    blocks[0] = SIGNATURE + struct.pack("<6I", block, 1, len(blocks), len(directory), 0, map_of_directory)
    path.write_bytes(b"".join(data.ljust(block, b"\0") for data in blocks))


def identifier_of(path: Path) -> uuid.UUID:
    return uuid.UUID(bytes_le=read(path).streams[INFORMATION][12:28])


def _sizes(lines: bytes) -> dict[tuple[int, int], int]:
    """Of the functions whose lines these are, by place and section."""
    found, at = {}, 0
    while at < len(lines):
        kind, length = struct.unpack_from("<II", lines, at)
        if kind == LINES:
            place, section, _, size = struct.unpack_from("<IHHI", lines, at + 8)
            found[place, section] = size
        at += 8 + ((length + 3) & ~3)
    return found


def _function(label: bytes, size: int, start: int) -> bytes:
    """The record of a function and its end, instead of a label that would start at `start`."""
    place, section, flags = struct.unpack_from("<IHB", label, 4)
    name = label[11:].rstrip(b"\0") + b"\0"
    length = (FUNCTION_HEAD + len(name) + 3) & ~3
    record = struct.pack("<HHIIIIIIIIHB", length - 2, FUNCTION, 0, start + length, 0, size, 0, size, 0, place, section, flags)
    return (record + name).ljust(length, b"\0") + struct.pack("<HH", 2, END)


def _settled_symbols(symbols: bytes, sizes: dict[tuple[int, int], int]) -> bytes:
    """Without folders and command line of the linker, and with functions instead of their labels."""
    settled, at = symbols[:SYMBOLS_START], SYMBOLS_START
    while at < len(symbols):
        length, kind = struct.unpack_from("<HH", symbols, at)
        record = symbols[at:at + 2 + length]
        if kind == LABEL:
            settled += _function(record, sizes.get(struct.unpack_from("<IH", record, 4), 0), len(settled))
        elif kind != ENVIRONMENT:
            settled += record
        at += 2 + length
    return settled


def _settle_objects(streams: list[bytes], old: bytes, new: bytes) -> None:
    """With the folder `new` instead of `old` in the names of the objects, of which each has two."""
    table = streams[OBJECTS]
    size, = struct.unpack_from("<I", table, OBJECTS_SIZE)
    settled, at = b"", OBJECTS_START
    while at < OBJECTS_START + size:
        fixed = bytearray(table[at:at + FIXED_PART])
        name, archive, _ = table[at + FIXED_PART:].split(b"\0", 2)
        number, symbols = struct.unpack_from("<HI", fixed, SYMBOLS)
        if number != NO_STREAM and symbols:
            stream = streams[number]
            described = _settled_symbols(stream[:symbols], _sizes(_lines(fixed, stream)))
            streams[number] = described + stream[symbols:]
            struct.pack_into("<I", fixed, SYMBOLS + 2, len(described))
        entry = fixed + b"".join(its.replace(old, new, 1) + b"\0" for its in (name, archive))
        settled += entry.ljust((len(entry) + 3) & ~3, b"\0")
        at += (FIXED_PART + len(name) + len(archive) + 2 + 3) & ~3
    streams[OBJECTS] = (table[:OBJECTS_SIZE] + struct.pack("<I", len(settled)) + table[OBJECTS_SIZE + 4:OBJECTS_START] +
                        settled + table[OBJECTS_START + size:])


def _lines(fixed: bytes, stream: bytes) -> bytes:
    symbols, older, lines = struct.unpack_from("<3I", fixed, SYMBOLS + 2)
    return stream[symbols + older:symbols + older + lines]


def _align_sources(streams: list[bytes]) -> None:
    """The linker does not fill up the table of source files to a multiple of four bytes, which LLVM insists on."""
    table = streams[OBJECTS]
    sizes = struct.unpack_from("<4I", table, OBJECTS_SIZE)
    end = OBJECTS_START + sum(sizes)
    padding = -sizes[3] % 4
    streams[OBJECTS] = (table[:SOURCES_SIZE] + struct.pack("<I", sizes[3] + padding) + table[SOURCES_SIZE + 4:end] +
                        bytes(padding) + table[end:])


def settle(path: Path, epoch: int, old: str, new: str) -> None:
    """Replaces the time at which the linker ran and the folder `old` in the names of the objects, removes how the linker was
    called, and turns the labels of codeview.py into functions."""
    pdb = read(path)
    information = pdb.streams[INFORMATION]
    pdb.streams[INFORMATION] = information[:4] + struct.pack("<I", epoch & 0xFFFFFFFF) + information[8:]
    _settle_objects(pdb.streams, old.encode("utf-8"), new.encode("utf-8"))
    _align_sources(pdb.streams)
    write(pdb, path)
