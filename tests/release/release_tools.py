"""Puts the tools of a release on the path, and says where the sources and the build are."""

import os
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ.get("LUMEQ_BUILD_DIR", ROOT / "build" / "mingw"))
sys.path.insert(0, str(ROOT / "tools" / "release"))
