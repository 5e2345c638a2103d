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

} // namespace

std::vector<Call> TaskCalls(const Library& library) {
    return {
        Scan(library),    Print(library),     SendFile(library),
        Connect(library), Configure(library), Install(library),
    };
}

} // namespace LumeqBench
