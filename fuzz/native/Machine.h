// The machine below the portable files in native builds. Targets set what Windows would return and read what
// Windows or the companion library would receive. One for the process; every input starts with a new one.
#pragma once

#include "Common/LogLine.h"
#include "fuzz/support/Model.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Fuzzing {

struct Machine {
    struct LoggedLine {
        Common::SeverityLevel level;
        std::wstring functionName;
        std::wstring message;
    };
    struct PostedEvent {
        std::uint64_t timestamp;
        Model record;
    };
    struct PostedData {
        std::wstring type;
        Extra::Eventing::StringDictionary fields;
        bool operator==(const PostedData&) const = default;
    };

    std::int64_t utcMilliseconds = 0;
    bool uuidTextFails = false;
    std::wstring globalContext;

    std::vector<LoggedLine> log;
    std::vector<PostedEvent> events;
    std::vector<PostedData> data;

    std::vector<std::wstring> Messages(Common::SeverityLevel level) const;
};

Machine& TheMachine();
/// Replaces it by a new one.
Machine& NewMachine();

} // namespace Zuvan::Lumeq::Fuzzing
