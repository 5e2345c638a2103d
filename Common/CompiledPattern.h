// Patterns that the compiler turns into tables.
#pragma once

#include "Common/Pattern.h"
#include "Common/PatternAutomaton.h"

#include <algorithm>
#include <array>

namespace Zuvan::Lumeq::Common {

/// The text of a pattern, as the argument of a template.
template <std::size_t Size>
struct PatternText {
    wchar_t units[Size] = {};

    constexpr PatternText(const wchar_t (&text)[Size]) { std::copy_n(text, Size, units); }
    constexpr std::wstring_view View() const { return {units, Size - 1}; }
};

template <PatternText Text, LetterCase Case>
class PatternTable {
    static constexpr PatternPositions Positions = PatternParser(Text.View(), Case).Positions();
    static constexpr SymbolClasses Classes = SymbolClasses(Positions);
    static constexpr Automaton Smallest = Reversed(Backwards(Positions, Classes), Classes.count);

    /// The dead state stays the first, and those that accept come last.
    static constexpr auto RowNumbers = [] {
        std::array<std::uint16_t, Smallest.states> numbers{};
        std::uint16_t number = 0;
        for (const bool accepts : {false, true})
            for (std::size_t state = 0; state < Smallest.states; ++state)
                if (Smallest.accepts[state] == accepts)
                    numbers[state] = number++;
        return numbers;
    }();

    static constexpr std::uint16_t RowOf(std::size_t state) {
        return static_cast<std::uint16_t>(RowNumbers[state] * Classes.count);
    }

    static constexpr auto ClassOfSymbol = std::to_array(Classes.ofSymbol);
    static constexpr auto Rows = [] {
        std::array<std::uint16_t, Smallest.states * Classes.count> rows{};
        for (std::size_t state = 0; state < Smallest.states; ++state)
            for (std::size_t its = 0; its < Classes.count; ++its)
                rows[RowOf(state) + its] = RowOf(Smallest.next[state][its]);
        return rows;
    }();
    static constexpr std::size_t Refusing =
        static_cast<std::size_t>(std::count(Smallest.accepts, Smallest.accepts + Smallest.states, false));

public:
    static constexpr Pattern Compiled{{ClassOfSymbol.data(), Rows.data(), Rows.size(), Classes.count,
                                       RowOf(1), Refusing* Classes.count, Classes.TraitsThatMatter()}};
};

/// A pattern in ECMAScript's syntax, as far as PatternParser.h reads it.
template <PatternText Text, LetterCase Case = LetterCase::Matters>
inline constexpr const Pattern& CompiledPattern = PatternTable<Text, Case>::Compiled;

} // namespace Zuvan::Lumeq::Common
