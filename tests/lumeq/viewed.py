"""Runs for `lumeq view`, written by hand, and its page read back."""

import json
import re
import subprocess
import tempfile
import unittest
from dataclasses import dataclass, field
from html.parser import HTMLParser
from pathlib import Path
from typing import Any, Optional

from program import run
from support import API, BUILD

VOID = {"br", "input", "meta", "rect"}


def log_line(message: str, function: str = "", severity: str = "TRACE", thread: str = "24000000",
             second: float = 0.0) -> str:
    """As the library writes it: with the hour plus one."""
    where = f"<{API}{function}> " if function else ""
    return f"2026-11-22T11:04:{second:06.3f}Z {severity:<8}0x{thread} | {where}{message}"


def refusal(export: str, detail: str, title: str = "Validation failed", **where) -> str:
    return log_line(f"host.exe: {title} in {API}{export}: {detail}. LumeqApi(78)", severity="ERROR", **where)


def event(action: str, an_object: str, label: str, details: Optional[dict] = None, **context) -> dict:
    record = {"app_event_action": action, "app_event_object": an_object, "app_event_object_label": label,
              "app_event_context": {"context_local": context or None}, "app_event_details": details}
    return {"operation": "PostEventInternal", "timestamp": 1795341843978, "record": record}


@dataclass
class Row:
    id: str = ""
    number: str = ""
    second: str = ""
    """The time, or in a comparison the difference."""
    call: str = ""
    outcomes: list[str] = field(default_factory=list)


class Page(HTMLParser):
    """What a browser would make of it, as far as the tests ask."""

    def __init__(self, html: str):
        super().__init__()
        self.html = html
        self.rows: list[Row] = []
        self.scripts: list[tuple[dict, str]] = []
        self.styles: list[str] = []
        self.attributes: list[tuple[str, str, str]] = []
        self.tags: set[str] = set()
        self.policy = ""
        self.open: list[tuple[str, dict]] = []
        self.text = ""
        self.feed(html)
        self.close()

    def details(self, block: str = "data-1") -> list[dict]:
        (text,) = (text for attributes, text in self.scripts if attributes.get("id") == block)
        return [json.loads(line) for line in text.split("\n")]

    def handle_starttag(self, tag, attributes):
        self.tags.add(tag)
        named = dict(attributes)
        self.attributes += [(tag, name, value or "") for name, value in attributes]
        if tag == "meta" and named.get("http-equiv") == "Content-Security-Policy":
            self.policy = named["content"]
        if tag in VOID:
            return
        self.open.append((tag, named))
        if tag == "tr" and "id" in named:
            self.rows.append(Row(named["id"]))
        elif tag == "script":
            self.scripts.append((named, ""))
        elif tag == "td" and named.get("class", "").startswith("outcome"):
            self.rows[-1].outcomes.append("")

    def handle_endtag(self, tag):
        if tag in VOID:
            return
        opened, _ = self.open.pop()
        if opened != tag:
            raise AssertionError(f"</{tag}> closes <{opened}>")

    def handle_data(self, data):
        tag = self.open[-1][0] if self.open else ""
        if tag == "script":
            self.scripts[-1] = (self.scripts[-1][0], self.scripts[-1][1] + data)
        elif tag == "style":
            self.styles.append(data)
        else:
            self.text += data
            self._add_to_row(data)

    def _add_to_row(self, data: str) -> None:
        cell = next((named.get("class", "") for tag, named in reversed(self.open) if tag == "td"), None)
        in_row = any(tag == "tr" and "id" in named for tag, named in self.open)
        if cell is None or not in_row:
            return
        row = self.rows[-1]
        if cell == "number":
            row.number += data
        elif cell in ("time", "differences"):
            row.second += data
        elif cell == "call":
            row.call += data
        elif cell.startswith("outcome"):
            row.outcomes[-1] += data


class ViewTestCase(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(dir=BUILD)))

    def write(self, name: str, *lines: Any) -> Path:
        """Each line is a text, or becomes JSON."""
        path = self.folder / name
        path.parent.mkdir(exist_ok=True)
        texts = [line if isinstance(line, str) else json.dumps(line) for line in lines]
        path.write_text("\n".join(texts) + "\n", encoding="utf-8", newline="\n")
        return path

    def write_run(self, name: str = "run", session=(), log=(), companion=(), host=()) -> Path:
        for file, lines in (("session.jsonl", session), ("Lumeq.Log.txt", log), ("companion.jsonl", companion),
                            ("host.jsonl", host)):
            if lines:
                self.write(f"{name}/{file}", *lines)
        return self.folder / name

    def view(self, *arguments) -> subprocess.CompletedProcess:
        return run("view", *map(str, arguments))

    def page(self, *arguments) -> Page:
        """The page's bytes are valid UTF-8."""
        path = self.folder / "page.html"
        viewed = self.view(*arguments, "-o", path)
        self.assertEqual((0, ""), (viewed.returncode, viewed.stderr))
        return Page(path.read_bytes().decode("utf-8"))

    def outcomes(self, *arguments) -> list[tuple[str, str]]:
        """The name and the outcome of each call."""
        return [(re.match(r"\w*", row.call)[0], row.outcomes[0]) for row in self.page(*arguments).rows]
