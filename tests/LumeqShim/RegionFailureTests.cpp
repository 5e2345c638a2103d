// The regions that only an allocation of their own can make fail, because the operations in them throw
// nothing.
#include "Common/Exceptions.h"
#include "DeliveryTest.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/LumeqNativeShim.h"

#include <windows.h>

#include <comdef.h>
#include <gmock/gmock.h>
#include <new>
#include <stdexcept>
#include <tuple>

namespace Zuvan::LumeqShim {

namespace {

struct Region {
    const char* name;
    const char* logName;
    bool hasFailedBefore; ///< Entered only after the companion has failed.
    void (*call)();
};

// Made before the calls, which consume them.
std::vector<std::wstring> pauseKeys(200, L"OptinBeforePause");

void StorePauseKey() {
    SetLocalValue(true, pauseKeys.back());
    pauseKeys.pop_back();
}

const Region Regions[] = {
    {"BasicStart", "BasicImplementation", false,
     [] {
         StartupXX(L"demo 1", {6, 7}, true, false);
     }},
    {"BasicReadOfTheOptIn", "BasicGetUserOptIn", false, [] { GetUserOptInXX(); }},
    {"OptIn", "SetUserOptInXX", false, [] { SetUserOptInXX(true); }},
    {"FallbackOfTheOptIn", "BasicImplementation", true, [] { SetUserOptInXX(true); }},
    {"LocalValue", "SetLocalValue", false, &StorePauseKey},
    {"FallbackOfTheLocalValue", "BasicImplementation", true, &StorePauseKey},
};

struct Shortage {
    const char* name;
    void (*raise)();  ///< Called by the allocation that fails.
    const char* rest; ///< The line after the log name.
};

const Shortage Shortages[] = {
    {"VestoException", [] { throw Lumeq::Common::ArgumentException(L"who", L"no caf\u00e9"); },
     " failed with VestoException exception no caf\xC3\xA9\\nParameter name: who"},
    {"ComError", [] { throw _com_error(E_OUTOFMEMORY); },
     " failed with _com_error exception 0x8007000e, Out of memory."},
    {"StandardException", [] { throw std::runtime_error("not 100%"); }, " exception with not 100%"},
    {"AnythingElse", [] { throw 42; }, " failed with unknown exception"},
};

class RegionWithoutMemory : public DeliveryTest,
                            public testing::WithParamInterface<std::tuple<Region, Shortage>> {
protected:
    ~RegionWithoutMemory() override { std::set_new_handler(nullptr); }
};

} // namespace

TEST_P(RegionWithoutMemory, IsLoggedAndNothingEscapes) {
    const auto& [region, shortage] = GetParam();
    if (region.hasFailedBefore)
        TakeManagedRoad();
    else
        TakeBasicRoad();
    Lumeq::Testing::LetCompanionRaise(L"unknown");
    std::set_new_handler(shortage.raise);
    EXPECT_GT(FailEachAllocationOf(region.call), 0);
    EXPECT_THAT(Warnings(), testing::Contains(std::string(region.logName) + shortage.rest));
    // Regions around others do not see what these have caught.
    EXPECT_THAT(Warnings(), testing::Not(testing::Contains(testing::StartsWith("GetUserOptInXX "))));
}

INSTANTIATE_TEST_SUITE_P(All, RegionWithoutMemory,
                         testing::Combine(testing::ValuesIn(Regions), testing::ValuesIn(Shortages)),
                         [](const auto& info) {
                             return std::string(std::get<0>(info.param).name) + "_" +
                                    std::get<1>(info.param).name;
                         });

} // namespace Zuvan::LumeqShim
