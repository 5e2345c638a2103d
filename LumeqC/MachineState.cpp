#include "LumeqC/MachineState.h"

#include "Common/Paths.h"
#include "Common/SystemHandles.h"
#include "Common/TrackingSwitch.h"
#include "LumeqApi/Patterns.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "LumeqLib/Core/Utils/XmlDocument.h"
#include "LumeqShim/Basic/BasicOptIn.h"
#include "LumeqShim/CompanionLibrary.h"
#include "LumeqShim/PauseState.h"

#include <Lumeq/LumeqRecords.h>

#include <objbase.h>

#include <optional>

namespace Zuvan::Lumeq {

namespace {

namespace Utils = Core::Utils;

/// No value for a key that is missing or holds no flag.
std::optional<bool> FlagOf(IXMLDOMElement& root, const wchar_t* key) {
    const Utils::XmlNodePointer node = Utils::FindNode(root, key);
    const std::wstring value = node ? Utils::NodeText(*node.Get()) : std::wstring();
    return LumeqShim::IsFlag(value) ? std::optional(LumeqShim::IsTrueFlag(value)) : std::nullopt;
}

/// In a pause, the choice is the one that its end restores.
void ReadChoice(IXMLDOMElement& root, MachineState& state) {
    const std::optional<bool> remembered = FlagOf(root, LumeqShim::OptinBeforePauseKey);
    state.isPaused = remembered.has_value();
    const std::optional<bool> choice = remembered ? remembered : FlagOf(root, LumeqShim::UserOptInKey);
    state.choice = !choice ? LUMEQ_CHOICE_UNSET : *choice ? LUMEQ_CHOICE_YES : LUMEQ_CHOICE_NO;
}

void ReadSettings(const std::wstring& path, MachineState& state) {
    if (!Common::Exists(path)) {
        state.choice = LUMEQ_CHOICE_UNSET;
        return;
    }
    const Utils::XmlDocumentPointer document = Utils::CreateXmlDocument();
    if (!Utils::LoadXml(*document.Get(), path))
        return;
    if (const Utils::XmlElementPointer root = Utils::RootElement(*document.Get()))
        ReadChoice(*root.Get(), state);
}

struct Reading {
    const wchar_t* subfolder;
    MachineState& state;
};

/// On a thread of its own, whose apartment is nobody else's.
DWORD WINAPI ReadSettingsOf(void* argument) {
    const Reading& reading = *static_cast<Reading*>(argument);
    const HRESULT apartment = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    try {
        ReadSettings(Utils::SharedLocalPathOf(reading.subfolder), reading.state);
    } catch (...) {
        // The choice stays unknown.
    }
    if (SUCCEEDED(apartment))
        CoUninitialize();
    return 0;
}

void WaitForSettings(Reading reading) noexcept {
    const Common::UniqueKernelObject thread(CreateThread(nullptr, 0, ReadSettingsOf, &reading, 0, nullptr));
    if (thread)
        WaitForSingleObject(thread.Get(), INFINITE);
}

bool HasRuntimeLibrary() {
    return GetModuleHandleW(L"mscoree.dll") ||
           SearchPathW(nullptr, L"mscoree.dll", nullptr, 0, nullptr, nullptr) != 0;
}

std::int32_t Road() {
    if (GetModuleHandleW(LumeqShim::CompanionFileName))
        return LUMEQ_ROAD_MANAGED;
    // The companion library may also be beside Lumeq.dll, which has the folder of this module.
    const std::wstring companion =
        LumeqShim::CompanionPathFor(Common::ModulePath(nullptr), Common::OwnModulePath());
    return HasRuntimeLibrary() && Common::IsFile(companion) ? LUMEQ_ROAD_UNKNOWN : LUMEQ_ROAD_BASIC;
}

} // namespace

MachineState ReadMachineState(const wchar_t* subfolder) noexcept {
    MachineState state;
    try {
        state.isTrackingDisabled = Common::ReadTrackingDisabled();
        state.road = Road();
        WaitForSettings({subfolder, state});
    } catch (...) {
        // What is not known by now stays unknown.
    }
    return state;
}

bool IsSubfolder(const wchar_t* subpath) noexcept { return API::subpathPattern.Matches(subpath); }

} // namespace Zuvan::Lumeq
