"""What a DLL or program is as a file."""

from pathlib import Path

from .paths import BUILD  # Which also finds the tools of a release.
import interfaces
from pe_file import PeFile
from shipped_files import problems_of


def exports_of(library: Path) -> list[str]:
    return sorted(export.name for export in PeFile(library).exports())


def imports_of(library: Path) -> dict[str, set[str]]:
    """Functions by library, in lower case."""
    return {name.lower(): set(functions) for name, functions in PeFile(library).imports().items()}


def is_the_build_that_ships() -> bool:
    cache = (BUILD / "CMakeCache.txt").read_text()
    return "CMAKE_BUILD_TYPE:STRING=Release" in cache and "LUMEQ_CHECKED:BOOL=ON" not in cache


def shipping_problems(library: Path) -> list[str]:
    """Protections, imports, version, traces of the build, size. A build that does not ship may be large, and its
    assertions may name headers of the C++ library."""
    allowed = () if is_the_build_that_ships() else (" bytes of ", "/include/c++/")
    return [problem for problem in problems_of(library, interfaces.version(), [str(interfaces.ROOT), str(BUILD)])
            if not any(part in problem for part in allowed)]
