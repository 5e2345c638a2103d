#include "LumeqC/EveryCall.h"
#include "LumeqC/StandInExports.h"
#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>

namespace Zuvan::Lumeq::Testing {

namespace {

class DirectCalls : public testing::Test {
protected:
    DirectCalls() { StandIn::Reset(); }
    ~DirectCalls() override { StandIn::Reset(); }

    static std::wstring Noted() {
        std::wstring text;
        for (const std::wstring& call : StandIn::TakeCalls())
            text += (text.empty() ? L"" : L"; ") + call;
        return text;
    }
};

/// What no read may follow.
const auto Poison = reinterpret_cast<const wchar_t*>(std::uintptr_t{0x10});

/// A struct of the caller's whose first `size` bytes are those of `full` and whose rest is poisoned.
template <class Struct>
Struct OfSize(Struct full, std::size_t size) {
    Struct cut;
    static_assert(sizeof cut % sizeof Poison == 0);
    for (std::size_t at = 0; at < sizeof cut; at += sizeof Poison)
        std::memcpy(reinterpret_cast<char*>(&cut) + at, &Poison, sizeof Poison);
    full.size = size;
    std::memcpy(&cut, &full, std::max(sizeof size, std::min(size, sizeof cut)));
    return cut;
}

/// What the library must make of such a struct: whole pieces of eight bytes, and zeros.
template <class Struct>
Struct Expected(const Struct& full, std::size_t size) {
    Struct known{};
    std::memcpy(&known, &full, std::min(size, sizeof known) / 8 * 8);
    known.size = sizeof known;
    return known;
}

/// Every size up to more than today's: `call` with a struct of that size notes the same as with a struct of
/// today's size that lacks what is beyond.
template <class Struct, class Call>
void ExpectEverySize(const Struct& full, Call call) {
    for (std::size_t size = sizeof(std::size_t); size <= sizeof full + 24; ++size) {
        SCOPED_TRACE(size);
        struct {
            Struct its;
            const void* more[3];
        } cut{OfSize(full, size), {Poison, Poison, Poison}};
        const Struct known = Expected(full, size);
        call(&known);
        const auto expected = StandIn::TakeCalls();
        call(&cut.its);
        EXPECT_EQ(expected, StandIn::TakeCalls());
    }
}

} // namespace

TEST_F(DirectCalls, MakeTheExportWithAllArguments) {
    for (const EveryCall& call : FullCalls()) {
        SCOPED_TRACE(call.name);
        call.make();
        EXPECT_EQ(call.noted, Noted());
    }
    EXPECT_EQ(0, StandIn::OpenTasks());
    EXPECT_EQ(0u, lumeq_dropped_count());
}

TEST_F(DirectCalls, PassEmptyTextsForNull) {
    for (const EveryCall& call : NullCalls()) {
        SCOPED_TRACE(call.name);
        call.make();
        EXPECT_EQ(call.noted, Noted());
    }
}

TEST_F(DirectCalls, AreMadeOnTheThreadOfTheCaller) {
    unsigned long own = 0;
    std::thread([&own] {
        lumeq_pause();
        own = StandIn::LastThread();
    }).join();
    lumeq_pause();
    EXPECT_NE(own, StandIn::LastThread());
}

TEST_F(DirectCalls, ReadStructsOfEverySize) {
    ExpectEverySize(FullScreen(), [](const lumeq_screen* screen) { lumeq_button_clicked(screen, L"ok"); });
    ExpectEverySize(FullAd(), [](const lumeq_ad* ad) {
        const lumeq_screen screen = FullScreen();
        lumeq_ad_clicked(&screen, L"ok", ad);
    });
    ExpectEverySize(FullForm(), [](const lumeq_form* form) { lumeq_form_submitted(form); });
    constexpr lumeq_feature features[] = {{L"deskew", 1, 0}};
    ExpectEverySize(lumeq_scan_acquire{0, features, 1, 1, 2, 1, 4, 5, 6, 3, 8, 9, 0},
                    [](const lumeq_scan_acquire* its) { lumeq_scan_acquire_complete(0, L"success", its); });
    ExpectEverySize(lumeq_print_basic{0, L"a4", 2, 3, 1, 4, 5, 0},
                    [](const lumeq_print_basic* its) { lumeq_print_basic_complete(0, L"success", its); });
    ExpectEverySize(lumeq_file_send_to{0, 1, 2, 3, 4, 5, 0},
                    [](const lumeq_file_send_to* its) { lumeq_file_send_to_complete(0, L"success", its); });
    ExpectEverySize(lumeq_device_connect{0, 1, 2}, [](const lumeq_device_connect* its) {
        lumeq_device_connect_complete(0, L"success", its);
    });
    ExpectEverySize(lumeq_device_config{0, 2, 0},
                    [](const lumeq_device_config* its) { lumeq_device_config_complete(0, L"success", its); });
    ExpectEverySize(
        lumeq_software_install{0, L"scan.msi", L"2.14.0", 2, 0},
        [](const lumeq_software_install* its) { lumeq_software_install_complete(0, L"success", its); });
}

TEST_F(DirectCalls, RefuseStructsWithoutASize) {
    const lumeq_screen screen = FullScreen();
    for (std::size_t size = 0; size < sizeof size; ++size) {
        SCOPED_TRACE(size);
        const lumeq_screen nowhere = OfSize(FullScreen(), size);
        lumeq_button_clicked(&nowhere, L"ok");
        EXPECT_EQ(L"ButtonClicked(null, null, \"\", null, \"ok\", null, null)", Noted());
        const lumeq_ad no_ad = OfSize(FullAd(), size);
        lumeq_ad_closed(&screen, L"ok", &no_ad);
        EXPECT_EQ(L"AdClosed(0, \"\", \"\", \"\", \"scan\", \"a/b\", \"Preview\", \"photo\", \"\", "
                  L"{copies: \"2\", paper: \"a4\"}, \"Model 8100\")",
                  Noted());
        const lumeq_device_connect no_details = OfSize(lumeq_device_connect{0, 1, 2}, size);
        lumeq_device_connect_complete(0, L"success", &no_details);
        EXPECT_EQ(L"DeviceConnectCompleted(no task, \"\", 0, 0)", Noted());
    }
}

TEST_F(DirectCalls, RefuseMalformedDictionaries) {
    constexpr lumeq_field nameless[] = {{L"a", L"b"}, {nullptr, L"c"}};
    constexpr lumeq_field valueless[] = {{L"a", nullptr}};
    for (const lumeq_dictionary& dictionary :
         {lumeq_dictionary{nullptr, 1}, lumeq_dictionary{nameless, 2}, lumeq_dictionary{valueless, 1}}) {
        lumeq_url_launched(L"http://a", &dictionary, L"Model 400");
        EXPECT_EQ(L"UrlLaunchedEx(\"http://a\", null, \"\")", Noted());
        lumeq_scan_acquire_begin(&dictionary, nullptr);
        EXPECT_EQ(L"ScanAcquireInitiated(null, \"\")", Noted());
        lumeq_form form = FullForm();
        form.details = dictionary;
        lumeq_report_generated(&form);
        EXPECT_EQ(L"ReportGenerated(\"\", \"scan\", \"survey\", \"1.0\", {}, "
                  L"{copies: \"2\", paper: \"a4\"}, \"Model 8100\")",
                  Noted());
        const lumeq_dictionary devices[] = {dictionary, Local};
        lumeq_track_discovered_printers(devices, 2);
        EXPECT_EQ(L"TrackDiscoveredPrintersEx([{dev_biid: \"\"}, {copies: \"2\", paper: \"a4\"}])", Noted());
    }
}

TEST_F(DirectCalls, RefuseMalformedFeatures) {
    constexpr lumeq_feature nameless[] = {{nullptr, 1, 0}};
    for (const lumeq_feature* features : {static_cast<const lumeq_feature*>(nullptr), &nameless[0]}) {
        const lumeq_scan_acquire details = {sizeof details, features, 1, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0};
        lumeq_scan_acquire_complete(0, L"success", &details);
        EXPECT_EQ(L"ScanAcquireCompleted(no task, \"\", 0, 0, 0, 0, 0, 0, 0, 0, {}, 3)", Noted());
    }
}

TEST_F(DirectCalls, TakeTheLastOfTwoEqualNames) {
    constexpr lumeq_field fields[] = {{L"a", L"first"}, {L"a", L"last"}};
    const lumeq_dictionary twice = {fields, 2};
    lumeq_url_launched(nullptr, &twice, nullptr);
    EXPECT_EQ(L"UrlLaunchedEx(\"\", {a: \"last\"}, null)", Noted());
}

TEST_F(DirectCalls, CountAnyFlagAboveAByteAsOne) {
    for (const int32_t flag : {256, -1, 1 << 30}) {
        lumeq_checkbox_changed(nullptr, nullptr, flag);
        EXPECT_EQ(L"CheckboxChanged(1, null, null, \"\", null, \"\", null, null)", Noted());
    }
}

TEST_F(DirectCalls, ReturnZeroAndCountWhenTheLockFails) {
    StandIn::ThrowAlways();
    wchar_t buffer[8] = L"before";
    const std::uint64_t before = lumeq_dropped_count();
    EXPECT_EQ(0, lumeq_get_opt_in());
    EXPECT_EQ(0u, lumeq_scan_acquire_begin(nullptr, nullptr));
    EXPECT_EQ(0u, lumeq_get_biid("1c85", buffer, 8));
    EXPECT_STREQ(L"", buffer);
    EXPECT_EQ(0u, lumeq_connection_method_text(1, nullptr, 0));
    EXPECT_EQ(before + 4, lumeq_dropped_count());
    for (const EveryCall& call : FullCalls())
        call.make();
    EXPECT_LT(before + 4, lumeq_dropped_count());
}

TEST_F(DirectCalls, SurviveEveryFailingAllocation) {
    for (const EveryCall& call : FullCalls()) {
        SCOPED_TRACE(call.name);
        call.make();
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
            EXPECT_EQ(0, StandIn::OpenTasks()) << nth;
            StandIn::Reset();
            EXPECT_EQ(before, LiveBlocks()) << nth;
            ASSERT_LT(nth, 200);
        }
    }
}

