// What the program prints: UTF-8, coloured on a terminal only.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Tool {

/// Documented in the help of the program.
enum ExitCode { Clean = 0, FoundSomething = 1, CannotRun = 2 };

enum class Colour { Plain, Bold, Red, Yellow, Blue, Green };

class Output {
public:
    /// Colours if `stream` is a terminal that can, and the environment variable NO_COLOR is not set.
    explicit Output(std::FILE* stream);

    bool HasColour() const { return _hasColour; }
    std::string Paint(Colour colour, std::string_view text) const;
    void Line(std::string_view text = {}) const;

private:
    std::FILE* _stream;
    bool _hasColour;
};

/// The text as it can be shown on one line: quotation marks stay, what cannot be seen is escaped as \n or
/// \u0085.
std::string Shown(std::wstring_view text);

/// How many columns Shown takes for it. One for each character.
std::size_t ColumnsOf(std::wstring_view text);

std::string Quoted(std::wstring_view text);
std::string Quoted(const std::string& utf8);

} // namespace Zuvan::Lumeq::Tool
