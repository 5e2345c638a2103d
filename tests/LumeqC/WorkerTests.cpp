#include "LumeqC/EveryCall.h"
#include "LumeqC/StandInExports.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <chrono>
#include <map>
#include <thread>

namespace Zuvan::Lumeq::Testing {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int Capacity = 50;
constexpr std::int32_t Long = 60'000;

class Worker : public testing::Test {
protected:
    static void SetUpTestSuite() {
        lumeq_options options = LUMEQ_OPTIONS_INIT;
        options.use_worker_thread = 1;
        options.queue_capacity = Capacity;
        ASSERT_EQ(1, lumeq_configure(&options));
        ASSERT_EQ(0, lumeq_configure(&options)) << "only once";
    }

    Worker() { StandIn::Reset(); }
    ~Worker() override {
        StandIn::Release();
        lumeq_shutdown(Long);
        StandIn::Reset();
    }

    /// The calls so far, when all are made.
    static std::wstring Noted() {
        lumeq_task_is_open(0);
        std::wstring text;
        for (const std::wstring& call : StandIn::TakeCalls())
            text += (text.empty() ? L"" : L"; ") + call;
        return text;
    }

    /// The worker is in a call and goes no further.
    static void Occupy() {
        StandIn::Block();
        lumeq_pause();
        StandIn::AwaitBlocked();
    }

    static void Click(const std::wstring& control) { lumeq_button_clicked(nullptr, control.c_str()); }
};

DWORD WaitForEnd(DWORD thread, DWORD milliseconds) {
    const HANDLE handle = OpenThread(SYNCHRONIZE, FALSE, thread);
    if (handle == nullptr)
        return WAIT_OBJECT_0;
    const DWORD result = WaitForSingleObject(handle, milliseconds);
    CloseHandle(handle);
    return result;
}

} // namespace

TEST_F(Worker, MakesEveryCallWithAllArguments) {
    for (const EveryCall& call : FullCalls()) {
        SCOPED_TRACE(call.name);
        call.make();
        EXPECT_EQ(call.noted, Noted());
    }
    EXPECT_EQ(0, StandIn::OpenTasks());
}

TEST_F(Worker, PassesEmptyTextsForNull) {
    for (const EveryCall& call : NullCalls()) {
        SCOPED_TRACE(call.name);
        call.make();
        EXPECT_EQ(call.noted, Noted());
    }
}

TEST_F(Worker, MakesAllCallsOnOneThreadOfItsOwnInAnApartment) {
    lumeq_pause();
    Noted();
    const unsigned long worker = StandIn::LastThread();
    EXPECT_NE(GetCurrentThreadId(), worker);
    std::thread([] { lumeq_resume(); }).join();
    lumeq_get_opt_in();
    EXPECT_EQ(worker, StandIn::LastThread());
    EXPECT_TRUE(StandIn::WasInSingleThreadedApartment());
}

TEST_F(Worker, LetsCallersGoOnAndKeepsTheOrder) {
    Occupy();
    Click(L"first");
    lumeq_set_opt_in(1);
    Click(L"second");
    StandIn::Release();
    EXPECT_EQ(L"Pause(); ButtonClicked(null, null, \"\", null, \"first\", null, null); SetUserOptInEx(1); "
              L"ButtonClicked(null, null, \"\", null, \"second\", null, null)",
              Noted());
}

TEST_F(Worker, OwnsTheArguments) {
    Occupy();
    std::wstring text = L"a text that is too long for a short one";
    lumeq_field field = {text.c_str(), text.c_str()};
    const lumeq_dictionary local = {&field, 1};
    lumeq_url_launched(text.c_str(), &local, text.c_str());
    text.assign(text.size(), L'x');
    field = {nullptr, nullptr};
    StandIn::Release();
    EXPECT_EQ(
        L"Pause(); UrlLaunchedEx(\"a text that is too long for a short one\", {a text that is too long for a "
        L"short one: \"a text that is too long for a short one\"}, \"a text that is too long for a short "
        L"one\")",
        Noted());
}

TEST_F(Worker, AnswersWhenTheTurnHasCome) {
    Occupy();
    std::thread release([] {
        std::this_thread::sleep_for(milliseconds(50));
        StandIn::Release();
    });
    EXPECT_EQ(1, lumeq_get_opt_in());
    wchar_t buffer[16];
    EXPECT_EQ(11u, lumeq_get_biid("1c85", buffer, 16));
    EXPECT_STREQ(L"id of 1c85", buffer);
    release.join();
}

