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

/// What the steps of a session share. Owned by whatever still plays some of them.
class Session : public std::enable_shared_from_this<Session> {
public:
    Library library;

    /// The host's variable of that name; null until an Initiated call sets it. Stays where it is.
    Zuvan::Lumeq::API::TaskHandle& Handle(const std::string& name);

    /// One line on standard output, written whole, whichever threads print.
    void Print(const Json& line);

private:
    std::mutex _handlesLock;
    std::map<std::string, Zuvan::Lumeq::API::TaskHandle> _handles;
    std::mutex _outputLock;
};

/// Something that a session does. May be played many times, by one thread at a time.
using Step = std::function<void(Session&)>;

/// Reads one line of a session. Throws BadLine for anything that is no step, whole and well-formed.
Step ReadStep(const Json& json);

/// Reads the call of an export, in Exports.cpp: its name under `call` and its arguments under theirs.
Step ReadCall(const Json& json);

} // namespace SampleHost
