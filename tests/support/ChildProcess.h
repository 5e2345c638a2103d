// Another program, started from a test.
#pragma once

#include "Common/SystemHandles.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// Runs from construction on. The destructor kills it if it still runs.
class ChildProcess {
public:
    /// Throws if it cannot be started. No argument may hold a double quote.
    ChildProcess(const std::filesystem::path& program, const std::vector<std::wstring>& arguments);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Its exit code. Throws if it has not ended within a minute.
    DWORD Wait();
    /// Kills it, as a crash would.
    void Kill();

private:
    Common::UniqueKernelObject _process;
};

} // namespace Zuvan::Lumeq::Testing
