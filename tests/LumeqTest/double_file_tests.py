"""The double as a file, and what it leaves alone on the machine."""

import re
import unittest

from double_sessions import play_on_double
from circumstances import Circumstances, Session
from support import BUILD, ROOT, SessionTestCase, call
from support.library_file import exports_of, imports_of, shipping_problems

DOUBLE = BUILD / "double" / "Lumeq.dll"
HEADER = (ROOT / "include" / "Lumeq" / "lumeq_test.h").read_text()
CLICK = call("ButtonClicked", flow="setup", screenName="Home", controlName="ok")


def wide(text: str) -> bytes:
    return text.encode("utf-16-le")


class File(unittest.TestCase):
    def test_exports_are_those_of_the_library_and_the_functions_of_the_header(self):
        library = (ROOT / "tests" / "exports.txt").read_text().split()
        functions = re.findall(r"^LUMEQ_TEST_API .*\b(lumeq_test_\w+)\(", HEADER, re.MULTILINE)
        self.assertEqual(39, len(library))
        self.assertEqual(sorted(library + functions), exports_of(DOUBLE))

    def test_needs_no_library_for_registry_com_or_network(self):
        self.assertEqual({"kernel32.dll", "msvcrt.dll"}, imports_of(DOUBLE).keys())

    def test_its_c_interface_needs_no_library_for_registry_or_network_either(self):
        self.assertEqual({"kernel32.dll", "msvcrt.dll", "ntdll.dll", "ole32.dll", "lumeq.dll"},
                         imports_of(DOUBLE.with_name("LumeqC.dll")).keys())

    def test_imports_no_function_that_creates_a_file(self):
        imported = imports_of(DOUBLE)["kernel32.dll"]
        self.assertIn("GetModuleFileNameW", imported)
        self.assertEqual(set(), imported & {"CreateFileA", "CreateFileW", "CreateFileMappingW", "CreateDirectoryW",
                                            "DeleteFileW", "MoveFileExW", "SetEnvironmentVariableW", "CreateMutexW"})

    def test_is_protected_as_the_library_is_and_has_no_trace_of_its_build(self):
        for file in (DOUBLE, DOUBLE.with_name("LumeqC.dll")):
            with self.subTest(file.name):
                self.assertEqual([], shipping_problems(file))

    def test_version_resource_says_that_it_is_a_double(self):
        content = DOUBLE.read_bytes()
        for text in ("Recording double of Lumeq for unit tests; delivers nothing", "Lumeq recording double",
                     "Not for shipping: events are kept in memory and delivered nowhere."):
            self.assertIn(wide(text), content)
        fixed = content[content.index(bytes.fromhex("bd04effe")):]
        self.assertEqual(0x20, int.from_bytes(fixed[28:32], "little"), "VS_FF_SPECIALBUILD")
        self.assertNotIn(wide("Recording double"), (BUILD / "Lumeq.dll").read_bytes())


class Machine(SessionTestCase):
    CHANGES_THE_MACHINE = True

    def files(self) -> set:
        return {file for file in (self.machine.prefix / "drive_c").rglob("*") if "windows" not in file.parts}

    def test_neither_registry_nor_settings_reach_it_and_it_leaves_no_file(self):
        self.machine._disable_tracking(1)
        settings = self.machine.program_data / "LUMEQ" / "LumeqLocalSettings.xml"
        settings.parent.mkdir(parents=True)
        settings.write_text("<damaged")
        before = self.files()
        recorded = play_on_double(Session(
            [call("StartupEx", appName="x", whyType=0, howType=0, trackSystemInfo=True, trackPrintQueueInfo=True),
             call("SetUserOptInEx", userHasOptedIn=True), call("GetUserOptInEx"), CLICK, call("Pause"),
             call("ShutdownEx", timeoutMsec=5)], Circumstances()), self.machine)
        self.assertEqual(before, self.files())
        self.assertEqual("<damaged", settings.read_text())
        self.assertTrue(recorded.answers[2]["returns"])
        self.assertEqual(["StartupInternal", "SetUserOptInInternal", "GetUserOptInInternal", "PostEventInternal",
                          "SetLocalValueInternal", "SetUserOptInInternal", "SetUserOptInInternal", "ShutdownInternal"],
                         [operation["operation"] for operation in recorded.operations])


if __name__ == "__main__":
    unittest.main()
