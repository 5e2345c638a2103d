// Windows Management Instrumentation, and the message, most of which comes from it.
#include "LumeqLib/Extra/Collection/Utils/WmiProperty.h"
#include "LumeqShim/Basic/BasicFunctionality.h"
#include "LumeqShim/Post/QueueRequest.h"
#include "lumeq/doctor/Examination.h"
#include "lumeq/doctor/Texts.h"
#include "lumeq/doctor/TimeLimit.h"

namespace Zuvan::Lumeq::Tool::Doctor {

using namespace LumeqShim;

namespace {

/// A start waits for all answers, under the lock that every call of the library takes.
constexpr unsigned long SlowMilliseconds = 2000;

struct Collected {
    bool hasAnswered = false;
    unsigned long milliseconds = 0;
    MessageDictionary message;
};

Collected Collect(const std::wstring& appName, const std::wstring& host) {
    Collected collected;
    const ULONGLONG start = GetTickCount64();
    const _variant_t caption = Extra::Collection::Utils::GetWmiProperty(L"Win32_OperatingSystem", L"Caption");
    collected.hasAnswered = caption.vt != VT_EMPTY;
    collected.message = CollectMessage(appName, host);
    collected.milliseconds = static_cast<unsigned long>(GetTickCount64() - start);
    return collected;
}

/// Unless it was named, that of the executable without its extension.
std::wstring AppNameOf(const Examination& examination) {
    if (!examination.options.appName.empty())
        return Wide(examination.options.appName);
    const std::wstring& host = examination.host.path;
    const std::wstring name = host.substr(host.find_last_of(L'\\') + 1);
    return name.substr(0, name.rfind(L'.'));
}

/// The UUID of an installation that has none is made at the first start.
ConfigurationSource SourceIn(const Examination& examination) {
    return {[&](const wchar_t* key) { return examination.factory.TextOf(key); },
            [&] {
                const std::wstring uuid = examination.local.TextOf(AppDeployedUuidKey);
                return uuid.empty() ? L"(made by the first start)" : uuid;
            }};
}

/// The headers without the token, whatever it is.
std::string HeadersWithoutToken(const std::wstring& agent, std::size_t bodyLength) {
    return Utf8(RequestHeaders(L"(token)", agent, bodyLength));
}

Message Compose(const Examination& examination, MessageDictionary collected, const std::wstring& appId) {
    BasicConfiguration configuration;
    if (!ReadConfiguration(SourceIn(examination), configuration))
        return {};
    std::wstring text = MessageText(std::move(collected), configuration, L"");
    ScrubMessage(text, [](std::size_t) {});
    const std::string body = RequestBody(EncodeMessage(text));
    return {Utf8(L"https://" + HostFromUrl(configuration.serverUrl) +
                 RequestPath(configuration.projectId, BasicQueueName)),
            HeadersWithoutToken(appId, body.size()), Utf8(text), body};
}

} // namespace

void CheckWmi(Examination& examination) {
    const std::wstring appName = AppNameOf(examination);
    auto collected = WithinTime(examination.Milliseconds(),
                                [appName, host = examination.host.path] { return Collect(appName, host); });
    Report& report = examination.report;
    if (!collected) {
        report.Wrong(Id::WmiHangs, "no answer within " + std::to_string(examination.Milliseconds()) + " ms");
        return;
    }
    const std::string time = std::to_string(collected->milliseconds) + " ms";
    if (!collected->hasAnswered)
        report.Wrong(Id::WmiSilent, "asked for " + time);
    else if (collected->milliseconds > SlowMilliseconds)
        report.Wrong(Id::WmiSlow, "all answers took " + time);
    else
        report.Well(Check::Wmi, "all answers took " + time);
    examination.message =
        Compose(examination, std::move(collected->message), AppId(appName, examination.host.path));
}

} // namespace Zuvan::Lumeq::Tool::Doctor
