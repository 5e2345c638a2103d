"""Lumeq.dll as a file: its exports, imports, protections and version."""

import os
import unittest

from support.considered_imports import NOT_MADE_TO_FAIL, OF_THE_C_RUNTIME, WITH_CLANG, names_in, \
    names_made_to_fail
from support import BUILD, ROOT
from support.library_file import exports_of, imports_of, shipping_problems

C_RUNTIME = "msvcrt.dll"

# Every process of Windows has the first, and every program of this toolchain the second.
LOADED_WITH_IT = {"kernel32.dll", C_RUNTIME}
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
        cls.imports = imports_of(BUILD / "Lumeq.dll")

    def test_exports_are_those_of_the_checked_in_list(self):
        self.assertEqual((ROOT / "tests" / "exports.txt").read_text().split(), exports_of(BUILD / "Lumeq.dll"))

    def test_loads_nothing_but_what_every_host_has(self):
        self.assertEqual(LOADED_WITH_IT, set(self.imports))

    def test_what_is_loaded_at_first_use_is_windows_own(self):
        self.assertEqual(LOADED_AT_FIRST_USE, set(delayed_functions()))

    def test_every_delayed_function_is_used(self):
        for function in set().union(*delayed_functions().values()):
            with self.subTest(function):
                self.assertIn(b"\0" + function.encode() + b"\0", self.bytes)

    def test_every_imported_function_is_made_to_fail_or_has_a_reason_not_to_be(self):
        self.skip_where_assertions_import_more()
        functions = self.imports | delayed_functions()
        functions.pop(C_RUNTIME)
        failing, exempt = names_made_to_fail(), names_in(NOT_MADE_TO_FAIL)
        self.assertEqual(sorted(set().union(*functions.values())), sorted(failing + exempt))

    def test_every_function_of_the_c_runtime_is_known(self):
        self.skip_where_assertions_import_more()
        known = OF_THE_C_RUNTIME | (WITH_CLANG if "clang" in os.environ["LUMEQ_CXX"] else {})
        self.assertEqual(sorted(self.imports[C_RUNTIME]), sorted(names_in(known)))

    def skip_where_assertions_import_more(self):
        if "LUMEQ_CHECKED:BOOL=ON" in (BUILD / "CMakeCache.txt").read_text():
            self.skipTest("the assertions of this build print")

    def test_is_fit_to_ship(self):
        self.assertEqual([], shipping_problems(BUILD / "Lumeq.dll"))


if __name__ == "__main__":
    unittest.main()