TEST_F(Worker, FullQueueDropsTheNewestEventsAndNoSessionCall) {
    const std::uint64_t before = lumeq_dropped_count();
    Occupy();
    StandIn::TakeCalls();
    for (int i = 0; i < Capacity + 5; ++i)
        Click(std::to_wstring(i));
    EXPECT_EQ(before + 5, lumeq_dropped_count());
    lumeq_state state = LUMEQ_STATE_INIT;
    EXPECT_EQ(1, lumeq_get_state(&state)) << "which waits for no call";
    EXPECT_EQ(before + 5, state.dropped_count);
    EXPECT_EQ(1, state.uses_worker_thread);
    EXPECT_EQ(Capacity, state.queued_calls);
    EXPECT_EQ(0u, lumeq_print_basic_begin(nullptr, nullptr)) << "what is dropped is not open";
    EXPECT_EQ(before + 6, lumeq_dropped_count());
    for (int i = 0; i < Capacity; ++i)
        lumeq_resume();
    EXPECT_EQ(before + 6, lumeq_dropped_count());
    StandIn::Release();
    lumeq_task_is_open(0);
    const std::vector<std::wstring> calls = StandIn::TakeCalls();
    ASSERT_EQ(2u * Capacity, calls.size());
    EXPECT_EQ(L"ButtonClicked(null, null, \"\", null, \"0\", null, null)", calls.front());
    EXPECT_EQ(L"ButtonClicked(null, null, \"\", null, \"49\", null, null)", calls[Capacity - 1]);
    EXPECT_EQ(L"Resume()", calls.back());
}

TEST_F(Worker, BeginsTasksLaterAndReturnsTheirNumbersAtOnce) {
    Occupy();
    const lumeq_task task = lumeq_device_config_begin(nullptr, nullptr);
    EXPECT_NE(0u, task);
    const lumeq_device_config details = LUMEQ_DEVICE_CONFIG_INIT;
    lumeq_device_config_complete(task, L"success", &details);
    EXPECT_EQ(0, StandIn::OpenTasks());
    StandIn::Release();
    EXPECT_FALSE(lumeq_task_is_open(task));
    EXPECT_EQ(L"Pause(); DeviceConfigInitiated(null, null); DeviceConfigCompleted(task, \"success\", 0)",
              Noted());
}

TEST_F(Worker, EndOfATaskThatCouldNotBeginIsPassedOn) {
    StandIn::FailToBegin();
    const lumeq_task task = lumeq_device_config_begin(nullptr, nullptr);
    const lumeq_device_config details = LUMEQ_DEVICE_CONFIG_INIT;
    lumeq_device_config_complete(task, L"success", &details);
    EXPECT_EQ(L"DeviceConfigInitiated(null, null); DeviceConfigCompleted(no task, \"success\", 0)", Noted());
}

TEST_F(Worker, AbandonedTaskIsEndedThoughTheQueueIsFull) {
    const lumeq_task task = lumeq_print_basic_begin(nullptr, nullptr);
    ASSERT_TRUE(lumeq_task_is_open(task));
    Occupy();
    for (int i = 0; i < Capacity + 1; ++i)
        Click(L"ok");
    lumeq_task_abandon(task);
    StandIn::Release();
    EXPECT_FALSE(lumeq_task_is_open(task));
    EXPECT_EQ(0, StandIn::OpenTasks());
}

TEST_F(Worker, ShutdownReturnsWhenAllIsMade) {
    for (int i = 0; i < Capacity; ++i)
        Click(L"ok");
    lumeq_shutdown(Long);
    const std::vector<std::wstring> calls = StandIn::TakeCalls();
    ASSERT_LT(1u, calls.size());
    EXPECT_EQ(L"ShutdownEx(60000)", calls.back());
}

TEST_F(Worker, ShutdownDropsAndCountsTheEventsThatDoNotFit) {
    const std::uint64_t before = lumeq_dropped_count();
    Occupy();
    Click(L"late");
    lumeq_resume();
    lumeq_software_install_begin(nullptr, nullptr);
    const auto start = Clock::now();
    lumeq_shutdown(100);
    const auto held = Clock::now() - start;
    EXPECT_LE(milliseconds(95), held);
    EXPECT_GT(milliseconds(5000), held);
    EXPECT_EQ(before + 2, lumeq_dropped_count());
    StandIn::Release();
    EXPECT_EQ(L"Pause(); Resume(); ShutdownEx(100)", Noted()) << "calls of the session are made later";
}

