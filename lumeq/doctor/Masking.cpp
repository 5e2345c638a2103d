#include "lumeq/doctor/Masking.h"

#include "lumeq/view/HiddenParts.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

constexpr std::string_view Mask = "***";

/// What follows `start` is masked, up to the first of `ends` or the end of the line.
struct Rule {
    std::string_view start;
    std::string_view ends;
};

constexpr Rule Rules[] = {
    // The token: in the headers, in the log of the configuration, and in settings files.
    {"bearer ", " \\\""},
    {"authtoken=", ""},
    {"<authenticationtoken", "<"},
    // Identifiers of the machine, the installation and its devices.
    {"<appdeployeduuid", "<"},
    {"appdeployeduuid=", ","},
    {"\"sys_uuid\":\"", "\""},
    {"\"pc_sku\":\"", "\""},
    {"\"app_deployed_uuid\":\"", "\""},
    {"\\\"sys_uuid\\\":\\\"", "\\\""},
    {"\\\"pc_sku\\\":\\\"", "\\\""},
    {"deviceuuid: \"", "\""},
    {"biid: \"", "\""},
    // A message in Base64.
    {".b64?=", "\\\""},
};

char Lower(char unit) { return static_cast<char>(std::tolower(static_cast<unsigned char>(unit))); }

std::string Lowered(std::string_view text) {
    std::string lowered(text);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), Lower);
    return lowered;
}

/// Replaces each text that `find` returns as a pair of positions, from left to right. `find` gets the text in
/// lower case, and where to start.
template <class Find>
std::string Replaced(const std::string& text, Find find) {
    const std::string lower = Lowered(text);
    std::string result;
    std::size_t at = 0;
    for (;;) {
        const auto [from, to] = find(lower, at);
        if (from == lower.npos)
            return result + text.substr(at);
        result += text.substr(at, from - at);
        if (to > from)
            result += Mask;
        at = to;
    }
}

using Range = std::pair<std::size_t, std::size_t>;

std::string MaskedBy(const Rule& rule, const std::string& text) {
    return Replaced(text, [&rule](const std::string& lower, std::size_t at) -> Range {
        const std::size_t start = lower.find(rule.start, at);
        if (start == lower.npos)
            return {start, start};
        std::size_t from = start + rule.start.size();
        // An element's own tag may have attributes.
        if (rule.start.front() == '<')
            from = std::min(lower.find('>', from), lower.size() - 1) + 1;
        const std::size_t end = lower.find_first_of(std::string(rule.ends) + "\r\n", from);
        return {from, std::min(end, lower.size())};
    });
}

bool IsAlphanumeric(char unit) { return std::isalnum(static_cast<unsigned char>(unit)) != 0; }

bool IsWord(const std::string& text, std::size_t from, std::size_t to) {
    return (from == 0 || !IsAlphanumeric(text[from - 1])) && (to == text.size() || !IsAlphanumeric(text[to]));
}

bool IsAnything(const std::string&, std::size_t, std::size_t) { return true; }

using Place = bool(const std::string& text, std::size_t from, std::size_t to);

std::string Without(const std::string& wanted, Place* isMasked, const std::string& text) {
    return Replaced(text, [&](const std::string& lower, std::size_t at) -> Range {
        for (std::size_t from = lower.find(wanted, at); from != lower.npos;
             from = lower.find(wanted, from + 1))
            if (isMasked(lower, from, from + wanted.size()))
                return {from, from + wanted.size()};
        return {lower.npos, lower.npos};
    });
}

std::string WithoutAll(const std::vector<std::string>& wanted, Place* isMasked, std::string text) {
    for (const std::string& one : wanted)
        if (one.size() >= 3)
            text = Without(Lowered(one), isMasked, text);
    return text;
}

/// The call that posts is logged with the token as its last argument.
std::string WithoutPostedTokens(const std::string& text) {
    return Replaced(text, [](const std::string& lower, std::size_t at) -> Range {
        const std::size_t call = lower.find("postmessageandforget(", at);
        if (call == lower.npos)
            return {call, call};
        const std::size_t end = std::min(lower.find_first_of("\r\n", call), lower.size());
        const std::size_t comma = lower.rfind(", ", end);
        return comma == lower.npos || comma < call ? Range{end, end} : Range{comma + 2, end};
    });
}

/// What the page of `lumeq view` hides too: identifiers, and users in paths and URLs.
std::string WithoutHiddenParts(const std::string& text) {
    std::string result;
    std::size_t at = 0;
    for (const HiddenPart& part : PartsToHide(text)) {
        result += text.substr(at, part.begin - at) + std::string(Mask);
        at = part.begin + part.size;
    }
    return result + text.substr(at);
}

std::string WithoutAddresses(const std::string& text) {
    const auto belongs = [](char unit) {
        return IsAlphanumeric(unit) || std::string_view("._%+-").find(unit) != std::string_view::npos;
    };
    return Replaced(text, [&](const std::string& lower, std::size_t at) -> Range {
        for (std::size_t sign = lower.find('@', at); sign != lower.npos; sign = lower.find('@', sign + 1)) {
            std::size_t from = sign, to = sign + 1;
            while (from > at && belongs(lower[from - 1]))
                --from;
            while (to < lower.size() && belongs(lower[to]))
                ++to;
            if (from < sign && to > sign + 1)
                return {from, to};
        }
        return {lower.npos, lower.npos};
    });
}

} // namespace

std::string TextMasking::Masked(std::string text) const {
    text = WithoutPostedTokens(text);
    for (const Rule& rule : Rules)
        text = MaskedBy(rule, text);
    text = WithoutAll(_names, IsWord, WithoutAll(_secrets, IsAnything, std::move(text)));
    return WithoutAddresses(WithoutHiddenParts(text));
}

} // namespace Zuvan::Lumeq::Tool::Doctor
