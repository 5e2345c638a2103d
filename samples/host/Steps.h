// A session: steps that are read from JSON, checked as a whole, and then played.
#pragma once

#include "samples/host/Json.h"
#include "samples/host/Library.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace SampleHost {

/// State that the steps of a session share. Every thread that plays some of them shares the ownership.
class Session : public std::enable_shared_from_this<Session> {
public:
    Library library;

    /// The host's variable of that name; null until an Initiated call sets it. Its address never changes.
    Zuvan::Lumeq::API::TaskHandle& Handle(const std::string& name);

    /// Prints one complete line on standard output, whichever threads print.
    void Print(const Json& line);

private:
    std::mutex _handlesLock;
    std::map<std::string, Zuvan::Lumeq::API::TaskHandle> _handles;
    std::mutex _outputLock;
};

/// One action of a session. May be played many times, by one thread at a time.
using Step = std::function<void(Session&)>;

/// Reads one line of a session. Throws BadLine unless it is a complete, well-formed step.
Step ReadStep(const Json& json);

/// Reads the call of an export, in Exports.cpp: its name under `call`, its arguments under their names.
Step ReadCall(const Json& json);

} // namespace SampleHost
