#include "bench/Calls.h"
#include "bench/Exports.h"

#include <stdexcept>
#include <string>

namespace LumeqBench {

namespace {

using SampleHost::Library;

const API::StringDictionary LocalContext = {{L"pages_waiting", L"4"}};
constexpr wchar_t GlobalContext[] = L"Tarvik 3000";
const std::wstring Success = L"success";

/// One task, begun and ended. `complete` takes the address of the handle.
template <class Complete>
Call TaskPair(const Library& library, const char* name, Complete complete) {
    using Initiated = decltype(API::ScanAcquireInitiated);
    const auto initiate = Export<Initiated>(library, std::string(name) + "Initiated");
    return {name, [=] {
                API::TaskHandle task = initiate(&LocalContext, GlobalContext);
                if (task == nullptr)
                    throw std::runtime_error(std::string(name) + " did not begin");
                complete(&task);
                if (task != nullptr)
                    throw std::runtime_error(std::string(name) + " did not end");
            }};
}

Call Scan(const Library& library) {
    const auto completed = Export<decltype(API::ScanAcquireCompleted)>(library, "ScanAcquireCompleted");
    static const API::ScanFeatureMap features = {{L"deskew", true}, {L"remove_blank_pages", false}};
    return TaskPair(library, "ScanAcquire", [=](API::TaskHandle* task) {
        completed(task, Success, API::Scan::ShortcutType::save_pdf, API::Scan::ShortcutVarianceType::original,
                  API::Scan::ItemType::document, API::Scan::ResolutionType::dpi_300,
                  API::Scan::ColorModeType::color, API::Scan::PageSizeType::a4,
                  API::Scan::SourceType::flatbed, API::Scan::MimeType::application_pdf, features, 4);
    });
}

Call Print(const Library& library) {
    const auto completed = Export<decltype(API::PrintBasicCompleted)>(library, "PrintBasicCompleted");
    static const std::wstring paperSize = L"4x6 in";
    return TaskPair(library, "PrintBasic", [=](API::TaskHandle* task) {
        completed(task, Success, API::Print::SubsystemType::native, API::Print::ItemType::photo_multi,
                  API::Print::MimeType::image_any, API::Print::PageSizeType::size_4x6, paperSize, 3);
    });
}

Call SendFile(const Library& library) {
    const auto completed = Export<decltype(API::FileSendToCompleted)>(library, "FileSendToCompleted");
    return TaskPair(library, "FileSendTo", [=](API::TaskHandle* task) {
        completed(task, Success, API::File::ShortcutType::email_pdf,
                  API::File::ShortcutVarianceType::original, API::File::MimeType::application_pdf,
                  API::File::DestinationType::email_mapi, 4);
    });
}

Call Connect(const Library& library) {
    const auto completed = Export<decltype(API::DeviceConnectCompleted)>(library, "DeviceConnectCompleted");
    return TaskPair(library, "DeviceConnect", [=](API::TaskHandle* task) {
        completed(task, Success, API::ConnectionScenarioType::add,
                  API::ConnectionMethodType::auto_wireless_connect);
    });
}

Call Configure(const Library& library) {
    const auto completed = Export<decltype(API::DeviceConfigCompleted)>(library, "DeviceConfigCompleted");
    return TaskPair(library, "DeviceConfig", [=](API::TaskHandle* task) {
        completed(task, Success, API::ConfigurationSettingType::webservices_registration);
    });
}

Call Install(const Library& library) {
    const auto completed =
        Export<decltype(API::SoftwareInstallCompleted)>(library, "SoftwareInstallCompleted");
    static const std::wstring name = L"scan-station.msi";
    static const std::wstring version = L"2.14.0";
    return TaskPair(library, "SoftwareInstall", [=](API::TaskHandle* task) {
        completed(task, Success, API::InstallType::msi, name, version);
    });
}

Call Identify(const Library& library) {
    const auto getBiid = Export<decltype(API::GetBiid)>(library, "GetBiid");
    static const std::string deviceUuid = "1c852a4d-b800-1f08-abcd-3c52821f9ab0";
    return {"GetBiid", [=] {
                std::wstring biid;
                getBiid(deviceUuid, biid);
            }};
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

} // namespace

std::vector<Call> TaskCalls(const Library& library) {
    return {
        {"StartupEx without the message", Start(library)},
        Scan(library),
        Print(library),
        SendFile(library),
        Connect(library),
        Configure(library),
        Install(library),
        Identify(library),
        Discover(library, "TrackDiscoveredPrintersEx, 1 device", 1),
        Discover(library, "TrackDiscoveredPrintersEx, 10 devices", 10),
        Discover(library, "TrackDiscoveredPrintersEx, 100 devices", 100),
    };
}

std::vector<Call> OptInCalls(const Library& library) {
    const auto setOptIn = Export<decltype(API::SetUserOptInEx)>(library, "SetUserOptInEx");
    const auto getOptIn = Export<decltype(API::GetUserOptInEx)>(library, "GetUserOptInEx");
    const auto pause = Export<decltype(API::Pause)>(library, "Pause");
    const auto resume = Export<decltype(API::Resume)>(library, "Resume");
    return {
        {"SetUserOptInEx", [=] { setOptIn(true); }},
        {"GetUserOptInEx", [=] { getOptIn(); }},
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
