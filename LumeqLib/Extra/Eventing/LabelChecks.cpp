#include "LumeqLib/Extra/Eventing/LabelChecks.h"

#include "Common/Pattern.h"
#include "Common/Utf.h"
#include "LumeqLib/Extra/Eventing/RegexFailure.h"

#include <algorithm>
#include <locale>
#include <string_view>

namespace Zuvan::Lumeq::Extra::Eventing {

bool IsWhiteSpace(const wchar_t* text) {
    const std::wstring_view units(text);
    const std::locale locale;
    return !units.empty() && std::all_of(units.begin(), units.end(),
                                         [&locale](wchar_t unit) { return std::isspace(unit, locale); });
}

bool IsValidUrl(const std::wstring& label) {
    return MatchOrReport(L"label", label, [&label] {
        static const Common::NarrowPattern pattern("^(file|https?)://[^?]+$");
        return pattern.Matches(Common::ToUtf8(label));
    });
}

bool IsValidHyperlinkLabel(const std::wstring& label) {
    return MatchOrReport(L"label", label, [&label] {
        static const Common::Pattern pattern(
            LR"(^(/[A-Za-z0-9](\w*[A-Za-z0-9])?\.flow)?)"
            LR"((/[A-Za-z0-9](\w*[A-Za-z0-9])?(/[A-Za-z0-9](\w*[A-Za-z0-9])?)*)?)"
            LR"(/[A-Za-z0-9](\w*[A-Za-z0-9])?(-[A-Za-z0-9]+)?)"
            LR"((#url_[A-Za-z0-9]([-\w]*[A-Za-z0-9])?)$)");
        return pattern.Matches(label);
    });
}

// The dot of the version is not escaped in the two patterns below, so any character passes for it. Hosts rely
// on that.
bool IsValidReportMoniker(const std::wstring& moniker) {
    return MatchOrReport(L"moniker", moniker, [&moniker] {
        static const Common::Pattern pattern(L"^x-[a-z]+_[a-z]+_report_[a-z]+(_[a-z]+)?/[0-9]+.[0-9]+$");
        return pattern.Matches(moniker);
    });
}

bool IsValidFormMoniker(const std::wstring& moniker) {
    return MatchOrReport(L"moniker", moniker, [&moniker] {
        static const Common::Pattern pattern(L"^x-[a-z]+_[a-z]+_form_[a-z]+(_[a-z]+)?/[0-9]+.[0-9]+$");
        return pattern.Matches(moniker);
    });
}

} // namespace Zuvan::Lumeq::Extra::Eventing
