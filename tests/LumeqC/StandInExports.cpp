#include "LumeqC/StandInExports.h"

#include <Lumeq/LumeqApi.h>

#include <windows.h>

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <objbase.h>
#include <set>
#include <system_error>
#include <type_traits>
#include <utility>

namespace Zuvan::Lumeq {

namespace StandIn {

namespace {

struct State {
    std::vector<std::wstring> calls;
    std::set<API::TaskHandle> tasks;
    bool failsToBegin = false;
    bool refusesToComplete = false;
    bool throws = false;
    bool blocks = false;
    bool isBlocked = false;
    unsigned long thread = 0;
    bool isInApartment = false;
    void (*action)() = nullptr;
};

std::mutex stateLock;
std::condition_variable changed;
State state;

} // namespace

std::vector<std::wstring> TakeCalls() {
    const std::scoped_lock scope(stateLock);
    return std::exchange(state.calls, {});
}

void Reset() {
    const std::scoped_lock scope(stateLock);
    for (const API::TaskHandle task : state.tasks)
        delete reinterpret_cast<char*>(task);
    state = State();
    changed.notify_all();
}

void FailToBegin() {
    const std::scoped_lock scope(stateLock);
    state.failsToBegin = true;
}

void RefuseToComplete() {
    const std::scoped_lock scope(stateLock);
    state.refusesToComplete = true;
}

void ThrowAlways() {
    const std::scoped_lock scope(stateLock);
    state.throws = true;
}

void Block() {
    const std::scoped_lock scope(stateLock);
    state.blocks = true;
}

void Release() {
    const std::scoped_lock scope(stateLock);
    state.blocks = false;
    changed.notify_all();
}

void AwaitBlocked() {
    std::unique_lock scope(stateLock);
    changed.wait(scope, [] { return state.isBlocked; });
}

void OnNextCall(void (*action)()) {
    const std::scoped_lock scope(stateLock);
    state.action = action;
}

bool WasInSingleThreadedApartment() {
    const std::scoped_lock scope(stateLock);
    return state.isInApartment;
}

int OpenTasks() {
    const std::scoped_lock scope(stateLock);
    return static_cast<int>(state.tasks.size());
}

unsigned long LastThread() {
    const std::scoped_lock scope(stateLock);
    return state.thread;
}

} // namespace StandIn

namespace API {

namespace {

using StandIn::state;
using StandIn::stateLock;

std::wstring Show(const wchar_t* text) { return text ? L'"' + std::wstring(text) + L'"' : L"null"; }
std::wstring Show(const std::wstring& text) { return Show(text.c_str()); }
std::wstring Show(const std::string& text) { return Show(std::wstring(text.begin(), text.end())); }
template <class Number>
requires(std::is_enum_v<Number> || std::is_integral_v<Number>) std::wstring Show(Number number) {
    return std::to_wstring(static_cast<long>(number));
}
std::wstring Show(const TaskHandle* task) { return *task ? L"task" : L"no task"; }

template <class Map>
std::wstring ShowMap(const Map& map) {
    std::wstring text;
    for (const auto& [name, value] : std::map(map.begin(), map.end()))
        text += (text.empty() ? L"" : L", ") + name + L": " + Show(value);
    return L"{" + text + L"}";
}
std::wstring Show(const StringDictionary& dictionary) { return ShowMap(dictionary); }
std::wstring Show(const StringDictionary* dictionary) { return dictionary ? ShowMap(*dictionary) : L"null"; }
std::wstring Show(const ScanFeatureMap& features) { return ShowMap(features); }
std::wstring Show(const DiscoveredDeviceList& devices) {
    std::wstring text;
    for (const DiscoveredDevice& device : devices)
        text += (text.empty() ? L"" : L", ") + Show(device.information);
    return L"[" + text + L"]";
}

template <class... Arguments>
void Note(const wchar_t* name, const Arguments&... arguments) {
    std::unique_lock scope(stateLock);
    std::wstring text;
    ((text += (text.empty() ? L"" : L", ") + Show(arguments)), ...);
    state.calls.push_back(name + (L"(" + text) + L")");
    state.thread = GetCurrentThreadId();
    APTTYPE apartment{};
    APTTYPEQUALIFIER qualifier{};
    state.isInApartment = SUCCEEDED(CoGetApartmentType(&apartment, &qualifier)) &&
                          (apartment == APTTYPE_STA || apartment == APTTYPE_MAINSTA);
    state.isBlocked = state.blocks;
    StandIn::changed.notify_all();
    StandIn::changed.wait(scope, [] { return !state.blocks; });
    state.isBlocked = false;
    if (const auto action = std::exchange(state.action, nullptr)) {
        scope.unlock();
        action();
        scope.lock();
    }
    if (state.throws)
        throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
}

TaskHandle Begin() {
    const std::scoped_lock scope(stateLock);
    if (state.failsToBegin)
        return nullptr;
    auto memory = std::make_unique<char>();
    state.tasks.insert(reinterpret_cast<TaskHandle>(memory.get()));
    return reinterpret_cast<TaskHandle>(memory.release());
}

void Complete(TaskHandle* task) {
    const std::scoped_lock scope(stateLock);
    if (*task == nullptr || state.refusesToComplete)
        return;
    state.tasks.erase(*task);
    delete reinterpret_cast<char*>(std::exchange(*task, nullptr));
}

std::int32_t Copy(const std::wstring& text, wchar_t* buffer, std::size_t size) {
    buffer[text.copy(buffer, size - 1)] = L'\0';
    return 0;
}

} // namespace

extern "C" {

void StartupEx(const std::wstring& appName, WhyType whyType, HowType howType, bool trackSystemInfo,
               bool trackPrintQueueInfo) {
    Note(L"StartupEx", appName, whyType, howType, trackSystemInfo, trackPrintQueueInfo);
}

void ShutdownEx(std::int32_t timeoutMsec) { Note(L"ShutdownEx", timeoutMsec); }

void FlushEx(std::int32_t timeoutMsec) { Note(L"FlushEx", timeoutMsec); }

void Pause() { Note(L"Pause"); }

void Resume() { Note(L"Resume"); }

void SetUserOptInEx(bool userHasOptedIn) { Note(L"SetUserOptInEx", userHasOptedIn); }

bool GetUserOptInEx() {
    Note(L"GetUserOptInEx");
    return true;
}

void SetLocalSubfolderPathEx(const std::wstring& subpath) { Note(L"SetLocalSubfolderPathEx", subpath); }

void TrackPrintQueueInfoEx() { Note(L"TrackPrintQueueInfoEx"); }

void TrackSystemInformationEx() { Note(L"TrackSystemInformationEx"); }

void SetGlobalContextEx(const wchar_t* globalContext) { Note(L"SetGlobalContextEx", globalContext); }

void ScreenDisplayed(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                     const wchar_t* mode, const StringDictionary* localContext,
                     const wchar_t* globalContext) {
    Note(L"ScreenDisplayed", flow, screenPath, screenName, mode, localContext, globalContext);
}

void ButtonClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                   const wchar_t* mode, const std::wstring& controlName, const StringDictionary* localContext,
                   const wchar_t* globalContext) {
    Note(L"ButtonClicked", flow, screenPath, screenName, mode, controlName, localContext, globalContext);
}

void TileClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                 const wchar_t* mode, const std::wstring& controlName, const StringDictionary* localContext,
                 const wchar_t* globalContext) {
    Note(L"TileClicked", flow, screenPath, screenName, mode, controlName, localContext, globalContext);
}

void HyperlinkClicked(const wchar_t* flow, const wchar_t* screenPath, const std::wstring& screenName,
                      const wchar_t* mode, const std::wstring& controlName,
                      const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"HyperlinkClicked", flow, screenPath, screenName, mode, controlName, localContext, globalContext);
}

