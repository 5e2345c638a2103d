"""The site's reference: a page of Markdown for each public header, from Doxygen's XML."""

import re
import textwrap
import xml.etree.ElementTree as ElementTree
from pathlib import Path
from typing import Iterator

from site_doxygen import WIDTH, declaration, description, field, plain, text_of, type_of


def parameters(member: ElementTree.Element) -> str:
    rows = []
    for item in member.iter("parameteritem"):
        name = item.findtext(".//parametername")
        what = re.sub("</?p>", "", text_of(item.find("parameterdescription")))
        rows.append(f"<tr><td><code>{name}</code></td><td>{what}</td></tr>\n")
    return f'<table class="parameters"><tbody>\n{"".join(rows)}</tbody></table>\n' if rows else ""


def fenced(code: str) -> str:
    return f"```cpp\n{code}\n```\n"


def function(member: ElementTree.Element, note: str) -> str:
    name = member.findtext("name")
    return f"### {name} {{#{name}}}\n\n{fenced(declaration(member))}\n{description(member)}\n{parameters(member)}\n{note}\n"


def enumeration(member: ElementTree.Element, namespace: str) -> str:
    own = member.findtext("name")
    # Doxygen numbers enumerations without a name.
    name = "Constants" if own.startswith("@") else namespace + own
    values = "".join(f"<tr><td><code>{value.findtext('name')}</code></td>"
                     f"<td>{value.findtext('initializer', '').removeprefix('= ')}</td></tr>\n"
                     for value in member.findall("enumvalue"))
    return f'### {name} {{#{name}}}\n\n{description(member)}\n\n<table class="values"><tbody>\n{values}</tbody></table>\n\n'


def synopsis(compound: ElementTree.Element) -> str:
    """A struct or class in one block of code."""
    name = compound.findtext("compoundname").split("::")[-1]
    lines = []
    for member in compound.iter("memberdef"):
        arguments = member.findtext("argsstring", "")
        if member.get("prot") != "public" or arguments.endswith(("=delete", "=default")) or "detail::" in arguments:
            continue
        comment = plain(member)
        if comment:
            lines += textwrap.wrap(comment, WIDTH - 7, initial_indent="// ", subsequent_indent="// ")
        lines += (declaration(member) if member.get("kind") == "function" else field(member)).split("\n")
    body = "".join(f"    {line}\n" for line in lines)
    code = f"{compound.get('kind')} {name} {{\n{body}}};"
    return f"### {name} {{#{name}}}\n\n{description(compound)}\n\n{fenced(code)}\n"


def alias(member: ElementTree.Element) -> str:
    name, definition = member.findtext("name"), member.findtext("definition")
    if definition.startswith("using"):
        definition = f"using {name} = {type_of(member).removeprefix('typedef ')}"
    return f"### {name} {{#{name}}}\n\n{description(member)}\n\n{fenced(definition + ';')}\n"


def conventions(header: Path) -> str:
    """The comment at the head of a header, which is Markdown already."""
    lines = []
    for line in header.read_text(encoding="utf-8").splitlines():
        if not line.startswith("//"):
            break
        line = line[3:]
        if line.startswith("- ") and lines and lines[-1] and not lines[-1].startswith(("- ", "  ")):
            lines.append("")
        lines.append(line)
    return "\n".join(lines)


class Header:
    """What Doxygen found in a header: its own members and those of its namespaces."""

    def __init__(self, xml: Path, header: Path):
        self._header = header
        compounds = [ElementTree.parse(file).getroot().find("compounddef") for file in sorted(xml.glob("*.xml"))]
        # The roots of doxyfile.xml and index.xml are of another kind.
        self._compounds = [compound for compound in compounds if compound is not None]

    def members(self, kind: str) -> Iterator[tuple[str, ElementTree.Element]]:
        """With the part of the namespace that a host writes."""
        found = {}
        for compound in self._compounds:
            if compound.get("kind") not in ("file", "namespace") or "detail" in compound.findtext("compoundname"):
                continue
            scope = compound.findtext("compoundname") if compound.get("kind") == "namespace" else ""
            short = re.sub(r"^(Zuvan::Lumeq::API|lumeq)(::)?", "", scope)
            for member in compound.iter("memberdef"):
                if member.get("kind") == kind and self._is_here(member):
                    found[member.get("id")] = (f"{short}::" if short else "", member)
        return iter(sorted(found.values(), key=lambda entry: int(entry[1].find("location").get("line"))))

    def classes(self) -> list[ElementTree.Element]:
        found = [compound for compound in self._compounds if compound.get("kind") in ("struct", "class")
                 and self._is_here(compound) and "::detail" not in compound.findtext("compoundname")]
        return sorted(found, key=lambda compound: int(compound.find("location").get("line")))

    def _is_here(self, element: ElementTree.Element) -> bool:
        location = element.find("location")
        return location is not None and Path(location.get("file")).name == self._header.name

    def page(self, title: str, notes: dict[str, str]) -> str:
        """`notes`: what follows the functions of these names."""
        functions = "".join(function(member, notes.get(member.findtext("name"), ""))
                            for _, member in self.members("function") if not member.findtext("name").startswith("lumeq_loader_"))
        # C's `typedef struct` names a struct that is listed as such.
        classes = "".join(alias(member) for _, member in self.members("typedef")
                          if not member.findtext("definition").startswith("typedef struct"))
        classes += "".join(synopsis(compound) for compound in self.classes())
        enumerations = "".join(enumeration(member, namespace) for namespace, member in self.members("enum"))
        parts = [f"# {title}\n\nWritten from `include/Lumeq/{self._header.name}`.\n\n{conventions(self._header)}\n\n"]
        for heading, text in (("Functions", functions), ("Types", classes), ("Enumerations", enumerations)):
            if text:
                parts.append(f"## {heading}\n\n{text}")
        return "".join(parts)
