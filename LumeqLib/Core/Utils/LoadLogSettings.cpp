#include "LumeqLib/Core/Utils/LogSettings.h"

#include "Common/Clock.h"
#include "Common/LogPolicy.h"
#include "Common/Logger.h"
#include "Common/Text.h"
#include "LumeqLib/Core/Utils/FailureReport.h"
#include "LumeqLib/Core/Utils/Settings.h"

#include <memory>
#include <optional>

namespace Zuvan::Lumeq::Core::Utils {

using Common::SeverityLevel;

namespace {

constexpr wchar_t ReadingFailed[] = L"ERROR: LoadLogSettings() failed: ";
constexpr wchar_t NoSettings[] = L"ERROR: LoadLogSettings() failed on call to Settings::GetInstance(): ";

bool IsDateOpen(const std::wstring& date) { return Common::IsLogDateOpen(date, Common::UtcMilliseconds()); }

void ApplyLevel(LogSettings& settings, const FactorySettingReader& read) {
    settings.level = Common::ToLower(read(L"LogLevel"));
    const std::optional<SeverityLevel> level = Common::ParseLogLevel(settings.level);
    settings.levelValid = level.has_value();
    if (level)
        Common::SetVerbosity(*level);
}

void ApplySwitch(LogSettings& settings, const FactorySettingReader& read) {
    settings.log = Common::ToLower(read(L"Log"));
    settings.logValid = settings.log == L"on" || settings.log == L"off" || settings.log == L"date";
    if (settings.log == L"date")
        settings.date = read(L"LogDate");
    const bool dated = settings.log == L"date" || !settings.logValid;
    Common::EnableLogging(dated ? IsDateOpen(settings.date) : settings.log == L"on");
}

std::wstring LevelLine(const LogSettings& settings) {
    const std::wstring line = L"Logger: LogLevel='" + settings.level + L"'";
    return settings.levelValid
               ? line
               : line + L" (INVALID!) --> Verbosity=" + Common::SeverityText(Common::Verbosity());
}

std::wstring SwitchLine(const LogSettings& settings) {
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
        ReportCaughtToDebugger(NoSettings);
        Common::EnableLogging(IsDateOpen(Common::DefaultLogDate));
        return nullptr;
    }
}

} // namespace

LogSettings ApplyLogSettings(const FactorySettingReader& read) {
    LogSettings settings;
    try {
        ApplyLevel(settings, read);
        ApplySwitch(settings, read);
    } catch (...) {
        ReportCaughtToDebugger(ReadingFailed);
    }
    return settings;
}

void TraceLogSettings(const LogSettings& settings) {
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

void LoadLogSettings() {
    using namespace Core::Utils;
    const std::shared_ptr<Settings> settings = TryGetSettings();
    if (!settings)
        return;
    const LogSettings applied = ApplyLogSettings(
        [&settings](const std::wstring& key) { return settings->GetFactorySetting(key, L""); });
    DropSharedInstance();
    TraceLogSettings(applied);
}

} // namespace Zuvan::Lumeq::Common
