// Replaces the header that stops a foreign toolchain. Nothing crosses a DLL boundary in the fuzz programs.
#pragma once

#include <string>
