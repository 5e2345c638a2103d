"""The installed package, as a host's developer meets it.

LUMEQ_PACKAGE names an unpacked release to test instead of what this build installs.
"""

import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path

from support import BUILD, OBJDUMP, ROOT

INSTALLED = {
    "Runtime": ["bin/Lumeq.dll", "bin/LumeqC.dll"],
    "Development": [
        "include/Lumeq/LumeqApi.h",
        "include/Lumeq/LumeqToolchain.h",
        "include/Lumeq/lumeq.h",
        "include/Lumeq/lumeq.hpp",
        "include/Lumeq/lumeq_loader.h",
        "include/Lumeq/lumeq_table.h",
        "lib/Lumeq.dll.a",
        "lib/LumeqC.lib",
        "lib/cmake/Lumeq/LumeqC.cmake",
        "lib/cmake/Lumeq/LumeqConfig.cmake",
        "lib/cmake/Lumeq/LumeqConfigVersion.cmake",
        "lib/cmake/Lumeq/LumeqTargets-release.cmake",
        "lib/cmake/Lumeq/LumeqTargets.cmake",
        "lib/cmake/Lumeq/LumeqTest.cmake",
        "lib/cmake/Lumeq/LumeqToolchain.cmake",
        "lib/libLumeqC.dll.a",
        "share/Lumeq/LumeqConfig.template.xml",
        "share/Lumeq/bindings/node/README.md",
        "share/Lumeq/bindings/node/lumeq.js",
        "share/Lumeq/bindings/node/package.json",
        "share/Lumeq/bindings/node/raw.js",
        "share/Lumeq/bindings/rust/Cargo.toml",
        "share/Lumeq/bindings/rust/README.md",
        "share/Lumeq/bindings/rust/build.rs",
        "share/Lumeq/bindings/rust/src/lib.rs",
        "share/Lumeq/bindings/rust/src/raw.rs",
        "share/Lumeq/bindings/rust/src/screen.rs",
        "share/Lumeq/bindings/rust/src/session.rs",
        "share/Lumeq/bindings/rust/src/task.rs",
        "share/Lumeq/bindings/rust/src/text.rs",
        "share/Lumeq/bindings/rust/src/vocabulary.rs",
    ],
    "Samples": [
        "share/Lumeq/samples/bin/LumeqShim.Managed.dll",
        "share/Lumeq/samples/bin/lumeq-host.exe",
        "share/Lumeq/samples/hosts/CMakeLists.txt",
        "share/Lumeq/samples/hosts/bare/CMakeLists.txt",
        "share/Lumeq/samples/hosts/bare/start.c",
        "share/Lumeq/samples/hosts/c/day.c",
        "share/Lumeq/samples/hosts/c/day.h",
        "share/Lumeq/samples/hosts/c/main.c",
        "share/Lumeq/samples/hosts/cpp/main.cpp",
        "share/Lumeq/samples/hosts/day.jsonl",
        "share/Lumeq/samples/hosts/node/day.js",
        "share/Lumeq/samples/hosts/rust/Cargo.toml",
        "share/Lumeq/samples/hosts/rust/src/main.rs",
        "share/Lumeq/samples/start/CMakeLists.txt",
        "share/Lumeq/samples/start/LumeqConfig.xml",
        "share/Lumeq/samples/start/c/CMakeLists.txt",
        "share/Lumeq/samples/start/c/main.c",
        "share/Lumeq/samples/start/cpp/CMakeLists.txt",
        "share/Lumeq/samples/start/cpp/main.cpp",
        "share/Lumeq/samples/start/hpp/CMakeLists.txt",
        "share/Lumeq/samples/start/hpp/main.cpp",
        "share/Lumeq/samples/start/loader/CMakeLists.txt",
        "share/Lumeq/samples/start/loader/main.c",
        "share/Lumeq/samples/start/node/main.js",
        "share/Lumeq/samples/start/rust/Cargo.toml",
        "share/Lumeq/samples/start/rust/src/main.rs",
        "share/Lumeq/samples/unit-tests/CMakeLists.txt",
        "share/Lumeq/samples/unit-tests/ScanDialog.cpp",
        "share/Lumeq/samples/unit-tests/ScanDialog.h",
        "share/Lumeq/samples/unit-tests/ScanDialogTests.cpp",
        "share/Lumeq/samples/unit-tests/toolbar.c",
        "share/Lumeq/samples/unit-tests/toolbar.h",
        "share/Lumeq/samples/unit-tests/toolbar_tests.c",
    ],
    "Companion": ["include/Lumeq/LumeqRecords.h"],
    "Test": [
        "include/Lumeq/lumeq_test.h",
        "include/Lumeq/lumeq_test_gtest.h",
        "lib/Lumeq/double/Lumeq.dll",
        "lib/Lumeq/double/LumeqC.dll",
        "lib/LumeqTest.lib",
        "lib/libLumeqTest.dll.a",
    ],
    "Tools": ["bin/lumeq-serve.pyz", "bin/lumeq.exe"],
}

