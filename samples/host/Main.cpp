// lumeq-host FILE: a host application that executes a session file line by line and prints what the library
// returned. README.md in this folder documents the lines.
#include "samples/host/Ending.h"
#include "samples/host/Steps.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <io.h>
#include <memory>

namespace SampleHost {

namespace {

enum ExitCode { Played = 0, CannotStart = 1, BadSession = 2 };

bool IsBlank(const std::string& line) { return line.find_first_not_of(" \t\r") == std::string::npos; }

Step ReadLine(const std::string& line) {
    try {
        return ReadStep(Json::parse(line));
    } catch (const Json::exception& problem) {
        throw BadLine(problem.what());
    }
}

/// Plays each line before reading the next.
void PlaySession(std::istream& file, int& lineNumber) {
    const auto session = std::make_shared<Session>();
    session->library.Load();
    std::string line;
    for (lineNumber = 1; std::getline(file, line); ++lineNumber)
        if (!IsBlank(line))
            ReadLine(line)(*session);
}

int Run(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "lumeq-host: %s cannot be read\n", ToUtf8(path.native()).c_str());
        return CannotStart;
    }
    int lineNumber = 0;
    try {
        PlaySession(file, lineNumber);
        return Played;
    } catch (const SessionEnd& end) {
        return end.exitCode;
    } catch (const BadLine& problem) {
        std::fprintf(stderr, "lumeq-host: line %d: %s\n", lineNumber, problem.what());
        return BadSession;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "lumeq-host: %s\n", problem.what());
        return CannotStart;
    }
}

} // namespace
} // namespace SampleHost

int wmain(int count, wchar_t** arguments) {
    if (count != 2) {
        std::fputs("usage: lumeq-host FILE\n", stderr);
        return SampleHost::CannotStart;
    }
    // Text mode would end lines in a carriage return too.
    _setmode(_fileno(stdout), _O_BINARY);
    return SampleHost::Run(arguments[1]);
}
