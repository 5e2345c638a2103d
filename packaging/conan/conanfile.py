import os

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy

required_conan_version = ">=2.0"

DEMONSTRATION = "demonstration"


class Lumeq(ConanFile):
    name = "lumeq"
    version = "1.0.0"
    description = "Usage telemetry for desktop applications, native side"
    topics = ("telemetry", "windows")
    package_type = "shared-library"
    settings = "os", "arch", "compiler", "build_type"

    # Two deployments with different keys are different packages.
    options = {"biid_key": ["ANY"]}
    options_description = {"biid_key": "key of the device identifiers: 128 lower-case hexadecimal digits, or "
                                       f"'{DEMONSTRATION}' for the public one, which hides nothing"}

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "Common/*", "LumeqApi/*", "LumeqC/*", "LumeqLib/*", "LumeqShim/*", "Runtime/*",
                        "bindings/*", "cmake/*", "include/*", "packaging/*", "samples/*", "schema/*"):
            copy(self, pattern, root, self.export_sources_folder, excludes=("*/node_modules/*", "*/target/*"))

    def validate(self):
        if self.settings.os != "Windows" or self.settings.arch != "x86_64":
            raise ConanInvalidConfiguration("Lumeq is for 64-bit Windows")
        if self.settings.compiler != "gcc" or self.settings.compiler.libcxx != "libstdc++11":
            raise ConanInvalidConfiguration("Build Lumeq with MinGW-w64's gcc and libcxx=libstdc++11. Hosts of other "
                                            "compilers use LumeqC.dll of that package.")
        key = str(self.options.biid_key)
        if key != DEMONSTRATION and (len(key) != 128 or set(key) - set("0123456789abcdef")):
            raise ConanInvalidConfiguration("-o lumeq/*:biid_key= takes 128 lower-case hexadecimal digits")

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["LUMEQ_TESTS"] = False
        toolchain.cache_variables["LUMEQ_DEVELOPMENT"] = False
        # The compiler's runtimes are linked statically, so hosts need not ship them.
        for kind in ("EXE", "SHARED", "MODULE"):
            toolchain.cache_variables[f"CMAKE_{kind}_LINKER_FLAGS_INIT"] = "-static -static-libgcc -static-libstdc++"
        if str(self.options.biid_key) != DEMONSTRATION:
            toolchain.cache_variables["LUMEQ_BIID_KEY"] = str(self.options.biid_key)
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        # The installed CMake package chooses import libraries and refuses foreign toolchains, so CMakeDeps writes none.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = [os.path.join("lib", "cmake", "Lumeq")]
        self.cpp_info.libs = ["LumeqC"]