void CheckboxChanged(unsigned char isChecked, const wchar_t* flow, const wchar_t* screenPath,
                     const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                     const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"CheckboxChanged", isChecked, flow, screenPath, screenName, mode, controlName, localContext,
         globalContext);
}

void AdDisplayed(AdType adType, const std::wstring& product, const std::wstring& name,
                 const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
                 const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
                 const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"AdDisplayed", adType, product, name, variant, flow, screenPath, screenName, mode, controlName,
         localContext, globalContext);
}

void AdClicked(AdType adType, const std::wstring& product, const std::wstring& name,
               const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
               const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
               const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"AdClicked", adType, product, name, variant, flow, screenPath, screenName, mode, controlName,
         localContext, globalContext);
}

void AdClosed(AdType adType, const std::wstring& product, const std::wstring& name,
              const std::wstring& variant, const wchar_t* flow, const wchar_t* screenPath,
              const std::wstring& screenName, const wchar_t* mode, const std::wstring& controlName,
              const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"AdClosed", adType, product, name, variant, flow, screenPath, screenName, mode, controlName,
         localContext, globalContext);
}

void UrlLaunchedEx(const std::wstring& url, const StringDictionary* localContext,
                   const wchar_t* globalContext) {
    Note(L"UrlLaunchedEx", url, localContext, globalContext);
}

