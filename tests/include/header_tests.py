"""The public headers, compiled by themselves in the surroundings that hosts give them."""

import os
import subprocess
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
INCLUDES = [ROOT / "include", Path(os.environ["LUMEQ_BUILD_DIR"]) / "include"]
STRICT = ["-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only"]


# Some toolchains' windows.h defines these, and this one's does not. The standard library's headers come first here,
# since they would put an end to the macros.
MACROS = """
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>
#define min(a, b) (((a) < (b)) ? (a) : (b))
#define max(a, b) (((a) > (b)) ? (a) : (b))
"""
API = "#include <Lumeq/LumeqApi.h>\n"
RECORDS = "#include <Lumeq/LumeqRecords.h>\n"
WINDOWS = "#include <windows.h>\n"


class PublicHeaders(unittest.TestCase):
    def assert_compiles(self, source: str):
        for standard in ("c++17", "c++20"):
            with self.subTest(standard):
                compiled = subprocess.run(
                    [*os.environ["LUMEQ_CXX"].split(), *STRICT, f"-std={standard}",
                     *(f"-I{folder}" for folder in INCLUDES), "-x", "c++", "-"],
                    input=source, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
                self.assertEqual((0, ""), (compiled.returncode, compiled.stdout))

    def test_api_compiles_alone_and_twice(self):
        self.assert_compiles(API + API)

    def test_records_compile_alone_and_twice(self):
        self.assert_compiles(RECORDS + RECORDS)

    def test_compile_before_windows_header(self):
        self.assert_compiles(API + RECORDS + WINDOWS)

    def test_compile_after_windows_header_and_with_macros_min_and_max(self):
        self.assert_compiles(WINDOWS + MACROS + API + RECORDS
                             + "#if !defined(min) || !defined(max)\n#error the macros are gone\n#endif\n")

    def test_bring_no_platform_header(self):
        self.assert_compiles(API + RECORDS
                             + "#if defined(_WINDOWS_) || defined(_INC_WINDOWS)\n#error windows.h came in\n#endif\n")


if __name__ == "__main__":
    unittest.main()
