// A first host over the C++ exports of Lumeq.dll.
#include <Lumeq/LumeqApi.h>

namespace API = Zuvan::Lumeq::API;

int main() {
    // [run]
    API::StartupEx(L"Scan Studio", API::WhyType::start_app, API::HowType::desktop_shortcut, true, false);
    API::SetUserOptInEx(true); // What the user answered.

    API::ScreenDisplayed(L"setup", nullptr, L"Home", nullptr, nullptr, nullptr);
    API::ButtonClicked(L"setup", nullptr, L"Home", nullptr, L"scan", nullptr, nullptr);

    API::TaskHandle scan = API::ScanAcquireInitiated(nullptr, L"Tarvik 3000");
    // ... the scan ...
    API::ScanAcquireCompleted(&scan, L"success", API::Scan::ShortcutType::save_pdf,
                              API::Scan::ShortcutVarianceType::original, API::Scan::ItemType::document,
                              API::Scan::ResolutionType::dpi_300, API::Scan::ColorModeType::color,
                              API::Scan::PageSizeType::a4, API::Scan::SourceType::flatbed,
                              API::Scan::MimeType::application_pdf, {{L"crop", true}}, 3);

    API::ShutdownEx(10000);
    // [/run]
}
