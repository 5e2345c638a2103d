// The automaton inside a std::wregex of libstdc++, and its comparison with a table of our own.
#pragma once

#include "Common/Pattern.h"

#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

class StandardAutomaton {
public:
    explicit StandardAutomaton(const std::wregex& regex);

    /// The shortest text that one of the two accepts and the other does not; none if they accept the same
    /// texts. Walks the product of the two over all code units.
    std::optional<std::wstring> FirstDifference(const Common::PatternRows& rows) const;

private:
    using Automaton = std::__detail::_NFA<std::regex_traits<wchar_t>>;
    using States = std::set<long>;

    enum class Place { Start, Later };

    /// The characters that all states treat alike get one number.
    void GroupCharacters();
    /// What `states` lead to without a character, up to those that take one or accept.
    States Closure(const States& states, Place place, bool isEnd) const;
    void AddClosure(long state, Place place, bool isEnd, States& seen) const;
    bool Accepts(const States& states, Place place) const;
    States Following(const States& closure, wchar_t unit) const;

    const Automaton& _automaton;
    std::vector<unsigned> _groupOf;
};

} // namespace Zuvan::Lumeq::Testing
