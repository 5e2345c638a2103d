#include "LumeqApi/Devices.h"

#include "support/DebuggerStandIn.h"
#include "support/DeliveryStandIns.h"
#include "support/FailingAllocation.h"
#include "support/ImportedFunction.h"
#include "support/IsolatedMachine.h"
#include "support/LogLines.h"
#include "support/PrintedNarrowTexts.h"

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cwchar>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <thread>

namespace Zuvan::Lumeq::API {

namespace {

const std::string DeviceUuid = "1c852a4d-b800-1f08-abcd-3c52821f9ab0";

/// A machine that logs failures alone, with the log's policy already read.
class DeviceExports : public testing::Test {
protected:
    DeviceExports() {
        machine.WriteFactorySettings("<Log>on</Log><LogLevel>warning</LogLevel>");
        Common::LogMessage(Common::SeverityLevel::DEBUG, L"", 0, nullptr, L"first");
    }
    ~DeviceExports() override { Testing::FreeCompanion(); }

    std::vector<std::string> Errors() const { return Testing::LogMessages(machine.LogFile(), "ERROR"); }

    /// Lets every allocation of the call fail once: each must be one line of its own. Returns their number.
    int FailEachAllocationOf(const std::function<void()>& call) const {
        for (int failed = 0;; ++failed) {
            std::filesystem::remove(machine.LogFile());
            const Testing::FailingAllocation failing(failed + 1);
            call();
            if (!failing.Happened())
                return failed;
            EXPECT_THAT(Errors(), testing::ElementsAre(testing::StartsWith(
                                      "lumeq_machine_tests.exe: Exception in Zuvan::Lumeq::API::GetBiid: "
                                      "std::bad_alloc. LumeqApi(")));
        }
    }

    Testing::IsolatedMachine machine;
};

DiscoveredDevice Device(const std::wstring& biid) { return {nullptr, {{L"dev_biid", biid}}}; }

using PostData = void(const StringDictionary& data, const std::wstring& dataType, void* third);

/// Replaces the companion's PostDataInternal: from the first device on, a second thread waits for the
/// lock. Whoever releases a lock for which another thread waits has to wake that thread.
struct WaitingThread {
    static inline DWORD sender = 0;
    static inline int sent = 0;
    static inline std::atomic<bool> waits{false};
    static inline std::vector<int> wokenAfter; ///< How many devices.
    static inline std::thread thread;
    // Looked up before GetProcAddress is replaced.
    static inline auto* const setEvent =
        Testing::RealFunction<decltype(SetEvent)>("kernel32.dll", "SetEvent");

    static void Send(const StringDictionary&, const std::wstring&, void*) {
        if (++sent > 1)
            return;
        sender = GetCurrentThreadId();
        thread = std::thread([] { const std::lock_guard lock(ApiLock); });
        while (!waits)
            Sleep(0);
    }
    static FARPROC WINAPI Find(HMODULE, const char*) {
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(static_cast<PostData*>(&Send)));
    }
    static DWORD WINAPI Wait(HANDLE object, DWORD milliseconds) {
        if (GetCurrentThreadId() != sender)
            waits = true;
        return WaitForSingleObjectEx(object, milliseconds, FALSE);
    }
    static BOOL WINAPI Wake(HANDLE event) {
        if (waits && GetCurrentThreadId() == sender)
            wokenAfter.push_back(sent);
        return setEvent(event);
    }
};

/// A list of one device, the first member of which lies in memory that nobody can read.
class HalfReadableList {
public:
    explicit HalfReadableList(const StringDictionary& information) {
        _pages = static_cast<std::byte*>(VirtualAlloc(nullptr, 2 * Page, MEM_RESERVE, PAGE_NOACCESS));
        std::byte* const readable = _pages + Page;
        VirtualAlloc(readable, Page, MEM_COMMIT, PAGE_READWRITE);
        _information = new (readable) StringDictionary(information);
        static_assert(sizeof(DiscoveredDevice) == sizeof(void*) + sizeof(StringDictionary));
        // What a vector consists of: begin, end and end of the memory.
        std::byte* const first = readable - sizeof(void*);
        _pointers = {first, first + sizeof(DiscoveredDevice), first + sizeof(DiscoveredDevice)};
        static_assert(sizeof _pointers == sizeof(DiscoveredDeviceList));
    }
    ~HalfReadableList() {
        std::destroy_at(_information);
        VirtualFree(_pages, 0, MEM_RELEASE);
    }
    HalfReadableList(const HalfReadableList&) = delete;
    HalfReadableList& operator=(const HalfReadableList&) = delete;

    const DiscoveredDeviceList& List() const {
        return *reinterpret_cast<const DiscoveredDeviceList*>(_pointers.data());
    }

private:
    static constexpr std::size_t Page = 0x10000;

    std::byte* _pages;
    StringDictionary* _information;
    alignas(DiscoveredDeviceList) std::array<std::byte*, 3> _pointers;
};

} // namespace

TEST_F(DeviceExports, SkippedDeviceIsAWarningAndNoBreak) {
    Testing::UseFakeMscoree(L"v2.0.50727");
    const Testing::DebuggerStandIn debugger;
    TrackDiscoveredPrintersEx({{}, Device(L"bad"), Device(L"unknown"), {}});
    EXPECT_EQ(debugger.Breaks(), 0);
    EXPECT_THAT(Testing::LogMessages(machine.LogFile(), "WARNING"),
                testing::ElementsAre("skipping discovered device with no information (empty dictionary)",
                                     "skipping discovered device with invalid BIID: \"bad\"",
                                     "skipping discovered device with no information (empty dictionary)"));
}

