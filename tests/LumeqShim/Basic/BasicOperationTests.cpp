#include "LumeqShim/Basic/BasicOperation.h"

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

constexpr Lumeq::Common::LogSource Log(L"LumeqShim\\BasicOptIn");
constexpr BasicOperation Clear{Log, L"BasicClearOptIn", L"BasicClearOptIn CoInitialize returns 0x%08lx",
                               L"BasicClearOptIn(%s)"};
constexpr BasicOperation Subfolder{Log, L"BasicLocalSubfolderPath", nullptr,
                                   L"BasicLocalSubfolderPath(\"%s\")"};

template <class Work>
bool RunClear(Work work) {
    return RunTimed(
        Clear, [&work] { return RunInCom(Clear, work); }, L"key");
}

template <class Work>
bool RunSubfolder(Work work) {
    return RunTimed(Subfolder, work, L"path");
}

class BasicOperationFrame : public testing::Test {
protected:
    BasicOperationFrame() { _machine.WriteFactorySettings("<Log>on</Log><LogLevel>warning</LogLevel>"); }

    std::vector<std::string> Warnings() const {
        return Lumeq::Testing::LogMessages(_machine.LogFile(), "WARNING");
    }

    IsolatedMachine _machine;
};

using Texts = std::vector<std::string>;

struct NotAnException {};

} // namespace

TEST_F(BasicOperationFrame, ResultIsTheWorks) {
    EXPECT_TRUE(RunClear([] { return true; }));
    EXPECT_FALSE(RunClear([] { return false; }));
    EXPECT_TRUE(Warnings().empty());
}

TEST_F(BasicOperationFrame, ComErrorIsLoggedWithCodeAndMessage) {
    EXPECT_FALSE(RunClear([]() -> bool { throw _com_error(static_cast<HRESULT>(0x80040205)); }));
    EXPECT_EQ(Warnings(),
              Texts{"BasicClearOptIn failed with _com_error exception 0x80040205, IDispatch error #5"});
}

TEST_F(BasicOperationFrame, StandardExceptionIsLoggedWithItsText) {
    EXPECT_FALSE(RunClear([]() -> bool { throw std::runtime_error("so it goes"); }));
    EXPECT_EQ(Warnings(), Texts{"BasicClearOptIn exception with so it goes"});
}

TEST_F(BasicOperationFrame, NarrowTextEndsInTwoZeros) {
    const Lumeq::Testing::PrintedNarrowTexts printed;
    EXPECT_FALSE(RunClear([]() -> bool { throw Lumeq::Testing::OutOfOrder(); }));
    EXPECT_EQ(Warnings(), Texts{"BasicClearOptIn exception with out of order"});
    EXPECT_EQ(printed.Guarded(), 1);
    EXPECT_EQ(printed.Bare(), 0);
}

TEST_F(BasicOperationFrame, AnythingElseIsLoggedAsUnknown) {
    EXPECT_FALSE(RunClear([]() -> bool { throw NotAnException(); }));
    EXPECT_EQ(Warnings(), Texts{"BasicClearOptIn failed with unknown exception"});
}

TEST_F(BasicOperationFrame, SubfolderHasTheSameThreeLines) {
    EXPECT_FALSE(RunSubfolder([]() -> bool { throw _com_error(static_cast<HRESULT>(0x80040205)); }));
    EXPECT_FALSE(RunSubfolder([]() -> bool { throw std::bad_alloc(); }));
    EXPECT_FALSE(RunSubfolder([]() -> bool { throw 7; }));
    EXPECT_EQ(
        Warnings(),
        (Texts{"BasicLocalSubfolderPath failed with _com_error exception 0x80040205, IDispatch error #5",
               "BasicLocalSubfolderPath exception with std::bad_alloc",
               "BasicLocalSubfolderPath failed with unknown exception"}));
}

TEST_F(BasicOperationFrame, ComIsReleasedAfterAFailure) {
    RunClear([]() -> bool { throw 7; });
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

TEST_F(BasicOperationFrame, ReportThatCannotBeMadeThrowsNothing) {
    std::optional<FailingAllocation> failing;
    const bool result = RunClear([&failing]() -> bool {
        failing.emplace(1);
        throw 7;
    });
    EXPECT_TRUE(failing->Happened());
    failing.reset();
    EXPECT_FALSE(result);
    EXPECT_TRUE(Warnings().empty());
    EXPECT_EQ(ApartmentOfThread(), NotInitialized);
}

} // namespace Zuvan::LumeqShim
