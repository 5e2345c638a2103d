#include "LumeqLib/Extra/Eventing/LabelChecks.h"

#include "Common/CompiledPattern.h"
#include "Common/Utf.h"

#include <algorithm>
#include <cwctype>
#include <string_view>

namespace Zuvan::Lumeq::Extra::Eventing {

using Common::CompiledPattern;

bool IsWhiteSpace(const wchar_t* text) {
    const std::wstring_view units(text);
    return !units.empty() &&
           std::all_of(units.begin(), units.end(), [](wchar_t unit) { return std::iswspace(unit) != 0; });
}

constinit const Common::Pattern urlLabelPattern = CompiledPattern<L"^(file|https?)://[^?]+$">;
constinit const Common::Pattern hyperlinkLabelPattern =
    CompiledPattern<LR"(^(/[A-Za-z0-9](\w*[A-Za-z0-9])?\.flow)?)"
                    LR"((/[A-Za-z0-9](\w*[A-Za-z0-9])?(/[A-Za-z0-9](\w*[A-Za-z0-9])?)*)?)"
                    LR"(/[A-Za-z0-9](\w*[A-Za-z0-9])?(-[A-Za-z0-9]+)?)"
                    LR"((#url_[A-Za-z0-9]([-\w]*[A-Za-z0-9])?)$)">;
// The dot of the version is not escaped in the two patterns below, so any character but the end of a line
// passes. Hosts rely on that.
constinit const Common::Pattern reportMonikerPattern =
    CompiledPattern<L"^x-[a-z]+_[a-z]+_report_[a-z]+(_[a-z]+)?/[0-9]+.[0-9]+$">;
constinit const Common::Pattern formMonikerPattern =
    CompiledPattern<L"^x-[a-z]+_[a-z]+_form_[a-z]+(_[a-z]+)?/[0-9]+.[0-9]+$">;

bool IsValidUrl(const std::wstring& label) {
    // Called only because it throws: a text without a UTF-8 form cannot be sent as a URL.
    static_cast<void>(Common::ToUtf8(label));
    return urlLabelPattern.Matches(label);
}

bool IsValidHyperlinkLabel(const std::wstring& label) { return hyperlinkLabelPattern.Matches(label); }

bool IsValidReportMoniker(const std::wstring& moniker) { return reportMonikerPattern.Matches(moniker); }

bool IsValidFormMoniker(const std::wstring& moniker) { return formMonikerPattern.Matches(moniker); }

} // namespace Zuvan::Lumeq::Extra::Eventing
