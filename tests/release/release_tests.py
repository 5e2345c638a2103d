"""The version in each place that states it, the form of the changelog, and the steps of ./release that need no build."""

import argparse
import json
import os
import re
import subprocess
import tempfile
import unittest
import zipfile
from datetime import date
from pathlib import Path

from release_tools import ROOT
import archive
import codeview
import interfaces
import make
import pdb_file
from pe_file import PeFile

VERSION = interfaces.version()
CHANGELOG = (ROOT / "CHANGELOG.md").read_text(encoding="utf-8")


class Version(unittest.TestCase):
    def test_is_the_same_in_every_place(self):
        header = (ROOT / "include" / "Lumeq" / "lumeq.h").read_text(encoding="utf-8")
        numbers = re.findall(r"#define LUMEQ_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", header)
        crate = (ROOT / "bindings" / "rust" / "Cargo.toml").read_text(encoding="utf-8")
        module = json.loads((ROOT / "bindings" / "node" / "package.json").read_text(encoding="utf-8"))
        self.assertEqual(VERSION, ".".join(numbers))
        self.assertEqual(VERSION, re.search(r'^version = "(.*)"$', crate, re.MULTILINE)[1])
        self.assertEqual(VERSION, module["version"])

    def test_is_a_semantic_one(self):
        self.assertRegex(VERSION, r"^(0|[1-9]\d*)\.(0|[1-9]\d*)\.(0|[1-9]\d*)$")


class Changelog(unittest.TestCase):
    def test_has_a_dated_section_for_the_version(self):
        releases = re.findall(r"^## \[(.+?)\](?: - (\S+))?$", CHANGELOG, re.MULTILINE)
        self.assertEqual(("Unreleased", ""), releases[0])
        self.assertIn(VERSION, dict(releases))
        for version, day in releases[1:]:
            with self.subTest(version):
                self.assertEqual(day, date.fromisoformat(day).isoformat())

    def test_has_no_headings_but_those_of_its_form(self):
        kinds = re.findall(r"^### (.*)$", CHANGELOG, re.MULTILINE)
        self.assertLessEqual(set(kinds), {"Added", "Changed", "Deprecated", "Removed", "Fixed", "Security"})
        self.assertEqual([], re.findall(r"^#{4,}|^## [^\[].*$", CHANGELOG, re.MULTILINE))


class Keys(unittest.TestCase):
    def key_of(self, text: str) -> str:
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "key")
            file.write_text(text)
            return make.key_of(argparse.Namespace(demo_key=False, key=file))

    def test_of_a_file(self):
        self.assertEqual("0f" * 64, self.key_of("0f" * 64 + "\n"))

    def test_malformed_and_public_ones_are_refused(self):
        for text, reason in (("0f" * 63, "does not hold 128"), ("0F" * 64, "does not hold 128"), ("", "does not hold 128"),
                             (make.default_key(), "Use --demo-key")):
            with self.subTest(text), self.assertRaisesRegex(SystemExit, reason):
                self.key_of(text)

    def test_public_one_needs_its_option(self):
        self.assertEqual(make.default_key(), make.key_of(argparse.Namespace(demo_key=True, key=None)))


class Archive(unittest.TestCase):
    EPOCH = 1_700_000_000

    def packed(self, folder: Path, names: list[str], mode: int) -> bytes:
        package = folder / "package"
        for name in names:
            file = package / name
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(name)
            file.chmod(mode)
            os.utime(file, (mode, mode))
        archive.write_zip(package, folder / "package.zip", self.EPOCH)
        return (folder / "package.zip").read_bytes()

    def test_depends_on_nothing_but_the_files(self):
        names = ["b/one.dll", "a.txt", "b-c.txt", "b/deep/two.h"]
        with tempfile.TemporaryDirectory() as one, tempfile.TemporaryDirectory() as other:
            first = self.packed(Path(one), names, 0o644)
            self.assertEqual(first, self.packed(Path(other), names[::-1], 0o755))
            with zipfile.ZipFile(Path(one, "package.zip")) as packed:
                self.assertEqual([f"package/{name}" for name in sorted(names)], packed.namelist())
                self.assertEqual({(2023, 11, 14, 22, 13, 20)}, {entry.date_time for entry in packed.infolist()})

    def test_another_file_makes_another_archive(self):
        with tempfile.TemporaryDirectory() as one, tempfile.TemporaryDirectory() as other:
            self.assertNotEqual(self.packed(Path(one), ["a"], 0o644), self.packed(Path(other), ["b"], 0o644))

    def test_differing_builds_are_noticed(self):
        with tempfile.TemporaryDirectory() as folder:
            builds = make.Made(Path(folder, "one")), make.Made(Path(folder, "other"))
            for build in builds:
                for part in (build.stage, build.archives):
                    part.mkdir(parents=True)
                (build.stage / "same").write_text("same")
                (build.stage / "file").write_text("text")
            self.assertEqual([], make.differences(*builds))
            (builds[0].stage / "file").write_text("other")
            (builds[1].archives / "more").write_text("")
            self.assertEqual(["stage/file", "archives/more"], make.differences(*builds))