TEST_F(DirectCalls, WriteTextsIntoBuffers) {
    wchar_t buffer[16] = L"before";
    EXPECT_EQ(11u, lumeq_get_biid("1c85", buffer, 16));
    EXPECT_STREQ(L"id of 1c85", buffer);
    EXPECT_EQ(11u, lumeq_get_biid("1c86", buffer, 11));
    EXPECT_STREQ(L"id of 1c86", buffer);
    EXPECT_EQ(11u, lumeq_get_biid("1c87", buffer, 10));
    EXPECT_STREQ(L"", buffer);
    EXPECT_EQ(L'd', buffer[1]) << "nothing is written beyond the terminator";
    EXPECT_EQ(11u, lumeq_get_biid("1c85", nullptr, 0));
    EXPECT_EQ(11u, lumeq_get_biid("1c85", nullptr, 16));
    std::wcscpy(buffer, L"before");
    EXPECT_EQ(11u, lumeq_get_biid("1c85", buffer, 0));
    EXPECT_STREQ(L"before", buffer);
    EXPECT_EQ(0u, lumeq_get_biid("", buffer, 16));
    EXPECT_STREQ(L"", buffer);
    EXPECT_EQ(9u, lumeq_connection_method_text(LUMEQ_CONNECTION_METHOD_AUTO_WIRELESS_CONNECT, buffer, 16));
    EXPECT_STREQ(L"method 2", buffer);
}

