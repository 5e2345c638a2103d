"""The installed package, as a host's developer meets it."""

import os
import shutil
import subprocess
import unittest

from support import BUILD, OBJDUMP, ROOT

INSTALLED = [
    "bin/Lumeq.dll",
    "bin/LumeqC.dll",
    "include/Lumeq/LumeqApi.h",
    "include/Lumeq/LumeqRecords.h",
    "include/Lumeq/LumeqToolchain.h",
    "include/Lumeq/lumeq.h",
    "include/Lumeq/lumeq.hpp",
    "include/Lumeq/lumeq_loader.h",
    "include/Lumeq/lumeq_table.h",
    "lib/Lumeq.dll.a",
    "lib/LumeqC.lib",
    "lib/cmake/Lumeq/LumeqConfig.cmake",
    "lib/cmake/Lumeq/LumeqConfigVersion.cmake",
    "lib/cmake/Lumeq/LumeqTargets-release.cmake",
    "lib/cmake/Lumeq/LumeqTargets.cmake",
    "lib/libLumeqC.dll.a",
]

CONSUMER = ROOT / "tests" / "consumer"
WORK = BUILD / "package-tests"
PACKAGE = WORK / "installed"


def run(*command, **options) -> subprocess.CompletedProcess:
    return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, stdin=subprocess.DEVNULL, **options)


def configure(name: str, *options: str) -> subprocess.CompletedProcess:
    return run("cmake", "-G", "Ninja", "-S", CONSUMER, "-B", WORK / name, "-DCMAKE_BUILD_TYPE=Release",
               f"-DCMAKE_TOOLCHAIN_FILE={os.environ['LUMEQ_TOOLCHAIN_FILE']}", 
               f"-DLumeq_DIR={PACKAGE}/lib/cmake/Lumeq", *options)


def one_line(text: str) -> str:
    """CMake wraps its messages."""
    return " ".join(text.split())


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(WORK, ignore_errors=True)
        installation = run("cmake", "--install", BUILD, "--prefix", PACKAGE)
        if installation.returncode != 0:
            raise AssertionError(installation.stdout)

    def test_holds_the_library_and_nothing_for_its_developers(self):
        files = sorted(str(file.relative_to(PACKAGE)) for file in PACKAGE.rglob("*") if file.is_file())
        self.assertEqual(INSTALLED, files)

    def test_installed_library_is_stripped(self):
        symbols = run(OBJDUMP, "-t", PACKAGE / "bin" / "Lumeq.dll")
        self.assertIn("no symbols", symbols.stdout)

    def test_consumer_builds_and_runs(self):
        configured = configure("consumer")
        self.assertEqual(0, configured.returncode, configured.stdout)
        built = run("cmake", "--build", WORK / "consumer")
        self.assertEqual(0, built.returncode, built.stdout)
        played = run(ROOT / "tools" / "run-wine", WORK / "consumer" / "consumer.exe")
        self.assertEqual((0, "wifi_direct, opened, completed"), (played.returncode, played.stdout.strip()))

    def test_consumer_with_checked_containers_fails_to_configure(self):
        configured = configure("checked-containers", "-DCMAKE_CXX_FLAGS=-D_GLIBCXX_DEBUG")
        self.assertNotEqual(0, configured.returncode)
        self.assertIn("This Lumeq was built without _GLIBCXX_DEBUG, which changes the layout of containers.",
                      one_line(configured.stdout))

    def test_consumer_with_old_strings_fails_to_configure(self):
        configured = configure("old-strings", "-DCMAKE_CXX_FLAGS=-D_GLIBCXX_USE_CXX11_ABI=0")
        self.assertNotEqual(0, configured.returncode)
        self.assertIn("This Lumeq was built with libstdc++'s C++11 strings: do not set _GLIBCXX_USE_CXX11_ABI to 0.",
                      one_line(configured.stdout))

    def test_consumer_for_another_system_fails_to_configure(self):
        script = WORK / "other-system.cmake"
        script.write_text("set(CMAKE_SYSTEM_NAME Linux)\nset(CMAKE_SIZEOF_VOID_P 8)\n"
                          f"find_package(Lumeq CONFIG REQUIRED PATHS {PACKAGE} NO_DEFAULT_PATH)\n")
        configured = run("cmake", "-P", script)
        self.assertNotEqual(0, configured.returncode)
        self.assertIn("for 64-bit Windows. This build is not for Windows.", one_line(configured.stdout))

    def test_consumer_that_bypasses_the_package_fails_to_compile(self):
        compiled = run(*os.environ["LUMEQ_CXX"].split(), "-std=c++17", "-D_GLIBCXX_DEBUG", "-I", PACKAGE / "include",
                       "-fsyntax-only", CONSUMER / "Consumer.cpp")
        self.assertNotEqual(0, compiled.returncode)
        self.assertIn("This Lumeq was built without _GLIBCXX_DEBUG, which changes the layout of containers.",
                      compiled.stdout)


if __name__ == "__main__":
    unittest.main()
