// What the page shows of one run of a host: its calls, what came of each, and the messages about the machine.
//
// All texts are UTF-8 as they were read. Masking, and the escapes of what cannot be seen, come with the page.
#pragma once

#include "lumeq/Catalogue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

struct LogLine {
    std::int64_t time = 0; ///< Milliseconds since 1970, UTC.
    std::string severity;
    std::string thread;
    std::string function; ///< Without the namespace of the exports; empty if the line names none.
    bool isOfExport = false;
    std::string message;
    std::string text; ///< The whole line.
};

enum class Verdict { Accepted, Refused, Failed, NotMade };

struct ViewedArgument {
    std::string name; ///< Empty if `value` is all that the log shows of the arguments.
    std::string value;
    bool isNull = false;
};

/// Why a call is refused.
struct Reason {
    std::string argument;
    std::string layer; ///< "export" or "event class".
    std::string message;
    std::string pattern; ///< Empty without a refused text; then the members below are too.
    std::string text;
    std::size_t at = 0; ///< The UTF-16 unit of the text after which nothing could be accepted.
    std::string words;
    std::string nearest;
};

struct ViewedCall {
    std::string name;
    int line = 0; ///< Of the session; 0 if there is none.
    std::vector<ViewedArgument> arguments;
    Verdict verdict = Verdict::Accepted;
    std::string outcome; ///< What came of it, in one line without the verdict.
    std::vector<Reason> reasons;
    std::vector<std::string> remarks; ///< The linter's, about an accepted call too.
    std::vector<Json> handedOver;     ///< What the companion library got.
    Json answer;                      ///< What the host got back; null if nothing is known.
    std::vector<LogLine> log;
    std::optional<std::int64_t> time; ///< As in LogLine.
    std::string task;                 ///< The kind of task that the call begins or completes.
    std::string handle;               ///< Which of them; empty if that is not known.
};

struct ViewedTask {
    std::string name;
    std::size_t begun = 0; ///< Index of a call.
    std::optional<std::size_t> completed;
    std::string result;
    std::optional<std::int64_t> milliseconds; ///< As recorded; else between the calls.
};

/// A message of the basic road.
struct ViewedMessage {
    std::string wire;                                        ///< The request, byte by byte; may be empty.
    std::vector<std::pair<std::string, std::string>> fields; ///< Decoded.
    std::string path;                                        ///< Where it went.
    std::vector<std::string> wrong;                          ///< What a judge found; empty for a good one.
    std::vector<std::string> answer;                         ///< In lines.
};

struct Run {
    std::string name;
    std::string road;   ///< "managed" or "basic"; empty if that is not known.
    std::string source; ///< The kinds of file that were read, in words.
    std::vector<ViewedCall> calls;
    std::vector<ViewedTask> tasks;
    std::vector<ViewedMessage> messages;
    std::vector<std::string> remarks;
    std::vector<LogLine> otherLines; ///< Of no call.
    std::vector<Json> otherHandedOver;
    std::string settings; ///< The local settings file at the end.
};

} // namespace Zuvan::Lumeq::Tool
