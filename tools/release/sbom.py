"""The list of materials: an SPDX 2.3 document of the files that ship and of what others contributed to them."""

import hashlib
import json
import re
import time
import urllib.parse
from pathlib import Path

import archive
from third_parties import Party

NAME = "sbom.spdx.json"
PACKAGE = "SPDXRef-Package-Lumeq"
FILE_TYPES = {".dll": "BINARY", ".exe": "BINARY", ".a": "ARCHIVE", ".lib": "ARCHIVE", ".md": "DOCUMENTATION",
              ".txt": "DOCUMENTATION", ".html": "DOCUMENTATION"}


def identifier(kind: str, name: str) -> str:
    return f"SPDXRef-{kind}-{re.sub('[^A-Za-z0-9.-]', '-', name.replace('-', '--').replace('/', '-'))}"


def file_entry(package: Path, file: Path) -> dict:
    name = file.relative_to(package).as_posix()
    return {
        "SPDXID": identifier("File", name),
        "fileName": f"./{name}",
        "fileTypes": [FILE_TYPES.get(file.suffix, "TEXT")],
        "checksums": [{"algorithm": algorithm.upper(), "checksumValue": archive.checksum(file, algorithm)}
                      for algorithm in ("sha1", "sha256")],
        "licenseConcluded": "NOASSERTION",
        "licenseInfoInFiles": ["NOASSERTION"],
        "copyrightText": "NOASSERTION",
    }


def verification_code(files: list[dict]) -> str:
    sums = sorted(file["checksums"][0]["checksumValue"] for file in files)
    return hashlib.sha1("".join(sums).encode("ascii")).hexdigest()


def own_package(version: str, commit: str, files: list[dict]) -> dict:
    return {
        "SPDXID": PACKAGE,
        "name": "Lumeq",
        "versionInfo": version,
        "packageFileName": f"lumeq-{version}-win64.zip",
        "supplier": "Organization: Zuvan",
        "downloadLocation": "NOASSERTION",
        "primaryPackagePurpose": "LIBRARY",
        "sourceInfo": f"commit {commit}",
        "filesAnalyzed": True,
        "packageVerificationCode": {"packageVerificationCodeValue": verification_code(files),
                                    "packageVerificationCodeExcludedFiles": [f"./{NAME}"]},
        "hasFiles": [file["SPDXID"] for file in files],
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": "NOASSERTION",
        "licenseInfoFromFiles": ["NOASSERTION"],
        "licenseComments": "The owner of Lumeq has not chosen a licence yet.",
        "copyrightText": "NOASSERTION",
    }


def foreign_package(party: Party) -> dict:
    is_code = any(kind_of(name) == "STATIC_LINK" for name in party.files)
    locator = f"pkg:deb/debian/{party.package}@{urllib.parse.quote(party.version, safe='')}?arch=amd64&distro=bookworm"
    return {
        "SPDXID": identifier("Package", party.licence.name),
        "name": party.licence.name,
        "versionInfo": party.upstream,
        "supplier": "Organization: Debian",
        "downloadLocation": "NOASSERTION",
        "primaryPackagePurpose": "LIBRARY" if is_code else "FRAMEWORK",
        "filesAnalyzed": False,
        "licenseConcluded": party.licence.expression,
        "licenseDeclared": party.licence.expression,
        "copyrightText": "NOASSERTION",
        "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl", "referenceLocator": locator}],
    }


def relation(one: str, kind: str, other: str) -> dict:
    return {"spdxElementId": one, "relationshipType": kind, "relatedSpdxElement": other}


def kind_of(name: str) -> str:
    return "STATIC_LINK" if Path(name).suffix in archive.PROGRAMS else "CONTAINS"


def document(package: Path, parties: list[Party], version: str, commit: str, epoch: int) -> dict:
    files = [file_entry(package, file) for file in archive.files_in(package) if file.name != NAME]
    relations = [relation("SPDXRef-DOCUMENT", "DESCRIBES", PACKAGE)]
    relations += [relation(PACKAGE, "CONTAINS", file["SPDXID"]) for file in files]
    relations += [relation(identifier("File", name), kind_of(name), identifier("Package", party.licence.name))
                  for party in parties for name in sorted(party.files)]
    texts = {reference: party.notice for party in parties
             for reference in re.findall(r"LicenseRef-[\w.-]+", party.licence.expression)}
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"lumeq-{version}-win64",
        "documentNamespace": f"https://spdx.org/spdxdocs/lumeq-{version}-{verification_code(files)}",
        "creationInfo": {"created": time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(epoch)),
                         "creators": ["Organization: Zuvan", "Tool: lumeq-release"]},
        "packages": [own_package(version, commit, files), *map(foreign_package, parties)],
        "files": files,
        "relationships": relations,
        "hasExtractedLicensingInfos": [{"licenseId": name, "name": name.removeprefix("LicenseRef-"), "extractedText": text}
                                       for name, text in sorted(texts.items())],
    }


def write(package: Path, parties: list[Party], version: str, commit: str, epoch: int) -> None:
    content = json.dumps(document(package, parties, version, commit, epoch), indent=2) + "\n"
    (package / NAME).write_text(content, encoding="utf-8")
