#include "Common/ComSession.h"

#include "Common/ComScope.h"
#include "Common/Logger.h"
#include "support/Apartment.h"
#include "support/DebuggerStandIn.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace Zuvan::Lumeq::Common {

namespace {

using Testing::ApartmentOfThread;
using testing::ElementsAre;
using Testing::NotInitialized;

/// The results of operations one after the other, as they log them.
std::vector<std::int32_t> ResultsOf(int operations) {
    std::vector<std::int32_t> results;
    for (int i = 0; i < operations; ++i)
        results.push_back(ComScope(L"operation").Result());
    return results;
}

/// Counts its references.
class Factory : public IUnknown {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override {
        apartmentAtRelease = ApartmentOfThread();
        return --references;
    }

    ULONG references = 1;
    HRESULT apartmentAtRelease = E_FAIL;
};

void KeepInCache(Factory& factory) {
    const ComScope com(L"operation");
    ComSession::Cache()->documentFactory.reset(&factory);
    ComSession::Cache()->allUsersFolder = L"C:\\ProgramData";
}

class ComSessionOfLoggedOperations : public testing::Test {
protected:
    ComSessionOfLoggedOperations() {
        _machine.WriteFactorySettings();
        // Loads the log's policy, which initialises COM once.
        LogMessage(SeverityLevel::TRACE, L"", 0, nullptr, L"first use");
        _linesBefore = Lines().size();
    }

    std::vector<std::string> NewLines() const {
        std::vector<std::string> lines = Lines();
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(_linesBefore));
        return lines;
    }

private:
    std::vector<std::string> Lines() const { return Testing::LogMessages(_machine.LogFile(), "DEBUG"); }

    Testing::IsolatedMachine _machine;
    std::size_t _linesBefore;
};

} // namespace

