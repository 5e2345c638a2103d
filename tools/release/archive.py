"""Archives whose bytes depend on nothing but their files: sorted, with one time and the same rights for all."""

import hashlib
import time
import zipfile
from pathlib import Path

FILE, PROGRAM = 0o100644, 0o100755
PROGRAMS = (".dll", ".exe")


def files_in(folder: Path) -> list[Path]:
    """Sorted by their names in the archive."""
    return sorted((file for file in folder.rglob("*") if file.is_file()),
                  key=lambda file: file.relative_to(folder).as_posix())


def write_zip(folder: Path, target: Path, epoch: int) -> None:
    """The archive holds the folder itself. `epoch` is the time of all files in seconds since 1970."""
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for file in files_in(folder):
            entry = zipfile.ZipInfo(file.relative_to(folder.parent).as_posix(), time.gmtime(epoch)[:6])
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3  # Unix, which the rights below are for
            entry.external_attr = (PROGRAM if file.suffix in PROGRAMS else FILE) << 16
            archive.writestr(entry, file.read_bytes())


def checksum(file: Path, algorithm: str = "sha256") -> str:
    return hashlib.new(algorithm, file.read_bytes()).hexdigest()


def write_checksums(files: list[Path], target: Path) -> None:
    """As sha256sum reads them with --check."""
    target.write_text("".join(f"{checksum(file)}  {file.name}\n" for file in sorted(files)), encoding="ascii")
