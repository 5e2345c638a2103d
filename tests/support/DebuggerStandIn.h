// Replaces a debugger inside the process, because Wine cannot unwind C++ exceptions while a real one is
// attached.
#pragma once

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// While one lives, IsDebuggerPresent() is true, every break is counted and skipped, and the texts of the
/// debugger channel are kept. One at a time.
class DebuggerStandIn {
public:
    DebuggerStandIn();
    ~DebuggerStandIn();
    DebuggerStandIn(const DebuggerStandIn&) = delete;
    DebuggerStandIn& operator=(const DebuggerStandIn&) = delete;

    int Breaks() const;
    /// All texts in order, wide ones as the system narrows them.
    std::vector<std::string> Texts() const;
    /// All texts joined.
    std::string Output() const;
};

} // namespace Zuvan::Lumeq::Testing