TEST_F(DirectCalls, ReturnTheOptIn) { EXPECT_EQ(1, lumeq_get_opt_in()); }

TEST_F(DirectCalls, TellVersionAndAbi) {
    EXPECT_EQ(10000u, lumeq_version());
    EXPECT_EQ(1u, lumeq_abi());
}

TEST_F(DirectCalls, TasksEndOnce) {
    const lumeq_task task = lumeq_device_config_begin(nullptr, nullptr);
    EXPECT_TRUE(lumeq_task_is_open(task));
    const lumeq_device_config details = LUMEQ_DEVICE_CONFIG_INIT;
    lumeq_device_config_complete(task, L"success", &details);
    EXPECT_FALSE(lumeq_task_is_open(task));
    lumeq_device_config_complete(task, L"success", &details);
    EXPECT_EQ(L"DeviceConfigInitiated(null, null); DeviceConfigCompleted(task, \"success\", 0); "
              L"DeviceConfigCompleted(no task, \"success\", 0)",
              Noted());
    EXPECT_LT(task, lumeq_device_config_begin(nullptr, nullptr)) << "a number is never used again";
}

TEST_F(DirectCalls, RefusedTasksStayOpen) {
    const lumeq_task task = lumeq_device_config_begin(nullptr, nullptr);
    const lumeq_device_config details = LUMEQ_DEVICE_CONFIG_INIT;
    StandIn::RefuseToComplete();
    lumeq_device_config_complete(task, L"", &details);
    EXPECT_TRUE(lumeq_task_is_open(task));
    EXPECT_EQ(1, StandIn::OpenTasks());
}

