#include "lumeq/view/ReadRun.h"

#include "lumeq/view/Log.h"
#include "lumeq/view/Messages.h"
#include "lumeq/view/Page.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Zuvan::Lumeq::Tool {

namespace {

namespace fs = std::filesystem;

/// Bytes that are no UTF-8 become U+FFFD, so that every text of a page is valid.
std::string ValidUtf8(const std::string& bytes) {
    return SampleHost::ToUtf8(SampleHost::ReadText(Json(bytes)));
}

/// Nothing if there is no such file.
std::optional<std::string> ReadBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string ReadFile(const fs::path& path) { return ValidUtf8(ReadBytes(path).value_or("")); }

std::string NameOfFile(const fs::path& path) { return SampleHost::ToUtf8(path.filename().wstring()); }

/// request-1.http, request-2.http, ...: in UTF-8 or not, because they are shown byte by byte.
std::vector<ViewedMessage> ReadRequests(const fs::path& folder) {
    std::vector<ViewedMessage> messages;
    for (int number = 1;; ++number) {
        const auto request = ReadBytes(folder / ("request-" + std::to_string(number) + ".http"));
        if (!request)
            return messages;
        messages.push_back(ReadRequest(ValidUtf8(*request)));
    }
}

/// The log shows the answers, the queue service the bytes.
void AddRequests(std::vector<ViewedMessage> requests, Run& run) {
    for (std::size_t i = 0; i < std::min(requests.size(), run.messages.size()); ++i)
        requests[i].answer = run.messages[i].answer;
    if (!requests.empty())
        run.messages = std::move(requests);
}

/// run.json, which `tools/play` writes.
void AddConditions(const fs::path& folder, Run& run) {
    const Json conditions = Json::parse(ReadFile(folder / "run.json"), nullptr, false);
    const auto text = [&](const char* member) {
        const auto found = conditions.is_object() ? conditions.find(member) : conditions.end();
        return found != conditions.end() && found->is_string() ? found->get<std::string>() : "";
    };
    if (const std::string road = text("road"); road == "managed" || road == "basic")
        run.road = road;
    if (const std::string session = text("session"); !session.empty())
        run.name = session;
}

std::string SourceOf(const RunFiles& files, const Run& run) {
    std::string source = files.session.empty() ? "" : "the session";
    const auto add = [&](bool isThere, const char* words) {
        if (isThere)
            source += (source.empty() ? "" : ", ") + std::string(words);
    };
    add(!files.answers.empty(), "the host's output");
    add(!files.operations.empty(), "the companion library's transcript");
    add(!files.log.empty(), "the log");
    add(!run.messages.empty() && !run.messages.front().wire.empty(), "the request");
    return source;
}

Run ReadFolder(const Catalogue& catalogue, const fs::path& folder) {
    const RunFiles files{ReadFile(folder / "session.jsonl"), ReadFile(folder / "host.jsonl"),
                         ReadFile(folder / "companion.jsonl"), ReadFile(folder / "Lumeq.Log.txt")};
    std::vector<ViewedMessage> requests = ReadRequests(folder);
    if (files.session.empty() && files.log.empty() && requests.empty())
        throw std::runtime_error(NameOfFile(folder) +
                                 " has neither session.jsonl nor Lumeq.Log.txt nor request-1.http");
    Run conditions;
    AddConditions(folder, conditions);
    Run run = files.session.empty() ? RunOfLog(catalogue, files.log)
                                    : RunOfSession(catalogue, files, conditions.road);
    run.name = conditions.name.empty() ? NameOfFile(folder) : conditions.name;
    run.settings = ReadFile(folder / "LumeqLocalSettings.xml");
    AddRequests(std::move(requests), run);
    run.source = SourceOf(files, run);
    return run;
}

Run ReadSingleFile(const Catalogue& catalogue, const fs::path& path) {
    const std::string text = ReadFile(path);
    RunFiles files;
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first != text.npos && text[first] == '{')
        files.session = text;
    else if (!ReadLog(text).empty())
        files.log = text;
    else
        throw std::runtime_error(NameOfFile(path) + " is neither a session nor a log of Lumeq");
    Run run = files.log.empty() ? RunOfSession(catalogue, files, "") : RunOfLog(catalogue, text);
    run.name = NameOfFile(path);
    run.source = SourceOf(files, run);
    return run;
}

} // namespace

Run ReadRun(const Catalogue& catalogue, const std::string& path) {
    fs::path place(SampleHost::ReadText(Json(path)));
    // The name of a folder ends before a slash.
    if (!place.has_filename())
        place = place.parent_path();
    if (fs::is_directory(place))
        return ReadFolder(catalogue, place);
    if (!fs::is_regular_file(place))
        throw std::runtime_error(path + " cannot be read");
    return ReadSingleFile(catalogue, place);
}

} // namespace Zuvan::Lumeq::Tool
