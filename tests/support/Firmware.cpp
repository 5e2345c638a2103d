#include "support/Firmware.h"

#include "Common/Format.h"

#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t HeaderSize = 8;

/// All tables after their header.
Bytes FirmwareTables() {
    constexpr DWORD Smbios = 0x52534D42; // "RSMB"
    Bytes tables(GetSystemFirmwareTable(Smbios, 0, nullptr, 0));
    GetSystemFirmwareTable(Smbios, 0, tables.data(), static_cast<DWORD>(tables.size()));
    if (tables.size() < HeaderSize)
        throw std::runtime_error("no firmware tables");
    return tables;
}

/// Before version 2.6 of the tables, a UUID's first three fields are in the order of their text.
bool HasLittleEndianUuids(const Bytes& tables) {
    const int version = tables[1] * 100 + tables[2];
    return version >= 206;
}

struct Structure {
    Bytes fixedPart;
    std::vector<std::string> texts; ///< Numbered from 1.
};

/// Advances to the next one.
Structure ReadStructure(const Bytes& tables, std::size_t& at) {
    const auto begin = tables.begin() + static_cast<std::ptrdiff_t>(at);
    Structure structure{{begin, begin + tables[at + 1]}, {}};
    at += tables[at + 1];
    // The texts follow. One more zero byte follows the last of them; two if there are none.
    while (at < tables.size() && tables[at] != 0) {
        const auto text = tables.begin() + static_cast<std::ptrdiff_t>(at);
        structure.texts.emplace_back(text, std::find(text, tables.end(), 0));
        at += structure.texts.back().size() + 1;
    }
    at += structure.texts.empty() ? 2 : 1;
    return structure;
}

/// The first structure of the type.
Structure FindStructure(const Bytes& tables, std::uint8_t type) {
    for (std::size_t at = HeaderSize; at + 4 <= tables.size();)
        if (Structure structure = ReadStructure(tables, at); structure.fixedPart[0] == type)
            return structure;
    throw std::runtime_error("no firmware table of type " + std::to_string(type));
}

constexpr std::uint8_t System = 1;
constexpr std::uint8_t Enclosure = 3;

/// Empty if the firmware has none. `place` is the offset of the text's number.
std::wstring SystemText(std::size_t place) {
    const Structure system = FindStructure(FirmwareTables(), System);
    const std::uint8_t number = system.fixedPart.at(place);
    if (number == 0)
        return {};
    const std::string& text = system.texts.at(number - 1);
    return {text.begin(), text.end()};
}

} // namespace

std::wstring FirmwareUuid() {
    const Bytes tables = FirmwareTables();
    Bytes system = FindStructure(tables, System).fixedPart;
    if (system.size() < 24)
        throw std::runtime_error("the firmware has no UUID");
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

std::wstring FirmwareMaker() { return SystemText(4); }
std::wstring FirmwareModel() { return SystemText(5); }
std::wstring FirmwareSerialNumber() { return SystemText(7); }

std::uint16_t FirmwareChassisType() {
    constexpr std::uint8_t LockBit = 0x80;
    return static_cast<std::uint16_t>(FindStructure(FirmwareTables(), Enclosure).fixedPart.at(5) & ~LockBit);
}

} // namespace Zuvan::Lumeq::Testing
