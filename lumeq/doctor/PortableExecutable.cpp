#include "lumeq/doctor/PortableExecutable.h"

#include <windows.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

/// The bytes of a file that may be damaged: every access is checked and throws std::out_of_range.
class Image {
public:
    explicit Image(std::string bytes) : _bytes(std::move(bytes)) {
        const auto dos = At<IMAGE_DOS_HEADER>(0);
        _header = static_cast<std::size_t>(dos.e_lfanew);
        if (dos.e_magic != IMAGE_DOS_SIGNATURE || At<DWORD>(_header) != IMAGE_NT_SIGNATURE)
            throw std::out_of_range("no executable file");
        _file = At<IMAGE_FILE_HEADER>(_header + sizeof(DWORD));
    }

    WORD Machine() const { return _file.Machine; }

    IMAGE_DATA_DIRECTORY Directory(std::size_t index) const {
        const std::size_t optional = _header + sizeof(DWORD) + sizeof(IMAGE_FILE_HEADER);
        const bool isPlus = At<WORD>(optional) == IMAGE_NT_OPTIONAL_HDR64_MAGIC;
        const std::size_t directories = isPlus ? offsetof(IMAGE_OPTIONAL_HEADER64, DataDirectory)
                                               : offsetof(IMAGE_OPTIONAL_HEADER32, DataDirectory);
        return At<IMAGE_DATA_DIRECTORY>(optional + directories + index * sizeof(IMAGE_DATA_DIRECTORY));
    }

    template <class Value>
    Value AtAddress(DWORD address) const {
        return At<Value>(Offset(address));
    }

    std::string TextAtAddress(DWORD address) const {
        const std::size_t offset = Offset(address);
        const std::size_t end = _bytes.find('\0', offset);
        return _bytes.substr(offset, end - offset); // throws if the offset is beyond the end
    }

private:
    template <class Value>
    Value At(std::size_t offset) const {
        if (offset > _bytes.size() || _bytes.size() - offset < sizeof(Value))
            throw std::out_of_range("the file is cut short");
        Value value;
        std::memcpy(&value, _bytes.data() + offset, sizeof value);
        return value;
    }

    /// Where the file holds what is at this address once it is loaded.
    std::size_t Offset(DWORD address) const {
        const std::size_t sections =
            _header + sizeof(DWORD) + sizeof(IMAGE_FILE_HEADER) + _file.SizeOfOptionalHeader;
        for (WORD i = 0; i < _file.NumberOfSections; ++i) {
            const auto section = At<IMAGE_SECTION_HEADER>(sections + i * sizeof(IMAGE_SECTION_HEADER));
            if (address >= section.VirtualAddress && address - section.VirtualAddress < section.SizeOfRawData)
                return std::size_t{section.PointerToRawData} + (address - section.VirtualAddress);
        }
        throw std::out_of_range("the address is in no section");
    }

    std::string _bytes;
    std::size_t _header = 0;
    IMAGE_FILE_HEADER _file{};
};

std::vector<std::string> ExportsOf(const Image& image) {
    const IMAGE_DATA_DIRECTORY place = image.Directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
    std::vector<std::string> names;
    if (place.Size == 0)
        return names;
    const auto directory = image.AtAddress<IMAGE_EXPORT_DIRECTORY>(place.VirtualAddress);
    for (DWORD i = 0; i < directory.NumberOfNames; ++i)
        names.push_back(image.TextAtAddress(
            image.AtAddress<DWORD>(directory.AddressOfNames + i * static_cast<DWORD>(sizeof(DWORD)))));
    return names;
}

bool IsForAnyProcessor(const Image& image) {
    constexpr DWORD IlOnly = 1;
    constexpr DWORD Requires32Bit = 2;
    const IMAGE_DATA_DIRECTORY place = image.Directory(IMAGE_DIRECTORY_ENTRY_COM_DESCRIPTOR);
    if (image.Machine() != IMAGE_FILE_MACHINE_I386 || place.Size == 0)
        return false;
    const DWORD flags = image.AtAddress<IMAGE_COR20_HEADER>(place.VirtualAddress).Flags;
    return (flags & (IlOnly | Requires32Bit)) == IlOnly;
}

} // namespace

std::optional<PortableExecutable> ReadPortableExecutable(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    try {
        const Image image({std::istreambuf_iterator<char>(file), {}});
        return PortableExecutable{image.Machine() == IMAGE_FILE_MACHINE_AMD64, IsForAnyProcessor(image),
                                  ExportsOf(image)};
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

} // namespace Zuvan::Lumeq::Tool::Doctor
