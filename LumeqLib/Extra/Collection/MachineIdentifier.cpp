#include "LumeqLib/Extra/Collection/MachineIdentifier.h"

#include "Common/Text.h"
#include "LumeqLib/Extra/Collection/Utils/SystemFacts.h"
#include "LumeqLib/Extra/Collection/Utils/SystemTexts.h"

#include <optional>

namespace Zuvan::Lumeq::Extra::Collection {

namespace {

/// In capitals, unlike the "unknown" of every other field, because receivers expect it so.
std::wstring RegisteredUuid(const Utils::SystemSources& sources) {
    return Common::ToUpper(sources.RegistryString(L"Software\\Microsoft\\Cryptography", L"MachineGuid"));
}

std::wstring FirmwareUuid(const Utils::SystemSources& sources) {
    const std::optional<std::wstring> uuid =
        Utils::TextIn(sources.WmiProperty(L"Win32_ComputerSystemProduct", L"UUID"));
    return uuid ? Common::ToUpper(*uuid) : Utils::UnknownText;
}

} // namespace

std::wstring GetMachineUuid(const Utils::SystemSources& sources) {
    if (Utils::IsWindowsXp(sources.Version()))
        return RegisteredUuid(sources);
    const std::wstring uuid = FirmwareUuid(sources);
    return Utils::IsMissingUuid(uuid) ? RegisteredUuid(sources) : uuid;
}

} // namespace Zuvan::Lumeq::Extra::Collection
