// A second copy of the event schema's patterns, matched by the standard library's usual engine.
#pragma once

#include <cstddef>
#include <regex>
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
    // Patterns of the event classes.
    HyperlinkLabel,
    UrlLabel,
    ReportMoniker,
    FormMoniker,
    ClassTaskResult,
    ClassInstallVersion,
};
inline constexpr std::size_t KindCount = 28;

/// The standard library's form of a pattern; for UrlLabel too the one of wide characters.
const std::wregex& PlainRegex(Kind kind);

/// Up to this length the plain engine decides in acceptable time for any text.
std::size_t LongestPlainText(Kind kind);

/// Whether the pattern covers the whole text, by std::wregex, or std::regex over UTF-8 for UrlLabel.
bool PlainlyMatches(Kind kind, const std::wstring& text);

/// Whether it is one of the five patterns for names with inner spaces, for which the plain engine takes
/// exponential time.
bool IsName(Kind kind);

/// The same answer for a text of any length: by a hand-written rule for a name, otherwise by PlainlyMatches.
bool ShouldMatch(Kind kind, const std::wstring& text);

} // namespace Zuvan::Lumeq::Fuzzing
