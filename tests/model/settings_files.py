"""The settings files that a session finds, in every state that a file can have."""

from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable
from xml.sax.saxutils import escape

FOLDER = "folder"
"""The defect of a folder that has the file's name."""


def _split_by_a_comment(value: str) -> str:
    return f"{escape(value[:1])}<!-- in between -->{escape(value[1:])}"


def _as_references(value: str) -> str:
    return "".join(f"&#{ord(character)};" for character in value)


def _as_data(value: str) -> str:
    return f"<![CDATA[{value}]]>"


# The text before the root element, how a value is written, and the text between elements. All mean the same.
LAYOUTS: dict[str, tuple[str, Callable[[str], str], str]] = {
    "plain": ("", escape, ""),
    "spread": ("\n<!-- by hand -->\n", escape, "\n  <!-- one more -->\n\t"),
    "cdata": ("\n", _as_data, ""),
    "references": ("", _as_references, "\r\n"),
    "comments": ("<!---->", _split_by_a_comment, "<!-- <Log>off</Log> -->"),
    "instructions": ("<?editor tabs?>", escape, "<?editor fold?>"),
}
ENCODINGS: dict[str, Callable[[str], bytes]] = {
    "utf-8": str.encode,
    "utf-8 with a declaration": lambda text: ('<?xml version="1.0" encoding="utf-8"?>' + text).encode(),
    "utf-8 with a mark": lambda text: text.encode("utf-8-sig"),
    "utf-16": lambda text: ("\ufeff" + text).encode("utf-16-le"),
    "utf-16 the other way round": lambda text: ("\ufeff" + text).encode("utf-16-be"),
    "latin-1": lambda text: ('<?xml version="1.0" encoding="ISO-8859-1"?>' + text).encode("latin-1"),
}
# What makes a file unreadable, from its plain text.
DEFECTS: dict[str, Callable[[str], bytes]] = {
    "empty": lambda text: b"",
    "white space": lambda text: b" \r\n",
    "no root": lambda text: b"<!-- nothing -->",
    "no XML": lambda text: b"settings",
    "cut short": lambda text: text[:-1].encode(),
    "no end": lambda text: text.rpartition("<")[0].encode(),
    "two roots": lambda text: (text * 2).encode(),
    "crossed elements": lambda text: text.replace(">", "><a><b></a></b>", 1).encode(),
    "attribute twice": lambda text: text.replace(">", ' a="1" a="2">', 1).encode(),
    "control character": lambda text: text.replace(">", ">\x01", 1).encode(),
    "unknown reference": lambda text: text.replace(">", ">&nothing;", 1).encode(),
    "wrong bytes": lambda text: text.encode().replace(b">", b">\xc3\x28", 1),
}


@dataclass
class SettingsFile:
    """All of it can be written as JSON."""

    elements: list[list[str]] = field(default_factory=list)
    """Key and value of each. A key may occur twice."""
    root: str = "LumeqConfig"
    attributes: dict[str, str] = field(default_factory=lambda: {"version": "4.0"})
    """Those of the root."""
    layout: str = "plain"
    encoding: str = "utf-8"
    defect: str = ""
    """One of DEFECTS, or FOLDER."""
    read_only: bool = False

    def text(self, key: str) -> str:
        return next((value for name, value in self.elements if name == key), "")

    def content(self) -> bytes:
        """Not for a folder."""
        if self.defect:
            return DEFECTS[self.defect](self._document("plain"))
        return ENCODINGS[self.encoding](self._document(self.layout))

    def make(self, path: Path) -> None:
        path.parent.mkdir(parents=True, exist_ok=True)
        if self.defect == FOLDER:
            path.mkdir()
            return
        path.write_bytes(self.content())
        if self.read_only:
            path.chmod(0o444)

    def _document(self, layout: str) -> str:
        before, written, between = LAYOUTS[layout]
        attributes = "".join(f' {name}="{escape(value)}"' for name, value in self.attributes.items())
        return (f"{before}<{self.root}{attributes}>"
                + "".join(f"{between}<{name}>{written(value)}</{name}>" for name, value in self.elements)
                + f"{between}</{self.root}>")
