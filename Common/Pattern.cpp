#include "Common/Pattern.h"

namespace Zuvan::Lumeq::Common {

namespace {

std::regex_constants::syntax_option_type Options(LetterCase letterCase) {
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

} // namespace

template <class Char>
BasicPattern<Char>::BasicPattern(const Char* pattern, LetterCase letterCase)
    : _regex(pattern, Options(letterCase)) {}

template <class Char>
bool BasicPattern<Char>::Matches(const std::basic_string<Char>& text) const {
    return std::regex_match(text, _regex);
}

template class BasicPattern<wchar_t>;
template class BasicPattern<char>;

} // namespace Zuvan::Lumeq::Common
