// The managed runtime, as the library's probe sees it, and the companion library.
#include "Common/HostFile.h"
#include "Common/Paths.h"
#include "LumeqShim/CompanionLibrary.h"
#include "LumeqShim/PreLoadingCode.h"
#include "lumeq/doctor/CompanionLoading.h"
#include "lumeq/doctor/Examination.h"
#include "lumeq/doctor/PortableExecutable.h"
#include "lumeq/doctor/Texts.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

constexpr const char* Operations[] = {"StartupInternal",
                                      "ShutdownInternal",
                                      "FlushInternal",
                                      "GetUserOptInInternal",
                                      "SetUserOptInInternal",
                                      "SetLocalValueInternal",
                                      "LocalSettingsSubfolderInternal",
                                      "PostEventInternal",
                                      "PostDataInternal",
                                      "TrackPrintQueueInfoInternal",
                                      "TrackSystemInformationInternal"};
static_assert(std::size(Operations) == 11);

std::string MissingOperations(const PortableExecutable& companion) {
    std::string missing;
    for (const char* operation : Operations)
        if (std::find(companion.exports.begin(), companion.exports.end(), operation) ==
            companion.exports.end())
            missing += (missing.empty() ? "" : ", ") + std::string(operation);
    return missing;
}

void CheckLoading(Examination& examination) {
    const std::wstring& path = examination.companionPath;
    const std::string described = Utf8(path + L", version " + Common::GetFileVersion(path, L"unknown"));
    Report& report = examination.report;
    if (!examination.options.loadsCompanion) {
        report.Well(Check::Runtime, described + ", has its eleven operations; not loaded");
        return;
    }
    const CompanionLoading loading = TryToLoad(path, examination.host.path, examination.Milliseconds());
    switch (loading.outcome) {
    case CompanionLoading::Outcome::Loaded:
        report.Well(Check::Runtime, described + ", loads and has its eleven operations");
        break;
    case CompanionLoading::Outcome::Refused:
        report.Wrong(Id::CompanionDoesNotLoad, Utf8(path) + ": " + loading.detail);
        break;
    case CompanionLoading::Outcome::Crashed:
        report.Wrong(Id::CompanionCrashes, Utf8(path) + ": " + loading.detail);
        break;
    case CompanionLoading::Outcome::NotTried:
        report.Well(Check::Runtime, described + ", has its eleven operations; loading could not be tried");
        break;
    }
}

/// The file is read before anything runs its code.
void CheckCompanion(Examination& examination) {
    const std::wstring& path = examination.companionPath;
    Report& report = examination.report;
    if (!Common::IsFile(path)) {
        report.Wrong(Id::CompanionMissing, Utf8(path));
        return;
    }
    const auto companion = ReadPortableExecutable(path);
    if (!companion || !companion->isX64)
        report.Wrong(Id::CompanionIsNot64Bit, Utf8(path));
    else if (const std::string missing = MissingOperations(*companion); !missing.empty())
        report.Wrong(Id::CompanionLacksOperation, Utf8(path) + " lacks " + missing);
    else
        CheckLoading(examination);
}

} // namespace

void CheckRuntime(Examination& examination) {
    if (!examination.isManaged) {
        examination.report.Wrong(Id::RuntimeMissing, LumeqShim::IsCLRCreateInstanceSupported()
                                                         ? "no runtime v4.0.30319"
                                                         : "mscoree.dll is missing or too old");
        return;
    }
    examination.report.Well(Check::Runtime, "the runtime v4.0.30319 is installed");
    if (!examination.host.path.empty())
        CheckCompanion(examination);
}

} // namespace Zuvan::Lumeq::Tool::Doctor
