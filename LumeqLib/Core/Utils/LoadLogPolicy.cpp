#include "LumeqLib/Core/Utils/LoadLogPolicy.h"

#include "Common/Clock.h"
#include "Common/Debugger.h"
#include "Common/LogPolicy.h"
#include "Common/Logger.h"
#include "Common/Text.h"
#include "LumeqLib/Core/Utils/Settings.h"

#include <memory>
#include <optional>
#include <utility>

namespace Zuvan::Lumeq::Core::Utils {

using Common::SeverityLevel;

namespace {

// Developers search the debugger output for these texts.
constexpr wchar_t ReadingFailed[] = L"ERROR: LoadLogSettings() failed: ";
constexpr wchar_t NoSettings[] = L"ERROR: LoadLogSettings() failed on call to Settings::GetInstance(): ";

bool IsDateOpen(const std::wstring& date) { return Common::IsLogDateOpen(date, Common::UtcMilliseconds()); }

void ApplyLevel(LogPolicySettings& settings, const FactorySettingReader& read) {
    settings.level = Common::ToLower(read(L"LogLevel"));
    const std::optional<SeverityLevel> level = Common::ParseLogLevel(settings.level);
    settings.levelValid = level.has_value();
    if (level)
        Common::SetVerbosity(*level);
}

void ApplySwitch(LogPolicySettings& settings, const FactorySettingReader& read) {
    settings.log = Common::ToLower(read(L"Log"));
    settings.logValid = settings.log == L"on" || settings.log == L"off" || settings.log == L"date";
    if (settings.log == L"date")
        settings.date = read(L"LogDate");
    const bool dated = settings.log == L"date" || !settings.logValid;
    Common::EnableLogging(dated ? IsDateOpen(settings.date) : settings.log == L"on");
}

std::wstring LevelLine(const LogPolicySettings& settings) {
    const std::wstring line = L"Logger: LogLevel='" + settings.level + L"'";
    return settings.levelValid
               ? line
               : line + L" (INVALID!) --> Verbosity=" + Common::SeverityText(Common::Verbosity());
}

std::wstring SwitchLine(const LogPolicySettings& settings) {
    std::wstring line = L"Logger: Log='" + settings.log + L"'";
    if (!settings.logValid)
        line += L" (INVALID!)";
    if (settings.log == L"date")
        line += L", LogDate='" + settings.date + L"'";
    return line;
}

std::shared_ptr<Settings> TryGetSettings() {
    try {
        return Settings::GetInstance();
    } catch (...) {
        Common::ReportCaughtToDebugger(NoSettings);
        Common::EnableLogging(IsDateOpen(Common::DefaultLogDate));
        return nullptr;
    }
}

} // namespace

LogPolicySettings ApplyLogPolicy(const FactorySettingReader& read) {
    LogPolicySettings settings;
    try {
        ApplyLevel(settings, read);
        ApplySwitch(settings, read);
    } catch (...) {
        Common::ReportCaughtToDebugger(ReadingFailed);
    }
    return settings;
}

void TraceLogPolicy(const LogPolicySettings& settings) {
    const auto write = [](const std::wstring& line) {
        Common::WriteLogLine(SeverityLevel::TRACE, L"", line);
    };
    write(LevelLine(settings));
    write(SwitchLine(settings));
    write(std::wstring(L"Logger: Logging is on by default until ") + Common::DefaultLogDate + L"T00:00:00Z");
    write(std::wstring(L"Logger: Logging is currently ") +
          (Common::LoggingEnabled() ? L"ENABLED" : L"DISABLED"));
}

} // namespace Zuvan::Lumeq::Core::Utils

namespace Zuvan::Lumeq::Common {

void LoadLogPolicy() {
    using namespace Core::Utils;
    std::shared_ptr<Settings> instance = TryGetSettings();
    if (!instance)
        return;
    const auto apply = [](const Settings& settings) {
        return ApplyLogPolicy(
            [&settings](const std::wstring& key) { return settings.GetFactorySetting(key, L""); });
    };
    WithSettings(apply, TraceLogPolicy, std::move(instance));
}

} // namespace Zuvan::Lumeq::Common
