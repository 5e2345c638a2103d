#include "LumeqShim/GuardedRegion.h"

#include "Common/Exceptions.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"
#include "support/PrintedNarrowTexts.h"

#include <windows.h>

#include <comdef.h>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::IsolatedMachine;
using Lumeq::Testing::LoggedLine;
using Lumeq::Testing::LogLines;

class GuardedRegion : public testing::Test {
protected:
    GuardedRegion() { _machine.WriteFactorySettings(); }

    /// The warnings of one region that runs `action`, which must fail.
    template <class Action>
    std::vector<LoggedLine> WarningsOf(Action action) {
        EXPECT_FALSE(RunRegion(L"FlushXX", action));
        return LogLines(_machine.LogFile(), "WARNING");
    }

private:
    IsolatedMachine _machine;
};

using Lines = std::vector<LoggedLine>;

class UntellableException : public Lumeq::Common::VestoException {
public:
    UntellableException() : VestoException(L"") {}
    std::wstring FullMessage() const override { throw std::bad_alloc(); }
};

} // namespace

TEST_F(GuardedRegion, ActionThatEndsIsDone) {
    bool ran = false;
    EXPECT_TRUE(RunRegion(L"FlushXX", [&ran] { ran = true; }));
    EXPECT_TRUE(ran);
}

TEST_F(GuardedRegion, ActionThatEndsIsNotLogged) {
    RunRegion(L"FlushXX", [] {});
    EXPECT_EQ(WarningsOf([] { throw 1; }).size(), 1u);
}

TEST_F(GuardedRegion, VestoExceptionIsLoggedWithItsFullMessage) {
    EXPECT_EQ(WarningsOf([] { throw Lumeq::Common::ArgumentException(L"mode", L"caf\u00e9"); }),
              (Lines{{"WARNING", "",
                      "FlushXX failed with VestoException exception caf\xC3\xA9\\nParameter name: mode"}}));
}

TEST_F(GuardedRegion, ComErrorIsLoggedWithItsCodeAndMessage) {
    EXPECT_EQ(
        WarningsOf([] { throw _com_error(E_ACCESSDENIED); }),
        (Lines{{"WARNING", "", "FlushXX failed with _com_error exception 0x80070005, Access denied."}}));
}

TEST_F(GuardedRegion, StandardExceptionIsLoggedWithItsNarrowMessage) {
    EXPECT_EQ(WarningsOf([] { throw std::range_error("100% bad"); }),
              (Lines{{"WARNING", "", "FlushXX exception with 100% bad"}}));
}

TEST_F(GuardedRegion, NarrowMessageEndsInTwoZeros) {
    const Lumeq::Testing::PrintedNarrowTexts printed;
    EXPECT_EQ(WarningsOf([] { throw Lumeq::Testing::OutOfOrder(); }),
              (Lines{{"WARNING", "", "FlushXX exception with out of order"}}));
    EXPECT_EQ(printed.Guarded(), 1);
    EXPECT_EQ(printed.Bare(), 0);
}

TEST_F(GuardedRegion, AnythingElseIsLoggedAsUnknown) {
    EXPECT_EQ(WarningsOf([] { throw "text"; }),
              (Lines{{"WARNING", "", "FlushXX failed with unknown exception"}}));
}

TEST_F(GuardedRegion, FailureOfTheReportDoesNotEscape) {
    EXPECT_EQ(WarningsOf([] { throw UntellableException(); }), Lines{});
}

TEST_F(GuardedRegion, InnerRegionKeepsItsFailureFromTheOuterOne) {
    const bool outer = RunRegion(L"GetUserOptInXX", [this] {
        EXPECT_EQ(WarningsOf([] { throw 1; }),
                  (Lines{{"WARNING", "", "FlushXX failed with unknown exception"}}));
    });
    EXPECT_TRUE(outer);
}

} // namespace Zuvan::LumeqShim
