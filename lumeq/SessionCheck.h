// Checks the calls of a session in their order: each by itself, and what they mean together.
#pragma once

#include "lumeq/Catalogue.h"
#include "lumeq/Finding.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool {

struct PlacedFinding {
    int line;
    std::string call; ///< Empty for a line that is no call.
    Finding finding;
};

/// What the library does with one call.
struct CheckedCall {
    int line;
    std::string call;
    bool isMade; ///< The library is loaded.
    Findings refusals;
    std::size_t skippedPrinters = 0; ///< Of an accepted call.
};

class SessionCheck {
public:
    /// Hears of each call once it is checked.
    using Listener = std::function<void(const Json& call, const CheckedCall& checked)>;
    static constexpr int MostRounds = 3;

    explicit SessionCheck(const Catalogue& catalogue, int mostRounds = MostRounds, Listener listener = {})
        : _catalogue(catalogue), _mostRounds(mostRounds), _listener(std::move(listener)) {}

    /// Checks a line of the session. The threads of a line are checked one after the other, and at most so
    /// many of its repetitions.
    void Line(int number, const std::string& line);
    /// Must follow the last line.
    void End();

    /// False for a file of another kind: no line was a JSON object.
    bool HasSteps() const { return _hasSteps; }

    /// In the order of the lines.
    std::vector<PlacedFinding> FindingsByLine() const;
    const std::vector<CheckedCall>& Calls() const { return _calls; }

private:
    /// A variable of the host's for the handle of a task.
    struct Variable {
        enum class State { Open, Completed, Refused };

        State state;
        std::string task;
        int line; ///< At which it got into this state.
        int begun;
    };

    void Play(const Json& step);
    void PlayAll(const Json& steps);
    void Call(const Json& call);
    void CheckMadeCall(const Json& operation, const Json& call);
    Tool::Findings Check(const Json& operation, const Json& call);
    void CheckOrder(const Json& operation);
    void Begin(const Json& operation, const Json& call, bool isRefused);
    void Complete(const Json& call, bool isRefused);
    Finding RefusedHandle(const std::string& variable) const;
    void EndRun();

    void Add(int line, const std::string& call, const Finding& finding);

    const Catalogue& _catalogue;
    const int _mostRounds;
    const Listener _listener;
    std::vector<PlacedFinding> _findings;
    std::set<std::string> _seen;
    std::vector<CheckedCall> _calls;
    std::map<std::string, Variable> _variables;
    int _line = 0;
    int _startLine = 0;
    int _shutdownLine = 0;
    bool _isLoaded = true;
    bool _hasEnded = false;
    bool _hasSteps = false;
    bool _reportedOrder = false;
};

} // namespace Zuvan::Lumeq::Tool
