#!/usr/bin/env python3
"""Runs a compiler's step, and gives the assembler what GCC 12 cannot write: CodeView, from which the linker makes a PDB.

  g++ -g -wrapper python3,tools/release/codeview.py ...

GCC marks each source line for DWARF (.loc) and each function (.seh_proc). A label at each mark is enough to describe
functions and lines in the section .debug$S.
"""

import os
import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

INSTRUCTION = re.compile(r"\t[^.#\s]")
MARK = re.compile(r"\t\.(?:file (?P<file>\d+) \"(?P<folder>.*?)\"(?: \"(?P<name>.*?)\")?"
                  r"|loc (?P<of>\d+) (?P<line>\d+)"
                  r"|seh_proc\t(?P<function>\S+)"
                  r"|(?P<end>seh_endproc))")

SYMBOLS, LINES, NAMES, SOURCES = 0xF1, 0xF2, 0xF3, 0xF4

# A function is a label here, and a function again in the finished PDB (pdb_file.py): the linker of binutils 2.40 overruns
# its memory at each function.
LABEL = 0x1105


@dataclass
class Function:
    name: str
    end: str
    """A label."""
    source: int = 0
    """Number of its source file. Lines of others, from inlined functions, count as the line before them."""
    lines: list[tuple[str, int]] = field(default_factory=list)
    """Labels and lines."""


class Assembly:
    def __init__(self, text: str):
        self.text: list[str] = []
        self.files: dict[int, str] = {}
        self.functions: list[Function] = []
        self._current = None
        self._is_at_mark = False
        """No instruction came since the last line was marked."""
        self._sections = 0
        for line in text.splitlines():
            self.text.append(line)
            if INSTRUCTION.match(line):
                self._is_at_mark = False
            elif mark := MARK.match(line):
                self._take(mark)

    def _take(self, mark: re.Match) -> None:
        if mark["file"]:
            self.files[int(mark["file"])] = "/".join(filter(None, (mark["folder"], mark["name"])))
        elif mark["function"]:
            self._is_at_mark = False
            self._current = Function(mark["function"], f".Lcodeview_end{len(self.functions)}")
            self.functions.append(self._current)
        elif mark["of"] and self._current and not self._is_at_mark:
            # The first of several at one place: at the start of a function that is its own line.
            self._add_line(self._current, int(mark["of"]), int(mark["line"]))
        elif mark["end"] and self._current:
            self.text.append(f"{self._current.end}:")
            self._current = None

    def _add_line(self, function: Function, source: int, line: int) -> None:
        if not function.lines:
            function.source = source
        if source == function.source:
            label = f".Lcodeview{len(self.functions)}_{len(function.lines)}"
            function.lines.append((label, line))
            self._is_at_mark = True
            self.text.append(f"{label}:")

    def with_codeview(self) -> str:
        if not self.functions:
            return "\n".join(self.text) + "\n"
        self.text += ['\t.section .debug$S,"dr"', "\t.long 4"]
        places = self._add_sources()
        for function in self.functions:
            if function.lines:
                self._add(LINES, lines_of(function, places))
        self._add(SYMBOLS, [part for function in self.functions for part in symbol_of(function)])
        return "\n".join(self.text) + "\n"

    def _add(self, kind: int, content: list[str]) -> None:
        self._sections += 1
        start = f".Lcodeview_part{self._sections}"
        self.text += [f"\t.long {kind:#x}, {start}_end-{start}", f"{start}:", *content, f"{start}_end:", "\t.balign 4, 0"]

    def _add_sources(self) -> dict[int, int]:
        """Where the list has each source file, by the number that GCC gave it."""
        numbers = sorted({function.source for function in self.functions if function.lines})
        names, rows, at = ["\t.byte 0"], [], 1
        for number in numbers:
            name = self.files[number].encode("utf-8")
            names.append("\t.byte " + ",".join(map(str, name + b"\0")))
            rows.append(f"\t.long {at}, 0")  # Without a checksum.
            at += len(name) + 1
        self._add(NAMES, names)
        self._add(SOURCES, rows)
        return {number: 8 * index for index, number in enumerate(numbers)}


def lines_of(function: Function, places: dict[int, int]) -> list[str]:
    count = len(function.lines)
    return [f"\t.secrel32 {function.name}", f"\t.secidx {function.name}", "\t.short 0",
            f"\t.long {function.end}-{function.name}", f"\t.long {places[function.source]}, {count}, {12 + 8 * count}",
            *(f"\t.long {label}-{function.name}, {line | 0x80000000}" for label, line in function.lines)]


def symbol_of(function: Function) -> list[str]:
    size = 2 + 7 + len(function.name) + 1
    padding = -(size + 2) % 4
    return [f"\t.short {size + padding}, {LABEL:#x}", f"\t.secrel32 {function.name}", f"\t.secidx {function.name}",
            "\t.byte 0", f'\t.asciz "{function.name}"', "\t.balign 4, 0"]


def main() -> None:
    command = sys.argv[1:]
    if re.search(r"(^|[/-])as$", command[0]):
        source = Path(next(argument for argument in command if argument.endswith(".s")))
        source.write_text(Assembly(source.read_text(encoding="utf-8")).with_codeview(), encoding="utf-8")
    os.execvp(command[0], command)


if __name__ == "__main__":
    main()
