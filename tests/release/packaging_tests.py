"""The vcpkg port and the Conan recipe, run with stand-ins of what they call: packaging/README.md says what this shows."""

import importlib.util
import json
import shutil
import subprocess
import sys
import types
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import BUILD, ROOT  # noqa: E402
import interfaces  # noqa: E402

TOOLCHAIN = ROOT / "cmake" / "mingw-w64.cmake"
PACKAGING = ROOT / "packaging"
WORK = BUILD / "packaging-tests"
KEY = "a1" * 64

VCPKG = """
cmake_minimum_required(VERSION 3.25)
set(CURRENT_PACKAGES_DIR "@packages@")
set(PORT lumeq)
set(VCPKG_LIBRARY_LINKAGE dynamic)
include("@triplet@")
function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()
function(vcpkg_check_linkage)
  if(NOT "ONLY_DYNAMIC_LIBRARY" IN_LIST ARGN)
    message(FATAL_ERROR "static linkage is not refused")
  endif()
endfunction()
function(vcpkg_cmake_configure)
  cmake_parse_arguments(PARSE_ARGV 0 its "" SOURCE_PATH OPTIONS)
  run(${CMAKE_COMMAND} -G Ninja -S ${its_SOURCE_PATH} -B @build@ -DCMAKE_BUILD_TYPE=Release
      -DCMAKE_TOOLCHAIN_FILE=${VCPKG_CHAINLOAD_TOOLCHAIN_FILE} -DCMAKE_INSTALL_PREFIX=${CURRENT_PACKAGES_DIR}
      ${its_OPTIONS})
endfunction()
function(vcpkg_cmake_install)
  run(${CMAKE_COMMAND} --build @build@ --target install)
endfunction()
function(vcpkg_cmake_config_fixup)
  cmake_parse_arguments(PARSE_ARGV 0 its "" "PACKAGE_NAME;CONFIG_PATH" "")
  if(NOT EXISTS ${CURRENT_PACKAGES_DIR}/${its_CONFIG_PATH}/${its_PACKAGE_NAME}Config.cmake)
    message(FATAL_ERROR "no CMake package in ${its_CONFIG_PATH}")
  endif()
endfunction()
function(vcpkg_install_copyright)
  cmake_parse_arguments(PARSE_ARGV 0 its "" "" FILE_LIST)
  file(INSTALL ${its_FILE_LIST} DESTINATION ${CURRENT_PACKAGES_DIR}/share/${PORT})
endfunction()
include("@port@/portfile.cmake")
"""


def run(*command, **options) -> subprocess.CompletedProcess:
    return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          stdin=subprocess.DEVNULL, **options)


class PackageTestCase(unittest.TestCase):
    def assert_runs(self, *command, **options):
        done = run(*command, **options)
        self.assertEqual(0, done.returncode, done.stdout)

    def assert_host_builds_and_runs(self, package: Path, name: str):
        host = WORK / name
        self.assert_runs("cmake", "-G", "Ninja", "-S", PACKAGING / "conan" / "test_package", "-B", host,
                         f"-DCMAKE_TOOLCHAIN_FILE={TOOLCHAIN}", f"-DCMAKE_PREFIX_PATH={package}", "-DCMAKE_BUILD_TYPE=Release")
        self.assert_runs("cmake", "--build", host)
        self.assert_runs(ROOT / "tools" / "run-wine", host / "host.exe")

    def assert_has_key(self, library: Path):
        self.assertIn(KEY.encode("ascii"), library.read_bytes())


class VcpkgPort(PackageTestCase):
    PORT = PACKAGING / "vcpkg" / "ports" / "lumeq"

    def run_port(self, triplet: str) -> subprocess.CompletedProcess:
        folder = WORK / "vcpkg"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        (folder / "triplet.cmake").write_text(
            f'include("{PACKAGING}/vcpkg/triplets/x64-lumeq-mingw.cmake")\n{triplet}')
        script = VCPKG
        for name, value in (("packages", folder / "packages"), ("triplet", folder / "triplet.cmake"),
                            ("build", folder / "build"), ("port", self.PORT)):
            script = script.replace(f"@{name}@", str(value))
        (folder / "run.cmake").write_text(script)
        return run("cmake", "-P", folder / "run.cmake")

    def test_builds_and_installs_with_the_key_of_the_triplet(self):
        done = self.run_port(f"set(LUMEQ_BIID_KEY {KEY})\n")
        self.assertEqual(0, done.returncode, done.stdout)
        package = WORK / "vcpkg" / "packages"
        self.assert_has_key(package / "bin" / "Lumeq.dll")
        self.assertEqual(["copyright", "usage"], sorted(file.name for file in (package / "share" / "lumeq").iterdir()))
        self.assert_host_builds_and_runs(package, "vcpkg-host")

    def test_refuses_to_build_without_a_key(self):
        done = self.run_port("")
        self.assertNotEqual(0, done.returncode)
        self.assertIn("Set LUMEQ_BIID_KEY in the triplet", done.stdout)

    def test_has_the_version_of_the_project(self):
        manifest = json.loads((self.PORT / "vcpkg.json").read_text())
        self.assertEqual(("lumeq", interfaces.version()), (manifest["name"], manifest["version-semver"]))


