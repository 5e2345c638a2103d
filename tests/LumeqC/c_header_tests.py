"""lumeq.h with each compiler and language that hosts use, and against LumeqApi.h and the export list."""

import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
INCLUDE = ROOT / "include"
HEADER = INCLUDE / "Lumeq" / "lumeq.h"
STRICT = ["-pedantic", "-Wall", "-Wextra", "-Werror", "-fsyntax-only"]
C_STANDARDS = ("c99", "c11", "c17")
CXX_STANDARDS = ("c++98", "c++11", "c++14", "c++17", "c++20")

INITIALISERS = "".join(
    f"lumeq_{name} its_{name} = LUMEQ_{name.upper()}_INIT;\n"
    for name in ("options", "state", "screen", "ad", "form", "scan_acquire", "print_basic", "file_send_to", "device_connect",
                 "device_config", "software_install"))
SOURCE = "#include <Lumeq/lumeq.h>\n#include <Lumeq/lumeq.h>\n" + INITIALISERS + "int main(void) { return 0; }\n"

MSVC_TARGET = ["--target=x86_64-pc-windows-msvc", "-ffreestanding"]
COMPILERS = {
    "gcc for MinGW": ["x86_64-w64-mingw32-gcc-posix"],
    "clang for MinGW": ["clang-14", "--target=x86_64-w64-mingw32"],
    "clang for MSVC": ["clang-14", *MSVC_TARGET],
}


