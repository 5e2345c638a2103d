// A compiled regular expression whose matching is safe for any text.
#pragma once

#include <regex>
#include <string>

namespace Zuvan::Lumeq::Common {

enum class LetterCase { Matters, Ignored };

/// An ECMAScript pattern. Construction throws std::regex_error for a malformed one. Read-only afterwards, so
/// any number of threads may match.
template <class Char>
class BasicPattern {
public:
    explicit BasicPattern(const Char* pattern, LetterCase letterCase = LetterCase::Matters)
        : _regex(pattern, Options(letterCase)) {}

    /// Whether the pattern covers the whole text. Time is linear in its length and stack use constant with
    /// libstdc++; another library may give up on a long text with std::regex_error.
    bool Matches(const std::basic_string<Char>& text) const { return std::regex_match(text, _regex); }

private:
    static std::regex_constants::syntax_option_type Options(LetterCase letterCase) {
        auto options =
            std::regex_constants::ECMAScript | std::regex_constants::nosubs | std::regex_constants::optimize;
#if defined(__GLIBCXX__)
        // libstdc++'s usual engine recurses once for each character, which a host's stack does not survive,
        // and takes exponential time over nested quantifiers. This one accepts the same texts.
        options |= std::regex_constants::__polynomial;
#endif
        if (letterCase == LetterCase::Ignored)
            options |= std::regex_constants::icase;
        return options;
    }

    std::basic_regex<Char> _regex;
};

using Pattern = BasicPattern<wchar_t>;
using NarrowPattern = BasicPattern<char>;

} // namespace Zuvan::Lumeq::Common
