"""The site's pages: the Markdown files of the project, with their links and snippets resolved.

A page links to another file of the project, and shows a picture, as any Markdown file does. On the site, a linked file
that is no page gets one that shows its text. A paragraph that is only a link with the title "snippet" becomes the file's
code, and with the title "snippet NAME" what the file has between the lines [NAME] and [/NAME].
"""

import os
import re
import shutil
from pathlib import Path, PurePosixPath
from typing import Iterator, Optional

ROOT = Path(__file__).resolve().parent.parent
LINK = re.compile(r"(?P<image>!?)\[(?P<text>(?:[^\[\]]|\[[^\]]*\])*)\]\((?P<target>[^()\s]+)(?: \"(?P<title>[^\"]*)\")?\)")
SNIPPET = re.compile(r"snippet(?: (?P<name>[\w-]+))?")
MARKER = re.compile(r"^\s*(//|/\*|#)\s*\[(?P<name>/?[\w-]+)\]\s*(\*/)?\s*$")
LANGUAGES = {".c": "c", ".h": "cpp", ".hpp": "cpp", ".cpp": "cpp", ".js": "javascript", ".json": "json", ".py": "python",
             ".rs": "rust", ".toml": "toml", ".txt": "text", ".xml": "xml", ".cmake": "cmake"}
SOURCES = "source"
"""The folder of the pages that show files."""
FENCE = re.compile(r"^ *(```|~~~)")
class BadPage(Exception):
    """A link or a snippet that leads nowhere."""


def markdown_files() -> list[Path]:
    """All of the project."""
    found = []
    for folder, folders, names in os.walk(ROOT):
        folders[:] = [name for name in folders if name not in ("build", "node_modules", "target", ".git")]
        found += [Path(folder, name) for name in names if name.endswith(".md")]
    return sorted(found)


def pages() -> dict[Path, PurePosixPath]:
    """The files that are pages, and where each is on the site: all but the project's first page and templates."""
    docs = ROOT / "docs"
    return {file: PurePosixPath(file.relative_to(docs if docs in file.parents else ROOT)) for file in markdown_files()
            if file != ROOT / "README.md" and ".github" not in file.parts}


def outside_code(text: str) -> Iterator[tuple[str, bool]]:
    """The lines of a page, and whether each is outside of fenced code."""
    fence: Optional[str] = None
    for line in text.split("\n"):
        mark = FENCE.match(line)
        yield line, fence is None and not mark
        if mark and fence is None:
            fence = mark[1]
        elif mark and mark[1] == fence:
            fence = None


def links(text: str) -> Iterator[re.Match]:
    for line, is_text in outside_code(text):
        if is_text:
            # A code span may look like a link.
            yield from LINK.finditer(re.sub(r"`[^`]*`", lambda span: re.sub(r"[\[\]]", "_", span[0]), line))


def is_external(target: str) -> bool:
    return re.match(r"[a-z]+:", target) is not None


def target_of(page: Path, target: str) -> tuple[Path, str]:
    """The file and the anchor."""
    path, _, anchor = target.partition("#")
    return (page if not path else Path(os.path.normpath(page.parent / path))), anchor


def snippet(file: Path, name: Optional[str]) -> str:
    """The file without its markers, or the part of it that has this name."""
    lines, inside, found = [], name is None, name is None
    for line in file.read_text(encoding="utf-8").splitlines():
        marker = MARKER.match(line)
        if not marker:
            lines += [line] * inside
        elif marker["name"] == name:
            inside = found = True
        elif marker["name"] == f"/{name}":
            inside = False
    if not found or (name and inside):
        raise BadPage(f"{file.relative_to(ROOT)} has no snippet {name}")
    indent = min((len(line) - len(line.lstrip()) for line in lines if line.strip()), default=0)
    return "\n".join(line[indent:] for line in lines).strip("\n")


def language_of(file: Path) -> str:
    if file.name == "CMakeLists.txt":
        return "cmake"
    first = file.read_text(encoding="utf-8", errors="replace").partition("\n")[0]
    by_head = "python" if "python" in first else "bash" if first.startswith("#!") else "text"
    return LANGUAGES.get(file.suffix, by_head)


def code_block(file: Path, code: str) -> str:
    fence = "````" if "```" in code else "```"
    return f'{fence} {{ .{language_of(file)} title="{file.relative_to(ROOT)}" }}\n{code}\n{fence}'


class Site:
    """Collects the pages in a folder."""

    def __init__(self, folder: Path, written_from: dict[Path, PurePosixPath]):
        """`written_from`: files that have a page which is not written here."""
        self._folder = folder
        self._pages = pages()
        self._places = {**self._pages, **written_from}
        self._shown: set[Path] = set()

    def write(self, place: PurePosixPath, text: str) -> None:
        file = self._folder / place
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def write_pages(self) -> None:
        for page, place in self._pages.items():
            self.write(place, self._resolved(page, place))
        for file in sorted(self._shown):
            self.write(self._place_of(file), "---\nhide: [navigation, toc]\n---\n\n"
                       f"# {file.name}\n\n{code_block(file, file.read_text(encoding='utf-8').rstrip())}\n")

    def _resolved(self, page: Path, place: PurePosixPath) -> str:
        def replaced(link: re.Match) -> str:
            if is_external(link["target"]):
                return link[0]
            file, anchor = target_of(page, link["target"])
            if not file.is_file() or ROOT not in file.parents:
                raise BadPage(f"{page.relative_to(ROOT)}: {link['target']} is no file of the project")
            shown = SNIPPET.fullmatch(link["title"] or "")
            if shown:
                return code_block(file, snippet(file, shown["name"]))
            target = os.path.relpath(self._picture(file) if link["image"] else self._place_of(file), place.parent)
            return f"{link['image']}[{link['text']}]({target}{'#' + anchor if anchor else ''})"

        return "\n".join(LINK.sub(replaced, line) if is_text else line
                         for line, is_text in outside_code(page.read_text(encoding="utf-8")))

    def _picture(self, file: Path) -> PurePosixPath:
        place = PurePosixPath("pictures", file.name)
        (self._folder / place).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(file, self._folder / place)
        return place

    def _place_of(self, file: Path) -> PurePosixPath:
        if file in self._places:
            return self._places[file]
        self._shown.add(file)
        return PurePosixPath(SOURCES, f"{file.relative_to(ROOT)}.md")
