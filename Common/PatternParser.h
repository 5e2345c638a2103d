// Reads the text of a pattern, while the compiler runs.
//
// A pattern holds characters, '.', \w \d \s, \xHH, escaped signs, brackets of these with ranges, groups, '|',
// and the quantifiers '*', '+', '?', {n} and {m,n}. As it always covers a whole text, it may begin with '^'
// and end with '$', which change nothing. Whatever else ECMAScript has is a throw, so it does not compile.
#pragma once

#include "Common/PatternSymbols.h"

#include <string_view>

namespace Zuvan::Lumeq::Common {

enum class LetterCase { Matters, Ignored };

inline constexpr std::size_t MostPositions = 192;
using PositionSet = NumberSet<MostPositions>;

/// Glushkov's automaton of a pattern. A position is a place in the pattern that takes one character; position
/// 0 is the start, before any. A counted part has positions of its own for each repetition.
struct PatternPositions {
    std::size_t count = 1;
    SymbolSet taken[MostPositions];    ///< By a position.
    PositionSet before[MostPositions]; ///< Positions that a position may follow.
    PositionSet last;                  ///< Positions at which a text may end.
};

class PatternParser {
public:
    constexpr PatternParser(std::wstring_view text, LetterCase letterCase)
        : _text(text), _ignoresCase(letterCase == LetterCase::Ignored) {
        Take(L'^');
        if (_text.ends_with(L'$') && !_text.ends_with(LR"(\$)"))
            _text.remove_suffix(1);
        const Part whole = Alternatives();
        if (!AtEnd())
            throw "a group is closed that was not opened";
        PositionSet start;
        start.Add(0);
        Join(start, whole.first);
        _positions.last = whole.last;
        if (whole.canBeEmpty)
            _positions.last.Add(0);
    }

    constexpr const PatternPositions& Positions() const { return _positions; }

private:
    struct Part {
        bool canBeEmpty = true;
        PositionSet first{};
        PositionSet last{};
    };

    constexpr bool AtEnd() const { return _at == _text.size(); }
    constexpr bool IsNext(wchar_t unit) const { return !AtEnd() && _text[_at] == unit; }
    constexpr bool IsNextOneOf(std::wstring_view units) const {
        return !AtEnd() && units.find(_text[_at]) != units.npos;
    }
    constexpr bool Take(wchar_t unit) {
        const bool isNext = IsNext(unit);
        _at += isNext;
        return isNext;
    }
    constexpr wchar_t TakeAny() {
        if (AtEnd())
            throw "the pattern ends too soon";
        return _text[_at++];
    }

    constexpr void Join(const PositionSet& from, const PositionSet& to) {
        for (std::size_t position = 1; position < _positions.count; ++position)
            if (to.Has(position))
                _positions.before[position].Add(from);
    }

    constexpr Part Alternatives() {
        Part result = Sequence();
        while (Take(L'|')) {
            const Part other = Sequence();
            result.canBeEmpty |= other.canBeEmpty;
            result.first.Add(other.first);
            result.last.Add(other.last);
        }
        return result;
    }

    constexpr Part Sequence() {
        Part result;
        while (!AtEnd() && !IsNextOneOf(L"|)"))
            result = Joined(result, Quantified());
        return result;
    }

    constexpr Part Joined(const Part& left, const Part& right) {
        Join(left.last, right.first);
        Part result{left.canBeEmpty && right.canBeEmpty, left.first, right.last};
        if (left.canBeEmpty)
            result.first.Add(right.first);
        if (right.canBeEmpty)
            result.last.Add(left.last);
        return result;
    }

    constexpr Part Quantified() {
        const std::size_t start = _at;
        Part result = Single();
        if (IsNextOneOf(L"*+"))
            Join(result.last, result.first);
        if (Take(L'*') || Take(L'?'))
            result.canBeEmpty = true;
        else if (!Take(L'+') && Take(L'{'))
            result = Counted(result, start);
        if (IsNextOneOf(L"*+?{"))
            throw "a quantifier follows another";
        return result;
    }