CONSUMER = ROOT / "tests" / "consumer"
WORK = BUILD / "package-tests"
RELEASE = os.environ.get("LUMEQ_PACKAGE")
PACKAGE = Path(RELEASE or WORK / "installed")
SAMPLES = PACKAGE / "share" / "Lumeq" / "samples"
SAMPLE_HOSTS = SAMPLES / "hosts"
RUN = "wifi_direct, opened, completed"


def run(*command, **options) -> subprocess.CompletedProcess:
    return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, stdin=subprocess.DEVNULL, **options)


def install(prefix: Path, *options: str) -> list[str]:
    """Returns the files."""
    installation = run("cmake", "--install", BUILD, "--prefix", prefix, *options)
    if installation.returncode != 0:
        raise AssertionError(installation.stdout)
    return sorted(str(file.relative_to(prefix)) for file in prefix.rglob("*") if file.is_file())


def configure(name: str, *options: str, source: Path = CONSUMER, flags: str = "",
              toolchain: str = os.environ["LUMEQ_TOOLCHAIN_FILE"]) -> subprocess.CompletedProcess:
    """`flags` are those of the C++ compiler, besides the toolchain's."""
    return run("cmake", "-G", "Ninja", "-S", source, "-B", WORK / name, "-DCMAKE_BUILD_TYPE=Release",
               f"-DCMAKE_TOOLCHAIN_FILE={toolchain}", f"-DCMAKE_PREFIX_PATH={PACKAGE}", *options,
               env=dict(os.environ, CXXFLAGS=flags))


def one_line(text: str) -> str:
    """CMake wraps its messages."""
    return " ".join(text.split())


def setUpModule():
    shutil.rmtree(WORK, ignore_errors=True)
    if not RELEASE:
        install(PACKAGE)
        install(PACKAGE, "--component", "Samples")


@unittest.skipIf(RELEASE, "of a build")
class Installation(unittest.TestCase):
    def test_holds_what_hosts_need(self):
        self.assertEqual(sorted(INSTALLED["Runtime"] + INSTALLED["Development"]), install(WORK / "all"))

    def test_each_component_can_be_installed_alone(self):
        for component, files in INSTALLED.items():
            with self.subTest(component):
                self.assertEqual(sorted(files), install(WORK / component, "--component", component))


@unittest.skipUnless(RELEASE, "of a release")
class Release(unittest.TestCase):
    def test_holds_each_component_and_its_papers(self):
        files = {str(file.relative_to(PACKAGE)) for file in PACKAGE.rglob("*") if file.is_file()}
        for component, installed in INSTALLED.items():
            with self.subTest(component):
                self.assertLessEqual(set(installed), files)
        self.assertLessEqual({"README.md", "THIRD-PARTY-NOTICES.txt", "sbom.spdx.json"}, files)


