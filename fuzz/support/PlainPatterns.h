// The event schema's patterns once more, in a copy of their own, matched by the standard library's usual
// engine.
#pragma once

#include <cstddef>
#include <string>

namespace Zuvan::Lumeq::Fuzzing {

enum class Kind {
    AppName,
    Biid,
    AdName,
    AdProduct,
    AdVariant,
    CodeName,
    ControlName,
    Context,
    Flow,
    FormName,
    InstallName,
    InstallVersion,
    Subpath,
    Mode,
    OrgName,
    PaperSize,
    ReportName,
    ScreenName,
    ScreenPath,
    TaskResult,
    Url,
    SchemaVersion,
    // Those of the event classes.
    HyperlinkLabel,
    UrlLabel,
    ReportMoniker,
    FormMoniker,
    ClassTaskResult,
    ClassInstallVersion,
};
inline constexpr std::size_t KindCount = 28;

/// Up to this length the plain engine decides in acceptable time, however the text is made.
std::size_t LongestPlainText(Kind kind);

/// Whether the pattern covers the whole text, by std::wregex, or std::regex over UTF-8 for UrlLabel.
bool PlainlyMatches(Kind kind, const std::wstring& text);

/// Whether it is one of the five patterns for names with inner spaces, which take the plain engine
/// exponential time.
bool IsName(Kind kind);

/// The same answer for a text of any length, told by hand for a name and by PlainlyMatches otherwise.
bool ShouldMatch(Kind kind, const std::wstring& text);

} // namespace Zuvan::Lumeq::Fuzzing
