// A regular expression whose matching is safe for any text and the same in any locale of the host's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Zuvan::Lumeq::Common {

/// The smallest automaton of a pattern: a row for each state, an entry for each class of characters. A state
/// is the place of its row in `rows`.
struct PatternRows {
    static constexpr std::size_t Dead = 0; ///< From here nothing is accepted any more.

    const std::uint8_t* classOfSymbol;
    const std::uint16_t* rows;
    std::size_t size; ///< Of all rows.
    std::size_t classes;
    std::size_t start;
    std::size_t accepting; ///< The first state that accepts; the others follow it.
    unsigned traits;       ///< What has to be known of characters beyond ASCII.

    std::size_t ClassOf(wchar_t unit) const noexcept;
    std::size_t Next(std::size_t state, std::size_t itsClass) const noexcept {
        return rows[state + itsClass];
    }
    bool Accepts(std::size_t state) const noexcept { return state >= accepting; }
};

/// CompiledPattern.h makes them. Nothing happens at load, and any number of threads may match.
class Pattern {
public:
    constexpr explicit Pattern(const PatternRows& rows) noexcept : _rows(rows) {}

    /// Whether the pattern covers the whole text. Time is linear in its length; no memory, a small constant
    /// stack.
    bool Matches(std::wstring_view text) const noexcept;

    constexpr const PatternRows& Rows() const noexcept { return _rows; }

private:
    PatternRows _rows;
};

} // namespace Zuvan::Lumeq::Common
