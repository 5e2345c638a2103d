#include "support/Firmware.h"

#include "Common/Format.h"

#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace Zuvan::Lumeq::Testing {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t HeaderSize = 8;

/// All tables behind their header.
Bytes FirmwareTables() {
    constexpr DWORD Smbios = 0x52534D42; // "RSMB"
    Bytes tables(GetSystemFirmwareTable(Smbios, 0, nullptr, 0));
    GetSystemFirmwareTable(Smbios, 0, tables.data(), static_cast<DWORD>(tables.size()));
    if (tables.size() < HeaderSize)
        throw std::runtime_error("no firmware tables");
    return tables;
}

/// Before version 2.6 of the tables an UUID's first three fields are in the order of their text.
bool HasLittleEndianUuids(const Bytes& tables) {
    const int version = tables[1] * 100 + tables[2];
    return version >= 206;
}

/// The fixed part of the first structure of the type.
Bytes Structure(const Bytes& tables, std::uint8_t type) {
    std::size_t at = HeaderSize;
    while (at + 4 <= tables.size()) {
        const std::size_t length = tables[at + 1];
        if (tables[at] == type)
            return {tables.begin() + static_cast<std::ptrdiff_t>(at),
                    tables.begin() + static_cast<std::ptrdiff_t>(at + length)};
        // Texts follow, and behind the last of them stands one more zero byte.
        at += length;
        while (at + 1 < tables.size() && (tables[at] != 0 || tables[at + 1] != 0))
            ++at;
        at += 2;
    }
    throw std::runtime_error("no firmware table of type " + std::to_string(type));
}

} // namespace

std::wstring FirmwareUuid() {
    const Bytes tables = FirmwareTables();
    Bytes system = Structure(tables, 1);
    if (system.size() < 24)
        throw std::runtime_error("the firmware tells no UUID");
    const auto uuid = system.begin() + 8;
    if (HasLittleEndianUuids(tables)) {
        std::reverse(uuid, uuid + 4);
        std::reverse(uuid + 4, uuid + 6);
        std::reverse(uuid + 6, uuid + 8);
    }
    std::wstring text;
    for (int i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text += L'-';
        text += Common::FormatBounded(3, L"%02X", uuid[i]).text;
    }
    return text;
}

std::uint16_t FirmwareChassisType() {
    constexpr std::uint8_t LockBit = 0x80;
    return static_cast<std::uint16_t>(Structure(FirmwareTables(), 3).at(5) & ~LockBit);
}

} // namespace Zuvan::Lumeq::Testing
