// The log: its policy, its place, and its mutex.
#include "Common/LogPlaces.h"
#include "Common/LogPolicy.h"
#include "Common/Logger.h"
#include "Common/Paths.h"
#include "Common/SystemHandles.h"
#include "LumeqLib/Core/Utils/LoadLogPolicy.h"
#include "lumeq/Output.h"
#include "lumeq/doctor/Examination.h"
#include "lumeq/doctor/Texts.h"

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

std::string InvalidSettings(const Core::Utils::LogPolicySettings& policy, const SettingsFile& factory) {
    std::string invalid;
    const auto add = [&](const wchar_t* key, bool isValid) {
        if (!isValid && factory.Find(key))
            invalid += (invalid.empty() ? "" : ", ") + Utf8(key) + " " + Quoted(factory.TextOf(key));
    };
    add(L"Log", policy.logValid);
    add(L"LogLevel", policy.levelValid);
    add(L"LogDate", policy.log != L"date" || Common::ParseLogDate(policy.date));
    return invalid;
}

void CheckPolicy(const SettingsFile& factory, Report& report) {
    // This sets the switches of this process, whose log stays closed all the same: see Examine.
    const auto policy =
        Core::Utils::ApplyLogPolicy([&](const std::wstring& key) { return factory.TextOf(key); });
    if (const std::string invalid = InvalidSettings(policy, factory); !invalid.empty())
        report.Wrong(Id::LogSettingInvalid, invalid);
    if (Common::LoggingEnabled())
        report.Wrong(Id::LogOn, "level " + Utf8(Common::SeverityText(Common::Verbosity())) + ", in " +
                                    Utf8(Common::LogFolder()));
    else
        report.Well(Check::Log, "the log is off");
}

/// A file where a folder should be is as bad as no folder.
bool CanExist(const std::wstring& folder) {
    std::wstring path = folder;
    while (!path.empty() && !Common::Exists(path))
        path.resize(path.find_last_of(L'\\') == path.npos ? 0 : path.find_last_of(L'\\'));
    return !path.empty() && !Common::IsFile(path);
}

void CheckLogFolder(Report& report) {
    const std::wstring folder = Common::LogFolder();
    if (!CanExist(folder))
        report.Wrong(Id::LogHasNoFolder,
                     folder.empty() ? "the temporary folder has no absolute path" : Utf8(folder));
}

/// The system's query of a mutex, which does not take it.
class MutexQuery {
public:
    MutexQuery() : _mutex(OpenMutexW(QueryState, FALSE, Common::LogMutexName)) {}

    bool IsHeld() const {
        struct {
            LONG count;
            BOOLEAN isOwnedByCaller, isAbandoned;
        } state{};
        return _mutex && Query(0, &state, sizeof state) && state.count < 1;
    }

    /// 0 if the system does not know, or is too old to say.
    unsigned long Owner() const {
        struct {
            HANDLE process, thread;
        } owner{};
        return Query(1, &owner, sizeof owner)
                   ? static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(owner.process))
                   : 0;
    }

private:
    static constexpr DWORD QueryState = 1;
    using Function = LONG NTAPI(HANDLE mutex, int what, void* answer, ULONG size, ULONG* length);

    bool Query(int what, void* answer, ULONG size) const {
        static auto* const query =
            Common::FindFunction<Function>(GetModuleHandleW(L"ntdll.dll"), "NtQueryMutant");
        return query && query(_mutex.Get(), what, answer, size, nullptr) >= 0;
    }

    Common::UniqueKernelObject _mutex;
};

/// Writers hold it for moments, so it counts as held only if it is found so each time.
bool IsHeldForLong(const MutexQuery& mutex) {
    constexpr unsigned long Step = 50;
    for (unsigned long waited = 0; waited <= Common::LogMutexWaitMilliseconds; waited += Step) {
        if (!mutex.IsHeld())
            return false;
        Sleep(Step);
    }
    return true;
}

std::string ProcessText(unsigned long processId) {
    if (processId == 0)
        return "by a process that the system does not name";
    std::wstring path(32768, L'\0');
    DWORD size = static_cast<DWORD>(path.size());
    const Common::UniqueKernelObject process(
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    path.resize(process && QueryFullProcessImageNameW(process.Get(), 0, path.data(), &size) ? size : 0);
    return "by process " + std::to_string(processId) + (path.empty() ? "" : " " + Utf8(path));
}

void CheckMutex(Report& report) {
    const MutexQuery mutex;
    if (IsHeldForLong(mutex))
        report.Wrong(Id::LogMutexHeld, ProcessText(mutex.Owner()));
}

} // namespace

void CheckLog(Examination& examination) {
    Report& report = examination.report;
    // The library reads its policy from settings that need both files.
    const bool hasSettings =
        examination.factory.IsAccepted() && (!examination.local.exists || examination.local.IsAccepted());
    if (hasSettings)
        CheckPolicy(examination.factory, report);
    else if (!examination.host.path.empty())
        report.Well(Check::Log, "the log is off, because there are no settings");
    CheckLogFolder(report);
    CheckMutex(report);
}

} // namespace Zuvan::Lumeq::Tool::Doctor
