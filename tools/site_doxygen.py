"""Doxygen for the site's reference: its XML of the public headers, and the texts and declarations in it."""

import html
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

WIDTH = 90
CODE = re.compile(r"`([^`]*)`")
QUOTED = re.compile(r'("[^"]*")')
HEX = re.compile(r"x-([0-9a-f]*)-x")
SETTINGS = """
OUTPUT_DIRECTORY = {output}
INPUT = {headers}
FILTER_PATTERNS = *="{python} -B {filter}"
GENERATE_HTML = NO
GENERATE_LATEX = NO
GENERATE_XML = YES
XML_PROGRAMLISTING = NO
EXTRACT_ALL = YES
WARN_IF_UNDOCUMENTED = NO
WARN_AS_ERROR = YES
QUIET = YES
MACRO_EXPANSION = YES
EXPAND_ONLY_PREDEF = YES
PREDEFINED = LUMEQ_API= LUMEQ_C_API= LUMEQ_TEST_API= __cplusplus=201703L
SORT_MEMBER_DOCS = NO
SORT_BRIEF_DOCS = NO
"""


def filtered(line: str) -> str:
    """A comment line as Doxygen must see it. It reads commands and the ends of comments even inside code spans, so these
    pass as hexadecimal; elsewhere its special characters are escaped."""
    if "///" not in line:
        return line
    code, mark, comment = re.split(r"(///<?)", line, maxsplit=1)
    parts = CODE.split(comment)
    parts[::2] = map(_escaped, parts[::2])
    parts[1::2] = [f"`x-{part.encode().hex()}-x`" for part in parts[1::2]]
    return f"{code}{mark}{''.join(parts)}"


def _escaped(text: str) -> str:
    """Doxygen takes what is in quotation marks as it is."""
    parts = QUOTED.split(text)
    parts[::2] = [re.sub(r"([\\%<>&#])", r"\\\1", part) for part in parts[::2]]
    return "".join(parts)


def run_doxygen(headers: list[Path], output: Path) -> Path:
    """Returns the folder of the XML files."""
    output.mkdir(parents=True, exist_ok=True)
    settings = SETTINGS.format(output=output, headers=" ".join(map(str, headers)), python=sys.executable, filter=__file__)
    subprocess.run(["doxygen", "-"], input=settings, text=True, check=True)
    return output / "xml"


def text_of(element: ElementTree.Element) -> str:
    """The text of a description in HTML, without its parameters."""
    parts = [html.escape(element.text or "", quote=False)]
    for child in element:
        if child.tag not in ("parameterlist", "simplesect"):
            inner = text_of(child)
            parts.append({"computeroutput": f"<code>{_decoded(inner)}</code>", "para": f"<p>{inner}</p>"}
                         .get(child.tag, inner))
        parts.append(html.escape(child.tail or "", quote=False))
    return "".join(parts).replace("<p> </p>", "").strip()


def _decoded(text: str) -> str:
    return HEX.sub(lambda found: html.escape(bytes.fromhex(found[1]).decode(), quote=False), text)


def description(member: ElementTree.Element) -> str:
    return text_of(member.find("briefdescription")) + text_of(member.find("detaileddescription"))


def plain(member: ElementTree.Element) -> str:
    return " ".join(html.unescape(re.sub("<[^>]*>", "", description(member))).split())


def text_in(element: ElementTree.Element) -> str:
    return "".join(element.itertext()).strip()


def type_of(member: ElementTree.Element) -> str:
    """As the headers write it: Doxygen sets spaces before * and & and inside angle brackets."""
    text = re.sub(r"\s+([*&])", r"\1", text_in(member.find("type")).replace("< ", "<").replace(" >", ">"))
    return text.removeprefix("static inline ").removeprefix("constexpr ")


def field(member: ElementTree.Element) -> str:
    return f"{type_of(member)} {member.findtext('name')};"


def argument(parameter: ElementTree.Element) -> str:
    default = parameter.find("defval")
    return (f"{type_of(parameter)} {parameter.findtext('declname', '')}".strip() + parameter.findtext("array", "")
            + (f" = {text_in(default)}" if default is not None else ""))


def declaration(member: ElementTree.Element) -> str:
    arguments = [argument(parameter) for parameter in member.findall("param")]
    head = f"{type_of(member)} {member.findtext('name')}".strip()
    tail = " const" if member.get("const") == "yes" else ""
    one_line = f"{head}({', '.join(arguments)}){tail};"
    if len(one_line) <= WIDTH:
        return one_line
    return head + "(\n    " + ",\n    ".join(arguments) + f"){tail};"


if __name__ == "__main__":
    sys.stdout.writelines(map(filtered, open(sys.argv[1], encoding="utf-8")))