def compiled(compiler: list[str], language: str, standard: str, source: str) -> subprocess.CompletedProcess:
    return subprocess.run([*compiler, *STRICT, f"-std={standard}", f"-I{INCLUDE}", "-x", language, "-"], input=source,
                          text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


def enumerations(text: str, begin: str) -> dict[str, dict[str, int]]:
    return {name: {row: int(value) for row, value in re.findall(r"(\w+) = (\d+)", body)}
            for name, body in re.findall(begin + r" \{(.*?)\}", text, re.DOTALL)}


class CHeader(unittest.TestCase):
    def compilers(self):
        for name, command in COMPILERS.items():
            if shutil.which(command[0]):
                yield name, command

    def assert_compiles(self, language: str, standards: tuple[str, ...], source: str):
        for name, command in self.compilers():
            for standard in standards:
                with self.subTest(compiler=name, standard=standard):
                    result = compiled(command, language, standard, source)
                    self.assertEqual((0, ""), (result.returncode, result.stdout))

    def test_compiles_as_c(self):
        self.assert_compiles("c", C_STANDARDS, SOURCE)

    def test_loader_compiles_as_c_and_as_cpp(self):
        source = "#include <Lumeq/lumeq_loader.h>\nint main(void) { lumeq_loader l; return (int)lumeq_load(&l, 0); }\n"
        for language, standards in (("c", C_STANDARDS), ("c++", CXX_STANDARDS)):
            for standard in standards:
                with self.subTest(standard):
                    result = compiled(COMPILERS["gcc for MinGW"], language, standard, source)
                    self.assertEqual((0, ""), (result.returncode, result.stdout))

    def test_compiles_as_cpp(self):
        self.assert_compiles("c++", CXX_STANDARDS, SOURCE)

    def test_includes_two_headers_alone(self):
        self.assertEqual(["stddef.h", "stdint.h"], re.findall(r"#include <(.*)>", HEADER.read_text()))

    def test_every_struct_is_a_multiple_of_eight_bytes_without_padding(self):
        structs = re.findall(r"^typedef struct (lumeq_\w+) \{", HEADER.read_text(), re.MULTILINE)
        self.assertEqual(14, len(structs))
        checks = "".join(f'_Static_assert(sizeof({name}) % 8 == 0, "{name}");\n' for name in structs)
        for name, command in self.compilers():
            if "clang" in command[0]:
                with self.subTest(compiler=name):
                    result = compiled([*command, "-Wpadded"], "c", "c11", SOURCE + checks)
                    self.assertEqual((0, ""), (result.returncode, result.stdout))

    def test_functions_are_those_of_the_export_list(self):
        functions = re.findall(r"^LUMEQ_C_API [^(]*?\b(lumeq_\w+)\(", HEADER.read_text(), re.MULTILINE)
        listed = (ROOT / "tests" / "c_exports.txt").read_text().split()
        self.assertEqual(listed, sorted(functions))
        self.assertEqual(listed, re.findall(r"^    (\w+) @[0-9]+$", (ROOT / "LumeqC" / "LumeqC.def").read_text(), re.MULTILINE))

    def test_every_row_of_every_enumeration_has_its_constant(self):
        text = (INCLUDE / "Lumeq" / "LumeqApi.h").read_text()
        cpp_rows = [[(row.rstrip("_").upper(), int(value)) for row, value in re.findall(r"(\w+) = (\d+)", body)]
                    for body in re.findall(r"enum class \w+ : std::int32_t \{(.*?)\n\};", text, re.DOTALL)]
        self.assertEqual(23, len(cpp_rows))
        c_rows = []
        for name, rows in enumerations(HEADER.read_text(), r"enum lumeq_(\w+)").items():
            if name in ("choice", "road"):  # of lumeq_state, not of events
                continue
            prefix = os.path.commonprefix([row for row in rows if row.endswith("_UNKNOWN")])[:-len("UNKNOWN")]
            c_rows.append([(row.removeprefix(prefix), value) for row, value in rows.items()])
        self.assertEqual(sorted(cpp_rows), sorted(c_rows))

    def test_version_is_that_of_the_project(self):
        version = re.search(r"project\(Lumeq VERSION (\d+)\.(\d+)\.(\d+)", (ROOT / "CMakeLists.txt").read_text())
        self.assertEqual(list(version.groups()),
                         re.findall(r"#define LUMEQ_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", HEADER.read_text()))


class CppLayer(unittest.TestCase):
    """lumeq.hpp needs a standard library, so MinGW's compiler alone reads it."""

    SOURCE = """
#include <string>
#include <vector>
#define min(a, b) (((a) < (b)) ? (a) : (b))
#define max(a, b) (((a) > (b)) ? (a) : (b))
#include <Lumeq/lumeq.hpp>
#include <Lumeq/lumeq.hpp>
#if defined(_WINDOWS_) || defined(_INC_WINDOWS)
#error windows.h came in
#endif
%s
int main() { BODY }
"""

    def compiled(self, body: str, standard: str = "c++17", rest: str = "", *options: str):
        source = (self.SOURCE % rest).replace("BODY", body)
        return compiled(["x86_64-w64-mingw32-g++-posix", *options], "c++", standard, source)

    def test_compiles_with_macros_min_and_max_and_before_windows_header(self):
        for standard in ("c++17", "c++20"):
            for options in ((), ("-D_GLIBCXX_DEBUG", "-D_GLIBCXX_USE_CXX11_ABI=0")):
                with self.subTest(standard=standard, options=options):
                    result = self.compiled("lumeq::set_opt_in(true);", standard, "#include <windows.h>", *options)
                    self.assertEqual((0, ""), (result.returncode, result.stdout))

    def test_defines_no_macro_but_those_of_the_c_header(self):
        self.assertEqual([], re.findall(r"^#define .*", (INCLUDE / "Lumeq" / "lumeq.hpp").read_text(), re.MULTILINE))

    def test_wrong_enumeration_does_not_compile(self):
        good = 'lumeq::session s(L"a", lumeq::why::start_app, lumeq::how::udc_tile);'
        self.assertEqual(0, self.compiled(good).returncode)
        for bad in ("lumeq::why::start_app, lumeq::why::start_app", "4, 9"):
            with self.subTest(bad):
                self.assertNotEqual(0, self.compiled(f'lumeq::session s(L"a", {bad});').returncode)

    def test_names_every_constant_of_the_c_header(self):
        constants = re.findall(r"(LUMEQ_\w+) = \d+", HEADER.read_text())
        vocabulary = (INCLUDE / "Lumeq" / "lumeq.hpp").read_text().split("/// Free-form fields")[0]
        named = re.findall(r"\w+ = (LUMEQ_\w+)", vocabulary)
        self.assertGreater(len(constants), 100)
        self.assertEqual(constants, named)


if __name__ == "__main__":
    unittest.main()