def conan_stand_in(work: Path) -> dict[str, types.ModuleType]:
    """The modules that the recipe imports. CMake runs in earnest."""
    class ConanFile:
        def __init__(self, key: str, **settings):
            self.recipe_folder = str(PACKAGING / "conan")
            self.export_sources_folder = str(work / "sources")
            self.options = types.SimpleNamespace(biid_key=key)
            self.settings = types.SimpleNamespace(**{"os": "Windows", "arch": "x86_64", **settings})
            self.variables = {}
            self.cpp_info = types.SimpleNamespace(set_property=lambda name, value: None)

    class Toolchain:
        def __init__(self, recipe):
            self.recipe, self.cache_variables = recipe, {}

        def generate(self):
            self.recipe.variables = self.cache_variables

    class CMake:
        def __init__(self, recipe):
            self.recipe = recipe

        def run(self, *command):
            done = run("cmake", *command)
            if done.returncode != 0:
                raise AssertionError(done.stdout)

        def configure(self):
            options = [f"-D{name}={'ON' if value is True else 'OFF' if value is False else value}"
                       for name, value in self.recipe.variables.items()]
            self.run("-G", "Ninja", "-S", self.recipe.export_sources_folder, "-B", work / "build", "-DCMAKE_BUILD_TYPE=Release",
                     "-DCMAKE_SYSTEM_NAME=Windows", "-DCMAKE_SYSTEM_PROCESSOR=x86_64",
                     "-DCMAKE_C_COMPILER=x86_64-w64-mingw32-gcc-posix", "-DCMAKE_CXX_COMPILER=x86_64-w64-mingw32-g++-posix",
                     "-DCMAKE_RC_COMPILER=x86_64-w64-mingw32-windres", *options)

        def build(self):
            self.run("--build", work / "build")

        def install(self):
            self.run("--install", work / "build", "--prefix", work / "package")

    class Invalid(Exception):
        pass

    def copy(_, pattern: str, source: str, target: str, excludes=()):
        folder = pattern.removesuffix("/*")
        (shutil.copytree if folder != pattern else shutil.copy)(Path(source, folder), Path(target, folder))

    members = {"conan": {"ConanFile": ConanFile}, "conan.errors": {"ConanInvalidConfiguration": Invalid}, "conan.tools": {},
               "conan.tools.cmake": {"CMake": CMake, "CMakeToolchain": Toolchain, "cmake_layout": lambda recipe: None},
               "conan.tools.files": {"copy": copy}}
    modules = {}
    for name, attributes in members.items():
        modules[name] = types.ModuleType(name)
        vars(modules[name]).update(attributes)
    return modules


class ConanRecipe(PackageTestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = WORK / "conan"
        shutil.rmtree(cls.work, ignore_errors=True)
        (cls.work / "sources").mkdir(parents=True)
        sys.modules.update(conan_stand_in(cls.work))
        location = importlib.util.spec_from_file_location("recipe", PACKAGING / "conan" / "conanfile.py")
        cls.module = importlib.util.module_from_spec(location)
        location.loader.exec_module(cls.module)

    def recipe(self, key: str, compiler: str = "gcc", **settings):
        class Compiler(str):
            libcxx = "libstdc++11"
        return self.module.Lumeq(key, compiler=Compiler(compiler), **settings)

    def test_builds_and_packages_what_it_exports(self):
        recipe = self.recipe(KEY)
        recipe.validate()
        recipe.export_sources()
        for step in (recipe.layout, recipe.generate, recipe.build, recipe.package, recipe.package_info):
            step()
        package = self.work / "package"
        self.assert_has_key(package / "bin" / "Lumeq.dll")
        for folder in recipe.cpp_info.builddirs:
            self.assertTrue((package / folder / "LumeqConfig.cmake").exists())
        for library in recipe.cpp_info.libs:
            self.assertTrue((package / "lib" / f"lib{library}.dll.a").exists())
        self.assert_host_builds_and_runs(package, "conan-host")

    def test_refuses_other_systems_compilers_and_malformed_keys(self):
        for reason, recipe in (("64-bit Windows", self.recipe(KEY, os="Linux")), ("64-bit Windows", self.recipe(KEY, arch="x86")),
                               ("MinGW-w64's gcc", self.recipe(KEY, compiler="msvc")),
                               ("128 lower-case", self.recipe("a1")), ("128 lower-case", self.recipe(KEY.upper()))):
            with self.subTest(reason), self.assertRaisesRegex(Exception, reason):
                recipe.validate()
        self.recipe("demonstration").validate()

    def test_has_the_version_of_the_project(self):
        self.assertEqual(("lumeq", interfaces.version()), (self.module.Lumeq.name, self.module.Lumeq.version))


if __name__ == "__main__":
    unittest.main()
