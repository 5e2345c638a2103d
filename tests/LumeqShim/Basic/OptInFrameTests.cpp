#include "LumeqShim/Basic/OptInFrame.h"

#include "LumeqShim/Basic/BasicOptIn.h"
#include "support/Apartment.h"
#include "support/FailingAllocation.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"
#include "support/PrintedNarrowTexts.h"

#include <gtest/gtest.h>

#include <comdef.h>
#include <optional>
#include <stdexcept>

namespace Zuvan::LumeqShim {

using Lumeq::Testing::ApartmentOfThread;
using Lumeq::Testing::FailingAllocation;
using Lumeq::Testing::IsolatedMachine;
using Lumeq::Testing::NotInitialized;

namespace {

constexpr OptInOperation Clear{L"BasicClearOptIn", L"BasicClearOptIn(%s)",
                               L"BasicClearOptIn CoInitialize returns 0x%08lx"};
constexpr OptInOperation Subfolder{L"BasicLocalSubfolderPath", L"BasicLocalSubfolderPath(\"%s\")", nullptr};

class OptInFrame : public testing::Test {
protected:
    OptInFrame() { _machine.WriteFactorySettings("<Log>on</Log><LogLevel>warning</LogLevel>"); }

    std::vector<std::string> Warnings() const {
        return Lumeq::Testing::LogMessages(_machine.LogFile(), "WARNING");
    }

    IsolatedMachine _machine;
};

using Texts = std::vector<std::string>;

struct NotAnException {};

} // namespace

TEST_F(OptInFrame, ResultIsTheWorks) {
    EXPECT_TRUE(RunOptIn(
        Clear, [] { return true; }, L"key"));
    EXPECT_FALSE(RunOptIn(
        Clear, [] { return false; }, L"key"));
    EXPECT_TRUE(Warnings().empty());
}

TEST_F(OptInFrame, ComErrorIsLoggedWithCodeAndMessage) {
    EXPECT_FALSE(RunOptIn(
        Clear, []() -> bool { throw _com_error(static_cast<HRESULT>(0x80040205)); }, L"key"));
    EXPECT_EQ(Warnings(),
              Texts{"BasicClearOptIn failed with _com_error exception 0x80040205, IDispatch error #5"});
}

TEST_F(OptInFrame, StandardExceptionIsLoggedWithItsText) {
    EXPECT_FALSE(RunOptIn(
        Clear, []() -> bool { throw std::runtime_error("so it goes"); }, L"key"));
    EXPECT_EQ(Warnings(), Texts{"BasicClearOptIn exception with so it goes"});
}

TEST_F(OptInFrame, NarrowTextEndsInTwoZeros) {
    const Lumeq::Testing::PrintedNarrowTexts printed;
    EXPECT_FALSE(RunOptIn(
        Clear, []() -> bool { throw Lumeq::Testing::OutOfOrder(); }, L"key"));
    EXPECT_EQ(Warnings(), Texts{"BasicClearOptIn exception with out of order"});
    EXPECT_EQ(printed.Guarded(), 1);
    EXPECT_EQ(printed.Bare(), 0);
}

TEST_F(OptInFrame, AnythingElseIsLoggedAsUnknown) {
    EXPECT_FALSE(RunOptIn(
        Clear, []() -> bool { throw NotAnException(); }, L"key"));
    EXPECT_EQ(Warnings(), Texts{"BasicClearOptIn failed with unknown exception"});
}

TEST_F(OptInFrame, SubfolderHasTheSameThreeLines) {
    const auto run = [](auto work) { EXPECT_FALSE(RunOptInWithoutCom(Subfolder, work, L"path")); };
    run([]() -> bool { throw _com_error(static_cast<HRESULT>(0x80040205)); });
    run([]() -> bool { throw std::bad_alloc(); });
    run([]() -> bool { throw 7; });
    EXPECT_EQ(
        Warnings(),
        (Texts{"BasicLocalSubfolderPath failed with _com_error exception 0x80040205, IDispatch error #5",
               "BasicLocalSubfolderPath exception with std::bad_alloc",
               "BasicLocalSubfolderPath failed with unknown exception"}));
}

TEST_F(OptInFrame, ComIsReleasedAfterAFailure) {
    RunOptIn(
        Clear, []() -> bool { throw 7; }, L"key");
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(OptInFrame, ReportThatCannotBeMadeLetsNothingOut) {
    std::optional<FailingAllocation> failing;
    const bool result = RunOptIn(
        Clear,
        [&failing]() -> bool {
            failing.emplace(1);
            throw 7;
        },
        L"key");
    EXPECT_TRUE(failing->Happened());
    failing.reset();
    EXPECT_FALSE(result);
    EXPECT_TRUE(Warnings().empty());
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

} // namespace Zuvan::LumeqShim
