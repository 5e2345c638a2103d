"""What SPDX 2.3 asks of a document in JSON: a schema of the members that ours has, and the rules that no schema states."""

import re
from typing import Iterator

import jsonschema

TEXT = {"type": "string", "minLength": 1}
IDENTIFIER = {"type": "string", "pattern": "^SPDXRef-[A-Za-z0-9.-]+$"}
TEXTS = {"type": "array", "items": TEXT, "minItems": 1}


def record(required: dict, optional: dict = {}) -> dict:
    return {"type": "object", "properties": {**required, **optional}, "required": list(required),
            "additionalProperties": False}


CHECKSUM = {"anyOf": [
    record({"algorithm": {"const": algorithm}, "checksumValue": {"type": "string", "pattern": f"^[0-9a-f]{{{digits}}}$"}})
    for algorithm, digits in (("SHA1", 40), ("SHA256", 64))]}
REFERENCE = record({
    "referenceCategory": {"enum": ["OTHER", "PERSISTENT-ID", "SECURITY", "PACKAGE-MANAGER"]}, "referenceType": TEXT,
    "referenceLocator": {"type": "string", "pattern": "^pkg:[a-z]+/[^ ]+@[^ ]+$"}})
PACKAGE = record(
    {"SPDXID": IDENTIFIER, "name": TEXT, "downloadLocation": TEXT},
    {"versionInfo": TEXT, "packageFileName": TEXT, "supplier": {"type": "string", "pattern": "^(Person|Organization): "},
     "primaryPackagePurpose": {"enum": ["APPLICATION", "LIBRARY", "FRAMEWORK", "FILE", "SOURCE", "ARCHIVE", "INSTALL", "OTHER"]},
     "sourceInfo": TEXT, "filesAnalyzed": {"type": "boolean"}, "hasFiles": {"type": "array", "items": IDENTIFIER},
     "packageVerificationCode": record({"packageVerificationCodeValue": {"type": "string", "pattern": "^[0-9a-f]{40}$"}},
                                       {"packageVerificationCodeExcludedFiles": TEXTS}),
     "licenseConcluded": TEXT, "licenseDeclared": TEXT, "licenseInfoFromFiles": TEXTS, "licenseComments": TEXT,
     "copyrightText": TEXT, "externalRefs": {"type": "array", "items": REFERENCE}})
FILE = record(
    {"SPDXID": IDENTIFIER, "fileName": {"type": "string", "pattern": r"^\./"},
     "checksums": {"type": "array", "items": CHECKSUM, "contains": {"properties": {"algorithm": {"const": "SHA1"}}}}},
    {"fileTypes": {"type": "array", "minItems": 1, "items": {"enum": [
        "ARCHIVE", "BINARY", "SOURCE", "TEXT", "APPLICATION", "DOCUMENTATION", "SPDX", "IMAGE", "OTHER"]}},
     "licenseConcluded": TEXT, "licenseInfoInFiles": TEXTS, "copyrightText": TEXT})
RELATION = record({
    "spdxElementId": IDENTIFIER, "relatedSpdxElement": IDENTIFIER,
    "relationshipType": {"enum": ["DESCRIBES", "CONTAINS", "STATIC_LINK", "DYNAMIC_LINK", "DEPENDS_ON", "GENERATED_FROM"]}})
EXTRACTED = record({"licenseId": {"type": "string", "pattern": "^LicenseRef-[A-Za-z0-9.-]+$"}, "extractedText": TEXT},
                   {"name": TEXT})
DOCUMENT = record(
    {"spdxVersion": {"const": "SPDX-2.3"}, "dataLicense": {"const": "CC0-1.0"}, "SPDXID": {"const": "SPDXRef-DOCUMENT"},
     "name": TEXT, "documentNamespace": {"type": "string", "pattern": "^https?://[^#]+$"},
     "creationInfo": record({"created": {"type": "string", "pattern": r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$"},
                             "creators": {"type": "array", "minItems": 1, "items": {
                                 "type": "string", "pattern": "^(Person|Organization|Tool): "}}})},
    {"packages": {"type": "array", "items": PACKAGE}, "files": {"type": "array", "items": FILE},
     "relationships": {"type": "array", "items": RELATION},
     "hasExtractedLicensingInfos": {"type": "array", "items": EXTRACTED}})

# Of the list of SPDX, those that the packages have.
LICENCES = {"BSD-3-Clause", "GPL-3.0-or-later", "MIT", "ZPL-2.1"}
EXCEPTIONS = {"GCC-exception-3.1"}
EXPRESSION = r"({0}|LicenseRef-[\w.-]+)( WITH ({1}))?( (AND|OR) ({0}|LicenseRef-[\w.-]+)( WITH ({1}))?)*".format(
    "|".join(LICENCES), "|".join(EXCEPTIONS))


def violations(document: dict) -> Iterator[str]:
    errors = list(jsonschema.Draft7Validator(DOCUMENT).iter_errors(document))
    yield from (f"{'/'.join(map(str, error.absolute_path))}: {error.message}" for error in errors)
    if errors:
        return
    elements = [document["SPDXID"], *(entry["SPDXID"] for part in ("packages", "files") for entry in document[part])]
    yield from (f"{name} is the name of two elements" for name in {name for name in elements if elements.count(name) > 1})
    for relation in document["relationships"]:
        yield from (f"a relationship names {relation[end]}, which is not there"
                    for end in ("spdxElementId", "relatedSpdxElement") if relation[end] not in elements)
    if not any(relation["relationshipType"] == "DESCRIBES" and relation["spdxElementId"] == document["SPDXID"]
               for relation in document["relationships"]):
        yield "the document describes nothing"
    texts = {text["licenseId"] for text in document["hasExtractedLicensingInfos"]}
    for package in document["packages"]:
        yield from licence_violations(package, texts)
        yield from (f"{package['name']} has the file {name}, which is not there"
                    for name in package.get("hasFiles", []) if name not in elements)
        if package.get("filesAnalyzed", True) != ("packageVerificationCode" in package):
            yield f"{package['name']} has a verification code only if its files were analysed"


def licence_violations(package: dict, texts: set[str]) -> Iterator[str]:
    for member in ("licenseConcluded", "licenseDeclared"):
        expression = package[member]
        if expression not in ("NOASSERTION", "NONE") and not re.fullmatch(EXPRESSION, expression):
            yield f"{package['name']}: {expression} is no known licence"
        yield from (f"{package['name']}: the text of {name} is missing"
                    for name in re.findall(r"LicenseRef-[\w.-]+", expression) if name not in texts)
