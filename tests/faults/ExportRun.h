// Calls an export over and over while something fails, and checks that the library stays intact.
#pragma once

#include "faults/ExportCalls.h"
#include "faults/QuickSystem.h"
#include "support/FailingLibrary.h"
#include "support/IsolatedMachine.h"

#include <gtest/gtest.h>
#include <string>

namespace Zuvan::Lumeq::Testing {

enum class Road { Managed, Basic };

/// For tests that call over and over: a machine of their own, with COM initialised throughout, because
/// starting and ending COM is slow. One process for each test, because delivery never unloads its libraries.
class ExportTest : public testing::Test {
protected:
    ExportTest();
    ~ExportTest() override;

    IsolatedMachine _machine;
};

/// The freshly loaded library on a machine of its own, and one of its exports.
class ExportRun {
public:
    /// An empty `logLevel` means no log. There is no server, so the message fails when it connects.
    ExportRun(IsolatedMachine& machine, const ExportCase& exported, Road road, const std::string& logLevel,
              const std::string& server = "");

    const FailingLibrary& Library() const { return _library; }

    /// Prepares for Call: the settings and, for a Completed export, an open task.
    void Prepare();
    /// Calls and expects that no exception escapes.
    void Call(ExportCall call);
    /// Checks what must hold after Call, whatever failed.
    void ExpectUndisturbed(ExportCall call);
    /// Prepares and calls once more, expects the documented result, and cleans up. `policyMayBeLost`: the log
    /// may be off, because reading its policy failed and is not retried.
    void ExpectNextCallWorks(ExportCall call, bool policyMayBeLost = false);

private:
    void UseUpLeftOver(ExportCall call);
    void Close();
    void ExpectDelivered();
    void ExpectLogged(ExportCall call);

    IsolatedMachine& _machine;
    const ExportCase& _exported;
    const Road _road;
    const bool _isLogged;
    FailingLibrary _library;
    QuickSystem _quick;
    HostState _host;
};

} // namespace Zuvan::Lumeq::Testing
