// Reads the log files back.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// One line of a log file without its time and thread. Texts are UTF-8, unchanged.
struct LoggedLine {
    std::string severity; ///< Without its padding.
    std::string function; ///< Empty if the line has none.
    std::string message;

    friend bool operator==(const LoggedLine&, const LoggedLine&) = default;
};
std::ostream& operator<<(std::ostream& stream, const LoggedLine& line);

/// All lines in order; none if there is no such file. Throws for a line that does not have the layout of the
/// log.
std::vector<LoggedLine> LogLines(const std::filesystem::path& path);

/// The lines of that severity.
std::vector<LoggedLine> LogLines(const std::filesystem::path& path, const std::string& severity);

/// The messages of those lines.
std::vector<std::string> LogMessages(const std::filesystem::path& path, const std::string& severity);

} // namespace Zuvan::Lumeq::Testing
