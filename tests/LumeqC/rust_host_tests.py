"""The Rust crate: what its sample host leaves equals what the sample host leaves over the C++ exports."""

import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path
from unittest import mock

from day_case import BUILD, SOURCES
from first_host_case import FirstHostTestCase

CARGO, RUSTC = Path("/usr/bin/cargo"), Path("/usr/bin/rustc")
TARGET = "x86_64-pc-windows-gnu"
WORK = BUILD / "rust"
ENVIRONMENT = {
    # Another toolchain may come first on the path, without this target.
    "RUSTC": str(RUSTC), "RUSTDOC": "/usr/bin/rustdoc", "CARGO_HOME": str(WORK / "home"),
    "CARGO_TARGET_DIR": str(WORK), "CARGO_NET_OFFLINE": "true", "LUMEQ_LIB_DIR": str(WORK / "lib"),
    "CARGO_TARGET_X86_64_PC_WINDOWS_GNU_LINKER": "x86_64-w64-mingw32-gcc-posix",
    # The crate stands as it is written: its sources must compile without a warning.
    "RUSTFLAGS": "-D warnings",
}


def has_rust() -> bool:
    return CARGO.exists() and RUSTC.exists() and Path(f"/usr/lib/rustlib/{TARGET}").exists()


@unittest.skipUnless(has_rust(), "Rust for Windows is not installed: tools/setup --all")
@mock.patch.dict(os.environ, ENVIRONMENT)
class RustHost(FirstHostTestCase):
    def cargo(self, *arguments: str, folder: Path) -> subprocess.CompletedProcess:
        return subprocess.run([CARGO, *arguments, "--target", TARGET], cwd=folder, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def build(self, folder: Path) -> subprocess.CompletedProcess:
        (WORK / "lib").mkdir(parents=True, exist_ok=True)
        shutil.copy(BUILD / "libLumeqC.dll.a", WORK / "lib")
        return self.cargo("build", folder=folder)

    def program(self, main: str) -> Path:
        """A project of its own over the crate."""
        folder = WORK / "program"
        (folder / "src").mkdir(parents=True, exist_ok=True)
        (folder / "Cargo.toml").write_text(
            '[package]\nname = "program"\nversion = "1.0.0"\nedition = "2021"\n[workspace]\n[dependencies]\n'
            f'lumeq = {{ path = "{SOURCES}/bindings/rust" }}\n')
        (folder / "src" / "main.rs").write_text(main)
        return folder

    def built_sample(self, folder: str, name: str) -> Path:
        """The program of a sample. Cargo writes into its folder, so it is copied, with the crate that its manifest names."""
        copies = [shutil.copytree(SOURCES / part, WORK / "sources" / part, dirs_exist_ok=True)
                  for part in ("bindings/rust", folder)]
        built = self.build(copies[1])
        self.assertEqual(0, built.returncode, built.stdout)
        return WORK / TARGET / "debug" / f"{name}.exe"

    def test_plays_the_day(self):
        self.assert_plays_the_day(self.built_sample("samples/hosts/rust", "day-rust"))

    def test_prints_the_state(self):
        self.assert_prints_the_state("State { dropped_count: 0, is_disabled: false, choice: No, is_paused: false, "
                                     "road: Managed, uses_worker_thread: false, queued_calls: 0 }",
                                     self.built_sample("samples/hosts/rust", "day-rust"))

    def test_first_host_leaves_its_records(self):
        self.assert_leaves_its_records(self.built_sample("samples/start/rust", "scan-studio"))

    def test_wrong_details_and_wrong_enumeration_do_not_compile(self):
        good = "use lumeq::*; fn main() { Task::<DeviceConfig>::begin(&Context::default())" \
               '.complete("success", &DeviceConfigDetails { setting: Setting::Unknown }); }'
        built = self.build(self.program(good))
        self.assertEqual(0, built.returncode, built.stdout)
        for old, new, message in (("DeviceConfig>", "ScanAcquire>", "Details<lumeq::ScanAcquire>` is not"),
                                  ("Setting::", "How::", "mismatched types")):
            with self.subTest(new):
                built = self.build(self.program(good.replace(old, new)))
                self.assertNotEqual(0, built.returncode)
                self.assertIn(message, built.stdout)


if __name__ == "__main__":
    unittest.main()
