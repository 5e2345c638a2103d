// A system library that cannot be loaded when one of its functions is called for the first time.
#include "faults/ExportRun.h"
#include "support/LogLines.h"

#include <cwchar>
#include <gmock/gmock.h>

namespace Zuvan::Lumeq::Testing {

namespace {

const wchar_t* missingLibrary = nullptr;
int refusals = 0;

HMODULE WINAPI LoadAllButTheMissing(const wchar_t* path, HANDLE file, DWORD flags) {
    const wchar_t* const name = std::wcsrchr(path, L'\\');
    if (!name || _wcsicmp(name + 1, missingLibrary) != 0)
        return LoadLibraryExW(path, file, flags);
    ++refusals;
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

class EveryMissingLibrary : public ExportTest, public testing::WithParamInterface<const wchar_t*> {};

} // namespace

TEST_P(EveryMissingLibrary, FailsWhatNeedsItAndNothingElse) {
    missingLibrary = GetParam();
    const ExportCase& exported = FindExportCase("StartupEx");
    ExportRun run(_machine, exported, Road::Basic, "debug", "127.0.0.99");
    run.Prepare();
    {
        const ImportedFunction<decltype(LoadLibraryExW)> refusing(run.Library().Module(), "kernel32.dll",
                                                                  "LoadLibraryExW", &LoadAllButTheMissing);
        run.Call(exported.accepted);
    }
    EXPECT_GT(refusals, 0);
    run.ExpectUndisturbed(exported.accepted);
    if (std::wstring_view(missingLibrary) == L"wininet.dll") {
        EXPECT_THAT(LogMessages(_machine.LogFile(), "WARNING"),
                    testing::Contains("InternetOpenA failed 0x00000000"));
    }
    run.ExpectNextCallWorks(exported.accepted, true);
}

INSTANTIATE_TEST_SUITE_P(Library, EveryMissingLibrary,
                         testing::Values(L"advapi32.dll", L"ole32.dll", L"oleaut32.dll", L"rpcrt4.dll",
                                         L"shell32.dll", L"shlwapi.dll", L"urlmon.dll", L"user32.dll",
                                         L"version.dll", L"wininet.dll"),
                         [](const auto& info) {
                             const std::wstring_view name = info.param;
                             return std::string(name.begin(), name.end() - 4);
                         });

} // namespace Zuvan::Lumeq::Testing
