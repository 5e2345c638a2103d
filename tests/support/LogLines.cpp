#include "support/LogLines.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <string_view>

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr std::string_view Digits = "0123456789";
constexpr std::string_view HexDigits = "0123456789abcdef";

/// Splits a line from the front. Written by hand, because tests read too many lines for a regular expression.
class LineReader {
public:
    explicit LineReader(const std::string& line) : _line(line), _rest(line) {}

    std::string_view Rest() const { return _rest; }

    /// '#' in the shape matches any digit.
    void Skip(std::string_view shape) {
        for (const char expected : shape) {
            if (_rest.empty() || (expected == '#' ? !Contains(Digits, _rest[0]) : _rest[0] != expected))
                throw std::runtime_error("no line of the log: " + _line);
            _rest.remove_prefix(1);
        }
    }
    std::string_view TakeAllBut(std::string_view ends) { return Take(_rest.find_first_of(ends)); }
    std::string_view TakeAllOf(std::string_view characters) {
        return Take(_rest.find_first_not_of(characters));
    }

private:
    static bool Contains(std::string_view characters, char character) {
        return characters.find(character) != characters.npos;
    }
    std::string_view Take(std::size_t length) {
        const std::string_view taken = _rest.substr(0, length);
        _rest.remove_prefix(taken.size());
        return taken;
    }

    const std::string& _line;
    std::string_view _rest;
};

LoggedLine ParseLine(const std::string& text) {
    LineReader reader(text);
    LoggedLine line;
    reader.Skip("####-##-##T##:##:##.###Z ");
    line.severity = reader.TakeAllBut(" ");
    reader.TakeAllOf(" ");
    reader.Skip("0x");
    if (line.severity.empty() || reader.TakeAllOf(HexDigits).size() < 8)
        throw std::runtime_error("no line of the log: " + text);
    reader.Skip(" | ");
    const std::size_t end = reader.Rest().find('>');
    if (reader.Rest().starts_with('<') && end != std::string_view::npos &&
        reader.Rest().substr(end).starts_with("> ")) {
        reader.Skip("<");
        line.function = reader.TakeAllBut(">");
        reader.Skip("> ");
    }
    line.message = reader.Rest();
    return line;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const LoggedLine& line) {
    return stream << line.severity << " | <" << line.function << "> " << line.message;
}

std::vector<LoggedLine> LogLines(const std::filesystem::path& path) {
    std::vector<LoggedLine> lines;
    std::ifstream file(path);
    for (std::string text; std::getline(file, text);)
        lines.push_back(ParseLine(text));
    return lines;
}

std::vector<LoggedLine> LogLines(const std::filesystem::path& path, const std::string& severity) {
    std::vector<LoggedLine> lines = LogLines(path);
    std::erase_if(lines, [&severity](const LoggedLine& line) { return line.severity != severity; });
    return lines;
}

std::vector<std::string> LogMessages(const std::filesystem::path& path, const std::string& severity) {
    const std::vector<LoggedLine> lines = LogLines(path, severity);
    std::vector<std::string> messages;
    std::transform(lines.begin(), lines.end(), std::back_inserter(messages),
                   [](const LoggedLine& line) { return line.message; });
    return messages;
}

} // namespace Zuvan::Lumeq::Testing
