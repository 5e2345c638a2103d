// An export that is called over and over while something fails, and what must hold all the same.
#pragma once

#include "faults/ExportCalls.h"
#include "faults/QuickSystem.h"
#include "support/FailingLibrary.h"
#include "support/IsolatedMachine.h"

#include <gtest/gtest.h>
#include <string>

namespace Zuvan::Lumeq::Testing {

enum class Road { Managed, Basic };

/// For tests that call over and over: a machine of their own, and COM initialised all the while, since the
/// system takes long to begin and end it. One process each: what delivery loads stays loaded.
class ExportTest : public testing::Test {
protected:
    ExportTest();
    ~ExportTest() override;

    IsolatedMachine _machine;
};

/// The library, freshly loaded on a machine of its own, and one export of it.
class ExportRun {
public:
    /// An empty `logLevel` for no log. Without a server the message fails as soon as it connects.
    ExportRun(IsolatedMachine& machine, const ExportCase& exported, Road road, const std::string& logLevel,
              const std::string& server = "");

    const FailingLibrary& Library() const { return _library; }

    /// Gets ready for Call: settings and, for the end of a task, an open one.
    void Prepare();
    /// Calls, and expects that nothing escapes.
    void Call(ExportCall call);
    /// What must hold after Call, whatever failed meanwhile.
    void ExpectUndisturbed(ExportCall call);
    /// Prepares and calls once more, and expects what the export promises; then tidies up. `policyMayBeLost`:
    /// whether the log may be off, since reading its policy failed, which is tried once.
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