TEST_F(DirectCalls, TasksWhoseLockFailedStayOpen) {
    const lumeq_task task = lumeq_device_config_begin(nullptr, nullptr);
    const lumeq_device_config details = LUMEQ_DEVICE_CONFIG_INIT;
    StandIn::ThrowAlways();
    lumeq_device_config_complete(task, L"success", &details);
    EXPECT_TRUE(lumeq_task_is_open(task));
}

TEST_F(DirectCalls, TasksThatCannotBeginAreZeroAndHoldNothing) {
    StandIn::FailToBegin();
    const std::int64_t before = LiveBlocks();
    EXPECT_EQ(0u, lumeq_print_basic_begin(nullptr, nullptr));
    StandIn::TakeCalls();
    EXPECT_EQ(before, LiveBlocks());
}

TEST_F(DirectCalls, AbandonedTasksAreUnknown) {
    for (const auto begin :
         {lumeq_scan_acquire_begin, lumeq_print_basic_begin, lumeq_file_send_to_begin,
          lumeq_device_connect_begin, lumeq_device_config_begin, lumeq_software_install_begin}) {
        const lumeq_task task = begin(nullptr, nullptr);
        lumeq_task_abandon(task);
        EXPECT_FALSE(lumeq_task_is_open(task));
    }
    EXPECT_EQ(0, StandIn::OpenTasks());
    EXPECT_EQ(L"ScanAcquireInitiated(null, null); "
              L"ScanAcquireCompleted(task, \"unknown\", 0, 0, 0, 0, 0, 0, 0, 0, {}, 0); "
              L"PrintBasicInitiated(null, null); PrintBasicCompleted(task, \"unknown\", 0, 0, 0, 0, "
              L"\"unknown\", 0); "
              L"FileSendToInitiated(null, null); FileSendToCompleted(task, \"unknown\", 0, 0, 0, 0, 0); "
              L"DeviceConnectInitiated(null, null); DeviceConnectCompleted(task, \"unknown\", 0, 0); "
              L"DeviceConfigInitiated(null, null); DeviceConfigCompleted(task, \"unknown\", 0); "
              L"SoftwareInstallInitiated(null, null); "
              L"SoftwareInstallCompleted(task, \"unknown\", 0, \"unknown\", \"0.0.0\")",
              Noted());
}

TEST_F(DirectCalls, AbandoningWhatIsNotOpenMakesNoCall) {
    lumeq_task_abandon(0);
    lumeq_task_abandon(~lumeq_task{0});
    EXPECT_EQ(L"", Noted());
}

TEST_F(DirectCalls, TwoThreadsEndATaskOnce) {
    const lumeq_device_config details = LUMEQ_DEVICE_CONFIG_INIT;
    const lumeq_task task = lumeq_device_config_begin(nullptr, nullptr);
    StandIn::TakeCalls();
    StandIn::Block();
    std::thread first([&] { lumeq_device_config_complete(task, L"success", &details); });
    StandIn::AwaitBlocked();
    EXPECT_FALSE(lumeq_task_is_open(task)) << "the first thread has it";
    std::thread second([&] { lumeq_device_config_complete(task, L"success", &details); });
    StandIn::Release();
    first.join();
    second.join();
    EXPECT_EQ(L"DeviceConfigCompleted(task, \"success\", 0); DeviceConfigCompleted(no task, \"success\", 0)",
              Noted());
}

} // namespace Zuvan::Lumeq::Testing
