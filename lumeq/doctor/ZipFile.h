// A ZIP file of uncompressed members. Settings and the ends of logs are small, so compressing them is not
// worth a library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Zuvan::Lumeq::Tool::Doctor {

class ZipFile {
public:
    /// The name is UTF-8 and uses slashes. Sizes must stay below 4 GB in total.
    void Add(std::string_view name, std::string_view content);
    /// The whole file.
    std::string Finished() const;

private:
    std::string _members;
    std::string _directory;
    std::uint16_t _count = 0;
};

/// The checksum of ZIP files.
std::uint32_t Crc32(std::string_view bytes);

} // namespace Zuvan::Lumeq::Tool::Doctor
