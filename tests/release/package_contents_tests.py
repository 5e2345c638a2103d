"""The papers of a release: its list of materials, its notices, its archive.

LUMEQ_PACKAGE names the unpacked release, LUMEQ_LINK_MAPS the folder of the build with the linker's maps and symbols.
"""

import copy
import hashlib
import json
import os
import re
import subprocess
import sys
import unittest
import zipfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import ROOT, SessionTestCase, call  # noqa: E402
import pdb_file  # noqa: E402
import spdx_rules  # noqa: E402
from pe_file import PeFile  # noqa: E402

PACKAGE = Path(os.environ.get("LUMEQ_PACKAGE", ""))
LINK_MAPS = Path(os.environ.get("LUMEQ_LINK_MAPS", ""))

# By the folder in which the toolchain keeps its archives.
ORIGINS = {"GCC runtime libraries": r"/usr/lib/gcc/x86_64-w64-mingw32/12-posix/[^/]+\.a$",
           "winpthreads": r"/x86_64-w64-mingw32/lib/lib(win)?pthread\.a$",
           "mingw-w64 runtime": r"/x86_64-w64-mingw32/lib/(?!lib(win)?pthread)[^/]+\.a$"}
# By the name space, which mangled names of the debugger's information have where the headers' code was compiled in.
HEADERS = {"JSON for Modern C++": b"N8nlohmann", "CLI11": b"N3CLI"}


def executables() -> list[Path]:
    return sorted(file for file in PACKAGE.rglob("*") if file.suffix in (".dll", ".exe"))


def parties_by_symbols(file: Path) -> set[str]:
    """Whose code is in a file, without asking how the list of materials was made."""
    identifier = PeFile(file).symbols()[0]
    folder = next(pdb.parent for pdb in LINK_MAPS.rglob("*.pdb") if pdb_file.identifier_of(pdb) == identifier)
    mapped = next(folder.glob("*.map")).read_text(errors="replace")
    archives = {os.path.normpath(path) for path in re.findall(r"(\S+\.a)\([^)\s]+\)", mapped) if path.startswith("/usr/")}
    found = {party for party, pattern in ORIGINS.items() for path in archives if re.search(pattern, path)}
    unknown = [path for path in archives if not any(re.search(pattern, path) for pattern in ORIGINS.values())]
    if unknown:
        raise AssertionError(f"archives of an unknown origin: {unknown}")
    debug = next(folder.glob("*.debug")).read_bytes()
    return found | {party for party, name in HEADERS.items() if name in debug}


@unittest.skipUnless("LUMEQ_PACKAGE" in os.environ, "of a release")
class Papers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.materials = json.loads((PACKAGE / "sbom.spdx.json").read_text(encoding="utf-8"))
        cls.files = {file["SPDXID"]: file for file in cls.materials["files"]}
        cls.packages = {package["SPDXID"]: package for package in cls.materials["packages"]}

    def listed_for(self, file: Path) -> set[str]:
        name = f"./{file.relative_to(PACKAGE).as_posix()}"
        return {self.packages[relation["relatedSpdxElement"]]["name"] for relation in self.materials["relationships"]
                if relation["relationshipType"] == "STATIC_LINK" and self.files[relation["spdxElementId"]]["fileName"] == name}

    def test_list_follows_the_rules_of_spdx(self):
        self.assertEqual([], list(spdx_rules.violations(self.materials)))

    def test_list_names_what_was_linked_into_each_file(self):
        self.assertGreaterEqual(len(executables()), 5)
        for file in executables():
            with self.subTest(file.name):
                linked = parties_by_symbols(file)
                self.assertIn("GCC runtime libraries", linked)
                self.assertEqual(linked, self.listed_for(file))

    def test_list_names_the_theme_of_each_page_and_script(self):
        site = PACKAGE / "share" / "doc" / "Lumeq"
        self.assertTrue((site / "index.html").exists())
        theme = {relation["spdxElementId"] for relation in self.materials["relationships"]
                 if self.packages.get(relation["relatedSpdxElement"], {}).get("name") == "Material for MkDocs"}
        listed = {self.files[name]["fileName"] for name in theme}
        for file in site.rglob("*"):
            if file.suffix in (".html", ".js", ".css"):
                self.assertIn(f"./{file.relative_to(PACKAGE).as_posix()}", listed)

    def test_list_has_each_file_with_its_checksums(self):
        present = {f"./{file.relative_to(PACKAGE).as_posix()}": file for file in PACKAGE.rglob("*") if file.is_file()}
        del present["./sbom.spdx.json"]
        self.assertEqual(present.keys(), {file["fileName"] for file in self.files.values()})
        for entry in self.files.values():
            content = present[entry["fileName"]].read_bytes()
            for checksum in entry["checksums"]:
                self.assertEqual(hashlib.new(checksum["algorithm"], content).hexdigest(), checksum["checksumValue"])

    def test_list_has_the_versions_of_the_build_machine(self):
        for package in self.packages.values():
            for reference in package.get("externalRefs", ()):
                name, version = re.match(r"pkg:deb/debian/(.+)@(.+)\?", reference["referenceLocator"]).groups()
                installed = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", name], check=True,
                                           stdout=subprocess.PIPE, text=True).stdout
                self.assertEqual(installed, version.replace("%2B", "+").replace("%3A", ":"))

    def test_notices_have_the_texts_that_the_licences_demand(self):
        notices = (PACKAGE / "THIRD-PARTY-NOTICES.txt").read_text(encoding="utf-8")
        for package in self.packages.values():
            if package["name"] != "Lumeq":
                self.assertIn(f"{package['name']} {package['versionInfo']}: {package['licenseDeclared']}", notices)
        words = " ".join(re.sub(r"^ \.$", " ", notices, flags=re.MULTILINE).split())
        for text in (
                "GCC RUNTIME LIBRARY EXCEPTION",
                "Copyright: 2013-2022 Niels Lohmann", "The above copyright notice and this permission notice shall be included",
                "University of Cincinnati", "Redistributions in binary form must reproduce the above copyright notice",
                "2009-2016 the mingw-w64 project", "License: ZPL-2.1", "2010 Lockless Inc."):
            with self.subTest(text):
                self.assertIn(text, words)

    def test_archive_has_one_time_and_sorted_names(self):
        with zipfile.ZipFile(PACKAGE.parents[1] / "archives" / f"{PACKAGE.name}.zip") as archive:
            names = [entry.filename for entry in archive.infolist()]
            self.assertEqual(sorted(names), names)
            self.assertEqual(1, len({entry.date_time for entry in archive.infolist()}))


