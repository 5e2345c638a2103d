"""Tests the package as its archive holds it: unpacked, with nothing of the build but what tests need besides."""

import os
import re
import shutil
import subprocess
import sys
import zipfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path


# Where the black-box tests look for the files that they test.
VIEW = {"Lumeq.dll": "bin/Lumeq.dll", "LumeqC.dll": "bin/LumeqC.dll", "lumeq.exe": "bin/lumeq.exe",
        "libLumeqC.dll.a": "lib/libLumeqC.dll.a", "LumeqC.lib": "lib/LumeqC.lib",
        "lumeq-host.exe": "share/Lumeq/samples/bin/lumeq-host.exe",
        "companion/LumeqShim.Managed.dll": "share/Lumeq/samples/bin/LumeqShim.Managed.dll"}
# Part of no package.
APPARATUS = ("CMakeCache.txt", "trust-root.exe", "samples/hosts/bare/kernel32.lib")

# The first builds hosts from the package, which a later one plays.
FIRST = "tests/host/package_tests.py"
TESTS = (
    "tests/LumeqC/sample_hosts_tests.py",
    "tests/host/ui_event_tests.py",
    "tests/host/random_session_tests.py",
    "tests/LumeqC/random_c_session_tests.py",
    "tests/LumeqC/rust_host_tests.py",
    "tests/LumeqC/node_host_tests.py",
    "tests/docs/shipped_documents_tests.py",
    "tests/lumeq/example_tests.py",
    "tests/release/package_contents_tests.py",
    "tests/release/crash_tests.py",
    "tests/host/basic_message_tests.py",
    "tests/host/device_tests.py",
    "tests/host/first_light_tests.py",
    "tests/host/pause_tests.py",
    "tests/host/task_tests.py",
    "tests/host/working_day_tests.py",
    "tests/host/library_file_tests.py",
    "tests/LumeqC/c_library_tests.py",
    "tests/lumeq/lint_tests.py",
    "tests/lumeq/schema_tests.py",
)


def test(packed: Path, source: Path, build: Path, folder: Path) -> None:
    """Ends the program if a test fails."""
    symbols = packed.with_stem(f"{packed.stem}-symbols")
    for file in (packed, symbols):
        with zipfile.ZipFile(file) as files:
            files.extractall(folder)
    package = folder / packed.stem
    view = folder / "view"
    for name, place in VIEW.items():
        put(package / place, view / name)
    for name in APPARATUS:
        put(build / name, view / name)
    # The checkout's files of Wine and Node serve the exported sources too.
    (source / "build").mkdir(exist_ok=True)
    built = Path(__file__).resolve().parents[2] / "build"
    (built / "wine").mkdir(parents=True, exist_ok=True)
    for name in ("wine", "npm"):
        (source / "build" / name).symlink_to(built / name)

    environment = dict(os.environ, LUMEQ_PACKAGE=str(package), LUMEQ_BUILD_DIR=str(view),
                       LUMEQ_SYMBOLS=str(folder / symbols.stem), LUMEQ_LINK_MAPS=str(build / "symbols"),
                       LUMEQ_TOOLCHAIN_FILE=str(source / "cmake" / "mingw-w64.cmake"), LUMEQ_CXX="x86_64-w64-mingw32-g++-posix")
    failed = [] if passes(FIRST, source, folder, environment) else [FIRST]
    for host in (view / "package-tests" / "sample-hosts" / "hosts").glob("*.exe"):
        put(host, view / "hosts" / host.name)
    put(view / "package-tests" / "foreign" / "foreign.exe", view / "hosts" / "day-msvc-c.exe")
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = pool.map(lambda name: passes(name, source, folder, environment), TESTS)
        failed += [name for name, passed in zip(TESTS, results) if not passed]
    if failed:
        sys.exit(f"The package fails {', '.join(failed)}: {folder}/*.log")


def put(file: Path, target: Path) -> None:
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy(file, target)


# A class that is skipped as a whole counts its tests as run; one whose setUpClass skips does not.
WHOLLY_SKIPPED = re.compile(rb"Ran (?:0 tests in .*\n\nOK \(skipped=|(\d+) tests? in .*\n\nOK \(skipped=\1\))")


def passes(name: str, source: Path, folder: Path, environment: dict[str, str]) -> bool:
    with open(folder / f"{Path(name).stem}.log", "w+b") as log:
        done = subprocess.run([sys.executable, "-B", source / name, "-v"], env=environment, stdin=subprocess.DEVNULL,
                              stdout=log, stderr=subprocess.STDOUT)
        log.seek(0)
        passed = "skipped" if WHOLLY_SKIPPED.search(log.read()) else "passed"
    print(f"   {passed if done.returncode == 0 else 'FAILED'} {name}", flush=True)
    return done.returncode == 0
