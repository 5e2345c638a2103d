#include "lumeq/doctor/ZipFile.h"

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

constexpr std::uint16_t Version = 20;
constexpr std::uint16_t NamesAreUtf8 = 0x0800;
constexpr std::uint16_t Stored = 0;
/// The first day that the format can express, because the time says nothing.
constexpr std::uint16_t NoTime = 0, FirstDay = 0x0021;

/// Little-endian, whatever the sizes.
template <class... Numbers>
std::string Bytes(Numbers... numbers) {
    std::string bytes;
    const auto append = [&bytes](auto number) {
        for (std::size_t i = 0; i < sizeof number; ++i)
            bytes += static_cast<char>(number >> 8 * i & 0xFF);
    };
    (append(numbers), ...);
    return bytes;
}

} // namespace

std::uint32_t Crc32(std::string_view bytes) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320U : 0U);
    }
    return ~sum;
}

void ZipFile::Add(std::string_view name, std::string_view content) {
    const auto size = static_cast<std::uint32_t>(content.size());
    // Both headers of a member share this part.
    const std::string common = Bytes(Version, NamesAreUtf8, Stored, NoTime, FirstDay, Crc32(content), size,
                                     size, static_cast<std::uint16_t>(name.size()), std::uint16_t{0});
    const auto offset = static_cast<std::uint32_t>(_members.size());
    _members += "PK\3\4" + common + std::string(name) + std::string(content);
    _directory += "PK\1\2" + Bytes(Version) + common +
                  Bytes(std::uint16_t{0}, std::uint16_t{0}, std::uint16_t{0}, std::uint32_t{0}, offset) +
                  std::string(name);
    ++_count;
}

std::string ZipFile::Finished() const {
    const std::uint16_t zero = 0;
    return _members + _directory + "PK\5\6" +
           Bytes(zero, zero, _count, _count, static_cast<std::uint32_t>(_directory.size()),
                 static_cast<std::uint32_t>(_members.size()), zero);
}

} // namespace Zuvan::Lumeq::Tool::Doctor
