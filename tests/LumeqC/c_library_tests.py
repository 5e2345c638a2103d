"""What LumeqC.dll and its import libraries are as files."""

import re
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import BUILD, ROOT  # noqa: E402
from support.library_file import exports_of, headers_of  # noqa: E402

EXPORTS = (ROOT / "tests" / "c_exports.txt").read_text().split()
LIBRARIES = {"kernel32.dll", "lumeq.dll", "msvcrt.dll", "ntdll.dll", "ole32.dll"}


class CLibraryFile(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.headers = headers_of(BUILD / "LumeqC.dll")

    def test_exports_are_those_of_the_checked_in_list(self):
        self.assertEqual(EXPORTS, exports_of(BUILD / "LumeqC.dll"))

    def test_imports_nothing_but_what_windows_and_lumeq_have(self):
        self.assertEqual(LIBRARIES, {name.lower() for name in re.findall(r"DLL Name: (\S+)", self.headers)})

    def test_can_be_loaded_anywhere_and_has_no_executable_data(self):
        characteristics = int(re.search(r"^DllCharacteristics\s+([0-9a-f]+)", self.headers, re.MULTILINE)[1], 16)
        self.assertEqual(0x160, characteristics & 0x160)

    def test_import_libraries_of_both_worlds_name_every_export(self):
        for name in ("libLumeqC.dll.a", "LumeqC.lib"):
            with self.subTest(name):
                content = (BUILD / name).read_bytes()
                self.assertEqual([], [export for export in EXPORTS if f"__imp_{export}\0".encode() not in content])

    def test_is_small(self):
        self.assertLess((BUILD / "LumeqC.dll").stat().st_size, 300_000)


if __name__ == "__main__":
    unittest.main()
