"""The host's version, in the message of the basic road."""

import json
import struct
import unittest
from pathlib import Path

from support.places import PlacedTestCase
from support import BUILD, Outcome, call
import basic_road
from session_player import Conditions

START = call("StartupEx", appName="Scan Studio", whyType=4, howType=7, trackSystemInfo=True, trackPrintQueueInfo=False)
# Nobody listens there.
SETTINGS = basic_road.settings_text(Log="on", LogLevel="debug", ProjectId="p1", LUMServerUri="https://127.0.0.99")
OPTED_IN = basic_road.settings_text(UserOptIn="True")
VERSION_TYPE = 16
ENGLISH = 0x409


def version_block(high: int, low: int) -> bytes:
    """A version resource of nothing but the fixed block."""
    fixed = struct.pack("<13I", 0xFEEF04BD, 0x00010000, high, low, *[0] * 9)
    head = struct.pack("<HHH", 40 + len(fixed), len(fixed), 0) + "VS_VERSION_INFO\0".encode("utf-16-le")
    return head.ljust(40, b"\0") + fixed


def resource_section(block: bytes, address: int) -> bytes:
    """Three levels of one entry each, type, name and language, then what they lead to."""
    def level(identifier: int, offset: int) -> bytes:
        return struct.pack("<IIHHHHII", 0, 0, 0, 0, 0, 1, identifier, offset)

    below = 0x80000000
    tree = level(VERSION_TYPE, below | 24) + level(1, below | 48) + level(ENGLISH, 72)
    return tree + struct.pack("<IIII", address + 88, len(block), 0, 0) + block


def add_version(program: Path, high: int, low: int) -> None:
    """To a program that has no resources: a section at its end."""
    file = bytearray(program.read_bytes())
    headers, = struct.unpack_from("<I", file, 0x3c)
    sections, = struct.unpack_from("<H", file, headers + 6)
    optional = headers + 24
    address, = struct.unpack_from("<I", file, optional + 56)
    section = resource_section(version_block(high, low), address)
    padded = section.ljust(0x200, b"\0")
    file += bytes(-len(file) % 0x200)
    struct.pack_into("<8sIIIIIIHHI", file, optional + 240 + 40 * sections, b".rsrc", len(section), address,
                     len(padded), len(file), 0, 0, 0, 0, 0x40000040)
    struct.pack_into("<H", file, headers + 6, sections + 1)
    struct.pack_into("<I", file, optional + 56, address + 0x1000)
    struct.pack_into("<II", file, optional + 112 + 16, address, len(section))
    program.write_bytes(file + padded)


class HostVersion(PlacedTestCase):
    def check_reported(self, version: str, outcome: Outcome) -> None:
        messages = [line.message for line in outcome.log]
        self.assertIn(f"PostMessageAndForget(127.0.0.99, Scan Studio/{version}, p1, sys_info_base, )", messages)
        message = next(text for text in messages if text.startswith("Message=")).removeprefix("Message=")
        self.assertEqual(f"Scan Studio/{version}", json.loads(message)["app_id"])

    def start(self, prepare) -> Outcome:
        files = {name: self.machine.prefix / name for name in ("factory.xml", "opted-in.xml")}
        files["factory.xml"].write_text(SETTINGS)
        files["opted-in.xml"].write_text(OPTED_IN)
        conditions = Conditions(road="basic", factory=files["factory.xml"], settings=files["opted-in.xml"])
        self.machine.clear()
        self.machine.set_up(conditions, BUILD)
        prepare(self.machine.host_folder / "lumeq-host.exe")
        with self.live(conditions, set_up=False) as session:
            session.play(START)
        return session.outcome

    def test_is_that_of_its_resource_in_four_numbers_without_sign(self):
        self.check_reported("65535.2.32768.4", self.start(lambda host: add_version(host, 0xffff0002, 0x80000004)))

    def test_is_zero_without_a_resource(self):
        self.check_reported("0.0.0.0", self.start(lambda host: None))


if __name__ == "__main__":
    unittest.main()
