"""Small disks of a test's own, which it can fill and make read-only. Nobody else sees them; they go with it."""

import contextlib
import ctypes
import os
import subprocess
import unittest
from pathlib import Path
from typing import Iterator

NEW_MOUNTS = 0x00020000
NEW_USER = 0x10000000


def keep_mounts_private() -> None:
    """For this process and what it starts from now on. Skips the test where that is not permitted."""
    user, group = os.geteuid(), os.getegid()
    unshare = ctypes.CDLL(None).unshare
    if unshare(NEW_MOUNTS) != 0:
        if unshare(NEW_MOUNTS | NEW_USER) != 0:
            raise unittest.SkipTest("no privilege to mount a disk")
        Path("/proc/self/setgroups").write_text("deny")
        Path("/proc/self/uid_map").write_text(f"0 {user} 1")
        Path("/proc/self/gid_map").write_text(f"0 {group} 1")
    if subprocess.run(["mount", "--make-rprivate", "/"], stderr=subprocess.DEVNULL).returncode != 0:
        raise unittest.SkipTest("no privilege to mount a disk")


class SmallDisk:
    def __init__(self, folder: Path):
        self._folder = folder
        self._filler = folder / "filler"

    def fill(self) -> None:
        # Without room for another page no file can grow beyond its last one.
        with contextlib.suppress(OSError), open(self._filler, "wb", buffering=0) as filler:
            while True:
                filler.write(bytes(4096))

    def make_room(self) -> None:
        self._filler.unlink()

    def make_read_only(self, read_only: bool) -> None:
        mode = "ro" if read_only else "rw"
        subprocess.run(["mount", "-o", f"remount,{mode}", self._folder], check=True)


@contextlib.contextmanager
def small_disk(folder: Path) -> Iterator[SmallDisk]:
    """Mounted on the folder."""
    folder.mkdir(parents=True, exist_ok=True)
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "lumeq", folder], check=True)
    try:
        yield SmallDisk(folder)
    finally:
        # It may still be in use by a host that has not quite ended.
        subprocess.run(["umount", "--lazy", folder], check=True)
