"""Lumeq.dll as a file: its exports, imports, protections and version."""

import re
import unittest

from support.considered_imports import NOT_MADE_TO_FAIL, OF_THE_C_RUNTIME, names_in, names_made_to_fail
from support import BUILD, ROOT
from support.library_file import exports_of, headers_of

C_RUNTIME = "msvcrt.dll"

# Every process of Windows has the first, and every program of this toolchain the second.
LOADED_WITH_IT = {"kernel32.dll", C_RUNTIME}
LARGEST = 640_000  # bytes; hosts carry the library in their installers
LOADED_AT_FIRST_USE = {
    "advapi32.dll", "ole32.dll", "oleaut32.dll", "rpcrt4.dll", "shell32.dll", "shlwapi.dll", "urlmon.dll", "user32.dll",
    "version.dll", "wininet.dll",
}


def delayed_functions() -> dict[str, set[str]]:
    """By library. The linker keeps no table of them that a tool could read, so this is the list it worked from."""
    functions: dict[str, set[str]] = {}
    for line in (ROOT / "Runtime" / "DelayedFunctions.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            library, function, _ = line.split()
            functions.setdefault(f"{library}.dll", set()).add(function)
    return functions


class LibraryFile(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.bytes = (BUILD / "Lumeq.dll").read_bytes()
        cls.headers = headers_of(BUILD / "Lumeq.dll")

    def test_exports_are_those_of_the_checked_in_list(self):
        self.assertEqual((ROOT / "tests" / "exports.txt").read_text().split(), exports_of(BUILD / "Lumeq.dll"))

    def test_loads_nothing_but_what_every_host_has(self):
        self.assertEqual(LOADED_WITH_IT, {name.lower() for name in re.findall(r"DLL Name: (\S+)", self.headers)})

    def test_what_is_loaded_at_first_use_is_windows_own(self):
        self.assertEqual(LOADED_AT_FIRST_USE, set(delayed_functions()))

    def test_every_delayed_function_is_used(self):
        for function in set().union(*delayed_functions().values()):
            with self.subTest(function):
                self.assertIn(b"\0" + function.encode() + b"\0", self.bytes)

    def imported_functions(self) -> dict[str, set[str]]:
        """By library, in lower case."""
        tables = re.split(r"DLL Name: (\S+)", self.headers.partition("The Export Tables")[0])[1:]
        return {library.lower(): set(re.findall(r"^\t[0-9a-f]+\t *[0-9]+  (\w+)$", table, re.MULTILINE))
                for library, table in zip(tables[::2], tables[1::2])}

    def test_is_small(self):
        cache = (BUILD / "CMakeCache.txt").read_text()
        if "CMAKE_BUILD_TYPE:STRING=Release" not in cache or "LUMEQ_CHECKED:BOOL=ON" in cache:
            self.skipTest("not the build that ships")
        self.assertLess(len(self.bytes), LARGEST)

    def test_every_imported_function_is_made_to_fail_or_has_a_reason_not_to_be(self):
        functions = self.imported_functions() | delayed_functions()
        functions.pop(C_RUNTIME)
        failing, exempt = names_made_to_fail(), names_in(NOT_MADE_TO_FAIL)
        self.assertEqual(sorted(set().union(*functions.values())), sorted(failing + exempt))

    def test_every_function_of_the_c_runtime_is_known(self):
        if "LUMEQ_CHECKED:BOOL=ON" in (BUILD / "CMakeCache.txt").read_text():
            self.skipTest("the assertions import more")
        self.assertEqual(sorted(self.imported_functions()[C_RUNTIME]), sorted(names_in(OF_THE_C_RUNTIME)))

    def test_can_be_loaded_anywhere_and_has_no_executable_data(self):
        characteristics = int(re.search(r"^DllCharacteristics\s+([0-9a-f]+)", self.headers, re.MULTILINE)[1], 16)
        high_entropy_va, dynamic_base, nx_compatible = 0x20, 0x40, 0x100
        wanted = high_entropy_va | dynamic_base | nx_compatible
        self.assertEqual(wanted, characteristics & wanted)

    def test_relocations_are_there_for_that(self):
        self.assertRegex(self.headers, r"Entry 5 (?!0{16})[0-9a-f]{16} (?!0{8})[0-9a-f]{8} Base Relocation Directory")

    def test_carries_no_time_of_its_build(self):
        offset = int.from_bytes(self.bytes[0x3C:0x40], "little")
        self.assertEqual(b"PE\0\0", self.bytes[offset:offset + 4])
        self.assertEqual(0, int.from_bytes(self.bytes[offset + 8:offset + 12], "little"))

    def test_carries_no_path_of_its_build(self):
        for path in (str(ROOT), str(BUILD)):
            self.assertNotIn(path.encode(), self.bytes)
            self.assertNotIn(path.encode("utf-16-le"), self.bytes)

    def test_version_resource_names_product_and_version(self):
        for name, value in (("ProductName", "Lumeq"), ("ProductVersion", "1.0.0"), ("FileVersion", "1.0.0.0"),
                            ("OriginalFilename", "Lumeq.dll"), ("CompanyName", "Zuvan")):
            text = f"{name}\0".encode("utf-16-le")
            with self.subTest(name):
                at = self.bytes.index(text) + len(text)
                following = self.bytes[at:at + 64].decode("utf-16-le").lstrip("\0")
                self.assertEqual(value, following.split("\0")[0])


if __name__ == "__main__":
    unittest.main()
