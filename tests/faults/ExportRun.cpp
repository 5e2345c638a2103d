#include "faults/ExportRun.h"

#include "Common/Utf.h"
#include "support/DeliveryStandIns.h"
#include "support/LogLines.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string_view>

namespace Zuvan::Lumeq::Testing {

namespace {

std::string LocalSettings(bool isPaused) {
    return std::string(R"(<LumeqConfig version="4.0"><AppDeployedUuid>kept</AppDeployedUuid>)"
                       "<UserOptIn>True</UserOptIn>") +
           (isPaused ? "<OptinBeforePause>True</OptinBeforePause>" : "") + "</LumeqConfig>";
}

/// Masks the digits after the first `label`, if there are exactly that many.
void ReplaceDigits(std::string& message, std::string_view label, std::string_view digits, std::size_t count,
                   const char* replacement) {
    const std::size_t found = message.find(label);
    if (found == message.npos)
        return;
    const std::size_t begin = found + label.size();
    const std::size_t end = std::min(message.find_first_not_of(digits, begin), message.size());
    if (end - begin == count)
        message.replace(begin, count, replacement);
}

/// "C:\...\host.exe: what went wrong. LumeqApi(123)" without its first and last part.
std::string WithoutExecutableAndPlace(std::string message) {
    constexpr std::string_view End = ".exe: ";
    const std::size_t executable = message.find(End);
    const std::size_t place = message.rfind(". LumeqApi(");
    if (executable == message.npos || place == message.npos || !message.ends_with(')'))
        return message;
    const std::size_t begin = executable + End.size();
    return message.substr(begin, place - begin);
}

/// Removes everything that differs from run to run.
std::string Steady(std::string message) {
    ReplaceDigits(message, "taskHandle: 0x", "0123456789ABCDEF", 16, "<task>");
    ReplaceDigits(message, "biid: \"", "0123456789abcdef", 64, "<identifier>");
    return WithoutExecutableAndPlace(std::move(message));
}

std::vector<std::string> SteadyMessages(const std::filesystem::path& log, const std::string& severity) {
    std::vector<std::string> messages = LogMessages(log, severity);
    for (std::string& message : messages)
        message = Steady(std::move(message));
    return messages;
}

IsolatedMachine& Equip(IsolatedMachine& machine, Road road, const std::string& logLevel,
                       const std::string& server) {
    machine.WriteFactorySettings(
        "<ProjectId>P1</ProjectId><LUMServerUri>" + server + "</LUMServerUri>" +
        (logLevel.empty() ? "<Log>off</Log>" : "<Log>on</Log><LogLevel>" + logLevel + "</LogLevel>"));
    UseFakeMscoree(road == Road::Managed ? L"v4.0.30319" : L"v2.0.50727");
    if (road == Road::Managed && !std::filesystem::exists(machine.HostFolder() / L"LumeqShim.Managed.dll"))
        PlaceCompanion(machine.HostFolder());
    LetCompanionReadEvents();
    return machine;
}

} // namespace

ExportTest::ExportTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }

ExportTest::~ExportTest() {
    FreeCompanion();
    CoUninitialize();
}

ExportRun::ExportRun(IsolatedMachine& machine, const ExportCase& exported, Road road,
                     const std::string& logLevel, const std::string& server)
    : _machine(Equip(machine, road, logLevel, server)), _exported(exported), _road(road),
      _isLogged(!logLevel.empty()), _quick(_library.Module()) {}

void ExportRun::Prepare() {
    if (_exported.usesSettings)
        WriteFile(_machine.LocalSettingsFile(), LocalSettings(_exported.isPaused));
    if (_exported.open && !_host.task)
        _exported.open(_library, _host);
}

void ExportRun::Call(ExportCall call) {
    if (_road == Road::Managed)
        ForgetCompanionCalls();
    try {
        call(_library, _host);
    } catch (...) {
        ADD_FAILURE() << "something escaped";
    }
}

void ExportRun::ExpectUndisturbed(ExportCall call) {
    EXPECT_TRUE(_library.Control().areLocksFree());
    const std::vector<std::wstring> events =
        _road == Road::Managed ? CompanionEvents() : std::vector<std::wstring>();
    if (call == _exported.refused)
        EXPECT_THAT(events, testing::IsEmpty());
    else
        EXPECT_TRUE(events.empty() || (events.size() == 1 && events[0] == _exported.delivered));
    if (call == _exported.refused) {
        EXPECT_EQ(_host.task != nullptr, _exported.open != nullptr);
    }
    if (_exported.close)
        Close();
}

void ExportRun::ExpectNextCallWorks(ExportCall call, bool policyMayBeLost) {
    UseUpLeftOver(call);
    Prepare();
    std::filesystem::remove(_machine.LogFile());
    Call(call);
    if (call == _exported.accepted)
        ExpectDelivered();
    if (_isLogged && !(policyMayBeLost && !std::filesystem::exists(_machine.LogFile())))
        ExpectLogged(call);
    Close();
    EXPECT_TRUE(_library.Control().areLocksFree());
}

/// An operation that failed leaves its settings instance to the next one, which then does not read the file.
void ExportRun::UseUpLeftOver(ExportCall call) {
    if (FailingLibrary::OpenApartments() <= 0)
        return;
    EXPECT_TRUE(_exported.usesSettings);
    Call(call);
}

void ExportRun::Close() {
    if (!_host.task)
        return;
    (_exported.close ? _exported.close : _exported.accepted)(_library, _host);
    EXPECT_EQ(_host.task, nullptr);
}

void ExportRun::ExpectDelivered() {
    EXPECT_EQ(_host.task != nullptr, _exported.close != nullptr);
    if (_road == Road::Basic) {
        EXPECT_THAT(ReadFile(_machine.LocalSettingsFile()),
                    testing::HasSubstr(_exported.stored ? _exported.stored : ""));
    } else if (_exported.delivered) {
        const bool isOperation = std::wstring_view(_exported.delivered).ends_with(L')');
        const std::vector<std::wstring> texts = isOperation ? CompanionCalls() : CompanionEvents();
        EXPECT_EQ(texts.empty() ? L"" : texts.back(), _exported.delivered);
    }
}

void ExportRun::ExpectLogged(ExportCall call) {
    if (call == _exported.accepted) {
        EXPECT_THAT(SteadyMessages(_machine.LogFile(), "TRACE"), testing::Contains(_exported.trace));
    } else {
        EXPECT_THAT(SteadyMessages(_machine.LogFile(), "ERROR"), testing::Contains(_exported.complaint));
    }
}

} // namespace Zuvan::Lumeq::Testing