class Package(unittest.TestCase):
    def assert_builds(self, name: str, *options: str, **places):
        for done in (configure(name, *options, **places), run("cmake", "--build", WORK / name)):
            self.assertEqual(0, done.returncode, done.stdout)

    def assert_runs(self, expected: str, program: Path):
        played = run(ROOT / "tools" / "run-wine", program)
        self.assertEqual((0, expected), (played.returncode, played.stdout.strip()))

    def assert_refused(self, message: str, configured: subprocess.CompletedProcess):
        self.assertNotEqual(0, configured.returncode)
        self.assertIn(message, one_line(configured.stdout))

    def test_installed_library_is_stripped(self):
        symbol = "(sec "
        self.assertIn(symbol, run(OBJDUMP, "-t", PACKAGE / "lib" / "libLumeqC.dll.a").stdout)
        self.assertNotIn(symbol, run(OBJDUMP, "-t", PACKAGE / "bin" / "Lumeq.dll").stdout)

    def test_consumer_builds_and_runs(self):
        self.assert_builds("consumer")
        self.assert_runs(RUN, WORK / "consumer" / "consumer.exe")

    def test_package_is_found_by_its_own_folder_too(self):
        self.assert_builds("by-folder", "-UCMAKE_PREFIX_PATH", f"-DLumeq_DIR={PACKAGE}/lib/cmake/Lumeq")

    def test_consumer_in_c_builds_and_runs_beside_the_dlls_it_copied(self):
        self.assert_builds("c", "-DPART=C", source=CONSUMER / "c")
        self.assertEqual(["Lumeq.dll", "LumeqC.dll"], sorted(file.name for file in (WORK / "c").glob("*.dll")))
        self.assert_runs(RUN, WORK / "c" / "consumer.exe")

    def test_consumer_that_loads_runs_with_and_without_the_dlls(self):
        self.assert_builds("loader", "-DPART=Loader", source=CONSUMER / "c")
        program = WORK / "loader" / "consumer.exe"
        self.assert_runs("LumeqC.dll or Lumeq.dll is missing: , not opened, completed", program)
        for file in INSTALLED["Runtime"]:
            shutil.copy(PACKAGE / file, WORK / "loader")
        self.assert_runs(f"LumeqC.dll is loaded: {RUN}", program)

    def test_sample_hosts_build_from_the_package(self):
        self.assert_builds("sample-hosts", source=SAMPLE_HOSTS)
        self.assertEqual(["day-c.exe", "day-cpp.exe", "day-loader.exe"],
                         sorted(file.name for file in (WORK / "sample-hosts" / "hosts").iterdir()))

    def test_samples_find_the_bindings_that_they_name(self):
        named = [(file, path) for file in SAMPLES.rglob("*") if file.name == "Cargo.toml" or file.suffix == ".js"
                 for path in re.findall(r"""(?:path = |require\()["'](\.[^"']*)""", file.read_text(encoding="utf-8"))]
        self.assertGreaterEqual(len(named), 3)
        for file, path in named:
            with self.subTest(file=str(file.relative_to(SAMPLES)), path=path):
                self.assertTrue((file.parent / path).resolve().is_relative_to(PACKAGE.resolve()))
                self.assertTrue((file.parent / path).exists())

    def test_foreign_compiler_links_its_own_import_library(self):
        if not shutil.which("lld-link-14"):
            self.skipTest("lld is not installed")
        self.assert_builds("foreign", f"-DSAMPLES={SAMPLE_HOSTS}", f"-DKERNEL32={BUILD}/samples/hosts/bare/kernel32.lib",
                           source=CONSUMER / "foreign", toolchain=str(CONSUMER / "foreign" / "toolchain.cmake"))
        self.assertIn("LumeqC.dll", run(OBJDUMP, "-p", WORK / "foreign" / "foreign.exe").stdout)

    @unittest.skipIf(RELEASE, "needs a build's GoogleTest")
    def test_sample_unit_tests_run_on_the_double_and_leave_the_library_alone(self):
        prefix = WORK / "with-double"
        for component in ("Runtime", "Development", "Samples", "Test"):
            install(prefix, "--component", component)
        self.assertEqual((BUILD / "Lumeq.dll").stat().st_size, (prefix / "bin" / "Lumeq.dll").stat().st_size)
        headers = WORK / "googletest"
        headers.mkdir()
        for part, folder in (("gtest", "googletest"), ("gmock", "googlemock")):
            (headers / part).symlink_to(f"/usr/src/googletest/{folder}/include/{part}")
        libraries = {"GTEST_LIBRARY": "gtest", "GTEST_MAIN_LIBRARY": "gtest", "GMOCK_LIBRARY": "gmock",
                     "GMOCK_MAIN_LIBRARY": "gmock_main"}
        self.assert_builds("unit-tests", f"-DCMAKE_PREFIX_PATH={prefix}", f"-DGTEST_INCLUDE_DIR={headers}",
                           *(f"-D{name}={BUILD}/lib/lib{library}.a" for name, library in libraries.items()),
                           source=prefix / "share" / "Lumeq" / "samples" / "unit-tests")
        folder = WORK / "unit-tests" / "scan_dialog_tests-on-double"
        self.assertEqual((BUILD / "double" / "Lumeq.dll").read_bytes(), (folder / "Lumeq.dll").read_bytes())
        played = run("ctest", "--test-dir", WORK / "unit-tests", "--verbose")
        self.assertEqual(0, played.returncode, played.stdout)
        self.assertIn("[  PASSED  ] 4 tests.", played.stdout)
        self.assertIn("2: 0 failures", played.stdout)

    @unittest.skipIf(RELEASE, "a release has the double")
    def test_missing_double_is_named(self):
        self.assert_refused("The recording double is not installed: install the component Test of Lumeq.",
                            configure("without-double", "-DPART=Test", source=CONSUMER / "c"))

    def test_missing_import_library_is_named(self):
        package = shutil.copytree(PACKAGE, WORK / "without-import-library", dirs_exist_ok=True)
        (package / "lib" / "libLumeqC.dll.a").unlink()
        self.assert_refused("This installation has no import library for this compiler: "
                            f"{package}/lib/libLumeqC.dll.a.",
                            configure("no-import-library", "-DPART=C", f"-DCMAKE_PREFIX_PATH={package}",
                                      source=CONSUMER / "c"))

    def test_unknown_component_is_refused(self):
        self.assert_refused("Lumeq has no component Cpp.", configure("unknown", "-DPART=Cpp", source=CONSUMER / "c"))

    def test_cpp_exports_are_refused_to_a_project_without_cpp(self):
        self.assert_refused("Enable the language CXX before looking for it.",
                            configure("without-cpp", "-DPART=Lumeq", source=CONSUMER / "c"))

    def test_checked_containers_and_old_strings_are_refused_the_cpp_exports_alone(self):
        for name, flag, reason in (
                ("checked", "_GLIBCXX_DEBUG",
                 "This Lumeq was built without _GLIBCXX_DEBUG, which changes the layout of containers."),
                ("old", "_GLIBCXX_USE_CXX11_ABI=0", "This Lumeq was built with libstdc++'s C++11 strings: do not set "
                 "_GLIBCXX_USE_CXX11_ABI to 0.")):
            with self.subTest(flag):
                self.assert_refused(reason, configure(name, flags=f"-D{flag}"))
        self.assert_builds("checked-samples", flags="-D_GLIBCXX_DEBUG", source=SAMPLE_HOSTS)

    def test_consumer_for_another_system_fails_to_configure(self):
        for component in ("Lumeq", "C", "Loader", "Test"):
            with self.subTest(component):
                script = WORK / "other-system.cmake"
                script.write_text(
                    "set(CMAKE_SYSTEM_NAME Linux)\nset(CMAKE_SIZEOF_VOID_P 8)\n"
                    f"find_package(Lumeq CONFIG REQUIRED COMPONENTS {component} PATHS {PACKAGE} NO_DEFAULT_PATH)\n")
                self.assert_refused("for 64-bit Windows. This build is not for Windows.", run("cmake", "-P", script))

    def test_consumer_that_bypasses_the_package_fails_to_compile(self):
        compiled = run(*os.environ["LUMEQ_CXX"].split(), "-std=c++17", "-D_GLIBCXX_DEBUG", "-I", PACKAGE / "include",
                       "-fsyntax-only", CONSUMER / "Consumer.cpp")
        self.assertNotEqual(0, compiled.returncode)
        self.assertIn("This Lumeq was built without _GLIBCXX_DEBUG, which changes the layout of containers.",
                      compiled.stdout)


if __name__ == "__main__":
    unittest.main()
