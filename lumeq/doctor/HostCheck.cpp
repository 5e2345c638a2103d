// Which application is examined, and whether it can use the library at all.
#include "Common/HostFile.h"
#include "Common/Paths.h"
#include "Common/SystemHandles.h"
#include "lumeq/Output.h"
#include "lumeq/doctor/Examination.h"
#include "lumeq/doctor/PortableExecutable.h"
#include "lumeq/doctor/Texts.h"

#include <algorithm>
#include <stdexcept>
#include <tlhelp32.h>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

constexpr wchar_t LibraryName[] = L"Lumeq.dll";

std::wstring FullPath(const std::string& text) {
    const std::wstring path = Wide(text);
    std::wstring full(32768, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    if (!Common::IsFile(full))
        throw std::runtime_error(text + ": there is no such file");
    return full;
}

std::wstring ImageOf(unsigned long processId) {
    const Common::UniqueKernelObject process(
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    std::wstring path(32768, L'\0');
    DWORD size = static_cast<DWORD>(path.size());
    if (!process || !QueryFullProcessImageNameW(process.Get(), 0, path.data(), &size))
        throw std::runtime_error("process " + std::to_string(processId) +
                                 " does not exist, or belongs to somebody else");
    path.resize(size);
    return path;
}

/// Empty if the process has not loaded it.
std::wstring LoadedLibrary(unsigned long processId) {
    const Common::UniqueFile modules(
        CreateToolhelp32Snapshot(TH32CS_SNAPMODULE | TH32CS_SNAPMODULE32, processId));
    MODULEENTRY32W module{};
    module.dwSize = sizeof module;
    for (BOOL found = modules && Module32FirstW(modules.Get(), &module); found;
         found = Module32NextW(modules.Get(), &module))
        if (_wcsicmp(module.szModule, LibraryName) == 0)
            return module.szExePath;
    return {};
}

bool Runs32Bit(const Host& host) {
    if (host.processId != 0) {
        const Common::UniqueKernelObject process(
            OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, host.processId));
        BOOL isWow = FALSE;
        return IsWow64Process(process.Get(), &isWow) && isWow;
    }
    const auto image = ReadPortableExecutable(host.path);
    return image && !image->isX64 && !image->isAnyProcessor;
}

std::string Described(const std::wstring& path) {
    return Utf8(path + L", version " + Common::GetFileVersion(path, L"unknown"));
}

bool IsDouble(const PortableExecutable& library) {
    return std::any_of(library.exports.begin(), library.exports.end(),
                       [](const std::string& name) { return name.starts_with("lumeq_test_"); });
}

void CheckLibrary(Examination& examination) {
    const std::wstring& path = examination.host.libraryPath;
    const auto library = ReadPortableExecutable(path);
    if (!library || !library->isX64)
        examination.report.Wrong(Id::LibraryIsNot64Bit, Utf8(path));
    else if (IsDouble(*library))
        examination.report.Wrong(Id::LibraryIsDouble, Utf8(path));
    else
        examination.report.Well(Check::Host, Described(path));
}

} // namespace

Host FindHost(const DoctorOptions& options) {
    if (options.processId != 0)
        return {ImageOf(options.processId), LoadedLibrary(options.processId), options.processId};
    if (options.host.empty())
        return {};
    const std::wstring path = FullPath(options.host);
    return {path, Common::InFolderOf(path, LibraryName), 0};
}

void CheckHost(Examination& examination) {
    const Host& host = examination.host;
    if (host.path.empty())
        return;
    if (Runs32Bit(host))
        examination.report.Wrong(Id::HostIs32Bit, Utf8(host.path));
    else if (host.libraryPath.empty())
        examination.report.Wrong(Id::LibraryNotLoaded, "process " + std::to_string(host.processId));
    else if (!Common::IsFile(host.libraryPath))
        examination.report.Wrong(Id::LibraryMissing, Utf8(host.libraryPath));
    else
        CheckLibrary(examination);
}

} // namespace Zuvan::Lumeq::Tool::Doctor
