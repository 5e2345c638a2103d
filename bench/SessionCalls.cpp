#include "bench/Calls.h"
#include "bench/Exports.h"

#include <string>

namespace LumeqBench {

namespace {

using SampleHost::Library;

constexpr char DeviceUuid[] = "1c852a4d-b800-1f08-abcd-3c52821f9ab0";

/// A call that takes nothing.
template <class Function>
Call Plain(const Library& library, const char* name) {
    return {name, [function = Export<Function>(library, name)] { function(); }};
}

Call Discover(const Library& library, const char* name, std::size_t count) {
    const auto track = Export<decltype(API::TrackDiscoveredPrintersEx)>(library, "TrackDiscoveredPrintersEx");
    const API::StringDictionary printer = {
        {L"dev_biid", L"0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"},
        {L"dev_modelname", L"Tarvik 3000"},
        {L"dev_connection", L"wifi"}};
    const API::DiscoveredDeviceList printers(count, {nullptr, printer});
    return {name, [=] { track(printers); }};
}

std::vector<Call> TextCalls(const Library& library) {
    const auto biid = Export<decltype(API::GetBiid)>(library, "GetBiid");
    const auto biidBuffer = Export<decltype(API::GetBiid_Internal)>(library, "GetBiid_Internal");
    const auto text = Export<void(API::ConnectionMethodType, std::wstring&)>(library, "ToString");
    const auto textBuffer =
        Export<std::int32_t(wchar_t*, std::size_t, API::ConnectionMethodType)>(library, "ToString_Internal");
    static wchar_t buffer[128];
    return {
        {"GetBiid",
         [=] {
             std::wstring found;
             biid(DeviceUuid, found);
         }},
        {"GetBiid_Internal", [=] { biidBuffer(buffer, std::size(buffer), DeviceUuid); }},
        {"ToString",
         [=] {
             std::wstring found;
             text(API::ConnectionMethodType::usb, found);
         }},
        {"ToString_Internal", [=] { textBuffer(buffer, std::size(buffer), API::ConnectionMethodType::usb); }},
    };
}

} // namespace

std::vector<Call> SessionCalls(const Library& library) {
    const auto flush = Export<decltype(API::FlushEx)>(library, "FlushEx");
    const auto shutdown = Export<decltype(API::ShutdownEx)>(library, "ShutdownEx");
    const auto context = Export<decltype(API::SetGlobalContextEx)>(library, "SetGlobalContextEx");
    const auto subpath = Export<decltype(API::SetLocalSubfolderPathEx)>(library, "SetLocalSubfolderPathEx");
    static const std::wstring folder = L"Devron";
    std::vector<Call> calls = TextCalls(library);
    calls.insert(calls.end(),
                 {
                     {"FlushEx", [=] { flush(100); }},
                     {"ShutdownEx", [=] { shutdown(100); }},
                     {"SetGlobalContextEx", [=] { context(L"Tarvik 3000"); }},
                     {"SetLocalSubfolderPathEx", [=] { subpath(folder); }},
                     Plain<decltype(API::TrackPrintQueueInfoEx)>(library, "TrackPrintQueueInfoEx"),
                     Plain<decltype(API::TrackSystemInformationEx)>(library, "TrackSystemInformationEx"),
                     Discover(library, "TrackDiscoveredPrintersEx, 1 device", 1),
                     Discover(library, "TrackDiscoveredPrintersEx, 10 devices", 10),
                     Discover(library, "TrackDiscoveredPrintersEx, 100 devices", 100),
                 });
    return calls;
}

std::vector<Call> StartCalls(const Library& library) {
    return {{"StartupEx without the message", Start(library)}};
}

std::vector<Call> OptInCalls(const Library& library) {
    const auto setOptIn = Export<decltype(API::SetUserOptInEx)>(library, "SetUserOptInEx");
    const auto pause = Export<decltype(API::Pause)>(library, "Pause");
    const auto resume = Export<decltype(API::Resume)>(library, "Resume");
    return {
        {"SetUserOptInEx", [=] { setOptIn(true); }},
        Plain<decltype(API::GetUserOptInEx)>(library, "GetUserOptInEx"),
        {"Pause and Resume",
         [=] {
             pause();
             resume();
         }},
    };
}

Action Start(const Library& library) {
    const auto startup = Export<decltype(API::StartupEx)>(library, "StartupEx");
    static const std::wstring appName = L"Scan Station";
    return [=] { startup(appName, API::WhyType::start_app, API::HowType::startmenu_shortcut, true, false); };
}

} // namespace LumeqBench