void FormSubmitted(const std::wstring& orgName, const std::wstring& codeName, const std::wstring& formName,
                   const std::wstring& version, const StringDictionary& details,
                   const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"FormSubmitted", orgName, codeName, formName, version, details, localContext, globalContext);
}

void ReportGenerated(const std::wstring& orgName, const std::wstring& codeName,
                     const std::wstring& reportName, const std::wstring& version,
                     const StringDictionary& details, const StringDictionary* localContext,
                     const wchar_t* globalContext) {
    Note(L"ReportGenerated", orgName, codeName, reportName, version, details, localContext, globalContext);
}

TaskHandle ScanAcquireInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"ScanAcquireInitiated", localContext, globalContext);
    return Begin();
}

void ScanAcquireCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                          Scan::ShortcutType shortcutType, Scan::ShortcutVarianceType shortcutVarianceType,
                          Scan::ItemType itemType, Scan::ResolutionType resolutionType,
                          Scan::ColorModeType colorModeType, Scan::PageSizeType pageSizeType,
                          Scan::SourceType sourceType, Scan::MimeType mimeType,
                          const ScanFeatureMap& features, std::int32_t pages) {
    Note(L"ScanAcquireCompleted", taskHandle, taskResult, shortcutType, shortcutVarianceType, itemType,
         resolutionType, colorModeType, pageSizeType, sourceType, mimeType, features, pages);
    Complete(taskHandle);
}

TaskHandle PrintBasicInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"PrintBasicInitiated", localContext, globalContext);
    return Begin();
}

void PrintBasicCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                         Print::SubsystemType subsystemType, Print::ItemType itemType,
                         Print::MimeType mimeType, Print::PageSizeType pageSizeType,
                         const std::wstring& paperSize, std::int32_t pages) {
    Note(L"PrintBasicCompleted", taskHandle, taskResult, subsystemType, itemType, mimeType, pageSizeType,
         paperSize, pages);
    Complete(taskHandle);
}

TaskHandle FileSendToInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"FileSendToInitiated", localContext, globalContext);
    return Begin();
}

void FileSendToCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                         File::ShortcutType shortcutType, File::ShortcutVarianceType shortcutVarianceType,
                         File::MimeType mimeType, File::DestinationType destinationType, std::int32_t pages) {
    Note(L"FileSendToCompleted", taskHandle, taskResult, shortcutType, shortcutVarianceType, mimeType,
         destinationType, pages);
    Complete(taskHandle);
}

TaskHandle DeviceConnectInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"DeviceConnectInitiated", localContext, globalContext);
    return Begin();
}

void DeviceConnectCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                            ConnectionScenarioType scenarioType, ConnectionMethodType methodType) {
    Note(L"DeviceConnectCompleted", taskHandle, taskResult, scenarioType, methodType);
    Complete(taskHandle);
}

TaskHandle DeviceConfigInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"DeviceConfigInitiated", localContext, globalContext);
    return Begin();
}

void DeviceConfigCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                           ConfigurationSettingType settingType) {
    Note(L"DeviceConfigCompleted", taskHandle, taskResult, settingType);
    Complete(taskHandle);
}

TaskHandle SoftwareInstallInitiated(const StringDictionary* localContext, const wchar_t* globalContext) {
    Note(L"SoftwareInstallInitiated", localContext, globalContext);
    return Begin();
}

void SoftwareInstallCompleted(TaskHandle* taskHandle, const std::wstring& taskResult,
                              InstallType installerType, const std::wstring& name,
                              const std::wstring& version) {
    Note(L"SoftwareInstallCompleted", taskHandle, taskResult, installerType, name, version);
    Complete(taskHandle);
}

void TrackDiscoveredPrintersEx(const DiscoveredDeviceList& discoveredDeviceList) {
    Note(L"TrackDiscoveredPrintersEx", discoveredDeviceList);
}

std::int32_t GetBiid_Internal(wchar_t* buffer, std::size_t size, const char* deviceUuid) {
    const std::string uuid(deviceUuid);
    Note(L"GetBiid", uuid);
    return Copy(uuid.empty() ? L"" : L"id of " + std::wstring(uuid.begin(), uuid.end()), buffer, size);
}

std::int32_t ToString_Internal(wchar_t* buffer, std::size_t size, ConnectionMethodType enumValue) {
    Note(L"ToString", enumValue);
    return Copy(L"method " + std::to_wstring(static_cast<long>(enumValue)), buffer, size);
}

} // extern "C"
} // namespace API
} // namespace Zuvan::Lumeq
