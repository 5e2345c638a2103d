"""The few bytes of a PDB, a file of numbered streams, that say which executable file it belongs to."""

import struct
import uuid
from pathlib import Path

SIGNATURE = b"Microsoft C/C++ MSF 7.00\r\n\x1aDS\0\0\0"
INFORMATION = 1
"""The stream that starts with version, time, age and identifier."""


def _stream(content: bytes, wanted: int) -> int:
    """Where the stream's first block starts. It holds all that is read here."""
    if not content.startswith(SIGNATURE):
        raise ValueError("not a PDB")
    block, _, _, directory_size, _, directory_map = struct.unpack_from("<6I", content, len(SIGNATURE))
    blocks = -(-directory_size // block)
    places = struct.unpack_from(f"<{blocks}I", content, directory_map * block)
    directory = b"".join(content[place * block:(place + 1) * block] for place in places)
    count, = struct.unpack_from("<I", directory)
    sizes = [0 if size == 0xFFFFFFFF else size for size in struct.unpack_from(f"<{count}I", directory, 4)]
    before = sum(-(-size // block) for size in sizes[:wanted])
    first, = struct.unpack_from("<I", directory, 4 + 4 * count + 4 * before)
    return first * block


def identifier_of(path: Path) -> uuid.UUID:
    content = path.read_bytes()
    start = _stream(content, INFORMATION)
    return uuid.UUID(bytes_le=content[start + 12:start + 28])


def set_time(path: Path, epoch: int) -> None:
    """The linker writes the time of its run, which nothing reads."""
    content = bytearray(path.read_bytes())
    struct.pack_into("<I", content, _stream(content, INFORMATION) + 4, epoch & 0xFFFFFFFF)
    path.write_bytes(content)
