#include "lumeq/NearestText.h"

#include "Common/PatternSymbols.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <vector>

namespace Zuvan::Lumeq::Tool {

namespace {

using Common::PatternRows;

constexpr std::size_t LongestText = 512;

enum Cost {
    Kept = 0,
    OtherCase = 2,
    SpareDeleted = 2,
    OtherSeparator = 3,
    Deleted = 4,
    Inserted = 5,
    Replaced = 6,
    BeforeFault = 2, ///< In addition, because an edit where the pattern fails is likelier what was meant.
    Dearest = 24
};

bool IsAsciiLetter(wchar_t unit) { return (unit | 0x20) >= L'a' && (unit | 0x20) <= L'z'; }
bool IsAsciiAlnum(wchar_t unit) { return IsAsciiLetter(unit) || (unit >= L'0' && unit <= L'9'); }

/// A readable character of each class of the pattern's; zero for a class without one.
std::vector<wchar_t> CharactersOf(const PatternRows& rows) {
    std::wstring candidates = L"a0_-./bcdefghijklmnopqrstuvwxyzA ";
    for (wchar_t unit = L'!'; unit < 0x7F; ++unit)
        candidates += unit;
    std::vector<wchar_t> characters(rows.classes, L'\0');
    for (const wchar_t unit : candidates)
        if (wchar_t& its = characters[rows.ClassOf(unit)]; its == L'\0')
            its = unit;
    return characters;
}

/// A shortest path from the start of the text to its end and from the pattern's start to acceptance.
class Search {
public:
    Search(const PatternRows& rows, std::wstring_view text)
        : _rows(rows), _text(text), _fault(FaultIn(rows, text)), _states(rows.size / rows.classes),
          _characters(CharactersOf(rows)), _places((text.size() + 1) * _states) {}

    std::optional<std::wstring> Result() {
        Reach(PlaceOf(0, _rows.start), 0, NoPlace, L'\0', false);
        while (!_open.empty()) {
            const auto [cost, place] = _open.top();
            _open.pop();
            if (cost > _places[place].cost)
                continue;
            const std::size_t at = place / _states;
            const std::size_t state = place % _states * _rows.classes;
            if (at == _text.size() && _rows.Accepts(state))
                return TextTo(place);
            Continue(place, at, state, cost);
        }
        return std::nullopt;
    }

private:
    static constexpr std::size_t NoPlace = static_cast<std::size_t>(-1);

    struct Place {
        int cost = Dearest + 1;
        std::size_t from = NoPlace;
        wchar_t written = L'\0';
        bool isMeant = false; ///< The character comes from the text.
    };

    /// The last character of a text that ends too early.
    static std::size_t FaultIn(const PatternRows& rows, std::wstring_view text) {
        std::size_t state = rows.start;
        std::size_t at = 0;
        while (at < text.size() && (state = rows.Next(state, rows.ClassOf(text[at]))) != PatternRows::Dead)
            ++at;
        return at == text.size() ? at - 1 : at;
    }

    /// A doubled character, or a separator at either end.
    bool IsSpare(std::size_t at) const {
        const wchar_t unit = _text[at];
        const bool isSeparator = unit < Common::BeyondAscii && !IsAsciiAlnum(unit);
        return (at > 0 && unit == _text[at - 1]) || (isSeparator && (at == 0 || at + 1 == _text.size()));
    }

    std::size_t PlaceOf(std::size_t at, std::size_t state) const {
        return at * _states + state / _rows.classes;
    }

    void Reach(std::size_t place, int cost, std::size_t from, wchar_t written, bool isMeant) {
        if (cost >= _places[place].cost)
            return;
        _places[place] = {cost, from, written, isMeant};
        _open.emplace(cost, place);
    }

    /// Writes a character, if the pattern takes it there.
    void Write(wchar_t unit, int cost, std::size_t from, std::size_t at, std::size_t state, bool isMeant) {
        const std::size_t next = _rows.Next(state, _rows.ClassOf(unit));
        if (next != PatternRows::Dead)
            Reach(PlaceOf(at, next), cost, from, unit, isMeant);
    }

    void Continue(std::size_t place, std::size_t at, std::size_t state, int cost) {
        const int edited = cost + (at < _fault ? BeforeFault : 0);
        for (const wchar_t unit : _characters)
            if (unit != L'\0')
                Write(unit, edited + Inserted, place, at, state, false);
        if (at == _text.size())
            return;
        const wchar_t unit = _text[at];
        Write(unit, cost + Kept, place, at + 1, state, true);
        Reach(PlaceOf(at + 1, state), edited + (IsSpare(at) ? SpareDeleted : Deleted), place, L'\0', false);
        if (IsAsciiLetter(unit))
            Write(static_cast<wchar_t>(unit ^ 0x20), edited + OtherCase, place, at + 1, state, true);
        if (unit < Common::BeyondAscii && !IsAsciiAlnum(unit))
            for (const wchar_t separator : {L'_', L'-', L'.', L'/'})
                Write(separator, edited + OtherSeparator, place, at + 1, state, true);
        for (const wchar_t other : _characters)
            if (other != L'\0')
                Write(other, edited + Replaced, place, at + 1, state, false);
    }

    std::optional<std::wstring> TextTo(std::size_t place) const {
        std::wstring text;
        std::size_t meant = 0;
        for (; place != NoPlace; place = _places[place].from) {
            const Place& its = _places[place];
            if (its.from == NoPlace || (its.written == L'\0' && !its.isMeant))
                continue;
            text += its.written;
            meant += its.isMeant;
        }
        if (text.empty() || meant * 2 < text.size() || meant * 2 < _text.size())
            return std::nullopt;
        std::reverse(text.begin(), text.end());
        return text;
    }

    const PatternRows& _rows;
    std::wstring_view _text;
    std::size_t _fault;
    std::size_t _states;
    std::vector<wchar_t> _characters;
    std::vector<Place> _places;
    std::priority_queue<std::pair<int, std::size_t>, std::vector<std::pair<int, std::size_t>>, std::greater<>>
        _open;
};

} // namespace

std::optional<std::wstring> NearestText(const Common::Pattern& pattern, std::wstring_view text) {
    if (text.empty() || text.size() > LongestText)
        return std::nullopt;
    return Search(pattern.Rows(), text).Result();
}

} // namespace Zuvan::Lumeq::Tool
