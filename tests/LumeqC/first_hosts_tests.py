"""The first hosts of the start pages, built from the installed package as the pages say."""

import os
import shutil
import subprocess
import unittest
from pathlib import Path

from day_case import BUILD
from first_host_case import FULL, START, FirstHostTestCase

WORK = BUILD / "first-hosts"
PACKAGE = WORK / "installed"
CLANG, LINKER = shutil.which("clang-14"), shutil.which("lld-link-14")


def run(*command) -> None:
    done = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        raise AssertionError(done.stdout)


class FirstHosts(FirstHostTestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        shutil.rmtree(WORK, ignore_errors=True)
        run("cmake", "--install", BUILD, "--prefix", PACKAGE)
        run("cmake", "-G", "Ninja", "-S", START, "-B", WORK / "build", "-DCMAKE_BUILD_TYPE=Release",
            f"-DCMAKE_TOOLCHAIN_FILE={os.environ['LUMEQ_TOOLCHAIN_FILE']}", f"-DCMAKE_PREFIX_PATH={PACKAGE}")
        run("cmake", "--build", WORK / "build")

    def built(self, kind: str) -> Path:
        return WORK / "build" / kind / f"scan-studio-{kind}.exe"

    def test_cpp_exports(self):
        self.assert_leaves_its_records(self.built("cpp"), operations=FULL)

    def test_cpp_of_any_compiler(self):
        self.assert_leaves_its_records(self.built("hpp"))

    def test_c(self):
        self.assert_leaves_its_records(self.built("c"))

    def test_loading_at_run_time(self):
        self.assert_leaves_its_records(self.built("loader"))

    def test_loading_at_run_time_works_without_the_library(self):
        alone = WORK / "alone"
        alone.mkdir()
        shutil.copy(self.built("loader"), alone)
        self.machine.run_program(alone / "scan-studio-loader.exe")

    @unittest.skipUnless(CLANG and LINKER, "clang and lld are not installed")
    def test_c_of_microsofts_binary_interface(self):
        """Without Microsoft's C runtime, which is not to be had here; `main` is the entry point instead."""
        program, source = WORK / "scan-studio-msvc.exe", WORK / "main.obj"
        run(CLANG, "--target=x86_64-pc-windows-msvc", "-std=c99", "-ffreestanding", "-O1", "-pedantic", "-Wall", "-Wextra",
            "-Werror", "-I", PACKAGE / "include", "-c", START / "c" / "main.c", "-o", source)
        run(LINKER, "/nologo", "/nodefaultlib", "/entry:main", "/subsystem:console", f"/out:{program}", source,
            PACKAGE / "lib" / "LumeqC.lib")
        self.assert_leaves_its_records(program)


if __name__ == "__main__":
    unittest.main()
