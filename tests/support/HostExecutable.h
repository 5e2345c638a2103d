// Lets this test program seem to be an executable elsewhere, so that the files beside it are the test's own.
#pragma once

#include "Common/SystemHandles.h"

#include <filesystem>
#include <string>
#include <winternl.h>

namespace Zuvan::Lumeq::Testing {

/// Where the system says that the program's executable is.
std::filesystem::path ExecutablePath();

/// While it lives, GetModuleFileNameW gives `path` for the executable. The file need not exist. How libraries
/// are found does not change. One at a time, and no other thread may ask meanwhile.
class HostExecutable {
public:
    explicit HostExecutable(const std::filesystem::path& path);
    ~HostExecutable();
    HostExecutable(const HostExecutable&) = delete;
    HostExecutable& operator=(const HostExecutable&) = delete;

private:
    std::wstring _path;
    UNICODE_STRING _original;
};

} // namespace Zuvan::Lumeq::Testing
