#include "Common/Pattern.h"

#include "Common/AsciiCharacters.h"

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

/// Does not ask the C runtime for a key of the text, as the usual one does: libstdc++ wants one of each
/// character that a bracket has to tell, makes no use of it, and takes whatever length the runtime tells it
/// for one byte of a host's two-byte locale.
template <class Char>
class PlainCollation : public std::collate<Char> {
protected:
    std::basic_string<Char> do_transform(const Char* begin, const Char* end) const override {
        return {begin, end};
    }
};

/// The case of letters in the "C" locale, whatever a host has set: those of ASCII alone have one. The usual
/// facet asks the runtime, for which others have one too where a host has set another locale. What is a
/// letter at all the runtime tells alike in every one.
class AsciiCase : public AsciiCharacters {
protected:
    wchar_t do_tolower(wchar_t unit) const override {
        return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
    }
    wchar_t do_toupper(wchar_t unit) const override {
        return unit >= L'a' && unit <= L'z' ? static_cast<wchar_t>(unit - L'a' + L'A') : unit;
    }
    const wchar_t* do_tolower(wchar_t* begin, const wchar_t* end) const override {
        for (; begin != end; ++begin)
            *begin = do_tolower(*begin);
        return end;
    }
    const wchar_t* do_toupper(wchar_t* begin, const wchar_t* end) const override {
        for (; begin != end; ++begin)
            *begin = do_toupper(*begin);
        return end;
    }
};

/// Made by the first pattern, or by a later one where memory ran out, and so gone after all that are static
/// objects.
const std::locale& PatternLocale() {
    static const std::locale locale = NewPatternLocale();
    return locale;
}

} // namespace

std::locale NewPatternLocale() {
    return With<AsciiCase>(With<PlainCollation<wchar_t>>(With<PlainCollation<char>>(std::locale::classic())));
}

template <class Char>
BasicPattern<Char>::BasicPattern(const Char* pattern, LetterCase letterCase) {
    _regex.imbue(PatternLocale());
    _regex.assign(pattern, Options(letterCase));
}

template <class Char>
bool BasicPattern<Char>::Matches(const std::basic_string<Char>& text) const {
    return std::regex_match(text, _regex);
}

template class BasicPattern<wchar_t>;
template class BasicPattern<char>;

} // namespace Zuvan::Lumeq::Common
