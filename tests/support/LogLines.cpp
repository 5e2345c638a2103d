#include "support/LogLines.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>
#include <regex>
#include <stdexcept>

namespace Zuvan::Lumeq::Testing {

namespace {

constexpr char Head[] = R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z (\S+) *0x[0-9a-f]{8,} \| (?:<([^>]*)> )?)";

LoggedLine ParseLine(const std::string& text) {
    static const std::regex head(Head);
    std::smatch match;
    if (!std::regex_search(text, match, head, std::regex_constants::match_continuous))
        throw std::runtime_error("no line of the log: " + text);
    return {match[1], match[2], match.suffix()};
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
