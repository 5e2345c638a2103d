#!/usr/bin/env python3
"""Makes a release of the commit that is checked out: builds it, tests the package, and writes to build/release/

  lumeq-<version>-win64.zip            what a host's developer gets
  lumeq-<version>-win64-symbols.zip    what was stripped from its files
  SHA256SUMS

Uncommitted changes are not part of it. The same commit and key make the same bytes, in whichever folder. The folder
build/release/work keeps the build, and with it the key.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path
from typing import Optional

sys.path.insert(0, str(Path(__file__).resolve().parent))
import archive  # noqa: E402
import built_package  # noqa: E402
import pdb_file  # noqa: E402
import sbom  # noqa: E402
import shipped_files  # noqa: E402
import third_parties  # noqa: E402

ROOT = Path(__file__).resolve().parents[2]
OUT = ROOT / "build" / "release"
SAMPLES = "share/Lumeq/samples"
"""In the package. Its programs have no version."""


@dataclass
class Source:
    """The commit that is released."""

    commit: str
    epoch: int
    """Its time in seconds since 1970."""
    version: str

    @property
    def name(self) -> str:
        return f"lumeq-{self.version}-win64"


@dataclass
class Made:
    """A build of it in a folder."""

    folder: Path

    def __post_init__(self):
        self.source = self.folder / "source"
        self.build = self.folder / "build"
        self.stage = self.folder / "stage"
        self.archives = self.folder / "archives"


def run(*command, **options) -> str:
    return subprocess.run([str(part) for part in command], check=True, stdout=subprocess.PIPE, text=True,
                          **options).stdout


def say(text: str) -> None:
    print(f"-- {text}", flush=True)


def checked_out() -> Source:
    if run("git", "-C", ROOT, "status", "--porcelain", "--untracked-files=no"):
        say("Uncommitted changes are not part of the release")
    commit, epoch = run("git", "-C", ROOT, "log", "-1", "--format=%H %ct").split()
    lists = run("git", "-C", ROOT, "show", "HEAD:CMakeLists.txt")
    return Source(commit, int(epoch), re.search(r"^project\(Lumeq VERSION (\S+)", lists, re.MULTILINE)[1])


def default_key() -> str:
    return re.search(r'"([0-9a-f]{128})"', (ROOT / "cmake" / "BiidKey.cmake").read_text())[1]


def key_of(arguments: argparse.Namespace) -> str:
    if arguments.demo_key:
        return default_key()
    key = arguments.key.read_text().strip()
    if not re.fullmatch("[0-9a-f]{128}", key):
        sys.exit(f"{arguments.key} does not hold 128 lower-case hexadecimal digits")
    if key == default_key():
        sys.exit("This is the public key of the demonstration, which hides nothing. Use --demo-key to release with it.")
    return key


def export(source: Source, folder: Path) -> None:
    folder.mkdir(parents=True)
    with tempfile.TemporaryFile() as packed:
        subprocess.run(["git", "-C", ROOT, "archive", source.commit], check=True, stdout=packed)
        packed.seek(0)
        subprocess.run(["tar", "-x", "-C", folder], check=True, stdin=packed)


def build(made: Made, key: str) -> None:
    # Not as an argument, which all users of the machine can read.
    cache = made.folder / "key.cmake"
    cache.touch(mode=0o600)
    cache.write_text(f'set(LUMEQ_BIID_KEY "{key}" CACHE STRING "Key of the device identifiers")\n')
    with open(made.folder / "build.log", "w", encoding="utf-8") as log:
        for command in (["cmake", "--preset", "release", "-B", made.build, "-C", cache],
                        ["cmake", "--build", made.build]):
            if subprocess.run(command, cwd=made.source, stdout=log, stderr=subprocess.STDOUT).returncode != 0:
                sys.exit(f"The build failed: {log.name}")


def components(folder: Path) -> list[str]:
    found = set()
    for script in folder.rglob("cmake_install.cmake"):
        found.update(re.findall(r'CMAKE_INSTALL_COMPONENT STREQUAL "(\w+)"', script.read_text()))
    return sorted(found)


def stage(made: Made, package: Path) -> None:
    """Installs all components. None may replace a file of another."""
    for component in components(made.build):
        with tempfile.TemporaryDirectory(dir=made.folder) as name:
            run("cmake", "--install", made.build, "--component", component, "--prefix", name)
            for file in archive.files_in(Path(name)):
                place = package / file.relative_to(name)
                if place.exists():
                    sys.exit(f"Component {component} has a second {place.relative_to(package)}")
                place.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(file, place)


def write_introduction(source: Source, made: Made, package: Path, with_demo_key: bool) -> None:
    text = (made.source / "tools" / "release" / "introduction.md.in").read_text(encoding="utf-8")
    key = ("the public key of the demonstration. Identifiers made with it hide nothing, so do not ship it"
           if with_demo_key else "the key of this deployment")
    for name, value in (("version", source.version), ("commit", source.commit), ("key", key)):
        text = text.replace(f"@{name}@", value)
    (package / "README.md").write_text(text, encoding="utf-8")


def make(source: Source, made: Made, arguments: argparse.Namespace, key: str) -> Path:
    """Returns the staged package."""
    shutil.rmtree(made.folder, ignore_errors=True)
    export(source, made.source)
    say(f"Building {source.name} of {source.commit[:12]} in {made.folder}")
    build(made, key)
    package = made.stage / source.name
    stage(made, package)
    write_introduction(source, made, package, arguments.demo_key)
    parties = [*third_parties.linked_into(package, made.build), third_parties.in_the_site(package)]
    (package / "THIRD-PARTY-NOTICES.txt").write_text(third_parties.notices(parties), encoding="utf-8")
    sbom.write(package, parties, source.version, source.commit, source.epoch)
    symbols = stage_symbols(source, made)
    made.archives.mkdir()
    for folder in (package, symbols):
        archive.write_zip(folder, made.archives / f"{folder.name}.zip", source.epoch)
    return package


def stage_symbols(source: Source, made: Made) -> Path:
    folder = made.stage / f"{source.name}-symbols"
    for file in archive.files_in(made.build / "symbols"):
        if file.suffix in (".debug", ".pdb"):
            target = folder / file.relative_to(made.build / "symbols")
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(file, target)
            if file.suffix == ".pdb":
                pdb_file.settle(target, source.epoch, str(made.build), "/lumeq/build")
    return folder


def check_files(source: Source, made: Made, package: Path) -> None:
    def version_of(file: Path) -> Optional[str]:
        return None if package / SAMPLES in file.parents else source.version

    found = [f"{file.relative_to(package)} {problem}" for file in archive.files_in(package)
             if file.suffix in archive.PROGRAMS
             for problem in shipped_files.problems_of(file, version_of(file), [str(ROOT), str(made.folder)])]
    if found:
        sys.exit("Not fit to ship:\n" + "\n".join(found))


def differences(one: Made, other: Made) -> list[str]:
    """Files of the stages and archives that are not the same in both."""
    found = []
    for part in ("stage", "archives"):
        folders = getattr(one, part), getattr(other, part)
        names = [{file.relative_to(folder) for file in archive.files_in(folder)} for folder in folders]
        found += [f"{part}/{name}" for name in sorted(names[0] ^ names[1])]
        found += [f"{part}/{name}" for name in sorted(names[0] & names[1])
                  if (folders[0] / name).read_bytes() != (folders[1] / name).read_bytes()]
    return found


def main() -> int:
    parser = argparse.ArgumentParser(prog="./release", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    keys = parser.add_mutually_exclusive_group(required=True)
    keys.add_argument("--demo-key", action="store_true", help="use the public key of the identifiers, for a trial")
    keys.add_argument("--key", metavar="FILE", type=Path,
                      help="the deployment's key of the identifiers: 128 lower-case hexadecimal digits")
    parser.add_argument("--twice", action="store_true",
                        help="build again in another folder, and fail if a byte differs")
    parser.add_argument("--no-tests", action="store_true", help="skip the tests of the package; it is no release then")
    arguments = parser.parse_args()

    key = key_of(arguments)
    source = checked_out()
    os.environ["SOURCE_DATE_EPOCH"] = str(source.epoch)
    made = Made(OUT / "work")
    package = make(source, made, arguments, key)
    check_files(source, made, package)
    if not arguments.no_tests:
        say("Testing the package")
        built_package.test(made.archives / f"{source.name}.zip", made.source, made.build, made.folder / "tests")
    if arguments.twice:
        again = Made(OUT / "again" / "in-another-folder")
        make(source, again, arguments, key)
        if found := differences(made, again):
            sys.exit("The second build differs:\n" + "\n".join(found))
        say("The second build has the same bytes")
    finished = [Path(shutil.copy(file, OUT)) for file in archive.files_in(made.archives)]
    archive.write_checksums(finished, OUT / "SHA256SUMS")
    for file in [*finished, OUT / "SHA256SUMS"]:
        say(f"{file.relative_to(ROOT)}: {file.stat().st_size:,} bytes")
    return 0


if __name__ == "__main__":
    sys.exit(main())