TEST(ComSession, KeepsTheApartmentFromOneOperationToTheNextAndUndoesItAtItsEnd) {
    {
        const ComSession session;
        EXPECT_EQ(ApartmentOfThread(), NotInitialized) << "before the first operation";
        EXPECT_EQ(ComScope(L"operation").Result(), S_OK);
        EXPECT_EQ(ApartmentOfThread(), S_OK);
        EXPECT_THAT(ResultsOf(3), ElementsAre(S_OK, S_OK, S_OK));
        EXPECT_EQ(ApartmentOfThread(), S_OK);
    }
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST(ComSession, OperationsWithoutOneUndoComThemselves) {
    EXPECT_THAT(ResultsOf(2), ElementsAre(S_OK, S_OK));
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST(ComSession, OperationInsideAnotherGetsItsOwnResult) {
    const ComSession session;
    for (int i = 0; i < 2; ++i) {
        const ComScope outer(L"outer");
        EXPECT_EQ(outer.Result(), S_OK);
        EXPECT_THAT(ResultsOf(2), ElementsAre(S_FALSE, S_FALSE));
    }
}

TEST(ComSession, SuspensionUndoesComUntilTheNextOperation) {
    {
        const ComSession session;
        ResultsOf(1);
        ComSession::Suspend();
        EXPECT_EQ(ApartmentOfThread(), NotInitialized);
        EXPECT_THAT(ResultsOf(2), ElementsAre(S_OK, S_OK));
        EXPECT_EQ(ApartmentOfThread(), S_OK);
    }
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST(ComSession, SuspensionLeavesARunningOperationItsApartment) {
    {
        const ComSession session;
        const ComScope com(L"operation");
        ComSession::Suspend();
        EXPECT_EQ(ApartmentOfThread(), S_OK);
    }
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST(ComSession, ApartmentOfTheHostStaysAndShowsInEachResult) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    {
        const ComSession session;
        EXPECT_THAT(ResultsOf(2), ElementsAre(S_FALSE, S_FALSE));
        ComSession::Suspend();
        EXPECT_EQ(ApartmentOfThread(), S_OK);
    }
    EXPECT_EQ(ApartmentOfThread(), S_OK);
    CoUninitialize();
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(ComSessionOfLoggedOperations, RepairsAMultithreadedThreadOnce) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    const Testing::DebuggerStandIn debugger;
    {
        const ComSession session;
        EXPECT_THAT(ResultsOf(2), ElementsAre(S_OK, S_OK));
    }
    EXPECT_EQ(debugger.Breaks(), 1);
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(ComSessionOfLoggedOperations, DoesNotKeepAFailedInitialisation) {
    // Each operation undoes one of the host's three initialisations.
    for (int i = 0; i < 3; ++i)
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    {
        const ComSession session;
        EXPECT_THAT(ResultsOf(3), ElementsAre(RPC_E_CHANGED_MODE, RPC_E_CHANGED_MODE, S_OK));
    }
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST(ComSession, InitialisationLeftByAnEarlierOneEndsAsItWouldWithoutASession) {
    {
        const ComSession session;
        ComScope(L"leaves COM").Release();
    }
    EXPECT_EQ(ApartmentOfThread(), S_OK);
    {
        const ComSession session;
        {
            const ComScope com(L"operation");
            EXPECT_EQ(com.Result(), S_FALSE);
            ComUninitCounted(L"of the earlier one");
        }
        EXPECT_EQ(ApartmentOfThread(), NotInitialized);
        EXPECT_THAT(ResultsOf(2), ElementsAre(S_OK, S_OK));
    }
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST(ComSession, OtherThreadsUndoComThemselvesAndHaveNoCache) {
    const ComSession session;
    const ComScope com(L"operation");
    std::thread([] {
        EXPECT_THAT(ResultsOf(2), ElementsAre(S_OK, S_OK));
        EXPECT_EQ(ApartmentOfThread(), NotInitialized);
        const ComScope other(L"other");
        EXPECT_EQ(ComSession::Cache(), nullptr);
        ComSession::Suspend();
        EXPECT_EQ(ApartmentOfThread(), S_OK);
    }).join();
    EXPECT_NE(ComSession::Cache(), nullptr);
}

TEST(ComSession, CacheOutlivesTheOperationAndIsThereDuringOperationsAlone) {
    Factory factory;
    {
        const ComSession session;
        EXPECT_EQ(ComSession::Cache(), nullptr);
        KeepInCache(factory);
        EXPECT_EQ(ComSession::Cache(), nullptr);
        const ComScope com(L"operation");
        EXPECT_EQ(ComSession::Cache()->documentFactory.get(), &factory);
        EXPECT_EQ(ComSession::Cache()->allUsersFolder, L"C:\\ProgramData");
    }
    EXPECT_EQ(factory.references, 0U);
}

TEST(ComSession, CacheIsEmptiedBeforeComIsUndone) {
    Factory suspended;
    Factory ended;
    {
        const ComSession session;
        KeepInCache(suspended);
        ComSession::Suspend();
        EXPECT_EQ(suspended.references, 0U);
        {
            const ComScope com(L"operation");
            EXPECT_EQ(ComSession::Cache()->documentFactory, nullptr);
            EXPECT_EQ(ComSession::Cache()->allUsersFolder, L"");
        }
        KeepInCache(ended);
    }
    EXPECT_EQ(ended.references, 0U);
    EXPECT_EQ(suspended.apartmentAtRelease, S_OK);
    EXPECT_EQ(ended.apartmentAtRelease, S_OK);
}

TEST_F(ComSessionOfLoggedOperations, LeavesLinesAndCountsAsTheyAreWithoutOne) {
    const std::string thread = std::to_string(GetCurrentThreadId());
    {
        const ComSession session;
        ComScope(L"A");
        ComSession::Suspend();
        const ComScope outer(L"B");
        ComScope(L"C");
    }
    EXPECT_THAT(NewLines(), ElementsAre("Init t=" + thread + ", init=2, deinit=1, f=A",
                                        "Uninit t=" + thread + ", init=2, deinit=2, f=A",
                                        "Init t=" + thread + ", init=3, deinit=2, f=B",
                                        "Init t=" + thread + ", init=4, deinit=2, f=C",
                                        "Uninit t=" + thread + ", init=4, deinit=3, f=C",
                                        "Uninit t=" + thread + ", init=4, deinit=4, f=B"));
}

} // namespace Zuvan::Lumeq::Common