    /// `once` is the part that begins at `start`, read for the first time.
    constexpr Part Counted(const Part& once, std::size_t start) {
        const std::size_t least = Number();
        const std::size_t most = Take(L',') ? Number() : least;
        if (!Take(L'}') || least == 0 || most < least)
            throw "a count is not understood";
        const std::size_t end = _at;
        Part result = once;
        for (std::size_t times = 1; times < most; ++times) {
            _at = start;
            const Part next = Single();
            const PositionSet endsSoFar = result.last;
            result = Joined(result, next);
            if (times >= least)
                result.last.Add(endsSoFar);
        }
        _at = end;
        return result;
    }

    constexpr std::size_t Number() {
        std::size_t number = 0;
        do {
            if (!IsNextOneOf(L"0123456789"))
                throw "a number is missing";
            number = number * 10 + static_cast<std::size_t>(TakeAny() - L'0');
        } while (!IsNextOneOf(L",}"));
        return number;
    }

    constexpr Part Single() {
        if (Take(L'(')) {
            const Part group = Alternatives();
            if (!Take(L')'))
                throw "a group is not closed";
            return group;
        }
        if (_positions.count == MostPositions)
            throw "the pattern has too many positions";
        const std::size_t position = _positions.count++;
        _positions.taken[position] = Symbols();
        Part result{false};
        result.first.Add(position);
        result.last.Add(position);
        return result;
    }

    constexpr SymbolSet Symbols() {
        if (Take(L'.'))
            return SymbolsOfALine();
        if (Take(L'['))
            return Bracket();
        SymbolSet set;
        if (TakeClass(set))
            return set;
        if (IsNextOneOf(L"^$*+?{}]"))
            throw "a sign is not escaped that has a meaning elsewhere";
        set.Add(Ascii(Character()));
        return _ignoresCase ? WithBothCases(set) : set;
    }

    constexpr SymbolSet Bracket() {
        const bool isNegated = Take(L'^');
        SymbolSet classes;
        SymbolSet characters;
        while (!Take(L']'))
            if (!TakeClass(classes))
                TakeRange(characters);
        SymbolSet set = _ignoresCase ? WithBothCases(characters) : characters;
        set.Add(classes);
        return isNegated ? Complement(set) : set;
    }

    constexpr void TakeRange(SymbolSet& set) {
        constexpr wchar_t FirstControl = 0x80;
        constexpr wchar_t LastControl = 0x9F;
        if (IsNext(L'['))
            throw "a named class in a bracket";
        const wchar_t first = Character();
        wchar_t last = first;
        if (IsNext(L'-') && !_text.substr(_at).starts_with(L"-]")) {
            ++_at;
            last = Character();
        }
        if (last < first)
            throw "a range ends before it begins";
        // Beyond ASCII a pattern distinguishes only the control characters, all of them together.
        if (last == LastControl && first <= FirstControl) {
            AddAllWith(Control, set);
            last = FirstControl - 1;
        }
        AddRange(set, first, Ascii(last));
    }

    constexpr bool TakeClass(SymbolSet& set) {
        const std::wstring_view rest = _text.substr(_at);
        if (rest.starts_with(LR"(\w)"))
            set.Add(WordSymbols());
        else if (rest.starts_with(LR"(\d)"))
            set.Add(DigitSymbols());
        else if (rest.starts_with(LR"(\s)"))
            set.Add(SpaceSymbols());
        else
            return false;
        _at += 2;
        return true;
    }

    constexpr wchar_t Character() {
        const wchar_t unit = TakeAny();
        if (unit != L'\\')
            return unit;
        if (Take(L'x')) {
            const unsigned high = HexDigit();
            return static_cast<wchar_t>(high * 16 + HexDigit());
        }
        const wchar_t escaped = TakeAny();
        if (WordSymbols().Has(Ascii(escaped)))
            throw "an escape is unknown";
        return escaped;
    }

    constexpr unsigned HexDigit() {
        constexpr std::wstring_view Digits = L"0123456789abcdef";
        const std::size_t value = Digits.find(TakeAny());
        if (value == Digits.npos)
            throw "\\x wants two digits, letters in lower case";
        return static_cast<unsigned>(value);
    }

    static constexpr std::size_t Ascii(wchar_t unit) {
        const auto symbol = static_cast<std::size_t>(unit);
        if (symbol >= BeyondAscii)
            throw "a character beyond ASCII";
        return symbol;
    }

    std::wstring_view _text;
    bool _ignoresCase;
    std::size_t _at = 0;
    PatternPositions _positions;
};

} // namespace Zuvan::Lumeq::Common
