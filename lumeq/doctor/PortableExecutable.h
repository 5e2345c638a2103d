// What an executable file says about itself, read without loading it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool::Doctor {

struct PortableExecutable {
    bool isX64 = false;
    /// A program of the managed runtime that is made for no particular processor: 64-bit on 64-bit Windows.
    bool isAnyProcessor = false;
    std::vector<std::string> exports; ///< Names only.
};

/// Nothing if the file cannot be read or is no executable file.
std::optional<PortableExecutable> ReadPortableExecutable(const std::wstring& path);

} // namespace Zuvan::Lumeq::Tool::Doctor
