#pragma once

#include <string>

namespace Zuvan::Lumeq::Common {

/// A new GUID as 38 characters, upper case, in braces.
std::wstring NewGuidString();

} // namespace Zuvan::Lumeq::Common
