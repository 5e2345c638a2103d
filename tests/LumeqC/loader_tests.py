"""lumeq_loader.h: what it loads, and what a host finds in the table where nothing can be loaded."""

import os
import shutil
import subprocess
import sys
import unittest
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import BUILD, HOST_SECONDS, OBJDUMP, SessionTestCase  # noqa: E402
from session_player import Conditions  # noqa: E402

LIBRARIES = ("Lumeq.dll", "LumeqC.dll")
WORKING = 'version 10000, text 4 "usb", task open'
NO_OPS = 'version 0, text 0 "", task none'
LOADED, BAD_FOLDER, MISSING, DAMAGED, OTHER, FOREIGN, OLD = (
    "0, LumeqC.dll is loaded", "1, the folder of LumeqC.dll is not an absolute path",
    "2, LumeqC.dll or Lumeq.dll is missing", "3, LumeqC.dll or Lumeq.dll cannot be loaded",
    "4, another Lumeq.dll is loaded already", "5, LumeqC.dll is a foreign file", "6, LumeqC.dll does not fit this host")


class Loader(SessionTestCase):
    def setUp(self):
        self.machine.clear()
        self.machine.set_up(Conditions(), BUILD)
        shutil.copy(BUILD / "tests" / "lumeq-loader.exe", self.machine.host_folder)
        self.elsewhere = self.machine.prefix / "drive_c" / "Else where"
        shutil.rmtree(self.elsewhere, ignore_errors=True)
        self.elsewhere.mkdir()

    def remove(self, *names: str) -> None:
        for name in names:
            (self.machine.host_folder / name).unlink()

    def assert_prints(self, first: str, *arguments: str, modules: int = 0):
        output = self.machine.prefix / "output"
        self.assertEqual(0, self.machine.run("lumeq-loader.exe", list(arguments), Conditions(), output, HOST_SECONDS))
        calls = WORKING if first == LOADED else NO_OPS
        self.assertEqual([first, calls, NO_OPS, f"modules {modules}"], output.read_text().split("\n")[:-1])

    def test_loads_from_the_folder_of_the_executable(self):
        self.assert_prints(LOADED)

    def test_loads_from_a_given_folder(self):
        for name in LIBRARIES:
            shutil.move(self.machine.host_folder / name, self.elsewhere)
        self.assert_prints(LOADED, r"C:\Else where")
        self.assert_prints(LOADED, "C:\\Else where\\")
        self.assert_prints(MISSING)

    def test_missing_file_is_named_missing(self):
        self.remove("LumeqC.dll")
        self.assert_prints(MISSING)
        self.remove("Lumeq.dll")
        self.assert_prints(MISSING)

    def test_neither_file_is_searched_for(self):
        current = self.machine.host_folder / "current"
        current.mkdir()
        for name in LIBRARIES:
            with self.subTest(name):
                self.setUp()
                current.mkdir(exist_ok=True)
                shutil.move(self.machine.host_folder / name, current)
                with mock.patch.object(self.machine, "current_folder", lambda: current):
                    self.assert_prints(MISSING)

    def test_folder_that_is_not_absolute_is_refused(self):
        for folder in ("", ".", "current", r"\Host", "C:", "C:Host", "C:/Host"):
            with self.subTest(folder):
                self.assert_prints(BAD_FOLDER, folder)

    def test_damaged_file_is_named_damaged(self):
        for name in LIBRARIES:
            for content in (b"", b"MZ", (BUILD / name).read_bytes()[:3000]):
                with self.subTest(name, size=len(content)):
                    self.setUp()
                    (self.machine.host_folder / name).write_bytes(content)
                    self.assert_prints(DAMAGED)

    def test_core_library_of_another_folder_is_named_other(self):
        shutil.copy(BUILD / "Lumeq.dll", self.elsewhere)
        self.assert_prints(OTHER, r"C:\Host", r"C:\Else where\Lumeq.dll", modules=1)

    def test_core_library_that_is_loaded_already_is_used(self):
        self.assert_prints(LOADED, r"C:\Host", r"C:\Host\Lumeq.dll", modules=1)

    def test_foreign_library_is_named_foreign(self):
        shutil.copy(BUILD / "Lumeq.dll", self.machine.host_folder / "LumeqC.dll")
        self.assert_prints(FOREIGN)

    def test_library_of_another_abi_or_with_too_few_functions_is_named_old(self):
        for name in ("other-abi.dll", "too-few.dll"):
            with self.subTest(name):
                shutil.copy(BUILD / "tests" / name, self.machine.host_folder / "LumeqC.dll")
                self.assert_prints(OLD)

    def test_needs_no_function_that_windows_7_lacks(self):
        headers = subprocess.run([OBJDUMP, "-p", BUILD / "tests" / "lumeq-loader.exe"], check=True,
                                 stdout=subprocess.PIPE, text=True).stdout
        self.assertIn("LoadLibraryExW", headers)
        for name in ("AddDllDirectory", "SetDefaultDllDirectories", "RemoveDllDirectory", "LoadPackagedLibrary"):
            self.assertNotIn(name, headers)


if __name__ == "__main__":
    unittest.main()
