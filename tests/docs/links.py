"""The links of a document that lead nowhere, and what of its HTML the tests look at."""

import functools
import re
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urljoin, urlparse

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "tools"))
import site_pages  # noqa: E402

ADDRESSES = {"a": "href", "link": "href", "script": "src", "img": "src", "iframe": "src"}


class Page(HTMLParser):
    def __init__(self, text: str):
        super().__init__()
        self.links: list[tuple[str, str]] = []
        """The element and the address."""
        self.ids: set[str] = set()
        self.headings: list[int] = []
        self._is_content = False
        self.feed(text)

    def handle_starttag(self, tag: str, attributes: list) -> None:
        values = dict(attributes)
        self.ids.add(values.get("id") or values.get("name"))
        if tag in ADDRESSES and values.get(ADDRESSES[tag]):
            self.links.append((tag, values[ADDRESSES[tag]]))
        self._is_content |= tag == "article"
        if self._is_content and re.fullmatch("h[1-6]", tag):
            self.headings.append(int(tag[1]))

    def handle_endtag(self, tag: str) -> None:
        self._is_content &= tag != "article"


@functools.cache
def page(file: Path) -> Page:
    return Page(file.read_text(encoding="utf-8"))


def anchors(file: Path) -> set[str]:
    """Of the headings, as those who show Markdown make them."""
    found: dict[str, int] = {}
    for line, is_text in site_pages.outside_code(file.read_text(encoding="utf-8")):
        if is_text and re.match("#+ ", line):
            heading = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", line.lstrip("#").strip())
            slug = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
            found[slug] = found.get(slug, 0) + 1
    return {slug if number == 0 else f"{slug}-{number}" for slug, times in found.items() for number in range(times)}


def dead_links(document: Path, root: Path) -> list[str]:
    """Those that leave the folder `root`, and those to no file or to no heading or element of it."""
    return (_dead_links_of_html if document.suffix == ".html" else _dead_links_of_markdown)(document, root)


def _dead_links_of_markdown(document: Path, root: Path) -> list[str]:
    found = []
    for link in site_pages.links(document.read_text(encoding="utf-8")):
        target = link["target"]
        if site_pages.is_external(target):
            continue
        file, anchor = site_pages.target_of(document, target)
        if root not in file.parents or not file.exists():
            found.append(f"{target}: no such file")
        elif anchor and file.suffix == ".md" and anchor not in anchors(file):
            found.append(f"{target}: no such heading")
    return found


def _dead_links_of_html(document: Path, root: Path) -> list[str]:
    return [address for tag, address in page(document).links
            if not (_leads_somewhere(document, root, address) or tag == "a" and address.startswith("https://"))]


def _leads_somewhere(document: Path, root: Path, address: str) -> bool:
    parts = urlparse(urljoin(document.as_uri(), address))
    target = Path(unquote(parts.path))
    if target.is_dir():
        target = target / "index.html"
    return (parts.scheme == "file" and root in target.parents and target.is_file()
            and (not parts.fragment or target.suffix != ".html" or unquote(parts.fragment) in page(target).ids))
