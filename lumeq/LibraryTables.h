// The library's own patterns and enumerations, by the names of the catalogue.
#pragma once

#include "Common/Pattern.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

/// Throws std::out_of_range for a name that the library has not.
const Common::Pattern& LibraryPattern(const std::string& name);
std::vector<std::string> LibraryPatternNames();

struct LibraryEnumeration {
    bool (*hasValue)(std::int32_t value);
    /// Also of a value outside it.
    std::wstring (*textOf)(std::int32_t value);
    /// Throws what the library throws for a value outside it.
    std::int32_t (*recordOf)(std::int32_t value);
};

/// Throws std::out_of_range for a name that the library has not.
const LibraryEnumeration& EnumerationOfLibrary(const std::string& name);
std::vector<std::string> LibraryEnumerationNames();

} // namespace Zuvan::Lumeq::Tool