TEST_F(Worker, EndsAfterShutdownAndStartsAgain) {
    lumeq_pause();
    Noted();
    const unsigned long first = StandIn::LastThread();
    EXPECT_EQ(static_cast<DWORD>(WAIT_TIMEOUT), WaitForEnd(first, 100)) << "it waits for more";
    lumeq_shutdown(Long);
    EXPECT_EQ(WAIT_OBJECT_0, WaitForEnd(first, Long));
    StandIn::TakeCalls();
    lumeq_resume();
    EXPECT_EQ(L"Resume()", Noted());
}

TEST_F(Worker, EndsWhenItIsIdleForLong) {
    lumeq_pause();
    Noted();
    EXPECT_EQ(WAIT_OBJECT_0, WaitForEnd(StandIn::LastThread(), Long));
}

TEST_F(Worker, CallsOnTheWorkerDoNotWaitForIt) {
    StandIn::OnNextCall([] {
        EXPECT_EQ(1, lumeq_get_opt_in());
        lumeq_resume();
        lumeq_shutdown(Long);
    });
    const auto start = Clock::now();
    lumeq_pause();
    lumeq_task_is_open(0); // after which what the call itself has queued is queued
    EXPECT_EQ(L"Pause(); GetUserOptInEx(); Resume(); ShutdownEx(60000)", Noted());
    EXPECT_GT(milliseconds(Long / 2), Clock::now() - start);
}

TEST_F(Worker, EightThreadsLoseNothingAndKeepTheirOrder) {
    constexpr int Threads = 8;
    constexpr int Calls = 300;
    std::vector<std::thread> threads;
    for (int number = 0; number < Threads; ++number)
        threads.emplace_back([number] {
            for (int call = 0; call < Calls; ++call) {
                lumeq_flush(number * Calls + call);
                if (call % 50 == 0)
                    lumeq_get_opt_in();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    lumeq_task_is_open(0);
    std::map<int, int> next;
    for (const std::wstring& call : StandIn::TakeCalls()) {
        if (call.compare(0, 8, L"FlushEx(") != 0)
            continue;
        const int value = std::stoi(call.substr(8));
        EXPECT_EQ(next[value / Calls]++, value % Calls);
    }
    EXPECT_EQ(Threads, static_cast<int>(next.size()));
    for (const auto& [thread, count] : next)
        EXPECT_EQ(Calls, count) << thread;
}

TEST_F(Worker, SurvivesEveryFailingAllocationOfTheCaller) {
    for (const EveryCall& call : FullCalls()) {
        SCOPED_TRACE(call.name);
        call.make();
        lumeq_task_is_open(0);
        EndTask();
        lumeq_task_is_open(0);
        StandIn::Reset();
        bool happened = true;
        for (int nth = 1; happened; ++nth) {
            const std::int64_t before = LiveBlocks();
            {
                const FailingAllocation failing(nth);
                call.make();
                happened = failing.Happened();
            }
            EndTask();
            lumeq_task_is_open(0);
            EXPECT_EQ(0, StandIn::OpenTasks()) << nth;
            StandIn::Reset();
            EXPECT_EQ(before, LiveBlocks()) << nth;
            ASSERT_LT(nth, 200);
        }
    }
}

TEST_F(Worker, SurvivesEveryFailingAllocationOfItsOwn) {
    for (const EveryCall& call : FullCalls()) {
        SCOPED_TRACE(call.name);
        bool happened = true;
        for (int nth = 1; happened; ++nth) {
            lumeq_task_is_open(0);
            StandIn::Reset();
            const std::int64_t before = LiveBlocks();
            {
                const FailingAllocation failing(nth, AllocatingThreads::Others);
                call.make();
                lumeq_task_is_open(0);
                happened = failing.Happened();
            }
            EndTask();
            lumeq_task_is_open(0);
            EXPECT_EQ(0, StandIn::OpenTasks()) << nth;
            StandIn::Reset();
            EXPECT_EQ(before, LiveBlocks()) << nth;
            ASSERT_LT(nth, 200);
        }
    }
}

} // namespace Zuvan::Lumeq::Testing
