// double-host SESSION: plays a session of the sample host on the double, and prints what it recorded: one
// line of JSON with the lists "operations", "refusals" and "log".
#include "samples/host/Ending.h"
#include "samples/host/Steps.h"

#include <Lumeq/lumeq_test.h>

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <io.h>

namespace {

using SampleHost::Json;

void Play(const wchar_t* path) {
    std::ifstream file{std::filesystem::path(path), std::ios::binary};
    const auto session = std::make_shared<SampleHost::Session>();
    session->library.Load();
    for (std::string line; std::getline(file, line);)
        SampleHost::ReadStep(Json::parse(line))(*session);
}

/// Spliced as they are, because a record may contain half a surrogate pair, which the JSON library refuses.
std::string Recorded(std::int32_t (*count)(), const char* (*textAt)(std::int32_t)) {
    std::string list;
    for (std::int32_t number = 0; number < count(); ++number)
        list += (number > 0 ? "," : "") + std::string(textAt(number));
    return "[" + list + "]";
}

Json Log() {
    Json lines = Json::array();
    for (std::int32_t number = 0; number < lumeq_test_log_count(); ++number)
        lines.push_back(lumeq_test_log_line(number));
    return lines;
}

} // namespace

int wmain(int, wchar_t** arguments) {
    _setmode(_fileno(stdout), _O_BINARY);
    Play(arguments[1]);
    std::printf("{\"operations\":%s,\"refusals\":%s,\"log\":%s}\n",
                Recorded(lumeq_test_operation_count, lumeq_test_operation).c_str(),
                Recorded(lumeq_test_refusal_count, lumeq_test_refusal).c_str(), Log().dump().c_str());
    return 0;
}
