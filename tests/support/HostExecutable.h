// Changes the apparent location of this test program's executable, so that the test owns the files beside it.
#pragma once

#include "Common/SystemHandles.h"

#include <filesystem>
#include <string>
#include <winternl.h>

namespace Zuvan::Lumeq::Testing {

/// The executable's location according to the system.
std::filesystem::path ExecutablePath();

/// While one lives, GetModuleFileNameW returns `path` for the executable. The file need not exist. The search
/// for libraries does not change. One at a time, and no other thread may ask meanwhile.
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
