#include "Common/Pattern.h"

#include "Common/PatternSymbols.h"

#include <cwctype>

namespace Zuvan::Lumeq::Common {

namespace {

constexpr bool IsControl(wchar_t unit) { return unit >= 0x80 && unit <= 0x9F; }
constexpr bool IsLineSeparator(wchar_t unit) { return unit == 0x2028 || unit == 0x2029; }

/// Asks the runtime only what matters. What is a letter, a digit or a space it says alike in every locale;
/// for case it does not, so patterns know ASCII's alone.
unsigned TraitsOf(wchar_t unit, unsigned thatMatter) noexcept {
    unsigned traits = 0;
    if ((thatMatter & Alnum) != 0 && std::iswalnum(unit) != 0)
        traits |= Alnum;
    if ((thatMatter & Digit) != 0 && std::iswdigit(unit) != 0)
        traits |= Digit;
    if ((thatMatter & Space) != 0 && std::iswspace(unit) != 0)
        traits |= Space;
    if (IsControl(unit))
        traits |= Control;
    if (IsLineSeparator(unit))
        traits |= LineSeparator;
    return traits;
}

} // namespace

std::size_t PatternRows::ClassOf(wchar_t unit) const noexcept {
    const auto symbol = static_cast<std::size_t>(unit);
    return classOfSymbol[symbol < BeyondAscii ? symbol : BeyondAscii + TraitsOf(unit, traits)];
}

bool Pattern::Matches(std::wstring_view text) const noexcept {
    std::size_t state = _rows.start;
    for (const wchar_t unit : text) {
        state = _rows.Next(state, _rows.ClassOf(unit));
        if (state == PatternRows::Dead)
            return false;
    }
    return _rows.Accepts(state);
}

} // namespace Zuvan::Lumeq::Common
