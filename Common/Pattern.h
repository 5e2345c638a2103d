// A compiled regular expression whose matching is safe for any text and the same in any locale of the host's.
#pragma once

#include <locale>
#include <regex>
#include <string>

namespace Zuvan::Lumeq::Common {

/// The locale that patterns are compiled and matched in, made anew: that of C++, with characters whose case,
/// narrow form and order no setting of the host's or of the system's changes.
std::locale NewPatternLocale();

enum class LetterCase { Matters, Ignored };

/// An ECMAScript pattern. Construction throws std::regex_error for a malformed one. Read-only afterwards, so
/// any number of threads may match.
template <class Char>
class BasicPattern {
public:
    explicit BasicPattern(const Char* pattern, LetterCase letterCase = LetterCase::Matters);

    /// Whether the pattern covers the whole text. Time is linear in its length and stack use constant with
    /// libstdc++; another library may give up on a long text with std::regex_error.
    bool Matches(const std::basic_string<Char>& text) const;

private:
    std::basic_regex<Char> _regex;
};

// Once, in Pattern.cpp: the engine is by far the slowest thing here to compile.
extern template class BasicPattern<wchar_t>;
extern template class BasicPattern<char>;

using Pattern = BasicPattern<wchar_t>;
using NarrowPattern = BasicPattern<char>;

} // namespace Zuvan::Lumeq::Common
