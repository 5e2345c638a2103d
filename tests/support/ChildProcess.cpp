#include "support/ChildProcess.h"

#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

ChildProcess::ChildProcess(const std::filesystem::path& program, const std::vector<std::wstring>& arguments) {
    std::wstring commandLine = L"\"" + program.wstring() + L"\"";
    for (const std::wstring& argument : arguments)
        commandLine += L" \"" + argument + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &information))
        throw std::runtime_error("cannot start " + program.string());
    CloseHandle(information.hThread);
    _process.Reset(information.hProcess);
}

ChildProcess::~ChildProcess() { Kill(); }

DWORD ChildProcess::Wait() {
    DWORD exitCode = 0;
    if (WaitForSingleObject(_process.Get(), 60'000) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(_process.Get(), &exitCode))
        throw std::runtime_error("a child process does not end");
    return exitCode;
}

void ChildProcess::Kill() {
    TerminateProcess(_process.Get(), 3);
    WaitForSingleObject(_process.Get(), 60'000);
}

} // namespace Zuvan::Lumeq::Testing
