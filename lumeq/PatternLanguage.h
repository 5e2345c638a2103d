// The texts that an expression of a catalogue accepts, compared with those of another.
#pragma once

#include "Common/Pattern.h"
#include "Common/PatternAutomaton.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Tool {

/// An expression that the library's parser refuses.
class BadExpression : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Made by the library's parser, which the compiler runs for the library's own patterns.
class PatternLanguage {
public:
    /// Throws BadExpression.
    PatternLanguage(std::wstring_view expression, bool ignoresCase);
    /// Of one of the library's patterns.
    explicit PatternLanguage(const Common::Pattern& pattern);

    std::size_t Start() const { return _start; }
    /// `symbol`: as in PatternSymbols.h.
    std::size_t Next(std::size_t state, std::size_t symbol) const;
    bool Accepts(std::size_t state) const;

private:
    struct Own;
    std::shared_ptr<const Own> _own;
    std::optional<Common::PatternRows> _rows;
    std::size_t _start = 1;
};

/// The shortest text that `first` accepts and `second` does not; none if there is no such text.
std::optional<std::wstring> AcceptedOnlyBy(const PatternLanguage& first, const PatternLanguage& second);

} // namespace Zuvan::Lumeq::Tool
