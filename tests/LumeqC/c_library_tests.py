"""What LumeqC.dll and its import libraries are as files."""

import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import BUILD, ROOT  # noqa: E402
from support.library_file import exports_of, shipping_problems  # noqa: E402

EXPORTS = (ROOT / "tests" / "c_exports.txt").read_text().split()


class CLibraryFile(unittest.TestCase):
    def test_exports_are_those_of_the_checked_in_list(self):
        self.assertEqual(EXPORTS, exports_of(BUILD / "LumeqC.dll"))

    def test_is_fit_to_ship(self):
        self.assertEqual([], shipping_problems(BUILD / "LumeqC.dll"))

    def test_import_libraries_of_both_worlds_name_every_export(self):
        for name in ("libLumeqC.dll.a", "LumeqC.lib"):
            with self.subTest(name):
                content = (BUILD / name).read_bytes()
                self.assertEqual([], [export for export in EXPORTS if f"__imp_{export}\0".encode() not in content])


if __name__ == "__main__":
    unittest.main()
