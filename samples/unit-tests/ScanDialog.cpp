#include "ScanDialog.h"

namespace API = Zuvan::Lumeq::API;

void ScanDialog::Open() { API::ScreenDisplayed(L"scan", nullptr, L"Preview", nullptr, nullptr, nullptr); }

void ScanDialog::ChooseTheme(const std::wstring& theme) { _theme = theme; }

void ScanDialog::PressScan() {
    API::ButtonClicked(L"scan", nullptr, L"Preview", _theme.empty() ? nullptr : _theme.c_str(), L"scan",
                       nullptr, nullptr);
    _scan = API::ScanAcquireInitiated(nullptr, L"Tarvik 3000");
}

void ScanDialog::ScanEnds(bool isSuccess, int pages) {
    API::ScanAcquireCompleted(&_scan, isSuccess ? L"success" : L"error_12", API::Scan::ShortcutType::save_pdf,
                              API::Scan::ShortcutVarianceType::original, API::Scan::ItemType::document,
                              API::Scan::ResolutionType::dpi_300, API::Scan::ColorModeType::color,
                              API::Scan::PageSizeType::a4, API::Scan::SourceType::flatbed,
                              API::Scan::MimeType::application_pdf, {{L"crop", true}}, pages);
}

void ScanDialog::PressClose() {
    API::ButtonClicked(L"scan", nullptr, L"Preview", nullptr, L"close", nullptr, nullptr);
}