class CodeView(unittest.TestCase):
    """What the linker and LLVM make of what the tool adds to GCC's output."""

    HEADER = "__attribute__((always_inline)) inline int inner(int x) {\n    return x * x * 7;\n}\n"
    SOURCE = """namespace { __attribute__((noinline)) int hidden(int x) {
    return x * 3;
} }
template <class T> __attribute__((noinline)) T twice(T x) {
    return x + x;
}
extern "C" int zoom(int x) {
    return hidden(x) + twice(x);
}
#include "inner.h"
extern "C" int outer(int x) {
    return inner(x);
}
"""

    def test_names_functions_and_lines(self):
        with tempfile.TemporaryDirectory() as name:
            folder = Path(name)
            (folder / "zoom.cpp").write_text(self.SOURCE)
            (folder / "inner.h").write_text(self.HEADER)
            wrapper = f"python3,{ROOT}/tools/release/codeview.py"
            for command in (["-c", "zoom.cpp", "-g", "-O1", "-wrapper", wrapper, "-o", "zoom.o"],
                            ["-shared", "-nostdlib", "-Wl,--build-id,--pdb=zoom.pdb,--entry=zoom", "zoom.o", "-o", "zoom.dll"]):
                subprocess.run(["x86_64-w64-mingw32-g++-posix", *command], cwd=folder, check=True)
            symbols = subprocess.run(["x86_64-w64-mingw32-nm", "zoom.dll"], cwd=folder, check=True, stdout=subprocess.PIPE,
                                     text=True).stdout
            pdb_file.settle(folder / "zoom.pdb", 0, name, "/zoom")
            subprocess.run(["x86_64-w64-mingw32-strip", "zoom.dll"], cwd=folder, check=True)
            for symbol, function, line in (("_ZN12_GLOBAL__N_16hiddenEi", "(anonymous namespace)::hidden(int)", 1),
                                           ("_Z5twiceIiET_S0_", "int twice<int>(int)", 4), ("zoom", "zoom", 7),
                                           ("outer", "outer", 11)):
                with self.subTest(symbol):
                    address = re.search(rf"^(\w+) . {symbol}$", symbols, re.MULTILINE)[1]
                    shown = subprocess.run(["llvm-symbolizer-14", "--obj=zoom.dll", f"0x{address}"], cwd=folder, check=True,
                                           stdout=subprocess.PIPE, text=True).stdout.split("\n")
                    self.assertEqual(function, shown[0])
                    self.assertRegex(shown[1], rf"zoom\.cpp:{line}:0$")
            # The code of the inlined function, whose lines are those of another file.
            address = int(re.search(r"^(\w+) . outer$", symbols, re.MULTILINE)[1], 16)
            shown = subprocess.run(["llvm-symbolizer-14", "--obj=zoom.dll", f"{address + 4:#x}"], cwd=folder, check=True,
                                   stdout=subprocess.PIPE, text=True).stdout.split("\n")
            self.assertEqual("outer", shown[0])
            self.assertRegex(shown[1], r"zoom\.cpp:1[0-2]:0$")

    def test_adds_nothing_to_assembly_without_functions(self):
        text = '\t.file\t"x.cpp"\n\t.data\n'
        self.assertEqual(text, codeview.Assembly(text).with_codeview())


class Pdb(unittest.TestCase):
    EPOCH = 1_700_000_000

    def linked(self, folder: Path) -> Path:
        """A PDB of the linker's, of an object in that folder."""
        folder.mkdir(parents=True)
        (folder / "zoom.c").write_text("int zoom(int x) { return x + 1; }\n")
        for command in (["-c", "zoom.c", "-o", "zoom.o"],
                        ["-shared", "-nostdlib", "-Wl,--no-insert-timestamp,--build-id,--pdb=zoom.pdb,--entry=zoom", "zoom.o", "-o", "zoom.dll"]):
            subprocess.run(["x86_64-w64-mingw32-gcc-posix", *command], cwd=folder, check=True)
        return folder / "zoom.pdb"

    def test_of_two_folders_are_the_same(self):
        with tempfile.TemporaryDirectory() as folder:
            places = Path(folder, "one"), Path(folder, "in", "another-folder")
            files = [self.linked(place) for place in places]
            before = [pdb_file.read(file) for file in files]
            self.assertNotEqual(files[0].read_bytes(), files[1].read_bytes())
            for file, place in zip(files, places):
                pdb_file.settle(file, self.EPOCH, str(place), "/zoom")
            self.assertEqual(files[0].read_bytes(), files[1].read_bytes())
            after = pdb_file.read(files[0])
            self.assertIn(b"/zoom/zoom.o\0", after.streams[pdb_file.OBJECTS])
            self.assertNotIn(folder.encode(), files[0].read_bytes())
            changed = [number for number, streams in enumerate(zip(before[0].streams, after.streams)) if len(set(streams)) > 1]
            # The last is that of the linker itself.
            self.assertEqual([pdb_file.INFORMATION, pdb_file.OBJECTS], changed[:2])
            self.assertEqual(3, len(changed))

    def test_has_the_identifier_of_its_file(self):
        with tempfile.TemporaryDirectory() as folder:
            file = self.linked(Path(folder, "one"))
            identifier, age, name = PeFile(file.with_suffix(".dll")).symbols()
            self.assertEqual((identifier, 1, "zoom.pdb"), (pdb_file.identifier_of(file), age, name))

    def test_of_many_blocks_is_read_as_it_was_written(self):
        pdb = pdb_file.Pdb(64, [b"", bytes(range(200)), b"x" * 64, b"y" * 9000])
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "x.pdb")
            pdb_file.write(pdb, file)
            self.assertEqual(pdb, pdb_file.read(file))
            content = file.read_bytes()
            self.assertEqual([0, 0], [sum(content[64 * number:64 * (number + 1)]) for number in (65, 66)])

    def test_other_files_are_refused(self):
        with self.assertRaises(ValueError):
            pdb_file.identifier_of(ROOT / "README.md")


if __name__ == "__main__":
    unittest.main()
