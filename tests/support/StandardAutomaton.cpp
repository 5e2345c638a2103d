#include "support/StandardAutomaton.h"

#include <array>
#include <deque>
#include <map>
#include <stdexcept>
#include <utility>

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr unsigned CodeUnits = 0x10000;

using AutomatonOfRegex =
    std::shared_ptr<const std::__detail::_NFA<std::regex_traits<wchar_t>>> std::wregex::*;

// An explicit instantiation may name a private member: the library shows its automaton in no other way.
AutomatonOfRegex PrivateMember();
template <AutomatonOfRegex Member>
struct Opened {
    friend AutomatonOfRegex PrivateMember() { return Member; }
};
template struct Opened<&std::wregex::_M_automaton>;

} // namespace

StandardAutomaton::StandardAutomaton(const std::wregex& regex) : _automaton(*(regex.*PrivateMember())) {
    GroupCharacters();
}

void StandardAutomaton::GroupCharacters() {
    constexpr unsigned None = ~0U;
    _groupOf.assign(CodeUnits, 0);
    unsigned count = 1;
    for (const auto& state : _automaton) {
        if (state._M_opcode() != std::__detail::_S_opcode_match)
            continue;
        // Each group stays one or becomes two.
        std::vector<std::array<unsigned, 2>> parts(count, {None, None});
        count = 0;
        for (unsigned unit = 0; unit < CodeUnits; ++unit) {
            unsigned& part = parts[_groupOf[unit]][state._M_matches(static_cast<wchar_t>(unit))];
            if (part == None)
                part = count++;
            _groupOf[unit] = part;
        }
    }
}

StandardAutomaton::States StandardAutomaton::Closure(const States& states, Place place, bool isEnd) const {
    States seen;
    for (const long state : states)
        AddClosure(state, place, isEnd, seen);
    return seen;
}

void StandardAutomaton::AddClosure(long state, Place place, bool isEnd, States& seen) const {
    if (!seen.insert(state).second)
        return;
    const auto& it = _automaton[static_cast<std::size_t>(state)];
    switch (it._M_opcode()) {
    case std::__detail::_S_opcode_alternative:
    case std::__detail::_S_opcode_repeat:
        AddClosure(it._M_alt, place, isEnd, seen);
        AddClosure(it._M_next, place, isEnd, seen);
        break;
    case std::__detail::_S_opcode_line_begin_assertion:
        if (place == Place::Start)
            AddClosure(it._M_next, place, isEnd, seen);
        break;
    case std::__detail::_S_opcode_line_end_assertion:
        if (isEnd)
            AddClosure(it._M_next, place, isEnd, seen);
        break;
    case std::__detail::_S_opcode_subexpr_begin:
    case std::__detail::_S_opcode_subexpr_end:
    case std::__detail::_S_opcode_dummy:
        AddClosure(it._M_next, place, isEnd, seen);
        break;
    case std::__detail::_S_opcode_match:
    case std::__detail::_S_opcode_accept:
        break;
    default:
        throw std::logic_error("no pattern has such a state");
    }
}

bool StandardAutomaton::Accepts(const States& states, Place place) const {
    for (const long state : Closure(states, place, true))
        if (_automaton[static_cast<std::size_t>(state)]._M_opcode() == std::__detail::_S_opcode_accept)
            return true;
    return false;
}

StandardAutomaton::States StandardAutomaton::Following(const States& closure, wchar_t unit) const {
    States following;
    for (const long state : closure)
        if (const auto& it = _automaton[static_cast<std::size_t>(state)];
            it._M_opcode() == std::__detail::_S_opcode_match && it._M_matches(unit))
            following.insert(it._M_next);
    return following;
}

std::optional<std::wstring> StandardAutomaton::FirstDifference(const Common::PatternRows& rows) const {
    // One of each kind that both treat alike.
    using Kind = std::pair<unsigned, std::size_t>;
    std::map<Kind, wchar_t> kinds;
    std::optional<Kind> previous;
    for (unsigned unit = 0; unit < CodeUnits; ++unit) {
        const Kind kind(_groupOf[unit], rows.ClassOf(static_cast<wchar_t>(unit)));
        if (kind != previous)
            kinds.try_emplace(kind, static_cast<wchar_t>(unit));
        previous = kind;
    }

    using Pair = std::pair<States, std::size_t>;
    std::set<Pair> seen;
    std::deque<std::pair<Pair, std::wstring>> waiting{{{{_automaton._M_start()}, rows.start}, L""}};
    while (!waiting.empty()) {
        const auto [pair, text] = std::move(waiting.front());
        waiting.pop_front();
        const Place place = text.empty() ? Place::Start : Place::Later;
        if (Accepts(pair.first, place) != rows.Accepts(pair.second))
            return text;
        const States closure = Closure(pair.first, place, false);
        for (const auto& [kind, unit] : kinds) {
            Pair next(Following(closure, unit), rows.Next(pair.second, kind.second));
            if (seen.insert(next).second)
                waiting.emplace_back(std::move(next), text + unit);
        }
    }
    return std::nullopt;
}

} // namespace Zuvan::Lumeq::Testing
