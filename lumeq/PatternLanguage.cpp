#include "lumeq/PatternLanguage.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace Zuvan::Lumeq::Tool {

using namespace Common;

struct PatternLanguage::Own {
    Own(const PatternPositions& positions)
        : classes(positions), automaton(Reversed(Backwards(positions, classes), classes.count)) {}

    SymbolClasses classes;
    Automaton automaton;
};

namespace {

/// A character of each symbol. ASCII comes first, and of it what people read best.
std::vector<std::pair<std::size_t, wchar_t>> SymbolsByLegibility() {
    std::vector<std::pair<std::size_t, wchar_t>> symbols;
    for (const wchar_t unit :
         std::wstring_view(L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./ "))
        symbols.emplace_back(unit, unit);
    const auto known = symbols.size();
    for (std::size_t unit = 0; unit < BeyondAscii; ++unit)
        if (std::none_of(symbols.begin(), symbols.begin() + static_cast<std::ptrdiff_t>(known),
                         [&](const auto& symbol) { return symbol.first == unit; }))
            symbols.emplace_back(unit, static_cast<wchar_t>(unit));
    for (const auto& [traits, unit] :
         std::initializer_list<std::pair<unsigned, wchar_t>>{{Alnum, L'\u00e9'},
                                                             {0u, L'\u20ac'},
                                                             {Space, L'\u00a0'},
                                                             {Control, L'\x80'},
                                                             {Space | Control, L'\x85'},
                                                             {Space | LineSeparator, L'\u2028'},
                                                             {Alnum | Digit, L'\u0660'},
                                                             {Digit, L'\u00b2'}})
        symbols.emplace_back(BeyondAscii + traits, unit);
    return symbols;
}

} // namespace

PatternLanguage::PatternLanguage(std::wstring_view expression, bool ignoresCase) {
    try {
        const PatternParser parser(expression, ignoresCase ? LetterCase::Ignored : LetterCase::Matters);
        _own = std::make_shared<const Own>(parser.Positions());
    } catch (const char* problem) {
        throw BadExpression(problem);
    }
}

PatternLanguage::PatternLanguage(const Pattern& pattern)
    : _rows(pattern.Rows()), _start(pattern.Rows().start) {}

std::size_t PatternLanguage::Next(std::size_t state, std::size_t symbol) const {
    return _rows ? _rows->Next(state, _rows->classOfSymbol[symbol])
                 : _own->automaton.next[state][_own->classes.ofSymbol[symbol]];
}

bool PatternLanguage::Accepts(std::size_t state) const {
    return _rows ? _rows->Accepts(state) : _own->automaton.accepts[state];
}

std::optional<std::wstring> AcceptedOnlyBy(const PatternLanguage& first, const PatternLanguage& second) {
    static const auto symbols = SymbolsByLegibility();
    using States = std::pair<std::size_t, std::size_t>;
    // Breadth first, so the text is a shortest one.
    std::vector<std::pair<States, std::wstring>> reached{{{first.Start(), second.Start()}, L""}};
    std::map<States, bool> seen{{reached.front().first, true}};
    for (std::size_t i = 0; i < reached.size(); ++i) {
        const auto [states, text] = reached[i];
        if (first.Accepts(states.first) && !second.Accepts(states.second))
            return text;
        for (const auto& [symbol, unit] : symbols) {
            const States next{first.Next(states.first, symbol), second.Next(states.second, symbol)};
            if (next.first != PatternRows::Dead && seen.emplace(next, true).second)
                reached.emplace_back(next, text + unit);
        }
    }
    return std::nullopt;
}

} // namespace Zuvan::Lumeq::Tool