TEST_F(DeviceExports, WholeListIsSentInOneHoldOfTheLock) {
    Testing::UseFakeMscoree(L"v4.0.30319");
    Testing::PlaceCompanion(machine.HostFolder());
    const DiscoveredDeviceList devices(3, Device(L"unknown"));
    FlushEx(0); // loads the companion
    {
        const Testing::ImportedFunction<decltype(WaitForSingleObject)> waiting(
            "kernel32.dll", "WaitForSingleObject", &WaitingThread::Wait);
        const Testing::ImportedFunction<decltype(SetEvent)> waking("kernel32.dll", "SetEvent",
                                                                   &WaitingThread::Wake);
        const Testing::ImportedFunction<decltype(GetProcAddress)> finding("kernel32.dll", "GetProcAddress",
                                                                          &WaitingThread::Find);
        TrackDiscoveredPrintersEx(devices);
    }
    WaitingThread::thread.join();
    EXPECT_THAT(WaitingThread::wokenAfter, testing::ElementsAre(3));
}

TEST_F(DeviceExports, FirstMemberOfADeviceIsNotRead) {
    Testing::UseFakeMscoree(L"v4.0.30319");
    Testing::PlaceCompanion(machine.HostFolder());
    const HalfReadableList list({{L"dev_biid", L"unknown"}, {L"place", L"1"}});
    TrackDiscoveredPrintersEx(list.List());
    EXPECT_THAT(
        Testing::CompanionCalls(),
        testing::ElementsAre(L"PostDataInternal(dev_biid=unknown place=1, sys_printer_discoverylist, 0)"));
}

TEST_F(DeviceExports, FailedComputationLeavesTheIdentifierAndIsReported) {
    std::wstring biid = L"before";
    const int allocations = FailEachAllocationOf([&biid] {
        EXPECT_EQ(biid, L"before");
        GetBiid(DeviceUuid, biid);
    });
    EXPECT_GT(allocations, 1);
    EXPECT_EQ(biid.size(), 64U);
}

TEST_F(DeviceExports, PlainFormWithoutMemoryIsReportedAndNotTakenForAnEmptyUuid) {
    wchar_t buffer[65] = {};
    const int allocations = FailEachAllocationOf([&buffer] {
        EXPECT_STREQ(buffer, L"");
        std::wcscpy(buffer, L"before");
        EXPECT_EQ(GetBiid_Internal(buffer, std::size(buffer), DeviceUuid.c_str()), 0);
    });
    EXPECT_GT(allocations, 2);
    EXPECT_EQ(std::wcslen(buffer), 64U);
}

TEST_F(DeviceExports, PlainFormTakesNullForAnEmptyUuid) {
    wchar_t buffer[65] = L"before";
    EXPECT_EQ(GetBiid_Internal(buffer, std::size(buffer), nullptr), 0);
    EXPECT_STREQ(buffer, L"");
    EXPECT_THAT(Errors(),
                testing::ElementsAre(testing::StartsWith(
                    "lumeq_machine_tests.exe: Validation failed in Zuvan::Lumeq::API::GetBiid: empty "
                    "deviceUuid. LumeqApi(")));
}

TEST(IdentifyDevice, NarrowTextOfTheTraceEndsInTwoZeros) {
    Testing::IsolatedMachine machine;
    machine.WriteFactorySettings();
    std::string uuid("uuid, and more");
    uuid.resize(4);
    std::wstring biid;
    const Testing::PrintedNarrowTexts printed;
    IdentifyDevice(Call(L"X"), uuid, biid);
    EXPECT_THAT(Testing::LogMessages(machine.LogFile(), "TRACE"), testing::Contains("deviceUuid: \"uuid\""));
    EXPECT_EQ(printed.Guarded(), 1);
    EXPECT_EQ(printed.Bare(), 0);
}

TEST(CopyToBuffer, CopiesWithTerminator) {
    wchar_t buffer[4] = {L'x', L'x', L'x', L'x'};
    EXPECT_EQ(CopyToBuffer(buffer, 4, L"usb"), 0);
    EXPECT_STREQ(buffer, L"usb");
}

TEST(CopyToBuffer, TooSmallGives34AndAnEmptyText) {
    wchar_t buffer[3] = {L'x', L'x', L'x'};
    EXPECT_EQ(CopyToBuffer(buffer, 3, L"usb"), 34);
    EXPECT_EQ(buffer[0], L'\0');
}

TEST(CopyToBuffer, NullOrNoSizeGives22) {
    wchar_t buffer[1] = {L'x'};
    EXPECT_EQ(CopyToBuffer(nullptr, 10, L"usb"), 22);
    EXPECT_EQ(CopyToBuffer(buffer, 0, L"usb"), 22);
    EXPECT_EQ(buffer[0], L'x');
}

TEST(CopyToBuffer, EmptyTextNeedsOneCharacter) {
    wchar_t buffer[1] = {L'x'};
    EXPECT_EQ(CopyToBuffer(buffer, 1, L""), 0);
    EXPECT_EQ(buffer[0], L'\0');
}

TEST(CopyToBuffer, AgreesWithTheRuntime) {
    wchar_t ours[4];
    wchar_t theirs[4];
    for (const std::wstring text : {L"", L"a", L"abc", L"abcd", L"abcdefgh"}) {
        EXPECT_EQ(CopyToBuffer(ours, 4, text), wcscpy_s(theirs, 4, text.c_str()));
        EXPECT_STREQ(ours, theirs);
    }
}

} // namespace Zuvan::Lumeq::API
