#include "Common/ComScope.h"

#include "LoggerTest.h"
#include "support/Apartment.h"
#include "support/DebuggerStandIn.h"
#include "support/ImportedFunction.h"

#include <gmock/gmock.h>

#include <thread>

namespace Zuvan::Lumeq::Common {

namespace {

using testing::ElementsAre;
using Testing::LoggedLine;

using ComScopeTest = LoggerTest;

std::string ThisThread() { return std::to_string(GetCurrentThreadId()); }

/// The calls to COM in their order, each with the number of breaks before it.
struct ComWatch {
    static inline std::vector<std::string> calls;
    static inline const Testing::DebuggerStandIn* debugger = nullptr;

    static void See(const char* call) { calls.push_back(call + std::to_string(debugger->Breaks())); }
    static HRESULT WINAPI Initialize(void* reserved, DWORD model) {
        See("CoInitializeEx ");
        EXPECT_EQ(reserved, nullptr);
        EXPECT_EQ(model, DWORD{COINIT_APARTMENTTHREADED});
        return Testing::RealFunction<decltype(CoInitializeEx)>("ole32.dll", "CoInitializeEx")(reserved,
                                                                                              model);
    }
    static void WINAPI Uninitialize() {
        See("CoUninitialize ");
        Testing::RealFunction<decltype(CoUninitialize)>("ole32.dll", "CoUninitialize")();
    }
};

} // namespace

// Loading the log's policy counted once before.
TEST_F(ComScopeTest, LinesShowTheThreadAndBothCounts) {
    StartLogging("debug");
    const std::string here = ThisThread();
    std::string there;
    ComInitCounted(L"A");
    std::thread([&there] {
        there = ThisThread();
        const ComScope other(L"B");
    }).join();
    ComUninitCounted(L"A");
    EXPECT_THAT(Testing::LogLines(machine.LogFile()),
                ElementsAre(LoggedLine{"DEBUG", "", "Init t=" + here + ", init=2, deinit=1, f=A"},
                            LoggedLine{"DEBUG", "", "Init t=" + there + ", init=3, deinit=1, f=B"},
                            LoggedLine{"DEBUG", "", "Uninit t=" + there + ", init=3, deinit=2, f=B"},
                            LoggedLine{"DEBUG", "", "Uninit t=" + here + ", init=3, deinit=3, f=A"}));
}

TEST_F(ComScopeTest, RepairShowsThemAsWell) {
    StartLogging("debug");
    ComInitCounted(L"A");
    ComUninitCounted(L"A");
    ComInitCounted(L"fails to undo COM");
    CoUninitialize();
    std::filesystem::remove(machine.LogFile());
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    EXPECT_EQ(ComInitCounted(L"B"), S_OK);
    CoUninitialize();
    const std::string here = ThisThread();
    EXPECT_THAT(
        Testing::LogLines(machine.LogFile()),
        ElementsAre(LoggedLine{"DEBUG", "", "Init t=" + here + ", init=4, deinit=2, f=B"},
                    LoggedLine{"WARNING", "",
                               "Unbalanced COM initialization t=" + here + ", init=4, deinit=2, f=B"}));
}

TEST_F(ComScopeTest, RepairBreaksOnceItIsDone) {
    StartLogging("error");
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    const Testing::DebuggerStandIn debugger;
    ComWatch::debugger = &debugger;
    {
        const Testing::ImportedFunction<decltype(CoInitializeEx)> initializing("ole32.dll", "CoInitializeEx",
                                                                               &ComWatch::Initialize);
        const Testing::ImportedFunction<decltype(CoUninitialize)> uninitializing(
            "ole32.dll", "CoUninitialize", &ComWatch::Uninitialize);
        EXPECT_EQ(ComInitCounted(L"A"), S_OK);
    }
    EXPECT_THAT(ComWatch::calls, ElementsAre("CoInitializeEx 0", "CoUninitialize 0", "CoInitializeEx 0"));
    EXPECT_EQ(debugger.Breaks(), 1);
    EXPECT_EQ(Testing::ApartmentOfThread(), S_OK);
    CoUninitialize();
}

} // namespace Zuvan::Lumeq::Common
