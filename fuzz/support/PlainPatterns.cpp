#include "fuzz/support/PlainPatterns.h"

#include "fuzz/support/PlainUtf.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <stdexcept>

namespace Zuvan::Lumeq::Fuzzing {

namespace {

struct Source {
    const wchar_t* text;
    bool ignoresCase;
};

constexpr wchar_t AdText[] = LR"(^([^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*)?$)";

constexpr Source Sources[] = {
    {LR"(^([^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*)$)", true},
    {LR"(^(unknown|[a-f0-9]{64})$)", false},
    {AdText, true},
    {AdText, true},
    {AdText, true},
    {LR"(^[a-z]+$)", false},
    {LR"(^[a-z0-9]([-\w]*[a-z0-9])?$)", true},
    {LR"(^[^\x00-\x1f\x80-\x9f]{1,128}$)", true},
    {LR"(^([a-z0-9](\w*[a-z0-9])?)?$)", true},
    {LR"(^[a-z]+(_[a-z]+)?$)", false},
    {LR"(^[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+$)", true},
    {LR"(^[0-9]+\.[0-9]+\.[0-9]+(\.[0-9]+)?$)", false},
    {LR"(^(\\?[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+(\\[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+)*\\?)$)", false},
    {LR"(^([a-z0-9]+)((_[a-z0-9]+)?)*$)", true},
    {LR"(^[a-z]+$)", false},
    {LR"(^[^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*$)", true},
    {LR"(^[a-z]+(_[a-z]+)?$)", false},
    {LR"(^[a-z0-9](\w*[a-z0-9])?$)", true},
    {LR"(^([a-z0-9]\w*(/[a-z0-9]\w*)*)?$)", true},
    {LR"(^(success|unknown|error(_(\d+|[a-zA-Z][a-zA-Z0-9]*))?)$)", false},
    {LR"(^(file|https?)://[^/]+(/[^\s?]*)?$)", true},
    {LR"(^\d+\.\d+$)", true},
    {LR"(^(/[A-Za-z0-9](\w*[A-Za-z0-9])?\.flow)?(/[A-Za-z0-9](\w*[A-Za-z0-9])?)"
     LR"((/[A-Za-z0-9](\w*[A-Za-z0-9])?)*)?/[A-Za-z0-9](\w*[A-Za-z0-9])?(-[A-Za-z0-9]+)?)"
     LR"((#url_[A-Za-z0-9]([-\w]*[A-Za-z0-9])?)$)",
     false},
    {LR"(^(file|https?)://[^?]+$)", false},
    {LR"(^x-[a-z]+_[a-z]+_report_[a-z]+(_[a-z]+)?/[0-9]+.[0-9]+$)", false},
    {LR"(^x-[a-z]+_[a-z]+_form_[a-z]+(_[a-z]+)?/[0-9]+.[0-9]+$)", false},
    {LR"(^(success|unknown|(error(_([a-zA-Z][a-zA-Z0-9]+|[0-9]+))?))$)", false},
    {LR"(^[0-9]+\.[0-9]+\.[0-9]+(\.[0-9]+)?$)", false},
};
static_assert(std::size(Sources) == KindCount);

std::wregex Compiled(const Source& source) {
    const auto icase = source.ignoresCase ? std::regex::icase : std::regex::flag_type{};
    return std::wregex(source.text, std::regex::ECMAScript | icase);
}

bool MatchesUtf8(const std::wstring& text) {
    static const std::regex urlLabel("^(file|https?)://[^?]+$");
    const std::optional<std::string> utf8 = PlainUtf8(text);
    if (!utf8)
        throw std::range_error("bad conversion");
    return std::regex_match(*utf8, urlLabel);
}

bool IsControl(wchar_t unit) { return unit < 0x20 || (unit >= 0x80 && unit <= 0x9F); }

bool IsNameWithInnerSpaces(const std::wstring& text) {
    return !text.empty() && text.front() != L' ' && text.back() != L' ' &&
           std::none_of(text.begin(), text.end(), IsControl);
}

} // namespace

bool IsName(Kind kind) {
    return kind == Kind::AppName || kind == Kind::AdName || kind == Kind::AdProduct ||
           kind == Kind::AdVariant || kind == Kind::PaperSize;
}

std::size_t LongestPlainText(Kind kind) {
    if (IsName(kind))
        return 12;
    return kind == Kind::HyperlinkLabel ? 60 : 140;
}

const std::wregex& PlainRegex(Kind kind) {
    // Each is compiled at its first use.
    static std::optional<std::wregex> compiled[KindCount];
    const auto index = static_cast<std::size_t>(kind);
    if (!compiled[index])
        compiled[index] = Compiled(Sources[index]);
    return *compiled[index];
}

bool PlainlyMatches(Kind kind, const std::wstring& text) {
    return kind == Kind::UrlLabel ? MatchesUtf8(text) : std::regex_match(text, PlainRegex(kind));
}

bool ShouldMatch(Kind kind, const std::wstring& text) {
    if (!IsName(kind))
        return PlainlyMatches(kind, text);
    const bool mayBeEmpty = kind != Kind::AppName && kind != Kind::PaperSize;
    return text.empty() ? mayBeEmpty : IsNameWithInnerSpaces(text);
}

} // namespace Zuvan::Lumeq::Fuzzing
