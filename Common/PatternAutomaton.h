// Makes the smallest automaton of a pattern, while the compiler runs.
#pragma once

#include "Common/PatternParser.h"

namespace Zuvan::Lumeq::Common {

/// Symbols that every position of a pattern treats alike form one class.
inline constexpr std::size_t MostClasses = 24;

struct SymbolClasses {
    std::size_t count = 0;
    std::uint8_t ofSymbol[SymbolCount] = {};
    PositionSet takenAt[MostClasses];

    constexpr explicit SymbolClasses(const PatternPositions& positions) {
        for (std::size_t symbol = 0; symbol < SymbolCount; ++symbol) {
            PositionSet taking;
            for (std::size_t position = 1; position < positions.count; ++position)
                if (positions.taken[position].Has(symbol))
                    taking.Add(position);
            ofSymbol[symbol] = static_cast<std::uint8_t>(ClassOf(taking));
        }
    }

    /// The traits without which some character beyond ASCII would be of another class.
    constexpr unsigned TraitsThatMatter() const {
        unsigned matter = 0;
        for (unsigned traits = 0; traits <= AllTraits; ++traits)
            for (unsigned trait = 1; trait <= AllTraits; trait *= 2)
                if (ofSymbol[BeyondAscii + traits] != ofSymbol[BeyondAscii + (traits ^ trait)])
                    matter |= trait;
        return matter;
    }

private:
    constexpr std::size_t ClassOf(const PositionSet& taking) {
        for (std::size_t known = 0; known < count; ++known)
            if (takenAt[known] == taking)
                return known;
        if (count == MostClasses)
            throw "the pattern has too many classes of characters";
        takenAt[count] = taking;
        return count++;
    }
};

inline constexpr std::size_t MostStates = 256;
using StateSet = NumberSet<MostStates>;

/// A text moves it from state to state, one class at a time. From state 0 nothing is accepted any more; state
/// 1 is the start.
struct Automaton {
    std::size_t states = 2;
    std::uint8_t next[MostStates][MostClasses] = {};
    bool accepts[MostStates] = {};
};

/// Each state of the result stands for a set of states of another automaton: the start for `start`, and what
/// follows is `Step(set, class)`. A set accepts if it shares a member with `accepting`.
template <std::size_t Size, class Step>
constexpr Automaton Determined(const NumberSet<Size>& start, const NumberSet<Size>& accepting,
                               std::size_t classes, Step step) {
    Automaton result;
    NumberSet<Size> sets[MostStates];
    sets[1] = start;
    for (std::size_t state = 1; state < result.states; ++state) {
        result.accepts[state] = sets[state].Overlaps(accepting);
        for (std::size_t its = 0; its < classes; ++its) {
            const NumberSet<Size> following = step(sets[state], its);
            std::size_t target = 0;
            while (target < result.states && sets[target] != following)
                ++target;
            if (target == MostStates)
                throw "the pattern has too many states";
            if (target == result.states)
                sets[result.states++] = following;
            result.next[state][its] = static_cast<std::uint8_t>(target);
        }
    }
    return result;
}

/// Of the pattern read from its end to its beginning.
constexpr Automaton Backwards(const PatternPositions& positions, const SymbolClasses& classes) {
    PositionSet beginning;
    beginning.Add(0);
    return Determined(positions.last, beginning, classes.count,
                      [&](const PositionSet& from, std::size_t its) {
                          PositionSet reached;
                          for (std::size_t position = 1; position < positions.count; ++position)
                              if (from.Has(position) && classes.takenAt[its].Has(position))
                                  reached.Add(positions.before[position]);
                          return reached;
                      });
}

/// The same texts read the other way. By Brzozowski's theorem the result has the fewest states possible,
/// because `automaton` is deterministic and reaches all of its states.
constexpr Automaton Reversed(const Automaton& automaton, std::size_t classes) {
    StateSet start;
    StateSet accepting;
    accepting.Add(1);
    for (std::size_t state = 1; state < automaton.states; ++state)
        if (automaton.accepts[state])
            start.Add(state);
    return Determined(start, accepting, classes, [&](const StateSet& from, std::size_t its) {
        StateSet reached;
        for (std::size_t state = 1; state < automaton.states; ++state)
            if (from.Has(automaton.next[state][its]))
                reached.Add(state);
        return reached;
    });
}

} // namespace Zuvan::Lumeq::Common
