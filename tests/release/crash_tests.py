"""Symbols of a release: a crash inside Lumeq.dll resolves to its functions.

LUMEQ_PACKAGE and LUMEQ_SYMBOLS name the unpacked archives of a release.
"""

import os
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import BUILD, ROOT, SessionTestCase  # noqa: E402
import minidump  # noqa: E402
from pe_file import PeFile  # noqa: E402
from session_player import Conditions  # noqa: E402

HERE = Path(__file__).resolve().parent
PACKAGE = Path(os.environ.get("LUMEQ_PACKAGE", ""))
SYMBOLS = Path(os.environ.get("LUMEQ_SYMBOLS", ""))
CRASHED = 42


def addresses(name: str) -> dict[str, int]:
    """Of the functions in the complete symbols, those of one object included, by mangled name, from the start of the
    file."""
    symbols = PeFile(SYMBOLS / "Lumeq" / f"{name}.debug")
    listed = subprocess.run(["x86_64-w64-mingw32-nm", symbols.path], check=True, stdout=subprocess.PIPE, text=True).stdout
    return {found[1]: int(found[0], 16) - symbols.image_base
            for found in re.findall(r"^(\w+) [Tt] (_Z\w+)$", listed, re.MULTILINE)}


def lines_by_address(name: str) -> dict[int, set[str]]:
    """Each file name and line that the complete symbols have for an address, which may be several."""
    symbols = PeFile(SYMBOLS / "Lumeq" / f"{name}.debug")
    listed = subprocess.run(["x86_64-w64-mingw32-objdump", "--dwarf=decodedline", symbols.path], check=True,
                            stdout=subprocess.PIPE, text=True).stdout
    found: dict[int, set[str]] = {}
    for file, line, address in re.findall(r"^(\S+) +(\d+) +0x([0-9a-f]+)", listed, re.MULTILINE):
        found.setdefault(int(address, 16) - symbols.image_base, set()).add(f"{file}:{line}")
    return found


@unittest.skipUnless("LUMEQ_PACKAGE" in os.environ, "of a release")
class Symbols(SessionTestCase):
    def build(self, source: str, *options) -> Path:
        program = self.machine.host_folder / f"{Path(source).stem}.exe"
        subprocess.run([*os.environ["LUMEQ_CXX"].split(), "-std=c++17", "-static", HERE / source, "-o", program, *options],
                       check=True)
        return program

    def setUp(self):
        self.machine.clear()
        self.machine.set_up(Conditions(), BUILD)

    def crash(self) -> minidump.Crash:
        host = self.build("CrashHost.cpp", "-municode", "-I", PACKAGE / "include", PACKAGE / "lib" / "Lumeq.dll.a",
                          "-ldbghelp")
        dump = self.machine.host_folder / "crash.dmp"
        status = self.machine.start_program(host, "crash.dmp", cwd=dump.parent).wait(60)
        self.assertEqual(CRASHED, status)
        return minidump.Minidump(dump.read_bytes()).crash()

    def test_minidump_names_the_function_that_crashed_and_the_export_that_was_called(self):
        crash = self.crash()
        lines = list(minidump.report(crash, SYMBOLS))
        self.assertEqual(0xC0000005, crash.code)
        ours = [line for line in lines if "/lumeq/" in line]
        self.assertRegex(ours[0], r"^Lumeq\.dll\+0x[0-9a-f]+ Zuvan::Lumeq::Extra::Eventing::EventingTask::Completed\(.*"
                                  r" \(/lumeq/LumeqLib/Extra/Eventing/EventingTask\.cpp:\d+\)$")
        self.assertTrue(any(re.search(r" ScanAcquireCompleted \(/lumeq/LumeqApi/LumeqApi.cpp:\d+\)$", line) for line in ours),
                        lines)

    def test_minidump_without_our_symbols_names_nothing(self):
        crash = self.crash()
        self.assertEqual([], list(minidump.report(crash, HERE)))

    def names(self, folder: Path, offsets: list[int]) -> list[str]:
        """By the system's debugging library. Wine's finds no lines."""
        program = self.build("NameFunctions.cpp", "-ldbghelp")
        printed = subprocess.run([ROOT / "tools" / "run-wine", program, PACKAGE / "bin" / "Lumeq.dll", folder,
                                  *(f"{offset:x}" for offset in offsets)],
                                 check=True, stdout=subprocess.PIPE, text=True,
                                 env=dict(os.environ, WINEPREFIX=str(self.machine.prefix)))
        return printed.stdout.split()

    def sample(self) -> dict[str, int]:
        """Some functions of ours, among them those that only their object knows."""
        ours = {name: offset for name, offset in addresses("Lumeq.dll").items() if "5Zuvan" in name}
        statics = [name for name in ours if "_GLOBAL__N_" in name]
        self.assertGreater(len(ours), 300)
        self.assertGreater(len(statics), 20)
        return {name: ours[name] for name in sorted(ours)[::10] + statics[:20]}

    def test_pdb_names_functions_in_the_systems_debugging_library(self):
        sample = self.sample()
        same_place: dict[int, set[str]] = {}
        for name, offset in addresses("Lumeq.dll").items():
            same_place.setdefault(offset, set()).add(name)
        for (name, offset), found in zip(sample.items(), self.names(SYMBOLS / "Lumeq", list(sample.values()))):
            with self.subTest(name):
                self.assertIn(found, same_place[offset])

    def test_pdb_has_the_lines_of_the_complete_symbols(self):
        """As LLVM reads it."""
        for file in (PACKAGE / "bin" / "Lumeq.dll", SYMBOLS / "Lumeq" / "Lumeq.pdb"):
            shutil.copy(file, self.machine.host_folder)
        library = PeFile(self.machine.host_folder / "Lumeq.dll")
        lines, compared = lines_by_address("Lumeq.dll"), 0
        for name, offset in self.sample().items():
            if offset in lines:
                shown = subprocess.run(["llvm-symbolizer-14", "--obj=Lumeq.dll", f"{library.image_base + offset:#x}"],
                                       cwd=self.machine.host_folder, check=True, stdout=subprocess.PIPE, text=True).stdout
                with self.subTest(name):
                    self.assertIn(re.split(r"[\\/]", shown.split("\n")[1])[-1].rpartition(":")[0], lines[offset])
                compared += 1
        self.assertGreater(compared, 50)

    def test_pdb_of_another_file_names_nothing(self):
        folder = self.machine.host_folder / "other"
        folder.mkdir()
        shutil.copy(SYMBOLS / "LumeqC" / "LumeqC.pdb", folder / "Lumeq.pdb")
        offset = min(addresses("Lumeq.dll").values())
        self.assertEqual(["?"], self.names(folder, [offset]))

    def test_each_shipped_file_has_its_symbols(self):
        for file in sorted(PACKAGE.rglob("*.dll")) + sorted(PACKAGE.rglob("*.exe")):
            with self.subTest(file.name):
                identifier, _, name = PeFile(file).symbols()
                module = minidump.Module(file.name, 0, 0, identifier)
                self.assertEqual(f"{file.name}.debug", minidump.symbols_of(module, SYMBOLS).path.name)
                self.assertEqual(f"{file.stem}.pdb", name)


if __name__ == "__main__":
    unittest.main()
