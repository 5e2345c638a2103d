#include "LumeqShim/LumeqNativeShim.h"

#include "DeliveryTest.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/PauseState.h"

#include <gmock/gmock.h>

namespace Zuvan::LumeqShim {

namespace {

using Lumeq::Testing::CompanionCalls;
using Lumeq::Testing::FailingAllocation;
using Lumeq::Testing::LetCompanionRaise;
using Lumeq::Testing::LogMessages;
using Lumeq::Testing::PlaceCompanionWithoutFlush;
using Lumeq::Testing::UseFakeMscoree;
using testing::ElementsAre;
using testing::IsEmpty;

/// The wrapper does not read the event, so any address will do.
const auto* const SomeEvent = reinterpret_cast<const Lumeq::Extra::Eventing::EventingEvent*>(0x1000);

const std::wstring AppName = L"demo 1";

/// One call of one of the eleven wrappers.
struct Wrapper {
    const char* name;
    void (*call)();
    const wchar_t* managedCall; ///< The call that reaches the companion library.
    bool testsGate;
};

const Wrapper Wrappers[] = {
    {"StartupXX",
     [] {
         StartupXX(L"demo 1", {6, 7}, true, false);
     },
     L"StartupInternal(demo 1, 6, 7, true, false)", true},
    {"ShutdownXX", [] { ShutdownXX(-1); }, L"ShutdownInternal(-1)", true},
    {"FlushXX", [] { FlushXX(2147483647); }, L"FlushInternal(2147483647)", false},
    {"GetUserOptInXX", [] { GetUserOptInXX(); }, L"GetUserOptInInternal()", true},
    {"SetUserOptInXX", [] { SetUserOptInXX(true); }, L"SetUserOptInInternal(true)", true},
    {"SetLocalValue",
     [] {
         std::wstring key = L"OptinBeforePause";
         SetLocalValue(true, key);
     },
     L"SetLocalValueInternal(OptinBeforePause, True)", true},
    {"LocalSubfolderPathXX", [] { LocalSubfolderPathXX(L"sub"); }, L"LocalSettingsSubfolderInternal(sub)",
     false},
    {"PostEventXX", [] { PostEventXX(SomeEvent); }, L"PostEventInternal(4096, 0, 0)", false},
    {"PostDataXX",
     [] {
         PostDataXX({{L"a", L"1"}, {L"b", L"2"}}, L"sys_printer_discoverylist");
     },
     L"PostDataInternal(a=1 b=2, sys_printer_discoverylist, 0)", false},
    {"TrackPrintQueueInfoXX", [] { TrackPrintQueueInfoXX(); }, L"TrackPrintQueueInfoInternal()", false},
    {"TrackSystemInformationXX", [] { TrackSystemInformationXX(); }, L"TrackSystemInformationInternal()",
     false},
};

struct RaisedKind {
    const wchar_t* name;
    const char* rest; ///< The line after the log name.
};

const RaisedKind Raised[] = {
    {L"vesto", " failed with VestoException exception scripted caf\xC3\xA9\\nParameter name: who"},
    {L"com", " failed with _com_error exception 0x80070005, Access denied."},
    {L"std", " exception with scripted 100%"},
    {L"unknown", " failed with unknown exception"},
    {L"managed4", " failed with unknown exception"},
    {L"managed2", " failed with unknown exception"},
};

using ManagedRoad = DeliveryTest;
using BasicRoad = DeliveryTest;
using ShutTrackingGate = DeliveryTest;
using MissingCompanion = DeliveryTest;
using FailedAllocation = DeliveryTest;

class Routing : public DeliveryTest, public testing::WithParamInterface<Wrapper> {};
class RaisingRoute : public DeliveryTest,
                     public testing::WithParamInterface<std::tuple<Wrapper, RaisedKind>> {};

/// Whether the store has no flag, so that nothing was written on the basic road.
bool IsBasicStoreEmpty() {
    return !BasicDidUserOpted(UserOptInKey) && !BasicDidUserOpted(OptinBeforePauseKey);
}

} // namespace

TEST_P(Routing, ManagedRoadCallsTheCompanion) {
    TakeManagedRoad();
    GetParam().call();
    EXPECT_THAT(CompanionCalls(), ElementsAre(GetParam().managedCall));
    EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_P(Routing, BasicRoadDoesNotTouchTheCompanion) {
    TakeBasicRoad();
    GetParam().call();
    EXPECT_EQ(GetModuleHandleW(CompanionFileName), nullptr);
    EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_P(Routing, ShutGateStopsThoseThatTestItBeforeTheProbe) {
    TakeManagedRoad();
    ShutGate();
    GetParam().call();
    if (GetParam().testsGate) {
        EXPECT_THAT(CompanionCalls(), IsEmpty());
        EXPECT_EQ(GetModuleHandleW(L"mscoree.dll"), nullptr);
        EXPECT_FALSE(std::filesystem::exists(machine.LogFile()));
        EXPECT_TRUE(IsBasicStoreEmpty());
    } else {
        EXPECT_THAT(CompanionCalls(), ElementsAre(GetParam().managedCall));
    }
}

TEST_P(Routing, MissingCompanionIsLoggedByEachCall) {
    UseFakeMscoree(L"v4.0.30319");
    GetParam().call();
    GetParam().call();
    std::string path = (machine.HostFolder() / "LumeqShim.Managed.dll").string();
    const std::string line = std::string(GetParam().name) +
                             " failed with VestoException exception The companion library was not found\\n"
                             "Path: \"" +
                             path + "\"";
    EXPECT_THAT(Warnings(), ElementsAre(line, line));
}

INSTANTIATE_TEST_SUITE_P(All, Routing, testing::ValuesIn(Wrappers),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(RaisingRoute, IsLoggedAndDoesNotEscape) {
    const auto& [wrapper, kind] = GetParam();
    TakeManagedRoad();
    LetCompanionRaise(kind.name);
    wrapper.call();
    EXPECT_THAT(CompanionCalls(), ElementsAre(wrapper.managedCall));
    EXPECT_THAT(Warnings(), ElementsAre(std::string(wrapper.name) + kind.rest));
}

INSTANTIATE_TEST_SUITE_P(All, RaisingRoute,
                         testing::Combine(testing::ValuesIn(Wrappers), testing::ValuesIn(Raised)),
                         [](const auto& info) {
                             const std::wstring kind = std::get<1>(info.param).name;
                             return std::string(std::get<0>(info.param).name) + "_" +
                                    std::string(kind.begin(), kind.end());
                         });

TEST_F(ManagedRoad, StartupIsLeftToTheCompanion) {
    TakeManagedRoad();
    BasicSetUserOptIn(true, UserOptInKey);
    StartupXX(AppName, {6, 7}, true, false);
    EXPECT_FALSE(HasBasicStartRun());
}

TEST_F(ManagedRoad, FailedStartupRunsTheBasicStart) {
    TakeManagedRoad();
    BasicSetUserOptIn(true, UserOptInKey);
    LetCompanionRaise(L"std");
    StartupXX(AppName, {6, 7}, true, false);
    ASSERT_FALSE(Warnings().empty());
    EXPECT_EQ(Warnings().front(), "StartupXX exception with scripted 100%");
    EXPECT_TRUE(HasBasicStartRun());
}

TEST_F(BasicRoad, StartupRunsTheBasicStart) {
    TakeBasicRoad();
    BasicSetUserOptIn(true, UserOptInKey);
    StartupXX(AppName, {6, 7}, true, false);
    EXPECT_TRUE(HasBasicStartRun());
}

TEST_F(ManagedRoad, CompanionReturnsTheOptIn) {
    TakeManagedRoad();
    EXPECT_TRUE(GetUserOptInXX());
}

TEST_F(ManagedRoad, OptInsAreLeftToTheCompanion) {
    TakeManagedRoad();
    std::wstring key = L"OptinBeforePause";
    SetUserOptInXX(true);
    SetLocalValue(false, key);
    EXPECT_THAT(CompanionCalls(), ElementsAre(L"SetUserOptInInternal(true)",
                                              L"SetLocalValueInternal(OptinBeforePause, False)"));
    EXPECT_TRUE(IsBasicStoreEmpty());
}

TEST_F(ManagedRoad, FailedOptInReadReturnsFalseWithoutABasicRead) {
    TakeManagedRoad();
    BasicSetUserOptIn(true, UserOptInKey);
    LetCompanionRaise(L"std");
    EXPECT_FALSE(GetUserOptInXX());
    EXPECT_THAT(LogMessages(machine.LogFile(), "DEBUG"),
                testing::Not(testing::Contains(testing::HasSubstr("Basic Get User Opt-In returns"))));
}

TEST_F(ManagedRoad, FailedOptInWriteLeavesTheChoiceInTheBasicStore) {
    TakeManagedRoad();
    LetCompanionRaise(L"std");
    SetUserOptInXX(true);
    EXPECT_TRUE(BasicGetUserOptIn(L"UserOptIn"));
    SetUserOptInXX(false);
    EXPECT_FALSE(BasicGetUserOptIn(L"UserOptIn"));
    EXPECT_TRUE(BasicDidUserOpted(L"UserOptIn"));
}

TEST_F(ManagedRoad, FailedValueWriteLeavesTheValueInTheBasicStore) {
    TakeManagedRoad();
    LetCompanionRaise(L"unknown");
    std::wstring key = L"OptinBeforePause";
    SetLocalValue(true, key);
    EXPECT_EQ(key, L"");
    EXPECT_TRUE(BasicGetUserOptIn(L"OptinBeforePause"));
    EXPECT_FALSE(BasicDidUserOpted(L"UserOptIn"));
}

TEST_F(ManagedRoad, SubfolderHoldsForTheBasicStoreToo) {
    TakeManagedRoad();
    LocalSubfolderPathXX(L"sub");
    BasicSetUserOptIn(true, UserOptInKey);
    EXPECT_TRUE(std::filesystem::exists(SettingsFileInSubfolder()));
}

TEST_F(ManagedRoad, FailedSubfolderIsNotSetForTheBasicStoreEither) {
    TakeManagedRoad();
    LetCompanionRaise(L"com");
    LocalSubfolderPathXX(L"sub");
    BasicSetUserOptIn(true, UserOptInKey);
    EXPECT_TRUE(std::filesystem::exists(machine.LocalSettingsFile()));
    EXPECT_FALSE(std::filesystem::exists(SettingsFileInSubfolder()));
}

TEST_F(ManagedRoad, LaterCallsStillTryTheCompanionAfterAFailure) {
    TakeManagedRoad();
    LetCompanionRaise(L"std");
    PostEventXX(SomeEvent);
    PostEventXX(SomeEvent);
    LetCompanionRaise(nullptr);
    PostEventXX(SomeEvent);
    EXPECT_EQ(CompanionCalls().size(), 3u);
    EXPECT_THAT(Warnings(), ElementsAre("PostEventXX exception with scripted 100%",
                                        "PostEventXX exception with scripted 100%"));
}

TEST_F(ManagedRoad, OperationThatTheCompanionLacksIsLoggedAndTheOthersWork) {
    UseFakeMscoree(L"v4.0.30319");
    PlaceCompanionWithoutFlush(machine.HostFolder());
    FlushXX(1);
    ShutdownXX(2);
    const std::string path = (machine.HostFolder() / "LumeqShim.Managed.dll").string();
    EXPECT_THAT(Warnings(), ElementsAre("FlushXX failed with VestoException exception The companion library "
                                        "has no operation FlushInternal\\nPath: \"" +
                                        path + "\""));
    EXPECT_THAT(CompanionCalls(), ElementsAre(L"ShutdownInternal(2)"));
}

TEST_F(FailedAllocation, DoesNotEscapeFromACallThatIsReported) {
    TakeManagedRoad();
    LetCompanionRaise(L"vesto");
    EXPECT_GT(FailEachAllocationOf([] { FlushXX(1); }), 3);
}

TEST_F(FailedAllocation, DoesNotEscapeFromTheSearchForTheCompanion) {
    UseFakeMscoree(L"v4.0.30319");
    EXPECT_GT(FailEachAllocationOf([] { FlushXX(1); }), 3);
}

TEST_F(FailedAllocation, InTheBasicSubfolderIsLoggedUnderTheInnerNameAlone) {
    TakeBasicRoad();
    IsRequiredDotNetVersionInstalled();
    // Each path is longer than the one before, so that storing it allocates.
    std::vector<std::wstring> paths;
    for (std::size_t length = 100; paths.size() < 101; length += 100)
        paths.emplace_back(length, L'a');
    auto path = paths.begin();
    FailEachAllocationOf([&path] { LocalSubfolderPathXX(*path++); });
    EXPECT_THAT(Warnings(), testing::Each("BasicLocalSubfolderPath exception with std::bad_alloc"));
    EXPECT_THAT(Warnings(), testing::Not(IsEmpty()));
}

TEST_F(FailedAllocation, InTheFirstAttemptOfTheOptInIsLoggedUnderItsOwnNameAndMadeGood) {
    TakeBasicRoad();
    IsRequiredDotNetVersionInstalled();
    {
        const FailingAllocation failure(1);
        SetUserOptInXX(true);
        EXPECT_TRUE(failure.Happened());
    }
    EXPECT_THAT(Warnings(), ElementsAre("SetUserOptInXX exception with std::bad_alloc"));
    EXPECT_TRUE(BasicGetUserOptIn(L"UserOptIn"));
}

TEST_F(MissingCompanion, OptInIsWrittenToTheBasicStore) {
    UseFakeMscoree(L"v4.0.30319");
    SetUserOptInXX(true);
    EXPECT_TRUE(BasicGetUserOptIn(L"UserOptIn"));
}

TEST_F(BasicRoad, OptInIsKeptInTheBasicStore) {
    TakeBasicRoad();
    EXPECT_FALSE(GetUserOptInXX());
    SetUserOptInXX(true);
    EXPECT_TRUE(GetUserOptInXX());
    EXPECT_TRUE(BasicGetUserOptIn(L"UserOptIn"));
}

TEST_F(BasicRoad, LocalValueIsKeptInTheBasicStoreUnderItsKey) {
    TakeBasicRoad();
    std::wstring key = L"OptinBeforePause";
    SetLocalValue(true, key);
    EXPECT_EQ(key, L"");
    EXPECT_TRUE(BasicGetUserOptIn(L"OptinBeforePause"));
    EXPECT_FALSE(BasicDidUserOpted(L"UserOptIn"));
}

TEST_F(BasicRoad, SubfolderHoldsForTheBasicStore) {
    TakeBasicRoad();
    LocalSubfolderPathXX(L"sub");
    SetUserOptInXX(true);
    EXPECT_TRUE(std::filesystem::exists(SettingsFileInSubfolder()));
}

TEST_F(BasicRoad, FlushShutdownAndPostsLeaveNoTrace) {
    TakeBasicRoad();
    IsRequiredDotNetVersionInstalled();
    const std::string log = Lumeq::Testing::ReadFile(machine.LogFile());
    FlushXX(1000);
    ShutdownXX(1000);
    PostEventXX(SomeEvent);
    PostDataXX({{L"a", L"1"}}, L"sys_printer_discoverylist");
    TrackPrintQueueInfoXX();
    TrackSystemInformationXX();
    EXPECT_NE(log, "");
    EXPECT_EQ(Lumeq::Testing::ReadFile(machine.LogFile()), log);
    EXPECT_FALSE(std::filesystem::exists(machine.LocalSettingsFile()));
}

TEST_F(BasicRoad, FailedProbeSendsTheFirstCallAloneToTheBasicRoad) {
    UseFakeMscoree(L"v2.0.50727,throw:EnumerateInstalledRuntimes");
    PlaceCompanion(machine.HostFolder());
    SetUserOptInXX(true);
    EXPECT_THAT(CompanionCalls(), IsEmpty());
    EXPECT_TRUE(BasicGetUserOptIn(L"UserOptIn"));
    FlushXX(1);
    EXPECT_THAT(CompanionCalls(), ElementsAre(L"FlushInternal(1)"));
}

TEST_F(ShutTrackingGate, KeyIsConsumedEvenIfTheGateIsShut) {
    ShutGate();
    std::wstring key = L"OptinBeforePause";
    SetLocalValue(true, key);
    EXPECT_EQ(key, L"");
}

TEST_F(ShutTrackingGate, OptInIsFalseIfTheGateIsShut) {
    TakeManagedRoad();
    ShutGate();
    EXPECT_FALSE(GetUserOptInXX());
}

} // namespace Zuvan::LumeqShim
