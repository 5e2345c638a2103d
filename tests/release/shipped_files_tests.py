"""The check of the executable files that ship: each planted defect is found."""

import struct
import tempfile
import unittest
from pathlib import Path

from release_tools import BUILD, ROOT
import interfaces
from pe_file import PeFile
from shipped_files import DYNAMIC_BASE, HIGH_ENTROPY, LARGEST, NX_COMPATIBLE, WRITABLE, problems_of

VERSION = interfaces.version()


class Programs(unittest.TestCase):
    """The libraries have tests of their own."""

    def test_are_fit_to_ship(self):
        self.assertEqual([], problems_of(BUILD / "lumeq.exe", VERSION, [str(ROOT), str(BUILD)]))

    def test_of_the_samples_are_fit_to_ship(self):
        for name in ("lumeq-host.exe", "companion/LumeqShim.Managed.dll"):
            with self.subTest(name):
                self.assertEqual([], problems_of(BUILD / name, None, [str(ROOT), str(BUILD)]))


class PlantedDefects(unittest.TestCase):
    def setUp(self):
        self.content = bytearray((BUILD / "Lumeq.dll").read_bytes())
        self.header = struct.unpack_from("<I", self.content, 0x3C)[0]

    def assert_found(self, problem: str, version: str = VERSION, name: str = "Lumeq.dll"):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, name)
            file.write_bytes(self.content)
            self.assertIn(problem, problems_of(file, version, ["/opt/checkout"]))

    def test_missing_protections(self):
        place = self.header + 24 + 70
        before, = struct.unpack_from("<H", self.content, place)
        for flag, problem in ((HIGH_ENTROPY, "does not allow high-entropy addresses"),
                              (DYNAMIC_BASE, "does not allow any base address"),
                              (NX_COMPATIBLE, "does not allow no executable data")):
            with self.subTest(problem):
                struct.pack_into("<H", self.content, place, before & ~flag)
                self.assert_found(problem)

    def test_no_relocations(self):
        struct.pack_into("<II", self.content, self.header + 24 + 112 + 8 * 5, 0, 0)
        self.assert_found("cannot be moved: it has no relocations")

    def test_writable_code(self):
        size, = struct.unpack_from("<H", self.content, self.header + 20)
        place = self.header + 24 + size + 36
        flags, = struct.unpack_from("<I", self.content, place)
        struct.pack_into("<I", self.content, place, flags | WRITABLE)
        self.assert_found("section .text is writable and executable")

    def test_time_of_the_build(self):
        struct.pack_into("<I", self.content, self.header + 8, 1795341939)
        self.assert_found("shows the time of its build: [1795341939, 0]")

    def test_path_of_the_build(self):
        for text, encoding in (("/opt/checkout/Common/Clock.cpp", "ascii"), ("/home/jo/lumeq", "utf-16-le")):
            with self.subTest(text):
                self.content += b"\0" + text.encode(encoding) + b"\0\0"
                self.assert_found(f"shows a path of its build: {text}")

    def test_foreign_import(self):
        place = self.content.index(b"msvcrt.dll\0")
        self.content[place:place + 10] = b"sneaky.dll"
        self.assert_found("imports sneaky.dll")

    def test_size(self):
        self.content += bytes(LARGEST["Lumeq.dll"] - len(self.content) + 1)
        self.assert_found("has 640,001 bytes of 640,000")

    def test_other_version(self):
        self.assert_found(f"has the ProductVersion {VERSION!r} instead of '9.9.9'", version="9.9.9")
        self.assert_found(f"has the (file) '{VERSION}.0' instead of '9.9.9.0'", version="9.9.9")

    def test_other_name(self):
        self.assert_found("has the OriginalFilename 'Lumeq.dll' instead of 'Other.dll'", name="Other.dll")

    def test_other_processor(self):
        struct.pack_into("<H", self.content, self.header + 4, 0xAA64)
        self.assert_found("is for another processor: 0xaa64")


class Reader(unittest.TestCase):
    def test_reads_exports_as_the_lists_have_them(self):
        for library, exports in (("Lumeq.dll", "exports.txt"), ("LumeqC.dll", "c_exports.txt")):
            with self.subTest(library):
                self.assertEqual((ROOT / "tests" / exports).read_text().split(),
                                 sorted(export.name for export in PeFile(BUILD / library).exports()))

    def test_refuses_what_is_no_executable_file(self):
        with self.assertRaises(Exception):
            PeFile(ROOT / "README.md")


if __name__ == "__main__":
    unittest.main()
