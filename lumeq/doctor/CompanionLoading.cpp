#include "lumeq/doctor/CompanionLoading.h"

#include "Common/Exceptions.h"
#include "Common/Paths.h"
#include "Common/SystemHandles.h"
#include "LumeqShim/CompanionLibrary.h"
#include "lumeq/doctor/Texts.h"

#include <array>
#include <cstdio>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

constexpr int ExitLoaded = 0;
constexpr int ExitRefused = 3;

std::wstring FolderOf(const std::wstring& path) { return path.substr(0, path.find_last_of(L"\\/")); }

/// Windows' own paths contain no quotation marks, and those here end in a file name, not in a backslash.
std::wstring CommandLine(const std::wstring& companion, const std::wstring& host) {
    return L"\"" + Common::ModulePath(nullptr) + L"\" " + Wide(LoadingCommand) + L" \"" + companion +
           L"\" \"" + host + L"\"";
}

struct Pipe {
    Common::UniqueKernelObject read, write;
};

Pipe MakePipe() {
    Pipe pipe;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    CreatePipe(pipe.read.Receive(), pipe.write.Receive(), &inherited, 0);
    SetHandleInformation(pipe.read.Get(), HANDLE_FLAG_INHERIT, 0);
    return pipe;
}

/// Without a console of its own, whose host could outlive a process that is ended and keep this one's output
/// open.
Common::UniqueKernelObject Start(std::wstring command, HANDLE output) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, DETACHED_PROCESS, nullptr, nullptr,
                        &startup, &process))
        return {};
    CloseHandle(process.hThread);
    return Common::UniqueKernelObject(process.hProcess);
}

/// The text fits into the pipe, so reading may wait until the process has ended.
std::string ReadAvailable(const Pipe& pipe) {
    std::array<char, 2048> text{};
    DWORD available = 0, read = 0;
    if (PeekNamedPipe(pipe.read.Get(), nullptr, 0, nullptr, &available, nullptr) && available > 0)
        ReadFile(pipe.read.Get(), text.data(), static_cast<DWORD>(text.size() - 1), &read, nullptr);
    return text.data();
}

CompanionLoading OutcomeOf(DWORD exitCode, const Pipe& pipe) {
    using Outcome = CompanionLoading::Outcome;
    if (exitCode == ExitLoaded)
        return {Outcome::Loaded, {}};
    if (exitCode == ExitRefused)
        return {Outcome::Refused, ReadAvailable(pipe)};
    char code[40];
    std::snprintf(code, sizeof code, "the process ended with 0x%08lx", exitCode);
    return {Outcome::Crashed, code};
}

} // namespace

CompanionLoading TryToLoad(const std::wstring& companion, const std::wstring& host,
                           unsigned long milliseconds) {
    const Pipe pipe = MakePipe();
    const Common::UniqueKernelObject process = Start(CommandLine(companion, host), pipe.write.Get());
    if (!process)
        return {};
    if (WaitForSingleObject(process.Get(), milliseconds) != WAIT_OBJECT_0) {
        TerminateProcess(process.Get(), ExitRefused);
        return {CompanionLoading::Outcome::Crashed,
                "loading took more than " + std::to_string(milliseconds) + " ms"};
    }
    DWORD exitCode = 0;
    GetExitCodeProcess(process.Get(), &exitCode);
    return OutcomeOf(exitCode, pipe);
}

int LoadCompanionHere(const std::string& companion, const std::string& host) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    // For the host, its own folder is the application's, which the library's dependencies may come from.
    AddDllDirectory(FolderOf(Wide(host)).c_str());
    try {
        LumeqShim::LoadCompanionFrom(Wide(companion));
        return ExitLoaded;
    } catch (const Common::VestoException& refusal) {
        std::puts(refusal.what());
        return ExitRefused;
    }
}

} // namespace Zuvan::Lumeq::Tool::Doctor
