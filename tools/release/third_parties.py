"""What of others ends up in the files that ship, derived from the linker's maps and from what the compiler read."""

import os
import re
import subprocess
from dataclasses import dataclass, field
from pathlib import Path, PurePosixPath

import archive
import pdb_file
from pe_file import PeFile


@dataclass(frozen=True)
class Licence:
    name: str
    expression: str
    """Of SPDX. A LicenseRef is the copyright file of the package."""
    covers: str = ""
    """The file names of the package that belong to it; all others belong to the row without."""


# By Debian package. Headers count as what they were packaged with, because their templates and inline functions are
# compiled in.
GCC = Licence("GCC runtime libraries", "GPL-3.0-or-later WITH GCC-exception-3.1")
LICENCES = {
    "gcc-mingw-w64-x86-64-posix": [GCC],
    "g++-mingw-w64-x86-64-posix": [GCC],
    "gcc-mingw-w64-x86-64-posix-runtime": [GCC],
    "mingw-w64-x86-64-dev": [
        Licence("winpthreads", "MIT AND BSD-3-Clause", r"lib(win)?pthread\.a|pthread.*\.h"),
        Licence("mingw-w64 runtime", "ZPL-2.1 AND LicenseRef-mingw-w64-runtime")],
    "mingw-w64-common": [Licence("mingw-w64 runtime", "ZPL-2.1 AND LicenseRef-mingw-w64-runtime")],
    "nlohmann-json3-dev": [Licence("JSON for Modern C++", "MIT")],
    "libcli11-dev": [Licence("CLI11", "BSD-3-Clause")],
    "mkdocs-material": [Licence("Material for MkDocs", "MIT AND LicenseRef-mkdocs-material")],
}


# Of the package.
SITE = PurePosixPath("share/doc/Lumeq")


@dataclass
class Party:
    licence: Licence
    package: str
    """Debian's, the first of several by name."""
    version: str
    upstream: str
    """Version without that of the packaging."""
    files: set[str] = field(default_factory=set)
    """Of the staged package."""

    @property
    def notice(self) -> str:
        return Path(f"/usr/share/doc/{self.package}/copyright").read_text(encoding="utf-8")


def run(*command: str, **options) -> str:
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, **options).stdout


def linked_files(link_map: Path) -> set[str]:
    """Archives with a member that was linked, and objects, as absolute paths or relative to the build."""
    text = link_map.read_text(encoding="utf-8", errors="replace")
    members, _, loaded = text.partition("Linker script and memory map")
    found = set(re.findall(r"^(\S+\.a)\(", members, re.MULTILINE))
    return found | set(re.findall(r"^LOAD (\S+\.(?:o|obj))$", loaded, re.MULTILINE))


def read_headers(build: Path, files: set[str]) -> set[str]:
    """Headers that the compiler read for objects and archives of the build, save those of the project."""
    archives = [name for name in files if name.endswith(".a") and not name.endswith(".dll.a")]
    objects = {name for name in files if name.endswith(".obj")}
    if archives:
        inputs = run("ninja", "-C", str(build), "--quiet", "-t", "inputs", *archives).split()
        objects |= {name for name in inputs if name.endswith(".obj")}
    lines = run("ninja", "-C", str(build), "--quiet", "-t", "deps", *sorted(objects)).splitlines()
    return {line.strip() for line in lines if line.startswith("    ")}


def packages_of(paths: set[str], build: Path) -> dict[str, set[str]]:
    """File names by Debian package, of those paths that no package of ours holds."""
    own = (os.path.realpath(build), os.path.realpath(build.parent / "source"), os.path.realpath(build.parents[2]))
    real = {os.path.realpath(os.path.join(build, path)) for path in paths}
    foreign = sorted(path for path in real if not path.startswith(tuple(f"{folder}/" for folder in own)))
    found: dict[str, set[str]] = {}
    for line in run("dpkg", "--search", *foreign).splitlines() if foreign else []:
        package, _, path = line.partition(": ")
        found.setdefault(package.split(":")[0], set()).add(PurePosixPath(path).name)
    return found


def versions(package: str) -> tuple[str, str]:
    """That of the package, and that of what it packages."""
    version = run("dpkg-query", "-W", "-f", "${Version}", package)
    return version, re.sub(r"^\d+:|\+ds.*|-.*", "", version)


def symbol_folders(build: Path) -> dict:
    """The folder with map and symbols of a target, by the identifier in its PDB."""
    return {pdb_file.identifier_of(pdb): pdb.parent for pdb in (build / "symbols").glob("*/*.pdb")}


def linked_into(package: Path, build: Path) -> list[Party]:
    """Raises KeyError for a package without a row in the table of licences."""
    folders = symbol_folders(build)
    parties: dict[str, Party] = {}
    for file in archive.files_in(package):
        if file.suffix not in archive.PROGRAMS:
            continue
        folder = folders[PeFile(file).symbols()[0]]
        linked = linked_files(next(folder.glob("*.map")))
        own = {name for name in linked if not os.path.isabs(name)}
        used = packages_of(linked | read_headers(build, own), build)
        for debian, names in sorted(used.items()):
            for licence in licences_of(debian, names):
                party = parties.get(licence.name) or Party(licence, debian, *versions(debian))
                parties[licence.name] = party
                party.files.add(file.relative_to(package).as_posix())
    return [parties[name] for name in sorted(parties)]


def in_the_site(package: Path) -> Party:
    """The theme of the documentation, whose scripts, styles and icons are in every page."""
    theme = "mkdocs-material"
    files = {file.relative_to(package).as_posix() for file in archive.files_in(package)
             if SITE in file.relative_to(package).parents and file.suffix in (".html", ".js", ".css")}
    return Party(LICENCES[theme][0], theme, *versions(theme), files)


def licences_of(debian: str, names: set[str]) -> set[Licence]:
    rows = LICENCES[debian]
    return {next(row for row in rows if re.fullmatch(row.covers or ".*", name)) for name in names}


HEAD = """Third-party notices

The files of this package contain code of others: compiled in, linked statically, or scripts and styles of the pages.
sbom.spdx.json lists it for each file. The texts below are those of the packages of the build machine.

The licence of the GCC runtime libraries has an exception that allows conveying a work compiled with GCC under terms of
one's own choice. Nothing here restricts how a host is licensed.
"""


def places_of(party: Party) -> list[str]:
    return sorted({f"{SITE}/" if name.startswith(f"{SITE}/") else name for name in party.files})


def notices(parties: list[Party]) -> str:
    text = HEAD + "".join(
        f"\n  {party.licence.name} {party.upstream}: {party.licence.expression}\n    in {', '.join(places_of(party))}\n"
        for party in parties)
    shown = set()
    for party in parties:
        if party.package not in shown:
            shown.add(party.package)
            names = ", ".join(its.licence.name for its in parties if its.package == party.package)
            text += f"\n\n{'=' * 78}\n{names}\n{'=' * 78}\n\n{party.notice}"
    return text
