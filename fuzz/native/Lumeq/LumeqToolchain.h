// In the place of the header that stops a foreign toolchain: nothing crosses an edge in the programs built
// here.
#pragma once

#include <string>
