"""What the tools write from lumeq.h is current."""

import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "tools"))
import c_interface  # noqa: E402
import c_table  # noqa: E402
import node_binding  # noqa: E402
import rust_binding  # noqa: E402


class WrittenFiles(unittest.TestCase):
    def assert_current(self, file: Path, text: str):
        self.assertEqual(text, file.read_text(encoding="utf-8"))

    def test_table(self):
        self.assert_current(c_table.TABLE, c_table.table())

    def test_rust(self):
        self.assert_current(rust_binding.SOURCES / "raw.rs", rust_binding.raw())
        self.assert_current(rust_binding.SOURCES / "vocabulary.rs", rust_binding.vocabulary())

    def test_node(self):
        self.assert_current(node_binding.RAW, node_binding.raw())

    def test_all_of_the_header_is_read(self):
        listed = (ROOT / "tests" / "c_exports.txt").read_text().split()
        self.assertEqual(listed, sorted("lumeq_" + function.name for function in c_interface.functions()))
        header = (ROOT / "include" / "Lumeq" / "lumeq.h").read_text()
        self.assertEqual(header.count("\ntypedef struct"), len(c_interface.structs()))
        self.assertEqual(header.count("\nenum "), len(c_interface.enumerations()))


if __name__ == "__main__":
    unittest.main()
