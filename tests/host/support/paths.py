"""Where the sources, the build and the modules that the tests share are."""

import os
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
BUILD = Path(os.environ.get("LUMEQ_BUILD_DIR", ROOT / "build" / "mingw"))
OBJDUMP = os.environ.get("LUMEQ_OBJDUMP", "x86_64-w64-mingw32-objdump")

for folder in (ROOT / "tools", ROOT / "tests" / "model", ROOT / "tools" / "release"):
    if str(folder) not in sys.path:
        sys.path.insert(0, str(folder))