@unittest.skipUnless("LUMEQ_PACKAGE" in os.environ, "of a release")
class PlantedViolations(unittest.TestCase):
    def setUp(self):
        self.materials = json.loads((PACKAGE / "sbom.spdx.json").read_text(encoding="utf-8"))

    def assert_found(self, text: str):
        found = list(spdx_rules.violations(self.materials))
        self.assertTrue(any(text in violation for violation in found), found)

    def test_missing_member(self):
        del self.materials["files"][0]["checksums"]
        self.assert_found("'checksums' is a required property")

    def test_unknown_member(self):
        self.materials["packages"][1]["licence"] = "MIT"
        self.assert_found("'licence' was unexpected")

    def test_wrong_identifier(self):
        self.materials["packages"][1]["SPDXID"] = "SPDXRef-a b"
        self.assert_found("does not match")

    def test_two_of_one_name(self):
        self.materials["packages"].append(copy.deepcopy(self.materials["packages"][1]))
        self.assert_found("is the name of two elements")

    def test_relationship_to_nothing(self):
        del self.materials["packages"][1]
        self.assert_found("which is not there")

    def test_unknown_licence(self):
        self.materials["packages"][1]["licenseDeclared"] = "Freeware"
        self.assert_found("Freeware is no known licence")

    def test_missing_text(self):
        self.materials["hasExtractedLicensingInfos"] = []
        self.assert_found("the text of LicenseRef-mingw-w64-runtime is missing")

    def test_document_of_nothing(self):
        self.materials["relationships"] = [relation for relation in self.materials["relationships"]
                                           if relation["relationshipType"] != "DESCRIBES"]
        self.assert_found("the document describes nothing")


@unittest.skipUnless("LUMEQ_PACKAGE" in os.environ, "of a release")
class TemplateOfTheFactoryFile(SessionTestCase):
    TEMPLATE = PACKAGE / "share" / "Lumeq" / "LumeqConfig.template.xml"

    def test_names_the_keys_that_the_page_for_operators_explains(self):
        explained = set(re.findall(r"^\| `(\w+)` \|", (ROOT / "docs" / "operating.md").read_text(), re.MULTILINE))
        text = self.TEMPLATE.read_text()
        for key in ("ProjectId", "LUMServerUri", "AuthenticationToken", "AppDeployedId"):
            self.assertIn(key, explained)
            self.assertIn(key, text)

    def test_as_it_is_sends_nothing_and_writes_no_log(self):
        for road in ("basic", "managed"):
            with self.subTest(road):
                outcome = self.play_to_end(
                    call("SetUserOptInEx", userHasOptedIn=True),
                    call("StartupEx", appName="Scan Studio", whyType=1, howType=1, trackSystemInfo=False,
                         trackPrintQueueInfo=False),
                    call("ShutdownEx", timeoutMsec=0), factory=self.TEMPLATE.read_text(), road=road)
                self.assertEqual([], outcome.log)


if __name__ == "__main__":
    unittest.main()
