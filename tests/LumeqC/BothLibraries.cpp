// lumeq-both [worker]: a host that calls the exports of Lumeq.dll and the functions of LumeqC.dll, in turn
// and at once. Exits with 0 if each sees what the other did.
#include <Lumeq/LumeqApi.h>
#include <Lumeq/lumeq.hpp>

#include <thread>

namespace {

namespace API = Zuvan::Lumeq::API;

constexpr int Events = 100;

void ShowByExport(const std::wstring& name) {
    API::ScreenDisplayed(nullptr, nullptr, name, nullptr, nullptr, nullptr);
}

bool ShareTheOptIn() {
    API::SetUserOptInEx(true);
    const bool seen = lumeq::opt_in();
    lumeq::set_opt_in(false);
    const bool seenBefore = lumeq::opt_in();
    return seen && !seenBefore && !API::GetUserOptInEx();
}

/// The task that each begins is its own.
bool CompleteTasksOfEach() {
    API::TaskHandle task = API::DeviceConfigInitiated(nullptr, nullptr);
    const auto other = lumeq::configuration_task::begin();
    API::DeviceConfigCompleted(&task, L"success", API::ConfigurationSettingType::webservices_registration);
    const bool wasOpen = other.is_open();
    other.complete(L"error");
    return task == nullptr && wasOpen && !other.is_open();
}

void ShowAtOnce() {
    std::thread exports([] {
        for (int i = 0; i < Events; ++i)
            ShowByExport(L"cpp" + std::to_wstring(i));
    });
    for (int i = 0; i < Events; ++i)
        lumeq::screen(L"c" + std::to_wstring(i)).shown();
    exports.join();
}

} // namespace

int main(int count, char**) {
    if (count > 1 && !lumeq::use_worker_thread())
        return 2;
    API::StartupEx(L"Scan Station", API::WhyType::start_app, API::HowType::smv_link, false, false);
    const bool optInIsShared = ShareTheOptIn();
    API::SetGlobalContextEx(L"Model 8100");
    ShowByExport(L"first");
    const bool tasksEnd = CompleteTasksOfEach();
    ShowAtOnce();
    API::ShutdownEx(1000);
    lumeq_shutdown(60'000);
    return optInIsShared && tasksEnd ? 0 : 1;
}
